#include "ShellServicesModule/QLocalCfg.h"
#include "ShellServicesModule/QVexaEventBus.h"
#include "model/CTreeEnumationItemValue.h"
#include "model/CTreeIntergerItemValue.h"
#include "model/VexaPropertyTreeItem.h"
#include "tests/support/ModuleFixture.h"
#include "tree/QGetFeaturesThread.h"

#include <QComboBox>
#include <QSignalSpy>
#include <QtTest>

namespace {

constexpr quint64 VALUE = 0x100;
constexpr quint64 ONE = 0x104; // reads 1
constexpr quint64 BROKEN = 0x108; // fails
constexpr quint64 MINIMUM = 0x10C;
constexpr quint64 MAXIMUM = 0x110;
constexpr quint64 ZERO = 0x114;
constexpr quint64 MANY = 0x1000; // of manyFeatures, four bytes each

/// A camera with a few features, at level beginner, after its first update.
struct Opened : ModuleFixture
{
    explicit Opened(const QStringList &features, const QByteArray &elements,
                    const QMap<quint64, qint32> &memory = {})
    {
        QLocalCfg::Instance()->SetUserLevel(2);
        const QByteArray registers = intReg("ValueReg", VALUE) + intReg("One", ONE)
            + intReg("Broken", BROKEN) + intReg("MinReg", MINIMUM) + intReg("MaxReg", MAXIMUM)
            + intReg("Zero", ZERO);
        const auto device =
            SimulatedDevices::fromDescription(descriptionOf(features, elements + registers), "test",
                                              SimulatorControl::MemoryPattern::Zero);
        control = device.control;
        poke(ONE, 1);
        for (auto cell = memory.cbegin(); cell != memory.cend(); ++cell) {
            poke(cell.key(), cell.value());
        }
        control->setFailing(BROKEN, 10);
        camera = open(device);
        waitForFirstUpdate(camera);
        control->setLogging(true);
        control->clearAccessLog();
    }
    void poke(quint64 address, qint32 value) const
    {
        control->poke(address, QByteArray(reinterpret_cast<const char *>(&value), sizeof value));
    }
    VexaPropertyTreeItem *item(const QString &name = "Feature") const
    {
        return camera.tree->propertyItemByName(name);
    }
    qint64 shown(const QString &name = "Feature") const
    {
        return item(name)->valueSnapshot()->value().toLongLong();
    }
    void update() const
    {
        camera.tree->updateFeature(item(), QGetFeaturesThread::UPDATE_EVERYTHING);
    }
    bool hasReadOnly(const QList<quint64> &addresses) const
    {
        const QVector<SimulatorAccess> log = control->accessLog();
        return std::all_of(log.cbegin(), log.cend(), [&](const SimulatorAccess &access) {
            return addresses.contains(access.address);
        });
    }

    decltype(SimulatedDevices::Simulated::control) control;
    Camera camera;
};

QByteArray feature(const QByteArray &children, const QByteArray &name = "Feature",
                   const QByteArray &source = "ValueReg")
{
    return "<Integer Name='" + name + "'>" + children + "<pValue>" + source
        + "</pValue></Integer>\n";
}

/// Features "Many0" and so on, each over a register of its own.
QByteArray manyFeatures(int count, QStringList &names)
{
    QByteArray elements;
    for (int i = 0; i < count; ++i) {
        const QByteArray number = QByteArray::number(i);
        names.append("Many" + number);
        elements += feature("", "Many" + number, "Reg" + number)
            + intReg("Reg" + number, MANY + 4 * quint64(i));
    }
    return elements;
}

QStringList shownRows(VexaPropertyTreeItem *item)
{
    QStringList rows;
    for (int row = 0; row < item->childCount(); ++row) {
        if (item->child(row)->visible()) {
            rows.append(item->child(row)->value()->m_strNodeName);
            rows += shownRows(item->child(row));
        }
    }
    return rows;
}

} // namespace

/// What one update makes of a node, and which nodes each of the workers updates.
class tst_featureupdate : public QObject
{
    Q_OBJECT
private slots:
    void access();
    void emptyRange();
    void enumerationEntries();
    void failedReadKeepsTheValue();
    void unreachableDeviceChangesNothing();
    void firstUpdateIsToldOnceAndGrabbingLocks();
    void levelChangeShowsExactlyTheRows();
    void changedNodesAreReadAfterTheBurst();
    void pollingReadsItsTableOnly();
};

void tst_featureupdate::access()
{
    static const struct
    {
        const char *fault;
        const char *children;
        bool visible;
        bool readOnly;
        bool cached;
    } rows[] = {
        {"plain node is writable", "", true, false, true},
        {"locked", "<pIsLocked>One</pIsLocked>", true, true, true},
        {"lock open", "<pIsLocked>Zero</pIsLocked>", true, false, true},
        {"lock that fails counts as open", "<pIsLocked>Broken</pIsLocked>", true, false, true},
        {"not implemented", "<pIsImplemented>Zero</pIsImplemented>", false, true, false},
        {"implemented fails", "<pIsImplemented>Broken</pIsImplemented>", false, true, false},
        {"not available", "<pIsAvailable>Zero</pIsAvailable>", false, true, false},
        {"read but hidden", "<Visibility>Expert</Visibility>", false, false, true},
        {"read only", "<ImposedAccessMode>RO</ImposedAccessMode>", true, true, true},
    };
    QStringList names;
    QByteArray elements;
    for (const auto &row : rows) {
        names.append(QString("Feature%1").arg(names.size()));
        elements += feature(row.children, names.last().toUtf8());
    }
    const Opened f(names, elements);
    for (const auto &row : rows) {
        const VexaPropertyTreeItem *item = f.item(names.takeFirst());
        QVERIFY2(item->visible() == row.visible, row.fault);
        QVERIFY2(item->readOnly() == row.readOnly, row.fault);
        QVERIFY2(item->isValueCached() == row.cached, row.fault);
    }
}

void tst_featureupdate::emptyRange()
{
    const Opened f({"Feature"}, feature("<pMin>MinReg</pMin><pMax>MaxReg</pMax>"),
                   {{VALUE, 77}, {MINIMUM, 8}, {MAXIMUM, 7}});
    const auto *value = dynamic_cast<CTreeIntergerItemValue *>(f.item()->value());
    QVERIFY(value && value->m_nMinValue == 77 && value->m_nMaxValue == 77);
}

void tst_featureupdate::enumerationEntries()
{
    const Opened f({"Feature", "RawModeEnable"}, R"(<Enumeration Name="Feature">
<EnumEntry Name="Plain"><Value>0</Value></EnumEntry>
<EnumEntry Name="Named"><DisplayName>A Name</DisplayName><Value>0x10</Value></EnumEntry>
<EnumEntry Name="Missing"><pIsImplemented>Zero</pIsImplemented><Value>2</Value></EnumEntry>
<EnumEntry Name="Away"><pIsAvailable>Zero</pIsAvailable><Value>3</Value></EnumEntry>
<EnumEntry Name="Locked"><pIsLocked>One</pIsLocked><Value>4</Value></EnumEntry>
<EnumEntry Name="Raw"><Value>5</Value></EnumEntry>
<EnumEntry Name="Twin"><DisplayName>A Name</DisplayName><Value>6</Value></EnumEntry>
<EnumEntry Name="Below"><Value>-2</Value></EnumEntry>
<pValue>ValueReg</pValue></Enumeration>
<Boolean Name="RawModeEnable"><pValue>Zero</pValue></Boolean>)",
                   {{VALUE, 16}});
    const auto *value = dynamic_cast<CTreeEnumationItemValue *>(f.item()->value());
    QVERIFY(value);
    QCOMPARE(value->getDisplayList(), QStringList({"Plain", "A Name", "Below"}));
    QCOMPARE(value->getAllEnumationMap().keys(), QList<qint64>({-2, 0, 6, 16}));
    QCOMPARE(value->displayValue(), QString("A Name"));
    f.poke(VALUE, -2);
    f.update();
    QCOMPARE(value->displayValue(), QString("Below"));
    QVERIFY(f.camera.tree->rereadFeatureValue(f.item(), false));
    QCOMPARE(value->displayValue(), QString("Below"));
}

void tst_featureupdate::failedReadKeepsTheValue()
{
    const Opened f({"Feature", "Unread"}, feature("") + feature("", "Unread", "Broken"),
                   {{VALUE, 5}});
    QVERIFY(!f.item("Unread")->isValueCached() && f.item()->isValueCached());
    f.control->setFailing(VALUE, 10);
    f.poke(VALUE, 6);
    f.update();
    QCOMPARE(f.shown(), 5LL);
    f.control->setFailing(VALUE, 0);
    f.update();
    QCOMPARE(f.shown(), 6LL);
}

void tst_featureupdate::unreachableDeviceChangesNothing()
{
    const Opened f({"Feature"}, feature("<pIsAvailable>One</pIsAvailable>"), {{VALUE, 5}});
    for (int turn = 0; turn < 2; ++turn) {
        QVERIFY(f.item()->visible() && !f.item()->readOnly() && f.shown() == 5);
        f.control->vanish();
        f.update();
    }
}

void tst_featureupdate::firstUpdateIsToldOnceAndGrabbingLocks()
{
    ModuleFixture fixture;
    QLocalCfg::Instance()->SetUserLevel(0);
    QSignalSpy bus(QVexaEventBus::Instance(),
                   &QVexaEventBus::SigVexaEventFirstUpdateFeatureTreeEnd);
    const ModuleFixture::Camera camera = fixture.open(SimulatedDevices::builtIn("area-camera"));
    VexaFeatureTree &tree = *camera.tree;
    QSignalSpy first(&tree, &VexaFeatureTree::SigFirstEndUpdateFeature);
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    // Heard on this thread and behind the tree; a spy would be filled on the worker's.
    int ends = 0;
    connect(tree.findChildren<QGetFeaturesThread *>().value(2), &QGetFeaturesThread::sigThreadEnd,
            &tree, [&ends] { ++ends; });
    tree.RefreshFeatures();
    QTRY_COMPARE(ends, 1);
    QVERIFY(first.count() == 1 && bus.count() == 1);
    QCOMPARE(bus.first().first().value<long>(), camera.id);

    const VexaPropertyTreeItem *width = tree.propertyItemByName("Width");
    QVERIFY(width && !width->readOnly() && fixture.host().startGrabbing(camera.id));
    tree.OnCameraStartShot();
    QTRY_VERIFY(width->readOnly());
    QVERIFY(fixture.host().stopGrabbing(camera.id));
    tree.OnCameraStopShot();
    QTRY_VERIFY(!width->readOnly());
}

void tst_featureupdate::levelChangeShowsExactlyTheRows()
{
    // The leaf's name sorts ahead of its category's, so that the pass reaches it first.
    const Opened f({"Zoom", "Feature"},
                   R"(<Category Name="Zoom"><Visibility>Expert</Visibility>
<pFeature>AGuru</pFeature><pFeature>ABeginner</pFeature></Category>)"
                       + feature("<Visibility>Guru</Visibility>", "AGuru")
                       + feature("", "ABeginner") + feature(""));
    const QStringList beginner{"Feature"};
    VexaPropertyTreeItem *root = f.camera.tree->rootItem();
    QCOMPARE(shownRows(root), beginner);
    auto *combo = f.camera.tree->findChild<QComboBox *>();
    combo->setCurrentIndex(0);
    QTRY_COMPARE(shownRows(root), QStringList({"Zoom", "AGuru", "ABeginner", "Feature"}));
    combo->setCurrentIndex(2);
    QTRY_COMPARE(shownRows(root), beginner);
    QCOMPARE(QLocalCfg::Instance()->GetUserLevel(), 2);
}

void tst_featureupdate::changedNodesAreReadAfterTheBurst()
{
    QStringList names;
    const QByteArray elements = manyFeatures(50, names);
    const Opened f(names, elements);
    f.poke(MANY, 42);
    f.poke(MANY + 4, 43);
    f.camera.tree->OnAddValueChangedNodes({"Many0"});
    emit QVexaEventBus::Instance()->SigVexaEventUpdateFeatureTree2(f.camera.id,
                                                                   {"Many1", "Unknown"});
    QTRY_COMPARE(f.shown("Many0"), 42LL);
    QTRY_COMPARE(f.shown("Many1"), 43LL);
    QVERIFY2(f.hasReadOnly({MANY, MANY + 4}), "a node that did not change was read");
}

void tst_featureupdate::pollingReadsItsTableOnly()
{
    QStringList names;
    QByteArray elements = manyFeatures(20, names);
    elements.replace("'Reg7'>", "'Reg7'><PollingTime>100</PollingTime>");
    const Opened f(names, elements);
    f.poke(MANY + 4 * 7, 7);
    QTRY_COMPARE_WITH_TIMEOUT(f.shown("Many7"), 7LL, 20000);
    QVERIFY(f.hasReadOnly({MANY + 4 * 7}));
}

QTEST_MAIN(tst_featureupdate)
#include "tst_featureupdate.moc"
