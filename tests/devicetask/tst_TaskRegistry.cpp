#include "DeviceFixture.h"
#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QChannelTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "DeviceTaskModule/VexaCameraTranslator.h"
#include "DeviceTaskModule/VexaOperateCameraThread.h"

#include <QtTest>

#include <thread>

class TaskRegistryTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void noRegistryWithoutHost();
    void lookUps();
    void factsOfATask();
    void refusedSourceTellsWhy();
    void remarksAreKeptPerThreadAndTask();
    void operationsThatAreNotOffered();
    void translations();
    void brokenTranslations_data();
    void brokenTranslations();
};

void TaskRegistryTest::noRegistryWithoutHost()
{
    QVERIFY(!QTaskManager::Instance());
    {
        const CameraHost host;
        QVERIFY(QTaskManager::Instance());
    }
    QVERIFY(!QTaskManager::Instance());
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("not carried out"));
    VexaOperateCameraThread::addOperateCamera(VEXA_OPERATOR_CLOSE, 1, true);
}

void TaskRegistryTest::lookUps()
{
    CameraHost host;
    const auto state = std::make_shared<MemoryDeviceState>(describe({}));
    const long int first = host.openCamera(sourceOf(state, "A")).cameraId;
    const long int second = host.openCamera(sourceOf(state, "B")).cameraId;
    const long int third = host.openCamera(sourceOf(state, "A")).cameraId;
    QTaskManager &manager = *QTaskManager::Instance();
    QCOMPARE(manager.GetTaskCount(), 3U);
    QCOMPARE(manager.GetCameraCount("A"), 2);
    QCOMPARE(manager.GetCameraCount("C"), 0);
    QCOMPARE(manager.GetTaskByIndex(1)->_GetCameraBasicTaskID(), second);
    QVERIFY(!manager.GetTaskByIndex(3));
    QVERIFY(!manager.GetTaskByIndex(-1));
    QVERIFY(!manager.GetTaskByID(NO_CAMERA_ID));
    QCOMPARE(manager.GetTaskByIDEx(third), manager.GetTaskByID(third));
    QVERIFY(!manager.IsCameraTaskReleased(second));
    host.closeCamera(second);
    QVERIFY(manager.IsCameraTaskReleased(second));
    QVERIFY(!manager.IsCameraTaskReleased(third + 1));
    QVERIFY(!manager.IsCameraTaskReleased(NO_CAMERA_ID));
    QVERIFY(!manager.GetTaskByIDEx(second));
    QCOMPARE(manager.GetTaskByIndex(1)->_GetCameraBasicTaskID(), third);
    QVERIFY(first != third);
}

void TaskRegistryTest::factsOfATask()
{
    CameraHost host;
    DeviceSource source = sourceOf(std::make_shared<MemoryDeviceState>(describe({})));
    source.ipv4 = 0xC0A80001;
    source.deviceType = DEVICE_TYPE_U3V;
    source.scanType = 4;
    source.foreign = true;
    const long int id = host.openCamera(source).cameraId;
    QCameraBasicTask &basic = *QTaskManager::Instance()->GetTaskByID(id);
    QCameraTask &task = *basic._CameraTak();
    QCOMPARE(basic._GetIP(), 0xC0A80001U);
    QCOMPARE(basic._GetDevType(), 4U);
    QCOMPARE(task.deviceType(), 4U);
    QCOMPARE(basic._GetCamSacnType(), 4U);
    QVERIFY(task.IsOtherCamera());
    QCOMPARE(task.GetTaskCameraID(), int(id));
    task.SetCameraName("renamed");
    QCOMPARE(basic._GetCameraName(), QString("renamed"));
    QVERIFY(!task.IsPromptSuppressed());
    host.setPromptSuppressed(id, true);
    QVERIFY(task.IsPromptSuppressed());
    unsigned int channel = 0;
    QCOMPARE(task.channelCount(), 1U);
    task.getChannelTaskById(channel)->SetContainDMCode(true);
    QVERIFY(task.getChannelTaskById(channel)->ContainsDMCode());
    channel = 1;
    QVERIFY(!task.getChannelTaskById(channel));
    QCOMPARE(task.ClearGenIcamBuffers(), 0);
    QVERIFY(task.InvalidateNode("One"));
    QVERIFY(!task.InvalidateNode("NoSuchNode"));
}

void TaskRegistryTest::refusedSourceTellsWhy()
{
    CameraHost host;
    DeviceSource source = sourceOf(nullptr);
    source.create = [](GError **error) -> ArvDevice * {
        g_set_error(error, ARV_DEVICE_ERROR, ARV_DEVICE_ERROR_NOT_FOUND,
                    "nobody answers at 10.0.0.1");
        return nullptr;
    };
    QVERIFY(host.openCamera(source).error.contains("nobody answers at 10.0.0.1"));
    source.create = [](GError **) -> ArvDevice * { return nullptr; };
    QVERIFY(!host.openCamera(source).error.isEmpty());
}

void TaskRegistryTest::remarksAreKeptPerThreadAndTask()
{
    CameraHost host;
    const auto state = std::make_shared<MemoryDeviceState>(describe({}));
    QTaskManager &manager = *QTaskManager::Instance();
    QCameraTask &one =
        *manager.GetTaskByID(host.openCamera(sourceOf(state)).cameraId)->_CameraTak();
    QCameraTask &two =
        *manager.GetTaskByID(host.openCamera(sourceOf(state)).cameraId)->_CameraTak();
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

void TaskRegistryTest::operationsThatAreNotOffered()
{
    DeviceFixture device({});
    QCameraTask &task = device.task();
    qint64 total = -1;
    qint64 done = -1;
    QCOMPARE(task.GetFileAccessProgress(&total, &done), 0);
    QVERIFY(total == -1 && done == -1);
    QVERIFY(task.ReadDeviceFile("/tmp/x", "UserSet1") != 0);
    QVERIFY(task.GetLastErrorRemark().contains("FileSelector"));
    QVERIFY(task.WriteDeviceFile("/tmp/x", "UserSet1") != 0);
    QVERIFY(task.LoadFeatures("/tmp/x") != 0);
    QVERIFY(task.SaveFeatures("/tmp/x") != 0);
    QVERIFY(task.GetLastErrorRemark().contains("features"));
}

void TaskRegistryTest::translations()
{
    CameraHost host;
    DeviceSource source = sourceOf(std::make_shared<MemoryDeviceState>(describe({})));
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
    QVERIFY(texts.getPropDisplayNameTrans("NoSuchNode").isEmpty());
    host.closeCamera(id);
    QVERIFY(!manager.getCameraTranslator(id));
    QCOMPARE(texts.getPropDisplayNameTrans("Gain"), QString::fromUtf8(u8"增益"));
}

void TaskRegistryTest::brokenTranslations_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::newRow("cutOff") << QByteArray("{\"Gain\": {");
    QTest::newRow("list") << QByteArray("[1, 2]");
    QTest::newRow("text") << QByteArray("Gain = gain");
}

void TaskRegistryTest::brokenTranslations()
{
    QFETCH(QByteArray, json);
    CameraHost host;
    DeviceSource source = sourceOf(std::make_shared<MemoryDeviceState>(describe({})));
    source.translations = json;
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression("node texts of Memory camera are not used"));
    const CameraHost::OpenResult result = host.openCamera(source);
    QVERIFY(result.cameraId != NO_CAMERA_ID);
    QVERIFY(!VexaCameraTranslatorManager::getInstance()->getCameraTranslator(int(result.cameraId)));
}

QTEST_GUILESS_MAIN(TaskRegistryTest)
#include "tst_TaskRegistry.moc"
