// The typed writes: one access to the device each, with the rules that go by node name around it.

#include "DeviceTaskModule/CameraInterface.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "ShellServicesModule/QFunction.h"
#include "ShellServicesModule/VexaListenTools.h"
#include "model/EnumRecord.h"
#include "shell/VexaMainFeatureWidget.h"
#include "tree/QGetFeaturesThread.h"
#include "tree/TreeCallScope.h"
#include "tree/VexaFeatureTree.h"
#include "tree/WriteMessages.h"
#include "tree/WriteNodeRules.h"

#include <QDebug>
#include <QThread>

using WriteMessages::NO_CODE;
using WriteMessages::translated;

namespace {

constexpr int NOT_ACCESSIBLE_NOW = static_cast<int>(0x90006104U);
constexpr qint64 PACKET_SIZE_BAND = 500;
constexpr unsigned long TRIGGER_MODE_PAUSE_MS = 500;

} // namespace

bool VexaFeatureTree::OnBooleanNodeValueChanged(const QString &name, int value)
{
    const TreeCallScope scope(this);
    QCameraTask *task = cameraTask();
    if (!task || name.isEmpty()) {
        return false;
    }
    appendPending(name);
    if (value != 0 && (writeRulesOf(name) & WriteRule::TellsProfinetRestart)) {
        ShowMessage(this, QString(), translated("lang_qfeaturetree_profinetmessage"), QString(),
                    HINT_NOTICE, false);
    }
    const QString shown = QString::number(value != 0 ? 1 : 0);
    int error = NO_CODE;
    if (!task->SetBooleanValue(name, value != 0, &error)) {
        qInfo().noquote() << QStringLiteral("errCodeStr: %1 [CameraID:%2")
                                 .arg(CameraInterface::GenerateSDKCode(error, false),
                                      QString::number(m_lCameraID));
        return showFailure(WriteMessages::failed(name, shown, *task), error);
    }
    if (!startInvalidateTimer()) {
        return false;
    }
    qInfo().noquote() << WriteMessages::logLine(name, shown, m_lCameraID);
    return true;
}

bool VexaFeatureTree::OnIntegerNodeValueChanged(const QString &name, qint64 value)
{
    const TreeCallScope scope(this);
    QCameraTask *task = cameraTask();
    if (!task || name.isEmpty()) {
        return false;
    }
    appendPending(name);
    const WriteRules rules = writeRulesOf(name);
    if (rules & WriteRule::AdvisesPacketSize) {
        const qint64 optimal = task->GetOptimalPacketSize();
        const bool inBand =
            value >= optimal - PACKET_SIZE_BAND && value <= optimal + PACKET_SIZE_BAND;
        if (!inBand && !task->IsPromptSuppressed()) {
            ShowMessage(this, translated("lang_qfeaturetree_recommendedval").arg(optimal),
                        QString(), QString(), HINT_ADVICE, false);
            if (scope.treeIsGoing()
                || !VexaMainFeatureWidget::instance()->isFeatureTreeExist(m_lCameraID)) {
                return false;
            }
        }
    }
    const QString shown = QString::number(value);
    int error = NO_CODE;
    if (task->SetIntegerValue(name, value, &error)) {
        qCritical().noquote() << WriteMessages::logLine(name, shown, m_lCameraID);
        return startInvalidateTimer();
    }
    const QString text = rules & WriteRule::IsPort
        ? translated("lang_qfeaturetree_portconflicts").arg(shown, task->GetLastErrorRemark())
        : WriteMessages::failed(name, shown, *task);
    if (task->IsPromptSuppressed()) {
        qInfo().noquote() << text;
    } else {
        QFunction::Instance()->SendShowPromptSignal(
            m_lCameraID, HINT_FAILURE, WriteMessages::withErrorLine(text, error),
            translated("lang_qfeaturetree_failedsetval"), true);
    }
    return false;
}

bool VexaFeatureTree::OnFloatNodeValueChanged(const QString &name, float value)
{
    const TreeCallScope scope(this);
    QCameraTask *task = cameraTask();
    if (!task || name.isEmpty()) {
        return false;
    }
    appendPending(name);
    const QString shown = QStringLiteral("%1").arg(static_cast<double>(value), 0, 'g', -1);
    int error = NO_CODE;
    if (task->SetFloatValue(name, value, &error)) {
        if (!startInvalidateTimer()) {
            return false;
        }
        qCritical().noquote() << WriteMessages::logLine(name, shown, m_lCameraID);
        return true;
    }
    const QString text = WriteMessages::failed(name, shown, *task);
    if (task->IsPromptSuppressed()) {
        qInfo().noquote() << text;
        return false;
    }
    return showFailure(text, error);
}

bool VexaFeatureTree::OnEnumerationNodeValueChanged(const QString &name, int value)
{
    const TreeCallScope scope(this);
    appendPending(name);
    QCameraTask *task = cameraTask();
    if (!task || name.isEmpty()) {
        return false;
    }
    const WriteRules rules = writeRulesOf(name);
    const bool isTriggerMode = name == QLatin1String("TriggerMode");
    if (isTriggerMode && value == 0) {
        OnTriggerModeChanged(0);
    }
    if ((rules & WriteRule::BelongsToPolling) && isPollingOn(*task)) {
        return swallowForPolling(name);
    }
    if ((rules & WriteRule::ShowsLoading) && !m_bLoading) {
        m_bLoading = true;
        ShowLoadingDlg(true, translated("lang_qfeaturetree_updatefeature"));
    }
    int error = NO_CODE;
    if (!task->SetEnumerationValue(name, static_cast<quint32>(value), &error)) {
        return enumerationFailed(name, value, error);
    }
    if (rules & WriteRule::ChangesTarget) {
        long int cameraId = m_lCameraID;
        VexaListenTools::instance()->notifyListeners(VEXA_EVENT_CAMERA_TARGET_CHANGED, &cameraId);
    }
    if (isTriggerMode && value == 1) {
        QThread::msleep(TRIGGER_MODE_PAUSE_MS);
        OnTriggerModeChanged(1);
    }
    if (name == QLatin1String("TestPattern")) {
        QString state = testPatternState(value);
        VexaListenTools::instance()->notifyListeners(VEXA_EVENT_TEST_STATE, &state);
    }
    if (!startInvalidateTimer()) {
        return false;
    }
    qCritical().noquote() << WriteMessages::logLine(name, QString::number(value), m_lCameraID);
    if (rules & WriteRule::TakesEffectAfterRestart) {
        QFunction::Instance()->SendShowPromptSignal(
            m_lCameraID, HINT_NOTICE, translated("lang_qfeaturetree_saveparamrestart"), QString(),
            false);
    }
    return true;
}

bool VexaFeatureTree::enumerationFailed(const QString &name, int value, int error)
{
    const WriteRules rules = writeRulesOf(name);
    if (m_bLoading) {
        m_bLoading = false;
        if (rules & WriteRule::ShowsLoading) {
            hideLoading();
        }
    }
    QCameraTask *task = cameraTask();
    if (!task) {
        return false;
    }
    const QString text = WriteMessages::failed(name, QString::number(value), *task);
    if (rules & WriteRule::FailsSilently) {
        qInfo().noquote() << text;
        return false;
    }
    if ((rules & WriteRule::IsLineConfig) && error == NOT_ACCESSIBLE_NOW) {
        return showFailure(translated("lang_qfeaturetree_lineconfigerrortip"), error);
    }
    return showFailure(text, error);
}

bool VexaFeatureTree::isPollingOn(QCameraTask &task) const
{
    const EnumRecord record;
    if (!record
        || !task.GetEnumerationValue(QStringLiteral("PollingEnable"), record.get(), nullptr, true,
                                     false)) {
        qCritical().noquote()
            << QStringLiteral("NodeName:PollingEnable, [CameraID:%1]").arg(m_lCameraID);
    }
    return record && record->value != 0;
}

bool VexaFeatureTree::swallowForPolling(const QString &name)
{
    QFunction::Instance()->InsertMessageLog(
        MESSAGE_LOG_INFO, GetCurCameraName(),
        translated("lang_qfeaturetree_heldbypolling").arg(name));
    // The refresh brings the device's value back into the row.
    startInvalidateTimer();
    return true;
}

bool VexaFeatureTree::OnStringRegNodeValueChanged(const QString &name, const QString &value)
{
    const TreeCallScope scope(this);
    QCameraTask *task = cameraTask();
    if (!task || name.isEmpty()) {
        return false;
    }
    if (value.isEmpty() && (writeRulesOf(name) & WriteRule::NeverEmpty)) {
        confirmed(BOX_WARNING, translated("lang_qfeaturetree_ftpnamenotempty"));
        if (!scope.treeIsGoing()) {
            // Not before the caller has put the empty text into the row: the refresh brings the device's back.
            QMetaObject::invokeMethod(
                this,
                [this, name] {
                    UpdateFeatures(FEATURES_UPDATE_INVALIDATOR, {name},
                                   QGetFeaturesThread::UPDATE_EVERYTHING);
                },
                Qt::QueuedConnection);
        }
        return true;
    }
    appendPending(name);
    int error = NO_CODE;
    if (!task->SetStringValue(name, value, &error)) {
        // The box shows rich text.
        QString shown = value;
        shown.replace(QLatin1Char('>'), QLatin1String("&gt;"));
        shown.replace(QLatin1Char('<'), QLatin1String("&lt;"));
        return showFailure(WriteMessages::failed(name, shown, *task), error);
    }
    if (!startInvalidateTimer()) {
        return false;
    }
    qInfo().noquote() << WriteMessages::logLine(name, value, m_lCameraID);
    return true;
}

bool VexaFeatureTree::showFailure(const QString &text, int error)
{
    ShowMessage(this, translated("lang_qfeaturetree_failedsetval"),
                WriteMessages::withErrorLine(text, error), QString(), HINT_FAILURE, true);
    return false;
}
