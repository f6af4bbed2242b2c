#pragma once

#include "host/shellservices/ShellHost.h"
#include "tests/support/ModuleFixture.h"
#include "tree/QGetFeaturesThread.h"
#include "view/VexaFeatureTreeView.h"

#include <QSignalSpy>

// What writes leave behind them: accesses in the device's log, the mark of the camera, a refresh.

/// The write accesses since the log was cleared.
inline QVector<SimulatorAccess> writesOf(const ModuleFixture::Camera &camera)
{
    QVector<SimulatorAccess> found = camera.device.control->accessLog();
    found.erase(std::remove_if(found.begin(), found.end(),
                               [](const SimulatorAccess &access) {
                                   return access.kind != SimulatorAccess::Write;
                               }),
                found.end());
    return found;
}

inline void forgetModifiedCameras()
{
    for (const QString &strName : ShellHost::instance()->modifiedCameras()) {
        ShellHost::instance()->removeModifiedCamera(strName);
    }
}

/// Waits until the refresh of what was written so far has ended and fills the editors of the view.
inline bool waitForRefresh(const ModuleFixture::Camera &camera, VexaFeatureTreeView &view)
{
    // A round of the worker that serves the dependants, begun after everything that is due now.
    auto *const pWorker = camera.tree->findChildren<QGetFeaturesThread *>().value(0);
    QSignalSpy ended(pWorker, &QGetFeaturesThread::SigUpdateRoundEnd);
    camera.tree->OnAddValueChangedNodes({QStringLiteral("Root")});
    const bool bEnded = ended.wait(10000) || !ended.isEmpty();
    QCoreApplication::processEvents();
    view.flushEditorUpdates();
    QCoreApplication::processEvents();
    return bEnded;
}
