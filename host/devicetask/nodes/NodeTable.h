#pragma once

#include "host/formula/Formula.h"

#include <QByteArray>
#include <QHash>
#include <QVector>

#include <deque>
#include <memory>
#include <utility>

/// Kinds of nodes as far as their evaluation differs; the rest of GenICam's elements are Other.
enum class NodeKind {
    Category,
    Integer,
    Float,
    Boolean,
    Enumeration,
    String,
    Command,
    IntSwissKnife,
    SwissKnife,
    IntConverter,
    Converter,
    IntReg,
    MaskedIntReg,
    StructEntry, ///< stands for itself, with the properties of its StructReg taken over
    FloatReg,
    StringReg,
    Register,
    Port,
    Other
};

/// Place of a node in its table; references that lead nowhere are NO_NODE.
using NodeId = int;
constexpr NodeId NO_NODE = -1;

/// A number that a description gives as a constant (Value, Min, Length, ...) or by a node (pValue, pMin, pLength, ...).
struct NodeOperand
{
    enum class Source { None, Constant, Node };
    Source source = Source::None;
    FormulaNumber constant; ///< an integer where the text is one, else a double
    NodeId node = NO_NODE;
};

/// pVariable: what a name in a formula stands for.
struct NodeVariable
{
    enum class Property {
        Value,
        Min,
        Max,
        Inc,
        Entry
    }; ///< "X" and "X.Value", "X.Min", ..., "X.Enum.Name"
    QByteArray name; ///< as it stands in the formula, suffix included
    NodeId node = NO_NODE;
    Property property = Property::Value;
    QByteArray entry; ///< of Property::Entry
};

/// A formula with what its names mean, one meaning a name of Formula::names(). Constant and Expression elements are
/// resolved into it.
struct NodeFormula
{
    struct Name
    {
        enum class Source {
            Variable,
            Constant,
            Expression,
            Argument
        }; ///< Argument: TO, FROM of a converter, whichever stands in the formula
        Source source = Source::Variable;
        int index =
            0; ///< into NodeInfo::variables or ::expressions, which refer to each other without circles
        FormulaNumber constant;
    };
    std::shared_ptr<const Formula> formula; ///< null where the element is missing or does not parse
    QVector<Name> names;
};

/// One part of a register's address; the parts are added up.
struct NodeAddress
{
    enum class Kind { Constant, Node, Formula, Index };
    Kind kind = Kind::Constant;
    qint64 constant = 0; ///< Address; bits of an unsigned number
    NodeId node = NO_NODE; ///< pAddress, or the index of pIndex
    NodeOperand offset; ///< Offset, pOffset of pIndex; the register's length without one
    int formula =
        -1; ///< inner IntSwissKnife: a node of its own in the table, NodeKind::IntSwissKnife
};

/// One EnumEntry.
struct NodeEntry
{
    QByteArray name;
    qint64 value = 0;
    bool hasValue = false;
    QVector<NodeId> implementedBy;
    QVector<NodeId> availableBy;
    int line = 0;
};

/// What is wrong with a node, or with a piece of the description that became no node.
struct NodeFault
{
    QByteArray node; ///< name
    int line = 0; ///< of the faulty element
    QByteArray reason; ///< English, without a full stop
    bool isHarmless = false; ///< the node can be evaluated all the same
};
Q_DECLARE_TYPEINFO(NodeFault, Q_MOVABLE_TYPE);

/// One node of a description with everything that its evaluation needs.
struct NodeInfo
{
    /// A reference by name as it stood in the text, for the check and its messages.
    struct Reference
    {
        QByteArray tag; ///< "pValue", "pIndex", "pOffset", ...
        QByteArray target; ///< trimmed
        int line = 0;
        NodeId node = NO_NODE;
    };
    /// GenICam's ImposedAccessMode or AccessMode; None where the element is missing.
    enum class Access { None, ReadOnly, WriteOnly, ReadWrite };

    QByteArray
        name; ///< inner formulas without a name have an invented one that no reference can spell
    QByteArray tag; ///< element name, "IntReg"
    NodeKind kind = NodeKind::Other;
    int line = 0; ///< of the start tag
    QVector<Reference>
        references; ///< all, in document order, those of entries included; a StructReg's behind its entry's own
    QByteArray problem; ///< why the node cannot be evaluated, English; empty when it can

    Access imposedAccess = Access::None;
    Access registerAccess = Access::None;
    QVector<NodeId>
        implementedBy; ///< pIsImplemented; a StructEntry inherits those of its StructReg
    QVector<NodeId> availableBy;
    QVector<NodeId> lockedBy;

    NodeOperand value; ///< Value, pValue; of a String see text
    QVector<NodeId> valueCopies; ///< pValueCopy: written together with the value
    QByteArray text; ///< Value of a String (whose `value` then is a constant without a meaning)
    NodeId index = NO_NODE; ///< pIndex of an Integer or Float
    QVector<QPair<qint64, NodeOperand>> indexedValues; ///< ValueIndexed, pValueIndexed by Index
    NodeOperand defaultValue; ///< ValueDefault, pValueDefault
    NodeOperand min;
    NodeOperand max;
    NodeOperand inc;
    qint64 onValue = 1; ///< Boolean
    qint64 offValue = 0;
    NodeOperand commandValue; ///< CommandValue, pCommandValue
    QVector<NodeEntry> entries; ///< Enumeration, in document order

    QVector<NodeVariable> variables;
    QVector<NodeFormula> expressions; ///< Expression elements
    NodeFormula formula; ///< Formula of a swiss knife, FormulaFrom of a converter (device to user)
    NodeFormula formulaTo; ///< FormulaTo of a converter (user to device)

    QVector<NodeAddress> addresses;
    NodeOperand length; ///< bytes
    NodeId port = NO_NODE;
    bool isSigned = false;
    bool isBigEndian = false; ///< GenICam: little-endian without an Endianess (sic) element
    qint64 lsb = -1; ///< as they stand in the text: their meaning depends on the byte order
    qint64 msb = -1;
    bool isChunkPort = false; ///< Port with a ChunkID or EventID: nothing to be read
    bool isPolled = false; ///< has a PollingTime: it changes by itself
    /// Nothing that is read for it may be held for later: Cachable NoCache, PollingTime, or see NodeMarks.
    bool isVolatile = false;
    bool isCondition = false; ///< pIsLocked, pIsAvailable or pIsImplemented of another node
};

/// The nodes of one description. Filled once at opening, then constant; any thread.
class NodeTable
{
public:
    int count() const { return static_cast<int>(m_nodes.size()); }
    const NodeInfo &at(NodeId id) const { return m_nodes[static_cast<std::size_t>(id)]; }
    NodeInfo &at(NodeId id) { return m_nodes[static_cast<std::size_t>(id)]; }
    /// NO_NODE for an unknown name.
    NodeId find(const QByteArray &name) const { return m_ids.value(name, NO_NODE); }
    /// Enters a node under its name; the first of two of one name keeps the name.
    NodeId add(const NodeInfo &node)
    {
        const NodeId id = count();
        m_nodes.push_back(node);
        if (!m_ids.contains(node.name)) {
            m_ids.insert(node.name, id);
        }
        return id;
    }

    /// Notes a fault of a node; the first that is not harmless becomes its problem.
    void addFault(NodeId id, int line, const QByteArray &reason, bool isHarmless = false)
    {
        NodeInfo &node = at(id);
        if (!isHarmless && node.problem.isEmpty()) {
            node.problem = reason;
        }
        m_faults.append({node.name, line, reason, isHarmless});
    }
    /// Notes a fault of what is no node of the table.
    void addFault(const NodeFault &fault) { m_faults.append(fault); }
    /// All faults that were noted; none are left.
    QVector<NodeFault> takeFaults() { return std::exchange(m_faults, {}); }

private:
    std::deque<NodeInfo>
        m_nodes; ///< places stay: a vector of these would need half as much again to grow
    QHash<QByteArray, NodeId> m_ids;
    QVector<NodeFault> m_faults;
};
