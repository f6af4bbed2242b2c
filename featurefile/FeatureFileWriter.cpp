#include "featurefile/FeatureFileWriter.h"

#include "featurefile/FeatureFileFormat.h"
#include "featurefile/FeatureFileReader.h"

using namespace FeatureFileFormat;

FeatureFileWriter::FeatureFileWriter(const QString &version)
    : m_text(XML_DECLARATION + QString(FILE_BEGIN).arg(version))
{
}

void FeatureFileWriter::add(const Group &group, const QString &text)
{
    m_groups.append(group);
    m_groups.last().begin = m_text.size();
    m_groups.last().length = text.size();
    m_text += text;
}

void FeatureFileWriter::addHeader(const QString &tag, const QString &value)
{
    add({tag, 0, 0, false, false, QString()}, QString(HEADER).arg(tag, value));
}

void FeatureFileWriter::beginFeatures()
{
    m_text += FEATURES_BEGIN;
}

void FeatureFileWriter::addFeature(const QString &name, const QString &type, const QString &value)
{
    QString escaped = value;
    if (type == QLatin1String("StringReg")) {
        escaped.replace(QLatin1Char('>'), QLatin1String("&gt;"));
        escaped.replace(QLatin1Char('<'), QLatin1String("&lt;"));
    }
    add({name, 0, 0, true, true, value}, QString(FEATURE).arg(name, type, escaped));
}

void FeatureFileWriter::addComplexFeature(const QString &name, const QString &text)
{
    add({name, 0, 0, true, false, QString()}, text);
}

void FeatureFileWriter::finish()
{
    m_text += FEATURES_END;
    m_text += FILE_END;
}

QVector<FeatureFileWriter::Culprit> FeatureFileWriter::culprits() const
{
    QVector<Culprit> found;
    FeatureFileDocument document;
    const bool isReadable = FeatureFileReader::parse(m_text, &document);
    const QString begin = QString(FILE_BEGIN).arg(QString()) + FEATURES_BEGIN;
    const QString end = FEATURES_END + QString(FILE_END);
    int entry = 0;
    for (const Group &group : m_groups) {
        if (!isReadable) {
            FeatureFileDocument alone;
            if (!FeatureFileReader::parse(begin + m_text.mid(group.begin, group.length) + end,
                                          &alone)) {
                found.append({group.name, true});
                continue;
            }
            document = alone;
            entry = 0;
        }
        if (group.isEntry && entry < document.entries.size()) {
            const FeatureFileEntry &read = document.entries.at(entry++);
            if (group.hasValue && read.value != group.value) {
                found.append({group.name, false});
            }
        }
    }
    return found;
}

QString FeatureFileWriter::complexBegin(const QString &name, qint64 length, const QString &reg)
{
    return QString(COMPLEX_BEGIN).arg(name, QString::number(length), reg);
}

QString FeatureFileWriter::regValue(const QString &address, const QString &variables,
                                    const QString &words)
{
    return QString(REG_VALUE).arg(address, variables, words);
}

QString FeatureFileWriter::regValue(const QString &address, const QString &variables,
                                    const QString &value, quint32 to, const QString &from)
{
    return QString(REG_VALUE_CONVERTED)
        .arg(address, variables, value, QString::number(to), from.toHtmlEscaped());
}

QString FeatureFileWriter::complexEnd()
{
    return COMPLEX_END;
}
