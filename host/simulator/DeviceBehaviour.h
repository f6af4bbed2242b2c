#pragma once

#include "host/simulator/RegisterMemory.h"

class DeviceFiles;

/// What the firmware of a simulated device does with its registers. This base does nothing: plain memory.
/// The device core calls it under its mutex.
class DeviceBehaviour
{
public:
    enum class Effect { None, Restart };

    virtual ~DeviceBehaviour() = default;

    /// An ArvDeviceError when the device refuses this write, -1 when it takes it.
    virtual int refusal(const RegisterMemory &, quint64 /*address*/,
                        const QByteArray & /*bytes*/) const
    {
        return -1;
    }
    /// Ahead of a read of these addresses: values that move are brought up to date.
    virtual void beforeRead(RegisterMemory &, quint64 /*address*/, quint32 /*length*/) { }
    /// Behind a write that was taken.
    virtual Effect afterWrite(RegisterMemory &, quint64 /*address*/, quint32 /*length*/)
    {
        return Effect::None;
    }
    /// The device starts again, as after power on.
    virtual void restart(RegisterMemory &) { }
    /// Null for a device without files.
    virtual DeviceFiles *files() { return nullptr; }
    /// Values that move by themselves stand still while this is on.
    virtual void setQuiet(bool) { }
};
