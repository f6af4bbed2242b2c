#include "host/workbench/HostEvents.h"

#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "ShellServicesModule/QFunction.h"
#include "ShellServicesModule/QVexaEventBus.h"
#include "host/shellservices/ShellHost.h"
#include "host/workbench/WorkbenchTexts.h"

namespace {

/// What the module says of a source of test images, on the bus and to listeners.
struct TestStateRow
{
    QLatin1String state;
    const char *busKey;
    const char *listenerKey;
};

const TestStateRow *rowOf(const QString &state)
{
    static const TestStateRow TABLE[] = {
        {QLatin1String("test_open"), "lang_workbench_image_test_open",
         "lang_workbench_told_test_open"},
        {QLatin1String("test_close"), "lang_workbench_image_test_close",
         "lang_workbench_told_test_close"},
        {QLatin1String("ftp_open"), "lang_workbench_image_ftp_open",
         "lang_workbench_told_ftp_open"},
        {QLatin1String("ftp_close"), "lang_workbench_image_ftp_close",
         "lang_workbench_told_ftp_close"}};
    for (const TestStateRow &row : TABLE) {
        if (row.state == state) {
            return &row;
        }
    }
    return nullptr;
}

QString nameOf(long int cameraId)
{
    QTaskManager *manager = QTaskManager::Instance();
    QCameraBasicTask *task = manager ? manager->GetTaskByIDEx(cameraId) : nullptr;
    return task ? task->_GetCameraName() : QString();
}

void say(long int cameraId, const char *key)
{
    QFunction::Instance()->InsertMessageLog(MESSAGE_LOG_INFO, nameOf(cameraId), loggedText(key));
}

/// For events that name no camera: the module's user works on the one on show.
void say(const char *key)
{
    say(ShellHost::instance()->currentCameraID(), key);
}

} // namespace

HostEvents::HostEvents(QObject *parent)
    : QObject(parent)
{
    connectStations();
    connectParameters();
    connectList();
    VexaListenTools::instance()->addListener(this, PRIORITY_LEVEL_2);
}

HostEvents::~HostEvents()
{
    VexaListenTools::instance()->removeListener(this);
}

void HostEvents::connectStations()
{
    const QVexaEventBus *bus = QVexaEventBus::Instance();
    connect(bus, &QVexaEventBus::SigVexaEventUpdateROI, this,
            [](long int cameraId) { say(cameraId, "lang_workbench_told_roi"); });
    connect(bus, &QVexaEventBus::SigVexaEventStateRoleChanged, this,
            [](long int cameraId) { say(cameraId, "lang_workbench_told_role"); });
    connect(bus, &QVexaEventBus::SigVexaEventUpdateMainSub, this,
            [](long int cameraId) { say(cameraId, "lang_workbench_told_mainsub"); });
}

void HostEvents::connectParameters()
{
    const QVexaEventBus *bus = QVexaEventBus::Instance();
    connect(bus, &QVexaEventBus::SigVexaEventCameraPollingParamChanged, this,
            [] { say("lang_workbench_told_polling"); });
    connect(bus, &QVexaEventBus::SigVexaEventStartSmartTune, this, [](bool smartTune) {
        say(smartTune ? "lang_workbench_told_smarttune" : "lang_workbench_told_selfadapt");
    });
    connect(bus, &QVexaEventBus::SigVexaEventTestImgNodeChanged, this, [](const QString &state) {
        if (const TestStateRow *row = rowOf(state)) {
            say(row->busKey);
        }
    });
    connect(bus, &QVexaEventBus::SigVexaEventLoadParameters, this, [this] {
        say("lang_workbench_told_loaded");
        const long int cameraId = ShellHost::instance()->currentCameraID();
        // The command that loaded them is still on the stack of its tree.
        QMetaObject::invokeMethod(
            this, [this, cameraId] { emit parametersLoaded(cameraId); }, Qt::QueuedConnection);
    });
}

void HostEvents::connectList()
{
    const QVexaEventBus *bus = QVexaEventBus::Instance();
    connect(bus, &QVexaEventBus::SigVexaEventUpdateCameraStatus, this, &HostEvents::camerasChanged);
    connect(bus, &QVexaEventBus::SigVexaEventUpdateDevListCtrl, this, &HostEvents::camerasChanged);
    connect(ShellHost::instance(), &ShellHost::modifiedCamerasChanged, this,
            &HostEvents::camerasChanged);
}

void HostEvents::notify(int event, void *data)
{
    // On the notifier's thread, and the data lives for the length of the call only.
    if (!data) {
        return;
    }
    if (event == VEXA_EVENT_CAMERA_TARGET_CHANGED) {
        const long int cameraId = *static_cast<const long int *>(data);
        QMetaObject::invokeMethod(this,
                                  [cameraId] { say(cameraId, "lang_workbench_told_target"); });
    } else if (event == VEXA_EVENT_TEST_STATE) {
        if (const TestStateRow *row = rowOf(*static_cast<const QString *>(data))) {
            QMetaObject::invokeMethod(this, [row] { say(row->listenerKey); });
        }
    }
}
