#include "host/workbench/MessageHandler.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QMutex>
#include <QMutexLocker>
#include <QRegularExpression>

#include <algorithm>
#include <cstdio>
#include <iterator>

namespace {

struct LevelRow
{
    QtMsgType type;
    const char *name;
    bool toStandardError;
};

const LevelRow &rowOf(QtMsgType type)
{
    static const LevelRow TABLE[] = {{QtDebugMsg, "debug", false},
                                     {QtInfoMsg, "info", false},
                                     {QtWarningMsg, "warning", true},
                                     {QtCriticalMsg, "critical", true},
                                     {QtFatalMsg, "fatal", true}};
    for (const LevelRow &row : TABLE) {
        if (row.type == type) {
            return row;
        }
    }
    return TABLE[0];
}

/// Writes and commands that the device took; the module logs them as critical.
bool isSuccessfulWrite(const QString &message)
{
    static const QRegularExpression PATTERN(
        QStringLiteral("^\"?NodeName:.*, (NodeValue:|\\[CameraID:)"),
        QRegularExpression::DotMatchesEverythingOption);
    return PATTERN.match(message).hasMatch();
}

/// What Qt says of a machine without a desktop, which no user of a headless run can do anything about.
bool isPlatformNoise(const QString &message)
{
    static const char *const BEGINNINGS[] = {"This plugin does not support ",
                                             "QStandardPaths: XDG_RUNTIME_DIR not set"};
    return std::any_of(std::begin(BEGINNINGS), std::end(BEGINNINGS), [&message](const char *text) {
        return message.startsWith(QLatin1String(text));
    });
}

/// The file and its older ones. One object for the life of the process: threads log until the very end.
class LogFile
{
public:
    void open(const QString &folder)
    {
        const QMutexLocker locker(&m_mutex);
        m_file.close();
        if (QDir().mkpath(folder)) {
            m_file.setFileName(folder + QStringLiteral("/vexa-workbench.log"));
            m_file.open(QIODevice::WriteOnly | QIODevice::Append);
        }
    }

    void close()
    {
        const QMutexLocker locker(&m_mutex);
        m_file.close();
    }

    void write(const QByteArray &line)
    {
        const QMutexLocker locker(&m_mutex);
        if (!m_file.isOpen()) {
            return;
        }
        m_file.write(line);
        m_file.flush();
        if (m_file.size() >= MessageHandler::MAXIMUM_FILE_BYTES) {
            rotate();
        }
    }

private:
    QString olderName(int number) const
    {
        return m_file.fileName() + QLatin1Char('.') + QString::number(number);
    }

    void rotate()
    {
        m_file.close();
        QFile::remove(olderName(MessageHandler::OLDER_FILES));
        for (int number = MessageHandler::OLDER_FILES; number > 1; --number) {
            QFile::rename(olderName(number - 1), olderName(number));
        }
        QFile::rename(m_file.fileName(), olderName(1));
        m_file.open(QIODevice::WriteOnly | QIODevice::Append);
    }

    QMutex m_mutex;
    QFile m_file;
};

LogFile &logFile()
{
    static auto *file = new LogFile;
    return *file;
}

void handle(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    const LevelRow &row = rowOf(type);
    const QString time =
        QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz"));
    logFile().write(QStringLiteral("%1 %2 ").arg(time, QLatin1String(row.name)).toUtf8()
                    + message.toUtf8() + '\n');
    if (row.toStandardError && !isSuccessfulWrite(message) && !isPlatformNoise(message)) {
        const QByteArray line = message.toUtf8() + '\n';
        std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stderr);
        std::fflush(stderr);
    }
}

} // namespace

void MessageHandler::install(const QString &folder)
{
    logFile().open(folder);
    qInstallMessageHandler(handle);
}

void MessageHandler::uninstall()
{
    qInstallMessageHandler(nullptr);
    logFile().close();
}
