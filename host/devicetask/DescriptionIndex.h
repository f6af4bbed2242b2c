#pragma once

#include <QByteArray>
#include <QHash>
#include <QVector>

#include <functional>

/// What a reference of a node may point to.
enum class ReferenceKind { Number, Condition, Text, Port };

/// What a node is to those who refer to it.
enum class TargetKind { Missing, Number, Boolean, Text, Port, Other };

/// One node of a description as far as its evaluation goes: what it refers to and what is wrong with it.
struct NodeInfo
{
    struct Reference
    {
        ReferenceKind kind;
        QByteArray target;
    };

    QByteArray tag; ///< element name, "IntReg"
    QVector<Reference>
        references; ///< everything that is evaluated with the node, those below included
    QByteArray valueTarget; ///< pValue
    QVector<QByteArray>
        implementedBy; ///< pIsImplemented; a StructEntry inherits those of its StructReg
    QVector<QByteArray> availableBy; ///< pIsAvailable
    QVector<QByteArray> lockedBy; ///< pIsLocked
    QVector<QByteArray> variables; ///< pVariable
    qint64 length = -1; ///< constant register length in bytes
    qint64 lsb = -1;
    qint64 msb = -1;
    bool hasLength = false; ///< Length or pLength
    bool hasPort = false;
    bool hasValue = false;
    bool hasRange = false; ///< a Min, Max, pMin or pMax of its own
    bool isSigned = false;
    QByteArray problem; ///< why the node cannot be evaluated; empty when it can

    /// Bits that a MaskedIntReg or StructEntry covers, 0 for other nodes.
    int bits() const;
};

/// The nodes of one description by name, with the faults that evaluating them would die of. Filled once at opening,
/// then constant; any thread.
class DescriptionIndex
{
public:
    using KindOf = std::function<TargetKind(const QByteArray &)>;

    /// Deepest chain of references that is evaluated.
    static constexpr int MAX_DEPTH = 128;
    /// Most references that the evaluation of one node may follow (nodes shared along several ways count each time).
    static constexpr qint64 MAX_EVALUATIONS = 1000000;

    /// The node of that name or null.
    const NodeInfo *find(const QByteArray &name) const;
    /// Enters a node; two of one name become one that carries what both evaluate.
    void add(const QByteArray &name, const NodeInfo &node);
    /// Finds the nodes that cannot be evaluated and those that evaluate such a node, and logs the reasons.
    void findProblems(const KindOf &kindOf);

private:
    void findOwnProblems(const KindOf &kindOf);
    void findChainProblems();
    void logProblems() const;

    QHash<QByteArray, NodeInfo> m_nodes;
};
