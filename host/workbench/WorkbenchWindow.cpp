#include "host/workbench/WorkbenchWindow.h"

#include "ShellServicesModule/QFunction.h"
#include "ShellServicesModule/QLocalCfg.h"
#include "UtilityKit/VexaInterface.h"
#include "host/devicetask/CameraHost.h"
#include "host/shellservices/ShellHost.h"
#include "host/translations/Translations.h"
#include "host/utilitykit/UtilityHost.h"
#include "host/workbench/CameraSession.h"
#include "host/workbench/DeviceCatalog.h"
#include "host/workbench/DeviceListPanel.h"
#include "host/workbench/MessageLogPanel.h"
#include "host/workbench/WorkbenchTexts.h"
#include "shell/VexaMainFeatureWidget.h"
#include "tree/VexaFeatureTree.h"

#include <QCloseEvent>
#include <QSplitter>

namespace {

constexpr QSize WINDOW_SIZE{1280, 800};
constexpr int DEVICES_WIDTH = 300;
constexpr int MESSAGES_HEIGHT = 130;
constexpr int PROMPT_HINT_STYLE = 2;
constexpr int PROMPT_FAILURE = 3;

DeviceListPanel::DeviceState listState(CameraSession::State state)
{
    using Device = DeviceListPanel::DeviceState;
    switch (state) {
    case CameraSession::State::Opening:
        return Device::Opening;
    case CameraSession::State::Open:
        return Device::Open;
    case CameraSession::State::Grabbing:
        return Device::Grabbing;
    case CameraSession::State::Lost:
        return Device::Lost;
    case CameraSession::State::Idle:
    case CameraSession::State::Closed:
        break;
    }
    return Device::Available;
}

} // namespace

WorkbenchWindow::WorkbenchWindow(CameraHost &host, const DeviceCatalog &catalog, QWidget *parent)
    : QMainWindow(parent)
    , m_host(host)
    , m_catalog(catalog)
    , m_pDevices(new DeviceListPanel)
    , m_pMessages(new MessageLogPanel)
{
    setObjectName(QStringLiteral("WorkbenchWindow"));
    ShellHost::instance()->setMainWindow(this);
    layOut();
    connectLog();
    connectPanel();
    fillDeviceList();
    m_pDevices->setLanguage(VexaInterface::language(false));
    setWindowTitle(workbenchText("lang_workbench_title"));
}

WorkbenchWindow::~WorkbenchWindow()
{
    // Before the other children: the sessions take their trees off the feature widget, which needs a whole window.
    m_sessions.clear();
    qDeleteAll(findChildren<CameraSession *>(QString(), Qt::FindDirectChildrenOnly));
    delete findChild<VexaMainFeatureWidget *>();
    ShellHost::instance()->setMainWindow(nullptr);
}

void WorkbenchWindow::layOut()
{
    auto *upper = new QSplitter(Qt::Horizontal);
    upper->setChildrenCollapsible(false);
    upper->addWidget(m_pDevices);
    upper->addWidget(VexaMainFeatureWidget::instance(upper));
    upper->setStretchFactor(0, 0);
    upper->setStretchFactor(1, 1);
    auto *whole = new QSplitter(Qt::Vertical, this);
    whole->setChildrenCollapsible(false);
    whole->addWidget(upper);
    whole->addWidget(m_pMessages);
    whole->setStretchFactor(0, 1);
    whole->setStretchFactor(1, 0);
    setCentralWidget(whole);
    resize(WINDOW_SIZE);
    upper->setSizes({DEVICES_WIDTH, WINDOW_SIZE.width() - DEVICES_WIDTH});
    whole->setSizes({WINDOW_SIZE.height() - MESSAGES_HEIGHT, MESSAGES_HEIGHT});
}

void WorkbenchWindow::fillDeviceList()
{
    for (const DeviceCatalog::Device &device : m_catalog.devices()) {
        m_pDevices->addDevice(device.id, DeviceCatalog::transportName(device.source->deviceType),
                              device.source->model);
    }
}

void WorkbenchWindow::connectPanel()
{
    connect(m_pDevices, &DeviceListPanel::openRequested, this, &WorkbenchWindow::openDevice);
    connect(m_pDevices, &DeviceListPanel::closeRequested, this, &WorkbenchWindow::closeDevice);
    connect(m_pDevices, &DeviceListPanel::startRequested, this, [this](const QString &id) {
        if (CameraSession *camera = session(id)) {
            camera->startGrabbing();
        }
    });
    connect(m_pDevices, &DeviceListPanel::stopRequested, this, [this](const QString &id) {
        if (CameraSession *camera = session(id)) {
            camera->stopGrabbing();
        }
    });
    connect(m_pDevices, &DeviceListPanel::deviceSelected, this, &WorkbenchWindow::showSelected);
    connect(m_pDevices, &DeviceListPanel::languageChosen, this, &WorkbenchWindow::setLanguage);
}

void WorkbenchWindow::connectLog()
{
    connect(QFunction::Instance(), &QFunction::messageLogged, m_pMessages,
            &MessageLogPanel::addMessage);
    connect(QFunction::Instance(), &QFunction::promptRequested, this,
            [this](long int, int level, const QString &text, const QString &title, bool richText) {
                showPrompt(level, text, title, richText);
            });
}

CameraSession *WorkbenchWindow::session(const QString &id) const
{
    return m_sessions.value(id, nullptr);
}

void WorkbenchWindow::openDevice(const QString &id)
{
    const DeviceCatalog::Device *device = m_catalog.find(id);
    if (CameraSession *former = session(id)) {
        if (former->state() != CameraSession::State::Lost || former->cameraId() != NO_CAMERA_ID) {
            return;
        }
        m_sessions.remove(id);
        former->deleteLater();
    }
    if (!device) {
        return;
    }
    auto *camera = new CameraSession(m_host, device->source, this);
    m_sessions.insert(id, camera);
    connect(camera, &CameraSession::stateChanged, this,
            [this, id, camera] { onSessionChanged(id, camera); });
    connect(camera, &CameraSession::openFailed, this,
            [this, id](const QString &error) { emit deviceOpenFailed(id, error); });
    connect(camera, &CameraSession::firstUpdateDone, this, [this, id] { emit deviceUpdated(id); });
    camera->open();
}

void WorkbenchWindow::closeDevice(const QString &id)
{
    if (CameraSession *camera = session(id)) {
        camera->close();
    }
}

void WorkbenchWindow::onSessionChanged(const QString &id, CameraSession *camera)
{
    if (session(id) != camera) {
        return;
    }
    const CameraSession::State state = camera->state();
    if (state == CameraSession::State::Closed) {
        m_sessions.remove(id);
        camera->deleteLater();
    }
    m_pDevices->setDeviceState(id, listState(state));
    // An opening puts its own camera on show, and a closing the empty page: the selection decides.
    showSelected();
    if (state == CameraSession::State::Lost && camera->cameraId() != NO_CAMERA_ID) {
        emit deviceLost(id);
    }
}

void WorkbenchWindow::showSelected()
{
    CameraSession *camera = session(m_pDevices->currentDevice());
    if (camera && camera->cameraId() != NO_CAMERA_ID) {
        camera->show();
    } else {
        ShellHost::instance()->setCurrentCameraID(NO_CAMERA_ID);
        VexaMainFeatureWidget::instance()->setCurrentCameraID(NO_CAMERA_ID);
    }
}

void WorkbenchWindow::setLanguage(const QString &language)
{
    UtilityHost::setLanguage(language);
    // The node texts first: the change of the translators then refreshes every open tree with them.
    VexaMainFeatureWidget::instance()->UpDateAllLange();
    installLanguage(*QCoreApplication::instance(), language);
    installWorkbenchTexts(language);
    m_pDevices->setLanguage(language);
}

void WorkbenchWindow::showPrompt(int level, const QString &text, const QString &title,
                                 bool richText)
{
    QFunction::ShowMessage(this, title, richText ? text : text.toHtmlEscaped(), QString(),
                           level == PROMPT_FAILURE ? PROMPT_FAILURE : PROMPT_HINT_STYLE, false);
}

void WorkbenchWindow::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        setWindowTitle(workbenchText("lang_workbench_title"));
    }
    QMainWindow::changeEvent(event);
}

void WorkbenchWindow::closeEvent(QCloseEvent *event)
{
    // Each leaves the map as it closes; a session may be on the stack, so none is deleted here.
    const QList<CameraSession *> sessions = m_sessions.values();
    for (CameraSession *camera : sessions) {
        camera->close();
    }
    QMainWindow::closeEvent(event);
}
