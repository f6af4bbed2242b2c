#pragma once

#include <QProcess>

/// A process beside the test that plays a camera; killed with this object.
class HelperProcess
{
public:
    ~HelperProcess();

    /// A camera on 127.0.0.1 with Aravis' own description or with a simulated device's (`arguments`: its id, and the
    /// size that the description is announced with). Waits for its line "ready".
    bool startCamera(const QStringList &arguments = {});
    void kill();
    /// Stops the process in the middle of whatever it does.
    void freeze();

    static QString cameraAddress() { return QStringLiteral("127.0.0.1"); }
    static QString cameraSerial() { return QStringLiteral("TEST-7"); }

private:
    QProcess m_process;
};
