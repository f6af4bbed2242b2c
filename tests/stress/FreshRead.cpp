#include "tests/stress/FreshRead.h"

#include "model/CTreeItemValue.h"
#include "model/VexaPropertyTreeItem.h"

#include <QtTest>

#include <memory>

namespace {

/// The value with all its digits, and its range or its entries.
QString valueOf(const VexaPropertyTreeItem &item)
{
    const std::unique_ptr<CTreeItemValue> value = item.valueSnapshot();
    return value->value().toString() + QLatin1Char(' ') + value->createCurrentStauts(false);
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
    for (const VexaPropertyTreeItem *item : camera.tree->AllTreeItemsMap()) {
        const QString name = item->value()->m_strNodeName;
        const VexaPropertyTreeItem *other = fresh.propertyItemByName(name);
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
