#include "host/devicetask/nodes/DescriptionText.h"

#include <QString>
#include <QtMath>

#include <algorithm>
#include <limits>

namespace {

constexpr int MAX_SHOWN = 80;
constexpr double TWO_TO_63 = 9223372036854775808.0;

/// Digits with an optional sign in front; the magnitude has 64 bits.
bool readInteger(const QByteArray &text, bool *isNegative, quint64 *magnitude)
{
    QByteArray digits = text.trimmed();
    *isNegative = digits.startsWith('-');
    if (*isNegative || digits.startsWith('+')) {
        digits.remove(0, 1);
    }
    const bool isHexadecimal = digits.startsWith("0x") || digits.startsWith("0X");
    if (isHexadecimal) {
        digits.remove(0, 2);
    }
    if (digits.isEmpty() || !isxdigit(static_cast<unsigned char>(digits[0]))) {
        return false;
    }
    bool ok = false;
    *magnitude = digits.toULongLong(&ok, isHexadecimal ? 16 : 10);
    return ok;
}

} // namespace

DescriptionText::Fault DescriptionText::integer(const QByteArray &text, qint64 *value,
                                                bool *isAboveSigned)
{
    constexpr quint64 LIMIT = quint64(1) << 63;
    bool isNegative = false;
    quint64 magnitude = 0;
    if (readInteger(text, &isNegative, &magnitude)) {
        if (isNegative && magnitude > LIMIT) {
            return Fault::NoInteger;
        }
        *value = static_cast<qint64>(isNegative ? quint64(0) - magnitude : magnitude);
        if (isAboveSigned) {
            *isAboveSigned = !isNegative && magnitude >= LIMIT;
        }
        return Fault::None;
    }
    FormulaNumber real;
    const Fault fault = number(text, &real);
    if (fault != Fault::None) {
        return fault;
    }
    // Whole numbers are also written as 10.0 or 1e6.
    if (std::floor(real.real) != real.real || real.real < -TWO_TO_63 || real.real >= TWO_TO_63) {
        return Fault::NoInteger;
    }
    *value = static_cast<qint64>(real.real);
    if (isAboveSigned) {
        *isAboveSigned = false;
    }
    return Fault::None;
}

DescriptionText::Fault DescriptionText::number(const QByteArray &text, FormulaNumber *value)
{
    bool isNegative = false;
    quint64 magnitude = 0;
    if (readInteger(text, &isNegative, &magnitude)) {
        const bool fits = magnitude <= quint64(std::numeric_limits<qint64>::max());
        const double real = static_cast<double>(magnitude);
        *value = fits
            ? FormulaNumber::ofInteger(isNegative ? -qint64(magnitude) : qint64(magnitude))
            : FormulaNumber::ofReal(isNegative ? -real : real);
        return Fault::None;
    }
    bool ok = false;
    const double real = text.trimmed().toLower().toDouble(&ok);
    // A number too large for a double comes as an infinity and not "ok".
    if (!qIsFinite(real)) {
        return Fault::NotFinite;
    }
    *value = FormulaNumber::ofReal(real);
    return ok ? Fault::None : Fault::NoNumber;
}

QByteArray DescriptionText::describe(Fault fault, const QByteArray &tag, const QByteArray &text)
{
    const QByteArray head = "its " + tag + " \"" + shown(text) + "\" is ";
    switch (fault) {
    case Fault::None:
        break;
    case Fault::NoNumber:
        return head + "no number";
    case Fault::NoInteger:
        return head + "no integer of 64 bits";
    case Fault::NotFinite:
        return head + "not finite";
    }
    return {};
}

QByteArray DescriptionText::shown(const QByteArray &text)
{
    const bool isPlain = text.size() <= MAX_SHOWN
        && std::all_of(text.cbegin(), text.cend(), [](char c) { return c > ' ' && c < 127; });
    if (isPlain) {
        return text;
    }
    // Cut first: a name may be megabytes long, and there may be a message for each of its uses.
    QString line = QString::fromUtf8(text.left(4 * MAX_SHOWN));
    for (QChar &c : line) {
        if (!c.isPrint()) {
            c = ' ';
        }
    }
    line = line.trimmed();
    if (line.size() > MAX_SHOWN) {
        line = line.left(MAX_SHOWN - 3) + QLatin1String("...");
    }
    return line.toUtf8();
}
