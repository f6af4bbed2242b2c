#pragma once

#include "ShellServicesModule/ShellServicesModuleGlobal.h"

#include <QDateTime>
#include <QObject>
#include <QStringList>
#include <QVector>

#include <memory>

class QWidget;

/// A line of the client's message log.
struct MessageLogEntry
{
    QDateTime time;
    int nLevel; ///< _MESSAGE_LOG_LEVEL_
    QString strCamera; ///< display name, empty for the client itself
    QString strText;
};

/// The host application's side of the shell services: it sets here what modules ask for through COMMONINTERFACE,
/// QLocalCfg and QFunction. Any thread, but for mainWindow and setMainWindow (GUI thread).
class SHELLSERVICESMODULE_API ShellHost : public QObject
{
    Q_OBJECT
public:
    static ShellHost *instance();

    /// Where the configuration is kept; before anything else asks for it. Without a call it is the user's own file.
    /// False when the file cannot be used: the configuration then lasts for this run only.
    static bool useSettingsFile(const QString &path);
    /// Default configuration in memory, UtilityKit's included, for tests and headless runs.
    static void useTransientSettings();

    void setCurrentCameraID(long int cameraId);
    long int currentCameraID() const;
    void setMainWindow(QWidget *window);
    QWidget *mainWindow() const;
    void setCanSetProperty(bool allow);
    bool isCanSetProperty() const;
    /// Non-zero while the user draws on the image.
    void setDrawingMode(int mode);
    int drawingMode() const;

    /// Names of the cameras with unsaved changes, in the order in which they were marked.
    QStringList modifiedCameras() const;
    void addModifiedCamera(const QString &name);
    void removeModifiedCamera(const QString &name);
    /// A renamed camera keeps its mark.
    void renameModifiedCamera(const QString &oldName, const QString &newName);

    /// The last lines of the message log, oldest first; at most kMessageHistoryLength.
    QVector<MessageLogEntry> messageHistory() const;
    void appendMessage(const MessageLogEntry &entry);
    static constexpr int kMessageHistoryLength = 2000;

signals:
    /// On the thread of the change.
    void modifiedCamerasChanged(QStringList names);

private:
    ShellHost();
    ~ShellHost() override;
    class Private;
    std::unique_ptr<Private> d;
};
