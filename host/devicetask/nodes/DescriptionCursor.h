#pragma once

#include <QByteArray>
#include <QString>
#include <QXmlStreamReader>

/// Goes over the elements of a description and refuses what no sound description has: document types, deep nesting,
/// endless texts, an error of the XML anywhere.
class DescriptionCursor
{
public:
    explicit DescriptionCursor(const QByteArray &xml);

    /// Steps into the first element, RegisterDescription.
    bool enterRoot();
    /// Steps into the next child of the present element; false at the present element's end, or when refused.
    bool nextChild();
    /// Name of the present element.
    QStringRef name() const { return m_reader.name(); }
    QXmlStreamAttributes attributes() const { return m_reader.attributes(); }
    /// Trimmed; empty when missing.
    QByteArray attribute(const char *name) const;
    /// The text directly in the present element, which is left by this.
    QByteArray takeText();
    /// Leaves the present element.
    void skip();
    /// Reads what stands behind the first element.
    void finish();

    int line() const { return static_cast<int>(m_reader.lineNumber()); }
    void refuse(const QString &reason) { m_reader.raiseError(reason); }
    bool isRefused() const { return m_reader.hasError(); }
    /// A whole English sentence.
    QString reason() const;

private:
    QXmlStreamReader::TokenType next();

    QXmlStreamReader m_reader;
    int m_nNesting = 0;
};
