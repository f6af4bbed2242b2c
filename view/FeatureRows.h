#pragma once

#include <QHash>

class VexaPropertyTreeItem;

/// The rows of one view: which items are alive, which rows are hidden, and how many hidden children a branch has, so
/// that a branch need not ask all its children when one of them changes. It never follows an item it does not hold.
class FeatureRows
{
public:
    explicit FeatureRows(int nParentType)
        : m_nParentType(nParentType)
    {
    }

    /// Enters the item and everything below it; rows that are held keep their state.
    void add(VexaPropertyTreeItem *pItem);
    /// Takes out the item and everything below it.
    void remove(VexaPropertyTreeItem *pItem);
    void clear() { m_rows.clear(); }
    int count() const { return m_rows.size(); }

    bool contains(const VexaPropertyTreeItem *pItem) const { return m_rows.contains(pItem); }
    bool isHidden(const VexaPropertyTreeItem *pItem) const { return m_rows.value(pItem).bHidden; }
    /// False when nothing changed.
    bool setHidden(VexaPropertyTreeItem *pItem, bool bHidden);
    bool hasShownChild(const VexaPropertyTreeItem *pItem) const;
    /// The view has tried to open the row's editors.
    bool isOpened(const VexaPropertyTreeItem *pItem) const { return m_rows.value(pItem).bOpened; }
    void setOpened(const VexaPropertyTreeItem *pItem);

private:
    struct Row
    {
        bool bHidden = false;
        bool bOpened = false;
        int nHiddenChildren = 0;
    };
    int m_nParentType;
    QHash<const VexaPropertyTreeItem *, Row> m_rows;
};
