#pragma once

#include "DeviceTaskModule/NodeValues.h"

#include <cstdlib>
#include <memory>

struct EnumRecordDeleter
{
    void operator()(_NODE_ENUM_VALUE_ *record) const { std::free(record); }
};

using EnumRecord = std::unique_ptr<_NODE_ENUM_VALUE_, EnumRecordDeleter>;

/// A zeroed enumeration record of the size that the device layer fills; null when memory has run out.
inline EnumRecord makeEnumRecord()
{
    return EnumRecord(static_cast<_NODE_ENUM_VALUE_ *>(std::calloc(1, NODE_ENUM_RECORD_SIZE)));
}
