#include "view/VexaFeatureTreeView.h"

#include "ControlKit/Custom.h"
#include "model/IVexaFeatureWidget.h"
#include "model/VexaPropertyTreeItem.h"
#include "view/EditorMaker.h"
#include "view/EditorOpener.h"
#include "view/EditorPlacer.h"
#include "view/ItemNames.h"
#include "view/NodeNameRules.h"
#include "view/PendingRowUpdates.h"
#include "view/VexaFeatureScrollBar.h"
#include "view/VexaPropertyTreeDelegate.h"
#include "view/VexaPropertyTreeModel.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QScopedValueRollback>

namespace {

constexpr int REFILL_AT_ONCE = 2000; // rows

void clearTextSelection(QWidget *pEditor)
{
    auto *pEdit = qobject_cast<QLineEdit *>(pEditor);
    if (!pEdit && pEditor) {
        // A spin box keeps its text in an inner line edit.
        pEdit = pEditor->findChild<QLineEdit *>();
    }
    if (pEdit) {
        pEdit->deselect();
    }
}

} // namespace

VexaFeatureTreeView::VexaFeatureTreeView(int nPageIndex, IVexaFeatureWidget *pOwner)
    : QTreeView(pOwner)
    , CustomQssHelper(this)
    , m_nPageIndex(nPageIndex)
    , m_pOwner(pOwner)
    , m_pModel(nullptr)
    , m_pDelegate(nullptr)
    , m_rows(nPageIndex)
{
    // First of all: many a setter of the base lays the view out.
    m_pPlacer = std::make_unique<EditorPlacer>(this);
    m_pOpener = std::make_unique<EditorOpener>(this);
    m_pPending = std::make_unique<PendingRowUpdates>(this);
    qRegisterMetaType<VexaPropertyTreeItem *>();
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setFrameStyle(0);
    setVerticalScrollBar(new VexaFeatureScrollBar(this));
    const QString strSheet =
        Custom::styleSheet(Custom::STYLE_TREE) + Custom::styleSheet(Custom::STYLE_TEXT_EDIT);
    if (!strSheet.isEmpty()) {
        setStyleSheet(strSheet);
    }
    setContextMenuPolicy(Qt::CustomContextMenu);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff); // both columns share the width
    setEditTriggers(QAbstractItemView::NoEditTriggers); // every editor is open already
    setTextElideMode(Qt::ElideRight);
    viewport()->setMouseTracking(true);
    // The font of the editors, which stand in the viewport; names are drawn in the view's own.
    QFont editorFont;
    editorFont.setFamily(Custom::globalFontFamily(Custom::LANGUAGE_ENGLISH));
    viewport()->setFont(editorFont);

    m_pModel = new VexaPropertyTreeModel(nPageIndex, this);
    m_pDelegate = new VexaPropertyTreeDelegate(nPageIndex, this);
    m_pDelegate->setEditorHost(m_pPlacer->park());
    m_pModel->setCameraID(-1);
    m_pModel->setFeatureWidget(pOwner);
    setModel(m_pModel);
    setItemDelegate(m_pDelegate);
    header()->setSectionResizeMode(QHeaderView::Stretch);
    header()->setMinimumSectionSize(1);
    header()->hide();

    using View = VexaFeatureTreeView;
    connect(this, &View::sigUpdateEditorData, this, &View::onUpdateEditorData);
    connect(this, &View::sigUpdateSpecialInfo, this, &View::onUpdateSpecialInfo);
    connect(this, &View::sigSetItemVisible, this, &View::onSetItemVisible);
    connect(this, &View::sigSetItemReadOnly, this, &View::onSetItemReadOnly);
    connect(this, &View::sigSetItemExpended, this, &View::onSetItemExpended);
    connect(this, &QTreeView::expanded, this, &View::OnSigExpanded);
    connect(this, &QTreeView::collapsed, this, &View::OnSigCollapsed);
    connect(m_pDelegate, &VexaPropertyTreeDelegate::sigEditorActivated, this,
            &View::onEditorActivated);
    connect(m_pDelegate, &VexaPropertyTreeDelegate::sigRefillNeeded, this, &View::onRefillNeeded);
}

VexaFeatureTreeView::~VexaFeatureTreeView()
{
    // Pages of a host register the view themselves as well, on features that outlive it.
    VexaPropertyTreeItem::removeViewFromAll(this);
    m_pDelegate->setCommitBlocked(true);
}

void VexaFeatureTreeView::setCameraAndRoot(long lCameraID, VexaPropertyTreeItem *pRoot)
{
    if (pRoot != m_pRootItem) {
        // What items told before may be of some that have gone.
        QCoreApplication::removePostedEvents(this, QEvent::MetaCall);
        m_nQueuedUpdates = 0;
    }
    m_lCameraID = lCameraID;
    m_pRootItem = pRoot;
    m_pModel->setCameraID(lCameraID);
    m_pDelegate->setCommitBlocked(true);
    m_pModel->setRootItem(pRoot);
    m_pDelegate->setCommitBlocked(false);
    refreshAllRows();
}

void VexaFeatureTreeView::reset()
{
    // Items may have gone already: nothing of the old rows is followed, nor by an editor that loses the focus later.
    if (QWidget *const pEditor = focusedEditor()) {
        m_pDelegate->rollback(pEditor);
    }
    m_pPending->clear();
    m_pOpener->clear();
    m_pPlacer->forget();
    m_rows.clear();
    m_pActiveItem = nullptr;
    QTreeView::reset();
    if (m_pModel && m_pModel->rootItem()) {
        m_rows.add(m_pModel->rootItem());
    }
}

void VexaFeatureTreeView::ClearTreeViewInfo()
{
    if (!m_pRootItem) {
        return;
    }
    giveUpEditor();
    m_forceShowItems.remove(int(m_lCameraID));
    m_forceHideItems.remove(int(m_lCameraID));
    m_pDelegate->setCommitBlocked(true);
    QCoreApplication::removePostedEvents(this, QEvent::MetaCall);
    m_nQueuedUpdates = 0;
    m_pPending->clear();
    m_pOpener->clear();
    m_rows.clear();
    m_pModel->clearRoot();
    m_pRootItem = nullptr;
    m_pDelegate->setCommitBlocked(false);
}

void VexaFeatureTreeView::giveUpEditor()
{
    m_pDelegate->setCommitBlocked(true);
    if (QWidget *const pEditor = focusedEditor()) {
        m_pDelegate->rollback(pEditor);
        setFocus(Qt::OtherFocusReason);
    }
    if (selectionModel()) {
        selectionModel()->clear();
    }
    m_pDelegate->setCommitBlocked(false);
}

void VexaFeatureTreeView::openEditors(VexaPropertyTreeItem *pItem)
{
    if (!pItem) {
        return;
    }
    m_rows.add(pItem);
    QVector<VexaPropertyTreeItem *> rows;
    collectRows(pItem, rows);
    m_pOpener->open(rows);
}

void VexaFeatureTreeView::showNewRow(VexaPropertyTreeItem *pItem)
{
    m_pModel->insertRowNotify(pItem->parent(m_nPageIndex), pItem->indexInParent(m_nPageIndex));
    openEditors(pItem);
    refreshRows(pItem, true);
}

void VexaFeatureTreeView::takeRow(VexaPropertyTreeItem *pItem)
{
    VexaPropertyTreeItem *const pBranch = pItem->parent(m_nPageIndex);
    m_pDelegate->setCommitBlocked(true);
    m_pModel->removeRowNotify(pBranch, pItem);
    m_pDelegate->setCommitBlocked(false);
    // It may have been the last row that its branch showed.
    refreshRows(pBranch, true);
}

void VexaFeatureTreeView::collectRows(VexaPropertyTreeItem *pItem,
                                      QVector<VexaPropertyTreeItem *> &rows)
{
    if (NodeNameRules::isNeverShown(nodeNameOf(pItem))) {
        emit sigSetItemVisible(m_lCameraID, pItem, false);
        pItem->editorTookOver(); // it has no editor that would
        return;
    }
    for (int i = 0; i < pItem->childCount(); ++i) {
        if (VexaPropertyTreeItem *const pChild = pItem->child(i)) {
            collectRows(pChild, rows);
        }
    }
    if (pItem != m_pRootItem) {
        rows.append(pItem);
    }
}

void VexaFeatureTreeView::openRow(VexaPropertyTreeItem *pItem)
{
    if (!m_rows.contains(pItem) || m_rows.isOpened(pItem)) {
        return;
    }
    m_rows.setOpened(pItem);
    const QModelIndex index = indexOfItem(pItem, VexaPropertyTreeModel::COLUMN_VALUE);
    if (!index.isValid()) {
        return;
    }
    openCell(index);
    if (EditorMaker::hasNameEditor(pItem)) {
        openCell(indexOfItem(pItem, VexaPropertyTreeModel::COLUMN_NAME));
    }
    if (!indexWidget(index)) {
        pItem->editorTookOver();
    }
}

void VexaFeatureTreeView::openCell(const QModelIndex &index)
{
    const QScopedValueRollback<bool> opening(m_bOpening, true);
    openPersistentEditor(index);
    clearTextSelection(indexWidget(index));
}

QRect VexaFeatureTreeView::visualRect(const QModelIndex &index) const
{
    // Asked for each editor that opens, where the tree's own answer walks over all rows.
    return m_bOpening ? QRect() : QTreeView::visualRect(index);
}

RowVisibility VexaFeatureTreeView::rowVisibility() const
{
    RowVisibility visibility;
    visibility.lCameraID = m_lCameraID;
    visibility.nParentType = m_nPageIndex;
    visibility.strSearchText = m_strSearchText;
    visibility.forceShow = m_forceShowItems.value(int(m_lCameraID));
    visibility.forceHide = m_forceHideItems.value(int(m_lCameraID));
    visibility.pOwner = m_pOwner;
    return visibility;
}

bool VexaFeatureTreeView::setSearchText(const QString &strText)
{
    m_strSearchText = strText.trimmed();
    return filterRows();
}

bool VexaFeatureTreeView::filterRows()
{
    if (!m_pRootItem) {
        return false;
    }
    scheduleDelayedItemsLayout(); // one layout at the end, not one for every branch that opens
    return decideRows(rowVisibility(), m_pRootItem, true, true);
}

bool VexaFeatureTreeView::refreshRows(VexaPropertyTreeItem *pItem, bool bShow)
{
    if (!pItem || !m_rows.contains(pItem)) {
        return false;
    }
    const bool bStays = decideRows(rowVisibility(), pItem, bShow, false);
    decideBranches(pItem);
    return bStays;
}

void VexaFeatureTreeView::refreshAllRows()
{
    refreshRows(m_pRootItem, true);
}

bool VexaFeatureTreeView::decideRows(const RowVisibility &visibility, VexaPropertyTreeItem *pItem,
                                     bool bShow, bool bExpandHits)
{
    bool bShown = false;
    if (pItem->childCount() == 0) {
        bShown = (bShow || visibility.forceShow.contains(pItem)) && visibility.isLeafShown(pItem);
    }
    for (int i = 0; i < pItem->childCount(); ++i) {
        VexaPropertyTreeItem *const pChild = pItem->child(i);
        bShown = (pChild && decideRows(visibility, pChild, bShow, bExpandHits)) || bShown;
    }
    if (pItem == m_pRootItem) {
        return bShown && pItem->childCount() > 0;
    }
    setItemHidden(pItem, !bShown);
    if (bExpandHits && bShown && pItem->childCount() > 0) {
        setExpanded(indexOfItem(pItem, VexaPropertyTreeModel::COLUMN_NAME), true);
    }
    return bShown;
}

void VexaFeatureTreeView::decideBranches(VexaPropertyTreeItem *pItem)
{
    for (VexaPropertyTreeItem *pBranch = pItem->parent(m_nPageIndex);
         pBranch && pBranch != m_pRootItem; pBranch = pBranch->parent(m_nPageIndex)) {
        setItemHidden(pBranch, !m_rows.hasShownChild(pBranch));
    }
}

void VexaFeatureTreeView::setItemHidden(VexaPropertyTreeItem *pItem, bool bHidden)
{
    if (m_rows.setHidden(pItem, bHidden)) {
        const QModelIndex index = indexOfItem(pItem, VexaPropertyTreeModel::COLUMN_NAME);
        if (index.isValid()) {
            setRowHidden(index.row(), index.parent(), bHidden);
        }
    }
}

void VexaFeatureTreeView::expandAllRows()
{
    expandAll(); // leaves hidden rows out
    QVector<VexaPropertyTreeItem *> rows;
    if (m_pRootItem) {
        collectRows(m_pRootItem, rows);
    }
    for (VexaPropertyTreeItem *pItem : qAsConst(rows)) {
        const QModelIndex index = indexOfItem(pItem, VexaPropertyTreeModel::COLUMN_NAME);
        if (pItem->childCount() > 0 && !isExpanded(index)) {
            setExpanded(index, true);
        }
    }
}

bool VexaFeatureTreeView::scrollToFeature(const QString &strName)
{
    if (!m_pRootItem || strName.isEmpty()) {
        return false;
    }
    QVector<VexaPropertyTreeItem *> path{m_pRootItem};
    while (!path.isEmpty()) {
        VexaPropertyTreeItem *const pItem = path.takeLast();
        if (pItem != m_pRootItem && nodeNameOf(pItem) == strName) {
            for (VexaPropertyTreeItem *pBranch = pItem->parent(m_nPageIndex);
                 pBranch && pBranch != m_pRootItem; pBranch = pBranch->parent(m_nPageIndex)) {
                setExpanded(indexOfItem(pBranch, VexaPropertyTreeModel::COLUMN_NAME), true);
            }
            const QModelIndex index = indexOfItem(pItem, VexaPropertyTreeModel::COLUMN_NAME);
            setCurrentIndex(index);
            scrollTo(index, QAbstractItemView::PositionAtCenter);
            return true;
        }
        for (int i = pItem->childCount() - 1; i >= 0; --i) {
            if (VexaPropertyTreeItem *const pChild = pItem->child(i)) {
                path.append(pChild);
            }
        }
    }
    return false;
}

void VexaFeatureTreeView::setDelegateEnable(bool bEnable)
{
    m_pDelegate->setEditorsEnabled(bEnable);
}

void VexaFeatureTreeView::setForbidUpdate(bool bForbid)
{
    if (m_bForbidUpdate.exchange(bForbid) && !bForbid) {
        refreshAllRows();
    }
}

void VexaFeatureTreeView::notifyEditorUpdate()
{
    if (m_rows.count() <= REFILL_AT_ONCE) {
        // QTreeView's own does nothing while a layout is due.
        QAbstractItemView::dataChanged(QModelIndex(), QModelIndex());
        scheduleDelayedItemsLayout();
        return;
    }
    scheduleDelayedItemsLayout();
    QVector<VexaPropertyTreeItem *> rows;
    if (m_pRootItem) {
        collectRows(m_pRootItem, rows);
    }
    for (VexaPropertyTreeItem *pItem : qAsConst(rows)) {
        const QModelIndex name = indexOfItem(pItem, VexaPropertyTreeModel::COLUMN_NAME);
        if (QWidget *pHint = indexWidget(name)) {
            m_pDelegate->setEditorData(pHint, name);
        }
        m_pPending->add(pItem, false);
    }
    viewport()->update();
}

void VexaFeatureTreeView::flushEditorUpdates()
{
    m_pPending->flush();
    m_pPlacer->place();
}

bool VexaFeatureTreeView::hasWaitingRows() const
{
    return m_pOpener->isActive() || m_pPending->isActive();
}

QModelIndex VexaFeatureTreeView::indexOfItem(VexaPropertyTreeItem *pItem, int nColumn) const
{
    return m_pModel->indexFromItem(pItem, nColumn);
}

VexaPropertyTreeItem *VexaFeatureTreeView::itemAt(const QModelIndex &index) const
{
    return VexaPropertyTreeModel::itemFromIndex(index);
}

void VexaFeatureTreeView::setForceShowItems(int nCameraID,
                                            const QList<VexaPropertyTreeItem *> &items)
{
    m_forceShowItems[nCameraID] = items;
}

void VexaFeatureTreeView::setForceHideItems(int nCameraID,
                                            const QList<VexaPropertyTreeItem *> &items)
{
    m_forceHideItems[nCameraID] = items;
}

void VexaFeatureTreeView::setFixedHeightByRows(bool bFixed)
{
    m_bFixedHeight = bFixed;
    updateGeometries();
}
