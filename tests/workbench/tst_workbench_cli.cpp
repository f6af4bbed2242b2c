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
    void informs_data();
    void informs();
    void readsOneValue_data();
    void readsOneValue();
    void refusedDescription_data();
    void refusedDescription();
    void descriptionWithoutRoot();
    void categoriesInACircleEnd();
    void memoryPatternFillsRegisters();
    void picture_data();
    void picture();
    void filesThereAndBack();
    void fileFailures_data();
    void fileFailures();
    void unwritableTargetsFail_data();
    void unwritableTargetsFail();
    void languageAndLevelReachTheDump();
    void headlessRunLeavesSettingsAlone();
    void terminationSignalEndsCleanly();

private:
    WorkbenchProcess m_workbench;
};

void WorkbenchCliTest::wrongUsage_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("reason");
    QTest::newRow("unknown option taken for a device")
        << QStringList{"--devcie", "x"} << QByteArray("devcie");
    QTest::newRow("stray argument ignored")
        << QStringList{"area-camera"} << QByteArray("'area-camera'");
    QTest::newRow("value missing at the end") << QStringList{"--device"} << QByteArray("device");
    QTest::newRow("empty value taken for not given")
        << QStringList{"--dump="} << QByteArray("needs a value");
    QTest::newRow("level above the table") << QStringList{"--user-level", "3"} << QByteArray("'3'");
    QTest::newRow("level that is no number read as 0")
        << QStringList{"--user-level", "guru"} << QByteArray("'guru'");
    QTest::newRow("language by another name")
        << QStringList{"--language", "eng"} << QByteArray("ENG or CH");
    QTest::newRow("pattern that does not exist")
        << QStringList{"--description", "x", "--memory-pattern", "random"}
        << QByteArray("zero or ugly");
    QTest::newRow("pattern without effect")
        << QStringList{"--memory-pattern", "ugly"} << QByteArray("--description");
    QTest::newRow("first of two dumps lost")
        << QStringList{"--dump", "a", "--dump", "b"} << QByteArray("once");
    QTest::newRow("dump of which device")
        << QStringList{"--device", "area-camera", "--device", "area-camera", "--dump", "-"}
        << QByteArray("one device");
    QTest::newRow("write without a value")
        << QStringList{"--write", "Width"} << QByteArray("'Width'");
    QTest::newRow("write without a name")
        << QStringList{"--write", "=3"} << QByteArray("NAME=VALUE");
    QTest::newRow("write to which device")
        << QStringList{"--device", "area-camera", "--device", "area-camera", "--write", "Width=640"}
        << QByteArray("one device");
    QTest::newRow("answer to no question") << QStringList{"--yes"} << QByteArray("--write");
    QTest::newRow("two jobs mixed on stdout")
        << QStringList{"--dump", "-", "--read", "Width"} << QByteArray("standard output");
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

void WorkbenchCliTest::informs_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("list without the camera") << "--list" << QByteArray("area-camera\tGigE\t");
    QTest::newRow("help without an option") << "--help" << QByteArray("--screenshot <FILE.png>");
    QTest::newRow("version without a number") << "--version" << QByteArray("vexa-workbench 1.");
}

void WorkbenchCliTest::informs()
{
    QFETCH(QString, option);
    QFETCH(QByteArray, text);
    const WorkbenchProcess::Result result = m_workbench.run({option});
    QVERIFY(result.ended);
    QCOMPARE(result.exitCode, 0);
    QVERIFY2(result.out.contains(text), result.out.constData());
    QCOMPARE(result.err, QByteArray());
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
    const QString file =
        m_workbench.write("level.xml", workbenchDescription({"Level", "Reset"}, LEVEL_REGISTER));
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

void WorkbenchCliTest::categoriesInACircleEnd()
{
    const QByteArray circle =
        "<Category Name=\"A\"><pFeature>B</pFeature><pFeature>Level</pFeature></Category>\n"
        "<Category Name=\"B\"><pFeature>A</pFeature><pFeature>Root</pFeature></Category>\n";
    const QString file =
        m_workbench.write("circle.xml", workbenchDescription({"A"}, circle + LEVEL_REGISTER));
    const WorkbenchProcess::Result result =
        m_workbench.run({"--description", file, "--read", "Level"});
    QVERIFY(result.ended);
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.out, QByteArray("0\n"));
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

void WorkbenchCliTest::picture_data()
{
    QTest::addColumn<QByteArray>("scale");
    QTest::addColumn<QSize>("size");
    QTest::newRow("picture without a display") << QByteArray("1") << QSize(1280, 800);
    QTest::newRow("picture in logical pixels at scale 2") << QByteArray("2") << QSize(2560, 1600);
}

void WorkbenchCliTest::picture()
{
    QFETCH(QByteArray, scale);
    QFETCH(QSize, size);
    qputenv("QT_SCALE_FACTOR", scale);
    const QString file = m_workbench.path("window.png");
    const WorkbenchProcess::Result result = m_workbench.run(
        {"--device", "area-camera", "--device", "area-camera", "--screenshot", file});
    qunsetenv("QT_SCALE_FACTOR");
    QVERIFY(result.ended);
    QCOMPARE(result.exitCode, 0);
    const QImage image(file);
    // A window that something inside forces to grow does not fit the screen that it is meant for.
    QCOMPARE(image.size(), size);
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
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("reason");
    const QString path = m_workbench.path("none.bin");
    const QString source = m_workbench.write("something.bin", "something");
    QTest::newRow("file that the device has not")
        << QStringList{"--get-file", "NoFile", path} << 1 << QByteArray("'NoFile' was not copied");
    QTest::newRow("file that only reads")
        << QStringList{"--put-file", "License Notice", source} << 1 << QByteArray("Failure");
    QTest::newRow("source that is not there")
        << QStringList{"--put-file", "MultiROI", path} << 1 << QByteArray("none.bin");
    QTest::newRow("target left out")
        << QStringList{"--get-file", "MultiROI"} << 2 << QByteArray("NAME FILE");
    QTest::newRow("two devices") << QStringList{"--device", "area-camera", "--files"} << 2
                                 << QByteArray("one device");
}

void WorkbenchCliTest::fileFailures()
{
    QFETCH(QStringList, job);
    QFETCH(int, exitCode);
    QFETCH(QByteArray, reason);
    const WorkbenchProcess::Result result =
        m_workbench.run(QStringList{"--device", "code-reader"} + job);
    QVERIFY(result.ended);
    QCOMPARE(result.exitCode, exitCode);
    QVERIFY2(result.err.contains(reason), result.err.constData());
    QVERIFY(!QFile::exists(m_workbench.path("none.bin")));
}

void WorkbenchCliTest::unwritableTargetsFail_data()
{
    QTest::addColumn<QStringList>("job");
    QTest::newRow("dump into a missing folder") << QStringList{"--dump", "/nonexistent/dump.json"};
    QTest::newRow("picture into a missing folder")
        << QStringList{"--screenshot", "/nonexistent/window.png"};
    QTest::newRow("description that is a folder")
        << QStringList{"--description", "/tmp", "--dump", "-"};
    QTest::newRow("description that is not there")
        << QStringList{"--description", "/nonexistent/x.xml", "--dump", "-"};
    QTest::newRow("device that is not there")
        << QStringList{"--device", "no-such-camera", "--dump", "-"};
    QTest::newRow("device number below one")
        << QStringList{"--device", "area-camera#0", "--dump", "-"};
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

QTEST_GUILESS_MAIN(WorkbenchCliTest)
#include "tst_workbench_cli.moc"
