#include "host/workbench/WorkbenchWindow.h"

#include "ControlKit/CustomMessageBox.h"
#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "ShellServicesModule/QFunction.h"
#include "ShellServicesModule/QLocalCfg.h"
#include "UtilityKit/VexaInterface.h"
#include "host/devicetask/CameraHost.h"
#include "host/devicetask/RealDevices.h"
#include "host/shellservices/ShellHost.h"
#include "host/translations/Translations.h"
#include "host/utilitykit/UtilityHost.h"
#include "host/workbench/CameraPage.h"
#include "host/workbench/CameraSession.h"
#include "host/workbench/CameraViews.h"
#include "host/workbench/DeviceCatalog.h"
#include "host/workbench/DeviceListPanel.h"
#include "host/workbench/DeviceStateBanner.h"
#include "host/workbench/ExportStaging.h"
#include "host/workbench/HostEvents.h"
#include "host/workbench/LowerPanes.h"
#include "host/workbench/MessageLogPanel.h"
#include "host/workbench/ReaderTables.h"
#include "host/workbench/WorkbenchTexts.h"
#include "shell/VexaMainFeatureWidget.h"
#include "tree/VexaFeatureTree.h"

#include <QApplication>
#include <QCloseEvent>
#include <QIcon>
#include <QPointer>
#include <QSplitter>
#include <QTabBar>
#include <QTextDocument>
#include <QVBoxLayout>

namespace {

constexpr QSize WINDOW_SIZE{1280, 800};
constexpr int DEVICES_WIDTH = 350;
constexpr int MESSAGES_HEIGHT = 130;
constexpr int PROMPT_HINT_STYLE = 2;
constexpr int PROMPT_FAILURE = 3;

/// What the list and the bar over the tree say of a session's state.
struct StateRow
{
    CameraSession::State state;
    DeviceListPanel::DeviceState shown;
    DeviceStateBanner::Trouble trouble;
};

const StateRow &rowOf(CameraSession::State state)
{
    using State = CameraSession::State;
    using Shown = DeviceListPanel::DeviceState;
    using Trouble = DeviceStateBanner::Trouble;
    static const StateRow TABLE[] = {
        {State::Closed, Shown::Available, Trouble::None},
        {State::Opening, Shown::Opening, Trouble::None},
        {State::Open, Shown::Open, Trouble::None},
        {State::Starting, Shown::Starting, Trouble::None},
        {State::Grabbing, Shown::Grabbing, Trouble::None},
        {State::Stopping, Shown::Stopping, Trouble::None},
        {State::ReadOnly, Shown::ReadOnly, Trouble::ReadOnly},
        {State::NotResponding, Shown::NotResponding, Trouble::NotResponding},
        {State::Lost, Shown::Lost, Trouble::Lost},
        {State::Gone, Shown::Gone, Trouble::Gone}};
    for (const StateRow &row : TABLE) {
        if (row.state == state) {
            return row;
        }
    }
    return TABLE[0];
}

DeviceListPanel::DeviceGroup groupOf(const DeviceCatalog::Device &device)
{
    using Group = DeviceListPanel::DeviceGroup;
    if (device.control) {
        return Group::Simulated;
    }
    return device.source->deviceType == DEVICE_TYPE_U3V ? Group::Usb3 : Group::Gige;
}

} // namespace

WorkbenchWindow::WorkbenchWindow(CameraHost &host, DeviceCatalog &catalog, QWidget *parent)
    : QMainWindow(parent)
    , m_host(host)
    , m_catalog(catalog)
{
    setObjectName(QStringLiteral("WorkbenchWindow"));
    ShellHost::instance()->setMainWindow(this);
    // Before anything is laid out: the widths are those of the words.
    installWorkbenchTexts(VexaInterface::language(false));
    setWindowIcon(QIcon(QStringLiteral(":/workbench/workbench.svg")));
    layOut();
    connectLog();
    connectEvents();
    connectPanel();
    setSearch(&RealDevices::discover);
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
    m_pDevices = new DeviceListPanel;
    m_pBanner = new DeviceStateBanner;
    m_pLower = new LowerPanes;
    auto *upper = new QSplitter(Qt::Horizontal);
    upper->setChildrenCollapsible(false);
    upper->addWidget(m_pDevices);
    auto *middle = new QWidget;
    auto *column = new QVBoxLayout(middle);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_pBanner);
    m_pViews = new CameraViews(VexaMainFeatureWidget::instance(middle), middle);
    column->addWidget(m_pViews, 1);
    upper->addWidget(middle);
    upper->setStretchFactor(0, 0);
    upper->setStretchFactor(1, 1);
    auto *whole = new QSplitter(Qt::Vertical, this);
    whole->setChildrenCollapsible(false);
    whole->addWidget(upper);
    whole->addWidget(m_pLower);
    whole->setStretchFactor(0, 1);
    whole->setStretchFactor(1, 0);
    setCentralWidget(whole);
    resize(WINDOW_SIZE);
    upper->setSizes({DEVICES_WIDTH, WINDOW_SIZE.width() - DEVICES_WIDTH});
    whole->setSizes({WINDOW_SIZE.height() - MESSAGES_HEIGHT, MESSAGES_HEIGHT});
    connect(m_pLower, &LowerPanes::heightWanted, whole, [whole](int height) {
        whole->setSizes({whole->height() - height, height});
    });
}

void WorkbenchWindow::fillDeviceList()
{
    for (const DeviceCatalog::Device &device : m_catalog.devices()) {
        enterInList(device.id);
    }
}

void WorkbenchWindow::enterInList(const QString &id)
{
    const DeviceCatalog::Device *device = m_catalog.find(id);
    m_pDevices->addDevice(groupOf(*device), id,
                          DeviceCatalog::transportName(device->source->deviceType),
                          device->source->model);
}

void WorkbenchWindow::setSearch(std::function<DeviceSearch::Found()> look)
{
    delete m_pSearch;
    m_pSearch = new DeviceSearch(std::move(look), this);
    connect(m_pSearch, &DeviceSearch::finished, this, &WorkbenchWindow::enterFound);
}

void WorkbenchWindow::enterFound(const DeviceSearch::Found &devices)
{
    int added = 0;
    for (const std::shared_ptr<DeviceSource> &source : devices) {
        const QString id = m_catalog.addFound(source);
        if (!id.isEmpty()) {
            enterInList(id);
            ++added;
        }
    }
    m_pDevices->setSearching(false);
    QFunction::Instance()->InsertMessageLog(
        MESSAGE_LOG_INFO, QString(),
        loggedText("lang_workbench_found",
                   {QString::number(devices.size()), QString::number(added)}));
}

void WorkbenchWindow::connectPanel()
{
    connect(m_pDevices, &DeviceListPanel::openRequested, this, &WorkbenchWindow::openDevice);
    connect(m_pDevices, &DeviceListPanel::closeRequested, this, &WorkbenchWindow::requestClose);
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
    connect(m_pDevices, &DeviceListPanel::discoverRequested, this, [this] {
        m_pDevices->setSearching(true);
        m_pSearch->start();
    });
}

void WorkbenchWindow::connectLog()
{
    auto *staging = new ExportStaging(this);
    connect(QFunction::Instance(), &QFunction::messageLogged, staging,
            [this, staging](int level, const QString &camera, const QString &text) {
                m_pLower->messages()->addMessage(level, camera, staging->withTargets(text));
            });
    connect(QFunction::Instance(), &QFunction::promptRequested, this, &WorkbenchWindow::takePrompt);
}

void WorkbenchWindow::connectEvents()
{
    auto *events = new HostEvents(this);
    connect(events, &HostEvents::camerasChanged, this, &WorkbenchWindow::updateNames);
    connect(events, &HostEvents::parametersLoaded, this, [this](long int cameraId) {
        if (VexaFeatureTree *tree = CameraPage::tree(cameraId)) {
            tree->OnBtnRefresh();
        }
        for (CameraSession *camera : qAsConst(m_sessions)) {
            if (camera->cameraId() == cameraId && camera->tables()) {
                camera->tables()->readAgain();
            }
        }
    });
}

void WorkbenchWindow::updateNames()
{
    const QStringList modified = ShellHost::instance()->modifiedCameras();
    for (auto it = m_sessions.cbegin(); it != m_sessions.cend(); ++it) {
        const CameraSession *camera = it.value();
        const bool open = camera->cameraId() != NO_CAMERA_ID;
        const QString name = open ? camera->displayName() : QString();
        m_pDevices->setDeviceName(it.key(), name, open && modified.contains(name));
    }
}

CameraSession *WorkbenchWindow::session(const QString &id) const
{
    return m_sessions.value(id, nullptr);
}

void WorkbenchWindow::openDevice(const QString &id)
{
    const DeviceCatalog::Device *device = m_catalog.find(id);
    if (CameraSession *former = session(id)) {
        if (former->state() != CameraSession::State::Gone) {
            return;
        }
        m_sessions.remove(id);
        former->deleteWhenIdle();
    }
    if (!device) {
        return;
    }
    auto *camera = new CameraSession(m_host, device->source, this);
    camera->setReturnTime(m_returnTime);
    m_sessions.insert(id, camera);
    connect(camera, &CameraSession::stateChanged, this,
            [this, id, camera] { onSessionChanged(id, camera); });
    connect(camera, &CameraSession::openFailed, this,
            [this, id](const QString &error) { emit deviceOpenFailed(id, error); });
    connect(camera, &CameraSession::firstUpdateDone, this, [this, id] {
        showSelected();
        emit deviceUpdated(id);
    });
    connect(camera, &CameraSession::tablesChanged, this, &WorkbenchWindow::showSelected);
    connect(camera, &CameraSession::lost, this, [this, id] { emit deviceLost(id); });
    camera->open();
}

void WorkbenchWindow::closeDevice(const QString &id)
{
    if (CameraSession *camera = session(id)) {
        camera->close();
    }
}

void WorkbenchWindow::requestClose(const QString &id)
{
    const QPointer<CameraSession> camera = session(id);
    const QPointer<WorkbenchWindow> self = this;
    if (camera && mayClose({camera}) && self && camera) {
        camera->close();
    }
}

bool WorkbenchWindow::mayClose(const QList<CameraSession *> &sessions)
{
    const QStringList modified = ShellHost::instance()->modifiedCameras();
    QStringList names;
    for (const CameraSession *camera : sessions) {
        if (camera->cameraId() != NO_CAMERA_ID && modified.contains(camera->displayName())) {
            names += camera->displayName();
        }
    }
    names.removeDuplicates();
    const QString question =
        workbenchText("lang_workbench_askclose").arg(names.join(QStringLiteral(", ")));
    return names.isEmpty()
        || CustomMessageBox::ask(this, Qt::convertFromPlainText(question, Qt::WhiteSpaceNormal),
                                 workbenchText("lang_workbench_askclose_title"))
        == 1;
}

void WorkbenchWindow::onSessionChanged(const QString &id, CameraSession *camera)
{
    if (session(id) != camera) {
        return;
    }
    const CameraSession::State state = camera->state();
    if (state == CameraSession::State::Closed) {
        m_sessions.remove(id);
        camera->deleteWhenIdle();
    }
    m_pDevices->setDeviceState(id, rowOf(state).shown);
    if (camera->cameraId() == NO_CAMERA_ID) {
        m_pDevices->setDeviceName(id, QString(), false);
    }
    updateNames();
    // An opening puts its own camera on show, and a closing the empty page: the selection decides.
    showSelected();
}

void WorkbenchWindow::showSelected()
{
    CameraSession *camera = session(m_pDevices->currentDevice());
    const bool open = camera && camera->cameraId() != NO_CAMERA_ID;
    if (open) {
        camera->show();
    } else {
        CameraPage::show(NO_CAMERA_ID);
    }
    m_pViews->setCamera(open ? camera : nullptr);
    showTrouble(camera);
    m_pLower->setTables(camera ? camera->tables() : nullptr);
    orderFocus();
}

void WorkbenchWindow::orderFocus()
{
    // The pages are made later than what stands below them.
    QWidget *last = m_pDevices;
    do {
        last = last->previousInFocusChain();
    } while (last->focusPolicy() == Qt::NoFocus || last->focusProxy());
    QList<QWidget *> panes{m_pLower->tabBar()};
    panes += m_pLower->currentWidget()->findChildren<QWidget *>();
    for (QWidget *pane : qAsConst(panes)) {
        if (pane != last && (pane->focusPolicy() & Qt::TabFocus)) {
            setTabOrder(last, pane);
            last = pane;
        }
    }
}

void WorkbenchWindow::showTrouble(const CameraSession *camera)
{
    m_pBanner->setTrouble(
        camera ? rowOf(camera->state()).trouble : DeviceStateBanner::Trouble::None,
        camera ? camera->since() : QDateTime(), camera ? camera->returnTime() : m_returnTime);
}

void WorkbenchWindow::setLanguage(const QString &language)
{
    UtilityHost::setLanguage(language);
    // The node texts first: the change of the translators then refreshes every open tree with them.
    VexaMainFeatureWidget::instance()->UpDateAllLange();
    installLanguage(*QCoreApplication::instance(), language);
    installWorkbenchTexts(language);
    for (CameraSession *camera : qAsConst(m_sessions)) {
        if (camera->tables()) {
            camera->tables()->retranslate();
        }
    }
    m_pDevices->setLanguage(language);
}

void WorkbenchWindow::takePrompt(long int cameraId, int level, const QString &text,
                                 const QString &title, bool richText)
{
    QTaskManager *manager = QTaskManager::Instance();
    QCameraBasicTask *task = manager ? manager->GetTaskByIDEx(cameraId) : nullptr;
    const bool failure = level == PROMPT_FAILURE;
    QFunction::Instance()->InsertMessageLog(failure ? MESSAGE_LOG_ERROR : MESSAGE_LOG_INFO,
                                            task ? task->_GetCameraName() : QString(),
                                            messageLine(title, text, richText));
    const QString shown = richText ? text : Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal);
    // Behind the box that may go with it: never two at once, and the log has the text.
    QMetaObject::invokeMethod(
        this,
        [this, title, shown, failure] {
            if (!QApplication::activeModalWidget()) {
                QFunction::ShowMessage(this, title, shown, QString(),
                                       failure ? PROMPT_FAILURE : PROMPT_HINT_STYLE, false);
            }
        },
        Qt::QueuedConnection);
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
    const QPointer<WorkbenchWindow> self = this;
    if (!mayClose(m_sessions.values())) {
        event->ignore();
        return;
    }
    if (!self) {
        return;
    }
    // Each leaves the map as it closes; a session may be on the stack, so none is deleted here.
    QVector<QPointer<CameraSession>> sessions;
    for (CameraSession *camera : qAsConst(m_sessions)) {
        sessions += camera;
    }
    for (const QPointer<CameraSession> &camera : qAsConst(sessions)) {
        if (camera) {
            camera->close();
        }
    }
    if (!self) {
        return;
    }
    QMainWindow::closeEvent(event);
}
