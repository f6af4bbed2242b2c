#pragma once

#include "DeviceTaskModule/NodeValues.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <vector>

/// A zeroed enumeration record of the size that the device layer fills, on the heap. False without memory.
class EnumRecord
{
public:
    EnumRecord()
        : m_record(static_cast<_NODE_ENUM_VALUE_ *>(std::calloc(1, NODE_ENUM_RECORD_SIZE)))
    {
    }
    explicit operator bool() const { return m_record != nullptr; }
    _NODE_ENUM_VALUE_ *get() const { return m_record.get(); }
    const _NODE_ENUM_VALUE_ *operator->() const { return m_record.get(); }
    /// The values of the supported entries.
    std::vector<quint32> entries() const
    {
        constexpr std::size_t MOST = sizeof(m_record->entries) / sizeof(quint32);
        return std::vector<quint32>(
            m_record->entries, m_record->entries + std::min<std::size_t>(m_record->count, MOST));
    }

private:
    struct Free
    {
        void operator()(_NODE_ENUM_VALUE_ *record) const { std::free(record); }
    };
    std::unique_ptr<_NODE_ENUM_VALUE_, Free> m_record;
};
