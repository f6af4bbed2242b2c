#include "ControlKit/CustomSaveDoneHintDlg.h"
#include "WindowFixture.h"
#include "host/workbench/CameraSession.h"
#include "host/workbench/FeatureFileRunner.h"
#include "host/workbench/WorkbenchWindow.h"
#include "tests/support/DataTable.h"
#include "tests/support/DescriptionOf.h"
#include "tests/support/FullDisk.h"
#include "tests/support/WhenOpen.h"
#include "tests/workbench/WorkbenchProcess.h"
#include "tree/VexaFeatureTree.h"

#include <QApplication>
#include <QDir>
#include <QProcess>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

/// Feature files by the real program and in the window: what is compared, taken, refused, split, and never touched.
class WorkbenchFilesTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void jobs_data();
    void jobs();
    void bagsAreSplit_data();
    void bagsAreSplit();
    void exportsComeBack();
    void localesWriteTheSame_data();
    void localesWriteTheSame();
    void failedExportKeepsTheFile_data();
    void failedExportKeepsTheFile();
    void jobsEndOnSilentRoads_data();
    void jobsEndOnSilentRoads();
    void toolBarReplacesWhenDone_data();
    void toolBarReplacesWhenDone();
    void buttonsFollowTheJob();

private:
    QString file(const QString &name) const { return m_workbench.path(name); }
    static QByteArray bytes(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    WorkbenchProcess m_workbench;
    QByteArray m_base; ///< of a line camera, without what moves
};

namespace {

const char *const LINE = "line-camera";
const QByteArray SERIAL_MARKER("\r\n7d93cf56-39fb-424b-94d0-1d10f6057f2f\r\n");
const QByteArray FILE_MARKER("\r\n34be7aa9-f6a1-4a50-9edf-8205286ad0c9\r\n");

QByteArray feature(const QByteArray &name, const QByteArray &value)
{
    return "<Feature><Name>" + name + "</Name><Type>Integer</Type><Value>" + value
        + "</Value></Feature>";
}

QByteArray smallFile(const QByteArray &features)
{
    return "<FeaturesFile version=\"1\"><DeviceModelName>M</DeviceModelName><Features>" + features
        + "</Features></FeaturesFile>";
}

/// The file without what moves by itself.
QByteArray still(const QByteArray &file)
{
    const int name = file.indexOf("<Name>DeviceTemperature</Name>");
    const int start = file.lastIndexOf("<Feature>", name);
    const int end = file.indexOf("<Feature>", name);
    return name < 0 ? file : file.left(start) + file.mid(end);
}

/// What the folder holds, hidden files too.
QStringList entries(const QString &folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

} // namespace

void WorkbenchFilesTest::initTestCase()
{
    const auto result =
        m_workbench.run({"--device", LINE, "--export", file(QStringLiteral("base.vxf"))});
    QVERIFY2(result.ended && result.exitCode == 0, result.err.constData());
    m_base = still(bytes(file(QStringLiteral("base.vxf"))));
    QVERIFY(m_base.endsWith("</FeaturesFile>") && m_base.contains("<Name>Width</Name>"));
}

void WorkbenchFilesTest::jobs_data()
{
    // In the line camera's file "from" is replaced by "to", the whole of it when empty; "@" is the file.
    const DataTable<QByteArray, QByteArray, QString, int, QByteArray, QByteArray> row(
        "from", "to", "command", "exitCode", "out", "err");
    const QByteArray version = "<FeaturesFile version=\"";
    const int width = m_base.indexOf("<Value>", m_base.indexOf("<Name>Width</Name>")) + 7;
    const QByteArray device = m_base.mid(width, m_base.indexOf('<', width) - width);
    const int start = m_base.lastIndexOf("<Feature>", width);
    const QByteArray group = m_base.mid(start, width - start);
    const QByteArray differs = "ImageFormatControl\tWidth\t640\t" + device + "\n";
    const QString compare = "--device line-camera --compare @";
    const QString import = "--device line-camera --import @";

    row("difference where none is", "<", "<", compare, 0, "", "");
    row("difference untold", group + device, group + "640", compare, 1, differs, "");
    row("version looked for in a comment", version,
        "<!-- <FeaturesFile version=\"9\"> --><FeaturesFile a='>' version = \"", compare, 0, "",
        "");
    row("other version compared without a word", version, version + "0.", compare, 2, "", "--yes");
    row("other version refused for ever", version, version + "0.", compare + " --yes", 0, "", "");
    row("no version taken for any", version, "<FeaturesFile v=\"", compare, 2, "",
        "comparison failed");
    row("other model", "<DeviceModelName>", "<DeviceModelName>X", compare, 2, "", "another model");
    row("no document", "</Features>", "", compare, 2, "", "line ");
    row("document type", "<FeaturesFile", "<!DOCTYPE a><FeaturesFile", compare, 2, "",
        "document type");
    row("empty file", "", "", compare, 2, "", "line 1");
    row("no file", "<", "<", "--device line-camera --compare /nonexistent/a.vxf", 2, "",
        "/nonexistent/a.vxf");
    row("unknown device", "<", "<", "--device none --compare @", 2, "", "none");
    row("import that asks nobody", group + device, group + "640", import, 1, differs, "--yes");
    row("import of nothing refused", "<", "<", import, 0, "", "");
    row("import of another model", "<DeviceModelName>", "<DeviceModelName>X", import + " --yes", 1,
        "", "another model");
    row("import not done", group + device, group + "640", import + " --yes", 0, differs, "");
    row("value not taken passed over", group + device, group + "640001", import + " --yes", 1,
        "Width\t640001", "'Width' was not taken: the file says 640001, the device " + device);
    row("earlier of two values called refused", group + device,
        group + "640</Value></Feature>" + group + device, import + " --yes", 0, "", "");
    row("measured value counted as refused",
        "<Name>SensorWidth</Name>\r\n<Type>Integer</Type>\r\n<Value>",
        "<Name>SensorWidth</Name>\r\n<Type>Integer</Type>\r\n<Value>1", import + " --yes", 0,
        "\tSensorWidth\t1", "SensorWidth");
    row("import that loses the change before it", "<", "<",
        "--device line-camera --write Width=640 --import @ --yes --export @2", 0,
        "\tWidth\t" + device + "\t640", "");
    row("same two files differ", "<", "<", "--compare @ @", 0, "", "");
    row("bag of nowhere", "<", "<", "--device line-camera --export /nonexistent/a.vxf", 1, "",
        "/nonexistent/a.vxf");
    row("folder given way to a file", "<", "<", "--device line-camera --export /tmp", 1, "",
        "'/tmp': it is no file");
    row("two files and a device", "<", "<", "--device line-camera --compare @ @", 2, "",
        "no device");
    row("comparison among other jobs", "<", "<", "--compare @ --read Width", 2, "", "alone");
    row("table mixed with a value", "<", "<", "--import @ --read Width", 2, "", "standard output");
    row("yes without a question", "<", "<", "--export @ --yes", 2, "", "'--yes' needs");
    row("export of two devices to one file", "<", "<",
        "--device line-camera --device area-camera --export @", 2, "", "one device");
    row("third file passed over", "<", "<", "--compare @ @ @", 2, "", "Unexpected");
    row("bag without a folder", "<", "<", "--split-bag @", 2, "", "takes FILE DIR");
}

void WorkbenchFilesTest::jobs()
{
    QFETCH(QByteArray, from);
    QFETCH(QByteArray, to);
    QFETCH(QString, command);
    QFETCH(int, exitCode);
    QFETCH(QByteArray, out);
    QFETCH(QByteArray, err);
    QStringList arguments = command.split(' ');
    QVERIFY(m_base.contains(from));
    const QByteArray text = from.isEmpty() ? QByteArray() : QByteArray(m_base).replace(from, to);
    const QString path = m_workbench.write(QStringLiteral("job.vxf"), text);
    const QString again = file(QStringLiteral("again.vxf"));
    arguments.replaceInStrings(QRegularExpression(QStringLiteral("^@2$")), again);
    arguments.replaceInStrings(QRegularExpression(QStringLiteral("^@$")), path);
    const auto result = m_workbench.run(arguments);
    QVERIFY(result.ended);
    QVERIFY2(result.exitCode == exitCode, result.err.constData());
    QVERIFY2(out.isEmpty() ? result.out.isEmpty() : result.out.contains(out),
             result.out.constData());
    QVERIFY2(result.err.contains(err), result.err.constData());
    if (arguments.contains(again)) {
        QCOMPARE(still(bytes(again)), m_base);
    }
}

void WorkbenchFilesTest::bagsAreSplit_data()
{
    const DataTable<QByteArray, QByteArray, QByteArray> row("bag", "out", "err");
    const QByteArray a = smallFile(feature("A", "1"));
    const auto record = [](const QByteArray &serial, const QByteArray &text) {
        return SERIAL_MARKER + serial + FILE_MARKER + text;
    };
    row("serial number taken for a path",
        record("../../evil", a) + record("/etc/x", a) + record("", a),
        "1_______evil.vxf\t../../evil\tM\n2__etc_x.vxf\t/etc/x\tM\n3_.vxf\t\tM\n", "");
    row("same serial number twice", record("S1", a) + record("S1", a),
        "1_S1.vxf\tS1\tM\n2_S1.vxf\tS1\tM\n", "");
    row("line in a serial number", record("a\nb", a), "1_a_b.vxf\ta\\nb\tM\n", "");
    row("half a bag written", record("S1", a) + record("S2", a.left(40)), "", "record 2: line");
    row("record cut off", record("S1", a) + SERIAL_MARKER + "S2", "", "record 2 is cut off");
    row("feature file taken for a bag", a, "", "no bag");
    row("empty bag", "", "", "no bag");
}

void WorkbenchFilesTest::bagsAreSplit()
{
    QFETCH(QByteArray, bag);
    QFETCH(QByteArray, out);
    QFETCH(QByteArray, err);
    QTemporaryDir folder;
    const QString target = folder.filePath(QStringLiteral("deep/er"));
    const QString path = m_workbench.write(QStringLiteral("split.bag"), bag);
    const auto result = m_workbench.run({"--split-bag", path, target});
    QVERIFY(result.ended);
    QCOMPARE(result.exitCode, out.isEmpty() ? 1 : 0);
    QCOMPARE(result.out, out);
    QVERIFY2(result.err.contains(err), result.err.constData());
    QStringList names;
    for (const QByteArray &line : out.split('\n')) {
        if (!line.isEmpty()) {
            names += QString::fromUtf8(line.left(line.indexOf('\t')));
            QCOMPARE(bytes(target + '/' + names.last()), smallFile(feature("A", "1")));
        }
    }
    QCOMPARE(entries(target), names);
    QCOMPARE(entries(folder.path()), QStringList());
}

void WorkbenchFilesTest::exportsComeBack()
{
    const QString bag = m_workbench.write(QStringLiteral("both.bag"), "an older one");
    auto result =
        m_workbench.run({"--device", LINE, "--device", "grabber-camera", "--export-bag", bag});
    QVERIFY2(result.ended && result.exitCode == 0, result.err.constData());
    const QString folder = file(QStringLiteral("both"));
    result = m_workbench.run({"--split-bag", bag, folder});
    QVERIFY2(result.ended && result.exitCode == 0, result.err.constData());
    const QStringList names = entries(folder);
    QCOMPARE(names.size(), 2);
    QVERIFY(still(bytes(folder + '/' + names.first())) == m_base
            || still(bytes(folder + '/' + names.last())) == m_base);
    // Values that stand more than once, in one file only, and in another order.
    const QString first = m_workbench.write(
        "1.vxf", smallFile(feature("A", "1") + feature("B", "1") + feature("B", "2")));
    const QString second = m_workbench.write(
        "2.vxf", smallFile(feature("B", "1") + feature("A", "1") + feature("C", "3")));
    result = m_workbench.run({"--compare", first, second});
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(result.out, QByteArray("\tB\t2\t/\n\tC\t/\t3\n"));
}

void WorkbenchFilesTest::localesWriteTheSame_data()
{
    const DataTable<QString, QString> row("locale", "charset");
    row("C", "C", "");
    row("comma behind thousands", "en_US", "UTF-8");
    row("comma before decimals", "de_DE", "UTF-8");
    row("another charset", "zh_CN", "GBK");
}

void WorkbenchFilesTest::localesWriteTheSame()
{
    QFETCH(QString, locale);
    QFETCH(QString, charset);
    const QString folder = file(QStringLiteral("locales"));
    if (!charset.isEmpty()) {
        // Few machines have all of them.
        const QString name = locale + '.' + charset;
        QVERIFY(QDir().mkpath(folder));
        QProcess::execute("localedef", {"-c", "-i", locale, "-f", charset, folder + '/' + name});
        locale = name;
        if (!QFileInfo::exists(folder + '/' + name + "/LC_NUMERIC")) {
            QSKIP("this machine cannot make the locale");
        }
    }
    const QByteArray reg = "<Length>32</Length><AccessMode>RW</AccessMode><pPort>Device</pPort>";
    const QString description = m_workbench.write(
        "locale.xml",
        descriptionOf({"Text", "Tenth", "Tiny", "Huge", "Long"},
                      "<StringReg Name=\"DeviceFirmwareVersion\"><Address>0</Address>" + reg
                          + "</StringReg><StringReg Name=\"Text\"><Address>64</Address>" + reg
                          + "</StringReg><Float Name=\"Tenth\"><Value>1234567.5</Value></Float>"
                            "<Float Name=\"Tiny\"><Value>1e-30</Value></Float>"
                            "<Float Name=\"Huge\"><Value>3.4e38</Value></Float>"
                            "<Integer Name=\"Long\"><Value>5000000000</Value></Integer>"));
    const QString path = file(QStringLiteral("locale.vxf"));
    qputenv("LC_ALL", "C.UTF-8");
    auto result = m_workbench.run({"--description", description, "--export", path});
    QByteArray text = bytes(path);
    for (const char *value : {"1234567.500000", "0.000000", "5000000000", "",
                              "339999995214436424907732413799364296704.000000"}) {
        QVERIFY2(text.contains(QByteArray("\r\n<Value>") + value + "</Value>"), value);
    }
    text.replace("<Value></Value>", "<Value>读码&lt;\"1\"&gt;'</Value>");
    text.replace("1234567.500000", "0.100000");
    qputenv("LC_ALL", locale.toLatin1());
    qputenv("LOCPATH", folder.toLocal8Bit());
    result = m_workbench.run({"--description", description, "--import",
                              m_workbench.write(QStringLiteral("other.vxf"), text), "--yes",
                              "--export", path});
    qunsetenv("LOCPATH");
    qputenv("LC_ALL", "C.UTF-8");
    QVERIFY2(result.ended && result.exitCode == 0, result.err.constData());
    QVERIFY2(result.out.contains("\tText\t读码<\"1\">'\t\n")
                 || result.out.contains("\tText\t读码<\"1\">'\t/\n"),
             result.out.constData());
    QCOMPARE(bytes(path), text);
}

void WorkbenchFilesTest::failedExportKeepsTheFile_data()
{
    // The second column is done to the disk.
    const DataTable<QString, QByteArray, QByteArray> row("device", "disk", "reason");
    // Without a node for the firmware there is no feature file.
    const QByteArray plain =
        descriptionOf({"Level"}, "<Integer Name=\"Level\"><Value>1</Value></Integer>");
    row("no firmware", m_workbench.write("plain.xml", plain), "true", "its firmware");
    row("disk full", "", "true", "The disk is full. @");
    row("folder read-only", "", "mount -o remount,ro \"$0\"", "'@': Permission denied");
}

void WorkbenchFilesTest::failedExportKeepsTheFile()
{
    QFETCH(QString, device);
    QFETCH(QByteArray, disk);
    QFETCH(QByteArray, reason);
    QTemporaryDir folder;
    // On a small disk of its own, which ends with the process.
    const QByteArray script = "mount -t tmpfs -o size=8k none \"$0\" || exit 99\n"
                              "printf former > \"$0/kept.vxf\"\n"
        + disk + "\n\"$@\"; code=$?; ls -A \"$0\"; cat \"$0/kept.vxf\"; exit $code";
    QProcess process;
    process.setEnvironment(m_workbench.environment());
    QStringList arguments = {"-rm", "sh", "-c", script, folder.path(), WorkbenchProcess::program()};
    arguments +=
        device.isEmpty() ? QStringList{"--device", LINE} : QStringList{"--description", device};
    process.start("unshare", arguments << "--export" << folder.filePath("kept.vxf"));
    if (!process.waitForFinished(90000) || process.exitCode() == 99) {
        QSKIP("this machine has no disks for tests");
    }
    const QByteArray error = process.readAllStandardError();
    reason.replace('@', folder.filePath("kept.vxf").toLocal8Bit());
    QVERIFY2(error.contains(reason), error.right(1000).constData());
    QCOMPARE(process.readAllStandardOutput(), QByteArray("kept.vxf\nformer"));
    QCOMPARE(process.exitCode(), 1);
}

void WorkbenchFilesTest::jobsEndOnSilentRoads_data()
{
    const DataTable<bool, bool> row("isExport", "close");
    row("export of a device that hangs", true, false);
    row("export of a device that is closed", true, true);
    row("comparison with a device that hangs", false, false);
    row("comparison with a device that is closed", false, true);
}

void WorkbenchFilesTest::jobsEndOnSilentRoads()
{
    QFETCH(bool, isExport);
    QFETCH(bool, close);
    const QString id = QString::fromLatin1(LINE);
    WindowFixture fixture({id});
    fixture.openAndWait(id);
    const auto kind = isExport ? FeatureFileJob::Kind::Export : FeatureFileJob::Kind::Compare;
    QTemporaryDir folder;
    const QString path = isExport ? folder.filePath(QStringLiteral("a.vxf"))
                                  : m_workbench.write(QStringLiteral("check.vxf"), m_base);
    FeatureFileRunner runner(false, std::chrono::milliseconds(400));
    QSignalSpy finished(&runner, &FeatureFileRunner::finished);
    fixture.control(id).blockNextAccess();
    runner.start({kind, path}, {fixture.session(id)->tree()});
    if (close) {
        fixture.window().closeDevice(id);
    }
    QTRY_VERIFY_WITH_TIMEOUT(finished.count() == 1, WindowFixture::LONG_WAIT);
    QCOMPARE(finished.first().first().toInt(), isExport ? 1 : 2);
    QVERIFY2(
        fixture.messages().contains(isExport ? "The export failed." : "The comparison failed."),
        qPrintable(fixture.messages()));
    QCOMPARE(entries(folder.path()), QStringList());
}

void WorkbenchFilesTest::toolBarReplacesWhenDone_data()
{
    const DataTable<bool, bool> row("vanishes", "isFull");
    row("file not replaced", false, false);
    row("file gone with a failed export", true, false);
    row("full disk told of a file that the user never named", false, true);
}

void WorkbenchFilesTest::toolBarReplacesWhenDone()
{
    QFETCH(bool, vanishes);
    QFETCH(bool, isFull);
    const bool fails = vanishes || isFull;
    std::unique_ptr<FullDisk> full;
    const QString id = QString::fromLatin1(LINE);
    WindowFixture fixture({id});
    fixture.openAndWait(id);
    QTemporaryDir folder;
    const QString target = folder.filePath(QStringLiteral("a.vxf"));
    const QString link = folder.filePath(QStringLiteral("link.vxf"));
    {
        QFile former(target);
        QVERIFY(former.open(QIODevice::WriteOnly) && former.write("former") == 6);
        QVERIFY(QFile::link(target, link));
    }
    QString told;
    QObject context; // the dialogs run their own event loops
    chooseFile(&context, link, [&] {
        if (vanishes) {
            fixture.control(id).vanish();
        } else if (isFull) {
            full = std::make_unique<FullDisk>(100);
        }
    });
    whenOpen<CustomSaveDoneHintDlg>(
        [&told](CustomSaveDoneHintDlg *hint) {
            told = hint->toolTip();
            hint->accept();
        },
        &context);
    fixture.session(id)->tree()->SaveCamFeatures(false, QString());
    QTRY_VERIFY_WITH_TIMEOUT(
        !fixture.session(id)->tree()->isFeatureFileBusy()
            && (fails ? fixture.messages().contains("xport") : !told.isEmpty()),
        WindowFixture::LONG_WAIT);
    QVERIFY(!fixture.messages().contains(".part"));
    QCOMPARE(fixture.messages().contains("written whole. " + link), isFull);
    QCOMPARE(told, fails ? QString() : QDir::toNativeSeparators(link));
    QCOMPARE(still(bytes(target)), fails ? QByteArray("former") : m_base);
    QVERIFY(QFileInfo(link).isSymLink());
    QCOMPARE(entries(folder.path()), (QStringList{"a.vxf", "link.vxf"}));
}

void WorkbenchFilesTest::buttonsFollowTheJob()
{
    const QString first = WindowFixture::FIRST;
    const QString second = WindowFixture::SECOND;
    WindowFixture fixture;
    fixture.openAndWait(second);
    fixture.openAndWait(first);
    VexaFeatureTree *tree = fixture.session(first)->tree();
    const auto buttons = [tree] {
        QString states;
        for (const auto *button : tree->findChildren<QPushButton *>()) {
            if (button->text() == "Import" || button->text() == "Export") {
                states += button->isEnabled() ? '1' : '0';
            }
        }
        return states;
    };
    QTRY_COMPARE(buttons(), QString("11"));
    QTemporaryDir folder;
    fixture.control(first).setLatency(2000);
    tree->SaveCamFeatures(true, folder.filePath("bag"));
    QCOMPARE(buttons(), QString("00"));
    fixture.select(second);
    fixture.select(first); // shows the page anew
    QVERIFY(tree->isFeatureFileBusy());
    QCOMPARE(buttons(), QString("00"));
    fixture.unplug(first);
    QTRY_VERIFY_WITH_TIMEOUT(!tree->isFeatureFileBusy(), WindowFixture::LONG_WAIT);
    // The tree switches them on at the end of its job; the device is lost all the same.
    QTRY_VERIFY_WITH_TIMEOUT(fixture.session(first)->state() == CameraSession::State::Lost,
                             WindowFixture::LONG_WAIT);
    QTRY_COMPARE_WITH_TIMEOUT(buttons(), QString("00"), WindowFixture::LONG_WAIT);
}

QTEST_MAIN(WorkbenchFilesTest)
#include "tst_workbench_files.moc"
