#pragma once

#include <QString>

/// How the file access dialog deals with a file of the device.
struct DeviceFileKind
{
    const char *text; ///< in the box; null for any that is not listed
    const char *exportFilter;
    const char *importFilter;
    const char *importEnding; ///< that a file must have, empty for none
    bool isImported;
    bool isExported;
};

namespace DeviceFileKinds {

const DeviceFileKind &of(const QString &text);

} // namespace DeviceFileKinds
