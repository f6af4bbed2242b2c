#pragma once

#include <QString>

/// The "Custom_" name of the row that stands for a format node on a page; empty for any other node.
QString customNodeOf(const QString &strFormatNode);
