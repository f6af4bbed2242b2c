#include "tests/realdevices/HelperProcess.h"

#include <csignal>

namespace {

constexpr int START_TIME = 10000; ///< ms

} // namespace

HelperProcess::~HelperProcess()
{
    kill();
}

bool HelperProcess::startCamera(const QStringList &arguments)
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QStringLiteral(FAKE_CAMERA_PATH), QStringList{cameraSerial()} + arguments);
    while (!m_process.canReadLine()) {
        if (!m_process.waitForReadyRead(START_TIME)) {
            return false;
        }
    }
    return m_process.readLine() == "ready\n";
}

void HelperProcess::kill()
{
    if (m_process.state() != QProcess::NotRunning) {
        m_process.kill();
        m_process.waitForFinished();
    }
}

void HelperProcess::freeze()
{
    ::kill(pid_t(m_process.processId()), SIGSTOP);
}
