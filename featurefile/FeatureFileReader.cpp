#include "featurefile/FeatureFileReader.h"

#include "featurefile/FeatureFileFormat.h"

#include <QDomDocument>
#include <QFile>
#include <QFileInfo>
#include <QXmlStreamReader>

using namespace FeatureFileFormat;

namespace {

/// Why the text must not become a document; empty when it may.
QString refusalOf(const QString &text)
{
    if (text.isEmpty()) {
        return QStringLiteral("the file is empty");
    }
    // A UTF-16 unit is at most three bytes.
    if (text.size() > MAX_FILE_SIZE
        || (text.size() > MAX_FILE_SIZE / 3 && text.toUtf8().size() > MAX_FILE_SIZE)) {
        return QStringLiteral("the file is larger than %1 bytes").arg(MAX_FILE_SIZE);
    }
    QXmlStreamReader xml(text);
    xml.setNamespaceProcessing(false);
    int depth = 0;
    while (!xml.atEnd()) {
        switch (xml.readNext()) {
        case QXmlStreamReader::DTD:
            return QStringLiteral("line %1: a document type is not allowed").arg(xml.lineNumber());
        case QXmlStreamReader::StartElement:
            if (++depth > MAX_ELEMENT_DEPTH) {
                return QStringLiteral("line %1: elements are nested deeper than %2")
                    .arg(xml.lineNumber())
                    .arg(MAX_ELEMENT_DEPTH);
            }
            break;
        case QXmlStreamReader::EndElement:
            --depth;
            break;
        default:
            break;
        }
    }
    return xml.hasError()
        ? QStringLiteral("line %1: %2").arg(xml.lineNumber()).arg(xml.errorString())
        : QString();
}

FeatureFileEntry plainEntry(const QDomElement &element)
{
    FeatureFileEntry entry;
    for (QDomElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        if (child.tagName() == ELEMENT_NAME) {
            entry.name = child.text();
            entry.names += entry.name;
        } else if (child.tagName() == ELEMENT_TYPE) {
            entry.type = child.text();
        } else if (child.tagName() == ELEMENT_VALUE) {
            entry.value = child.text();
        }
    }
    return entry;
}

FeatureFileEntry complexEntry(const QDomElement &element)
{
    FeatureFileEntry entry;
    entry.isComplex = true;
    entry.name = element.attribute(ATTRIBUTE_NAME);
    entry.names += entry.name;
    entry.reg = element.attribute(ATTRIBUTE_REG);
    entry.length = element.attribute(ATTRIBUTE_LEN);
    for (QDomElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        entry.registers.append({child.attribute(ATTRIBUTE_ADDRESS),
                                child.attribute(ATTRIBUTE_VARIABLES), child.text(),
                                child.attribute(ATTRIBUTE_TO), child.attribute(ATTRIBUTE_FROM)});
    }
    return entry;
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
    QString refusal = refusalOf(text);
    QDomDocument dom;
    if (refusal.isEmpty() && !dom.setContent(text, false, &refusal) && refusal.isEmpty()) {
        refusal = QStringLiteral("the text is not XML");
    }
    if (!refusal.isEmpty()) {
        if (reason) {
            *reason = refusal;
        }
        return false;
    }
    *document = FeatureFileDocument();
    const QDomElement root = dom.documentElement();
    document->version = root.attribute(ATTRIBUTE_VERSION);
    for (QDomElement child = root.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        const QString tag = child.tagName();
        if (tag != ELEMENT_FEATURES) {
            if (!document->header.contains(tag)) {
                document->header.insert(tag, child.text());
            }
            continue;
        }
        for (QDomElement group = child.firstChildElement();
             !document->hasFeatures && !group.isNull(); group = group.nextSiblingElement()) {
            document->entries.append(group.tagName() == ELEMENT_COMPLEX_FEATURE
                                         ? complexEntry(group)
                                         : plainEntry(group));
        }
        document->hasFeatures = true;
    }
    return true;
}
