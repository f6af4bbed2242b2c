#include "host/devicetask/nodes/RegisterCodec.h"

#include <cmath>
#include <cstring>
#include <limits>

using RegisterCodec::BitField;

quint64 BitField::mask() const
{
    return count >= 64 ? ~quint64(0) : (quint64(1) << count) - 1;
}

qint64 BitField::minimum(bool isSigned) const
{
    return isSigned ? -static_cast<qint64>(mask() >> 1) - 1 : 0;
}

qint64 BitField::maximum(bool isSigned) const
{
    return static_cast<qint64>(isSigned || count >= 64 ? mask() >> 1 : mask());
}

BitField RegisterCodec::fieldOf(const NodeInfo &node, int length)
{
    const int bits = 8 * length;
    if (node.lsb < 0 || node.msb < 0) {
        return {0, bits};
    }
    const qint64 low = qMin(node.lsb, node.msb);
    const qint64 high = qMax(node.lsb, node.msb);
    if (high >= bits) {
        return {};
    }
    const auto count = static_cast<int>(high - low + 1);
    return {static_cast<int>(node.isBigEndian ? bits - 1 - high : low), count};
}

quint64 RegisterCodec::load(const QByteArray &bytes, bool isBigEndian)
{
    quint64 bits = 0;
    for (int i = 0; i < bytes.size(); ++i) {
        const char byte = bytes.at(isBigEndian ? i : bytes.size() - 1 - i);
        bits = (bits << 8) | static_cast<quint8>(byte);
    }
    return bits;
}

QByteArray RegisterCodec::store(quint64 bits, int length, bool isBigEndian)
{
    QByteArray bytes(length, '\0');
    for (int i = 0; i < length; ++i) {
        bytes[isBigEndian ? length - 1 - i : i] = static_cast<char>(bits & 0xFFU);
        bits >>= 8;
    }
    return bytes;
}

double RegisterCodec::loadReal(const QByteArray &bytes, bool isBigEndian)
{
    const quint64 bits = load(bytes, isBigEndian);
    if (bytes.size() == static_cast<int>(sizeof(float))) {
        const auto narrow = static_cast<quint32>(bits);
        float value = 0;
        std::memcpy(&value, &narrow, sizeof(value));
        return static_cast<double>(value);
    }
    double value = 0;
    std::memcpy(&value, &bits, sizeof(value));
    return value;
}

bool RegisterCodec::storeReal(double value, int length, bool isBigEndian, QByteArray *bytes)
{
    quint64 bits = 0;
    if (length == static_cast<int>(sizeof(float))) {
        constexpr auto LIMIT = static_cast<double>(std::numeric_limits<float>::max());
        if (std::isfinite(value) && std::fabs(value) > LIMIT) {
            return false;
        }
        const auto narrow = static_cast<float>(value);
        quint32 narrowBits = 0;
        std::memcpy(&narrowBits, &narrow, sizeof(narrow));
        bits = narrowBits;
    } else {
        std::memcpy(&bits, &value, sizeof(value));
    }
    *bytes = store(bits, length, isBigEndian);
    return true;
}

qint64 RegisterCodec::extract(quint64 bits, const BitField &field, bool isSigned)
{
    const quint64 value = (bits >> field.low) & field.mask();
    const bool isNegative = isSigned && ((value >> (field.count - 1)) & 1U) != 0;
    return static_cast<qint64>(isNegative ? value | ~field.mask() : value);
}

bool RegisterCodec::insert(qint64 value, const BitField &field, quint64 *bits)
{
    const auto raw = static_cast<quint64>(value);
    if (value < field.minimum(true) || (value >= 0 && raw > field.mask())) {
        return false;
    }
    const quint64 mask = field.mask() << field.low;
    *bits = (*bits & ~mask) | ((raw << field.low) & mask);
    return true;
}
