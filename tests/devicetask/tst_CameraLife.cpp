#include "DeviceFixture.h"
#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "DeviceTaskModule/VexaOperateCameraThread.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
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

} // namespace

class CameraLifeTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void closeDoesNotWaitForAHangingCall();
    void releasingFailsWaitersAtOnce();
    void readersWhileOpeningAndClosing();
    void pointersOutliveTheClosing();
    void manyOpeningsLeaveNothing();
    void silentDeviceIsLostForAllReaders();
    void oneSilentRegisterIsNoLoss();
    void controlLost();
    void grabbing_data();
    void grabbing();
    void closingWhileGrabbingStopsTheDevice();
    void closeRequest();
};

void CameraLifeTest::closeDoesNotWaitForAHangingCall()
{
    DeviceFixture device(intReg("Reg", 16));
    QCameraTask &task = device.task();
    device.m_pState->block();
    int hanging = 0;
    int waiting = 0;
    bool hangingOk = false;
    bool waitingOk = true;
    std::thread first([&] { hangingOk = readReg(task, &hanging); });
    QVERIFY(device.m_pState->waitForBlocked());
    std::thread second([&] { waitingOk = readReg(task, &waiting); });
    QElapsedTimer timer;
    timer.start();
    device.m_host.closeCamera(device.m_nId);
    second.join();
    QVERIFY2(timer.elapsed() < 1000, "closing waited for the device");
    QVERIFY(!waitingOk);
    QCOMPARE(waiting, int(0x90006000U));
    QCOMPARE(device.m_pState->m_nLiving.load(), 1);
    device.m_pState->unblock();
    first.join();
    QVERIFY(hangingOk);
    QTRY_COMPARE(device.m_pState->m_nLiving.load(), 0);
}

void CameraLifeTest::releasingFailsWaitersAtOnce()
{
    DeviceFixture device(intReg("Reg", 16));
    QCameraTask &task = device.task();
    device.m_pState->block();
    std::thread first([&] { readReg(task); });
    QVERIFY(device.m_pState->waitForBlocked());
    bool waitingOk = true;
    std::thread second([&] { waitingOk = readReg(task); });
    task.m_bReleasing = true;
    second.join();
    QVERIFY(!waitingOk);
    device.m_pState->unblock();
    first.join();
    QVERIFY(!readReg(task));
}

void CameraLifeTest::readersWhileOpeningAndClosing()
{
    CameraHost host;
    const auto state = std::make_shared<MemoryDeviceState>(describe(intReg("Reg", 16)));
    state->poke(16, QByteArray::fromHex("0badcafe"));
    std::atomic<bool> stop{false};
    std::atomic<int> reads{0};
    std::atomic<int> wrong{0};
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
    for (int i = 0; i < 200; ++i) {
        const long int id = host.openCamera(sourceOf(state)).cameraId;
        QVERIFY(id != NO_CAMERA_ID);
        const int before = reads;
        const QDeadlineTimer deadline(5000);
        while (reads == before && !deadline.hasExpired()) {
            std::this_thread::yield();
        }
        QVERIFY(reads > before);
        host.closeCamera(id);
        QVERIFY(QTaskManager::Instance()->IsCameraTaskReleased(id));
    }
    stop = true;
    for (std::thread &reader : readers) {
        reader.join();
    }
    QCOMPARE(wrong.load(), 0);
    QTRY_COMPARE(state->m_nLiving.load(), 0);
}

void CameraLifeTest::pointersOutliveTheClosing()
{
    DeviceFixture device(intReg("Reg", 16));
    QCameraBasicTask *basic = QTaskManager::Instance()->GetTaskByID(device.m_nId);
    QCameraTask *task = basic->_CameraTak();
    device.m_host.closeCamera(device.m_nId);
    QCOMPARE(device.m_pState->m_nLiving.load(), 0);
    QCOMPARE(basic->_GetCameraName(), QString("Memory camera"));
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

void CameraLifeTest::manyOpeningsLeaveNothing()
{
    CameraHost host;
    const auto state = std::make_shared<MemoryDeviceState>(describe(intReg("Reg", 16)));
    std::vector<QPointer<QCameraTask>> tasks;
    for (int i = 0; i < 1000; ++i) {
        const long int id = host.openCamera(sourceOf(state)).cameraId;
        tasks.emplace_back(QTaskManager::Instance()->GetTaskByID(id)->_CameraTak());
        QVERIFY(readReg(*tasks.back()));
        host.closeCamera(id);
        QCOMPARE(state->m_nLiving.load(), 0);
    }
    const auto living = std::count_if(tasks.cbegin(), tasks.cend(),
                                      [](const auto &task) { return !task.isNull(); });
    QCOMPARE(int(living), 8);
}

void CameraLifeTest::silentDeviceIsLostForAllReaders()
{
    DeviceFixture device(intReg("Reg", 16));
    QSignalSpy lost(&device.m_host, &CameraHost::cameraLost);
    QCameraTask &task = device.task();
    device.m_pState->setGone(ARV_DEVICE_ERROR_TIMEOUT);
    int error = 0;
    QVERIFY(!readReg(task, &error));
    QCOMPARE(error, int(0x90006001U));
    const int accesses = device.m_pState->m_nAccesses;
    for (int i = 0; i < 100; ++i) {
        QVERIFY(!readReg(task, &error));
        QCOMPARE(error, int(0x90006000U));
    }
    QCOMPARE(device.m_pState->m_nAccesses.load(), accesses);
    QTRY_COMPARE(lost.count(), 1);
    QCOMPARE(lost.at(0).at(0).value<long>(), device.m_nId);
    device.m_pState->setGone(-1);
    QTRY_VERIFY(readReg(task));
    device.m_pState->setGone(ARV_DEVICE_ERROR_NOT_CONNECTED);
    QVERIFY(!readReg(task, &error));
    QCOMPARE(error, int(0x90006000U));
    QTRY_COMPARE(lost.count(), 2);
}

void CameraLifeTest::oneSilentRegisterIsNoLoss()
{
    DeviceFixture device(intReg("Reg", 16) + intReg("Silent", 32));
    QSignalSpy lost(&device.m_host, &CameraHost::cameraLost);
    device.m_pState->setFailing(32, ARV_DEVICE_ERROR_TIMEOUT);
    _NODE_INT_VALUE_ value{};
    int error = 0;
    QVERIFY(!device.task().GetIntegerValue("Silent", &value, &error, true, false));
    QCOMPARE(error, int(0x90006001U));
    QVERIFY(readReg(device.task()));
    QCoreApplication::processEvents();
    QCOMPARE(lost.count(), 0);
}

void CameraLifeTest::controlLost()
{
    CameraHost host;
    const auto state = std::make_shared<MemoryDeviceState>(describe(intReg("Reg", 16)));
    ArvDevice *arvDevice = nullptr;
    DeviceSource source = sourceOf(state);
    source.create = [&](GError **) { return arvDevice = newMemoryDevice(state); };
    const long int id = host.openCamera(source).cameraId;
    QSignalSpy lost(&host, &CameraHost::cameraLost);
    std::thread([&] {
        g_signal_emit_by_name(arvDevice, "control-lost");
        g_signal_emit_by_name(arvDevice, "control-lost");
    }).join();
    QCOMPARE(lost.count(), 0); // only from this thread's own events
    QTRY_COMPARE(lost.count(), 1);
    int error = 0;
    QCameraTask &task = *QTaskManager::Instance()->GetTaskByID(id)->_CameraTak();
    QVERIFY(!readReg(task, &error));
    QCOMPARE(error, int(0x90006000U));
    QCOMPARE(state->m_nAccesses.load(), 0);
    QCoreApplication::processEvents();
    QCOMPARE(lost.count(), 1);
    host.closeCamera(id);
    QCOMPARE(state->m_nLiving.load(), 0);
}

void CameraLifeTest::grabbing_data()
{
    QTest::addColumn<QByteArray>("nodes");
    QTest::addColumn<int>("failing");
    QTest::addColumn<bool>("starts");
    QTest::addColumn<int>("locked"); // at address 16 while grabbing
    QTest::addColumn<int>("started"); // at address 32
    const QByteArray lock = intReg("LockReg", 16)
        + "<Integer Name=\"TLParamsLocked\"><pValue>LockReg</pValue></Integer>";
    const QByteArray commands = intReg("Start", 32)
        + "<Command "
          "Name=\"AcquisitionStart\"><pValue>Start</pValue><CommandValue>1</CommandValue></Command>"
          "<Command "
          "Name=\"AcquisitionStop\"><pValue>Start</pValue><CommandValue>2</CommandValue></Command>";
    QTest::newRow("both") << lock + commands << 0x3000 << true << 1 << 1;
    QTest::newRow("noCommands") << lock << 0x3000 << true << 1 << 0;
    QTest::newRow("noLock") << commands << 0x3000 << true << 0 << 1;
    QTest::newRow("startRefusedUnlocksAgain") << lock + commands << 32 << false << 0 << 0;
}

void CameraLifeTest::grabbing()
{
    QFETCH(QByteArray, nodes);
    QFETCH(int, failing);
    QFETCH(bool, starts);
    DeviceFixture device(nodes);
    device.m_pState->setFailing(failing, ARV_DEVICE_ERROR_PROTOCOL_ERROR_BUSY);
    QString error;
    QCOMPARE(device.m_host.startGrabbing(device.m_nId, &error), starts);
    QCOMPARE(error.isEmpty(), starts);
    QTEST(int(device.m_pState->peek(16 + 3, 1)[0]), "locked");
    QTEST(int(device.m_pState->peek(32 + 3, 1)[0]), "started");
    QCOMPARE(int(device.task().GetCameraState()),
             int(starts ? TASK_CAMERA_GRABBING : TASK_CAMERA_OPEN));
    if (starts) {
        QVERIFY(device.m_host.stopGrabbing(device.m_nId));
        QCOMPARE(device.m_pState->peek(16, 4), QByteArray(4, '\0'));
        QCOMPARE(int(device.task().GetCameraState()), int(TASK_CAMERA_OPEN));
    }
    QVERIFY(!device.m_host.startGrabbing(device.m_nId + 1, &error));
    QVERIFY(!error.isEmpty());
}

void CameraLifeTest::closingWhileGrabbingStopsTheDevice()
{
    DeviceFixture device(
        intReg("TLParamsLocked", 16) + intReg("Start", 32)
        + "<Command "
          "Name=\"AcquisitionStart\"><pValue>Start</pValue><CommandValue>1</CommandValue></Command>"
          "<Command "
          "Name=\"AcquisitionStop\"><pValue>Start</pValue><CommandValue>2</CommandValue></"
          "Command>");
    QVERIFY(device.m_host.startGrabbing(device.m_nId));
    device.m_host.closeCamera(device.m_nId);
    // A new opening comes after the old device has gone.
    QVERIFY(device.m_host.openCamera(sourceOf(device.m_pState)).cameraId != NO_CAMERA_ID);
    QCOMPARE(device.m_pState->m_nLiving.load(), 1);
    QCOMPARE(device.m_pState->peek(32, 4), QByteArray::fromHex("00000002"));
    QCOMPARE(device.m_pState->peek(16, 4), QByteArray(4, '\0'));
}

void CameraLifeTest::closeRequest()
{
    DeviceFixture device({});
    QSignalSpy requests(&device.m_host, &CameraHost::closeRequested);
    std::thread([&] {
        VexaOperateCameraThread::addOperateCamera(VEXA_OPERATOR_CLOSE, device.m_nId, true);
    }).join();
    QTRY_COMPARE(requests.count(), 1);
    QCOMPARE(requests.at(0).at(0).value<long>(), device.m_nId);
    QCOMPARE(requests.at(0).at(1).toBool(), true);
    QCOMPARE(QTaskManager::Instance()->GetTaskCount(), 1U);
}

QTEST_GUILESS_MAIN(CameraLifeTest)
#include "tst_CameraLife.moc"
