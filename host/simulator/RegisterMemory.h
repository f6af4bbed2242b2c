#pragma once

#include <QByteArray>

/// The bytes of a simulated device. Not thread safe: the device core calls it under its mutex.
class RegisterMemory
{
public:
    virtual ~RegisterMemory() = default;

    /// Whether a device that has this memory answers an access of `length` bytes.
    virtual bool covers(quint64 address, quint32 length) const = 0;
    /// Both only for what `covers` accepts.
    virtual QByteArray read(quint64 address, quint32 length) const = 0;
    virtual void write(quint64 address, const QByteArray &bytes) = 0;
};
