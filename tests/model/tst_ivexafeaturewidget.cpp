#include "host/shellservices/ShellHost.h"
#include "model/IVexaFeatureWidget.h"
#include "tests/model/NotifyRecorder.h"
#include "view/VexaFeatureTreeView.h"

#include <QtTest>

namespace {

constexpr int PAGE = 2;
constexpr long CAMERA = 5;

/// A page with one category that shows feature "a" and a row of its own. It writes down which hooks ran.
class Page : public IVexaFeatureWidget
{
public:
    explicit Page(VexaPropertyTreeItem *pFeature)
        : IVexaFeatureWidget(PAGE)
        , m_pFeature(pFeature)
    {
    }
    bool setFeatureValue(const QString &, const QString &, const QVariant &) override
    {
        return false;
    }
    void afterInitialized(long) override { m_strHooks += QLatin1String("known "); }
    void cameraWithoutTree(long) override { m_strHooks += QLatin1String("new "); }
    bool updateTimerElapsed() override { return ++m_nTicks == 2; }
    void preparePage(int nPage) override
    {
        m_stepPageNames.insert(QStringLiteral("a"), m_strTitle + QString::number(nPage));
    }
    VexaPropertyTreeItem *createPageRoot() override
    {
        if (!m_pFeature) {
            return nullptr;
        }
        auto *pRoot = new VexaPropertyTreeItem;
        auto *pCategory = new VexaPropertyTreeItem(pRoot, PAGE);
        auto *pOwn = new VexaPropertyTreeItem(pCategory, PAGE);
        for (VexaPropertyTreeItem *pItem : {pRoot, pCategory, pOwn}) {
            pItem->setIsFeatureTreeItem(false);
        }
        m_pFeature->setParent(pCategory, PAGE);
        m_pFeature->registerView(treeView());
        m_showInAllItems[int(m_lCameraID)].append(pCategory);
        return pRoot;
    }
    long cameraID() const { return m_lCameraID; }

    VexaPropertyTreeItem *m_pFeature;
    QString m_strTitle = QStringLiteral("Page ");
    QString m_strHooks;
    int m_nTicks = 0;
};

} // namespace

class tst_ivexafeaturewidget : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void showsAndForgetsACamera();
    void cameraWithoutAPage();
    void featuresOutliveThePage();
    void basicView();
    void timerStopsWhenToldTo();
};

void tst_ivexafeaturewidget::initTestCase()
{
    ShellHost::useTransientSettings();
}

void tst_ivexafeaturewidget::showsAndForgetsACamera()
{
    VexaPropertyTreeItem root;
    VexaPropertyTreeItem *pFeature =
        makeItem(&root, QStringLiteral("a"), QStringLiteral("Command"));
    Page page(pFeature);
    page.setCameraID(CAMERA);
    QCOMPARE(page.m_strHooks, QStringLiteral("new "));
    QVERIFY(page.isInitialized(CAMERA));
    QCOMPARE(page.treeView()->model()->rowCount(), 1);
    QCOMPARE(pFeature->value()->m_stepPageNames.value(0), QStringLiteral("Page 0"));
    page.m_strTitle = QStringLiteral("Seite ");
    QEvent change(QEvent::LanguageChange);
    QCoreApplication::sendEvent(&page, &change);
    QCOMPARE(pFeature->value()->StepPagesTranslateName(), QStringLiteral("Seite 0"));
    page.setCameraID(CAMERA);
    page.setCameraID(-1);
    page.setCameraID(CAMERA);
    QCOMPARE(page.m_strHooks, QStringLiteral("new new known "));
    page.removeCameraID(CAMERA);
    QCOMPARE(page.cameraID(), -1L);
    QVERIFY(!page.isInitialized(CAMERA));
    QCOMPARE(page.treeView()->model()->rowCount(), 0);
}

void tst_ivexafeaturewidget::cameraWithoutAPage()
{
    Page page(nullptr);
    page.setCameraID(CAMERA);
    QCOMPARE(page.cameraID(), -1L);
    QVERIFY(!page.isInitialized(CAMERA));
    page.removeCameraID(CAMERA);
    page.setExpandAll(true);
    page.setExpandAll(false);
}

void tst_ivexafeaturewidget::featuresOutliveThePage()
{
    VexaPropertyTreeItem root;
    VexaPropertyTreeItem *pFeature =
        makeItem(&root, QStringLiteral("a"), QStringLiteral("Boolean"));
    {
        Page page(pFeature);
        page.setCameraID(CAMERA);
        QVERIFY(pFeature->parent(PAGE));
    }
    QVERIFY(!pFeature->parent(PAGE));
    QCOMPARE(root.child(0), pFeature);
    pFeature->setReadOnly(CAMERA, false); // the page's view hears nothing any more
}

void tst_ivexafeaturewidget::basicView()
{
    VexaPropertyTreeItem root;
    VexaPropertyTreeItem *pFeature =
        makeItem(&root, QStringLiteral("a"), QStringLiteral("Boolean"));
    Page page(pFeature);
    page.setCameraID(CAMERA);
    QVERIFY(!page.isHiddenByBasic(CAMERA, pFeature));
    page.toggleShowBasic(CAMERA);
    QVERIFY(page.isHiddenByBasic(CAMERA, pFeature));
    QVERIFY(!page.isHiddenByBasic(CAMERA + 1, pFeature));
    page.toggleShowBasic(CAMERA);
    QVERIFY(!page.isHiddenByBasic(CAMERA, pFeature));
}

void tst_ivexafeaturewidget::timerStopsWhenToldTo()
{
    VexaPropertyTreeItem root;
    Page page(makeItem(&root, QStringLiteral("a"), QStringLiteral("Boolean")));
    page.setCameraID(CAMERA);
    QTRY_COMPARE(page.m_nTicks, 2);
    QTest::qWait(450); // more than two further periods
    QCOMPARE(page.m_nTicks, 2);
}

QTEST_MAIN(tst_ivexafeaturewidget)
#include "tst_ivexafeaturewidget.moc"
