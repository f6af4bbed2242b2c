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
    void newItem();
    void tagChoosesTheValue();
    void children();
    void rowsAfterMoves();
    void parentsOfTwoKinds();
    void mappingIsSymmetric();
    void copyTakesState();
    void readOnlyReachesThePartner();
    void expanded();
    void endUpdate_data();
    void endUpdate();
    void endUpdateUntilTheEditorFollows();
    void partnerGetsTheValue();
    void specialOnBothRows();
    void search_data();
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

void tst_propertytreeitem::newItem()
{
    VexaPropertyTreeItem item;
    QVERIFY(item.readOnly() && item.visible() && item.isFeatureTreeItem() && item.value());
    QVERIFY(!item.isValueCached());
    QCOMPARE(int(item.itemType()), 3);
    QCOMPARE(item.visibilityString(), QStringLiteral("Beginner"));
    QCOMPARE(item.indexInParent(PARENT_FEATURE_TREE), -1);
}

void tst_propertytreeitem::tagChoosesTheValue()
{
    VexaPropertyTreeItem root;
    VexaPropertyTreeItem *pItem = makeItem(&root, QStringLiteral("Name"));
    VexaPropertyTreeItem *pPartner = makeItem(&root, QStringLiteral("Name"));
    pPartner->setMappingItem(pItem);
    pItem->value()->m_strTranslateName = QStringLiteral("Uebersetzt");
    pItem->setTagName(QStringLiteral("Integer"));
    const CTreeItemValue *pValue = pItem->value();
    QVERIFY(dynamic_cast<const CTreeIntergerItemValue *>(pValue));
    QVERIFY(dynamic_cast<const CTreeIntergerItemValue *>(pPartner->value()));
    QCOMPARE(pValue->m_strNodeName + pValue->m_strTranslateName, QStringLiteral("NameUebersetzt"));
    pItem->setTagName(QStringLiteral("Integer"));
    pItem->setTagName(QString());
    QCOMPARE(pItem->value(), pValue);
    QCOMPARE(pItem->tagName(), QStringLiteral("Integer"));
}

void tst_propertytreeitem::children()
{
    VexaPropertyTreeItem root;
    VexaPropertyTreeItem *pA = makeItem(&root, QStringLiteral("A"));
    VexaPropertyTreeItem *pB = makeItem(&root, QStringLiteral("B"));
    root.addChild(pA);
    root.insertChild(0, pB);
    QCOMPARE(childNames(root), QStringLiteral("AB"));
    QCOMPARE(root.findChild(QStringLiteral("B")), pB);
    QVERIFY(!root.findChild(QStringLiteral("b")) && !root.child(2) && !root.child(-1));
    root.removeChild(pA);
    root.removeChild(pA);
    QCOMPARE(childNames(root), QStringLiteral("B"));
    root.insertChild(99, pA); // behind the end
    QCOMPARE(childNames(root), QStringLiteral("BA"));
}

void tst_propertytreeitem::rowsAfterMoves()
{
    VexaPropertyTreeItem root;
    VexaPropertyTreeItem *pA = makeItem(&root, QStringLiteral("A"));
    VexaPropertyTreeItem *pB = makeItem(&root, QStringLiteral("B"));
    QCOMPARE(pB->indexInParent(PARENT_FEATURE_TREE), 1);
    root.removeChild(pA);
    QCOMPARE(pB->indexInParent(PARENT_FEATURE_TREE), 0);
    root.insertChild(0, pA);
    QCOMPARE(pB->indexInParent(PARENT_FEATURE_TREE), 1);
    QCOMPARE(pA->indexInParent(PARENT_FEATURE_TREE), 0);
}

void tst_propertytreeitem::parentsOfTwoKinds()
{
    constexpr ParentType PAGE = 2;
    VexaPropertyTreeItem root;
    VexaPropertyTreeItem page;
    VexaPropertyTreeItem otherPage;
    makeItem(&page, QStringLiteral("first"));
    VexaPropertyTreeItem *pItem = makeItem(&root, QStringLiteral("A"));
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

void tst_propertytreeitem::copyTakesState()
{
    VexaPropertyTreeItem root;
    VexaPropertyTreeItem *pSource =
        makeItem(&root, QStringLiteral("Name"), QStringLiteral("Integer"));
    integerOf(pSource).m_nValue = 9;
    pSource->setItemType(ITEM_FEATURE);
    pSource->setReadOnly(CAMERA, false);
    pSource->setVisible(false, CAMERA, true);
    pSource->setVisibilityString(QStringLiteral("Guru"));
    VexaPropertyTreeItem copy;
    copy.copy(pSource);
    QCOMPARE(integerOf(&copy).m_nValue, qint64(9));
    QCOMPARE(copy.value()->m_strNodeName, QStringLiteral("Name"));
    QCOMPARE(copy.visibilityString(), QStringLiteral("Guru"));
    QVERIFY(!copy.readOnly() && !copy.visible() && copy.itemType() == ITEM_FEATURE);
    QVERIFY(!copy.parent(PARENT_FEATURE_TREE) && !copy.mappingItem());
}

void tst_propertytreeitem::readOnlyReachesThePartner()
{
    NotifyRecorder view;
    VexaPropertyTreeItem root;
    VexaPropertyTreeItem *pItem = makeItem(&root, QStringLiteral("A"));
    VexaPropertyTreeItem *pPartner = makeItem(&root, QStringLiteral("B"));
    pItem->registerView(&view);
    pPartner->registerView(&view);
    pItem->setReadOnly(CAMERA, false);
    QCOMPARE(view.take(), QStringLiteral("readonly:A:0"));
    pItem->setMappingItem(pPartner);
    pItem->setReadOnly(CAMERA, false); // no change here, but the partner differs
    QCOMPARE(view.take(), QStringLiteral("readonly:B:0"));
    pItem->setReadOnly(CAMERA, false);
    QCOMPARE(view.take(), QString());
}

void tst_propertytreeitem::expanded()
{
    NotifyRecorder view;
    VexaPropertyTreeItem root;
    VexaPropertyTreeItem *pItem = makeItem(&root, QStringLiteral("A"));
    pItem->registerView(&view);
    pItem->setExpanded(true, CAMERA);
    QCOMPARE(view.take(), QString());
    makeItem(pItem, QStringLiteral("a"));
    pItem->setExpanded(true, CAMERA);
    QCOMPARE(view.take(), QStringLiteral("expanded:A:1"));
}

void tst_propertytreeitem::endUpdate_data()
{
    QTest::addColumn<QString>("representation");
    QTest::addColumn<qint64>("value");
    QTest::addColumn<bool>("cached");
    QTest::addColumn<QString>("told");
    QTest::newRow("quiet node tells nobody") << "" << qint64(1) << true << "";
    QTest::newRow("value") << "" << qint64(2) << true << "data:A:-1";
    QTest::newRow("another representation needs another editor")
        << "HexNumber" << qint64(1) << true << "data:A:-1recreate";
    QTest::newRow("shown as read but is not any more") << "" << qint64(1) << false << "data:A:-1";
}

void tst_propertytreeitem::endUpdate()
{
    QFETCH(QString, representation);
    QFETCH(qint64, value);
    QFETCH(bool, cached);
    NotifyRecorder view;
    VexaPropertyTreeItem root;
    VexaPropertyTreeItem *pItem = makeItem(&root, QStringLiteral("A"), QStringLiteral("Integer"));
    pItem->registerView(&view);
    integerOf(pItem).m_nValue = 1;
    pItem->setValueCached(true);
    pItem->editorTookOver();

    integerOf(pItem).m_nValue = value;
    integerOf(pItem).m_strRepresentation = representation;
    pItem->setValueCached(cached);
    pItem->endUpdateItem(CAMERA);
    QTEST(view.take(), "told");
}

void tst_propertytreeitem::endUpdateUntilTheEditorFollows()
{
    NotifyRecorder view;
    VexaPropertyTreeItem root;
    VexaPropertyTreeItem *pItem = makeItem(&root, QStringLiteral("A"), QStringLiteral("Integer"));
    pItem->registerView(&view);
    pItem->endUpdateItem(CAMERA);
    pItem->endUpdateItem(CAMERA);
    QCOMPARE(view.take(), QStringLiteral("data:A:-1 data:A:-1"));

    // A store between the snapshot and its taking over must be told again.
    const std::unique_ptr<CTreeItemValue> snapshot = pItem->valueSnapshot();
    integerOf(pItem).m_nValue = 5;
    pItem->editorTookOver(*snapshot, pItem->readOnly(), pItem->isValueCached());
    pItem->endUpdateItem(CAMERA);
    QCOMPARE(view.take(), QStringLiteral("data:A:-1"));
    pItem->editorTookOver(*pItem->valueSnapshot(), pItem->readOnly(), pItem->isValueCached());
    pItem->endUpdateItem(CAMERA);
    QCOMPARE(view.take(), QString());
    // The first read gives what the blank editor's item held already.
    pItem->setValueCached(true);
    pItem->endUpdateItem(CAMERA);
    QCOMPARE(view.take(), QStringLiteral("data:A:-1"));

    VexaPropertyTreeItem *pCategory = makeItem(&root, QStringLiteral("C"));
    pCategory->registerView(&view);
    pCategory->editorTookOver();
    pCategory->setValueCached(true); // no value, nothing to show
    pCategory->endUpdateItem(CAMERA);
    QCOMPARE(view.take(), QString());
}

void tst_propertytreeitem::partnerGetsTheValue()
{
    NotifyRecorder view;
    VexaPropertyTreeItem root;
    VexaPropertyTreeItem *pItem = makeItem(&root, QStringLiteral("A"), QStringLiteral("Integer"));
    VexaPropertyTreeItem *pPartner =
        makeItem(&root, QStringLiteral("B"), QStringLiteral("Integer"));
    pItem->setMappingItem(pPartner);
    pItem->registerView(&view);
    pPartner->registerView(&view);
    pPartner->registerView(nullptr); // skipped
    integerOf(pItem).m_nValue = 4;
    pItem->setValueCached(true);
    pItem->notifyViewUpdate(CAMERA, 1, true, false);
    QCOMPARE(view.take(), QStringLiteral("data:A:1recreate data:B:1recreate"));
    QCOMPARE(integerOf(pPartner).m_nValue, qint64(4));
    QVERIFY(pPartner->isValueCached());
    pItem->value()->m_strToolTip = QStringLiteral("tip");
    pItem->endUpdateItem(CAMERA); // names come along
    QCOMPARE(view.take(), QStringLiteral("data:A:-1 data:A:-1"));
    QCOMPARE(pPartner->value()->m_strToolTip, QStringLiteral("tip"));
}

void tst_propertytreeitem::specialOnBothRows()
{
    NotifyRecorder view;
    VexaPropertyTreeItem root;
    VexaPropertyTreeItem *pItem = makeItem(&root, QStringLiteral("A"));
    VexaPropertyTreeItem *pPartner = makeItem(&root, QStringLiteral("B"));
    pItem->setMappingItem(pPartner);
    pItem->registerView(&view);
    pPartner->registerView(&view);
    pItem->notifiViewSpecialUpdate(NOTIFY_VIEW_SPECIAL_NONE, CAMERA);
    QCOMPARE(view.take(), QStringLiteral("special:A:0 special:B:0 special:B:0"));
}

void tst_propertytreeitem::search_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("filter");
    QTest::addColumn<bool>("found");
    QTest::newRow("blanks find everything") << "ENG"
                                            << "   " << true;
    QTest::newRow("part of the node name, other case") << "ENG"
                                                       << "OSURET" << true;
    QTest::newRow("blanks around do not count") << "ENG"
                                                << " exposuretime " << true;
    QTest::newRow("display name") << "ENG"
                                  << "Shutter" << true;
    QTest::newRow("translation is not searched in English") << "ENG"
                                                            << "Belichtung" << false;
    QTest::newRow("translation") << "CH"
                                 << "belichtung" << true;
    QTest::newRow("display name is not searched in the other language") << "CH"
                                                                        << "Shutter" << false;
    QTest::newRow("node name in any language") << "CH"
                                               << "exposure" << true;
}

void tst_propertytreeitem::search()
{
    QFETCH(QString, language);
    QFETCH(QString, filter);
    VexaPropertyTreeItem item;
    item.value()->m_strNodeName = QStringLiteral("ExposureTime");
    item.value()->m_strDisplayName = QStringLiteral("Shutter");
    item.value()->m_strTranslateName = QStringLiteral("Belichtungszeit");
    QLocalCfg::Instance()->m_strPropertyLan = language;
    const bool found = item.searchVisible(filter);
    QLocalCfg::Instance()->m_strPropertyLan = QStringLiteral("ENG");
    QTEST(found, "found");
}

void tst_propertytreeitem::lastVisibleChild()
{
    VexaPropertyTreeItem root;
    VexaPropertyTreeItem *pA = makeItem(&root, QStringLiteral("Alpha"));
    VexaPropertyTreeItem *pB = makeItem(&root, QStringLiteral("Beta"));
    VexaPropertyTreeItem *pC = makeItem(&root, QStringLiteral("Gamma"));
    QVERIFY(pC->isLastVisibleChild(QString()));
    pC->setVisible(false, CAMERA, true);
    QVERIFY(pB->isLastVisibleChild(QString()) && !pC->isLastVisibleChild(QString()));
    QVERIFY(pA->isLastVisibleChild(QStringLiteral("lph"))
            && !pB->isLastVisibleChild(QStringLiteral("lph")));
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
    VexaPropertyTreeItem *pCommand =
        makeItem(&root, QStringLiteral("Run"), QStringLiteral("Command"));
    pCommand->value()->setValue(QStringLiteral("Execute"));
    pCommand->value()->m_strCurrentStatus = QStringLiteral("shown");
    pCommand->value()->m_stepPageNames.insert(0, QStringLiteral("Page"));
    const std::unique_ptr<CTreeItemValue> command = pCommand->valueSnapshot();
    QCOMPARE(command->displayValue(), QStringLiteral("Execute"));
    QCOMPARE(command->m_strCurrentStatus + command->m_strNodeName, QStringLiteral("shownRun"));
    QCOMPARE(command->StepPagesTranslateName(), QStringLiteral("Page"));

    VexaPropertyTreeItem *pEnumeration =
        makeItem(&root, QStringLiteral("E"), QStringLiteral("Enumeration"));
    auto *pEntries = dynamic_cast<CTreeEnumationItemValue *>(pEnumeration->value());
    pEntries->m_nValue = qint64(1) << 40; // must not pass through 32 bits
    pEntries->updateDisplayName(QStringLiteral("Far"), QStringLiteral("Far"), pEntries->m_nValue);
    const std::unique_ptr<CTreeItemValue> enumeration = pEnumeration->valueSnapshot();
    pEntries->clearItems();
    QCOMPARE(enumeration->displayValue(), QStringLiteral("Far"));
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
    VexaPropertyTreeItem *pItem = makeItem(&root, QStringLiteral("A"), QStringLiteral("Integer"));
    VexaPropertyTreeItem *pPartner =
        makeItem(&root, QStringLiteral("B"), QStringLiteral("Integer"));
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
