#include "host/workbench/PollingSetReader.h"

#include "DeviceTaskModule/NodeValues.h"
#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "DeviceTaskModule/QTaskManager.h"

namespace {

QCameraTask *taskOf(long int cameraId)
{
    QTaskManager *manager = QTaskManager::Instance();
    QCameraBasicTask *task = manager ? manager->GetTaskByIDEx(cameraId) : nullptr;
    return task ? task->_CameraTak() : nullptr;
}

/// Null when the feature cannot be read. The task is looked up for each: the camera may go in between.
QString readText(long int cameraId, const PollingParameter &parameter)
{
    QCameraTask *task = taskOf(cameraId);
    if (!task) {
        return QString();
    }
    if (parameter.tag == QLatin1String("Float")) {
        _NODE_FLOAT_VALUE_ value{};
        return task->GetFloatValue(parameter.name, &value, nullptr, false, false)
            ? QString::number(value.value, 'f', 2)
            : QString();
    }
    if (parameter.tag == QLatin1String("StringReg")) {
        QString value = QStringLiteral("");
        return task->GetStringValue(parameter.name, &value, nullptr, nullptr, false, false)
            ? value
            : QString();
    }
    _NODE_INT_VALUE_ value{};
    return task->GetIntegerValue(parameter.name, &value, nullptr, false, false)
        ? QString::number(value.value)
        : QString();
}

QStringList readSelectors(long int cameraId)
{
    QStringList selected;
    for (const char *name : {"PollingParam", "PollingLightSelector", "PollingIOSelector"}) {
        selected += readText(cameraId, {QString::fromLatin1(name), QString()});
    }
    return selected;
}

} // namespace

PollingReading readSelectedSet(long int cameraId, const QVector<PollingParameter> &parameters)
{
    PollingReading reading;
    const QStringList selected = readSelectors(cameraId);
    for (const PollingParameter &parameter : parameters) {
        const QString text = readText(cameraId, parameter);
        if (!text.isNull()) {
            reading.values.insert(parameter.name, text);
        }
    }
    bool isNumber = false;
    const qint64 set = selected.first().toLongLong(&isNumber);
    if (isNumber && readSelectors(cameraId) == selected) {
        reading.set = set;
    }
    return reading;
}
