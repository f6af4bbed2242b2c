#include "tests/stress/FreshRead.h"

#include "ShellServicesModule/QLocalCfg.h"
#include "model/CTreeEnumationItemValue.h"
#include "model/CTreeFloatItemValue.h"
#include "model/CTreeIntergerItemValue.h"
#include "model/CTreeStringItemValue.h"
#include "model/VexaPropertyTreeItem.h"

#include <QDomElement>

#include <memory>

namespace {

using Item = VexaPropertyTreeItem;

template<typename Number>
QString line(Number value, Number min, Number max, Number inc)
{
    return QStringLiteral("%1 in %2 to %3 by %4").arg(value).arg(min).arg(max).arg(inc);
}

/// What an item holds, in the words of Reader::value.
QString shownValue(const Item &item)
{
    const std::unique_ptr<CTreeItemValue> value = item.valueSnapshot();
    if (const auto *integer = dynamic_cast<CTreeIntergerItemValue *>(value.get())) {
        return line(integer->m_nValue, integer->m_nMinValue, integer->m_nMaxValue,
                    integer->m_nIncValue);
    }
    if (const auto *real = dynamic_cast<CTreeFloatItemValue *>(value.get())) {
        return line(real->m_fValue, real->m_fMinValue, real->m_fMaxValue, 0.0F);
    }
    if (const auto *text = dynamic_cast<CTreeStringItemValue *>(value.get())) {
        return text->m_strValue + QStringLiteral(" of %1").arg(text->m_nMaxLength);
    }
    if (const auto *entries = dynamic_cast<CTreeEnumationItemValue *>(value.get())) {
        return QStringLiteral("%1 of ").arg(entries->m_nValue)
            + QStringList(entries->getAllNameMap().keys()).join(QLatin1Char(' '));
    }
    return QString::number(value->value().toBool());
}

class Reader
{
public:
    explicit Reader(const ModuleFixture::Camera &camera)
        : m_tree(*camera.tree)
        , m_task(*taskOf(camera))
    {
    }

    QDomElement element(const Item &item) const
    {
        QDomElement element;
        m_tree.GetDomElementNode(item.value()->m_strNodeName, element);
        return element;
    }

    bool pointer(const QDomElement &element, const char *tag, bool without = true)
    {
        const QString name = element.firstChildElement(QString::fromLatin1(tag)).text();
        _NODE_INT_VALUE_ record{};
        return name.isEmpty()
            ? without
            : m_task.GetIntegerValue(name, &record, nullptr, true, false) && record.value != 0;
    }

    int mode(const Item &item)
    {
        return m_task.GetAccessMode(item.value()->m_strNodeName, nullptr);
    }

    bool isThere(const Item &item)
    {
        const int access = mode(item);
        return access >= 2 && access <= 4 && pointer(element(item), "pIsImplemented");
    }

    /// Whether the item itself is to be shown, its branches apart.
    bool isWished(const Item &item)
    {
        const QDomElement node = element(item);
        if (!isThere(item)
            || (node.tagName() == QLatin1String("Category") && !pointer(node, "pIsAvailable"))) {
            return false;
        }
        static const QStringList levels{QStringLiteral("Guru"), QStringLiteral("Expert"),
                                        QStringLiteral("Beginner")};
        const QDomElement visibility = node.firstChildElement(QStringLiteral("Visibility"));
        return visibility.isNull()
            || levels.indexOf(visibility.text()) >= QLocalCfg::Instance()->GetUserLevel();
    }

    bool isVisible(const Item &item)
    {
        const Item *branch = item.parent(PARENT_FEATURE_TREE);
        return isWished(item)
            && (!branch || branch == m_tree.rootItem() || element(*branch).isNull()
                || isVisible(*branch));
    }

    /// The value as one line; empty when the device gives none.
    QString value(const Item &item)
    {
        const QString name = item.value()->m_strNodeName;
        const QString tag = item.tagName();
        bool flag = false;
        _NODE_INT_VALUE_ integer{};
        _NODE_FLOAT_VALUE_ real{};
        QString text;
        qint64 length = 0;
        if (tag == QLatin1String("Boolean")
            && m_task.GetBooleanValue(name, &flag, nullptr, true, false)) {
            return QString::number(flag);
        }
        if (tag == QLatin1String("Integer")
            && m_task.GetIntegerValue(name, &integer, nullptr, true, false)) {
            const bool empty = integer.max < integer.min && integer.max + 1 == integer.min;
            return line(integer.value, empty ? integer.value : integer.min,
                        empty ? integer.value : integer.max, integer.inc);
        }
        if (tag == QLatin1String("Float")
            && m_task.GetFloatValue(name, &real, nullptr, true, false)) {
            return line(real.value, real.min, real.max, 0.0F);
        }
        if (tag == QLatin1String("StringReg")
            && m_task.GetStringValue(name, &text, &length, nullptr, true, false)) {
            return text + QStringLiteral(" of %1").arg(length);
        }
        return tag == QLatin1String("Enumeration") ? enumeration(item) : QString();
    }

private:
    QString enumeration(const Item &item)
    {
        const auto record = std::make_unique<_NODE_ENUM_VALUE_>();
        if (!m_task.GetEnumerationValue(item.value()->m_strNodeName, record.get(), nullptr, true,
                                        false)) {
            return {};
        }
        QStringList entries;
        const QString tag = QStringLiteral("EnumEntry");
        for (QDomElement entry = element(item).firstChildElement(tag); !entry.isNull();
             entry = entry.nextSiblingElement(tag)) {
            // The tree offers "Raw" by a node of its own where there is one.
            const QString name = entry.attribute(QStringLiteral("Name"));
            const bool byNode = name == QLatin1String("Raw")
                && m_tree.propertyItemByName(QStringLiteral("RawModeEnable"));
            if (!byNode && pointer(entry, "pIsImplemented") && pointer(entry, "pIsAvailable")
                && !pointer(entry, "pIsLocked", false)) {
                entries.append(name);
            }
        }
        entries.sort();
        return QStringLiteral("%1 of ").arg(record->value) + entries.join(QLatin1Char(' '));
    }

    VexaFeatureTree &m_tree;
    QCameraTask &m_task;
};

} // namespace

FreshRead FreshRead::compare(const ModuleFixture::Camera &camera)
{
    FreshRead result;
    Reader reader(camera);
    for (const Item *item : camera.tree->AllTreeItemsMap()) {
        const auto check = [&](const char *what, const QString &shown, const QString &read) {
            if (shown != read) {
                result.differences.append(
                    QStringLiteral("%1: %2: %3, %4")
                        .arg(item->value()->m_strNodeName, QLatin1String(what), shown, read));
            }
        };
        if (item->childCount() == 0) {
            check("visible", QString::number(item->visible()),
                  QString::number(reader.isVisible(*item)));
        }
        if (!reader.isThere(*item)) {
            continue;
        }
        const QDomElement node = reader.element(*item);
        const bool readOnly = reader.mode(*item) == 3 || !reader.pointer(node, "pIsAvailable")
            || reader.pointer(node, "pIsLocked", false);
        check("read only", QString::number(item->readOnly()), QString::number(readOnly));
        // Where the device gives no value the last one stays.
        const QString value = reader.value(*item);
        if (!value.isEmpty()) {
            ++result.values;
            check("value", shownValue(*item), value);
        }
    }
    return result;
}
