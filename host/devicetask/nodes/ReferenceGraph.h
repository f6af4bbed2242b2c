#pragma once

#include <QByteArray>

#include <functional>
#include <vector>

/// Who needs whom: finds circles, and how deep and how often is evaluated below each node. In linear time and without
/// recursion, whatever the graph.
class ReferenceGraph
{
public:
    /// Nodes are numbered in the order in which they are added; a number in `needed` may stand there several times.
    void addNode(const std::vector<int> &needed);
    void workOut();

    /// All nodes, each behind those that it needs, except inside circles.
    const std::vector<int> &order() const { return m_order; }
    /// Whether the node can be reached from itself.
    bool isInCircle(int node) const { return m_next[node] >= 0; }
    /// "A -> B -> A": a circle that a node with isInCircle() stands on or leads into. Long ones are shortened.
    QByteArray circleText(int node, const std::function<QByteArray(int)> &nameOf) const;
    /// Nodes on the longest way down, the node itself included. Of no meaning for what needs a circle.
    int depth(int node) const { return m_depth[node]; }
    /// Evaluations that one of the node causes, itself included, up to MAX_COUNT. No meaning as above.
    qint64 evaluations(int node) const { return m_evaluations[node]; }

private:
    static constexpr qint64 MAX_COUNT = 1000000000;

    void findComponents();
    void closeComponent(int node);
    void findCircles();
    void count(int node);

    int m_nCount = 0;
    std::vector<int> m_first = {
        0}; ///< place of a node's first target in m_targets; one more at the end
    std::vector<int> m_targets;
    std::vector<int> m_order;
    std::vector<int> m_component;
    std::vector<int> m_open; ///< of the search: nodes whose component is not closed
    int m_nComponents = 0;
    std::vector<int> m_next; ///< the next node inside the component; -1 where there is no circle
    std::vector<int> m_entry; ///< first node of the circle that m_next leads into
    std::vector<int> m_circleLength; ///< by entry
    std::vector<int> m_depth;
    std::vector<qint64> m_evaluations;
};
