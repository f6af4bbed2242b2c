#include "ShellServicesModule/QLocalCfg.h"
#include "host/shellservices/ShellHost.h"
#include "model/CTreeEnumationItemValue.h"
#include "model/CTreeIntergerItemValue.h"
#include "tests/model/NotifyRecorder.h"
#include "tests/support/DataTable.h"

#include <thread>

namespace {

constexpr long CAMERA = 7;

CTreeIntergerItemValue &integerOf(const VexaPropertyTreeItem *pItem)
{
    return *dynamic_cast<CTreeIntergerItemValue *>(pItem->value());
}

/// Root over category A with leaf "a" and sub-category B (leaves "b" and "c"), and category P with leaf "p".
struct Tree
{
    Tree()
    {
        for (const QString strPath : {"A", "Aa", "AB", "Bb", "Bc", "P", "Pp"}) {
            VexaPropertyTreeItem *pItem =
                makeItem(items.value(strPath.chopped(1), &root), strPath.right(1));
            pItem->registerView(&view);
            items.insert(strPath.right(1), pItem);
        }
    }
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
            items.value(strWord.chopped(1))->setVisible(bShow, CAMERA, bRecursive);
        }
    }

    NotifyRecorder view;
    VexaPropertyTreeItem root;
    QMap<QString, VexaPropertyTreeItem *> items;
};

} // namespace

class tst_propertytreeitem : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void mappingIsSymmetric();
    void endUpdateUntilTheEditorFollows();
    void search_data();
    void search();
    void visibility_data();
    void visibility();
    void drawingMode();
    void readingsOutOfOrder();
    void snapshotKeepsAllBits();
    void viewLeavesWhileTold();
    void viewsOutliveItems();
    void viewsComeAndGoUnderWorkers();
};

void tst_propertytreeitem::initTestCase()
{
    ShellHost::useTransientSettings();
}

void tst_propertytreeitem::mappingIsSymmetric()
{
    VexaPropertyTreeItem a;
    VexaPropertyTreeItem b;
    VexaPropertyTreeItem c;
    a.setMappingItem(&b);
    QCOMPARE(b.mappingItem(), &a);
    c.setMappingItem(&b);
    QVERIFY(!a.mappingItem());
    QCOMPARE(b.mappingItem(), &c);
    {
        VexaPropertyTreeItem gone;
        gone.setMappingItem(&a);
    }
    QVERIFY(!a.mappingItem());
    c.setMappingItem(nullptr);
    QVERIFY(!b.mappingItem());
}

void tst_propertytreeitem::endUpdateUntilTheEditorFollows()
{
    NotifyRecorder view;
    VexaPropertyTreeItem root;
    VexaPropertyTreeItem *pItem = makeItem(&root, "A", "Integer");
    pItem->registerView(&view);
    pItem->endUpdateItem(CAMERA);
    pItem->endUpdateItem(CAMERA);
    QCOMPARE(view.take(), QString("data:A:-1 data:A:-1"));

    // A store between the snapshot and its taking over must be told again.
    const std::unique_ptr<CTreeItemValue> snapshot = pItem->valueSnapshot();
    integerOf(pItem).m_nValue = 5;
    pItem->editorTookOver(*snapshot, pItem->readOnly(), pItem->isValueCached());
    pItem->endUpdateItem(CAMERA);
    QCOMPARE(view.take(), QString("data:A:-1"));
    pItem->editorTookOver(*pItem->valueSnapshot(), pItem->readOnly(), pItem->isValueCached());
    pItem->endUpdateItem(CAMERA);
    QCOMPARE(view.take(), QString());
    // The first read gives what the blank editor's item held already.
    pItem->setValueCached(true);
    pItem->endUpdateItem(CAMERA);
    QCOMPARE(view.take(), QString("data:A:-1"));

    VexaPropertyTreeItem *pCategory = makeItem(&root, "C");
    pCategory->registerView(&view);
    pCategory->editorTookOver();
    pCategory->setValueCached(true); // no value, nothing to show
    pCategory->endUpdateItem(CAMERA);
    QCOMPARE(view.take(), QString());
}

void tst_propertytreeitem::search_data()
{
    const DataTable<QString, QString, bool> row("language", "filter", "found");
    row("blanks find everything", "ENG", "   ", true);
    row("part of the node name, other case", "ENG", " OSURET ", true);
    row("translation is not searched in English", "ENG", "Belichtung", false);
    row("translation", "CH", "belichtung", true);
    row("display name is not searched in the other language", "CH", "Shutter", false);
}

void tst_propertytreeitem::search()
{
    QFETCH(QString, language);
    QFETCH(QString, filter);
    VexaPropertyTreeItem item;
    item.value()->m_strNodeName = "ExposureTime";
    item.value()->m_strDisplayName = "Shutter";
    item.value()->m_strTranslateName = "Belichtungszeit";
    QLocalCfg::Instance()->m_strPropertyLan = language;
    QTEST(item.searchVisible(filter), "found");
}

void tst_propertytreeitem::visibility_data()
{
    const DataTable<QString, QString, QString, QString> row("before", "script", "shown", "told");
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

void tst_propertytreeitem::visibility()
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

void tst_propertytreeitem::drawingMode()
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

void tst_propertytreeitem::readingsOutOfOrder()
{
    VexaPropertyTreeItem item;
    const quint64 nSlow = item.beginReading();
    const quint64 nFast = item.beginReading();
    QVERIFY(item.publishReading(nFast, VexaPropertyTreeItem::READING_VALUE));
    QVERIFY(!item.publishReading(nSlow, VexaPropertyTreeItem::READING_VALUE));
    QVERIFY(
        item.publishReading(nSlow, VexaPropertyTreeItem::READING_ACCESS)); // each part by itself
}

void tst_propertytreeitem::snapshotKeepsAllBits()
{
    VexaPropertyTreeItem root;
    VexaPropertyTreeItem *pEnumeration = makeItem(&root, "E", "Enumeration");
    auto *pEntries = dynamic_cast<CTreeEnumationItemValue *>(pEnumeration->value());
    pEntries->m_nValue = qint64(1) << 40; // must not pass through 32 bits
    pEntries->updateDisplayName("Far", "Far", pEntries->m_nValue);
    const std::unique_ptr<CTreeItemValue> enumeration = pEnumeration->valueSnapshot();
    pEntries->clearItems();
    QCOMPARE(enumeration->displayValue(), QString("Far"));
}

void tst_propertytreeitem::viewLeavesWhileTold()
{
    class Leaver : public IVexaFeatureNotify
    {
    public:
        void itemReadOnlyChanged(long, VexaPropertyTreeItem *pItem, bool) override
        {
            ++m_nTold;
            pItem->removeView(this);
            pItem->removeView(m_pOther);
        }
        IVexaFeatureNotify *m_pOther = nullptr;
        int m_nTold = 0;
    };
    Leaver first;
    Leaver second;
    first.m_pOther = &second;
    second.m_pOther = &first;
    VexaPropertyTreeItem item;
    item.registerView(&first);
    item.registerView(&second);
    item.setReadOnly(CAMERA, false);
    QCOMPARE(first.m_nTold + second.m_nTold, 1);
}

void tst_propertytreeitem::viewsComeAndGoUnderWorkers()
{
    VexaPropertyTreeItem root;
    VexaPropertyTreeItem *const pItem = makeItem(&root, "A", "Integer");
    VexaPropertyTreeItem *const pPartner = makeItem(&root, "B", "Integer");
    pPartner->setMappingItem(pItem);
    std::atomic<bool> stop{false};
    std::atomic<int> rounds{0};
    std::vector<std::thread> workers;
    for (VexaPropertyTreeItem *pWorked : {pItem, pPartner}) {
        workers.emplace_back([&stop, &rounds, pWorked] {
            for (int nRound = 0; !stop; ++nRound, ++rounds) {
                pWorked->updateLock();
                pWorked->value()->setValue(nRound);
                pWorked->updateUnlock();
                pWorked->setReadOnly(CAMERA, nRound & 1);
                pWorked->setVisible(nRound & 2, CAMERA, true);
                pWorked->endUpdateItem(CAMERA);
            }
        });
    }
    for (int nRound = 0; nRound < 300 || rounds < 300; ++nRound) {
        const auto view = std::make_unique<NotifyRecorder>();
        pItem->registerView(view.get());
        pPartner->registerView(view.get());
        pItem->editorTookOver();
        pItem->removeView(view.get());
        pPartner->removeView(view.get());
    }
    stop = true;
    for (std::thread &worker : workers) {
        worker.join();
    }
    QCOMPARE(pItem->readOnly(), pPartner->readOnly());
}

void tst_propertytreeitem::viewsOutliveItems()
{
    NotifyRecorder recorder;
    auto pItem = std::make_unique<VexaPropertyTreeItem>();
    VexaPropertyTreeItem other;
    pItem->registerView(&recorder);
    other.registerView(&recorder);
    VexaPropertyTreeItem *const pGone = pItem.get();
    pItem.reset();
    VexaPropertyTreeItem::removeViewFrom(pGone, &recorder);
    VexaPropertyTreeItem::removeViewFrom(&other, &recorder);
    other.setReadOnly(1, false);
    QCOMPARE(recorder.take(), QString());
}

QTEST_GUILESS_MAIN(tst_propertytreeitem)
#include "tst_propertytreeitem.moc"
