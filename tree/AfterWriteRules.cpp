#include "tree/AfterWriteRules.h"

#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "ShellServicesModule/COMMONINTERFACE.h"
#include "ShellServicesModule/QVexaEventBus.h"
#include "UtilityKit/VexaInterface.h"
#include "model/EnumRecord.h"
#include "tree/CameraLookup.h"
#include "tree/TreeCallScope.h"
#include "tree/VexaFeatureTree.h"
#include "tree/WriteNodeRules.h"

#include <QDebug>

namespace {

/// The task is looked up anew: what a rule tells may end the camera.
QCameraTask *taskOf(const VexaFeatureTree &tree)
{
    return cameraTaskOf(tree.GetCurCameraID());
}

QString cameraNameOf(const QString &userId, QCameraBasicTask &basicTask)
{
    const QString address = VexaInterface::numIP2StrIP(static_cast<int>(basicTask._GetIP()));
    return userId.isEmpty()
        ? QStringLiteral("%1 (%2)").arg(basicTask._GetCameraModelName(), address)
        : userId + QStringLiteral(" (") + address + QLatin1Char(')');
}

bool renameCamera(VexaFeatureTree &tree, const QString &name)
{
    QCameraTask *task = taskOf(tree);
    QCameraBasicTask *basicTask = QTaskManager::Instance()->GetTaskByIDEx(tree.GetCurCameraID());
    QString userId;
    if (!task || !basicTask || !task->InvalidateNode(name)
        || !task->GetStringValue(name, &userId, nullptr, nullptr, true, false)) {
        return true;
    }
    const QString oldName = task->GetCameraName();
    const QString newName = cameraNameOf(userId, *basicTask);
    task->SetCameraName(newName);
    basicTask->_SetCameraName(newName);
    const long int cameraId = task->GetTaskCameraID();
    COMMONINTERFACE::CamModifedNameChanged(oldName, newName);
    emit QVexaEventBus::Instance()->SigVexaEventUpdateCameraStatus(cameraId);
    qInfo().noquote()
        << QStringLiteral("afterSetFeatureValue DeviceUserID strLastName = %1 strCameraName = %2")
               .arg(oldName, newName);
    return true;
}

bool clearModifiedMark(VexaFeatureTree &tree, const QString &name)
{
    const TreeCallScope scope(&tree);
    if (name == QLatin1String("UserSetRecoverDefault")) {
        // The defaults are in the set now, not yet in the device.
        tree.setFeatureValue(tree.propertyItemByName(QStringLiteral("UserSetLoad")), QVariant(),
                             true, false);
    }
    if (scope.treeIsGoing()) {
        return true;
    }
    const QString cameraName = tree.GetCurCameraName();
    COMMONINTERFACE::RemoveCurrentCamModified(cameraName);
    qInfo().noquote()
        << QStringLiteral("afterSetFeatureValue SigCameraNameRemoved strName = %1").arg(cameraName);
    return true;
}

bool renewDeviceList(VexaFeatureTree &, const QString &)
{
    emit QVexaEventBus::Instance()->SigVexaEventUpdateDevListCtrl();
    return true;
}

void tellTestImage(const QString &state)
{
    qInfo().noquote() << QStringLiteral("strTestImageInfo") << state;
    emit QVexaEventBus::Instance()->SigVexaEventTestImgNodeChanged(state);
}

bool tellFtpPictures(VexaFeatureTree &tree, const QString &name)
{
    QCameraTask *task = taskOf(tree);
    bool isOpen = false;
    const bool opened =
        task && task->GetBooleanValue(name, &isOpen, nullptr, true, false) && isOpen;
    tellTestImage(opened ? QStringLiteral("ftp_open") : QStringLiteral("ftp_close"));
    return true;
}

bool tellTestPattern(VexaFeatureTree &tree, const QString &name)
{
    const EnumRecord record;
    if (!record) {
        return false;
    }
    QCameraTask *task = taskOf(tree);
    const bool read = task && task->GetEnumerationValue(name, record.get(), nullptr, true, false);
    tellTestImage(testPatternState(read ? record->value : 0));
    return true;
}

bool tellCameraStatus(VexaFeatureTree &tree, const QString &)
{
    if (QCameraTask *task = taskOf(tree)) {
        emit QVexaEventBus::Instance()->SigVexaEventUpdateCameraStatus(task->GetTaskCameraID());
    }
    return true;
}

bool tellPollingParam(VexaFeatureTree &, const QString &name)
{
    emit QVexaEventBus::Instance()->SigVexaEventCameraPollingParamChanged();
    qInfo().noquote() << QStringLiteral("PollingParam changed ") + name;
    return true;
}

bool tellSmartTune(VexaFeatureTree &, const QString &name)
{
    emit QVexaEventBus::Instance()->SigVexaEventStartSmartTune(name == QLatin1String("SmartTune"));
    qInfo().noquote() << QStringLiteral("SetSmtTuneNode ") + name;
    return true;
}

struct AfterWriteRule
{
    const char *nodeName;
    bool (*run)(VexaFeatureTree &tree, const QString &name);
};

const AfterWriteRule AFTER_WRITE_RULES[] = {
    {"DeviceUserID", renameCamera},
    {"UserSetRecoverDefault", clearModifiedMark},
    {"UserSetRecoverFactory", clearModifiedMark},
    {"UserSetLoad", clearModifiedMark},
    {"UserSetSave", clearModifiedMark},
    {"AutoWorkReal", renewDeviceList},
    {"LockIPEnable", renewDeviceList},
    {"ForceIPEnable", renewDeviceList},
    {"PreventingIllegalOccupation", renewDeviceList},
    {"UploadTestRawPictureEnable", tellFtpPictures},
    {"TestPattern", tellTestPattern},
    {"UserSetName", tellCameraStatus},
    {"PollingParamName", tellPollingParam},
    {"PollingExposureTime", tellPollingParam},
    {"PollingGain", tellPollingParam},
    {"PollingGamma", tellPollingParam},
    {"PollingLensType", tellPollingParam},
    {"PollingFocusEnable", tellPollingParam},
    {"PollingFocusPos", tellPollingParam},
    {"PollingLightSelector", tellPollingParam},
    {"PollingLightEnable", tellPollingParam},
    {"PollingIOSelector", tellPollingParam},
    {"PollingIOAction", tellPollingParam},
    {"PollingParamEnable", tellPollingParam},
    {"PollingSingleParamTimeout", tellPollingParam},
    {"PollingSingleParamCodeNum", tellPollingParam},
    {"PollingSingleParamPeriod", tellPollingParam},
    {"PollingAlgoROIRegionIndex", tellPollingParam},
    {"SelfAdaptParamAdjustStart", tellSmartTune},
    {"SmartTune", tellSmartTune},
};

struct SourceData
{
    int protocol;
    const char *nodeName;
};

const SourceData SOURCE_DATA[] = {
    {2, "TcpFormatSourceData"},
    {3, "SerialFormatSourceData"},
    {4, "ResSet_Ftp_FileName_SourceData"},
    {5, "TcpFormatSourceData"},
    {6, "TcpServerFormatSourceData"},
    {7, "ProfinetFormatSourceData"},
    {8, "MelsecFormatSourceData"},
    {9, "EthernetIpFormatSourceData"},
    {10, "ModBusFormatSourceData"},
    {11, "UdpFormatSourceData"},
    {12, "FinsFormatSourceData"},
    {13, "UsbFormatSourceData"},
};

} // namespace

bool AfterWriteRules::run(VexaFeatureTree &tree, const QString &name)
{
    for (const AfterWriteRule &row : AFTER_WRITE_RULES) {
        if (name == QLatin1String(row.nodeName)) {
            return row.run(tree, name);
        }
    }
    return true;
}

QString AfterWriteRules::sourceDataNode(int protocol)
{
    for (const SourceData &row : SOURCE_DATA) {
        if (row.protocol == protocol) {
            return QString::fromLatin1(row.nodeName);
        }
    }
    return QString();
}
