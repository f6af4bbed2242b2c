#pragma once

#include "ControlKit/CustomWidget.h"
#include "ShellServicesModule/VexaListenTools.h"
#include "model/FeatureTreeModuleGlobal.h"

#include <QList>
#include <QMap>
#include <QMutex>
#include <QString>

class QStackedWidget;
class QStandardItem;
class VexaFeatureTree;
class VexaPropertyTreeItem;
struct _MY_STRUCT_DEVICE_INFO_;

/// A page of the host's wizard. The feature tree stands behind one of them.
enum StepIndex { STEP_FEATURE_TREE = 1 };

/// The face of the module to the host: a singleton widget with one page per opened camera and an empty page under
/// camera id -1. The host creates it before any camera is opened and places it in its main window. GUI thread, but
/// for featureTree and isFeatureTreeExist, which workers call to look up a tree that exists.
class FEATURETREEMODULE_API VexaMainFeatureWidget : public CustomWidget, public IVexaListen
{
    Q_OBJECT
public:
    /// The singleton; the first call creates it with this parent, later parents are ignored.
    static VexaMainFeatureWidget *instance(QWidget *parent = nullptr);
    ~VexaMainFeatureWidget() override;

    /// The tree of a camera, made on first use. Without `create` a camera that has no task gets the empty page.
    /// Null without a task manager. On other threads than the GUI's nothing is made: a camera without a tree gets
    /// the empty page.
    VexaFeatureTree *featureTree(long int cameraId, bool create);
    bool isFeatureTreeExist(long int cameraId);
    /// A copy of the map of trees by camera id; -1 holds the empty page.
    QMap<long int, VexaFeatureTree *> getAllFeatureTreesMap();
    QStackedWidget *getAllFeatureTreeStacked();
    /// Puts the tree of this camera on show, the empty page for one without a task.
    void setCurrentCameraID(long int cameraId);
    /// Tells the listeners, takes the tree off the stack and deletes it; an unknown id changes nothing.
    void removeFeatureTree(long int cameraId);
    /// Deletes every tree; an empty page and no current camera remain.
    void clearFeatureTrees();

    void OnCameraOpen(long int cameraId);
    void OnCameraClose(long int cameraId);
    void OnCameraDisconnect(long int cameraId);
    void OnCameraStartGrabbing(long int cameraId);
    void OnCameraStopGrabbing(long int cameraId);
    void FileUpgrade(long int cameraId);
    void ForceDeviceIP(long int cameraId);
    void UploadScript(long int cameraId);
    void UpadateDeviceList();
    void UpdateAutoTimeRange(long int cameraId);
    /// Answers false and leaves the record alone.
    bool GetDeviceInfo(long int cameraId, _MY_STRUCT_DEVICE_INFO_ &info);
    bool IsConnect() const;
    /// Stores the flag; false asks the device layer to have the camera closed.
    void SetIsConnect(bool connected, long int cameraId);

    void OnActionFeatureExpand();
    void OnActionImportFeatures();
    void OnActionExportFeatures();
    void OnActionFileAccess();
    void OnActionFeaturesRefresh();
    void onFeatureTreeExpand();
    void onFileAccess();
    void onRefreshFeature();
    /// State of the tool bar of the current camera; other cameras are passed over.
    void UpdateToolBarBtn(int state, int cameraId, bool busy);
    /// Takes over the client's language for node texts and tells the tree on show.
    void UpDateAllLange();
    /// Sets the boolean node "Language" of every camera.
    void UpDateCameraLanguage(bool value);
    /// The item of the current tree, null for another step than the feature tree's.
    VexaPropertyTreeItem *getItemByName(const QString &name, StepIndex step);

    /// Code type name to a number, per camera; replaces a former table.
    void SetCodeTypeMap(long int cameraId, const QMap<QString, int> &map);
    /// The number under the name, -1 when there is none.
    int GetCodeNumMaxMin(long int cameraId, const QString &name);
    /// The rows of the host's table of polling parameters, a row for each node: its first item has the node name as
    /// its text and column n belongs to set n of the parameters. Of two rows with one name the later counts. The
    /// items stay the host's, which takes the rows back with DeletePollingMap before it deletes them.
    void SetPollingMap(long int cameraId, const QMap<int, QList<QStandardItem *>> &rows);
    /// A copy of the rows by node name, empty for an unknown camera.
    QMap<QString, QList<QStandardItem *>> GetPollingMap(long int cameraId);
    void DeletePollingMap(long int cameraId);
    /// Stamps the time of the change on the device and writes the value into the row under the roles of
    /// PollingRole. Does nothing for a camera without a task. Never on a worker: the items are the GUI thread's.
    void UpdatePollingValue(long int cameraId, const QString &name, const QString &value,
                            int column);
    /// The text elided on the right to the width of a tab title.
    QString GetTabCutString(const QString &text);

    void notify(int event, void *data) override;
    QSize sizeHint() const override;

Q_SIGNALS:
    void sigBeforeDeleteFeature(long int lCameraID);
    void SigToolBarBtnClicked(int nIndex, long int lCameraID);
    void SigEndDrag();

protected:
    void changeEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;

public Q_SLOTS:
    void onBeforeDeleteFeature(long int lCameraID);
    void OnToolBarBtnClicked(int nIndex);
    void OnTreeExpand();
    void OnOpenCamera(long int lCamID);
    void OnCloseCamera(long int lCamID);
    void OnUpdatePreTitle(long int lCamID);
    void OnVexaEventUpdateFeatureTree(long int lCameraID, QList<QString> listNodeName);

private:
    explicit VexaMainFeatureWidget(QWidget *parent);
    void initUI();
    VexaFeatureTree *treeInMap(long int cameraId);
    VexaFeatureTree *currentTree();
    VexaFeatureTree *makeTree(long int cameraId, bool hasTask);
    void forgetCamera(long int cameraId);
    void deleteTrees();

    long int m_lCurrentCameraID = -1;
    QMap<long int, bool>
        m_expandStates; ///< true while the last click on the expand button collapsed the tree
    QMap<long int, VexaFeatureTree *> m_featureTrees;
    QMutex m_treesMutex; ///< guards m_featureTrees, which workers look into
    bool m_bConnected = false;
    QStackedWidget *m_pStack = nullptr;
    QMap<long int, QMap<QString, QList<QStandardItem *>>> m_pollingTables;
    QMap<long int, QMap<QString, int>> m_codeTypeTables;
    static VexaMainFeatureWidget *s_pInstance;
};
