#include "host/shellservices/HtmlText.h"

#include <algorithm>

namespace HtmlText {

namespace {

/// Neither markup nor a line end, nor a character that a text document keeps for itself: control characters, and
/// the code points U+FDD0 to U+FDEF by which it marks its frames.
bool isPlain(ushort code)
{
    if (code < 0x7F) {
        return code >= 0x20 && code != '<' && code != '>' && code != '&' && code != '"';
    }
    return code >= 0xA0 && code != QChar::LineSeparator && code != QChar::ParagraphSeparator
        && (code < 0xFDD0 || code > 0xFDEF) && code != QChar::ObjectReplacementCharacter;
}

/// The markup that takes the place of a character, empty when it has none. A break sets `afterBlank`: HTML drops the
/// blank that follows it.
QLatin1String markupOf(QChar character, bool &afterBlank)
{
    switch (character.unicode()) {
    case '<':
        return QLatin1String("&lt;");
    case '>':
        return QLatin1String("&gt;");
    case '&':
        return QLatin1String("&amp;");
    case '"':
        return QLatin1String("&quot;");
    case '\t':
        return QLatin1String("\xA0\xA0\xA0\xA0");
    case '\r':
    case '\n':
    case QChar::LineSeparator:
    case QChar::ParagraphSeparator:
        afterBlank = true;
        return QLatin1String("<br>");
    default:
        return QLatin1String();
    }
}

void appendEscaped(QString &out, const QString &text)
{
    // A blank at an edge stands beside a break or another fragment, where HTML may drop it.
    bool bAfterBlank = true;
    const QChar *const pEnd = text.constData() + text.size();
    const QChar *pCopied = text.constData();
    for (const QChar *p = pCopied; p != pEnd; ++p) {
        const ushort code = p->unicode();
        const bool bBlankToKeep = code == ' ' && bAfterBlank;
        bAfterBlank = code == ' ';
        if (!bBlankToKeep && isPlain(code)) {
            continue;
        }
        out.append(pCopied, static_cast<int>(p - pCopied));
        pCopied = p + 1;
        if (code == '\r' && pCopied != pEnd && *pCopied == QLatin1Char('\n')) {
            continue;
        }
        const QLatin1String markup = markupOf(*p, bAfterBlank);
        if (!markup.isEmpty()) {
            out += markup;
        } else {
            out += bBlankToKeep ? QChar(QChar::Nbsp) : QChar(QChar::ReplacementCharacter);
        }
    }
    out.append(pCopied, static_cast<int>(pEnd - pCopied));
}

} // namespace

QString escaped(const QString &text)
{
    QString strOut;
    strOut.reserve(text.size() + text.size() / 8 + 16);
    appendEscaped(strOut, text);
    return strOut;
}

QString fragment(const QString &text, const QColor &colour, bool bold)
{
    if (text.isEmpty()) {
        return QString();
    }
    // Each node keeps about forty fragments, so the markup is as short as QTextEdit reads it, and breaks take none.
    const bool bOnlyBreaks =
        std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c == QLatin1Char('\n'); });
    if (bOnlyBreaks) {
        return escaped(text);
    }
    QString strOut;
    strOut.reserve(text.size() + text.size() / 8 + 40);
    strOut += QLatin1String("<font color=");
    strOut += colour.name();
    strOut += bold ? QLatin1String("><b>") : QLatin1String(">");
    appendEscaped(strOut, text);
    strOut += bold ? QLatin1String("</b></font>") : QLatin1String("</font>");
    return strOut;
}

} // namespace HtmlText
