// Budgets of building and updating a tree, each as a ratio within this run or a count.

#include "DeviceTaskModule/QCameraTask.h"
#include "benchmarks/BenchReport.h"
#include "host/controlkit/CustomStyle.h"
#include "model/FeatureTreeBuilder.h"
#include "model/IVexaFeatureNotify.h"
#include "model/NodeDependencyMaps.h"
#include "model/VexaPropertyTreeItem.h"
#include "tests/support/ForgetfulDevice.h"
#include "tests/support/ModuleFixture.h"
#include "tree/FeatureReader.h"
#include "tree/QGetFeaturesThread.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTextStream>
#include <QThread>
#include <QTimer>
#include <QtTest>

#include <algorithm>
#include <arv.h>
#include <functional>

namespace {

using BenchReport::report;
constexpr int FEATURES = 5000;
constexpr int PER_CATEGORY = 50;

/// Of several runs the one that was disturbed least, in milliseconds: what is compared with it is taken in turns.
struct Fastest
{
    double milliseconds = 1e9;

    void run(const std::function<void()> &job)
    {
        QElapsedTimer timer;
        timer.start();
        job();
        milliseconds = std::min(milliseconds, static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }
};

/// Median of several runs in milliseconds.
double median(int runs, const std::function<void()> &job)
{
    QVector<double> times;
    for (int run = 0; run < runs; ++run) {
        QElapsedTimer timer;
        timer.start();
        job();
        times.append(static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(times.begin(), times.end());
    return times.at(times.size() / 2);
}

/// Categories of 50 integers, each over a register of its own, a fifth of them locked through one node.
QByteArray generatedDescription(int features)
{
    QByteArray categories;
    QByteArray nodes;
    QStringList roots;
    for (int i = 0; i < features; ++i) {
        const QByteArray number = QByteArray::number(i);
        if (i % PER_CATEGORY == 0) {
            const QByteArray category = "Category" + QByteArray::number(i / PER_CATEGORY);
            roots.append(QString::fromLatin1(category));
            categories +=
                (i ? "</Category>" : "") + QByteArray("<Category Name=\"") + category + "\">";
        }
        categories += "<pFeature>Feature" + number + "</pFeature>";
        nodes += "<Integer Name=\"Feature" + number + "\"><ToolTip>Tip " + number
            + "</ToolTip><Description>Description of " + number
            + "</Description><DisplayName>Feature " + number + "</DisplayName>"
            + (i % 5 == 0 ? "<pIsLocked>TLParamsLocked</pIsLocked>" : "") + "<pValue>Register"
            + number + "</pValue></Integer>\n<IntReg Name=\"Register" + number + "\"><Address>"
            + QByteArray::number(0x1000 + 4 * i)
            + "</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</"
              "pPort><Sign>Signed</Sign>"
              "<Endianess>LittleEndian</Endianess></IntReg>\n";
    }
    categories += "</Category>";
    return descriptionOf(
        roots,
        categories + nodes
            + "<Integer Name=\"TLParamsLocked\"><pValue>LockRegister</pValue></Integer>"
              "<IntReg Name=\"LockRegister\"><Address>256</Address><Length>4</Length>"
              "<AccessMode>RW</AccessMode><pPort>Device</pPort></IntReg>");
}

void measureBuilding()
{
    double perNode[2] = {0, 0};
    const int sizes[2] = {2500, 5000}; // two nodes a feature: the larger has 10 000
    for (int round = 0; round < 2; ++round) {
        const QByteArray xml = generatedDescription(sizes[round]);
        const auto device = SimulatedDevices::fromDescription(
            xml, QStringLiteral("bench"), SimulatorControl::MemoryPattern::Zero);
        ArvDevice *arvDevice = device.source->create(nullptr);
        const double arv = median(5, [&] {
            g_object_unref(arv_gc_new(arvDevice, xml.constData(), static_cast<gsize>(xml.size())));
        });
        g_object_unref(arvDevice);

        QDomDocument document;
        document.setContent(xml);
        IVexaFeatureNotify view;
        const double ours = median(5, [&] {
            FeatureTreeBuilder builder;
            builder.GenerateDomElementMap(document.documentElement());
            builder.createItems(document, &view);
            NodeDependencyMaps maps;
            maps.generate(document.documentElement(), builder.elementMap(),
                          builder.allTreeItems().keys());
        });
        perNode[round] = ours / sizes[round];
        if (round == 1) {
            report("description to items and all maps / arv_gc_new, 10 000 nodes", ours / arv, 1.3,
                   "x");
            report("the same a node, 10 000 nodes / 5 000 nodes", perNode[1] / perNode[0], 1.2,
                   "x");
            FeatureTreeBuilder builder;
            builder.GenerateDomElementMap(document.documentElement());
            builder.createItems(document, &view);
            NodeDependencyMaps maps;
            maps.generate(document.documentElement(), builder.elementMap(),
                          builder.allTreeItems().keys());
            const QStringList names = builder.allTreeItems().keys();
            const double lookUps = median(5, [&] {
                for (const QString &name : names) {
                    maps.GetFeatureInvalidatorList(name);
                }
            });
            report("dependants of one write, 5 000 features", lookUps * 1000 / names.size(), 10,
                   "us");
        }
    }
}

/// What any reader of the same nodes has to ask, one after the other.
void readBackToBack(QCameraTask &task, const QStringList &names)
{
    _NODE_INT_VALUE_ record{};
    for (const QString &name : names) {
        task.GetAccessMode(name, nullptr);
        if (name.startsWith(QLatin1String("Feature"))) {
            if (name.midRef(7).toInt() % 5 == 0) {
                task.GetIntegerValue(QStringLiteral("TLParamsLocked"), &record, nullptr, true,
                                     false);
            }
            task.GetIntegerValue(name, &record, nullptr, true, false);
        }
    }
}

std::atomic<int> s_nGuiCalls{0};

void countGuiCalls()
{
    s_nGuiCalls += QThread::currentThread() == qApp->thread();
}

/// The worker of full updates; looking for it walks over all editors.
QGetFeaturesThread *fullUpdateWorker(const ModuleFixture::Camera &camera)
{
    return camera.tree->findChildren<QGetFeaturesThread *>().value(2);
}

void fullUpdate(const ModuleFixture::Camera &camera, QGetFeaturesThread *worker)
{
    QSignalSpy ended(worker, &QGetFeaturesThread::sigThreadEnd);
    camera.tree->UpdateFeatures(FEATURES_UPDATE_ALL, QStringList(),
                                QGetFeaturesThread::UPDATE_EVERYTHING);
    // An event loop that sleeps: two cores have nothing to spare for one that does not.
    if (ended.isEmpty() && !ended.wait(60000)) {
        qFatal("the update did not end");
    }
}

/// The longest time between two turns of the event loop, in milliseconds.
class GapMeter : public QObject
{
public:
    GapMeter()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        connect(&m_timer, &QTimer::timeout, this, [this] {
            m_nLongest = std::max(m_nLongest, m_clock.nsecsElapsed());
            m_clock.restart();
        });
        m_clock.start();
        m_timer.start(0);
    }
    double longest() const { return static_cast<double>(m_nLongest) / 1e6; }

private:
    QTimer m_timer;
    QElapsedTimer m_clock;
    qint64 m_nLongest = 0;
};

class CountingView : public IVexaFeatureNotify
{
public:
    void itemDataChanged(long, VexaPropertyTreeItem *, int, bool, bool) override { ++m_nTold; }
    void itemVisibleChanged(long, VexaPropertyTreeItem *, bool) override { ++m_nTold; }
    void itemReadOnlyChanged(long, VexaPropertyTreeItem *, bool) override { ++m_nTold; }
    std::atomic<int> m_nTold{0};
};

void changeEverything(SimulatorControl &control, int seed)
{
    QByteArray bytes(4 * FEATURES, 0);
    auto *values = reinterpret_cast<qint32 *>(bytes.data());
    for (int i = 0; i < FEATURES; ++i) {
        values[i] = i * 7 + seed;
    }
    control.poke(0x1000, bytes);
}

ModuleFixture::Camera openShown(ModuleFixture &fixture, const SimulatedDevices::Simulated &device)
{
    const ModuleFixture::Camera camera = fixture.open(device);
    fixture.mainWidget().resize(960, 700);
    fixture.mainWidget().show();
    if (!ModuleFixture::waitForFirstUpdate(camera, 120000)) {
        qFatal("the first update did not end");
    }
    QTest::qWait(500); // the last editors open in their slices
    return camera;
}

SimulatedDevices::Simulated generatedDevice()
{
    return SimulatedDevices::fromDescription(generatedDescription(FEATURES),
                                             QStringLiteral("bench"),
                                             SimulatorControl::MemoryPattern::Zero);
}

/// Nothing but full updates of a quiet device, for a profiler.
void repeatUpdates(int count)
{
    ModuleFixture fixture;
    const ModuleFixture::Camera camera = openShown(fixture, generatedDevice());
    fixture.mainWidget().hide();
    QGetFeaturesThread *const worker = fullUpdateWorker(camera);
    for (int i = 0; i < count; ++i) {
        fullUpdate(camera, worker);
    }
    fixture.close(camera);
}

void measureUpdates()
{
    ModuleFixture fixture;
    const SimulatedDevices::Simulated device = generatedDevice();
    const ModuleFixture::Camera camera = openShown(fixture, device);
    const QStringList names = camera.tree->AllTreeItemsMap().keys();

    // Without a window that repaints, so that the update itself is measured.
    fixture.mainWidget().hide();
    QCameraTask *task = taskOf(camera);
    QGetFeaturesThread *const worker = fullUpdateWorker(camera);
    Fastest direct;
    Fastest update;
    for (int i = 0; i < 30; ++i) {
        direct.run([&] { readBackToBack(*task, names); });
        update.run([&] { fullUpdate(camera, worker); });
    }
    report("full update / the same node reads back to back, no latency",
           update.milliseconds / direct.milliseconds, 1.4, "x");

    device.control->setLogging(true);
    CameraHost::setCallObserver(countGuiCalls);
    fullUpdate(camera, worker);
    CameraHost::setCallObserver(nullptr);
    report("device calls of the GUI thread meanwhile", s_nGuiCalls, 0, "");

    CountingView counter;
    const auto items = camera.tree->AllTreeItemsMap();
    for (VexaPropertyTreeItem *item : items) {
        item->registerView(&counter);
    }
    fullUpdate(camera, worker);
    report("item notifications of a full pass over a quiet device", counter.m_nTold, 0, "");
    for (VexaPropertyTreeItem *item : items) {
        item->removeView(&counter);
    }

    fixture.mainWidget().show();
    QTest::qWait(200);
    changeEverything(*device.control, 1);
    {
        GapMeter meter;
        fullUpdate(camera, worker);
        QTest::qWait(200);
        report("longest GUI pass, 5 000 features all changed, no latency", meter.longest(), 16,
               "ms");
    }

    fixture.mainWidget().hide();
    device.control->setLatency(100);
    const auto overLatency = [&](const std::function<void()> &job) {
        double ratio = 1e9;
        for (int i = 0; i < 3; ++i) {
            device.control->clearAccessLog();
            Fastest time;
            time.run(job);
            ratio = std::min(ratio, time.milliseconds / (device.control->accessLog().size() * 0.1));
        }
        return ratio;
    };
    report("full update / accesses x latency, 100 us an access",
           overLatency([&] { fullUpdate(camera, worker); }), 1.05, "x");
    report("the same node reads back to back / accesses x latency",
           overLatency([&] { readBackToBack(*task, names); }), 1.05, "x");
    device.control->setLatency(0);
    fixture.close(camera);
}

/// The same update with and without what the device layer holds.
void measureAccesses(const char *title, const SimulatedDevices::Simulated &device, double budget)
{
    ModuleFixture fixture;
    device.control->setQuiet(true);
    const ModuleFixture::Camera camera = openShown(fixture, device);
    QGetFeaturesThread *const worker = fullUpdateWorker(camera);
    device.control->setLogging(true);
    const auto accesses = [&] {
        device.control->clearAccessLog();
        fullUpdate(camera, worker);
        return static_cast<double>(device.control->accessLog().size());
    };
    double single = 0.0;
    {
        const ForgetfulDevice forgetful(taskOf(camera));
        single = accesses();
    }
    report(title, accesses() / single, budget, "x");
    fixture.close(camera);
}

} // namespace

int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication application(argc, argv);
    CustomStyle::install(application);
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &text) {
        if (type == QtWarningMsg || type == QtFatalMsg) {
            QTextStream(stderr) << text << '\n';
        }
    });
    const QStringList arguments = application.arguments();
    if (arguments.value(1) == QLatin1String("--updates")) {
        repeatUpdates(arguments.value(2).toInt());
        return 0;
    }
    measureBuilding();
    measureUpdates();
    measureAccesses("register accesses of a full update / each call alone, 5 000 features",
                    generatedDevice(), 1.0);
    for (const char *id : {"area-camera", "code-reader"}) {
        const QByteArray title =
            QByteArray("register accesses of a full update / each call alone, ") + id;
        measureAccesses(title.constData(), SimulatedDevices::builtIn(QString::fromLatin1(id)),
                        0.65);
    }
    return BenchReport::isOverBudget() ? 1 : 0;
}
