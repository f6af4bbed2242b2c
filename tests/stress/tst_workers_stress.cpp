#include "ControlKit/CustomLineEdit.h"
#include "ShellServicesModule/QLocalCfg.h"
#include "ShellServicesModule/VexaPropertyComboBox.h"
#include "tests/stress/FreshRead.h"
#include "tree/QGetFeaturesThread.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QtTest>

#include <thread>

namespace {

constexpr int WORKERS = 4;
constexpr int LONGEST_PAUSE_MS = 6;
constexpr int PATIENCE_MS = 120000;
constexpr quint32 LONGEST_NUMBER = 8; // bytes

/// Changes the registers of the device's log at random behind everybody's back, on a thread of its own, until it is
/// stopped.
class Noise
{
public:
    Noise(std::shared_ptr<SimulatorControl> control, quint32 seed)
        : m_thread([this, control = std::move(control), seed] { run(*control, seed); })
    {
    }
    ~Noise() { stop(); }
    int stop()
    {
        m_bStop = true;
        if (m_thread.joinable()) {
            m_thread.join();
        }
        return m_nChanges;
    }

private:
    void run(SimulatorControl &control, quint32 seed)
    {
        const QVector<SimulatorAccess> registers = control.accessLog();
        QRandomGenerator random(seed);
        while (!m_bStop && !registers.isEmpty()) {
            const SimulatorAccess &target = registers.at(random.bounded(registers.size()));
            QByteArray bytes = control.peek(target.address, target.length);
            if (target.length > LONGEST_NUMBER) {
                const int used = random.bounded(bytes.size());
                bytes.fill('\0');
                bytes.replace(0, used, QByteArray(used, char('A' + random.bounded(26))));
            } else {
                // A low bit at one end, so that selectors and flags land on values that mean something.
                char &byte = bytes.data()[random.bounded(2) == 0 ? 0 : bytes.size() - 1];
                byte = static_cast<char>(byte ^ (1 << random.bounded(4)));
            }
            control.poke(target.address, bytes);
            control.setLatency(random.bounded(30));
            ++m_nChanges;
            std::this_thread::sleep_for(std::chrono::microseconds(random.bounded(2000)));
        }
        control.setLatency(0);
    }

    std::atomic<bool> m_bStop{false};
    std::atomic<int> m_nChanges{0};
    std::thread m_thread;
};

/// One thing that the user or the client does to one tree.
void doSomething(ModuleFixture &fixture, const ModuleFixture::Camera &camera,
                 QRandomGenerator &random)
{
    VexaFeatureTree &tree = *camera.tree;
    const QStringList names = tree.AllTreeItemsMap().keys();
    QString name = names.at(random.bounded(names.size()));
    switch (random.bounded(9)) {
    case 0:
        tree.findChild<VexaPropertyComboBox *>()->setCurrentIndex(random.bounded(3)); // user level
        break;
    case 1:
        tree.findChild<CustomLineEdit *>(QStringLiteral("FeatureSearch"))
            ->setText(random.bounded(3) == 0 ? QString() : name.left(1 + random.bounded(5)));
        break;
    case 2:
        QLocalCfg::Instance()->m_strPropertyLan =
            random.bounded(2) == 0 ? QStringLiteral("CH") : QStringLiteral("ENG");
        tree.notifyEditorUpdate();
        break;
    case 3:
        if (taskOf(camera)->GetCameraState() != TASK_CAMERA_GRABBING) {
            if (fixture.host().startGrabbing(camera.id)) {
                tree.OnCameraStartShot();
            }
        } else if (fixture.host().stopGrabbing(camera.id)) {
            tree.OnCameraStopShot();
        }
        break;
    case 4:
        tree.RefreshFeatures();
        break;
    case 5:
        tree.updateFeature(tree.propertyItemByName(name), QGetFeaturesThread::UPDATE_EVERYTHING);
        break;
    case 6:
        tree.JumpToFeature(name);
        fixture.mainWidget().setCurrentCameraID(camera.id);
        break;
    default:
        tree.OnAddValueChangedNodes(names.mid(random.bounded(names.size()), random.bounded(8)));
        break;
    }
}

bool isInAFullPass(const ModuleFixture::Camera &camera)
{
    const auto workers = camera.tree->findChildren<QGetFeaturesThread *>();
    return std::any_of(workers.cbegin(), workers.cend(), [](const QGetFeaturesThread *worker) {
        return worker->IsBusy() && worker->GetUpdateType() == FEATURES_UPDATE_ALL;
    });
}

} // namespace

class tst_workers_stress : public QObject
{
    Q_OBJECT
private slots:
    void treesEqualTheirDevicesInTheEnd();
};

void tst_workers_stress::treesEqualTheirDevicesInTheEnd()
{
    QLoggingCategory::setFilterRules(QStringLiteral("*.info=false\n*.debug=false"));
    // Printed, so that a run can be made again.
    const int wanted = qEnvironmentVariableIntValue("VEXA_STRESS_SEED");
    const auto seed =
        static_cast<quint32>(wanted > 0 ? wanted : QRandomGenerator::global()->bounded(1, 1000000));
    std::printf("VEXA_STRESS_SEED=%u\n", seed);
    QRandomGenerator random(seed);
    ModuleFixture fixture;
    fixture.mainWidget().resize(700, 900);
    fixture.mainWidget().show();

    std::vector<ModuleFixture::Camera> cameras;
    std::vector<std::unique_ptr<Noise>> noises;
    for (const char *id : {"area-camera", "code-reader"}) {
        const auto device = SimulatedDevices::builtIn(QString::fromLatin1(id));
        device.control->setLogging(true);
        cameras.push_back(fixture.open(device));
        const ModuleFixture::Camera &camera = cameras.back();
        QVERIFY(ModuleFixture::waitForFirstUpdate(camera, PATIENCE_MS));
        device.control->setLogging(false);
        for (const int role : {FEATURES_UPDATE_INVALIDATOR, FEATURES_UPDATE_TLPARAMSLOCKED,
                               FEATURES_UPDATE_POLLING}) {
            camera.tree->UpdateFeatures(role, {}, QGetFeaturesThread::UPDATE_REFRESH);
        }
        noises.push_back(std::make_unique<Noise>(camera.device.control, random.generate()));
    }
    const int seconds = qMax(3, qEnvironmentVariableIntValue("VEXA_STRESS_SECONDS"));
    QElapsedTimer clock;
    for (clock.start(); clock.elapsed() < 1000 * seconds;) {
        doSomething(fixture, cameras[random.bounded(2)], random);
        QTest::qWait(random.bounded(LONGEST_PAUSE_MS));
    }

    for (std::size_t i = 0; i < cameras.size(); ++i) {
        QVERIFY(noises[i]->stop() > 0);
        cameras[i].device.control->setQuiet(true);
    }
    for (const ModuleFixture::Camera &camera : cameras) {
        // A pass under way, or the one of a level that follows it, may have read before the last change.
        QTRY_VERIFY_WITH_TIMEOUT(!isInAFullPass(camera), PATIENCE_MS);
        // On a machine that stalls, a device counts as silent for a while: a host asks again afterwards, too.
        QSignalSpy silences(&fixture.host(), &CameraHost::conditionChanged);
        do {
            silences.clear();
            QTRY_COMPARE(fixture.host().condition(camera.id), DeviceCondition::Live);
            camera.tree->SetIsUpdateFeatureOnce(false);
            camera.tree->UpdateFeatures(FEATURES_UPDATE_ALL, {},
                                        QGetFeaturesThread::UPDATE_EVERYTHING);
            QVERIFY(ModuleFixture::waitForFirstUpdate(camera, PATIENCE_MS));
            QTRY_VERIFY_WITH_TIMEOUT(!isInAFullPass(camera), PATIENCE_MS);
        } while (!silences.isEmpty());
        const auto workers = camera.tree->findChildren<QGetFeaturesThread *>();
        QCOMPARE(std::count_if(workers.cbegin(), workers.cend(),
                               std::mem_fn(&QGetFeaturesThread::IsBusy)),
                 WORKERS - 1);
    }
    for (const ModuleFixture::Camera &camera : cameras) {
        const FreshRead result = FreshRead::compare(camera);
        std::printf("%s: %d values compared, %d differences\n",
                    qPrintable(camera.device.source->id), result.values, result.differences.size());
        QVERIFY(result.values > 100);
        QVERIFY2(result.differences.isEmpty(), qPrintable(result.differences.join(u'\n')));
    }
    for (const ModuleFixture::Camera &camera : cameras) {
        fixture.close(camera);
    }
}

QTEST_MAIN(tst_workers_stress)
#include "tst_workers_stress.moc"
