#pragma once

#include "ShellServicesModule/VexaListenTools.h"
#include "model/FeatureFileValues.h"
#include "model/IVexaFeatureWidget.h"

#include <QDomDocument>
#include <QFuture>
#include <QModelIndex>
#include <QMutex>
#include <QPointer>
#include <QSet>
#include <QStringList>
#include <QVector>

#include <functional>
#include <memory>

class CustomLabel;
class CustomLineEdit;
class CustomMenu;
class CustomMessageBox;
class CustomPushButton;
class FeatureTreeBuilder;
class NodeDependencyMaps;
class QAction;
class QCameraTask;
class QGetFeaturesThread;
class QTextEdit;
class QTimer;
class VexaFeatureDiff;
class VexaFeatureImExThread;
class VexaFeatureObserverable;
class VexaFeatureToolBar;
class VexaPropertyComboBox;
struct CommandRule;

/// The feature tree of one camera: controller and page. It builds the item tree from the device description, keeps
/// it up to date with four workers and shows it. All operations belong to the GUI thread.
///
/// Boxes and loading dialogs run other events in the middle of an operation, so a tree can be removed from inside
/// one of its own calls; deleteWhenIdle waits for their end.
class FEATURETREEMODULE_API VexaFeatureTree : public IVexaFeatureWidget, public IVexaListen
{
    Q_OBJECT
public:
    /// -1 makes a page without a camera.
    explicit VexaFeatureTree(long int cameraId, QWidget *parent = nullptr);
    ~VexaFeatureTree() override;

    // Lifecycle.
    bool InitWidget();
    bool InitMenu();
    /// Builds the tree of the camera and starts its first full update. `accessMode` 2 is read only. Does nothing for
    /// a tree that has items or a camera without a task.
    void OnCameraOpen(unsigned int accessMode);
    /// Builds the tree anew after the camera was reconnected.
    void OnResartCameraOpen(unsigned int accessMode);
    /// Stops all work and clears the items; the tree has no camera afterwards.
    void OnCameraClose();
    /// Acquisition began or ended: the nodes that it locks are read again.
    void OnCameraStartShot();
    void OnCameraStopShot();
    void Release();
    /// From now on no message and no write; all workers stop.
    void readyForDelete();
    /// Stops the workers and waits for them, or makes them ready to run again.
    void StopThread(bool stop);
    /// Hides the tree and its dialogs at once and deletes it when none of its calls is on the stack any more.
    void deleteWhenIdle();

    // The page.
    void ClearTreeViewInfo();
    void RefreshWidgetInfo();
    void OnOptionsChanged();
    /// Refills the editors in the language of node texts.
    void notifyEditorUpdate();
    void setViewForbiddenUpdate(bool forbid);
    /// Does nothing.
    void UpdateCameraItemName();
    void UpdateToolBarBtn(int state, int cameraId, bool busy);
    /// A box that does not block; a new one replaces the old. Dropped while the tree goes away.
    void ShowMessage(QWidget *parent, const QString &first, const QString &second,
                     const QString &third, int hintStyle, bool openExternalLinks);
    /// Busy dialog for devices of type 8: "setting" or "updating" features.
    void ShowLoadingFeatures(bool show, bool setting);
    void ShowLoadingDlg(bool show, const QString &text);

    long int GetCurCameraID() const;
    QString GetCurCameraName() const;
    /// False on a tree that was opened read only.
    bool isCanEdit() const;
    /// Whether the first full update has ended.
    bool IsUpdateFeatureOnce() const;
    void SetIsUpdateFeatureOnce(bool once);
    void setMessageFalse(bool enable);
    void setTestRunning(bool running);
    void AddFeatureObserverable(VexaFeatureObserverable *observer);
    void RemoveFeatureObserverable(VexaFeatureObserverable *observer);

    // Items and the description.
    /// Null for an empty or unknown name.
    VexaPropertyTreeItem *propertyItemByName(const QString &name) const;
    /// All items by feature name, categories included.
    QMap<QString, VexaPropertyTreeItem *> AllTreeItemsMap() const;
    QMap<QString, VexaPropertyTreeItem *> favoriteItemsMap() const;
    /// Root of the item tree, null before the first opening.
    VexaPropertyTreeItem *rootItem() const;
    bool GetDomElementNode(const QString &name, QDomElement &out) const;
    void translatePropTree(VexaPropertyTreeItem *item);
    /// Whether the node changes by itself: `periodOut` is the first PollingTime on its pValue and pVariable chain, in
    /// milliseconds.
    bool IsPollingFeature(const QString &name, long long &periodOut) const;
    /// The entry that an Enumeration was last read at; false for a node that is none or has no row.
    bool enumerationValue(const QString &name, qint64 &valueOut) const;
    /// Features to read again after this one was written.
    QStringList GetFeatureInvalidatorList(const QString &name) const;

    // Updates.
    /// `status` holds flags of QGetFeaturesThread::UpdateStatus, `type` is one of _FEATURES_UPDATE_TYPE_.
    void UpdateFeatures(int type, const QStringList &nodes, int status);
    /// Nodes have changed on the device; they and their dependants are read again after 200 ms.
    void OnAddValueChangedNodes(const QList<QString> &names);
    void OnBtnRefresh();
    /// One update of one item on the caller's thread.
    void updateFeature(VexaPropertyTreeItem *item, int status);
    void getFeatureValueFromCamera(VexaPropertyTreeItem *item);
    /// Carries a write to one of the "Polling" parameters over to the host's table, into the set of parameters that
    /// "PollingParam" selects. GUI thread.
    void UpdatePollingValue(const QString &name, const QString &value);

    // Narrowing what is shown.
    /// Shows the description of a feature and selects its row.
    void JumpToFeature(QString &name);
    /// Does nothing: the rows follow the text of the search field as it is typed.
    void OnEditSearchTextChanged(const QString &text);

    // Favourites.
    /// Does nothing: favourites are not kept beyond a closing. Answers true.
    bool GenerateFavoritesItems();
    /// False for every name, as no favourite is ever stored.
    bool IsFavoritesItem(const QString &name) const;
    void notifyFavoriteFeatureChange();

    // Feature files and trigger.
    /// Compares a feature file with the device, shows the differences and writes the file into the device. `silent`
    /// false: the user chooses the file. True: `source` is its text, and SigEndImportFeature tells the end, but for a
    /// question answered with no. One import at a time: a silent call meanwhile gets SigEndImportFeature(false).
    void LoadCamFeatures(bool silent, const QString &source);
    /// Writes a feature file. `silent` false: the user chooses where. True: a record is added to the bag `path`, and
    /// SigEndExportFeature tells the end.
    void SaveCamFeatures(bool silent, const QString &path);
    /// Compares the text of a feature file with the device, and does nothing else: nothing is asked, shown or written,
    /// so the device may grab or be open read only. SigEndCheckFeature tells the end. False when another job is under
    /// way or there is no device.
    bool CheckCamFeatures(const QString &text);
    /// Of the last check. This and the next three tell of the job whose end was told last.
    FeatureDifferences featureDifferences() const;
    /// Features left out, values that are not whole, what an import wrote and what it could not.
    FeatureFileReport featureFileReport() const;
    /// FeatureFileResultCode of the last check or import.
    quint32 featureFileResult() const;
    /// Why the job failed, in the client's language; empty when it did not, and from the start of the next on.
    QString featureFileFailure() const;
    /// Of the job under way.
    FeatureFileProgress featureFileProgress() const;
    /// Whether a job runs or an import waits for an answer.
    bool isFeatureFileBusy() const;
    /// Runs "TriggerSoftware" every `intervalMs` milliseconds, or stops it.
    void SetAutoSoftwareTrig(bool start, unsigned int intervalMs);
    void OnTriggerModeChanged(int mode);
    void ShowSmartTune(const QString &strNode, const QVariant &oNodeValue);
    /// Runs this command, with its questions and what follows it.
    void StopSmartTune(const QString &name);

    // Writing. The device is asked on the caller's thread, which is the GUI thread; the refresh of the node and of all
    // that depends on it follows 200 ms after the last write.
    /// Writes one feature by the tag of its element: "Boolean", "Command", "Integer", "Enumeration", "Float" or
    /// "StringReg"; any other type fails. True when the device took the value, and when a rule of the node kept it
    /// from the device on purpose. A failure tells its reason in a box or a prompt.
    bool setFeatureValue(const QString &strNodeType, const QString &strNodeName,
                         const QVariant &oNodeValue) override;
    /// The same for an item. With `updateItem` the item takes the value over and its views are told.
    bool setFeatureValue(VexaPropertyTreeItem *item, const QVariant &value, bool updateItem,
                         bool fromUiJson);
    /// The typed writes: false without a camera, a task or a name, and when the device refused.
    bool OnBooleanNodeValueChanged(const QString &name, int value);
    bool OnIntegerNodeValueChanged(const QString &name, qint64 value);
    bool OnFloatNodeValueChanged(const QString &name, float value);
    bool OnEnumerationNodeValueChanged(const QString &name, int value);
    bool OnStringRegNodeValueChanged(const QString &name, const QString &value);
    /// Runs a command node, with its questions and what follows it; true when it ran.
    bool OnCommandNodeBtnClicked(const QString &name);
    /// Reads the value of one item from the device, on the caller's thread; the views are told even if that failed.
    bool rereadFeatureValue(VexaPropertyTreeItem *item, bool notifyView);
    /// A write for callers on other threads: it runs on the tree's thread, and its result is dropped.
    void SendSetFeatureValueSignal(const QString &strNodeType, const QString &strNodeName,
                                   const QVariant &oNodeValue);
    /// What the client does after a write that came from a view. True but when memory runs out.
    bool afterSetFeatureValue(const QString &strNodeName) override;
    void itemValueChanged(VexaPropertyTreeItem *pItem, bool bFromUiJson) override;
    void itemVisibleStateChanged(VexaPropertyTreeItem *pItem) override;
    void itemReadOnlyChanged(VexaPropertyTreeItem *pItem, bool bReadOnly) override;

    void removeCameraID(long lCameraID) override;
    bool isInitialized(long lCameraID) override;
    void notify(int event, void *data) override;

Q_SIGNALS:
    void SigHide();
    void SigFirstEndUpdateFeature(long int lCameraID);
    void SigEndExportFeature(bool bExportSuccess);
    void SigEndImportFeature(bool bExportSuccess);
    void SigToolBarBtnClicked(int nIndex);
    void SigExpandTree();
    void SigSetFeatureValueByThread(QString strNodeType, QString strNodeName, QVariant oNodeValue);
    void SigGetFeatureValueByThread(QString strNodeName, QVariant oNodeValue);
    void SigShowSmartTune(QString strNode, QVariant oNodeValue);
    void SigRefreshFeatures();
    /// featureDifferences and featureFileResult say what the check found; a file of another version is no failure.
    void SigEndCheckFeature(bool bSuccess);

public Q_SLOTS:
    /// A full update that spares hidden items.
    void RefreshFeatures();
    void OnChangeItem(const QModelIndex &index);

protected:
    void changeEvent(QEvent *event) override;
    void connectNotify(const QMetaMethod &signal) override;
    void disconnectNotify(const QMetaMethod &signal) override;

private Q_SLOTS:
    void OnGetThreadStart();
    void OnGetThreadEnd();
    void OnUpdateRoundStart();
    void OnUpdateRoundEnd();
    void OnTimeInvalidaterFeaturesUpdate();
    void OnTimerRefreshFinished();
    void OnTimerAutoTrigger();
    void OnTimerFeaturePolling();
    void OnUserLevelChanged(int row);
    void OnFeaturesSearch(const QString &text);
    void OnBtnSearch();
    void OnReturnClicked();
    void OnTreeFeaturesCustomContextMenuRequested(const QPoint &pos);
    void OnActionFavoriteAdd();
    void OnActionFavoriteRemove();
    void OnActionFavoriteRemoveAll();
    void GetFeatureValueByThread(QString strNodeName, QVariant oNodeValue);
    void SetFeatureValueByThread(QString strNodeType, QString strNodeName, QVariant oNodeValue);
    void OnEndFeatureImExThread(int operation, bool success);

private:
    friend class TreeCallScope;
    friend class tst_favourites; ///< nothing else calls the operations of favourites yet
    bool InitCtrl();
    void InitStyleSheet();
    bool InitLayout();
    /// Tab goes through the page as it is read.
    void orderFocus();
    bool InitSignals();
    QWidget *makeDescriptionColumn();

    struct FeatureFileSession;
    void makeFeatureFileThread();
    void stopFeatureFileJob();
    /// The part of StopThread that stops what keeps the rows up to date.
    void stopUpdates(bool stop);
    /// True when no job runs any more; a call that is not silent does not wait but says so.
    bool waitForFeatureFileJob(bool silent);
    void startFeatureFileJob(unsigned int operation, const QString &path, const char *loadingKey);
    bool mayImport(bool silent);
    void endExport(bool success);
    void showSaveHint();
    void endImport(bool success);
    void endCheck(int operation);
    void endCheckOnly(bool success);
    void goOnWithImport(int operation);
    void logExport();
    void logImport();
    void logFeatureFile(int level, const QStringList &lines);
    void updateToolBarForJob(bool busy);
    /// Of the job that failed or is being stopped.
    QString failureText(bool isExport) const;
    void refreshAfterFeatureFile();

    QCameraTask *cameraTask() const;
    bool startInvalidateTimer();
    void appendPending(const QString &name);
    bool writeFeature(const QString &type, const QString &name, const QVariant &value);
    bool mayRunCommand(const CommandRule &rule);
    bool commandFailed(const QString &name, QCameraTask &task, int error);
    bool letDeviceGo();
    bool isPollingOn(QCameraTask &task) const;
    bool swallowForPolling(const QString &name);
    bool enumerationFailed(const QString &name, int value, int error);
    enum Box { BOX_QUESTION, BOX_CAUTION, BOX_WARNING };
    /// A box that blocks; true for a yes. While it is up there is no other box of this tree: a second one answers
    /// false at once, and a message waits until it is gone.
    bool confirmed(Box box, const QString &text, const QString &title = QString());
    /// Answers false, as the write that failed does.
    bool showFailure(const QString &text, int error);
    void tellObservers(const VexaPropertyTreeItem *item, bool fromUiJson);
    void rereadSourceData(const QString &changedNode);
    void freeWhiteBalance();
    void takeDeviceType();
    void applyAccessMode(unsigned int accessMode);
    void buildTree();
    void giveThreadsTheirData();
    void tellChannels();
    void updateAfterShot();
    void tellWorkersWhoListens();
    QVector<QGetFeaturesThread *> workers() const;
    bool haveAllWorkers() const;
    void hideLoading();
    int loadingKey() const;
    bool dropsCachesFirst() const;
    void updateAll(int status);
    void updateDependants(const QStringList &nodes);
    void updateLocked();
    void updatePolled(int status);
    void startLevelPass();
    void showDescription(VexaPropertyTreeItem *item);
    void fillUserLevelCombo();
    void clearMaps();
    void releaseWidgets();
    void search(const QString &text);
    /// The category that takes favourites, the first of the root; null when there is none.
    VexaPropertyTreeItem *favoritesCategory() const;
    /// Adds or removes rows while no worker walks over them; a pass that this cuts short is made again.
    void changeRows(const std::function<void()> &change);
    /// Puts a copy of this row under the first category, at most one for each feature.
    void addFavoriteItem(VexaPropertyTreeItem *item);
    /// Deletes the favourite of this feature.
    void removeFavoriteItem(VexaPropertyTreeItem *item);
    void removeAllFavoriteItems();
    void takeFavoriteRow(VexaPropertyTreeItem *favorite);

    bool m_bMessageEnable = true;
    bool m_bReadyForDelete = false;
    bool m_bCanEdit = true;
    bool m_bFirstUpdate = false; ///< the first-update pair
    bool m_bFirstUpdateOfAll = false;
    bool m_bUpdatePending = false; ///< grabbing was stopped and not started since
    bool m_bLoading = false; ///< a loading dialog of a command or an import is up
    bool m_bTestRunning = false;
    int m_nToolBarState = 1; ///< of UpdateToolBarBtn
    bool m_bBoxBlocks = false;
    int m_nTimesCleared = 0; ///< how often the items went, for calls that run other events
    std::function<void()> m_heldMessage; ///< shown when the box that blocks is gone
    bool m_bLevelPassPending = false; ///< the user level changed during a pass
    bool m_bDeleteWhenIdle = false;
    int m_nCallsOnStack = 0;
    int m_nDeviceType = -1;
    QString m_strSerialNumber;
    long int m_lOpenedCameraID = -1; ///< kept beyond the close, for observers

    QDomDocument m_domDocument;
    QDomDocument m_elementsDocument; ///< keeps the elements in the maps whole: parents, siblings
    std::unique_ptr<FeatureTreeBuilder> m_pBuilder;
    std::unique_ptr<NodeDependencyMaps> m_pMaps;

    CustomLineEdit *m_pSearchEdit = nullptr;
    CustomLabel *m_pDescriptionTitle = nullptr;
    QTextEdit *m_pDescriptionEdit = nullptr;
    CustomLabel *m_pUserLevelTitle = nullptr;
    VexaPropertyComboBox *m_pUserLevelCombo = nullptr;
    CustomPushButton *m_pReturnButton = nullptr;
    CustomLabel *m_pPageTitle = nullptr;
    CustomMenu *m_pContextMenu = nullptr;
    QAction *m_pActionFavoriteAdd = nullptr;
    QAction *m_pActionFavoriteRemove = nullptr;
    QAction *m_pActionFavoriteRemoveAll = nullptr;
    VexaPropertyTreeItem *m_pContextItem = nullptr;
    VexaFeatureImExThread *m_pImExThread = nullptr;
    std::shared_ptr<FeatureFileSession> m_pFeatureFileSession; ///< its dialogs may outlive the tree
    QPointer<VexaFeatureDiff> m_pFeatureDiff;
    QTimer *m_pInvalidateTimer = nullptr;
    QTimer *m_pRefreshTimer = nullptr;
    QTimer *m_pAutoTriggerTimer = nullptr;
    QTimer *m_pPollingTimer = nullptr;
    QStringList m_pendingInvalidations;
    QSet<QString>
        m_writesUnderWay; ///< names; boxes and dialogs run other events in the middle of one
    QString m_strJustWritten; ///< until the write's caller has taken the value over
    qint64 m_nSavedProtocol = 0; ///< CommunicationProtocols as it was when RunningMode was set to 2
    QGetFeaturesThread *m_pInvalidateUpdateThread = nullptr;
    QGetFeaturesThread *m_pLockAndRelativeThread = nullptr;
    QGetFeaturesThread *m_pTimerAndAllThread = nullptr;
    QGetFeaturesThread *m_pPollingThread = nullptr;
    QMutex m_mutex; ///< guards m_observers
    QList<VexaFeatureObserverable *> m_observers;
    QPointer<CustomMessageBox> m_pMessageBox;
    VexaFeatureToolBar *m_pToolBar = nullptr;
    QVector<QFuture<void>> m_futures;
};
