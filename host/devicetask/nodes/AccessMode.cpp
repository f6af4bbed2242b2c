#include "host/devicetask/nodes/AccessMode.h"

#include "host/devicetask/nodes/NodeEvaluator.h"
#include "host/devicetask/nodes/NodeKindRules.h"

namespace {

bool isReadable(int mode)
{
    return mode == NODE_RO || mode == NODE_RW;
}
bool isWritable(int mode)
{
    return mode == NODE_WO || mode == NODE_RW;
}

int modeOf(bool readable, bool writable)
{
    if (readable) {
        return writable ? NODE_RW : NODE_RO;
    }
    return writable ? NODE_WO : NODE_NA;
}

int narrowed(int mode, int by)
{
    return modeOf(isReadable(mode) && isReadable(by), isWritable(mode) && isWritable(by));
}

int modeOf(NodeInfo::Access access, int missing)
{
    switch (access) {
    case NodeInfo::Access::ReadOnly:
        return NODE_RO;
    case NodeInfo::Access::WriteOnly:
        return NODE_WO;
    case NodeInfo::Access::ReadWrite:
        return NODE_RW;
    case NodeInfo::Access::None:
        break;
    }
    return missing;
}

/// The node's own mode, without its conditions and what stands below it.
int ownMode(const NodeTable &nodes, const NodeInfo &node)
{
    const NodeKindRule &rule = nodeKindRule(node.kind);
    const int imposed = modeOf(node.imposedAccess, NODE_RW);
    if (rule.isRegister()) {
        const bool isAway = node.port == NO_NODE || nodes.at(node.port).isChunkPort;
        return isAway ? NODE_NA : narrowed(imposed, modeOf(node.registerAccess, NODE_RO));
    }
    const bool isKnife = rule.hasFormula() && !rule.isConverter();
    return isKnife || node.kind == NodeKind::Port ? NODE_RO : imposed;
}

/// `withLocks` false leaves the write direction undecided. The evaluator limits the depth of the recursion.
DeviceError workOut(NodeEvaluator &evaluator, NodeId id, bool withLocks, int *mode)
{
    int result = NODE_RW;
    NodeId current = id;
    do {
        const NodeEvaluator::Visit visit(evaluator, current);
        if (visit.error().failed()) {
            *mode = NODE_NI;
            return {};
        }
        const NodeInfo &node = evaluator.at(current);
        bool found = false;
        DeviceError error = evaluator.findCondition(node.implementedBy, false, &found);
        if (error.failed() || found) {
            *mode = error.failed() ? *mode : int(NODE_NI);
            return error;
        }
        error = evaluator.findCondition(node.availableBy, false, &found);
        if (error.failed() || found) {
            *mode = error.failed() ? *mode : int(NODE_NA);
            return error;
        }
        if (node.kind == NodeKind::Category) {
            *mode = NODE_RO;
            return {};
        }
        result = narrowed(result, ownMode(evaluator.nodes(), node));
        if (withLocks && isWritable(result)) {
            error = evaluator.findCondition(node.lockedBy, true, &found);
            if (error.failed()) {
                return error;
            }
            result = found ? modeOf(isReadable(result), false) : result;
        }
        for (const NodeVariable &variable : node.variables) {
            int variableMode = NODE_RW;
            error = workOut(evaluator, variable.node, false, &variableMode);
            if (error.failed()) {
                return error;
            }
            if (!isReadable(variableMode)) {
                *mode = NODE_NA;
                return {};
            }
        }
        NodeOperand below;
        LocalValues::Key key;
        error = evaluator.selectValue(current, &below, &key);
        if (error.failed()) {
            *mode = error.isTransport() ? *mode : int(NODE_NA);
            return error.isTransport() ? error : DeviceError();
        }
        current = below.source == NodeOperand::Source::Node ? below.node : NO_NODE;
    } while (current != NO_NODE);
    *mode = result;
    return {};
}

/// Whether what other nodes hold at present has a say in the mode.
bool mayChange(const NodeInfo &node)
{
    return !node.implementedBy.isEmpty() || !node.availableBy.isEmpty() || !node.lockedBy.isEmpty()
        || !node.variables.isEmpty() || node.index != NO_NODE;
}

/// The same as workOut() for a chain without conditions, else -1. A chain has an end: what stands in a circle, or goes
/// too deep, is a problem of its node.
int fixedMode(const NodeTable &nodes, NodeId id)
{
    int result = NODE_RW;
    for (NodeId current = id; current != NO_NODE;) {
        const NodeInfo &node = nodes.at(current);
        if (!node.problem.isEmpty()) {
            return NODE_NI;
        }
        if (mayChange(node)) {
            return -1;
        }
        if (node.kind == NodeKind::Category) {
            return NODE_RO;
        }
        result = narrowed(result, ownMode(nodes, node));
        current = node.value.source == NodeOperand::Source::Node ? node.value.node : NO_NODE;
    }
    return result;
}

DeviceError requireNode(const NodeTable &nodes, const QByteArray &name, NodeId *id)
{
    if (name.isEmpty()) {
        return {NODE_ARGUMENT, QStringLiteral("the node's name is empty")};
    }
    *id = nodes.find(name);
    if (*id == NO_NODE) {
        return {NODE_PROPERTY, QStringLiteral("there is no node %1").arg(QString::fromUtf8(name))};
    }
    const NodeInfo &node = nodes.at(*id);
    return node.problem.isEmpty()
        ? DeviceError()
        : NodeEvaluator::failure(NODE_LOGICAL, node, QString::fromUtf8(node.problem));
}

DeviceError require(NodeEvaluator &evaluator, const QByteArray &name, bool forWriting, NodeId *id)
{
    int mode = NODE_NI;
    DeviceError error = requireNode(evaluator.nodes(), name, id);
    if (!error.failed()) {
        error = workOut(evaluator, *id, forWriting, &mode);
    }
    if (!error.failed() && !(forWriting ? isWritable(mode) : isReadable(mode))) {
        static const char *const DETAILS[] = {"not implemented", "not available", "write only",
                                              "read only", ""};
        error = {
            NODE_NOT_ACCESSIBLE,
            QStringLiteral("%1 is %2").arg(QString::fromUtf8(name), QLatin1String(DETAILS[mode]))};
    }
    return error;
}

} // namespace

DeviceError AccessMode::of(const DeviceSession &session, const QByteArray &name, int *mode)
{
    const NodeId id = session.nodes.find(name);
    if (id == NO_NODE) {
        *mode = NODE_NI;
        return {};
    }
    NodeEvaluator evaluator(session);
    return workOut(evaluator, id, true, mode);
}

QVector<signed char> AccessMode::fixed(const NodeTable &nodes)
{
    QVector<signed char> modes(nodes.count());
    for (NodeId id = 0; id < nodes.count(); ++id) {
        modes[id] = static_cast<signed char>(fixedMode(nodes, id));
    }
    return modes;
}

DeviceError AccessMode::requireReadable(NodeEvaluator &evaluator, const QByteArray &name,
                                        NodeId *id)
{
    return require(evaluator, name, false, id);
}

DeviceError AccessMode::requireWritable(NodeEvaluator &evaluator, const QByteArray &name,
                                        NodeId *id)
{
    return require(evaluator, name, true, id);
}
