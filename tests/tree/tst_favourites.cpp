#include "model/CTreeIntergerItemValue.h"
#include "model/ItemLocks.h"
#include "tests/support/ModuleFixture.h"
#include "view/VexaFeatureTreeView.h"

#include <QAction>
#include <QMenu>
#include <QtTest>

namespace {

constexpr quint64 VALUE_ADDRESS = 0x1000;
constexpr quint64 LOCK_ADDRESS = 0x1004;

/// "Shared" stands under three categories. The first category is empty.
QByteArray description()
{
    QByteArray xml = R"(<Category Name="Marks"/>
<Category Name="One"><pFeature>Shared</pFeature><pFeature>Alone</pFeature></Category>
<Category Name="Two"><pFeature>Shared</pFeature></Category>
<Category Name="Three"><pFeature>Shared</pFeature></Category>
<Integer Name="Shared"><Description>Is shared.</Description><pIsLocked>LockReg</pIsLocked><pValue>ValueReg</pValue></Integer>
<Integer Name="Alone"><pIsLocked>LockReg</pIsLocked><pValue>ValueReg</pValue></Integer>
<IntReg Name="ValueReg"><Address>0x1000</Address>REST</IntReg><IntReg Name="LockReg"><Address>0x1004</Address>REST</IntReg>)";
    xml.replace("REST", R"(<Length>4</Length><AccessMode>RW</AccessMode>
<pPort>Device</pPort><Sign>Signed</Sign><Endianess>LittleEndian</Endianess>)");
    return descriptionOf({"Marks", "One", "Two", "Three"}, xml);
}

qint64 shownValue(const VexaPropertyTreeItem *item)
{
    const ItemLock lock(item);
    const auto *value = dynamic_cast<const CTreeIntergerItemValue *>(item->value());
    return value ? value->m_nValue : -1;
}

} // namespace

class tst_favourites : public QObject
{
    Q_OBJECT
private slots:
    void followsItsFeature_data();
    void followsItsFeature();
    void refusals();
    void removedDuringAPass();
    void contextMenu();

private:
    struct Opened : ModuleFixture
    {
        explicit Opened(bool wait = true)
            : camera(openDescription(description()))
            , tree(camera.tree)
            , view(tree->findChild<VexaFeatureTreeView *>())
        {
            if (wait) {
                waitForFirstUpdate(camera);
            }
        }
        ~Opened() { close(camera); }
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
        const Camera camera;
        VexaFeatureTree *const tree;
        VexaFeatureTreeView *const view;
    };
};

void tst_favourites::followsItsFeature_data()
{
    QTest::addColumn<int>("category");
    QTest::addColumn<int>("child");
    QTest::addColumn<bool>("byOriginal");
    QTest::newRow("single row") << 1 << 1 << false;
    QTest::newRow("first of the twins, which no update names") << 1 << 0 << false;
    QTest::newRow("middle twin, removed by its original") << 2 << 0 << true;
}

void tst_favourites::followsItsFeature()
{
    QFETCH(int, category);
    QFETCH(int, child);
    QFETCH(bool, byOriginal);
    Opened f;
    VexaPropertyTreeItem *original = f.row(category, child);
    const int others = original->otherRows().size();
    for (int turn = 1; turn <= 2; ++turn) {
        f.tree->addFavoriteItem(original);
        QCOMPARE(f.marks(), 1);
        VexaPropertyTreeItem *favourite = f.row(0, 0);
        QCOMPARE(f.tree->favoriteItemsMap().values(), {favourite});
        QCOMPARE(favourite->otherRows().size(), others + 1);
        const QModelIndex index = f.view->indexOfItem(favourite, 1);
        QVERIFY(f.view->indexWidget(index) && f.view->isExpanded(index.parent()));
        QVERIFY(!f.isHidden(favourite));

        f.poke(VALUE_ADDRESS, 10 * turn);
        f.poke(LOCK_ADDRESS, 1);
        QVERIFY(f.readsUntil([&] { return shownValue(favourite) == 10 * turn; }));
        QVERIFY(f.readsUntil([&] { return favourite->readOnly(); }));
        f.poke(LOCK_ADDRESS, 0);
        QVERIFY(f.readsUntil([&] { return !favourite->readOnly(); }));
        original->parent(PARENT_FEATURE_TREE)->setVisible(false, f.camera.id, true);
        QVERIFY(!favourite->visible() && f.isHidden(favourite));
        original->parent(PARENT_FEATURE_TREE)->setVisible(true, f.camera.id, true);
        QVERIFY(favourite->visible() && !f.isHidden(favourite));

        f.tree->removeFavoriteItem(byOriginal ? original : favourite);
        QVERIFY(f.marks() == 0 && f.tree->favoriteItemsMap().isEmpty());
        QVERIFY(!original->mappingItem() && original->otherRows().size() == others);
        f.poke(VALUE_ADDRESS, 10 * turn + 1);
        QVERIFY(f.readsUntil([&] { return shownValue(original) == 10 * turn + 1; }));
    }
}

void tst_favourites::refusals()
{
    Opened f;
    f.mainWidget().featureTree(-1, false)->addFavoriteItem(nullptr);
    f.tree->addFavoriteItem(nullptr);
    f.tree->removeFavoriteItem(nullptr);
    f.tree->removeFavoriteItem(f.row(1, 0));
    f.tree->removeAllFavoriteItems();
    f.tree->addFavoriteItem(f.row(1, 0));
    f.tree->addFavoriteItem(f.row(3, 0)); // the same feature
    f.tree->addFavoriteItem(f.row(0, 0)); // the favourite itself
    QCOMPARE(f.marks(), 1);
    f.tree->OnResartCameraOpen(4);
    QVERIFY(f.marks() == 0 && f.tree->favoriteItemsMap().isEmpty());
    f.tree->addFavoriteItem(f.row(1, 0)); // ends with its camera
}

void tst_favourites::removedDuringAPass()
{
    Opened f(false);
    // The first pass is cut short, and what it told of the favourite waits in the queue while the row goes.
    for (int turn = 1; turn <= 20; ++turn) {
        f.tree->addFavoriteItem(f.row(3, 0));
        f.poke(VALUE_ADDRESS, turn);
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
    Opened f;
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
