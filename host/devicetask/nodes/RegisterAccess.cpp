#include "host/devicetask/nodes/RegisterAccess.h"

#include "host/devicetask/nodes/NodeKindRules.h"

#include <cmath>
#include <limits>

RegisterAccess::RegisterAccess(NodeEvaluator &evaluator, NodeId id)
    : m_evaluator(evaluator)
    , m_nId(id)
    , m_node(evaluator.at(id))
    , m_strName(QString::fromUtf8(m_node.name))
{
}

DeviceError RegisterAccess::length(int *out)
{
    qint64 length = 0;
    const DeviceError error = m_evaluator.wholeOperand(m_nId, m_node.length, &length);
    if (error.failed()) {
        return error;
    }
    const QByteArray fault = nodeKindRule(m_node.kind).lengthFault(length);
    if (!fault.isEmpty()) {
        return NodeEvaluator::failure(NODE_LOGICAL, m_node, QString::fromLatin1(fault));
    }
    *out = static_cast<int>(length);
    return {};
}

DeviceError RegisterAccess::field(RegisterCodec::BitField *out)
{
    int bytes = 0;
    const DeviceError error = length(&bytes);
    if (error.failed()) {
        return error;
    }
    const RegisterCodec::BitField field = RegisterCodec::fieldOf(m_node, bytes);
    if (field.count == 0) {
        return NodeEvaluator::failure(NODE_LOGICAL, m_node,
                                      QStringLiteral("its bits lie outside its register"));
    }
    *out = field;
    return {};
}

DeviceError RegisterAccess::addressPart(const NodeAddress &part, quint64 *out)
{
    qint64 number = part.constant;
    DeviceError error;
    switch (part.kind) {
    case NodeAddress::Kind::Constant:
        break;
    case NodeAddress::Kind::Node:
        error = m_evaluator.integer(part.node, &number);
        break;
    case NodeAddress::Kind::Formula:
        error = m_evaluator.integer(part.formula, &number);
        break;
    case NodeAddress::Kind::Index:
        error = m_evaluator.integer(part.node, &number);
        if (!error.failed()) {
            qint64 offset = 0;
            const bool isOwn = part.offset.source != NodeOperand::Source::None;
            error = m_evaluator.wholeOperand(m_nId, isOwn ? part.offset : m_node.length, &offset);
            if (!error.failed() && __builtin_mul_overflow(number, offset, &number)) {
                error = beyondAddresses();
            }
        }
        break;
    }
    *out = static_cast<quint64>(number);
    return error;
}

/// The sum may pass through numbers below 0, as parts may be negative; constants are not. A negative result is an
/// address with its top bit set, which a node gives as such.
DeviceError RegisterAccess::address(quint64 *out)
{
    quint64 sum = 0;
    int carries = 0;
    for (const NodeAddress &part : m_node.addresses) {
        quint64 number = 0;
        const DeviceError error = addressPart(part, &number);
        if (error.failed()) {
            return error;
        }
        const bool isNegative =
            part.kind != NodeAddress::Kind::Constant && static_cast<qint64>(number) < 0;
        const bool wraps = sum + number < sum;
        sum += number;
        carries += isNegative ? int(wraps) - 1 : int(wraps);
    }
    *out = sum;
    return carries > 0 ? beyondAddresses() : DeviceError();
}

DeviceError RegisterAccess::beyondAddresses() const
{
    return NodeEvaluator::failure(NODE_LOGICAL, m_node,
                                  QStringLiteral("its address lies beyond 64 bits"));
}

DeviceError RegisterAccess::checkPort() const
{
    if (m_node.port == NO_NODE) {
        return NodeEvaluator::failure(NODE_LOGICAL, m_node, QStringLiteral("it has no port"));
    }
    if (m_evaluator.at(m_node.port).isChunkPort) {
        return NodeEvaluator::failure(NODE_NOT_ACCESSIBLE, m_node,
                                      QStringLiteral("its port is not that of the device"));
    }
    return {};
}

DeviceError RegisterAccess::locate(quint64 *start, int *bytes)
{
    DeviceError error = checkPort();
    if (!error.failed()) {
        error = length(bytes);
    }
    if (!error.failed()) {
        error = address(start);
    }
    if (!error.failed()
        && *start > std::numeric_limits<quint64>::max() - static_cast<quint64>(*bytes - 1)) {
        error = beyondAddresses();
    }
    return error;
}

DeviceError RegisterAccess::readBytes(bool mayHold, QByteArray *out)
{
    quint64 start = 0;
    int bytes = 0;
    const DeviceError error = locate(&start, &bytes);
    return error.failed() ? error
                          : m_evaluator.memory().read(start, bytes, mayHold, m_strName, out);
}

DeviceError RegisterAccess::readNumber(FormulaNumber *out)
{
    QByteArray bytes;
    DeviceError error = readBytes(m_evaluator.mayHold(), &bytes);
    if (error.failed()) {
        return error;
    }
    if (m_node.kind == NodeKind::FloatReg) {
        *out = FormulaNumber::ofReal(RegisterCodec::loadReal(bytes, m_node.isBigEndian));
        return {};
    }
    RegisterCodec::BitField bits;
    error = field(&bits);
    if (!error.failed()) {
        *out = FormulaNumber::ofInteger(RegisterCodec::extract(
            RegisterCodec::load(bytes, m_node.isBigEndian), bits, m_node.isSigned));
    }
    return error;
}

DeviceError RegisterAccess::doesNotFit() const
{
    return NodeEvaluator::failure(NODE_RANGE, m_node,
                                  QStringLiteral("the number does not fit into its register"));
}

DeviceError RegisterAccess::writeNumber(const FormulaNumber &value)
{
    quint64 start = 0;
    int size = 0;
    DeviceError error = locate(&start, &size);
    if (error.failed()) {
        return error;
    }
    QByteArray bytes;
    if (m_node.kind == NodeKind::FloatReg) {
        return RegisterCodec::storeReal(value.toReal(), size, m_node.isBigEndian, &bytes)
            ? m_evaluator.memory().write(start, bytes, m_strName)
            : doesNotFit();
    }
    RegisterCodec::BitField bits;
    error = field(&bits);
    quint64 contents = 0;
    if (!error.failed() && bits.count < 8 * size) {
        error = m_evaluator.memory().read(start, size, false, m_strName, &bytes);
        contents = RegisterCodec::load(bytes, m_node.isBigEndian);
    }
    if (error.failed()) {
        return error;
    }
    const FormulaNumber whole =
        value.isInteger ? value : FormulaNumber::ofReal(std::round(value.real));
    qint64 integer = 0;
    if (!whole.toInteger(&integer) || !RegisterCodec::insert(integer, bits, &contents)) {
        return doesNotFit();
    }
    return m_evaluator.memory().write(
        start, RegisterCodec::store(contents, size, m_node.isBigEndian), m_strName);
}

DeviceError RegisterAccess::readText(QByteArray *out)
{
    QByteArray bytes;
    const DeviceError error = readBytes(false, &bytes);
    if (!error.failed()) {
        const int end = bytes.indexOf('\0');
        *out = end < 0 ? bytes : bytes.left(end);
    }
    return error;
}

DeviceError RegisterAccess::writeText(const QByteArray &text)
{
    quint64 start = 0;
    int size = 0;
    const DeviceError error = locate(&start, &size);
    if (error.failed()) {
        return error;
    }
    if (text.size() > size) {
        return NodeEvaluator::failure(
            NODE_RANGE, m_node,
            QStringLiteral("%1 bytes do not fit into its %2").arg(text.size()).arg(size));
    }
    return m_evaluator.memory().write(start, text + QByteArray(size - text.size(), '\0'),
                                      m_strName);
}

DeviceError RegisterAccess::locateRaw(int count, quint64 *start, int *moved)
{
    constexpr int WORD = 4;
    int size = 0;
    const DeviceError error = locate(start, &size);
    if (error.failed()) {
        return error;
    }
    *moved = qMin((count + WORD - 1) / WORD * WORD, size);
    return count <= size
        ? DeviceError()
        : NodeEvaluator::failure(
            NODE_RANGE, m_node,
            QStringLiteral("%1 bytes do not fit into its %2").arg(count).arg(size));
}

DeviceError RegisterAccess::readRaw(int count, QByteArray *out)
{
    quint64 start = 0;
    int moved = 0;
    QByteArray bytes;
    DeviceError error = locateRaw(count, &start, &moved);
    if (!error.failed()) {
        error = m_evaluator.memory().read(start, moved, false, m_strName, &bytes);
    }
    if (!error.failed()) {
        *out = bytes.left(count);
    }
    return error;
}

DeviceError RegisterAccess::writeRaw(const QByteArray &bytes)
{
    quint64 start = 0;
    int moved = 0;
    const DeviceError error = locateRaw(bytes.size(), &start, &moved);
    return error.failed() ? error
                          : m_evaluator.memory().write(
                              start, bytes + QByteArray(moved - bytes.size(), '\0'), m_strName);
}
