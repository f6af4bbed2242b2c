#pragma once

#include <QColor>
#include <QString>

/// Plain text as an HTML fragment for QTextEdit::insertHtml. Any thread.
namespace HtmlText {

/// Escapes markup; line ends become breaks, blanks that HTML would drop become no-break spaces (which
/// QTextEdit gives back as blanks), a tab four of them. Characters that a text document keeps for itself
/// become U+FFFD.
QString escaped(const QString &text);

/// `escaped` in a colour and weight.
QString fragment(const QString &text, const QColor &colour, bool bold);

} // namespace HtmlText
