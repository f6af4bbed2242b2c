#pragma once

#include <QFlags>
#include <QString>

/// What is special about running a command node, by its name.
enum class CommandTrait {
    WaitsForStartOfGrabbing = 0x1, ///< the first press after a stop of grabbing is not sent
    RunsNothing = 0x2, ///< its editor does what the button is for
    NeedsFocusDone = 0x4, ///< refused while "AutoFocusStat" reads anything but 1
    LoadsSettings = 0x8, ///< a loading dialog ends with the command, and the client is told
    ShowsLoading = 0x10, ///< a loading dialog stays until the refresh has ended
    FailureAlsoPrompts = 0x20,
    TakesDeviceAway = 0x40 ///< the device restarts: nothing is read or edited here any more
};
Q_DECLARE_FLAGS(CommandTraits, CommandTrait)
Q_DECLARE_OPERATORS_FOR_FLAGS(CommandTraits)

struct CommandRule
{
    const char *nodeName = "";
    CommandTraits traits;
    const char *questionKey = nullptr; ///< lang_ key of what the user has to say yes to first
};

/// A rule without traits and question for most names.
const CommandRule &commandRuleOf(const QString &nodeName);
