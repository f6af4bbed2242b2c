#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

/// One register of a dump.
struct FeatureFileRegister
{
    QString address;
    QString variables; ///< "[%1:%2]" pairs of selector node and value
    QString text; ///< words joined with ",", or the converted value
    QString to; ///< first word behind a converter, else empty
    QString from; ///< formula of the value with "TO" for the word
};

/// One group of a feature file.
struct FeatureFileEntry
{
    bool isComplex = false;
    QString name;
    QStringList names; ///< every Name of a plain group; each can reject it
    QString type;
    QString value;
    QString reg; ///< of a dump: name of its register
    QString length; ///< of a dump: bytes of its register
    QVector<FeatureFileRegister> registers;
};

/// What a feature file says, in its order.
struct FeatureFileDocument
{
    QString version;
    QMap<QString, QString> header; ///< texts of the root's children, of each name the first
    bool hasFeatures = false;
    QVector<FeatureFileEntry> entries;
};

/// Reads feature files, which come from anywhere: a document type, more than 64 MiB and elements nested deeper than
/// 32 are refused. Any thread.
namespace FeatureFileReader {

/// All text of a file, decoded as UTF-8; empty when it cannot be opened or is larger than 64 MiB.
QString textOf(const QString &path);
/// False, with a reason in English, for a text that is no XML or is refused.
bool parse(const QString &text, FeatureFileDocument *document, QString *reason = nullptr);

} // namespace FeatureFileReader
