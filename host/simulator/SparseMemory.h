#pragma once

#include "host/simulator/RegisterMemory.h"
#include "host/simulator/SimulatedDevices.h"

#include <QHash>

/// Memory behind every address of 64 bits: it reads its pattern until something was written there.
class SparseMemory : public RegisterMemory
{
public:
    explicit SparseMemory(SimulatorControl::MemoryPattern pattern)
        : m_ePattern(pattern)
    {
    }

    /// All but accesses that run over the end of the address space or are longer than 1 MiB.
    bool covers(quint64 address, quint32 length) const override;
    QByteArray read(quint64 address, quint32 length) const override;
    void write(quint64 address, const QByteArray &bytes) override;

private:
    QByteArray page(quint64 number) const;

    SimulatorControl::MemoryPattern m_ePattern;
    QHash<quint64, QByteArray> m_pages; ///< those that were written to
};
