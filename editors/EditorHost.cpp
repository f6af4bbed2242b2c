#include "editors/EditorHost.h"

#include "DeviceTaskModule/QCameraTask.h"
#include "ShellServicesModule/COMMONINTERFACE.h"
#include "shell/VexaMainFeatureWidget.h"
#include "tree/CameraLookup.h"

VexaFeatureTree *EditorHost::featureTree(long int lCameraID)
{
    VexaMainFeatureWidget *const pMain =
        lCameraID < 0 ? nullptr : VexaMainFeatureWidget::instance();
    return pMain ? pMain->featureTree(lCameraID, false) : nullptr;
}

void EditorHost::markCameraModified()
{
    if (QCameraTask *const pTask = cameraTaskOf(COMMONINTERFACE::currentCameraID())) {
        COMMONINTERFACE::AddCurrentCamModified(pTask->GetCameraName());
    }
}
