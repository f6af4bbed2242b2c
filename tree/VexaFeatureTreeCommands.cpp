// Command nodes, and the services that run commands or follow the trigger without a button.

#include "DeviceTaskModule/QCameraTask.h"
#include "ShellServicesModule/QFunction.h"
#include "ShellServicesModule/QVexaEventBus.h"
#include "shell/VexaMainFeatureWidget.h"
#include "tree/CommandRules.h"
#include "tree/TreeCallScope.h"
#include "tree/VexaFeatureTree.h"
#include "tree/WriteMessages.h"
#include "view/VexaFeatureTreeView.h"

#include <QCoreApplication>
#include <QDebug>
#include <QTimer>

#include <climits>

using WriteMessages::NO_CODE;
using WriteMessages::translated;

namespace {

constexpr qint64 FOCUS_DONE = 1;

bool isFocusUnderWay(QCameraTask *task)
{
    _NODE_INT_VALUE_ state{};
    return task
        && task->GetIntegerValue(QStringLiteral("AutoFocusStat"), &state, nullptr, true, false)
        && state.value != FOCUS_DONE;
}

} // namespace

bool VexaFeatureTree::OnCommandNodeBtnClicked(const QString &name)
{
    const TreeCallScope scope(this);
    const CommandRule &rule = commandRuleOf(name);
    if (m_bUpdatePending && (rule.traits & CommandTrait::WaitsForStartOfGrabbing)) {
        m_bUpdatePending = false;
        qInfo("AcquisitionStart is not sent, the first time after a stop of grabbing");
        return false;
    }
    if (rule.traits & CommandTrait::RunsNothing) {
        return true;
    }
    if (name.isEmpty()) {
        return false;
    }
    appendPending(name);
    if (!cameraTask() || !mayRunCommand(rule)) {
        return false;
    }
    // Questions and dialogs run other events: the camera may have gone since.
    QCameraTask *task = scope.treeIsGoing() ? nullptr : cameraTask();
    int error = NO_CODE;
    const bool ran = task && task->ExecuteCommand(name, &error);
    if (scope.treeIsGoing()) {
        return false;
    }
    if (m_bLoading || (!ran && (rule.traits & CommandTrait::ShowsLoading))) {
        m_bLoading = false;
        hideLoading();
    }
    if (!task) {
        qInfo().noquote() << QStringLiteral("%1 is not run, the camera has gone").arg(name);
        return false;
    }
    if (!ran) {
        return commandFailed(name, *task, error);
    }
    qCritical().noquote()
        << QStringLiteral("NodeName:%1, [CameraID:%2]").arg(name, QString::number(m_lCameraID));
    if (rule.traits & CommandTrait::TakesDeviceAway) {
        return letDeviceGo();
    }
    if (!startInvalidateTimer()) {
        return false;
    }
    if (rule.traits & CommandTrait::LoadsSettings) {
        qInfo("VexaFeatureTree::OnCommandNodeBtnClicked UserSetLoad set......");
        emit QVexaEventBus::Instance()->SigVexaEventLoadParameters();
    }
    return true;
}

bool VexaFeatureTree::mayRunCommand(const CommandRule &rule)
{
    const TreeCallScope scope(this);
    if ((rule.traits & CommandTrait::NeedsFocusDone) && isFocusUnderWay(cameraTask())) {
        qInfo("the focus is being set already");
        return false;
    }
    if (rule.questionKey
        && !confirmed(BOX_QUESTION, translated(rule.questionKey),
                      translated("lang_qfeaturetree_prompt"))) {
        return false;
    }
    const bool loads = (rule.traits & CommandTrait::LoadsSettings) && !m_bLoading;
    if (loads || (rule.traits & CommandTrait::ShowsLoading)) {
        m_bLoading = m_bLoading || loads;
        ShowLoadingDlg(true, translated("lang_qfeaturetree_updatefeature"));
        // The dialog is painted before the device blocks this thread.
        QCoreApplication::processEvents();
    }
    return !scope.treeIsGoing();
}

bool VexaFeatureTree::commandFailed(const QString &name, QCameraTask &task, int error)
{
    const QString text =
        translated("lang_qfeaturetree_nodefailedexec").arg(name, task.GetLastErrorRemark());
    if (commandRuleOf(name).traits & CommandTrait::FailureAlsoPrompts) {
        const TreeCallScope scope(this);
        QFunction::Instance()->SendShowPromptSignal(m_lCameraID, HINT_NOTICE, text, QString(),
                                                    false);
        if (scope.treeIsGoing()) {
            return false;
        }
    }
    return showFailure(text, error);
}

bool VexaFeatureTree::letDeviceGo()
{
    for (QTimer *timer : {m_pPollingTimer, m_pInvalidateTimer, m_pRefreshTimer}) {
        if (timer) {
            timer->stop();
        }
    }
    // No round of updates will end any more.
    m_bLoading = false;
    hideLoading();
    if (m_pTreeView) {
        m_pTreeView->setDelegateEnable(false);
        m_pTreeView->notifyEditorUpdate();
    }
    ShowMessage(this, translated("lang_qfeaturetree_cameraisrebooting"), QString(), QString(),
                HINT_NOTICE, false);
    return VexaMainFeatureWidget::instance()->isFeatureTreeExist(m_lCameraID);
}

void VexaFeatureTree::StopSmartTune(const QString &name)
{
    OnCommandNodeBtnClicked(name);
}

void VexaFeatureTree::ShowSmartTune(const QString &strNode, const QVariant &oNodeValue)
{
    emit SigShowSmartTune(strNode, oNodeValue);
}

void VexaFeatureTree::GetFeatureValueByThread(QString strNodeName, QVariant oNodeValue)
{
    emit SigGetFeatureValueByThread(strNodeName, oNodeValue);
}

void VexaFeatureTree::SetAutoSoftwareTrig(bool start, unsigned int intervalMs)
{
    if (!m_pAutoTriggerTimer) {
        return;
    }
    if (start) {
        m_pAutoTriggerTimer->start(static_cast<int>(qMin<unsigned int>(intervalMs, INT_MAX)));
    } else {
        m_pAutoTriggerTimer->stop();
    }
}

void VexaFeatureTree::OnTimerAutoTrigger()
{
    if (QCameraTask *task = cameraTask()) {
        task->ExecuteCommand(QStringLiteral("TriggerSoftware"), nullptr);
    }
}

void VexaFeatureTree::OnTriggerModeChanged(int mode)
{
    if (QCameraTask *task = cameraTask()) {
        task->SetTriggerMode(mode);
    }
}
