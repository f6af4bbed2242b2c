#pragma once

#include "host/devicetask/nodes/NodeTable.h"

#include <QByteArray>
#include <QHash>
#include <QPair>

/// What was written to nodes whose value is a constant of the description (a selector with a Value, for one): such a
/// value lives in the host, from opening to closing. One for each connection, on its thread.
struct LocalValues
{
    /// The node, and its place in indexedValues; VALUE and DEFAULT are the ones beside them.
    using Key = QPair<NodeId, int>;
    static constexpr int VALUE = -1;
    static constexpr int DEFAULT = -2;

    QHash<Key, FormulaNumber> numbers;
    QHash<NodeId, QByteArray> texts;
};
