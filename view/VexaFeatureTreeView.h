#pragma once

#include "ControlKit/CustomQssHelper.h"
#include "model/IVexaFeatureNotify.h"
#include "model/VexaPropertyTreeItem.h"
#include "view/FeatureRows.h"
#include "view/RowVisibility.h"

#include <QList>
#include <QMap>
#include <QTreeView>
#include <QVector>

#include <atomic>
#include <memory>

class EditorOpener;
class EditorPlacer;
class IVexaFeatureWidget;
class PendingRowUpdates;
class VexaPropertyTreeDelegate;
class VexaPropertyTreeItem;
class VexaPropertyTreeModel;

Q_DECLARE_METATYPE(VexaPropertyTreeItem *)

/// The widget that shows an item tree in two columns, name and value, with an editor open in every value cell. Items
/// notify it from any thread; everything else is for the GUI thread. It owns neither items nor camera.
class VexaFeatureTreeView : public QTreeView, public IVexaFeatureNotify, public CustomQssHelper
{
    Q_OBJECT
public:
    /// `nPageIndex` is the ParentType under which the view walks the tree. The owner is the parent widget.
    VexaFeatureTreeView(int nPageIndex, IVexaFeatureWidget *pOwner);
    ~VexaFeatureTreeView() override;

    /// Shows the tree below `pRoot`, which stays the caller's; null shows nothing.
    void setCameraAndRoot(long lCameraID, VexaPropertyTreeItem *pRoot);
    /// Opens the editors of the item and of everything below it: up to 2 000 rows at once; of more the rows in sight
    /// at once and the rest in slices of 8 ms.
    void openEditors(VexaPropertyTreeItem *pItem);
    /// The item was put behind the last row of its branch: shows it and opens its editors.
    void showNewRow(VexaPropertyTreeItem *pItem);
    /// Takes the item out from under its branch, without a commit; the item is the caller's to delete.
    void takeRow(VexaPropertyTreeItem *pItem);
    /// Filters the rows; true when any row stayed. Branches with a hit open.
    bool setSearchText(const QString &strText);
    /// Expands every branch, hidden ones too: they may be shown later.
    void expandAllRows();
    /// Makes the first row with this node name current, in the middle of the viewport; false when there is none.
    bool scrollToFeature(const QString &strName);
    /// Decides the row and all below it anew; `bShow` false hides them. Returns whether the row stays.
    bool refreshRows(VexaPropertyTreeItem *pItem, bool bShow);
    void refreshAllRows();
    /// Empties the root, which stays the caller's; the view shows nothing then and touches no item any more.
    void ClearTreeViewInfo();
    /// Gives up the current editor, without a commit, and the selection; the items stay.
    void giveUpEditor();
    /// False disables every editor from its next refill on.
    void setDelegateEnable(bool bEnable);
    /// While forbidden no notification of an item passes; afterwards the rows are decided anew.
    void setForbidUpdate(bool bForbid);
    /// Lays the rows out anew and refills every editor, after a change of language.
    void notifyEditorUpdate();
    /// Fills at once what was put off: editors of rows out of sight follow the device with a delay.
    void flushEditorUpdates();
    /// Rows wait for their editors or for a refill.
    bool hasWaitingRows() const;

    QModelIndex indexOfItem(VexaPropertyTreeItem *pItem, int nColumn) const;
    VexaPropertyTreeItem *itemAt(const QModelIndex &index) const;
    VexaPropertyTreeModel *propertyModel() const { return m_pModel; }
    VexaPropertyTreeDelegate *propertyDelegate() const { return m_pDelegate; }

    /// Rows that are shown, or hidden, whatever the item says. Call refreshAllRows() after a change.
    void setForceShowItems(int nCameraID, const QList<VexaPropertyTreeItem *> &items);
    void setForceHideItems(int nCameraID, const QList<VexaPropertyTreeItem *> &items);
    /// The view is as high as its rows and does not scroll by itself.
    void setFixedHeightByRows(bool bFixed);

    QRect visualRect(const QModelIndex &index) const override;
    void reset() override;

    // IVexaFeatureNotify: any thread
    void itemVisibleChanged(long lCameraID, VexaPropertyTreeItem *pItem, bool bVisible) override;
    void itemExpandedChanged(long lCameraID, VexaPropertyTreeItem *pItem, bool bExpanded) override;
    void itemDataChanged(long lCameraID, VexaPropertyTreeItem *pItem, int nType,
                         bool bNeedRecreateEditor, bool bFromUiJson) override;
    void itemSpecialChanged(long lCameraID, VexaPropertyTreeItem *pItem, int nType) override;
    void itemReadOnlyChanged(long lCameraID, VexaPropertyTreeItem *pItem, bool bReadOnly) override;

Q_SIGNALS:
    void sigUpdateEditorData(long lCameraID, VexaPropertyTreeItem *pItem, int nType,
                             bool bNeedRecreateEditor, bool bFromUiJson);
    void sigSetItemReadOnly(long lCameraID, VexaPropertyTreeItem *pItem, bool bReadOnly);
    void sigSetItemVisible(long lCameraID, VexaPropertyTreeItem *pItem, bool bVisible);
    void sigSetItemExpended(long lCameraID, VexaPropertyTreeItem *pItem, bool bExpanded);
    void sigUpdateSpecialInfo(long lCameraID, VexaPropertyTreeItem *pItem, int nType);
    /// The mouse, the keyboard or the focus of an editor came to another feature.
    void sigFeatureActivated(const QModelIndex &index);

public Q_SLOTS:
    void onUpdateEditorData(long lCameraID, VexaPropertyTreeItem *pItem, int nType,
                            bool bNeedRecreateEditor, bool bFromUiJson);
    void onUpdateSpecialInfo(long lCameraID, VexaPropertyTreeItem *pItem, int nType);
    void onSetItemVisible(long lCameraID, VexaPropertyTreeItem *pItem, bool bVisible);
    void onSetItemReadOnly(long lCameraID, VexaPropertyTreeItem *pItem, bool bReadOnly);
    void onSetItemExpended(long lCameraID, VexaPropertyTreeItem *pItem, bool bExpanded);
    void OnSigExpanded(QModelIndex index);
    void OnSigCollapsed(QModelIndex index);

protected Q_SLOTS:
    void commitData(QWidget *editor) override;

protected:
    void changeEvent(QEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void updateGeometries() override;
    void updateEditorGeometries() override;
    void scrollContentsBy(int dx, int dy) override;
    void drawBranches(QPainter *painter, const QRect &rect,
                      const QModelIndex &index) const override;
    bool focusNextPrevChild(bool next) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void rowsInserted(const QModelIndex &parent, int start, int end) override;
    void rowsAboutToBeRemoved(const QModelIndex &parent, int start, int end) override;

private:
    friend class EditorOpener;
    friend class EditorPlacer;
    friend class PendingRowUpdates;

    bool concerns(long lCameraID, VexaPropertyTreeItem *pItem) const;
    bool isKnown(VexaPropertyTreeItem *pItem) const;
    RowVisibility rowVisibility() const;
    bool filterRows();
    bool decideRows(const RowVisibility &visibility, VexaPropertyTreeItem *pItem, bool bShow,
                    bool bExpandHits);
    void decideBranches(VexaPropertyTreeItem *pItem);
    void setItemHidden(VexaPropertyTreeItem *pItem, bool bHidden);
    void collectRows(VexaPropertyTreeItem *pItem, QVector<VexaPropertyTreeItem *> &rows);
    void refillEditor(VexaPropertyTreeItem *pItem, bool bRecreate);
    void openRow(VexaPropertyTreeItem *pItem);
    void openCell(const QModelIndex &index);
    void onEditorActivated(QWidget *pEditor);
    void onRefillNeeded(QWidget *pEditor);
    void activateFeature(VexaPropertyTreeItem *pItem);
    QModelIndex focusedRow() const;
    /// The editor that has the focus of the window, or holds what has it; null when none does.
    QWidget *focusedEditor() const;
    QWidget *focusableEditor(const QModelIndex &row) const;
    void showRow(const QModelIndex &row);
    bool leaveByTab(bool bNext);
    int shownRowCount(const QModelIndex &parent) const;

    std::atomic<bool> m_bForbidUpdate{false};
    bool m_bFixedHeight = false;
    bool m_bOpening = false; ///< rows have no place yet: visualRect answers nothing
    int m_nPageIndex;
    long m_lCameraID = -1;
    IVexaFeatureWidget *m_pOwner;
    QString m_strSearchText;
    VexaPropertyTreeModel *m_pModel;
    VexaPropertyTreeDelegate *m_pDelegate;
    VexaPropertyTreeItem *m_pRootItem = nullptr; ///< not owned
    QMap<int, QList<VexaPropertyTreeItem *>> m_forceShowItems; ///< by camera
    QMap<int, QList<VexaPropertyTreeItem *>> m_forceHideItems; ///< by camera
    FeatureRows m_rows;
    std::unique_ptr<EditorPlacer> m_pPlacer;
    std::unique_ptr<EditorOpener> m_pOpener;
    std::unique_ptr<PendingRowUpdates> m_pPending;
    VexaPropertyTreeItem *m_pActiveItem = nullptr; ///< compared only, never followed
    std::atomic<int> m_nQueuedUpdates{0}; ///< updates from workers that wait in the event queue
};
