#pragma once

#include "ControlKit/CustomComboBox.h"
#include "ControlKit/CustomMessageBox.h"
#include "ControlKit/CustomSaveDoneHintDlg.h"
#include "ShellServicesModule/QVexaProgressDialog.h"
#include "ShellServicesModule/VexaListenTools.h"
#include "fileaccess/QVexaFileAccessDialog.h"
#include "shell/VexaFeatureToolBar.h"
#include "tests/support/FullDisk.h"
#include "tests/support/ModuleFixture.h"

#include <QAbstractButton>
#include <QApplication>
#include <QButtonGroup>
#include <QDesktopServices>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QUrl>
#include <QtTest>

#include <deque>
#include <functional>

using Fault = SimulatedFileFault;

constexpr int BLOCK = 1024; // of the simulated devices

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

inline QVexaFileAccessDialog *dialog()
{
    return shown<QVexaFileAccessDialog>();
}

inline QString comboText()
{
    return dialog() ? dialog()->findChild<CustomComboBox *>()->currentText() : QString();
}

/// What a user does, one step after the other, each as soon as it can be done.
class User : public QObject
{
public:
    static constexpr int LONGEST_STEP = 120000; // ms
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
        QElapsedTimer gap;
        gap.start();
        connect(&timer, &QTimer::timeout, this, [this, &clock, &gap] {
            const qint64 passed = gap.restart();
            if (shown<QVexaProgressDialog>()) {
                m_nLongestGap = qMax(m_nLongestGap, passed);
                ++m_nBusyTicks;
            }
            if (!m_steps.empty() && m_steps.front()()) {
                m_steps.pop_front();
                clock.restart();
            } else if (clock.elapsed() > LONGEST_STEP) {
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

    int m_nBusyTicks = 0; ///< how often the window answered while a file was under way
    qint64 m_nLongestGap = 0; ///< ms between two of them

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

/// An area camera, whose opening takes long under a sanitizer, and a folder of the host.
struct Desk
{
    explicit Desk(ModuleFixture &fixture)
        : fixture(fixture)
        , camera(fixture.open(SimulatedDevices::builtIn(QStringLiteral("area-camera"))))
    {
        control().setQuiet(true);
        ok = ModuleFixture::waitForFirstUpdate(camera);
    }
    ~Desk()
    {
        if (fixture.mainWidget().getAllFeatureTreesMap().contains(camera.id)) {
            fixture.close(camera);
        }
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

    ModuleFixture &fixture;
    ModuleFixture::Camera camera;
    QTemporaryDir folder;
    bool ok = false;
};
