#pragma once

#include "host/shellservices/ShellHost.h"
#include "tests/support/ModuleFixture.h"
#include "tree/QGetFeaturesThread.h"
#include "view/VexaFeatureTreeView.h"

#include <QtTest>

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
    // A round of the worker that serves the dependants, begun after everything that is due now. A spy would be filled
    // on the worker's thread.
    bool bEnded = false;
    const QObject here;
    QObject::connect(camera.tree->findChildren<QGetFeaturesThread *>().value(0),
                     &QGetFeaturesThread::SigUpdateRoundEnd, &here, [&bEnded] { bEnded = true; });
    camera.tree->OnAddValueChangedNodes({QStringLiteral("Root")});
    bEnded = QTest::qWaitFor([&bEnded] { return bEnded; }, 10000);
    QCoreApplication::processEvents();
    view.flushEditorUpdates();
    QCoreApplication::processEvents();
    return bEnded;
}
