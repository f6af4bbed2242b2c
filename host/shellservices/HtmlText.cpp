#include "host/shellservices/HtmlText.h"

#include <algorithm>

namespace HtmlText {

namespace {

/// Control characters, and the code points U+FDD0 to U+FDEF by which a text document marks its frames.
bool isReserved(QChar character)
{
    const ushort code = character.unicode();
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || (code >= 0xFDD0 && code <= 0xFDEF)
        || code == QChar::ObjectReplacementCharacter;
}

void appendEscaped(QString &out, const QString &text)
{
    // A blank at an edge stands beside a break or another fragment, where HTML may drop it.
    bool bAfterBlank = true;
    const QChar *const pEnd = text.constData() + text.size();
    for (const QChar *p = text.constData(); p != pEnd; ++p) {
        const bool bBlank = *p == QLatin1Char(' ');
        switch (p->unicode()) {
        case ' ':
            out += bAfterBlank ? QChar(QChar::Nbsp) : *p;
            break;
        case '<':
            out += QLatin1String("&lt;");
            break;
        case '>':
            out += QLatin1String("&gt;");
            break;
        case '&':
            out += QLatin1String("&amp;");
            break;
        case '"':
            out += QLatin1String("&quot;");
            break;
        case '\t':
            out += QString(4, QChar::Nbsp);
            break;
        case '\r':
            if (p + 1 != pEnd && p[1] == QLatin1Char('\n')) {
                continue;
            }
            Q_FALLTHROUGH();
        case '\n':
        case QChar::LineSeparator:
        case QChar::ParagraphSeparator:
            out += QLatin1String("<br>");
            bAfterBlank = true;
            continue;
        default:
            out += isReserved(*p) ? QChar(QChar::ReplacementCharacter) : *p;
        }
        bAfterBlank = bBlank;
    }
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
    const bool bOnlyBreaks
        = std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c == QLatin1Char('\n'); });
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
