#include "host/shellservices/ValueText.h"

#include "ShellServicesModule/QPropertyLineEdit.h"
#include "UtilityKit/VexaInterface.h"

#include <QCoreApplication>
#include <QLocale>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <optional>

namespace ValueText {

namespace {

constexpr char kContext[] = "QPropertyLineEdit";
constexpr int kQuotedLength = 40;

using Mode = QPropertyLineEdit::TextMode;

/// What the text modes of numbers differ in.
struct ModeRule
{
    int mode;
    const char *characters; ///< besides blanks
    const char *refusalKey; ///< %1 the typed text
    std::optional<qint64> (*toInteger)(const QString &text);
};

bool isHexDigit(QChar character)
{
    const ushort c = character.unicode();
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

bool isDecimalDigits(const QString &text)
{
    return !text.isEmpty() && std::all_of(text.cbegin(), text.cend(), [](QChar c) {
        return c.unicode() >= '0' && c.unicode() <= '9';
    });
}

bool isHexDigits(const QString &text)
{
    return !text.isEmpty() && std::all_of(text.cbegin(), text.cend(), isHexDigit);
}

std::optional<qint64> decimalToInteger(const QString &text)
{
    bool bOk = false;
    const qint64 nValue = text.toLongLong(&bOk, 10);
    return bOk ? std::make_optional(nValue) : std::nullopt;
}

std::optional<qint64> hexToInteger(const QString &text)
{
    const bool bPrefixed = text.startsWith(QLatin1String("0x"), Qt::CaseInsensitive);
    const QString strDigits = bPrefixed ? text.mid(2) : text;
    bool bOk = false;
    const quint64 nBits = isHexDigits(strDigits) ? strDigits.toULongLong(&bOk, 16) : 0;
    return bOk ? std::make_optional(static_cast<qint64>(nBits)) : std::nullopt;
}

std::optional<qint64> ipv4ToInteger(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char('.'));
    if (parts.size() != 4) {
        return std::nullopt;
    }
    qint64 nAddress = 0;
    for (const QString &strPart : parts) {
        if (!isDecimalDigits(strPart) || strPart.size() > 3 || strPart.toInt() > 255) {
            return std::nullopt;
        }
        nAddress = nAddress * 256 + strPart.toInt();
    }
    return nAddress;
}

std::optional<qint64> maskToInteger(const QString &text)
{
    const std::optional<qint64> nMask = ipv4ToInteger(text);
    if (!nMask) {
        return std::nullopt;
    }
    // The inverse of ones and then zeros is zeros and then ones: one less than a power of two.
    const auto nHostBits = static_cast<quint32>(~*nMask);
    return (nHostBits & (nHostBits + 1)) == 0 ? nMask : std::nullopt;
}

std::optional<qint64> macToInteger(const QString &text)
{
    QString strDigits = text;
    for (const QLatin1Char separator : {QLatin1Char(':'), QLatin1Char('-')}) {
        const QStringList parts = text.split(separator);
        if (parts.size() == 1) {
            continue;
        }
        const auto isByte = [](const QString &part) {
            return part.size() == 2 && isHexDigits(part);
        };
        if (!std::all_of(parts.cbegin(), parts.cend(), isByte)) {
            return std::nullopt;
        }
        strDigits = parts.join(QString());
    }
    if (strDigits.size() != 12 || !isHexDigits(strDigits)) {
        return std::nullopt;
    }
    return strDigits.toLongLong(nullptr, 16);
}

const ModeRule kModeRules[] = {
    {Mode::TEXT_FLOAT, "0123456789+-.,eE", "lang_qpropertylineedit_notfloat", nullptr},
    {Mode::TEXT_DECIMAL, "0123456789+-", "lang_qpropertylineedit_notdecimal", decimalToInteger},
    {Mode::TEXT_HEX, "0123456789abcdefABCDEFxX", "lang_qpropertylineedit_nothex", hexToInteger},
    {Mode::TEXT_IPV4, "0123456789.", "lang_qpropertylineedit_notipv4", ipv4ToInteger},
    {Mode::TEXT_MASK, "0123456789.", "lang_qpropertylineedit_notmask", maskToInteger},
    {Mode::TEXT_MAC, "0123456789abcdefABCDEF:-", "lang_qpropertylineedit_notmac", macToInteger},
};

const ModeRule *findRule(int mode)
{
    for (const ModeRule &rule : kModeRules) {
        if (rule.mode == mode) {
            return &rule;
        }
    }
    return nullptr;
}

QString translated(const char *key)
{
    return QCoreApplication::translate(kContext, key);
}

std::optional<double> toFloat(const QString &text)
{
    QString strPoint = text;
    if (text.count(QLatin1Char(',')) == 1 && !text.contains(QLatin1Char('.'))) {
        strPoint.replace(QLatin1Char(','), QLatin1Char('.'));
    }
    const QByteArray allowed(findRule(Mode::TEXT_FLOAT)->characters);
    const bool bPlain = std::all_of(strPoint.cbegin(), strPoint.cend(), [&allowed](QChar c) {
        return c.unicode() < 0x80 && c != QLatin1Char(',') && allowed.contains(c.toLatin1());
    });
    bool bOk = false;
    const double dValue = strPoint.toDouble(&bOk);
    return bPlain && bOk && std::isfinite(dValue) ? std::make_optional(dValue) : std::nullopt;
}

bool isFloat(const QVariant &value)
{
    return value.userType() == QMetaType::Float;
}

/// Whole numbers that people can read have no exponent.
QString floatText(double value, int digits)
{
    constexpr double READABLE = 1e12;
    const bool bWhole = std::abs(value) < READABLE && std::trunc(value) == value;
    return bWhole ? QString::number(value, 'f', 0) : QString::number(value, 'g', digits);
}

QString rangeText(const QVariant &end, int mode)
{
    switch (mode) {
    case Mode::TEXT_FLOAT:
        return floatText(end.toDouble(), isFloat(end) ? 7 : QLocale::FloatingPointShortest);
    case Mode::TEXT_HEX:
        return VexaInterface::Int2HexNumberQString(end.toLongLong());
    case Mode::TEXT_IPV4:
    case Mode::TEXT_MASK:
        return VexaInterface::numIP2StrIP(static_cast<int>(end.toLongLong()));
    case Mode::TEXT_MAC:
        return VexaInterface::int64_2StringMacAddress(end.toULongLong());
    default:
        return QString::number(end.toLongLong());
    }
}

template<typename Number>
bool isRefused(Number value, Number maximum, Number minimum)
{
    return minimum <= maximum && (value < minimum || value > maximum);
}

bool isOutside(const QVariant &value, const QVariant &maximum, const QVariant &minimum, int mode)
{
    if (mode != Mode::TEXT_FLOAT) {
        return isRefused(value.toLongLong(), maximum.toLongLong(), minimum.toLongLong());
    }
    if (isFloat(maximum) || isFloat(minimum)) {
        return isRefused(value.toFloat(), maximum.toFloat(), minimum.toFloat());
    }
    return isRefused(value.toDouble(), maximum.toDouble(), minimum.toDouble());
}

QString quoted(const QString &text)
{
    return text.size() <= kQuotedLength ? text : text.left(kQuotedLength) + QChar(0x2026);
}

} // namespace

bool mayHold(int mode, QChar character)
{
    const ModeRule *const pRule = findRule(mode);
    return !pRule || character == QLatin1Char(' ')
        || (character.unicode() < 0x80
            && QByteArray::fromRawData(pRule->characters, int(qstrlen(pRule->characters)))
                   .contains(character.toLatin1()));
}

Parsed parse(const QString &text, int mode)
{
    const ModeRule *const pRule = findRule(mode);
    if (!pRule) {
        return {text, QString()};
    }
    const QString strTrimmed = text.trimmed();
    Parsed result;
    if (pRule->toInteger) {
        const std::optional<qint64> nValue = pRule->toInteger(strTrimmed);
        result.value = nValue ? QVariant(*nValue) : QVariant();
    } else {
        const std::optional<double> dValue = toFloat(strTrimmed);
        result.value = dValue ? QVariant(*dValue) : QVariant();
    }
    if (!result.isValid()) {
        result.strReason = translated(pRule->refusalKey).arg(quoted(strTrimmed));
    }
    return result;
}

QString rangeRefusal(const QVariant &value, const QVariant &maximum, const QVariant &minimum,
                     int mode)
{
    if (!findRule(mode) || !maximum.isValid() || !minimum.isValid()
        || !isOutside(value, maximum, minimum, mode)) {
        return QString();
    }
    return translated("lang_qpropertylineedit_outofrange")
        .arg(rangeText(minimum, mode), rangeText(maximum, mode));
}

QString lengthRefusal(const QString &text, int length)
{
    const int nBytes = length > 0 ? text.toUtf8().size() : 0;
    return nBytes <= qMax(length, 0)
        ? QString()
        : translated("lang_qpropertylineedit_toolong").arg(nBytes).arg(length);
}

QString characterRefusal(QChar character, int mode)
{
    const ModeRule *const pRule = findRule(mode);
    return pRule ? translated(pRule->refusalKey).arg(QString(character)) : QString();
}

} // namespace ValueText
