#pragma once

#include "ControlKit/CustomWidget.h"
#include "model/FeatureTreeModuleGlobal.h"

#include <QBasicTimer>
#include <QList>
#include <QMap>
#include <QString>
#include <QVariant>

#include <memory>

class QDomElement;
class StepPageRows;
class VexaFeatureTree;
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
    // The view tells of a change that it has dealt with. The rows of pages follow their features by it, so an override
    // calls the base.
    virtual void itemValueChanged(VexaPropertyTreeItem *pItem, bool bFromUiJson);
    virtual void itemVisibleStateChanged(VexaPropertyTreeItem *pItem);
    virtual void itemExpandedChanged(VexaPropertyTreeItem *pItem, bool bExpanded);
    virtual void itemSpecialChanged(VexaPropertyTreeItem *pItem, int nType);
    virtual void itemReadOnlyChanged(VexaPropertyTreeItem *pItem, bool bReadOnly);
    /// Shows this camera; -1 shows none.
    virtual void setCameraID(long lCameraID);
    /// Takes a camera out; its page root is deleted.
    virtual void removeCameraID(long lCameraID);
    /// Opens or closes all branches of the view.
    virtual void setExpandAll(bool bExpand);
    /// Whether a tree stands for this camera.
    virtual bool isInitialized(long lCameraID);
    /// Hook: setCameraID found a tree that was laid before.
    virtual void afterInitialized(long lCameraID);
    /// Fills the page titles of the camera on show anew, after a change of camera or language.
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
    /// Owned by the widget; never null.
    VexaFeatureTreeView *treeView() const;
    /// -1 while no camera is shown.
    long shownCameraID() const { return m_lCameraID; }
    /// Whether a row of a page takes over what this feature tells.
    bool isFollowed(VexaPropertyTreeItem *pFeature) const;

    /// Lays pages below `parentItem`, which is not on show yet, from a description: Category and Feature elements with
    /// the attributes "Name", "ShowInAll" ("1": not in the basic view), "DisplayName_En" and "DisplayName_Cn". For
    /// createPageRoot; nodes that the tree lacks are left out. `pTree` is that of the current camera.
    void createPageItems(VexaPropertyTreeItem *parentItem, const QDomElement &pageElement,
                         VexaFeatureTree *pTree);

Q_SIGNALS:
    /// The user wants to edit a format or trigger text in a dialog, which is the host's. `pSourceData` is the
    /// enumeration of its tags, null for a trigger text.
    void SigFormatEditRequested(VexaPropertyTreeItem *pFormat, VexaPropertyTreeItem *pSourceData);

protected:
    // What createPageItems leaves to the host. The rows are those of its pages; a row without the right tag stays as
    // it is.
    /// First item of this node name below the branch, as the pages have it; null when there is none.
    VexaPropertyTreeItem *pageItem(VexaPropertyTreeItem *pBranch, const QString &strName) const;
    /// The camera of a row with a tag of its own.
    void setRowCamera(VexaPropertyTreeItem *pRow, long lCameraID);
    /// "CustomLightingSelector": up to four settings that the segments share, and the commands for all segments.
    void setLightingItems(VexaPropertyTreeItem *pRow,
                          const QList<VexaPropertyTreeItem *> &sharedSettings,
                          VexaPropertyTreeItem *pAllOff, VexaPropertyTreeItem *pAllOn);
    /// For a host's own dialog: why the row of a format node would not take this text, in the client's language;
    /// empty when it would, and for any other node.
    static QString formatObjection(const QString &strFormatNode, const QString &strText);
    /// "CustomSpinBox": the commands behind its buttons and the integer that it shows, whose changes it follows.
    void setSpinItems(VexaPropertyTreeItem *pRow, VexaPropertyTreeItem *pMinus,
                      VexaPropertyTreeItem *pPlus, VexaPropertyTreeItem *pInteger);
    /// "CustomSpinBox": what one press counts, and whether the buttons are locked.
    void setSpinStep(VexaPropertyTreeItem *pRow, int nStep, bool bLocked);

    /// Pages have their titles in the new language after a change.
    void changeEvent(QEvent *event) override;
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
    template<typename Value, typename Change>
    void changeRow(VexaPropertyTreeItem *pRow, const Change &change);
    /// Takes the items that the feature tree owns out of a page tree, so that deleting it leaves them alone.
    void detachFeatureItems(VexaPropertyTreeItem *pItem);
    void retranslateItem(VexaPropertyTreeItem *pItem, int nPage);

    std::unique_ptr<StepPageRows> m_pRows;
};
