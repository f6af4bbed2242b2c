#include "host/simulator/MappedMemory.h"

void MappedMemory::map(quint64 address, const QByteArray &content)
{
    QByteArray bytes = content;
    bytes.append(QByteArray((4 - content.size() % 4) % 4, '\0'));
    bytes += m_stretches.take(address + quint64(bytes.size()));
    const auto ahead = address ? stretchAt(address - 1) : m_stretches.constEnd();
    if (ahead != m_stretches.constEnd()) {
        m_stretches[ahead.key()].append(bytes);
    } else {
        m_stretches.insert(address, bytes);
    }
}

bool MappedMemory::covers(quint64 address, quint32 length) const
{
    const auto stretch = stretchAt(address);
    return stretch != m_stretches.constEnd()
        && length <= quint64(stretch->size()) - (address - stretch.key());
}

QByteArray MappedMemory::read(quint64 address, quint32 length) const
{
    const auto stretch = stretchAt(address);
    return stretch->mid(int(address - stretch.key()), int(length));
}

void MappedMemory::write(quint64 address, const QByteArray &bytes)
{
    const quint64 start = stretchAt(address).key();
    m_stretches[start].replace(int(address - start), bytes.size(), bytes);
}

QMap<quint64, QByteArray>::const_iterator MappedMemory::stretchAt(quint64 address) const
{
    auto next = m_stretches.upperBound(address);
    if (next == m_stretches.constBegin()) {
        return m_stretches.constEnd();
    }
    --next;
    return address - next.key() < quint64(next->size()) ? next : m_stretches.constEnd();
}
