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
    const QPair<quint64, int> key(address, length);
    for (auto &[reader, look] : m_pOwner->m_looks) {
        const auto other = look.m_registers.find(key);
        if (other != look.m_registers.end() && *other != bytes) {
            look.m_registers.erase(other);
        }
    }
    m_registers.insert(key, bytes);
}

void HeldValues::Look::remove(quint64 address, int length)
{
    m_registers.remove({address, length});
}

HeldValues::Look *HeldValues::look(Reader reader, const NodeTable &nodes, const Question &question)
{
    const NodeId id = nodes.find(question.node);
    if (id == NO_NODE) {
        return nullptr;
    }
    const bool mayRepeat = question.kind == Question::Integer && nodes.at(id).isCondition;
    const auto place = static_cast<std::size_t>(id);
    const auto bit = static_cast<quint8>(1U << question.kind);
    auto it = m_looks.find(reader);
    if (it == m_looks.end() || it->second.isOver()
        || (!mayRepeat && (it->second.m_asked[place] & bit) != 0)) {
        // Readers that have gone leave theirs behind.
        for (it = m_looks.begin(); it != m_looks.end();) {
            it = it->first == reader || it->second.isOver() ? m_looks.erase(it) : std::next(it);
        }
        it = m_looks.emplace(reader, Look()).first;
        it->second.m_pOwner = this;
        it->second.m_asked.resize(static_cast<std::size_t>(nodes.count()));
    }
    it->second.m_asked[place] |= bit;
    return &it->second;
}
