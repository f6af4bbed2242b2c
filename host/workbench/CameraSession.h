#pragma once

#include "ShellServicesModule/QFunction.h"
#include "host/devicetask/CameraHost.h"
#include "host/workbench/DeviceReturn.h"
#include "host/workbench/PollingSetReader.h"

#include <QDateTime>
#include <QDeadlineTimer>
#include <QFutureWatcher>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QVector>

#include <chrono>
#include <memory>

class ReaderTables;
class VexaFeatureTree;

/// The life of one opened camera: it opens the device on a worker, drives the feature widget through opening, grabbing,
/// losing, return and closing in the order that the module asks for, and ends with close() or with a device that does
/// not come back. One session serves one opening. GUI thread; whatever talks to the device runs on workers.
class CameraSession : public QObject
{
    Q_OBJECT
public:
    enum class State {
        Idle,
        Opening,
        Open,
        Starting, ///< of grabbing
        Grabbing,
        Stopping,
        ReadOnly, ///< another host controls the device
        NotResponding, ///< still open: the device layer asks the device until it answers
        Lost, ///< the tree is kept while the device is waited for
        Gone, ///< the device did not come back: the tree was taken down
        Closed
    };

    CameraSession(CameraHost &host, std::shared_ptr<DeviceSource> source,
                  QObject *parent = nullptr);
    /// Closes the camera; waits for calls that are under way.
    ~CameraSession() override;

    /// How long a lost device is waited for; DeviceReturn::RETURN_TIME unless told otherwise.
    void setReturnTime(std::chrono::milliseconds time) { m_returnTime = time; }
    std::chrono::milliseconds returnTime() const { return m_returnTime; }
    void open();
    /// Takes the tree down and closes the device, also while calls hang in it. An opening under way is given up: the
    /// device is closed as soon as it is there.
    void close();
    /// Deletes the session, which is closed, as soon as no call of its is inside the device layer.
    void deleteWhenIdle();
    /// Puts the tree of this camera on show.
    void show();
    /// Both do nothing in a state that does not allow them.
    void startGrabbing();
    void stopGrabbing();
    /// Reads all values again, as soon as the device answers; firstUpdateDone comes at the end.
    void refresh();

    State state() const;
    /// The device answers, as far as is known.
    bool isLive() const;
    /// When the condition of the device (answers or not, controlled by this host or not) changed last.
    QDateTime since() const { return m_since; }
    /// -1 unless the camera is open; a lost camera is open.
    long int cameraId() const { return m_lCameraID; }
    /// Null unless the camera is open.
    VexaFeatureTree *tree() const;
    /// Of a code reader whose first full update has ended, else null.
    ReaderTables *tables() const { return m_pTables.get(); }
    bool isFirstUpdateDone() const { return m_bFirstUpdateDone; }
    /// Display name of the camera: DeviceUserID once it is known.
    QString displayName() const;

signals:
    void stateChanged();
    /// The device or its description was refused; the session is Closed.
    void openFailed(QString error);
    /// The tree holds the values of the device; again after each return from a loss.
    void firstUpdateDone();
    /// The device is waited for from now on.
    void lost();
    /// tables() came or went.
    void tablesChanged();

private:
    struct GrabResult
    {
        bool done = false;
        QString error;
    };

    void takeOpenResult();
    void bringUpTree(const char *noticeKey);
    void onPassEnded(long int cameraId);
    void onConditionChanged(long int cameraId, DeviceCondition condition);
    void onTrouble(DeviceCondition former);
    void onReturned(const CameraHost::OpenResult &result);
    void rebuildTree();
    void makeTreeAnew(const char *noticeKey);
    void readAgain();
    void onCloseRequested(long int cameraId);
    void grab(bool start);
    void takeGrabResult();
    void takeDown(bool lost);
    void makeTables();
    void removeTables();
    void updateToolBar();
    void log(_MESSAGE_LOG_LEVEL_ level, const char *key,
             const QStringList &arguments = QStringList());
    bool isBusy() const;
    void deleteIfIdle();

    CameraHost &m_host;
    std::shared_ptr<DeviceSource> m_pSource;
    QFutureWatcher<CameraHost::OpenResult> m_opening;
    QFutureWatcher<GrabResult> m_grabbing;
    DeviceReturn m_return;
    std::unique_ptr<ReaderTables> m_pTables;
    QVector<QFuture<PollingReading>> m_readings; ///< that may outlive their tables
    std::chrono::milliseconds m_returnTime = DeviceReturn::RETURN_TIME;
    QTimer m_toolBarTimer;
    QDeadlineTimer m_returnDeadline; ///< of the present loss
    State m_phase = State::Idle; ///< what this host does with the camera, whatever its condition
    DeviceCondition m_condition = DeviceCondition::Live;
    QDateTime m_since;
    long int m_lCameraID = NO_CAMERA_ID;
    unsigned int m_nAccessMode = DEVICE_ACCESS_CONTROL; ///< that the tree was told
    bool m_bRestarted = false; ///< the device was told to restart since its tree was made
    int m_nPassesToGo = 0; ///< full updates that a return still asks for
    bool m_bOpening = false; ///< calls whose result was not taken yet
    bool m_bGrabCall = false;
    bool m_bStartsGrabbing = false; ///< of the grab call
    bool m_bFirstUpdateDone = false;
    bool m_bDeleteWhenIdle = false;
};
