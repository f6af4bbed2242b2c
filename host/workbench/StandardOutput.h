#pragma once

#include <QByteArray>
#include <QStringList>

/// The standard output of headless jobs.
namespace StandardOutput {

/// False when the bytes did not get there whole.
bool write(const QByteArray &bytes);
/// A line of a table: the cells with tabs between them. What would break the line is shown as "\t", "\n", "\r"; other
/// control characters are dropped.
QByteArray tableLine(const QStringList &cells);

} // namespace StandardOutput
