#include "OpenedDevice.h"
#include "host/devicetask/CameraHost.h"

#include <QtTest>

#include <atomic>
#include <thread>

namespace {

constexpr quint64 kWidth = 0x11000; // SensorWidth, any mapped register does

const char *const kXml =
    "<RegisterDescription ModelName='Odd One' VendorName='Someone' SchemaMajorVersion='1'"
    " SchemaMinorVersion='1' SchemaSubMinorVersion='0' MajorVersion='1' MinorVersion='0'"
    " SubMinorVersion='0' StandardNameSpace='None' ProductGuid='1' VersionGuid='1'"
    " xmlns='http://www.genicam.org/GenApi/Version_1_1'>"
    "<Category Name='Root'><pFeature>Far</pFeature></Category>"
    "<Integer Name='Far'><pValue>FarReg</pValue></Integer>"
    "<IntReg Name='FarReg'><Address>0xFFFFFFFF00</Address><Length>4</Length>"
    "<AccessMode>RW</AccessMode><pPort>Device</pPort><Endianess>BigEndian</Endianess></IntReg>"
    "<Port Name='Device'/></RegisterDescription>";

} // namespace

/// The strings that hold a simulated device, and the two kinds of memory.
class tst_SimulatorControl : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void faults();
    void refusesUnmappedAndReadOnly();
    void logsEveryAccess();
    void peekAndPokeLeaveNoTrace();
    void latencyHoldsNoLock();
    void blocksOneAccess();
    void vanishesAndComesBack();
    void losesControlOnEveryHandle();
    void memoryOutlivesTheHandle();
    void resetWithoutHandlesEnds();
    void sparseMemory_data();
    void sparseMemory();
    void descriptionBecomesADevice();

private:
    SimulatedDevices::Simulated m_simulated;
    std::unique_ptr<OpenedDevice> m_pDevice;
};

void tst_SimulatorControl::init()
{
    m_simulated = SimulatedDevices::builtIn(QStringLiteral("area-camera"));
    m_pDevice = std::make_unique<OpenedDevice>(m_simulated);
}

void tst_SimulatorControl::faults()
{
    for (const int offset : {0, 3, 4}) { // the first byte of the four read, the last one, the next
        m_simulated.control->setFailing(kWidth + quint64(offset), ARV_DEVICE_ERROR_UNKNOWN);
        m_simulated.control->setFailing(kWidth + quint64(offset), ARV_DEVICE_ERROR_TIMEOUT);
        QCOMPARE(m_pDevice->read(kWidth, 4), offset == 4);
        QCOMPARE(m_pDevice->m_nErrorCode, offset == 4 ? -1 : int(ARV_DEVICE_ERROR_TIMEOUT));
        m_simulated.control->setFailing(kWidth + quint64(offset), 0);
        QVERIFY(m_pDevice->read(kWidth, 4));
    }
}

void tst_SimulatorControl::refusesUnmappedAndReadOnly()
{
    const int address = ARV_DEVICE_ERROR_PROTOCOL_ERROR_INVALID_ADDRESS;
    QVERIFY(!m_pDevice->read(0x30000, 4));
    QCOMPARE(m_pDevice->m_nErrorCode, address);
    QVERIFY(!m_pDevice->read(0x20000, 1028)); // runs out of its stretch
    QCOMPARE(m_pDevice->m_nErrorCode, address);
    QVERIFY(!m_pDevice->write(0x30000, "xxxx"));
    QCOMPARE(m_pDevice->m_nErrorCode, address);
    const QByteArray before = m_simulated.control->peek(kWidth, 2);
    QVERIFY(!m_pDevice->write(kWidth, "xx"));
    QCOMPARE(m_pDevice->m_nErrorCode, int(ARV_DEVICE_ERROR_PROTOCOL_ERROR_WRITE_PROTECT));
    QCOMPARE(m_simulated.control->peek(kWidth, 2), before);
}

void tst_SimulatorControl::logsEveryAccess()
{
    m_pDevice->read(kWidth, 2);
    QVERIFY(m_simulated.control->accessLog().isEmpty()); // off at first
    m_simulated.control->setLogging(true);
    m_pDevice->read(kWidth, 2);
    m_pDevice->write(0xE8, "name");
    std::thread([this] { m_pDevice->read(0x30000, 8); }).join();
    const QVector<SimulatorAccess> log = m_simulated.control->accessLog();
    QCOMPARE(log.size(), 3);
    QVERIFY(log.at(0).address == kWidth && log.at(0).length == 2 && !log.at(0).failed);
    QCOMPARE(int(log.at(1).kind), int(SimulatorAccess::Write));
    QVERIFY(log.at(2).failed);
    QCOMPARE(log.at(1).thread, quintptr(QThread::currentThreadId()));
    QVERIFY(log.at(2).thread != log.at(1).thread);
    m_simulated.control->clearAccessLog();
    QVERIFY(m_simulated.control->accessLog().isEmpty());
    m_pDevice->integer("SensorWidth"); // one register, one access
    QCOMPARE(m_simulated.control->accessLog().size(), 1);
}

void tst_SimulatorControl::peekAndPokeLeaveNoTrace()
{
    m_simulated.control->setLogging(true);
    m_simulated.control->setFailing(kWidth, ARV_DEVICE_ERROR_TIMEOUT);
    m_simulated.control->poke(kWidth, QByteArray::fromHex("3412"));
    QCOMPARE(m_simulated.control->peek(kWidth, 2), QByteArray::fromHex("3412"));
    QVERIFY(m_simulated.control->accessLog().isEmpty());
    QVERIFY(m_simulated.control->peek(0x30000, 4).isEmpty());
}

void tst_SimulatorControl::latencyHoldsNoLock()
{
    m_simulated.control->setLogging(true);
    m_simulated.control->setLatency(1000000);
    std::atomic<bool> done{false};
    std::thread slow([this, &done] {
        OpenedDevice(m_simulated).read(kWidth, 2);
        done = true;
    });
    QTRY_COMPARE(m_simulated.control->accessLog().size(), 1);
    m_simulated.control->setLatency(0);
    const bool isRead = m_pDevice->read(kWidth, 2);
    const bool isFirst = !done;
    slow.join();
    QVERIFY(isRead && isFirst);
}

void tst_SimulatorControl::blocksOneAccess()
{
    m_simulated.control->setLogging(true);
    m_simulated.control->blockNextAccess();
    std::atomic<bool> done{false};
    std::thread blocked([&] {
        m_pDevice->read(kWidth, 2);
        done = true;
    });
    QTRY_COMPARE(m_simulated.control->accessLog().size(), 1);
    OpenedDevice other(m_simulated);
    const bool isRead = other.read(kWidth, 2);
    const bool isBlocked = !done;
    m_simulated.control->unblock();
    blocked.join();
    QVERIFY(isRead && isBlocked); // only one access hangs
}

void tst_SimulatorControl::vanishesAndComesBack()
{
    m_simulated.control->vanish();
    QVERIFY(!m_pDevice->read(kWidth, 2));
    QCOMPARE(m_pDevice->m_nErrorCode, int(ARV_DEVICE_ERROR_NOT_CONNECTED));
    QVERIFY(!m_pDevice->write(0xE8, "x"));
    const OpenedDevice refused(m_simulated);
    QVERIFY(!refused.m_pDevice);
    QCOMPARE(refused.m_nErrorCode, int(ARV_DEVICE_ERROR_NOT_FOUND));
    m_simulated.control->comeBack();
    QVERIFY(m_pDevice->read(kWidth, 2));
    QVERIFY(OpenedDevice(m_simulated).read(kWidth, 2));
}

void tst_SimulatorControl::losesControlOnEveryHandle()
{
    int lost = 0;
    const auto count = +[](ArvDevice *, void *counter) { ++*static_cast<int *>(counter); };
    {
        OpenedDevice second(m_simulated);
        g_signal_connect(m_pDevice->m_pDevice, "control-lost", G_CALLBACK(count), &lost);
        g_signal_connect(second.m_pDevice, "control-lost", G_CALLBACK(count), &lost);
        m_simulated.control->loseControl();
        QCOMPARE(lost, 2);
    }
    m_simulated.control->loseControl(); // the handle that went is not told
    QCOMPARE(lost, 3);
}

void tst_SimulatorControl::memoryOutlivesTheHandle()
{
    QVERIFY(m_pDevice->setText("DeviceUserID", "stays"));
    m_pDevice = std::make_unique<OpenedDevice>(m_simulated);
    QCOMPARE(m_pDevice->text("DeviceUserID"), QStringLiteral("stays"));
    // and a handle outlives both ends of the simulator
    m_simulated = {};
    QCOMPARE(m_pDevice->text("DeviceUserID"), QStringLiteral("stays"));
}

void tst_SimulatorControl::resetWithoutHandlesEnds()
{
    m_simulated.control->setRestartTime(20);
    QVERIFY(m_pDevice->execute("DeviceReset"));
    const std::weak_ptr<SimulatorControl> control = m_simulated.control;
    m_pDevice.reset();
    m_simulated = {};
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
    const auto simulated = SimulatedDevices::fromDescription(kXml, "odd", pattern);
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

void tst_SimulatorControl::descriptionBecomesADevice()
{
    const auto simulated =
        SimulatedDevices::fromDescription(kXml, "odd", SimulatorControl::MemoryPattern::Ugly);
    QCOMPARE(simulated.source->id, QStringLiteral("odd"));
    QCOMPARE(simulated.source->model, QStringLiteral("Odd One"));
    QCOMPARE(simulated.source->deviceType, 1u);
    QVERIFY(!simulated.source->serial.isEmpty());
    QVERIFY(simulated.source->translations.isEmpty());
    OpenedDevice device(simulated);
    quint32 expected = 0;
    const QByteArray bytes = simulated.control->peek(0xFFFFFFFF00, 4);
    for (const char byte : bytes) {
        expected = expected << 8 | quint8(byte);
    }
    QVERIFY(expected & 0x80000000);
    QCOMPARE(device.integer("Far"), qint64(expected));
    QVERIFY(device.setInteger("Far", 5));
    QCOMPARE(simulated.control->peek(0xFFFFFFFF00, 4), QByteArray::fromHex("00000005"));
}

QTEST_GUILESS_MAIN(tst_SimulatorControl)
#include "tst_SimulatorControl.moc"
