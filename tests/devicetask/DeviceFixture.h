#pragma once

#include "DeviceTaskModule/QCameraTask.h"
#include "host/devicetask/CameraHost.h"
#include "host/simulator/SimulatedDevices.h"

#include <arv.h>
#include <atomic>
#include <memory>

/// A description around these nodes: a Root, the port, and the integers Zero and One are there already.
QByteArray describe(const QByteArray &nodes);
/// An IntReg of 4 bytes, big-endian and unsigned unless `more` says otherwise.
QByteArray intReg(const QByteArray &name, int address, const QByteArray &mode = "RW",
                  const QByteArray &more = {});

/// A device with this description, registers of zeros and the serial number S1.
SimulatedDevices::Simulated deviceWith(const QByteArray &xml);
/// How many devices live that the source has made from now on.
std::shared_ptr<std::atomic<int>> livingOf(DeviceSource &source);

/// The task of an open camera.
QCameraTask &taskOf(long int cameraId);

/// One opened device, whose accesses are logged.
class DeviceFixture
{
public:
    explicit DeviceFixture(const QByteArray &nodes);

    QCameraTask &task() const { return taskOf(m_nId); }
    SimulatorControl &control() const { return *m_device.control; }
    /// The integer register at 16, Reg, and what the connection asks for by itself fail with this ArvDeviceError; 0
    /// takes the fault away.
    void setFailing(int deviceError) const;

    SimulatedDevices::Simulated m_device;
    std::shared_ptr<std::atomic<int>> m_pLiving;
    CameraHost m_host;
    long int m_nId = NO_CAMERA_ID;
};
