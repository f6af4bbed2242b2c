#pragma once

#include "featurefile/FeatureFileFormat.h"

#include <QStringList>
#include <QtEndian>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

/// Registers as rows of 32-bit words.
namespace RegisterWords {

inline int count(qint64 length)
{
    return static_cast<int>((length + 3) / 4);
}

inline bool isLengthAllowed(qint64 length)
{
    return length > 0 && length <= FeatureFileFormat::MAX_REGISTER_LENGTH;
}

inline quint32 swapped(quint32 word)
{
    return qbswap(word);
}

inline quint32 rotated(quint32 word)
{
    return word << 16 | word >> 16;
}

/// The order of dumps without a converter; that of everything else is swapThenRotate.
inline quint32 rotateThenSwap(quint32 word, bool swap, bool misaligned)
{
    if (!swap) {
        return word;
    }
    return swapped(misaligned ? rotated(word) : word);
}

inline quint32 swapThenRotate(quint32 word, bool swap, bool misaligned)
{
    if (!swap) {
        return word;
    }
    return misaligned ? rotated(swapped(word)) : swapped(word);
}

inline bool isMisaligned(qint64 address)
{
    return address % 4 != 0;
}

/// The word at an address that the device refuses, out of the two around it, each read by `readWord(address, &word)`;
/// rotated as the rest of the byte handling wants it. False when one of them cannot be read.
template<typename ReadWord>
bool readAcross(qint64 address, quint32 *word, ReadWord readWord)
{
    quint32 pair[2] = {0, 0};
    if (!readWord(address - 2, &pair[0]) || !readWord(address + 2, &pair[1])) {
        return false;
    }
    std::memcpy(word, reinterpret_cast<const char *>(pair) + 2, sizeof(*word));
    *word = rotated(*word);
    return true;
}

} // namespace RegisterWords

/// Memory for one register: in place up to 256 bytes, above that from the heap.
class RegisterBuffer
{
public:
    /// Zeroes the words of a register of `length` bytes; false without memory.
    bool prepare(qint64 length)
    {
        m_nWords = RegisterWords::count(length);
        if (m_nWords > LOCAL_WORDS && m_nWords > m_nHeapWords) {
            m_heap.reset(static_cast<quint32 *>(
                std::malloc(static_cast<std::size_t>(m_nWords) * sizeof(quint32))));
            m_nHeapWords = m_heap ? m_nWords : 0;
            if (!m_heap) {
                m_nWords = 0;
                return false;
            }
        }
        std::fill_n(data(), m_nWords, 0U);
        return true;
    }
    quint32 *data() { return m_nWords > LOCAL_WORDS ? m_heap.get() : m_local; }
    int words() const { return m_nWords; }

private:
    struct Free
    {
        void operator()(quint32 *words) const { std::free(words); }
    };
    static constexpr int LOCAL_WORDS = 64;
    quint32 m_local[LOCAL_WORDS];
    std::unique_ptr<quint32, Free> m_heap;
    int m_nHeapWords = 0;
    int m_nWords = 0;
};
