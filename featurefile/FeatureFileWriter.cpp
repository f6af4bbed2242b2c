#include "featurefile/FeatureFileWriter.h"

#include "featurefile/FeatureFileFormat.h"
#include "featurefile/FeatureFileReader.h"

#include <algorithm>

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
    add({Kind::Header, tag, 0, 0, QString(), value}, QString(HEADER).arg(tag, value));
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
    add({Kind::Value, name, 0, 0, type, value}, QString(FEATURE).arg(name, type, escaped));
}

void FeatureFileWriter::addComplexFeature(const QString &name, const QString &text)
{
    add({Kind::Dump, name, 0, 0, QString(), QString()}, text);
}

void FeatureFileWriter::finish()
{
    m_text += FEATURES_END;
    m_text += FILE_END;
}

bool FeatureFileWriter::comesBack(const Group &group, const FeatureFileDocument &document,
                                  int entry) const
{
    if (group.kind == Kind::Header) {
        return document.header.value(group.name) == group.value;
    }
    if (entry >= document.entries.size()) {
        return false;
    }
    const FeatureFileEntry &read = document.entries.at(entry);
    if (group.kind == Kind::Value) {
        return read.names == QStringList(group.name) && read.type == group.type
            && read.value == group.value;
    }
    // Blanks of formulas are not kept apart in attributes.
    return read.name == group.name
        && complexOf(read).simplified() == m_text.mid(group.begin, group.length).simplified();
}

QVector<FeatureFileWriter::Culprit> FeatureFileWriter::culprits() const
{
    QVector<Culprit> found;
    FeatureFileDocument document;
    const auto entries = std::count_if(m_groups.cbegin(), m_groups.cend(), [](const Group &group) {
        return group.kind != Kind::Header;
    });
    // With a group too many or too few nothing stands in its place any more.
    const bool isReadable =
        FeatureFileReader::parse(m_text, &document) && document.entries.size() == entries;
    const QString begin = QString(FILE_BEGIN).arg(QString());
    int entry = 0;
    for (const Group &group : m_groups) {
        const bool isEntry = group.kind != Kind::Header;
        if (!isReadable) {
            const QString text = m_text.mid(group.begin, group.length);
            if (!FeatureFileReader::parse(
                    begin + (isEntry ? FEATURES_BEGIN + text + FEATURES_END : text) + FILE_END,
                    &document)) {
                found.append({group.name, true});
                continue;
            }
            entry = 0;
        }
        if (!comesBack(group, document, entry) || (!isReadable && document.entries.size() > 1)) {
            found.append({group.name, false});
        }
        entry += isEntry ? 1 : 0;
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

QString FeatureFileWriter::complexOf(const FeatureFileEntry &entry)
{
    QString text = complexBegin(entry.name, entry.length.toLongLong(), entry.reg);
    for (const FeatureFileRegister &row : entry.registers) {
        text += row.to.isEmpty()
            ? regValue(row.address, row.variables, row.text)
            : regValue(row.address, row.variables, row.text, row.to.toUInt(), row.from);
    }
    return text + complexEnd();
}
