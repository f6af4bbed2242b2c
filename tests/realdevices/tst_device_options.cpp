#include "tests/workbench/WorkbenchProcess.h"

#include <QtTest>

/// The options for real devices where there is none: exit codes and texts.
class DeviceOptionsTest : public QObject
{
    Q_OBJECT
private slots:
    void refusedDevice_data();
    void refusedDevice();
    void listHasFiveColumns();
    void lint_data();
    void lint();

private:
    WorkbenchProcess m_workbench;
};

void DeviceOptionsTest::refusedDevice_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("reason");
    const QByteArray malformed = "is not the IPv4 address of a device";
    QTest::newRow("name taken for an address")
        << QStringList{"--gige", "camera-1"} << 1 << "'camera-1' " + malformed;
    QTest::newRow("three numbers filled up by the system's parser")
        << QStringList{"--gige", "127.1"} << 1 << "'127.1' " + malformed;
    QTest::newRow("number above 255 wrapped around")
        << QStringList{"--gige", "10.0.0.257"} << 1 << malformed;
    QTest::newRow("six numbers cut to four")
        << QStringList{"--gige", "10.0.0.1.2.3"} << 1 << malformed;
    QTest::newRow("IPv6 address") << QStringList{"--gige", "::1"} << 1 << malformed;
    QTest::newRow("everybody's address asked")
        << QStringList{"--gige", "255.255.255.255"} << 1 << malformed;
    QTest::newRow("group asked") << QStringList{"--gige", "224.0.0.1"} << 1 << malformed;
    QTest::newRow("nobody's address asked") << QStringList{"--gige", "0.0.0.0"} << 1 << malformed;
    QTest::newRow("second opening of one device")
        << QStringList{"--gige", "127.0.0.77", "--gige", " 127.0.0.77"} << 1
        << QByteArray("'127.0.0.77' was asked for twice");
    QTest::newRow("second opening of one USB device")
        << QStringList{"--usb", "S1", "--usb", "S1"} << 1 << QByteArray("'S1' was asked for twice");
    QTest::newRow("first good device hides the bad one")
        << QStringList{"--device", "area-camera", "--gige", "nowhere"} << 1 << malformed;
    QTest::newRow("computer without a camera waited for")
        << QStringList{"--gige", "127.0.0.77"} << 1 << QByteArray("no GigE Vision device");
    QTest::newRow("device that is not plugged in")
        << QStringList{"--usb", "no-such-device"} << 1 << QByteArray("no USB3 Vision device");
    QTest::newRow("address missing") << QStringList{"--gige"} << 2 << QByteArray("gige");
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
    QFETCH(int, exitCode);
    QFETCH(QByteArray, reason);
    if (!arguments.contains("--dump")) {
        arguments = QStringList{"--screenshot", m_workbench.path("never.png")} + arguments;
    }
    QElapsedTimer timer;
    timer.start();
    const WorkbenchProcess::Result result = m_workbench.run(arguments);
    QVERIFY(result.ended);
    QCOMPARE(result.exitCode, exitCode);
    QVERIFY2(result.err.startsWith("vexa-workbench: ") && result.err.contains(reason),
             result.err.constData());
    QCOMPARE(result.out, QByteArray());
    QVERIFY(!QFile::exists(m_workbench.path("never.png")));
    QVERIFY2(timer.elapsed() < 15000, QByteArray::number(timer.elapsed()));
}

void DeviceOptionsTest::listHasFiveColumns()
{
    const WorkbenchProcess::Result result = m_workbench.run({"--list"});
    QVERIFY(result.ended);
    QCOMPARE(result.exitCode, 0);
    const QByteArrayList lines = result.out.chopped(1).split('\n');
    QVERIFY2(('\n' + result.out).contains("\narea-camera\tGigE\t"), result.out.constData());
    for (const QByteArray &line : lines) {
        QCOMPARE(line.count('\t'), 4);
    }
}

void DeviceOptionsTest::lint_data()
{
    const QByteArray feature = "<Integer Name=\"Level\"><Value>1</Value></Integer>";
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("finding");
    QTest::newRow("good description complained about")
        << workbenchDescription({"Level"}, feature) << 0 << QByteArray();
    QTest::newRow("missing target passed over") << workbenchDescription(
        {"Level"}, "<Integer Name=\"Level\"><pValue>Gone</pValue></Integer>")
                                                << 1 << QByteArray("Level");
}

void DeviceOptionsTest::lint()
{
    QFETCH(QByteArray, xml);
    QFETCH(int, exitCode);
    QFETCH(QByteArray, finding);
    const QString file = m_workbench.write("lint.xml", xml);
    const WorkbenchProcess::Result result = m_workbench.run({"--lint", file});
    QVERIFY(result.ended);
    QVERIFY2(result.exitCode == exitCode, result.out + result.err);
    QVERIFY2(result.out.contains(finding), result.out.constData());
    QCOMPARE(result.out.isEmpty(), exitCode == 0);
}

QTEST_GUILESS_MAIN(DeviceOptionsTest)
#include "tst_device_options.moc"
