#include "host/devicetask/nodes/ReferenceGraph.h"

#include "host/devicetask/nodes/DescriptionText.h"

#include <algorithm>

void ReferenceGraph::addNode(const std::vector<int> &needed)
{
    m_targets.insert(m_targets.end(), needed.cbegin(), needed.cend());
    m_first.push_back(static_cast<int>(m_targets.size()));
    ++m_nCount;
}

void ReferenceGraph::workOut()
{
    m_component.assign(m_nCount, -1);
    m_next.assign(m_nCount, -1);
    m_entry.assign(m_nCount, -1);
    m_circleLength.assign(m_nCount, 0);
    m_depth.assign(m_nCount, 1);
    m_evaluations.assign(m_nCount, 1);
    findComponents();
    findCircles();
    for (const int node : m_order) {
        count(node);
    }
}

/// Tarjan's strongly connected components, with a stack of its own.
void ReferenceGraph::findComponents()
{
    struct Visit
    {
        int node;
        int edge;
    };
    std::vector<int> number(m_nCount, -1);
    std::vector<int> low(m_nCount, 0);
    std::vector<Visit> visits;
    int numbered = 0;
    const auto enter = [&](int node) {
        number[node] = low[node] = numbered++;
        m_open.push_back(node);
        visits.push_back({node, m_first[node]});
    };
    for (int root = 0; root < m_nCount; ++root) {
        if (number[root] >= 0) {
            continue;
        }
        enter(root);
        while (!visits.empty()) {
            const int node = visits.back().node;
            if (visits.back().edge < m_first[node + 1]) {
                const int target = m_targets[visits.back().edge++];
                if (number[target] < 0) {
                    enter(target);
                } else if (m_component[target] < 0) {
                    low[node] = std::min(low[node], number[target]);
                }
                continue;
            }
            visits.pop_back();
            if (low[node] == number[node]) {
                closeComponent(node);
            }
            if (!visits.empty()) {
                const int above = visits.back().node;
                low[above] = std::min(low[above], low[node]);
            }
        }
    }
}

void ReferenceGraph::closeComponent(int node)
{
    int member = -1;
    do {
        member = m_open.back();
        m_open.pop_back();
        m_component[member] = m_nComponents;
        m_order.push_back(member);
    } while (member != node);
    ++m_nComponents;
}

void ReferenceGraph::findCircles()
{
    for (int node = 0; node < m_nCount; ++node) {
        for (int edge = m_first[node]; edge < m_first[node + 1] && m_next[node] < 0; ++edge) {
            if (m_component[m_targets[edge]] == m_component[node]) {
                m_next[node] = m_targets[edge];
            }
        }
    }
    // Following m_next ends on exactly one circle from each node that has one.
    std::vector<int> walk(m_nCount, -1);
    for (int start = 0; start < m_nCount; ++start) {
        int node = start;
        while (m_next[node] >= 0 && walk[node] < 0) {
            walk[node] = start;
            node = m_next[node];
        }
        if (m_next[node] >= 0 && walk[node] == start && m_entry[node] < 0) {
            int length = 1;
            for (int member = m_next[node]; member != node; member = m_next[member]) {
                ++length;
            }
            int member = node;
            do {
                m_entry[member] = member;
                m_circleLength[member] = length;
                member = m_next[member];
            } while (member != node);
        }
        const int end = node;
        for (node = start; m_next[node] >= 0 && m_entry[node] < 0; node = m_next[node]) {
            m_entry[node] = m_entry[end];
        }
    }
}

void ReferenceGraph::count(int node)
{
    for (int edge = m_first[node]; edge < m_first[node + 1]; ++edge) {
        const int target = m_targets[edge];
        if (m_component[target] != m_component[node]) {
            m_depth[node] = std::max(m_depth[node], m_depth[target] + 1);
            m_evaluations[node] = std::min(m_evaluations[node] + m_evaluations[target], MAX_COUNT);
        }
    }
}

QByteArray ReferenceGraph::circleText(int node, const std::function<QByteArray(int)> &nameOf) const
{
    constexpr int MAX_NAMES = 6;
    const int entry = m_entry[node];
    const int length = m_circleLength[entry];
    const int shownCount = length > MAX_NAMES ? MAX_NAMES - 1 : length;
    QByteArray text;
    int member = entry;
    for (int i = 0; i < shownCount; ++i) {
        text += DescriptionText::shown(nameOf(member)) + " -> ";
        member = m_next[member];
    }
    if (shownCount < length) {
        text += "... (" + QByteArray::number(length - shownCount) + " more) -> ";
    }
    return text + DescriptionText::shown(nameOf(entry));
}
