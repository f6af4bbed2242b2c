#include "ControlKit/CustomComboBox.h"
#include "ControlKit/CustomMessageBox.h"
#include "ControlKit/CustomSaveDoneHintDlg.h"
#include "ShellServicesModule/QVexaProgressDialog.h"
#include "ShellServicesModule/VexaListenTools.h"
#include "fileaccess/QVexaFileAccessDialog.h"
#include "fileaccess/QVexaFileAccessThread.h"
#include "host/translations/Translations.h"
#include "shell/VexaFeatureToolBar.h"
#include "tests/support/ModuleFixture.h"

#include <QAbstractButton>
#include <QApplication>
#include <QButtonGroup>
#include <QDesktopServices>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QUrl>
#include <QtTest>

#include <deque>
#include <functional>

using Fault = SimulatedFileFault;
using Worker = QVexaFileAccessThread;

namespace {

constexpr int BLOCK = 1024; // of the simulated devices
const char *const OLD = "what was there before";

template<typename Window>
Window *shown()
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        auto *window = qobject_cast<Window *>(widget);
        if (window && window->isVisible()) {
            return window;
        }
    }
    return nullptr;
}

QVexaFileAccessDialog *dialog()
{
    return shown<QVexaFileAccessDialog>();
}

QString comboText()
{
    return dialog() ? dialog()->findChild<CustomComboBox *>()->currentText() : QString();
}

/// What a user does, one step after the other, each as soon as it can be done.
class User : public QObject
{
public:
    using Step = std::function<bool()>; ///< true once it is done

    void then(const Step &step) { m_steps.push_back(step); }
    /// Waits for the window and acts on it outside of this call, for it may run a loop of its own.
    template<typename Window, typename Act>
    void with(Act act)
    {
        then([this, act] {
            auto *window = shown<Window>();
            if (window) {
                QMetaObject::invokeMethod(
                    this,
                    [act, window = QPointer<Window>(window)] {
                        if (window) {
                            act(window.data());
                        }
                    },
                    Qt::QueuedConnection);
            }
            return window != nullptr;
        });
    }
    void choose(const QString &text)
    {
        with<QVexaFileAccessDialog>([text](QVexaFileAccessDialog *window) {
            auto *combo = window->findChild<CustomComboBox *>();
            combo->setCurrentIndex(combo->findText(text));
        });
        then([text] { return comboText() == text; });
    }
    void click(int index)
    {
        with<QVexaFileAccessDialog>([index](QVexaFileAccessDialog *window) {
            QTest::mouseClick(window->cButton(index), Qt::LeftButton);
        });
    }
    void nameFile(const QString &path)
    {
        with<QFileDialog>([path](QFileDialog *window) {
            window->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(path);
            QTest::keyClick(window, Qt::Key_Return);
        });
        then([] { return !shown<QFileDialog>(); });
    }
    void transfer(int button, const QString &text, const QString &path)
    {
        choose(text);
        click(button);
        nameFile(path);
    }
    template<typename Window>
    void press(Qt::Key key)
    {
        with<Window>([key](Window *window) { QTest::keyClick(window, key); });
        then([] { return !shown<Window>(); });
    }
    void readBox(QString *content)
    {
        with<CustomMessageBox>(
            [content](CustomMessageBox *box) { *content = box->accessibleDescription(); });
        press<CustomMessageBox>(Qt::Key_Return);
    }
    void leave()
    {
        with<QVexaFileAccessDialog>([](QVexaFileAccessDialog *window) { window->close(); });
    }

    /// Clicks the tool bar's button; true when all steps were done by the time the dialog has gone.
    bool visit(const ModuleFixture::Camera &camera)
    {
        QElapsedTimer clock;
        clock.start();
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [this, &clock] {
            if (!m_steps.empty() && m_steps.front()()) {
                m_steps.pop_front();
            } else if (clock.elapsed() > 60000) {
                for (QWidget *widget : QApplication::topLevelWidgets()) {
                    widget->close();
                }
            }
        });
        timer.start(5);
        VexaMainFeatureWidget::instance()->UpdateToolBarBtn(1, int(camera.id), false);
        auto *group = camera.tree->findChild<VexaFeatureToolBar *>()->findChild<QButtonGroup *>();
        group->button(VexaFeatureToolBar::BUTTON_FILE_ACCESS)->click();
        return QTest::qWaitFor([this] { return m_steps.empty(); }) && !dialog();
    }

private:
    std::deque<Step> m_steps;
};

class Listener : public IVexaListen
{
public:
    Listener() { VexaListenTools::instance()->addListener(this, PRIORITY_LEVEL_0); }
    ~Listener() override { VexaListenTools::instance()->removeListener(this); }
    void notify(int event, void *data) override
    {
        if (event == VEXA_EVENT_RESET_DEVICE) {
            m_ids.append(*static_cast<long int *>(data));
        }
    }
    QList<long int> m_ids;
};

/// Stands for the file manager.
class FileManager : public QObject
{
    Q_OBJECT
public:
    FileManager() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "open"); }
    ~FileManager() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }
    Q_INVOKABLE void open(const QUrl &url) { m_strOpened = url.toLocalFile(); }
    QString m_strOpened;
};

/// An area camera and a folder of the host.
struct Desk
{
    Desk()
    {
        camera = fixture.open(SimulatedDevices::builtIn(QStringLiteral("area-camera")));
        camera.device.control->setQuiet(true);
        ok = ModuleFixture::waitForFirstUpdate(camera);
    }
    SimulatorControl &control() { return *camera.device.control; }
    QString path(const QString &name) { return folder.filePath(name); }
    bool keep(const QString &name, const QByteArray &content)
    {
        QFile file(path(name));
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
    }
    QByteArray kept(const QString &name)
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
    }
    void slowDown()
    {
        control().setFile("MultiROI", QByteArray(400 * BLOCK, 'r'));
        Fault fault;
        fault.milliseconds = 10;
        control().setFileFault(fault);
    }

    ModuleFixture fixture;
    ModuleFixture::Camera camera;
    QTemporaryDir folder;
    User user;
    bool ok = false;
};

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
    void initTestCase() { installLanguage(*qApp, QStringLiteral("ENG")); }
    void offersFiles_data();
    void offersFiles();
    void dealsWithKinds_data();
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
};

void tst_FileAccessDialog::offersFiles_data()
{
    QTest::addColumn<QStringList>("entries");
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<int>("current");
    const auto row = [](const char *name, const QStringList &entries, const QStringList &texts,
                        int current) { QTest::newRow(name) << entries << texts << current; };
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
    ModuleFixture fixture;
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

void tst_FileAccessDialog::dealsWithKinds_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("exportFilter"); // empty: the button is disabled
    QTest::addColumn<QString>("importFilter");
    const auto row = [](const char *text, const char *exportFilter, const char *importFilter) {
        QTest::newRow(text) << text << exportFilter << importFilter;
    };
    row("User Set", "FileAccess Files(*.vxa)", "FileAccess Files(*.vxa)");
    row("Multi ROI", "FileAccess Files(*.vxa)", "FileAccess Files(*.vxa)");
    row("ZRH User Set 1", "FileAccess Files(*.vxa)", "All(*.*)");
    row("SECBIN", "", "Bin Files(*.bin)");
    row("License Notice", "Text Files(*.txt)", "");
    row("A/B", "All Files(*.*)", "All(*.*)");
}

void tst_FileAccessDialog::dealsWithKinds()
{
    QFETCH(QString, text);
    QFETCH(QString, exportFilter);
    QFETCH(QString, importFilter);
    ModuleFixture fixture;
    const ModuleFixture::Camera camera = fixture.openDescription(selectorDescription(
        {"User Set 1", "Multi ROI", "ZRH User Set 1", "SECBIN", "License Notice", "A/B"}));
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    User user;
    user.choose(text);
    const QStringList filters = {importFilter, exportFilter};
    QStringList seen = {QString(), QString()};
    QString name;
    for (int button = 0; button < 2; ++button) {
        user.click(button);
        if (!filters[button].isEmpty()) {
            user.with<QFileDialog>([&seen, &name, button](QFileDialog *window) {
                seen[button] = window->nameFilters().join('|');
                name = window->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->text();
                window->reject();
            });
            user.then([] { return !shown<QFileDialog>(); });
        }
    }
    user.leave();
    QVERIFY(user.visit(camera));
    QCOMPARE(seen, filters);
    if (!exportFilter.isEmpty()) {
        QVERIFY2(name.endsWith(QString(text).replace('/', '-')) && name.count('_') >= 2
                     && !name.contains('/'),
                 qPrintable(name));
    }
    fixture.close(camera);
}

void tst_FileAccessDialog::exportsAndImports()
{
    Desk desk;
    QVERIFY(desk.ok);
    Listener listener;
    QVERIFY(desk.keep("new.vxa", "settings"));
    const QByteArray before = desk.control().file("UserSet1");
    FileManager manager;
    QString argument;
    desk.user.transfer(1, "User Set", desk.path("out")); // gets its suffix
    desk.user.with<CustomSaveDoneHintDlg>([&](CustomSaveDoneHintDlg *hint) {
        argument = hint->toolTip();
        for (QLabel *label : hint->findChildren<QLabel *>()) {
            emit label->linkActivated(QString());
        }
    });
    desk.user.then([] { return !shown<CustomSaveDoneHintDlg>(); });
    desk.user.transfer(1, "User Set", desk.path("again.vxa"));
    desk.user.with<CustomSaveDoneHintDlg>([](CustomSaveDoneHintDlg *) {});
    desk.user.then([] { return !shown<CustomSaveDoneHintDlg>(); }); // by itself
    desk.user.transfer(0, "User Set", desk.path("new.vxa"));
    desk.user.press<CustomMessageBox>(Qt::Key_Escape); // no restart
    desk.user.then([&] { return dialog() && dialog()->cButton(0)->isEnabled(); });
    desk.user.leave();
    QVERIFY(desk.user.visit(desk.camera));
    QCOMPARE(argument, "/select," + desk.path("out.vxa").replace('/', '\\'));
    QCOMPARE(manager.m_strOpened, desk.folder.path());
    QVERIFY(desk.kept("out.vxa") == before && desk.kept("again.vxa") == before);
    QCOMPARE(desk.control().file("UserSet1"), QByteArray("settings"));
    QVERIFY(listener.m_ids.isEmpty());
    desk.fixture.close(desk.camera);
}

void tst_FileAccessDialog::restartsTheDevice()
{
    Desk desk;
    QVERIFY(desk.ok);
    Listener listener;
    QVERIFY(desk.keep("any.txt", "bytes"));
    desk.user.transfer(0, "User File", desk.path("any.txt")); // no ending is asked for
    desk.user.with<CustomMessageBox>(
        [](CustomMessageBox *box) { QTest::keyClick(box, Qt::Key_Return); });
    desk.user.then([] { return !dialog(); }); // the tree tells of the restart
    QVERIFY(desk.user.visit(desk.camera));
    QCOMPARE(listener.m_ids, QList<long int>({desk.camera.id}));
    QCOMPARE(desk.control().file("UserFile"), QByteArray("bytes"));
    desk.fixture.close(desk.camera);
}

void tst_FileAccessDialog::tellsFailures_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("fault");
    QTest::addColumn<QString>("says");
    QTest::addColumn<QString>("why");
    const char *imported = "could not be imported.\nError: 0x";
    const char *exported = "could not be exported.\nError: 0x";
    QTest::newRow("wrong ending") << 0 << "x.bin" << int(Fault::None) << "does not fit"
                                  << "";
    QTest::newRow("ending in capitals") << 0 << "x.VXA" << int(Fault::None) << "does not fit"
                                        << "";
    QTest::newRow("empty file") << 0 << "<b>empty.vxa" << int(Fault::None) << imported
                                << "<b>empty.vxa: the file is empty";
    QTest::newRow("block refused, import")
        << 0 << "x.vxa" << int(Fault::RefusedBlock) << imported << "status";
    QTest::newRow("block refused, export")
        << 1 << "x.vxa" << int(Fault::RefusedBlock) << exported << "status";
    QTest::newRow("too many bytes")
        << 1 << "x.vxa" << int(Fault::TooManyBytes) << exported << "MultiROI";
}

void tst_FileAccessDialog::tellsFailures()
{
    QFETCH(int, button);
    QFETCH(QString, file);
    QFETCH(int, fault);
    QFETCH(QString, says);
    QFETCH(QString, why);
    Desk desk;
    QVERIFY(desk.ok);
    for (const char *name : {"x.vxa", "x.bin", "x.VXA"}) {
        QVERIFY(desk.keep(name, OLD));
    }
    QVERIFY(desk.keep("<b>empty.vxa", ""));
    Fault planted;
    planted.kind = Fault::Kind(fault);
    desk.control().setFileFault(planted);
    const QByteArray before = desk.control().file("MultiROI");
    QString box;
    desk.user.choose("Multi ROI");
    desk.user.click(button);
    desk.user.with<QFileDialog>([&](QFileDialog *window) {
        window->setOption(QFileDialog::DontConfirmOverwrite);
        window->setNameFilter("*");
        window->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(desk.path(file));
        QTest::keyClick(window, Qt::Key_Return);
    });
    desk.user.readBox(&box);
    // Once more, without the fault: nothing is left behind by the failure.
    desk.user.then([&] {
        desk.control().setFileFault({});
        return true;
    });
    desk.user.transfer(1, "Multi ROI", desk.path("after.vxa"));
    desk.user.press<CustomSaveDoneHintDlg>(Qt::Key_Escape);
    desk.user.leave();
    QVERIFY(desk.user.visit(desk.camera));
    QVERIFY2(box.contains(says) && box.contains(why), qPrintable(box));
    QCOMPARE(desk.kept("x.vxa"), QByteArray(OLD));
    QVERIFY(button == 0 || desk.kept("after.vxa") == before);
    desk.fixture.close(desk.camera);
}

void tst_FileAccessDialog::showsProgress()
{
    Desk desk;
    QVERIFY(desk.ok);
    desk.slowDown();
    QStringList texts;
    bool refused = false;
    desk.user.transfer(1, "Multi ROI", desk.path("out.vxa"));
    desk.user.then([&] {
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
    desk.user.with<QVexaProgressDialog>([&](QVexaProgressDialog *progress) {
        QTest::keyClick(progress, Qt::Key_Escape);
        dialog()->onButtonCliked(1);
        refused = progress->isVisible() && !shown<QFileDialog>()
            && !dialog()->cButton(0)->isEnabled() && !dialog()->cButton(1)->isEnabled();
        long int another = desk.camera.id + 1;
        VexaListenTools::instance()->notifyListeners(VEXA_EVENT_BEFORE_DELETE_FEATURE_TREE,
                                                     &another);
        refused = refused && progress->isVisible();
    });
    desk.user.press<CustomSaveDoneHintDlg>(Qt::Key_Escape);
    desk.user.leave();
    QVERIFY(desk.user.visit(desk.camera));
    QVERIFY(refused);
    QVERIFY(texts.first().contains("400.00 KiB"));
    QCOMPARE(desk.kept("out.vxa").size(), 400 * BLOCK);
    desk.fixture.close(desk.camera);
}

void tst_FileAccessDialog::theCameraGoes_data()
{
    QTest::addColumn<QString>("during");
    QTest::addColumn<int>("boxes");
    QTest::newRow("idle") << "idle" << 0;
    QTest::newRow("file dialog") << "file dialog" << 0;
    QTest::newRow("transfer") << "transfer" << 1;
    QTest::newRow("device blocked") << "blocked" << 1;
    QTest::newRow("failure on show") << "failure" << 1;
}

void tst_FileAccessDialog::theCameraGoes()
{
    QFETCH(QString, during);
    QFETCH(int, boxes);
    Desk desk;
    QVERIFY(desk.ok);
    QVERIFY(desk.keep("out.vxa", OLD));
    desk.slowDown();
    QPointer<Worker> worker;
    desk.user.with<QVexaFileAccessDialog>(
        [&](QVexaFileAccessDialog *window) { worker = window->findChild<Worker *>(); });
    if (during == "file dialog") {
        desk.user.click(1);
        desk.user.with<QFileDialog>([](QFileDialog *) {});
    } else if (during != "idle") {
        desk.user.transfer(1, "Multi ROI", desk.path("new.vxa"));
        desk.user.with<QVexaProgressDialog>([](QVexaProgressDialog *) {});
    }
    if (during == "failure") {
        desk.user.then([&] {
            desk.control().vanish();
            return true;
        });
        desk.user.with<CustomMessageBox>([](CustomMessageBox *) {});
    }
    qint64 waited = -1;
    desk.user.with<QVexaFileAccessDialog>([&](QVexaFileAccessDialog *) {
        if (during == "blocked") {
            desk.control().blockNextAccess();
            QTest::qWait(100);
        }
        QElapsedTimer clock;
        clock.start();
        desk.fixture.mainWidget().removeFeatureTree(desk.camera.id);
        waited = clock.elapsed();
    });
    desk.user.then([] { return !dialog() && !shown<QVexaProgressDialog>(); });
    QStringList told;
    for (int box = 0; box < boxes; ++box) {
        desk.user.readBox(&*told.insert(told.end(), QString()));
    }
    QVERIFY(desk.user.visit(desk.camera));
    QVERIFY(!shown<CustomMessageBox>());
    QVERIFY(boxes == 0 || told.first().contains("could not be exported.\nError: 0x"));
    QVERIFY2(waited >= 0 && waited < 5000, qPrintable(QString::number(waited)));
    desk.control().unblock();
    desk.fixture.host().closeCamera(desk.camera.id);
    QTRY_VERIFY_WITH_TIMEOUT(!worker, 20000);
    QVERIFY(!QFile::exists(desk.path("new.vxa")));
}

void tst_FileAccessDialog::workerWithoutCamera()
{
    Desk desk;
    QVERIFY(desk.ok);
    desk.slowDown();
    Worker worker(desk.camera.id);
    QSignalSpy ended(&worker, &Worker::SigEndFileAccessThread);
    worker.setJob(Worker::DIRECTION_EXPORT, desk.path("first"), "MultiROI");
    worker.start();
    worker.setJob(Worker::DIRECTION_IMPORT, desk.path("second"), "UserSet1"); // has no effect
    QTRY_VERIFY_WITH_TIMEOUT(ended.count() == 1, 30000);
    QVERIFY(worker.wait() && desk.kept("first").size() == 400 * BLOCK);
    QCOMPARE(ended.takeFirst(), QVariantList({1, true, QString()}));

    worker.setJob(7, desk.path("first"), "MultiROI");
    worker.start();
    QVERIFY(worker.wait());
    desk.fixture.close(desk.camera);
    worker.setJob(Worker::DIRECTION_IMPORT, desk.path("first"), "MultiROI");
    worker.start();
    QTRY_VERIFY_WITH_TIMEOUT(ended.count() == 1, 30000);
    QCOMPARE(ended.takeFirst(), QVariantList({0, false, "\r\nError: 0xFFFFFFFC"}));
}

void tst_FileAccessDialog::noDialogWithoutCamera()
{
    ModuleFixture fixture;
    fixture.mainWidget().setCurrentCameraID(-1);
    fixture.mainWidget().OnActionFileAccess(); // would not come back
    QVERIFY(!dialog());
}

QTEST_MAIN(tst_FileAccessDialog)
#include "tst_fileaccess.moc"
