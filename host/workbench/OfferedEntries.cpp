#include "host/workbench/OfferedEntries.h"

#include "model/CTreeEnumationItemValue.h"
#include "tree/VexaFeatureTree.h"

#include <QDomElement>

QVector<OfferedEntry> offeredEntries(const VexaFeatureTree &tree,
                                     const CTreeEnumationItemValue &enumeration)
{
    QDomElement element;
    tree.GetDomElementNode(enumeration.m_strNodeName, element);
    const QMap<QString, QString> displayNames = enumeration.getAllNameMap();
    const QString tag = QStringLiteral("EnumEntry");
    QVector<OfferedEntry> entries;
    for (QDomElement entry = element.firstChildElement(tag); !entry.isNull();
         entry = entry.nextSiblingElement(tag)) {
        const QString name = entry.attribute(QStringLiteral("Name"));
        if (displayNames.contains(name)) {
            const QString number = entry.firstChildElement(QStringLiteral("Value")).text();
            entries.append({name, displayNames.value(name), number.toLongLong(nullptr, 0)});
        }
    }
    return entries;
}
