#include "FeatureFileChecks.h"
#include "FuzzTarget.h"
#include "UtilityKit/VexaInterface.h"
#include "featurefile/FeatureFileFilters.h"
#include "featurefile/FeatureFileFormat.h"
#include "featurefile/FeatureFileStore.h"
#include "host/workbench/FeatureBag.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>

namespace {

const char DESCRIPTION[] = R"(<RegisterDescription>
<Category Name="Root"><pFeature>DeviceModelName</pFeature><pFeature>Switch</pFeature>
<pFeature>Mode</pFeature><pFeature>Number</pFeature><pFeature>Rounded</pFeature>
<pFeature>Gain</pFeature><pFeature>Text</pFeature><pFeature>Locked</pFeature><pFeature>Hidden</pFeature>
<pFeature>Refusing</pFeature><pFeature>Leaving</pFeature><pFeature>Broken</pFeature></Category>
<Category Name="Tables"><pFeature>Table</pFeature><pFeature>Scaled</pFeature><pFeature>Long</pFeature>
<pFeature>Odd</pFeature><pFeature>Address</pFeature><pFeature>PollingEnable</pFeature>
<pFeature>PollingParam</pFeature><pFeature>PollingGain</pFeature></Category>
<StringReg Name="DeviceFirmwareVersion"><Value>V1</Value></StringReg>
<StringReg Name="DeviceModelName"><Value>XX-1000</Value></StringReg>
<Integer Name="BoardDeviceType"><Value>2</Value></Integer>
<Boolean Name="Switch"><Value>1</Value></Boolean>
<Enumeration Name="Mode"><Value>1</Value><EnumEntry Name="A"><Value>0</Value></EnumEntry></Enumeration>
<Integer Name="Number"><Value>-5</Value></Integer>
<IntReg Name="Rounded"><Value>8</Value><Rounds/></IntReg>
<Float Name="Gain"><Value>0.5</Value></Float>
<StringReg Name="Text"><Value>a text</Value></StringReg>
<Integer Name="Locked"><Value>7</Value><ImposedAccessMode>RO</ImposedAccessMode></Integer>
<Integer Name="Hidden"><pValue>HiddenReg</pValue><ImposedAccessMode>NA</ImposedAccessMode></Integer>
<IntReg Name="HiddenReg"><Address>64</Address><Length>4</Length></IntReg>
<Integer Name="Refusing"><Value>1</Value><WriteError>90006206</WriteError></Integer>
<Integer Name="Leaving"><Value>1</Value><WriteError>90006000</WriteError></Integer>
<Integer Name="Broken"><Value>1</Value><WriteError>80000001</WriteError></Integer>
<Integer Name="Index"><Value>0</Value><Min>0</Min><Max>3</Max><pSelected>Table</pSelected></Integer>
<IntSwissKnife Name="Offset"><pVariable Name="I">Index</pVariable><Formula>I*4</Formula></IntSwissKnife>
<Integer Name="Table"><pValue>TableReg</pValue></Integer>
<IntReg Name="TableReg"><Address>0x100</Address><pAddress>Offset</pAddress><Length>4</Length></IntReg>
<Float Name="Scaled"><pValue>Scale</pValue><ImposedAccessMode>NA</ImposedAccessMode></Float>
<Converter Name="Scale"><pVariable Name="V">ScaledReg</pVariable><FormulaTo>FROM*10</FormulaTo>
<FormulaFrom>V/10</FormulaFrom><pValue>ScaledReg</pValue></Converter>
<IntReg Name="ScaledReg"><Address>512</Address><Length>4</Length></IntReg>
<StringReg Name="Long"><Address>1024</Address><Length>6</Length><ImposedAccessMode>NA</ImposedAccessMode></StringReg>
<Integer Name="Odd"><pValue>OddReg</pValue><ImposedAccessMode>NA</ImposedAccessMode></Integer>
<IntReg Name="OddReg"><Address>602</Address><Length>4</Length></IntReg>
<Integer Name="Address"><Value>1</Value><Representation>IPV4Address</Representation></Integer>
<Enumeration Name="PollingEnable"><Value>1</Value></Enumeration>
<Enumeration Name="PollingParam"><Value>0</Value></Enumeration>
<Integer Name="PollingGain"><Value>3</Value></Integer>
</RegisterDescription>)";

const QByteArray FILTER = "#filter ";
const QByteArray TYPE = "#type ";
constexpr int MOST_RECORDS = 3;

/// The folder of the client's data, for filters and bags.
const QTemporaryDir &dataFolder()
{
    static const QTemporaryDir s_folder(QDir(QStringLiteral("/dev/shm")).exists()
                                            ? QStringLiteral("/dev/shm/fuzz-XXXXXX")
                                            : QDir::tempPath() + QStringLiteral("/fuzz-XXXXXX"));
    return s_folder;
}

const FuzzJob &prototype()
{
    static const FuzzJob s_job([] {
        FuzzJob::prepareProcess();
        qputenv("VEXA_DATA_PATH", QFile::encodeName(dataFolder().path()));
        require(QDir(dataFolder().path()).mkpath(QStringLiteral("Streamable")),
                "a folder for data");
        QDomDocument document;
        require(document.setContent(QByteArray(DESCRIPTION)), "the description is XML");
        return document;
    }());
    return s_job;
}

/// The rest of the first line when it begins with the word; takes the line out.
bool takeLine(QByteArray *bytes, const QByteArray &word, QByteArray *rest)
{
    if (!bytes->startsWith(word)) {
        return false;
    }
    const int end = bytes->indexOf('\n');
    *rest = bytes->mid(word.size(), end < 0 ? -1 : end - word.size());
    *bytes = end < 0 ? QByteArray() : bytes->mid(end + 1);
    return true;
}

FeatureFileFilters::Filters filtersOf(const QByteArray &content)
{
    QFile file(dataFolder().filePath(QStringLiteral("Streamable/GigE.filter")));
    require(file.open(QIODevice::WriteOnly) && file.write(content) == content.size()
                && file.flush(),
            "the filter is written");
    FeatureFileFilters::Filters filters = FeatureFileFilters::load();
    require(file.remove() && !filters.value(QStringLiteral("GigE")).isEmpty(),
            "a filter is a list, if only of an empty name");
    return filters;
}

/// QString::fromUtf8 of a byte array ends at the first zero.
QString textOf(const QByteArray &bytes)
{
    return QString::fromUtf8(bytes.constData(), bytes.size());
}

void checkBag(const QVector<FeatureBag::Record> &records)
{
    const QStringList names = FeatureBag::fileNames(records);
    require(QSet<QString>(names.cbegin(), names.cend()).size() == records.size(),
            "each record has a file of its own");
    // With line ends in serial numbers there may be parts of markers in them.
    const bool areSerials =
        std::none_of(records.cbegin(), records.cend(), [](const FeatureBag::Record &record) {
            return record.serialNumber.contains(QLatin1Char('\n'));
        });
    const QString path = dataFolder().filePath(QStringLiteral("bag"));
    QString detail;
    for (int index = 0; index < records.size(); ++index) {
        require(!names.at(index).contains(QLatin1Char('/')), "serial numbers are no paths");
        require(FeatureFileStore::appendToBag(path, records.at(index).serialNumber,
                                              textOf(records.at(index).file), &detail)
                    == FeatureFileFailure::None,
                "a record is appended");
    }
    QFile file(path);
    QVector<FeatureBag::Record> again;
    QString reason;
    require(file.open(QIODevice::ReadOnly) && FeatureBag::split(file.readAll(), &again, &reason)
                && (again.size() == records.size() || !areSerials) && file.remove(),
            "an appended bag is split again");
    for (int index = 0; areSerials && index < records.size(); ++index) {
        require(again.at(index).serialNumber == records.at(index).serialNumber
                    && textOf(again.at(index).file) == textOf(records.at(index).file),
                "a record comes back");
    }
}

void checkFile(FuzzJob &fuzz, const QByteArray &bytes)
{
    constexpr uint ONE_OF = 8;
    const uint part = CHECK_EVERYTHING ? 0 : qHash(bytes) % ONE_OF;
    const QString text = textOf(bytes);
    FeatureFileDocument document;
    FeatureFileReport report;
    const bool isReadable = FeatureFileChecks::parse(text, &document);
    const FeatureFileDocument *read = isReadable ? &document : nullptr;
    const bool isGood = part < ONE_OF / 2 && FeatureFileChecks::check(fuzz, text, read);
    const bool isApplied =
        (part == 0 || part > 2) && FeatureFileChecks::apply(fuzz, text, read, &report);
    if (isReadable && part <= 1) {
        FeatureFileChecks::rewrite(document);
    }
    if (isGood && isApplied) {
        FeatureFileChecks::compareAgain(fuzz, text, report);
    }
    if (fuzz.device().writes() > 0 && part == 0) {
        FeatureFileChecks::exportAll(fuzz);
    }
}

} // namespace

/// Takes any bytes as a feature file, or a bag of them, checks it against a small device, writes it into it, and exports
/// that device again. A line "#filter A,B" before it is the content of a filter, "#type 4" the type of the device.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const FuzzJob &model = prototype();
    QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<int>(size));
    QByteArray filter;
    QByteArray type;
    const bool hasFilter = takeLine(&bytes, FILTER, &filter);
    const unsigned int number = takeLine(&bytes, TYPE, &type) ? type.trimmed().toUInt() : 1;
    QVector<FeatureBag::Record> records;
    QString reason;
    if (FeatureBag::split(bytes, &records, &reason)) {
        checkBag(records);
    } else {
        require(!reason.isEmpty(), "a refused bag tells why");
        records = {{QString(), bytes}};
    }
    for (const FeatureBag::Record &record : qAsConst(records).mid(0, MOST_RECORDS)) {
        FuzzJob fuzz(model, number);
        if (hasFilter) {
            fuzz.job().filters = filtersOf(filter);
        }
        checkFile(fuzz, record.file);
    }
    return 0;
}
