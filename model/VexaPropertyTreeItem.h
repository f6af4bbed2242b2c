#pragma once

#include "model/FeatureTreeModuleGlobal.h"

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QMutex>
#include <QSet>
#include <QString>
#include <QVector>

#include <atomic>
#include <memory>

class CTreeItemValue;
class IVexaFeatureNotify;

/// Key of a parent link: 0 is the feature tree, any other value the page index of a step page tree.
using ParentType = int;
constexpr ParentType PARENT_FEATURE_TREE = 0;

/// Kinds of rows.
enum ITEM_TYEP : int {
    ITEM_FAVORITE = 0, ///< a copy under the favourites category
    ITEM_FAVORITES_CATEGORY = 1,
    ITEM_FEATURE = 2,
    ITEM_CATEGORY = 3
};

/// A number that passes through to the views as it is.
enum NotifyViewSpecial { NOTIFY_VIEW_SPECIAL_NONE = 0 };

/// One node of the item tree: a category, a feature, a favourite or a row made for a page. It owns its value and
/// its children and tells its views of every change. Not a QObject. The structure (children, parents, tags) changes
/// on the GUI thread while no worker runs; flags may be read on any thread; everything in the value is guarded by
/// updateLock, which is never held across a device access nor while a view is told.
class FEATURETREEMODULE_API VexaPropertyTreeItem
{
public:
    explicit VexaPropertyTreeItem(VexaPropertyTreeItem *pParent = nullptr,
                                  ParentType eType = PARENT_FEATURE_TREE);
    ~VexaPropertyTreeItem();
    VexaPropertyTreeItem(const VexaPropertyTreeItem &) = delete;
    VexaPropertyTreeItem &operator=(const VexaPropertyTreeItem &) = delete;

    /// A child that is in the list already stays where it is. The child's own parent is left alone.
    void addChild(VexaPropertyTreeItem *pChild);
    void insertChild(int nIndex, VexaPropertyTreeItem *pChild);
    /// Takes the child out of the list; does not delete it and leaves its own parents alone.
    void removeChild(VexaPropertyTreeItem *pChild);
    /// Null out of range.
    VexaPropertyTreeItem *child(int nIndex) const;
    int childCount() const;
    /// First direct child with this node name or null.
    VexaPropertyTreeItem *findChild(const QString &strName) const;
    /// Null without a parent of this kind.
    VexaPropertyTreeItem *parent(ParentType eType) const;
    /// Moves the item under another parent of this kind; null takes it out.
    void setParent(VexaPropertyTreeItem *pParent, ParentType eType);
    /// Row in the parent's children, -1 without a parent.
    int indexInParent(ParentType eType) const;
    /// Deletes all children.
    void clear();
    /// Takes over tag, value, names and state of another item; children, parents, views and mapping stay.
    void copy(VexaPropertyTreeItem *pSource);

    /// Owned by the item; null only when there was no memory for it.
    CTreeItemValue *value() const;
    /// Tag of the node's element in the description, or a tag of the module's own; empty for a node that it lacks.
    QString tagName() const;
    /// Sets the element tag and with it the class of the value. Pointers to the old value die.
    void setTagName(const QString &strTagName);
    /// The same for an item that workers and views know already: each row of the feature changes under its update
    /// lock, its value counts as not read, and the editors in all views are made anew. GUI thread.
    void changeTagName(const QString &strTagName, long lCameraID);
    ITEM_TYEP itemType() const;
    void setItemType(ITEM_TYEP eType);
    /// Whether the feature tree owns the item; false for a row that was made for a page and goes with it.
    bool isFeatureTreeItem() const;
    void setIsFeatureTreeItem(bool bFeatureTreeItem);
    /// The partner that shows the same feature in another row, as a favourite does.
    VexaPropertyTreeItem *mappingItem() const;
    void setMappingItem(VexaPropertyTreeItem *pItem);
    /// Joins the rows of one feature under several categories: what is set on one is set on all.
    void joinTwins(VexaPropertyTreeItem *pItem);
    /// All other rows of the same feature: twins and partner.
    QVector<VexaPropertyTreeItem *> otherRows();

    /// Read-only until a first reading says otherwise.
    bool readOnly() const;
    /// Of all rows of the feature; views hear of those that changed.
    void setReadOnly(long lCameraID, bool bReadOnly);
    /// Leaf: its wish, under branches that are all open. Branch: whether anything below it is shown.
    bool visible() const;
    /// Leaf: stores the wish and tells the views when what is shown changed. Branch with `bRecursive`: the branch's
    /// own switch, after which the leaves below follow their wishes. Branch without: the branch always reopens,
    /// whatever `bVisible` says.
    void setVisible(bool bVisible, long lCameraID, bool bRecursive);
    /// Leaf that was put under another branch: what it shows follows its wish and its branches again.
    void bringVisibleUp(long lCameraID);
    /// Direct children that are visible().
    int visibleChildCount() const;
    /// Element Visibility: "Beginner", "Expert", "Guru" or "Invisible". Takes the update lock.
    QString visibilityString() const;
    void setVisibilityString(const QString &strVisibility);

    /// Whether a search for this text finds the item.
    bool searchVisible(const QString &strFilter) const;
    /// Whether this is the last row that its parent shows under this search text.
    bool isLastVisibleChild(const QString &strFilter) const;
    /// Has the views open or close the branch; nothing for an item without children.
    void setExpanded(bool bExpanded, long lCameraID);

    /// The view, which is not owned, hears of every change from now on. GUI thread.
    void registerView(IVexaFeatureNotify *pView);
    /// Once it returns the item tells the view nothing more. GUI thread.
    void removeView(IVexaFeatureNotify *pView);
    /// Ends this registration when there is one; the item may have gone. For views that can outlive items.
    static void removeViewFrom(VexaPropertyTreeItem *pItem, IVexaFeatureNotify *pView);
    /// Ends all registrations of a view, which is about to go. No item is telling it anything when this returns.
    static void removeViewFromAll(IVexaFeatureNotify *pView);
    /// Tells the views of all rows that the value has changed, and hands it to the other rows of the feature before.
    /// `nType` -1 means all columns.
    void notifyViewUpdate(long lCameraID, int nType, bool bNeedRecreateEditor, bool bFromUiJson);
    /// Passes a number through to the views of all rows.
    void notifiViewSpecialUpdate(NotifyViewSpecial eType, long lCameraID);

    /// Guards the value; not recursive. Prefer ItemLock.
    void updateLock() const;
    void updateUnlock() const;
    /// Tells the views when the value's fingerprint differs from the one that the editor took over. Takes the
    /// update lock for the comparison; the caller must not hold it.
    void endUpdateItem(long lCameraID);

    /// The value has been read since the tree was opened.
    bool isValueCached() const;
    void setValueCached(bool bCached);

    /// The device takes the value and never gives it (GenICam access mode WO); for all rows of the feature.
    bool isWriteOnly() const { return m_bWriteOnly; }
    void setWriteOnly(bool bWriteOnly);

    /// A number for a reading of the device that begins now. Any thread.
    quint64 beginReading();
    /// What one reading covers; each part is published on its own.
    enum ReadingPart {
        READING_VALUE = 0,
        READING_VISIBILITY = 1,
        READING_ACCESS = 2,
        READING_PARTS = 3
    };
    /// Under the update lock: whether this part of a reading may still be published; false when one that began
    /// later, or a write, was published already. A true answer marks this one as published.
    bool publishReading(quint64 nReading, ReadingPart ePart);
    /// How many parts have been published. Any thread.
    quint64 publications() const { return m_nPublications; }
    /// A copy of the value for the GUI, taken under the update lock. Custom rows keep their own fields.
    std::unique_ptr<CTreeItemValue> valueSnapshot() const;
    /// The editor shows this snapshot now (`bCached` whether it was filled with a value that had been read).
    void editorTookOver(CTreeItemValue &snapshot, bool bReadOnly, bool bCached);
    /// The same for a row without an editor, from the present value.
    void editorTookOver();

    /// Whether the tool tips were built from this state; any bytes that tell two states apart will do.
    bool toolTipsAreOf(const QByteArray &state) const;
    void setToolTips(const QString &strEnglish, const QString &strChinese, const QByteArray &state);

    /// Does nothing; the shut-down path of the main widget calls it.
    static void releaseTransInfo();

private:
    /// Whether all branches above are open.
    bool branchesOpen() const;
    /// Whether the item, or any leaf below it, is shown as far as the branches from here down go.
    bool shownBelow() const;
    void applyVisible(bool bVisible, long lCameraID, bool bRecursive);
    /// Brings what a leaf shows in line with its wish and its branches.
    void applyLeafVisible(long lCameraID);
    void applyBranch(long lCameraID);
    /// Hands the value, and the names when `bCopyBase`, to the other rows.
    void bringOtherRowsUp(bool bCopyBase);
    /// A value of the class of this tag, with the names of the old one.
    void replaceValue(const QString &strTagName);
    /// Takes the item out of what is known of its views. Under the lock of the views.
    void forgetRegistrations();
    /// `call(VexaPropertyTreeItem &)` for this item and all other rows of its feature. Under the lock of the views or
    /// on the GUI thread.
    template<typename Call>
    void forAllRows(const Call &call);
    template<typename Call>
    void tellViews(const Call &call) const;

    std::atomic<bool> m_bBranchVisible{true}; ///< a branch's own switch
    std::atomic<bool> m_bVisible{true}; ///< leaf: what the views were last told
    std::atomic<bool> m_bWantsVisible{true}; ///< leaf: its own wish, apart from its branches
    std::atomic<bool> m_bReadOnly{true};
    std::atomic<bool> m_bWriteOnly{false};
    bool m_bIsFeatureTreeItem = true;
    ITEM_TYEP m_nItemType = ITEM_CATEGORY;
    QString m_strTagName;
    QString m_strVisibility = QStringLiteral("Beginner");
    QByteArray m_toolTipState; ///< guarded by the update lock
    std::unique_ptr<CTreeItemValue> m_pValue;
    VexaPropertyTreeItem *m_pMappingItem = nullptr; ///< guarded by the lock of the views
    /// All rows of the feature, this one included; null for a single row. Guarded by the lock of the views.
    std::shared_ptr<QSet<VexaPropertyTreeItem *>> m_pTwins;
    QSet<IVexaFeatureNotify *> m_views; ///< one lock for all items, held while a view is told
    QList<VexaPropertyTreeItem *> m_children;
    VexaPropertyTreeItem *m_pFeatureParent = nullptr; ///< in the feature tree; workers follow it
    QMap<int, VexaPropertyTreeItem *> m_pageParents; ///< by page index; GUI thread
    mutable int m_knownRows[2] = {
        -1, -1}; ///< last answer of indexInParent: feature tree, pages; GUI thread
    mutable QMutex m_updateMutex;
    std::atomic<bool> m_bValueCached{false};
    std::atomic<bool> m_bEditorCached{
        false}; ///< the editor's last fill showed a value that had been read
    std::atomic<quint64> m_nNextReading{0};
    std::atomic<quint64> m_nPublications{0};
    quint64 m_publishedReadings[READING_PARTS] = {0, 0, 0}; ///< guarded by the update lock
};

template<typename Call>
void VexaPropertyTreeItem::forAllRows(const Call &call)
{
    call(*this);
    // A favourite has no twins of its own, but those of its original.
    const auto pTwins = m_pTwins || !m_pMappingItem ? m_pTwins : m_pMappingItem->m_pTwins;
    if (!pTwins) {
        if (m_pMappingItem) {
            call(*m_pMappingItem);
        }
        return;
    }
    for (VexaPropertyTreeItem *pTwin : qAsConst(*pTwins)) {
        if (pTwin != this) {
            call(*pTwin);
        }
        if (pTwin->m_pMappingItem && pTwin->m_pMappingItem != this) {
            call(*pTwin->m_pMappingItem);
        }
    }
}
