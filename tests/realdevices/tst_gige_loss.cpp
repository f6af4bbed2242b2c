#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "host/devicetask/CameraHost.h"
#include "host/devicetask/RealDevices.h"
#include "tests/realdevices/HelperProcess.h"
#include "tests/realdevices/OwnNetwork.h"

#include <QDir>
#include <QSignalSpy>
#include <QtTest>

#include <atomic>
#include <future>
#include <thread>
#include <vector>

namespace {

constexpr int DEVICE_GONE = int(0x90006000U);
constexpr int DEVICE_TRANSPORT = int(0x90006002U);

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

/// Four threads that read one camera through its task all the time, as the module does.
class TaskReaders
{
public:
    explicit TaskReaders(long int cameraId)
    {
        for (int i = 0; i < 4; ++i) {
            m_threads.emplace_back([this, cameraId] {
                while (!m_bStop) {
                    read(cameraId);
                    std::this_thread::sleep_for(std::chrono::milliseconds(1)); // for the rest
                }
            });
        }
    }
    ~TaskReaders() { stop(); }
    void forget()
    {
        m_nSuccesses = 0;
        m_nFailures = 0;
    }
    void stop()
    {
        m_bStop = true;
        for (std::thread &thread : m_threads) {
            thread.join();
        }
        m_threads.clear();
    }

    std::atomic<int> m_nSuccesses{0};
    std::atomic<int> m_nFailures{0};
    std::atomic<int> m_nLastError{0};

private:
    void read(long int cameraId)
    {
        _NODE_INT_VALUE_ width{};
        int error = 0;
        // Looked up anew each time: the camera can vanish at any moment.
        QCameraTask *task = taskOf(cameraId);
        if (task && task->GetIntegerValue("Width", &width, &error, true, false)) {
            ++m_nSuccesses;
        } else {
            ++m_nFailures;
            m_nLastError = error;
        }
    }

    std::atomic<bool> m_bStop{false};
    std::vector<std::thread> m_threads;
};

} // namespace

/// Cameras that vanish and hang while four threads read.
class GigeLossTest : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void killedCamera();
    void closingWhileNothingAnswers();

private:
    CameraHost::OpenResult open();
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
    QTRY_VERIFY(readers.m_nSuccesses > 0);

    readers.forget();
    camera.kill();
    QTRY_VERIFY_WITH_TIMEOUT(told().contains(DeviceCondition::NotResponding), LOST_WITHIN);
    readers.forget();
    QTRY_VERIFY_WITH_TIMEOUT(told().contains(DeviceCondition::Lost), LOST_WITHIN);
    QCOMPARE(readers.m_nSuccesses.load(), 0);
    QTRY_VERIFY(readers.m_nFailures > MANY);
    const int error = readers.m_nLastError;
    QVERIFY(error >= DEVICE_GONE && error <= DEVICE_TRANSPORT);
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
    QTRY_VERIFY(readers.m_nSuccesses > 0);
    QTRY_COMPARE(told().last(), DeviceCondition::Live);

    readers.stop();
    m_pHost->closeCamera(opened.cameraId);
    QTRY_VERIFY_WITH_TIMEOUT(threadCount() <= m_nThreads, RETURN_WITHIN);
}

void GigeLossTest::closingWhileNothingAnswers()
{
    HelperProcess camera;
    QVERIFY(camera.startCamera());
    const CameraHost::OpenResult opened = open();
    QVERIFY2(opened.cameraId >= 0, qPrintable(opened.error));
    TaskReaders readers(opened.cameraId);
    QTRY_VERIFY(readers.m_nSuccesses > 0);
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
