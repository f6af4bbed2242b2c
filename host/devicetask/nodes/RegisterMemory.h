#pragma once

#include "host/devicetask/DeviceError.h"
#include "host/devicetask/DeviceSession.h"

#include <QByteArray>
#include <QHash>
#include <QPair>

/// A device's memory during one operation: what was read stays known until the next write. On the connection's thread.
class RegisterMemory
{
public:
    /// Most bytes in one access of the device; longer registers take several.
    static constexpr int BLOCK = 512;

    explicit RegisterMemory(const DeviceSession &session)
        : m_session(session)
    {
    }

    /// `subject` names the register in errors. `bytes` stays as it is on failure. What the reader holds is enough only
    /// when `mayHold`, and what is read is held only then.
    DeviceError read(quint64 address, int length, bool mayHold, const QString &subject,
                     QByteArray *bytes);
    DeviceError write(quint64 address, QByteArray bytes, const QString &subject);

private:
    const DeviceSession &m_session;
    QHash<QPair<quint64, int>, QByteArray> m_known;
};
