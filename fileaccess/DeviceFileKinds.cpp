#include "fileaccess/DeviceFileKinds.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr char SETTINGS[] = "FileAccess Files(*.vxa)";
constexpr char BINARY[] = "Bin Files(*.bin)";
constexpr char PLAIN_TEXT[] = "Text Files(*.txt)";
constexpr char ANY_SOURCE[] = "All(*.*)";

// "ZRH User Set 1" goes out as settings and comes in from any file.
const DeviceFileKind LISTED[] = {
    {"User Set", SETTINGS, SETTINGS, ".vxa", true, true},
    {"Multi ROI", SETTINGS, SETTINGS, ".vxa", true, true},
    {"ZRH User Set 1", SETTINGS, ANY_SOURCE, "", true, true},
    {"SECBIN", BINARY, BINARY, ".bin", true, false},
    {"License Notice", PLAIN_TEXT, PLAIN_TEXT, ".txt", false, true},
};
const DeviceFileKind OTHER = {nullptr, "All Files(*.*)", ANY_SOURCE, "", true, true};

} // namespace

const DeviceFileKind &DeviceFileKinds::of(const QString &text)
{
    const auto *row =
        std::find_if(std::begin(LISTED), std::end(LISTED), [&text](const DeviceFileKind &kind) {
            return text == QLatin1String(kind.text);
        });
    return row == std::end(LISTED) ? OTHER : *row;
}
