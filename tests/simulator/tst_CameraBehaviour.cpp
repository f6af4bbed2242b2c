#include "OpenedDevice.h"
#include "host/devicetask/CameraHost.h"

#include <QtTest>

/// What the firmware of the cameras does when its registers are written, that of area-camera before all.
class tst_CameraBehaviour : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void rangesFollowEachOther();
    void conditionsFollowTheirNodes_data();
    void conditionsFollowTheirNodes();
    void acquisitionRunsAndEnds();
    void lockedRegistersAreRefusedWhileGrabbing();
    void aResetLoadsTheDefaultSet_data();
    void aResetLoadsTheDefaultSet();

private:
    SimulatedDevices::Simulated m_simulated;
    std::unique_ptr<OpenedDevice> m_pDevice;
};

void tst_CameraBehaviour::init()
{
    m_simulated = SimulatedDevices::builtIn(QStringLiteral("area-camera"));
    m_pDevice = std::make_unique<OpenedDevice>(m_simulated);
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

void tst_CameraBehaviour::conditionsFollowTheirNodes_data()
{
    QTest::addColumn<QString>("cause");
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("feature");
    QTest::addColumn<bool>("asksLock");
    QTest::addColumn<bool>("before");
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
