#pragma once

#include <QFlags>
#include <QString>

/// What is special about the write of a node, by its name.
enum class WriteRule {
    TellsProfinetRestart = 0x1, ///< switching it on takes effect after a restart
    AdvisesPacketSize = 0x2, ///< values far from the optimal packet size draw advice
    IsPort = 0x4, ///< a failure most likely means that the port is taken
    BelongsToPolling = 0x8, ///< not to be written while polling is on
    ShowsLoading = 0x10, ///< changes so much that a loading dialog covers its refresh
    ChangesTarget = 0x20, ///< the client follows which camera target is polled
    FailsSilently = 0x40,
    IsLineConfig = 0x80, ///< has a message of its own for "not accessible in the present state"
    TakesEffectAfterRestart = 0x100,
    NeverEmpty = 0x200, ///< an empty text is warned of and not written
    AsksWithWarning = 0x400 ///< a command that is run after a warning only
};
Q_DECLARE_FLAGS(WriteRules, WriteRule)
Q_DECLARE_OPERATORS_FOR_FLAGS(WriteRules)

/// No rule for most names.
WriteRules writeRulesOf(const QString &nodeName);

/// What the client is told of the test pattern when "TestPattern" stands on this entry.
QString testPatternState(qint64 value);
