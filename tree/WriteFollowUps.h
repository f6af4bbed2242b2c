#pragma once

#include <QString>
#include <QVariant>

class VexaFeatureTree;

/// What a write through the dispatcher draws after it, by the node's tag and name: reads of other nodes, signals, the
/// rows of the polling table. GUI thread.
namespace WriteFollowUps {

/// `written` is what the typed write answered; most rows act on true only.
void run(VexaFeatureTree &tree, const QString &type, const QString &name, const QVariant &value,
         bool written);

} // namespace WriteFollowUps
