// Structure, value and lifetime of an item. What the views are told is in VexaPropertyTreeItemNotify.cpp.

#include "model/VexaPropertyTreeItem.h"

#include "ShellServicesModule/QLocalCfg.h"
#include "model/CTreeItemValue.h"
#include "model/ItemLocks.h"

#include <QMutexLocker>

#include <utility>

VexaPropertyTreeItem::VexaPropertyTreeItem(VexaPropertyTreeItem *pParent, ParentType eType)
    : m_pValue(std::make_unique<CTreeItemValue>())
{
    if (pParent) {
        // A new item cannot be in the list yet; looking for it would make large categories quadratic.
        m_knownRows[eType != PARENT_FEATURE_TREE] = pParent->m_children.size();
        pParent->m_children.append(this);
        if (eType == PARENT_FEATURE_TREE) {
            m_pFeatureParent = pParent;
        } else {
            m_pageParents.insert(eType, pParent);
        }
    }
}

VexaPropertyTreeItem::~VexaPropertyTreeItem()
{
    setMappingItem(nullptr);
    {
        const QMutexLocker locker(&ItemLocks::views());
        if (m_pTwins) {
            m_pTwins->remove(this);
        }
        forgetRegistrations();
    }
    clear();
}

void VexaPropertyTreeItem::addChild(VexaPropertyTreeItem *pChild)
{
    insertChild(m_children.size(), pChild);
}

void VexaPropertyTreeItem::insertChild(int nIndex, VexaPropertyTreeItem *pChild)
{
    if (!m_children.contains(pChild)) {
        m_children.insert(qBound(0, nIndex, m_children.size()), pChild);
    }
}

void VexaPropertyTreeItem::removeChild(VexaPropertyTreeItem *pChild)
{
    m_children.removeOne(pChild);
}

VexaPropertyTreeItem *VexaPropertyTreeItem::child(int nIndex) const
{
    return m_children.value(nIndex, nullptr);
}

int VexaPropertyTreeItem::childCount() const
{
    return m_children.size();
}

VexaPropertyTreeItem *VexaPropertyTreeItem::findChild(const QString &strName) const
{
    for (VexaPropertyTreeItem *pChild : m_children) {
        if (pChild && pChild->m_pValue && pChild->m_pValue->m_strNodeName == strName) {
            return pChild;
        }
    }
    return nullptr;
}

VexaPropertyTreeItem *VexaPropertyTreeItem::parent(ParentType eType) const
{
    return eType == PARENT_FEATURE_TREE ? m_pFeatureParent : m_pageParents.value(eType, nullptr);
}

void VexaPropertyTreeItem::setParent(VexaPropertyTreeItem *pParent, ParentType eType)
{
    VexaPropertyTreeItem *pOldParent = parent(eType);
    if (pOldParent == pParent) {
        return;
    }
    if (pOldParent) {
        pOldParent->removeChild(this);
    }
    if (eType == PARENT_FEATURE_TREE) {
        m_pFeatureParent = pParent;
    } else if (pParent) {
        m_pageParents.insert(eType, pParent);
    } else {
        m_pageParents.remove(eType);
    }
    if (pParent) {
        pParent->addChild(this);
    }
}

int VexaPropertyTreeItem::indexInParent(ParentType eType) const
{
    const VexaPropertyTreeItem *pParent = parent(eType);
    if (!pParent) {
        return -1;
    }
    int &nRow = m_knownRows[eType != PARENT_FEATURE_TREE];
    if (pParent->child(nRow) != this) {
        nRow = pParent->m_children.indexOf(const_cast<VexaPropertyTreeItem *>(this));
    }
    return nRow;
}

void VexaPropertyTreeItem::clear()
{
    const QList<VexaPropertyTreeItem *> children = m_children;
    m_children.clear();
    qDeleteAll(children);
}

void VexaPropertyTreeItem::copy(VexaPropertyTreeItem *pSource)
{
    if (!pSource || pSource == this || !pSource->m_pValue || !m_pValue) {
        return;
    }
    setTagName(pSource->m_strTagName);
    const std::unique_ptr<CTreeItemValue> snapshot = pSource->valueSnapshot();
    const QString strVisibility = pSource->visibilityString();
    {
        const ItemLock lock(this);
        if (m_pValue) {
            m_pValue->copy(snapshot.get(), true);
        }
        m_strVisibility = strVisibility;
    }
    m_bReadOnly = pSource->m_bReadOnly.load();
    m_bWriteOnly = pSource->m_bWriteOnly.load();
    m_nItemType = pSource->m_nItemType;
    m_bVisible = pSource->m_bVisible.load();
    m_bWantsVisible = pSource->m_bWantsVisible.load();
    m_bValueCached = pSource->m_bValueCached.load();
}

CTreeItemValue *VexaPropertyTreeItem::value() const
{
    return m_pValue.get();
}

QString VexaPropertyTreeItem::tagName() const
{
    return m_strTagName;
}

void VexaPropertyTreeItem::setTagName(const QString &strTagName)
{
    if (strTagName.isEmpty() || strTagName == m_strTagName || !m_pValue) {
        return;
    }
    replaceValue(strTagName);
    for (VexaPropertyTreeItem *pRow : otherRows()) {
        pRow->setTagName(strTagName);
    }
}

void VexaPropertyTreeItem::changeTagName(const QString &strTagName, long lCameraID)
{
    if (strTagName.isEmpty() || strTagName == m_strTagName) {
        return;
    }
    QVector<VexaPropertyTreeItem *> rows = otherRows();
    rows.append(this);
    for (VexaPropertyTreeItem *pRow : qAsConst(rows)) {
        const ItemLock lock(pRow);
        if (!pRow->m_pValue) {
            continue;
        }
        CTreeItemValue pageNames;
        pageNames = *pRow->m_pValue;
        pRow->replaceValue(strTagName);
        pRow->m_bValueCached = false;
        if (pRow->m_pValue) {
            pRow->m_pValue->m_stepPageNames = pageNames.m_stepPageNames;
            pRow->m_pValue->m_strStepDisplayNameEn = pageNames.m_strStepDisplayNameEn;
            pRow->m_pValue->m_strStepDisplayNameCn = pageNames.m_strStepDisplayNameCn;
        }
    }
    notifyViewUpdate(lCameraID, -1, true, false);
}

void VexaPropertyTreeItem::replaceValue(const QString &strTagName)
{
    m_strTagName = strTagName;
    const std::unique_ptr<CTreeItemValue> oldValue =
        std::exchange(m_pValue, CTreeItemValue::create(strTagName));
    if (m_pValue) {
        // Only the names pass: what a value of one kind holds means something else in another.
        CTreeItemValue names;
        names.copy(oldValue.get(), true);
        m_pValue->copy(&names, true);
    }
}

ITEM_TYEP VexaPropertyTreeItem::itemType() const
{
    return m_nItemType;
}

void VexaPropertyTreeItem::setItemType(ITEM_TYEP eType)
{
    m_nItemType = eType;
}

bool VexaPropertyTreeItem::isFeatureTreeItem() const
{
    return m_bIsFeatureTreeItem;
}

void VexaPropertyTreeItem::setIsFeatureTreeItem(bool bFeatureTreeItem)
{
    m_bIsFeatureTreeItem = bFeatureTreeItem;
}

VexaPropertyTreeItem *VexaPropertyTreeItem::mappingItem() const
{
    const QMutexLocker locker(&ItemLocks::views());
    return m_pMappingItem;
}

void VexaPropertyTreeItem::setMappingItem(VexaPropertyTreeItem *pItem)
{
    const QMutexLocker locker(&ItemLocks::views());
    if (pItem == m_pMappingItem || pItem == this) {
        return;
    }
    if (m_pMappingItem) {
        m_pMappingItem->m_pMappingItem = nullptr;
    }
    m_pMappingItem = pItem;
    if (!pItem) {
        return;
    }
    if (pItem->m_pMappingItem) {
        pItem->m_pMappingItem->m_pMappingItem = nullptr;
    }
    pItem->m_pMappingItem = this;
}

void VexaPropertyTreeItem::joinTwins(VexaPropertyTreeItem *pItem)
{
    const QMutexLocker locker(&ItemLocks::views());
    if (!pItem->m_pTwins) {
        pItem->m_pTwins = std::make_shared<QSet<VexaPropertyTreeItem *>>();
        pItem->m_pTwins->insert(pItem);
    }
    m_pTwins = pItem->m_pTwins;
    m_pTwins->insert(this);
}

QVector<VexaPropertyTreeItem *> VexaPropertyTreeItem::otherRows()
{
    const QMutexLocker locker(&ItemLocks::views());
    QVector<VexaPropertyTreeItem *> rows;
    forAllRows([&](VexaPropertyTreeItem &row) {
        if (&row != this) {
            rows.append(&row);
        }
    });
    return rows;
}

QString VexaPropertyTreeItem::visibilityString() const
{
    const ItemLock lock(this);
    return m_strVisibility;
}

void VexaPropertyTreeItem::setVisibilityString(const QString &strVisibility)
{
    const QMutexLocker locker(&ItemLocks::views());
    forAllRows([&strVisibility](VexaPropertyTreeItem &row) {
        const ItemLock lock(&row);
        if (row.m_strVisibility != strVisibility) {
            row.m_strVisibility = strVisibility;
        }
    });
}

bool VexaPropertyTreeItem::searchVisible(const QString &strFilter) const
{
    const QString strText = strFilter.trimmed();
    QLocalCfg *pConfiguration = QLocalCfg::Instance();
    if (!pConfiguration) {
        return false;
    }
    if (strText.isEmpty()) {
        return true;
    }
    const bool bEnglish = pConfiguration->GetPropertyLan() == QLatin1String("ENG");
    QString strNodeName;
    QString strShownName;
    {
        const ItemLock lock(this);
        if (!m_pValue) {
            return false;
        }
        strNodeName = m_pValue->m_strNodeName;
        strShownName = bEnglish ? m_pValue->displayName() : m_pValue->translateName();
    }
    return strNodeName.contains(strText, Qt::CaseInsensitive)
        || strShownName.contains(strText, Qt::CaseInsensitive);
}

bool VexaPropertyTreeItem::isLastVisibleChild(const QString &strFilter) const
{
    const VexaPropertyTreeItem *pParent = parent(PARENT_FEATURE_TREE);
    if (!pParent) {
        return false;
    }
    for (auto it = pParent->m_children.crbegin(); it != pParent->m_children.crend(); ++it) {
        if (*it && (*it)->visible() && (*it)->searchVisible(strFilter)) {
            return *it == this;
        }
    }
    return false;
}

void VexaPropertyTreeItem::updateLock() const
{
    m_updateMutex.lock();
}

void VexaPropertyTreeItem::updateUnlock() const
{
    m_updateMutex.unlock();
}

bool VexaPropertyTreeItem::isValueCached() const
{
    return m_bValueCached;
}

void VexaPropertyTreeItem::setValueCached(bool bCached)
{
    m_bValueCached = bCached;
}

void VexaPropertyTreeItem::setWriteOnly(bool bWriteOnly)
{
    const QMutexLocker locker(&ItemLocks::views());
    forAllRows([bWriteOnly](VexaPropertyTreeItem &row) { row.m_bWriteOnly = bWriteOnly; });
}

quint64 VexaPropertyTreeItem::beginReading()
{
    return ++m_nNextReading;
}

bool VexaPropertyTreeItem::publishReading(quint64 nReading, ReadingPart ePart)
{
    if (nReading < m_publishedReadings[ePart]) {
        return false;
    }
    m_publishedReadings[ePart] = nReading;
    ++m_nPublications;
    return true;
}

std::unique_ptr<CTreeItemValue> VexaPropertyTreeItem::valueSnapshot() const
{
    const ItemLock lock(this);
    std::unique_ptr<CTreeItemValue> snapshot = CTreeItemValue::create(m_strTagName);
    if (!snapshot || !m_pValue) {
        return std::make_unique<CTreeItemValue>();
    }
    *snapshot = *m_pValue;
    snapshot->copy(m_pValue.get(), false);
    if (!ItemLocks::isValueTag(m_strTagName)) {
        // Buttons and format texts do not move by copy().
        snapshot->setValue(m_pValue->value());
    }
    return snapshot;
}

void VexaPropertyTreeItem::editorTookOver(CTreeItemValue &snapshot, bool bReadOnly, bool bCached)
{
    snapshot.updateEditorInfo(bReadOnly);
    const ItemLock lock(this);
    if (m_pValue) {
        m_pValue->m_strCurrentStatus = snapshot.m_strCurrentStatus;
    }
    m_bEditorCached = bCached;
}

void VexaPropertyTreeItem::editorTookOver()
{
    const ItemLock lock(this);
    if (m_pValue) {
        m_pValue->updateEditorInfo(m_bReadOnly);
    }
    m_bEditorCached = m_bValueCached.load();
}

bool VexaPropertyTreeItem::toolTipsAreOf(const QByteArray &state) const
{
    const ItemLock lock(this);
    return m_toolTipState == state;
}

void VexaPropertyTreeItem::setToolTips(const QString &strEnglish, const QString &strChinese,
                                       const QByteArray &state)
{
    const QMutexLocker locker(&ItemLocks::views());
    forAllRows([&](VexaPropertyTreeItem &row) {
        const ItemLock lock(&row);
        if (row.m_pValue) {
            row.m_pValue->m_strToolTip = strEnglish;
            row.m_pValue->m_strToolTipCn = strChinese;
            row.m_toolTipState = state;
        }
    });
}

void VexaPropertyTreeItem::releaseTransInfo()
{
}
