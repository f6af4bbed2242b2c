#include "ControlKit/CustomMessageBox.h"
#include "ControlKit/CustomSaveDoneHintDlg.h"
#include "ShellServicesModule/QFunction.h"
#include "UtilityKit/VexaInterface.h"
#include "featurefile/VexaFeatureDiff.h"
#include "shell/VexaFeatureToolBar.h"
#include "tests/featurefile/FeatureFileLines.h"
#include "tests/featurefile/RoadFixture.h"
#include "tests/support/DataTable.h"
#include "tests/support/FullDisk.h"
#include "tests/support/WhenOpen.h"

#include <QApplication>
#include <QButtonGroup>
#include <QSignalSpy>
#include <QTableView>
#include <QtTest>

#include <algorithm>
#include <functional>
#include <memory>

namespace {

constexpr int WIDTH = 0x280;
constexpr int OTHER_WIDTH = 0x100;

QStringList names(const FeatureDifferences &differences)
{
    QStringList found;
    for (const auto &list : differences) {
        for (const FeatureDifference &difference : list) {
            found += difference.name;
        }
    }
    return found;
}

} // namespace

class tst_FeatureRoads : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanupTestCase() { m_pRoad.reset(); }
    void bringsABagRecordBack_data();
    void bringsABagRecordBack();
    void refusesFiles_data();
    void refusesFiles();
    void checksWithoutAWord_data();
    void checksWithoutAWord();
    void saysWhyAnExportFailed_data();
    void saysWhyAnExportFailed();
    void survivesWhatComesInTheMiddle_data();
    void survivesWhatComesInTheMiddle();
    void endsWhenTheDeviceGoes();
    void goesThroughTheFileDialogs();
    void listsDifferences();

private:
    std::unique_ptr<RoadFixture> m_pRoad; ///< until a test breaks it
};

void tst_FeatureRoads::init()
{
    if (!m_pRoad || !m_pRoad->camera.tree || m_pRoad->tree().isFeatureFileBusy()) {
        m_pRoad.reset(); // there is one main widget
        m_pRoad = std::make_unique<RoadFixture>();
    }
    QVERIFY(!m_pRoad->text.isEmpty());
}

void tst_FeatureRoads::bringsABagRecordBack_data()
{
    const DataTable<QVector<int>, bool> row("keys", "accept");
    row("accepted with Enter", {Qt::Key_Return}, true);
    row("rejected with Escape", {Qt::Key_Escape}, false);
    row("accepted from the list", {Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Down, Qt::Key_Return}, true);
}

void tst_FeatureRoads::bringsABagRecordBack()
{
    QFETCH(QVector<int>, keys);
    QFETCH(bool, accept);
    RoadFixture &road = *m_pRoad;
    QCOMPARE(FeatureFileLines::of(road.text.toUtf8()).error, QString());
    QCOMPARE(road.record.section(FeatureFileFormat::BAG_FILE_MARKER, 0, 0),
             FeatureFileFormat::BAG_SERIAL_MARKER + road.camera.device.source->serial);
    road.change();
    QStringList log;
    QObject context; // what waits for a dialog ends with the test
    connect(QFunction::Instance(), &QFunction::messageLogged, &context,
            [&log](int, const QString &, const QString &line) { log += line; });
    QSignalSpy ended(road.camera.tree, &VexaFeatureTree::SigEndImportFeature);
    whenOpen<VexaFeatureDiff>(
        [keys](VexaFeatureDiff *dialog) {
            for (int key : keys) {
                QTest::keyClick(dialog->focusWidget(), Qt::Key(key));
            }
        },
        &context);
    road.tree().LoadCamFeatures(true, road.text);
    QVERIFY(ended.wait(30000));
    QVERIFY(ended.first().first().toBool());
    QCOMPARE(road.width(), accept ? WIDTH : OTHER_WIDTH);
    QCOMPARE(names(road.tree().featureDifferences()), QStringList{"Width"});
    QCOMPARE(road.tree().featureFileReport().changed.contains("Width"), accept);
    QCOMPARE(log.join('\n').contains("importcounts"), accept);
    QVERIFY(!road.tree().isFeatureFileBusy());
}

void tst_FeatureRoads::refusesFiles_data()
{
    const DataTable<QString, QString, quint32> row("from", "to", "code");
    row("other model", "<DeviceModelName>", "<DeviceModelName>X", FEATURE_FILE_MISMATCH);
    row("other firmware", "FirmwareVersion>", "FirmwareVersion>X", FEATURE_FILE_MISMATCH);
    row("no firmware", "FirmwareVersion>", "Firmware>", FEATURE_FILE_MISMATCH);
    row("no version", "File version=\"", "File v=\"", FEATURE_FILE_VERSION);
    row("no features", "Features>", "Things>", FEATURE_FILE_NO_FEATURES);
    row("truncated", "</Features>", "", FEATURE_FILE_UNREADABLE);
    row("empty", "", "", FEATURE_FILE_UNREADABLE);
    row("a huge length", " len=\"", " len=\"99999999", FEATURE_FILE_STOPPED);
    row("no address", " address=\"", " a=\"", FEATURE_FILE_STOPPED);
}

void tst_FeatureRoads::refusesFiles()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    QFETCH(quint32, code);
    RoadFixture &road = *m_pRoad;
    QString text = from.isEmpty() ? QString() : road.text;
    QVERIFY2(text.contains(from), qPrintable(from));
    text.replace(from, to);
    road.control().clearAccessLog();
    QSignalSpy ended(road.camera.tree, &VexaFeatureTree::SigEndImportFeature);
    road.tree().LoadCamFeatures(true, text);
    QVERIFY(ended.wait(30000));
    QVERIFY(!ended.first().first().toBool());
    QCOMPARE(road.tree().featureFileResult(), code);
    QVERIFY(!road.tree().featureFileFailure().isEmpty());
    QCOMPARE(road.writes(), 0);
}

void tst_FeatureRoads::checksWithoutAWord_data()
{
    const DataTable<bool> row("grabbing");
    row("grabbing", true);
    row("another version", false);
}

void tst_FeatureRoads::checksWithoutAWord()
{
    QFETCH(bool, grabbing);
    RoadFixture &road = *m_pRoad;
    QString text = road.text;
    QVERIFY(!grabbing || road.fixture.host().startGrabbing(road.camera.id));
    road.change();
    QSignalSpy ended(road.camera.tree, &VexaFeatureTree::SigEndImportFeature);
    QSignalSpy checked(road.camera.tree, &VexaFeatureTree::SigEndCheckFeature);
    if (grabbing) {
        road.tree().LoadCamFeatures(true, text);
        QCOMPARE(ended.count(), 1);
        QVERIFY(!ended.takeFirst().first().toBool());
        QVERIFY(!road.tree().featureFileFailure().isEmpty());
    } else {
        text.replace("<FeaturesFile version=\"", "<FeaturesFile version=\"0.");
    }
    QVERIFY(road.tree().CheckCamFeatures(text));
    QVERIFY(!road.tree().CheckCamFeatures(text)); // one at a time
    QVERIFY(checked.wait(30000));
    QVERIFY(checked.first().first().toBool() && !QApplication::activeModalWidget());
    QCOMPARE(names(road.tree().featureDifferences()), QStringList{"Width"});
    QCOMPARE(road.tree().featureFileResult(),
             quint32(grabbing ? FEATURE_FILE_OK : FEATURE_FILE_VERSION));
    QVERIFY(ended.isEmpty() && !road.tree().isFeatureFileBusy());
    QCOMPARE(road.writes(), 0);
    QVERIFY(!grabbing || road.fixture.host().stopGrabbing(road.camera.id));
}

void tst_FeatureRoads::saysWhyAnExportFailed_data()
{
    // In the folder of the test.
    const DataTable<QString, QString, QString> row("path", "fault", "key");
    row("folder missing", "none/bag", "", "fail_open");
    row("device instead of a file", "/dev/full", "", "fail_open");
    row("folder instead of a file", ".", "", "fail_open");
    row("no room for the whole file", "new", "limit", "fail_write");
    row("no firmware", "new", "firmware", "fail_firmware");
    row("access fails", "new", "width", "fail_device");
    row("stopped", "new", "stop", "fail_stopped");
    row("end taken for that of the next export", "none/bag", "next", "fail_open");
}

void tst_FeatureRoads::saysWhyAnExportFailed()
{
    QFETCH(QString, path);
    QFETCH(QString, fault);
    QFETCH(QString, key);
    constexpr int NOT_CONNECTED = 2; // of ArvDeviceError
    constexpr int INVALID_ADDRESS = 14;
    RoadFixture &road = *m_pRoad;
    const quint64 place = fault == "firmware" ? 0x100 : 0x1000;
    std::unique_ptr<FullDisk> full;
    if (fault == "limit") {
        full = std::make_unique<FullDisk>(100);
    } else if (fault == "firmware" || fault == "width") {
        road.control().setFailing(place, fault == "firmware" ? INVALID_ADDRESS : NOT_CONNECTED);
    }
    QObject context;
    QStringList reasons;
    connect(&road.tree(), &VexaFeatureTree::SigEndExportFeature, &context,
            [&](bool done) { reasons += done ? "done" : road.tree().featureFileFailure(); });
    road.tree().SaveCamFeatures(true, QDir(road.folder.path()).absoluteFilePath(path));
    if (fault == "stop") {
        road.tree().StopThread(true);
        road.tree().StopThread(false);
    } else if (fault == "next") {
        road.tree().SaveCamFeatures(true, road.folder.filePath("bag"));
    }
    const bool isEnded = QTest::qWaitFor([&reasons] { return !reasons.isEmpty(); }, 30000);
    full.reset();
    road.control().setFailing(place, 0);
    QVERIFY(isEnded);
    QVERIFY2(reasons.first().contains(key), qPrintable(reasons.first()));
    QVERIFY(!QFile::exists(road.folder.filePath("new")) && QFile::exists("/dev/full"));
    QTRY_VERIFY_WITH_TIMEOUT(!road.tree().isFeatureFileBusy(), 30000);
    QTRY_COMPARE(reasons.mid(1), fault == "next" ? QStringList{"done"} : QStringList());
}

void tst_FeatureRoads::survivesWhatComesInTheMiddle_data()
{
    const DataTable<QString, QString> row("job", "event");
    row("dialog, grabbing since", "dialog", "grab");
    for (const char *job :
         {"export", "check", "question", "dialog", "apply", "save dialog", "open dialog"}) {
        for (const char *event : {"close", "restart", "delete"}) {
            row(qPrintable(QString("%1, %2").arg(job, event)), job, event);
        }
    }
}

void tst_FeatureRoads::survivesWhatComesInTheMiddle()
{
    QFETCH(QString, job);
    QFETCH(QString, event);
    const std::unique_ptr<RoadFixture> broken = std::move(m_pRoad);
    QObject context;
    RoadFixture &road = *broken;
    QString text = road.text;
    road.change();
    const QPointer<VexaFeatureTree> tree = road.camera.tree;
    QSignalSpy ends[] = {{tree, &VexaFeatureTree::SigEndImportFeature},
                         {tree, &VexaFeatureTree::SigEndExportFeature}};
    bool happened = false;
    const auto happen = [&] {
        happened = true;
        if (event == "close") {
            tree->OnCameraClose();
        } else if (event == "restart") {
            tree->OnResartCameraOpen(DEVICE_ACCESS_CONTROL);
        } else if (event == "grab") {
            road.fixture.host().startGrabbing(road.camera.id);
        } else {
            road.fixture.close(road.camera);
        }
    };
    QTimer middle;
    connect(&middle, &QTimer::timeout, &context, [&] {
        if (job == "apply" ? road.writes() > 0 : road.control().accessLog().size() > 1) {
            middle.stop();
            happen();
        }
    });
    const auto slowDown = [&] {
        road.control().setLatency(20000);
        middle.start(1);
    };
    const QString path = road.folder.filePath("middle.vxf");
    if (job == "save dialog" || job == "open dialog") {
        chooseFile(&context, job == "save dialog" ? path : road.folder.filePath("bag"), happen);
        whenOpen<CustomSaveDoneHintDlg>([](auto *hint) { hint->accept(); }, &context);
    } else if (job == "question") {
        text.replace("<FeaturesFile version=\"", "<FeaturesFile version=\"0.");
        whenOpen<CustomMessageBox>(
            [&](CustomMessageBox *box) {
                const QPointer<CustomMessageBox> asked = box;
                happen();
                QVERIFY(asked);
                asked->accept();
            },
            &context);
    } else if (job == "dialog" || job == "apply") {
        whenOpen<VexaFeatureDiff>(
            [&](VexaFeatureDiff *dialog) {
                if (job != "apply") {
                    happen();
                }
                if (job == "apply" || event == "grab") {
                    dialog->accept();
                }
                if (job == "apply") {
                    slowDown();
                }
            },
            &context);
    } else {
        slowDown();
    }
    const bool silent = !job.endsWith(" dialog");
    if (job == "export" || job == "save dialog") {
        tree->SaveCamFeatures(silent, silent ? path : QString());
    } else {
        tree->LoadCamFeatures(silent, silent ? text : QString());
    }
    QTRY_VERIFY_WITH_TIMEOUT(happened, 30000);
    QTRY_VERIFY_WITH_TIMEOUT(!tree || !tree->isFeatureFileBusy(), 30000);
    QTRY_COMPARE_WITH_TIMEOUT(tree.isNull(), event == "delete", 30000);
    QCoreApplication::processEvents();
    const auto told = ends[0] + ends[1];
    QCOMPARE(ends[1].count(), job == "export" ? 1 : 0);
    QCOMPARE(told.size(), silent ? 1 : 0);
    QVERIFY(std::none_of(told.cbegin(), told.cend(),
                         [](const auto &arguments) { return arguments.first().toBool(); }));
    // A device that came back while the user chose is the one that was meant.
    QCOMPARE(QFile::exists(path), job == "save dialog" && event == "restart");
    QCOMPARE(road.writes() > 0, job == "apply");
    QVERIFY(!tree || !silent
            || tree->featureFileFailure().contains(event == "grab" ? "grab" : "stop"));
}

void tst_FeatureRoads::endsWhenTheDeviceGoes()
{
    QObject context;
    const std::unique_ptr<RoadFixture> broken = std::move(m_pRoad);
    RoadFixture &road = *broken;
    road.change();
    const auto *button = road.tree().findChild<VexaFeatureToolBar *>()->findChild<QButtonGroup *>();
    const auto *import = button->button(VexaFeatureToolBar::BUTTON_IMPORT);
    const int id = int(road.camera.id);
    road.tree().UpdateToolBarBtn(1, id, false);
    QVERIFY(import->isEnabled());
    QSignalSpy ended(road.camera.tree, &VexaFeatureTree::SigEndImportFeature);
    whenOpen<VexaFeatureDiff>(
        [&](VexaFeatureDiff *dialog) {
            road.control().vanish();
            road.tree().UpdateToolBarBtn(0, id, false); // as a host does that hears of the loss
            dialog->accept();
        },
        &context);
    road.tree().LoadCamFeatures(true, road.text);
    QVERIFY(!import->isEnabled());
    QVERIFY(ended.wait(30000));
    QVERIFY(!ended.first().first().toBool());
    QCOMPARE(road.tree().featureFileResult(), quint32(FEATURE_FILE_NO_DEVICE));
    QVERIFY(!import->isEnabled()); // a job that ends does not bring the device back
    road.tree().UpdateToolBarBtn(1, id, false);
    QVERIFY(import->isEnabled());
}

void tst_FeatureRoads::goesThroughTheFileDialogs()
{
    QObject context;
    RoadFixture &road = *m_pRoad;
    road.control().poke(0x1000, QByteArray::fromHex("00000280"));
    const QString path = road.folder.filePath("chosen.vxf");
    chooseFile(&context, path);
    bool hinted = false;
    whenOpen<CustomSaveDoneHintDlg>(
        [&](CustomSaveDoneHintDlg *hint) {
            hinted = true;
            hint->accept();
        },
        &context);
    road.tree().SaveCamFeatures(false, QString());
    QTRY_VERIFY_WITH_TIMEOUT(hinted && !road.tree().isFeatureFileBusy(), 30000);
    QVERIFY(QFile::exists(path));
    road.change();
    whenOpen<VexaFeatureDiff>([](VexaFeatureDiff *dialog) { dialog->accept(); }, &context);
    road.tree().LoadCamFeatures(false, QString());
    QTRY_COMPARE_WITH_TIMEOUT(road.width(), WIDTH, 30000);
    QTRY_VERIFY_WITH_TIMEOUT(!road.tree().isFeatureFileBusy(), 30000);
}

void tst_FeatureRoads::listsDifferences()
{
    FeatureDifferences differences;
    for (int index = 0; index < 300; ++index) {
        const QString category = index == 0 ? QString() : QString("Category%1").arg(index % 12);
        differences[category].append({QString("LUTValue[LUTIndex:%1]").arg(index), "0x11", "/"});
    }
    VexaFeatureDiff dialog;
    dialog.setDiffs({{"old", {{"a", "b", "c"}}}});
    dialog.setDiffs(differences);
    auto *table = dialog.findChild<QTableView *>();
    QCOMPARE(table->model()->rowCount(), 300);
    QCOMPARE(table->rowSpan(0, 0), 1); // the one without a category
    QCOMPARE(table->model()->index(0, 0).data().toString(), QString());
    QCOMPARE(table->rowSpan(1, 0), 24);
    QCOMPARE(table->model()->index(1, 0).data().toString(), QString("Category0"));
    QCOMPARE(table->model()->index(1, 2).data().toString(), QString("0x11"));
    QCOMPARE(table->model()->index(1, 3).data().toString(), QString("/"));
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    QTest::keyClick(&dialog, Qt::Key_Escape);
    QCOMPARE(dialog.result(), int(QDialog::Rejected));
}

QTEST_MAIN(tst_FeatureRoads)
#include "tst_featureroads.moc"
