#include "ShellServicesModule/QLocalCfg.h"
#include "host/shellservices/ShellHost.h"
#include "model/CTreeCommandItemValue.h"
#include "model/CTreeEnumationItemValue.h"
#include "model/CTreeIntergerItemValue.h"
#include "tests/model/NotifyRecorder.h"

#include <QtTest>

#include <thread>

namespace {

constexpr long CAMERA = 7;

CTreeIntergerItemValue &integerOf(const VexaPropertyTreeItem *pItem)
{
    return *dynamic_cast<CTreeIntergerItemValue *>(pItem->value());
}

/// Two rows over a recorder.
struct Rows
{
    explicit Rows(const QString &strTag = QString())
        : pItem(makeItem(&root, "A", strTag))
        , pPartner(makeItem(&root, "B", strTag))
    {
        pItem->registerView(&view);
        pPartner->registerView(&view);
    }
    NotifyRecorder view;
    VexaPropertyTreeItem root;
    VexaPropertyTreeItem *const pItem;
    VexaPropertyTreeItem *const pPartner;
};

QString childNames(const VexaPropertyTreeItem &parent)
{
    QString strNames;
    for (int nRow = 0; nRow < parent.childCount(); ++nRow) {
        strNames += parent.child(nRow)->value()->m_strNodeName;
    }
    return strNames;
}

} // namespace

class tst_propertytreeitem : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void children();
    void parentsOfTwoKinds();
    void mappingIsSymmetric();
    void readOnlyReachesThePartner();
    void endUpdate();
    void endUpdateUntilTheEditorFollows();
    void partnerGetsTheValue();
    void search();
    void lastVisibleChild();
    void readingsOutOfOrder();
    void snapshotIsWhole();
    void viewLeavesWhileTold();
    void viewsComeAndGoUnderWorkers();
};

void tst_propertytreeitem::initTestCase()
{
    ShellHost::useTransientSettings();
}

void tst_propertytreeitem::children()
{
    VexaPropertyTreeItem root;
    VexaPropertyTreeItem *pA = makeItem(&root, "A");
    VexaPropertyTreeItem *pB = makeItem(&root, "B");
    root.addChild(pA);
    root.insertChild(0, pB);
    QCOMPARE(childNames(root), QString("AB"));
    QCOMPARE(root.findChild(QString("B")), pB);
    QVERIFY(!root.findChild("b") && !root.child(2) && !root.child(-1));
    QCOMPARE(pB->indexInParent(PARENT_FEATURE_TREE), 1);
    root.removeChild(pA);
    root.removeChild(pA);
    QCOMPARE(pB->indexInParent(PARENT_FEATURE_TREE), 0);
    QCOMPARE(childNames(root), QString("B"));
    root.insertChild(99, pA); // behind the end
    QCOMPARE(childNames(root), QString("BA"));
}

void tst_propertytreeitem::parentsOfTwoKinds()
{
    constexpr ParentType PAGE = 2;
    VexaPropertyTreeItem root;
    VexaPropertyTreeItem page;
    VexaPropertyTreeItem otherPage;
    makeItem(&page, "first");
    VexaPropertyTreeItem *pItem = makeItem(&root, "A");
    pItem->setParent(&page, PAGE);
    QCOMPARE(pItem->parent(PARENT_FEATURE_TREE), &root);
    QCOMPARE(pItem->indexInParent(PAGE), 1);
    pItem->setParent(&otherPage, PAGE);
    QCOMPARE(page.childCount(), 1);
    QCOMPARE(pItem->indexInParent(PAGE), 0);
    pItem->setParent(nullptr, PAGE);
    QCOMPARE(otherPage.childCount(), 0);
    QVERIFY(!pItem->parent(PAGE));
    QCOMPARE(root.childCount(), 1);
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

void tst_propertytreeitem::readOnlyReachesThePartner()
{
    Rows rows;
    rows.pItem->setReadOnly(CAMERA, false);
    QCOMPARE(rows.view.take(), QString("readonly:A:0"));
    rows.pItem->setMappingItem(rows.pPartner);
    rows.pItem->setReadOnly(CAMERA, false); // no change here, but the partner differs
    QCOMPARE(rows.view.take(), QString("readonly:B:0"));
    rows.pItem->setReadOnly(CAMERA, false);
    rows.pItem->setExpanded(true, CAMERA); // a row without children is not
    QCOMPARE(rows.view.take(), QString());
}

void tst_propertytreeitem::endUpdate()
{
    static const struct
    {
        const char *representation;
        qint64 value;
        bool cached;
        const char *told;
    } rows[] = {{"", 1, true, ""},
                {"", 2, true, "data:A:-1"},
                {"HexNumber", 1, true, "data:A:-1recreate"}, // needs another editor
                {"", 1, false, "data:A:-1"}}; // shown as read, and is not any more
    for (const auto &row : rows) {
        Rows items("Integer");
        integerOf(items.pItem).m_nValue = 1;
        items.pItem->setValueCached(true);
        items.pItem->editorTookOver();
        integerOf(items.pItem).m_nValue = row.value;
        integerOf(items.pItem).m_strRepresentation = row.representation;
        items.pItem->setValueCached(row.cached);
        items.pItem->endUpdateItem(CAMERA);
        QCOMPARE(items.view.take(), QString(row.told));
    }
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

void tst_propertytreeitem::partnerGetsTheValue()
{
    Rows rows("Integer");
    NotifyRecorder &view = rows.view;
    VexaPropertyTreeItem *const pItem = rows.pItem;
    VexaPropertyTreeItem *const pPartner = rows.pPartner;
    pItem->setMappingItem(pPartner);
    pPartner->registerView(nullptr); // skipped
    integerOf(pItem).m_nValue = 4;
    pItem->setValueCached(true);
    pItem->notifyViewUpdate(CAMERA, 1, true, false);
    QCOMPARE(view.take(), QString("data:A:1recreate data:B:1recreate"));
    QCOMPARE(integerOf(pPartner).m_nValue, qint64(4));
    QVERIFY(pPartner->isValueCached());
    pItem->value()->m_strToolTip = "tip";
    pItem->endUpdateItem(CAMERA); // names come along
    QCOMPARE(view.take(), QString("data:A:-1 data:A:-1"));
    QCOMPARE(pPartner->value()->m_strToolTip, QString("tip"));
}

void tst_propertytreeitem::search()
{
    static const struct
    {
        const char *fault;
        const char *language;
        const char *filter;
        bool found;
    } rows[] = {{"blanks find everything", "ENG", "   ", true},
                {"part of the node name, other case", "ENG", " OSURET ", true},
                {"display name", "ENG", "Shutter", true},
                {"translation is not searched in English", "ENG", "Belichtung", false},
                {"translation", "CH", "belichtung", true},
                {"display name is not searched in the other language", "CH", "Shutter", false},
                {"node name in any language", "CH", "exposure", true}};
    VexaPropertyTreeItem item;
    item.value()->m_strNodeName = "ExposureTime";
    item.value()->m_strDisplayName = "Shutter";
    item.value()->m_strTranslateName = "Belichtungszeit";
    for (const auto &row : rows) {
        QLocalCfg::Instance()->m_strPropertyLan = row.language;
        QVERIFY2(item.searchVisible(row.filter) == row.found, row.fault);
    }
    QLocalCfg::Instance()->m_strPropertyLan = "ENG";
}

void tst_propertytreeitem::lastVisibleChild()
{
    VexaPropertyTreeItem root;
    VexaPropertyTreeItem *pA = makeItem(&root, "Alpha");
    VexaPropertyTreeItem *pB = makeItem(&root, "Beta");
    VexaPropertyTreeItem *pC = makeItem(&root, "Gamma");
    QVERIFY(pC->isLastVisibleChild(QString()));
    pC->setVisible(false, CAMERA, true);
    QVERIFY(pB->isLastVisibleChild(QString()) && !pC->isLastVisibleChild(QString()));
    QVERIFY(pA->isLastVisibleChild("lph") && !pB->isLastVisibleChild("lph"));
    QVERIFY(!root.isLastVisibleChild(QString()));
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

void tst_propertytreeitem::snapshotIsWhole()
{
    VexaPropertyTreeItem root;
    VexaPropertyTreeItem *pCommand = makeItem(&root, "Run", "Command");
    pCommand->value()->setValue("Execute");
    pCommand->value()->m_strCurrentStatus = "shown";
    pCommand->value()->m_stepPageNames.insert(0, "Page");
    const std::unique_ptr<CTreeItemValue> command = pCommand->valueSnapshot();
    QCOMPARE(command->displayValue(), QString("Execute"));
    QCOMPARE(command->m_strCurrentStatus + command->m_strNodeName, QString("shownRun"));
    QCOMPARE(command->StepPagesTranslateName(), QString("Page"));

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
    Rows rows("Integer");
    rows.pPartner->setMappingItem(rows.pItem);
    std::atomic<bool> stop{false};
    std::atomic<int> rounds{0};
    std::vector<std::thread> workers;
    for (VexaPropertyTreeItem *pWorked : {rows.pItem, rows.pPartner}) {
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
        rows.pItem->registerView(view.get());
        rows.pPartner->registerView(view.get());
        rows.pItem->editorTookOver();
        rows.pItem->removeView(view.get());
        rows.pPartner->removeView(view.get());
    }
    stop = true;
    for (std::thread &worker : workers) {
        worker.join();
    }
    QCOMPARE(rows.pItem->readOnly(), rows.pPartner->readOnly());
}

QTEST_GUILESS_MAIN(tst_propertytreeitem)
#include "tst_propertytreeitem.moc"
