#include "tree/WriteFollowUps.h"

#include "DeviceTaskModule/QCameraTask.h"
#include "ShellServicesModule/QVexaEventBus.h"
#include "ShellServicesModule/VexaListenTools.h"
#include "model/EnumRecord.h"
#include "model/VexaPropertyTreeItem.h"
#include "tree/CameraLookup.h"
#include "tree/QGetFeaturesThread.h"
#include "tree/TreeCallScope.h"
#include "tree/VexaFeatureTree.h"

#include <QDebug>

namespace {

constexpr int VALUE_AND_ACCESS =
    QGetFeaturesThread::UPDATE_VISIBLE_VALUE | QGetFeaturesThread::UPDATE_ACCESS;
constexpr quint32 CODE_READ_MODE_LIMITED = 3;
constexpr quint32 TRIGGER_SOURCE_NOT_LIMITED = 13; ///< a source that the mode above does not know

struct Write
{
    VexaFeatureTree &tree;
    const QString &name;
    const QVariant &value;
};

void reread(VexaFeatureTree &tree, const char *name)
{
    tree.getFeatureValueFromCamera(tree.propertyItemByName(QLatin1String(name)));
}

void refreshAll(const Write &write)
{
    write.tree.OnBtnRefresh();
}

void rereadReadSetting(const Write &write)
{
    const VexaPropertyTreeItem *category =
        write.tree.propertyItemByName(QStringLiteral("ReadSetting"));
    for (int row = 0; category && row < category->childCount(); ++row) {
        write.tree.updateFeature(category->child(row), VALUE_AND_ACCESS);
    }
}

void tellFtpState(const Write &write)
{
    QString state =
        write.value.toInt() == 1 ? QStringLiteral("ftp_open") : QStringLiteral("ftp_close");
    qInfo().noquote() << QStringLiteral("strFtpEnable") << state;
    VexaListenTools::instance()->notifyListeners(VEXA_EVENT_TEST_STATE, &state);
}

void rereadItself(const Write &write)
{
    write.tree.getFeatureValueFromCamera(write.tree.propertyItemByName(write.name));
}

void tellRegion(const Write &write)
{
    emit QVexaEventBus::Instance()->SigVexaEventUpdateROI(write.tree.GetCurCameraID());
}

void tellMainSub(const Write &write)
{
    emit QVexaEventBus::Instance()->SigVexaEventUpdateMainSub(write.tree.GetCurCameraID(), true);
}

void tellRole(const Write &write)
{
    const TreeCallScope scope(&write.tree);
    emit QVexaEventBus::Instance()->SigVexaEventStateRoleChanged(write.tree.GetCurCameraID());
    if (!scope.treeIsGoing()) {
        tellMainSub(write);
    }
}

void rereadFrameHandling(const Write &write)
{
    reread(write.tree, "MultiframeHandleMode");
}

void replaceTriggerSource(QCameraTask &task)
{
    const EnumRecord record;
    if (!record
        || !task.GetEnumerationValue(QStringLiteral("CodeReadMode"), record.get(), nullptr, true,
                                     false)
        || record->value != CODE_READ_MODE_LIMITED) {
        return;
    }
    const QString source = QStringLiteral("TriggerSource");
    if (task.GetEnumerationValue(source, record.get(), nullptr, true, false)
        && record->value == TRIGGER_SOURCE_NOT_LIMITED && record->count > 0) {
        task.SetEnumerationValue(source, record->entries[0], nullptr);
    }
}

void followCodeReadMode(const Write &write)
{
    reread(write.tree, "TriggerSource");
    if (QCameraTask *task = cameraTaskOf(write.tree.GetCurCameraID())) {
        replaceTriggerSource(*task);
    }
    write.tree.OnBtnRefresh();
}

void renewLimitedEditor(const Write &write)
{
    static const struct
    {
        int arithmeticType;
        const char *limitedNode;
    } LIMITED_NODES[] = {{1, "LocBarNum"}, {2, "IdxLocCodeNum"}, {3, "StackBarNum"}};
    for (const auto &row : LIMITED_NODES) {
        VexaPropertyTreeItem *item = write.value.toInt() == row.arithmeticType
            ? write.tree.propertyItemByName(QLatin1String(row.limitedNode))
            : nullptr;
        if (item) {
            item->notifyViewUpdate(write.tree.GetCurCameraID(), -1, false, false);
        }
    }
}

void tellPollingNumber(const Write &write)
{
    write.tree.UpdatePollingValue(write.name, QString::number(write.value.toLongLong()));
}

void tellPollingFloat(const Write &write)
{
    const float value = static_cast<float>(write.value.toDouble());
    write.tree.UpdatePollingValue(write.name, QString::number(static_cast<double>(value), 'f', 2));
}

void tellPollingText(const Write &write)
{
    write.tree.UpdatePollingValue(write.name, write.value.toString());
}

struct FollowUp
{
    const char *type;
    const char *nodeName;
    void (*run)(const Write &write);
    enum When { AfterSuccess, AfterFailure } when = AfterSuccess;
};

const FollowUp FOLLOW_UPS[] = {
    {"Boolean", "LDirectionEnable", refreshAll},
    {"Boolean", "PHARMACODE", rereadReadSetting},
    {"Boolean", "PHARMACODE2d", rereadReadSetting},
    {"Boolean", "PollingParamEnable", tellPollingNumber},
    {"Boolean", "PollingFocusEnable", tellPollingNumber},
    {"Boolean", "PollingLightEnable", tellPollingNumber},
    {"Boolean", "UploadTestRawPictureEnable", tellFtpState},
    {"Boolean", "UploadTestRawPictureEnable", rereadItself, FollowUp::AfterFailure},
    {"Boolean", "AlgoRegionEnable", tellRegion},
    {"Integer", "PollingSingleParamTimeout", tellPollingNumber},
    {"Integer", "PollingSingleParamCodeNum", tellPollingNumber},
    {"Integer", "PollingSingleParamPeriod", tellPollingNumber},
    {"Integer", "PollingAlgoROIRegion", tellPollingNumber},
    {"Integer", "PollingFocusPos", tellPollingNumber},
    {"Integer", "PollingAlgoROIRegionIndex", tellPollingNumber},
    {"Integer", "AlgoRegionIndex", tellRegion},
    {"Integer", "AlgoRegionWidth", tellRegion},
    {"Integer", "AlgoRegionHeight", tellRegion},
    {"Integer", "AlgoRegionLeftX", tellRegion},
    {"Integer", "AlgoRegionLeftY", tellRegion},
    {"Integer", "MainStationID", tellMainSub},
    {"Enumeration", "PollingEnable", refreshAll},
    {"Enumeration", "TriggerMode", rereadFrameHandling},
    {"Enumeration", "CodeReadMode", followCodeReadMode},
    {"Enumeration", "PollingIOAction", tellPollingNumber},
    {"Enumeration", "PollingLightSelector", tellPollingNumber},
    {"Enumeration", "PollingLensType", tellPollingNumber},
    {"Enumeration", "PollingLensType", tellPollingNumber, FollowUp::AfterFailure},
    {"Enumeration", "ArithmeticType", renewLimitedEditor},
    {"Enumeration", "AlgoCameraSelector", tellRegion},
    {"Enumeration", "MultiCameraMode", tellRole},
    {"Enumeration", "StationRole", tellRole},
    {"Float", "PollingExposureTime", tellPollingFloat},
    {"Float", "PollingGain", tellPollingFloat},
    {"Float", "PollingGamma", tellPollingFloat},
    {"StringReg", "PollingParamName", tellPollingText},
};

} // namespace

void WriteFollowUps::run(VexaFeatureTree &tree, const QString &type, const QString &name,
                         const QVariant &value, bool written)
{
    const FollowUp::When when = written ? FollowUp::AfterSuccess : FollowUp::AfterFailure;
    for (const FollowUp &row : FOLLOW_UPS) {
        if (row.when == when && type == QLatin1String(row.type)
            && name == QLatin1String(row.nodeName)) {
            row.run({tree, name, value});
            return;
        }
    }
}
