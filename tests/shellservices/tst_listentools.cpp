#include "ShellServicesModule/VexaListenTools.h"

#include <QSemaphore>
#include <QThread>
#include <QtTest>

#include <atomic>
#include <functional>
#include <thread>

namespace {

/// Notes its calls and does what a test asks it to do in them.
class Listener : public IVexaListen
{
public:
    explicit Listener(const QString &name = QString(), QStringList *log = nullptr)
        : m_strName(name)
        , m_pLog(log)
    {
    }
    ~Listener() override { VexaListenTools::instance()->removeListener(this); }

    void notify(int, void *data) override
    {
        ++calls;
        lastData = data;
        if (m_pLog) {
            m_pLog->append(m_strName);
        }
        if (onNotify) {
            onNotify();
        }
    }

    std::function<void()> onNotify;
    std::atomic<int> calls{0};
    void *lastData = nullptr;

private:
    QString m_strName;
    QStringList *m_pLog;
};

} // namespace

class tst_ListenTools : public QObject
{
    Q_OBJECT
private slots:
    void callsInOrderOfPriority();
    void listenersChangeTheListWhileNotified_data();
    void listenersChangeTheListWhileNotified();
    void removalWaitsForTheOtherThread();
    void survivesTrafficFromManyThreads();
};

void tst_ListenTools::callsInOrderOfPriority()
{
    QStringList log;
    Listener late("late", &log), first("first", &log), second("second", &log), early("early", &log);
    auto *const pTools = VexaListenTools::instance();
    pTools->addListener(&late, PRIORITY_LEVEL_2);
    pTools->addListener(&first, PRIORITY_LEVEL_1);
    pTools->addListener(&second, PRIORITY_LEVEL_1);
    pTools->addListener(&early, PRIORITY_LEVEL_0);
    long int cameraId = 7;
    pTools->notifyListeners(VEXA_EVENT_BEFORE_DELETE_FEATURE_TREE, &cameraId);
    QCOMPARE(log, QStringList({"early", "first", "second", "late"}));
    log.clear();
    pTools->addListener(&early, PRIORITY_LEVEL_2); // moves: nobody is called twice
    pTools->notifyListeners(VEXA_EVENT_BEFORE_DELETE_FEATURE_TREE, &cameraId);
    QCOMPARE(log, QStringList({"first", "second", "late", "early"}));
    QCOMPARE(late.lastData, static_cast<void *>(&cameraId));
}

void tst_ListenTools::listenersChangeTheListWhileNotified_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QStringList>("firstRound");
    QTest::addColumn<QStringList>("secondRound");

    QTest::newRow("skips the one after a self-removal")
        << "remove a" << QStringList({"a", "b", "c"}) << QStringList({"b", "c"});
    QTest::newRow("calls one that was removed by an earlier one")
        << "remove b" << QStringList({"a", "c"}) << QStringList({"a", "c"});
    QTest::newRow("calls a new one in the round that added it")
        << "add d" << QStringList({"a", "b", "c"}) << QStringList({"a", "b", "c", "d"});
    QTest::newRow("calls one twice that was taken out and put back")
        << "renew b" << QStringList({"a", "c"}) << QStringList({"a", "c", "b"});
}

void tst_ListenTools::listenersChangeTheListWhileNotified()
{
    QFETCH(QString, action);
    QFETCH(QStringList, firstRound);
    QFETCH(QStringList, secondRound);
    QStringList log;
    Listener a("a", &log), b("b", &log), c("c", &log), d("d", &log);
    auto *const pTools = VexaListenTools::instance();
    for (Listener *pListener : {&a, &b, &c}) {
        pTools->addListener(pListener, PRIORITY_LEVEL_1);
    }
    const QMap<QString, std::function<void()>> actions{
        {"remove a", [&] { pTools->removeListener(&a); }},
        {"remove b", [&] { pTools->removeListener(&b); }},
        {"add d", [&] { pTools->addListener(&d, PRIORITY_LEVEL_1); }},
        {"renew b",
         [&] {
             pTools->removeListener(&b);
             pTools->addListener(&b, PRIORITY_LEVEL_1);
         }},
    };
    a.onNotify = actions.value(action);
    pTools->notifyListeners(6, nullptr);
    QCOMPARE(log, firstRound);
    a.onNotify = nullptr;
    log.clear();
    pTools->notifyListeners(6, nullptr);
    QCOMPARE(log, secondRound);
}

void tst_ListenTools::removalWaitsForTheOtherThread()
{
    auto *const pTools = VexaListenTools::instance();
    Listener listener;
    QSemaphore entered, leave;
    std::atomic<bool> bLeft{false};
    listener.onNotify = [&] {
        entered.release();
        leave.acquire();
        bLeft = true;
    };
    pTools->addListener(&listener, PRIORITY_LEVEL_1);
    std::thread notifier([&] { pTools->notifyListeners(7, nullptr); });
    entered.acquire();
    std::atomic<bool> bRemoved{false};
    std::atomic<bool> bLeftBefore{false};
    std::thread remover([&] {
        pTools->removeListener(&listener);
        bLeftBefore = bLeft.load();
        bRemoved = true;
    });
    QTest::qWait(20); // a removal that does not wait returns within this time
    QVERIFY(!bRemoved);
    leave.release();
    remover.join();
    notifier.join();
    QVERIFY(bLeftBefore);
    pTools->notifyListeners(7, nullptr);
    QCOMPARE(listener.calls.load(), 1);
}

void tst_ListenTools::survivesTrafficFromManyThreads()
{
    auto *const pTools = VexaListenTools::instance();
    std::atomic<bool> bStop{false};
    std::thread notifiers[2];
    for (std::thread &notifier : notifiers) {
        notifier = std::thread([&] {
            while (!bStop) {
                pTools->notifyListeners(6, nullptr);
            }
        });
    }
    for (int i = 0; i < 300; ++i) {
        // A listener that is called after its removal is used after it was freed.
        auto pListener = std::make_unique<Listener>();
        pTools->addListener(pListener.get(), PriorityLevel(i % 3));
        if (i % 16 == 0) {
            QThread::yieldCurrentThread();
        }
    }
    bStop = true;
    for (std::thread &notifier : notifiers) {
        notifier.join();
    }
}

QTEST_GUILESS_MAIN(tst_ListenTools)
#include "tst_listentools.moc"
