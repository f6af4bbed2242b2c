#pragma once

#include "host/simulator/SimulatedDevices.h"

#include <QString>
#include <QVector>

#include <memory>

struct DeviceSource;

/// What can be opened: devices by id, each with the source that CameraHost opens. It opens nothing itself.
class DeviceCatalog
{
public:
    struct Device
    {
        QString id; ///< "area-camera", "area-camera#2", the file's name for a description
        std::shared_ptr<DeviceSource> source;
        std::shared_ptr<SimulatorControl>
            control; ///< of a simulated device: keeps its registers. Else null
    };

    /// Enters one more device of a built-in id, "ID" or "ID#N"; a plain id that is taken gets the next free number.
    /// The id in the catalogue, empty with a reason in `error` for an unknown one.
    QString addBuiltIn(const QString &id, QString *error);
    /// Enters a device with the GenICam description in the file and, when one stands beside it (FILE without its suffix
    /// and ".zh.json"), with its Chinese texts. Empty with a reason in `error` when the file cannot be read.
    QString addDescription(const QString &path, SimulatorControl::MemoryPattern pattern,
                           QString *error);

    /// Enters the GigE Vision device at an IPv4 address, with the address as its id; it is not asked. Empty with a
    /// reason in `error` for a text that is no address and for one that is there already.
    QString addGige(const QString &address, QString *error);
    /// Enters the USB3 Vision device with this GUID or serial number; it is not asked. Empty with a reason in `error`
    /// when it is there already.
    QString addUsb(const QString &id, QString *error);
    /// Enters a device that was found. Its id; empty when the catalogue has it already.
    QString addFound(const std::shared_ptr<DeviceSource> &source);

    const QVector<Device> &devices() const { return m_devices; }
    /// Null for an unknown id.
    const Device *find(const QString &id) const;

    /// One line for each device: id, transport, model, serial number, address, separated by tabs. Columns that a
    /// device has nothing for are empty.
    static QString listOf(const QVector<std::shared_ptr<DeviceSource>> &sources);
    static QVector<std::shared_ptr<DeviceSource>> builtInSources();
    /// "GigE", "U3V", "CL" or the number of another device type.
    static QString transportName(unsigned int deviceType);

private:
    QString enter(const QString &id, const SimulatedDevices::Simulated &device);
    QString enterReal(const std::shared_ptr<DeviceSource> &source, QString *error);

    QVector<Device> m_devices;
};
