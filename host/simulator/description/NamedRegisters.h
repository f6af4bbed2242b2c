#pragma once

#include "host/simulator/RegisterMemory.h"
#include "host/simulator/description/FeatureTable.h"

#include <QHash>

/// Reads and writes the registers of a device by the names of their nodes, for the firmware of that device. Arrays
/// are read by element. A name that the table does not know is a fault of the program.
class NamedRegisters
{
public:
    explicit NamedRegisters(const FeatureTable &table)
        : m_table(table)
    {
    }

    qint64 value(const RegisterMemory &memory, const char *name, int element = 0) const;
    void setValue(RegisterMemory &memory, const char *name, qint64 value, int element = 0) const;
    double number(const RegisterMemory &memory, const char *name, int element = 0) const;
    void setNumber(RegisterMemory &memory, const char *name, double number, int element = 0) const;
    /// All elements of a register as they lie in the memory.
    QByteArray bytes(const RegisterMemory &memory, const char *name) const;
    void setBytes(RegisterMemory &memory, const char *name, const QByteArray &bytes) const;
    /// Whether an access reaches one of the elements.
    bool isTouched(const char *name, quint64 address, quint32 length) const;

    const FeatureTable &table() const { return m_table; }

private:
    const FieldRow &field(const char *name) const;

    FeatureTable m_table;
};
