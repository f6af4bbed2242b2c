#pragma once

class QString;

/// Qt's message handler of the workbench: every message goes to a file that is rotated by size, warnings and errors to
/// the standard error too. Successful writes to a device are logged at critical level; they reach the file only.
namespace MessageHandler {

/// A file that passed this many bytes is set aside; this many older ones are kept.
constexpr long long MAXIMUM_FILE_BYTES = 2LL * 1024 * 1024;
constexpr int OLDER_FILES = 3;

/// Begins to write "vexa-workbench.log" in this folder, which is made. Without a writable folder the file is left out.
void install(const QString &folder);
/// Closes the file and puts Qt's own handler back.
void uninstall();

} // namespace MessageHandler
