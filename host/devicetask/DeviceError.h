#pragma once

#include <QByteArray>
#include <QString>

using GError = struct _GError;

/// Error codes of this layer. All are negative as an int; they are shown as 8 hexadecimal digits.
enum DeviceErrorCode : int {
    DEVICE_OK = 0,
    DEVICE_GONE = int(0x90006000U), ///< lost, closed or closing
    DEVICE_TIMEOUT = int(0x90006001U), ///< no answer within the transport's time
    DEVICE_TRANSPORT = int(0x90006002U), ///< an answer that cannot be used
    NODE_NOT_ACCESSIBLE = int(0x90006104U), ///< not available, locked, or the wrong direction
    NODE_GENERIC = int(0x90006200U),
    NODE_ARGUMENT = int(0x90006201U),
    NODE_RANGE = int(0x90006202U),
    NODE_PROPERTY = int(0x90006203U), ///< no such node, or a node of another kind
    NODE_RUNTIME = int(0x90006204U),
    NODE_LOGICAL = int(0x90006205U), ///< the description contradicts itself
    NODE_ACCESS = int(0x90006206U) ///< the device refused this one access
};

/// Outcome of one operation: a code and what is special in this case. A value; any thread.
class DeviceError
{
public:
    DeviceError() = default;
    DeviceError(DeviceErrorCode code, const QString &detail)
        : m_nCode(code)
        , m_strDetail(detail)
    {
    }
    /// The meaning of a failed Aravis call on `subject` (a node's name or a memory range).
    static DeviceError fromGError(const GError *error, const QString &subject);

    bool failed() const { return m_nCode != DEVICE_OK; }
    DeviceErrorCode code() const { return m_nCode; }
    /// True when the device did not answer, as opposed to an answer that refuses.
    bool isTransport() const { return m_nCode <= DEVICE_TRANSPORT && m_nCode >= DEVICE_GONE; }
    /// What is special in this case, without the code's meaning; may be empty.
    QString detail() const { return m_strDetail; }
    /// The code's remark with the detail behind it, in English; empty after success.
    QString remark() const;

    /// The meaning of a code in one English sentence; empty for an unknown code.
    static QString remarkOf(int code);

private:
    DeviceErrorCode m_nCode = DEVICE_OK;
    QString m_strDetail;
};
