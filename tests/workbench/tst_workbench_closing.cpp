#include "DeviceTaskModule/QTaskManager.h"
#include "WindowFixture.h"
#include "host/devicetask/CameraHost.h"
#include "host/workbench/CameraSession.h"
#include "host/workbench/WorkbenchWindow.h"
#include "shell/VexaMainFeatureWidget.h"
#include "tests/support/DataTable.h"
#include "tree/VexaFeatureTree.h"

#include <QScopeGuard>
#include <QtTest>

#include <atomic>
#include <memory>

/// Cameras closed at any moment.
class WorkbenchClosingTest : public QObject
{
    Q_OBJECT
private slots:
    void closesAtOnce_data();
    void closesAtOnce();
};

namespace {

const QString FIRST = WindowFixture::FIRST;
constexpr int LONG_WAIT = WindowFixture::LONG_WAIT;

enum class Moment { AtRest, AccessHangs, NotResponding, Lost, Reopening, Starting };

} // namespace

Q_DECLARE_METATYPE(Moment)

void WorkbenchClosingTest::closesAtOnce_data()
{
    const DataTable<Moment> row("moment");
    row("at rest", Moment::AtRest);
    row("access hangs, not told yet", Moment::AccessHangs);
    row("access hangs, told", Moment::NotResponding);
    row("waiting for the return", Moment::Lost);
    row("asking for a new connection", Moment::Reopening);
    row("start of grabbing hangs", Moment::Starting);
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

QTEST_MAIN(WorkbenchClosingTest)
#include "tst_workbench_closing.moc"
