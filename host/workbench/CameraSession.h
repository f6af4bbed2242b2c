#pragma once

#include "ShellServicesModule/QFunction.h"
#include "host/devicetask/CameraHost.h"

#include <QFutureWatcher>
#include <QObject>
#include <QSet>
#include <QString>

#include <memory>

class VexaFeatureTree;

/// The life of one opened camera: it opens the device on a worker, drives the feature widget through opening, grabbing
/// and closing in the order that the module asks for, and ends with the loss of the device or close(). One session
/// serves one opening. GUI thread.
class CameraSession : public QObject
{
    Q_OBJECT
public:
    enum class State {
        Idle,
        Opening,
        Open,
        Grabbing,
        Lost, ///< the device is gone; the tree was taken down
        Closed
    };

    CameraSession(CameraHost &host, std::shared_ptr<DeviceSource> source,
                  QObject *parent = nullptr);
    /// Closes the camera; waits for an opening that is under way.
    ~CameraSession() override;

    void open();
    /// Takes the tree down and closes the device. An opening under way is given up: the device is closed as soon as
    /// it is there.
    void close();
    /// Puts the tree of this camera on show.
    void show();
    bool startGrabbing();
    bool stopGrabbing();

    State state() const { return m_state; }
    bool isLive() const { return m_state == State::Open || m_state == State::Grabbing; }
    /// -1 unless the camera is open.
    long int cameraId() const { return m_lCameraID; }
    /// Null unless the camera is open.
    VexaFeatureTree *tree() const;
    bool isFirstUpdateDone() const { return m_bFirstUpdateDone; }
    /// Display name of the camera: DeviceUserID once it is known.
    QString displayName() const;

signals:
    void stateChanged();
    /// The device or its description was refused; the session is Closed.
    void openFailed(QString error);
    /// The tree holds the values of the device.
    void firstUpdateDone();

private:
    void setState(State state);
    void takeOpenResult();
    void bringUpTree(unsigned int accessMode);
    void onCameraLost(long int cameraId);
    void onCloseRequested(long int cameraId);
    void takeDown(bool lost);
    void updateToolBar();
    void log(_MESSAGE_LOG_LEVEL_ level, const QString &text);

    CameraHost &m_host;
    std::shared_ptr<DeviceSource> m_pSource;
    QFutureWatcher<CameraHost::OpenResult> m_opening;
    State m_state = State::Idle;
    long int m_lCameraID = NO_CAMERA_ID;
    bool m_bFirstUpdateDone = false;
    QSet<long int> m_lostEarly; ///< cameras lost during the opening: one of them may be this one
};
