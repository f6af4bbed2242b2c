#pragma once

#include "model/CTreeItemValue.h"
#include "model/IVexaFeatureWidget.h"
#include "model/VexaPropertyTreeItem.h"
#include "tests/model/NotifyRecorder.h"
#include "tests/support/ModuleFixture.h"
#include "view/VexaFeatureTreeView.h"

#include <QDomDocument>

#include <functional>

/// Pages laid from a text, as a host lays them.
class TestPages : public IVexaFeatureWidget
{
public:
    explicit TestPages(const QString &strPages, int nPageIndex = 1)
        : IVexaFeatureWidget(nPageIndex)
        , m_strPages(QStringLiteral("<Pages>%1</Pages>").arg(strPages))
    {
    }
    bool setFeatureValue(const QString &strType, const QString &strName,
                         const QVariant &value) override
    {
        VexaFeatureTree *pTree = tree();
        return pTree && pTree->setFeatureValue(strType, strName, value);
    }
    VexaPropertyTreeItem *createPageRoot() override
    {
        QDomDocument document;
        if (!tree() || !document.setContent(m_strPages)) {
            return nullptr;
        }
        if (!m_strHint.isEmpty()) {
            m_platformHints.insert(int(m_lCameraID), m_strHint);
        }
        auto *pRoot = new VexaPropertyTreeItem;
        pRoot->setIsFeatureTreeItem(false);
        createPageItems(pRoot, document.documentElement(), tree());
        if (m_prepare) {
            m_prepare(pRoot);
        }
        return pRoot;
    }

    VexaFeatureTree *tree() const
    {
        return VexaMainFeatureWidget::instance()->getAllFeatureTreesMap().value(m_lCameraID);
    }
    VexaPropertyTreeItem *root() const { return m_rootItems.value(int(m_lCameraID), nullptr); }
    VexaPropertyTreeItem *row(const QString &strName) const { return pageItem(root(), strName); }
    QString platform() const { return m_platformKeys.value(int(m_lCameraID)); }
    QString text() const { return root() ? rowsText(root()) : QStringLiteral("none"); }

    using IVexaFeatureWidget::setSpinItems;
    using IVexaFeatureWidget::setSpinStep;
    QString m_strHint;
    std::function<void(VexaPropertyTreeItem *)> m_prepare; ///< of a page that is not on show yet

private:
    QString m_strPages;
};
