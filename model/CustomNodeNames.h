#pragma once

#include <QString>

/// The "Custom_" name of the row that stands for a format node on a page; empty for any other node.
QString customNodeOf(const QString &strFormatNode);
/// The enumeration whose entries a format node takes as tags; empty for trigger nodes, which take none.
QString sourceDataNodeOf(const QString &strFormatNode);
