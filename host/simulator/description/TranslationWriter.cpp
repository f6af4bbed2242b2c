#include "host/simulator/description/TranslationWriter.h"

#include "host/simulator/description/FeatureTable.h"

#include <QJsonDocument>
#include <QJsonObject>

QByteArray writtenTranslations(const FeatureTable &table)
{
    QJsonObject nodes;
    for (auto it = table.texts().cbegin(); it != table.texts().cend(); ++it) {
        QJsonObject node{{"displayName", QString::fromUtf8(it->m_strDisplayName)},
                         {"description", QString::fromUtf8(it->m_strDescription)}};
        QJsonObject entries;
        for (auto entry = it->m_entries.cbegin(); entry != it->m_entries.cend(); ++entry) {
            entries.insert(QString::fromUtf8(entry.key()), QString::fromUtf8(entry.value()));
        }
        if (!entries.isEmpty()) {
            node.insert("entries", entries);
        }
        nodes.insert(QString::fromUtf8(it.key()), node);
    }
    return QJsonDocument(nodes).toJson(QJsonDocument::Compact);
}
