#pragma once

#include "model/IVexaFeatureWidget.h"
#include "model/VexaPropertyTreeItem.h"
#include "view/VexaFeatureTreeView.h"

#include <memory>

/// A view with a generated tree: categories of 50 features, all kinds of editors mixed as in a camera.
class BenchTree
{
public:
    static constexpr long CAMERA = 1;

    explicit BenchTree(int nRows);
    ~BenchTree();
    Q_DISABLE_COPY(BenchTree)

    VexaFeatureTreeView &view() { return *m_pOwner->treeView(); }
    QWidget &window() { return *m_pOwner; }
    /// Hands the tree to the view, expanded, with or without editors.
    void open(bool bEditors);
    void show();
    /// All editors are open and filled, all layouts done.
    void settle();
    /// Gives every feature another value and tells the views, as a worker does. Any thread.
    void changeAllValues(int nRound);
    /// The editor of a row of this kind outside any view.
    static QWidget *makeBareEditor(int nRow, QWidget *pParent);

private:
    std::unique_ptr<IVexaFeatureWidget> m_pOwner;
    std::unique_ptr<VexaPropertyTreeItem> m_pRoot;
    QVector<VexaPropertyTreeItem *> m_features;
};
