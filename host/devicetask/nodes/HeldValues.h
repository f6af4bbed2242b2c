#pragma once

#include "host/devicetask/nodes/NodeTable.h"

#include <QByteArray>
#include <QHash>
#include <QPair>

#include <chrono>
#include <map>
#include <vector>

/// Register contents that need not be read again at once, since the same reader has just read them: hundreds of
/// features may be locked through one node, or stand behind one selector. Each thread that reads has a look of its own.
/// All is dropped by whatever may have changed the device. On the connection's thread.
class HeldValues
{
public:
    using Reader = quint64;
    /// A number of the calling thread that no other thread has or will have. Never 0.
    static Reader readerOfThread();

    /// What a reader asks. An integer stands apart, since that is how conditions are asked.
    struct Question
    {
        enum Kind { Value, Integer, AccessMode };
        Kind kind = Value;
        QByteArray node;
    };

    /// What one reader has seen in the last few milliseconds.
    class Look
    {
    public:
        /// Null when the register has to be read.
        const QByteArray *find(quint64 address, int length) const;
        /// What was just read. Readers who saw something else have to read it again.
        void insert(quint64 address, int length, const QByteArray &bytes);
        void remove(quint64 address, int length);

    private:
        friend class HeldValues;
        using Clock = std::chrono::steady_clock;
        bool isOver() const;

        HeldValues *m_pOwner = nullptr;
        Clock::time_point m_begin = Clock::now();
        QHash<QPair<quint64, int>, QByteArray> m_registers;
        std::vector<quint8> m_asked; ///< by node: a bit for each Question::Kind
    };

    /// The look in which this question is answered; valid until the next call of this object. It is a new one, with
    /// nothing in it, when the last one began too long ago or answered the same question: whoever asks again wants to
    /// know what has changed. Only the integers of conditions are asked again for each feature that has them.
    Look *look(Reader reader, const NodeTable &nodes, const Question &question);
    void drop() { m_looks.clear(); }

private:
    std::map<Reader, Look> m_looks;
};
