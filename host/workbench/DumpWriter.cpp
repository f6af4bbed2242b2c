#include "host/workbench/DumpWriter.h"

#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "host/workbench/OfferedEntries.h"
#include "model/CTreeBooleanItemValue.h"
#include "model/CTreeEnumationItemValue.h"
#include "model/CTreeFloatItemValue.h"
#include "model/CTreeIntergerItemValue.h"
#include "model/CTreeStringItemValue.h"
#include "model/VexaPropertyTreeItem.h"
#include "tree/VexaFeatureTree.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <cmath>
#include <limits>

namespace {

/// Categories deeper than this are no tree of a device; the walk ends there.
constexpr int MAXIMUM_DEPTH = 256;

/// The shortest number that reads back as the same float; JSON has no infinities, they become texts.
QVariant jsonNumber(float value)
{
    if (!std::isfinite(value)) {
        return QString::number(static_cast<double>(value));
    }
    for (int digits = 6; digits < std::numeric_limits<float>::max_digits10; ++digits) {
        const QString text = QString::number(static_cast<double>(value), 'g', digits);
        if (text.toFloat() == value) {
            return text.toDouble();
        }
    }
    return QString::number(static_cast<double>(value), 'g',
                           std::numeric_limits<float>::max_digits10)
        .toDouble();
}

/// JSON text of a value. Qt's own JSON values keep integers as doubles, which loses the low bits of large ones.
QByteArray jsonText(const QVariant &value)
{
    QByteArrayList parts;
    switch (static_cast<QMetaType::Type>(value.type())) {
    case QMetaType::QVariantMap: {
        const QVariantMap object = value.toMap();
        for (auto it = object.begin(); it != object.end(); ++it) {
            parts += jsonText(it.key()) + ':' + jsonText(it.value());
        }
        return '{' + parts.join(',') + '}';
    }
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
        for (const QVariant &element : value.toList()) {
            parts += jsonText(element);
        }
        return '[' + parts.join(',') + ']';
    case QMetaType::LongLong:
        return QByteArray::number(value.toLongLong());
    default: {
        const QByteArray alone = QJsonDocument(QJsonArray{QJsonValue::fromVariant(value)})
                                     .toJson(QJsonDocument::Compact);
        return alone.mid(1, alone.size() - 2);
    }
    }
}

QVariantList describeEntries(const QVector<OfferedEntry> &entries)
{
    QVariantList list;
    for (const OfferedEntry &entry : entries) {
        list.append(QVariantMap{{QStringLiteral("name"), entry.name},
                                {QStringLiteral("displayName"), entry.displayName},
                                {QStringLiteral("value"), entry.value}});
    }
    return list;
}

} // namespace

DumpWriter::DumpWriter(const VexaFeatureTree &tree)
    : m_tree(tree)
{
}

QByteArray DumpWriter::toJson() const
{
    QByteArray lines;
    if (const VexaPropertyTreeItem *root = m_tree.rootItem()) {
        append(*root, QStringList(), lines);
    }
    return "[\n" + lines + (lines.isEmpty() ? "]\n" : "\n]\n");
}

void DumpWriter::append(const VexaPropertyTreeItem &item, const QStringList &path,
                        QByteArray &out) const
{
    for (int row = 0; row < item.childCount(); ++row) {
        VexaPropertyTreeItem *child = item.child(row);
        if (!child || !child->value()) {
            continue;
        }
        if (!out.isEmpty()) {
            out += ",\n";
        }
        out += jsonText(describe(*child, path));
        if (path.size() < MAXIMUM_DEPTH) {
            append(*child, path + QStringList(child->value()->m_strNodeName), out);
        }
    }
}

QVariantMap DumpWriter::describe(VexaPropertyTreeItem &item, const QStringList &path) const
{
    const std::unique_ptr<CTreeItemValue> value = item.valueSnapshot();
    QVariantMap object{{QStringLiteral("name"), value->m_strNodeName},
                       {QStringLiteral("displayName"), value->displayName()},
                       {QStringLiteral("translateName"), value->translateName()},
                       {QStringLiteral("tag"), item.tagName()},
                       {QStringLiteral("path"), path},
                       {QStringLiteral("itemType"), item.itemType()},
                       {QStringLiteral("visibility"), item.visibilityString()},
                       {QStringLiteral("visible"), item.visible()},
                       {QStringLiteral("readOnly"), item.readOnly()},
                       {QStringLiteral("accessMode"), accessMode(value->m_strNodeName)},
                       {QStringLiteral("toolTip"), value->m_strToolTip},
                       {QStringLiteral("toolTipCn"), value->m_strToolTipCn}};
    for (const char *field : {"displayValue", "value", "min", "max", "inc"}) {
        object.insert(QLatin1String(field), QVariant());
    }
    if (item.isValueCached()) {
        object.insert(QStringLiteral("displayValue"), value->displayValue());
        describeValue(*value, object);
    }
    if (const auto *enumeration = dynamic_cast<const CTreeEnumationItemValue *>(value.get())) {
        object.insert(QStringLiteral("entries"),
                      describeEntries(offeredEntries(m_tree, *enumeration)));
    }
    return object;
}

void DumpWriter::describeValue(const CTreeItemValue &value, QVariantMap &object) const
{
    const QString valueKey = QStringLiteral("value");
    const QString minKey = QStringLiteral("min");
    const QString maxKey = QStringLiteral("max");
    if (const auto *integer = dynamic_cast<const CTreeIntergerItemValue *>(&value)) {
        object.insert(valueKey, integer->m_nValue);
        object.insert(minKey, integer->m_nMinValue);
        object.insert(maxKey, integer->m_nMaxValue);
        object.insert(QStringLiteral("inc"), integer->m_nIncValue);
    } else if (const auto *number = dynamic_cast<const CTreeFloatItemValue *>(&value)) {
        object.insert(valueKey, jsonNumber(number->m_fValue));
        object.insert(minKey, jsonNumber(number->m_fMinValue));
        object.insert(maxKey, jsonNumber(number->m_fMaxValue));
    } else if (const auto *boolean = dynamic_cast<const CTreeBooleanItemValue *>(&value)) {
        object.insert(valueKey, boolean->m_bValue);
    } else if (const auto *text = dynamic_cast<const CTreeStringItemValue *>(&value)) {
        object.insert(valueKey, text->m_strValue);
    } else if (const auto *enumeration = dynamic_cast<const CTreeEnumationItemValue *>(&value)) {
        object.insert(valueKey, enumeration->m_nValue);
    }
}

QVariant DumpWriter::accessMode(const QString &nodeName) const
{
    QTaskManager *manager = QTaskManager::Instance();
    QCameraBasicTask *basicTask =
        manager ? manager->GetTaskByIDEx(m_tree.GetCurCameraID()) : nullptr;
    QCameraTask *task = basicTask ? basicTask->_CameraTak() : nullptr;
    if (!task || nodeName.isEmpty()) {
        return QVariant();
    }
    int error = 0;
    const int mode = task->GetAccessMode(nodeName, &error);
    return error == 0 ? QVariant(mode) : QVariant();
}
