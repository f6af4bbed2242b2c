#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QVector>

/// What the workbench itself has to know of feature files: it finds the values of a file for comparing, splits bags,
/// and does neither with a device.
namespace FeatureFileText {

/// A value of a file, in its order.
struct Value
{
    QString
        name; ///< a register's has the values of its selectors behind it, "LUTValue[LUTIndex:1]"
    QString value;
    QString raw; ///< the word of a register behind a converter, else empty
};

struct Content
{
    QString version; ///< of the software that wrote the file
    QVector<Value> header; ///< model, firmware and the like
    QVector<Value> values;
};

/// False with a reason for a file that cannot be opened or is larger than `limit` bytes.
bool load(const QString &path, qint64 limit, QByteArray *bytes, QString *reason);
/// The same for a feature file, which has at most 64 MiB.
bool load(const QString &path, QString *text, QString *reason);
/// False with a reason for a text that is no feature file, has a document type or is nested deeper than 32.
bool parse(const QString &text, Content *content, QString *reason);
/// What stays of each name when all values are written one after the other.
QHash<QString, QString> lastValues(const Content &content);

} // namespace FeatureFileText
