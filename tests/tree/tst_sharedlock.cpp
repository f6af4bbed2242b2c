#include "model/CTreeItemValue.h"
#include "model/VexaPropertyTreeItem.h"
#include "tests/support/ModuleFixture.h"
#include "tree/QGetFeaturesThread.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QtTest>

#include <algorithm>

namespace {

constexpr int FEATURES = 500;
constexpr quint64 LOCK = 0x100;

QByteArray reg(const QByteArray &name, quint64 address)
{
    return "<IntReg Name=\"" + name + "\"><Address>" + QByteArray::number(address)
        + "</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort></IntReg>";
}

ModuleFixture::Camera open(ModuleFixture &fixture)
{
    QByteArray elements = reg("LockReg", LOCK)
        + "<IntSwissKnife Name=\"Lock\"><pVariable Name=\"L\">LockReg</pVariable>"
          "<Formula>L = 1</Formula></IntSwissKnife>";
    QStringList names;
    for (int i = 0; i < FEATURES; ++i) {
        const QByteArray number = QByteArray::number(i);
        names.append(QStringLiteral("Feature") + QString::fromLatin1(number));
        elements += "<Integer Name=\"Feature" + number + "\"><pIsLocked>Lock</pIsLocked><pValue>Reg"
            + number + "</pValue></Integer>"
            + reg("Reg" + number, 0x1000 + 4 * static_cast<quint64>(i));
    }
    return fixture.openDescription(descriptionOf(names, elements));
}

/// Reads of the lock's register during one pass over everything; -1 when the pass does not end.
int lockReadsOfAPass(const ModuleFixture::Camera &camera)
{
    camera.device.control->clearAccessLog();
    QSignalSpy ended(camera.tree->findChildren<QGetFeaturesThread *>().value(2),
                     &QGetFeaturesThread::sigThreadEnd);
    camera.tree->UpdateFeatures(FEATURES_UPDATE_ALL, QStringList(),
                                QGetFeaturesThread::UPDATE_EVERYTHING);
    if (ended.isEmpty() && !ended.wait(20000)) {
        return -1;
    }
    const QVector<SimulatorAccess> log = camera.device.control->accessLog();
    return static_cast<int>(
        std::count_if(log.cbegin(), log.cend(),
                      [](const SimulatorAccess &access) { return access.address == LOCK; }));
}

int readOnlyFeatures(const ModuleFixture::Camera &camera)
{
    const auto items = camera.tree->AllTreeItemsMap();
    return static_cast<int>(std::count_if(items.cbegin(), items.cend(), [](const auto *item) {
        return item->value()->m_strNodeName.startsWith(QLatin1String("Feature"))
            && item->readOnly();
    }));
}

} // namespace

class tst_sharedlock : public QObject
{
    Q_OBJECT
private slots:
    void lockIsReadAHandfulOfTimes();
    void nextPassSeesTheChange();
};

void tst_sharedlock::lockIsReadAHandfulOfTimes()
{
    ModuleFixture fixture;
    const ModuleFixture::Camera camera = open(fixture);
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    camera.device.control->setLogging(true);
    QElapsedTimer timer;
    timer.start();
    const int reads = lockReadsOfAPass(camera);
    // A slow machine takes longer than anything is held.
    const qint64 most = 5 + timer.elapsed() / 40;
    QVERIFY2(reads >= 1 && reads <= most, qPrintable(QString::number(reads)));
    fixture.close(camera);
}

void tst_sharedlock::nextPassSeesTheChange()
{
    ModuleFixture fixture;
    const ModuleFixture::Camera camera = open(fixture);
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    camera.device.control->setLogging(true);
    for (int pass = 0; pass < 10; ++pass) {
        const bool isLocked = pass % 2 == 0;
        camera.device.control->poke(LOCK, QByteArray(isLocked ? "\1\0\0\0" : "\0\0\0\0", 4));
        QVERIFY(lockReadsOfAPass(camera) >= 1);
        QCOMPARE(readOnlyFeatures(camera), isLocked ? FEATURES : 0);
    }
    fixture.close(camera);
}

QTEST_MAIN(tst_sharedlock)
#include "tst_sharedlock.moc"
