#include "fileaccess/QVexaFileAccessThread.h"
#include "host/translations/Translations.h"
#include "tests/fileaccess/FileAccessDesk.h"

#include <QDir>
#include <QRandomGenerator>

#include <algorithm>

using Worker = QVexaFileAccessThread;

namespace {

const char *const OLD = "what was there before";

} // namespace

/// The file access dialog as a user meets it, over simulated devices.
class tst_FileAccessDialog : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanup();
    void cleanupTestCase();
    void exportsAndImports();
    void restartsTheDevice();
    void tellsFailures_data();
    void tellsFailures();
    void theCameraGoes_data();
    void theCameraGoes();
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

void tst_FileAccessDialog::exportsAndImports()
{
    Desk &desk = openDesk();
    QByteArray bytes(200 * BLOCK + 1, '\0');
    QRandomGenerator random(7);
    std::generate(bytes.begin(), bytes.end(), [&random] { return char(random.generate()); });
    User user;
    Listener listener;
    QVERIFY(desk.keep("new.vxa", bytes));
    const QByteArray before = desk.control().file("UserSet1");
    user.transfer(1, "User Set", desk.path("out")); // gets its suffix
    user.press<CustomSaveDoneHintDlg>(Qt::Key_Escape);
    user.transfer(0, "User Set", desk.path("new.vxa"));
    user.press<CustomMessageBox>(Qt::Key_Escape); // no restart
    user.then([&] { return dialog() && dialog()->cButton(0)->isEnabled(); });
    user.transfer(1, "User Set", desk.path("back.vxa"));
    user.with<CustomSaveDoneHintDlg>([](CustomSaveDoneHintDlg *) {});
    user.then([] { return !shown<CustomSaveDoneHintDlg>(); }); // by itself
    user.leave();
    QVERIFY(user.visit(desk.camera));
    QVERIFY(desk.kept("out.vxa") == before && desk.kept("back.vxa") == bytes);
    QVERIFY(desk.control().file("UserSet1") == bytes);
    QVERIFY(listener.m_ids.isEmpty());
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
    QTest::addColumn<int>("button");
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("fault");
    QTest::addColumn<QString>("why");
    const auto row = [](const char *name, int button, const char *file, Fault::Kind fault,
                        const char *why) {
        QTest::newRow(name) << button << file << int(fault) << why;
    };
    row("wrong ending", 0, "x.bin", Fault::None, "");
    row("empty file", 0, "<b>empty.vxa", Fault::None, "<b>empty.vxa: the file is empty");
    row("larger than the device takes", 0, "large.vxa", Fault::None, "33554432 bytes");
    row("block refused, export", 1, "x.vxa", Fault::RefusedBlock, "status");
    row("too many bytes", 1, "x.vxa", Fault::TooManyBytes, "MultiROI");
    row("path that cannot be written", 1, "none/x.vxa", Fault::None, "none/x.vxa: ");
}

void tst_FileAccessDialog::tellsFailures()
{
    QFETCH(int, button);
    QFETCH(QString, file);
    QFETCH(int, fault);
    QFETCH(QString, why);
    Desk &desk = openDesk();
    User user;
    QVERIFY(desk.keep("x.vxa", OLD) && desk.keep("x.bin", OLD));
    QVERIFY(desk.keep("<b>empty.vxa", "") && desk.keep("large.vxa", ""));
    QVERIFY(QFile(desk.path("large.vxa")).resize(32 * 1024 * 1024 + 1));
    desk.control().setFile("MultiROI", QByteArray(300 * BLOCK, 'r'));
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
    QCOMPARE(desk.kept("x.vxa"), QByteArray(OLD));
    QVERIFY(button == 0 || desk.kept("after.vxa") == before);
}

void tst_FileAccessDialog::theCameraGoes_data()
{
    QTest::addColumn<QString>("during");
    QTest::addColumn<int>("boxes");
    QTest::newRow("file dialog") << "file dialog" << 0;
    QTest::newRow("transfer") << "transfer" << 1;
    QTest::newRow("device blocked") << "blocked" << 1;
    QTest::newRow("failure on show") << "failure" << 1;
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
    } else {
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
    user.with<QVexaFileAccessDialog>([&](QVexaFileAccessDialog *) {
        if (during == "blocked") {
            desk.control().blockNextAccess();
            QTest::qWait(100);
        }
        m_pFixture->mainWidget().removeFeatureTree(desk.camera.id);
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
    desk.control().unblock();
    m_pFixture->host().closeCamera(desk.camera.id);
    QTRY_VERIFY_WITH_TIMEOUT(!worker, 20000);
    QVERIFY(!QFile::exists(desk.path("new.vxa")));
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
