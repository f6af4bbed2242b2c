#include "DeviceFixture.h"
#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QTaskManager.h"

#include <QtTest>

namespace {

QByteArray text(const QByteArray &name, const QByteArray &value)
{
    return "<String Name=\"" + name + "\"><Value>" + value + "</Value></String>";
}

QByteArray scanType(int value, const QByteArray &area, const QByteArray &line, int areaValue = 0,
                    int lineValue = 1)
{
    return "<Enumeration Name=\"DeviceScanType\"><EnumEntry Name=\"" + area + "\"><Value>"
        + QByteArray::number(areaValue) + "</Value></EnumEntry><EnumEntry Name=\"" + line
        + "\"><Value>" + QByteArray::number(lineValue) + "</Value></EnumEntry><Value>"
        + QByteArray::number(value) + "</Value></Enumeration>";
}

const QByteArray IDENTITY = text("DeviceModelName", "X-1") + text("DeviceSerialNumber", "0815");

} // namespace

/// What the registry tells of a device that is asked for it, and of one that is not.
class DeviceFactsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void facts_data();
    void facts();
};

void DeviceFactsTest::facts_data()
{
    QTest::addColumn<QByteArray>("nodes");
    QTest::addColumn<bool>("asks");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("model");
    QTest::addColumn<QString>("serial");
    QTest::addColumn<uint>("scanType");
    QTest::newRow("source's facts overwritten without being asked to")
        << IDENTITY + scanType(1, "Areascan", "Linescan") << false << "Memory camera"
        << "M"
        << "S1" << 1U;
    QTest::newRow("user's name not preferred")
        << IDENTITY + text("DeviceUserID", " Left door ") << true << "Left door"
        << "X-1"
        << "0815" << 1U;
    QTest::newRow("empty user's name shown")
        << IDENTITY + text("DeviceUserID", "") << true << "X-1 0815"
        << "X-1"
        << "0815" << 1U;
    QTest::newRow("serial number of older devices missed")
        << text("DeviceModelName", "X-1") + text("DeviceID", "4711") << true << "X-1 4711"
        << "X-1"
        << "4711" << 1U;
    QTest::newRow("device without any answer loses the source's facts")
        << QByteArray() << true << "M S1"
        << "M"
        << "S1" << 1U;
    QTest::newRow("node that cannot be read taken for empty")
        << "<String Name=\"DeviceModelName\"><pValue>Gone</pValue></String>"
            + text("DeviceSerialNumber", "0815")
        << true << "M 0815"
        << "M"
        << "0815" << 1U;
    QTest::newRow("line scan camera taken for area scan")
        << IDENTITY + scanType(1, "Areascan", "Linescan") << true << "X-1 0815"
        << "X-1"
        << "0815" << 4U;
    QTest::newRow("entry's number trusted against its name")
        << IDENTITY + scanType(1, "Areascan", "Linescan", 1, 0) << true << "X-1 0815"
        << "X-1"
        << "0815" << 1U;
    QTest::newRow("maker's own entry names taken for area scan")
        << IDENTITY + scanType(1, "Matrix", "Row") << true << "X-1 0815"
        << "X-1"
        << "0815" << 4U;
}

void DeviceFactsTest::facts()
{
    QFETCH(QByteArray, nodes);
    QFETCH(bool, asks);
    const auto state = std::make_shared<MemoryDeviceState>(describe(nodes));
    DeviceSource source = sourceOf(state);
    source.asksDevice = asks;
    CameraHost host;
    const CameraHost::OpenResult opened = host.openCamera(source);
    QVERIFY2(opened.cameraId >= 0, qPrintable(opened.error));
    QCameraBasicTask *task = QTaskManager::Instance()->GetTaskByIDEx(opened.cameraId);
    QTEST(task->_GetCameraName(), "name");
    QTEST(task->_GetCameraModelName(), "model");
    QTEST(task->_GetCameraSerialNum(), "serial");
    QTEST(task->_GetCamSacnType(), "scanType");
    QCOMPARE(task->_GetDevType(), unsigned(DEVICE_TYPE_GIGE));
}

QTEST_GUILESS_MAIN(DeviceFactsTest)
#include "tst_DeviceFacts.moc"
