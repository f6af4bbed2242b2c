#pragma once

#include "host/devicetask/DeviceError.h"

#include <arv.h>

/// Owns the GError of one Aravis call after the other. Aravis answers 0 for a failed read, so every call gets one.
class GErrorBox
{
public:
    GErrorBox() = default;
    ~GErrorBox() { g_clear_error(&m_pError); }
    GErrorBox(const GErrorBox &) = delete;
    GErrorBox &operator=(const GErrorBox &) = delete;

    /// The place for the next call's error; forgets the last one.
    GError **next()
    {
        g_clear_error(&m_pError);
        return &m_pError;
    }
    bool failed() const { return m_pError != nullptr; }
    DeviceError error(const QString &subject) const
    {
        return m_pError ? DeviceError::fromGError(m_pError, subject) : DeviceError();
    }

private:
    GError *m_pError = nullptr;
};
