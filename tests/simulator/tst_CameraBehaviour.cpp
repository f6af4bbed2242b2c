#include "OpenedDevice.h"
#include "host/devicetask/CameraHost.h"

#include <QtTest>

/// What the firmware of the cameras does when its registers are written, that of area-camera before all.
class tst_CameraBehaviour : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void factoryValues_data();
    void factoryValues();
    void rangesFollowEachOther();
    void selectorsChooseTheirElement_data();
    void selectorsChooseTheirElement();
    void conditionsFollowTheirNodes_data();
    void conditionsFollowTheirNodes();
    void entriesComeAndGo();
    void softwareTriggerCounts();
    void acquisitionRunsAndEnds();
    void lockedRegistersAreRefusedWhileGrabbing();
    void resultingFrameRateFollows();
    void temperatureMovesUnlessQuiet();
    void lineRateBoundsTheFrameRate();
    void encoderTurnsWhileGrabbing();
    void lookUpTableIsOneBlock();
    void aResetLoadsTheDefaultSet_data();
    void aResetLoadsTheDefaultSet();

private:
    QStringList availableEntries(const char *name);

    SimulatedDevices::Simulated m_simulated;
    std::unique_ptr<OpenedDevice> m_pDevice;
};

void tst_CameraBehaviour::init()
{
    m_simulated = SimulatedDevices::builtIn(QStringLiteral("area-camera"));
    m_pDevice = std::make_unique<OpenedDevice>(m_simulated);
}

/// One of each form of register; the memory was filled by the devices' tables, Aravis goes by the description.
void tst_CameraBehaviour::factoryValues_data()
{
    QTest::addColumn<double>("value");
    const QPair<const char *, double> rows[] = {{"Width", 2448},
                                                {"SensorWidth", 2592},
                                                {"ADCBitDepth", 10},
                                                {"DeviceLinkSpeed", 125000000},
                                                {"GevMACAddress", double(0x0253494D0001)},
                                                {"DigitalShift", -1},
                                                {"EncoderValue", -1250},
                                                {"EncoderDrift", -37},
                                                {"GevSCPSPacketSize", 1500},
                                                {"SensorTaps", 4},
                                                {"DeviceSFNCVersionMajor", 2},
                                                {"AcquisitionBurstFrameCount", 1},
                                                {"DeviceLinkThroughputLimit", 118000000},
                                                {"BlackLevel", -3},
                                                {"Gain", 6.5},
                                                {"NoiseReduction", double(0.35F)},
                                                {"Gamma", 0.7},
                                                {"ShadingCoefficient", -0.125},
                                                {"SensorStatusRegister", 2147483713.0}};
    for (const auto &row : rows) {
        QTest::newRow(row.first) << row.second;
    }
}

void tst_CameraBehaviour::factoryValues()
{
    QTEST(m_pDevice->value(QTest::currentDataTag()).toDouble(), "value");
}

void tst_CameraBehaviour::rangesFollowEachOther()
{
    const auto max = [this](const char *name) {
        return arv_gc_integer_get_max(ARV_GC_INTEGER(m_pDevice->node(name)), nullptr);
    };
    QCOMPARE(max("Width"), qint64(2592 - 72));
    QCOMPARE(max("OffsetX"), qint64(2592 - 2448));
    QVERIFY(m_pDevice->setInteger("Width", 1024));
    QCOMPARE(max("OffsetX"), qint64(2592 - 1024));
    // a larger binning factor draws the region after it
    QVERIFY(m_pDevice->setInteger("BinningHorizontal", 4));
    QCOMPARE(m_pDevice->integer("Width"), qint64(648));
    QCOMPARE(m_pDevice->integer("OffsetX"), qint64(0));
}

void tst_CameraBehaviour::selectorsChooseTheirElement_data()
{
    QTest::addColumn<QString>("selector");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("feature");
    QTest::addColumn<double>("expected");
    QTest::newRow("pIndex, 2 bytes") << "BlackLevelSelector" << 2 << "BlackLevel" << 2.0;
    QTest::newRow("pIndex, 8 byte float") << "TimerSelector" << 1 << "TimerDuration" << 2500.5;
    QTest::newRow("pIndex over Integer")
        << "DefectPixelIndex" << 3 << "DefectPixelX" << double(137 + 3 * 409);
    QTest::newRow("pAddress") << "CounterSelector" << 1 << "CounterDuration" << 1000.0;
    QTest::newRow("pAddress of two selectors")
        << "LUTSelector" << 1 << "LUTValue" << double(1023 - 256);
    QTest::newRow("bit of a word") << "UserOutputSelector" << 2 << "UserOutputValue" << 0.0;
}

void tst_CameraBehaviour::selectorsChooseTheirElement()
{
    QFETCH(QString, selector);
    QFETCH(int, position);
    QFETCH(QString, feature);
    QFETCH(double, expected);
    QVERIFY(m_pDevice->setInteger(selector, position));
    QCOMPARE(m_pDevice->value(feature).toDouble(), expected);
}

void tst_CameraBehaviour::conditionsFollowTheirNodes_data()
{
    QTest::addColumn<QString>("cause");
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("feature");
    QTest::addColumn<bool>("asksLock");
    QTest::addColumn<bool>("before");
    QTest::newRow("transport layer lock") << "TLParamsLocked" << 1 << "Width" << true << false;
    QTest::newRow("lock by two conditions")
        << "ExposureMode" << 0 << "ExposureTime" << true << false;
    QTest::newRow("lock by a selector") << "UserSetSelector" << 1 << "UserSetSave" << true << true;
    QTest::newRow("available by a mode")
        << "AcquisitionMode" << 2 << "AcquisitionFrameCount" << false << false;
    QTest::newRow("unavailable by a bypass")
        << "SharpnessEnable" << 0 << "Sharpness" << false << true;
}

void tst_CameraBehaviour::conditionsFollowTheirNodes()
{
    QFETCH(QString, cause);
    QFETCH(int, value);
    QFETCH(QString, feature);
    QFETCH(bool, asksLock);
    QFETCH(bool, before);
    const auto question =
        asksLock ? arv_gc_feature_node_is_locked : arv_gc_feature_node_is_available;
    QCOMPARE(m_pDevice->flag(question, feature), before);
    QVERIFY2(m_pDevice->setInteger(cause, value), qPrintable(m_pDevice->m_strError));
    QCOMPARE(m_pDevice->flag(question, feature), !before);
}

QStringList tst_CameraBehaviour::availableEntries(const char *name)
{
    guint count = 0;
    const char **names = arv_gc_enumeration_dup_available_string_values(
        ARV_GC_ENUMERATION(m_pDevice->node(name)), &count, nullptr);
    QStringList entries;
    for (guint i = 0; i < count; ++i) {
        entries.append(QString::fromUtf8(names[i]));
    }
    g_free(names);
    entries.sort();
    return entries;
}

void tst_CameraBehaviour::entriesComeAndGo()
{
    QCOMPARE(availableEntries("PixelFormat"), (QStringList{"Mono10", "Mono10p", "Mono8"}));
    QVERIFY(m_pDevice->setInteger("ADCBitDepth", 8));
    QCOMPARE(availableEntries("PixelFormat"), QStringList{"Mono8"});
    QCOMPARE(m_pDevice->value("PixelFormat").toLongLong(), qint64(0x01080001));
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

void tst_CameraBehaviour::aResetLoadsTheDefaultSet_data()
{
    QTest::addColumn<double>("factory");
    QTest::newRow("area-camera") << 5000.0;
    QTest::newRow("line-camera") << 30.0;
    QTest::newRow("grabber-camera") << 30.0;
}

void tst_CameraBehaviour::aResetLoadsTheDefaultSet()
{
    QFETCH(double, factory);
    const auto simulated = SimulatedDevices::builtIn(QTest::currentDataTag());
    simulated.control->setRestartTime(60);
    OpenedDevice d(simulated);
    QVERIFY(d.setNumber("ExposureTime", 55));
    QVERIFY(d.setInteger("UserSetSelector", 1));
    QVERIFY(d.execute("UserSetSave"));
    QVERIFY(d.setInteger("UserSetDefault", 1));
    QVERIFY(d.setInteger("UserSetSelector", 0));
    QVERIFY(d.execute("UserSetLoad"));
    QCOMPARE(d.number("ExposureTime"), factory);
    QVERIFY(!d.execute("UserSetSave")); // nobody writes the factory's
    QVERIFY(d.execute("TriggerSoftware"));
    QCOMPARE(d.integer("TriggerSoftwareCount"), qint64(1));
    QVERIFY(d.execute("DeviceReset"));
    QTRY_VERIFY(d.number("ExposureTime") == 55.0 && d.m_nErrorCode < 0);
    QCOMPARE(d.integer("TriggerSoftwareCount"), qint64(0));
}

QTEST_GUILESS_MAIN(tst_CameraBehaviour)
#include "tst_CameraBehaviour.moc"
