#include "host/devicetask/nodes/NodeMarks.h"

#include <algorithm>
#include <vector>

namespace {

bool isOneOf(const QByteArray &tag, std::initializer_list<const char *> tags)
{
    return std::any_of(tags.begin(), tags.end(), [&tag](const char *name) { return tag == name; });
}

bool isCondition(const NodeInfo::Reference &reference)
{
    return isOneOf(reference.tag, {"pIsLocked", "pIsAvailable", "pIsImplemented"});
}

/// Whether the node that refers changes with the one that it refers to.
bool changesWith(const NodeInfo::Reference &reference)
{
    return !isOneOf(reference.tag,
                    {"pFeature", "pSelected", "pAlias", "pCastAlias", "pError", "pPort"});
}

} // namespace

void NodeMarks::set(NodeTable *table)
{
    std::vector<std::vector<NodeId>> dependants(static_cast<std::size_t>(table->count()));
    const auto dependantsOf = [&dependants](NodeId id) -> std::vector<NodeId> & {
        return dependants[static_cast<std::size_t>(id)];
    };
    std::vector<NodeId> reached;
    for (NodeId id = 0; id < table->count(); ++id) {
        const NodeInfo &node = table->at(id);
        for (const NodeInfo::Reference &reference : node.references) {
            if (reference.node != NO_NODE && changesWith(reference)) {
                dependantsOf(reference.node).push_back(id);
                NodeInfo &target = table->at(reference.node);
                target.isCondition = target.isCondition || isCondition(reference);
            }
        }
        for (const NodeAddress &address : node.addresses) {
            if (address.formula != NO_NODE) {
                dependantsOf(address.formula).push_back(id);
            }
        }
        if (node.isPolled) {
            reached.push_back(id);
        }
    }
    std::vector<bool> isMoving(static_cast<std::size_t>(table->count()));
    while (!reached.empty()) {
        const NodeId id = reached.back();
        reached.pop_back();
        if (!isMoving[static_cast<std::size_t>(id)]) {
            isMoving[static_cast<std::size_t>(id)] = true;
            reached.insert(reached.end(), dependantsOf(id).cbegin(), dependantsOf(id).cend());
        }
    }
    for (NodeId id = 0; id < table->count(); ++id) {
        NodeInfo &node = table->at(id);
        const bool isInvalidated =
            std::any_of(node.references.cbegin(), node.references.cend(),
                        [&isMoving](const NodeInfo::Reference &reference) {
                            return reference.tag == "pInvalidator" && reference.node != NO_NODE
                                && isMoving[static_cast<std::size_t>(reference.node)];
                        });
        node.isVolatile = node.isVolatile || node.isPolled || isInvalidated;
    }
}
