#include "DeviceTaskModule/VexaOperateCameraThread.h"

#include "host/devicetask/OperateThread.h"

#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcOperate, "vexa.devicetask.operate")

void VexaOperateCameraThread::addOperateCamera(_VEXA_OPERATOR_TYPE_ operation, long int cameraId,
                                               bool lost)
{
    const std::shared_ptr<OperateThread> thread = OperateThread::current();
    if (operation != VEXA_OPERATOR_CLOSE || !thread) {
        qCWarning(lcOperate, "Operation %d of camera %ld is not carried out.",
                  static_cast<int>(operation), cameraId);
        return;
    }
    thread->requestClose(cameraId, lost);
}
