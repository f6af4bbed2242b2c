#include "DeviceTaskModule/CameraInterface.h"

#include "host/devicetask/DeviceError.h"

QString CameraInterface::GenerateSDKCode(int errorCode, bool withRemark)
{
    const QString code = QLatin1String("0x")
        + QString::number(static_cast<quint32>(errorCode), 16)
              .toUpper()
              .rightJustified(8, QLatin1Char('0'));
    const QString remark = withRemark ? DeviceError::remarkOf(errorCode) : QString();
    return remark.isEmpty() ? code : code + QLatin1String(": ") + remark;
}
