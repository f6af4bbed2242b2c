#include "tests/stress/FreshRead.h"

#include "model/CTreeEnumationItemValue.h"
#include "model/CTreeFloatItemValue.h"
#include "model/CTreeIntergerItemValue.h"
#include "model/CTreeStringItemValue.h"
#include "model/VexaPropertyTreeItem.h"

#include <QtTest>

#include <memory>

namespace {

using Item = VexaPropertyTreeItem;

template<typename Number>
QString line(Number value, Number min, Number max, Number inc)
{
    return QStringLiteral("%1 in %2 to %3 by %4").arg(value).arg(min).arg(max).arg(inc);
}

/// The value that an item holds, with its range or its entries.
QString valueOf(const Item &item)
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

} // namespace

FreshRead FreshRead::compare(const ModuleFixture::Camera &camera)
{
    constexpr int PATIENCE_MS = 120000;
    FreshRead result;
    VexaFeatureTree fresh(camera.id);
    fresh.OnCameraOpen(DEVICE_ACCESS_CONTROL);
    QCameraTask &task = *taskOf(camera);
    if (task.GetCameraState() == TASK_CAMERA_GRABBING) {
        fresh.OnCameraStartShot();
    }
    if (!QTest::qWaitFor([&fresh] { return fresh.IsUpdateFeatureOnce(); }, PATIENCE_MS)) {
        result.differences.append(QStringLiteral("the fresh tree is not read"));
    }
    for (const Item *item : camera.tree->AllTreeItemsMap()) {
        const QString name = item->value()->m_strNodeName;
        const Item *other = fresh.propertyItemByName(name);
        const auto check = [&](const char *what, const QString &shown, const QString &read) {
            if (shown != read) {
                result.differences.append(
                    QStringLiteral("%1: %2: %3, %4").arg(name, QLatin1String(what), shown, read));
            }
        };
        if (item->childCount() == 0) {
            check("visible", QString::number(item->visible()), QString::number(other->visible()));
        }
        const int mode = task.GetAccessMode(name, nullptr);
        if (mode >= 2 && mode <= 4) {
            check("read only", QString::number(item->readOnly()),
                  QString::number(other->readOnly()));
        }
        // Where the device gives no value the last one stays.
        if (other->isValueCached()) {
            ++result.values;
            check("value", valueOf(*item), valueOf(*other));
        }
    }
    fresh.readyForDelete();
    fresh.OnCameraClose();
    return result;
}
