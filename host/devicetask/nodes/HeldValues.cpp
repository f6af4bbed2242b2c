#include "host/devicetask/nodes/HeldValues.h"

#include <atomic>

namespace {

/// Below the 50 ms after which whoever watches a device comes back to it.
constexpr std::chrono::milliseconds HOLD_TIME(40);

} // namespace

HeldValues::Reader HeldValues::readerOfThread()
{
    // The system gives the id of a thread that has ended to the next one; a count is never used twice.
    static std::atomic<Reader> s_nLast{0};
    static thread_local const Reader t_nReader = ++s_nLast;
    return t_nReader;
}

bool HeldValues::Look::isOver() const
{
    return Clock::now() - m_begin >= HOLD_TIME;
}

const QByteArray *HeldValues::Look::find(quint64 address, int length) const
{
    const auto known = m_registers.constFind({address, length});
    return known == m_registers.cend() || isOver() ? nullptr : &*known;
}

void HeldValues::Look::insert(quint64 address, int length, const QByteArray &bytes)
{
    m_registers.insert({address, length}, bytes);
}

void HeldValues::Look::remove(quint64 address, int length)
{
    m_registers.remove({address, length});
}

HeldValues::Look *HeldValues::look(Reader reader, const NodeTable &nodes, const Question &question)
{
    const NodeId id = nodes.find(question.node);
    const bool mayRepeat =
        id == NO_NODE || (question.kind == Question::Integer && nodes.at(id).isCondition);
    const QPair<NodeId, int> key(id, question.kind);
    const auto known = m_looks.find(reader);
    if (known != m_looks.end() && !known->second.isOver()
        && (mayRepeat || !known->second.m_asked.contains(key))) {
        known->second.m_asked.insert(key);
        return &known->second;
    }
    // Readers that have gone leave theirs behind.
    for (auto it = m_looks.begin(); it != m_looks.end();) {
        it = it->first == reader || it->second.isOver() ? m_looks.erase(it) : std::next(it);
    }
    Look &look = m_looks[reader];
    look.m_asked.insert(key);
    return &look;
}
