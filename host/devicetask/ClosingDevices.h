#pragma once

#include <QString>

/// The devices whose closing is still under way on the threads of their connections, by DeviceSource::id. Any thread.
namespace ClosingDevices {

void begin(const QString &id);
void end(const QString &id);
/// Waits until the device is closed, for at most that long: a device is not opened anew while the former connection
/// still holds it, and nobody waits for ever for one that hangs.
void wait(const QString &id, int milliseconds);
/// The same for all devices.
void waitAll(int milliseconds);

} // namespace ClosingDevices
