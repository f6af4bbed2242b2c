#include "featurefile/FeatureFileStore.h"
#include "tests/featurefile/JobFixture.h"

#include <QtTest>

namespace {

using Thread = VexaFeatureImExThread;
constexpr FeatureFileReason ENDS_THE_JOB = FeatureFileReason(-2);
constexpr int NOT_CONNECTED = 2; // of ArvDeviceError

QByteArray head()
{
    return "<StringReg Name=\"DeviceFirmwareVersion\"><Address>0x100</Address><Length>16</Length>"
           "<AccessMode>RO</AccessMode><pPort>Device</pPort></StringReg>";
}

SimulatedDevices::Simulated deviceOf(const QStringList &features, const QByteArray &elements)
{
    return SimulatedDevices::fromDescription(descriptionOf(features, elements), "jobs",
                                             SimulatorControl::MemoryPattern::Zero);
}

QString feature(const QString &name, const QString &type, const QString &value)
{
    return QString("<Feature><Name>%1</Name><Type>%2</Type><Value>%3</Value></Feature>")
        .arg(name, type, value);
}

QString fileOf(const QString &features)
{
    return "<FeaturesFile version=\"1\"><Features>" + features + "</Features></FeaturesFile>";
}

} // namespace

class tst_FeatureJobs : public QObject
{
    Q_OBJECT
private slots:
    void exportsByKind_data();
    void exportsByKind();
    void appliesOnlyWhatItCanCarry_data();
    void appliesOnlyWhatItCanCarry();
    void keepsAPrefixWhenTheDeviceGoes();
    void tellsWhatCannotBeWritten();
};

void tst_FeatureJobs::exportsByKind_data()
{
    QTest::addColumn<QByteArray>("elements");
    QTest::addColumn<QString>("line"); // empty: left out
    QTest::addColumn<int>("reason"); // of a note, -1 without one
    const QByteArray reg = intReg("R", "0x1000");
    const QByteArray x = integer("X", "<pValue>R</pValue>");
    const auto row = [](const char *name, const QByteArray &elements, const char *line,
                        FeatureFileReason reason = FeatureFileReason(-1)) {
        QTest::newRow(name) << elements << QString(line) << int(reason);
    };
    const auto with = [&](const QByteArray &child) {
        return integer("X", child + "<pValue>R</pValue>") + reg;
    };
    row("Integer", x + reg, "Integer=258");
    row("IntReg", intReg("X", "0x1000"), "IntReg=258");
    row("beyond 32 bits", integer("X", "<Value>5000000000</Value>"), "Integer=5000000000",
        FeatureFileReason::TooLarge);
    row("negative", integer("X", "<Value>-7</Value>"), "Integer=-7");
    row("Boolean", "<Boolean Name=\"X\"><Value>true</Value></Boolean>", "Boolean=1");
    row("Float of few digits", "<Float Name=\"X\"><Value>1e-30</Value></Float>", "Float=0.000000",
        FeatureFileReason::FewDigits);
    row("large Float", "<Float Name=\"X\"><Value>3.4e38</Value></Float>",
        "Float=339999995214436424907732413799364296704.000000");
    row("Command",
        "<Command Name=\"X\"><CommandValue>1</CommandValue><pValue>R</pValue></Command>" + reg, "",
        FeatureFileReason::Command);
    row("IPv4 address", with("<Representation>IPV4Address</Representation>"), "",
        FeatureFileReason::Address);
    row("not implemented",
        with("<pIsImplemented>No</pIsImplemented>") + integer("No", "<Value>0</Value>"), "",
        FeatureFileReason::Condition);
    row("quality without the device's word",
        with("<pIsAvailable>TDCR_Ava</pIsAvailable>") + integer("TDCR_Ava", "<Value>1</Value>"), "",
        FeatureFileReason::Condition);
    row("not available, with a register",
        with("<pIsAvailable>No</pIsAvailable>") + integer("No", "<Value>0</Value>"), "R@4096=258");
    row("MaskedIntReg", intReg("X", "0x1000", "4", "MaskedIntReg", "<Bit>1</Bit>"), "X@4096=258");
    row("neither value nor register", "<SwissKnife Name=\"X\"><Formula>1/0</Formula></SwissKnife>",
        "", FeatureFileReason::Unreadable);
}

void tst_FeatureJobs::exportsByKind()
{
    QFETCH(QByteArray, elements);
    QFETCH(QString, line);
    QFETCH(int, reason);
    JobFixture fixture(deviceOf({"X"}, head() + elements));
    fixture.device.control->poke(0x1000, QByteArray::fromHex("00000102"));
    fixture.device.control->poke(0x100, "V1");
    const FeatureFileLines file = FeatureFileLines::of(fixture.exported());
    QCOMPARE(file.error, QString());
    QString found;
    for (const auto &value : file.values) {
        found += value.type + '=' + value.value;
    }
    for (const auto &value : file.registers) {
        found += value.reg + '@' + QString::number(value.address) + '=' + value.text;
    }
    QCOMPARE(found, line);
    const FeatureFileReport report = fixture.thread->report();
    const auto notes = report.leftOut + report.remarks;
    QCOMPARE(notes.isEmpty() ? -1 : int(notes.first().reason), reason);
}

void tst_FeatureJobs::appliesOnlyWhatItCanCarry_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QByteArray>("memory"); // of the register and the one behind it
    QTest::addColumn<int>("reason");
    const auto row = [](const char *name, const QString &entry, const char *memory,
                        FeatureFileReason reason = FeatureFileReason(-1)) {
        QTest::newRow(name) << entry << QByteArray(memory) << int(reason);
    };
    const auto dump = [](const char *attributes, const char *text) {
        return QString("<ComplexFeature name=\"X\" len=\"4\" reg=\"R\"><RegValue %1 "
                       "variables=\"\">%2</RegValue></ComplexFeature>")
            .arg(attributes, text);
    };
    row("a value", feature("X", "Integer", "7"), "0000000700000000");
    row("beyond 32 bits", feature("X", "Integer", "5000000000"), "0000010200000000",
        FeatureFileReason::NotCarriable);
    row("no number", feature("X", "Integer", "many"), "0000010200000000",
        FeatureFileReason::NotCarriable);
    row("empty", feature("X", "Integer", ""), "0000010200000000", FeatureFileReason::NotCarriable);
    row("no such node", feature("Y", "Integer", "7"), "0000010200000000",
        FeatureFileReason::Refused);
    row("no such type", feature("X", "Register", "7"), "0000010200000000",
        FeatureFileReason::Excluded);
    row("excluded", feature("GevSCDA", "Integer", "7"), "0000010200000000",
        FeatureFileReason::Excluded);
    row("a dump", dump("address=\"4096\"", "9"), "0000000900000000");
    row("more words than the register has", dump("address=\"4096\"", "9,10,11"), "0000000900000000",
        FeatureFileReason::NotTaken);
    row("words that are none", dump("address=\"4096\"", "zz"), "0000010200000000",
        FeatureFileReason::NotCarriable);
    row("a word beyond 32 bits", dump("address=\"4096\"", "4294967305"), "0000010200000000",
        FeatureFileReason::NotCarriable);
    row("an address beyond 64 bits", dump("address=\"18446744073709555712\"", "9"),
        "0000010200000000", ENDS_THE_JOB);
    row("a converted word", dump("address=\"4096\" to=\"12\" from=\"TO/2\"", "6.000000"),
        "0000000c00000000");
    row("misaligned", dump("address=\"4098\"", "9"), "0000010200000000",
        FeatureFileReason::NotWritable);
    row("the device's own name", feature("DeviceUserID", "StringReg", "a"), "0000010200000000",
        FeatureFileReason::Identity);
}

void tst_FeatureJobs::appliesOnlyWhatItCanCarry()
{
    QFETCH(QString, entry);
    QFETCH(QByteArray, memory);
    QFETCH(int, reason);
    JobFixture fixture(deviceOf({"X"}, integer("X", "<pValue>R</pValue>") + intReg("R", "0x1000")));
    fixture.device.control->poke(0x1000, QByteArray::fromHex("00000102"));
    fixture.device.control->setLogging(true);
    const bool ends = reason == int(ENDS_THE_JOB);
    QCOMPARE(fixture.run(Thread::OPERATION_APPLY_TEXT, fileOf(entry)), !ends);
    QCOMPARE(fixture.thread->resultCode(), quint32(ends ? FEATURE_FILE_STOPPED : FEATURE_FILE_OK));
    QCOMPARE(fixture.device.control->peek(0x1000, 8).toHex(), memory);
    const auto notes = fixture.thread->report().notImported;
    const int first = notes.isEmpty() ? -1 : int(notes.first().reason);
    QCOMPARE(ends ? int(ENDS_THE_JOB) : first, reason);
}

void tst_FeatureJobs::keepsAPrefixWhenTheDeviceGoes()
{
    QByteArray elements;
    QStringList names;
    QString entries;
    for (int index = 0; index < 100; ++index) {
        const QString name = QString("X%1").arg(index);
        const QByteArray reg = "R" + QByteArray::number(index);
        names += name;
        elements += integer(name.toUtf8(), "<pValue>" + reg + "</pValue>")
            + intReg(reg, QByteArray::number(0x1000 + 4 * index));
        entries += feature(name, "Integer", "1");
    }
    JobFixture fixture(deviceOf(names, elements));
    fixture.device.control->setFailing(0x1000 + 4 * 50, NOT_CONNECTED);
    QVERIFY(!fixture.run(Thread::OPERATION_APPLY_TEXT, fileOf(entries)));
    QCOMPARE(fixture.thread->resultCode(), quint32(FEATURE_FILE_NO_DEVICE));
    QCOMPARE(fixture.device.control->peek(0x1000, 400),
             QByteArray::fromHex(QByteArray("00000001").repeated(50)) + QByteArray(200, '\0'));
}

void tst_FeatureJobs::tellsWhatCannotBeWritten()
{
    const QTemporaryDir folder;
    QVERIFY(!FeatureFileStore::writeFile(folder.filePath("none/a.vxf"), "text"));
    QVERIFY(!FeatureFileStore::writeFile(folder.path(), "text"));
    QVERIFY(!FeatureFileStore::writeFile(folder.filePath("empty"), QString()));
    QVERIFY(!QFile::exists(folder.filePath("empty")));
    const QString bag = folder.filePath("bag");
    QVERIFY(FeatureFileStore::appendToBag(bag, "1", "a")
            && FeatureFileStore::appendToBag(bag, "2", "b"));
    QFile file(bag);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(),
             QByteArray("\r\n7d93cf56-39fb-424b-94d0-1d10f6057f2f\r\n1"
                        "\r\n34be7aa9-f6a1-4a50-9edf-8205286ad0c9\r\na"
                        "\r\n7d93cf56-39fb-424b-94d0-1d10f6057f2f\r\n2"
                        "\r\n34be7aa9-f6a1-4a50-9edf-8205286ad0c9\r\nb"));
}

QTEST_GUILESS_MAIN(tst_FeatureJobs)
#include "tst_featurejobs.moc"
