#pragma once

#include <QtGlobal>

#include <cstddef>

/// What a node can be used for at present (GenICam EAccessMode), as ICameraNodeAccess::GetAccessMode gives it.
enum NodeAccessMode {
    NODE_NI = 0, ///< not implemented
    NODE_NA = 1, ///< not available
    NODE_WO = 2, ///< write only
    NODE_RO = 3, ///< read only
    NODE_RW = 4
};

/// Value and range of an Integer node (GenICam IInteger). The maximum stands ahead of the minimum; an empty
/// range is reported as min == max + 1.
struct _NODE_INT_VALUE_
{
    qint64 value;
    qint64 max;
    qint64 min;
    qint64 inc;
};

/// Value and range of a Float node (GenICam IFloat), in the node's own unit.
struct _NODE_FLOAT_VALUE_
{
    float value;
    float max;
    float min;
};

/// Bytes of one enumeration record, as every caller allocates it.
constexpr std::size_t NODE_ENUM_RECORD_SIZE = 74264;

/// Current value of an Enumeration node (GenICam IEnumeration) and the numeric values of its supported
/// entries. Too large for a stack: the caller takes NODE_ENUM_RECORD_SIZE bytes from the heap, zeroes them
/// and frees them on every path.
struct _NODE_ENUM_VALUE_
{
    quint32 value;
    quint32 count;
    quint32 entries[NODE_ENUM_RECORD_SIZE / sizeof(quint32) - 2];
};
static_assert(sizeof(_NODE_ENUM_VALUE_) == NODE_ENUM_RECORD_SIZE,
              "the record's size is part of the contract");
