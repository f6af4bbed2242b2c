#pragma once

#include <QProcess>

/// A process beside the test that plays a camera or another host; killed with this object.
class HelperProcess
{
public:
    ~HelperProcess();

    /// Starts the program and waits for its line "ready".
    bool start(const QString &program, const QStringList &arguments);
    /// A camera on 127.0.0.1 with Aravis' own description or with a simulated device's (`arguments`: its id, and the
    /// size that the description is announced with).
    bool startCamera(const QStringList &arguments = {});
    /// Another host with control of the camera on 127.0.0.1.
    bool startController();
    void kill();
    /// Stops the process in the middle of whatever it does, and lets it go on.
    void freeze();
    void thaw();

    static QString cameraAddress() { return QStringLiteral("127.0.0.1"); }
    static QString cameraSerial() { return QStringLiteral("TEST-7"); }

private:
    QProcess m_process;
};
