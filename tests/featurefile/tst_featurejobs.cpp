#include "tests/featurefile/JobFixture.h"
#include "tests/support/DataTable.h"

namespace {

using Thread = VexaFeatureImExThread;
constexpr FeatureFileReason NO_NOTE = FeatureFileReason(-1);
constexpr FeatureFileReason ENDS_THE_JOB = FeatureFileReason(-2);
constexpr quint64 PLACE = 0x1000;
const char *const MEMORY = "0000010241423e3c3fc00000"; // 258, "AB><", 1.5

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
    void carriesByKind_data();
    void carriesByKind();
    void appliesOnlyWhatItCanCarry_data();
    void appliesOnlyWhatItCanCarry();
    void keepsAPrefixWhenTheDeviceGoes_data();
    void keepsAPrefixWhenTheDeviceGoes();
};

void tst_FeatureJobs::carriesByKind_data()
{
    // The file's line is empty for what is left out; the memory was cleared before it came back.
    const DataTable<QByteArray, QString, QByteArray, int> table("elements", "line", "back",
                                                                "reason");
    const QByteArray reg = intReg("R", "0x1000");
    const auto row = [&table](const char *name, const QByteArray &elements, const char *line,
                              const QByteArray &back, FeatureFileReason reason = NO_NOTE) {
        table(name, elements, line, back.leftJustified(24, '0'), int(reason));
    };
    const QByteArray no = integer("No", "<Value>0</Value>");
    const QByteArray unavailable = "<pIsAvailable>No</pIsAvailable><pValue>R</pValue>";
    const auto with = [&](const QByteArray &child) {
        return integer("X", child + "<pValue>R</pValue>") + reg;
    };
    const auto notNow = [&](const QByteArray &address, const QByteArray &length) {
        return integer("X", unavailable) + no + intReg("R", address, length);
    };
    const auto convertedNow = [&](const QByteArray &length) {
        return "<Float Name=\"X\"><pIsAvailable>No</pIsAvailable><pValue>C</pValue></Float>"
               "<Converter Name=\"C\"><pVariable Name=\"RAW\">R</pVariable>"
               "<FormulaTo>FROM*2</FormulaTo><FormulaFrom>RAW/2</FormulaFrom><pValue>R</pValue>"
               "</Converter>"
            + no + intReg("R", "0x1000", length);
    };
    row("Integer", with(""), "Integer=258", "00000102");
    row("IntReg", intReg("X", "0x1000"), "IntReg=258", "00000102");
    row("beyond 32 bits", integer("X", "<Value>5000000000</Value>"), "Integer=5000000000", "",
        FeatureFileReason::TooLarge);
    row("negative", integer("X", "<Value>-7</Value>"), "Integer=-7", "");
    row("Boolean", "<Boolean Name=\"X\"><OnValue>258</OnValue><pValue>R</pValue></Boolean>" + reg,
        "Boolean=1", "00000102");
    row("Enumeration",
        "<Enumeration Name=\"X\"><EnumEntry Name=\"A\"><Value>258</Value></EnumEntry>"
        "<EnumEntry Name=\"B\"><Value>0</Value></EnumEntry><pValue>R</pValue></Enumeration>"
            + reg,
        "Enumeration=258", "00000102");
    row("StringReg", intReg("X", "0x1004", "4", "StringReg"), "StringReg=AB><", "0000000041423e3c");
    row("Float",
        "<Float Name=\"X\"><pValue>R</pValue></Float><FloatReg Name=\"R\"><Address>0x1008</Address>"
        "<Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort>"
        "<Endianess>BigEndian</Endianess></FloatReg>",
        "Float=1.500000", "00000000000000003fc00000");
    row("Float of few digits", "<Float Name=\"X\"><Value>1e-30</Value></Float>", "Float=0.000000",
        "", FeatureFileReason::FewDigits);
    row("large Float", "<Float Name=\"X\"><Value>3.4e38</Value></Float>",
        "Float=339999995214436424907732413799364296704.000000", "");
    row("Command",
        "<Command Name=\"X\"><CommandValue>1</CommandValue><pValue>R</pValue></Command>" + reg, "",
        "", FeatureFileReason::Command);
    row("IPv4 address", with("<Representation>IPV4Address</Representation>"), "", "",
        FeatureFileReason::Address);
    row("not implemented", with("<pIsImplemented>No</pIsImplemented>") + no, "", "",
        FeatureFileReason::Condition);
    row("quality without the device's word",
        with("<pIsAvailable>TDCR_Ava</pIsAvailable>") + integer("TDCR_Ava", "<Value>1</Value>"), "",
        "", FeatureFileReason::Condition);
    row("MaskedIntReg", intReg("X", "0x1000", "4", "MaskedIntReg", "<Bit>1</Bit>"), "X@4096=258",
        "00000102");
    row("Register", intReg("X", "0x1000", "12", "Register"), "X@4096=33619968,1010713153,49215",
        MEMORY);
    row("neither value nor register", "<SwissKnife Name=\"X\"><Formula>1/0</Formula></SwissKnife>",
        "", "", FeatureFileReason::Unreadable);
    row("not available now", notNow("0x1000", "4"), "R@4096=258", "00000102");
    row("2 bytes, not available now", notNow("0x1004", "2"), "R@4100=16961", "000000004142");
    row("6 bytes, not available now", notNow("0x1000", "6"), "R@4096=33619968,16961",
        "000001024142");
    row("8 bytes, not available now", notNow("0x1000", "8"), "R@4096=33619968,1010713153",
        "0000010241423e3c");
    row("misaligned, not available now", notNow("0x1002", "4"), "R@4098=16924994", "");
    row("converted, not available now", convertedNow("4"), "R@4096=129.000000", "00000102");
    row("converted from two words", convertedNow("8"), "R@4096=16809984.000000", "00000102",
        FeatureFileReason::FurtherWords);
    row("bits of a structure, not available now",
        integer("X", "<pIsAvailable>No</pIsAvailable><pValue>E</pValue>") + no
            + "<StructReg><Address>0x1000</Address><Length>4</Length><AccessMode>RW</AccessMode>"
              "<pPort>Device</pPort><Endianess>BigEndian</Endianess>"
              "<StructEntry Name=\"E\"><LSB>31</LSB><MSB>24</MSB></StructEntry></StructReg>",
        "@4096=258", "00000102");
    row("array behind a selector",
        integer("X", "<pValue>R</pValue>")
            + intReg("R", "<Address>0x1000</Address><pAddress>K</pAddress>")
            + integer(
                "S", "<Value>1</Value><Min>0</Min><Max>2</Max><Inc>1</Inc><pSelected>X</pSelected>")
            + "<IntSwissKnife Name=\"K\"><pVariable Name=\"V\">S</pVariable><Formula>V * "
              "4</Formula>"
              "</IntSwissKnife>",
        "Integer=1 R@4096=258 R@4100=1094860348 R@4104=1069547520", MEMORY);
}

void tst_FeatureJobs::carriesByKind()
{
    QFETCH(QByteArray, elements);
    QFETCH(QString, line);
    QFETCH(QByteArray, back);
    QFETCH(int, reason);
    const QStringList features =
        elements.contains("\"S\"") ? QStringList{"S", "X"} : QStringList{"X"};
    JobFixture fixture(deviceOf(features, head() + elements));
    const QByteArray memory = QByteArray::fromHex(MEMORY);
    fixture.device.control->setAlignedOnly(true);
    fixture.device.control->poke(PLACE, memory);
    fixture.device.control->poke(0x100, "V1");
    const QByteArray bytes = fixture.exported();
    const FeatureFileLines file = FeatureFileLines::of(bytes);
    QCOMPARE(file.error, QString());
    QStringList found;
    for (const auto &value : file.values) {
        found += value.type + '=' + value.value;
    }
    for (const auto &value : file.registers) {
        found += value.reg + '@' + QString::number(value.address) + '=' + value.text;
    }
    QCOMPARE(found.join(' '), line);
    const FeatureFileReport report = fixture.thread->report();
    const auto notes = report.leftOut + report.remarks;
    QCOMPARE(notes.isEmpty() ? int(NO_NOTE) : int(notes.first().reason), reason);
    fixture.device.control->poke(PLACE, QByteArray(memory.size(), '\0'));
    QVERIFY(fixture.run(Thread::OPERATION_APPLY_TEXT, QString::fromUtf8(bytes)));
    QCOMPARE(fixture.device.control->peek(PLACE, quint32(memory.size())).toHex(), back);
}

void tst_FeatureJobs::appliesOnlyWhatItCanCarry_data()
{
    // The memory is that of the register and the one behind it.
    const DataTable<QString, QByteArray, int> table("entry", "memory", "reason");
    const auto row = [&table](const char *name, const QString &entry, const char *memory,
                              FeatureFileReason reason = NO_NOTE) {
        table(name, entry, memory, int(reason));
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
    row("overwritten by a later row, which is taken",
        dump("address=\"4096\"", "9") + dump("address=\"4096\"", "10").replace("\"X\"", "\"Y\""),
        "0000000a00000000", FeatureFileReason::NotTaken);
    row("overwritten and read only",
        dump("address=\"4096\"", "258").replace("reg=\"R\"", "reg=\"RO\"")
            + feature("X", "Integer", "7"),
        "0000000700000000", FeatureFileReason::NotWritable);
    row("read only, and follows what is written",
        dump("address=\"4096\"", "7").replace("reg=\"R\"", "reg=\"RO\"")
            + feature("X", "Integer", "7"),
        "0000000700000000");
    row("the device's own name", feature("DeviceUserID", "StringReg", "a"), "0000010200000000",
        FeatureFileReason::Identity);
}

void tst_FeatureJobs::appliesOnlyWhatItCanCarry()
{
    QFETCH(QString, entry);
    QFETCH(QByteArray, memory);
    QFETCH(int, reason);
    const QByteArray reg = intReg("R", "0x1000");
    JobFixture fixture(
        deviceOf({"X"},
                 integer("X", "<pValue>R</pValue>") + reg
                     + QByteArray(reg).replace("\"R\"", "\"RO\"").replace("RW", "RO")));
    fixture.device.control->poke(0x1000, QByteArray::fromHex("00000102"));
    fixture.device.control->setLogging(true);
    const bool ends = reason == int(ENDS_THE_JOB);
    QCOMPARE(fixture.run(Thread::OPERATION_APPLY_TEXT, fileOf(entry)), !ends);
    QCOMPARE(fixture.thread->resultCode(), quint32(ends ? FEATURE_FILE_STOPPED : FEATURE_FILE_OK));
    QCOMPARE(fixture.device.control->peek(0x1000, 8).toHex(), memory);
    const auto notes = fixture.thread->report().notImported;
    const int first = int(notes.isEmpty() ? NO_NOTE : notes.first().reason);
    QVERIFY(notes.size() <= 1);
    QCOMPARE(ends ? int(ENDS_THE_JOB) : first, reason);
}

void tst_FeatureJobs::keepsAPrefixWhenTheDeviceGoes_data()
{
    const DataTable<int> row("entry");
    row("at a Boolean", 10);
    row("between sweeps", 50);
    row("at a number", 60);
    row("at a dump", 80);
}

void tst_FeatureJobs::keepsAPrefixWhenTheDeviceGoes()
{
    QFETCH(int, entry);
    constexpr int ENTRIES = 100;
    QByteArray elements;
    QStringList names;
    QString entries;
    QVector<int> sweeps[4];
    for (int index = 0; index < ENTRIES; ++index) {
        const QString name = QString("X%1").arg(index);
        const QByteArray number = QByteArray::number(index);
        const int kind = index % 4; // the sweeps of the file's entries come the other way round
        const QByteArray tag = kind == 3 ? "Boolean" : kind == 2 ? "Enumeration" : "Integer";
        names += name;
        sweeps[3 - kind].append(index);
        elements += "<" + tag + " Name=\"X" + number + "\">"
            + (kind == 2 ? "<EnumEntry Name=\"A\"><Value>0</Value></EnumEntry>"
                           "<EnumEntry Name=\"B\"><Value>1</Value></EnumEntry>"
                         : "")
            + "<pValue>R" + number + "</pValue></" + tag + ">"
            + intReg("R" + number, QByteArray::number(PLACE + 4 * quint64(index)));
        entries += kind == 0
            ? QString("<ComplexFeature name=\"%1\" len=\"4\" reg=\"R%2\"><RegValue address=\"%3\" "
                      "variables=\"\">1</RegValue></ComplexFeature>")
                  .arg(name)
                  .arg(index)
                  .arg(PLACE + 4 * quint64(index))
            : feature(name, tag, "1");
    }
    const QVector<int> order = sweeps[0] + sweeps[1] + sweeps[2] + sweeps[3];
    const auto placeOf = [&](int at) { return PLACE + 4 * quint64(order.at(at)); };
    int accesses = 0;
    {
        JobFixture whole(deviceOf(names, elements));
        whole.device.control->setLogging(true);
        QVERIFY(whole.run(Thread::OPERATION_APPLY_TEXT, fileOf(entries)));
        const auto log = whole.device.control->accessLog();
        while (log.at(accesses).address != placeOf(entry)) {
            ++accesses;
        }
    }
    JobFixture fixture(deviceOf(names, elements));
    fixture.device.control->vanishAfter(accesses);
    QVERIFY(!fixture.run(Thread::OPERATION_APPLY_TEXT, fileOf(entries)));
    QCOMPARE(fixture.thread->resultCode(), quint32(FEATURE_FILE_NO_DEVICE));
    for (int at = 0; at < ENTRIES; ++at) {
        QCOMPARE(fixture.device.control->peek(placeOf(at), 4).toHex(),
                 QByteArray(at < entry ? "00000001" : "00000000"));
    }
}

QTEST_GUILESS_MAIN(tst_FeatureJobs)
#include "tst_featurejobs.moc"
