#pragma once

#include <QDomElement>
#include <QMap>
#include <QMutex>
#include <QString>
#include <QVector>

#include <unordered_map>

/// What the description says of one EnumEntry. It never changes while a camera is open.
struct EnumEntryFacts
{
    QString name;
    QString displayName; ///< element DisplayName, may be empty or begin with a blank
    QString nameSpace;
    QString visibility;
    QString valueText;
    QString isImplemented; ///< pIsImplemented, pIsAvailable, pIsLocked: names of nodes
    QString isAvailable;
    QString isLocked;
};

/// What the description says of one node.
struct NodeFacts
{
    explicit NodeFacts(const QDomElement &element);

    QString name;
    QString tagName;
    QString nameSpace;
    QString displayName;
    QString description;
    QString streamable; ///< "No" without the element
    QString representation;
    QString visibility; ///< "Beginner" without the element
    QString isImplemented;
    QString isAvailable;
    QString isLocked;
    QVector<EnumEntryFacts> entries; ///< of an Enumeration, in document order
};

/// The facts of all nodes of one description, each read from its element once. Each worker has a table of
/// its own for the nodes that it reads. Any thread.
class NodeFactsTable
{
public:
    explicit NodeFactsTable(const QMap<QString, QDomElement> &elements);
    Q_DISABLE_COPY(NodeFactsTable)

    /// Null for an unknown name; the facts live as long as the table.
    const NodeFacts *find(const QString &name);

private:
    const QMap<QString, QDomElement> m_elements;
    QMutex m_mutex; ///< guards m_facts
    std::unordered_map<QString, const NodeFacts> m_facts; ///< nodes that are never moved
};
