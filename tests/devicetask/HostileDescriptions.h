#pragma once

#include <QByteArray>
#include <QVector>

#include <functional>

/// One description from a stranger, and what has to become of it. Its node "Good" is a sound register at 64.
struct HostileDescription
{
    struct LeftOut
    {
        QByteArray node;
        QByteArray reason; ///< a part of it
    };
    struct Live
    {
        QByteArray node; ///< a constant
        qint64 value;
    };

    QByteArray name;
    std::function<QByteArray()> make;
    QByteArray refusal; ///< a part of the reason why it is not opened at all
    QVector<LeftOut> leftOut;
    QVector<Live> live;
    QByteArray note; ///< a part of a finding that leaves no node out
    bool isForCosts = false; ///< large, and of no interest but for what it costs to read
};

const QVector<HostileDescription> &hostileDescriptions();
