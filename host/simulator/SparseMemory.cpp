#include "host/simulator/SparseMemory.h"

#include <limits>

namespace {

constexpr quint64 kPageSize = 4096;
constexpr quint32 kLongestAccess = 1024 * 1024;

/// Differs from byte to byte, so that a swapped byte order shows; the top bit is always set.
char uglyByte(quint64 address)
{
    return char(0x80 | ((address * 37 + (address >> 7) * 11 + 5) & 0x7f));
}

} // namespace

bool SparseMemory::covers(quint64 address, quint32 length) const
{
    return length > 0 && length <= kLongestAccess
        && address <= std::numeric_limits<quint64>::max() - (quint64(length) - 1);
}

QByteArray SparseMemory::read(quint64 address, quint32 length) const
{
    QByteArray bytes;
    bytes.reserve(int(length));
    while (quint32(bytes.size()) < length) {
        const quint64 here = address + quint64(bytes.size());
        bytes += page(here / kPageSize).mid(int(here % kPageSize), int(length) - bytes.size());
    }
    return bytes;
}

void SparseMemory::write(quint64 address, const QByteArray &bytes)
{
    for (int done = 0; done < bytes.size();) {
        const quint64 here = address + quint64(done);
        const int offset = int(here % kPageSize);
        const QByteArray part = bytes.mid(done, int(kPageSize) - offset);
        QByteArray content = page(here / kPageSize);
        content.replace(offset, part.size(), part);
        m_pages.insert(here / kPageSize, content);
        done += part.size();
    }
}

QByteArray SparseMemory::page(quint64 number) const
{
    const auto written = m_pages.constFind(number);
    if (written != m_pages.constEnd()) {
        return *written;
    }
    QByteArray content(int(kPageSize), '\0');
    if (m_ePattern == SimulatorControl::MemoryPattern::Ugly) {
        for (quint64 i = 0; i < kPageSize; ++i) {
            content[int(i)] = uglyByte(number * kPageSize + i);
        }
    }
    return content;
}
