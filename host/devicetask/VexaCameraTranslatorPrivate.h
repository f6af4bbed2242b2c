#pragma once

#include "DeviceTaskModule/VexaCameraTranslator.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <memory>

/// The texts of one camera, constant once read.
class VexaCameraTranslator::Private
{
public:
    struct NodeTexts
    {
        QString displayName;
        QString description;
        QHash<QString, QString> entries;
    };

    /// Reads {"NodeName": {"displayName": "", "description": "", "entries": {"EntryName": ""}}}. Null for an empty
    /// text and for one that is not such JSON, which is logged with the device's name.
    static std::unique_ptr<Private> fromJson(const QByteArray &json, const QString &deviceName);

    QHash<QString, NodeTexts> m_nodes;
};
