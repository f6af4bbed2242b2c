#pragma once

#include "host/devicetask/DescriptionIndex.h"

#include <QByteArray>
#include <QString>

/// Reads a GenICam description once as a whole, before anything else does. Never a partial tree: what is not
/// well-formed to its last byte is refused.
class DescriptionCheck
{
public:
    static constexpr int MAX_SIZE = 64 * 1024 * 1024;

    /// The text without the zero bytes that devices pad their description with.
    static QByteArray withoutPadding(const QByteArray &xml);
    /// Fills `index`; false when the description is refused, with the reason in English.
    static bool check(const QByteArray &xml, DescriptionIndex *index, QString *reason);
};
