#include "UtilityKit/VexaInterface.h"

#include <QStringList>

#include <limits>

namespace {

constexpr quint64 SMALLEST_MAGNITUDE = quint64(1) << 63;
constexpr int MAC_BYTES = 6;

} // namespace

qint64 VexaInterface::string2Int(const QString &text)
{
    QString digits = text.trimmed();
    const bool negative = digits.startsWith(QLatin1Char('-'));
    if (negative || digits.startsWith(QLatin1Char('+'))) {
        digits.remove(0, 1);
    }
    // toULongLong takes a sign and blanks of its own.
    if (digits.isEmpty() || !digits.at(0).isDigit()) {
        return 0;
    }
    const bool hexadecimal = digits.startsWith(QLatin1String("0x"), Qt::CaseInsensitive);
    bool isNumber = false;
    const quint64 magnitude = digits.toULongLong(&isNumber, hexadecimal ? 16 : 10);
    if (!isNumber || (negative && magnitude > SMALLEST_MAGNITUDE)) {
        return 0;
    }
    return qint64(negative ? quint64(0) - magnitude : magnitude);
}

QString VexaInterface::Int2HexNumberQString(qint64 number)
{
    return QLatin1String("0x") + QString::number(quint64(number), 16).toUpper();
}

QString VexaInterface::numIP2StrIP(int address)
{
    const quint32 bits = quint32(address);
    return QStringLiteral("%1.%2.%3.%4")
        .arg(bits >> 24)
        .arg((bits >> 16) & 0xFF)
        .arg((bits >> 8) & 0xFF)
        .arg(bits & 0xFF);
}

QString VexaInterface::int64_2StringMacAddress(quint64 address)
{
    QStringList bytes;
    for (int index = MAC_BYTES - 1; index >= 0; --index) {
        bytes += QStringLiteral("%1")
                     .arg((address >> (8 * index)) & 0xFF, 2, 16, QLatin1Char('0'))
                     .toUpper();
    }
    return bytes.join(QLatin1Char(':'));
}
