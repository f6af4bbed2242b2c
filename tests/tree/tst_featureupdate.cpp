#include "ShellServicesModule/QLocalCfg.h"
#include "model/CTreeEnumationItemValue.h"
#include "model/CTreeFloatItemValue.h"
#include "model/CTreeIntergerItemValue.h"
#include "model/VexaPropertyTreeItem.h"
#include "tests/support/ModuleFixture.h"
#include "tree/FeatureUpdate.h"
#include "tree/QGetFeaturesThread.h"

#include <QtTest>

namespace {

constexpr int EVERYTHING = QGetFeaturesThread::UPDATE_EVERYTHING;
constexpr int REFRESH = QGetFeaturesThread::UPDATE_REFRESH;

QByteArray intReg(const char *name, int address)
{
    return QByteArray("<IntReg Name=\"") + name + "\"><Address>" + QByteArray::number(address)
        + "</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</"
          "pPort><Sign>Signed</Sign>"
          "<Endianess>LittleEndian</Endianess></IntReg>\n";
}

/// The registers that the rows below point at. "One" reads 1, "Zero" reads 0, "Broken" lies at an address that fails.
const QByteArray &registers()
{
    static const QByteArray elements = intReg("ValueReg", 0x100) + intReg("One", 0x104)
        + intReg("Zero", 0x108) + intReg("Broken", 0x10C) + intReg("MinReg", 0x110)
        + intReg("MaxReg", 0x114);
    return elements;
}

void pokeInt(SimulatorControl &control, quint64 address, qint32 value)
{
    control.poke(address, QByteArray(reinterpret_cast<const char *>(&value), sizeof value));
}

} // namespace

class tst_featureupdate : public QObject
{
    Q_OBJECT
private slots:
    void visibleAtLevel_data();
    void visibleAtLevel();
    void access_data();
    void access();
    void emptyRange();
    void enumerationEntries();
    void hiddenValueIsSpared();
    void failedReadKeepsTheValue();
    void unreachableDeviceChangesNothing();
    void frameRatesReachTheTask();
    void pointerNodesAreReadOnceAnUpdate();
};

void tst_featureupdate::visibleAtLevel_data()
{
    QTest::addColumn<QString>("visibility");
    QTest::addColumn<QString>("levels"); // 0 guru, 1 expert, 2 beginner, 3 unknown
    QTest::newRow("no visibility") << ""
                                   << "0123";
    QTest::newRow("beginner") << "Beginner"
                              << "012";
    QTest::newRow("expert") << "Expert"
                            << "01";
    QTest::newRow("guru") << "Guru"
                          << "0";
    QTest::newRow("invisible") << "Invisible"
                               << "";
    QTest::newRow("a word of its own") << "Wizard"
                                       << "";
}

void tst_featureupdate::visibleAtLevel()
{
    QFETCH(QString, visibility);
    QFETCH(QString, levels);
    QString shown;
    for (int level = 0; level <= 3; ++level) {
        if (FeatureUpdate::IsVisibleAtLevel(visibility, level)) {
            shown += QString::number(level);
        }
    }
    QCOMPARE(shown, levels);
}

void tst_featureupdate::access_data()
{
    QTest::addColumn<QByteArray>("children");
    QTest::addColumn<bool>("visible");
    QTest::addColumn<bool>("readOnly");
    QTest::addColumn<bool>("cached");

    QTest::newRow("plain node is writable") << QByteArray() << true << false << true;
    QTest::newRow("locked") << QByteArray("<pIsLocked>One</pIsLocked>") << true << true << true;
    QTest::newRow("lock open") << QByteArray("<pIsLocked>Zero</pIsLocked>") << true << false
                               << true;
    QTest::newRow("lock that fails counts as open")
        << QByteArray("<pIsLocked>Broken</pIsLocked>") << true << false << true;
    QTest::newRow("not implemented")
        << QByteArray("<pIsImplemented>Zero</pIsImplemented>") << false << true << false;
    QTest::newRow("implemented fails")
        << QByteArray("<pIsImplemented>Broken</pIsImplemented>") << false << true << false;
    QTest::newRow("not available")
        << QByteArray("<pIsAvailable>Zero</pIsAvailable>") << false << true << false;
    QTest::newRow("expert at level beginner is read but hidden")
        << QByteArray("<Visibility>Expert</Visibility>") << false << false << true;
    QTest::newRow("imposed read only")
        << QByteArray("<ImposedAccessMode>RO</ImposedAccessMode>") << true << true << true;
}

void tst_featureupdate::access()
{
    QFETCH(QByteArray, children);
    ModuleFixture fixture;
    QLocalCfg::Instance()->SetUserLevel(2);
    const QByteArray xml = descriptionOf({QStringLiteral("Feature")},
                                         "<Integer Name=\"Feature\">" + children
                                             + "<pValue>ValueReg</pValue></Integer>" + registers());
    auto device = SimulatedDevices::fromDescription(xml, QStringLiteral("test"),
                                                    SimulatorControl::MemoryPattern::Zero);
    pokeInt(*device.control, 0x104, 1);
    device.control->setFailing(0x10C, 10);
    const ModuleFixture::Camera camera = fixture.open(device);
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    VexaPropertyTreeItem *item = camera.tree->propertyItemByName(QStringLiteral("Feature"));
    QTEST(item->visible(), "visible");
    QTEST(item->readOnly(), "readOnly");
    QTEST(item->isValueCached(), "cached");
    fixture.close(camera);
}

void tst_featureupdate::emptyRange()
{
    ModuleFixture fixture;
    const QByteArray xml = descriptionOf(
        {QStringLiteral("Feature")},
        "<Integer "
        "Name=\"Feature\"><pValue>ValueReg</pValue><pMin>MinReg</pMin><pMax>MaxReg</pMax></Integer>"
            + registers());
    auto device = SimulatedDevices::fromDescription(xml, QStringLiteral("test"),
                                                    SimulatorControl::MemoryPattern::Zero);
    pokeInt(*device.control, 0x100, 77);
    pokeInt(*device.control, 0x110, 8);
    pokeInt(*device.control, 0x114, 7);
    const ModuleFixture::Camera camera = fixture.open(device);
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    const auto *value = dynamic_cast<CTreeIntergerItemValue *>(
        camera.tree->propertyItemByName(QStringLiteral("Feature"))->value());
    QVERIFY(value);
    QCOMPARE(value->m_nMinValue, qint64(77));
    QCOMPARE(value->m_nMaxValue, qint64(77));
    fixture.close(camera);
}

void tst_featureupdate::enumerationEntries()
{
    ModuleFixture fixture;
    const QByteArray xml = descriptionOf(
        {QStringLiteral("Shape"), QStringLiteral("RawModeEnable")},
        "<Enumeration Name=\"Shape\">"
        "<EnumEntry Name=\"Plain\"><Value>0</Value></EnumEntry>"
        "<EnumEntry Name=\"Named\"><DisplayName>A Name</DisplayName><Value>0x10</Value></EnumEntry>"
        "<EnumEntry "
        "Name=\"Missing\"><pIsImplemented>Zero</pIsImplemented><Value>2</Value></EnumEntry>"
        "<EnumEntry Name=\"Away\"><pIsAvailable>Zero</pIsAvailable><Value>3</Value></EnumEntry>"
        "<EnumEntry Name=\"Locked\"><pIsLocked>One</pIsLocked><Value>4</Value></EnumEntry>"
        "<EnumEntry Name=\"Raw\"><Value>5</Value></EnumEntry>"
        "<EnumEntry Name=\"Twin\"><DisplayName>A Name</DisplayName><Value>6</Value></EnumEntry>"
        "<pValue>ValueReg</pValue></Enumeration>"
        "<Boolean Name=\"RawModeEnable\"><pValue>Zero</pValue></Boolean>"
            + registers());
    auto device = SimulatedDevices::fromDescription(xml, QStringLiteral("test"),
                                                    SimulatorControl::MemoryPattern::Zero);
    pokeInt(*device.control, 0x100, 16);
    pokeInt(*device.control, 0x104, 1);
    const ModuleFixture::Camera camera = fixture.open(device);
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    const auto *value = dynamic_cast<CTreeEnumationItemValue *>(
        camera.tree->propertyItemByName(QStringLiteral("Shape"))->value());
    QVERIFY(value);
    QCOMPARE(value->getDisplayList(),
             QStringList({QStringLiteral("Plain"), QStringLiteral("A Name")}));
    QCOMPARE(value->getAllEnumationMap().keys(), QList<qint64>({0, 6, 16}));
    QCOMPARE(value->displayValue(), QStringLiteral("A Name"));
    fixture.close(camera);
}

void tst_featureupdate::hiddenValueIsSpared()
{
    ModuleFixture fixture;
    QLocalCfg::Instance()->SetUserLevel(2);
    const QByteArray xml = descriptionOf(
        {QStringLiteral("Feature")},
        "<Integer Name=\"Feature\"><Visibility>Guru</Visibility><pValue>ValueReg</pValue></Integer>"
            + registers());
    auto device = SimulatedDevices::fromDescription(xml, QStringLiteral("test"),
                                                    SimulatorControl::MemoryPattern::Zero);
    const ModuleFixture::Camera camera = fixture.open(device);
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    VexaPropertyTreeItem *item = camera.tree->propertyItemByName(QStringLiteral("Feature"));
    device.control->setLogging(true);
    device.control->clearAccessLog();
    camera.tree->updateFeature(item, REFRESH);
    QVERIFY(device.control->accessLog().isEmpty());
    camera.tree->updateFeature(item, EVERYTHING);
    QVERIFY(!device.control->accessLog().isEmpty());
    fixture.close(camera);
}

void tst_featureupdate::failedReadKeepsTheValue()
{
    ModuleFixture fixture;
    const QByteArray xml = descriptionOf(
        {QStringLiteral("Feature")},
        "<Integer Name=\"Feature\"><pValue>ValueReg</pValue></Integer>" + registers());
    auto device = SimulatedDevices::fromDescription(xml, QStringLiteral("test"),
                                                    SimulatorControl::MemoryPattern::Zero);
    pokeInt(*device.control, 0x100, 5);
    device.control->setFailing(0x100, 10);
    const ModuleFixture::Camera camera = fixture.open(device);
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    VexaPropertyTreeItem *item = camera.tree->propertyItemByName(QStringLiteral("Feature"));
    QVERIFY(!item->isValueCached());

    device.control->setFailing(0x100, 0);
    camera.tree->updateFeature(item, EVERYTHING);
    QVERIFY(item->isValueCached());
    QCOMPARE(item->value()->value().toLongLong(), 5LL);

    device.control->setFailing(0x100, 10);
    pokeInt(*device.control, 0x100, 6);
    camera.tree->updateFeature(item, EVERYTHING);
    QCOMPARE(item->value()->value().toLongLong(), 5LL);
    fixture.close(camera);
}

void tst_featureupdate::unreachableDeviceChangesNothing()
{
    ModuleFixture fixture;
    const QByteArray xml = descriptionOf(
        {QStringLiteral("Feature")},
        "<Integer "
        "Name=\"Feature\"><pIsAvailable>One</pIsAvailable><pValue>ValueReg</pValue></Integer>"
            + registers());
    auto device = SimulatedDevices::fromDescription(xml, QStringLiteral("test"),
                                                    SimulatorControl::MemoryPattern::Zero);
    pokeInt(*device.control, 0x100, 5);
    pokeInt(*device.control, 0x104, 1);
    const ModuleFixture::Camera camera = fixture.open(device);
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    VexaPropertyTreeItem *item = camera.tree->propertyItemByName(QStringLiteral("Feature"));
    QVERIFY(item->visible());
    QVERIFY(!item->readOnly());
    device.control->vanish();
    camera.tree->updateFeature(item, EVERYTHING);
    QVERIFY(item->visible());
    QVERIFY(!item->readOnly());
    QCOMPARE(item->value()->value().toLongLong(), 5LL);
    fixture.close(camera);
}

void tst_featureupdate::frameRatesReachTheTask()
{
    ModuleFixture fixture;
    const ModuleFixture::Camera camera =
        fixture.open(SimulatedDevices::builtIn(QStringLiteral("area-camera")));
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    const auto *rate = dynamic_cast<CTreeFloatItemValue *>(
        camera.tree->propertyItemByName(QStringLiteral("AcquisitionFrameRate"))->value());
    QVERIFY(rate);
    QCOMPARE(taskOf(camera)->m_fAcquisitionFrameRate.load(), rate->m_fValue);
    QVERIFY(rate->m_fValue > 0.0F);
    fixture.close(camera);
}

void tst_featureupdate::pointerNodesAreReadOnceAnUpdate()
{
    ModuleFixture fixture;
    QByteArray entries;
    for (int i = 0; i < 20; ++i) {
        entries += "<EnumEntry Name=\"E" + QByteArray::number(i)
            + "\"><pIsAvailable>One</pIsAvailable><Value>" + QByteArray::number(i)
            + "</Value></EnumEntry>";
    }
    const QByteArray xml =
        descriptionOf({QStringLiteral("Shape")},
                      "<Enumeration Name=\"Shape\">" + entries
                          + "<pValue>ValueReg</pValue></Enumeration>" + registers());
    auto device = SimulatedDevices::fromDescription(xml, QStringLiteral("test"),
                                                    SimulatorControl::MemoryPattern::Zero);
    pokeInt(*device.control, 0x104, 1);
    const ModuleFixture::Camera camera = fixture.open(device);
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    device.control->setLogging(true);
    device.control->clearAccessLog();
    // Visibility and access only: the entries are read for the two tool tips.
    camera.tree->updateFeature(camera.tree->propertyItemByName(QStringLiteral("Shape")),
                               QGetFeaturesThread::UPDATE_VISIBILITY
                                   | QGetFeaturesThread::UPDATE_ACCESS);
    int reads = 0;
    for (const SimulatorAccess &access : device.control->accessLog()) {
        reads += access.address == 0x104 ? 1 : 0;
    }
    QCOMPARE(reads, 1);
    fixture.close(camera);
}

QTEST_MAIN(tst_featureupdate)
#include "tst_featureupdate.moc"
