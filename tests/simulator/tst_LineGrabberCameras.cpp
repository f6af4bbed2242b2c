#include "OpenedDevice.h"
#include "host/devicetask/CameraHost.h"

#include <QtTest>

/// What tells line-camera and grabber-camera from the other devices.
class tst_LineGrabberCameras : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void lineRateBoundsTheFrameRate();
    void encoderTurnsWhileGrabbing();
    void lookUpTableIsOneBlock();
    void bothKeepUserSets_data();
    void bothKeepUserSets();
    void lineCameraIsOne();
    void grabberPortsShareTheirBoard();
    void filesOfTheLineCamera();
};

void tst_LineGrabberCameras::lineRateBoundsTheFrameRate()
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
    QVERIFY(d.execute("AcquisitionStart"));
    QVERIFY(!d.setInteger("Height", 500));
    QCOMPARE(d.m_nErrorCode, int(ARV_DEVICE_ERROR_PROTOCOL_ERROR_ACCESS_DENIED));
    QVERIFY(d.execute("AcquisitionStop"));
    QVERIFY(d.setInteger("Height", 500));
}

void tst_LineGrabberCameras::encoderTurnsWhileGrabbing()
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

void tst_LineGrabberCameras::lookUpTableIsOneBlock()
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

void tst_LineGrabberCameras::bothKeepUserSets_data()
{
    QTest::addColumn<QString>("device");
    QTest::newRow("line") << "line-camera";
    QTest::newRow("grabber") << "grabber-camera";
}

void tst_LineGrabberCameras::bothKeepUserSets()
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

void tst_LineGrabberCameras::lineCameraIsOne()
{
    const auto line = SimulatedDevices::builtIn("line-camera");
    QCOMPARE(line.source->scanType, 4u);
    QCOMPARE(line.source->ipv4, 0u);
    OpenedDevice d(line);
    QCOMPARE(d.value("DeviceScanType").toLongLong(), qint64(1));
    QCOMPARE(d.text("DeviceSerialNumber"), line.source->serial);
    QCOMPARE(d.text("ZRADeviceFirmwareVersion"), QStringLiteral("ZRA 1.8.3"));
    QVERIFY(SimulatedDevices::builtIn("line-camera", 1).source->serial != line.source->serial);
}

void tst_LineGrabberCameras::grabberPortsShareTheirBoard()
{
    const auto first = SimulatedDevices::builtIn("grabber-camera", 0);
    const auto second = SimulatedDevices::builtIn("grabber-camera", 1);
    const auto third = SimulatedDevices::builtIn("grabber-camera", 2);
    QCOMPARE(first.source->serial, second.source->serial);
    QVERIFY(first.source->serial != third.source->serial);
    OpenedDevice a(first);
    OpenedDevice b(second);
    QCOMPARE(a.text("DeviceSerialNumber"), b.text("DeviceSerialNumber"));
    QVERIFY(a.text("DeviceUserID") != b.text("DeviceUserID"));
    QVERIFY(a.setInteger("Width", 1024));
    QCOMPARE(b.integer("Width"), qint64(2048)); // each has a memory of its own
}

void tst_LineGrabberCameras::filesOfTheLineCamera()
{
    OpenedDevice d(SimulatedDevices::builtIn("line-camera"));
    QVERIFY(d.setInteger("FileSelector", 1));
    QCOMPARE(d.integer("FileSize"), qint64(2048));
    QVERIFY(d.setInteger("FileOperationSelector", 0));
    QVERIFY(d.execute("FileOperationExecute"));
    QCOMPARE(d.value("FileOperationStatus").toLongLong(), qint64(0));
    QVERIFY(d.setInteger("FileOperationSelector", 2));
    QVERIFY(d.execute("FileOperationExecute"));
    QCOMPARE(d.integer("FileOperationResult"), qint64(512));
}

QTEST_GUILESS_MAIN(tst_LineGrabberCameras)
#include "tst_LineGrabberCameras.moc"
