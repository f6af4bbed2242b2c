#include "host/shellservices/ShellHost.h"
#include "tests/model/NotifyRecorder.h"

#include <QtTest>

namespace {

constexpr long CAMERA = 7;

/// Root over category A with leaf "a" and sub-category B (leaves "b" and "c"), and category P with leaf "p".
struct Tree
{
    Tree()
    {
        for (const auto &row : {std::pair<const char *, const char *>{"A", ""},
                                {"a", "A"},
                                {"B", "A"},
                                {"b", "B"},
                                {"c", "B"},
                                {"P", ""},
                                {"p", "P"}}) {
            VexaPropertyTreeItem *pItem =
                makeItem(*row.second ? at(row.second) : &root, QString::fromLatin1(row.first));
            pItem->registerView(&view);
            items.insert(QString::fromLatin1(row.first), pItem);
        }
    }
    VexaPropertyTreeItem *at(const QString &strName) const { return items.value(strName); }
    VexaPropertyTreeItem *at(const char *name) const { return at(QString::fromLatin1(name)); }
    /// Names of all visible items in name order, categories first.
    QString shown() const
    {
        QString strShown;
        for (auto row = items.cbegin(); row != items.cend(); ++row) {
            strShown += row.value()->visible() ? row.key() : QString();
        }
        return strShown;
    }
    /// Runs words of an item and "+" or "-" (recursive), "=" (shown, not recursive) or "!" (hidden, not recursive).
    void run(const QString &strScript)
    {
        const QStringList words = strScript.split(' ', Qt::SkipEmptyParts);
        for (const QString &strWord : words) {
            const QChar what = strWord.back();
            const bool bShow = what == '+' || what == '=';
            const bool bRecursive = what == '+' || what == '-';
            at(strWord.chopped(1))->setVisible(bShow, CAMERA, bRecursive);
        }
    }

    NotifyRecorder view;
    VexaPropertyTreeItem root;
    QMap<QString, VexaPropertyTreeItem *> items;
};

} // namespace

class tst_itemvisibility : public QObject
{
    Q_OBJECT
private slots:
    void scripts_data();
    void scripts();
    void drawingMode();
};

void tst_itemvisibility::scripts_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("script");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("told");
    const auto row = [](const char *fault, const char *before, const char *script,
                        const char *shown, const char *told) {
        QTest::newRow(fault) << before << script << shown << told;
    };
    row("same state tells nobody", "a-", "a- a!", "ABPbcp", "");
    row("category without visible leaves hides itself", "", "b- c-", "APap",
        "visible:b:0 visible:c:0");
    row("one leaf brings its category back", "b- c-", "b=", "ABPabp", "visible:b:1");
    row("branch hides leaves at every depth", "", "A-", "Pp",
        "visible:a:0 visible:b:0 visible:c:0");
    row("leaf under a closed branch stays hidden", "A- ", "a=", "Pp", "");
    row("wish spoken under a closed branch counts when it opens", "a- A-", "a+ A+", "ABPabcp",
        "visible:a:1 visible:b:1 visible:c:1");
    row("leaf two levels down follows the upper branch", "b- A-", "A+", "ABPacp",
        "visible:a:1 visible:c:1");
    row("sub-branch keeps its own switch", "B- A-", "A+", "APap", "visible:a:1");
    row("not recursive always reopens", "A-", "A!", "ABPabcp",
        "visible:a:1 visible:b:1 visible:c:1");
}

void tst_itemvisibility::scripts()
{
    QFETCH(QString, before);
    QFETCH(QString, script);
    Tree tree;
    tree.run(before);
    tree.view.take();
    tree.run(script);
    QTEST(tree.shown(), "shown");
    QTEST(tree.view.take(), "told");
}

void tst_itemvisibility::drawingMode()
{
    VexaPropertyTreeItem root;
    VexaPropertyTreeItem *pCategory = makeItem(&root, "Size");
    for (const char *name : {"Width", "AutoFunctionAOIOffsetY", "WidthMax"}) {
        VexaPropertyTreeItem *pItem = makeItem(pCategory, name);
        pItem->setVisible(false, CAMERA, true);
        ShellHost::instance()->setDrawingMode(1);
        pItem->setVisible(true, CAMERA, true);
        pCategory->setVisible(true, CAMERA, true);
        QCOMPARE(pItem->visible(), QString(name) == "WidthMax");
        ShellHost::instance()->setDrawingMode(0); // the wish counts again
        pCategory->setVisible(true, CAMERA, true);
        QVERIFY(pItem->visible());
    }
}

QTEST_GUILESS_MAIN(tst_itemvisibility)
#include "tst_itemvisibility.moc"
