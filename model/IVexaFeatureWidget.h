#pragma once

#include "ControlKit/CustomWidget.h"
#include "model/FeatureTreeModuleGlobal.h"

#include <QBasicTimer>
#include <QList>
#include <QMap>
#include <QString>
#include <QVariant>

class VexaFeatureTreeView;
class VexaPropertyTreeItem;

/// Base of the widgets that show features of a camera in a VexaFeatureTreeView: the feature tree itself, and pages
/// of a host laid over it. A host derives from it and fills the hooks. GUI thread.
class FEATURETREEMODULE_API IVexaFeatureWidget : public CustomWidget
{
    Q_OBJECT
public:
    /// `nPageIndex` is the ParentType under which this widget attaches items; 0 is the feature tree.
    explicit IVexaFeatureWidget(int nPageIndex, QWidget *parent = nullptr);
    ~IVexaFeatureWidget() override;

    /// Writes a value to the device: element tag, feature name, value. True when the device took it.
    virtual bool setFeatureValue(const QString &strNodeType, const QString &strNodeName,
                                 const QVariant &oNodeValue) = 0;
    /// Runs after a successful write that came from a view.
    virtual bool afterSetFeatureValue(const QString &strNodeName);
    virtual void itemValueChanged(VexaPropertyTreeItem *pItem, bool bFromUiJson);
    virtual void itemVisibleStateChanged(VexaPropertyTreeItem *pItem);
    virtual void itemExpandedChanged(VexaPropertyTreeItem *pItem, bool bExpanded);
    virtual void itemSpecialChanged(VexaPropertyTreeItem *pItem, int nType);
    virtual void itemReadOnlyChanged(VexaPropertyTreeItem *pItem, bool bReadOnly);
    /// Shows this camera; -1 shows none.
    virtual void setCameraID(long lCameraID);
    /// Takes a camera out; its page root is deleted.
    virtual void removeCameraID(long lCameraID);
    virtual void setExpandAll(bool bExpand);
    /// Whether a tree stands for this camera.
    virtual bool isInitialized(long lCameraID);
    /// Hook: setCameraID found a tree that was laid before.
    virtual void afterInitialized(long lCameraID);
    virtual void retranslatePages();
    /// Hook: fills m_stepPageNames for this page.
    virtual void preparePage(int nPageIndex);
    /// Hook: the root of a new page tree; null when there is none.
    virtual VexaPropertyTreeItem *createPageRoot();
    /// Hook of the 200 ms timer: true when the timer may stop.
    virtual bool updateTimerElapsed();
    /// Opens the view's editors on the root and expands its first child.
    virtual void afterCameraChanged(VexaPropertyTreeItem *pItem);
    /// Hook: setCameraID was given a camera without a tree.
    virtual void cameraWithoutTree(long lCameraID);

    /// Whether this item is hidden because only the basic pages are shown.
    bool isHiddenByBasic(long lCameraID, VexaPropertyTreeItem *pItem) const;
    /// Shows or hides the pages that are marked to be hidden in the basic view.
    void toggleShowBasic(long lCameraID);
    VexaFeatureTreeView *treeView() const;

protected:
    void timerEvent(QTimerEvent *event) override;

    int m_nPageCount = 1; ///< pages to prepare
    int m_nPageIndex;
    long m_lCameraID = -1;
    VexaFeatureTreeView *m_pTreeView;
    QMap<int, VexaPropertyTreeItem *> m_rootItems; ///< page root by camera
    QMap<QString, QString> m_stepPageNames; ///< page titles by node name, for the page in hand
    QMap<int, QString> m_platformKeys; ///< platform key by camera, once settled
    QMap<int, QString> m_platformHints; ///< platform key candidates by camera
    QMap<int, bool> m_showBasicOnly; ///< by camera
    QMap<int, QList<VexaPropertyTreeItem *>>
        m_showInAllItems; ///< pages hidden in the basic view, by camera
    QBasicTimer m_updateTimer;

private:
    /// Takes the items that the feature tree owns out of a page tree, so that deleting it leaves them alone.
    void detachFeatureItems(VexaPropertyTreeItem *pItem);
    void retranslateItem(VexaPropertyTreeItem *pItem, int nPage);
};
