#pragma once

#include "host/devicetask/nodes/NodeTable.h"

/// One node while it is read: references stand by name and formulas as text. Until the names are resolved each NodeId
/// in `info` is a place in `info.references`.
struct NodeDraft
{
    struct Fault
    {
        int line;
        QByteArray reason;
        bool isHarmless;
    };
    struct FormulaText
    {
        QByteArray tag;
        QByteArray name; ///< of an Expression
        QByteArray text;
        int line = 0; ///< 0 where there is none
    };
    struct Constant
    {
        QByteArray name;
        FormulaNumber value;
    };

    NodeInfo info;
    bool hasSign = false;
    bool hasByteOrder = false;
    FormulaText formula;
    FormulaText formulaTo;
    QVector<FormulaText> expressions;
    QVector<Constant> constants;
    QVector<Fault> faults;

    /// Notes a reference and returns its place.
    NodeId refer(const QByteArray &tag, const QByteArray &target, int line);
    void addFault(int line, const QByteArray &reason, bool isHarmless = false);
    /// Takes over what a StructEntry inherits from its StructReg.
    void inherit(const NodeDraft &structReg);
    /// How much has been read so far, in references, entries, names and faults.
    int parts() const;

    /// Calls `change` with every NodeId that `node` refers to another one by.
    template<class Change>
    static void changeIds(NodeInfo &node, Change change);
};

template<class Change>
void NodeDraft::changeIds(NodeInfo &node, Change change)
{
    const auto changeAll = [&change](QVector<NodeId> &ids) {
        for (NodeId &id : ids) {
            change(id);
        }
    };
    const auto changeOperand = [&change](NodeOperand &operand) {
        if (operand.source == NodeOperand::Source::Node) {
            change(operand.node);
        }
    };
    for (QVector<NodeId> *ids :
         {&node.implementedBy, &node.availableBy, &node.lockedBy, &node.valueCopies}) {
        changeAll(*ids);
    }
    for (NodeOperand *operand : {&node.value, &node.defaultValue, &node.min, &node.max, &node.inc,
                                 &node.commandValue, &node.length}) {
        changeOperand(*operand);
    }
    for (NodeId *id : {&node.index, &node.port}) {
        if (*id != NO_NODE) {
            change(*id);
        }
    }
    for (auto &indexed : node.indexedValues) {
        changeOperand(indexed.second);
    }
    for (NodeEntry &entry : node.entries) {
        changeAll(entry.implementedBy);
        changeAll(entry.availableBy);
    }
    for (NodeVariable &variable : node.variables) {
        change(variable.node);
    }
    for (NodeAddress &address : node.addresses) {
        if (address.kind == NodeAddress::Kind::Node || address.kind == NodeAddress::Kind::Index) {
            change(address.node);
        }
        changeOperand(address.offset);
    }
}
