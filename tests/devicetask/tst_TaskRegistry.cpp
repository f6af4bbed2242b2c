#include "DeviceFixture.h"
#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "DeviceTaskModule/VexaCameraTranslator.h"

#include <QtTest>

#include <thread>

namespace {

QByteArray text(const QByteArray &name, const QByteArray &value)
{
    return "<String Name='" + name + "'><Value>" + value + "</Value></String>";
}

/// A DeviceScanType of 1 with these entries for 0 and 1.
QByteArray scanType(const QByteArray &zero, const QByteArray &one)
{
    return "<Enumeration Name='DeviceScanType'><EnumEntry Name='" + zero
        + "'><Value>0</Value></EnumEntry><EnumEntry Name='" + one
        + "'><Value>1</Value></EnumEntry><Value>1</Value></Enumeration>";
}

} // namespace

class TaskRegistryTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void factsComeFromWhoIsAsked_data();
    void factsComeFromWhoIsAsked();
    void refusedOpenings();
    void remarksAreKeptPerThreadAndTask();
    void translations();
};

void TaskRegistryTest::factsComeFromWhoIsAsked_data()
{
    QTest::addColumn<QByteArray>("nodes");
    QTest::addColumn<bool>("asksDevice");
    QTest::addColumn<QStringList>("facts"); // name, model, serial number
    QTest::addColumn<uint>("scanType");
    const auto row = [](const char *tag, const QByteArray &nodes, const QStringList &facts,
                        uint scanType = 1, bool asksDevice = true) {
        QTest::newRow(tag) << nodes << asksDevice << facts << scanType;
    };
    const QByteArray identity = text("DeviceModelName", "X-1") + text("DeviceSerialNumber", "0815");
    const QStringList named{"X-1 0815", "X-1", "0815"};
    row("source's facts overwritten without being asked to",
        identity + scanType("Areascan", "Linescan"), {"Test camera", "M", "S1"}, 1, false);
    row("user's name not preferred", identity + text("DeviceUserID", " Left door "),
        {"Left door", "X-1", "0815"});
    row("device without any answer loses the source's facts", {}, {"M S1", "M", "S1"});
    row("node that cannot be read taken for empty",
        "<String Name='DeviceModelName'><pValue>Gone</pValue></String>"
            + text("DeviceSerialNumber", "0815"),
        {"M 0815", "M", "0815"});
    row("line scan camera taken for area scan", identity + scanType("Areascan", "Linescan"), named,
        4);
    row("entry's number trusted against its name", identity + scanType("Linescan", "Areascan"),
        named);
}

void TaskRegistryTest::factsComeFromWhoIsAsked()
{
    QFETCH(QByteArray, nodes);
    QFETCH(bool, asksDevice);
    DeviceSource source = *deviceWith(describe(nodes)).source;
    source.asksDevice = asksDevice;
    CameraHost host;
    const CameraHost::OpenResult opened = host.openCamera(source);
    QVERIFY2(opened.cameraId >= 0, qPrintable(opened.error));
    QCameraBasicTask &task = *QTaskManager::Instance()->GetTaskByIDEx(opened.cameraId);
    QTEST((QStringList{task._GetCameraName(), task._GetCameraModelName(),
                       task._GetCameraSerialNum()}),
          "facts");
    QTEST(task._GetCamSacnType(), "scanType");
}

void TaskRegistryTest::refusedOpenings()
{
    CameraHost host;
    const QByteArray zeros(100, '\0');
    DeviceSource source = *deviceWith(zeros).source;
    const auto living = livingOf(source);
    QVERIFY(host.openCamera(source).error.contains("empty"));
    QCOMPARE(living->load(), 0);
    source.create = [](GError **error) -> ArvDevice * {
        g_set_error(error, ARV_DEVICE_ERROR, ARV_DEVICE_ERROR_NOT_FOUND,
                    "nobody answers at 10.0.0.1");
        return nullptr;
    };
    QVERIFY(host.openCamera(source).error.contains("nobody answers at 10.0.0.1"));
    source.create = [](GError **) -> ArvDevice * { return nullptr; };
    QVERIFY(!host.openCamera(source).error.isEmpty());
    QCOMPARE(QTaskManager::Instance()->GetTaskCount(), 0U);
    QCOMPARE(host.openCamera(*deviceWith(describe({}) + zeros).source).error, QString());
}

void TaskRegistryTest::remarksAreKeptPerThreadAndTask()
{
    CameraHost host;
    const auto device = deviceWith(describe({}));
    QCameraTask &one = taskOf(host.openCamera(*device.source).cameraId);
    QCameraTask &two = taskOf(host.openCamera(*device.source).cameraId);
    QVERIFY(!one.SetIntegerValue("Here", 1, nullptr));
    QVERIFY(!two.SetIntegerValue("There", 1, nullptr));
    QString before;
    QString after;
    std::thread([&] {
        before = one.GetLastErrorRemark();
        one.SetIntegerValue("Elsewhere", 1, nullptr);
        after = one.GetLastErrorRemark();
    }).join();
    QCOMPARE(before, QString());
    QVERIFY(after.contains("Elsewhere"));
    QVERIFY(one.GetLastErrorRemark().contains("Here"));
    QVERIFY(two.GetLastErrorRemark().contains("There"));
}

void TaskRegistryTest::translations()
{
    CameraHost host;
    DeviceSource source = *deviceWith(describe({})).source;
    VexaCameraTranslatorManager &manager = *VexaCameraTranslatorManager::getInstance();
    const int plain = int(host.openCamera(source).cameraId);
    source.translations = u8R"({"Gain": {"displayName": "增益", "description": "放大"},
                               "GainAuto": {"entries": {"Off": "关"}}, "Odd": 5})";
    const int id = int(host.openCamera(source).cameraId);
    QVERIFY(!manager.getCameraTranslator(plain));
    QVERIFY(!manager.getCameraTranslator(-1));
    VexaCameraTranslator &texts = *manager.getCameraTranslator(id);
    QCOMPARE(texts.getPropDisplayNameTrans("Gain"), QString::fromUtf8(u8"增益"));
    QCOMPARE(texts.getPropDescriptionTrans("Gain"), QString::fromUtf8(u8"放大"));
    QCOMPARE(texts.getPropEnumerationTrans("GainAuto", "Off"), QString::fromUtf8(u8"关"));
    QVERIFY(texts.getPropEnumerationTrans("GainAuto", "On").isEmpty());
    QVERIFY(texts.getPropDisplayNameTrans("GainAuto").isEmpty());
    host.closeCamera(id);
    QVERIFY(!manager.getCameraTranslator(id));
    // Who still holds it may still read it.
    QCOMPARE(texts.getPropDisplayNameTrans("Gain"), QString::fromUtf8(u8"增益"));

    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression("node texts of Test camera are not used"));
    source.translations = "{\"Gain\": {";
    QVERIFY(!manager.getCameraTranslator(int(host.openCamera(source).cameraId)));
}

QTEST_GUILESS_MAIN(TaskRegistryTest)
#include "tst_TaskRegistry.moc"
