// Before Qt's keywords: GLib has members of the same names.
// clang-format off
#include <arv.h>
// clang-format on

#include "WindowFixture.h"

#include "DeviceTaskModule/QTaskManager.h"
#include "host/controlkit/CustomStyle.h"
#include "host/devicetask/CameraHost.h"
#include "host/shellservices/ShellHost.h"
#include "host/utilitykit/UtilityHost.h"
#include "host/workbench/CameraSession.h"
#include "host/workbench/WorkbenchWindow.h"
#include "model/CTreeItemValue.h"
#include "model/VexaPropertyTreeItem.h"
#include "tree/VexaFeatureTree.h"

#include <QApplication>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QtTest>

WindowFixture::WindowFixture(const QStringList &models)
{
    static const bool s_hasLook = [] {
        CustomStyle::install(*qApp);
        return true;
    }();
    Q_UNUSED(s_hasLook)
    ShellHost::useTransientSettings();
    UtilityHost::useTransientSettings();
    QString error;
    for (const QString &model : models) {
        if (m_catalog.addBuiltIn(model, &error).isEmpty()) {
            qFatal("%s", qPrintable(error));
        }
    }
    for (const DeviceCatalog::Device &device : m_catalog.devices()) {
        // A transport cannot open a device that does not answer.
        const auto create = device.source->create;
        device.source->create = [create, isSilent = m_pIsSilent](GError **error) {
            return *isSilent ? static_cast<ArvDevice *>(nullptr) : create(error);
        };
    }
    m_pHost = std::make_unique<CameraHost>();
    m_pWindow = std::make_unique<WorkbenchWindow>(*m_pHost, m_catalog);
    m_pWindow->setLanguage(QStringLiteral("ENG"));
    QObject::connect(m_pWindow.get(), &WorkbenchWindow::deviceUpdated, m_pWindow.get(),
                     [this](const QString &id) { m_updated.insert(id); });
    m_pWindow->show();
}

WindowFixture::~WindowFixture()
{
    for (const DeviceCatalog::Device &device : m_catalog.devices()) {
        if (device.control) {
            device.control->unblock();
        }
    }
    m_pWindow.reset();
    m_pHost.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

QTreeWidget *WindowFixture::list() const
{
    return m_pWindow->findChild<QTreeWidget *>(QStringLiteral("DeviceList"));
}

QTreeWidgetItem *WindowFixture::item(const QString &id) const
{
    for (int row = 0; row < list()->topLevelItemCount(); ++row) {
        if (list()->topLevelItem(row)->data(0, Qt::UserRole).toString() == id) {
            return list()->topLevelItem(row);
        }
    }
    return nullptr;
}

CameraSession *WindowFixture::session(const QString &id) const
{
    return m_pWindow->session(id);
}

QString WindowFixture::stateText(const QString &id) const
{
    const QTreeWidgetItem *row = item(id);
    return row ? row->text(1) : QString();
}

bool WindowFixture::isEnabled(const char *button) const
{
    return m_pWindow->findChild<QPushButton *>(QLatin1String(button))->isEnabled();
}

QString WindowFixture::messages() const
{
    return m_pWindow->findChild<QPlainTextEdit *>(QStringLiteral("MessageLog"))->toPlainText();
}

QString WindowFixture::shown(const QString &id, const QString &feature) const
{
    const CameraSession *camera = session(id);
    const VexaFeatureTree *tree = camera ? camera->tree() : nullptr;
    const VexaPropertyTreeItem *row = tree ? tree->propertyItemByName(feature) : nullptr;
    return row ? row->valueSnapshot()->displayValue() : QString();
}

void WindowFixture::click(const char *button)
{
    QTest::mouseClick(m_pWindow->findChild<QPushButton *>(QLatin1String(button)), Qt::LeftButton);
}

void WindowFixture::select(const QString &id)
{
    QTest::mouseClick(list()->viewport(), Qt::LeftButton, Qt::NoModifier,
                      list()->visualItemRect(item(id)).center());
}

void WindowFixture::openAndWait(const QString &id)
{
    select(id);
    click("OpenButton");
    QTRY_VERIFY_WITH_TIMEOUT(isUpdated(id), LONG_WAIT);
}

void WindowFixture::silence(const QString &id)
{
    SimulatorControl &device = control(id);
    device.clearAccessLog();
    device.setLogging(true);
    session(id)->tree()->RefreshFeatures();
    QTRY_VERIFY_WITH_TIMEOUT(device.accessLog().size() > 20, LONG_WAIT);
    device.setLogging(false);
    // The device layer asks at address 0 whether the device is still there.
    m_silent = {0};
    for (const SimulatorAccess &access : device.accessLog()) {
        m_silent.insert(access.address);
    }
    for (const quint64 address : qAsConst(m_silent)) {
        device.setFailing(address, ARV_DEVICE_ERROR_TIMEOUT);
    }
    *m_pIsSilent = true;
    session(id)->tree()->RefreshFeatures();
}

void WindowFixture::answerAgain(const QString &id)
{
    *m_pIsSilent = false;
    for (const quint64 address : qAsConst(m_silent)) {
        control(id).setFailing(address, 0);
    }
}

void WindowFixture::unplug(const QString &id)
{
    control(id).vanish();
    control(id).loseControl();
}
