#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

/// A bag: the feature files of several devices in one file.
namespace FeatureBag {

struct Record
{
    QString serialNumber;
    QByteArray file;
};

/// False with a reason for bytes that are no bag.
bool split(const QByteArray &bytes, QVector<Record> *records, QString *reason);
/// Names for the files of these records. A serial number comes from a device: only its letters, digits, "-" and "_"
/// get into a name, behind the record's number, which alone makes the names differ.
QStringList fileNames(const QVector<Record> &records);

} // namespace FeatureBag
