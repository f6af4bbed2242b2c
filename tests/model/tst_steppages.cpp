#include "model/CTreeEnumationItemValue.h"
#include "model/CTreeStringItemValue.h"
#include "model/CustomItemValues.h"
#include "model/CustomNodeNames.h"
#include "model/PortableNodeNames.h"
#include "tests/model/PageFixture.h"
#include "tests/model/PageTexts.h"
#include "tests/support/DataTable.h"
#include "tree/QGetFeaturesThread.h"

#include <QCheckBox>
#include <QPointer>
#include <QRegularExpression>

namespace {

constexpr int LONG_WAIT = 20000; // ms

template<typename Value>
Value *valueOf(VexaPropertyTreeItem *pItem)
{
    return pItem ? dynamic_cast<Value *>(pItem->value()) : nullptr;
}

} // namespace

/// Pages that go, and take others with them, as soon as they are told that their camera goes.
class LeavingPages : public TestPages
{
public:
    using TestPages::TestPages;
    void removeCameraID(long lCameraID) override
    {
        TestPages::removeCameraID(lCameraID);
        delete std::exchange(m_pOther, nullptr);
        delete this;
    }
    QWidget *m_pOther = nullptr;
};

class tst_steppages : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { m_pFixture = std::make_unique<ModuleFixture>(); }
    void cleanup();
    void cleanupTestCase() { m_pFixture.reset(); }
    void rules_data();
    void rules();
    void segments_data();
    void segments();
    void namesAndBasicView();
    void nestsSoFar();
    void portableNames_data();
    void portableNames();
    void rowsFollowTheirFeature();
    void changesTheKindOfALiveRow();
    void oneItemOnTwoViews();
    void asksTheDeviceForLightsOnly();
    void pagesOfOneIndexDoNotRob();
    void tornDown_data();
    void tornDown();
    void cameraGoesAndComesBack();

private:
    using Device = SimulatedDevices::Simulated;
    ModuleFixture &fixture() { return *m_pFixture; }
    ModuleFixture::Camera &open(ModuleFixture::Camera &camera, const Device &device);
    /// A device with these nodes; it is closed after the test.
    ModuleFixture::Camera &open(const QString &strNodes);
    /// One reader for all tests: its opening takes long under a sanitizer.
    ModuleFixture::Camera &reader();
    std::unique_ptr<ModuleFixture> m_pFixture;
    ModuleFixture::Camera m_camera;
    ModuleFixture::Camera m_reader;
};

void tst_steppages::cleanup()
{
    if (m_camera.tree) {
        fixture().close(m_camera);
        m_camera = {};
    }
}

ModuleFixture::Camera &tst_steppages::open(ModuleFixture::Camera &camera, const Device &device)
{
    if (!camera.tree) {
        camera = fixture().open(device);
        device.control->setQuiet(true);
        if (!ModuleFixture::waitForFirstUpdate(camera, LONG_WAIT)) {
            qFatal("no first update");
        }
    }
    return camera;
}

ModuleFixture::Camera &tst_steppages::open(const QString &strNodes)
{
    return open(m_camera,
                SimulatedDevices::fromDescription(deviceOf(strNodes), QStringLiteral("test"),
                                                  SimulatorControl::MemoryPattern::Zero));
}

ModuleFixture::Camera &tst_steppages::reader()
{
    return open(m_reader, SimulatedDevices::builtIn("code-reader"));
}

/// What is caught | the nodes of the device | a hint of its platform, and the page description | the rows that come of it.
const char *const RULES = R"(
a missing feature leaves no row | i:A=1 | P(A B) | P(A:Integer)
empty pages stay | i:A=1 | P(B) Q(A) | P() Q(A:Integer)
a category of the device is no row | i:A=1 | P(Nodes A) | P(A:Integer)
the last of two pages has it | i:A=1 i:B=2 | P(A B) Q(A) | P(B:Integer) Q(A:Integer)
other elements are skipped | i:A=1 | P(A Q(A)) | P(Q(A:Integer))
tuning of the newer kind | c:SmartTune i:A=1 i:B=1 i:C=1 | Custom_SmartTuneControl(A) Custom_SelfAdaptParamAdjust(B) Custom_AutoFocus(C) | Custom_SmartTuneControl(A:Integer)
tuning of the older kind | i:A=1 i:B=1 i:C=1 | Custom_SmartTuneControl(A) Custom_SelfAdaptParamAdjust(B) Custom_AutoFocus(C) | Custom_SelfAdaptParamAdjust(B:Integer) Custom_AutoFocus(C:Integer)
product 16 has a switch | i:ProductType=16 e:LightEnable=Off,On e:LightingSelector=Up | P(LightEnable) | P(LightEnable:Boolean)
product 17 has a switch | i:ProductType=17 b:LightingEnable=1 e:LightingSelector=Up | P(LightingEnable) | P(LightingEnable:Boolean)
a selector takes the switch's place | i:ProductType=3 b:LightEnable=1 e:LightingSelector=Up b:LaserEnable=0 | P(LightEnable) | P()
no selector and a laser | i:ProductType=3 e:LightEnable=Off,On b:LaserEnable=0 | P(LightEnable) | P(LightEnable:Boolean)
no product and an aiming light | b:LightEnable=1 b:AmingLightEnable=0 | P(LightEnable) | P(LightEnable:Boolean)
no other light | i:ProductType=3 b:LightEnable=1 | P(LightEnable) | P()
selector of product 16 as it is | i:ProductType=16 e:LightingSelector=Up,Down b:LightingEnable=1 | P(Custom_LightingSelector) | P(LightingSelector:Enumeration)
selector without an enable | e:LightingSelector=Up,Down | P(Custom_LightingSelector) | P()
lighting row | e:LightingSelector=Up,Mid,Down b:LightingEnable=1 | P(Custom_LightingSelector) | P(Custom_LightingSelector:CustomLightingSelector+)
focus of the older kind | i:FocusStep=5 | P(FocusStep) | P(FocusStep:Integer Custom_FocusSetting+)
focus of the newer kind | i:FocusStep=5 c:SmartTune | P(FocusStep) | P(FocusStep:Integer)
no focus at all | i:A=1 | P(FocusStep) | P()
self trigger | e:TriggerSource=Software,SelfTrigger | P(TriggerSource Custom_SelfTrigger) | P(TriggerSource:Enumeration Custom_AutoTrigTime+ Custom_EnableAutoTrig+)
its source stands deeper | e:TriggerSource=Software | P(Q(TriggerSource) Custom_SelfTrigger) | P(Q(TriggerSource:Enumeration) Custom_AutoTrigTime+ Custom_EnableAutoTrig+)
its source is no choice | i:TriggerSource=1 | P(TriggerSource Custom_SelfTrigger) | P(TriggerSource:Integer)
its source is on another page | e:TriggerSource=Software | P(TriggerSource) Q(Custom_SelfTrigger) | P(TriggerSource:Enumeration) Q()
regular expression | s:RegularExpressionRules= | P(RegularExpressionRules) | P(Custom_RegularExpressionFilterRules:Command+)
screen | e:ScreenHomepage=A,B,C | P(ScreenHomepage) | P(Custom_ScreenHomepage:CustomScreen+)
rows of devices that lack the node | i:A=1 | P(RegularExpressionRules ScreenHomepage TcpFormatString Node_CodeNum Node_ Node_Nothing Custom_LightingSelector LightEnable) | P()
a custom row of the host's own | i:A=1 | P(Custom_Anything) | P(Custom_Anything+)
format and trigger | s:TcpFormatString= e:TcpFormatSourceData=a,b s:TcpStartTriggerHex= | P(TcpFormatString TcpStartTriggerHex) | P(Custom_TcpFormatString:CustomFormatTextEdit+ Custom_TcpStartTriggerHex:CustomFormatTextEdit+)
a name of both generations settles for the older | i:LocBarNum=1 i:ReverseX=0 i:MirrorX=0 i:FlashMode=1 | P(Node_CodeNum Node_MirrorX) | P(LocBarNum:Integer ReverseX:Integer)
unless a hint tells the newer | i:LocBarNum=1 i:ReverseX=0 i:MirrorX=0 i:FlashMode=1 | Node_FlashMode: P(Node_CodeNum Node_MirrorX) | P(LocBarNum:Integer MirrorX:Integer)
generations mixed | i:Line0Glitch=1 i:CounterValue=2 i:LocBarNum=3 | P(Node_LineDebouncerTime Node_CountNumber Node_CodeNum) | P(Line0Glitch:Integer CounterValue:Integer LocBarNum:Integer)
)";

void tst_steppages::rules_data()
{
    const DataTable<QString, QString, QString> row("nodes", "page", "rows");
    for (const QString &strRow : QString(RULES).split('\n', Qt::SkipEmptyParts)) {
        const QStringList cells = strRow.split(" | ");
        row(qPrintable(cells.at(0)), cells.at(1), cells.at(2), cells.at(3));
    }
}

void tst_steppages::rules()
{
    QFETCH(QString, nodes);
    QFETCH(QString, page);
    const auto &camera = open(nodes);
    TestPages pages(pagesOf(page.section(": ", -1)));
    pages.m_strHint = page.section(": ", 0, -2);
    pages.setCameraID(camera.id);
    QTEST(pages.text(), "rows");
    // Rows of the page's own can be used as far as their feature can.
    for (const char *pName : {"Custom_Anything", "Custom_AutoTrigTime", "Custom_FocusSetting",
                              "Custom_ScreenHomepage", "Custom_RegularExpressionFilterRules"}) {
        VexaPropertyTreeItem *pRow = pages.row(pName);
        QVERIFY2(!pRow || (pRow->visible() && !pRow->readOnly()), pName);
    }
    if (auto *pFormat = valueOf<CTreeFormatStringTextItemValue>(
            pages.row(QStringLiteral("Custom_TcpFormatString")))) {
        QCOMPARE(pFormat->m_pFormatItem, camera.tree->propertyItemByName("TcpFormatString"));
        QCOMPARE(pFormat->m_pSourceDataItem,
                 camera.tree->propertyItemByName("TcpFormatSourceData"));
        QCOMPARE(pFormat->m_nCameraID, int(camera.id));
        QCOMPARE(pFormat->m_nMaxLength, 32);
        auto *pTrigger = valueOf<CTreeFormatStringTextItemValue>(
            pages.row(QStringLiteral("Custom_TcpStartTriggerHex")));
        QVERIFY(pTrigger->m_pFormatItem && !pTrigger->m_pSourceDataItem);
    }
}

void tst_steppages::segments_data()
{
    const DataTable<QString, int> row("entries", "type");
    row("all is none of them", "Up,Mid,Down,ALL", 2);
    row("no picture for five", "A,B,C,D,E", 0);
}

void tst_steppages::segments()
{
    QFETCH(QString, entries);
    const ModuleFixture::Camera &camera =
        open("i:LightingSelector_Icon_Inq_Reg=7 b:LightingEnable=1 e:LightingSelector=" + entries);
    TestPages pages(pagesOf("P(Custom_LightingSelector)"));
    pages.setCameraID(camera.id);
    const auto *pLight =
        valueOf<CTreeCustomLightingSelectorItemValue>(pages.row("Custom_LightingSelector"));
    QVERIFY(pLight);
    QTEST(pLight->m_nLightingType, "type");
    QCOMPARE(pLight->m_nReserved, 7);
    QCOMPARE(pLight->m_nCameraID, int(camera.id));
    QCOMPARE(pLight->m_pSelectorItem, camera.tree->propertyItemByName("LightingSelector"));
    QCOMPARE(pLight->m_pEnableItem, camera.tree->propertyItemByName("LightingEnable"));
    // It is hidden and locked with its selector.
    for (const bool bOn : {false, true}) {
        pLight->m_pSelectorItem->setVisible(bOn, camera.id, false);
        pLight->m_pSelectorItem->setReadOnly(camera.id, !bOn);
        QCOMPARE(pages.row("Custom_LightingSelector")->visible(), bOn);
        QCOMPARE(pages.row("Custom_LightingSelector")->readOnly(), !bOn);
    }
}

void tst_steppages::namesAndBasicView()
{
    const auto &camera = open("i:A=1 i:B=2");
    TestPages pages(QStringLiteral(
        "<Category Name=\"P\" DisplayName_En=\"Page\" DisplayName_Cn=\"页\"><Feature "
        "Name=\"A\" DisplayName_En=\"First\" DisplayName_Cn=\"甲\"/><Feature Name=\"Custom_X\" "
        "DisplayName_Cn=\"乙\"/></Category><Category Name=\"Q\" ShowInAll=\"1\"><Feature "
        "Name=\"B\"/><Other Name=\"A\"/></Category>"));
    pages.setCameraID(camera.id);
    QCOMPARE(pages.text(), QString("P(A:Integer Custom_X+) Q(B:Integer)"));
    QStringList names;
    for (const char *pName : {"P", "A", "Custom_X", "B"}) {
        const CTreeItemValue &value = *pages.row(pName)->value();
        names << value.StepPagesDisplayName() + '/' + value.StepPagesTranslateName();
    }
    QCOMPARE(names, QStringList({"Page/页", "First/甲", "Custom_X/乙", "B/B"}));
    VexaFeatureTreeView &view = *pages.treeView();
    const auto isShown = [&](const char *pName) {
        const QModelIndex index = view.indexOfItem(pages.row(pName), 0);
        return index.isValid() && !view.isRowHidden(index.row(), index.parent());
    };
    QVERIFY(isShown("P") && isShown("A") && isShown("Q") && isShown("B"));
    pages.toggleShowBasic(camera.id);
    QVERIFY(isShown("P") && isShown("A") && !isShown("Q") && !isShown("B"));
    pages.toggleShowBasic(camera.id);
    QVERIFY(isShown("Q") && isShown("B"));
    // A page is shown exactly when one of its rows is.
    camera.tree->propertyItemByName("B")->setVisible(false, camera.id, false);
    QVERIFY(!isShown("Q"));
}

void tst_steppages::nestsSoFar()
{
    const auto &camera = open("i:A=1 i:B=2");
    QString strPages = QStringLiteral("A");
    for (int nDepth = 0; nDepth < 32; ++nDepth) {
        strPages = QStringLiteral("P(%1)").arg(strPages);
    }
    TestPages pages(pagesOf(strPages + " Q(B)"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("nest too deep"));
    pages.setCameraID(camera.id);
    QVERIFY(!pages.row("A") && pages.row("B"));
    QCOMPARE(pages.text().count("P("), 32);
}

void tst_steppages::portableNames_data()
{
    const DataTable<QString> row("platform");
    row("code-reader", "QH");
    row("code-reader-older", "QX");
}

void tst_steppages::portableNames()
{
    QFETCH(QString, platform);
    QStringList portable = PortableNodeNames::portableNames();
    QCOMPARE(portable.size(), 74);
    QVERIFY(portable.removeOne("Node_"));
    QCOMPARE(QSet<QString>(portable.cbegin(), portable.cend()).size(), 73);
    QCOMPARE(PortableNodeNames::nodeName(platform, "Node_"), QString());
    QCOMPARE(PortableNodeNames::nodeName("QY", "Node_FlashMode"), QString());
    QStringList expected;
    for (const QString &strName : qAsConst(portable)) {
        expected << PortableNodeNames::nodeName(platform, strName);
        QCOMPARE(PortableNodeNames::nodeName("QG", strName),
                 PortableNodeNames::nodeName("QV", strName));
    }
    const auto &camera = platform == "QH"
        ? reader()
        : open(m_camera, SimulatedDevices::builtIn(QTest::currentDataTag()));
    TestPages pages(pagesOf("P(" + portable.join(' ') + ')'));
    pages.setCameraID(camera.id);
    QStringList attached;
    for (int nRow = 0; nRow < pages.root()->child(0)->childCount(); ++nRow) {
        attached << pages.root()->child(0)->child(nRow)->value()->m_strNodeName;
    }
    QCOMPARE(attached, expected);
    QCOMPARE(pages.platform(), platform);
}

void tst_steppages::rowsFollowTheirFeature()
{
    const auto &camera = reader();
    TestPages pages(pagesOf("P(TcpFormatString ScreenHomepage)"));
    pages.setCameraID(camera.id);
    VexaPropertyTreeItem *pFormat = pages.row("Custom_TcpFormatString");
    VexaPropertyTreeItem *pScreen = pages.row("Custom_ScreenHomepage");
    const auto *pText = valueOf<CTreeFormatStringTextItemValue>(pFormat);
    const auto *pPage = valueOf<CTreeScreenSelectItemValue>(pScreen);
    QVERIFY(pText && pPage);
    QCOMPARE(pText->m_strValue, QString("<codecontent>"));
    QCOMPARE(pText->m_nMaxLength, 256);
    QCOMPARE(pPage->m_nValue, 1);
    // The tree reads them on its workers.
    QVERIFY(camera.tree->setFeatureValue("StringReg", "TcpFormatString", "<angle>;"));
    QVERIFY(camera.tree->setFeatureValue("Enumeration", "ScreenHomepage", 3));
    QTRY_COMPARE_WITH_TIMEOUT(pText->m_strValue, QString("<angle>;"), LONG_WAIT);
    QTRY_COMPARE_WITH_TIMEOUT(pPage->m_nValue, 3, LONG_WAIT);
    QVERIFY(camera.tree->setFeatureValue("Enumeration", "CommunicationProtocols", 6));
    QTRY_VERIFY_WITH_TIMEOUT(!pFormat->visible(), LONG_WAIT);
    // What happens while another camera, or none, is on show is caught up with.
    pages.setCameraID(-1);
    QVERIFY(camera.tree->setFeatureValue("Enumeration", "CommunicationProtocols", 2));
    QVERIFY(camera.tree->setFeatureValue("Enumeration", "ScreenHomepage", 2));
    QTRY_VERIFY_WITH_TIMEOUT(camera.tree->propertyItemByName("TcpFormatString")->visible(),
                             LONG_WAIT);
    QTRY_COMPARE_WITH_TIMEOUT(
        valueOf<CTreeEnumationItemValue>(camera.tree->propertyItemByName("ScreenHomepage"))
            ->m_nValue,
        2LL, LONG_WAIT);
    pages.setCameraID(camera.id);
    QVERIFY(pFormat->visible());
    QCOMPARE(pPage->m_nValue, 2);
    camera.tree->propertyItemByName("TcpFormatString")->setReadOnly(camera.id, true);
    QVERIFY(pFormat->readOnly() && !pScreen->readOnly());
    // A worker may be at the feature while the page is laid, when no notification comes in.
    TestPages late(pagesOf("P(TcpFormatString)"), 2);
    late.m_prepare = [&camera](VexaPropertyTreeItem *) {
        camera.tree->propertyItemByName("TcpFormatString")->setReadOnly(camera.id, false);
    };
    late.setCameraID(camera.id);
    QVERIFY(!late.row("Custom_TcpFormatString")->readOnly());
    // A host may lay rows and have no page in the end.
    struct NoPage : TestPages
    {
        using TestPages::TestPages;
        VexaPropertyTreeItem *createPageRoot() override
        {
            delete TestPages::createPageRoot();
            return nullptr;
        }
    } none(pagesOf("P(ScreenHomepage)"));
    none.setCameraID(camera.id);
    QVERIFY(!none.isFollowed(camera.tree->propertyItemByName("ScreenHomepage")));
}

void tst_steppages::changesTheKindOfALiveRow()
{
    const auto &camera = open("i:ProductType=16 e:LightEnable=Off,On");
    VexaPropertyTreeItem *pLight = camera.tree->propertyItemByName("LightEnable");
    VexaFeatureTreeView &treeView = *camera.tree->treeView();
    QVERIFY(!qobject_cast<QCheckBox *>(treeView.indexWidget(treeView.indexOfItem(pLight, 1))));
    TestPages pages(QStringLiteral("<Category Name=\"P\"><Feature Name=\"LightEnable\" "
                                   "DisplayName_En=\"Light\"/></Category>"));
    camera.tree->OnBtnRefresh(); // a worker is at it
    pages.setCameraID(camera.id);
    QCOMPARE(pages.text(), QString("P(LightEnable:Boolean)"));
    QCOMPARE(pLight->value()->StepPagesDisplayName(), QString("Light"));
    // Each view makes its editor anew in its own time.
    const auto openBox = [pLight](VexaFeatureTreeView &view) {
        auto *pBox = qobject_cast<QCheckBox *>(view.indexWidget(view.indexOfItem(pLight, 1)));
        return pBox && pBox->isEnabled() && !pBox->isChecked() ? pBox : nullptr;
    };
    QTRY_VERIFY_WITH_TIMEOUT(openBox(*pages.treeView()) && openBox(treeView), LONG_WAIT);
    openBox(treeView)->click();
    // The device goes on calling it an enumeration.
    _NODE_ENUM_VALUE_ entry{};
    QVERIFY(taskOf(camera)->GetEnumerationValue("LightEnable", &entry, nullptr, true, false));
    QCOMPARE(entry.value, 1U);
}

void tst_steppages::oneItemOnTwoViews()
{
    const auto &camera = reader();
    TestPages pages(pagesOf("P(ReverseY)"));
    pages.setCameraID(camera.id);
    VexaPropertyTreeItem *pItem = camera.tree->propertyItemByName("ReverseY");
    VexaFeatureTreeView *views[] = {pages.treeView(), camera.tree->treeView()};
    const auto boxOf = [pItem](VexaFeatureTreeView *pView) {
        return qobject_cast<QCheckBox *>(pView->indexWidget(pView->indexOfItem(pItem, 1)));
    };
    for (VexaFeatureTreeView *pView : views) {
        QVERIFY(boxOf(pView));
        const bool bOn = boxOf(pView)->isChecked();
        boxOf(pView)->click();
        for (VexaFeatureTreeView *pOther : views) {
            QTRY_COMPARE_WITH_TIMEOUT(boxOf(pOther)->isChecked(), !bOn, LONG_WAIT);
        }
    }
}

void tst_steppages::asksTheDeviceForLightsOnly()
{
    const auto &camera = reader();
    camera.tree->StopThread(true);
    camera.device.control->setLogging(true);
    const auto accesses = [&](const QString &strNames) {
        camera.device.control->clearAccessLog();
        TestPages pages(pagesOf("P(" + strNames + ")"));
        pages.setCameraID(camera.id);
        return camera.device.control->accessLog().size();
    };
    QCOMPARE(accesses(PortableNodeNames::portableNames().join(' ')
                      + " TriggerSource Custom_SelfTrigger FocusStep RegularExpressionRules Gain "
                        "PollingTarget UserSetSelector"),
             0);
    const int nLights = accesses("LightEnable LightingEnable Custom_LightingSelector");
    QVERIFY2(nLights > 0 && nLights <= 8, qPrintable(QString::number(nLights)));
    camera.tree->StopThread(false);
}

void tst_steppages::pagesOfOneIndexDoNotRob()
{
    const auto &camera = open("i:A=1");
    {
        TestPages pages[] = {TestPages(pagesOf("P(A)")), TestPages(pagesOf("P(A)")),
                             TestPages(pagesOf("P(A)"), 2)};
        QStringList texts;
        for (TestPages &laid : pages) {
            laid.setCameraID(camera.id);
        }
        for (const TestPages &laid : pages) {
            texts << laid.text();
        }
        QCOMPARE(texts, QStringList({"P(A:Integer)", "P()", "P(A:Integer)"}));
    }
    QVERIFY(!camera.tree->propertyItemByName("A")->parent(1));
}

void tst_steppages::tornDown_data()
{
    const DataTable<QString> row("camera");
    for (const char *pCamera : {"stays", "goes first", "goes meanwhile", "goes last"}) {
        row(pCamera, pCamera);
    }
}

/// Rounds by VEXA_TEARDOWN_ROUNDS, with all four workers at it.
void tst_steppages::tornDown()
{
    QFETCH(QString, camera);
    const QString strPages(
        "P(TcpFormatString ScreenHomepage FocusStep TriggerSource Custom_SelfTrigger "
        "Custom_LightingSelector RegularExpressionRules ReverseX) Q(Gain)");
    const QString strNodes("s:TcpFormatString= e:TcpFormatSourceData=a e:ScreenHomepage=A,B "
                           "i:FocusStep=1 e:TriggerSource=A e:LightingSelector=Up,Mid,Down "
                           "b:LightingEnable=1 s:RegularExpressionRules= b:ReverseX=0 i:Gain=1");
    const int nWanted = qEnvironmentVariableIntValue("VEXA_TEARDOWN_ROUNDS");
    for (int nRound = 0; nRound < (nWanted > 0 ? nWanted : 20); ++nRound) {
        VexaFeatureTree &tree = *open(strNodes).tree;
        m_camera.device.control->setLatency(100);
        const QMap<QString, VexaPropertyTreeItem *> items = tree.AllTreeItemsMap();
        QPointer<LeavingPages> pPages = new LeavingPages(pagesOf(strPages), 1 + nRound % 3);
        pPages->setCameraID(m_camera.id);
        QVERIFY2(pPages->text().contains("Custom_ScreenHomepage"), qPrintable(pPages->text()));
        for (const int nRole : {FEATURES_UPDATE_ALL, FEATURES_UPDATE_INVALIDATOR,
                                FEATURES_UPDATE_TLPARAMSLOCKED, FEATURES_UPDATE_POLLING}) {
            tree.UpdateFeatures(nRole, {}, QGetFeaturesThread::UPDATE_REFRESH);
        }
        tree.OnAddValueChangedNodes({"TcpFormatString", "ScreenHomepage", "Gain"});
        QTest::qWait(nRound % 4);
        if (camera == "goes meanwhile") {
            auto *pOther = new TestPages(pagesOf("P(ReverseX)"), 2 + nRound % 3);
            pOther->setCameraID(m_camera.id);
            pPages->m_pOther = pOther;
        } else if (camera != "goes first") {
            delete pPages;
        }
        if (camera == "stays") {
            QCoreApplication::processEvents();
            QCOMPARE(tree.AllTreeItemsMap(), items);
            for (const VexaPropertyTreeItem *pItem : items) {
                QVERIFY(!pItem->parent(1) && !pItem->parent(2) && !pItem->parent(3));
                QVERIFY(pItem->isFeatureTreeItem() && pItem->parent(PARENT_FEATURE_TREE));
            }
            QVERIFY(tree.setFeatureValue("Integer", "Gain", nRound));
        } else {
            cleanup();
            QVERIFY(!pPages); // at the latest it left with its camera
        }
        QCoreApplication::processEvents();
    }
}

void tst_steppages::cameraGoesAndComesBack()
{
    const QString strNodes = "s:TcpFormatString= e:LightingSelector=Up,Mid,Down b:LightingEnable=1 "
                             "b:ReverseX=0";
    TestPages pages(pagesOf("P(TcpFormatString ReverseX Custom_LightingSelector)"));
    pages.setCameraID(99); // before there is one
    QCOMPARE(pages.shownCameraID(), -1L);
    const long lCameraID = open(strNodes).id;
    QVERIFY(taskOf(m_camera)->SetStringValue("TcpFormatString", "<angle>", nullptr));
    pages.setCameraID(lCameraID);
    const QString strRows = pages.text();
    QVERIFY(strRows.contains("ReverseX"));
    m_camera.tree->OnBtnRefresh();
    m_camera.tree->OnResartCameraOpen(4); // the items are new ones
    QCOMPARE(pages.text(), strRows);
    QCOMPARE(pages.row("ReverseX"), m_camera.tree->propertyItemByName("ReverseX"));
    QTRY_COMPARE_WITH_TIMEOUT(
        valueOf<CTreeFormatStringTextItemValue>(pages.row("Custom_TcpFormatString"))->m_strValue,
        QString("<angle>"), LONG_WAIT);
    cleanup();
    QCOMPARE(pages.shownCameraID(), -1L);
    QVERIFY(!pages.isInitialized(lCameraID));
    QCOMPARE(pages.treeView()->model()->rowCount(), 0);
    pages.setCameraID(lCameraID);
    QCOMPARE(pages.text(), QString("none"));
    // The next one may well have its place in memory.
    pages.setCameraID(open(strNodes).id);
    QCOMPARE(pages.text(), strRows);
    fixture().mainWidget().removeFeatureTree(m_camera.id);
    QCOMPARE(pages.treeView()->model()->rowCount(), 0);
    fixture().host().closeCamera(m_camera.id);
    m_camera = {};
}

QTEST_MAIN(tst_steppages)
#include "tst_steppages.moc"
