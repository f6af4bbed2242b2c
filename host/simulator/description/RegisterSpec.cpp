#include "host/simulator/description/RegisterSpec.h"

#include <algorithm>
#include <cstring>

RegisterSpec &RegisterSpec::at(quint64 address)
{
    m_nAddress = address;
    return *this;
}

RegisterSpec &RegisterSpec::within(const char *word)
{
    m_strWord = word;
    return *this;
}

RegisterSpec &RegisterSpec::readOnly()
{
    m_strAccess = "RO";
    m_bStored = false;
    return *this;
}

RegisterSpec &RegisterSpec::writeOnly()
{
    m_strAccess = "WO";
    m_bStored = false;
    return *this;
}

RegisterSpec &RegisterSpec::transient()
{
    m_bStored = false;
    return *this;
}

RegisterSpec &RegisterSpec::littleEndian()
{
    m_bLittleEndian = true;
    return *this;
}

RegisterSpec &RegisterSpec::signedValue()
{
    m_bSigned = true;
    return *this;
}

RegisterSpec &RegisterSpec::moving(int pollingTime)
{
    m_strCachable = "NoCache";
    m_nPollingTime = pollingTime;
    return *this;
}

RegisterSpec &RegisterSpec::cachable(const char *mode)
{
    m_strCachable = mode;
    return *this;
}

RegisterSpec &RegisterSpec::invalidatedBy(const char *node)
{
    m_invalidators.append(node);
    return *this;
}

RegisterSpec &RegisterSpec::indexedBy(const char *node, quint32 count)
{
    m_strIndex = node;
    m_nCount = count;
    return *this;
}

RegisterSpec &RegisterSpec::offsetBy(const char *node, quint32 count)
{
    m_strOffset = node;
    m_nCount = count;
    return *this;
}

RegisterSpec &RegisterSpec::values(const QVector<qint64> &initial)
{
    m_values = initial;
    return *this;
}

RegisterSpec &RegisterSpec::numbers(const QVector<double> &initial)
{
    m_numbers = initial;
    return *this;
}

QByteArray RegisterSpec::initialBytes() const
{
    QByteArray bytes;
    for (quint32 element = 0; element < m_nCount; ++element) {
        switch (m_eKind) {
        case Kind::Text:
            bytes += m_text.left(int(m_nLength)).leftJustified(int(m_nLength), '\0');
            break;
        case Kind::Float: {
            const double number = m_numbers.value(int(element), m_numbers.last());
            quint64 raw = 0;
            if (m_nLength == 4) {
                const float narrow = float(number);
                quint32 bits = 0;
                std::memcpy(&bits, &narrow, sizeof bits);
                raw = bits;
            } else {
                std::memcpy(&raw, &number, sizeof raw);
            }
            bytes += encodedInteger(raw, m_nLength, m_bLittleEndian);
            break;
        }
        case Kind::Integer:
        case Kind::Masked: {
            const quint64 value = quint64(m_values.value(int(element), m_values.last()));
            const quint64 mask =
                m_eKind == Kind::Masked ? (quint64(1) << m_nWidth) - 1 : ~quint64(0);
            bytes += encodedInteger((value & mask) << m_nShift, m_nLength, m_bLittleEndian);
            break;
        }
        }
    }
    return bytes;
}

int RegisterSpec::describedLsb() const
{
    return m_bLittleEndian ? m_nShift : int(m_nLength) * 8 - 1 - m_nShift;
}

int RegisterSpec::describedMsb() const
{
    const int highest = m_nShift + m_nWidth - 1;
    return m_bLittleEndian ? highest : int(m_nLength) * 8 - 1 - highest;
}

RegisterSpec Int(quint32 length, qint64 initial)
{
    RegisterSpec spec;
    spec.m_nLength = length;
    spec.m_values = {initial};
    return spec;
}

RegisterSpec Bits(const char *word, int shift, int width, qint64 initial)
{
    RegisterSpec spec = Int(4, initial);
    spec.m_eKind = RegisterSpec::Kind::Masked;
    spec.m_strWord = word;
    spec.m_nShift = shift;
    spec.m_nWidth = width;
    return spec;
}

RegisterSpec Real(quint32 length, double initial)
{
    RegisterSpec spec;
    spec.m_eKind = RegisterSpec::Kind::Float;
    spec.m_nLength = length;
    spec.m_numbers = {initial};
    return spec;
}

RegisterSpec Text(quint32 length, const QByteArray &initial)
{
    RegisterSpec spec;
    spec.m_eKind = RegisterSpec::Kind::Text;
    spec.m_nLength = length;
    spec.m_text = initial;
    return spec;
}

RegisterSpec Trigger()
{
    return Int(4, 0).writeOnly();
}

QByteArray encodedInteger(quint64 value, quint32 length, bool littleEndian)
{
    QByteArray bytes;
    for (quint32 i = 0; i < length; ++i) {
        bytes.append(char(value >> (8 * i)));
    }
    if (!littleEndian) {
        std::reverse(bytes.begin(), bytes.end());
    }
    return bytes;
}

quint64 decodedInteger(const QByteArray &bytes, bool littleEndian)
{
    quint64 value = 0;
    for (int i = 0; i < bytes.size(); ++i) {
        const int position = littleEndian ? bytes.size() - 1 - i : i;
        value = value << 8 | quint8(bytes.at(position));
    }
    return value;
}
