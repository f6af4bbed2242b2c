#include "fileaccess/QVexaFileAccessThread.h"
#include "host/translations/Translations.h"
#include "tests/fileaccess/FileAccessDesk.h"
#include "tests/support/DataTable.h"

#include <QDir>
#include <QRandomGenerator>
#include <QSignalSpy>

#include <algorithm>

using Worker = QVexaFileAccessThread;

namespace {

const char *const OLD = "what was there before";

QByteArray selectorDescription(const QStringList &displayNames)
{
    QByteArray entries;
    for (int i = 0; i < displayNames.size(); ++i) {
        entries += QStringLiteral("<EnumEntry Name=\"E%1\"><DisplayName>%2</DisplayName>"
                                  "<Value>%1</Value></EnumEntry>")
                       .arg(i)
                       .arg(displayNames[i])
                       .toUtf8();
    }
    return descriptionOf({"FileSelector"},
                         "<Enumeration Name=\"FileSelector\">" + entries
                             + "<Value>0</Value></Enumeration>");
}

} // namespace

/// The file access dialog as a user meets it, over simulated devices.
class tst_FileAccessDialog : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanup();
    void cleanupTestCase();
    void offersFiles_data();
    void offersFiles();
    void dealsWithKinds();
    void exportsAndImports();
    void restartsTheDevice();
    void tellsFailures_data();
    void tellsFailures();
    void showsProgress();
    void theCameraGoes_data();
    void theCameraGoes();
    void workerWithoutCamera();
    void noDialogWithoutCamera();

private:
    /// Opens the camera unless an earlier test left it open.
    Desk &openDesk();
    std::unique_ptr<ModuleFixture> m_pFixture;
    std::unique_ptr<Desk> m_pDesk;
};

void tst_FileAccessDialog::initTestCase()
{
    installLanguage(*qApp, QStringLiteral("ENG"));
    m_pFixture = std::make_unique<ModuleFixture>();
}

void tst_FileAccessDialog::cleanup()
{
    if (m_pDesk) {
        m_pDesk->control().setFileFault({});
    }
}

void tst_FileAccessDialog::cleanupTestCase()
{
    m_pDesk.reset();
    m_pFixture.reset();
}

Desk &tst_FileAccessDialog::openDesk()
{
    if (!m_pDesk) {
        m_pDesk = std::make_unique<Desk>(*m_pFixture);
    }
    if (!m_pDesk->ok) {
        qFatal("no camera");
    }
    const QStringList left = QDir(m_pDesk->folder.path()).entryList(QDir::Files);
    for (const QString &name : left) {
        QFile::remove(m_pDesk->path(name));
    }
    return *m_pDesk;
}

void tst_FileAccessDialog::offersFiles_data()
{
    const DataTable<QStringList, QStringList, int> row("entries", "texts", "current");
    row("number kept, description listed", {"SECBIN", "FeaturesXml", "User Set 1"},
        {"SECBIN", "User Set"}, 1);
    row("base set passed over", {"User Set 2", "Base User Set 1"},
        {"User Set 2", "Base User Set 1"}, 1);
    row("something else selected", {"A", "base user set 1"}, {"A", "base user set 1"}, -1);
    row("nothing but the description", {"FeaturesXml"}, {}, -1);
}

void tst_FileAccessDialog::offersFiles()
{
    QFETCH(QStringList, entries);
    QFETCH(QStringList, texts);
    QFETCH(int, current);
    m_pDesk.reset();
    ModuleFixture &fixture = *m_pFixture;
    const ModuleFixture::Camera camera = fixture.openDescription(selectorDescription(entries));
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    User user;
    QStringList seen;
    user.with<QVexaFileAccessDialog>([&](QVexaFileAccessDialog *window) {
        auto *combo = window->findChild<CustomComboBox *>();
        for (int i = 0; i < combo->count(); ++i) {
            seen += combo->itemText(i);
        }
        QCOMPARE(combo->currentIndex(), current);
        QCOMPARE(window->cButton(0)->isEnabled(), !texts.isEmpty());
        QCOMPARE(window->cButton(1)->isEnabled(), !texts.isEmpty());
    });
    user.leave();
    QVERIFY(user.visit(camera));
    QCOMPARE(seen, texts);
    fixture.close(camera);
}

void tst_FileAccessDialog::dealsWithKinds()
{
    // What it is | filter of its import | filter of its export; "-" where the button is disabled.
    const QStringList kinds{"User Set | FileAccess Files(*.vxa) | FileAccess Files(*.vxa)",
                            "Multi ROI | FileAccess Files(*.vxa) | FileAccess Files(*.vxa)",
                            "ZRH User Set 1 | All(*.*) | FileAccess Files(*.vxa)",
                            "SECBIN | Bin Files(*.bin) | -",
                            "License Notice | - | Text Files(*.txt)",
                            "A/B | All(*.*) | All Files(*.*)"};
    m_pDesk.reset();
    const ModuleFixture::Camera camera = m_pFixture->openDescription(selectorDescription(
        {"User Set 1", "Multi ROI", "ZRH User Set 1", "SECBIN", "License Notice", "A/B"}));
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    User user;
    QStringList seen;
    for (const QString &kind : kinds) {
        const QStringList cells = kind.split(" | ");
        user.choose(cells.first());
        user.then([&seen, cells] {
            seen += cells.first();
            return true;
        });
        for (int button = 0; button < 2; ++button) {
            user.click(button);
            if (cells.at(1 + button) == "-") {
                user.then([&seen] {
                    seen.last() += " | -";
                    return !shown<QFileDialog>();
                });
                continue;
            }
            user.with<QFileDialog>([&seen, cells, button](QFileDialog *window) {
                seen.last() += " | " + window->nameFilters().join('|');
                const QString name =
                    window->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->text();
                const QString text = QString(cells.first()).replace('/', '-');
                QVERIFY2(button == 0 || (name.endsWith(text) && name.count('_') >= 2),
                         qPrintable(name));
                window->reject();
            });
            user.then([] { return !shown<QFileDialog>(); });
        }
    }
    user.leave();
    QVERIFY(user.visit(camera));
    QCOMPARE(seen, kinds);
    m_pFixture->close(camera);
}

/// Megabytes by VEXA_FILE_MEGABYTES.
void tst_FileAccessDialog::exportsAndImports()
{
    Desk &desk = openDesk();
    const int kilobytes = qMax(200, 1000 * qEnvironmentVariableIntValue("VEXA_FILE_MEGABYTES"));
    QByteArray bytes(1000 * kilobytes, '\0');
    QRandomGenerator random(7);
    std::generate(bytes.begin(), bytes.end(), [&random] { return char(random.generate()); });
    User user;
    Listener listener;
    QVERIFY(desk.keep("new.vxa", bytes));
    const QByteArray before = desk.control().file("UserSet1");
    FileManager manager;
    QString argument;
    user.transfer(1, "User Set", desk.path("out")); // gets its suffix
    user.with<CustomSaveDoneHintDlg>([&](CustomSaveDoneHintDlg *hint) {
        argument = hint->toolTip();
        for (QLabel *label : hint->findChildren<QLabel *>()) {
            emit label->linkActivated(QString());
        }
    });
    user.then([] { return !shown<CustomSaveDoneHintDlg>(); });
    user.transfer(0, "User Set", desk.path("new.vxa"));
    user.press<CustomMessageBox>(Qt::Key_Escape); // no restart
    user.then([&] { return dialog() && dialog()->cButton(0)->isEnabled(); });
    user.transfer(1, "User Set", desk.path("back.vxa"));
    user.with<CustomSaveDoneHintDlg>([](CustomSaveDoneHintDlg *) {});
    user.then([] { return !shown<CustomSaveDoneHintDlg>(); }); // by itself
    user.leave();
    QVERIFY(user.visit(desk.camera));
    QCOMPARE(argument, "/select," + desk.path("out.vxa").replace('/', '\\'));
    QCOMPARE(manager.m_strOpened, desk.folder.path());
    QVERIFY(desk.kept("out.vxa") == before && desk.kept("back.vxa") == bytes);
    QVERIFY(desk.control().file("UserSet1") == bytes);
    QVERIFY(listener.m_ids.isEmpty());
    QVERIFY(user.m_nBusyTicks > 0);
    qInfo("longest pass of the window during transfers: %lld ms", user.m_nLongestGap);
}

void tst_FileAccessDialog::restartsTheDevice()
{
    Desk &desk = openDesk();
    User user;
    Listener listener;
    QVERIFY(desk.keep("any.txt", "bytes"));
    user.transfer(0, "User File", desk.path("any.txt")); // no ending is asked for
    user.with<CustomMessageBox>(
        [](CustomMessageBox *box) { QTest::keyClick(box, Qt::Key_Return); });
    user.then([] { return !dialog(); }); // the tree tells of the restart
    QVERIFY(user.visit(desk.camera));
    QCOMPARE(listener.m_ids, QList<long int>({desk.camera.id}));
    QCOMPARE(desk.control().file("UserFile"), QByteArray("bytes"));
    m_pDesk.reset();
}

void tst_FileAccessDialog::tellsFailures_data()
{
    const DataTable<int, QString, int, QString> row("button", "file", "fault", "why");
    row("wrong ending", 0, "x.bin", Fault::None, "");
    row("ending in capitals", 0, "x.VXA", Fault::None, "");
    row("empty file", 0, "<b>empty.vxa", Fault::None, "<b>empty.vxa: the file is empty");
    row("larger than the device takes", 0, "large.vxa", Fault::None, "33554432 bytes");
    row("block refused, import", 0, "x.vxa", Fault::RefusedBlock, "status");
    row("block refused, export", 1, "x.vxa", Fault::RefusedBlock, "status");
    row("too many bytes", 1, "x.vxa", Fault::TooManyBytes, "MultiROI");
    row("path that cannot be written", 1, "none/x.vxa", Fault::None, "none/x.vxa: ");
    row("full disk", 1, "full.vxa", Fault::None, "full.vxa: ");
}

void tst_FileAccessDialog::tellsFailures()
{
    QFETCH(int, button);
    QFETCH(QString, file);
    QFETCH(int, fault);
    QFETCH(QString, why);
    Desk &desk = openDesk();
    User user;
    for (const char *name : {"x.vxa", "x.bin", "x.VXA"}) {
        QVERIFY(desk.keep(name, OLD));
    }
    QVERIFY(desk.keep("<b>empty.vxa", "") && desk.keep("large.vxa", ""));
    QVERIFY(QFile(desk.path("large.vxa")).resize(32 * 1024 * 1024 + 1));
    desk.control().setFile("MultiROI", QByteArray(300 * BLOCK, 'r'));
    std::unique_ptr<FullDisk> full;
    if (file == "full.vxa") {
        full = std::make_unique<FullDisk>(100 * BLOCK);
    }
    Fault planted;
    planted.kind = Fault::Kind(fault);
    desk.control().setFileFault(planted);
    const QByteArray before = desk.control().file("MultiROI");
    QString box;
    user.choose("Multi ROI");
    user.click(button);
    user.with<QFileDialog>([&](QFileDialog *window) {
        window->setOption(QFileDialog::DontConfirmOverwrite);
        window->setNameFilter("*");
        window->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(desk.path(file));
        QTest::keyClick(window, Qt::Key_Return);
    });
    user.readBox(&box);
    // Once more, without the fault: nothing is left behind by the failure.
    user.then([&] {
        desk.control().setFileFault({});
        full.reset();
        return true;
    });
    user.transfer(1, "Multi ROI", desk.path("after.vxa"));
    user.press<CustomSaveDoneHintDlg>(Qt::Key_Escape);
    user.leave();
    QVERIFY(user.visit(desk.camera));
    const QString says = why.isEmpty() ? "does not fit"
        : button == 0                  ? "could not be imported.\nError: 0x"
                                       : "could not be exported.\nError: 0x";
    QVERIFY2(box.contains(says) && box.contains(why), qPrintable(box));
    QVERIFY(!QFile::exists(desk.path("full.vxa")));
    QCOMPARE(desk.kept("x.vxa"), QByteArray(OLD));
    QVERIFY(button == 0 || desk.kept("after.vxa") == before);
}

void tst_FileAccessDialog::showsProgress()
{
    Desk &desk = openDesk();
    User user;
    desk.slowDown();
    QStringList texts;
    bool refused = false;
    user.transfer(1, "Multi ROI", desk.path("out.vxa"));
    user.then([&] {
        auto *progress = shown<QVexaProgressDialog>();
        if (!progress) {
            return false;
        }
        for (const QLabel *label : progress->findChildren<QLabel *>()) {
            if (label->text().contains(" / ") && !texts.contains(label->text())) {
                texts += label->text();
            }
        }
        return texts.size() > 3;
    });
    user.with<QVexaProgressDialog>([&](QVexaProgressDialog *progress) {
        QTest::keyClick(progress, Qt::Key_Escape);
        dialog()->onButtonCliked(1);
        refused = progress->isVisible() && !shown<QFileDialog>()
            && !dialog()->cButton(0)->isEnabled() && !dialog()->cButton(1)->isEnabled();
        long int another = desk.camera.id + 1;
        VexaListenTools::instance()->notifyListeners(VEXA_EVENT_BEFORE_DELETE_FEATURE_TREE,
                                                     &another);
        refused = refused && progress->isVisible();
    });
    user.press<CustomSaveDoneHintDlg>(Qt::Key_Escape);
    user.leave();
    QVERIFY(user.visit(desk.camera));
    QVERIFY(refused);
    QVERIFY(texts.first().contains("400.00 KiB"));
    QCOMPARE(desk.kept("out.vxa").size(), 400 * BLOCK);
}

void tst_FileAccessDialog::theCameraGoes_data()
{
    const DataTable<QString, int> row("during", "boxes");
    row("idle", "idle", 0);
    row("file dialog", "file dialog", 0);
    row("transfer", "transfer", 1);
    row("device blocked", "blocked", 1);
    row("failure on show", "failure", 1);
}

void tst_FileAccessDialog::theCameraGoes()
{
    QFETCH(QString, during);
    QFETCH(int, boxes);
    Desk &desk = openDesk();
    User user;
    QVERIFY(desk.keep("out.vxa", OLD));
    desk.slowDown();
    QPointer<Worker> worker;
    user.with<QVexaFileAccessDialog>(
        [&](QVexaFileAccessDialog *window) { worker = window->findChild<Worker *>(); });
    if (during == "file dialog") {
        user.click(1);
        user.with<QFileDialog>([](QFileDialog *) {});
    } else if (during != "idle") {
        user.transfer(1, "Multi ROI", desk.path("new.vxa"));
        user.with<QVexaProgressDialog>([](QVexaProgressDialog *) {});
    }
    if (during == "failure") {
        user.then([&] {
            desk.control().vanish();
            return true;
        });
        user.with<CustomMessageBox>([](CustomMessageBox *) {});
    }
    qint64 waited = -1;
    user.with<QVexaFileAccessDialog>([&](QVexaFileAccessDialog *) {
        if (during == "blocked") {
            desk.control().blockNextAccess();
            QTest::qWait(100);
        }
        QElapsedTimer clock;
        clock.start();
        m_pFixture->mainWidget().removeFeatureTree(desk.camera.id);
        waited = clock.elapsed();
    });
    user.then([] { return !dialog() && !shown<QVexaProgressDialog>(); });
    QStringList told;
    for (int box = 0; box < boxes; ++box) {
        user.readBox(&*told.insert(told.end(), QString()));
    }
    QVERIFY(user.visit(desk.camera));
    QVERIFY(!shown<CustomMessageBox>());
    QVERIFY(boxes == 0 || told.first().contains("could not be exported.\nError: 0x"));
    QVERIFY(during != "failure" || told.first().contains("0x90006000")); // the device has gone
    QVERIFY2(waited >= 0 && waited < 5000, qPrintable(QString::number(waited)));
    desk.control().unblock();
    m_pFixture->host().closeCamera(desk.camera.id);
    QTRY_VERIFY_WITH_TIMEOUT(!worker, 20000);
    QVERIFY(!QFile::exists(desk.path("new.vxa")));
    m_pDesk.reset();
}

void tst_FileAccessDialog::workerWithoutCamera()
{
    Desk &desk = openDesk();
    User user;
    desk.slowDown();
    Worker worker(desk.camera.id);
    QSignalSpy ended(&worker, &Worker::SigEndFileAccessThread);
    worker.setJob(Worker::DIRECTION_EXPORT, desk.path("first"), "MultiROI");
    worker.start();
    worker.setJob(Worker::DIRECTION_IMPORT, desk.path("second"), "UserSet1"); // has no effect
    QVERIFY(worker.wait(30000)
            && desk.kept("first").size() == 400 * BLOCK); // it is the spy's thread
    QCOMPARE(ended.takeFirst(), QVariantList({1, true, QString()}));

    worker.setJob(7, desk.path("first"), "MultiROI");
    worker.start();
    QVERIFY(worker.wait());
    m_pFixture->close(desk.camera);
    worker.setJob(Worker::DIRECTION_IMPORT, desk.path("first"), "MultiROI");
    worker.start();
    QVERIFY(worker.wait(30000));
    QCOMPARE(ended, QList<QVariantList>({{0, false, "\r\nError: 0xFFFFFFFC"}}));
    m_pDesk.reset();
}

void tst_FileAccessDialog::noDialogWithoutCamera()
{
    m_pDesk.reset();
    m_pFixture->mainWidget().setCurrentCameraID(-1);
    m_pFixture->mainWidget().OnActionFileAccess(); // would not come back
    QVERIFY(!dialog());
}

QTEST_MAIN(tst_FileAccessDialog)
#include "tst_fileaccess.moc"
