#pragma once

#include "DeviceTaskModule/DeviceTaskModuleGlobal.h"

#include <QString>
#include <QVector>

#include <memory>

struct DeviceSource;

/// Devices on the network and on the USB. Every function may block for some seconds and belongs on a worker thread.
namespace RealDevices {

/// One source for each GigE Vision and USB3 Vision device that answers on any interface now, ordered by id.
DEVICETASKMODULE_API QVector<std::shared_ptr<DeviceSource>> discover();
/// A GigE Vision device by IPv4 address, also one that a broadcast does not reach. Nothing is asked yet. Null with a
/// reason for a text that is no address.
DEVICETASKMODULE_API std::shared_ptr<DeviceSource> gige(const QString &address, QString *error);
/// A USB3 Vision device by the id that discover() gives it, by GUID or by serial number. Nothing is asked yet.
DEVICETASKMODULE_API std::shared_ptr<DeviceSource> usb(const QString &id);

} // namespace RealDevices
