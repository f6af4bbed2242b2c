#include "editors/LightingAccess.h"

#include "DeviceTaskModule/QCameraTask.h"
#include "editors/EditorHost.h"
#include "editors/LightingLayout.h"
#include "model/CTreeBooleanItemValue.h"
#include "model/CTreeEnumationItemValue.h"
#include "model/CustomItemValues.h"
#include "model/EnumRecord.h"
#include "model/ItemLocks.h"
#include "tree/CameraLookup.h"
#include "tree/QGetFeaturesThread.h"
#include "tree/VexaFeatureTree.h"

#include <QDebug>

#include <algorithm>
#include <iterator>

namespace {

const QString &bitmapName()
{
    static const QString name = QStringLiteral("LightingBitmap");
    return name;
}

QString nameOf(const VexaPropertyTreeItem *pItem)
{
    const ItemLock lock(pItem);
    return pItem->value() ? pItem->value()->m_strNodeName : QString();
}

void logRefusal(QCameraTask &task, const QString &strNode)
{
    qWarning().noquote()
        << QStringLiteral("the device refused %1: %2").arg(strNode, task.GetLastErrorRemark());
}

} // namespace

LightingAccess::LightingAccess(VexaPropertyTreeItem *pRow)
{
    {
        const ItemLock lock(pRow);
        const auto *const pValue =
            dynamic_cast<const CTreeCustomLightingSelectorItemValue *>(pRow->value());
        if (!pValue) {
            return;
        }
        m_nType = pValue->m_nLightingType;
        m_lCameraID = pValue->m_nCameraID;
        m_pSelector = pValue->m_pSelectorItem;
        m_pEnable = pValue->m_pEnableItem;
        std::copy(std::begin(pValue->m_settingItems), std::end(pValue->m_settingItems),
                  m_settings.begin());
        m_pAllOff = pValue->m_pAllOffItem;
        m_pAllOn = pValue->m_pAllOnItem;
    }
    if (const VexaFeatureTree *const pTree = tree()) {
        m_pBitmap = pTree->propertyItemByName(bitmapName());
    }
    if (m_pEnable) {
        m_strEnable = nameOf(m_pEnable);
    }
    if (!m_pSelector) {
        return;
    }
    m_strSelector = nameOf(m_pSelector);
    const std::unique_ptr<CTreeItemValue> value = m_pSelector->valueSnapshot();
    if (const auto *const pSelector = dynamic_cast<const CTreeEnumationItemValue *>(value.get())) {
        const LightingLayout &layout = LightingLayout::of(m_nType);
        const QMap<qint64, QString> names = pSelector->getAllEnumationMap();
        for (auto it = names.cbegin(); it != names.cend(); ++it) {
            const quint32 nBit = layout.bitOfName(it.value());
            if (nBit != 0 && !m_entries.contains(nBit)) {
                m_entries.insert(nBit, it.key());
                m_names.insert(nBit, it.value());
            }
        }
    }
}

bool LightingAccess::operator==(const LightingAccess &other) const
{
    return m_nType == other.m_nType && m_lCameraID == other.m_lCameraID
        && m_pSelector == other.m_pSelector && m_pEnable == other.m_pEnable
        && m_pBitmap == other.m_pBitmap && m_settings == other.m_settings
        && m_pAllOff == other.m_pAllOff && m_pAllOn == other.m_pAllOn
        && m_entries == other.m_entries;
}

VexaFeatureTree *LightingAccess::tree() const
{
    return EditorHost::featureTree(m_lCameraID);
}

QCameraTask *LightingAccess::task() const
{
    return cameraTaskOf(m_lCameraID);
}

bool LightingAccess::isLive() const
{
    const VexaFeatureTree *const pTree = tree();
    return pTree && m_pSelector && m_pEnable
        && pTree->propertyItemByName(m_strSelector) == m_pSelector
        && pTree->propertyItemByName(m_strEnable) == m_pEnable;
}

qint64 LightingAccess::knownEntry() const
{
    const ItemLock lock(m_pSelector);
    const auto *const pValue = dynamic_cast<const CTreeEnumationItemValue *>(m_pSelector->value());
    return pValue ? pValue->m_nValue : -1;
}

bool LightingAccess::knownEnable() const
{
    const ItemLock lock(m_pEnable);
    const auto *const pValue = dynamic_cast<const CTreeBooleanItemValue *>(m_pEnable->value());
    return pValue && pValue->m_bValue;
}

void LightingAccess::setKnownEntry(qint64 nEntry) const
{
    const ItemLock lock(m_pSelector);
    if (auto *const pValue = dynamic_cast<CTreeEnumationItemValue *>(m_pSelector->value())) {
        pValue->m_nValue = nEntry;
    }
}

bool LightingAccess::readEntry(qint64 &nEntry) const
{
    QCameraTask *const pTask = task();
    const EnumRecord record;
    if (!pTask || !record
        || !pTask->GetEnumerationValue(m_strSelector, record.get(), nullptr, false, false)) {
        return false;
    }
    nEntry = record->value;
    return true;
}

bool LightingAccess::readEnable(bool &bOn) const
{
    QCameraTask *const pTask = task();
    return pTask && pTask->GetBooleanValue(m_strEnable, &bOn, nullptr, false, false);
}

bool LightingAccess::readBitmap(quint32 &nMask) const
{
    QCameraTask *const pTask = task();
    _NODE_INT_VALUE_ record{};
    if (!pTask || !pTask->GetIntegerValue(bitmapName(), &record, nullptr, false, false)) {
        return false;
    }
    nMask = 0;
    for (auto it = m_entries.cbegin(); it != m_entries.cend(); ++it) {
        const bool bOn = *it >= 0 && *it < 64 && ((quint64(record.value) >> *it) & 1) != 0;
        nMask |= bOn ? it.key() : 0;
    }
    qInfo() << "LightingBitmap" << record.value << "segments" << nMask;
    return true;
}

bool LightingAccess::walkSegments(quint32 &nMask, bool bWithAll) const
{
    qint64 nStart = 0;
    if (!readEntry(nStart)) {
        return false;
    }
    quint32 nRead = 0;
    bool bDone = true;
    for (auto it = m_entries.cbegin(); bDone && it != m_entries.cend(); ++it) {
        if (it.key() != LIGHT_ALL || bWithAll) {
            bool bOn = false;
            bDone = select(*it) && readEnable(bOn);
            nRead |= bOn ? it.key() : 0;
        }
    }
    restore(nStart);
    if (bDone) {
        nMask = nRead;
    }
    announce(); // a worker may have read in the middle
    return bDone;
}

bool LightingAccess::select(qint64 nEntry) const
{
    QCameraTask *const pTask = task();
    qint64 nPresent = -1;
    if (!pTask || !pTask->SetEnumerationValue(m_strSelector, quint32(nEntry), nullptr)) {
        if (pTask) {
            logRefusal(*pTask, m_strSelector);
        }
        return false;
    }
    return readEntry(nPresent) && nPresent == nEntry;
}

void LightingAccess::restore(qint64 nEntry) const
{
    qint64 nPresent = -1;
    if (!readEntry(nPresent) || nPresent != nEntry) {
        select(nEntry);
    }
}

bool LightingAccess::switchSelected(bool bOn) const
{
    QCameraTask *const pTask = task();
    if (pTask && !pTask->SetBooleanValue(m_strEnable, bOn, nullptr)) {
        logRefusal(*pTask, m_strEnable);
        return false;
    }
    return pTask != nullptr;
}

bool LightingAccess::writeSegment(quint32 nBit, bool bOn) const
{
    const auto it = m_entries.constFind(nBit);
    if (it == m_entries.constEnd() || !isLive()
        || !tree()->setFeatureValue(m_pSelector, int(*it), true, false)) {
        return false;
    }
    // While polling is on the tree keeps the selector from the device.
    qint64 nPresent = -1;
    return isLive() && readEntry(nPresent) && nPresent == *it
        && tree()->setFeatureValue(m_pEnable, bOn, true, false);
}

bool LightingAccess::spreadSetting(int nSetting, qint64 nValue, qint64 nSkippedEntry) const
{
    QCameraTask *const pTask = task();
    VexaPropertyTreeItem *const pSetting = settingItem(nSetting);
    qint64 nStart = 0;
    if (!pTask || !pSetting || !readEntry(nStart)) {
        return false;
    }
    const QString strSetting = nameOf(pSetting);
    bool bDone = true;
    for (auto it = m_entries.cbegin(); bDone && it != m_entries.cend(); ++it) {
        if (*it != nSkippedEntry) {
            bDone = select(*it);
            if (bDone && !pTask->SetIntegerValue(strSetting, nValue, nullptr)) {
                logRefusal(*pTask, strSetting);
                bDone = false;
            }
        }
    }
    restore(nStart);
    announce({strSetting});
    return bDone;
}

void LightingAccess::refreshItems() const
{
    for (VexaPropertyTreeItem *const pItem : {m_pBitmap, m_pSelector, m_pEnable}) {
        if (pItem && isLive()) {
            tree()->updateFeature(pItem, QGetFeaturesThread::UPDATE_VISIBLE_VALUE);
        }
    }
}

void LightingAccess::announce(const QStringList &further) const
{
    if (VexaFeatureTree *const pTree = tree()) {
        QStringList names{m_strSelector, m_strEnable};
        names += further;
        pTree->OnAddValueChangedNodes(names);
    }
}
