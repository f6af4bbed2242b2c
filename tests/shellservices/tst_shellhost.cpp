#include "ShellServicesModule/COMMONINTERFACE.h"
#include "ShellServicesModule/QVexaEventBus.h"
#include "host/shellservices/ShellHost.h"

#include <QSignalSpy>
#include <QWidget>
#include <QtTest>

#include <memory>
#include <thread>

class tst_ShellHost : public QObject
{
    Q_OBJECT
private slots:
    void stateReachesTheModule();
    void theMainWindowMayGo();
    void modifiedCameras_data();
    void modifiedCameras();
    void busCrossesThreads();
};

void tst_ShellHost::stateReachesTheModule()
{
    QCOMPARE(COMMONINTERFACE::currentCameraID(), -1L);
    QVERIFY(COMMONINTERFACE::isCanSetProperty());
    QCOMPARE(COMMONINTERFACE::drawingMode(), 0);
    ShellHost::instance()->setCurrentCameraID(3);
    ShellHost::instance()->setCanSetProperty(false);
    ShellHost::instance()->setDrawingMode(2);
    QCOMPARE(COMMONINTERFACE::currentCameraID(), 3L);
    QVERIFY(!COMMONINTERFACE::isCanSetProperty());
    QCOMPARE(COMMONINTERFACE::drawingMode(), 2);
}

void tst_ShellHost::theMainWindowMayGo()
{
    auto pWindow = std::make_unique<QWidget>();
    ShellHost::instance()->setMainWindow(pWindow.get());
    QCOMPARE(COMMONINTERFACE::mainWindow(), pWindow.get());
    pWindow.reset();
    QVERIFY(!COMMONINTERFACE::mainWindow());
}

void tst_ShellHost::modifiedCameras_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<bool>("isTold");
    QTest::newRow("added") << "add c" << QStringList({"a", "b", "c"}) << true;
    QTest::newRow("added twice") << "add a" << QStringList({"a", "b"}) << false;
    QTest::newRow("nameless camera listed") << "add " << QStringList({"a", "b"}) << false;
    QTest::newRow("removed") << "remove a" << QStringList({"b"}) << true;
    QTest::newRow("unknown removed") << "remove x" << QStringList({"a", "b"}) << false;
    QTest::newRow("rename loses the mark") << "rename a z" << QStringList({"z", "b"}) << true;
    QTest::newRow("rename to a listed name doubles it")
        << "rename a b" << QStringList({"b"}) << true;
    QTest::newRow("rename marks an unmodified camera")
        << "rename x y" << QStringList({"a", "b"}) << false;
}

void tst_ShellHost::modifiedCameras()
{
    QFETCH(QString, action);
    QFETCH(QStringList, names);
    QFETCH(bool, isTold);
    ShellHost *const pHost = ShellHost::instance();
    for (const QString &strName : pHost->modifiedCameras()) {
        COMMONINTERFACE::RemoveCurrentCamModified(strName);
    }
    COMMONINTERFACE::AddCurrentCamModified("a");
    COMMONINTERFACE::AddCurrentCamModified("b");
    QSignalSpy changes(pHost, &ShellHost::modifiedCamerasChanged);
    const QStringList words = action.split(' ');
    if (words.first() == "add") {
        COMMONINTERFACE::AddCurrentCamModified(words.at(1));
    } else if (words.first() == "remove") {
        COMMONINTERFACE::RemoveCurrentCamModified(words.at(1));
    } else {
        COMMONINTERFACE::CamModifedNameChanged(words.at(1), words.at(2));
    }
    QCOMPARE(pHost->modifiedCameras(), names);
    QCOMPARE(changes.size(), isTold ? 1 : 0);
}

void tst_ShellHost::busCrossesThreads()
{
    // By text, as a client may connect: the argument types must be known by name.
    QSignalSpy nodes(QVexaEventBus::Instance(),
                     SIGNAL(SigVexaEventUpdateFeatureTree2(long int, QList<QString>)));
    QObject context;
    QStringList received;
    connect(QVexaEventBus::Instance(), &QVexaEventBus::SigVexaEventUpdateFeatureTree2, &context,
            [&received](long int, const QList<QString> &names) { received = names; });
    std::thread worker([] {
        emit QVexaEventBus::Instance()->SigVexaEventUpdateFeatureTree2(4, {"Gain", "Width"});
    });
    worker.join();
    QTRY_COMPARE(received, QStringList({"Gain", "Width"}));
    QVERIFY(QMetaType::type("QList<QString>") != QMetaType::UnknownType);
    QVERIFY(nodes.isValid());
}

QTEST_MAIN(tst_ShellHost)
#include "tst_shellhost.moc"
