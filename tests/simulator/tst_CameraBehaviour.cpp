#include "OpenedDevice.h"
#include "host/devicetask/CameraHost.h"

#include <QtTest>

#include <atomic>

/// What the firmware of the cameras does when its registers are written, that of area-camera before all.
class tst_CameraBehaviour : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void userSetsKeepTheirSettings();
    void resetVanishesAndComesBack();
    void softwareTriggerCounts();
    void acquisitionRunsAndEnds();
    void lockedRegistersAreRefusedWhileGrabbing();
    void resultingFrameRateFollows();
    void temperatureMovesUnlessQuiet();
    void timestampIsLatched();
    void fileRefusals_data();
    void fileRefusals();
    void lineRateBoundsTheFrameRate();
    void encoderTurnsWhileGrabbing();
    void lookUpTableIsOneBlock();
    void othersKeepUserSets_data();
    void othersKeepUserSets();

private:
    bool runFile(int operation, qint64 offset = 0, qint64 length = 0);

    SimulatedDevices::Simulated m_simulated;
    std::unique_ptr<OpenedDevice> m_pDevice;
};

void tst_CameraBehaviour::init()
{
    m_simulated = SimulatedDevices::builtIn(QStringLiteral("area-camera"));
    m_pDevice = std::make_unique<OpenedDevice>(m_simulated);
}

void tst_CameraBehaviour::userSetsKeepTheirSettings()
{
    OpenedDevice &d = *m_pDevice;
    QVERIFY(d.setNumber("ExposureTime", 777.5));
    QVERIFY(d.setNumber("Gain", 12));
    QVERIFY(d.setInteger("LUTValue", 3));
    QVERIFY(d.setText("DeviceUserID", "kept"));
    QVERIFY(d.setInteger("UserSetSelector", 2));
    QVERIFY(d.execute("UserSetSave"));
    QVERIFY(d.setNumber("ExposureTime", 100));
    QVERIFY(d.setInteger("UserSetSelector", 0));
    QVERIFY(d.execute("UserSetLoad"));
    QCOMPARE(d.number("ExposureTime"), 5000.0);
    QCOMPARE(d.number("Gain"), 6.5);
    QCOMPARE(d.integer("LUTValue"), qint64(256));
    QCOMPARE(d.text("DeviceUserID"), QStringLiteral("kept"));
    QVERIFY(!d.execute("UserSetSave")); // nobody writes the factory's
    QCOMPARE(d.m_nErrorCode, int(ARV_DEVICE_ERROR_PROTOCOL_ERROR_ACCESS_DENIED));
    QVERIFY(d.setInteger("UserSetSelector", 2));
    QVERIFY(d.execute("UserSetLoad"));
    QCOMPARE(d.number("ExposureTime"), 777.5);
    QCOMPARE(d.integer("LUTValue"), qint64(3));
    // a set that was never saved holds the factory settings
    QVERIFY(d.setInteger("UserSetSelector", 3));
    QVERIFY(d.execute("UserSetLoad"));
    QCOMPARE(d.number("ExposureTime"), 5000.0);
}

void tst_CameraBehaviour::resetVanishesAndComesBack()
{
    OpenedDevice &d = *m_pDevice;
    std::atomic<int> lost{0};
    g_signal_connect(d.m_pDevice, "control-lost", G_CALLBACK(+[](ArvDevice *, void *counter) {
                         ++*static_cast<std::atomic<int> *>(counter);
                     }),
                     &lost);
    QVERIFY(d.setInteger("Width", 320));
    QVERIFY(d.setNumber("Gain", 9));
    QVERIFY(d.setInteger("UserSetSelector", 1));
    QVERIFY(d.execute("UserSetSave"));
    QVERIFY(d.setInteger("UserSetDefault", 1));
    QVERIFY(d.setInteger("Width", 640));
    m_simulated.control->setRestartTime(200);
    QVERIFY(d.execute("DeviceReset"));
    QVERIFY(!d.read(0xE8, 4));
    QCOMPARE(d.m_nErrorCode, int(ARV_DEVICE_ERROR_NOT_CONNECTED));
    GError *error = nullptr;
    QVERIFY(!m_simulated.source->create(&error));
    QCOMPARE(error->code, int(ARV_DEVICE_ERROR_NOT_FOUND));
    g_clear_error(&error);
    QTRY_VERIFY(d.read(0xE8, 4));
    QCOMPARE(lost.load(), 1);
    QCOMPARE(d.integer("Width"), qint64(320)); // the set that starts is loaded
    QCOMPARE(d.number("Gain"), 9.0);
    OpenedDevice again(m_simulated);
    QVERIFY(again.m_pDevice);
}

void tst_CameraBehaviour::softwareTriggerCounts()
{
    for (int i = 0; i < 3; ++i) {
        QVERIFY(m_pDevice->execute("TriggerSoftware"));
    }
    QCOMPARE(m_pDevice->integer("TriggerSoftwareCount"), qint64(3));
    QCOMPARE(m_pDevice->integer("CounterValue"),
             qint64(3)); // counts frame triggers from the factory on
    QVERIFY(m_pDevice->setInteger("TriggerMode", 1));
    QVERIFY(m_pDevice->execute("AcquisitionStart"));
    QVERIFY(m_pDevice->execute("TriggerSoftware"));
    QCOMPARE(m_pDevice->integer("EventExposureEndFrameID"), qint64(1));
    QVERIFY(m_pDevice->execute("CounterReset"));
    QCOMPARE(m_pDevice->integer("CounterValue"), qint64(0));
}

void tst_CameraBehaviour::acquisitionRunsAndEnds()
{
    OpenedDevice &d = *m_pDevice;
    QVERIFY(!d.boolean("AcquisitionStatus"));
    QVERIFY(d.execute("AcquisitionStart"));
    QVERIFY(d.boolean("AcquisitionStatus"));
    QTRY_VERIFY(d.integer("EventExposureEndFrameID") >= 2);
    QVERIFY(d.integer("DeviceLinkCurrentThroughput") > 50000000);
    QVERIFY(d.execute("AcquisitionStop"));
    QVERIFY(!d.boolean("AcquisitionStatus"));
    QCOMPARE(d.integer("DeviceLinkCurrentThroughput"), qint64(0));
    QVERIFY(d.setInteger("AcquisitionMode", 1)); // a single frame ends by itself
    QVERIFY(d.execute("AcquisitionStart"));
    QTRY_VERIFY(!d.boolean("AcquisitionStatus"));
    QCOMPARE(d.integer("EventExposureEndFrameID"), qint64(1));
}

void tst_CameraBehaviour::lockedRegistersAreRefusedWhileGrabbing()
{
    QVERIFY(m_pDevice->execute("AcquisitionStart"));
    QVERIFY(!m_pDevice->setInteger("Width", 640));
    QCOMPARE(m_pDevice->m_nErrorCode, int(ARV_DEVICE_ERROR_PROTOCOL_ERROR_ACCESS_DENIED));
    QVERIFY(!m_pDevice->execute("UserSetLoad"));
    QVERIFY(m_pDevice->setNumber("Gain", 1));
    QVERIFY(m_pDevice->execute("AcquisitionStop"));
    QVERIFY(m_pDevice->setInteger("Width", 640));
}

void tst_CameraBehaviour::resultingFrameRateFollows()
{
    QCOMPARE(m_pDevice->number("ResultingFrameRate"), 20.0);
    QVERIFY(m_pDevice->setNumber("ExposureTime", 99940));
    QCOMPARE(m_pDevice->number("ResultingFrameRate"), 10.0);
    QVERIFY(m_pDevice->setNumber("ExposureTime", 100));
    QVERIFY(m_pDevice->setInteger("AcquisitionFrameRateEnable", 0));
    QVERIFY(qAbs(m_pDevice->number("ResultingFrameRate") - 1e6 / (1948 * 12.5 + 40)) < 1e-3);
}

void tst_CameraBehaviour::temperatureMovesUnlessQuiet()
{
    const double first = m_pDevice->number("DeviceTemperature");
    QVERIFY(first > 38 && first < 44);
    QTRY_VERIFY(m_pDevice->number("DeviceTemperature") != first);
    m_simulated.control->setQuiet(true);
    m_simulated.control->poke(namedElements(parsedDescription(m_simulated))
                                  .value("DeviceTemperatureRaw")
                                  .firstChildElement("Address")
                                  .text()
                                  .toULongLong(nullptr, 0),
                              QByteArray::fromHex("9cff")); // -100, little-endian
    QCOMPARE(m_pDevice->number("DeviceTemperature"), -10.0);
}

void tst_CameraBehaviour::timestampIsLatched()
{
    QVERIFY(m_pDevice->execute("TimestampLatch"));
    const qint64 first = m_pDevice->integer("TimestampLatchValue");
    QCOMPARE(m_pDevice->integer("TimestampLatchValue"), first);
    QVERIFY(m_pDevice->execute("TimestampLatch"));
    QVERIFY(m_pDevice->integer("TimestampLatchValue") > first);
    QVERIFY(m_pDevice->execute("GevTimestampControlLatch"));
    const qint64 before = m_pDevice->integer("GevTimestampValue");
    QVERIFY(before > first);
    QVERIFY(m_pDevice->execute("GevTimestampControlReset"));
    QVERIFY(m_pDevice->execute("GevTimestampControlLatch"));
    QVERIFY(m_pDevice->integer("GevTimestampValue") < before);
}

bool tst_CameraBehaviour::runFile(int operation, qint64 offset, qint64 length)
{
    // by the register: the entries of the feature offer only what is possible
    return m_pDevice->setInteger("FileOperationSelectorReg", operation)
        && m_pDevice->setInteger("FileAccessOffset", offset)
        && m_pDevice->setInteger("FileAccessLength", length)
        && m_pDevice->execute("FileOperationExecute")
        && m_pDevice->value("FileOperationStatus").toInt() == 0;
}

void tst_CameraBehaviour::fileRefusals_data()
{
    QTest::addColumn<int>("file");
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("opens");
    QTest::addColumn<int>("operation");
    QTest::newRow("reading a closed file") << 2 << 0 << false << 2;
    QTest::newRow("opening twice") << 2 << 0 << true << 0;
    QTest::newRow("writing a file opened to read") << 2 << 0 << true << 3;
    QTest::newRow("deleting an open file") << 2 << 0 << true << 4;
    QTest::newRow("opening a read-only file to write") << 1 << 1 << false << 0;
}

void tst_CameraBehaviour::fileRefusals()
{
    QFETCH(int, file);
    QFETCH(int, mode);
    QFETCH(bool, opens);
    QFETCH(int, operation);
    QVERIFY(m_pDevice->setInteger("FileSelector", file));
    QVERIFY(m_pDevice->setInteger("FileOpenMode", mode));
    QVERIFY(!opens || runFile(0));
    QVERIFY(!runFile(operation, 0, 4));
    QVERIFY(m_pDevice->m_strError.isEmpty());
    QCOMPARE(m_pDevice->value("FileOperationStatus").toInt(), 1);
}

void tst_CameraBehaviour::lineRateBoundsTheFrameRate()
{
    const auto simulated = SimulatedDevices::builtIn("line-camera");
    simulated.control->setQuiet(true);
    OpenedDevice d(simulated);
    QVERIFY(d.setInteger("Height", 1000));
    QVERIFY(d.setNumber("AcquisitionLineRate", 10000));
    QCOMPARE(d.number("ResultingLineRate"), 10000.0);
    QCOMPARE(d.number("ResultingFrameRate"), 10.0);
    QVERIFY(d.setInteger("AcquisitionLineRateEnable", 0));
    QVERIFY(d.setNumber("ExposureTime", 97.5));
    QCOMPARE(d.number("ResultingLineRate"), 10000.0);
    QVERIFY(d.setNumber("ExposureTime", 997.5));
    QCOMPARE(d.number("ResultingLineRate"), 1000.0);
}

void tst_CameraBehaviour::encoderTurnsWhileGrabbing()
{
    OpenedDevice d(SimulatedDevices::builtIn("line-camera"));
    QVERIFY(d.setInteger("Height", 100));
    const qint64 first = d.integer("EncoderValue");
    QCOMPARE(d.integer("EncoderValue"), first);
    QVERIFY(d.execute("AcquisitionStart"));
    QTRY_VERIFY(d.integer("EncoderValue") > first);
    QVERIFY(d.execute("AcquisitionStop"));
    const qint64 last = d.integer("EncoderValue");
    QCOMPARE(d.integer("EncoderValue"), last);
    QVERIFY(d.execute("EncoderReset"));
    QCOMPARE(d.integer("EncoderValue"), qint64(0));
    QCOMPARE(d.integer("EncoderValueAtReset"), last);
}

void tst_CameraBehaviour::lookUpTableIsOneBlock()
{
    const auto simulated = SimulatedDevices::builtIn("line-camera");
    OpenedDevice d(simulated);
    const QDomElement all = namedElements(parsedDescription(simulated)).value("LUTValueAll");
    QCOMPARE(all.tagName(), QStringLiteral("Register"));
    const quint64 address = all.firstChildElement("Address").text().toULongLong(nullptr, 0);
    QVERIFY(d.setInteger("LUTSelector", 1));
    QVERIFY(d.setInteger("LUTIndex", 7));
    QVERIFY(d.setInteger("LUTValue", 0x123));
    QByteArray block;
    QVERIFY(d.read(address, all.firstChildElement("Length").text().toUInt(), &block));
    QCOMPARE(block.mid((1024 + 7) * 4, 4), QByteArray("\x23\x01\0\0", 4)); // little-endian
}

void tst_CameraBehaviour::othersKeepUserSets_data()
{
    QTest::addColumn<QString>("device");
    QTest::newRow("line") << "line-camera";
    QTest::newRow("grabber") << "grabber-camera";
}

void tst_CameraBehaviour::othersKeepUserSets()
{
    QFETCH(QString, device);
    const auto simulated = SimulatedDevices::builtIn(device);
    simulated.control->setRestartTime(60);
    OpenedDevice d(simulated);
    QVERIFY(d.setNumber("ExposureTime", 55));
    QVERIFY(d.setInteger("UserSetSelector", 1));
    QVERIFY(d.execute("UserSetSave"));
    QVERIFY(d.setInteger("UserSetDefault", 1));
    QVERIFY(d.setInteger("UserSetSelector", 0));
    QVERIFY(d.execute("UserSetLoad"));
    QCOMPARE(d.number("ExposureTime"), 30.0);
    QVERIFY(!d.execute("UserSetSave"));
    QVERIFY(d.execute("TriggerSoftware"));
    QCOMPARE(d.integer("TriggerSoftwareCount"), qint64(1));
    QVERIFY(d.execute("DeviceReset"));
    QTRY_VERIFY(d.number("ExposureTime") == 55.0 && d.m_nErrorCode < 0);
    QCOMPARE(d.integer("TriggerSoftwareCount"), qint64(0));
}

QTEST_GUILESS_MAIN(tst_CameraBehaviour)
#include "tst_CameraBehaviour.moc"
