// The four roles of a worker: what one run does.

#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "model/VexaPropertyTreeItem.h"
#include "tree/QGetFeaturesThread.h"

#include <QDebug>
#include <QElapsedTimer>
#include <QMutexLocker>

namespace {

constexpr int PARK_INTERVAL_MS = 50;
constexpr int POLLING_GRID_MS = 50;
constexpr int SHORTEST_PAUSE_MS = 2;
constexpr int POLLING_COUNTER_END = 10000;
constexpr int USER_SET_SAVE_PAUSE_MS = 5000;

const QString &dashLine()
{
    static const QString line = QStringLiteral("------------------------------------");
    return line;
}

void logRole(const char *text, int count)
{
    qInfo().noquote() << QString::fromLatin1(text) + dashLine() << count;
}

void logRole(const char *text)
{
    qInfo().noquote() << QString::fromLatin1(text);
}

} // namespace

void QGetFeaturesThread::run()
{
    const quintptr threadId = reinterpret_cast<quintptr>(QThread::currentThreadId());
    const _FEATURES_UPDATE_TYPE_ type = m_nUpdateType;
    qInfo().noquote() << QStringLiteral(" QGetFeaturesThread UpdateFeature tid = ")
            + QString::number(threadId) + QStringLiteral(" type = ") + QString::number(type);
    if (m_bStop) {
        m_bRunEnded = true;
        return;
    }
    qInfo("QGetFeaturesThread start run:[CameraID%ld]", m_lCameraID);
    emit sigThreadStart();
    static const struct
    {
        _FEATURES_UPDATE_TYPE_ type;
        void (QGetFeaturesThread::*role)();
    } roles[] = {
        {FEATURES_UPDATE_ALL, &QGetFeaturesThread::runAll},
        {FEATURES_UPDATE_INVALIDATOR, &QGetFeaturesThread::runInvalidator},
        {FEATURES_UPDATE_TLPARAMSLOCKED, &QGetFeaturesThread::runTLParamsLocked},
        {FEATURES_UPDATE_POLLING, &QGetFeaturesThread::runPolling},
    };
    for (const auto &row : roles) {
        if (row.type == type) {
            (this->*row.role)();
        }
    }
    m_nOwnEnds += m_bStop ? 0 : 1;
    m_bRunEnded = true;
    emit sigThreadEnd();
    qInfo("QGetFeaturesThread end run:[CameraID%ld] tid = 0x%llx", m_lCameraID,
          static_cast<unsigned long long>(threadId));
}

void QGetFeaturesThread::runAll()
{
    logRole(" QGetFeaturesThread::run all begin update ", m_items.size());
    for (VexaPropertyTreeItem *item : qAsConst(m_items)) {
        if (m_bStop) {
            break;
        }
        UpdateFeature(item, UpdateStatusFlags(m_nUpdateStatus.load()));
    }
    logRole(" QGetFeaturesThread::run all end update ", m_items.size());
}

void QGetFeaturesThread::runInvalidator()
{
    QStringList carried;
    while (!m_bStop) {
        int queued = 0;
        {
            const QMutexLocker locker(&m_listMutex);
            carried = m_workList + carried;
            m_workList.clear();
            queued = m_workList.size();
        }
        carried.removeDuplicates();
        QStringList processed;
        logRole(" QGetFeaturesThread::run INVALIDATOR begin update ", queued);
        emit SigUpdateRoundStart();
        while (!carried.isEmpty()) {
            if (m_bStop) {
                logRole(" QGetFeaturesThread::run INVALIDATOR end update1 ");
                break;
            }
            if (m_bRepeat) {
                logRole(" QGetFeaturesThread::run INVALIDATOR repeat update ");
                break;
            }
            // A name that the tree lacks leaves the list too, so that the round ends.
            const QString name = carried.takeFirst();
            if (VexaPropertyTreeItem *item = m_items.value(name)) {
                UpdateFeature(item, UpdateStatusFlags(m_nUpdateStatus.load()));
                processed.append(name);
            }
        }
        if (!m_bStop && processed.contains(QStringLiteral("UserSetSave"))) {
            QTaskManager *manager = QTaskManager::Instance();
            QCameraBasicTask *task = manager ? manager->GetTaskByIDEx(m_lWorkingCameraID) : nullptr;
            if (!task) {
                return;
            }
            if (task->_GetDevType() == DEVICE_TYPE_CL) {
                sleepUnlessWoken(USER_SET_SAVE_PAUSE_MS);
            }
        }
        emit SigUpdateRoundEnd();
        park();
        if (m_bRepeat) {
            logRole(" QGetFeaturesThread::run INVALIDATOR repeat update2 ");
            m_bRepeat = false;
        } else {
            logRole(" QGetFeaturesThread::run INVALIDATOR end update ");
        }
    }
}

void QGetFeaturesThread::runTLParamsLocked()
{
    QStringList names;
    {
        const QMutexLocker locker(&m_listMutex);
        names = m_workList;
    }
    while (!m_bStop) {
        logRole(" QGetFeaturesThread::run TLPARAMSLOCKED begin update ", names.size());
        emit SigUpdateRoundStart();
        for (const QString &name : qAsConst(names)) {
            if (m_bStop) {
                logRole(" QGetFeaturesThread::run TLPARAMSLOCKED end update1 ");
                break;
            }
            if (m_bRepeat) {
                logRole(" QGetFeaturesThread::run TLPARAMSLOCKED repeat update ");
                break;
            }
            if (VexaPropertyTreeItem *item = m_items.value(name)) {
                UpdateFeature(item, UpdateStatusFlags(m_nUpdateStatus.load()));
            }
        }
        emit SigUpdateRoundEnd();
        park();
        if (m_bRepeat) {
            logRole(" QGetFeaturesThread::run TLPARAMSLOCKED repeat update2 ");
            m_bRepeat = false;
        }
    }
    logRole(" QGetFeaturesThread::run TLPARAMSLOCKED end update ");
}

void QGetFeaturesThread::runPolling()
{
    logRole(" QGetFeaturesThread::run polloing begin update ", m_pollingTable.size());
    long long counter = 0;
    while (!m_bStop) {
        QElapsedTimer timer;
        timer.start();
        const long long elapsed = counter * POLLING_GRID_MS;
        for (auto row = m_pollingTable.constBegin(); row != m_pollingTable.constEnd() && !m_bStop;
             ++row) {
            const long long period = row.key();
            if (period <= 0 || elapsed < period || elapsed % period != 0) {
                continue;
            }
            for (const QString &name : row.value()) {
                if (m_bStop) {
                    break;
                }
                UpdateFeature(m_items.value(name), UpdateStatusFlags(m_nUpdateStatus.load()));
            }
        }
        counter = (counter + 1) % POLLING_COUNTER_END;
        const qint64 spent = timer.elapsed();
        sleepUnlessWoken(spent >= POLLING_GRID_MS ? SHORTEST_PAUSE_MS
                                                  : static_cast<int>(POLLING_GRID_MS - spent));
    }
    logRole(" QGetFeaturesThread::run polloing end update ", m_pollingTable.size());
}

void QGetFeaturesThread::sleepUnlessWoken(int milliseconds)
{
    const QDeadlineTimer deadline(milliseconds);
    QMutexLocker locker(&m_wakeMutex);
    while (!m_bStop && !deadline.hasExpired()) {
        m_wake.wait(&m_wakeMutex, deadline);
    }
}

void QGetFeaturesThread::park()
{
    QMutexLocker locker(&m_wakeMutex);
    while (!m_bRepeat && !m_bStop) {
        m_wake.wait(&m_wakeMutex, PARK_INTERVAL_MS);
    }
}
