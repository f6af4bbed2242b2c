#include "DeviceFixture.h"
#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "HostileDescriptions.h"
#include "ProcessCost.h"

#include <QtTest>

#include <cmath>
#include <cstdlib>
#include <limits>

namespace {

constexpr qint64 INT_MAX64 = std::numeric_limits<qint64>::max();

/// Whether any of the typed reads gives a value.
bool anyRead(QCameraTask &task, const QString &name)
{
    _NODE_INT_VALUE_ integer{};
    _NODE_FLOAT_VALUE_ real{};
    bool flag = false;
    QString text;
    return task.GetIntegerValue(name, &integer, nullptr, false, false)
        || task.GetFloatValue(name, &real, nullptr, false, false)
        || task.GetBooleanValue(name, &flag, nullptr, false, false)
        || task.GetStringValue(name, &text, nullptr, nullptr, false, false);
}

QByteArray port(const QByteArray &address, const QByteArray &length)
{
    return address + length + "<AccessMode>RW</AccessMode><pPort>Device</pPort>";
}

const char BIG[] = "<Endianess>BigEndian</Endianess>";

} // namespace

/// Cameras with descriptions from strangers: what is sound lives, what is not says so, nothing is made up.
class HostileDescriptionsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void opened_data();
    void opened();
    void integers_data();
    void integers();
    void unreadable_data();
    void unreadable();
    void notFinite_data();
    void notFinite();
    void enumerationValueWithoutAnEntry();
    void emptyRangeTakesNothing();
    void incrementOfZeroCountsAsOne();
};

void HostileDescriptionsTest::opened_data()
{
    QTest::addColumn<int>("place");
    const auto &rows = hostileDescriptions();
    for (int i = 0; i < rows.size(); ++i) {
        if (!rows[i].isForCosts) {
            QTest::newRow(rows[i].name.constData()) << i;
        }
    }
}

void HostileDescriptionsTest::opened()
{
    QFETCH(int, place);
    const HostileDescription &row = hostileDescriptions()[place];
    const auto state = std::make_shared<MemoryDeviceState>(row.make());
    state->poke(64, QByteArray::fromHex("00000007"));
    const ProcessCost cost;
    CameraHost host;
    const CameraHost::OpenResult result = host.openCamera(sourceOf(state));
    cost.verifyTime(1000);
    cost.verifyGrowth(256);
    if (!row.refusal.isEmpty()) {
        QCOMPARE(result.cameraId, NO_CAMERA_ID);
        QVERIFY2(result.error.contains(QString::fromUtf8(row.refusal)), qPrintable(result.error));
        return;
    }
    QVERIFY2(result.error.isEmpty(), qPrintable(result.error));
    QCameraTask &task = *QTaskManager::Instance()->GetTaskByIDEx(result.cameraId)->_CameraTak();
    for (const HostileDescription::LeftOut &left : row.leftOut) {
        const QString name = QString::fromUtf8(left.node);
        QCOMPARE(task.GetAccessMode(name, nullptr), 0);
        QVERIFY(!anyRead(task, name));
        QVERIFY(!task.SetIntegerValue(name, 1, nullptr));
        QVERIFY(!task.ExecuteCommand(name, nullptr));
    }
    QCOMPARE(state->m_nAccesses.load(), 0);
    _NODE_INT_VALUE_ value{};
    for (const HostileDescription::Live &live : row.live) {
        QVERIFY2(task.GetIntegerValue(QString::fromUtf8(live.node), &value, nullptr, true, false),
                 live.node.constData());
        QCOMPARE(value.value, live.value);
    }
    QVERIFY(task.GetIntegerValue("Good", &value, nullptr, true, false));
    QCOMPARE(value.value, qint64(7));
    cost.verifyTime(1000);
}

void HostileDescriptionsTest::integers_data()
{
    QTest::addColumn<QByteArray>("node");
    QTest::addColumn<qint64>("expected");
    // Memory at 0: 80 00 00 00 00 00 00 01, 80 once more.
    const QByteArray at0 = "<Address>0</Address>";
    const QByteArray at1 = "<Address>1</Address>";
    const QByteArray eight = "<Length>8</Length>";
    const qint64 top = qint64(0x8000000000000001ULL);
    const auto row = [](const char *name, const QByteArray &tag, const QByteArray &more,
                        qint64 value) {
        QTest::newRow(name) << '<' + tag + " Name=\"N\">" + more + "</" + tag + '>' << value;
    };
    row("top bit, big-endian", "IntReg", port(at0, eight) + BIG, top);
    row("top bit, little-endian", "IntReg", port(at1, eight), qint64(0x8001000000000000ULL));
    row("top bit through bits, big-endian", "MaskedIntReg",
        port(at0, eight) + BIG + "<LSB>63</LSB><MSB>0</MSB>", top);
    row("top bit through bits, little-endian", "MaskedIntReg",
        port(at1, eight) + "<LSB>0</LSB><MSB>63</MSB>", qint64(0x8001000000000000ULL));
    row("bits in the other order, big-endian", "MaskedIntReg",
        port(at0, "<Length>1</Length>") + BIG + "<LSB>0</LSB><MSB>0</MSB>", 1);
    row("2^53+1 through a formula", "IntSwissKnife", "<Formula>0x20000000000000*1+1</Formula>",
        9007199254740993);
    row("all 64 bits in a formula", "IntSwissKnife", "<Formula>0xFFFFFFFFFFFFFFFF</Formula>", -1);
    row("side of ?: that divides by zero", "IntSwissKnife",
        "<pVariable Name=\"D\">Zero</pVariable><Formula>(D=0)?5:(1/D)</Formula>", 5);
    row("negative part of an address", "IntReg",
        port("<Address>4</Address><pAddress>MinusFour</pAddress>", "<Length>1</Length>"), 0x80);
    row("highest bound of 64 bits", "Integer", "<Value>1</Value><Max>0xFFFFFFFFFFFFFFFF</Max>", 1);
}

void HostileDescriptionsTest::integers()
{
    QFETCH(QByteArray, node);
    QFETCH(qint64, expected);
    DeviceFixture device(node + "<Integer Name=\"MinusFour\"><Value>-4</Value></Integer>");
    device.m_pState->poke(0, QByteArray::fromHex("800000000000000180"));
    _NODE_INT_VALUE_ value{};
    QVERIFY2(device.task().GetIntegerValue("N", &value, nullptr, true, false),
             qPrintable(device.task().GetLastErrorRemark()));
    QCOMPARE(value.value, expected);
    QVERIFY(value.max > 0);
    QVERIFY(value.inc >= 1);
}

void HostileDescriptionsTest::unreadable_data()
{
    QTest::addColumn<QByteArray>("node");
    QTest::addColumn<bool>("asksDevice");
    const QByteArray four = "<Length>4</Length>";
    const auto row = [](const char *name, const QByteArray &more, bool asksDevice = false) {
        QTest::newRow(name) << "<IntReg Name=\"N\">" + port(more, {}) + "</IntReg>" << asksDevice;
    };
    row("at the end of 64 bits", "<Address>0xFFFFFFFFFFFFFFFC</Address>" + four, true);
    row("at the end of 63 bits", "<Address>0x7FFFFFFFFFFFFFFC</Address>" + four, true);
    row("sum over 64 bits",
        "<Address>0xFFFFFFFFFFFFFFFC</Address><pAddress>Eight</pAddress>" + four);
    row("index over 64 bits", "<pIndex Offset=\"0x4000000000000000\">Eight</pIndex>" + four);
    row("negative address", "<pAddress>Minus</pAddress>" + four);
    const char *const lengths[] = {"Zero", "Minus", "Over32", "Over63", "Eight9"};
    for (const char *length : lengths) {
        row(length, "<Address>0</Address><pLength>" + QByteArray(length) + "</pLength>");
    }
    const auto knife = [](const char *name, const QByteArray &formula) {
        QTest::newRow(name) << "<IntSwissKnife Name=\"N\"><pVariable "
                               "Name=\"Z\">Zero</pVariable><pVariable "
                               "Name=\"L\">Lowest</pVariable><Formula>"
                + formula + "</Formula></IntSwissKnife>"
                            << false;
    };
    knife("division by zero", "1/Z");
    knife("remainder by zero", "1%Z");
    knife("lowest number by -1", "L/(Z-1)");
    knife("remainder of the lowest number by -1", "L%(Z-1)");
    knife("shift by 64", "1&lt;&lt;(Z+64)");
    knife("shift by -1", "1&gt;&gt;(Z-1)");
}

void HostileDescriptionsTest::unreadable()
{
    QFETCH(QByteArray, node);
    QFETCH(bool, asksDevice);
    DeviceFixture device(
        node + intReg("Good", 64)
        + "<Integer Name=\"Eight\"><Value>8</Value></Integer>"
          "<Integer Name=\"Eight9\"><Value>9</Value></Integer>"
          "<Integer Name=\"Minus\"><Value>-1</Value></Integer>"
          "<Integer Name=\"Over32\"><Value>4294967300</Value></Integer>"
          "<Integer Name=\"Over63\"><Value>9223372036854775807</Value></Integer>"
          "<Integer Name=\"Lowest\"><Value>-9223372036854775808</Value></Integer>");
    _NODE_INT_VALUE_ value{1, 2, 3, 4};
    int error = 0;
    QVERIFY(!device.task().GetIntegerValue("N", &value, &error, true, false));
    QVERIFY(error != 0);
    QCOMPARE(value.value, qint64(1));
    QVERIFY(!device.task().GetLastErrorRemark().isEmpty());
    QCOMPARE(device.m_pState->m_nAccesses.load() > 0, asksDevice);
    QVERIFY(device.task().GetIntegerValue("Good", &value, &error, true, false));
}

void HostileDescriptionsTest::notFinite_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("length");
    QTest::newRow("NaN of 4 bytes") << QByteArray::fromHex("7fc00000") << 4;
    QTest::newRow("infinity of 4 bytes") << QByteArray::fromHex("7f800000") << 4;
    QTest::newRow("NaN of 8 bytes") << QByteArray::fromHex("fff8000000000000") << 8;
    QTest::newRow("infinity of 8 bytes") << QByteArray::fromHex("fff0000000000000") << 8;
}

void HostileDescriptionsTest::notFinite()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, length);
    const QByteArray reg =
        port("<Address>0</Address>", "<Length>" + QByteArray::number(length) + "</Length>") + BIG;
    DeviceFixture device("<FloatReg Name=\"N\">" + reg
                         + "</FloatReg><Integer Name=\"I\"><pValue>N</pValue></Integer>"
                           "<Float Name=\"F\"><Value>1</Value><pMax>N</pMax></Float>"
                           "<SwissKnife Name=\"K\"><pVariable "
                           "Name=\"A\">N</pVariable><Formula>A*2</Formula></SwissKnife>");
    device.m_pState->poke(0, bytes);
    _NODE_FLOAT_VALUE_ value{};
    // What the device said, or nothing; but no number that it did not say.
    if (device.task().GetFloatValue("N", &value, nullptr, true, false)) {
        QVERIFY(!std::isfinite(value.value));
    }
    _NODE_INT_VALUE_ integer{};
    QVERIFY(!device.task().GetIntegerValue("I", &integer, nullptr, true, false));
    if (device.task().GetFloatValue("F", &value, nullptr, true, false)) {
        QCOMPARE(value.value, 1.0F);
    }
    QVERIFY(!device.task().GetFloatValue("K", &value, nullptr, true, false));
}

void HostileDescriptionsTest::enumerationValueWithoutAnEntry()
{
    DeviceFixture device(intReg("Reg", 0)
                         + "<Enumeration Name=\"N\"><EnumEntry Name=\"A\"><Value>1</Value>"
                           "</EnumEntry><EnumEntry Name=\"B\"/><pValue>Reg</pValue></Enumeration>");
    device.m_pState->poke(0, QByteArray::fromHex("00000009"));
    const std::unique_ptr<void, void (*)(void *)> memory(std::calloc(1, NODE_ENUM_RECORD_SIZE),
                                                         std::free);
    auto *record = static_cast<_NODE_ENUM_VALUE_ *>(memory.get());
    QVERIFY(device.task().GetEnumerationValue("N", record, nullptr, true, false));
    QCOMPARE(record->value, 9U);
    QCOMPARE(record->count, 1U);
    QCOMPARE(record->entries[0], 1U);
    QVERIFY(!device.task().SetEnumerationValue("N", 9, nullptr));
    QVERIFY(!device.task().SetEnumerationValue("N", 0, nullptr));
    QVERIFY(device.task().SetEnumerationValue("N", 1, nullptr));
}

void HostileDescriptionsTest::emptyRangeTakesNothing()
{
    DeviceFixture device(
        intReg("Reg", 0)
        + "<Integer Name=\"N\"><pValue>Reg</pValue><Min>9</Min><Max>2</Max></Integer>"
          "<Float Name=\"F\"><pValue>Reg</pValue><Min>9</Min><Max>2</Max></Float>");
    device.m_pState->poke(0, QByteArray::fromHex("00000005"));
    _NODE_INT_VALUE_ value{};
    QVERIFY(device.task().GetIntegerValue("N", &value, nullptr, true, false));
    QCOMPARE(value.value, qint64(5));
    for (const int number : {2, 5, 9}) {
        QVERIFY(!device.task().SetIntegerValue("N", number, nullptr));
        QVERIFY(!device.task().SetFloatValue("F", float(number), nullptr));
    }
    QCOMPARE(device.m_pState->peek(0, 4), QByteArray::fromHex("00000005"));
}

void HostileDescriptionsTest::incrementOfZeroCountsAsOne()
{
    DeviceFixture device(
        intReg("Reg", 0)
        + "<Integer Name=\"N\"><pValue>Reg</pValue><pInc>Zero</pInc></Integer>"
          "<Integer Name=\"C\"><pValue>Reg</pValue><Inc>-3</Inc><Max>0xFFFFFFFFFFFFFFFF</Max>"
          "</Integer>");
    _NODE_INT_VALUE_ value{};
    for (const char *name : {"N", "C"}) {
        QVERIFY(device.task().GetIntegerValue(name, &value, nullptr, true, false));
        QCOMPARE(value.inc, qint64(1));
        QVERIFY(device.task().SetIntegerValue(name, 7, nullptr));
    }
    QCOMPARE(value.max, qint64(INT_MAX64));
}

QTEST_GUILESS_MAIN(HostileDescriptionsTest)
#include "tst_HostileDescriptions.moc"
