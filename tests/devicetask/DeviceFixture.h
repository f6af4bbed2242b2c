#pragma once

#include "DeviceTaskModule/QCameraTask.h"
#include "MemoryDevice.h"
#include "host/devicetask/CameraHost.h"

#include <memory>

/// A description around these nodes: a Root, the port, and the integers Zero and One are there already.
QByteArray describe(const QByteArray &nodes);
/// An IntReg of 4 bytes, big-endian and unsigned unless `more` says otherwise.
QByteArray intReg(const QByteArray &name, int address, const QByteArray &mode = "RW",
                  const QByteArray &more = {});

/// A source that makes memory devices on `state`.
DeviceSource sourceOf(const std::shared_ptr<MemoryDeviceState> &state,
                      const QString &serial = QStringLiteral("S1"));

/// The task of an open camera.
QCameraTask &taskOf(long int cameraId);

/// One opened memory device.
class DeviceFixture
{
public:
    explicit DeviceFixture(const QByteArray &nodes);

    QCameraTask &task() const { return taskOf(m_nId); }

    std::shared_ptr<MemoryDeviceState> m_pState;
    CameraHost m_host;
    long int m_nId = NO_CAMERA_ID;
    QString m_strError;
};
