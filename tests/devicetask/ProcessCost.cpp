#include "ProcessCost.h"

#include <QFile>
#include <QtTest>

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool IS_SANITIZED = true;
#else
constexpr bool IS_SANITIZED = false;
#endif
#if defined(__OPTIMIZE__)
constexpr int SLOWNESS = 1;
#else
constexpr int SLOWNESS = 4;
#endif

qint64 statusLine(const QByteArray &title)
{
    QFile file(QStringLiteral("/proc/self/status"));
    if (file.open(QIODevice::ReadOnly)) {
        for (const QByteArray &line : file.readAll().split('\n')) {
            if (line.startsWith(title)) {
                return line.mid(title.size()).simplified().split(' ').first().toLongLong();
            }
        }
    }
    return 0;
}

} // namespace

ProcessCost::ProcessCost()
    : m_nClock(std::clock())
{
    // The peak starts anew at what is in use now.
    QFile file(QStringLiteral("/proc/self/clear_refs"));
    if (file.open(QIODevice::WriteOnly)) {
        file.write("5");
    }
    m_nMemory = statusLine("VmRSS:");
}

bool ProcessCost::isMeasured()
{
    return !IS_SANITIZED;
}

void ProcessCost::verifyGrowth(qint64 mebibytes) const
{
    const qint64 growth = (statusLine("VmHWM:") - m_nMemory) / 1024;
    QVERIFY2(!isMeasured() || growth <= mebibytes,
             qPrintable(QStringLiteral("grew by %1 MiB").arg(growth)));
}

void ProcessCost::verifyTime(qint64 milliseconds) const
{
    const qint64 worked = (std::clock() - m_nClock) * 1000 / CLOCKS_PER_SEC;
    QVERIFY2(!isMeasured() || worked <= SLOWNESS * milliseconds,
             qPrintable(QStringLiteral("took %1 ms").arg(worked)));
}
