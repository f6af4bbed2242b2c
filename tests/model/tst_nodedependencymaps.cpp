#include "model/FeatureTreeBuilder.h"
#include "model/NodeDependencyMaps.h"
#include "tests/model/NaiveDependencies.h"

#include <QDomDocument>
#include <QRandomGenerator>
#include <QtTest>

#include <thread>

namespace {

/// Nodes "N0".. of random kinds that refer to later ones only; most of them are items.
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

QByteArray randomDescription(quint32 nSeed, int nNodes)
{
    static const char *const tags[] = {"Integer", "Enumeration", "Float",
                                       "Boolean", "Command",     "StringReg",
                                       "IntReg",  "SwissKnife",  "Converter"};
    static const char *const references[] = {
        "pValue",       "pMin",      "pMax",      "pInc",         "pIsLocked", "pIsImplemented",
        "pIsAvailable", "pVariable", "pVariable", "pInvalidator", "pSelected", "pAddress"};
    QRandomGenerator random(nSeed);
    QByteArray xml;
    for (int nNode = 0; nNode < nNodes; ++nNode) {
        const QByteArray name = "N" + QByteArray::number(nNode);
        const QByteArray tag = tags[random.bounded(9)];
        xml += '<' + tag + " Name=\"" + name + "\">";
        for (quint32 nChild = random.bounded(5); nNode + 1 < nNodes && nChild > 0; --nChild) {
            const QByteArray target =
                "N" + QByteArray::number(random.bounded(nNode + 1, std::min(nNode + 9, nNodes)));
            // A mirror that points back makes a pair.
            const QByteArray reference = references[random.bounded(12)];
            xml += '<' + reference + '>' + target + "</" + reference + '>';
        }
        if (random.bounded(8) == 0) {
            xml += "<Cachable>NoCache</Cachable>";
        }
        if (random.bounded(8) == 0) {
            static const char *const periods[] = {"0", "10", "120", "125", "soon", "", "3000"};
            xml += QByteArray("<PollingTime>") + periods[random.bounded(7)] + "</PollingTime>";
        }
        xml += "</" + tag + '>';
    }
    xml += "<StructReg Name=\"S\">";
    for (int nEntry = 0; nEntry < 4; ++nEntry) {
        xml += "<pInvalidator>N" + QByteArray::number(random.bounded(nNodes))
            + "</pInvalidator><StructEntry Name=\"E" + QByteArray::number(nEntry) + "\"/>";
        xml += "<Integer Name=\"I" + QByteArray::number(nEntry) + "\"><pValue>E"
            + QByteArray::number(nEntry) + "</pValue></Integer>";
    }
    return xml + "</StructReg>";
}

QString joined(const QStringList &list)
{
    return list.join(QLatin1Char(' '));
}

} // namespace

class tst_nodedependencymaps : public QObject
{
    Q_OBJECT
private slots:
    void asTheNaiveWay_data();
    void asTheNaiveWay();
    void dependants_data();
    void dependants();
    void nearestStructInvalidatorFirst();
    void polling_data();
    void polling();
    void noCacheThroughTwoLinks();
    void circlesEnd();
    void hostileDescriptionsEnd();
    void stopDropsTheAnswer();
    void copiesAreSnapshots();
    void selectedAndLocked();
    void elementHelpers();
};

void tst_nodedependencymaps::asTheNaiveWay_data()
{
    QTest::addColumn<int>("nodes");
    for (int nSeed = 1; nSeed <= 20; ++nSeed) {
        QTest::newRow(qPrintable(QStringLiteral("seed %1").arg(nSeed))) << 15 + 2 * nSeed;
    }
}

void tst_nodedependencymaps::asTheNaiveWay()
{
    QFETCH(int, nodes);
    Description description(randomDescription(quint32(nodes), nodes));
    for (int nNode = 0; nNode < nodes; nNode += 7) {
        description.itemNames.removeOne(
            QStringLiteral("N%1").arg(nNode)); // not every node is an item
    }
    description.maps.generate(description.document.documentElement(),
                              description.builder.elementMap(), description.itemNames);
    const NaiveDependencies naive(description.document.documentElement(),
                                  description.builder.elementMap(), description.itemNames);
    const QStringList names = description.builder.elementMap().keys();
    QCOMPARE(description.maps.invalidatorMap().keys(), naive.m_invalidators.keys());
    for (const QString &strName : names) {
        QCOMPARE(joined(description.maps.GetFeatureInvalidatorList(strName)),
                 joined(naive.invalidatorList(strName)));
        QStringList list = description.maps.invalidatorMap().value(strName);
        QStringList naiveList = naive.m_invalidators.value(strName);
        list.removeDuplicates();
        naiveList.removeDuplicates();
        QCOMPARE(joined(list), joined(naiveList));
        QCOMPARE(description.maps.IsNoCacheFeature(strName), naive.isNoCache(strName));
        qint64 nPeriod = -1;
        qint64 nNaivePeriod = -1;
        QCOMPARE(description.maps.IsPollingFeature(strName, nPeriod),
                 naive.isPolling(strName, nNaivePeriod));
        QVERIFY(nPeriod == -1 || nPeriod == nNaivePeriod);
    }
    QCOMPARE(description.maps.pollingMap(), naive.pollingMap());
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
        "<Integer Name=\"A\"><pValue>Ra</pValue><pMin>M</pMin></Integer><X "
        "Name=\"Ra\"><pValue>Bc</pValue></X>"
        "<Integer Name=\"Bc\"><pValue>Rb</pValue></Integer>"
        "<X Name=\"Rb\"><pValue>Q</pValue></X><X Name=\"M\"><pInvalidator>C</pInvalidator></X>";
    row("nothing depends on it", "<Integer Name=\"A\"/>", "A", "A");
    row("unknown name", "<Integer Name=\"A\"/>", "Z", "Z");
    row("fixed list", "<Integer Name=\"A\"/>", "AlgoRegionIndex",
        "AlgoRegionEnable AlgoRegionHeight AlgoRegionLeftX AlgoRegionLeftY AlgoRegionWidth "
        "PollingAlgoROIRegionIndex "
        "AlgoRegionIndex");
    row("acquisition start", "<Integer Name=\"A\"/>", "AcquisitionStart",
        "AcquisitionStop AcquisitionStart");
    row("acquisition stop", "<Integer Name=\"A\"/>", "AcquisitionStop",
        "AcquisitionStop AcquisitionStart");
    row("packet size", "<Integer Name=\"A\"/>", "GevSCPSPacketSize",
        "GevSCPSPacketSize DeviceStreamChannelPacketSize");
    row("contrast brings the line source", "<Integer Name=\"A\"/>", "ContrastEnable",
        "ContrastEnable LineSource");
    row("partner of a dependant", pair, "C", "A Bc C");
    row("letters of the own partner", pair, "A", "B c A");
    row("pInvalidator right below the feature does not count",
        "<Integer Name=\"A\"><pInvalidator>C</pInvalidator></Integer>", "C", "C");
    row("own variable does not lead on",
        "<Integer Name=\"A\"><pVariable>V</pVariable></Integer><X "
        "Name=\"V\"><pInvalidator>C</pInvalidator></X>",
        "C", "C");
    row("features of one variable",
        "<Float Name=\"A\"><pVariable>V</pVariable></Float>"
        "<Float Name=\"B\"><pVariable>V</pVariable></Float><Float Name=\"V\"/>",
        "B", "A B");
    row("name that mirrors an invalidating node",
        "<Integer Name=\"A\"><pValue>Ra</pValue></Integer><X "
        "Name=\"Ra\"><pInvalidator>Reg</pInvalidator></X>"
        "<Integer Name=\"Mirror\"><pValue>Reg</pValue></Integer>",
        "Mirror", "A Mirror");
    row("selected features follow",
        "<Integer Name=\"S\"><pSelected>T</pSelected><pSelected>U</pSelected></Integer>", "S",
        "T U S");
    row("blanks around a reference",
        "<Integer Name=\"A\"><pValue> Ra </pValue></Integer><X Name=\"Ra\"><pInvalidator>\n "
        "C</pInvalidator></X>",
        "C", "A C");
}

void tst_nodedependencymaps::dependants()
{
    QFETCH(QByteArray, elements);
    QFETCH(QString, name);
    const Description description(elements);
    QTEST(joined(description.maps.GetFeatureInvalidatorList(name)), "list");
}

void tst_nodedependencymaps::nearestStructInvalidatorFirst()
{
    const Description description(
        "<StructReg Name=\"S\"><pInvalidator>a</pInvalidator><pInvalidator>b</pInvalidator>"
        "<StructEntry Name=\"E\"/><pInvalidator>later</pInvalidator></StructReg>"
        "<Integer Name=\"I\"><pValue>E</pValue></Integer>");
    QCOMPARE(joined(description.maps.invalidatorMap().value(QStringLiteral("I"))),
             QStringLiteral("b a"));
}

void tst_nodedependencymaps::polling_data()
{
    QTest::addColumn<QByteArray>("children");
    QTest::addColumn<qint64>("period"); // 0: not polled
    QTest::newRow("none") << QByteArray() << qint64(0);
    QTest::newRow("down to the grid")
        << QByteArray("<PollingTime>120</PollingTime>") << qint64(100);
    QTest::newRow("half rounds up") << QByteArray("<PollingTime>125</PollingTime>") << qint64(150);
    QTest::newRow("short period fires") << QByteArray("<PollingTime>1</PollingTime>") << qint64(50);
    QTest::newRow("longest period stays in range")
        << QByteArray("<PollingTime>9223372036854775807</PollingTime>")
        << qint64(9223372036854775800);
    QTest::newRow("zero never fires") << QByteArray("<PollingTime>0</PollingTime>") << qint64(0);
    QTest::newRow("below zero never fires")
        << QByteArray("<PollingTime>-100</PollingTime>") << qint64(0);
    QTest::newRow("no cache") << QByteArray("<Cachable>NoCache</Cachable>") << qint64(2000);
    QTest::newRow("other cache modes are not polled")
        << QByteArray("<Cachable>WriteThrough</Cachable>") << qint64(0);
    QTest::newRow("zero of a node without a cache")
        << QByteArray("<Cachable>NoCache</Cachable><PollingTime>0</PollingTime>") << qint64(0);
    QTest::newRow("not a number ends the search")
        << QByteArray("<PollingTime>soon</PollingTime><pValue>R</pValue>") << qint64(0);
    QTest::newRow("register behind an empty period")
        << QByteArray("<PollingTime/><pValue>R</pValue>") << qint64(500);
}

void tst_nodedependencymaps::polling()
{
    QFETCH(QByteArray, children);
    QFETCH(qint64, period);
    const Description description(
        "<Integer Name=\"I\">" + children
            + "</Integer><X Name=\"R\"><PollingTime>500</PollingTime></X>",
        {QStringLiteral("I")});
    QMap<qint64, QStringList> expected;
    if (period > 0) {
        expected.insert(period, {QStringLiteral("I")});
    }
    QCOMPARE(description.maps.pollingMap(), expected);
}

void tst_nodedependencymaps::noCacheThroughTwoLinks()
{
    const Description description(
        "<Integer Name=\"A\"><pValue>B</pValue></Integer><X Name=\"B\"><pValue>C</pValue></X>"
        "<X Name=\"C\"><Cachable>NoCache</Cachable></X><Integer "
        "Name=\"D\"><pMin>C</pMin></Integer>");
    QCOMPARE(joined(description.maps.noCacheList()), QStringLiteral("A B C"));
}

void tst_nodedependencymaps::circlesEnd()
{
    const Description description(
        "<Integer Name=\"A\"><pValue>X</pValue></Integer><X Name=\"X\"><pValue>Y</pValue></X>"
        "<X Name=\"Y\"><pVariable>X</pVariable><pInvalidator>C</pInvalidator></X>"
        "<X Name=\"Z\"><pValue>Z</pValue><PollingTime>100</PollingTime></X>",
        {QStringLiteral("A")});
    QCOMPARE(joined(description.maps.invalidatorMap().value(QStringLiteral("A"))),
             QStringLiteral("Y X C"));
    QCOMPARE(joined(description.maps.GetFeatureInvalidatorList(QStringLiteral("C"))),
             QStringLiteral("A C"));
    QVERIFY(!description.maps.IsNoCacheFeature(QStringLiteral("X")));
    qint64 nPeriod = 0;
    QVERIFY(description.maps.IsPollingFeature(QStringLiteral("Z"), nPeriod));
    QCOMPARE(nPeriod, qint64(100));
}

void tst_nodedependencymaps::hostileDescriptionsEnd()
{
    // A chain of 4 000 features that each reach all the later ones: it ends, with one line.
    QByteArray xml;
    for (int nNode = 0; nNode < 4000; ++nNode) {
        xml += "<Integer Name=\"N" + QByteArray::number(nNode) + "\"><pValue>N"
            + QByteArray::number(nNode + 1) + "</pValue></Integer>";
    }
    QTest::ignoreMessage(QtWarningMsg,
                         "The nodes of the description refer to each other without end; some "
                         "dependants stay unknown.");
    const Description description(xml);
    QVERIFY(description.maps.invalidatorMap()
                .value(QStringLiteral("N0"))
                .contains(QStringLiteral("N4000")));
}

void tst_nodedependencymaps::stopDropsTheAnswer()
{
    NodeDependencyMaps maps;
    const NodeDependencyMaps snapshot = maps;
    maps.setStopRequested(true);
    QVERIFY(maps.GetFeatureInvalidatorList(QStringLiteral("AcquisitionStart")).isEmpty());
    QVERIFY(snapshot.GetFeatureInvalidatorList(QStringLiteral("A")).isEmpty());
    QCOMPARE(maps.GetFeatureInvalidatorList(QStringLiteral("AlgoRegionIndex")).last(),
             QStringLiteral("AlgoRegionIndex"));
    maps.setStopRequested(false);
    QCOMPARE(joined(snapshot.GetFeatureInvalidatorList(QStringLiteral("A"))), QStringLiteral("A"));
}

void tst_nodedependencymaps::copiesAreSnapshots()
{
    Description description(randomDescription(3, 300));
    const NodeDependencyMaps snapshot = description.maps;
    const QString strName = QStringLiteral("N150");
    const QStringList expected = snapshot.GetFeatureInvalidatorList(strName);
    QVector<QStringList> answers(4);
    std::vector<std::thread> readers;
    for (QStringList &answer : answers) {
        readers.emplace_back([&answer, snapshot, strName] {
            for (int nRound = 0; nRound < 200; ++nRound) {
                answer = snapshot.GetFeatureInvalidatorList(strName);
            }
        });
    }
    description.maps.clear(); // the tree goes; the jobs keep theirs
    for (std::thread &reader : readers) {
        reader.join();
    }
    for (const QStringList &answer : qAsConst(answers)) {
        QCOMPARE(answer, expected);
    }
    QVERIFY(description.maps.invalidatorMap().isEmpty());
}

void tst_nodedependencymaps::selectedAndLocked()
{
    const Description description(
        "<Integer Name=\"S\"><pSelected>T</pSelected><pSelected>U</pSelected></Integer>"
        "<Integer Name=\"L\"><pIsLocked/></Integer><Integer Name=\"T\"/>");
    QList<QString> out{QStringLiteral("kept")};
    QVERIFY(!description.maps.GetFeaturePSelectedList(QStringLiteral("T"), out));
    QCOMPARE(joined(out), QStringLiteral("kept"));
    QVERIFY(description.maps.GetFeaturePSelectedList(QStringLiteral("S"), out));
    QCOMPARE(joined(out), QStringLiteral("T U"));
    QCOMPARE(description.maps.pSelectedRecords().size(), 2);
    QCOMPARE(joined(description.maps.lockedList()), QStringLiteral("L")); // whatever the text is
}

void tst_nodedependencymaps::elementHelpers()
{
    Description description(
        "<Group><X Name=\"R\"><AccessMode>RW</AccessMode><ImposedAccessMode>RO</ImposedAccessMode>"
        "<pValue>V</pValue></X></Group><X Name=\"W\"><AccessMode>WO</AccessMode></X>");
    const QDomElement top = description.document.documentElement();
    QDomElement found;
    QVERIFY(NodeDependencyMaps::GetFeatureNode(QStringLiteral("R"), top, found));
    QCOMPARE(NodeDependencyMaps::GetValueAccessMode(found), QStringLiteral("RO"));
    QString strText;
    QVERIFY(NodeDependencyMaps::GetPValueText(&found, strText) && strText == QLatin1String("V"));
    QVERIFY(!NodeDependencyMaps::GetPIsLockedText(&found, strText));
    QVERIFY(NodeDependencyMaps::GetFeatureNode(QStringLiteral("W"), top, found));
    QCOMPARE(NodeDependencyMaps::GetValueAccessMode(found), QStringLiteral("WO"));
    QVERIFY(!NodeDependencyMaps::GetFeatureNode(QStringLiteral("None"), top, found));
}

QTEST_GUILESS_MAIN(tst_nodedependencymaps)
#include "tst_nodedependencymaps.moc"
