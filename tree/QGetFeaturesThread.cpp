#include "tree/QGetFeaturesThread.h"

#include "model/CTreeItemValue.h"
#include "model/VexaPropertyTreeItem.h"
#include "tree/FeatureUpdate.h"

#include <QCoreApplication>
#include <QDebug>
#include <QMutexLocker>

QGetFeaturesThread::QGetFeaturesThread(QObject *parent)
    : QThread(parent)
    , m_pFacts(std::make_unique<NodeFactsTable>(ElementMap()))
{
}

QGetFeaturesThread::~QGetFeaturesThread()
{
    RequestStop();
    waitForEnd();
}

void QGetFeaturesThread::SetThreadData(long int cameraId, const ElementMap &elements,
                                       const ItemMap &items, const PollingTable &pollingTable)
{
    m_nOwnEnds = 0;
    m_lCameraID = cameraId;
    m_lWorkingCameraID = cameraId;
    m_pFacts = std::make_unique<NodeFactsTable>(elements);
    m_items = items;
    m_pollingTable = pollingTable;
}

bool QGetFeaturesThread::SetUpdateInfo(_FEATURES_UPDATE_TYPE_ type, const QStringList &nodes,
                                       int status)
{
    if (!CanRestart(type)) {
        return false;
    }
    {
        const QMutexLocker locker(&m_listMutex);
        m_workList = nodes;
    }
    m_nUpdateType = type;
    m_nUpdateStatus = status;
    m_bRepeat = false;
    m_bRunEnded = false;
    return true;
}

bool QGetFeaturesThread::IsBusy() const
{
    return isRunning() && !m_bRunEnded;
}

bool QGetFeaturesThread::CanRestart(_FEATURES_UPDATE_TYPE_ newType)
{
    if (m_bStop) {
        return false;
    }
    if (!IsBusy()) {
        wait();
        return true;
    }
    const _FEATURES_UPDATE_TYPE_ running = m_nUpdateType;
    if (running == FEATURES_UPDATE_ALL
        && (newType == FEATURES_UPDATE_ALL || newType == FEATURES_UPDATE_POLLING)) {
        return false;
    }
    if (running == FEATURES_UPDATE_POLLING && newType == FEATURES_UPDATE_POLLING) {
        return false;
    }
    const bool replaced = running == FEATURES_UPDATE_POLLING
        || (newType == running
            && (running == FEATURES_UPDATE_INVALIDATOR
                || running == FEATURES_UPDATE_TLPARAMSLOCKED));
    if (replaced) {
        RequestStop();
    }
    waitForEnd();
    m_bStop = false;
    m_lWorkingCameraID = m_lCameraID;
    return true;
}

void QGetFeaturesThread::SetRepeatUpdate(bool repeat)
{
    const QMutexLocker locker(&m_wakeMutex);
    m_bRepeat = repeat;
    m_wake.wakeAll();
}

_FEATURES_UPDATE_TYPE_ QGetFeaturesThread::GetUpdateType() const
{
    return m_nUpdateType;
}

void QGetFeaturesThread::RequestStop()
{
    const QMutexLocker locker(&m_wakeMutex);
    m_bStop = true;
    m_lWorkingCameraID = -1;
    m_wake.wakeAll();
}

void QGetFeaturesThread::SetStopThread(bool stop, bool force)
{
    if (!stop) {
        m_bStop = false;
        m_lWorkingCameraID = m_lCameraID;
        return;
    }
    if (force) {
        RequestStop();
    }
    waitForEnd();
}

void QGetFeaturesThread::waitForEnd()
{
    quit();
    wait();
    while (isRunning()) {
        QCoreApplication::processEvents();
    }
}

void QGetFeaturesThread::UpdateThreadInfo(const QStringList &names)
{
    qInfo().noquote() << QStringLiteral("QGetFeaturesThread::UpdateThreadInfo (")
            + names.join(QStringLiteral(", ")) + QLatin1Char(')');
    const QMutexLocker locker(&m_listMutex);
    m_workList = names + m_workList;
}

void QGetFeaturesThread::UpdateFeature(VexaPropertyTreeItem *item, UpdateStatusFlags status)
{
    constexpr int MAX_TURNS = 3;
    QString nodeName;
    QVariant integer;
    bool isCrossed = true;
    for (int turn = 0; turn < MAX_TURNS && isCrossed; ++turn) {
        FeatureUpdate update({m_lWorkingCameraID, *m_pFacts, m_items}, item, status);
        update.run();
        isCrossed = update.wasCrossed();
        nodeName = update.nodeName();
        integer = m_bSmartTuneHeard ? update.readInteger() : QVariant();
    }
    if (integer.isValid()) {
        emit SigThreadSmarTuneData(nodeName, integer);
    }
}

void QGetFeaturesThread::SetSmartTuneHeard(bool heard)
{
    m_bSmartTuneHeard = heard;
}

bool QGetFeaturesThread::TakeOwnEnd()
{
    const bool isOwn = m_nOwnEnds > 0;
    m_nOwnEnds -= isOwn ? 1 : 0;
    return isOwn;
}
