#include "DeviceFixture.h"
#include "DeviceTaskModule/CameraInterface.h"

#include <QtTest>

#include <cstdlib>
#include <cstring>
#include <limits>

Q_DECLARE_METATYPE(_NODE_INT_VALUE_)

namespace {

constexpr qint64 INT_MIN64 = std::numeric_limits<qint64>::min();
constexpr qint64 INT_MAX64 = std::numeric_limits<qint64>::max();

/// Memory: 16: 81 02 03 f4, 32: 80..01 (8 bytes), 80: 1.5f, 96: "hello"; 0x100000 lies outside.
QByteArray nodes()
{
    return intReg("Reg", 16) + intReg("Outside", 0x100000) + intReg("WriteOnly", 16, "WO") + R"(
<IntReg Name="SignedLittle"><Address>16</Address><Length>4</Length><pPort>Device</pPort><Sign>Signed</Sign><Endianess>LittleEndian</Endianess></IntReg>
<IntReg Name="SignedByte"><Address>19</Address><Length>1</Length><pPort>Device</pPort><Sign>Signed</Sign></IntReg>
<IntReg Name="Whole64"><Address>32</Address><Length>8</Length><pPort>Device</pPort><Endianess>BigEndian</Endianess></IntReg>
<Integer Name="Over64"><pValue>Whole64</pValue></Integer>
<Integer Name="Bounded"><pValue>SignedByte</pValue><Min>-100</Min><Max>100</Max><Inc>4</Inc></Integer>
<Integer Name="PBounds"><pValue>SignedByte</pValue><pMin>SignedByte</pMin><pMax>One</pMax><pInc>One</pInc></Integer>
<Integer Name="ZeroStep"><Value>5</Value><Inc>0</Inc></Integer>
<Integer Name="EmptyRange"><Value>0</Value><Min>0</Min><Max>-1</Max></Integer>
<MaskedIntReg Name="Masked"><Address>16</Address><Length>4</Length><pPort>Device</pPort><LSB>15</LSB><MSB>8</MSB><Endianess>BigEndian</Endianess></MaskedIntReg>
<MaskedIntReg Name="MaskedSigned"><Address>19</Address><Length>1</Length><pPort>Device</pPort><LSB>0</LSB><MSB>3</MSB><Sign>Signed</Sign><Endianess>LittleEndian</Endianess></MaskedIntReg>
<MaskedIntReg Name="Masked64"><Address>32</Address><Length>8</Length><pPort>Device</pPort><LSB>63</LSB><MSB>0</MSB><Endianess>BigEndian</Endianess></MaskedIntReg>
<StructReg Comment="s"><Address>16</Address><Length>4</Length><pPort>Device</pPort><Endianess>LittleEndian</Endianess><StructEntry Name="Entry"><LSB>24</LSB><MSB>31</MSB></StructEntry></StructReg>
<IntSwissKnife Name="Knife"><pVariable Name="A">SignedByte</pVariable><Formula>A*2+1</Formula></IntSwissKnife>
<IntConverter Name="IntConverted"><FormulaTo>FROM/2</FormulaTo><FormulaFrom>TO*2</FormulaFrom><pValue>SignedByte</pValue></IntConverter>
<Integer Name="Indexed"><pIndex>One</pIndex><ValueIndexed Index="0">10</ValueIndexed><ValueIndexed Index="1">20</ValueIndexed><ValueDefault>30</ValueDefault></Integer>
<Boolean Name="Flag"><pValue>SignedByte</pValue><OnValue>-12</OnValue><OffValue>3</OffValue></Boolean>
<Enumeration Name="Choice"><EnumEntry Name="A"><Value>-12</Value></EnumEntry><EnumEntry Name="B"><pIsAvailable>Zero</pIsAvailable><Value>2</Value></EnumEntry>
<EnumEntry Name="C"><pIsImplemented>Zero</pIsImplemented><Value>3</Value></EnumEntry><EnumEntry Name="D"><Value>40</Value></EnumEntry><pValue>SignedByte</pValue></Enumeration>
<Enumeration Name="ChoiceFails"><EnumEntry Name="A"><pIsAvailable>Outside</pIsAvailable><Value>1</Value></EnumEntry><pValue>Reg</pValue></Enumeration>
<IntSwissKnife Name="KnifeFails"><pVariable Name="A">Outside</pVariable><Formula>A*2+1</Formula></IntSwissKnife>
<Integer Name="MaxFails"><Value>1</Value><pMax>Outside</pMax></Integer>
<Integer Name="AvailableFails"><pIsAvailable>Outside</pIsAvailable><Value>1</Value></Integer>
<Integer Name="Away"><pIsAvailable>Zero</pIsAvailable><Value>1</Value></Integer>
<FloatReg Name="FloatReg"><Address>80</Address><Length>4</Length><pPort>Device</pPort><Endianess>BigEndian</Endianess></FloatReg>
<Float Name="FloatBounded"><pValue>FloatReg</pValue><Min>-0.5</Min><Max>99.5</Max></Float>
<Float Name="FloatFree"><Value>2.5</Value></Float>
<Float Name="FloatOfInteger"><pValue>SignedByte</pValue></Float>
<Converter Name="Converted"><FormulaTo>FROM/0.5</FormulaTo><FormulaFrom>TO*0.5</FormulaFrom><pValue>SignedByte</pValue></Converter>
<SwissKnife Name="FloatKnife"><pVariable Name="A">SignedByte</pVariable><Formula>A*0.25</Formula></SwissKnife>
<SwissKnife Name="FloatKnifeFails"><pVariable Name="A">Outside</pVariable><Formula>A*0.25</Formula></SwissKnife>
<StringReg Name="Text"><Address>96</Address><Length>16</Length><pPort>Device</pPort></StringReg>
<StringReg Name="FullText"><Address>96</Address><Length>5</Length><pPort>Device</pPort></StringReg>
<StringReg Name="TextFails"><Address>0x100000</Address><Length>16</Length><pPort>Device</pPort></StringReg>
<String Name="TextOver"><pValue>Text</pValue></String>
<Command Name="Run"><pValue>Reg</pValue><CommandValue>1</CommandValue></Command>
)";
}

std::unique_ptr<DeviceFixture> openDevice()
{
    auto device = std::make_unique<DeviceFixture>(nodes());
    device->m_pState->poke(16, QByteArray::fromHex("810203f4"));
    device->m_pState->poke(32, QByteArray::fromHex("8000000000000001"));
    device->m_pState->poke(80, QByteArray::fromHex("3fc00000"));
    device->m_pState->poke(96, "hello");
    return device;
}

struct EnumRecord
{
    EnumRecord()
        : record(static_cast<_NODE_ENUM_VALUE_ *>(std::calloc(1, NODE_ENUM_RECORD_SIZE)))
    {
    }
    ~EnumRecord() { std::free(record); }
    Q_DISABLE_COPY(EnumRecord)
    _NODE_ENUM_VALUE_ *record;
};

} // namespace

class NodeReadTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void integers_data();
    void integers();
    void floats_data();
    void floats();
    void enumerations();
    void booleansAndStrings();
    void failures_data();
    void failures();
    void memory();
    void codesAsText();
};

void NodeReadTest::integers_data()
{
    QTest::addColumn<_NODE_INT_VALUE_>("expected"); // value, max, min, inc
    const auto row = [](const char *node, qint64 value, qint64 max, qint64 min, qint64 inc = 1) {
        QTest::newRow(node) << _NODE_INT_VALUE_{value, max, min, inc};
    };
    row("Reg", 0x810203f4, 0xFFFFFFFF, 0);
    row("SignedLittle", qint32(0xf4030281), 0x7FFFFFFF, -0x80000000LL);
    row("SignedByte", -12, 127, -128);
    row("Whole64", qint64(0x8000000000000001ULL), INT_MAX64, 0);
    row("Over64", qint64(0x8000000000000001ULL), INT_MAX64, 0);
    row("Bounded", -12, 100, -100, 4);
    row("PBounds", -12, 1, -12);
    row("ZeroStep", 5, INT_MAX64, INT_MIN64);
    row("EmptyRange", 0, -1, 0);
    row("Masked", 0x02, 255, 0);
    row("MaskedSigned", 4, 7, -8);
    row("Masked64", qint64(0x8000000000000001ULL), INT_MAX64, 0);
    row("Entry", 0xf4, 255, 0);
    row("Knife", -23, INT_MAX64, INT_MIN64);
    row("IntConverted", -24, 254, -256);
    row("Indexed", 20, INT_MAX64, INT_MIN64);
    row("Flag", 1, 1, 0);
    row("Choice", -12, 40, -12);
}

void NodeReadTest::integers()
{
    QFETCH(_NODE_INT_VALUE_, expected);
    const auto device = openDevice();
    _NODE_INT_VALUE_ value{};
    int error = -1;
    QVERIFY2(device->task().GetIntegerValue(QTest::currentDataTag(), &value, &error, true, false),
             qPrintable(device->task().GetLastErrorRemark()));
    QCOMPARE(error, 0);
    QCOMPARE(value.value, expected.value);
    QCOMPARE(value.max, expected.max);
    QCOMPARE(value.min, expected.min);
    QCOMPARE(value.inc, expected.inc);
}

void NodeReadTest::floats_data()
{
    QTest::addColumn<float>("value");
    QTest::addColumn<float>("max");
    QTest::addColumn<float>("min");
    constexpr float LIMIT = std::numeric_limits<float>::max();
    QTest::newRow("FloatReg") << 1.5F << LIMIT << -LIMIT;
    QTest::newRow("FloatBounded") << 1.5F << 99.5F << -0.5F;
    QTest::newRow("FloatFree") << 2.5F << LIMIT << -LIMIT;
    QTest::newRow("FloatOfInteger") << -12.0F << 127.0F << -128.0F;
    QTest::newRow("Converted") << -6.0F << 63.5F << -64.0F;
    QTest::newRow("FloatKnife") << -3.0F << LIMIT << -LIMIT;
}

void NodeReadTest::floats()
{
    const auto device = openDevice();
    _NODE_FLOAT_VALUE_ value{};
    QVERIFY(device->task().GetFloatValue(QTest::currentDataTag(), &value, nullptr, true, false));
    QTEST(value.value, "value");
    QTEST(value.max, "max");
    QTEST(value.min, "min");
}

void NodeReadTest::enumerations()
{
    const auto device = openDevice();
    const EnumRecord out;
    QVERIFY(device->task().GetEnumerationValue("Choice", out.record, nullptr, true, false));
    QCOMPARE(out.record->value, quint32(-12));
    QCOMPARE(out.record->count, 2U);
    QCOMPARE(out.record->entries[0], quint32(-12));
    QCOMPARE(out.record->entries[1], 40U);
    QCOMPARE(out.record->entries[2], 0U);
}

void NodeReadTest::booleansAndStrings()
{
    const auto device = openDevice();
    bool flag = false;
    QVERIFY(device->task().GetBooleanValue("Flag", &flag, nullptr, true, false));
    QVERIFY(flag);
    const char *const names[] = {"Text", "FullText", "TextOver"};
    for (const char *name : names) {
        QString text;
        qint64 length = 0;
        QVERIFY(device->task().GetStringValue(name, &text, &length, nullptr, true, false));
        QCOMPARE(text, QString("hello"));
        QCOMPARE(length, qint64(QByteArray(name) == "FullText" ? 5 : 16));
    }
    QString text;
    QVERIFY(device->task().GetStringValue("Text", &text, nullptr, nullptr, true, false));
}

void NodeReadTest::failures_data()
{
    QTest::addColumn<QString>("node");
    QTest::addColumn<QChar>("kind");
    QTest::addColumn<int>("code");
    const auto row = [](const char *node, char kind, quint32 code) {
        QTest::addRow("%s as %c", node, kind) << QString(node) << QChar(kind) << int(code);
    };
    row("Outside", 'i', 0x90006206);
    row("KnifeFails", 'i', 0x90006206);
    row("MaxFails", 'i', 0x90006206);
    row("AvailableFails", 'i', 0x90006104);
    row("FloatKnifeFails", 'f', 0x90006206);
    row("ChoiceFails", 'e', 0x90006206);
    row("TextFails", 's', 0x90006206);
    row("WriteOnly", 'i', 0x90006104);
    row("Away", 'i', 0x90006104);
    row("NoSuchNode", 'i', 0x90006203);
    row("NoSuchNode", 'f', 0x90006203);
    row("Text", 'i', 0x90006203);
    row("Run", 'i', 0x90006203);
    row("Choice", 's', 0x90006203);
    row("Reg", 'f', 0x90006203);
    row("Reg", 'e', 0x90006203);
    row("Reg", 'b', 0x90006203);
    row("Root", 'i', 0x90006203);
    row("", 'i', 0x90006201);
}

void NodeReadTest::failures()
{
    QFETCH(QString, node);
    QFETCH(QChar, kind);
    QFETCH(int, code);
    const auto device = openDevice();
    QCameraTask &task = device->task();
    _NODE_INT_VALUE_ integer{1, 2, 3, 4};
    _NODE_FLOAT_VALUE_ number{1, 2, 3};
    const EnumRecord choice;
    choice.record->value = 11;
    bool flag = true;
    QString text = "kept";
    qint64 length = 9;
    const auto read = [&](int *error) {
        switch (kind.toLatin1()) {
        case 'i':
            return task.GetIntegerValue(node, &integer, error, false, false);
        case 'f':
            return task.GetFloatValue(node, &number, error, false, false);
        case 'e':
            return task.GetEnumerationValue(node, choice.record, error, false, false);
        case 'b':
            return task.GetBooleanValue(node, &flag, error, false, false);
        default:
            return task.GetStringValue(node, &text, &length, error, false, false);
        }
    };
    int error = 0;
    QVERIFY(!read(&error));
    QCOMPARE(error, code);
    QVERIFY(!read(nullptr));
    const QString meaning = CameraInterface::GenerateSDKCode(code, true).section(": ", 1);
    QVERIFY2(task.GetLastErrorRemark().startsWith(meaning), qPrintable(task.GetLastErrorRemark()));
    QVERIFY(integer.value == 1 && integer.max == 2 && integer.min == 3 && integer.inc == 4);
    QVERIFY(number.value == 1 && number.max == 2 && number.min == 3);
    QVERIFY(choice.record->value == 11 && choice.record->count == 0);
    QVERIFY(flag && text == "kept" && length == 9);
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
    QCOMPARE(device->m_pState->peek(0x1000, pattern.size()), pattern);
    QByteArray back(1500, 'x');
    QVERIFY(task.ReadMemory(0x1000, back.data(), back.size(), nullptr));
    QCOMPARE(back, pattern);

    struct Refused
    {
        qint64 address;
        qint64 length;
        int code;
    };
    const Refused refused[] = {{-4, 4, int(0x90006201U)},
                               {0, -1, int(0x90006201U)},
                               {0, qint64(1) << 40, int(0x90006201U)},
                               {0x4000 - 1024, 1500, int(0x90006206U)}};
    for (const Refused &row : refused) {
        back.fill('x');
        int error = 0;
        QVERIFY(!task.ReadMemory(row.address, back.data(), row.length, &error));
        QCOMPARE(error, row.code);
        QCOMPARE(back, QByteArray(1500, 'x'));
    }
    QVERIFY(task.ReadMemory(0, nullptr, 0, nullptr));
}

void NodeReadTest::codesAsText()
{
    QCOMPARE(CameraInterface::GenerateSDKCode(int(0x90006104U), false), QString("0x90006104"));
    QCOMPARE(CameraInterface::GenerateSDKCode(-1, true), QString("0xFFFFFFFF"));
    QCOMPARE(CameraInterface::GenerateSDKCode(5, false), QString("0x00000005"));
    QVERIFY(CameraInterface::GenerateSDKCode(int(0x90006000U), true)
                .startsWith("0x90006000: The device"));
}

QTEST_GUILESS_MAIN(NodeReadTest)
#include "tst_NodeRead.moc"
