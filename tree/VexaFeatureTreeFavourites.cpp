// Favourites: a copy of a feature's row under the first category, which follows its original, and the context menu that
// offers them. The menu's actions do not reach the operations yet.

#include "ControlKit/CustomMenu.h"
#include "ShellServicesModule/VexaListenTools.h"
#include "model/CTreeItemValue.h"
#include "model/FeatureTreeBuilder.h"
#include "model/ItemLocks.h"
#include "model/VexaPropertyTreeItem.h"
#include "tree/QGetFeaturesThread.h"
#include "tree/TreeCallScope.h"
#include "tree/VexaFeatureTree.h"
#include "view/VexaFeatureTreeView.h"

#include <QAction>
#include <QCursor>

#include <algorithm>

namespace {

QString nodeName(const VexaPropertyTreeItem *item)
{
    const ItemLock lock(item);
    return item->value() ? item->value()->m_strNodeName : QString();
}

} // namespace

void VexaFeatureTree::OnTreeFeaturesCustomContextMenuRequested(const QPoint &pos)
{
    if (!m_pTreeView || !m_pContextMenu || !m_pActionFavoriteAdd || !m_pActionFavoriteRemove
        || !m_pActionFavoriteRemoveAll) {
        return;
    }
    auto *item = static_cast<VexaPropertyTreeItem *>(m_pTreeView->indexAt(pos).internalPointer());
    if (!item || !item->value()) {
        return;
    }
    static const struct
    {
        ITEM_TYEP type;
        bool add;
        bool addEnabled;
        bool remove;
        bool removeAll;
        bool keepsItem;
    } rows[] = {
        {ITEM_FAVORITE, false, true, true, false, true},
        {ITEM_FAVORITES_CATEGORY, false, true, false, true, false},
        {ITEM_FEATURE, true, true, false, false, true},
        {ITEM_CATEGORY, true, false, false, false, false},
    };
    for (QAction *action :
         {m_pActionFavoriteAdd, m_pActionFavoriteRemove, m_pActionFavoriteRemoveAll}) {
        action->setVisible(false);
    }
    for (const auto &row : rows) {
        if (row.type != item->itemType()) {
            continue;
        }
        m_pActionFavoriteAdd->setVisible(row.add);
        m_pActionFavoriteAdd->setEnabled(row.addEnabled);
        m_pActionFavoriteRemove->setVisible(row.remove);
        m_pActionFavoriteRemoveAll->setVisible(row.removeAll);
        if (row.keepsItem) {
            m_pContextItem = item;
        }
    }
    m_pContextMenu->popup(QCursor::pos());
}

void VexaFeatureTree::OnActionFavoriteAdd()
{
}
void VexaFeatureTree::OnActionFavoriteRemove()
{
}
void VexaFeatureTree::OnActionFavoriteRemoveAll()
{
}

bool VexaFeatureTree::GenerateFavoritesItems()
{
    return true;
}

bool VexaFeatureTree::IsFavoritesItem(const QString &) const
{
    return false;
}

void VexaFeatureTree::notifyFavoriteFeatureChange()
{
    VexaListenTools::instance()->notifyListeners(VEXA_EVENT_FAVORITES_CHANGED, &m_lCameraID);
}

VexaPropertyTreeItem *VexaFeatureTree::favoritesCategory() const
{
    VexaPropertyTreeItem *root = rootItem();
    VexaPropertyTreeItem *first = root ? root->child(0) : nullptr;
    // A feature without a category of its own may stand first; rows below it would make it a branch.
    return first && first->itemType() != ITEM_FEATURE ? first : nullptr;
}

void VexaFeatureTree::changeRows(const std::function<void()> &change)
{
    const TreeCallScope scope(this);
    const QVector<QGetFeaturesThread *> all = workers();
    const bool worked = std::any_of(all.cbegin(), all.cend(), [](const QGetFeaturesThread *worker) {
        return worker->IsBusy();
    });
    // An export or import goes on: it works on copies.
    stopUpdates(true);
    if (scope.treeIsGoing()) {
        return;
    }
    change();
    stopUpdates(false);
    if (worked) {
        UpdateFeatures(FEATURES_UPDATE_ALL, QStringList(),
                       m_bFirstUpdateOfAll ? QGetFeaturesThread::UPDATE_EVERYTHING
                                           : QGetFeaturesThread::UPDATE_REFRESH);
    }
}

void VexaFeatureTree::addFavoriteItem(VexaPropertyTreeItem *item)
{
    VexaPropertyTreeItem *category = favoritesCategory();
    const QString name = item && item->value() ? nodeName(item) : QString();
    if (name.isEmpty() || !category || !m_pTreeView || m_bReadyForDelete
        || m_pBuilder->favoriteItems().contains(name)) {
        return;
    }
    changeRows([&] {
        auto *favorite = new VexaPropertyTreeItem(category, PARENT_FEATURE_TREE);
        favorite->copy(item);
        favorite->registerView(m_pTreeView);
        item->setMappingItem(favorite);
        favorite->setItemType(ITEM_FAVORITE);
        m_pBuilder->favoriteItems().insert(name, favorite);
        // Not by setVisible: that would also reach the original, whose wish may differ from what it shows.
        favorite->bringVisibleUp(m_lCameraID);
        m_pTreeView->showNewRow(favorite);
        category->setExpanded(true, m_lCameraID);
    });
}

void VexaFeatureTree::removeFavoriteItem(VexaPropertyTreeItem *item)
{
    if (!item || !item->value() || !m_pTreeView || m_bReadyForDelete) {
        return;
    }
    // By name, so that the original and its twins lead to the copy too.
    VexaPropertyTreeItem *favorite = m_pBuilder->favoriteItems().value(nodeName(item), nullptr);
    if (favorite) {
        changeRows([&] { takeFavoriteRow(favorite); });
    }
}

void VexaFeatureTree::removeAllFavoriteItems()
{
    if (!m_pTreeView || m_bReadyForDelete || m_pBuilder->favoriteItems().isEmpty()) {
        return;
    }
    // One by one: the category may hold features of the device as well, which stay.
    changeRows([this] {
        const QList<VexaPropertyTreeItem *> favorites = m_pBuilder->favoriteItems().values();
        for (VexaPropertyTreeItem *favorite : favorites) {
            takeFavoriteRow(favorite);
        }
    });
}

void VexaFeatureTree::takeFavoriteRow(VexaPropertyTreeItem *favorite)
{
    m_pBuilder->favoriteItems().remove(nodeName(favorite));
    if (m_pContextItem == favorite) {
        m_pContextItem = nullptr;
    }
    m_pTreeView->takeRow(favorite);
    delete favorite;
}
