#include "DeviceTaskModule/QTaskManager.h"
#include "WindowFixture.h"
#include "host/devicetask/CameraHost.h"
#include "host/workbench/CameraSession.h"
#include "host/workbench/WorkbenchWindow.h"
#include "shell/VexaMainFeatureWidget.h"
#include "tree/VexaFeatureTree.h"

#include <QDir>
#include <QScopeGuard>
#include <QtTest>

#include <algorithm>
#include <atomic>
#include <memory>

/// Cameras closed at any moment, and very often.
class WorkbenchClosingTest : public QObject
{
    Q_OBJECT
private slots:
    void closesAtOnce_data();
    void closesAtOnce();
    void twoDevicesManyTimes();
};

namespace {

const QString FIRST = WindowFixture::FIRST;
const QString SECOND = WindowFixture::SECOND;
constexpr int LONG_WAIT = WindowFixture::LONG_WAIT;

constexpr int ROUNDS = 12;

/// QTRY_VERIFY looks every 50 ms, which is most of the time of a quick round.
template<class Condition>
bool becomes(Condition &&condition)
{
    return QTest::qWaitFor(condition, LONG_WAIT);
}

int threadCount()
{
    return QDir(QStringLiteral("/proc/self/task"))
        .entryList(QDir::Dirs | QDir::NoDotAndDotDot)
        .size();
}

enum class Moment { AtRest, AccessHangs, NotResponding, Lost, Reopening, Starting };

} // namespace

Q_DECLARE_METATYPE(Moment)

void WorkbenchClosingTest::closesAtOnce_data()
{
    QTest::addColumn<Moment>("moment");
    QTest::newRow("at rest") << Moment::AtRest;
    QTest::newRow("access hangs, not told yet") << Moment::AccessHangs;
    QTest::newRow("access hangs, told") << Moment::NotResponding;
    QTest::newRow("waiting for the return") << Moment::Lost;
    QTest::newRow("asking for a new connection") << Moment::Reopening;
    QTest::newRow("start of grabbing hangs") << Moment::Starting;
}

void WorkbenchClosingTest::closesAtOnce()
{
    QFETCH(Moment, moment);
    WindowFixture fixture;
    const auto reopening = std::make_shared<std::atomic<bool>>(false);
    const auto mayReopen = std::make_shared<std::atomic<bool>>(moment != Moment::Reopening);
    const auto opened = std::make_shared<std::atomic<bool>>(false);
    const auto create = fixture.source(FIRST).create;
    fixture.source(FIRST).create = [=](GError **error) {
        *reopening = opened->exchange(true);
        while (*reopening && !*mayReopen) {
            QThread::msleep(1);
        }
        return create(error);
    };
    // A test that fails must not wait for what it left blocked.
    const auto release = qScopeGuard([mayReopen] { *mayReopen = true; });
    fixture.openAndWait(FIRST);
    switch (moment) {
    case Moment::AtRest:
        break;
    case Moment::AccessHangs:
    case Moment::NotResponding:
        fixture.control(FIRST).blockNextAccess();
        fixture.session(FIRST)->tree()->RefreshFeatures();
        QTest::qWait(200);
        if (moment == Moment::NotResponding) {
            QTRY_COMPARE_WITH_TIMEOUT(fixture.stateText(FIRST), QString("Not responding"),
                                      LONG_WAIT);
        }
        break;
    case Moment::Lost:
    case Moment::Reopening:
        fixture.unplug(FIRST);
        QTRY_COMPARE_WITH_TIMEOUT(fixture.stateText(FIRST), QString("Lost"), LONG_WAIT);
        QTRY_VERIFY_WITH_TIMEOUT(reopening->load(), LONG_WAIT);
        break;
    case Moment::Starting:
        fixture.control(FIRST).blockNextAccess();
        fixture.click("StartButton");
        QTest::qWait(100);
        QCOMPARE(fixture.stateText(FIRST), QString("Starting"));
        break;
    }
    QTest::qWait(50);
    fixture.click("CloseButton"); // what hangs still does
    QCOMPARE(fixture.stateText(FIRST), QString("Available"));
    QCOMPARE(QTaskManager::Instance()->GetTaskCount(), 0U);
    QCOMPARE(VexaMainFeatureWidget::instance()->getAllFeatureTreesMap().keys(),
             QList<long int>{-1});

    // What hung comes to its end: nobody hears of it.
    const QString messages = fixture.messages();
    *mayReopen = true;
    fixture.control(FIRST).comeBack();
    fixture.control(FIRST).unblock();
    QTest::qWait(100);
    QCOMPARE(fixture.stateText(FIRST), QString("Available"));
    QCOMPARE(fixture.messages(), messages);
    fixture.forgetUpdates();
    fixture.openAndWait(FIRST);
    QCOMPARE(fixture.stateText(FIRST), QString("Open"));
    QCOMPARE(QTaskManager::Instance()->GetTaskCount(), 1U);
}

void WorkbenchClosingTest::twoDevicesManyTimes()
{
    WindowFixture fixture;
    int threads = 0;
    for (int round = 0; round < ROUNDS; ++round) {
        fixture.forgetUpdates();
        for (const QString &id : {FIRST, SECOND}) {
            fixture.select(id);
            fixture.click("OpenButton");
        }
        // Closed sometimes in the middle of the opening or of the first full update, sometimes after it.
        const bool opened = round % 3 != 0;
        const bool updated = round % 3 == 2;
        for (const QString &id : {FIRST, SECOND}) {
            QVERIFY(becomes([&] { return !opened || fixture.stateText(id) == "Open"; }));
            QVERIFY(becomes([&] { return !updated || fixture.isUpdated(id); }));
        }
        for (const QString &id : {SECOND, FIRST}) {
            fixture.select(id);
            fixture.click("CloseButton");
            QCOMPARE(fixture.stateText(id), QString("Available"));
        }
        QVERIFY(becomes([] { return QTaskManager::Instance()->GetTaskCount() == 0; }));
        threads = round == ROUNDS / 2 ? threadCount() : threads;
    }
    QCOMPARE(VexaMainFeatureWidget::instance()->getAllFeatureTreesMap().size(), 1);
    // Sessions that were given up end with their openings.
    QTRY_VERIFY(fixture.window().findChildren<CameraSession *>().isEmpty());
    // Threads of pools end after a while; those of a device that is left behind would not.
    QVERIFY(becomes([threads] { return threadCount() <= threads + 2; }));
}

QTEST_MAIN(WorkbenchClosingTest)
#include "tst_workbench_closing.moc"
