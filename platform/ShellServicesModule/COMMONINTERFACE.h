#pragma once

#include "ShellServicesModule/ShellServicesModuleGlobal.h"

#include <QString>

class QWidget;

/// State of the client that modules ask for. The ids, the flags and the list of modified cameras: any thread;
/// mainWindow: GUI thread.
namespace COMMONINTERFACE {

/// The camera on show, -1 when there is none.
SHELLSERVICESMODULE_API long int currentCameraID();
/// Parent of dialogs; may be null.
SHELLSERVICESMODULE_API QWidget *mainWindow();
/// Whether the client allows edits now.
SHELLSERVICESMODULE_API bool isCanSetProperty();
/// Non-zero while the user draws on the image: width, height and offsets are then set by drawing.
SHELLSERVICESMODULE_API int drawingMode();

/// The list of cameras with unsaved changes, by display name.
SHELLSERVICESMODULE_API void AddCurrentCamModified(const QString &cameraName);
SHELLSERVICESMODULE_API void RemoveCurrentCamModified(const QString &cameraName);
SHELLSERVICESMODULE_API void CamModifedNameChanged(const QString &oldName, const QString &newName);

} // namespace COMMONINTERFACE
