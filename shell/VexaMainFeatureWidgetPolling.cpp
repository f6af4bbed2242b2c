// The rows of the host's table of polling parameters, which follow writes in the tree.

#include "DeviceTaskModule/QCameraTask.h"
#include "shell/PollingRoles.h"
#include "shell/VexaMainFeatureWidget.h"
#include "tree/CameraLookup.h"
#include "tree/VexaFeatureTree.h"

#include <QDateTime>
#include <QDebug>
#include <QLocale>
#include <QStandardItem>

#include <algorithm>
#include <iterator>

namespace {

const QLatin1String CHANGE_TIME_NODE("PollingParamChgTime");

/// Parameters that a set holds once for each value of a selector.
struct SelectedParameter
{
    QLatin1String name;
    QLatin1String selector;
};

QString selectorOf(const QString &name)
{
    static const SelectedParameter parameters[] = {
        {QLatin1String("PollingLightEnable"), QLatin1String("PollingLightSelector")},
        {QLatin1String("PollingIOAction"), QLatin1String("PollingIOSelector")},
    };
    const auto it = std::find_if(std::begin(parameters), std::end(parameters),
                                 [&](const SelectedParameter &row) { return row.name == name; });
    return it == std::end(parameters) ? QString() : QString(it->selector);
}

void storeSelected(QStandardItem *item, qint64 selected, const QString &value)
{
    auto map = item->data(POLLING_ROLE_MAP).value<QMap<int, int>>();
    map.insert(static_cast<int>(selected), value.toInt());
    item->setData(QVariant::fromValue(map), POLLING_ROLE_MAP);
}

} // namespace

void VexaMainFeatureWidget::SetPollingMap(long int cameraId,
                                          const QMap<int, QList<QStandardItem *>> &rows)
{
    QMap<QString, QList<QStandardItem *>> byName;
    for (const QList<QStandardItem *> &row : rows) {
        if (const QStandardItem *first = row.value(0, nullptr)) {
            byName.insert(first->text(), row);
        }
    }
    m_pollingTables.insert(cameraId, byName);
}

QMap<QString, QList<QStandardItem *>> VexaMainFeatureWidget::GetPollingMap(long int cameraId)
{
    return m_pollingTables.value(cameraId);
}

void VexaMainFeatureWidget::DeletePollingMap(long int cameraId)
{
    m_pollingTables.remove(cameraId);
}

void VexaMainFeatureWidget::UpdatePollingValue(long int cameraId, const QString &name,
                                               const QString &value, int column)
{
    const QDateTime now = QDateTime::currentDateTime();
    QCameraTask *task = cameraTaskOf(cameraId);
    if (!task) {
        return;
    }
    if (!task->SetIntegerValue(CHANGE_TIME_NODE, now.toSecsSinceEpoch(), nullptr)) {
        qInfo("set value PollingParamChgTime failed");
    }
    // Looked up afresh after each change: the host hears of it and may take its rows back.
    const auto rowOf = [this, cameraId](const QString &node) {
        return m_pollingTables.value(cameraId).value(node);
    };
    QStandardItem *item = rowOf(name).value(column, nullptr);
    if (!item) {
        return;
    }
    item->setData(value, POLLING_ROLE_VALUE);
    if (name == QLatin1String("PollingFocusPos")) {
        if (QStandardItem *position = rowOf(name).value(column, nullptr)) {
            position->setData(true, POLLING_ROLE_CHANGED);
        }
    }
    const QString selector = selectorOf(name);
    VexaFeatureTree *tree = selector.isEmpty() ? nullptr : treeInMap(cameraId);
    QStandardItem *selectorItem = rowOf(selector).value(column, nullptr);
    qint64 selected = 0;
    if (tree && selectorItem && tree->enumerationValue(selector, selected)) {
        storeSelected(selectorItem, selected, value);
    }
    const QList<QStandardItem *> row = rowOf(name);
    const auto stamped = std::find_if(row.cbegin(), row.cend(), [](const QStandardItem *cell) {
        return cell && cell->text() == CHANGE_TIME_NODE;
    });
    if (stamped != row.cend()) {
        (*stamped)->setData(QLocale::system().toString(now, QStringLiteral("yyyy-MM-dd")),
                            POLLING_ROLE_VALUE);
    }
}
