#include "host/devicetask/DeviceError.h"

#include <arv.h>

namespace {

struct CodeRemark
{
    DeviceErrorCode code;
    const char *remark;
};

const CodeRemark CODE_REMARKS[] = {
    {DEVICE_OK, "Success."},
    {DEVICE_GONE, "The device is gone."},
    {DEVICE_TIMEOUT, "The device did not answer in time."},
    {DEVICE_TRANSPORT, "The connection to the device is broken."},
    {NODE_NOT_ACCESSIBLE, "The node is not accessible in its present state."},
    {NODE_GENERIC, "The node could not be evaluated."},
    {NODE_ARGUMENT, "The argument is not valid."},
    {NODE_RANGE, "The value is out of range."},
    {NODE_PROPERTY, "The node does not exist or is of another kind."},
    {NODE_RUNTIME, "The operation failed at run time."},
    {NODE_LOGICAL, "The device description is not consistent."},
    {NODE_ACCESS, "The device refused the access."},
};

struct StatusCode
{
    int status;
    DeviceErrorCode code;
};

const StatusCode DEVICE_STATUS_CODES[] = {
    {ARV_DEVICE_ERROR_WRONG_FEATURE, NODE_PROPERTY},
    {ARV_DEVICE_ERROR_FEATURE_NOT_FOUND, NODE_PROPERTY},
    {ARV_DEVICE_ERROR_NOT_CONNECTED, DEVICE_GONE},
    {ARV_DEVICE_ERROR_PROTOCOL_ERROR, NODE_ACCESS},
    {ARV_DEVICE_ERROR_TRANSFER_ERROR, DEVICE_TRANSPORT},
    {ARV_DEVICE_ERROR_TIMEOUT, DEVICE_TIMEOUT},
    {ARV_DEVICE_ERROR_NOT_FOUND, DEVICE_GONE},
    {ARV_DEVICE_ERROR_INVALID_PARAMETER, NODE_ARGUMENT},
    {ARV_DEVICE_ERROR_NOT_CONTROLLER, NODE_NOT_ACCESSIBLE},
    {ARV_DEVICE_ERROR_UNKNOWN, DEVICE_TRANSPORT},
    {ARV_DEVICE_ERROR_PROTOCOL_ERROR_NOT_IMPLEMENTED, NODE_ACCESS},
    {ARV_DEVICE_ERROR_PROTOCOL_ERROR_INVALID_PARAMETER, NODE_ACCESS},
    {ARV_DEVICE_ERROR_PROTOCOL_ERROR_INVALID_ADDRESS, NODE_ACCESS},
    {ARV_DEVICE_ERROR_PROTOCOL_ERROR_WRITE_PROTECT, NODE_NOT_ACCESSIBLE},
    {ARV_DEVICE_ERROR_PROTOCOL_ERROR_BAD_ALIGNMENT, NODE_ACCESS},
    {ARV_DEVICE_ERROR_PROTOCOL_ERROR_ACCESS_DENIED, NODE_NOT_ACCESSIBLE},
    {ARV_DEVICE_ERROR_PROTOCOL_ERROR_BUSY, NODE_NOT_ACCESSIBLE},
};

const StatusCode GENICAM_STATUS_CODES[] = {
    {ARV_GC_ERROR_PROPERTY_NOT_DEFINED, NODE_PROPERTY},
    {ARV_GC_ERROR_PVALUE_NOT_DEFINED, NODE_PROPERTY},
    {ARV_GC_ERROR_INVALID_PVALUE, NODE_PROPERTY},
    {ARV_GC_ERROR_EMPTY_ENUMERATION, NODE_RANGE},
    {ARV_GC_ERROR_OUT_OF_RANGE, NODE_RANGE},
    {ARV_GC_ERROR_NO_DEVICE_SET, NODE_RUNTIME},
    {ARV_GC_ERROR_NO_EVENT_IMPLEMENTATION, NODE_NOT_ACCESSIBLE},
    {ARV_GC_ERROR_NODE_NOT_FOUND, NODE_PROPERTY},
    {ARV_GC_ERROR_ENUM_ENTRY_NOT_FOUND, NODE_RANGE},
    {ARV_GC_ERROR_INVALID_LENGTH, NODE_LOGICAL},
    {ARV_GC_ERROR_READ_ONLY, NODE_NOT_ACCESSIBLE},
    {ARV_GC_ERROR_SET_FROM_STRING_UNDEFINED, NODE_LOGICAL},
    {ARV_GC_ERROR_GET_AS_STRING_UNDEFINED, NODE_LOGICAL},
    {ARV_GC_ERROR_INVALID_BIT_RANGE, NODE_LOGICAL},
    {ARV_GC_ERROR_INVALID_SYNTAX, NODE_ARGUMENT},
};

template<std::size_t N>
DeviceErrorCode codeOf(const StatusCode (&table)[N], int status)
{
    for (const StatusCode &row : table) {
        if (row.status == status) {
            return row.code;
        }
    }
    return NODE_GENERIC;
}

} // namespace

DeviceError DeviceError::fromGError(const GError *error, const QString &subject)
{
    DeviceErrorCode code = NODE_GENERIC;
    if (error->domain == ARV_DEVICE_ERROR) {
        code = codeOf(DEVICE_STATUS_CODES, error->code);
    } else if (error->domain == ARV_GC_ERROR) {
        code = codeOf(GENICAM_STATUS_CODES, error->code);
    }
    return {code, subject + QLatin1String(": ") + QString::fromUtf8(error->message)};
}

QString DeviceError::remark() const
{
    if (!failed()) {
        return {};
    }
    const QString meaning = remarkOf(m_nCode);
    return m_strDetail.isEmpty() ? meaning
                                 : meaning + QLatin1String(" (") + m_strDetail + QLatin1Char(')');
}

QString DeviceError::remarkOf(int code)
{
    for (const CodeRemark &row : CODE_REMARKS) {
        if (row.code == code) {
            return QString::fromLatin1(row.remark);
        }
    }
    return {};
}
