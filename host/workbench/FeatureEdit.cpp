#include "host/workbench/FeatureEdit.h"

#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "host/workbench/TypedText.h"
#include "host/workbench/WorkbenchOptions.h"
#include "host/workbench/WorkbenchTexts.h"
#include "model/CTreeItemValue.h"
#include "model/VexaPropertyTreeItem.h"
#include "tree/VexaFeatureTree.h"

#include <QPointer>
#include <QTreeView>

#include <algorithm>
#include <iterator>

namespace {

constexpr int VALUE_COLUMN = 1;

/// The row of an item in the model of the tree's view; what an index points to is the item.
QModelIndex indexOf(const QAbstractItemModel &model, const VexaPropertyTreeItem *item,
                    const QModelIndex &parent = QModelIndex())
{
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex child = model.index(row, 0, parent);
        if (child.internalPointer() == item) {
            return model.index(row, VALUE_COLUMN, parent);
        }
        const QModelIndex below = indexOf(model, item, child);
        if (below.isValid()) {
            return below;
        }
    }
    return QModelIndex();
}

QString remarkOf(long int cameraId)
{
    QTaskManager *manager = QTaskManager::Instance();
    QCameraBasicTask *task = manager ? manager->GetTaskByIDEx(cameraId) : nullptr;
    return task && task->_CameraTak() ? task->_CameraTak()->GetLastErrorRemark() : QString();
}

bool refuse(QString *reason, const char *key, const QString &name)
{
    *reason = workbenchText(key).arg(name);
    return false;
}

} // namespace

bool FeatureEdit::perform(VexaFeatureTree &tree, const EditJob &job, QString *reason)
{
    const QPointer<VexaFeatureTree> guard = &tree;
    const bool isRun = job.kind == EditJob::Kind::Run;
    VexaPropertyTreeItem *item = tree.propertyItemByName(job.name);
    if (!item || !item->value()) {
        return refuse(reason, "lang_workbench_unknownfeature", job.name);
    }
    if (isRun != (item->tagName() == QLatin1String("Command"))) {
        return refuse(reason, isRun ? "lang_workbench_nocommand" : "lang_workbench_iscommand",
                      job.name);
    }
    if (!isRun && !item->isValueCached()) {
        tree.getFeatureValueFromCamera(item);
    }
    const QTreeView *view = tree.findChild<QTreeView *>();
    const QModelIndex index = view ? indexOf(*view->model(), item) : QModelIndex();
    if (!(index.flags() & Qt::ItemIsEditable)) {
        return refuse(reason, "lang_workbench_notwritable", job.name);
    }
    TypedText::Result typed;
    if (!isRun) {
        typed = TypedText::valueOf(tree, *item->valueSnapshot(), job.text);
        if (!typed.value.isValid()) {
            *reason = workbenchText("lang_workbench_refusedtext").arg(job.name, typed.reason);
            return false;
        }
    }
    const long int cameraId = tree.GetCurCameraID();
    if (view->model()->setData(index, typed.value, Qt::EditRole)) {
        return true;
    }
    const QString remark = guard ? remarkOf(cameraId) : workbenchText("lang_workbench_lost");
    *reason = workbenchText(isRun ? "lang_workbench_notrun" : "lang_workbench_notwritten")
                  .arg(job.name, remark)
                  .trimmed();
    return false;
}

QString FeatureEdit::shownValue(const VexaFeatureTree &tree, const QString &name)
{
    const VexaPropertyTreeItem *item = tree.propertyItemByName(name);
    return item && item->value() ? item->valueSnapshot()->displayValue() : QString();
}

bool FeatureEdit::holds(const VexaFeatureTree &tree, const EditJob &job)
{
    const VexaPropertyTreeItem *item = tree.propertyItemByName(job.name);
    if (!item || !item->value()) {
        return false;
    }
    const std::unique_ptr<CTreeItemValue> held = item->valueSnapshot();
    const QVariant wanted = TypedText::valueOf(tree, *held, job.text).value;
    // In the precision that the tree has for real numbers.
    return item->tagName() == QLatin1String("Float") ? wanted.toFloat() == held->value().toFloat()
                                                     : wanted == held->value();
}

bool FeatureEdit::restartsDevice(const EditJob &job)
{
    static const QLatin1String COMMANDS[] = {QLatin1String("DeviceReset"),
                                             QLatin1String("RecoverFactory")};
    return job.kind == EditJob::Kind::Run
        && std::find(std::begin(COMMANDS), std::end(COMMANDS), job.name) != std::end(COMMANDS);
}
