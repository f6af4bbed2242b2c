#pragma once

#include <QDomElement>
#include <QHash>
#include <QMap>
#include <QString>
#include <QVector>

/// Child elements of a node that say what it depends on or how it is read.
enum class ReferenceKind : quint8 {
    PValue,
    PMin,
    PMax,
    PInc,
    PIsLocked,
    PIsImplemented,
    PIsAvailable,
    PVariable,
    PInvalidator,
    PSelected,
    Cachable,
    PollingTime,
    StructInvalidator ///< pInvalidator of the StructReg, ahead of this StructEntry
};

/// One such child: its kind and the number of its text.
struct NodeReference
{
    ReferenceKind kind;
    int text;
};

/// The references of all nodes of a description, taken out of the DOM once. Texts and nodes are numbers. Read-only
/// after build, then for any thread.
class NodeReferences
{
public:
    /// A node of the document that counts as a feature of its own.
    struct Feature
    {
        int nameText;
        int node;
    };

    /// Takes everything out of the document anew. The elements are not kept.
    void build(const QDomElement &documentElement, const QMap<QString, QDomElement> &elements);

    /// -1 for an unknown name.
    int nodeOf(const QString &strName) const { return nodeOf(m_textNumbers.value(strName, -1)); }
    int nodeOf(int nText) const { return nText < 0 ? -1 : m_nodesOfTexts.at(nText); }
    const QString &text(int nText) const { return m_texts.at(nText); }
    int nodeCount() const { return m_firstReferences.size(); }
    /// The references of a node in document order; nothing for node -1.
    const NodeReference *begin(int nNode) const;
    const NodeReference *end(int nNode) const;
    /// First text of that kind; false when the node has none.
    bool findText(int nNode, ReferenceKind kind, QString &out) const;
    /// Every Enumeration, Integer, Boolean, Float, Command and StringReg in document order.
    const QVector<Feature> &features() const { return m_features; }

private:
    int numberOf(const QString &strText);
    int addNode(const QDomElement &element);
    void addStructInvalidators(const QDomElement &entry);

    QHash<QString, int> m_textNumbers;
    QVector<QString> m_texts;
    QVector<int> m_nodesOfTexts; ///< node with this name, -1 without one
    QVector<int> m_firstReferences; ///< by node
    QVector<NodeReference> m_references;
    QVector<Feature> m_features;
    int m_nSiblingSteps = 0;
};

/// A walk along references, depth first, children in document order. A node is entered once a walk, so that circles
/// end; the steps of all walks together are limited.
class ReferenceWalk
{
public:
    static constexpr int MAX_STEPS = 5000000;

    explicit ReferenceWalk(const NodeReferences &references);

    /// Forgets which nodes were entered.
    void restart();
    /// Goes into a node; does nothing for -1 and for a node that was entered already.
    void enter(int nNode);
    /// The next reference of the node that was entered last and has any left; null at the end.
    const NodeReference *next();
    /// Gives up what is left of the node that the last reference came from.
    void leave();
    bool isExhausted() const { return m_nSteps >= MAX_STEPS; }

private:
    struct Range
    {
        const NodeReference *next;
        const NodeReference *end;
    };

    const NodeReferences &m_references;
    QVector<int> m_enteredIn; ///< number of the walk that entered this node last
    QVector<Range> m_stack;
    int m_nWalk = 0;
    int m_nSteps = 0;
};
