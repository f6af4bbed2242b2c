#include "host/workbench/CameraPage.h"

#include "host/shellservices/ShellHost.h"
#include "shell/VexaMainFeatureWidget.h"
#include "tree/VexaFeatureTree.h"

#include <QPointer>

namespace {

constexpr int TOOL_BAR_LIVE = 1;
constexpr int TOOL_BAR_DEAD = 0;

} // namespace

VexaFeatureTree *CameraPage::tree(long int cameraId)
{
    return cameraId == NO_CAMERA_ID
        ? nullptr
        : VexaMainFeatureWidget::instance()->getAllFeatureTreesMap().value(cameraId, nullptr);
}

VexaFeatureTree *CameraPage::make(long int cameraId)
{
    VexaMainFeatureWidget *mainWidget = VexaMainFeatureWidget::instance();
    VexaFeatureTree *made = mainWidget->featureTree(cameraId, true);
    if (made) {
        show(cameraId);
        mainWidget->OnCameraOpen(cameraId);
        mainWidget->SetIsConnect(true, cameraId);
    }
    return made;
}

void CameraPage::show(long int cameraId)
{
    ShellHost::instance()->setCurrentCameraID(cameraId);
    VexaMainFeatureWidget::instance()->setCurrentCameraID(cameraId);
}

void CameraPage::setToolBar(long int cameraId, bool on)
{
    VexaMainFeatureWidget::instance()->UpdateToolBarBtn(
        on ? TOOL_BAR_LIVE : TOOL_BAR_DEAD, static_cast<int>(cameraId), hasFileJob(cameraId));
}

bool CameraPage::hasFileJob(long int cameraId)
{
    const VexaFeatureTree *shown = tree(cameraId);
    return shown && shown->isFeatureFileBusy();
}

void CameraPage::remove(long int cameraId, bool lost)
{
    VexaMainFeatureWidget *mainWidget = VexaMainFeatureWidget::instance();
    const QPointer<VexaFeatureTree> removed = tree(cameraId);
    if (lost) {
        mainWidget->OnCameraDisconnect(cameraId);
    } else {
        mainWidget->OnCameraClose(cameraId);
    }
    if (removed) {
        removed->readyForDelete();
    }
    if (removed) {
        removed->OnCameraClose();
    }
    mainWidget->removeFeatureTree(cameraId);
}
