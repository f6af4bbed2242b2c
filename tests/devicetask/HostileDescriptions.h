#pragma once

#include <QByteArray>
#include <QPair>
#include <QVector>

/// One description from a stranger, and what has to become of it. Its node "Good" is a sound register at 64.
struct HostileDescription
{
    QByteArray name;
    QByteArray xml;
    QByteArray refusal; ///< a part of the reason why it is not opened at all
    QVector<QPair<QByteArray, QByteArray>> leftOut; ///< nodes, and a part of the reason of each
    QVector<QPair<QByteArray, qint64>> live; ///< nodes that keep their constant value
    QByteArray note; ///< a part of a finding that leaves no node out
};

QVector<HostileDescription> hostileDescriptions();
