// What the host's buttons, tables and bus signals ask of the current tree.

#include "ControlKit/Custom.h"
#include "ControlKit/CustomMessageBox.h"
#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "DeviceTaskModule/VexaOperateCameraThread.h"
#include "ShellServicesModule/COMMONINTERFACE.h"
#include "ShellServicesModule/QLocalCfg.h"
#include "UtilityKit/VexaInterface.h"
#include "fileaccess/QVexaFileAccessDialog.h"
#include "shell/VexaFeatureToolBar.h"
#include "shell/VexaMainFeatureWidget.h"
#include "tree/TreeCallScope.h"

#include <QDebug>
#include <QFont>
#include <QFontMetrics>
#include <QPointer>

namespace {

constexpr int TAB_TEXT_WIDTH = 80;
constexpr int TAB_FONT_PIXELS = 13;

} // namespace

void VexaMainFeatureWidget::OnToolBarBtnClicked(int nIndex)
{
    VexaFeatureTree *tree = currentTree();
    if (!tree) {
        return;
    }
    tree->ClearTreeViewInfo();
    switch (nIndex) {
    case VexaFeatureToolBar::BUTTON_EXPAND:
        OnActionFeatureExpand();
        break;
    case VexaFeatureToolBar::BUTTON_IMPORT:
        OnActionImportFeatures();
        break;
    case VexaFeatureToolBar::BUTTON_EXPORT:
        OnActionExportFeatures();
        break;
    case VexaFeatureToolBar::BUTTON_FILE_ACCESS:
        OnActionFileAccess();
        break;
    case VexaFeatureToolBar::BUTTON_REFRESH:
        OnActionFeaturesRefresh();
        break;
    default:
        break;
    }
}

void VexaMainFeatureWidget::OnActionFeatureExpand()
{
    onFeatureTreeExpand();
}

void VexaMainFeatureWidget::OnActionImportFeatures()
{
    if (VexaFeatureTree *tree = currentTree()) {
        tree->LoadCamFeatures(false, QString());
    }
}

void VexaMainFeatureWidget::OnActionExportFeatures()
{
    if (VexaFeatureTree *tree = currentTree()) {
        tree->SaveCamFeatures(false, QString());
    }
}

void VexaMainFeatureWidget::OnActionFileAccess()
{
    onFileAccess();
}

void VexaMainFeatureWidget::OnActionFeaturesRefresh()
{
    onRefreshFeature();
}

void VexaMainFeatureWidget::onFileAccess()
{
    VexaFeatureTree *tree = currentTree();
    if (!tree || m_lCurrentCameraID == -1) {
        return;
    }
    // The tree's own tool bar may stand below this on the stack.
    const TreeCallScope scope(tree);
    QWidget *mainWindow = COMMONINTERFACE::mainWindow();
    const QPointer<QWidget> parent(mainWindow ? mainWindow : window());
    const QPointer<QVexaFileAccessDialog> dialog =
        new QVexaFileAccessDialog(m_lCurrentCameraID, parent);
    dialog->exec();
    const QString lastWords = dialog ? dialog->lastWords() : QString();
    delete dialog;
    if (!lastWords.isEmpty()) {
        CustomMessageBox::information(parent, lastWords, QVexaFileAccessDialog::promptTitle());
    }
}

void VexaMainFeatureWidget::onRefreshFeature()
{
    if (VexaFeatureTree *tree = currentTree()) {
        tree->OnBtnRefresh();
    }
}

void VexaMainFeatureWidget::onFeatureTreeExpand()
{
    qInfo() << "VexaMainFeatureWidget::onFeatureTreeExpand:" << m_lCurrentCameraID;
    if (m_lCurrentCameraID == -1 || !m_expandStates.contains(m_lCurrentCameraID)) {
        return;
    }
    bool &collapsed = m_expandStates[m_lCurrentCameraID];
    collapsed = !collapsed;
    qInfo() << "VexaMainFeatureWidget::onFeatureTreeExpand:" << collapsed;
    if (VexaFeatureTree *tree = currentTree()) {
        tree->setExpandAll(!collapsed);
    }
}

void VexaMainFeatureWidget::OnTreeExpand()
{
    const auto *tree = qobject_cast<const VexaFeatureTree *>(sender());
    const auto state = m_expandStates.find(tree ? tree->GetCurCameraID() : m_lCurrentCameraID);
    if (state != m_expandStates.end()) {
        *state = false;
    }
}

void VexaMainFeatureWidget::OnVexaEventUpdateFeatureTree(long int lCameraID,
                                                         QList<QString> listNodeName)
{
    if (lCameraID < 0) {
        return;
    }
    qInfo().noquote()
        << QStringLiteral("VexaMainFeatureWidget::OnVexaEventUpdateFeatureTree %1 ").arg(lCameraID)
        << listNodeName;
    if (VexaFeatureTree *tree = featureTree(lCameraID, false)) {
        tree->OnAddValueChangedNodes(listNodeName);
    }
}

void VexaMainFeatureWidget::UpdateToolBarBtn(int state, int cameraId, bool busy)
{
    if (cameraId != m_lCurrentCameraID) {
        return;
    }
    // Not through featureTree: the bar of a camera that has vanished is still on show.
    if (VexaFeatureTree *tree = treeInMap(cameraId)) {
        tree->UpdateToolBarBtn(state, cameraId, busy);
    }
}

void VexaMainFeatureWidget::UpDateAllLange()
{
    QLocalCfg *configuration = QLocalCfg::Instance();
    if (!configuration) {
        return;
    }
    configuration->m_strPropertyLan = VexaInterface::language(false);
    if (VexaFeatureTree *tree = currentTree()) {
        tree->notifyEditorUpdate();
    }
}

void VexaMainFeatureWidget::UpDateCameraLanguage(bool value)
{
    const QList<long int> ids = getAllFeatureTreesMap().keys();
    for (const long int cameraId : ids) {
        QTaskManager *manager = QTaskManager::Instance();
        if (!manager) {
            return;
        }
        QCameraBasicTask *basicTask = manager->GetTaskByIDEx(cameraId);
        if (QCameraTask *task = basicTask ? basicTask->_CameraTak() : nullptr) {
            task->SetBooleanValue(QStringLiteral("Language"), value, nullptr);
        }
    }
}

VexaPropertyTreeItem *VexaMainFeatureWidget::getItemByName(const QString &name, StepIndex step)
{
    if (step != STEP_FEATURE_TREE) {
        return nullptr;
    }
    VexaFeatureTree *tree = currentTree();
    return tree ? tree->propertyItemByName(name) : nullptr;
}

void VexaMainFeatureWidget::SetCodeTypeMap(long int cameraId, const QMap<QString, int> &map)
{
    m_codeTypeTables.insert(cameraId, map);
}

int VexaMainFeatureWidget::GetCodeNumMaxMin(long int cameraId, const QString &name)
{
    return m_codeTypeTables.value(cameraId).value(name, -1);
}

QString VexaMainFeatureWidget::GetTabCutString(const QString &text)
{
    QFont font(Custom::globalFontFamily());
    font.setPixelSize(TAB_FONT_PIXELS);
    return QFontMetrics(font).elidedText(text, Qt::ElideRight, TAB_TEXT_WIDTH);
}

bool VexaMainFeatureWidget::IsConnect() const
{
    return m_bConnected;
}

void VexaMainFeatureWidget::SetIsConnect(bool connected, long int cameraId)
{
    m_bConnected = connected;
    if (!connected) {
        VexaOperateCameraThread::addOperateCamera(VEXA_OPERATOR_CLOSE, cameraId, true);
    }
}

void VexaMainFeatureWidget::OnUpdatePreTitle(long int lCamID)
{
    if (VexaFeatureTree *tree = featureTree(lCamID, false)) {
        tree->UpdateCameraItemName();
    }
}

bool VexaMainFeatureWidget::GetDeviceInfo(long int, _MY_STRUCT_DEVICE_INFO_ &)
{
    return false;
}

// Calls of the host that mean nothing to this module; they stand so that it links.
void VexaMainFeatureWidget::OnCameraStartGrabbing(long int)
{
}
void VexaMainFeatureWidget::OnCameraStopGrabbing(long int)
{
}
void VexaMainFeatureWidget::OnOpenCamera(long int)
{
}
void VexaMainFeatureWidget::OnCloseCamera(long int)
{
}
void VexaMainFeatureWidget::FileUpgrade(long int)
{
}
void VexaMainFeatureWidget::ForceDeviceIP(long int)
{
}
void VexaMainFeatureWidget::UploadScript(long int)
{
}
void VexaMainFeatureWidget::UpadateDeviceList()
{
}
void VexaMainFeatureWidget::UpdateAutoTimeRange(long int)
{
}
