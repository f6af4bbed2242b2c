#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "host/devicetask/CameraHost.h"
#include "host/devicetask/RealDevices.h"
#include "tests/realdevices/HelperProcess.h"
#include "tests/realdevices/OwnNetwork.h"
#include "tests/realdevices/TaskReaders.h"

#include <QDir>
#include <QSignalSpy>
#include <QtTest>

#include <future>

namespace {

constexpr int DEVICE_GONE = int(0x90006000U);
constexpr int DEVICE_TRANSPORT = int(0x90006002U);
constexpr int NODE_NOT_ACCESSIBLE = int(0x90006104U);

/// GigE Vision: the control channel is given up when its heartbeat has failed some times. In ms, as all of them.
constexpr int LOST_WITHIN = 60000;
constexpr int RETURN_WITHIN = 30000;
/// Failed reads of four readers that do not wait for the device: the time-outs of the protocol would take minutes.
constexpr int MANY = 1000;

int threadCount()
{
    return QDir(QStringLiteral("/proc/self/task"))
        .entryList(QDir::Dirs | QDir::NoDotAndDotDot)
        .size();
}

QCameraTask *taskOf(long int cameraId)
{
    QCameraBasicTask *basic = QTaskManager::Instance()->GetTaskByIDEx(cameraId);
    return basic ? basic->_CameraTak() : nullptr;
}

qint64 widthOf(long int cameraId)
{
    _NODE_INT_VALUE_ width{};
    QCameraTask *task = taskOf(cameraId);
    return task && task->GetIntegerValue("Width", &width, nullptr, true, false) ? width.value : -1;
}

/// The work of another thread, while this one's events go on.
template<class Work>
auto elsewhere(Work &&work)
{
    auto future = std::async(std::launch::async, std::forward<Work>(work));
    while (future.wait_for(std::chrono::milliseconds(0)) != std::future_status::ready) {
        QTest::qWait(10);
    }
    return future.get();
}

} // namespace

/// Cameras that vanish, hang and belong to somebody else, while four threads read.
class GigeLossTest : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void killedCamera();
    void frozenCamera();
    void cameraOfAnotherHost();
    void closingWhileNothingAnswers();

private:
    CameraHost::OpenResult open();
    /// No thread of the opening is left behind.
    void close(long int cameraId);
    /// The conditions told so far, in order.
    QVector<DeviceCondition> told() const;

    std::unique_ptr<CameraHost> m_pHost;
    std::unique_ptr<QSignalSpy> m_pConditions;
    int m_nThreads = 0;
};

void GigeLossTest::init()
{
    m_pHost = std::make_unique<CameraHost>();
    m_pConditions = std::make_unique<QSignalSpy>(m_pHost.get(), &CameraHost::conditionChanged);
    m_nThreads = threadCount();
}

void GigeLossTest::cleanup()
{
    m_pConditions.reset();
    m_pHost.reset();
}

CameraHost::OpenResult GigeLossTest::open()
{
    return elsewhere([this] {
        QString error;
        const auto source = RealDevices::gige(HelperProcess::cameraAddress(), &error);
        return m_pHost->openCamera(*source);
    });
}

void GigeLossTest::close(long int cameraId)
{
    taskOf(cameraId)->m_bReleasing = true;
    m_pHost->closeCamera(cameraId);
    QTRY_VERIFY_WITH_TIMEOUT(threadCount() <= m_nThreads, RETURN_WITHIN);
}

QVector<DeviceCondition> GigeLossTest::told() const
{
    QVector<DeviceCondition> conditions;
    for (const QList<QVariant> &arguments : *m_pConditions) {
        conditions += arguments.at(1).value<DeviceCondition>();
    }
    return conditions;
}

void GigeLossTest::killedCamera()
{
    HelperProcess camera;
    QVERIFY(camera.startCamera());
    const CameraHost::OpenResult opened = open();
    QVERIFY2(opened.cameraId >= 0, qPrintable(opened.error));
    TaskReaders readers(opened.cameraId);
    QTRY_VERIFY(readers.allSucceed());

    readers.forget();
    camera.kill();
    QTRY_VERIFY_WITH_TIMEOUT(told().contains(DeviceCondition::NotResponding), LOST_WITHIN);
    readers.forget();
    QTRY_VERIFY_WITH_TIMEOUT(told().contains(DeviceCondition::Lost), LOST_WITHIN);
    QCOMPARE(readers.successes(), 0);
    QTRY_VERIFY(readers.failures() > MANY);
    QVERIFY(readers.lastError() >= DEVICE_GONE && readers.lastError() <= DEVICE_TRANSPORT);
    QCOMPARE(told(), (QVector{DeviceCondition::NotResponding, DeviceCondition::Lost}));
    QCOMPARE(m_pHost->condition(opened.cameraId), DeviceCondition::Lost);

    const CameraHost::OpenResult early =
        elsewhere([this, &opened] { return m_pHost->reopenCamera(opened.cameraId); });
    QVERIFY(early.cameraId < 0 && !early.error.isEmpty());
    QVERIFY(camera.startCamera());
    readers.forget();
    const CameraHost::OpenResult again =
        elsewhere([this, &opened] { return m_pHost->reopenCamera(opened.cameraId); });
    QVERIFY2(again.cameraId == opened.cameraId, qPrintable(again.error));
    QTRY_VERIFY(readers.allSucceed());
    QTRY_COMPARE(told().last(), DeviceCondition::Live);

    readers.stop();
    close(opened.cameraId);
}

void GigeLossTest::frozenCamera()
{
    HelperProcess camera;
    QVERIFY(camera.startCamera());
    const CameraHost::OpenResult opened = open();
    QVERIFY2(opened.cameraId >= 0, qPrintable(opened.error));
    const qint64 width = widthOf(opened.cameraId);
    QVERIFY(width > 0);
    TaskReaders readers(opened.cameraId);
    QTRY_VERIFY(readers.allSucceed());

    readers.forget();
    camera.freeze();
    QTRY_VERIFY_WITH_TIMEOUT(told().contains(DeviceCondition::NotResponding), LOST_WITHIN);
    readers.forget();
    QTRY_VERIFY(readers.failures() > MANY);
    QCOMPARE(readers.successes(), 0);

    camera.thaw();
    const auto reopened = [this, &opened] {
        return m_pHost->condition(opened.cameraId) == DeviceCondition::Lost
            && elsewhere([this, &opened] {
                   return m_pHost->reopenCamera(opened.cameraId);
               }).cameraId
            == opened.cameraId;
    };
    QTRY_VERIFY_WITH_TIMEOUT(
        m_pHost->condition(opened.cameraId) == DeviceCondition::Live || reopened(), RETURN_WITHIN);
    QCOMPARE(widthOf(opened.cameraId), width);
    readers.forget();
    QTRY_VERIFY(readers.allSucceed());
    QCOMPARE(readers.failures(), 0);

    readers.stop();
    close(opened.cameraId);
}

void GigeLossTest::cameraOfAnotherHost()
{
    HelperProcess camera;
    HelperProcess otherHost;
    QVERIFY(camera.startCamera());
    QVERIFY(otherHost.startController());
    const CameraHost::OpenResult opened = open();
    QVERIFY2(opened.cameraId >= 0, qPrintable(opened.error));
    QCOMPARE(opened.accessMode, DEVICE_ACCESS_READ_ONLY);
    QCOMPARE(m_pHost->condition(opened.cameraId), DeviceCondition::ControlledElsewhere);
    {
        TaskReaders readers(opened.cameraId);
        QTRY_VERIFY(readers.allSucceed());
        QCOMPARE(readers.failures(), 0);
        const qint64 width = widthOf(opened.cameraId);
        int error = 0;
        QCameraTask &task = *taskOf(opened.cameraId);
        QVERIFY(!task.SetIntegerValue("Width", width / 2, &error));
        QCOMPARE(error, NODE_NOT_ACCESSIBLE);
        QVERIFY(!task.GetLastErrorRemark().isEmpty());
        QCOMPARE(widthOf(opened.cameraId), width);
        QCOMPARE(readers.failures(), 0);
        QCOMPARE(m_pHost->condition(opened.cameraId), DeviceCondition::ControlledElsewhere);
    }
    close(opened.cameraId);

    // The camera is free once the other host's heartbeat has stayed away for the camera's own time-out.
    otherHost.kill();
    const QDeadlineTimer deadline(RETURN_WITHIN);
    CameraHost::OpenResult own = open();
    while (own.accessMode != DEVICE_ACCESS_CONTROL && !deadline.hasExpired()) {
        m_pHost->closeCamera(own.cameraId);
        own = open();
    }
    QCOMPARE(own.accessMode, DEVICE_ACCESS_CONTROL);
    QVERIFY(taskOf(own.cameraId)->SetIntegerValue("Width", 256, nullptr));
    QCOMPARE(widthOf(own.cameraId), 256);
    close(own.cameraId);
}

void GigeLossTest::closingWhileNothingAnswers()
{
    HelperProcess camera;
    QVERIFY(camera.startCamera());
    const CameraHost::OpenResult opened = open();
    QVERIFY2(opened.cameraId >= 0, qPrintable(opened.error));
    TaskReaders readers(opened.cameraId);
    QTRY_VERIFY(readers.allSucceed());
    camera.freeze();
    QTest::qWait(300); // until every reader is inside an access that nobody answers
    // Nothing in it waits for the camera: it stays frozen to the end.
    taskOf(opened.cameraId)->m_bReleasing = true;
    m_pHost->closeCamera(opened.cameraId);
    readers.stop();
    QTRY_VERIFY_WITH_TIMEOUT(threadCount() <= m_nThreads, RETURN_WITHIN);
}

int main(int argc, char *argv[])
{
    OwnNetwork::enter(argv);
    QCoreApplication application(argc, argv);
    GigeLossTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_gige_loss.moc"
