#pragma once

#include "host/devicetask/nodes/NodeTable.h"

#include <QStringRef>

/// What a node is to those who refer to it.
enum class NodeGives { Nothing, Number, Text, Port };

/// What one kind of node is and needs.
struct NodeKindRule
{
    QByteArray tag; ///< element name
    NodeKind kind;
    NodeGives gives;
    bool needsValue; ///< a Value or pValue
    bool isReal; ///< its Value, Min, Max and Inc are doubles
    qint64 minLength; ///< of its register in bytes; 0 where it has none
    qint64 maxLength;

    bool isRegister() const { return maxLength > 0; }
    /// What is wrong with that length of its register in bytes, English; empty where it fits.
    QByteArray lengthFault(qint64 length) const
    {
        const bool fits = length >= minLength && length <= maxLength
            && (kind != NodeKind::FloatReg || length == 4 || length == 8);
        return fits
            ? QByteArray()
            : "its length of " + QByteArray::number(length) + " bytes does not fit its kind";
    }
    bool isConverter() const
    {
        return kind == NodeKind::Converter || kind == NodeKind::IntConverter;
    }
    bool hasFormula() const
    {
        return isConverter() || kind == NodeKind::SwissKnife || kind == NodeKind::IntSwissKnife;
    }
    bool isMasked() const
    {
        return kind == NodeKind::MaskedIntReg || kind == NodeKind::StructEntry;
    }
};

const NodeKindRule &nodeKindRule(NodeKind kind);
/// NodeKind::Other for elements that are not evaluated.
const NodeKindRule &nodeKindRule(const QStringRef &tag);
