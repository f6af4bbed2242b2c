#include "host/devicetask/RealDevices.h"
#include "tests/support/DataTable.h"
#include "tests/support/DescriptionOf.h"
#include "tests/workbench/WorkbenchProcess.h"

#include <QImage>
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

} // namespace

/// The program as a script uses it: options, exit codes, what is printed where, what bad input gets.
class WorkbenchCliTest : public QObject
{
    Q_OBJECT
private slots:
    void describedDevice_data();
    void describedDevice();
    void failures_data();
    void failures();
    void addressesOfNobody();
    void lint();
    void picture();
    void filesThereAndBack();
    void headlessRunLeavesSettingsAlone();
    void terminationSignalEndsCleanly();

private:
    WorkbenchProcess m_workbench;
};

void WorkbenchCliTest::describedDevice_data()
{
    const DataTable<QByteArray, QString, QByteArray> row("xml", "arguments", "out"); // none: failed
    const QByteArray plain = descriptionOf({"Level", "Reset"}, LEVEL_REGISTER);
    const QByteArray circle =
        "<Category Name=\"A\"><pFeature>B</pFeature><pFeature>Level</pFeature></Category>\n"
        "<Category Name=\"B\"><pFeature>A</pFeature><pFeature>Root</pFeature></Category>\n";
    row("value of an integer", plain, "--read Level", "0\n");
    row("unknown feature read as empty", plain, "--read Levle", "");
    row("command has no value to print", plain, "--read Reset", "");
    row("pattern does not fill the registers", plain, "--memory-pattern ugly --read Level",
        "2330312859\n");
    row("categories in a circle never end", descriptionOf({"A"}, circle + LEVEL_REGISTER),
        "--read Level", "0\n");
}

void WorkbenchCliTest::describedDevice()
{
    QFETCH(QByteArray, xml);
    QFETCH(QString, arguments);
    QFETCH(QByteArray, out);
    const WorkbenchProcess::Result result = m_workbench.run(
        QStringList{"--description", m_workbench.write("level.xml", xml)} + arguments.split(' '));
    QVERIFY(result.ended);
    QCOMPARE(result.exitCode, out.isEmpty() ? 1 : 0);
    QCOMPARE(result.out, out);
    QCOMPARE(result.err.contains(arguments.section(' ', -1).toUtf8()), out.isEmpty());
}

void WorkbenchCliTest::failures_data()
{
    const DataTable<QStringList, int, QByteArray> table("arguments", "exitCode", "reason");
    const auto wrong = [&table](const char *fault, const QString &arguments, const char *reason) {
        table(fault, arguments.split(' '), 2, reason);
    };
    wrong("unknown option taken for a device", "--devcie x", "devcie");
    wrong("stray argument ignored", "area-camera", "'area-camera'");
    wrong("empty value taken for not given", "--dump=", "needs a value");
    wrong("level above the table", "--user-level 3", "'3'");
    wrong("level that is no number read as 0", "--user-level guru", "'guru'");
    wrong("first of two dumps lost", "--dump a --dump b", "once");
    wrong("write without a value", "--write Width", "'Width'");
    wrong("two jobs mixed on stdout", "--dump - --read Width", "standard output");
    const auto row = [&table](const char *fault, const QStringList &arguments, const char *reason) {
        table(fault, arguments, 1, reason);
    };
    const QString never = m_workbench.path("never.bin");
    const QString source = m_workbench.write("something.bin", "something");
    const QByteArray good = descriptionOf({"Level"}, LEVEL_REGISTER);
    const QString broken = m_workbench.write("broken.xml", good.left(good.size() / 2));
    const QString large = m_workbench.write("large.xml", good + QByteArray(64 * 1024 * 1024, ' '));
    row("half a description dumped", {"--description", broken, "--dump", "-"}, "broken: ");
    row("description over 64 MiB", {"--description", large, "--dump", "-"}, "at most 67108864");
    row("description that is not there", {"--description", "/nonexistent/x.xml", "--dump", "-"},
        "x.xml");
    row("dump into a missing folder", {"--dump", "/nonexistent/dump.json"}, "dump.json");
    row("device that is not there", {"--device", "no-such-camera", "--dump", "-"},
        "no-such-camera");
    row("second opening of one device",
        {"--gige", "127.0.0.77", "--gige", " 127.0.0.77", "--screenshot", never},
        "'127.0.0.77' was asked for twice");
    row("first good device hides the bad one",
        {"--device", "area-camera", "--gige", "nowhere", "--screenshot", never},
        "'nowhere' is not the IPv4 address");
    row("computer without a camera waited for", {"--gige", "127.0.0.77", "--screenshot", never},
        "no GigE Vision device");
    row("file that only reads", {"--device", "code-reader", "--put-file", "License Notice", source},
        "Failure");
    row("source that is not there", {"--device", "code-reader", "--put-file", "MultiROI", never},
        "never.bin");
}

void WorkbenchCliTest::failures()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QFETCH(QByteArray, reason);
    const WorkbenchProcess::Result result = m_workbench.run(arguments);
    QVERIFY(result.ended);
    QCOMPARE(result.exitCode, exitCode);
    QVERIFY2(result.err.contains(reason), result.err.constData());
    QCOMPARE(result.out, QByteArray());
    QVERIFY(!QFile::exists(m_workbench.path("never.bin")));
}

/// Parsers of systems fill up, wrap around and cut; and some addresses are nobody's own.
void WorkbenchCliTest::addressesOfNobody()
{
    QString error;
    QVERIFY(RealDevices::gige(" 127.0.0.77 ", &error));
    for (const char *address : {"camera-1", "127.1", "10.0.0.257", "10.0.0.1.2.3", "::1",
                                "255.255.255.255", "224.0.0.1", "0.0.0.0"}) {
        QVERIFY2(!RealDevices::gige(address, &error), address);
        QCOMPARE(error, QStringLiteral("'%1' is not the IPv4 address of a device.").arg(address));
    }
}

void WorkbenchCliTest::lint()
{
    const QString bad = m_workbench.write(
        "bad.xml",
        "<RegisterDescription>\n<Integer Name=\"A\">\n<pValue>B</pValue></Integer>\n"
        "<Integer Name=\"B\"><Value>1</Value>\n<pMax>C</pMax></Integer>\n"
        "<Integer Name=\"Step\"><Value>1</Value><Inc>0</Inc></Integer></RegisterDescription>");
    WorkbenchProcess::Result result = m_workbench.run({"--lint", bad});
    QCOMPARE(result.exitCode, 1);
    const QString expected =
        QStringLiteral("%1:3: A: it needs B, which cannot be evaluated\n"
                       "%1:5: B: its pMax refers to C, which does not exist\n"
                       "%1:6: Step: its Inc is not positive and counts as none\n")
            .arg(bad);
    QCOMPARE(QString::fromUtf8(result.out), expected);
    QCOMPARE(QString::fromUtf8(result.err), bad + ": 3 findings, 2 of 3 nodes are left out\n");

    result = m_workbench.run({"--lint", m_workbench.write("cut.xml", "<RegisterDescription>\n<I")});
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.out.contains(":2: RegisterDescription: The device description is not"),
             result.out.constData());
    result = m_workbench.run({"--lint", m_workbench.write("sound.xml", "<RegisterDescription/>")});
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.out, QByteArray());
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

void WorkbenchCliTest::headlessRunLeavesSettingsAlone()
{
    const WorkbenchProcess workbench;
    const WorkbenchProcess::Result result = workbench.run(
        {"--device", "area-camera", "--user-level", "0", "--language", "CH", "--read", "Width"});
    QVERIFY(result.ended);
    QCOMPARE(result.exitCode, 0);
    QDirIterator files(workbench.path("config"), QDir::Files | QDir::Hidden,
                       QDirIterator::Subdirectories);
    QVERIFY2(!files.hasNext(), qPrintable(files.next()));
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

QTEST_GUILESS_MAIN(WorkbenchCliTest)
#include "tst_workbench_cli.moc"
