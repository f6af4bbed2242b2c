#include "featurefile/FeatureFileReader.h"

#include "featurefile/FeatureFileFormat.h"

#include <QFile>
#include <QFileInfo>
#include <QXmlStreamReader>

using namespace FeatureFileFormat;

namespace {

/// Reads a text element by element, so that nothing of one that is refused is built.
class Parser
{
public:
    Parser(const QString &text, FeatureFileDocument *document)
        : m_xml(text)
        , m_document(*document)
    {
        m_xml.setNamespaceProcessing(false);
    }

    /// Why the text is refused; empty when it is not.
    QString read()
    {
        while (!m_xml.atEnd()) {
            switch (m_xml.readNext()) {
            case QXmlStreamReader::DTD:
                return refusal(QStringLiteral("a document type is not allowed"));
            case QXmlStreamReader::StartElement:
                if (++m_nDepth > MAX_ELEMENT_DEPTH) {
                    return refusal(QStringLiteral("elements are nested deeper than %1")
                                       .arg(MAX_ELEMENT_DEPTH));
                }
                begin();
                break;
            case QXmlStreamReader::EndElement:
                end();
                --m_nDepth;
                break;
            case QXmlStreamReader::Characters:
                m_strText += m_xml.text();
                m_bIsCData = m_bIsCData || m_xml.isCDATA();
                break;
            default:
                break;
            }
        }
        return m_xml.hasError() ? refusal(m_xml.errorString()) : QString();
    }

private:
    /// Depths of what has a meaning; the text of anything deeper belongs to the part around it.
    enum Depth { DEPTH_ROOT = 1, DEPTH_HEADER, DEPTH_GROUP, DEPTH_PART };

    QString refusal(const QString &reason) const
    {
        return QStringLiteral("line %1: %2").arg(m_xml.lineNumber()).arg(reason);
    }
    QString attribute(const QLatin1String &name) const
    {
        return m_xml.attributes().value(name).toString();
    }
    /// Of the part or header that ends. Blanks alone are the layout of a file.
    QString text() const
    {
        return m_bIsCData || !m_strText.trimmed().isEmpty() ? m_strText : QString();
    }

    void begin()
    {
        if (m_nDepth == DEPTH_HEADER || (m_nDepth == DEPTH_PART && m_bInFeatures)) {
            m_strText.clear();
            m_bIsCData = false;
        }
        if (m_nDepth == DEPTH_ROOT) {
            m_document.version = attribute(ATTRIBUTE_VERSION);
        } else if (m_nDepth == DEPTH_HEADER) {
            m_bInFeatures = m_xml.qualifiedName() == ELEMENT_FEATURES && !m_document.hasFeatures;
            m_document.hasFeatures = m_document.hasFeatures || m_bInFeatures;
        } else if (m_nDepth == DEPTH_GROUP && m_bInFeatures) {
            m_document.entries.append(FeatureFileEntry());
            beginGroup(m_document.entries.last());
        } else if (m_nDepth == DEPTH_PART && m_bInFeatures && m_document.entries.last().isComplex) {
            m_document.entries.last().registers.append(
                {attribute(ATTRIBUTE_ADDRESS), attribute(ATTRIBUTE_VARIABLES), QString(),
                 attribute(ATTRIBUTE_TO), attribute(ATTRIBUTE_FROM)});
        }
    }

    void beginGroup(FeatureFileEntry &entry)
    {
        entry.isComplex = m_xml.qualifiedName() == ELEMENT_COMPLEX_FEATURE;
        if (entry.isComplex) {
            entry.name = attribute(ATTRIBUTE_NAME);
            entry.names += entry.name;
            entry.reg = attribute(ATTRIBUTE_REG);
            entry.length = attribute(ATTRIBUTE_LEN);
        }
    }

    void end()
    {
        const auto tag = m_xml.qualifiedName();
        if (m_nDepth == DEPTH_HEADER && tag != ELEMENT_FEATURES) {
            const QString name = tag.toString();
            if (!m_document.header.contains(name)) {
                m_document.header.insert(name, text());
            }
        } else if (m_nDepth == DEPTH_PART && m_bInFeatures) {
            endPart(m_document.entries.last(), tag);
        }
    }

    void endPart(FeatureFileEntry &entry, const QStringRef &tag) const
    {
        if (entry.isComplex) {
            entry.registers.last().text = text();
        } else if (tag == ELEMENT_NAME) {
            entry.name = text();
            entry.names += entry.name;
        } else if (tag == ELEMENT_TYPE) {
            entry.type = text();
        } else if (tag == ELEMENT_VALUE) {
            entry.value = text();
        }
    }

    QXmlStreamReader m_xml;
    FeatureFileDocument &m_document;
    int m_nDepth = 0;
    bool m_bInFeatures = false; ///< in the first of that name
    QString m_strText;
    bool m_bIsCData = false;
};

/// Before anything of the text is looked at.
QString refusalOfSize(const QString &text)
{
    if (text.isEmpty()) {
        return QStringLiteral("the file is empty");
    }
    // A UTF-16 unit is at most three bytes.
    const bool isTooLarge = text.size() > MAX_FILE_SIZE
        || (text.size() > MAX_FILE_SIZE / 3 && text.toUtf8().size() > MAX_FILE_SIZE);
    return isTooLarge ? QStringLiteral("the file is larger than %1 bytes").arg(MAX_FILE_SIZE)
                      : QString();
}

} // namespace

QString FeatureFileReader::textOf(const QString &path)
{
    QFile file(path);
    // A pipe would block, a folder cannot be read.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) {
        return QString();
    }
    const QByteArray bytes = file.read(MAX_FILE_SIZE + 1);
    // Of a byte array alone the text would end at the first zero, and what stands behind it would go unnoticed.
    return bytes.size() > MAX_FILE_SIZE ? QString()
                                        : QString::fromUtf8(bytes.constData(), bytes.size());
}

bool FeatureFileReader::parse(const QString &text, FeatureFileDocument *document, QString *reason)
{
    FeatureFileDocument read;
    QString refusal = refusalOfSize(text);
    if (refusal.isEmpty()) {
        refusal = Parser(text, &read).read();
    }
    if (!refusal.isEmpty()) {
        if (reason) {
            *reason = refusal;
        }
        return false;
    }
    *document = read;
    return true;
}
