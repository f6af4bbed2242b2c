#pragma once

#include "host/devicetask/CameraHost.h"

#include <QFutureWatcher>
#include <QObject>
#include <QTimer>

#include <chrono>

/// Waits for a lost device: asks for a new connection on a worker, again after each failure, until the device is back
/// or the time is over. It neither closes a camera nor knows a tree. GUI thread.
class DeviceReturn : public QObject
{
    Q_OBJECT
public:
    /// How long a device that was lost is waited for.
    static constexpr std::chrono::seconds RETURN_TIME{60};

    explicit DeviceReturn(CameraHost &host, QObject *parent = nullptr);
    /// Waits for a call that is under way.
    ~DeviceReturn() override;

    void begin(long int cameraId, std::chrono::milliseconds limit = RETURN_TIME);
    /// No signal of this return comes any more. A call under way goes on: see isBusy().
    void end();
    /// A call is inside the device layer.
    bool isBusy() const { return m_bBusy; }

signals:
    void returned(const CameraHost::OpenResult &result);
    void timedOut();
    /// isBusy() has become false.
    void idle();

private:
    void ask();
    void takeResult();

    CameraHost &m_host;
    QFutureWatcher<CameraHost::OpenResult> m_call;
    QTimer m_nextTry;
    QTimer m_limit;
    long int m_lCameraID = NO_CAMERA_ID; ///< -1 while nothing is waited for
    bool m_bBusy = false;
};
