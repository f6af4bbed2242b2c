#include "model/CTreeItemValue.h"
#include "model/VexaPropertyTreeItem.h"
#include "tests/support/ModuleFixture.h"
#include "view/VexaFeatureTreeView.h"

#include <QAction>
#include <QMenu>
#include <QtTest>

namespace {

constexpr quint64 VALUE = 0x1000;
constexpr quint64 LOCK = 0x1004;

/// "Shared" stands under three categories. The first category is empty.
QByteArray description()
{
    return descriptionOf({"Marks", "One", "Two", "Three"},
                         R"(<Category Name="Marks"/>
<Category Name="One"><pFeature>Shared</pFeature><pFeature>Alone</pFeature></Category>
<Category Name="Two"><pFeature>Shared</pFeature></Category>
<Category Name="Three"><pFeature>Shared</pFeature></Category>
<Integer Name="Shared"><pIsLocked>LockReg</pIsLocked><pValue>ValueReg</pValue></Integer>
<Integer Name="Alone"><pIsLocked>LockReg</pIsLocked><pValue>ValueReg</pValue></Integer>)"
                             + intReg("ValueReg", VALUE) + intReg("LockReg", LOCK));
}

qint64 shownValue(const VexaPropertyTreeItem *item)
{
    return item->valueSnapshot()->value().toLongLong();
}

struct Opened : ModuleFixture
{
    VexaPropertyTreeItem *row(int category, int child) const
    {
        return tree->rootItem()->child(category)->child(child);
    }
    int marks() const { return tree->rootItem()->child(0)->childCount(); }
    bool isHidden(VexaPropertyTreeItem *item) const
    {
        const QModelIndex index = view->indexOfItem(item, 0);
        return view->isRowHidden(index.row(), index.parent());
    }
    void poke(quint64 address, int value) const
    {
        camera.device.control->poke(address, QByteArray(1, char(value)) + QByteArray(3, 0));
    }
    template<typename Condition>
    bool readsUntil(const Condition &condition) const
    {
        return QTest::qWaitFor([&] {
            tree->RefreshFeatures();
            return condition();
        });
    }
    const Camera camera = openDescription(description());
    VexaFeatureTree *const tree = camera.tree;
    VexaFeatureTreeView *const view = tree->findChild<VexaFeatureTreeView *>();
};

} // namespace

class tst_favourites : public QObject
{
    Q_OBJECT
private slots:
    void followsItsFeature();
    void removedDuringAPass();
    void contextMenu();
};

void tst_favourites::followsItsFeature()
{
    static const struct
    {
        const char *kind;
        int category;
        int child;
        bool byOriginal;
    } rows[] = {{"single row", 1, 1, false},
                {"single row again", 1, 1, false},
                {"first of the twins, which no update names", 1, 0, false},
                {"middle twin, removed by its original", 2, 0, true}};
    const Opened f;
    QVERIFY(ModuleFixture::waitForFirstUpdate(f.camera));
    int value = 0;
    for (const auto &row : rows) {
        VexaPropertyTreeItem *original = f.row(row.category, row.child);
        VexaPropertyTreeItem *category = original->parent(PARENT_FEATURE_TREE);
        const int others = original->otherRows().size();
        f.tree->addFavoriteItem(original);
        f.tree->addFavoriteItem(f.row(0, 0)); // the favourite itself
        QVERIFY2(f.marks() == 1, row.kind);
        VexaPropertyTreeItem *favourite = f.row(0, 0);
        QCOMPARE(f.tree->favoriteItemsMap().values(), {favourite});
        QVERIFY2(favourite->otherRows().size() == others + 1, row.kind);
        const QModelIndex index = f.view->indexOfItem(favourite, 1);
        QVERIFY(f.view->indexWidget(index) && f.view->isExpanded(index.parent()));
        QVERIFY(!f.isHidden(favourite));

        f.poke(VALUE, ++value);
        f.poke(LOCK, 1);
        QVERIFY2(f.readsUntil([&] { return shownValue(favourite) == value; }), row.kind);
        QVERIFY2(f.readsUntil([&] { return favourite->readOnly(); }), row.kind);
        f.poke(LOCK, 0);
        QVERIFY2(f.readsUntil([&] { return !favourite->readOnly(); }), row.kind);
        for (const bool visible : {false, true}) {
            category->setVisible(visible, f.camera.id, true);
            QVERIFY2(favourite->visible() == visible && f.isHidden(favourite) != visible, row.kind);
        }

        f.tree->removeFavoriteItem(row.byOriginal ? original : favourite);
        QVERIFY2(f.marks() == 0 && f.tree->favoriteItemsMap().isEmpty(), row.kind);
        QVERIFY2(!original->mappingItem() && original->otherRows().size() == others, row.kind);
        f.poke(VALUE, ++value);
        QVERIFY2(f.readsUntil([&] { return shownValue(original) == value; }), row.kind);
    }
    f.tree->addFavoriteItem(nullptr);
    f.tree->removeFavoriteItem(nullptr);
    f.tree->removeFavoriteItem(f.row(1, 0)); // has none
    for (int turn = 0; turn < 2; ++turn) {
        f.tree->addFavoriteItem(f.row(1, 0));
        f.tree->addFavoriteItem(f.row(3, 0)); // the same feature
        QCOMPARE(f.marks(), 1);
        f.tree->OnResartCameraOpen(4);
        QVERIFY(f.marks() == 0 && f.tree->favoriteItemsMap().isEmpty());
    }
    f.tree->addFavoriteItem(f.row(1, 0)); // ends with its camera
}

void tst_favourites::removedDuringAPass()
{
    const Opened f;
    // The first pass is cut short, and what it told of the favourite waits in the queue while the row goes.
    for (int turn = 1; turn <= 20; ++turn) {
        f.tree->addFavoriteItem(f.row(3, 0));
        f.poke(VALUE, turn);
        f.tree->RefreshFeatures();
        const QDeadlineTimer deadline(turn);
        while (shownValue(f.row(0, 0)) != turn && !deadline.hasExpired()) {
            QThread::yieldCurrentThread();
        }
        f.tree->removeAllFavoriteItems();
        QCoreApplication::processEvents();
    }
    QVERIFY(ModuleFixture::waitForFirstUpdate(f.camera));
    QVERIFY(f.readsUntil([&] { return shownValue(f.row(1, 1)) == 20; }));
}

void tst_favourites::contextMenu()
{
    static const struct
    {
        int type;
        const char *shown;
        bool keepsItem;
    } rows[] = {{ITEM_FAVORITES_CATEGORY, "all", false},
                {ITEM_CATEGORY, "add disabled", false},
                {9, "", false},
                {ITEM_FAVORITE, "remove", true},
                {ITEM_FEATURE, "add", true},
                {ITEM_FEATURE, "add", true}}; // the action changed nothing
    const Opened f;
    QVERIFY(ModuleFixture::waitForFirstUpdate(f.camera));
    f.view->doItemsLayout();
    const QPoint place = f.view->visualRect(f.view->indexOfItem(f.row(1, 1), 0)).center();
    QMenu *menu = f.tree->findChild<QMenu *>();
    for (const auto &row : rows) {
        f.row(1, 1)->setItemType(static_cast<ITEM_TYEP>(row.type));
        emit f.view->customContextMenuRequested(place);
        QString text;
        for (int i = 0; i < 3; ++i) {
            QAction *action = menu->actions().at(i);
            if (action->isVisible()) {
                text += QStringList{"add", "remove", "all"}.at(i);
                text += action->isEnabled() ? "" : " disabled";
                action->trigger();
            }
        }
        QCOMPARE(text, QString(row.shown));
        QCOMPARE(f.tree->m_pContextItem, row.keepsItem ? f.row(1, 1) : nullptr);
        menu->close();
    }
    QVERIFY(f.tree->favoriteItemsMap().isEmpty());
}

QTEST_MAIN(tst_favourites)
#include "tst_favourites.moc"
