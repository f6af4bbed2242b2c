#include "model/CTreeItemValue.h"
#include "tests/support/DataTable.h"
#include "tests/view/ViewFixture.h"
#include "view/VexaPropertySpinBox.h"

#include <QApplication>
#include <QSignalSpy>
#include <QTest>

#include <thread>

class TestVexaFeatureTreeView : public QObject
{
    Q_OBJECT
private slots:
    void ignoresOtherCamerasAndForbiddenTimes();
    void visibility_data();
    void visibility();
    void search_data();
    void search();
    void burstFromAWorkerEndsWithTheNewestValue();
    void clearingUnderQueuedNotifications();
    void jumpsToAFeature();
    void largeTreeOpensInSlices();
    void wideCategoryHidesInLinearTime();
    void openAndClose();
};

static const char *const TREE = "A\n"
                                "  Width Integer\n"
                                "  Height Integer\n"
                                "B\n"
                                "  Inner\n"
                                "    Gain Integer\n";

/// A category with this many features.
static QString wideTree(int nRows, const char *tag)
{
    QString strTree = "A\n";
    for (int i = 0; i < nRows; ++i) {
        strTree += QString("  F%1 %2\n").arg(QString::number(i), tag);
    }
    return strTree;
}

void TestVexaFeatureTreeView::ignoresOtherCamerasAndForbiddenTimes()
{
    ViewFixture fixture(TREE);
    fixture.show();
    fixture.setInteger("Width", 5, 0, 100);
    fixture.owner().m_calls.clear();
    VexaPropertyTreeItem *const pItem = fixture.item("Width");
    pItem->value()->setValue(6);
    for (const long lCamera : {-1L, 2L}) {
        pItem->notifyViewUpdate(lCamera, -1, false, false);
        pItem->setVisible(false, lCamera, true);
        pItem->setVisible(true, lCamera, true);
    }
    fixture.view().setForbidUpdate(true);
    pItem->endUpdateItem(ViewFixture::CAMERA);
    fixture.item("Height")->setVisible(false, ViewFixture::CAMERA, true);
    QVERIFY(fixture.shownRows().contains("Height"));
    fixture.view().setForbidUpdate(false);
    QVERIFY(!fixture.shownRows().contains("Height")); // rows are decided afterwards
    fixture.owner().m_calls.removeAll("visible Height");
    QCOMPARE(fixture.owner().m_calls, QStringList());
    QCOMPARE(qobject_cast<QSpinBox *>(fixture.editor("Width"))->value(), 5);
    pItem->endUpdateItem(
        ViewFixture::CAMERA); // the fingerprint was not taken over, so it is told again
    QCOMPARE(qobject_cast<QSpinBox *>(fixture.editor("Width"))->value(), 6);
}

void TestVexaFeatureTreeView::visibility_data()
{
    const DataTable<QStringList, QStringList, QStringList, QString, QString> row(
        "show", "hide", "invisible", "basic", "rows");
    const char *const all = "A\n  Width\n  Height\nB\n  Inner\n    Gain";
    const char *const firstOnly = "A\n  Width\n  Height";
    row("forced row of an invisible item", {"Width"}, {}, {"Width", "Height", "Gain"}, "",
        "A\n  Width");
    row("forced away", {}, {"Gain"}, {}, "", firstOnly);
    row("both lists: shown wins", {"Gain"}, {"Gain"}, {}, "", all);
    row("forced row in a category forced away", {"Gain"}, {"B"}, {}, "", all);
    row("basic view wins over all", {"Width"}, {}, {}, "A", "B\n  Inner\n    Gain");
}

void TestVexaFeatureTreeView::visibility()
{
    QFETCH(QStringList, show);
    QFETCH(QStringList, hide);
    QFETCH(QStringList, invisible);
    QFETCH(QString, basic);
    ViewFixture fixture(TREE);
    fixture.show();
    const auto items = [&](const QStringList &names) {
        QList<VexaPropertyTreeItem *> list;
        for (const QString &name : names) {
            list.append(fixture.item(name));
        }
        return list;
    };
    for (VexaPropertyTreeItem *pItem : items(invisible)) {
        pItem->setVisible(false, ViewFixture::CAMERA, true);
    }
    fixture.view().setForceShowItems(ViewFixture::CAMERA, items(show));
    fixture.view().setForceHideItems(ViewFixture::CAMERA, items(hide));
    if (!basic.isEmpty()) {
        fixture.owner().hideBelow(fixture.item(basic));
    }
    fixture.view().refreshAllRows();
    QTEST(fixture.shownRows(), "rows");
    // A single notification decides as the whole pass does.
    for (const char *name : {"Width", "Height", "Gain"}) {
        fixture.view().onSetItemVisible(ViewFixture::CAMERA, fixture.item(name),
                                        fixture.item(name)->visible());
    }
    QTEST(fixture.shownRows(), "rows");
}

void TestVexaFeatureTreeView::search_data()
{
    const DataTable<QString, bool, QString> row("text", "found", "rows");
    row("case and blanks", "  gAI ", true, "B\n  Inner\n    Gain");
    row("hidden features stay hidden", "Height", false, "");
    row("category name is no hit", "Inner", false, "");
    row("empty text shows the level's rows", "", true, "A\n  Width\nB\n  Inner\n    Gain");
}

void TestVexaFeatureTreeView::search()
{
    QFETCH(QString, text);
    QFETCH(QString, rows);
    ViewFixture fixture(TREE);
    fixture.show();
    fixture.view().collapseAll();
    fixture.item("Height")->setVisible(false, ViewFixture::CAMERA, true);
    QTEST(fixture.view().setSearchText(text), "found");
    QCOMPARE(fixture.shownRows(), rows);
    // A row that becomes visible during a search is shown only when it matches.
    fixture.item("Height")->setVisible(true, ViewFixture::CAMERA, true);
    fixture.view().expandAll();
    QCOMPARE(fixture.shownRows().contains("Height"), fixture.item("Height")->searchVisible(text));
    QVERIFY(fixture.view().setSearchText(QString()));
    QCOMPARE(fixture.shownRows(), QString("A\n  Width\n  Height\nB\n  Inner\n    Gain"));
}

void TestVexaFeatureTreeView::burstFromAWorkerEndsWithTheNewestValue()
{
    ViewFixture fixture(TREE);
    fixture.show();
    std::thread worker([&] {
        for (int i = 0; i <= 1000; ++i) {
            const char *const name = i % 2 ? "Width" : "Gain";
            fixture.setInteger(name, i, 0, 2000);
            fixture.item(name)->setVisible(i % 3 != 0, ViewFixture::CAMERA, true);
        }
    });
    worker.join();
    QTRY_COMPARE(qobject_cast<QSpinBox *>(fixture.editor("Gain"))->value(), 1000);
    QTRY_COMPARE(qobject_cast<QSpinBox *>(fixture.editor("Width"))->value(), 999);
    QCOMPARE(fixture.shownRows().contains("Width"), fixture.item("Width")->visible());
    QCOMPARE(fixture.shownRows().contains("Gain"), fixture.item("Gain")->visible());
}

void TestVexaFeatureTreeView::clearingUnderQueuedNotifications()
{
    ViewFixture fixture(TREE);
    fixture.show();
    std::thread worker([&] {
        fixture.setInteger("Width", 1, 0, 10);
        fixture.item("Width")->setReadOnly(ViewFixture::CAMERA, false);
        fixture.item("Width")->setVisible(false, ViewFixture::CAMERA, true);
        fixture.item("A")->setExpanded(false, ViewFixture::CAMERA);
    });
    worker.join();
    VexaPropertyTreeItem *const pGone = fixture.item("Width");
    fixture.clear();
    fixture.owner().m_calls.clear();
    QCoreApplication::processEvents();
    fixture.view().onUpdateEditorData(ViewFixture::CAMERA, pGone, -1, true, false);
    fixture.view().onSetItemVisible(ViewFixture::CAMERA, pGone, false);
    QCOMPARE(fixture.owner().m_calls, QStringList());
    QTRY_VERIFY(fixture.view().viewport()->findChildren<VexaPropertySpinBox *>().isEmpty());
}

void TestVexaFeatureTreeView::jumpsToAFeature()
{
    ViewFixture fixture(wideTree(200, "Integer"));
    fixture.show();
    fixture.view().collapseAll();
    QSignalSpy activated(&fixture.view(), &VexaFeatureTreeView::sigFeatureActivated);
    QVERIFY(fixture.view().scrollToFeature("F150"));
    const QModelIndex index = fixture.view().indexOfItem(fixture.item("F150"), 0);
    QCOMPARE(fixture.view().currentIndex(), index);
    const int nMiddle = fixture.view().viewport()->height() / 2;
    QVERIFY(qAbs(fixture.view().visualRect(index).center().y() - nMiddle) < 40);
    QVERIFY(fixture.editor("F150")->isVisible());
    QCOMPARE(activated.count(), 1);
    QVERIFY(!fixture.view().scrollToFeature("F999"));
    QCOMPARE(fixture.view().currentIndex(), index);
}

void TestVexaFeatureTreeView::largeTreeOpensInSlices()
{
    ViewFixture fixture(wideTree(3000, "Command"));
    fixture.owner().show();
    QVERIFY(QTest::qWaitForWindowExposed(&fixture.owner()));
    fixture.view().expandAll();
    fixture.view().openEditors(fixture.root());
    QVERIFY(fixture.editor("F0") && fixture.editor("F0")->isVisible());
    QVERIFY(!fixture.editor("F2999"));
    fixture.view().scrollToFeature("F2500");
    QVERIFY(fixture.editor("F2500") && fixture.editor("F2500")->isVisible());
    QTRY_VERIFY(fixture.editor("F2999"));
}

void TestVexaFeatureTreeView::wideCategoryHidesInLinearTime()
{
    ViewFixture fixture(wideTree(20000, ""));
    VexaPropertyTreeItem *const pCategory = fixture.item("A");
    for (int i = 0; i < pCategory->childCount(); ++i) {
        pCategory->child(i)->setVisible(false, ViewFixture::CAMERA, true);
    }
    // Asking all siblings each time would take minutes.
    QCOMPARE(fixture.shownRows(), QString());
}

void TestVexaFeatureTreeView::openAndClose()
{
    ViewFixture fixture(TREE);
    for (int i = 0; i < 20; ++i) {
        fixture.show();
        fixture.setInteger("Width", i, 0, 100);
        fixture.editor("Width")->setFocus();
        fixture.clear();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(fixture.view().viewport()->findChildren<QSpinBox *>().size(), 0);
        auto *const pCategory = new VexaPropertyTreeItem(fixture.root());
        auto *const pItem = new VexaPropertyTreeItem(pCategory);
        pItem->value()->m_strNodeName = "Width";
        pItem->setTagName("Integer");
        pItem->registerView(&fixture.view());
        fixture.view().setCameraAndRoot(ViewFixture::CAMERA, fixture.root());
    }
    QCOMPARE(fixture.owner().m_writes, QStringList());
}

QTEST_MAIN(TestVexaFeatureTreeView)
#include "tst_VexaFeatureTreeView.moc"
