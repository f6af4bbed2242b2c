#include "tests/support/ModuleFixture.h"

#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "host/shellservices/ShellHost.h"

#include <QtTest>

ModuleFixture::ModuleFixture()
{
    ShellHost::useTransientSettings();
    m_pHost = std::make_unique<CameraHost>();
    VexaMainFeatureWidget::instance();
}

ModuleFixture::~ModuleFixture()
{
    for (const Camera &camera : m_opened) {
        if (mainWidget().isFeatureTreeExist(camera.id)) {
            close(camera);
        }
    }
    delete VexaMainFeatureWidget::instance();
    m_pHost.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

ModuleFixture::Camera ModuleFixture::open(const SimulatedDevices::Simulated &device,
                                          unsigned int accessMode)
{
    Camera camera;
    camera.device = device;
    const CameraHost::OpenResult result = m_pHost->openCamera(*device.source);
    if (result.cameraId == NO_CAMERA_ID) {
        qWarning().noquote() << "refused:" << result.error;
        return camera;
    }
    camera.id = result.cameraId;
    camera.tree = mainWidget().featureTree(camera.id, true);
    mainWidget().setCurrentCameraID(camera.id);
    mainWidget().OnCameraOpen(camera.id);
    m_opened.push_back(camera);
    camera.tree->OnCameraOpen(accessMode);
    return camera;
}

ModuleFixture::Camera ModuleFixture::openDescription(const QByteArray &xml)
{
    return open(SimulatedDevices::fromDescription(xml, QStringLiteral("test"),
                                                  SimulatorControl::MemoryPattern::Zero));
}

void ModuleFixture::close(const Camera &camera)
{
    if (QCameraTask *task = taskOf(camera)) {
        task->m_bReleasing = true;
    }
    camera.tree->readyForDelete();
    mainWidget().OnCameraClose(camera.id);
    camera.tree->OnCameraClose();
    mainWidget().removeFeatureTree(camera.id);
    m_pHost->closeCamera(camera.id);
}

bool ModuleFixture::waitForFirstUpdate(const Camera &camera, int timeout)
{
    return camera.tree
        && QTest::qWaitFor([&camera] { return camera.tree->IsUpdateFeatureOnce(); }, timeout);
}

QCameraTask *taskOf(const ModuleFixture::Camera &camera)
{
    QCameraBasicTask *basicTask = QTaskManager::Instance()->GetTaskByIDEx(camera.id);
    return basicTask ? basicTask->_CameraTak() : nullptr;
}
