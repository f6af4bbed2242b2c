#include "OpenedDevice.h"
#include "host/devicetask/CameraHost.h"

#include <QtTest>

namespace {

constexpr quint64 kWidth = 0x11000; // SensorWidth, any mapped register does

} // namespace

/// What a simulated device refuses, how long it lives, and the two kinds of memory.
class tst_SimulatorControl : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { m_simulated = SimulatedDevices::builtIn(QStringLiteral("area-camera")); }
    void refusesUnmappedAndReadOnly();
    void livesAsLongAsItsLastEnd();
    void sparseMemory_data();
    void sparseMemory();

private:
    SimulatedDevices::Simulated m_simulated;
};

void tst_SimulatorControl::refusesUnmappedAndReadOnly()
{
    const int address = ARV_DEVICE_ERROR_PROTOCOL_ERROR_INVALID_ADDRESS;
    OpenedDevice device(m_simulated);
    QVERIFY(!device.read(0x30000, 4));
    QCOMPARE(device.m_nErrorCode, address);
    QVERIFY(!device.read(0x20000, 1028)); // runs out of its stretch
    QCOMPARE(device.m_nErrorCode, address);
    QVERIFY(!device.write(0x30000, "xxxx"));
    QCOMPARE(device.m_nErrorCode, address);
    const QByteArray before = m_simulated.control->peek(kWidth, 2);
    QVERIFY(!device.write(kWidth, "xx"));
    QCOMPARE(device.m_nErrorCode, int(ARV_DEVICE_ERROR_PROTOCOL_ERROR_WRITE_PROTECT));
    QCOMPARE(m_simulated.control->peek(kWidth, 2), before);
}

void tst_SimulatorControl::livesAsLongAsItsLastEnd()
{
    m_simulated.control->setRestartTime(20);
    QVERIFY(OpenedDevice(m_simulated).set("DeviceUserID", "stays"));
    auto device = std::make_unique<OpenedDevice>(m_simulated);
    const std::weak_ptr<SimulatorControl> control = m_simulated.control;
    m_simulated = {};
    QCOMPARE(device->value("DeviceUserID").toString(), QStringLiteral("stays"));
    QVERIFY(device->execute("DeviceReset"));
    device.reset();
    QTRY_VERIFY(control.expired()); // its own thread may be the last to hold it
}

void tst_SimulatorControl::sparseMemory_data()
{
    QTest::addColumn<bool>("ugly");
    QTest::addColumn<quint64>("address");
    QTest::addColumn<int>("length");
    QTest::addColumn<bool>("answers");
    QTest::newRow("zero, over a page") << false << quint64(0x1FFE) << 8 << true;
    QTest::newRow("zero, last bytes") << false << ~quint64(0) - 3 << 4 << true;
    QTest::newRow("zero, over the end") << false << ~quint64(0) - 2 << 4 << false;
    QTest::newRow("zero, huge length") << false << quint64(0) << 0x40000000 << false;
    QTest::newRow("ugly, over a page") << true << quint64(0x1FFE) << 8 << true;
}

void tst_SimulatorControl::sparseMemory()
{
    QFETCH(bool, ugly);
    QFETCH(quint64, address);
    QFETCH(int, length);
    QFETCH(bool, answers);
    const auto pattern =
        ugly ? SimulatorControl::MemoryPattern::Ugly : SimulatorControl::MemoryPattern::Zero;
    const auto simulated =
        SimulatedDevices::fromDescription(m_simulated.control->description(), "odd", pattern);
    OpenedDevice device(simulated);
    if (!answers) {
        guint32 word = 0;
        QVERIFY(
            !arv_device_read_memory(device.m_pDevice, address, quint32(length), &word, nullptr));
        return;
    }
    QByteArray bytes;
    QVERIFY(device.read(address, quint32(length), &bytes));
    for (const char byte : qAsConst(bytes)) {
        QCOMPARE(bool(byte & 0x80), ugly);
        QVERIFY(ugly || byte == 0);
    }
    const QByteArray written = QByteArray::fromHex("0102030405060708").left(length);
    QVERIFY(device.write(address, written));
    QVERIFY(device.read(address, quint32(length), &bytes));
    QCOMPARE(bytes, written);
    QCOMPARE(simulated.control->peek(address, quint32(length)), written);
}

QTEST_GUILESS_MAIN(tst_SimulatorControl)
#include "tst_SimulatorControl.moc"
