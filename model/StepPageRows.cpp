#include "model/StepPageRows.h"

#include "model/CTreeEnumationItemValue.h"
#include "model/CTreeStringItemValue.h"
#include "model/CustomItemValues.h"
#include "model/ItemLocks.h"
#include "model/VexaPropertyTreeItem.h"

#include <algorithm>

namespace {

/// What a row made for a page keeps of its feature's value. Rows that keep nothing are refilled all the same: their
/// editors look at the feature.
void takeValueOver(const VexaPropertyTreeItem &feature, VexaPropertyTreeItem &row)
{
    const std::unique_ptr<CTreeItemValue> snapshot = feature.valueSnapshot();
    const ItemLock lock(&row);
    if (auto *pText = dynamic_cast<CTreeFormatStringTextItemValue *>(row.value())) {
        if (const auto *pSource = dynamic_cast<const CTreeStringItemValue *>(snapshot.get())) {
            pText->m_nMaxLength = pSource->m_nMaxLength;
            pText->m_strValue = pSource->m_strValue;
        }
    } else if (auto *pScreen = dynamic_cast<CTreeScreenSelectItemValue *>(row.value())) {
        if (const auto *pSource = dynamic_cast<const CTreeEnumationItemValue *>(snapshot.get())) {
            pScreen->m_nValue = int(pSource->m_nValue);
        }
    }
}

} // namespace

void StepPageRows::watch(long lCameraID, VexaPropertyTreeItem *pItem, IVexaFeatureNotify *pView)
{
    m_watched[lCameraID].insert(pItem);
    pItem->registerView(pView);
}

void StepPageRows::follow(long lCameraID, VexaPropertyTreeItem *pFeature,
                          VexaPropertyTreeItem *pRow, int nWhat, IVexaFeatureNotify *pView)
{
    const Follower follower{lCameraID, pFeature, pRow, nWhat};
    watch(lCameraID, pFeature, pView);
    m_followers[pFeature].append(follower);
    takeOver(follower, FOLLOW_ALL);
}

void StepPageRows::takeOver(const Follower &follower, int nChanges)
{
    const int nWhat = follower.nWhat & nChanges;
    if (nWhat & FOLLOW_VISIBLE) {
        follower.pRow->setVisible(follower.pFeature->visible(), follower.lCameraID, false);
    }
    if (nWhat & FOLLOW_READ_ONLY) {
        follower.pRow->setReadOnly(follower.lCameraID, follower.pFeature->readOnly());
    }
    if (nWhat & FOLLOW_VALUE) {
        takeValueOver(*follower.pFeature, *follower.pRow);
    }
    if (nWhat & (FOLLOW_VALUE | FOLLOW_READ_ONLY)) {
        follower.pRow->notifyViewUpdate(follower.lCameraID, -1, false, false);
    }
}

void StepPageRows::bringUp(VexaPropertyTreeItem *pFeature, Follow eChange)
{
    // On a copy: an editor that is refilled may run what takes the page down.
    const QVector<Follower> followers = m_followers.value(pFeature);
    for (const Follower &follower : followers) {
        if (isFollowed(pFeature)) {
            takeOver(follower, eChange);
        }
    }
}

void StepPageRows::bringAllUp(long lCameraID)
{
    const QList<const VexaPropertyTreeItem *> features = m_followers.keys();
    for (const VexaPropertyTreeItem *pFeature : features) {
        const QVector<Follower> followers = m_followers.value(pFeature);
        for (const Follower &follower : followers) {
            if (follower.lCameraID == lCameraID && isFollowed(pFeature)) {
                takeOver(follower, FOLLOW_ALL);
            }
        }
    }
}

void StepPageRows::setEditable(long lCameraID, bool bEditable)
{
    if (bEditable) {
        m_readOnly.remove(lCameraID);
    } else {
        m_readOnly.insert(lCameraID);
    }
}

void StepPageRows::forget(long lCameraID, IVexaFeatureNotify *pView)
{
    m_readOnly.remove(lCameraID);
    const QSet<VexaPropertyTreeItem *> watched = m_watched.take(lCameraID);
    for (VexaPropertyTreeItem *pItem : watched) {
        VexaPropertyTreeItem::removeViewFrom(pItem, pView);
    }
    for (auto it = m_followers.begin(); it != m_followers.end();) {
        it->erase(std::remove_if(it->begin(), it->end(),
                                 [lCameraID](const Follower &follower) {
                                     return follower.lCameraID == lCameraID;
                                 }),
                  it->end());
        it = it->isEmpty() ? m_followers.erase(it) : std::next(it);
    }
}
