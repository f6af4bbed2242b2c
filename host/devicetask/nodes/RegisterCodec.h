#pragma once

#include "host/devicetask/nodes/NodeTable.h"

#include <QByteArray>

/// Bytes of a register to numbers and back, without a device.
namespace RegisterCodec {

/// Bits of a register, 0 the least significant one whatever the byte order is.
struct BitField
{
    int low = 0;
    int count = 0; ///< 1 to 64

    quint64 mask() const; ///< in place at bit 0
    qint64 minimum(bool isSigned) const;
    /// 64 unsigned bits end here at 2^63 - 1, though all of them can be written.
    qint64 maximum(bool isSigned) const;
};

/// What an IntReg, MaskedIntReg or StructEntry of this length covers; GenICam counts the bits of a big-endian register
/// from its most significant one.
BitField fieldOf(const NodeInfo &node, int length);

/// Registers of 1 to 8 bytes.
quint64 load(const QByteArray &bytes, bool isBigEndian);
QByteArray store(quint64 bits, int length, bool isBigEndian);

/// Registers of 4 or 8 bytes.
double loadReal(const QByteArray &bytes, bool isBigEndian);
/// False when a finite number is too large for the register.
bool storeReal(double value, int length, bool isBigEndian, QByteArray *bytes);

qint64 extract(quint64 bits, const BitField &field, bool isSigned);
/// False when the field does not hold the value, neither as a signed nor as an unsigned number.
bool insert(qint64 value, const BitField &field, quint64 *bits);

} // namespace RegisterCodec
