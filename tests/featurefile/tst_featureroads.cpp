#include "ShellServicesModule/QFunction.h"
#include "UtilityKit/VexaInterface.h"
#include "featurefile/FeatureFileFormat.h"
#include "featurefile/VexaFeatureDiff.h"
#include "tests/featurefile/FeatureFileLines.h"
#include "tests/support/ModuleFixture.h"

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTemporaryDir>
#include <QtTest>

namespace {

/// A camera whose first update has ended, with the record of an export at hand.
struct Road
{
    explicit Road(const QString &id = "area-camera")
    {
        camera = fixture.open(SimulatedDevices::builtIn(id));
        camera.device.control->setQuiet(true);
        ok = ModuleFixture::waitForFirstUpdate(camera);
    }
    VexaFeatureTree &tree() { return *camera.tree; }
    QString exported()
    {
        QSignalSpy ended(camera.tree, &VexaFeatureTree::SigEndExportFeature);
        tree().SaveCamFeatures(true, folder.filePath("bag"));
        if (!(ended.wait(30000) && ended.first().first().toBool())) {
            return QString();
        }
        QFile bag(folder.filePath("bag"));
        bag.open(QIODevice::ReadOnly);
        record = QString::fromUtf8(bag.readAll());
        return record.section(FeatureFileFormat::BAG_FILE_MARKER, 1, 1);
    }
    qint64 width()
    {
        _NODE_INT_VALUE_ value = {};
        taskOf(camera)->GetIntegerValue("Width", &value, nullptr, false, false);
        return value.value;
    }
    int writes()
    {
        int count = 0;
        for (const SimulatorAccess &access : camera.device.control->accessLog()) {
            count += access.kind == SimulatorAccess::Write ? 1 : 0;
        }
        return count;
    }

    ModuleFixture fixture;
    QTemporaryDir folder;
    ModuleFixture::Camera camera;
    QString record;
    bool ok = false;
};

/// Runs `act` on the dialog of that class as soon as it is up.
template<typename Dialog, typename Act>
void whenUp(QObject *context, Act act)
{
    auto *timer = new QTimer(context);
    QObject::connect(timer, &QTimer::timeout, context, [timer, act] {
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            auto *dialog = qobject_cast<Dialog *>(widget);
            if (dialog && dialog->isVisible()) {
                timer->stop();
                act(dialog);
                return;
            }
        }
    });
    timer->start(5);
}

} // namespace

class tst_FeatureRoads : public QObject
{
    Q_OBJECT
private slots:
    void bringsABagRecordBack_data();
    void bringsABagRecordBack();
    void refusesFiles_data();
    void refusesFiles();
    void asksAboutAnotherVersion_data();
    void asksAboutAnotherVersion();
    void refusesToImportNow_data();
    void refusesToImportNow();
    void oneImportAtATime();
    void survivesWhatComesInTheMiddle_data();
    void survivesWhatComesInTheMiddle();
    void endsWhenTheDeviceGoes();
    void goesThroughTheFileDialogs();
    void listsDifferences();
};

void tst_FeatureRoads::bringsABagRecordBack_data()
{
    QTest::addColumn<bool>("accept");
    QTest::newRow("accepted with Enter") << true;
    QTest::newRow("rejected with Escape") << false;
}

void tst_FeatureRoads::bringsABagRecordBack()
{
    QFETCH(bool, accept);
    Road road;
    QVERIFY(road.ok);
    const QString text = road.exported();
    QCOMPARE(FeatureFileLines::of(text.toUtf8()).error, QString());
    QCOMPARE(road.record.section(FeatureFileFormat::BAG_FILE_MARKER, 0, 0),
             FeatureFileFormat::BAG_SERIAL_MARKER + road.camera.device.source->serial);
    const qint64 before = road.width();
    QVERIFY(taskOf(road.camera)->SetIntegerValue("Width", before - 64, nullptr));

    QStringList log;
    QObject context; // what waits for a dialog ends with the test
    connect(QFunction::Instance(), &QFunction::messageLogged, &context,
            [&log](int, const QString &, const QString &line) { log += line; });
    QSignalSpy ended(road.camera.tree, &VexaFeatureTree::SigEndImportFeature);
    whenUp<VexaFeatureDiff>(&context, [accept](VexaFeatureDiff *dialog) {
        QTest::keyClick(dialog, accept ? Qt::Key_Return : Qt::Key_Escape);
    });
    road.tree().LoadCamFeatures(true, text);
    QVERIFY(ended.wait(30000));
    QVERIFY(ended.first().first().toBool());
    QCOMPARE(road.width(), accept ? before : before - 64);
    QStringList names;
    for (const auto &list : road.tree().featureDifferences()) {
        for (const FeatureDifference &difference : list) {
            names += difference.name;
        }
    }
    QVERIFY(names.contains("Width"));
    QCOMPARE(road.tree().featureFileReport().changed.contains("Width"), accept);
    QCOMPARE(log.join('\n').contains("importcounts"), accept);
    QVERIFY(!road.tree().isFeatureFileBusy());
}

void tst_FeatureRoads::refusesFiles_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<quint32>("code");
    const auto row = [](const char *name, const char *from, const char *to, quint32 code) {
        QTest::newRow(name) << QString(from) << QString(to) << code;
    };
    row("other model", "<DeviceModelName>", "<DeviceModelName>X", FEATURE_FILE_MISMATCH);
    row("other firmware", "FirmwareVersion>", "FirmwareVersion>X", FEATURE_FILE_MISMATCH);
    row("no firmware", "FirmwareVersion>", "Firmware>", FEATURE_FILE_MISMATCH);
    row("other board", "<Features>", "<BoardDeviceType>9</BoardDeviceType><Features>",
        FEATURE_FILE_MISMATCH);
    row("no version", "File version=\"", "File v=\"", FEATURE_FILE_VERSION);
    row("no features", "Features>", "Things>", FEATURE_FILE_NO_FEATURES);
    row("truncated", "</Features>", "", FEATURE_FILE_UNREADABLE);
    row("document type", "<FeaturesFile", "<!DOCTYPE a><FeaturesFile", FEATURE_FILE_UNREADABLE);
    row("no length", " len=\"", " l=\"", FEATURE_FILE_STOPPED);
    row("a huge length", " len=\"", " len=\"99999999", FEATURE_FILE_STOPPED);
    row("no address", " address=\"", " a=\"", FEATURE_FILE_STOPPED);
    row("address that is none", " address=\"", " address=\"zz", FEATURE_FILE_STOPPED);
}

void tst_FeatureRoads::refusesFiles()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    QFETCH(quint32, code);
    Road road;
    QVERIFY(road.ok);
    QString text = road.exported();
    QVERIFY2(text.contains(from), qPrintable(from));
    text.replace(from, to);
    road.camera.device.control->setLogging(true);
    QSignalSpy ended(road.camera.tree, &VexaFeatureTree::SigEndImportFeature);
    road.tree().LoadCamFeatures(true, text);
    QVERIFY(ended.wait(30000));
    QVERIFY(!ended.first().first().toBool());
    QCOMPARE(road.tree().featureFileResult(), code);
    QCOMPARE(road.writes(), 0);
}

void tst_FeatureRoads::asksAboutAnotherVersion_data()
{
    QTest::addColumn<bool>("goOn");
    QTest::newRow("yes") << true;
    QTest::newRow("no") << false;
}

void tst_FeatureRoads::asksAboutAnotherVersion()
{
    QFETCH(bool, goOn);
    QObject context;
    Road road;
    QVERIFY(road.ok);
    QString text = road.exported();
    text.replace("<FeaturesFile version=\"", "<FeaturesFile version=\"0.");
    QSignalSpy ended(road.camera.tree, &VexaFeatureTree::SigEndImportFeature);
    bool asked = false;
    whenUp<CustomMainWindow>(&context, [goOn, &asked](CustomMainWindow *box) {
        asked = true;
        goOn ? box->accept() : box->reject();
    });
    road.tree().LoadCamFeatures(true, text);
    QTRY_VERIFY_WITH_TIMEOUT(asked && !road.tree().isFeatureFileBusy(), 30000);
    QCOMPARE(ended.count(), goOn ? 1 : 0); // a no ends the silent road without a signal too
}

void tst_FeatureRoads::refusesToImportNow_data()
{
    QTest::addColumn<bool>("grabbing");
    QTest::newRow("grabbing") << true;
    QTest::newRow("read only") << false;
}

void tst_FeatureRoads::refusesToImportNow()
{
    QFETCH(bool, grabbing);
    ModuleFixture fixture;
    const auto camera = fixture.open(SimulatedDevices::builtIn("area-camera"),
                                     grabbing ? DEVICE_ACCESS_CONTROL : DEVICE_ACCESS_READ_ONLY);
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    QVERIFY(!grabbing || fixture.host().startGrabbing(camera.id));
    QSignalSpy ended(camera.tree, &VexaFeatureTree::SigEndImportFeature);
    camera.tree->LoadCamFeatures(true, "<FeaturesFile/>");
    QCOMPARE(ended.count(), 1);
    QVERIFY(!ended.first().first().toBool());
}

void tst_FeatureRoads::oneImportAtATime()
{
    QObject context;
    Road road;
    QVERIFY(road.ok);
    const QString text = road.exported();
    QVERIFY(taskOf(road.camera)->SetIntegerValue("Width", road.width() - 64, nullptr));
    QSignalSpy ended(road.camera.tree, &VexaFeatureTree::SigEndImportFeature);
    int endedInside = -1;
    QSignalSpy exported(road.camera.tree, &VexaFeatureTree::SigEndExportFeature);
    whenUp<VexaFeatureDiff>(&context, [&](VexaFeatureDiff *dialog) {
        road.tree().LoadCamFeatures(true, text);
        endedInside = ended.count();
        // An export may run below the dialog; the import that goes on takes its own text again.
        road.tree().SaveCamFeatures(true, road.folder.filePath("other"));
        dialog->accept();
    });
    road.tree().LoadCamFeatures(true, text);
    QTRY_COMPARE_WITH_TIMEOUT(ended.count(), 2, 30000);
    QCOMPARE(endedInside, 1);
    QCOMPARE(ended.at(0).first().toBool(), false);
    QCOMPARE(ended.at(1).first().toBool(), true);
    QTRY_COMPARE(exported.count(), 1);
}

void tst_FeatureRoads::survivesWhatComesInTheMiddle_data()
{
    QTest::addColumn<QString>("job");
    QTest::addColumn<QString>("event");
    QTest::newRow("dialog, grabbing since") << "dialog"
                                            << "grab";
    for (const char *job : {"export", "check", "dialog", "dialog over an export"}) {
        for (const char *event : {"close", "restart", "delete"}) {
            QTest::addRow("%s, %s", job, event) << QString(job) << QString(event);
        }
    }
}

void tst_FeatureRoads::survivesWhatComesInTheMiddle()
{
    QFETCH(QString, job);
    QFETCH(QString, event);
    QObject context;
    Road road;
    QVERIFY(road.ok);
    const QString text = road.exported();
    QVERIFY(taskOf(road.camera)->SetIntegerValue("Width", road.width() - 64, nullptr));
    QSignalSpy imported(road.camera.tree, &VexaFeatureTree::SigEndImportFeature);
    QSignalSpy exported(road.camera.tree, &VexaFeatureTree::SigEndExportFeature);
    bool happened = false;
    const QPointer<VexaFeatureTree> tree = road.camera.tree;
    const auto happen = [&] {
        if (event == "close") {
            tree->OnCameraClose();
        } else if (event == "restart") {
            tree->OnResartCameraOpen(DEVICE_ACCESS_CONTROL);
        } else if (event == "grab") {
            road.fixture.host().startGrabbing(road.camera.id);
        } else {
            road.fixture.close(road.camera);
        }
        happened = true;
    };
    if (job.startsWith("dialog")) {
        whenUp<VexaFeatureDiff>(&context, [&](VexaFeatureDiff *dialog) {
            if (job != "dialog") {
                road.camera.device.control->setLatency(2000);
                tree->SaveCamFeatures(true, road.folder.filePath("middle"));
            }
            happen();
            if (event == "grab") {
                dialog->accept();
            }
        });
    } else {
        road.camera.device.control->setLatency(2000);
        QTimer::singleShot(100, &context, happen);
    }
    if (job == "export") {
        tree->SaveCamFeatures(true, road.folder.filePath("middle"));
    } else {
        tree->LoadCamFeatures(true, text);
    }
    QTRY_VERIFY_WITH_TIMEOUT(happened, 30000);
    QTRY_VERIFY_WITH_TIMEOUT(!tree || !tree->isFeatureFileBusy(), 30000);
    QCoreApplication::processEvents();
    QCOMPARE(exported.count(), job.endsWith("export") ? 1 : 0);
    QCOMPARE(imported.count(), job == "export" ? 0 : 1);
    QCOMPARE((exported + imported).first().first().toBool(), false);
    QCOMPARE((exported + imported).last().first().toBool(), false);
    QVERIFY(!QFile::exists(road.folder.filePath("middle")));
    QCOMPARE(event == "delete", tree.isNull());
}

void tst_FeatureRoads::endsWhenTheDeviceGoes()
{
    QObject context;
    Road road;
    QVERIFY(road.ok);
    const QString text = road.exported();
    const qint64 width = road.width();
    QVERIFY(taskOf(road.camera)->SetIntegerValue("Width", width - 64, nullptr));
    QSignalSpy ended(road.camera.tree, &VexaFeatureTree::SigEndImportFeature);
    whenUp<VexaFeatureDiff>(&context, [&](VexaFeatureDiff *dialog) {
        road.camera.device.control->vanish();
        dialog->accept();
    });
    road.tree().LoadCamFeatures(true, text);
    QVERIFY(ended.wait(30000));
    QVERIFY(!ended.first().first().toBool());
    QCOMPARE(road.tree().featureFileResult(), quint32(FEATURE_FILE_NO_DEVICE));
    QSignalSpy exported(road.camera.tree, &VexaFeatureTree::SigEndExportFeature);
    road.tree().SaveCamFeatures(true, road.folder.filePath("gone"));
    QVERIFY(exported.count() || exported.wait(30000));
    QVERIFY(!exported.first().first().toBool() && !QFile::exists(road.folder.filePath("gone")));
}

void tst_FeatureRoads::goesThroughTheFileDialogs()
{
    QObject context;
    Road road;
    QVERIFY(road.ok);
    const QString path = road.folder.filePath("chosen.vxf");
    // The dialog reads the folder in its own time, and accepts nothing before.
    QTimer chooser;
    connect(&chooser, &QTimer::timeout, &context, [path] {
        auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        if (dialog) {
            dialog->findChild<QLineEdit *>("fileNameEdit")->setText(path);
            QMetaObject::invokeMethod(dialog, "accept", Qt::QueuedConnection);
        }
    });
    chooser.start(50);
    road.tree().SaveCamFeatures(false, QString());
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(path), 30000);
    QTRY_VERIFY_WITH_TIMEOUT(!road.tree().isFeatureFileBusy(), 30000);
    // The hint goes by itself.
    QTRY_VERIFY_WITH_TIMEOUT(!QApplication::activeModalWidget(), 10000);
    const qint64 before = road.width();
    QVERIFY(taskOf(road.camera)->SetIntegerValue("Width", before - 64, nullptr));
    whenUp<VexaFeatureDiff>(&context, [](VexaFeatureDiff *dialog) { dialog->accept(); });
    road.tree().LoadCamFeatures(false, QString());
    QTRY_COMPARE_WITH_TIMEOUT(road.width(), before, 30000);
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
    if (qEnvironmentVariableIsSet("VEXA_TEST_PICTURE")) {
        dialog.grab().save(qEnvironmentVariable("VEXA_TEST_PICTURE"));
    }
    QTest::keyClick(&dialog, Qt::Key_Escape);
    QCOMPARE(dialog.result(), int(QDialog::Rejected));
}

QTEST_MAIN(tst_FeatureRoads)
#include "tst_featureroads.moc"
