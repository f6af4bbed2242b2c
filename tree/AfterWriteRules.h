#pragma once

#include <QString>

class VexaFeatureTree;

/// What the client is told after a write that came from a view, by node name. GUI thread.
namespace AfterWriteRules {

/// False only when memory runs out.
bool run(VexaFeatureTree &tree, const QString &name);

/// The node that holds the source data of a value of CommunicationProtocols; empty for a protocol without one.
QString sourceDataNode(int protocol);

} // namespace AfterWriteRules
