#include "ShellServicesModule/COMMONINTERFACE.h"

#include "host/shellservices/ShellHost.h"

namespace COMMONINTERFACE {

long int currentCameraID()
{
    return ShellHost::instance()->currentCameraID();
}

QWidget *mainWindow()
{
    return ShellHost::instance()->mainWindow();
}

bool isCanSetProperty()
{
    return ShellHost::instance()->isCanSetProperty();
}

int drawingMode()
{
    return ShellHost::instance()->drawingMode();
}

void AddCurrentCamModified(const QString &cameraName)
{
    ShellHost::instance()->addModifiedCamera(cameraName);
}

void RemoveCurrentCamModified(const QString &cameraName)
{
    ShellHost::instance()->removeModifiedCamera(cameraName);
}

void CamModifedNameChanged(const QString &oldName, const QString &newName)
{
    ShellHost::instance()->renameModifiedCamera(oldName, newName);
}

} // namespace COMMONINTERFACE
