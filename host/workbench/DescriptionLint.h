#pragma once

#include <QString>

/// `--lint FILE`: prints what is wrong with a device description, a line a finding ("FILE:LINE: NODE: reason"), on
/// stdout and the counts on stderr. Returns the exit code: 0 without findings, 1 with some or when the file cannot be
/// read. Needs neither a display nor an application object.
int lintDescription(const QString &path);
