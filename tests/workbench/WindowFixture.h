#pragma once

#include "host/workbench/DeviceCatalog.h"

#include <QObject>
#include <QSet>
#include <QString>

#include <atomic>
#include <memory>

class CameraHost;
class CameraSession;
class QTreeWidget;
class QTreeWidgetItem;
class WorkbenchWindow;

/// The window over simulated devices, and what its user sees and does.
class WindowFixture
{
public:
    static inline const QString FIRST = QStringLiteral("area-camera");
    static inline const QString SECOND = QStringLiteral("area-camera#2");
    /// Longest wait for something that a device does, in ms.
    static constexpr int LONG_WAIT = 30000;

    /// With these devices in the list; models that stand twice get numbered ids.
    explicit WindowFixture(const QStringList &models = {FIRST, FIRST});
    /// Unblocks the devices, then takes window and registry down.
    ~WindowFixture();

    WorkbenchWindow &window() { return *m_pWindow; }
    CameraHost &host() { return *m_pHost; }
    QTreeWidget *list() const;
    QTreeWidgetItem *item(const QString &id) const;
    CameraSession *session(const QString &id) const;
    SimulatorControl &control(const QString &id) { return *m_catalog.find(id)->control; }
    DeviceSource &source(const QString &id) { return *m_catalog.find(id)->source; }
    QString stateText(const QString &id) const;
    bool isEnabled(const char *button) const;
    /// Text of the message log.
    QString messages() const;
    /// The value of a feature as the tree shows it.
    QString shown(const QString &id, const QString &feature) const;

    void click(const char *button);
    void select(const QString &id);
    /// The tree of this device holds the values that it had since the last forgetUpdates().
    bool isUpdated(const QString &id) const { return m_updated.contains(id); }
    void forgetUpdates() { m_updated.clear(); }
    /// Selects the device, opens it and waits for its first full update.
    void openAndWait(const QString &id);
    /// Every register that the tree asks for times out from now on, until answerAgain().
    void silence(const QString &id);
    void answerAgain(const QString &id);
    /// The device is gone and the transport says so.
    void unplug(const QString &id);

private:
    DeviceCatalog m_catalog;
    std::unique_ptr<CameraHost> m_pHost;
    std::unique_ptr<WorkbenchWindow> m_pWindow;
    QSet<QString> m_updated;
    QSet<quint64> m_silent; ///< addresses
    const std::shared_ptr<std::atomic<bool>> m_pIsSilent =
        std::make_shared<std::atomic<bool>>(false);
};

/// A test with a window of its own for each of its functions.
class WindowTest : public QObject
{
    Q_OBJECT
private slots:
    void init() { open({FIRST, FIRST}); }
    void cleanup() { m_pFixture.reset(); }

protected:
    static inline const QString FIRST = WindowFixture::FIRST;
    static inline const QString SECOND = WindowFixture::SECOND;
    static constexpr int LONG_WAIT = WindowFixture::LONG_WAIT;

    void open(const QStringList &models) { m_pFixture = std::make_unique<WindowFixture>(models); }
    WindowFixture &w() { return *m_pFixture; }

private:
    std::unique_ptr<WindowFixture> m_pFixture;
};
