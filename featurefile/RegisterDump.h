#pragma once

#include "featurefile/EvalContext.h"

/// What the registers behind a node hold.
namespace RegisterDump {

enum class Outcome {
    Done,
    Failed, ///< the log has the reason
    NoLength ///< the register has the length 0
};

/// The `ComplexFeature` group of a node, with every address of its register.
Outcome write(EvalContext &context, const QString &name, QString *text);

/// The present value of a node that cannot be read, as a text; empty on any failure. `isNodeValue` tells whether the
/// text is what the node would show, not bits that mean something else.
QString readNodeFromRegisters(EvalContext &context, const QString &name, bool *isNodeValue);

} // namespace RegisterDump
