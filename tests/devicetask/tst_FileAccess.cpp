#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "host/devicetask/CameraHost.h"
#include "host/devicetask/DeviceError.h"
#include "host/simulator/SimulatedDevices.h"

#include <QDir>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

#include <thread>

using Fault = SimulatedFileFault;

namespace {

constexpr int BLOCK = 1024; // of the simulated devices
constexpr int FAULT_BLOCKS = 24; // length of the file in which faults are planted
constexpr int ACCESSES_A_BLOCK =
    8; // offset, length, execute, done?, status, result, 2 of the buffer
constexpr int ACCESSES_AROUND = 40; // opening and closing
const char *const OLD = "what was there before";

QByteArray randomBytes(int size)
{
    QByteArray bytes(size, '\0');
    QRandomGenerator random(7);
    std::generate(bytes.begin(), bytes.end(), [&random] { return char(random.generate()); });
    return bytes;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
}

/// An open device and a folder of the host with one file in it.
class Transfer
{
public:
    explicit Transfer(CameraHost &host)
        : m_host(host)
        , m_device(SimulatedDevices::builtIn("area-camera"))
        , m_nId(m_host.openCamera(*m_device.source).cameraId)
    {
        control().setQuiet(true);
        control().setLogging(true);
        startOver();
    }
    ~Transfer() { m_host.closeCamera(m_nId); }
    /// As it was after the opening, with the folder's one file; an opening takes long under a sanitizer.
    void startOver()
    {
        control().setFileFault({});
        control().setLatency(0);
        control().clearAccessLog();
        const QStringList names = files();
        for (const QString &name : names) {
            QFile::remove(path(name));
        }
        keep(OLD);
    }
    SimulatorControl &control() { return *m_device.control; }
    QCameraTask &task() { return *QTaskManager::Instance()->GetTaskByIDEx(m_nId)->_CameraTak(); }
    QString path(const QString &name = "file.bin") { return m_folder.filePath(name); }
    void keep(const QByteArray &content)
    {
        QFile file(path());
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), qint64(content.size()));
    }
    int get(const QString &entry = "MultiROI") { return task().ReadDeviceFile(path(), entry); }
    int put() { return task().WriteDeviceFile(path(), "MultiROI"); }
    QString remark() { return task().GetLastErrorRemark(); }
    QStringList files() { return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden); }
    qint64 feature(const char *name)
    {
        _NODE_INT_VALUE_ value{};
        return task().GetIntegerValue(name, &value, nullptr, true, false) ? value.value : -1;
    }
    quint64 addressOf(const char *reg)
    {
        const QByteArray xml = control().description();
        const int node = xml.indexOf(QByteArray("Name=\"") + reg + '"');
        return xml.mid(xml.indexOf("<Address>", node) + 9)
            .split('<')
            .first()
            .toULongLong(nullptr, 0);
    }

    CameraHost &m_host;
    SimulatedDevices::Simulated m_device;
    long int m_nId;
    QTemporaryDir m_folder;
};

} // namespace

/// Files of simulated devices, there and back, and what can go wrong on the way.
class tst_FileAccess : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void thereAndBack_data();
    void thereAndBack();
    void blocksAreHeld();
    void faults_data();
    void faults();
    void refusals_data();
    void refusals();
    void closedInTheMiddle();

    void initTestCase() { m_pArea = std::make_unique<Transfer>(m_host); }
    void cleanup() { m_pArea->startOver(); }

private:
    CameraHost m_host;
    std::unique_ptr<Transfer> m_pArea; ///< for all that leave the device as they found it
};

void tst_FileAccess::thereAndBack_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("milliseconds"); // that an operation takes
    const auto row = [](const char *name, int size, Fault::Kind kind = Fault::None,
                        int milliseconds = 0) {
        QTest::newRow(name) << size << int(kind) << milliseconds;
    };
    row("many blocks", 300 * 1000);
    row("whole blocks", 3 * BLOCK);
    row("one byte", 1);
    row("device that tells no size", 2 * BLOCK + 7, Fault::NoSize);
    row("operations that take their time", 3 * BLOCK + 2, Fault::None, 25);
}

void tst_FileAccess::thereAndBack()
{
    QFETCH(int, size);
    QFETCH(int, kind);
    QFETCH(int, milliseconds);
    Transfer &t = *m_pArea;
    const bool isLong = size > 100 * BLOCK;
    t.control().setFileFault({Fault::Kind(kind), 0, milliseconds});
    t.control().setLatency(isLong ? 100 : 0); // us: time enough to watch its progress
    const QByteArray bytes = randomBytes(size);
    const int blocks = (size + BLOCK - 1) / BLOCK;
    const int most = milliseconds > 0 ? INT_MAX : (blocks + 1) * ACCESSES_A_BLOCK + ACCESSES_AROUND;
    t.keep(bytes);
    const qint64 selected = t.feature("FileSelector");
    t.control().clearAccessLog();
    QVERIFY2(t.put() == 0, qPrintable(t.remark()));
    QVERIFY(t.control().file("MultiROI") == bytes);
    QVERIFY(t.control().accessLog().size() <= most);
    QCOMPARE(t.feature("FileSelector"), selected);

    t.keep(OLD);
    t.control().clearAccessLog();
    std::atomic<int> code{-1};
    std::thread reader([&t, &code] { code = t.get(); });
    qint64 before = 0;
    bool seen = false;
    while (code == -1) {
        qint64 total = -1;
        qint64 done = -1;
        QCOMPARE(t.task().GetFileAccessProgress(&total, &done), 0);
        seen = seen || (total == size && done > 0);
        QVERIFY(done <= size && (done >= before || done <= 0));
        before = qMax(before, done);
        QThread::usleep(200); // so that watching does not slow it down
    }
    reader.join();
    QVERIFY2(code == 0, qPrintable(t.remark()));
    QVERIFY(contentOf(t.path()) == bytes);
    QVERIFY(seen || !isLong);
    QVERIFY(t.control().accessLog().size() <= most);
    qint64 total = -1;
    qint64 done = -1;
    QCOMPARE(t.task().GetFileAccessProgress(&total, &done), 0);
    QVERIFY(total == -1 && done == -1);
    QCOMPARE(t.files(), QStringList("file.bin"));
}

void tst_FileAccess::blocksAreHeld()
{
    Transfer &t = *m_pArea;
    const QByteArray bytes = randomBytes(100 * BLOCK + 5);
    t.keep(bytes);
    const quint64 offset = t.addressOf("FileAccessOffsetReg");
    const quint64 result = t.addressOf("FileOperationResultReg");
    const quint64 strange = t.addressOf("WidthReg");
    const quint64 selector = t.addressOf("FileSelectorReg");
    QVERIFY(offset && result && strange && selector);
    t.control().clearAccessLog();
    std::atomic<bool> stop{false};
    // One who reads and one who selects another file all the time.
    std::thread other([&] {
        while (!stop) {
            char bytes[4];
            t.task().ReadMemory(qint64(strange), bytes, sizeof bytes, nullptr);
            t.task().SetIntegerValue("FileSelector", 1, nullptr);
        }
    });
    const int put = t.put();
    const int get = put == 0 ? t.get() : put;
    stop = true;
    other.join();
    QVERIFY2(get == 0, qPrintable(t.remark()));
    QVERIFY(contentOf(t.path()) == bytes);
    int strangers = 0;
    int intrusions = 0;
    bool isInBlock = false;
    const QVector<SimulatorAccess> log = t.control().accessLog();
    for (const SimulatorAccess &access : log) {
        const bool isStranger = access.address == strange || access.address == selector;
        strangers += isStranger;
        intrusions += isStranger && isInBlock;
        isInBlock = access.address == offset || (isInBlock && access.address != result);
    }
    QVERIFY(strangers > 20);
    QCOMPARE(intrusions, 0);
}

void tst_FileAccess::faults_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("writes");
    QTest::addColumn<int>("code");
    const auto row = [](const char *name, Fault::Kind kind, int readCode, int writeCode) {
        QTest::addRow("%s, read", name) << int(kind) << false << readCode;
        QTest::addRow("%s, written", name) << int(kind) << true << writeCode;
    };
    row("opening refused", Fault::RefusedOpen, NODE_ACCESS, NODE_ACCESS);
    row("block refused", Fault::RefusedBlock, NODE_ACCESS, NODE_ACCESS);
    row("half a block", Fault::HalfBlock, 0, 0);
    row("nothing for ever", Fault::NothingForEver, NODE_LOGICAL, NODE_RUNTIME);
    row("size too large", Fault::SizeTooLarge, NODE_LOGICAL, 0);
    row("size too small by blocks", Fault::SizeTooSmall, NODE_LOGICAL, 0);
    row("negative size", Fault::SizeNegative, NODE_LOGICAL, NODE_LOGICAL);
    row("closing refused", Fault::RefusedClose, NODE_ACCESS, NODE_ACCESS);
}

void tst_FileAccess::faults()
{
    QFETCH(int, kind);
    QFETCH(bool, writes);
    QFETCH(int, code);
    Transfer &t = *m_pArea;
    const QByteArray bytes = randomBytes(FAULT_BLOCKS * BLOCK - 3);
    for (int block = 0; block < FAULT_BLOCKS; block += 8) {
        t.control().setFileFault({});
        t.control().setFile("MultiROI", bytes);
        t.keep(writes ? bytes : QByteArray(OLD));
        t.control().setFileFault({Fault::Kind(kind), block});
        QCOMPARE(writes ? t.put() : t.get(), code);
        QVERIFY(!code || t.remark().contains("MultiROI") || t.remark().contains("device's file"));
        QVERIFY(writes || contentOf(t.path()) == (code ? QByteArray(OLD) : bytes));
        QVERIFY(!writes || code || t.control().file("MultiROI") == bytes);
        QCOMPARE(t.files(), QStringList("file.bin"));
        // The device can be used as before.
        t.control().setFileFault({});
        t.control().setFile("UserFile", "usable");
        QCOMPARE(t.get("UserFile"), 0);
        QCOMPARE(contentOf(t.path()), QByteArray("usable"));
    }
}

void tst_FileAccess::refusals_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("writes");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("remark");
    const auto row = [](const char *name, const char *entry, const char *path, bool writes,
                        int code, const char *remark) {
        QTest::newRow(name) << QString(entry) << QString(path) << writes << code << QString(remark);
    };
    row("no entry", "../file.bin", "file.bin", false, NODE_PROPERTY, "FileSelector");
    row("file that only reads", "LicenseNotice", "file.bin", true, NODE_ACCESS,
        "Open of file LicenseNotice");
    row("folder in the place of a file", "UserSet1", ".", false, NODE_ARGUMENT, "/.");
    row("empty source", "UserSet1", "empty", true, NODE_ARGUMENT, "the file is empty");
    row("source too large", "UserSet1", "large", true, NODE_RANGE, "33554432 bytes");
}

void tst_FileAccess::refusals()
{
    QFETCH(QString, entry);
    QFETCH(QString, path);
    QFETCH(bool, writes);
    QFETCH(int, code);
    QFETCH(QString, remark);
    Transfer &t = *m_pArea;
    if (path == "empty" || path == "large") {
        QFile source(t.path(path));
        QVERIFY(source.open(QIODevice::WriteOnly));
        QVERIFY(source.resize(path == "large" ? 32 * 1024 * 1024 + 1 : 0));
    }
    const QStringList files = t.files();
    const QByteArray before = t.control().file(entry);
    QCOMPARE(writes ? t.task().WriteDeviceFile(t.path(path), entry)
                    : t.task().ReadDeviceFile(t.path(path), entry),
             code);
    QVERIFY2(t.remark().contains(remark), qPrintable(t.remark()));
    QCOMPARE(t.files(), files);
    QCOMPARE(contentOf(t.path()), QByteArray(OLD));
    QCOMPARE(t.control().file(entry), before);
}

void tst_FileAccess::closedInTheMiddle()
{
    Transfer t(m_host);
    t.control().setFile("MultiROI", randomBytes(2000 * BLOCK));
    t.control().setLatency(100);
    QCameraTask &task = t.task();
    std::atomic<int> code{-1};
    std::thread reader([&] { code = task.ReadDeviceFile(t.path(), "MultiROI"); });
    qint64 total = -1;
    qint64 done = -1;
    QTRY_VERIFY(task.GetFileAccessProgress(&total, &done) == 0 && done > 5 * BLOCK);
    t.m_host.closeCamera(t.m_nId);
    reader.join();
    QCOMPARE(code.load(), int(DEVICE_GONE));
    QCOMPARE(contentOf(t.path()), QByteArray(OLD));
    QCOMPARE(t.files(), QStringList("file.bin"));
}

QTEST_GUILESS_MAIN(tst_FileAccess)
#include "tst_FileAccess.moc"
