#pragma once

#include "host/workbench/DeviceReturn.h"
#include "host/workbench/DeviceSearch.h"

#include <QMainWindow>
#include <QMap>
#include <QString>

#include <chrono>

class CameraHost;
class CameraSession;
class CameraViews;
class DeviceCatalog;
class DeviceListPanel;
class DeviceStateBanner;
class LowerPanes;

/// The main window: the devices at the left, the feature trees in the middle, the message log below. It owns the
/// sessions of the opened cameras and brings the parts together. The camera of the selected device is on show.
class WorkbenchWindow : public QMainWindow
{
    Q_OBJECT
public:
    /// Both arguments outlive the window. The catalogue is shown as it is now; devices that a search finds are
    /// entered there.
    WorkbenchWindow(CameraHost &host, DeviceCatalog &catalog, QWidget *parent = nullptr);
    /// Closes all cameras.
    ~WorkbenchWindow() override;

    /// Begins to open a device of the catalogue; one that is open or opening stays as it is.
    void openDevice(const QString &id);
    /// At once, whether its settings were saved or not.
    void closeDevice(const QString &id);
    /// Asks before it closes a camera with unsaved changes.
    void requestClose(const QString &id);
    /// The session of a device, null when it is neither open nor opening nor lost.
    CameraSession *session(const QString &id) const;
    /// Switches program and feature texts to "ENG" or "CH" and keeps the choice.
    void setLanguage(const QString &language);
    /// How long devices that are opened from now on are waited for after a loss.
    void setReturnTime(std::chrono::milliseconds time) { m_returnTime = time; }
    /// Where devices are looked for: RealDevices::discover unless told otherwise.
    void setSearch(std::function<DeviceSearch::Found()> look);

signals:
    void deviceOpenFailed(QString id, QString error);
    /// The first full update of the device's tree has ended; again after each return from a loss.
    void deviceUpdated(QString id);
    /// The device is waited for from now on.
    void deviceLost(QString id);

protected:
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void layOut();
    void fillDeviceList();
    void enterInList(const QString &id);
    void enterFound(const DeviceSearch::Found &devices);
    void connectPanel();
    void connectLog();
    void connectEvents();
    void updateNames();
    /// Whether the cameras of these sessions may be closed; asks the user when settings of one were not saved. Runs
    /// events.
    bool mayClose(const QList<CameraSession *> &sessions);
    void onSessionChanged(const QString &id, CameraSession *session);
    void showSelected();
    void orderFocus();
    void showTrouble(const CameraSession *camera);
    void takePrompt(long int cameraId, int level, const QString &text, const QString &title,
                    bool richText);

    CameraHost &m_host;
    DeviceCatalog &m_catalog;
    DeviceListPanel *m_pDevices = nullptr;
    DeviceStateBanner *m_pBanner = nullptr;
    CameraViews *m_pViews = nullptr;
    LowerPanes *m_pLower = nullptr;
    DeviceSearch *m_pSearch = nullptr;
    std::chrono::milliseconds m_returnTime = DeviceReturn::RETURN_TIME;
    QMap<QString, CameraSession *> m_sessions; ///< by catalogue id
};
