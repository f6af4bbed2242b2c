#include "host/devicetask/nodes/DescriptionCursor.h"

namespace {

/// Elements nest four deep in a sound description. What reads the document later recurses over it.
constexpr int MAX_NESTING = 64;
/// XML parsers commonly give up on texts of 10 million characters.
constexpr int MAX_TEXT = 9 * 1000 * 1000;

} // namespace

DescriptionCursor::DescriptionCursor(const QByteArray &xml)
    : m_reader(xml)
{
    // The plain names of the elements count, whatever their namespaces are.
    m_reader.setNamespaceProcessing(false);
}

QXmlStreamReader::TokenType DescriptionCursor::next()
{
    switch (m_reader.readNext()) {
    case QXmlStreamReader::StartElement:
        if (++m_nNesting == 1 && m_reader.name() != QLatin1String("RegisterDescription")) {
            refuse(QStringLiteral("the first element is <%1>, not <RegisterDescription>")
                       .arg(m_reader.name().left(100).toString()));
        } else if (m_nNesting > MAX_NESTING) {
            refuse(QStringLiteral("elements nest deeper than %1").arg(MAX_NESTING));
        }
        break;
    case QXmlStreamReader::EndElement:
        --m_nNesting;
        break;
    case QXmlStreamReader::DTD:
        refuse(QStringLiteral("it brings a document type"));
        break;
    default:
        break;
    }
    if (m_reader.text().size() > MAX_TEXT) {
        refuse(QStringLiteral("a text in it is too long"));
    }
    return m_reader.tokenType();
}

bool DescriptionCursor::enterRoot()
{
    while (!m_reader.atEnd()) {
        if (next() == QXmlStreamReader::StartElement) {
            return true;
        }
    }
    return false;
}

bool DescriptionCursor::nextChild()
{
    while (!m_reader.atEnd()) {
        const QXmlStreamReader::TokenType token = next();
        if (token == QXmlStreamReader::StartElement) {
            return true;
        }
        if (token == QXmlStreamReader::EndElement) {
            return false;
        }
    }
    return false;
}

QByteArray DescriptionCursor::attribute(const char *name) const
{
    return m_reader.attributes().value(QLatin1String(name)).toUtf8().trimmed();
}

QByteArray DescriptionCursor::takeText()
{
    QByteArray text;
    const int level = m_nNesting;
    while (!m_reader.atEnd()) {
        const QXmlStreamReader::TokenType token = next();
        if (token == QXmlStreamReader::EndElement && m_nNesting < level) {
            break;
        }
        if (token == QXmlStreamReader::Characters && m_nNesting == level) {
            const QByteArray piece = m_reader.text().toUtf8();
            text = text.isEmpty() ? piece : text + piece;
        }
    }
    return text;
}

void DescriptionCursor::skip()
{
    const int level = m_nNesting;
    while (!m_reader.atEnd()) {
        if (next() == QXmlStreamReader::EndElement && m_nNesting < level) {
            break;
        }
    }
}

void DescriptionCursor::finish()
{
    while (!m_reader.atEnd()) {
        next();
    }
}

QString DescriptionCursor::reason() const
{
    QString error = m_reader.errorString();
    if (error.endsWith('.')) {
        error.chop(1);
    }
    return QStringLiteral("The device description is not usable: line %1, column %2: %3.")
        .arg(m_reader.lineNumber())
        .arg(m_reader.columnNumber())
        .arg(error);
}
