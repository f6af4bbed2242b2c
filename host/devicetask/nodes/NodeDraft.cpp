#include "host/devicetask/nodes/NodeDraft.h"

NodeId NodeDraft::refer(const QByteArray &tag, const QByteArray &target, int line)
{
    NodeInfo::Reference reference;
    reference.tag = tag;
    reference.target = target.trimmed();
    reference.line = line;
    info.references.append(reference);
    return info.references.size() - 1;
}

void NodeDraft::addFault(int line, const QByteArray &reason, bool isHarmless)
{
    faults.append({line, reason, isHarmless});
}

void NodeDraft::inherit(const NodeDraft &structReg)
{
    NodeInfo above = structReg.info;
    const int shift = info.references.size();
    changeIds(above, [shift](NodeId &id) { id += shift; });
    info.references += above.references;
    info.implementedBy += above.implementedBy;
    info.availableBy += above.availableBy;
    info.lockedBy += above.lockedBy;
    info.addresses += above.addresses;
    if (info.length.source == NodeOperand::Source::None) {
        info.length = above.length;
    }
    if (info.port == NO_NODE) {
        info.port = above.port;
    }
    if (info.imposedAccess == NodeInfo::Access::None) {
        info.imposedAccess = above.imposedAccess;
    }
    if (info.registerAccess == NodeInfo::Access::None) {
        info.registerAccess = above.registerAccess;
    }
    info.isVolatile = info.isVolatile || above.isVolatile;
    info.isPolled = info.isPolled || above.isPolled;
    info.isSigned = hasSign ? info.isSigned : above.isSigned;
    info.isBigEndian = hasByteOrder ? info.isBigEndian : above.isBigEndian;
    for (const Fault &fault : structReg.faults) {
        if (!fault.isHarmless) {
            faults.append(fault);
            break;
        }
    }
}

int NodeDraft::parts() const
{
    return info.references.size() + info.entries.size() + info.indexedValues.size()
        + info.variables.size() + info.addresses.size() + expressions.size() + constants.size()
        + faults.size();
}
