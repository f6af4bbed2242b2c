#include "host/workbench/MessageHandler.h"

#include <QtTest>

#include <cstdio>
#include <unistd.h>

/// The workbench's log: what reaches the file, what reaches the standard error, and how large it grows.
class MessageHandlerTest : public QObject
{
    Q_OBJECT
private slots:
    void routing_data();
    void routing();
    void fileIsRotated();
    void unusableFolderIsPassedOver();
};

namespace {

/// What `action` writes to the standard error.
QByteArray standardErrorOf(const std::function<void()> &action)
{
    QTemporaryFile file;
    if (!file.open()) {
        return "no file";
    }
    std::fflush(stderr);
    const int kept = dup(STDERR_FILENO);
    dup2(file.handle(), STDERR_FILENO);
    action();
    std::fflush(stderr);
    dup2(kept, STDERR_FILENO);
    close(kept);
    file.seek(0);
    return file.readAll();
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

void MessageHandlerTest::routing_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("onStandardError");
    const auto row = [](const char *fault, QtMsgType type, const char *text, bool shown) {
        QTest::newRow(fault) << int(type) << QString(text) << shown;
    };
    row("info floods a script's stderr", QtInfoMsg, "ordinary", false);
    row("warning lost", QtWarningMsg, "warned", true);
    row("failure lost", QtCriticalMsg, "errCodeStr: 0x90006104 [CameraID:0", true);
    row("successful write looks like a failure", QtCriticalMsg,
        "NodeName:Width, NodeValue:640, [CameraID:0]", false);
    row("quoted successful write", QtCriticalMsg, "\"NodeName:Width, NodeValue:640\"", false);
    row("value with a line end", QtCriticalMsg, "NodeName:A\nB, NodeValue:1", false);
    row("noise of a machine without a desktop", QtWarningMsg,
        "This plugin does not support propagateSizeHints()", false);
    row("failure that names the node", QtCriticalMsg, "failed: NodeName:A, NodeValue:1", true);
}

void MessageHandlerTest::routing()
{
    QFETCH(int, type);
    QFETCH(QString, text);
    QFETCH(bool, onStandardError);
    const QTemporaryDir folder;
    const QByteArray shown = standardErrorOf([&] {
        MessageHandler::install(folder.filePath("log"));
        qt_message_output(static_cast<QtMsgType>(type), QMessageLogContext(), text);
        MessageHandler::uninstall();
    });
    QCOMPARE(shown, onStandardError ? text.toUtf8() + '\n' : QByteArray());
    QVERIFY(contentOf(folder.filePath("log/vexa-workbench.log")).contains(text.toUtf8()));
}

void MessageHandlerTest::fileIsRotated()
{
    const QTemporaryDir folder;
    const QString line(64 * 1024, QLatin1Char('x'));
    const int lines = static_cast<int>(MessageHandler::MAXIMUM_FILE_BYTES / line.size())
        * (MessageHandler::OLDER_FILES + 3);
    MessageHandler::install(folder.path());
    for (int count = 0; count < lines; ++count) {
        qInfo().noquote() << line;
    }
    qInfo() << "the last line";
    MessageHandler::uninstall();
    const QFileInfoList files = QDir(folder.path()).entryInfoList(QDir::Files, QDir::Name);
    QCOMPARE(files.size(), MessageHandler::OLDER_FILES + 1);
    for (const QFileInfo &file : files) {
        QVERIFY(file.size() <= MessageHandler::MAXIMUM_FILE_BYTES + 2 * line.size());
    }
    QVERIFY(contentOf(files.first().filePath()).contains("the last line"));
}

void MessageHandlerTest::unusableFolderIsPassedOver()
{
    const QByteArray shown = standardErrorOf([] {
        MessageHandler::install("/proc/no-such-folder");
        qWarning("still shown");
        MessageHandler::uninstall();
    });
    QCOMPARE(shown, QByteArray("still shown\n"));
}

QTEST_GUILESS_MAIN(MessageHandlerTest)
#include "tst_messagehandler.moc"
