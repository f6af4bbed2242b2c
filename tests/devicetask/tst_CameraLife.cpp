#include "DeviceFixture.h"
#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QTaskManager.h"

#include <QDir>
#include <QSignalSpy>
#include <QtTest>

#include <thread>
#include <vector>

namespace {

bool readReg(QCameraTask &task, int *error = nullptr)
{
    _NODE_INT_VALUE_ value{};
    return task.GetIntegerValue("Reg", &value, error, true, false);
}

int threadCount()
{
    return QDir(QStringLiteral("/proc/self/task"))
        .entryList(QDir::Dirs | QDir::NoDotAndDotDot)
        .size();
}

} // namespace

class CameraLifeTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void closingLeavesAHangingCallBehind();
    void hangingCallMakesTheDeviceSilent();
    void manyOpeningsUnderReadersLeaveNothing();
    void pointersOutliveTheClosing();
    void silentDeviceFailsAllReadersAtOnce();
    void oneSilentRegisterIsNoLoss();
    void lostDeviceIsOpenedAnew_data();
    void lostDeviceIsOpenedAnew();
    void controlLostWhileOpeningIsTold();
    void deviceOfAnotherHostIsReadOnly();
    void closingWhileGrabbingStopsTheDevice();
};

/// Four readers, one of which hangs in the device.
class HangingDevice
{
public:
    HangingDevice()
        : m_device(intReg("Reg", 16))
    {
        QCameraTask &task = m_device.task();
        m_device.control().blockNextAccess();
        for (int i = 0; i < 4; ++i) {
            m_readers.emplace_back([this, &task] {
                int error = 0;
                m_nRead += readReg(task, &error);
                m_nGone += error == int(0x90006000U);
            });
        }
        m_bHangs = QTest::qWaitFor([this] { return !m_device.control().accessLog().isEmpty(); });
    }
    ~HangingDevice()
    {
        m_device.control().unblock();
        join();
    }
    void join()
    {
        for (std::thread &reader : m_readers) {
            if (reader.joinable()) {
                reader.join();
            }
        }
    }

    DeviceFixture m_device;
    std::atomic<int> m_nRead{0};
    std::atomic<int> m_nGone{0};
    bool m_bHangs = false;

private:
    std::vector<std::thread> m_readers;
};

void CameraLifeTest::closingLeavesAHangingCallBehind()
{
    HangingDevice hanging;
    QVERIFY(hanging.m_bHangs);
    DeviceFixture &device = hanging.m_device;
    // The device is blocked until the end of this: whoever waits for it never comes back.
    QCOMPARE(device.task().ClearGenIcamBuffers(), 0);
    device.m_host.closeCamera(device.m_nId);
    hanging.join();
    QCOMPARE(hanging.m_nGone.load(), 4);
    QCOMPARE(device.m_pLiving->load(), 1);
    device.control().unblock();
    QTRY_COMPARE(device.m_pLiving->load(), 0);
}

void CameraLifeTest::hangingCallMakesTheDeviceSilent()
{
    HangingDevice hanging;
    QVERIFY(hanging.m_bHangs);
    QSignalSpy conditions(&hanging.m_device.m_host, &CameraHost::conditionChanged);
    QTRY_COMPARE_WITH_TIMEOUT(conditions.count(), 1, 30000);
    QCOMPARE(hanging.m_device.m_host.condition(hanging.m_device.m_nId),
             DeviceCondition::NotResponding);
    QTRY_COMPARE(hanging.m_nGone.load(), 3); // all but the one that hangs
    QVERIFY(!readReg(hanging.m_device.task()));
    hanging.m_device.control().unblock();
    hanging.join();
    QCOMPARE(hanging.m_nRead.load(), 1);
    QTRY_COMPARE(conditions.count(), 2);
    QCOMPARE(hanging.m_device.m_host.condition(hanging.m_device.m_nId), DeviceCondition::Live);
    QVERIFY(readReg(hanging.m_device.task()));
}

void CameraLifeTest::manyOpeningsUnderReadersLeaveNothing()
{
    CameraHost host;
    const auto device = deviceWith(describe(intReg("Reg", 16)));
    const auto living = livingOf(*device.source);
    device.control->setLogging(false);
    device.control->poke(16, QByteArray::fromHex("0badcafe"));
    std::atomic<bool> stop{false};
    std::atomic<int> reads{0};
    std::atomic<int> wrong{0};
    std::vector<QPointer<QCameraTask>> tasks;
    const int threads = threadCount();
    std::vector<std::thread> readers;
    for (int i = 0; i < 4; ++i) {
        readers.emplace_back([&] {
            while (!stop) {
                QCameraBasicTask *basic = QTaskManager::Instance()->GetTaskByIndex(0);
                QCameraTask *task = basic ? basic->_CameraTak() : nullptr;
                _NODE_INT_VALUE_ value{7, 7, 7, 7};
                const bool ok = task && task->GetIntegerValue("Reg", &value, nullptr, true, false);
                wrong += value.value != (ok ? 0x0badcafe : 7);
                reads += ok;
                if (task) {
                    task->GetAccessMode("Reg", nullptr);
                }
            }
        });
    }
    for (int i = 0; i < 50; ++i) {
        const long int id = host.openCamera(*device.source).cameraId;
        QVERIFY(id != NO_CAMERA_ID);
        tasks.emplace_back(&taskOf(id));
        const int before = reads;
        QVERIFY(QTest::qWaitFor([&] { return reads > before; }));
        host.closeCamera(id);
        QVERIFY(*living <= 1); // a new opening comes after the closing of the same device
        QVERIFY(QTaskManager::Instance()->IsCameraTaskReleased(id));
    }
    stop = true;
    for (std::thread &reader : readers) {
        reader.join();
    }
    QCOMPARE(wrong.load(), 0);
    QTRY_COMPARE(living->load(), 0);
    QTRY_VERIFY(threadCount() <= threads); // one of the test before may have ended meanwhile
    const auto kept = std::count_if(tasks.cbegin(), tasks.cend(),
                                    [](const auto &task) { return !task.isNull(); });
    QCOMPARE(int(kept), 8);
}

void CameraLifeTest::pointersOutliveTheClosing()
{
    DeviceFixture device(intReg("Reg", 16));
    QCameraBasicTask *basic = QTaskManager::Instance()->GetTaskByID(device.m_nId);
    QCameraTask *task = basic->_CameraTak();
    device.m_host.closeCamera(device.m_nId);
    QTRY_COMPARE(device.m_pLiving->load(), 0);
    QCOMPARE(basic->_GetCameraName(), QString("Test camera"));
    QVERIFY(!basic->_CameraTak());
    QVERIFY(task->m_bReleasing);
    QCOMPARE(int(task->GetCameraState()), int(TASK_CAMERA_CLOSED));
    int error = 0;
    QVERIFY(!readReg(*task, &error));
    QCOMPARE(error, int(0x90006000U));
    QCOMPARE(task->GetAccessMode("Reg", &error), 1);
    QVERIFY(!task->WriteMemory(0, "1234", 4, nullptr));
    device.m_host.closeCamera(device.m_nId);
}

void CameraLifeTest::silentDeviceFailsAllReadersAtOnce()
{
    DeviceFixture device(intReg("Reg", 16));
    QSignalSpy conditions(&device.m_host, &CameraHost::conditionChanged);
    QCameraTask &task = device.task();
    device.setFailing(ARV_DEVICE_ERROR_TIMEOUT);
    int error = 0;
    QVERIFY(!readReg(task, &error));
    QCOMPARE(error, int(0x90006001U));
    QTRY_COMPARE(conditions.count(), 1);
    QCOMPARE(conditions.at(0).at(0).value<long>(), device.m_nId);
    QCOMPARE(conditions.at(0).at(1).value<DeviceCondition>(), DeviceCondition::NotResponding);
    device.control().clearAccessLog();
    for (int i = 0; i < 100; ++i) {
        QVERIFY(!readReg(task, &error));
        QCOMPARE(error, int(0x90006000U));
    }
    QVERIFY(device.control().accessLog().size() < 100); // a few are the connection's own
    device.setFailing(0);
    QTRY_COMPARE(conditions.count(), 2);
    QCOMPARE(conditions.at(1).at(1).value<DeviceCondition>(), DeviceCondition::Live);
    QVERIFY(readReg(task));
}

void CameraLifeTest::oneSilentRegisterIsNoLoss()
{
    DeviceFixture device(intReg("Reg", 16) + intReg("Silent", 32));
    QSignalSpy conditions(&device.m_host, &CameraHost::conditionChanged);
    device.control().setFailing(32, ARV_DEVICE_ERROR_TIMEOUT);
    for (int i = 0; i < 50; ++i) {
        _NODE_INT_VALUE_ value{};
        int error = 0;
        QVERIFY(!device.task().GetIntegerValue("Silent", &value, &error, true, false));
        QCOMPARE(error, int(0x90006001U));
        QVERIFY(readReg(device.task()));
    }
    QCoreApplication::processEvents();
    QCOMPARE(conditions.count(), 0);
}

void CameraLifeTest::lostDeviceIsOpenedAnew_data()
{
    QTest::addColumn<bool>("byControl");
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<bool>("restarted");
    QTest::newRow("gone") << false << QByteArray() << false;
    QTest::newRow("controlLost") << true << QByteArray() << false;
    QTest::newRow("goneAfterItsReset") << false << QByteArray("DeviceReset") << true;
    QTest::newRow("goneAfterAnotherCommand") << false << QByteArray("Other") << false;
}

void CameraLifeTest::lostDeviceIsOpenedAnew()
{
    QFETCH(bool, byControl);
    QFETCH(QByteArray, command);
    QFETCH(bool, restarted);
    DeviceFixture device(
        intReg("Reg", 16) + intReg("Do", 32)
        + "<Command Name='DeviceReset'><pValue>Do</pValue><CommandValue>1</CommandValue></Command>"
          "<Command Name='Other'><pValue>Do</pValue><CommandValue>1</CommandValue></Command>");
    CameraHost &host = device.m_host;
    SimulatorControl &control = device.control();
    const long int id = device.m_nId;
    QCameraTask &task = device.task();
    QVERIFY(command.isEmpty() || task.ExecuteCommand(command, nullptr));
    QVERIFY(host.startGrabbing(id));
    QSignalSpy conditions(&host, &CameraHost::conditionChanged);
    if (byControl) {
        std::thread([&] {
            control.loseControl();
            control.loseControl();
        }).join();
        QCOMPARE(conditions.count(), 0); // only from this thread's own events
    } else {
        control.vanish();
        QVERIFY(!readReg(task));
    }
    QTRY_COMPARE(conditions.count(), 1);
    QCOMPARE(conditions.at(0).at(1).value<DeviceCondition>(), DeviceCondition::Lost);
    int error = 0;
    QVERIFY(!readReg(task, &error));
    QCOMPARE(error, int(0x90006000U));
    QCOMPARE(host.condition(id), DeviceCondition::Lost);

    control.vanish();
    const CameraHost::OpenResult early = host.reopenCamera(id);
    QVERIFY(early.cameraId == NO_CAMERA_ID && !early.error.isEmpty());
    control.comeBack(); // but it does not answer yet
    device.setFailing(ARV_DEVICE_ERROR_TIMEOUT);
    QCOMPARE(host.reopenCamera(id).cameraId, NO_CAMERA_ID);
    QCOMPARE(host.condition(id), DeviceCondition::Lost);
    device.setFailing(0);
    const CameraHost::OpenResult result = host.reopenCamera(id);
    QVERIFY2(result.cameraId == id, qPrintable(result.error));
    QCOMPARE(result.restarted, restarted);
    QVERIFY(readReg(task));
    QCOMPARE(int(task.GetCameraState()), int(TASK_CAMERA_OPEN));
    QTRY_COMPARE(conditions.count(), 2);
    QCOMPARE(conditions.at(1).at(1).value<DeviceCondition>(), DeviceCondition::Live);
    QTRY_COMPARE(device.m_pLiving->load(), 1);
    host.closeCamera(id);
    QCOMPARE(host.reopenCamera(id).cameraId, NO_CAMERA_ID);
    QTRY_COMPARE(device.m_pLiving->load(), 0);
}

void CameraLifeTest::controlLostWhileOpeningIsTold()
{
    CameraHost host;
    QSignalSpy conditions(&host, &CameraHost::conditionChanged);
    DeviceSource source = *deviceWith(describe({})).source;
    source.controls = [](ArvDevice *device) {
        g_signal_emit_by_name(device, "control-lost");
        return true;
    };
    const long int id = host.openCamera(source).cameraId;
    QTRY_COMPARE(conditions.count(), 1);
    QCOMPARE(host.condition(id), DeviceCondition::Lost);
}

void CameraLifeTest::deviceOfAnotherHostIsReadOnly()
{
    CameraHost host;
    const auto device = deviceWith(describe(intReg("Reg", 16)));
    device.control->setControlledElsewhere(true);
    const CameraHost::OpenResult result = host.openCamera(*device.source);
    QCOMPARE(result.accessMode, 2U);
    QCOMPARE(host.condition(result.cameraId), DeviceCondition::ControlledElsewhere);
    QCameraTask &task = taskOf(result.cameraId);
    QVERIFY(readReg(task));
    device.control->clearAccessLog();
    int error = 0;
    QVERIFY(!task.SetIntegerValue("Reg", 1, &error));
    QCOMPARE(error, int(0x90006104U));
    QVERIFY(task.GetLastErrorRemark().contains("another host"));
    QVERIFY(!task.WriteMemory(16, "1234", 4, nullptr));
    QVERIFY(device.control->accessLog().isEmpty());
}

void CameraLifeTest::closingWhileGrabbingStopsTheDevice()
{
    DeviceFixture device(
        intReg("TLParamsLocked", 16) + intReg("Do", 32)
        + "<Command Name='AcquisitionStart'><pValue>Do</pValue><CommandValue>1</CommandValue>"
          "</Command><Command Name='AcquisitionStop'><pValue>Do</pValue>"
          "<CommandValue>2</CommandValue></Command>");
    QVERIFY(device.m_host.startGrabbing(device.m_nId));
    device.m_host.closeCamera(device.m_nId);
    // A new opening comes after the old device has gone.
    QVERIFY(device.m_host.openCamera(*device.m_device.source).cameraId != NO_CAMERA_ID);
    QCOMPARE(device.m_pLiving->load(), 1);
    QCOMPARE(device.control().peek(32, 4), QByteArray::fromHex("00000002"));
    QCOMPARE(device.control().peek(16, 4), QByteArray(4, '\0'));
}

QTEST_GUILESS_MAIN(CameraLifeTest)
#include "tst_CameraLife.moc"
