#include "tests/tree/WriteFixture.h"

#include "ControlKit/CustomMessageBox.h"
#include "ShellServicesModule/QFunction.h"
#include "ShellServicesModule/QVexaEventBus.h"
#include "host/translations/Translations.h"
#include "model/CTreeItemValue.h"
#include "model/VexaPropertyTreeItem.h"
#include "view/VexaFeatureTreeView.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QMutex>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTimer>
#include <QtTest>

namespace {

QMutex s_logMutex;
QStringList s_log;
QtMessageHandler s_nextHandler = nullptr;

void keepLine(QtMsgType type, const QMessageLogContext &context, const QString &line)
{
    static const QRegularExpression interesting(QStringLiteral(
        "^(NodeName:|errCodeStr|strFtpEnable|strTestImageInfo|afterSetFeatureValue|"
        "PollingParam changed|SetSmtTuneNode|UpdateFeatures type [01]|"
        "QGetFeaturesThread::UpdateThreadInfo|ready for delete|VexaFeatureTree::Show)"));
    if (interesting.match(line).hasMatch()) {
        const QMutexLocker locker(&s_logMutex);
        s_log.append((type == QtCriticalMsg ? QStringLiteral("critical ") : QStringLiteral("info "))
                     + line.trimmed());
    } else if (type != QtInfoMsg && type != QtDebugMsg && type != QtCriticalMsg) {
        s_nextHandler(type, context, line);
    }
}

} // namespace

WriteFixture::WriteFixture(const QString &deviceId)
{
    installLanguage(*qApp, QStringLiteral("ENG"));
    m_camera = m_module.open(SimulatedDevices::builtIn(deviceId));
    ModuleFixture::waitForFirstUpdate(m_camera);
    s_nextHandler = qInstallMessageHandler(keepLine);
    qApp->installEventFilter(this);
    VexaListenTools::instance()->addListener(this, PRIORITY_LEVEL_2);
    const QMetaObject &bus = QVexaEventBus::staticMetaObject;
    for (int i = bus.methodOffset(); i < bus.methodCount(); ++i) {
        m_busSpies.push_back(
            std::make_unique<QSignalSpy>(QVexaEventBus::Instance(), bus.method(i)));
        m_busSpies.back()->setObjectName(QString::fromLatin1(bus.method(i).name()));
    }
    connect(QFunction::Instance(), &QFunction::promptRequested, this,
            [this](long int, int level, const QString &text, const QString &title, bool) {
                m_heard.append(QStringLiteral("prompt %1 ").arg(level) + title + QLatin1Char('|')
                               + text);
            });
    connect(QFunction::Instance(), &QFunction::messageLogged, this,
            [this](int, const QString &, const QString &text) {
                m_heard.append(QStringLiteral("message ") + text);
            });
    takeHeard();
    control().setLogging(true);
    control().clearAccessLog();
}

WriteFixture::~WriteFixture()
{
    VexaListenTools::instance()->removeListener(this);
    QFunction::Instance()->disconnect(this);
    qApp->removeEventFilter(this);
    if (m_module.mainWidget().isFeatureTreeExist(m_camera.id)) {
        m_module.close(m_camera);
    }
    qInstallMessageHandler(s_nextHandler);
}

VexaPropertyTreeItem *WriteFixture::item(const QString &name)
{
    VexaPropertyTreeItem *found = tree().propertyItemByName(name);
    if (!found) {
        qWarning().noquote() << "no item" << name;
    }
    return found;
}

bool WriteFixture::write(const QString &name, const QVariant &value)
{
    const VexaPropertyTreeItem *row = item(name);
    return row && tree().setFeatureValue(row->tagName(), name, value);
}

bool WriteFixture::edit(const QString &name, const QVariant &value)
{
    VexaFeatureTreeView *view = tree().treeView();
    return view->model()->setData(view->indexOfItem(item(name), 1), value, Qt::EditRole);
}

bool WriteFixture::setOnDevice(const QString &name, const QVariant &value)
{
    const QString tag = item(name)->tagName();
    if (tag == QLatin1String("Command")) {
        return task().ExecuteCommand(name, nullptr);
    }
    if (tag == QLatin1String("StringReg")) {
        return task().SetStringValue(name, value.toString(), nullptr);
    }
    if (tag == QLatin1String("Float")) {
        return task().SetFloatValue(name, value.toFloat(), nullptr);
    }
    return task().SetIntegerValue(name, value.toLongLong(), nullptr);
}

QVariant WriteFixture::onDevice(const QString &name)
{
    const QString tag = item(name)->tagName();
    if (tag == QLatin1String("StringReg")) {
        QString text;
        return task().GetStringValue(name, &text, nullptr, nullptr, true, false) ? text
                                                                                 : QVariant();
    }
    if (tag == QLatin1String("Float")) {
        _NODE_FLOAT_VALUE_ record{};
        return task().GetFloatValue(name, &record, nullptr, true, false) ? record.value
                                                                         : QVariant();
    }
    _NODE_INT_VALUE_ record{};
    return task().GetIntegerValue(name, &record, nullptr, true, false) ? record.value : QVariant();
}

QVariant WriteFixture::inRow(const QString &name)
{
    const QVariant value = item(name)->valueSnapshot()->value();
    return value.type() == QVariant::Bool ? QVariant(value.toInt()) : value;
}

QString WriteFixture::readable(const QString &text) const
{
    QString line = text;
    line.replace(QStringLiteral("CameraID:%1").arg(m_camera.id), QStringLiteral("CameraID:#"));
    return line.replace(QLatin1String("\r\n"), QLatin1String("/"));
}

QStringList WriteFixture::takeHeard()
{
    for (const std::unique_ptr<QSignalSpy> &spy : m_busSpies) {
        for (const QList<QVariant> &arguments : qAsConst(*spy)) {
            QString line = QStringLiteral("bus ") + spy->objectName();
            for (const QVariant &argument : arguments) {
                const QString text = argument.toString();
                line += QLatin1Char(' ')
                    + (text == QString::number(m_camera.id) ? QStringLiteral("#") : text);
            }
            m_heard.append(line);
        }
        spy->clear();
    }
    {
        const QMutexLocker locker(&s_logMutex);
        m_heard += s_log;
        s_log.clear();
    }
    QCameraTask *cameraTask = taskOf(m_camera);
    const QString remark = cameraTask ? cameraTask->GetLastErrorRemark() : QString();
    QStringList lines;
    for (const char *kind : {"box", "prompt", "message", "bus", "listen", "info", "critical"}) {
        for (const QString &line : qAsConst(m_heard)) {
            if (line.startsWith(QLatin1String(kind) + QLatin1Char(' '))) {
                QString shown = readable(line);
                if (!remark.isEmpty()) {
                    shown.replace(remark, QStringLiteral("@"));
                }
                lines.append(shown);
            }
        }
    }
    m_heard.clear();
    return lines;
}

void WriteFixture::notify(int event, void *data)
{
    const QString text = event == VEXA_EVENT_TEST_STATE ? *static_cast<QString *>(data)
        : *static_cast<long int *>(data) == m_camera.id ? QStringLiteral("#")
                                                        : QStringLiteral("other camera");
    m_heard.append(QStringLiteral("listen %1 %2").arg(event).arg(text));
}

bool WriteFixture::eventFilter(QObject *watched, QEvent *event)
{
    auto *box = event->type() == QEvent::Show ? qobject_cast<CustomMessageBox *>(watched) : nullptr;
    if (box) {
        m_heard.append(QStringLiteral("box ") + box->cTextTitle() + QLatin1Char('|')
                       + box->cContent());
        QTimer::singleShot(0, box, [this, box] {
            if (m_whileBoxIsUp) {
                const std::function<void()> act = std::move(m_whileBoxIsUp);
                m_whileBoxIsUp = nullptr;
                const QPointer<CustomMessageBox> guard = box;
                act();
                if (!guard) {
                    return;
                }
            }
            m_bAnswersYes ? box->accept() : box->reject();
        });
    }
    return QObject::eventFilter(watched, event);
}
