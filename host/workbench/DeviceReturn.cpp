#include "host/workbench/DeviceReturn.h"

#include "host/workbench/DeviceThreads.h"

#include <QPointer>
#include <QtConcurrent>

namespace {

constexpr std::chrono::seconds PAUSE_BETWEEN_TRIES{1};

} // namespace

DeviceReturn::DeviceReturn(CameraHost &host, QObject *parent)
    : QObject(parent)
    , m_host(host)
{
    m_nextTry.setSingleShot(true);
    m_limit.setSingleShot(true);
    connect(&m_call, &QFutureWatcherBase::finished, this, &DeviceReturn::takeResult);
    connect(&m_nextTry, &QTimer::timeout, this, &DeviceReturn::ask);
    connect(&m_limit, &QTimer::timeout, this, [this] {
        end();
        emit timedOut();
    });
}

DeviceReturn::~DeviceReturn()
{
    m_call.disconnect(this);
    m_call.waitForFinished();
}

void DeviceReturn::begin(long int cameraId, std::chrono::milliseconds limit)
{
    m_lCameraID = cameraId;
    m_limit.start(limit);
    ask();
}

void DeviceReturn::end()
{
    m_lCameraID = NO_CAMERA_ID;
    m_nextTry.stop();
    m_limit.stop();
}

void DeviceReturn::ask()
{
    if (!m_bBusy) {
        m_bBusy = true;
        m_call.setFuture(
            QtConcurrent::run(deviceThreads(), [&host = m_host, cameraId = m_lCameraID] {
                return host.reopenCamera(cameraId);
            }));
    }
}

void DeviceReturn::takeResult()
{
    const QPointer<DeviceReturn> self = this;
    const CameraHost::OpenResult result = m_call.result();
    m_bBusy = false;
    if (m_lCameraID != NO_CAMERA_ID && result.cameraId == m_lCameraID) {
        end();
        emit returned(result);
    } else if (m_lCameraID != NO_CAMERA_ID) {
        m_nextTry.start(PAUSE_BETWEEN_TRIES);
    }
    // Making the tree anew may run events that close the camera for good.
    if (self) {
        emit idle();
    }
}
