#include "tests/workbench/WorkbenchProcess.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QtTest>

#include <csignal>

namespace {

const char *const LEVEL_REGISTER =
    "<IntReg "
    "Name=\"LevelReg\"><Address>0x100</Address><Length>4</Length><AccessMode>RW</AccessMode>"
    "<pPort>Device</pPort><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>\n"
    "<Integer Name=\"Level\"><DisplayName>Level</DisplayName><pValue>LevelReg</pValue></Integer>\n"
    "<Command Name=\"Reset\"><pValue>LevelReg</pValue><CommandValue>1</CommandValue></Command>\n";

QJsonArray parsed(const QByteArray &json)
{
    return QJsonDocument::fromJson(json).array();
}

} // namespace

/// The program as a script uses it: options, exit codes, what is printed where, what bad input gets.
class WorkbenchCliTest : public QObject
{
    Q_OBJECT
private slots:
    void wrongUsage_data();
    void wrongUsage();
    void informs();
    void readsOneValue_data();
    void readsOneValue();
    void refusedDescription_data();
    void refusedDescription();
    void descriptionWithoutRoot();
    void memoryPatternFillsRegisters();
    void picture();
    void filesThereAndBack();
    void fileFailures_data();
    void fileFailures();
    void unwritableTargetsFail_data();
    void unwritableTargetsFail();
    void languageAndLevelReachTheDump();
    void headlessRunLeavesSettingsAlone();
    void terminationSignalEndsCleanly();
    void lintFindings();
    void lintFiles_data();
    void lintFiles();

private:
    WorkbenchProcess m_workbench;
};

void WorkbenchCliTest::wrongUsage_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("reason");
    const auto row = [](const char *fault, const QStringList &arguments, const char *reason) {
        QTest::newRow(fault) << arguments << QByteArray(reason);
    };
    const QStringList twice{"--device", "area-camera", "--device", "area-camera"};
    row("unknown option taken for a device", {"--devcie", "x"}, "devcie");
    row("stray argument ignored", {"area-camera"}, "'area-camera'");
    row("value missing at the end", {"--device"}, "device");
    row("empty value taken for not given", {"--dump="}, "needs a value");
    row("level above the table", {"--user-level", "3"}, "'3'");
    row("level that is no number read as 0", {"--user-level", "guru"}, "'guru'");
    row("language by another name", {"--language", "eng"}, "ENG or CH");
    row("pattern that does not exist", {"--description", "x", "--memory-pattern", "random"},
        "zero or ugly");
    row("pattern without effect", {"--memory-pattern", "ugly"}, "--description");
    row("first of two dumps lost", {"--dump", "a", "--dump", "b"}, "once");
    row("dump of which device",
        QStringList(twice) << "--dump"
                           << "-",
        "one device");
    row("write without a value", {"--write", "Width"}, "'Width'");
    row("write without a name", {"--write", "=3"}, "NAME=VALUE");
    row("write to which device",
        QStringList(twice) << "--write"
                           << "Width=640",
        "one device");
    row("answer to no question", {"--yes"}, "--write");
    row("two jobs mixed on stdout", {"--dump", "-", "--read", "Width"}, "standard output");
    row("target left out", {"--device", "code-reader", "--get-file", "MultiROI"}, "NAME FILE");
    row("files of which device", QStringList(twice) << "--files", "one device");
}

void WorkbenchCliTest::wrongUsage()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, reason);
    const WorkbenchProcess::Result result = m_workbench.run(arguments);
    QVERIFY(result.ended);
    QCOMPARE(result.exitCode, 2);
    QVERIFY2(result.err.contains(reason), result.err.constData());
    QCOMPARE(result.out, QByteArray());
}

void WorkbenchCliTest::informs()
{
    const QMap<QString, QByteArray> texts{{"--list", "area-camera\tGigE\t"},
                                          {"--help", "--screenshot <FILE.png>"},
                                          {"--version", "vexa-workbench 1."}};
    for (auto text = texts.cbegin(); text != texts.cend(); ++text) {
        const WorkbenchProcess::Result result = m_workbench.run({text.key()});
        QVERIFY(result.ended);
        QCOMPARE(result.exitCode, 0);
        QVERIFY2(result.out.contains(*text), result.out.constData());
        QCOMPARE(result.err, QByteArray());
    }
}

void WorkbenchCliTest::readsOneValue_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("out");
    QTest::newRow("value of an integer") << "Level" << 0 << QByteArray("0\n");
    QTest::newRow("unknown feature read as empty") << "Levle" << 1 << QByteArray();
    QTest::newRow("command has no value to print") << "Reset" << 1 << QByteArray();
}

void WorkbenchCliTest::readsOneValue()
{
    QFETCH(QString, name);
    QFETCH(int, exitCode);
    QFETCH(QByteArray, out);
    // Categories in a circle end.
    const QByteArray circle =
        "<Category Name=\"A\"><pFeature>B</pFeature><pFeature>Level</pFeature></Category>\n"
        "<Category Name=\"B\"><pFeature>A</pFeature><pFeature>Root</pFeature></Category>\n";
    const QString file = m_workbench.write(
        "level.xml", workbenchDescription({"A", "Reset"}, circle + LEVEL_REGISTER));
    const WorkbenchProcess::Result result =
        m_workbench.run({"--description", file, "--read", name});
    QVERIFY(result.ended);
    QCOMPARE(result.exitCode, exitCode);
    QCOMPARE(result.out, out);
    QCOMPARE(result.err.contains(name.toUtf8()), exitCode != 0);
}

void WorkbenchCliTest::refusedDescription_data()
{
    const QByteArray good = workbenchDescription({"Level"}, LEVEL_REGISTER);
    QTest::addColumn<QByteArray>("xml");
    QTest::newRow("empty file") << QByteArray();
    QTest::newRow("line of text in front") << "camera 1\n" + good;
    QTest::newRow("cut off in the middle") << good.left(good.size() / 2);
    QTest::newRow("two roots") << good + "<Second/>";
    QTest::newRow("unclosed element") << QByteArray(good).replace("</Integer>", "");
    QTest::newRow("no XML at all") << QByteArray(4096, '\xFF');
    QTest::newRow("over 64 MiB") << good + QByteArray(64 * 1024 * 1024, ' ');
}

void WorkbenchCliTest::refusedDescription()
{
    QFETCH(QByteArray, xml);
    const QString file = m_workbench.write("refused.xml", xml);
    for (const QStringList &job : {QStringList{"--dump", "-"}, QStringList()}) {
        const WorkbenchProcess::Result result =
            m_workbench.run(QStringList{"--description", file} + job);
        QVERIFY(result.ended);
        QCOMPARE(result.exitCode, 1);
        QVERIFY2(result.err.contains("refused.xml") || result.err.contains("refused:"),
                 result.err.constData());
        QCOMPARE(result.out, QByteArray());
    }
}

void WorkbenchCliTest::descriptionWithoutRoot()
{
    QByteArray xml = workbenchDescription({"Level"}, LEVEL_REGISTER);
    xml.replace("Category Name=\"Root\"", "Category Name=\"Other\"");
    const WorkbenchProcess::Result result =
        m_workbench.run({"--description", m_workbench.write("noroot.xml", xml), "--dump", "-"});
    QVERIFY(result.ended);
    QCOMPARE(result.exitCode, 0);
    QVERIFY(QJsonDocument::fromJson(result.out).isArray());
    QCOMPARE(parsed(result.out).size(), 0);
    QCOMPARE(result.err.count("\"Root\""), 1);
}

void WorkbenchCliTest::memoryPatternFillsRegisters()
{
    const QString file =
        m_workbench.write("pattern.xml", workbenchDescription({"Level"}, LEVEL_REGISTER));
    const WorkbenchProcess::Result result =
        m_workbench.run({"--description", file, "--memory-pattern", "ugly", "--read", "Level"});
    QVERIFY(result.ended);
    QCOMPARE(result.exitCode, 0);
    // Every byte of the pattern has its top bit set, so the unsigned register does too.
    QVERIFY2(result.out.trimmed().toLongLong() & 0x80000000LL, result.out.constData());
}

void WorkbenchCliTest::picture()
{
    qputenv("QT_SCALE_FACTOR", "2"); // not in logical pixels
    const QString file = m_workbench.path("window.png");
    const WorkbenchProcess::Result result = m_workbench.run(
        {"--device", "area-camera", "--device", "area-camera", "--screenshot", file});
    qunsetenv("QT_SCALE_FACTOR");
    QVERIFY(result.ended);
    QCOMPARE(result.exitCode, 0);
    // A window that something inside forces to grow does not fit the screen that it is meant for.
    QCOMPARE(QImage(file).size(), QSize(2560, 1600));
}

void WorkbenchCliTest::filesThereAndBack()
{
    const QByteArray bytes(100 * 1024 + 1, 'x');
    const QString source = m_workbench.write("source.bin", bytes);
    const WorkbenchProcess::Result result =
        m_workbench.run({"--device", "code-reader", "--get-file", "Multi ROI",
                         m_workbench.path("back.bin"), "--put-file", "MultiROI", source,
                         "--get-file", "License Notice", m_workbench.path("licence.txt"),
                         "--get-file", "MultiROI", m_workbench.path("back.bin"), "--files"});
    QVERIFY2(result.ended && result.exitCode == 0, result.err.constData());
    QVERIFY2(result.out.startsWith("UserSet1\tUser Set 1\n"), result.out.constData());
    QVERIFY(result.out.contains("LicenseNotice\tLicense Notice\n"));
    QFile back(m_workbench.path("back.bin"));
    QVERIFY(back.open(QIODevice::ReadOnly));
    QVERIFY(back.readAll() == bytes);
    QVERIFY(QFileInfo(m_workbench.path("licence.txt")).size() > 1000);
}

void WorkbenchCliTest::fileFailures_data()
{
    QTest::addColumn<QStringList>("job");
    QTest::addColumn<QByteArray>("reason");
    const QString path = m_workbench.path("none.bin");
    const QString source = m_workbench.write("something.bin", "something");
    QTest::newRow("file that the device has not")
        << QStringList{"--get-file", "NoFile", path} << QByteArray("'NoFile' was not copied");
    QTest::newRow("file that only reads")
        << QStringList{"--put-file", "License Notice", source} << QByteArray("Failure");
    QTest::newRow("source that is not there")
        << QStringList{"--put-file", "MultiROI", path} << QByteArray("none.bin");
}

void WorkbenchCliTest::fileFailures()
{
    QFETCH(QStringList, job);
    QFETCH(QByteArray, reason);
    const WorkbenchProcess::Result result =
        m_workbench.run(QStringList{"--device", "code-reader"} + job);
    QVERIFY(result.ended);
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.err.contains(reason), result.err.constData());
    QVERIFY(!QFile::exists(m_workbench.path("none.bin")));
}

void WorkbenchCliTest::unwritableTargetsFail_data()
{
    QTest::addColumn<QStringList>("job");
    const auto row = [](const char *fault, const QStringList &job) { QTest::newRow(fault) << job; };
    row("dump into a missing folder", {"--dump", "/nonexistent/dump.json"});
    row("picture into a missing folder", {"--screenshot", "/nonexistent/window.png"});
    row("description that is a folder", {"--description", "/tmp", "--dump", "-"});
    row("description that is not there", {"--description", "/nonexistent/x.xml", "--dump", "-"});
    row("device that is not there", {"--device", "no-such-camera", "--dump", "-"});
    row("device number below one", {"--device", "area-camera#0", "--dump", "-"});
}

void WorkbenchCliTest::unwritableTargetsFail()
{
    QFETCH(QStringList, job);
    const WorkbenchProcess::Result result = m_workbench.run(job);
    QVERIFY(result.ended);
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.err.startsWith("vexa-workbench: "), result.err.constData());
    QCOMPARE(result.out, QByteArray());
}

void WorkbenchCliTest::languageAndLevelReachTheDump()
{
    const auto visibleCount = [this](const QString &level) {
        const WorkbenchProcess::Result result = m_workbench.run(
            {"--device", "area-camera", "--language", "CH", "--user-level", level, "--dump", "-"});
        int visible = 0;
        for (const QJsonValue &item : parsed(result.out)) {
            visible += item["visible"].toBool() && item["itemType"].toInt() == 2 ? 1 : 0;
        }
        return visible;
    };
    const int beginner = visibleCount("2");
    const int expert = visibleCount("1");
    const int guru = visibleCount("0");
    QVERIFY2(0 < beginner && beginner < expert && expert < guru,
             qPrintable(QStringLiteral("%1 %2 %3").arg(beginner).arg(expert).arg(guru)));
}

void WorkbenchCliTest::headlessRunLeavesSettingsAlone()
{
    const auto settings = [this] {
        QMap<QString, QByteArray> contents;
        QDirIterator it(m_workbench.path("config"), QDir::Files | QDir::Hidden,
                        QDirIterator::Subdirectories);
        while (it.hasNext()) {
            QFile file(it.next());
            if (file.open(QIODevice::ReadOnly)) {
                contents.insert(file.fileName(), file.readAll());
            }
        }
        return contents;
    };
    const QMap<QString, QByteArray> before = settings();
    const WorkbenchProcess::Result result = m_workbench.run(
        {"--device", "area-camera", "--user-level", "0", "--language", "CH", "--read", "Width"});
    QVERIFY(result.ended);
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(settings(), before);
}

void WorkbenchCliTest::terminationSignalEndsCleanly()
{
    const WorkbenchProcess workbench; // a log without the lines of other runs
    QProcess process;
    process.setEnvironment(workbench.environment());
    process.start(WorkbenchProcess::program(), {"--device", "area-camera"});
    QVERIFY(process.waitForStarted());
    // The log in the data folder tells when the window is up and its camera open.
    const auto isOpen = [&workbench] {
        QDirIterator it(workbench.path("data"), {"vexa-workbench.log"}, QDir::Files,
                        QDirIterator::Subdirectories);
        QFile file(it.hasNext() ? it.next() : QStringLiteral("/nonexistent"));
        return file.open(QIODevice::ReadOnly) && file.readAll().contains("OnCameraOpen:");
    };
    QTRY_VERIFY_WITH_TIMEOUT(isOpen(), 60000);
    QCOMPARE(kill(static_cast<pid_t>(process.processId()), SIGTERM), 0);
    QVERIFY(process.waitForFinished(30000));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
}

void WorkbenchCliTest::lintFindings()
{
    const QString file = m_workbench.write(
        "bad.xml",
        "<RegisterDescription>\n<Integer Name=\"A\">\n<pValue>B</pValue></Integer>\n"
        "<Integer Name=\"B\"><Value>1</Value>\n<pMax>C</pMax></Integer>\n"
        "<Integer Name=\"Step\"><Value>1</Value><Inc>0</Inc></Integer></RegisterDescription>");
    const WorkbenchProcess::Result result = m_workbench.run({"--lint", file});
    QCOMPARE(result.exitCode, 1);
    const QString expected =
        QStringLiteral("%1:3: A: it needs B, which cannot be evaluated\n"
                       "%1:5: B: its pMax refers to C, which does not exist\n"
                       "%1:6: Step: its Inc is not positive and counts as none\n")
            .arg(file);
    QCOMPARE(QString::fromUtf8(result.out), expected);
    QCOMPARE(QString::fromUtf8(result.err), file + ": 3 findings, 2 of 3 nodes are left out\n");
}

void WorkbenchCliTest::lintFiles_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("out");
    QTest::addColumn<QByteArray>("err");
    const auto row = [](const char *name, const QString &file, int exitCode, const char *out,
                        const char *err) {
        QTest::newRow(name) << file << exitCode << QByteArray(out) << QByteArray(err);
    };
    row("sound", m_workbench.write("sound.xml", "<RegisterDescription/>"), 0, "", "0 findings");
    row("cut off", m_workbench.write("cut.xml", "<RegisterDescription>\n<Integer"), 1,
        ":2: RegisterDescription: The device description is not", "1 findings");
    row("empty", m_workbench.write("empty.xml", {}), 1,
        ":1: RegisterDescription: The device description is empty", "1 findings");
    row("missing", m_workbench.path("nowhere.xml"), 1, "", "nowhere.xml: ");
    row("folder", m_workbench.path({}), 1, "", ": ");
}

void WorkbenchCliTest::lintFiles()
{
    QFETCH(QString, file);
    const WorkbenchProcess::Result result = m_workbench.run({"--lint", file});
    QVERIFY(result.ended);
    QTEST(result.exitCode, "exitCode");
    QFETCH(QByteArray, out);
    QFETCH(QByteArray, err);
    QVERIFY2(result.out.contains(out) && result.out.isEmpty() == out.isEmpty(),
             result.out.constData());
    QVERIFY2(result.err.contains(err), result.err.constData());
}

QTEST_GUILESS_MAIN(WorkbenchCliTest)
#include "tst_workbench_cli.moc"
