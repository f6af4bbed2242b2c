#include "ShellServicesModule/QLocalCfg.h"
#include "model/CTreeEnumationItemValue.h"
#include "model/CTreeIntergerItemValue.h"
#include "model/VexaPropertyTreeItem.h"
#include "tests/support/ModuleFixture.h"
#include "tree/QGetFeaturesThread.h"

#include <QtTest>

namespace {

constexpr quint64 VALUE = 0x100;
constexpr quint64 ONE = 0x104; // reads 1
constexpr quint64 BROKEN = 0x108; // fails
constexpr quint64 MINIMUM = 0x10C;
constexpr quint64 MAXIMUM = 0x110;

QByteArray intReg(const char *name, quint64 address)
{
    return QByteArray("<IntReg Name='") + name + "'><Address>" + QByteArray::number(address)
        + "</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort>"
          "<Sign>Signed</Sign><Endianess>LittleEndian</Endianess></IntReg>\n";
}

/// A camera with a few features, at level beginner, after its first update.
struct Opened : ModuleFixture
{
    explicit Opened(const QStringList &features, const QByteArray &elements,
                    const QMap<quint64, qint32> &memory = {})
    {
        QLocalCfg::Instance()->SetUserLevel(2);
        const QByteArray registers = intReg("ValueReg", VALUE) + intReg("One", ONE)
            + intReg("Broken", BROKEN) + intReg("MinReg", MINIMUM) + intReg("MaxReg", MAXIMUM)
            + intReg("Zero", 0x114);
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
    void update() const
    {
        camera.tree->updateFeature(item(), QGetFeaturesThread::UPDATE_EVERYTHING);
    }

    decltype(SimulatedDevices::Simulated::control) control;
    Camera camera;
};

QByteArray feature(const QByteArray &children, const QByteArray &name = "Feature")
{
    return "<Integer Name='" + name + "'>" + children + "<pValue>ValueReg</pValue></Integer>";
}

} // namespace

class tst_featureupdate : public QObject
{
    Q_OBJECT
private slots:
    void access();
    void emptyRange();
    void enumerationEntries();
    void failedReadKeepsTheValue();
    void unreachableDeviceChangesNothing();
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
    const Opened f({"Feature", "Unread"},
                   feature("") + "<Integer Name='Unread'><pValue>Broken</pValue></Integer>",
                   {{VALUE, 5}});
    QVERIFY(!f.item("Unread")->isValueCached() && f.item()->isValueCached());
    f.control->setFailing(VALUE, 10);
    f.poke(VALUE, 6);
    f.update();
    QCOMPARE(f.item()->value()->value().toLongLong(), 5LL);
    f.control->setFailing(VALUE, 0);
    f.update();
    QCOMPARE(f.item()->value()->value().toLongLong(), 6LL);
}

void tst_featureupdate::unreachableDeviceChangesNothing()
{
    const Opened f({"Feature"}, feature("<pIsAvailable>One</pIsAvailable>"), {{VALUE, 5}});
    for (int turn = 0; turn < 2; ++turn) {
        QVERIFY(f.item()->visible() && !f.item()->readOnly());
        QCOMPARE(f.item()->value()->value().toLongLong(), 5LL);
        f.control->vanish();
        f.update();
    }
}

QTEST_MAIN(tst_featureupdate)
#include "tst_featureupdate.moc"
