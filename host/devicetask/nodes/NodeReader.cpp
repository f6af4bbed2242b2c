#include "host/devicetask/nodes/NodeReader.h"

#include "host/devicetask/nodes/AccessMode.h"
#include "host/devicetask/nodes/NodeBounds.h"
#include "host/devicetask/nodes/NodeEvaluator.h"
#include "host/devicetask/nodes/NodeKindRules.h"
#include "host/devicetask/nodes/RegisterAccess.h"

#include <QtMath>

#include <algorithm>
#include <limits>

namespace {

constexpr qint64 MAX_STRING = 64 * 1024 * 1024;

/// A bound as an integer: what lies beyond 64 bits ends with them.
qint64 clamped(const FormulaNumber &number)
{
    qint64 integer = 0;
    if (number.toInteger(&integer)) {
        return integer;
    }
    return number.real < 0 ? std::numeric_limits<qint64>::min()
                           : std::numeric_limits<qint64>::max();
}

/// The StringReg or constant String that a chain of Strings ends in; NO_NODE for other kinds.
NodeId endOfText(const NodeTable &nodes, NodeId id)
{
    for (int depth = 0; id != NO_NODE && depth < NodeEvaluator::MAX_DEPTH; ++depth) {
        const NodeInfo &node = nodes.at(id);
        const bool isEnd = node.kind == NodeKind::StringReg
            || (node.kind == NodeKind::String && node.value.source != NodeOperand::Source::Node);
        if (isEnd) {
            return id;
        }
        id = node.kind == NodeKind::String ? node.value.node : NO_NODE;
    }
    return NO_NODE;
}

/// The first step of a read: gives the node, if it can be read and is of a kind that fits.
DeviceError requireKind(NodeEvaluator &evaluator, const QByteArray &name, bool (*fits)(NodeKind),
                        const char *wanted, NodeId *id)
{
    const DeviceError failure = AccessMode::requireReadable(evaluator, name, id);
    return failure.failed() || fits(evaluator.at(*id).kind) ? failure
                                                            : NodeReader::wrongKind(name, wanted);
}

bool isEnumeration(NodeKind kind)
{
    return kind == NodeKind::Enumeration;
}

/// Some devices describe a switch as an enumeration of 0 and 1.
bool isSwitch(NodeKind kind)
{
    return kind == NodeKind::Boolean || kind == NodeKind::Enumeration;
}

} // namespace

float NodeReader::toFloat(double number)
{
    constexpr double LIMIT = static_cast<double>(std::numeric_limits<float>::max());
    return static_cast<float>(qIsFinite(number) ? std::clamp(number, -LIMIT, LIMIT) : number);
}

DeviceError NodeReader::wrongKind(const QByteArray &name, const char *wanted)
{
    return {NODE_PROPERTY,
            QStringLiteral("%1 is no %2").arg(QString::fromUtf8(name), QLatin1String(wanted))};
}

bool NodeReader::isIntegerLike(NodeKind kind)
{
    const NodeKindRule &rule = nodeKindRule(kind);
    return rule.gives == NodeGives::Number && !rule.isReal;
}

bool NodeReader::isFloatLike(NodeKind kind)
{
    const NodeKindRule &rule = nodeKindRule(kind);
    return rule.gives == NodeGives::Number && rule.isReal;
}

DeviceError NodeReader::integer(const DeviceSession &session, const QByteArray &name,
                                _NODE_INT_VALUE_ *out)
{
    NodeEvaluator evaluator(session);
    NodeId id = NO_NODE;
    _NODE_INT_VALUE_ result{};
    qint64 value = 0;
    DeviceError failure = requireKind(evaluator, name, isIntegerLike, "integer", &id);
    if (!failure.failed()) {
        failure = evaluator.integer(id, &value);
    }
    if (!failure.failed()) {
        failure = integerRange(evaluator, id, &result);
    }
    if (!failure.failed()) {
        result.value = value;
        *out = result;
    }
    return failure;
}

DeviceError NodeReader::integerRange(NodeEvaluator &evaluator, NodeId id, _NODE_INT_VALUE_ *out)
{
    NodeBounds bounds(evaluator);
    FormulaNumber min;
    FormulaNumber max;
    FormulaNumber inc;
    DeviceError failure = bounds.minimum(id, &min);
    if (!failure.failed()) {
        failure = bounds.maximum(id, &max);
    }
    if (!failure.failed()) {
        failure = bounds.increment(id, &inc);
    }
    if (!failure.failed()) {
        out->min = clamped(min);
        out->max = clamped(max);
        out->inc = qMax<qint64>(clamped(inc), 1);
    }
    return failure;
}

DeviceError NodeReader::floating(const DeviceSession &session, const QByteArray &name,
                                 _NODE_FLOAT_VALUE_ *out)
{
    NodeEvaluator evaluator(session);
    NodeId id = NO_NODE;
    FormulaNumber value;
    double min = 0;
    double max = 0;
    DeviceError failure = requireKind(evaluator, name, isFloatLike, "float", &id);
    if (!failure.failed()) {
        failure = evaluator.number(id, &value);
    }
    if (!failure.failed()) {
        failure = floatRange(evaluator, id, &min, &max);
    }
    if (!failure.failed()) {
        *out = {toFloat(value.toReal()), toFloat(max), toFloat(min)};
    }
    return failure;
}

DeviceError NodeReader::floatRange(NodeEvaluator &evaluator, NodeId id, double *min, double *max)
{
    NodeBounds bounds(evaluator);
    FormulaNumber lower;
    FormulaNumber upper;
    DeviceError failure = bounds.minimum(id, &lower);
    if (!failure.failed()) {
        failure = bounds.maximum(id, &upper);
    }
    if (!failure.failed()) {
        *min = lower.toReal();
        *max = upper.toReal();
    }
    return failure;
}

DeviceError NodeReader::availableEntries(NodeEvaluator &evaluator, NodeId id,
                                         QVector<qint64> *entries)
{
    QVector<qint64> found;
    for (const NodeEntry &entry : evaluator.at(id).entries) {
        bool isAway = !entry.hasValue;
        DeviceError failure;
        if (!isAway) {
            failure = evaluator.findCondition(entry.implementedBy, false, &isAway);
        }
        if (!failure.failed() && !isAway) {
            failure = evaluator.findCondition(entry.availableBy, false, &isAway);
        }
        if (failure.failed()) {
            return failure;
        }
        if (!isAway) {
            found.append(entry.value);
        }
    }
    *entries = found;
    return {};
}

DeviceError NodeReader::enumeration(const DeviceSession &session, const QByteArray &name,
                                    EnumReading *out)
{
    NodeEvaluator evaluator(session);
    NodeId id = NO_NODE;
    qint64 value = 0;
    QVector<qint64> entries;
    DeviceError failure = requireKind(evaluator, name, isEnumeration, "enumeration", &id);
    if (!failure.failed()) {
        failure = evaluator.integer(id, &value);
    }
    if (!failure.failed()) {
        failure = availableEntries(evaluator, id, &entries);
    }
    if (failure.failed()) {
        return failure;
    }
    out->value = static_cast<quint32>(value);
    out->entries.resize(entries.size());
    std::transform(entries.cbegin(), entries.cend(), out->entries.begin(),
                   [](qint64 entry) { return static_cast<quint32>(entry); });
    return {};
}

DeviceError NodeReader::boolean(const DeviceSession &session, const QByteArray &name, bool *out)
{
    NodeEvaluator evaluator(session);
    NodeId id = NO_NODE;
    const DeviceError failure = requireKind(evaluator, name, isSwitch, "boolean", &id);
    return failure.failed() ? failure : evaluator.truth(id, out);
}

DeviceError NodeReader::stringLength(NodeEvaluator &evaluator, NodeId id, qint64 *maxLength)
{
    const NodeId end = endOfText(evaluator.nodes(), id);
    if (end == NO_NODE) {
        return wrongKind(evaluator.at(id).name, "string");
    }
    if (evaluator.at(end).kind == NodeKind::String) {
        *maxLength = MAX_STRING;
        return {};
    }
    int length = 0;
    const DeviceError failure = RegisterAccess(evaluator, end).length(&length);
    if (!failure.failed()) {
        *maxLength = length;
    }
    return failure;
}

DeviceError NodeReader::string(const DeviceSession &session, const QByteArray &name, QString *out,
                               qint64 *maxLength)
{
    NodeEvaluator evaluator(session);
    NodeId id = NO_NODE;
    DeviceError failure = AccessMode::requireReadable(evaluator, name, &id);
    qint64 length = 0;
    if (!failure.failed()) {
        failure = stringLength(evaluator, id, &length);
    }
    if (failure.failed()) {
        return failure;
    }
    const NodeId end = endOfText(session.nodes, id);
    const NodeInfo &node = session.nodes.at(end);
    QByteArray text = session.locals.texts.value(end, node.text);
    if (node.kind == NodeKind::StringReg) {
        failure = RegisterAccess(evaluator, end).readText(&text);
    }
    if (failure.failed()) {
        return failure;
    }
    *out = QString::fromUtf8(text);
    if (maxLength) {
        *maxLength = length;
    }
    return {};
}
