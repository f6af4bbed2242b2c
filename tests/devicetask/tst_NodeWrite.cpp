#include "DeviceFixture.h"

#include <QtTest>

#include <limits>

namespace {

QByteArray nodes()
{
    return intReg("Reg", 16) + intReg("WriteOnly", 16, "WO") + intReg("ReadOnly", 16, "RO") + R"(
<IntReg Name="Whole64"><Address>32</Address><Length>8</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Endianess>BigEndian</Endianess></IntReg>
<Integer Name="Locked"><pIsLocked>One</pIsLocked><pValue>Reg</pValue></Integer>
<Integer Name="Over64"><pValue>Whole64</pValue></Integer>
<Integer Name="Positive64"><pValue>Whole64</pValue><Min>0</Min></Integer>
<Integer Name="Stepped"><pValue>Reg</pValue><Min>1</Min><Max>99</Max><Inc>4</Inc></Integer>
<Integer Name="EmptyRange"><pValue>Reg</pValue><Min>0</Min><Max>-1</Max></Integer>
<MaskedIntReg Name="Masked"><Address>16</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><LSB>15</LSB><MSB>8</MSB><Endianess>BigEndian</Endianess></MaskedIntReg>
<StructReg Comment="s"><Address>16</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Endianess>LittleEndian</Endianess><StructEntry Name="Entry"><Bit>31</Bit></StructEntry></StructReg>
<Boolean Name="Flag"><pValue>WriteOnly</pValue><OnValue>7</OnValue><OffValue>3</OffValue></Boolean>
<Enumeration Name="Choice"><EnumEntry Name="A"><Value>1</Value></EnumEntry><EnumEntry Name="B"><pIsAvailable>Zero</pIsAvailable><Value>2</Value></EnumEntry><EnumEntry Name="Last"><Value>0xFFFFFFFF</Value></EnumEntry><pValue>Reg</pValue></Enumeration>
<FloatReg Name="FloatReg"><Address>16</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Endianess>BigEndian</Endianess></FloatReg>
<Float Name="Tenth"><pValue>FloatReg</pValue><Min>-0.1</Min><Max>0.1</Max></Float>
<Converter Name="Converted"><FormulaTo>FROM/0.5</FormulaTo><FormulaFrom>TO*0.5</FormulaFrom><pValue>Reg</pValue></Converter>
<StringReg Name="Text"><Address>16</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort></StringReg>
<Integer Name="NoStep"><pValue>Reg</pValue><pInc>Zero</pInc></Integer>
<Command Name="Run"><pValue>WriteOnly</pValue><CommandValue>0x55</CommandValue></Command>
<Command Name="RunByNode"><pValue>WriteOnly</pValue><pCommandValue>Nine</pCommandValue></Command>
<Integer Name="Nine"><Value>9</Value></Integer>
<MaskedIntReg Name="MaskedLittle"><Address>16</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><LSB>4</LSB><MSB>11</MSB></MaskedIntReg>
<MaskedIntReg Name="MaskedSigned"><Address>16</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><LSB>3</LSB><MSB>0</MSB><Sign>Signed</Sign><Endianess>BigEndian</Endianess></MaskedIntReg>
<MaskedIntReg Name="Upper63"><Address>32</Address><Length>8</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><LSB>62</LSB><MSB>0</MSB><Sign>Signed</Sign><Endianess>BigEndian</Endianess></MaskedIntReg>
<IntReg Name="ThreeBytes"><Address>16</Address><Length>3</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Sign>Signed</Sign></IntReg>
<IntReg Name="Byte"><Address>16</Address><Length>1</Length><AccessMode>RW</AccessMode><pPort>Device</pPort></IntReg>
<Integer Name="WiderThanRegister"><pValue>Byte</pValue><Min>0</Min><Max>1000</Max></Integer>
<Integer Name="Copied"><pValue>Reg</pValue><pValueCopy>Whole64</pValueCopy></Integer>
<IntConverter Name="BigConverter"><FormulaTo>FROM*3-FROM*2</FormulaTo><FormulaFrom>TO</FormulaFrom><pValue>Whole64</pValue></IntConverter>
<IntConverter Name="NoWayBack"><FormulaTo>FROM/0</FormulaTo><FormulaFrom>TO</FormulaFrom><pValue>Reg</pValue></IntConverter>
<Converter Name="Tenths"><FormulaTo>FROM*10</FormulaTo><FormulaFrom>TO/10</FormulaFrom><pValue>Reg</pValue></Converter>
<Integer Name="Selector"><Value>0</Value><Min>0</Min><Max>1</Max></Integer>
<String Name="LocalText"><Value>old</Value></String>
<Integer Name="Indexed"><pIndex>Selector</pIndex><ValueIndexed Index="0">10</ValueIndexed><pValueIndexed Index="1">Reg</pValueIndexed><ValueDefault>30</ValueDefault></Integer>
<IntReg Name="Selected"><Address>16</Address><pIndex Offset="16">Selector</pIndex><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Endianess>BigEndian</Endianess></IntReg>
)";
}

} // namespace

/// Each row writes over registers full of 0xEE at address 16 (4 bytes) and 32 (8 bytes).
class NodeWriteTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void write_data();
    void write();
    void valuesWithoutRegister();
};

void NodeWriteTest::write_data()
{
    QTest::addColumn<QString>("node");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("memory"); // of address 16, or of 32 when it has 8 bytes
    const auto row = [](const char *tag, const char *node, const QVariant &value, quint32 code,
                        const char *memory) {
        QTest::newRow(tag) << QString(node) << value << int(code) << QByteArray::fromHex(memory);
    };
    const char *const kept = "eeeeeeee";
    row("register", "Reg", 0x01020304LL, 0, "01020304");
    row("locked", "Locked", 5LL, 0x90006104, kept);
    row("readOnly", "ReadOnly", 5LL, 0x90006104, kept);
    row("moreThanTheRegisterHolds", "Reg", 0x100000000LL, 0x90006202, kept);
    row("negativeIntoUnsigned", "Reg", -1LL, 0x90006202, kept);
    row("topBitOf64", "Over64", -2LL, 0, "fffffffffffffffe");
    row("topBitWithOwnMinimum", "Positive64", -2LL, 0x90006202, "eeeeeeeeeeeeeeee");
    row("offStep", "Stepped", 14LL, 0x90006202, kept);
    row("aboveMaximum", "Stepped", 101LL, 0x90006202, kept);
    row("stepOfZeroCountsAsOne", "NoStep", 7LL, 0, "00000007");
    row("emptyRangeTakesNothing", "EmptyRange", 0LL, 0x90006202, kept);
    row("maskKeepsNeighbours", "Masked", 0xABLL, 0, "eeabeeee");
    row("structEntryKeepsNeighbours", "Entry", 0LL, 0, "eeeeee6e");
    row("on", "Flag", true, 0, "00000007");
    row("entryWithTopBit", "Choice", 0xFFFFFFFFU, 0, "ffffffff");
    row("entryNotAvailable", "Choice", 2U, 0x90006202, kept);
    row("floatOnRoundedBound", "Tenth", 0.1F, 0, "3dcccccd");
    row("floatAboveBound", "Tenth", 0.2F, 0x90006202, kept);
    row("floatNotANumber", "FloatReg", std::numeric_limits<float>::quiet_NaN(), 0x90006202, kept);
    row("floatIntoConverter", "Converted", 3.5F, 0, "00000007");
    row("shortTextClearsTheRest", "Text", QString("ab"), 0, "61620000");
    row("textTooLongInBytes", "Text", QString::fromUtf8("\xC3\xA4\xC3\xA4o"), 0x90006202, kept);
    row("command", "Run", QVariant(), 0, "00000055");
    row("commandValueOfNode", "RunByNode", QVariant(), 0, "00000009");
    row("maskKeepsNeighboursLittle", "MaskedLittle", 0x12LL, 0, "2ee1eeee");
    row("moreThanMaskHolds", "MaskedSigned", 8LL, 0x90006202, kept);
    row("bitsButTheLowest", "Upper63", 1LL, 0, "0000000000000002");
    row("threeBytes", "ThreeBytes", -2LL, 0, "feffffee");
    row("moreThanTheRegisterBelowHolds", "WiderThanRegister", 300LL, 0x90006202, kept);
    row("valueBesideCopy", "Copied", 5LL, 0, "00000005");
    row("copy", "Copied", 5LL, 0, "0000000000000005");
    row("beyondDoublesThroughConverter", "BigConverter", 9007199254740993LL, 0, "0020000000000001");
    row("converterWithoutValue", "NoWayBack", 5LL, 0x90006204, kept);
    row("floatTruncatedByConverter", "Tenths", 0.7F, 0, "00000007");
}

void NodeWriteTest::write()
{
    QFETCH(QString, node);
    QFETCH(QVariant, value);
    QFETCH(QByteArray, memory);
    DeviceFixture device(nodes());
    device.control().poke(16, QByteArray(4, char(0xEE)));
    device.control().poke(32, QByteArray(8, char(0xEE)));
    QCameraTask &task = device.task();
    const auto write = [&](int *error) {
        switch (static_cast<int>(value.type())) {
        case QVariant::LongLong:
            return task.SetIntegerValue(node, value.toLongLong(), error);
        case QVariant::UInt:
            return task.SetEnumerationValue(node, value.toUInt(), error);
        case QVariant::Bool:
            return task.SetBooleanValue(node, value.toBool(), error);
        case QMetaType::Float:
            return task.SetFloatValue(node, value.toFloat(), error);
        case QVariant::String:
            return task.SetStringValue(node, value.toString(), error);
        default:
            return task.ExecuteCommand(node, error);
        }
    };
    int error = -1;
    const bool ok = write(&error);
    QTEST(error, "code");
    QCOMPARE(ok, error == 0);
    QCOMPARE(task.GetLastErrorRemark().isEmpty(), ok);
    QCOMPARE(device.control().peek(memory.size() == 8 ? 32 : 16, quint32(memory.size())), memory);
    write(nullptr);
}

/// Values that are constants of the description can be written too, and select registers.
void NodeWriteTest::valuesWithoutRegister()
{
    DeviceFixture device(nodes());
    QCameraTask &task = device.task();
    device.control().poke(16, QByteArray::fromHex("00000016"));
    device.control().poke(32, QByteArray::fromHex("00000032"));
    const auto valueOf = [&task](const char *node) {
        _NODE_INT_VALUE_ value{-1, 0, 0, 0};
        task.GetIntegerValue(node, &value, nullptr, true, false);
        return value.value;
    };
    QCOMPARE(valueOf("Selected"), 0x16);
    QCOMPARE(valueOf("Indexed"), 10);
    QVERIFY(task.SetIntegerValue("Indexed", 11, nullptr));
    QCOMPARE(valueOf("Indexed"), 11);
    QVERIFY(!task.SetIntegerValue("Selector", 2, nullptr));
    QVERIFY(task.SetIntegerValue("Selector", 1, nullptr));
    QCOMPARE(valueOf("Selector"), 1);
    QCOMPARE(valueOf("Selected"), 0x32);
    QCOMPARE(valueOf("Indexed"), 0x16);
    QVERIFY(task.SetIntegerValue("Selector", 0, nullptr));
    QCOMPARE(valueOf("Indexed"), 11);

    QString text;
    QVERIFY(task.SetStringValue("LocalText", "new", nullptr));
    QVERIFY(task.GetStringValue("LocalText", &text, nullptr, nullptr, true, false));
    QCOMPARE(text, QString("new"));
    // Another opening of the same description starts anew.
    DeviceFixture other(nodes());
    QVERIFY(other.task().GetStringValue("LocalText", &text, nullptr, nullptr, true, false));
    QCOMPARE(text, QString("old"));
}

QTEST_GUILESS_MAIN(NodeWriteTest)
#include "tst_NodeWrite.moc"
