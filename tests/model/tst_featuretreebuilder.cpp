#include "model/FeatureTreeBuilder.h"
#include "tests/model/NotifyRecorder.h"
#include "tests/support/DataTable.h"

#include <QDomDocument>

namespace {

/// "A:a,b;B:c" as Category elements with pFeature links; "@" before a name makes another element than a category.
QByteArray categories(const QString &strText)
{
    QByteArray xml;
    const QStringList groups = strText.split(';', Qt::SkipEmptyParts);
    for (const QString &strGroup : groups) {
        const QByteArray element = strGroup.startsWith('@') ? "Node" : "Category";
        const QString strName = strGroup.section(':', 0, 0).remove('@');
        xml += '<' + element + " Name=\"" + strName.toUtf8() + "\">";
        const QStringList features = strGroup.section(':', 1).split(',', Qt::SkipEmptyParts);
        for (const QString &strFeature : features) {
            xml += "<pFeature>" + strFeature.toUtf8() + "</pFeature>";
        }
        xml += "</" + element + '>';
    }
    return xml;
}

struct Build
{
    explicit Build(const QByteArray &elements)
    {
        document.setContent("<RegisterDescription>" + elements + "</RegisterDescription>");
        rebuild();
    }
    void rebuild()
    {
        builder.GenerateDomElementMap(document.documentElement());
        builder.createItems(document, &view);
    }
    QString text() const { return rowsText(builder.rootItem()); }

    NotifyRecorder view;
    QDomDocument document;
    FeatureTreeBuilder builder;
};

} // namespace

class tst_featuretreebuilder : public QObject
{
    Q_OBJECT
private slots:
    void tree_data();
    void tree();
    void elementMap();
    void categoriesShareAFeature();
    void sharedCategoriesEnd();
    void deepDescriptionsEnd();
};

void tst_featuretreebuilder::tree_data()
{
    const DataTable<QString, QByteArray, QString, QString, QString> row("categories", "nodes",
                                                                        "tree", "names", "parents");
    row("no Root gives no rows", "A:a", "", "", "", "");
    row("categories nest by links, whatever their order", "B:b;Root:A,x;A:a,B",
        "<Integer Name=\"a\"/><Float Name=\"b\"/>", "A(a:Integer B(b:Float)) x", "A a B b x",
        "A=Root B=A a=A b=B x=Root");
    row("category without a link stays out", "Root:a;Lonely:b", "", "a", "a", "a=Root");
    row("grades have no rows but keep their names",
        "Root:SymbolContrastC,SingleTrigger,ModulationE", "", "ModulationE",
        "SymbolContrastC SingleTrigger ModulationE",
        "ModulationE=Root SingleTrigger=Root SymbolContrastC=Root");
    row("selectors of the optics stand at the top", "Root:A;A:FocusOptSelect,a,SamOptSelect", "",
        "A(a) FocusOptSelect SamOptSelect", "A FocusOptSelect a SamOptSelect",
        "A=Root FocusOptSelect=Root SamOptSelect=Root a=A");
    row("categories in a circle", "Root:A;A:B;B:A,b", "", "A(B(A() b))", "A B A b", "A=B B=A b=B");
    row("circle through Root", "Root:A;A:Root,a", "", "A(Root() a)", "A Root a",
        "A=Root Root=A a=A");
}

void tst_featuretreebuilder::tree()
{
    QFETCH(QString, categories);
    QFETCH(QByteArray, nodes);
    const Build build(::categories(categories) + nodes);
    QTEST(build.text(), "tree");
    QTEST(build.builder.allFeatureNames().join(' '), "names");
    QStringList parents;
    for (auto row = build.builder.featureParentMap().cbegin();
         row != build.builder.featureParentMap().cend(); ++row) {
        parents.append(row.key() + '=' + row.value());
    }
    QTEST(parents.join(' '), "parents");
}

void tst_featuretreebuilder::elementMap()
{
    const Build build("<Group><Integer Name=\"a\"><Value>1</Value></Integer></Group>"
                      "<Enumeration Name=\"e\"><Wrap><EnumEntry Name=\"a\"><Integer "
                      "Name=\"inner\"/></EnumEntry></Wrap>"
                      "</Enumeration><Float Name=\"b\"/><Boolean Name=\"b\"/>");
    QCOMPARE(QStringList(build.builder.elementMap().keys()).join(' '), QString("a b e"));
    QDomElement found;
    QVERIFY(build.builder.GetDomElementNode("a", found));
    QCOMPARE(found.tagName(), QString("Integer")); // not the entry
    QVERIFY(build.builder.GetDomElementNode(QString("b"), found));
    QCOMPARE(found.tagName(), QString("Boolean")); // the later
    QVERIFY(!build.builder.GetDomElementNode(QString("inner"), found));
}

void tst_featuretreebuilder::categoriesShareAFeature()
{
    Build build(categories("Root:A,B,C;A:a;B:a;C:a") + "<Integer Name=\"a\"/>");
    VexaPropertyTreeItem *pLast = build.builder.allTreeItems().value("a");
    QCOMPARE(pLast->parent(PARENT_FEATURE_TREE)->value()->m_strNodeName, QString("C"));
    QStringList others;
    for (VexaPropertyTreeItem *pRow : pLast->otherRows()) {
        others.append(pRow->parent(PARENT_FEATURE_TREE)->value()->m_strNodeName);
        QCOMPARE(pRow->tagName(), QString("Integer"));
        pRow->setReadOnly(1, false);
        QVERIFY(!pLast->readOnly());
        pRow->setReadOnly(1, true);
        QVERIFY(pLast->readOnly());
    }
    others.sort();
    QCOMPARE(others, (QStringList{QString("A"), QString("B")}));
}

void tst_featuretreebuilder::sharedCategoriesEnd()
{
    // Each level links the next one twice: 2 to the power of 60 rows without a limit.
    QString strText = "Root:L0;";
    for (int nLevel = 0; nLevel < 60; ++nLevel) {
        strText += QString("L%1:L%2,L%2;").arg(nLevel).arg(nLevel + 1);
    }
    QTest::ignoreMessage(QtWarningMsg,
                         "The description links more than 200000 features; the rest has no rows.");
    const Build build(categories(strText));
    QCOMPARE(build.builder.allFeatureNames().size(), 200000);
}

void tst_featuretreebuilder::deepDescriptionsEnd()
{
    QString strText = "Root:L0;";
    for (int nLevel = 0; nLevel < 5000; ++nLevel) {
        strText += QString("L%1:L%2;").arg(nLevel).arg(nLevel + 1);
    }
    const Build chain(categories(strText));
    int nDepth = 0;
    for (const VexaPropertyTreeItem *pItem = chain.builder.rootItem()->child(0); pItem;
         pItem = pItem->child(0)) {
        ++nDepth;
    }
    QCOMPARE(nDepth, 128);

    const Build groups(QByteArray("<Group>").repeated(5000) + "<Integer Name=\"deep\"/>"
                       + QByteArray("</Group>").repeated(5000));
    QVERIFY(groups.builder.elementMap().contains("deep"));
}

QTEST_GUILESS_MAIN(tst_featuretreebuilder)
#include "tst_featuretreebuilder.moc"
