#include "host/workbench/TerminationSignals.h"

#include <QDebug>
#include <QSocketNotifier>

#include <csignal>
#include <sys/eventfd.h>
#include <unistd.h>

namespace {

int g_event = -1; ///< written in the handler: only what is async-signal-safe happens there

void onSignal(int)
{
    const quint64 one = 1;
    [[maybe_unused]] const ssize_t written = write(g_event, &one, sizeof one);
}

void setHandler(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

} // namespace

TerminationSignals::TerminationSignals(QObject *parent)
    : QObject(parent)
{
    g_event = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (g_event < 0) {
        qWarning() << "SIGINT and SIGTERM end the program at once: no event descriptor";
        return;
    }
    m_pNotifier = new QSocketNotifier(g_event, QSocketNotifier::Read, this);
    connect(m_pNotifier, &QSocketNotifier::activated, this, [this] {
        quint64 count = 0;
        [[maybe_unused]] const ssize_t size = read(g_event, &count, sizeof count);
        emit requested();
    });
    setHandler(onSignal);
}

TerminationSignals::~TerminationSignals()
{
    if (m_pNotifier) {
        setHandler(SIG_DFL);
        delete m_pNotifier;
        close(g_event);
    }
}
