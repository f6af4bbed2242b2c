#include "DeviceFixture.h"
#include "DeviceTaskModule/CameraInterface.h"

#include <QtTest>

#include <cmath>
#include <limits>

namespace {

constexpr qint64 INT_MIN64 = std::numeric_limits<qint64>::min();
constexpr qint64 INT_MAX64 = std::numeric_limits<qint64>::max();

/// Memory: 16: 81 02 03 f4, 32: 80..01 (8 bytes), 80: 1.5f, 96: "hello"; 0x4000, 0x100000 and the end lie outside.
QByteArray nodes()
{
    return intReg("Reg", 16) + intReg("Outside", 0x100000) + R"(
<IntReg Name="SignedLittle"><Address>16</Address><Length>4</Length><pPort>Device</pPort><Sign>Signed</Sign><Endianess>LittleEndian</Endianess></IntReg>
<IntReg Name="SignedByte"><Address>19</Address><Length>1</Length><pPort>Device</pPort><Sign>Signed</Sign></IntReg>
<IntReg Name="Whole64"><Address>32</Address><Length>8</Length><pPort>Device</pPort><Endianess>BigEndian</Endianess></IntReg>
<Integer Name="Bounded"><pValue>SignedByte</pValue><Min>-100</Min><Max>100</Max><Inc>4</Inc></Integer>
<Integer Name="PBounds"><pValue>SignedByte</pValue><pMin>SignedByte</pMin><pMax>One</pMax><pInc>One</pInc></Integer>
<Integer Name="StepOfNode"><Value>5</Value><pInc>Zero</pInc><Max>0xFFFFFFFFFFFFFFFF</Max></Integer>
<Integer Name="EmptyRange"><Value>0</Value><Min>0</Min><Max>-1</Max></Integer>
<MaskedIntReg Name="Masked"><Address>16</Address><Length>4</Length><pPort>Device</pPort><LSB>15</LSB><MSB>8</MSB><Endianess>BigEndian</Endianess></MaskedIntReg>
<MaskedIntReg Name="MaskedSigned"><Address>19</Address><Length>1</Length><pPort>Device</pPort><LSB>0</LSB><MSB>3</MSB><Sign>Signed</Sign><Endianess>LittleEndian</Endianess></MaskedIntReg>
<StructReg Comment="s"><Address>16</Address><Length>4</Length><pPort>Device</pPort><Endianess>LittleEndian</Endianess><StructEntry Name="Entry"><LSB>24</LSB><MSB>31</MSB></StructEntry></StructReg>
<IntSwissKnife Name="Knife"><pVariable Name="A">SignedByte</pVariable><Formula>A*2+1</Formula></IntSwissKnife>
<IntConverter Name="IntConverted"><FormulaTo>FROM/2</FormulaTo><FormulaFrom>TO*2</FormulaFrom><pValue>SignedByte</pValue></IntConverter>
<Boolean Name="Flag"><pValue>SignedByte</pValue><OnValue>-12</OnValue><OffValue>3</OffValue></Boolean>
<Enumeration Name="Choice"><EnumEntry Name="A"><Value>-12</Value></EnumEntry><EnumEntry Name="B"><pIsAvailable>Zero</pIsAvailable><Value>2</Value></EnumEntry>
<EnumEntry Name="C"><pIsImplemented>Zero</pIsImplemented><Value>3</Value></EnumEntry><EnumEntry Name="D"><Value>40</Value></EnumEntry><pValue>SignedByte</pValue></Enumeration>
<Enumeration Name="ChoiceFails"><EnumEntry Name="A"><pIsAvailable>Outside</pIsAvailable><Value>1</Value></EnumEntry><pValue>Reg</pValue></Enumeration>
<IntSwissKnife Name="KnifeFails"><pVariable Name="A">Outside</pVariable><Formula>A*2+1</Formula></IntSwissKnife>
<Integer Name="MaxFails"><Value>1</Value><pMax>Outside</pMax></Integer>
<Integer Name="Away"><pIsAvailable>Zero</pIsAvailable><Value>1</Value></Integer>
<FloatReg Name="FloatReg"><Address>80</Address><Length>4</Length><pPort>Device</pPort><Endianess>BigEndian</Endianess></FloatReg>
<Float Name="FloatBounded"><pValue>FloatReg</pValue><Min>-0.5</Min><Max>99.5</Max></Float>
<Float Name="FloatOfInteger"><pValue>SignedByte</pValue></Float>
<Converter Name="Converted"><FormulaTo>FROM/0.5</FormulaTo><FormulaFrom>TO*0.5</FormulaFrom><pValue>SignedByte</pValue></Converter>
<StringReg Name="Text"><Address>96</Address><Length>16</Length><pPort>Device</pPort></StringReg>
<StringReg Name="FullText"><Address>96</Address><Length>5</Length><pPort>Device</pPort></StringReg>
<String Name="TextOver"><pValue>Text</pValue></String>
<Command Name="Run"><pValue>Reg</pValue><CommandValue>1</CommandValue></Command>
)";
}

/// Memory: 40: 01..80 (8 bytes), 48: 2^53 + 1 (8 bytes).
const char *const FORMULAS = R"(
<IntReg Name="Little64"><Address>40</Address><Length>8</Length><pPort>Device</pPort></IntReg>
<IntReg Name="Big"><Address>48</Address><Length>8</Length><pPort>Device</pPort><Sign>Signed</Sign><Endianess>BigEndian</Endianess></IntReg>
<Integer Name="Nine"><Value>9</Value></Integer>
<IntSwissKnife Name="BigKnife"><pVariable Name="A">Big</pVariable><Formula>A*3-A*2</Formula></IntSwissKnife>
<IntSwissKnife Name="Lazy"><pVariable Name="D">Zero</pVariable><pVariable Name="A">Outside</pVariable><Formula>(D=0)?5:(A/D)</Formula></IntSwissKnife>
<IntSwissKnife Name="Divides"><pVariable Name="D">Zero</pVariable><Formula>1/D</Formula></IntSwissKnife>
<IntSwissKnife Name="OverDivides"><pVariable Name="A">Divides</pVariable><Formula>A+1</Formula></IntSwissKnife>
<SwissKnife Name="Infinite"><pVariable Name="D">Zero</pVariable><Formula>LN(D)</Formula></SwissKnife>
<IntSwissKnife Name="Huge"><Formula>1e300</Formula></IntSwissKnife>
<Enumeration Name="ChoiceDivides"><EnumEntry Name="A"><pIsAvailable>Divides</pIsAvailable><Value>1</Value></EnumEntry>
<EnumEntry Name="B"><Value>-12</Value></EnumEntry><pValue>SignedByte</pValue></Enumeration>
<IntSwissKnife Name="OfBoolean"><pVariable Name="F">Flag</pVariable><Formula>F?7:9</Formula></IntSwissKnife>
<IntSwissKnife Name="OfEntry"><pVariable Name="C">Choice</pVariable><pVariable Name="C.Enum.D">Choice</pVariable><Formula>C.Enum.D+C</Formula></IntSwissKnife>
<IntSwissKnife Name="OfBounds"><pVariable Name="B.Max">Bounded</pVariable><pVariable Name="B.Min">Bounded</pVariable><pVariable Name="B.Inc">Bounded</pVariable>
<Formula>B.Max-B.Min+B.Inc</Formula></IntSwissKnife>
<IntSwissKnife Name="OfExpressions"><pVariable Name="A">SignedByte</pVariable><Constant Name="K">4</Constant><Expression Name="X">A*K</Expression><Formula>X+X</Formula></IntSwissKnife>
<IntReg Name="LengthNine"><Address>19</Address><pLength>Nine</pLength><pPort>Device</pPort></IntReg>
<IntReg Name="AddressByLength"><Address>12</Address><pIndex>One</pIndex><Length>4</Length><pPort>Device</pPort><Endianess>BigEndian</Endianess></IntReg>
<Integer Name="Minus"><Value>-4</Value></Integer>
<Integer Name="Over63"><Value>9223372036854775807</Value></Integer>
<IntReg Name="AddressReduced"><Address>23</Address><pAddress>Minus</pAddress><Length>1</Length><pPort>Device</pPort></IntReg>
<IntReg Name="AddressTooLarge"><Address>0xFFFFFFFFFFFFFFFC</Address><pAddress>Nine</pAddress><Length>4</Length><pPort>Device</pPort></IntReg>
<IntReg Name="AddressAtTheEnd"><Address>0xFFFFFFFFFFFFFFFC</Address><Length>4</Length><pPort>Device</pPort></IntReg>
<IntReg Name="IndexTooLarge"><pIndex Offset="0x4000000000000000">Nine</pIndex><Length>4</Length><pPort>Device</pPort></IntReg>
<IntReg Name="LengthOver63"><Address>0</Address><pLength>Over63</pLength><pPort>Device</pPort></IntReg>
<IntReg Name="AddressByFormula"><Address>17</Address><IntSwissKnife Name="Inner"><pVariable Name="A">One</pVariable><Formula>A*2</Formula></IntSwissKnife><Length>1</Length><pPort>Device</pPort></IntReg>
<Integer Name="IndexedNode"><pIndex>One</pIndex><pValueIndexed Index="1">SignedByte</pValueIndexed><ValueDefault>30</ValueDefault></Integer>
<IntConverter Name="Falling"><FormulaTo>0-FROM</FormulaTo><FormulaFrom>0-TO</FormulaFrom><pValue>SignedByte</pValue></IntConverter>
<Converter Name="NoUpperEnd"><FormulaTo>FROM</FormulaTo><FormulaFrom>1/(TO-127)</FormulaFrom><pValue>SignedByte</pValue></Converter>
<Port Name="ChunkPort"><ChunkID>1</ChunkID></Port>
<IntReg Name="Chunk"><Address>0</Address><Length>4</Length><pPort>ChunkPort</pPort></IntReg>
<IntSwissKnife Name="OfChunk"><pVariable Name="A">Chunk</pVariable><Formula>A+1</Formula></IntSwissKnife>
<Integer Name="Broken"><pValue>NoSuchNode</pValue></Integer>
)";

QString textOf(const _NODE_INT_VALUE_ &v)
{
    return QStringLiteral("%1, %2 to %3 by %4").arg(v.value).arg(v.min).arg(v.max).arg(v.inc);
}

QString textOf(const _NODE_FLOAT_VALUE_ &v)
{
    return QStringLiteral("%1, %2 to %3").arg(v.value).arg(v.min).arg(v.max);
}

/// What a read of this kind (i, f, e, b, s) leaves in the caller's record, behind "refused" when it fails.
QString answerOf(QCameraTask &task, const QString &node, QChar kind, int *error)
{
    bool ok = false;
    QString answer;
    if (kind == 'i') {
        _NODE_INT_VALUE_ value{4, 3, 2, 1};
        ok = task.GetIntegerValue(node, &value, error, false, false);
        answer = textOf(value);
    } else if (kind == 'f') {
        _NODE_FLOAT_VALUE_ value{4, 3, 2};
        ok = task.GetFloatValue(node, &value, error, false, false);
        answer = textOf(value);
    } else if (kind == 'e') {
        const auto value = std::make_unique<_NODE_ENUM_VALUE_>();
        value->value = 4;
        ok = task.GetEnumerationValue(node, value.get(), error, false, false);
        answer = QString::number(qint32(value->value)) + " of";
        for (quint32 i = 0; i < value->count; ++i) {
            answer += ' ' + QString::number(qint32(value->entries[i]));
        }
    } else if (kind == 'b') {
        bool value = true;
        ok = task.GetBooleanValue(node, &value, error, false, false);
        answer = QVariant(value).toString();
    } else {
        QString value = "kept";
        qint64 length = 4;
        ok = task.GetStringValue(node, &value, &length, error, false, false);
        answer = QStringLiteral("%1 of %2").arg(value).arg(length);
    }
    return ok ? answer : "refused " + answer;
}

std::unique_ptr<DeviceFixture> openDevice()
{
    auto device = std::make_unique<DeviceFixture>(nodes() + FORMULAS);
    SimulatorControl &control = device->control();
    for (const quint64 outside : {quint64(0x100000), quint64(0x4000), ~quint64(3)}) {
        control.setFailing(outside, ARV_DEVICE_ERROR_PROTOCOL_ERROR_INVALID_ADDRESS);
    }
    control.poke(40, QByteArray::fromHex("0100000000000080"));
    control.poke(48, QByteArray::fromHex("0020000000000001"));
    control.poke(16, QByteArray::fromHex("810203f4"));
    control.poke(32, QByteArray::fromHex("8000000000000001"));
    control.poke(80, QByteArray::fromHex("3fc00000"));
    control.poke(96, "hello");
    return device;
}

} // namespace

class NodeReadTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void answers_data();
    void answers();
    void failures_data();
    void failures();
    void notFinite_data();
    void notFinite();
    void memory();
};

void NodeReadTest::initTestCase()
{
    // One node of the description is faulty, which is told at each opening.
    QLoggingCategory::setFilterRules("vexa.devicetask.description=false");
}

void NodeReadTest::answers_data()
{
    QTest::addColumn<QChar>("kind");
    QTest::addColumn<QString>("answer");
    const auto row = [](const char *node, qint64 value, qint64 max, qint64 min, qint64 inc = 1) {
        QTest::newRow(node) << QChar('i') << textOf(_NODE_INT_VALUE_{value, max, min, inc});
    };
    const auto real = [](const char *node, float value, float max, float min) {
        QTest::newRow(node) << QChar('f') << textOf(_NODE_FLOAT_VALUE_{value, max, min});
    };
    const auto other = [](const char *node, char kind, const char *answer) {
        QTest::newRow(node) << QChar(kind) << QString(answer);
    };
    row("Reg", 0x810203f4, 0xFFFFFFFF, 0);
    row("SignedByte", -12, 127, -128);
    row("Whole64", qint64(0x8000000000000001ULL), INT_MAX64, 0);
    row("Bounded", -12, 100, -100, 4);
    row("PBounds", -12, 1, -12);
    row("StepOfNode", 5, INT_MAX64, INT_MIN64);
    row("EmptyRange", 0, -1, 0);
    row("Masked", 0x02, 255, 0);
    row("MaskedSigned", 4, 7, -8);
    row("Entry", 0xf4, 255, 0);
    row("Knife", -23, INT_MAX64, INT_MIN64);
    row("IntConverted", -24, 254, -256);
    row("Little64", qint64(0x8000000000000001ULL), INT_MAX64, 0);
    row("BigKnife", 9007199254740993, INT_MAX64, INT_MIN64);
    row("Lazy", 5, INT_MAX64, INT_MIN64);
    row("OfBoolean", 7, INT_MAX64, INT_MIN64);
    row("OfEntry", 28, INT_MAX64, INT_MIN64);
    row("OfBounds", 204, INT_MAX64, INT_MIN64);
    row("OfExpressions", -96, INT_MAX64, INT_MIN64);
    row("AddressByLength", 0x810203f4, 0xFFFFFFFF, 0);
    row("AddressByFormula", 0xf4, 255, 0);
    row("AddressReduced", 0xf4, 255, 0);
    row("IndexedNode", -12, 127, -128);
    row("Falling", 12, 128, -127);
    constexpr float LIMIT = std::numeric_limits<float>::max();
    real("FloatBounded", 1.5F, 99.5F, -0.5F);
    real("FloatOfInteger", -12.0F, 127.0F, -128.0F);
    real("Converted", -6.0F, 63.5F, -64.0F);
    real("NoUpperEnd", static_cast<float>(-1.0 / 139), LIMIT, -LIMIT);
    other("Choice", 'e', "-12 of -12 40");
    other("ChoiceDivides", 'e', "-12 of -12"); // a condition without a value takes its entry away
    other("ChoiceFails", 'e', "-2130574348 of"); // and so does one that the device refuses
    other("Flag", 'b', "true");
    other("Text", 's', "hello of 16");
    other("FullText", 's', "hello of 5");
    other("TextOver", 's', "hello of 16");
}

void NodeReadTest::answers()
{
    QFETCH(QChar, kind);
    const auto device = openDevice();
    int error = -1;
    QTEST(answerOf(device->task(), QTest::currentDataTag(), kind, &error), "answer");
    QCOMPARE(error, 0);
}

void NodeReadTest::failures_data()
{
    QTest::addColumn<QString>("node");
    QTest::addColumn<QChar>("kind");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char *node, char kind, quint32 code, const char *reason = "") {
        QTest::addRow("%s as %c", node, kind)
            << QString(node) << QChar(kind) << int(code) << QString(reason);
    };
    row("Outside", 'i', 0x90006206);
    row("KnifeFails", 'i', 0x90006206, "(Outside: ");
    row("MaxFails", 'i', 0x90006206);
    row("Away", 'i', 0x90006104);
    row("NoSuchNode", 'i', 0x90006203);
    row("Choice", 's', 0x90006203);
    row("Reg", 'f', 0x90006203);
    row("Reg", 'e', 0x90006203);
    row("Reg", 'b', 0x90006203);
    row("Root", 'i', 0x90006203);
    row("", 'i', 0x90006201);
    row("OverDivides", 'i', 0x90006204, "(Divides: division by zero)");
    row("Infinite", 'f', 0x90006204);
    row("Huge", 'i', 0x90006204, "(Huge: the result does not fit into 64 bits)");
    row("LengthNine", 'i', 0x90006205, "(LengthNine: its length of 9 bytes does not fit its kind)");
    row("LengthOver63", 'i', 0x90006205);
    row("AddressTooLarge", 'i', 0x90006205);
    row("IndexTooLarge", 'i', 0x90006205);
    row("AddressAtTheEnd", 'i', 0x90006206);
    row("Broken", 'i', 0x90006205);
    row("OfChunk", 'i', 0x90006104);
}

void NodeReadTest::failures()
{
    QFETCH(QString, node);
    QFETCH(QChar, kind);
    QFETCH(int, code);
    QFETCH(QString, reason);
    const auto device = openDevice();
    QCameraTask &task = device->task();
    static const QMap<QChar, QString> KEPT{{'i', "refused 4, 2 to 3 by 1"},
                                           {'f', "refused 4, 2 to 3"},
                                           {'e', "refused 4 of"},
                                           {'b', "refused true"},
                                           {'s', "refused kept of 4"}};
    int error = 0;
    QCOMPARE(answerOf(task, node, kind, &error), KEPT.value(kind));
    QCOMPARE(error, code);
    QCOMPARE(answerOf(task, node, kind, nullptr), KEPT.value(kind));
    const QString meaning = CameraInterface::GenerateSDKCode(code, true).section(": ", 1);
    const QString remark = task.GetLastErrorRemark();
    QVERIFY2(remark.startsWith(meaning) && remark.contains(reason), qPrintable(remark));
}

void NodeReadTest::notFinite_data()
{
    QTest::addColumn<QByteArray>("bytes");
    for (const char *bytes : {"7fc00000", "7f800000", "fff8000000000000", "fff0000000000000"}) {
        QTest::newRow(bytes) << QByteArray::fromHex(bytes);
    }
}

/// What the device said, or nothing; but no number that it did not say.
void NodeReadTest::notFinite()
{
    QFETCH(QByteArray, bytes);
    DeviceFixture device(
        "<FloatReg Name='N'><Address>0</Address><Length>" + QByteArray::number(bytes.size())
        + "</Length><pPort>Device</pPort><Endianess>BigEndian</Endianess></FloatReg>"
          "<Integer Name='I'><pValue>N</pValue></Integer>"
          "<Float Name='F'><Value>1</Value><pMax>N</pMax></Float>"
          "<SwissKnife Name='K'><pVariable Name='A'>N</pVariable>"
          "<Formula>A*2</Formula></SwissKnife>");
    device.control().poke(0, bytes);
    _NODE_FLOAT_VALUE_ value{};
    _NODE_INT_VALUE_ integer{};
    if (device.task().GetFloatValue("N", &value, nullptr, true, false)) {
        QVERIFY(!std::isfinite(value.value));
    }
    if (device.task().GetFloatValue("F", &value, nullptr, true, false)) {
        QCOMPARE(value.value, 1.0F);
    }
    QVERIFY(!device.task().GetIntegerValue("I", &integer, nullptr, true, false));
    QVERIFY(!device.task().GetFloatValue("K", &value, nullptr, true, false));
}

void NodeReadTest::memory()
{
    const auto device = openDevice();
    QCameraTask &task = device->task();
    QByteArray pattern(1500, '\0');
    for (int i = 0; i < pattern.size(); ++i) {
        pattern[i] = static_cast<char>(i * 7);
    }
    QVERIFY(task.WriteMemory(0x1000, pattern.constData(), pattern.size(), nullptr));
    QCOMPARE(device->control().peek(0x1000, 1500), pattern);
    QByteArray back(1500, 'x');
    QVERIFY(task.ReadMemory(0x1000, back.data(), back.size(), nullptr));
    QCOMPARE(back, pattern);

    const std::tuple<qint64, qint64, quint32> refused[] = {{-4, 4, 0x90006201},
                                                           {0, -1, 0x90006201},
                                                           {0, qint64(1) << 40, 0x90006201},
                                                           {0x4000 - 1024, 1500, 0x90006206}};
    for (const auto &[address, length, code] : refused) {
        back.fill('x');
        int error = 0;
        QVERIFY(!task.ReadMemory(address, back.data(), length, &error));
        QCOMPARE(quint32(error), code);
        QCOMPARE(back, QByteArray(1500, 'x'));
    }
    QVERIFY(task.ReadMemory(0, nullptr, 0, nullptr));
}

QTEST_GUILESS_MAIN(NodeReadTest)
#include "tst_NodeRead.moc"
