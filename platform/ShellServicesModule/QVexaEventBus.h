#pragma once

#include "ShellServicesModule/ShellServicesModuleGlobal.h"

#include <QList>
#include <QObject>
#include <QString>

/// Application-wide bus of Qt signals. Signals may be emitted on any thread.
class SHELLSERVICESMODULE_API QVexaEventBus : public QObject
{
    Q_OBJECT
public:
    static QVexaEventBus *Instance();

Q_SIGNALS:
    // To the module.
    /// Nodes of this camera have changed on the device; their dependants are to be read again.
    void SigVexaEventUpdateFeatureTree2(long int cameraId, QList<QString> nodeNames);
    /// The tree on show is to be refreshed whole.
    void SigVexaEventRefreshFeatureTree();

    // From the module.
    /// The first full update of this camera's tree has ended.
    void SigVexaEventFirstUpdateFeatureTreeEnd(long int cameraId);
    void SigVexaEventUpdateCameraStatus(long int cameraId);
    void SigVexaEventCameraPollingParamChanged();
    /// Parameters were loaded into the device; the host refreshes what it shows of it.
    void SigVexaEventLoadParameters();
    void SigVexaEventStartSmartTune(bool start);
    void SigVexaEventStateRoleChanged(long int cameraId);
    void SigVexaEventTestImgNodeChanged(QString nodeName);
    void SigVexaEventUpdateDevListCtrl();
    void SigVexaEventUpdateMainSub(long int cameraId, bool refresh);
    void SigVexaEventUpdateROI(long int cameraId);

private:
    QVexaEventBus();
};
