#pragma once

#include "host/devicetask/nodes/NodeTable.h"

#include <QByteArray>
#include <QString>

/// Reads a GenICam description once as a whole, before anything else does. Never a partial tree: what is not
/// well-formed to its last byte is refused.
class NodeTableReader
{
public:
    static constexpr int MAX_SIZE = 64 * 1024 * 1024;
    /// Most nodes of a description, and most references, entries and formula names of all its nodes together.
    static constexpr int MAX_NODES = 250000;
    static constexpr int MAX_PARTS = 1000000;

    /// The text without the zero bytes that devices pad their description with.
    static QByteArray withoutPadding(const QByteArray &xml);
    /// Fills `table` (references resolved, faults of single elements noted); false when the description is refused as
    /// a whole, with the reason in English and, if asked for, the line.
    static bool read(const QByteArray &xml, NodeTable *table, QString *reason, int *line = nullptr);
};
