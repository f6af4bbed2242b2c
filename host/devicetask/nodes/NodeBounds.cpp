#include "host/devicetask/nodes/NodeBounds.h"

#include "host/devicetask/nodes/NodeKindRules.h"
#include "host/devicetask/nodes/RegisterAccess.h"

#include <limits>

using Source = NodeOperand::Source;

namespace {

constexpr double REAL_LIMIT = std::numeric_limits<double>::max();
constexpr auto FLOAT_LIMIT = static_cast<double>(std::numeric_limits<float>::max());

bool isReal(const NodeInfo &node)
{
    return nodeKindRule(node.kind).isReal;
}

/// Smallest and largest of all entries, at no access.
bool entryRange(const NodeInfo &node, qint64 *min, qint64 *max)
{
    bool exists = false;
    for (const NodeEntry &entry : node.entries) {
        if (entry.hasValue) {
            *min = exists ? qMin(*min, entry.value) : entry.value;
            *max = exists ? qMax(*max, entry.value) : entry.value;
            exists = true;
        }
    }
    return exists;
}

bool isEndOf64Bits(const FormulaNumber &number)
{
    return number.isInteger
        && (number.integer == std::numeric_limits<qint64>::min()
            || number.integer == std::numeric_limits<qint64>::max());
}

} // namespace

DeviceError NodeBounds::minimum(NodeId id, FormulaNumber *out)
{
    bool exists = false;
    const DeviceError error = find(id, Which::Min, out, &exists);
    if (!error.failed() && !exists) {
        *out = isReal(m_evaluator.at(id))
            ? FormulaNumber::ofReal(-REAL_LIMIT)
            : FormulaNumber::ofInteger(std::numeric_limits<qint64>::min());
    }
    return error;
}

DeviceError NodeBounds::maximum(NodeId id, FormulaNumber *out)
{
    bool exists = false;
    const DeviceError error = find(id, Which::Max, out, &exists);
    if (!error.failed() && !exists) {
        *out = isReal(m_evaluator.at(id))
            ? FormulaNumber::ofReal(REAL_LIMIT)
            : FormulaNumber::ofInteger(std::numeric_limits<qint64>::max());
    }
    return error;
}

DeviceError NodeBounds::increment(NodeId id, FormulaNumber *out)
{
    bool exists = false;
    const DeviceError error = find(id, Which::Inc, out, &exists);
    if (!error.failed() && !exists) {
        *out = FormulaNumber::ofInteger(1);
    }
    return error;
}

const NodeOperand &NodeBounds::own(const NodeInfo &node, Which which)
{
    switch (which) {
    case Which::Min:
        return node.min;
    case Which::Max:
        return node.max;
    case Which::Inc:
        break;
    }
    return node.inc;
}

DeviceError NodeBounds::find(NodeId id, Which which, FormulaNumber *out, bool *exists)
{
    const NodeEvaluator::Visit visit(m_evaluator, id);
    if (visit.error().failed()) {
        return visit.error();
    }
    const NodeOperand &bound = own(m_evaluator.at(id), which);
    if (bound.source == Source::None) {
        return ofKind(id, which, out, exists);
    }
    *exists = true;
    return m_evaluator.operand(id, bound, out);
}

DeviceError NodeBounds::ofKind(NodeId id, Which which, FormulaNumber *out, bool *exists)
{
    const NodeInfo &node = m_evaluator.at(id);
    const NodeKindRule &rule = nodeKindRule(node.kind);
    if (rule.isRegister()) {
        return ofRegister(id, which, out, exists);
    }
    if (rule.isConverter()) {
        return ofConverter(id, which, out, exists);
    }
    if (node.kind == NodeKind::Boolean || node.kind == NodeKind::Enumeration) {
        qint64 min = 0;
        qint64 max = 1;
        *exists =
            which != Which::Inc && (node.kind == NodeKind::Boolean || entryRange(node, &min, &max));
        *out = FormulaNumber::ofInteger(which == Which::Min ? min : max);
        return {};
    }
    if (node.kind == NodeKind::Integer || node.kind == NodeKind::Float) {
        NodeOperand below;
        LocalValues::Key key;
        const DeviceError error = m_evaluator.selectValue(id, &below, &key);
        if (error.failed() || below.source != Source::Node) {
            return error;
        }
        return find(below.node, which, out, exists);
    }
    return {};
}

DeviceError NodeBounds::ofRegister(NodeId id, Which which, FormulaNumber *out, bool *exists)
{
    const NodeInfo &node = m_evaluator.at(id);
    if (which == Which::Inc || nodeKindRule(node.kind).gives != NodeGives::Number) {
        return {};
    }
    RegisterAccess access(m_evaluator, id);
    if (node.kind == NodeKind::FloatReg) {
        int length = 0;
        const DeviceError error = access.length(&length);
        *exists = !error.failed() && length == static_cast<int>(sizeof(float));
        *out = FormulaNumber::ofReal(which == Which::Min ? -FLOAT_LIMIT : FLOAT_LIMIT);
        return error;
    }
    RegisterCodec::BitField field;
    const DeviceError error = access.field(&field);
    if (!error.failed()) {
        *exists = true;
        *out = FormulaNumber::ofInteger(which == Which::Min ? field.minimum(node.isSigned)
                                                            : field.maximum(node.isSigned));
    }
    return error;
}

/// The bounds of the node below, converted; a falling formula changes their places. What cannot be converted is no
/// bound, nor are the ends of 64 bits, beyond which a formula would turn around.
DeviceError NodeBounds::ofConverter(NodeId id, Which which, FormulaNumber *out, bool *exists)
{
    const NodeOperand &below = m_evaluator.at(id).value;
    if (which == Which::Inc || below.source != Source::Node) {
        return {};
    }
    FormulaNumber ends[2];
    const Which sides[2] = {Which::Min, Which::Max};
    for (int i = 0; i < 2; ++i) {
        FormulaNumber end;
        bool hasEnd = false;
        DeviceError error = find(below.node, sides[i], &end, &hasEnd);
        if (error.failed() || !hasEnd || isEndOf64Bits(end)) {
            return error;
        }
        error = m_evaluator.convert(id, end, &ends[i]);
        if (error.failed()) {
            return error.code() == NODE_RUNTIME ? DeviceError() : error;
        }
    }
    const bool isRising = ends[0].isInteger && ends[1].isInteger
        ? ends[0].integer <= ends[1].integer
        : ends[0].toReal() <= ends[1].toReal();
    *exists = true;
    *out = ends[(which == Which::Min) == isRising ? 0 : 1];
    return {};
}

DeviceError NodeBounds::takesAll64Bits(NodeId id, bool *out)
{
    const NodeEvaluator::Visit visit(m_evaluator, id);
    if (visit.error().failed()) {
        return visit.error();
    }
    const NodeInfo &node = m_evaluator.at(id);
    const NodeKindRule &rule = nodeKindRule(node.kind);
    const bool isBounded = node.min.source != Source::None || node.max.source != Source::None;
    *out = false;
    if (isBounded || node.isSigned || rule.isReal) {
        return {};
    }
    if (rule.isRegister() && rule.gives == NodeGives::Number) {
        RegisterCodec::BitField field;
        const DeviceError error = RegisterAccess(m_evaluator, id).field(&field);
        *out = field.count == 64;
        return error;
    }
    if (node.kind != NodeKind::Integer) {
        return {};
    }
    NodeOperand below;
    LocalValues::Key key;
    const DeviceError error = m_evaluator.selectValue(id, &below, &key);
    return error.failed() || below.source != Source::Node ? error : takesAll64Bits(below.node, out);
}
