#include "DeviceFixture.h"
#include "host/devicetask/nodes/AccessMode.h"

#include <QtTest>

namespace {

const char *const NODES = R"(
<Category Name="Shown"/><Category Name="Gone"><pIsAvailable>Zero</pIsAvailable></Category>
<Category Name="None"><pIsImplemented>Zero</pIsImplemented></Category>
<Boolean Name="Yes"><Value>1</Value></Boolean>
<Integer Name="OverRW"><pValue>RW</pValue></Integer>
<Integer Name="Locked"><pIsLocked>One</pIsLocked><pValue>RW</pValue></Integer>
<Integer Name="LockedByBoolean"><pIsLocked>Yes</pIsLocked><pValue>RW</pValue></Integer>
<Integer Name="Unlocked"><pIsLocked>Zero</pIsLocked><pValue>RW</pValue></Integer>
<Integer Name="LockedWO"><pIsLocked>One</pIsLocked><pValue>WO</pValue></Integer>
<Integer Name="OverLocked"><pValue>Locked</pValue></Integer>
<Integer Name="Away"><pIsAvailable>Zero</pIsAvailable><pValue>RW</pValue></Integer>
<Integer Name="OverAway"><pValue>Away</pValue></Integer>
<Integer Name="Missing"><pIsImplemented>Zero</pIsImplemented><pIsAvailable>Zero</pIsAvailable><pValue>RW</pValue></Integer>
<Integer Name="ImposedRO"><ImposedAccessMode>RO</ImposedAccessMode><pValue>RW</pValue></Integer>
<Integer Name="ImposedWO"><ImposedAccessMode>WO</ImposedAccessMode><pValue>RW</pValue></Integer>
<Integer Name="ImposedAgainst"><ImposedAccessMode>RO</ImposedAccessMode><pValue>WO</pValue></Integer>
<Command Name="Run"><pValue>WO</pValue><CommandValue>1</CommandValue></Command>
<Command Name="RunLocked"><pIsLocked>One</pIsLocked><pValue>RW</pValue><CommandValue>1</CommandValue></Command>
<IntSwissKnife Name="Knife"><pVariable Name="A">RO</pVariable><Formula>A+1</Formula></IntSwissKnife>
<IntSwissKnife Name="KnifeOfAway"><pVariable Name="A">Away</pVariable><Formula>A+1</Formula></IntSwissKnife>
<Converter Name="Converted"><FormulaTo>FROM</FormulaTo><FormulaFrom>TO</FormulaFrom><pValue>RO</pValue></Converter>
<StructReg Comment="s"><pIsAvailable>Zero</pIsAvailable><Address>64</Address><Length>4</Length><AccessMode>RW</AccessMode>
<pPort>Device</pPort><Endianess>BigEndian</Endianess><StructEntry Name="AwayEntry"><Bit>0</Bit></StructEntry></StructReg>
<StructReg Comment="t"><pIsLocked>One</pIsLocked><Address>64</Address><Length>4</Length><AccessMode>RW</AccessMode>
<pPort>Device</pPort><Endianess>BigEndian</Endianess><StructEntry Name="LockedEntry"><Bit>0</Bit></StructEntry></StructReg>
<IntSwissKnife Name="Divides"><pVariable Name="D">Zero</pVariable><Formula>1/D</Formula></IntSwissKnife>
<Integer Name="LockedByDivision"><pIsLocked>Divides</pIsLocked><pValue>RW</pValue></Integer>
<Integer Name="AwayByDivision"><pIsAvailable>Divides</pIsAvailable><pValue>RW</pValue></Integer>
<Integer Name="OneOfTwoLocks"><pIsLocked>Zero</pIsLocked><pIsLocked>One</pIsLocked><pValue>RW</pValue></Integer>
<Integer Name="OneOfTwoAway"><pIsAvailable>One</pIsAvailable><pIsAvailable>Zero</pIsAvailable><pValue>RW</pValue></Integer>
<Integer Name="Broken"><pValue>NoSuchNode</pValue></Integer>
<Integer Name="OverBroken"><pValue>Broken</pValue></Integer>
<IntReg Name="NoAccessMode"><Address>16</Address><Length>4</Length><pPort>Device</pPort></IntReg>
<Port Name="ChunkPort"><ChunkID>1</ChunkID></Port>
<IntReg Name="Chunk"><Address>0</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>ChunkPort</pPort></IntReg>
<Integer Name="OverChunk"><pValue>Chunk</pValue></Integer>
<Integer Name="Constant"><Value>1</Value></Integer>
<Integer Name="IndexedRO"><pIndex>One</pIndex><pValueIndexed Index="1">RO</pValueIndexed><ValueDefault>3</ValueDefault></Integer>
<Integer Name="IndexedAway"><pIndex>One</pIndex><pValueIndexed Index="1">Away</pValueIndexed><ValueDefault>3</ValueDefault></Integer>
<Integer Name="IndexedDefault"><pIndex>Zero</pIndex><pValueIndexed Index="1">RO</pValueIndexed><ValueDefault>3</ValueDefault></Integer>
<Integer Name="IndexedByDivision"><pIndex>Divides</pIndex><pValueIndexed Index="1">RW</pValueIndexed><ValueDefault>3</ValueDefault></Integer>
<Integer Name="Gated"><pIsAvailable>Gate</pIsAvailable><pValue>RW</pValue></Integer>
)";

QByteArray nodes()
{
    return NODES + intReg("RW", 16) + intReg("RO", 16, "RO") + intReg("WO", 32, "WO")
        + intReg("Gate", 48, "RO") + intReg("ConstantLock", 16, "RW", "<pIsLocked>One</pIsLocked>");
}

} // namespace

class AccessModeTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void mode_data();
    void mode();
    void keepsLastModeWhileDeviceIsSilent();
};

void AccessModeTest::initTestCase()
{
    // Two nodes of the description are faulty, which is told at each opening.
    QLoggingCategory::setFilterRules("vexa.devicetask.description=false");
}

void AccessModeTest::mode_data()
{
    QTest::addColumn<int>("mode");
    const struct
    {
        int mode;
        const char *nodes;
    } rows[] = {{NODE_NI, "None Missing OverBroken NoSuchNode"},
                {NODE_NA,
                 "Gone LockedWO OverAway ImposedAgainst KnifeOfAway AwayEntry AwayByDivision "
                 "OneOfTwoAway OverChunk IndexedAway IndexedByDivision"},
                {NODE_WO, "WO ImposedWO Run"},
                {NODE_RO,
                 "Shown LockedByBoolean OverLocked ImposedRO RunLocked Knife Converted "
                 "LockedEntry ConstantLock OneOfTwoLocks NoAccessMode IndexedRO"},
                {NODE_RW, "OverRW Unlocked LockedByDivision Constant IndexedDefault"}};
    for (const auto &row : rows) {
        for (const QByteArray &node : QByteArray(row.nodes).split(' ')) {
            QTest::newRow(node.constData()) << row.mode;
        }
    }
}

void AccessModeTest::mode()
{
    DeviceFixture device(nodes());
    int error = 77;
    QTEST(device.task().GetAccessMode(QTest::currentDataTag(), &error), "mode");
    QCOMPARE(error, 0);
}

void AccessModeTest::keepsLastModeWhileDeviceIsSilent()
{
    DeviceFixture device(nodes());
    device.control().poke(48, QByteArray::fromHex("00000001"));
    QCOMPARE(device.task().GetAccessMode("Gated", nullptr), 4);
    device.control().setFailing(48, ARV_DEVICE_ERROR_TIMEOUT);
    int error = 0;
    QCOMPARE(device.task().GetAccessMode("Gated", &error), 4);
    QVERIFY(error != 0);
    QCOMPARE(device.task().GetAccessMode("Gate", &error), 3); // the same in every state

    DeviceFixture silent(nodes());
    silent.control().setFailing(48, ARV_DEVICE_ERROR_TIMEOUT);
    QCOMPARE(silent.task().GetAccessMode("Gated", &error), 1); // never asked before
    QVERIFY(error != 0);
}

QTEST_GUILESS_MAIN(AccessModeTest)
#include "tst_AccessMode.moc"
