#include "view/VexaPropertyTreeDelegate.h"

#include "ControlKit/CustomCheckBox.h"
#include "ControlKit/CustomComboBox.h"
#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "ShellServicesModule/COMMONINTERFACE.h"
#include "editors/QCustomReverseHintWidget.h"
#include "view/EditorCommit.h"
#include "view/EditorFiller.h"
#include "view/EditorMaker.h"
#include "view/EnumerationRows.h"
#include "view/ItemNames.h"
#include "view/PropertyLanguage.h"
#include "view/RowFramePainter.h"
#include "view/VexaPropertyTreeModel.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QDebug>
#include <QEvent>
#include <QLineEdit>
#include <QTimer>
#include <QWheelEvent>

#include <algorithm>
#include <iterator>

namespace {

constexpr int COMMAND_TIMER_MS = 150;
constexpr int ROW_HEIGHT = 38; // pixels
constexpr int NAME_SHIFT = 20; // pixels
constexpr int TEXT_MARGIN = 5; // pixels above and below a name

/// For screen readers. Editors of more parts than one name these themselves.
void nameAfterRow(QWidget *pEditor, const QString &strName)
{
    const bool bOnePart = qobject_cast<QAbstractButton *>(pEditor)
        || qobject_cast<QAbstractSpinBox *>(pEditor) || qobject_cast<QComboBox *>(pEditor)
        || qobject_cast<QLineEdit *>(pEditor);
    if (bOnePart && pEditor->accessibleName() != strName) {
        pEditor->setAccessibleName(strName);
    }
}

VexaPropertyTreeItem *itemOf(const QModelIndex &index)
{
    return VexaPropertyTreeModel::itemFromIndex(index);
}

/// Names of features stand under the arrow of their category. The strip that they move into shows the selection
/// already, so that the panel is drawn for the cell alone: it may be translucent.
void moveNameLeft(QPainter *pPainter, QStyleOptionViewItem &cell)
{
    const QStyle *const pStyle = cell.widget ? cell.widget->style() : QApplication::style();
    pStyle->drawPrimitive(QStyle::PE_PanelItemViewItem, &cell, pPainter, cell.widget);
    cell.state &= ~(QStyle::State_Selected | QStyle::State_MouseOver | QStyle::State_HasFocus);
    cell.backgroundBrush = Qt::NoBrush;
    cell.rect.setLeft(cell.rect.left() - NAME_SHIFT);
}

/// Each moves the names of its rows by NAME_SHIFT; at least the page that every row is on.
int branchesAbove(const QModelIndex &index)
{
    int nBranches = 1;
    for (QModelIndex page = index.parent().parent(); page.isValid(); page = page.parent()) {
        ++nBranches;
    }
    return nBranches;
}

} // namespace

VexaPropertyTreeDelegate::VexaPropertyTreeDelegate(ParentType eType, QObject *parent)
    : QStyledItemDelegate(parent)
    , m_eType(eType)
    , m_pCommandTimer(new QTimer(this))
{
    m_pCommandTimer->setSingleShot(true);
    connect(m_pCommandTimer, &QTimer::timeout, this, &VexaPropertyTreeDelegate::on_CommandTimeout);
    // Before the view connects its own slot: the camera counts as modified before the write.
    connect(this, &QAbstractItemDelegate::commitData, this,
            &VexaPropertyTreeDelegate::on_CommitRecord);
}

void VexaPropertyTreeDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                                     const QModelIndex &index) const
{
    const VexaPropertyTreeItem *const pItem = itemOf(index);
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    const QStyle *const pStyle = cell.widget ? cell.widget->style() : QApplication::style();
    if (pItem && index.column() == VexaPropertyTreeModel::COLUMN_NAME) {
        const auto *const pArea = qobject_cast<const QAbstractScrollArea *>(option.widget);
        const int nRight = pArea ? pArea->viewport()->rect().right() - 2 : cell.rect.right();
        if (isCategoryRow(pItem)) {
            RowFramePainter::paintCategoryRow(painter, cell.rect, cell.rect.left(), nRight,
                                              option.state.testFlag(QStyle::State_Open));
            cell.font.setWeight(75);
            // The selection covers the gap above the name too, as it does beside it.
            pStyle->drawPrimitive(QStyle::PE_PanelItemViewItem, &cell, painter, cell.widget);
            cell.state &= ~(QStyle::State_Selected | QStyle::State_MouseOver);
            cell.rect.setTop(cell.rect.top() + RowFramePainter::CATEGORY_TOP_GAP);
        } else {
            if (pItem->childCount() == 0 && index.parent().isValid()) {
                moveNameLeft(painter, cell);
            }
            // The tree tells by this state whether a row of the same parent is shown below.
            RowFramePainter::paintFeatureRow(painter, cell.rect, cell.rect.left(), nRight,
                                             !option.state.testFlag(QStyle::State_Sibling));
        }
    } else if (index.column() == VexaPropertyTreeModel::COLUMN_VALUE) {
        cell.rect.setRight(cell.rect.right() - 6);
    }
    pStyle->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
}

QSize VexaPropertyTreeDelegate::sizeHint(const QStyleOptionViewItem &option,
                                         const QModelIndex &index) const
{
    struct TagHeight
    {
        QLatin1String tag;
        int height;
    };
    static const TagHeight heights[] = {
        {QLatin1String("CustomLightingSelector"), 155},
        {QLatin1String("CustomScreen"), 110},
    };
    const VexaPropertyTreeItem *const pItem = itemOf(index);
    if (!pItem || isCategoryRow(pItem)) {
        return QStyledItemDelegate::sizeHint(option, index);
    }
    // A name takes one line. The base class would lay its text out, twice for each row of every layout.
    QSize size(option.rect.width(),
               qMax(ROW_HEIGHT, option.fontMetrics.height() + 2 * TEXT_MARGIN));
    const QString strTag = pItem->tagName();
    if (!strTag.startsWith(QLatin1String("Custom"))) {
        return size;
    }
    const auto it = std::find_if(std::begin(heights), std::end(heights),
                                 [&](const TagHeight &row) { return strTag == row.tag; });
    if (it != std::end(heights)) {
        size.setHeight(it->height);
    }
    return size;
}

QWidget *VexaPropertyTreeDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &,
                                                const QModelIndex &index) const
{
    VexaPropertyTreeItem *const pItem = itemOf(index);
    if (!pItem || !pItem->value()) {
        return nullptr;
    }
    EditorMaker::Request request;
    request.pDelegate = this;
    request.pParent = m_pEditorHost ? m_pEditorHost.data() : parent;
    request.pItem = pItem;
    request.nColumn = index.column();
    request.strNodeName = nodeNameOf(pItem, index.column());
    QWidget *const pEditor = EditorMaker::make(request);
    if (!pEditor) {
        return nullptr;
    }
    // Tab goes from row to row, which is the view's business.
    if (pEditor->focusPolicy() & Qt::TabFocus) {
        pEditor->setFocusPolicy(Qt::ClickFocus);
    }
    EditorRow row;
    row.pItem = pItem;
    row.nColumn = index.column();
    m_editors.insert(pEditor, row);
    // What the row shows is in the value column; a hint beside the name says nothing of it.
    if (index.column() != VexaPropertyTreeModel::COLUMN_NAME) {
        const ItemLock lock(pItem);
        pItem->value()->updateEditorInfo(!pEditor->isEnabled());
    }
    return pEditor;
}

void VexaPropertyTreeDelegate::destroyEditor(QWidget *editor, const QModelIndex &) const
{
    if (!editor) {
        return;
    }
    m_editors.remove(editor);
    if (m_commits.contains(editor)) {
        editor->hide();
        m_doomed.insert(editor);
    } else {
        editor->deleteLater();
    }
}

void VexaPropertyTreeDelegate::setEditorData(QWidget *editor, const QModelIndex &index) const
{
    VexaPropertyTreeItem *const pItem = itemOf(index);
    if (!editor || !pItem || !pItem->value()) {
        return;
    }
    if (auto *const pHint = qobject_cast<QCustomReverseHintWidget *>(editor)) {
        pHint->setLanguage(propertyLanguage(m_eType));
        return;
    }
    const auto row = m_editors.find(editor);
    if (row != m_editors.end() && m_commits.contains(editor)) {
        row->bRefillPutOff = true;
        return;
    }
    const auto *const pModel = qobject_cast<const VexaPropertyTreeModel *>(index.model());
    const QString strTag = pItem->tagName();
    EditorFiller::Request request;
    request.strNodeName = nodeNameOf(pItem, index.column());
    EnumerationRows::applyNeutralNames(pItem, request.strNodeName);
    // The state is taken before the value: a change between the two is told again.
    const bool bCached = pItem->isValueCached();
    request.bReadOnly = pItem->readOnly();
    const std::unique_ptr<CTreeItemValue> snapshot = pItem->valueSnapshot();
    if (!snapshot) {
        return;
    }
    request.pDelegate = this;
    request.pEditor = editor;
    request.pItem = pItem;
    request.pValue = snapshot.get();
    request.bWriteOnly = pItem->isWriteOnly();
    request.bCached = (bCached && !request.bWriteOnly) || !EditorFiller::isReadFromDevice(strTag);
    request.lCameraID = pModel ? pModel->cameraID() : -1;
    request.pComboMutex = &m_comboMutex;
    const EditorFiller::Result result = EditorFiller::fill(request);
    if (row != m_editors.end()) {
        row->bRefillPutOff = result == EditorFiller::RESULT_PUT_OFF;
        if (result == EditorFiller::RESULT_FILLED) {
            row->bBlank = !request.bCached && !(request.bWriteOnly && !request.bReadOnly)
                && qobject_cast<CustomCheckBox *>(editor);
        }
    }
    if (result == EditorFiller::RESULT_POSTED) {
        postRefill(editor);
    }
    nameAfterRow(editor, VexaPropertyTreeModel::rowName(*snapshot, m_eType));
    if (!m_bEditorsEnabled) {
        EditorCommit::rollback(editor); // it loses the focus
        editor->setDisabled(true);
    }
    if (result != EditorFiller::RESULT_FILLED) {
        return;
    }
    if (EditorMaker::suits(editor, pItem)) {
        pItem->editorTookOver(*snapshot, request.bReadOnly, bCached);
    } else {
        postRefill(editor); // it needs another editor
    }
}

void VexaPropertyTreeDelegate::postRefill(QWidget *pEditor) const
{
    auto *const pDelegate = const_cast<VexaPropertyTreeDelegate *>(this);
    QMetaObject::invokeMethod(
        pEditor, [pDelegate, pEditor] { emit pDelegate->sigRefillNeeded(pEditor); },
        Qt::QueuedConnection);
}

void VexaPropertyTreeDelegate::setModelData(QWidget *editor, QAbstractItemModel *model,
                                            const QModelIndex &index) const
{
    const VexaPropertyTreeItem *const pItem = itemOf(index);
    if (!editor || !model || !pItem || !m_commits.contains(editor)) {
        return;
    }
    if (pItem->readOnly()) {
        // It was locked between the last refill and the user's act.
        EditorCommit::rollback(editor);
        const auto row = m_editors.find(editor);
        if (row != m_editors.end()) {
            row->bRefillPutOff = true;
        }
        return;
    }
    const EditorCommit::Result result = EditorCommit::takeValue(editor, pItem);
    if (!result.bWrite) {
        return;
    }
    const QPointer<const VexaPropertyTreeDelegate> pThis(this);
    if (!result.value.isNull()) {
        model->setData(index, result.value, Qt::EditRole);
    }
    if (pThis && result.bStartTimer) {
        m_pCommandTimer->start(COMMAND_TIMER_MS);
    }
}

void VexaPropertyTreeDelegate::updateEditorGeometry(QWidget *editor,
                                                    const QStyleOptionViewItem &option,
                                                    const QModelIndex &index) const
{
    const VexaPropertyTreeItem *const pItem = itemOf(index);
    // A row that has no place in the view yet comes with an empty rectangle.
    if (!editor || !pItem || option.rect.isEmpty()) {
        return;
    }
    QRect rect = option.rect;
    int nAvailable = 0;
    if (index.column() == VexaPropertyTreeModel::COLUMN_NAME) {
        rect.setLeft(rect.left() - 18);
        nAvailable = rect.right() - rect.left() + 1;
    } else {
        QStyleOptionViewItem cell = option;
        initStyleOption(&cell, index);
        cell.showDecorationSelected = true;
        cell.rect.adjust(5, 0, -10, 0);
        const QStyle *const pStyle = cell.widget ? cell.widget->style() : QApplication::style();
        rect.setLeft(
            pStyle->subElementRect(QStyle::SE_ItemViewItemText, &cell, cell.widget).left());
        nAvailable = cell.rect.right() - rect.left() + 1;
    }
    const QSize hint = editor->sizeHint();
    if (hint.width() > nAvailable) {
        rect.setRight(rect.left() + nAvailable - 1);
    }
    if (index.column() == VexaPropertyTreeModel::COLUMN_VALUE) {
        const QString strTag = pItem->tagName();
        if (strTag == QLatin1String("CustomAlgorithmCodeTag")
            || strTag == QLatin1String("CustomFormatTextEdit")) {
            rect.setLeft(NAME_SHIFT * branchesAbove(index));
        } else if (strTag == QLatin1String("CustomScreen") && rect.width() < 268) {
            rect.setLeft(rect.right() - 267);
        }
    }
    // Editors of one line stand in the middle of their row, so that rows do not touch.
    if (hint.height() <= EditorMaker::EDITOR_HEIGHT && rect.height() > EditorMaker::EDITOR_HEIGHT) {
        rect.setTop(rect.top() + (rect.height() - EditorMaker::EDITOR_HEIGHT) / 2);
        rect.setHeight(EditorMaker::EDITOR_HEIGHT);
    }
    editor->setGeometry(rect);
}

void VexaPropertyTreeDelegate::rollback(QWidget *pEditor) const
{
    EditorCommit::rollback(pEditor);
}

VexaPropertyTreeItem *VexaPropertyTreeDelegate::itemOfEditor(const QObject *pEditor) const
{
    return m_editors.value(pEditor).pItem;
}

int VexaPropertyTreeDelegate::columnOfEditor(const QObject *pEditor) const
{
    return m_editors.value(pEditor).nColumn;
}

bool VexaPropertyTreeDelegate::isBlank(const QObject *pEditor) const
{
    return m_editors.value(pEditor).bBlank;
}

void VexaPropertyTreeDelegate::commit(QWidget *pEditor)
{
    const auto row = m_editors.constFind(pEditor);
    if (m_bCommitBlocked || row == m_editors.constEnd()) {
        return;
    }
    const bool bRunning = m_commits.contains(pEditor);
    if (bRunning || !EditorCommit::isChanged(pEditor, row->bRefillPutOff)) {
        // Ending an edit that is none shows the value again as it was: the text may be another one for it.
        EditorCommit::rollback(pEditor);
        if (bRunning) {
            m_editors[pEditor].bRefillPutOff = true;
        }
        return;
    }
    const QPointer<VexaPropertyTreeDelegate> pThis(this);
    const QPointer<QWidget> pGuard(pEditor);
    m_commits.insert(pEditor);
    emit commitData(pEditor);
    if (pThis) {
        m_commits.remove(pEditor);
        if (pGuard) {
            endCommit(pEditor);
        } else {
            m_doomed.remove(pEditor);
        }
    }
}

void VexaPropertyTreeDelegate::endCommit(QWidget *pEditor)
{
    if (m_doomed.remove(pEditor)) {
        pEditor->deleteLater();
    } else if (m_editors.value(pEditor).bRefillPutOff) {
        emit sigRefillNeeded(pEditor);
    }
}

void VexaPropertyTreeDelegate::on_CommitData()
{
    commit(qobject_cast<QWidget *>(sender()));
}

void VexaPropertyTreeDelegate::on_CommitData_Combox(int)
{
    const auto *const pCombo = qobject_cast<CustomComboBox *>(sender());
    if (!pCombo || pCombo->count() > 0) {
        commit(qobject_cast<QWidget *>(sender()));
    }
}

void VexaPropertyTreeDelegate::on_CommandTimeout()
{
}

void VexaPropertyTreeDelegate::on_CommitData_Time()
{
    commit(qobject_cast<QWidget *>(sender()));
}

void VexaPropertyTreeDelegate::on_PopupHidden()
{
    auto *const pEditor = qobject_cast<QWidget *>(sender());
    if (pEditor && m_editors.value(pEditor).bRefillPutOff) {
        emit sigRefillNeeded(pEditor);
    }
}

void VexaPropertyTreeDelegate::on_CommitRecord(QWidget *pEditor)
{
    static const QLatin1String userSetCommands[] = {
        QLatin1String("UserSetLoad"),
        QLatin1String("UserSetSave"),
        QLatin1String("UserSetRecoverDefault"),
        QLatin1String("UserSetRecoverFactory"),
    };
    if (!pEditor || !m_commits.contains(pEditor)) {
        return;
    }
    const QString strName = pEditor->objectName();
    if (std::find(std::begin(userSetCommands), std::end(userSetCommands), strName)
        != std::end(userSetCommands)) {
        qInfo() << "on_CommitRecord just return" << strName;
        return;
    }
    QTaskManager *const pManager = QTaskManager::Instance();
    QCameraBasicTask *const pBasic =
        pManager ? pManager->GetTaskByID(COMMONINTERFACE::currentCameraID()) : nullptr;
    QCameraTask *const pTask = pBasic ? pBasic->_CameraTak() : nullptr;
    if (!pTask) {
        return;
    }
    const QString strCamName = pTask->GetCameraName();
    qInfo() << "VexaPropertyTreeDelegate::on_CommitRecord strCamName = " << strCamName;
    COMMONINTERFACE::AddCurrentCamModified(strCamName);
}

bool VexaPropertyTreeDelegate::eventFilter(QObject *object, QEvent *event)
{
    // The base class would commit and close on Enter, Tab, Escape and a loss of focus: these editors commit by their
    // own signals and stay open.
    auto *const pEditor = qobject_cast<QWidget *>(object);
    const auto row = m_editors.constFind(object);
    if (!pEditor || row == m_editors.constEnd()) {
        return false;
    }
    switch (event->type()) {
    case QEvent::Enter:
    case QEvent::FocusIn:
        emit sigEditorActivated(pEditor);
        break;
    case QEvent::FocusOut:
        if (row->bRefillPutOff) {
            postRefill(
                pEditor); // the editor sees its loss of focus after this filter, and commits then
        }
        break;
    case QEvent::KeyRelease:
        if (row->bRefillPutOff && !EditorCommit::hasUserText(pEditor)) {
            emit sigRefillNeeded(pEditor);
        }
        break;
    case QEvent::Wheel:
        if (!pEditor->hasFocus() && pEditor->parentWidget()) {
            // A turn over an editor that nobody works in scrolls the tree.
            const auto *const pWheel = static_cast<QWheelEvent *>(event);
            QWheelEvent moved(pEditor->mapToParent(pWheel->position().toPoint()),
                              pWheel->globalPosition(), pWheel->pixelDelta(), pWheel->angleDelta(),
                              pWheel->buttons(), pWheel->modifiers(), pWheel->phase(),
                              pWheel->inverted(), pWheel->source());
            QCoreApplication::sendEvent(pEditor->parentWidget(), &moved);
            event->setAccepted(moved.isAccepted());
            return true;
        }
        break;
    default:
        break;
    }
    return false;
}
