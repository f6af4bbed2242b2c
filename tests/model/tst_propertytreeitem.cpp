#include "ShellServicesModule/QLocalCfg.h"
#include "host/shellservices/ShellHost.h"
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

} // namespace

class tst_propertytreeitem : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void mappingIsSymmetric();
    void endUpdateUntilTheEditorFollows();
    void search();
    void readingsOutOfOrder();
    void snapshotKeepsAllBits();
    void viewLeavesWhileTold();
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
                {"translation is not searched in English", "ENG", "Belichtung", false},
                {"translation", "CH", "belichtung", true},
                {"display name is not searched in the other language", "CH", "Shutter", false}};
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

QTEST_GUILESS_MAIN(tst_propertytreeitem)
#include "tst_propertytreeitem.moc"
