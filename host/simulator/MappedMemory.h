#pragma once

#include "host/simulator/RegisterMemory.h"

#include <QMap>

/// Memory that exists only where something was laid; the rest of the address space is refused.
class MappedMemory : public RegisterMemory
{
public:
    /// Maps the bytes, rounded up to whole 4-byte words, with this content. Neighbours become one stretch.
    void map(quint64 address, const QByteArray &content);

    bool covers(quint64 address, quint32 length) const override;
    QByteArray read(quint64 address, quint32 length) const override;
    void write(quint64 address, const QByteArray &bytes) override;

private:
    /// The stretch that holds the address, or the end.
    QMap<quint64, QByteArray>::const_iterator stretchAt(quint64 address) const;

    QMap<quint64, QByteArray> m_stretches;
};
