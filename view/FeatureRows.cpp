#include "view/FeatureRows.h"

#include "model/VexaPropertyTreeItem.h"

void FeatureRows::add(VexaPropertyTreeItem *pItem)
{
    m_rows[pItem];
    for (int i = 0; i < pItem->childCount(); ++i) {
        if (VexaPropertyTreeItem *const pChild = pItem->child(i)) {
            add(pChild);
        }
    }
}

void FeatureRows::remove(VexaPropertyTreeItem *pItem)
{
    const auto it = m_rows.constFind(pItem);
    if (it == m_rows.constEnd()) {
        return;
    }
    if (it->bHidden) {
        const auto parent = m_rows.find(pItem->parent(m_nParentType));
        if (parent != m_rows.end()) {
            --parent->nHiddenChildren;
        }
    }
    for (int i = 0; i < pItem->childCount(); ++i) {
        if (VexaPropertyTreeItem *const pChild = pItem->child(i)) {
            remove(pChild);
        }
    }
    m_rows.remove(pItem);
}

bool FeatureRows::setHidden(VexaPropertyTreeItem *pItem, bool bHidden)
{
    const auto it = m_rows.find(pItem);
    if (it == m_rows.end() || it->bHidden == bHidden) {
        return false;
    }
    it->bHidden = bHidden;
    const auto parent = m_rows.find(pItem->parent(m_nParentType));
    if (parent != m_rows.end()) {
        parent->nHiddenChildren += bHidden ? 1 : -1;
    }
    return true;
}

bool FeatureRows::hasShownChild(const VexaPropertyTreeItem *pItem) const
{
    return m_rows.value(pItem).nHiddenChildren < pItem->childCount();
}

void FeatureRows::setOpened(const VexaPropertyTreeItem *pItem)
{
    const auto it = m_rows.find(pItem);
    if (it != m_rows.end()) {
        it->bOpened = true;
    }
}
