#include "ControlKit/CustomLineEdit.h"
#include "ShellServicesModule/QLocalCfg.h"
#include "tests/stress/FreshRead.h"
#include "tests/stress/RegisterNoise.h"
#include "tests/stress/StressOptions.h"
#include "tree/QGetFeaturesThread.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QtTest>

namespace {

constexpr int WORKERS = 4;
constexpr int LONGEST_PAUSE_MS = 6;
constexpr int PATIENCE_MS = 120000;

/// What the user and the client do to one tree, at random.
class Hands
{
public:
    Hands(ModuleFixture &fixture, const ModuleFixture::Camera &camera, QRandomGenerator &random)
        : m_fixture(fixture)
        , m_camera(camera)
        , m_random(random)
        , m_names(camera.tree->AllTreeItemsMap().keys())
    {
    }

    void doSomething()
    {
        static void (Hands::*const deeds[])() = {
            &Hands::changeNodes, &Hands::changeNodes,    &Hands::changeLevel,
            &Hands::search,      &Hands::changeLanguage, &Hands::shoot,
            &Hands::refresh,     &Hands::readOne,        &Hands::show,
        };
        (this->*deeds[m_random.bounded(static_cast<int>(std::size(deeds)))])();
    }

private:
    QString anyName() { return m_names.at(m_random.bounded(m_names.size())); }

    void changeNodes()
    {
        QStringList names;
        for (int i = m_random.bounded(8); i >= 0; --i) {
            names.append(anyName());
        }
        m_camera.tree->OnAddValueChangedNodes(names);
    }
    void changeLevel()
    {
        const auto *tree = m_camera.tree->findChild<QAbstractItemView *>();
        for (QComboBox *combo : m_camera.tree->findChildren<QComboBox *>()) {
            // The others are editors of enumerations.
            if (!tree->isAncestorOf(combo)) {
                combo->setCurrentIndex(m_random.bounded(combo->count()));
            }
        }
    }
    void search()
    {
        m_camera.tree->findChild<CustomLineEdit *>(QStringLiteral("FeatureSearch"))
            ->setText(m_random.bounded(3) == 0 ? QString()
                                               : anyName().left(1 + m_random.bounded(5)));
    }
    void changeLanguage()
    {
        QLocalCfg::Instance()->m_strPropertyLan =
            m_random.bounded(2) == 0 ? QStringLiteral("CH") : QStringLiteral("ENG");
        m_camera.tree->notifyEditorUpdate();
    }
    void shoot()
    {
        m_bShooting = !m_bShooting;
        if (m_bShooting && m_fixture.host().startGrabbing(m_camera.id)) {
            m_camera.tree->OnCameraStartShot();
        } else if (!m_bShooting && m_fixture.host().stopGrabbing(m_camera.id)) {
            m_camera.tree->OnCameraStopShot();
        }
    }
    void refresh() { m_camera.tree->RefreshFeatures(); }
    void readOne()
    {
        m_camera.tree->updateFeature(m_camera.tree->propertyItemByName(anyName()),
                                     QGetFeaturesThread::UPDATE_EVERYTHING);
    }
    void show()
    {
        QString name = anyName();
        m_camera.tree->JumpToFeature(name);
        m_fixture.mainWidget().setCurrentCameraID(m_camera.id);
    }

    ModuleFixture &m_fixture;
    const ModuleFixture::Camera m_camera;
    QRandomGenerator &m_random;
    const QStringList m_names;
    bool m_bShooting = false;
};

QList<QGetFeaturesThread *> workersOf(const ModuleFixture::Camera &camera)
{
    return camera.tree->findChildren<QGetFeaturesThread *>();
}

bool isInAFullPass(const ModuleFixture::Camera &camera)
{
    const QList<QGetFeaturesThread *> workers = workersOf(camera);
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
    QRandomGenerator random(StressOptions::seed());
    ModuleFixture fixture;
    fixture.mainWidget().resize(700, 900);
    fixture.mainWidget().show();

    std::vector<ModuleFixture::Camera> cameras;
    for (const char *id : {"area-camera", "code-reader"}) {
        cameras.push_back(fixture.open(SimulatedDevices::builtIn(QString::fromLatin1(id))));
        QVERIFY(cameras.back().tree);
    }
    std::vector<std::unique_ptr<RegisterNoise>> noises;
    std::vector<std::unique_ptr<Hands>> hands;
    for (const ModuleFixture::Camera &camera : cameras) {
        QVERIFY(ModuleFixture::waitForFirstUpdate(camera, PATIENCE_MS));
        QCOMPARE(workersOf(camera).size(), WORKERS);
        camera.tree->UpdateFeatures(FEATURES_UPDATE_POLLING, {},
                                    QGetFeaturesThread::UPDATE_REFRESH);
        noises.push_back(std::make_unique<RegisterNoise>(camera.device.control, random.generate()));
        hands.push_back(std::make_unique<Hands>(fixture, camera, random));
    }
    int deeds = 0;
    QElapsedTimer clock;
    clock.start();
    for (const int end = 1000 * StressOptions::number("VEXA_STRESS_SECONDS", 3);
         clock.elapsed() < end; ++deeds) {
        hands[random.bounded(static_cast<int>(hands.size()))]->doSomething();
        QTest::qWait(random.bounded(LONGEST_PAUSE_MS));
    }

    int changes = 0;
    for (std::size_t i = 0; i < cameras.size(); ++i) {
        changes += noises[i]->stop();
        cameras[i].device.control->setQuiet(true);
    }
    QVERIFY(changes > 0);
    for (const ModuleFixture::Camera &camera : cameras) {
        // Whatever the changes left behind has its turn first: pending nodes, a level that follows a pass.
        QTRY_VERIFY_WITH_TIMEOUT(!isInAFullPass(camera), PATIENCE_MS);
        camera.tree->SetIsUpdateFeatureOnce(false);
        camera.tree->UpdateFeatures(FEATURES_UPDATE_ALL, {}, QGetFeaturesThread::UPDATE_EVERYTHING);
        QVERIFY(ModuleFixture::waitForFirstUpdate(camera, PATIENCE_MS));
        QTRY_VERIFY_WITH_TIMEOUT(!isInAFullPass(camera), PATIENCE_MS);
        for (const QGetFeaturesThread *worker : workersOf(camera)) {
            QVERIFY(worker->GetUpdateType() == FEATURES_UPDATE_ALL || worker->IsBusy());
        }
    }
    for (const ModuleFixture::Camera &camera : cameras) {
        const FreshRead result = FreshRead::compare(camera);
        std::printf("%s: %d values compared, %d differences\n",
                    qPrintable(camera.device.source->id), result.values, result.differences.size());
        QVERIFY(result.values > 100);
        QVERIFY2(result.differences.isEmpty(), qPrintable(result.differences.join(u'\n')));
    }
    std::printf("%d deeds, %d registers changed in %lld ms\n", deeds, changes, clock.elapsed());
    for (const ModuleFixture::Camera &camera : cameras) {
        fixture.close(camera);
    }
}

QTEST_MAIN(tst_workers_stress)
#include "tst_workers_stress.moc"
