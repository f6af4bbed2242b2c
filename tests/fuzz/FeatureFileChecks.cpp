#include "FeatureFileChecks.h"

#include "FuzzTarget.h"
#include "featurefile/FeatureExporter.h"
#include "featurefile/FeatureFileFormat.h"
#include "featurefile/FeatureFileWriter.h"
#include "featurefile/FeatureImporter.h"
#include "model/ElementWalk.h"

#include <QDomDocument>
#include <QSet>

#include <algorithm>

namespace {

/// Depth of the elements as another parser sees them, 0 for a text that it refuses.
int depthOf(const QString &text)
{
    QDomDocument document;
    document.setContent(text);
    const QDomElement root = document.documentElement();
    int deepest = 0;
    for (QDomElement element = root; !element.isNull();
         element = ElementWalk::next(element, root)) {
        int depth = 0;
        for (QDomNode node = element; node.isElement(); node = node.parentNode()) {
            ++depth;
        }
        deepest = std::max(deepest, depth);
    }
    return deepest;
}

bool isNumber(const QString &text)
{
    return !text.isEmpty() && text.size() < 10
        && std::all_of(text.cbegin(), text.cend(),
                       [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); });
}

/// Whether the writer is ever asked for such a group: devices and descriptions give names, strings and formulas, and
/// nothing else.
bool isWritten(const FeatureFileEntry &entry)
{
    static const QStringList NUMBERS = {QStringLiteral("Boolean"), QStringLiteral("Integer"),
                                        QStringLiteral("IntReg"), QStringLiteral("Enumeration"),
                                        QStringLiteral("Float")};
    return entry.isComplex ? isNumber(entry.length)
            && std::all_of(entry.registers.cbegin(), entry.registers.cend(),
                           [](const FeatureFileRegister &row) {
                               return isNumber(row.address) && isNumber(row.text)
                                   && (row.to.isEmpty() ? row.from.isEmpty() : isNumber(row.to));
                           })
                           : entry.type == QLatin1String("StringReg")
            || (NUMBERS.contains(entry.type) && isNumber(entry.value));
}

bool isSame(const FeatureFileEntry &a, const FeatureFileEntry &b)
{
    return a.isComplex == b.isComplex && a.name == b.name && a.type == b.type && a.value == b.value
        && a.reg.simplified() == b.reg.simplified()
        && a.length.toLongLong() == b.length.toLongLong()
        && std::equal(a.registers.cbegin(), a.registers.cend(), b.registers.cbegin(),
                      b.registers.cend(),
                      [](const FeatureFileRegister &x, const FeatureFileRegister &y) {
                          return x.address == y.address
                              && x.variables.simplified() == y.variables.simplified()
                              && x.text == y.text && x.to.toUInt() == y.to.toUInt()
                              && x.from.simplified() == y.from.simplified();
                      });
}

/// Differences that no list names: a register's name has its variables behind it.
bool areNamed(const FeatureDifferences &differences, const QStringList &names)
{
    for (const QList<FeatureDifference> &category : differences) {
        for (const FeatureDifference &difference : category) {
            const bool isNamed =
                std::any_of(names.cbegin(), names.cend(), [&difference](const QString &name) {
                    return difference.name == name
                        || difference.name.startsWith(name + QLatin1Char('['));
                });
            if (!isNamed) {
                std::fprintf(stderr, "%s: %s in the file, %s in the device\n",
                             qPrintable(difference.name), qPrintable(difference.fileValue),
                             qPrintable(difference.deviceValue));
                return false;
            }
        }
    }
    return true;
}

QStringList namesOf(const QList<FeatureFileNote> &notes)
{
    QStringList names;
    for (const FeatureFileNote &note : notes) {
        names += note.name;
    }
    return names;
}

QSet<qint64> addressesOf(const FeatureFileDocument &document, int *rows)
{
    QSet<qint64> addresses;
    for (const FeatureFileEntry &entry : document.entries) {
        *rows += 1 + entry.registers.size();
        for (const FeatureFileRegister &row : entry.registers) {
            const bool isHexadecimal = row.address.startsWith(QLatin1String("0x"));
            bool ok = false;
            const quint64 address = row.address.toULongLong(&ok, isHexadecimal ? 16 : 10);
            if (ok) {
                addresses.insert(static_cast<qint64>(address));
            }
        }
    }
    return addresses;
}

} // namespace

bool FeatureFileChecks::parse(const QString &text, FeatureFileDocument *document)
{
    QString reason;
    if (!FeatureFileReader::parse(text, document, &reason)) {
        require(!reason.isEmpty(), "a refusal tells why");
        return false;
    }
    require(depthOf(text) <= FeatureFileFormat::MAX_ELEMENT_DEPTH, "elements are not too deep");
    require(!text.trimmed().startsWith(QLatin1String("<!DOCTYPE")), "no document type");
    return true;
}

void FeatureFileChecks::rewrite(const FeatureFileDocument &document)
{
    FeatureFileWriter writer(QStringLiteral("1"));
    QStringList names;
    for (const QString &tag :
         {QStringLiteral("DeviceFirmwareVersion"), QString(FeatureFileFormat::ELEMENT_MODEL)}) {
        writer.addHeader(tag, document.header.value(tag));
        names += tag;
    }
    writer.beginFeatures();
    QVector<FeatureFileEntry> entries;
    for (const FeatureFileEntry &entry : document.entries) {
        if (!isWritten(entry)) {
            continue;
        }
        names += entry.name;
        entries.append(entry);
        if (entry.isComplex) {
            writer.addComplexFeature(entry.name, FeatureFileWriter::complexOf(entry));
        } else {
            writer.addFeature(entry.name, entry.type, entry.value);
        }
    }
    writer.finish();
    const QVector<FeatureFileWriter::Culprit> culprits = writer.culprits();
    for (const FeatureFileWriter::Culprit &culprit : culprits) {
        require(names.contains(culprit.name), "a culprit is a group of the file");
    }
    if (!culprits.isEmpty()) {
        return;
    }
    FeatureFileDocument again;
    require(FeatureFileReader::parse(writer.text(), &again), "a text without culprits is read");
    require(again.hasFeatures
                && std::equal(entries.cbegin(), entries.cend(), again.entries.cbegin(),
                              again.entries.cend(), isSame),
            "what is written comes back, or is named");
    for (auto header = again.header.cbegin(); header != again.header.cend(); ++header) {
        require(header.value() == document.header.value(header.key()),
                "the header comes back, or is named");
    }
}

bool FeatureFileChecks::check(FuzzJob &fuzz, const QString &text,
                              const FeatureFileDocument *document)
{
    FeatureImporter importer(fuzz.job());
    const bool isGood = importer.run(text, true);
    require(fuzz.device().writes() == 0, "a check writes nothing");
    require(isGood || importer.resultCode() != FEATURE_FILE_OK, "a refusal has a code");
    require(document || importer.resultCode() == FEATURE_FILE_UNREADABLE, "unreadable is told");
    return isGood;
}

bool FeatureFileChecks::apply(FuzzJob &fuzz, const QString &text,
                              const FeatureFileDocument *document, FeatureFileReport *report)
{
    FuzzDevice &device = fuzz.device();
    const int before = device.accesses();
    FeatureImporter importer(fuzz.job());
    const bool isDone = importer.run(text, false);
    require((document && document->hasFeatures) || (!isDone && device.writes() == 0),
            "a refused file writes nothing");
    require(isDone || importer.resultCode() != FEATURE_FILE_OK, "an import that ends has a code");
    int rows = 0;
    const QSet<qint64> addresses = document ? addressesOf(*document, &rows) : QSet<qint64>();
    require(addresses.contains(device.writtenAddresses()), "addresses are those of the file");
    constexpr int PASSES = 11;
    constexpr int ACCESSES_A_ROW = 40;
    require(device.accesses() - before <= PASSES * ACCESSES_A_ROW * rows, "the work has an end");
    *report = importer.report();
    return isDone && !device.isExhausted();
}

void FeatureFileChecks::compareAgain(FuzzJob &fuzz, const QString &text,
                                     const FeatureFileReport &report)
{
    FeatureImporter again(fuzz.job());
    if (again.run(text, true)) {
        require(areNamed(again.differences(), namesOf(report.notImported) + report.severalTimes),
                "what the device did not take is named");
    }
}

void FeatureFileChecks::exportAll(FuzzJob &fuzz)
{
    FuzzDevice &device = fuzz.device();
    const int writes = device.writes();
    FeatureExporter exporter(fuzz.job());
    QString text;
    if (!exporter.build(&text)) {
        return;
    }
    const FeatureFileReport &report = exporter.report();
    require(device.writes() == writes || report.bPollingParamWritten, "an export writes nothing");
    bool isTold = false;
    for (const FeatureFileNote &remark : report.remarks) {
        isTold = isTold || remark.reason == FeatureFileReason::Text
            || remark.reason == FeatureFileReason::FileTooLarge;
    }
    FeatureFileDocument document;
    require(FeatureFileChecks::parse(text, &document) || isTold,
            "an export is read, or the culprits are named");
    const int afterExport = device.writes();
    FeatureImporter check(fuzz.job());
    const bool isGood = check.run(text, true);
    require(device.writes() == afterExport, "a check writes nothing");
    require(isGood || isTold || device.isExhausted() || fuzz.stop() || device.isGone(),
            "a device takes its own file");
    if (isGood && !device.isExhausted()) {
        require(
            areNamed(check.differences(), namesOf(report.remarks) + check.report().severalTimes),
            "the device is as its own file says");
    }
}
