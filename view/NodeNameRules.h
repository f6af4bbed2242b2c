#pragma once

#include <QString>

/// Rules of the tree's rows that go by feature name. Any thread.
namespace NodeNameRules {

constexpr int NO_HINT = -1;

/// Kind of the hint widget (QCustomReverseHintWidget) that takes the place of the row's name, NO_HINT for a row that
/// has a name.
int hintKind(const QString &strNodeName);
/// Rows that are never shown, whatever the device says.
bool isNeverShown(const QString &strNodeName);

} // namespace NodeNameRules
