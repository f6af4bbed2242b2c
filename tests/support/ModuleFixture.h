#pragma once

#include "DeviceTaskModule/QCameraTask.h"
#include "host/devicetask/CameraHost.h"
#include "host/simulator/SimulatedDevices.h"
#include "shell/VexaMainFeatureWidget.h"
#include "tests/support/DescriptionOf.h"
#include "tree/VexaFeatureTree.h"

#include <QString>

#include <memory>
#include <vector>

/// A registry, the main widget and cameras over simulated devices, opened and closed in a host's order.
class ModuleFixture
{
public:
    ModuleFixture();
    /// Closes what is still open.
    ~ModuleFixture();

    struct Camera
    {
        SimulatedDevices::Simulated device;
        long int id = -1;
        VexaFeatureTree *tree = nullptr;
    };

    /// Opens a device and its tree; `accessMode` is what the tree is told. A refused device has id -1.
    Camera open(const SimulatedDevices::Simulated &device, unsigned int accessMode = 4);
    Camera openDescription(const QByteArray &xml);
    /// Closes the camera and removes its tree.
    void close(const Camera &camera);
    /// Waits until the first full update of the tree has ended.
    static bool waitForFirstUpdate(const Camera &camera, int timeout = 20000);

    CameraHost &host() { return *m_pHost; }
    VexaMainFeatureWidget &mainWidget() { return *VexaMainFeatureWidget::instance(); }

private:
    std::unique_ptr<CameraHost> m_pHost;
    std::vector<Camera> m_opened;
};

/// The task of an open camera, null when it has gone.
QCameraTask *taskOf(const ModuleFixture::Camera &camera);
