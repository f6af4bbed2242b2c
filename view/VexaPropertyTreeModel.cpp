#include "view/VexaPropertyTreeModel.h"

#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "model/IVexaFeatureWidget.h"
#include "view/EditorValue.h"
#include "view/ItemNames.h"
#include "view/NodeNameRules.h"
#include "view/PropertyLanguage.h"

#include <QColor>
#include <QDebug>
#include <QFont>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QSize>

#include <algorithm>
#include <iterator>

namespace {

bool isCameraGone(long lCameraID)
{
    QTaskManager *const pManager = QTaskManager::Instance();
    QCameraBasicTask *const pBasic = pManager ? pManager->GetTaskByID(lCameraID) : nullptr;
    const QCameraTask *const pTask = pBasic ? pBasic->_CameraTak() : nullptr;
    return !pTask || pTask->m_bReleasing;
}

QVariant categoryFont()
{
    QFont font;
    font.setWeight(75);
    font.setPixelSize(15);
    font.setWeight(700);
    return font;
}

} // namespace

VexaPropertyTreeModel::VexaPropertyTreeModel(ParentType eType, QObject *parent)
    : QAbstractItemModel(parent)
    , m_eType(eType)
{
}

QModelIndex VexaPropertyTreeModel::index(int row, int column, const QModelIndex &parent) const
{
    // Only the name column has rows below it.
    if (!m_pRootItem || row < 0 || column < 0 || column >= COLUMN_COUNT
        || parent.column() > COLUMN_NAME) {
        return QModelIndex();
    }
    const VexaPropertyTreeItem *pParent = itemFromIndex(parent);
    if (!pParent) {
        pParent = m_pRootItem;
    }
    VexaPropertyTreeItem *const pChild = pParent->child(row);
    return pChild ? createIndex(row, column, pChild) : QModelIndex();
}

QModelIndex VexaPropertyTreeModel::parent(const QModelIndex &index) const
{
    const VexaPropertyTreeItem *const pItem = itemFromIndex(index);
    VexaPropertyTreeItem *const pParent = pItem ? pItem->parent(m_eType) : nullptr;
    return pParent ? indexFromItem(pParent, COLUMN_NAME) : QModelIndex();
}

int VexaPropertyTreeModel::rowCount(const QModelIndex &parent) const
{
    if (!m_pRootItem || parent.column() > COLUMN_NAME) {
        return 0;
    }
    if (!parent.isValid()) {
        return m_pRootItem->childCount();
    }
    const VexaPropertyTreeItem *const pParent = itemFromIndex(parent);
    return pParent ? pParent->childCount() : 0;
}

int VexaPropertyTreeModel::columnCount(const QModelIndex &) const
{
    return COLUMN_COUNT;
}

QVariant VexaPropertyTreeModel::data(const QModelIndex &index, int role) const
{
    const VexaPropertyTreeItem *const pItem = itemFromIndex(index);
    if (!pItem || !pItem->value()) {
        return QVariant();
    }
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return index.column() == COLUMN_NAME ? displayText(pItem, index.column()) : QVariant();
    case Qt::ToolTipRole:
        return toolTip(pItem, index.column());
    case Qt::FontRole:
        return pItem->itemType() == ITEM_CATEGORY ? categoryFont() : QVariant();
    case Qt::TextAlignmentRole:
        return int(Qt::AlignLeft | Qt::AlignVCenter);
    case Qt::ForegroundRole:
        if (pItem->itemType() == ITEM_CATEGORY) {
            return QColor(0xF2, 0xF2, 0xF2);
        }
        if (index.column() == COLUMN_VALUE && (pItem->readOnly() || !m_bEditable)) {
            return QColor(Qt::gray);
        }
        return QColor(0xD1, 0xD1, 0xD1);
    case Qt::SizeHintRole:
        return isCategoryRow(pItem) ? QVariant(QSize(-1, 56)) : QVariant();
    default:
        return QVariant();
    }
}

QString VexaPropertyTreeModel::displayText(const VexaPropertyTreeItem *pItem, int nColumn) const
{
    if (pItem->tagName() == QLatin1String("CustomFormatTextEdit")
        || NodeNameRules::hintKind(nodeNameOf(pItem, nColumn)) != NodeNameRules::NO_HINT) {
        return QString();
    }
    const ItemLock lock(pItem);
    return rowName(*pItem->value(), m_eType);
}

QString VexaPropertyTreeModel::rowName(const CTreeItemValue &value, ParentType eType)
{
    const bool bChinese = isPropertyLanguageChinese(eType);
    if (eType == PARENT_FEATURE_TREE) {
        return bChinese ? value.translateName() : value.displayName();
    }
    return bChinese ? value.StepPagesTranslateName() : value.StepPagesDisplayName();
}

QVariant VexaPropertyTreeModel::toolTip(const VexaPropertyTreeItem *pItem, int nColumn) const
{
    if (nColumn == COLUMN_NAME) {
        if (NodeNameRules::hintKind(nodeNameOf(pItem, nColumn)) != NodeNameRules::NO_HINT) {
            return QString();
        }
        const bool bChinese = isPropertyLanguageChinese(m_eType);
        const ItemLock lock(pItem);
        const CTreeItemValue &value = *pItem->value();
        if (!bChinese) {
            return value.displayName();
        }
        return m_eType == PARENT_FEATURE_TREE ? value.translateName()
                                              : value.StepPagesTranslateName();
    }
    if (pItem->tagName() != QLatin1String("CustomWatermarkFeatureTag")) {
        return QVariant();
    }
    static const QLatin1String pageTitled[] = {
        QLatin1String("WAYBILL_Enable"),
        QLatin1String("WAYBILL_OutputImageType"),
        QLatin1String("WAYBILL_JpgQuality"),
    };
    const ItemLock lock(pItem);
    QString strText = pItem->value()->toolTip(nColumn);
    if (strText.startsWith(QLatin1String("Custom_"))) {
        strText.remove(0, int(qstrlen("Custom_")));
    }
    if (std::find(std::begin(pageTitled), std::end(pageTitled), strText) != std::end(pageTitled)) {
        strText = pItem->value()->StepPagesTranslateName();
    }
    return strText.isEmpty() ? QVariant() : strText;
}

bool VexaPropertyTreeModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    VexaPropertyTreeItem *const pItem = itemFromIndex(index);
    if (m_lCameraID == -1 || role != Qt::EditRole || !m_pFeatureWidget || !pItem
        || !pItem->value()) {
        return true;
    }
    const QString strTag = pItem->tagName();
    const long lCameraID = m_lCameraID;
    if (EditorValue::isEqual(pItem, value)) {
        pItem->notifyViewUpdate(lCameraID, 1, false, false);
        return true;
    }
    const QString strName = nodeNameOf(pItem, index.column());
    if (m_writing.contains(strName)) {
        qInfo().noquote() << strName << "is being written already";
        pItem->notifyViewUpdate(lCameraID, 1, false, false);
        return false;
    }
    qInfo() << qUtf8Printable(
        QStringLiteral("begin set node: %1 type: %2 value: ").arg(strName, strTag))
            << value;
    // Boxes in the write run other events, which may close the camera or take the row out.
    const QPointer<VexaPropertyTreeModel> pThis(this);
    const QPointer<IVexaFeatureWidget> pWidget(m_pFeatureWidget);
    const QPersistentModelIndex row(index);
    m_writing.insert(strName);
    const bool bWritten = pWidget->setFeatureValue(strTag, strName, value);
    if (!pThis) {
        return true;
    }
    m_writing.remove(strName);
    if (bWritten) {
        if (row.isValid()) {
            EditorValue::store(pItem, strName, value);
            pItem->notifyViewUpdate(lCameraID, 3, false, false);
        }
        if (pThis && pWidget && row.isValid()) {
            pWidget->afterSetFeatureValue(strName);
        }
        return true;
    }
    qInfo() << "set data failed!";
    if (strName == QLatin1String("DeviceReset")) {
        return false;
    }
    const bool bGone = isCameraGone(lCameraID);
    qInfo() << "setData" << bGone;
    if (bGone || !row.isValid()) {
        return true; // nothing to fall back to
    }
    pItem->notifyViewUpdate(lCameraID, 1, false, false);
    return false;
}

QVariant VexaPropertyTreeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal || section < 0
        || section >= m_headerLabels.size()) {
        return QVariant();
    }
    return m_headerLabels.at(section);
}

Qt::ItemFlags VexaPropertyTreeModel::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags base = QAbstractItemModel::flags(index);
    const VexaPropertyTreeItem *const pItem = itemFromIndex(index);
    if (!pItem) {
        return base;
    }
    const bool bValueColumn = index.column() == COLUMN_VALUE;
    if (pItem->tagName() == QLatin1String("CustomLightingSelector")) {
        return bValueColumn ? Qt::ItemIsEditable : Qt::NoItemFlags;
    }
    return bValueColumn && m_bEditable && !pItem->readOnly() ? base | Qt::ItemIsEditable : base;
}

void VexaPropertyTreeModel::setRootItem(VexaPropertyTreeItem *pRoot)
{
    beginResetModel();
    m_pRootItem = pRoot;
    m_rowCache.clear();
    endResetModel();
}

void VexaPropertyTreeModel::clearRoot()
{
    beginResetModel();
    if (m_pRootItem) {
        m_pRootItem->clear();
    }
    m_pRootItem = nullptr;
    m_rowCache.clear();
    endResetModel();
}

QModelIndex VexaPropertyTreeModel::indexFromItem(VexaPropertyTreeItem *pItem, int nColumn) const
{
    const int nRow = pItem && pItem != m_pRootItem ? rowOf(pItem) : -1;
    return nRow < 0 ? QModelIndex() : createIndex(nRow, nColumn, pItem);
}

VexaPropertyTreeItem *VexaPropertyTreeModel::itemFromIndex(const QModelIndex &index)
{
    return index.isValid() ? static_cast<VexaPropertyTreeItem *>(index.internalPointer()) : nullptr;
}

int VexaPropertyTreeModel::rowOf(VexaPropertyTreeItem *pItem) const
{
    const VexaPropertyTreeItem *const pParent = pItem->parent(m_eType);
    if (!pParent) {
        return -1;
    }
    const int nCached = m_rowCache.value(pItem, -1);
    if (nCached >= 0 && pParent->child(nCached) == pItem) {
        return nCached;
    }
    // One walk enters all siblings: a walk a row would be quadratic for a wide category.
    for (int i = 0; i < pParent->childCount(); ++i) {
        m_rowCache.insert(pParent->child(i), i);
    }
    return pItem->indexInParent(m_eType);
}

void VexaPropertyTreeModel::insertRowNotify(VexaPropertyTreeItem *pParent, int nRow)
{
    if (!pParent) {
        return;
    }
    beginInsertRows(indexFromItem(pParent, COLUMN_NAME), nRow,
                    qMax(nRow, pParent->childCount() - 1));
    endInsertRows();
}

void VexaPropertyTreeModel::removeRowNotify(VexaPropertyTreeItem *pParent,
                                            VexaPropertyTreeItem *pChild)
{
    if (!pParent || (!pChild && pParent->childCount() == 0)) {
        return;
    }
    const int nFirst = pChild ? rowOf(pChild) : 0;
    const int nLast = pChild ? nFirst : pParent->childCount() - 1;
    if (nFirst < 0) {
        return;
    }
    beginRemoveRows(indexFromItem(pParent, COLUMN_NAME), nFirst, nLast);
    if (pChild) {
        pChild->setParent(nullptr, m_eType);
    }
    m_rowCache.clear();
    endRemoveRows();
}
