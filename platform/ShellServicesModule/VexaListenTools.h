#pragma once

#include "ShellServicesModule/ShellServicesModuleGlobal.h"

#include <QtGlobal>

#include <memory>

/// Order in which listeners are called: a lower number earlier. The module registers with level 1.
enum PriorityLevel { PRIORITY_LEVEL_0 = 0, PRIORITY_LEVEL_1 = 1, PRIORITY_LEVEL_2 = 2 };

/// Events of the listener registry that the module knows. Unless a line says otherwise `data` points to a
/// camera id (`long int`).
enum VexaListenEvent {
    VEXA_EVENT_BEFORE_DELETE_FEATURE_TREE = 3, ///< a tree is about to be deleted
    VEXA_EVENT_FAVORITES_CHANGED = 6, ///< favourites of a tree changed
    VEXA_EVENT_REFRESH_NODE = 7, ///< from the host; data points to a VexaNodeEventData
    VEXA_EVENT_RESET_DEVICE = 15, ///< a file was put on the device, which needs "DeviceReset"
    VEXA_EVENT_CAMERA_TARGET_CHANGED = 18, ///< a polling or protocol node was written
    VEXA_EVENT_TEST_STATE =
        19 ///< data points to a QString: "test_open", "test_close", "ftp_open", "ftp_close"
};

/// Data of VEXA_EVENT_REFRESH_NODE.
struct VexaNodeEventData
{
    qint32 cameraId;
    const char *nodeName; ///< zero-terminated GenICam feature name
};

/// A listener of the registry.
class SHELLSERVICESMODULE_API IVexaListen
{
public:
    virtual ~IVexaListen();
    /// Runs on the thread of the notifier, before notifyListeners returns.
    virtual void notify(int event, void *data) = 0;
};

/// Application-wide registry of listeners. Any thread; a listener may add or remove listeners, itself included,
/// while it is being notified. One that was removed is not called again.
class SHELLSERVICESMODULE_API VexaListenTools
{
public:
    static VexaListenTools *instance();

    /// A listener that is registered already moves to the new priority. One that is added during a notification
    /// hears the next one.
    void addListener(IVexaListen *listener, PriorityLevel priority);
    /// Waits while another thread is inside this listener, so that the caller may delete it afterwards. Two
    /// listeners that remove each other on two threads at once do not wait for each other.
    void removeListener(IVexaListen *listener);
    /// Calls every listener on the caller's thread before it returns: lower levels first, one level in the order
    /// of their registration.
    void notifyListeners(int event, void *data);

private:
    VexaListenTools();
    ~VexaListenTools();
    Q_DISABLE_COPY(VexaListenTools)
    class Private;
    std::unique_ptr<Private> d;
};
