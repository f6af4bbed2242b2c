#include "tree/WriteMessages.h"

#include "DeviceTaskModule/CameraInterface.h"
#include "DeviceTaskModule/QCameraTask.h"

#include <QCoreApplication>

QString WriteMessages::translated(const char *key)
{
    return QCoreApplication::translate("QFeatureTree", key);
}

QString WriteMessages::failed(const QString &nodeName, const QString &shownValue,
                              const QString &remark)
{
    // All at once: a value may hold a "%1" itself.
    return translated("lang_qfeaturetree_nodefailedsaveval").arg(nodeName, shownValue, remark);
}

QString WriteMessages::failed(const QString &nodeName, const QString &shownValue, QCameraTask &task)
{
    return failed(nodeName, shownValue, task.GetLastErrorRemark());
}

QString WriteMessages::withErrorLine(const QString &text, int error)
{
    return text + QStringLiteral("\r\n") + CameraInterface::GenerateSDKCode(error, true);
}

QString WriteMessages::logLine(const QString &nodeName, const QString &shownValue,
                               long int cameraId)
{
    return QStringLiteral("NodeName:%1, NodeValue:%2, [CameraID:%3]")
        .arg(nodeName, shownValue, QString::number(cameraId));
}
