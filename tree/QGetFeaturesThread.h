#pragma once

#include <QDomElement>
#include <QMap>
#include <QMutex>
#include <QStringList>
#include <QThread>
#include <QVariant>
#include <QWaitCondition>

#include <atomic>
#include <memory>

class NodeFactsTable;
class VexaPropertyTreeItem;

/// The role of a run.
enum _FEATURES_UPDATE_TYPE_ {
    FEATURES_UPDATE_ALL = 0, ///< every item, one pass
    FEATURES_UPDATE_INVALIDATOR = 1, ///< the dependants of changed nodes, served until stopped
    FEATURES_UPDATE_TLPARAMSLOCKED = 2, ///< the nodes with a lock, one pass each time it is asked
    FEATURES_UPDATE_POLLING = 3 ///< the polling table, a paced loop until stopped
};

/// A worker that reads features of one camera and fills their items. Four of them serve a tree, each in one role.
/// Set-up and the flags belong to the GUI thread; UpdateFeature may run on any thread.
class QGetFeaturesThread : public QThread
{
    Q_OBJECT
public:
    /// What one update of a node is to do.
    enum UpdateStatus {
        UPDATE_VALUE = 1, ///< read the value whether or not the item is visible
        UPDATE_VISIBLE_VALUE = 2, ///< read the value only when the item is visible
        UPDATE_VISIBILITY = 4, ///< recompute implemented, availability and visibility
        UPDATE_ACCESS = 8 ///< recompute read-only state, representation and tool tips
    };
    Q_DECLARE_FLAGS(UpdateStatusFlags, UpdateStatus)
    /// Everything, hidden items too.
    static constexpr int UPDATE_EVERYTHING = UPDATE_VALUE | UPDATE_VISIBILITY | UPDATE_ACCESS;
    /// A refresh that spares hidden items.
    static constexpr int UPDATE_REFRESH = UPDATE_VISIBLE_VALUE | UPDATE_VISIBILITY | UPDATE_ACCESS;

    using ElementMap = QMap<QString, QDomElement>;
    using ItemMap = QMap<QString, VexaPropertyTreeItem *>;
    using PollingTable = QMap<long long, QStringList>; ///< period in milliseconds to node names

    explicit QGetFeaturesThread(QObject *parent = nullptr);
    ~QGetFeaturesThread() override;

    /// Camera and maps of this opening. The worker must not run.
    void SetThreadData(long int cameraId, const ElementMap &elements, const ItemMap &items,
                       const PollingTable &pollingTable);
    /// Prepares the next run; false, with nothing changed, when CanRestart refuses.
    bool SetUpdateInfo(_FEATURES_UPDATE_TYPE_ type, const QStringList &nodes, int status);
    /// Whether a run of this type may follow the one under way; ends that one where the new one replaces it.
    bool CanRestart(_FEATURES_UPDATE_TYPE_ newType);
    void SetRepeatUpdate(bool repeat);
    /// Whether a run is under way or about to begin; false from its sigThreadEnd on, when the thread itself may still
    /// be about to finish.
    bool IsBusy() const;
    _FEATURES_UPDATE_TYPE_ GetUpdateType() const;
    /// Raises the stop flag and wakes the worker without waiting for it.
    void RequestStop();
    /// `stop` true: waits for the end of the run, which `force` makes come at once. False: makes the worker ready to
    /// run again.
    void SetStopThread(bool stop, bool force);
    /// Puts names in front of the work list of the invalidator. Any thread.
    void UpdateThreadInfo(const QStringList &names);
    /// One update of one node, on the caller's thread.
    void UpdateFeature(VexaPropertyTreeItem *item, UpdateStatusFlags status);
    /// Whether SigThreadSmarTuneData is emitted. It costs the GUI an event for each integer of a pass, so it rests
    /// while nobody listens. Any thread.
    void SetSmartTuneHeard(bool heard);
    /// To be called once for each sigThreadEnd: whether a run of this opening came to an end of its own, and not by a
    /// stop.
    bool TakeOwnEnd();

Q_SIGNALS:
    void sigThreadStart();
    void sigThreadEnd();
    void SigThreadSmarTuneData(QString strNodeName, QVariant oNodeValue);
    void SigUpdateRoundStart();
    void SigUpdateRoundEnd();

protected:
    void run() override;

private:
    void runAll();
    void runInvalidator();
    void runTLParamsLocked();
    void runPolling();
    /// Sleeps for `milliseconds`; only a stop ends it sooner.
    void sleepUnlessWoken(int milliseconds);
    /// Until the repeat or the stop flag is set.
    void park();
    void waitForEnd();

    std::atomic<bool> m_bStop{false};
    std::atomic<bool> m_bRepeat{false};
    std::atomic<bool> m_bRunEnded{true}; ///< the run has nothing left to do
    std::atomic<bool> m_bSmartTuneHeard{false};
    std::atomic<int> m_nUpdateStatus{UPDATE_REFRESH};
    std::atomic<long int> m_lWorkingCameraID{
        -1}; ///< -1 while a stop is forced: every look-up fails at once
    long int m_lCameraID = -1;
    std::atomic<_FEATURES_UPDATE_TYPE_> m_nUpdateType{FEATURES_UPDATE_ALL};
    ItemMap m_items;
    std::unique_ptr<NodeFactsTable> m_pFacts; ///< of the elements of this opening
    QStringList m_workList;
    QMutex m_listMutex;
    PollingTable m_pollingTable;
    QMutex m_wakeMutex;
    QWaitCondition m_wake;
    std::atomic<int> m_nOwnEnds{
        0}; ///< runs of this opening that no stop has ended and nobody has taken yet
};

Q_DECLARE_OPERATORS_FOR_FLAGS(QGetFeaturesThread::UpdateStatusFlags)
