#pragma once

#include "host/formula/Formula.h"

#include <QByteArray>

/// Texts of a GenICam description as values, and as parts of messages.
class DescriptionText
{
public:
    enum class Fault {
        None,
        NoNumber,
        NoInteger, ///< a number with a fraction, or beyond 64 bits
        NotFinite
    };

    /// Decimal or 0x hexadecimal; unsigned numbers of 64 bits keep their bits, and `isAboveSigned` tells of them.
    static Fault integer(const QByteArray &text, qint64 *value, bool *isAboveSigned = nullptr);
    /// An integer where the text is one of 64 bits with a sign, else a double.
    static Fault number(const QByteArray &text, FormulaNumber *value);
    /// `its Max "abc" is no number`
    static QByteArray describe(Fault fault, const QByteArray &tag, const QByteArray &text);
    /// On one line and of bounded length, for messages.
    static QByteArray shown(const QByteArray &text);
};
