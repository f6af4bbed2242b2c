#include "host/shellservices/ShellHost.h"

#include "host/shellservices/SettingsStore.h"
#include "host/utilitykit/UtilityHost.h"

#include <QCoreApplication>
#include <QMutex>
#include <QPointer>
#include <QWidget>

#include <atomic>
#include <deque>

class ShellHost::Private
{
public:
    std::atomic<long int> lCameraID{-1};
    std::atomic<bool> bCanSetProperty{true};
    std::atomic<int> nDrawingMode{0};
    QPointer<QWidget> pMainWindow;
    mutable QMutex mutex; ///< guards the two lists
    QStringList modified;
    std::deque<MessageLogEntry> history;
};

ShellHost::ShellHost()
    : d(std::make_unique<Private>())
{
}

ShellHost::~ShellHost() = default;

ShellHost *ShellHost::instance()
{
    static auto *const s_pInstance = [] {
        auto *pHost = new ShellHost;
        if (QCoreApplication::instance()) {
            pHost->moveToThread(QCoreApplication::instance()->thread());
        }
        return pHost;
    }();
    return s_pInstance;
}

bool ShellHost::useSettingsFile(const QString &path)
{
    return SettingsStore::instance().useFile(path);
}

void ShellHost::useTransientSettings()
{
    SettingsStore::instance().useTransient();
    UtilityHost::useTransientSettings(); // the client's language is kept there
}

void ShellHost::setCurrentCameraID(long int cameraId)
{
    d->lCameraID = cameraId;
}

long int ShellHost::currentCameraID() const
{
    return d->lCameraID;
}

void ShellHost::setMainWindow(QWidget *window)
{
    d->pMainWindow = window;
}

QWidget *ShellHost::mainWindow() const
{
    return d->pMainWindow;
}

void ShellHost::setCanSetProperty(bool allow)
{
    d->bCanSetProperty = allow;
}

bool ShellHost::isCanSetProperty() const
{
    return d->bCanSetProperty;
}

void ShellHost::setDrawingMode(int mode)
{
    d->nDrawingMode = mode;
}

int ShellHost::drawingMode() const
{
    return d->nDrawingMode;
}

QStringList ShellHost::modifiedCameras() const
{
    QMutexLocker lock(&d->mutex);
    return d->modified;
}

void ShellHost::addModifiedCamera(const QString &name)
{
    QMutexLocker lock(&d->mutex);
    if (name.isEmpty() || d->modified.contains(name)) {
        return;
    }
    d->modified.append(name);
    const QStringList names = d->modified;
    lock.unlock();
    emit modifiedCamerasChanged(names);
}

void ShellHost::removeModifiedCamera(const QString &name)
{
    QMutexLocker lock(&d->mutex);
    if (!d->modified.removeOne(name)) {
        return;
    }
    const QStringList names = d->modified;
    lock.unlock();
    emit modifiedCamerasChanged(names);
}

void ShellHost::renameModifiedCamera(const QString &oldName, const QString &newName)
{
    QMutexLocker lock(&d->mutex);
    const int nOld = d->modified.indexOf(oldName);
    if (nOld < 0 || newName.isEmpty() || newName == oldName) {
        return;
    }
    if (d->modified.contains(newName)) {
        d->modified.removeAt(nOld);
    } else {
        d->modified[nOld] = newName;
    }
    const QStringList names = d->modified;
    lock.unlock();
    emit modifiedCamerasChanged(names);
}

QVector<MessageLogEntry> ShellHost::messageHistory() const
{
    QMutexLocker lock(&d->mutex);
    return QVector<MessageLogEntry>(d->history.cbegin(), d->history.cend());
}

void ShellHost::appendMessage(const MessageLogEntry &entry)
{
    QMutexLocker lock(&d->mutex);
    d->history.push_back(entry);
    if (d->history.size() > kMessageHistoryLength) {
        d->history.pop_front();
    }
}
