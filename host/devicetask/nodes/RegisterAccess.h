#pragma once

#include "host/devicetask/nodes/NodeEvaluator.h"
#include "host/devicetask/nodes/RegisterCodec.h"

/// One register node: where it stands, how long it is, and its contents. Part of one operation; on the connection's
/// thread.
class RegisterAccess
{
public:
    RegisterAccess(NodeEvaluator &evaluator, NodeId id);

    /// In bytes, within what the kind of register takes.
    DeviceError length(int *out);
    /// The bits that an IntReg, MaskedIntReg or StructEntry covers.
    DeviceError field(RegisterCodec::BitField *out);

    DeviceError readNumber(FormulaNumber *out);
    /// A double goes into an integer register as the nearest whole number; the neighbours of a bit field keep their
    /// bits.
    DeviceError writeNumber(const FormulaNumber &value);
    /// Up to the first zero byte.
    DeviceError readText(QByteArray *out);
    /// The rest of the register is filled with zeros.
    DeviceError writeText(const QByteArray &text);
    /// The first bytes of the register as they stand there. Whole words of 4 are moved, as transports ask for; what
    /// fills up the last one of a write is 0.
    DeviceError readRaw(int count, QByteArray *out);
    DeviceError writeRaw(const QByteArray &bytes);

private:
    DeviceError address(quint64 *out);
    DeviceError addressPart(const NodeAddress &part, quint64 *out);
    DeviceError locate(quint64 *address, int *length);
    DeviceError locateRaw(int count, quint64 *start, int *moved);
    DeviceError beyondAddresses() const;
    DeviceError readBytes(bool mayHold, QByteArray *out);
    DeviceError checkPort() const;
    DeviceError doesNotFit() const;

    NodeEvaluator &m_evaluator;
    const NodeId m_nId;
    const NodeInfo &m_node;
    const QString m_strName;
};
