#pragma once

#include <QByteArray>

#include <arv.h>

/// An ArvDevice on 4 KiB of memory that repeat up to MEMORY_END; what lies behind is refused as an invalid address.
/// The caller owns it.
ArvDevice *newPatternDevice(const QByteArray &memory);

constexpr int PATTERN_MEMORY_SIZE = 4096;
constexpr quint64 PATTERN_MEMORY_END = 0x100000000;
