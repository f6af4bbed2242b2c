#include "model/FeatureTreeBuilder.h"
#include "model/NodeDependencyMaps.h"

#include <QDomDocument>
#include <QRandomGenerator>
#include <QtTest>

namespace {

struct Description
{
    explicit Description(const QByteArray &elements, const QStringList &items = {})
        : itemNames(items)
    {
        document.setContent("<RegisterDescription>" + elements + "</RegisterDescription>");
        builder.GenerateDomElementMap(document.documentElement());
        if (itemNames.isEmpty()) {
            itemNames = builder.elementMap().keys();
        }
        maps.generate(document.documentElement(), builder.elementMap(), itemNames);
    }

    QDomDocument document;
    FeatureTreeBuilder builder;
    QStringList itemNames;
    NodeDependencyMaps maps;
};

/// Elements "N0".. of random kinds that refer to later ones only.
QList<QByteArray> randomElements(quint32 nSeed, int nNodes)
{
    static const char *const tags[] = {"Integer", "Enumeration", "Float",
                                       "Boolean", "Command",     "StringReg",
                                       "IntReg",  "SwissKnife",  "Converter"};
    static const char *const references[] = {
        "pValue",       "pMin",      "pMax",      "pInc",         "pIsLocked", "pIsImplemented",
        "pIsAvailable", "pVariable", "pVariable", "pInvalidator", "pSelected", "pAddress"};
    static const char *const periods[] = {"0", "10", "120", "125", "soon", "", "3000"};
    QRandomGenerator random(nSeed);
    QList<QByteArray> elements;
    for (int nNode = 0; nNode < nNodes; ++nNode) {
        const QByteArray tag = tags[random.bounded(9)];
        QByteArray xml = '<' + tag + " Name='N" + QByteArray::number(nNode) + "'>";
        for (quint32 nChild = random.bounded(5); nNode + 1 < nNodes && nChild > 0; --nChild) {
            const int nTarget = random.bounded(nNode + 1, std::min(nNode + 9, nNodes));
            const QByteArray reference = references[random.bounded(12)];
            xml += '<' + reference + ">N" + QByteArray::number(nTarget) + "</" + reference + '>';
        }
        if (random.bounded(8) == 0) {
            xml += "<Cachable>NoCache</Cachable>";
        }
        if (random.bounded(8) == 0) {
            xml += QByteArray("<PollingTime>") + periods[random.bounded(7)] + "</PollingTime>";
        }
        elements.append(xml + "</" + tag + '>');
    }
    return elements;
}

QString joined(const QStringList &list)
{
    return list.join(' ');
}

} // namespace

class tst_nodedependencymaps : public QObject
{
    Q_OBJECT
private slots:
    void orderOfTheDescriptionDoesNotCount();
    void dependants_data();
    void dependants();
    void polling_data();
    void polling();
    void circlesEnd();
    void hostileDescriptionsEnd();
};

/// What is worked out once for many features must not depend on which of them came first.
void tst_nodedependencymaps::orderOfTheDescriptionDoesNotCount()
{
    for (quint32 nSeed = 1; nSeed <= 20; ++nSeed) {
        QList<QByteArray> elements = randomElements(nSeed, int(15 + 2 * nSeed));
        const Description forwards(elements.join());
        std::reverse(elements.begin(), elements.end());
        const Description backwards(elements.join());
        QCOMPARE(backwards.maps.invalidatorMap(), forwards.maps.invalidatorMap());
        QCOMPARE(backwards.maps.pollingMap(), forwards.maps.pollingMap());
        QStringList noCache[] = {forwards.maps.noCacheList(), backwards.maps.noCacheList()};
        noCache[0].sort();
        noCache[1].sort();
        QCOMPARE(noCache[1], noCache[0]);
        for (const QString &strName : forwards.itemNames) {
            QCOMPARE(backwards.maps.GetFeatureInvalidatorList(strName),
                     forwards.maps.GetFeatureInvalidatorList(strName));
        }
    }
}

void tst_nodedependencymaps::dependants_data()
{
    QTest::addColumn<QByteArray>("elements");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("list");
    const auto row = [](const char *fault, const char *elements, const char *name,
                        const char *list) {
        QTest::newRow(fault) << QByteArray(elements) << name << list;
    };
    // A and Bc mirror each other through their registers.
    const char *pair =
        "<Integer Name='A'><pValue>Ra</pValue><pMin>M</pMin></Integer><X "
        "Name='Ra'><pValue>Bc</pValue></X>"
        "<Integer Name='Bc'><pValue>Rb</pValue></Integer>"
        "<X Name='Rb'><pValue>Q</pValue></X><X Name='M'><pInvalidator>C</pInvalidator></X>";
    row("nothing depends on it", "<Integer Name='A'/>", "A", "A");
    row("fixed list", "<Integer Name='A'/>", "AlgoRegionIndex",
        "AlgoRegionEnable AlgoRegionHeight AlgoRegionLeftX AlgoRegionLeftY AlgoRegionWidth "
        "PollingAlgoROIRegionIndex "
        "AlgoRegionIndex");
    row("contrast brings the line source", "<Integer Name='A'/>", "ContrastEnable",
        "ContrastEnable LineSource");
    row("partner of a dependant", pair, "C", "A Bc C");
    row("letters of the own partner", pair, "A", "B c A");
    row("pInvalidator right below the feature does not count",
        "<Integer Name='A'><pInvalidator>C</pInvalidator></Integer>", "C", "C");
    row("own variable does not lead on",
        "<Integer Name='A'><pVariable>V</pVariable></Integer><X "
        "Name='V'><pInvalidator>C</pInvalidator></X>",
        "C", "C");
    row("features of one variable",
        "<Float Name='A'><pVariable>V</pVariable></Float>"
        "<Float Name='B'><pVariable>V</pVariable></Float><Float Name='V'/>",
        "B", "A B");
    row("name that mirrors an invalidating node",
        "<Integer Name='A'><pValue>Ra</pValue></Integer><X "
        "Name='Ra'><pInvalidator>Reg</pInvalidator></X>"
        "<Integer Name='Mirror'><pValue>Reg</pValue></Integer>",
        "Mirror", "A Mirror");
    row("selected features follow",
        "<Integer Name='S'><pSelected>T</pSelected><pSelected>U</pSelected></Integer>", "S",
        "T U S");
}

void tst_nodedependencymaps::dependants()
{
    QFETCH(QByteArray, elements);
    QFETCH(QString, name);
    const Description description(elements);
    QTEST(joined(description.maps.GetFeatureInvalidatorList(name)), "list");
}

void tst_nodedependencymaps::polling_data()
{
    QTest::addColumn<QByteArray>("children");
    QTest::addColumn<qint64>("period"); // 0: not polled
    const auto row = [](const char *fault, const char *children, qint64 period) {
        QTest::newRow(fault) << QByteArray(children) << period;
    };
    row("down to the grid", "<PollingTime>120</PollingTime>", 100);
    row("half rounds up", "<PollingTime>125</PollingTime>", 150);
    row("longest period stays in range", "<PollingTime>9223372036854775807</PollingTime>",
        9223372036854775800);
    row("zero never fires", "<PollingTime>0</PollingTime>", 0);
    row("no cache", "<Cachable>NoCache</Cachable>", 2000);
    row("not a number ends the search", "<PollingTime>soon</PollingTime><pValue>R</pValue>", 0);
    row("register behind an empty period", "<PollingTime/><pValue>R</pValue>", 500);
}

void tst_nodedependencymaps::polling()
{
    QFETCH(QByteArray, children);
    QFETCH(qint64, period);
    const Description description("<Integer Name='I'>" + children
                                      + "</Integer><X Name='R'><PollingTime>500</PollingTime></X>",
                                  {"I"});
    QMap<qint64, QStringList> expected;
    if (period > 0) {
        expected.insert(period, {"I"});
    }
    QCOMPARE(description.maps.pollingMap(), expected);
}

void tst_nodedependencymaps::circlesEnd()
{
    const Description description(
        "<Integer Name='A'><pValue>X</pValue></Integer><X Name='X'><pValue>Y</pValue></X>"
        "<X Name='Y'><pVariable>X</pVariable><pInvalidator>C</pInvalidator></X>"
        "<X Name='Z'><pValue>Z</pValue><PollingTime>100</PollingTime></X>",
        {"A"});
    QCOMPARE(joined(description.maps.invalidatorMap().value(QString("A"))), QString("Y X C"));
    QCOMPARE(joined(description.maps.GetFeatureInvalidatorList(QString("C"))), QString("A C"));
    QVERIFY(!description.maps.IsNoCacheFeature("X"));
    qint64 nPeriod = 0;
    QVERIFY(description.maps.IsPollingFeature("Z", nPeriod));
    QCOMPARE(nPeriod, qint64(100));
}

void tst_nodedependencymaps::hostileDescriptionsEnd()
{
    // A chain of 2 500 features that each reach all the later ones: it ends, with one line.
    QByteArray xml;
    for (int nNode = 0; nNode < 2500; ++nNode) {
        xml += "<Integer Name='N" + QByteArray::number(nNode) + "'><pValue>N"
            + QByteArray::number(nNode + 1) + "</pValue></Integer>";
    }
    QTest::ignoreMessage(QtWarningMsg,
                         "The nodes of the description refer to each other without end; some "
                         "dependants stay unknown.");
    const Description description(xml);
    QVERIFY(description.maps.invalidatorMap().value("N0").contains("N2500"));
}

QTEST_GUILESS_MAIN(tst_nodedependencymaps)
#include "tst_nodedependencymaps.moc"
