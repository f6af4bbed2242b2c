#include "host/workbench/FeatureFileText.h"

#include <QFile>
#include <QFileInfo>
#include <QXmlStreamReader>

namespace {

constexpr qint64 MAX_FILE_SIZE = 64LL * 1024 * 1024;
constexpr int MAX_ELEMENT_DEPTH = 32;
/// Depth of an element, the root's is 1.
constexpr int DEPTH_HEADER = 2;
constexpr int DEPTH_FEATURE = 3;
constexpr int DEPTH_PART = 4;

const QLatin1String FEATURES("Features");
const QLatin1String VERSION("version");

/// Walks a file once and keeps what stands where values stand.
class Reader
{
public:
    explicit Reader(const QString &text)
        : m_xml(text)
    {
        m_xml.setNamespaceProcessing(false);
    }

    bool read(FeatureFileText::Content *content, QString *reason)
    {
        while (!m_xml.atEnd() && m_strRefusal.isEmpty()) {
            switch (m_xml.readNext()) {
            case QXmlStreamReader::DTD:
                m_strRefusal = QStringLiteral("a document type is not allowed");
                break;
            case QXmlStreamReader::StartElement:
                begin(content);
                break;
            case QXmlStreamReader::EndElement:
                end(content);
                break;
            case QXmlStreamReader::Characters:
                m_strText += m_xml.text();
                break;
            default:
                break;
            }
        }
        if (m_strRefusal.isEmpty() && m_xml.hasError()) {
            m_strRefusal = m_xml.errorString();
        }
        if (!m_strRefusal.isEmpty()) {
            *reason = QStringLiteral("line %1: %2").arg(m_xml.lineNumber()).arg(m_strRefusal);
        } else if (!m_bHasFeatures) {
            *reason = QStringLiteral("it holds no features");
        }
        return m_strRefusal.isEmpty() && m_bHasFeatures;
    }

private:
    void begin(FeatureFileText::Content *content)
    {
        m_strText.clear();
        m_attributes = m_xml.attributes();
        if (++m_nDepth == 1) {
            content->version = m_attributes.value(VERSION).toString();
        } else if (m_nDepth == DEPTH_HEADER) {
            m_bInFeatures = m_xml.name() == FEATURES;
            m_bHasFeatures = m_bHasFeatures || m_bInFeatures;
        } else if (m_nDepth == DEPTH_FEATURE) {
            m_strName = m_attributes.value(QLatin1String("name")).toString();
            m_bHasValue = false;
            m_strValue.clear();
        } else if (m_nDepth > MAX_ELEMENT_DEPTH) {
            m_strRefusal =
                QStringLiteral("elements are nested deeper than %1").arg(MAX_ELEMENT_DEPTH);
        }
    }

    void end(FeatureFileText::Content *content)
    {
        const auto tag = m_xml.name();
        if (m_nDepth == DEPTH_HEADER && !m_bInFeatures) {
            content->header.append({tag.toString(), m_strText, QString()});
        } else if (m_nDepth == DEPTH_PART && m_bInFeatures) {
            if (tag == QLatin1String("Name")) {
                m_strName = m_strText;
            } else if (tag == QLatin1String("Value")) {
                m_bHasValue = true;
                m_strValue = m_strText;
            } else if (tag == QLatin1String("RegValue")) {
                content->values.append({m_strName + m_attributes.value(QLatin1String("variables")),
                                        m_strText,
                                        m_attributes.value(QLatin1String("to")).toString()});
            }
        } else if (m_nDepth == DEPTH_FEATURE && m_bInFeatures && m_bHasValue) {
            content->values.append({m_strName, m_strValue, QString()});
        }
        --m_nDepth;
    }

    QXmlStreamReader m_xml;
    QXmlStreamAttributes m_attributes; ///< of the element that was begun last
    QString m_strRefusal;
    QString m_strText;
    QString m_strName;
    QString m_strValue;
    int m_nDepth = 0;
    bool m_bInFeatures = false;
    bool m_bHasFeatures = false;
    bool m_bHasValue = false;
};

} // namespace

bool FeatureFileText::load(const QString &path, qint64 limit, QByteArray *bytes, QString *reason)
{
    QFile file(path);
    // A pipe would block.
    if (QFileInfo::exists(path) && !QFileInfo(path).isFile()) {
        *reason = QStringLiteral("it is no file");
        return false;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        *reason = file.errorString();
        return false;
    }
    *bytes = file.read(limit + 1);
    if (bytes->size() > limit) {
        *reason = QStringLiteral("it is larger than %1 bytes").arg(limit);
        return false;
    }
    return true;
}

bool FeatureFileText::load(const QString &path, QString *text, QString *reason)
{
    QByteArray bytes;
    const bool loaded = load(path, MAX_FILE_SIZE, &bytes, reason);
    *text = QString::fromUtf8(bytes.constData(), bytes.size()); // a zero byte ends nothing
    return loaded;
}

bool FeatureFileText::parse(const QString &text, Content *content, QString *reason)
{
    *content = Content();
    return Reader(text).read(content, reason);
}

QHash<QString, QString> FeatureFileText::lastValues(const Content &content)
{
    QHash<QString, QString> last;
    for (const Value &value : content.values) {
        last.insert(value.name, value.value);
    }
    return last;
}
