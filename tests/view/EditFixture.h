#pragma once

#include "tests/support/ModuleFixture.h"
#include "view/VexaFeatureTreeView.h"

/// The tree of a simulated device on screen, with what a user's hands do to it. The device is quiet and logs its
/// accesses; the first full update has ended and the tree is idle.
class EditFixture
{
public:
    explicit EditFixture(const SimulatedDevices::Simulated &device, unsigned int accessMode = 4);
    ~EditFixture();
    Q_DISABLE_COPY(EditFixture)

    /// A device with what the built-in ones lack: "Big" and "BigHex" of 64 bits, "Coarse" that the device rounds to
    /// multiples of 16, "Grid" from 10 in steps of 4 to 50, and "SecretNumber", "SecretText", "SecretMode"
    /// and "SecretSwitch", which are written and never read.
    static SimulatedDevices::Simulated handMade();

    const ModuleFixture::Camera &camera() const { return m_camera; }
    ModuleFixture &module() { return m_module; }
    VexaFeatureTree &tree() { return *m_camera.tree; }
    VexaFeatureTreeView &view() { return *m_camera.tree->treeView(); }
    SimulatorControl &control() { return *m_camera.device.control; }
    QCameraTask &task() { return *taskOf(m_camera); }
    VexaPropertyTreeItem *item(const QString &name);

    QWidget *editor(const QString &name);
    /// The editor with the focus, its row in sight; null when it takes none.
    QWidget *focusOn(const QString &name);
    /// What the editor shows: its text, "on" or "off".
    QString shown(const QString &name);
    /// What the device answers now, in the words of shown().
    QString deviceValue(const QString &name);
    /// The device's value changes without the tree; it is told then, and the editor's turn to be filled has come.
    bool changeBehindTheTree(const QString &name, const QVariant &value);

    /// Register writes since the last forgetAccesses.
    int writes() const;
    void forgetAccesses() { m_camera.device.control->clearAccessLog(); }
    /// Waits until the refresh of what was written so far has ended.
    bool settle();

private:
    ModuleFixture m_module;
    ModuleFixture::Camera m_camera;
};

/// The fixture of a device that rows of one test share: it is opened anew when another device is asked for ("" is
/// the hand-made one). What a row changed stays changed.
class SharedEditFixture
{
public:
    EditFixture &of(const QString &device);
    void close() { m_pFixture.reset(); }

private:
    std::unique_ptr<EditFixture> m_pFixture;
    QString m_strDevice;
};

/// Replaces the text of the focused editor as a user does, without committing it.
void typeText(QWidget *editor, const QString &text);

/// Answers each modal box that opens with a key while it lives, and counts them.
class BoxAnswers : public QObject
{
    Q_OBJECT
public:
    explicit BoxAnswers(Qt::Key key);
    int count() const { return m_nCount; }

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    Qt::Key m_key;
    int m_nCount = 0;
};
