#pragma once

#include "ShellServicesModule/ShellServicesModuleGlobal.h"

#include <QString>
#include <QVariant>

/// Typed text of QPropertyLineEdit's modes to values and back. Independent of the locale; any thread.
namespace ValueText {

/// A value, or the translated reason why the text is none.
struct Parsed
{
    QVariant value; ///< invalid when the text was refused
    QString strReason;

    bool isValid() const { return value.isValid(); }
};

/// Whether a text of this QPropertyLineEdit::TextMode may hold the character.
bool mayHold(int mode, QChar character);

/// QString for strings, double for floats, qint64 for all others.
SHELLSERVICESMODULE_API Parsed parse(const QString &text, int mode);

/// The reason why the value lies outside the range, empty when it lies inside. Without both ends, or with the maximum
/// below the minimum, there is no range.
SHELLSERVICESMODULE_API QString rangeRefusal(const QVariant &value, const QVariant &maximum,
                                             const QVariant &minimum, int mode);

/// The reason why the text takes more bytes of UTF-8 than `length`; empty when it fits or `length` is no limit.
SHELLSERVICESMODULE_API QString lengthRefusal(const QString &text, int length);

/// The reason why the character may not be typed.
QString characterRefusal(QChar character, int mode);

} // namespace ValueText
