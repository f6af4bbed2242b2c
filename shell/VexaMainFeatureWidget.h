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
    /// Whether a tree was made for this camera and not removed since.
    bool isFeatureTreeExist(long int cameraId);
    /// A copy of the map of trees by camera id; -1 holds the empty page.
    QMap<long int, VexaFeatureTree *> getAllFeatureTreesMap();
    /// The stack that shows one tree; owned by the widget.
    QStackedWidget *getAllFeatureTreeStacked();
    /// Puts the tree of this camera on show, the empty page for one without a task.
    void setCurrentCameraID(long int cameraId);
    /// Tells the listeners, takes the tree off the stack and deletes it; an unknown id changes nothing.
    void removeFeatureTree(long int cameraId);
    /// Deletes every tree; an empty page and no current camera remain.
    void clearFeatureTrees();

    /// The host has opened the camera: its tree counts as expanded. The tree is told by its own OnCameraOpen.
    void OnCameraOpen(long int cameraId);
    /// The host has closed or lost the camera. Its tree stays until removeFeatureTree.
    void OnCameraClose(long int cameraId);
    void OnCameraDisconnect(long int cameraId);
    // Calls of the host that mean nothing to this module and do nothing.
    void OnCameraStartGrabbing(long int cameraId);
    void OnCameraStopGrabbing(long int cameraId);
    void FileUpgrade(long int cameraId);
    void ForceDeviceIP(long int cameraId);
    void UploadScript(long int cameraId);
    void UpadateDeviceList();
    void UpdateAutoTimeRange(long int cameraId);
    /// Answers false and leaves the record alone.
    bool GetDeviceInfo(long int cameraId, _MY_STRUCT_DEVICE_INFO_ &info);
    /// The flag of SetIsConnect; false at first.
    bool IsConnect() const;
    /// Stores the flag; false asks the device layer to have the camera closed.
    void SetIsConnect(bool connected, long int cameraId);

    // What the buttons of the tool bar do with the current tree; nothing without one. Import, export and file access
    // open dialogs that block.
    void OnActionFeatureExpand();
    void OnActionImportFeatures();
    void OnActionExportFeatures();
    void OnActionFileAccess();
    void OnActionFeaturesRefresh();
    /// Collapses the current tree, or expands it when the last call collapsed it; nothing for a camera that was not
    /// opened with OnCameraOpen.
    void onFeatureTreeExpand();
    /// Runs the dialog for the current camera's files.
    void onFileAccess();
    /// Reads everything of the current camera anew; the bus asks for it too.
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

    /// Of the listener registry: VEXA_EVENT_BEFORE_DELETE_FEATURE_TREE becomes sigBeforeDeleteFeature.
    void notify(int event, void *data) override;
    QSize sizeHint() const override;

Q_SIGNALS:
    /// The tree of this camera is about to be deleted.
    void sigBeforeDeleteFeature(long int lCameraID);
    // For the host, which may connect to them; the module does not emit them.
    void SigToolBarBtnClicked(int nIndex, long int lCameraID);
    void SigEndDrag();

protected:
    void changeEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;

public Q_SLOTS:
    /// Takes the tree off the stack; the empty page takes its place when it was on show.
    void onBeforeDeleteFeature(long int lCameraID);
    /// A button of the current tree's bar, by VexaFeatureToolBar::Button.
    void OnToolBarBtnClicked(int nIndex);
    /// A search expanded the sending tree: the next click on its button collapses it.
    void OnTreeExpand();
    void OnOpenCamera(long int lCamID); ///< does nothing, as OnCloseCamera
    void OnCloseCamera(long int lCamID);
    /// The camera has another name.
    void OnUpdatePreTitle(long int lCamID);
    /// Nodes have changed on the device, by somebody else's doing: they and their dependants are read again.
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
