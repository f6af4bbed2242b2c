#include "host/devicetask/CameraHost.h"
#include "host/devicetask/RealDevices.h"
#include "tests/workbench/WorkbenchProcess.h"

#include <QtTest>

/// Real devices that are asked for where there is none: addresses, exit codes and texts.
class DeviceOptionsTest : public QObject
{
    Q_OBJECT
private slots:
    void addresses();
    void refusedDevice_data();
    void refusedDevice();

private:
    WorkbenchProcess m_workbench;
};

void DeviceOptionsTest::addresses()
{
    QString error;
    QVERIFY(RealDevices::gige(" 127.0.0.77 ", &error));
    // Parsers of systems fill up, wrap around and cut; and some addresses are nobody's own.
    for (const char *address : {"camera-1", "127.1", "10.0.0.257", "10.0.0.1.2.3", "::1",
                                "255.255.255.255", "224.0.0.1", "0.0.0.0"}) {
        QVERIFY2(!RealDevices::gige(address, &error), address);
        QCOMPARE(error, QStringLiteral("'%1' is not the IPv4 address of a device.").arg(address));
    }
}

void DeviceOptionsTest::refusedDevice_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("reason");
    QTest::newRow("second opening of one device")
        << QStringList{"--gige", "127.0.0.77", "--gige", " 127.0.0.77"} << 1
        << QByteArray("'127.0.0.77' was asked for twice");
    QTest::newRow("second opening of one USB device")
        << QStringList{"--usb", "S1", "--usb", "S1"} << 1 << QByteArray("'S1' was asked for twice");
    QTest::newRow("first good device hides the bad one")
        << QStringList{"--device", "area-camera", "--gige", "nowhere"} << 1
        << QByteArray("'nowhere' is not the IPv4 address");
    QTest::newRow("computer without a camera waited for")
        << QStringList{"--gige", "127.0.0.77"} << 1 << QByteArray("no GigE Vision device");
    QTest::newRow("device that is not plugged in")
        << QStringList{"--usb", "no-such-device"} << 1 << QByteArray("no USB3 Vision device");
    QTest::newRow("empty id finds any device")
        << QStringList{"--usb="} << 2 << QByteArray("needs a value");
    QTest::newRow("values of which device")
        << QStringList{"--gige", "127.0.0.77", "--device", "area-camera", "--dump", "-"} << 2
        << QByteArray("one device");
    QTest::newRow("two descriptions checked, one reported")
        << QStringList{"--lint", "a.xml", "--lint", "b.xml"} << 2 << QByteArray("once");
}

void DeviceOptionsTest::refusedDevice()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, reason);
    if (!arguments.contains("--dump")) {
        arguments = QStringList{"--screenshot", m_workbench.path("never.png")} + arguments;
    }
    const WorkbenchProcess::Result result = m_workbench.run(arguments);
    QVERIFY(result.ended);
    QTEST(result.exitCode, "exitCode");
    QVERIFY2(result.err.startsWith("vexa-workbench: ") && result.err.contains(reason),
             result.err.constData());
    QCOMPARE(result.out, QByteArray());
    QVERIFY(!QFile::exists(m_workbench.path("never.png")));
}

QTEST_GUILESS_MAIN(DeviceOptionsTest)
#include "tst_device_options.moc"
