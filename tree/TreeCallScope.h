#pragma once

#include "tree/VexaFeatureTree.h"

#include <QPointer>

/// Counts a call of a tree on the stack while it may run other events: a tree that is removed meanwhile is deleted
/// when the last such call has returned.
class TreeCallScope
{
public:
    explicit TreeCallScope(VexaFeatureTree *tree)
        : m_pTree(tree)
    {
        ++m_pTree->m_nCallsOnStack;
    }
    ~TreeCallScope()
    {
        if (!m_pTree) {
            return;
        }
        --m_pTree->m_nCallsOnStack;
        if (m_pTree->m_nCallsOnStack == 0 && m_pTree->m_bDeleteWhenIdle) {
            m_pTree->deleteLater();
        }
    }
    Q_DISABLE_COPY(TreeCallScope)

    /// Whether the tree was removed while the call ran.
    bool treeIsGoing() const { return !m_pTree || m_pTree->m_bReadyForDelete; }

private:
    QPointer<VexaFeatureTree> m_pTree;
};
