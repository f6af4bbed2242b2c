#pragma once

#include "host/devicetask/nodes/NodeDraft.h"

/// Parses the formulas of one node and finds out what the names in them stand for.
class FormulaBinder
{
public:
    explicit FormulaBinder(NodeDraft &draft);

    /// Fills the formulas of the draft; what is wrong with them becomes its faults.
    void bindAll();

private:
    bool bind(const NodeDraft::FormulaText &text, NodeFormula *formula);
    bool nameOf(const QByteArray &spelling, NodeFormula::Name *name) const;
    void checkExpressions();

    NodeDraft &m_draft;
    QHash<QByteArray, NodeFormula::Name> m_names;
};
