#pragma once

#include "host/devicetask/DeviceSession.h"

#include <QString>

struct DeviceSource;

/// What the registry tells of one opened device.
struct DeviceFacts
{
    QString name; ///< DeviceUserID, else model and serial number
    QString model; ///< SFNC DeviceModelName
    QString serial; ///< SFNC DeviceSerialNumber, DeviceID before SFNC 2
    quint32 ipv4 = 0; ///< host byte order
    unsigned int deviceType = 0;
    unsigned int scanType = 1; ///< 1 area scan, 4 line scan (SFNC DeviceScanType)

    /// The source's own facts.
    static DeviceFacts of(const DeviceSource &source);
    /// The source's own facts, and for a source that asks its device what the device answers instead; an answer that
    /// fails leaves the source's. On the connection's thread.
    static DeviceFacts of(const DeviceSource &source, const DeviceSession &session);
};
