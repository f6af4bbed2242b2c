#include "host/simulator/description/NamedRegisters.h"

#include <cstring>

qint64 NamedRegisters::value(const RegisterMemory &memory, const char *name, int element) const
{
    const FieldRow &row = field(name);
    const RegisterSpec &spec = row.m_spec;
    const quint64 address = row.m_nAddress + quint64(element) * spec.m_nLength;
    quint64 raw = decodedInteger(memory.read(address, spec.m_nLength), spec.m_bLittleEndian);
    int width = int(spec.m_nLength) * 8;
    if (spec.m_eKind == RegisterSpec::Kind::Masked) {
        width = spec.m_nWidth;
        raw = raw >> spec.m_nShift & ((quint64(1) << width) - 1);
    }
    if (spec.m_bSigned && width < 64 && (raw >> (width - 1) & 1)) {
        raw |= ~quint64(0) << width;
    }
    return qint64(raw);
}

void NamedRegisters::setValue(RegisterMemory &memory, const char *name, qint64 value,
                              int element) const
{
    const FieldRow &row = field(name);
    const RegisterSpec &spec = row.m_spec;
    const quint64 address = row.m_nAddress + quint64(element) * spec.m_nLength;
    quint64 raw = quint64(value);
    if (spec.m_eKind == RegisterSpec::Kind::Masked) {
        const quint64 mask = ((quint64(1) << spec.m_nWidth) - 1) << spec.m_nShift;
        const quint64 others =
            decodedInteger(memory.read(address, spec.m_nLength), spec.m_bLittleEndian) & ~mask;
        raw = others | (raw << spec.m_nShift & mask);
    }
    memory.write(address, encodedInteger(raw, spec.m_nLength, spec.m_bLittleEndian));
}

double NamedRegisters::number(const RegisterMemory &memory, const char *name, int element) const
{
    const quint64 raw = quint64(value(memory, name, element));
    if (field(name).m_spec.m_nLength == 8) {
        double wide = 0;
        std::memcpy(&wide, &raw, sizeof wide);
        return wide;
    }
    const quint32 bits = quint32(raw);
    float narrow = 0;
    std::memcpy(&narrow, &bits, sizeof narrow);
    return double(narrow);
}

void NamedRegisters::setNumber(RegisterMemory &memory, const char *name, double number,
                               int element) const
{
    quint64 raw = 0;
    if (field(name).m_spec.m_nLength == 8) {
        std::memcpy(&raw, &number, sizeof number);
    } else {
        const float narrow = float(number);
        quint32 bits = 0;
        std::memcpy(&bits, &narrow, sizeof bits);
        raw = bits;
    }
    setValue(memory, name, qint64(raw), element);
}

QByteArray NamedRegisters::bytes(const RegisterMemory &memory, const char *name) const
{
    const FieldRow &row = field(name);
    return memory.read(row.m_nAddress, row.m_spec.m_nLength * row.m_spec.m_nCount);
}

void NamedRegisters::setBytes(RegisterMemory &memory, const char *name,
                              const QByteArray &bytes) const
{
    const FieldRow &row = field(name);
    memory.write(row.m_nAddress, bytes.left(int(row.m_spec.m_nLength * row.m_spec.m_nCount)));
}

bool NamedRegisters::isTouched(const char *name, quint64 address, quint32 length) const
{
    const FieldRow &row = field(name);
    const quint64 end = row.m_nAddress + quint64(row.m_spec.m_nLength) * row.m_spec.m_nCount;
    return address < end && row.m_nAddress < address + length;
}

const FieldRow &NamedRegisters::field(const char *name) const
{
    const FieldRow *row = m_table.findField(name);
    if (!row) {
        qFatal("the simulated device has no register node %s", name);
    }
    return *row;
}
