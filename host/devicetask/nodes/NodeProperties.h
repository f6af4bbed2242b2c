#pragma once

#include "host/devicetask/nodes/DescriptionCursor.h"
#include "host/devicetask/nodes/NodeDraft.h"

/// The children of a node's element that are plain properties: numbers, references, formulas, words.
class NodeProperties
{
public:
    /// Takes the present element of `xml` over into `draft` and leaves it; what evaluation has no use for is skipped.
    static void read(DescriptionCursor &xml, NodeDraft &draft);
    /// The same for the present EnumEntry of an Enumeration, its children included.
    static void readEntry(DescriptionCursor &xml, NodeDraft &draft);
};
