#pragma once

#include <QMainWindow>
#include <QMap>
#include <QString>

class CameraHost;
class CameraSession;
class DeviceCatalog;
class DeviceListPanel;
class MessageLogPanel;

/// The main window: the devices at the left, the feature trees in the middle, the message log below. It owns the
/// sessions of the opened cameras and brings the parts together. The camera of the selected device is on show.
class WorkbenchWindow : public QMainWindow
{
    Q_OBJECT
public:
    /// Both arguments outlive the window. The catalogue is shown as it is now.
    WorkbenchWindow(CameraHost &host, const DeviceCatalog &catalog, QWidget *parent = nullptr);
    /// Closes all cameras.
    ~WorkbenchWindow() override;

    /// Begins to open a device of the catalogue; one that is open or opening stays as it is.
    void openDevice(const QString &id);
    void closeDevice(const QString &id);
    /// The session of a device, null when it is neither open nor opening nor lost.
    CameraSession *session(const QString &id) const;
    /// Switches program and feature texts to "ENG" or "CH" and keeps the choice.
    void setLanguage(const QString &language);

signals:
    void deviceOpenFailed(QString id, QString error);
    /// The first full update of the device's tree has ended.
    void deviceUpdated(QString id);
    void deviceLost(QString id);

protected:
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void layOut();
    void fillDeviceList();
    void connectPanel();
    void connectLog();
    void onSessionChanged(const QString &id, CameraSession *session);
    void showSelected();
    void showPrompt(int level, const QString &text, const QString &title, bool richText);

    CameraHost &m_host;
    const DeviceCatalog &m_catalog;
    DeviceListPanel *m_pDevices;
    MessageLogPanel *m_pMessages;
    QMap<QString, CameraSession *> m_sessions; ///< by catalogue id
};
