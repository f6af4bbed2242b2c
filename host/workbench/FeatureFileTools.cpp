#include "host/workbench/FeatureFileTools.h"

#include "host/workbench/FeatureBag.h"
#include "host/workbench/FeatureFileText.h"
#include "host/workbench/StagedFile.h"
#include "host/workbench/StandardOutput.h"

#include <QDir>
#include <QMap>

#include <cstdio>

using FeatureFileText::Value;

namespace {

constexpr qint64 MAX_BAG_SIZE = 1024LL * 1024 * 1024;
const QLatin1String NO_VALUE("/");

int fail(int code, const QString &file, const QString &reason)
{
    std::fprintf(stderr, "vexa-workbench: '%s': %s\n", qUtf8Printable(file),
                 qUtf8Printable(reason));
    return code;
}

struct Row
{
    QString name;
    const Value *first = nullptr;
    const Value *second = nullptr;

    bool isDifferent() const
    {
        return !first || !second || first->value != second->value || first->raw != second->raw;
    }
    QByteArray line() const
    {
        const bool tellRaw = first && second && first->value == second->value;
        const auto shown = [tellRaw](const Value *value) -> QString {
            if (!value) {
                return NO_VALUE;
            }
            return tellRaw ? QStringLiteral("%1 (%2)").arg(value->value, value->raw) : value->value;
        };
        return StandardOutput::tableLine({QString(), name, shown(first), shown(second)});
    }
};

/// The rows of both files, those of the first in its order before those that only the second has. A name that stands
/// several times is another row each time.
class Rows
{
public:
    void add(const QVector<Value> &values, const Value *Row::*file)
    {
        QMap<QString, int> times;
        for (const Value &value : values) {
            const QPair<QString, int> key(value.name, times[value.name]++);
            if (!m_places.contains(key)) {
                m_places.insert(key, m_rows.size());
                m_rows.append({value.name, nullptr, nullptr});
            }
            m_rows[m_places.value(key)].*file = &value;
        }
    }
    const QVector<Row> &rows() const { return m_rows; }

private:
    QMap<QPair<QString, int>, int> m_places;
    QVector<Row> m_rows;
};

bool read(const QString &path, QVector<Value> *values)
{
    QString text;
    QString reason;
    FeatureFileText::Content content;
    if (!FeatureFileText::load(path, &text, &reason)
        || !FeatureFileText::parse(text, &content, &reason)) {
        fail(FeatureFileTools::COMPARE_TROUBLE, path, reason);
        return false;
    }
    values->append({QStringLiteral("version"), content.version, QString()});
    *values += content.header + content.values;
    return true;
}

} // namespace

int FeatureFileTools::compareFiles(const QString &first, const QString &second)
{
    QVector<Value> firstValues;
    QVector<Value> secondValues;
    if (!read(first, &firstValues) || !read(second, &secondValues)) {
        return COMPARE_TROUBLE;
    }
    Rows rows;
    rows.add(firstValues, &Row::first);
    rows.add(secondValues, &Row::second);
    QByteArray table;
    for (const Row &row : rows.rows()) {
        if (row.isDifferent()) {
            table += row.line();
        }
    }
    if (!StandardOutput::write(table)) {
        return fail(COMPARE_TROUBLE, QStringLiteral("-"), QStringLiteral("not written"));
    }
    return table.isEmpty() ? COMPARE_SAME : COMPARE_DIFFERENT;
}

int FeatureFileTools::splitBag(const QString &bag, const QString &folder)
{
    QByteArray bytes;
    QString reason;
    QVector<FeatureBag::Record> records;
    if (!FeatureFileText::load(bag, MAX_BAG_SIZE, &bytes, &reason)
        || !FeatureBag::split(bytes, &records, &reason)) {
        return fail(1, bag, reason);
    }
    const QStringList names = FeatureBag::fileNames(records);
    QByteArray table;
    for (int i = 0; i < records.size(); ++i) {
        FeatureFileText::Content content;
        const QByteArray &file = records.at(i).file;
        if (!FeatureFileText::parse(QString::fromUtf8(file.constData(), file.size()), &content,
                                    &reason)) {
            return fail(1, bag, QStringLiteral("record %1: %2").arg(i + 1).arg(reason));
        }
        QString model;
        for (const Value &value : qAsConst(content.header)) {
            model = value.name == QLatin1String("DeviceModelName") ? value.value : model;
        }
        table += StandardOutput::tableLine({names.at(i), records.at(i).serialNumber, model});
    }
    if (!QDir().mkpath(folder)) {
        return fail(1, folder, QStringLiteral("the folder could not be made"));
    }
    for (int i = 0; i < records.size(); ++i) {
        StagedFile file(QDir(folder).filePath(names.at(i)));
        if (!file.write(records.at(i).file, &reason) || !file.commit(&reason)) {
            return fail(1, file.target(), reason);
        }
    }
    return StandardOutput::write(table)
        ? 0
        : fail(1, QStringLiteral("-"), QStringLiteral("not written"));
}
