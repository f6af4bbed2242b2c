// The items, the description and the dependency maps as the tree's callers see them.

#include "ControlKit/CustomLineEdit.h"
#include "model/CTreeEnumationItemValue.h"
#include "model/FeatureTreeBuilder.h"
#include "model/NodeDependencyMaps.h"
#include "model/VexaPropertyTreeItem.h"
#include "tree/VexaFeatureTree.h"
#include "tree/WriteMessages.h"
#include "view/VexaFeatureTreeView.h"

namespace {

/// Rows whose editors show words of the client's language; children before their parent.
void renewTranslatedRows(VexaPropertyTreeItem &item, long int cameraId)
{
    for (int row = 0; row < item.childCount(); ++row) {
        renewTranslatedRows(*item.child(row), cameraId);
    }
    const QString tagName = item.tagName();
    bool changes = tagName == QLatin1String("Command");
    if (tagName == QLatin1String("Enumeration")) {
        const auto *value = dynamic_cast<const CTreeEnumationItemValue *>(item.value());
        changes = value && !value->getDisplayListCN().isEmpty();
    }
    if (changes) {
        item.notifyViewUpdate(cameraId, -1, false, false);
    }
}

} // namespace

VexaPropertyTreeItem *VexaFeatureTree::propertyItemByName(const QString &name) const
{
    return m_pTreeView && !name.isEmpty() ? m_pBuilder->allTreeItems().value(name, nullptr)
                                          : nullptr;
}

QMap<QString, VexaPropertyTreeItem *> VexaFeatureTree::AllTreeItemsMap() const
{
    return m_pBuilder->allTreeItems();
}

QMap<QString, VexaPropertyTreeItem *> VexaFeatureTree::favoriteItemsMap() const
{
    return m_pBuilder->favoriteItems();
}

VexaPropertyTreeItem *VexaFeatureTree::rootItem() const
{
    return m_pBuilder->rootItem();
}

bool VexaFeatureTree::GetDomElementNode(const QString &name, QDomElement &out) const
{
    return m_pBuilder->GetDomElementNode(name, out);
}

QStringList VexaFeatureTree::GetFeatureInvalidatorList(const QString &name) const
{
    return m_pMaps->GetFeatureInvalidatorList(name);
}

void VexaFeatureTree::translatePropTree(VexaPropertyTreeItem *item)
{
    if (!item) {
        return;
    }
    renewTranslatedRows(*item, m_lCameraID);
    if (m_pSearchEdit) {
        m_pSearchEdit->setPlaceholderText(WriteMessages::translated("lang_qfeaturetree_search"));
    }
}

void VexaFeatureTree::notifyEditorUpdate()
{
    translatePropTree(rootItem());
    if (m_pTreeView) {
        m_pTreeView->notifyEditorUpdate();
    }
}
