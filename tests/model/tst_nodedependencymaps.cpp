#include "model/FeatureTreeBuilder.h"
#include "model/NodeDependencyMaps.h"
#include "tests/support/DataTable.h"

#include <QDomDocument>
#include <QRandomGenerator>

namespace {

/// "Integer A pMin=M pValue=R; X R": elements with their names and children.
struct Description
{
    explicit Description(const QString &strText, const QStringList &items = {})
        : itemNames(items)
    {
        QByteArray xml;
        for (const QString &strElement : strText.split("; ", Qt::SkipEmptyParts)) {
            const QStringList words = strElement.split(' ');
            xml += '<' + words.at(0).toUtf8() + " Name='" + words.at(1).toUtf8() + "'>";
            for (const QString &strChild : words.mid(2)) {
                const QByteArray tag = strChild.section('=', 0, 0).toUtf8();
                xml += '<' + tag + '>' + strChild.section('=', 1).toUtf8() + "</" + tag + '>';
            }
            xml += "</" + words.at(0).toUtf8() + '>';
        }
        document.setContent("<RegisterDescription>" + xml + "</RegisterDescription>");
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
QStringList randomElements(quint32 nSeed, int nNodes)
{
    static const char *const tags[] = {"Integer", "Enumeration", "Float",
                                       "Boolean", "Command",     "StringReg",
                                       "IntReg",  "SwissKnife",  "Converter"};
    static const char *const references[] = {
        "pValue",       "pMin",      "pMax",      "pInc",         "pIsLocked", "pIsImplemented",
        "pIsAvailable", "pVariable", "pVariable", "pInvalidator", "pSelected", "pAddress"};
    static const char *const periods[] = {"0", "10", "120", "125", "soon", "", "3000"};
    QRandomGenerator random(nSeed);
    QStringList elements;
    for (int nNode = 0; nNode < nNodes; ++nNode) {
        QString strText = QStringLiteral("%1 N%2").arg(tags[random.bounded(9)]).arg(nNode);
        for (quint32 nChild = random.bounded(5); nNode + 1 < nNodes && nChild > 0; --nChild) {
            strText += QStringLiteral(" %1=N%2")
                           .arg(references[random.bounded(12)])
                           .arg(random.bounded(nNode + 1, std::min(nNode + 9, nNodes)));
        }
        strText += QLatin1String(random.bounded(8) == 0 ? " Cachable=NoCache" : "");
        if (random.bounded(8) == 0) {
            strText += QStringLiteral(" PollingTime=%1").arg(periods[random.bounded(7)]);
        }
        elements.append(strText);
    }
    return elements;
}

/// What GetFeatureInvalidatorList answers, worked out without its index.
QStringList byTheMaps(const NodeDependencyMaps &maps, const QString &strName)
{
    QStringList list;
    for (auto row = maps.invalidatorMap().cbegin(); row != maps.invalidatorMap().cend(); ++row) {
        list += maps.IsFeatureInQList(strName, *row) ? QStringList(row.key()) : QStringList();
    }
    QString strPartner;
    for (const QString &strFound : QStringList(list)) {
        list += maps.GetFeatureInPair(strFound, strPartner) ? strPartner : strFound;
    }
    if (maps.GetFeatureInPair(strName, strPartner)) {
        list += strPartner.split("", Qt::SkipEmptyParts); // its letters
    }
    QStringList selected;
    maps.GetFeaturePSelectedList(strName, selected);
    list += maps.GetFeaturesHaveSamePVariable(strName) + selected + QStringList(strName);
    list.removeDuplicates();
    return list;
}

} // namespace

class tst_nodedependencymaps : public QObject
{
    Q_OBJECT
private slots:
    void randomDescriptions();
    void dependants_data();
    void dependants();
    void polling_data();
    void polling();
    void circlesEnd();
    void hostileDescriptionsEnd();
};

/// What is worked out once for many features does not depend on which of them came first, nor on the index.
void tst_nodedependencymaps::randomDescriptions()
{
    for (quint32 nSeed = 1; nSeed <= 20; ++nSeed) {
        QStringList elements = randomElements(nSeed, int(15 + 2 * nSeed));
        const Description forwards(elements.join("; "));
        std::reverse(elements.begin(), elements.end());
        const Description backwards(elements.join("; "));
        QCOMPARE(backwards.maps.invalidatorMap(), forwards.maps.invalidatorMap());
        QCOMPARE(backwards.maps.pollingMap(), forwards.maps.pollingMap());
        QCOMPARE(backwards.maps.noCacheList(), forwards.maps.noCacheList());
        for (const QString &strName : forwards.itemNames) {
            QCOMPARE(backwards.maps.GetFeatureInvalidatorList(strName),
                     byTheMaps(forwards.maps, strName));
        }
    }
}

void tst_nodedependencymaps::dependants_data()
{
    const DataTable<QString, QString, QString> row("description", "name", "list");
    // A and Bc mirror each other through their registers.
    const char *pair = "Integer A pValue=Ra pMin=M; X Ra pValue=Bc; Integer Bc pValue=Rb; "
                       "X Rb pValue=Q; X M pInvalidator=C";
    row("nothing depends on it", "Integer A", "A", "A");
    row("fixed list", "Integer A", "AlgoRegionIndex",
        "AlgoRegionEnable AlgoRegionHeight AlgoRegionLeftX AlgoRegionLeftY AlgoRegionWidth "
        "PollingAlgoROIRegionIndex AlgoRegionIndex");
    row("contrast brings the line source", "Integer A", "ContrastEnable",
        "ContrastEnable LineSource");
    row("partner of a dependant", pair, "C", "A Bc C");
    row("letters of the own partner", pair, "A", "B c A");
    row("pInvalidator right below the feature does not count", "Integer A pInvalidator=C", "C",
        "C");
    row("own variable does not lead on", "Integer A pVariable=V; X V pInvalidator=C", "C", "C");
    row("features of one variable", "Float A pVariable=V; Float B pVariable=V; Float V", "B",
        "A B");
    row("name that mirrors an invalidating node",
        "Integer A pValue=Ra; X Ra pInvalidator=Reg; Integer Mirror pValue=Reg", "Mirror",
        "A Mirror");
    row("selected features follow", "Integer S pSelected=T pSelected=U", "S", "T U S");
}

void tst_nodedependencymaps::dependants()
{
    QFETCH(QString, description);
    QFETCH(QString, name);
    QTEST(Description(description).maps.GetFeatureInvalidatorList(name).join(' '), "list");
}

void tst_nodedependencymaps::polling_data()
{
    const DataTable<QString, qint64> row("children", "period"); // 0: not polled
    row("down to the grid", "PollingTime=120", 100);
    row("half rounds up", "PollingTime=125", 150);
    row("longest period stays in range", "PollingTime=9223372036854775807", 9223372036854775800);
    row("zero never fires", "PollingTime=0", 0);
    row("no cache", "Cachable=NoCache", 2000);
    row("not a number ends the search", "PollingTime=soon pValue=R", 0);
    row("register behind an empty period", "PollingTime= pValue=R", 500);
}

void tst_nodedependencymaps::polling()
{
    QFETCH(QString, children);
    QFETCH(qint64, period);
    const Description description("Integer I " + children + "; X R PollingTime=500", {"I"});
    QMap<qint64, QStringList> expected;
    if (period > 0) {
        expected.insert(period, {"I"});
    }
    QCOMPARE(description.maps.pollingMap(), expected);
}

void tst_nodedependencymaps::circlesEnd()
{
    const Description description("Integer A pValue=X; X X pValue=Y; "
                                  "X Y pVariable=X pInvalidator=C; "
                                  "X Z pValue=Z PollingTime=100",
                                  {"A"});
    QCOMPARE(description.maps.invalidatorMap().value("A").join(' '), QString("Y X C"));
    QCOMPARE(description.maps.GetFeatureInvalidatorList("C").join(' '), QString("A C"));
    QVERIFY(!description.maps.IsNoCacheFeature("X"));
    qint64 nPeriod = 0;
    QVERIFY(description.maps.IsPollingFeature("Z", nPeriod));
    QCOMPARE(nPeriod, qint64(100));
}

void tst_nodedependencymaps::hostileDescriptionsEnd()
{
    // A chain of 2 500 features that each reach all the later ones: it ends, with one line.
    QString strChain;
    for (int nNode = 0; nNode < 2500; ++nNode) {
        strChain += QStringLiteral("Integer N%1 pValue=N%2; ").arg(nNode).arg(nNode + 1);
    }
    QTest::ignoreMessage(QtWarningMsg,
                         "The nodes of the description refer to each other without end; some "
                         "dependants stay unknown.");
    const Description description(strChain);
    QVERIFY(description.maps.invalidatorMap().value("N0").contains("N2500"));
}

QTEST_GUILESS_MAIN(tst_nodedependencymaps)
#include "tst_nodedependencymaps.moc"
