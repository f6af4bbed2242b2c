#pragma once

#include "DeviceTaskModule/QCameraTask.h"
#include "host/devicetask/CameraHost.h"

/// As long as it lives every question goes to the device as if it were the only one: the device layer holds nothing.
class ForgetfulDevice
{
public:
    explicit ForgetfulDevice(QCameraTask *task)
    {
        s_pTask = task;
        CameraHost::setCallObserver(forget);
    }
    ~ForgetfulDevice() { CameraHost::setCallObserver(nullptr); }
    Q_DISABLE_COPY(ForgetfulDevice)

private:
    /// Before each call.
    static void forget()
    {
        static thread_local bool t_bForgets = false;
        if (!t_bForgets) {
            t_bForgets = true;
            s_pTask->InvalidateNode(QStringLiteral("Root"));
            t_bForgets = false;
        }
    }
    static inline QCameraTask *s_pTask = nullptr;
};
