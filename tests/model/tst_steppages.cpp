#include "model/CTreeEnumationItemValue.h"
#include "model/CTreeStringItemValue.h"
#include "model/CustomItemValues.h"
#include "model/CustomNodeNames.h"
#include "model/PortableNodeNames.h"
#include "tests/model/NotifyRecorder.h"
#include "tests/model/PageFixture.h"
#include "tests/model/PageTexts.h"

#include <QCheckBox>
#include <QRegularExpression>
#include <QtTest>

namespace {

constexpr int LONG_WAIT = 20000; // ms

template<typename Value>
Value *valueOf(VexaPropertyTreeItem *pItem)
{
    return pItem ? dynamic_cast<Value *>(pItem->value()) : nullptr;
}

} // namespace

class tst_steppages : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { m_pFixture = std::make_unique<ModuleFixture>(); }
    void cleanupTestCase() { m_pFixture.reset(); }
    void rules_data();
    void rules();
    void segments_data();
    void segments();
    void namesAndBasicView();
    void nestsSoFar();
    void portableNames_data();
    void portableNames();
    void hintSettlesThePlatform();
    void rowsFollowTheirFeature();
    void spinRowFollowsItsInteger();
    void changesTheKindOfALiveRow();
    void oneItemOnTwoViews();
    void asksTheDeviceForLightsOnly();
    void pagesOfOneIndexDoNotRob();
    void tornDownBesideTheTree();
    void cameraGoesAndComesBack();
    void viewsOutliveItems();

private:
    ModuleFixture::Camera openReader(const char *pId = "code-reader");
    ModuleFixture &fixture() { return *m_pFixture; }
    std::unique_ptr<ModuleFixture> m_pFixture;
};

ModuleFixture::Camera tst_steppages::openReader(const char *pId)
{
    const ModuleFixture::Camera camera = fixture().open(SimulatedDevices::builtIn(pId));
    camera.device.control->setQuiet(true);
    return ModuleFixture::waitForFirstUpdate(camera) ? camera : ModuleFixture::Camera();
}

void tst_steppages::rules_data()
{
    QTest::addColumn<QString>("nodes");
    QTest::addColumn<QString>("page");
    QTest::addColumn<QString>("rows");
    const auto row = [](const char *pFault, const char *pNodes, const char *pPage,
                        const char *pRows) {
        QTest::newRow(pFault) << QString(pNodes) << QString(pPage) << QString(pRows);
    };
    row("a missing feature leaves no row", "i:A=1", "P(A B)", "P(A:Integer)");
    row("empty pages stay", "i:A=1", "P(B) Q(A)", "P() Q(A:Integer)");
    row("a category of the device is no row", "i:A=1", "P(Nodes A)", "P(A:Integer)");
    row("the last of two pages has it", "i:A=1 i:B=2", "P(A B) Q(A)", "P(B:Integer) Q(A:Integer)");
    row("other elements are skipped", "i:A=1", "P(A Q(A))", "P(Q(A:Integer))");
    const char *pTuning = "Custom_SmartTuneControl(A) Custom_SelfAdaptParamAdjust(B) "
                          "Custom_AutoFocus(C)";
    row("tuning of the newer kind", "c:SmartTune i:A=1 i:B=1 i:C=1", pTuning,
        "Custom_SmartTuneControl(A:Integer)");
    row("tuning of the older kind", "i:A=1 i:B=1 i:C=1", pTuning,
        "Custom_SelfAdaptParamAdjust(B:Integer) Custom_AutoFocus(C:Integer)");
    row("product 16 has a switch", "i:ProductType=16 e:LightEnable=Off,On e:LightingSelector=Up",
        "P(LightEnable)", "P(LightEnable:Boolean)");
    row("product 17 has a switch", "i:ProductType=17 b:LightingEnable=1 e:LightingSelector=Up",
        "P(LightingEnable)", "P(LightingEnable:Boolean)");
    row("a selector takes the switch's place",
        "i:ProductType=3 b:LightEnable=1 e:LightingSelector=Up b:LaserEnable=0", "P(LightEnable)",
        "P()");
    row("no selector and a laser", "i:ProductType=3 e:LightEnable=Off,On b:LaserEnable=0",
        "P(LightEnable)", "P(LightEnable:Boolean)");
    row("no product and an aiming light", "b:LightEnable=1 b:AmingLightEnable=0", "P(LightEnable)",
        "P(LightEnable:Boolean)");
    row("no other light", "i:ProductType=3 b:LightEnable=1", "P(LightEnable)", "P()");
    row("selector of product 16 as it is",
        "i:ProductType=16 e:LightingSelector=Up,Down b:LightingEnable=1",
        "P(Custom_LightingSelector)", "P(LightingSelector:Enumeration)");
    row("selector without an enable", "e:LightingSelector=Up,Down", "P(Custom_LightingSelector)",
        "P()");
    row("lighting row", "e:LightingSelector=Up,Mid,Down b:LightingEnable=1",
        "P(Custom_LightingSelector)", "P(Custom_LightingSelector:CustomLightingSelector+)");
    row("focus of the older kind", "i:FocusStep=5", "P(FocusStep)",
        "P(FocusStep:Integer Custom_FocusSetting+)");
    row("focus of the newer kind", "i:FocusStep=5 c:SmartTune", "P(FocusStep)",
        "P(FocusStep:Integer)");
    row("no focus at all", "i:A=1", "P(FocusStep)", "P()");
    row("self trigger", "e:TriggerSource=Software,SelfTrigger",
        "P(TriggerSource Custom_SelfTrigger)",
        "P(TriggerSource:Enumeration Custom_AutoTrigTime+ Custom_EnableAutoTrig+)");
    row("its source stands deeper", "e:TriggerSource=Software",
        "P(Q(TriggerSource) Custom_SelfTrigger)",
        "P(Q(TriggerSource:Enumeration) Custom_AutoTrigTime+ Custom_EnableAutoTrig+)");
    row("its source is no choice", "i:TriggerSource=1", "P(TriggerSource Custom_SelfTrigger)",
        "P(TriggerSource:Integer)");
    row("its source is on another page", "e:TriggerSource=Software",
        "P(TriggerSource) Q(Custom_SelfTrigger)", "P(TriggerSource:Enumeration) Q()");
    row("regular expression", "s:RegularExpressionRules=", "P(RegularExpressionRules)",
        "P(Custom_RegularExpressionFilterRules:Command+)");
    row("screen", "e:ScreenHomepage=A,B,C", "P(ScreenHomepage)",
        "P(Custom_ScreenHomepage:CustomScreen+)");
    row("rows of devices that lack the node", "i:A=1",
        "P(RegularExpressionRules ScreenHomepage TcpFormatString Node_CodeNum Node_ Node_Nothing "
        "Custom_LightingSelector LightEnable)",
        "P()");
    row("a custom row of the host's own", "i:A=1", "P(Custom_Anything)", "P(Custom_Anything+)");
    row("format and trigger", "s:TcpFormatString= e:TcpFormatSourceData=a,b s:TcpStartTriggerHex=",
        "P(TcpFormatString TcpStartTriggerHex)",
        "P(Custom_TcpFormatString:CustomFormatTextEdit+ "
        "Custom_TcpStartTriggerHex:CustomFormatTextEdit+)");
    row("generations mixed", "i:Line0Glitch=1 i:CounterValue=2 i:LocBarNum=3",
        "P(Node_LineDebouncerTime Node_CountNumber Node_CodeNum)",
        "P(Line0Glitch:Integer CounterValue:Integer LocBarNum:Integer)");
}

void tst_steppages::rules()
{
    QFETCH(QString, nodes);
    QFETCH(QString, page);
    const ModuleFixture::Camera camera = fixture().openDescription(deviceOf(nodes));
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    {
        TestPages pages(pagesOf(page));
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
    fixture().close(camera);
}

void tst_steppages::segments_data()
{
    QTest::addColumn<QString>("entries");
    QTest::addColumn<int>("type");
    QTest::newRow("three") << "Up,Mid,Down" << 2;
    QTest::newRow("three and all") << "Up,Mid,Down,ALL" << 2;
    QTest::newRow("four") << "Up,Down,Left,Right" << 0;
    QTest::newRow("four and all") << "Left,Up,Right,Down,All" << 0;
    QTest::newRow("six and all") << "Up_Left,Up_Mid,Up_Right,Down_Right,Down_Mid,Down_Left,all"
                                 << 1;
    QTest::newRow("six") << "Up_Left,Up_Mid,Up_Right,Down_Right,Down_Mid,Down_Left" << 1;
    QTest::newRow("no picture for five") << "A,B,C,D,E" << 0;
}

void tst_steppages::segments()
{
    QFETCH(QString, entries);
    const ModuleFixture::Camera camera = fixture().openDescription(deviceOf(
        "i:LightingSelector_Icon_Inq_Reg=7 b:LightingEnable=1 e:LightingSelector=" + entries));
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    {
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
    fixture().close(camera);
}

void tst_steppages::namesAndBasicView()
{
    const ModuleFixture::Camera camera = fixture().openDescription(deviceOf("i:A=1 i:B=2"));
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    {
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
    fixture().close(camera);
}

void tst_steppages::nestsSoFar()
{
    const ModuleFixture::Camera camera = fixture().openDescription(deviceOf("i:A=1 i:B=2"));
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    {
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
    fixture().close(camera);
}

void tst_steppages::portableNames_data()
{
    QTest::addColumn<QString>("platform");
    QTest::newRow("code-reader") << "QH";
    QTest::newRow("code-reader-older") << "QX";
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
    const ModuleFixture::Camera camera = openReader(QTest::currentDataTag());
    {
        TestPages pages(pagesOf("P(" + portable.join(' ') + ')'));
        pages.setCameraID(camera.id);
        QStringList attached;
        for (int nRow = 0; nRow < pages.root()->child(0)->childCount(); ++nRow) {
            attached << pages.root()->child(0)->child(nRow)->value()->m_strNodeName;
        }
        QCOMPARE(attached, expected);
        QCOMPARE(pages.platform(), platform);
    }
    fixture().close(camera);
}

void tst_steppages::hintSettlesThePlatform()
{
    // "LocBarNum" is a name of both generations: without a hint the older one would be taken.
    const ModuleFixture::Camera camera =
        fixture().openDescription(deviceOf("i:LocBarNum=1 i:ReverseX=0 i:MirrorX=0 i:FlashMode=1"));
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    for (const char *pHint : {"", "Node_FlashMode"}) {
        TestPages pages(pagesOf("P(Node_CodeNum Node_MirrorX)"));
        pages.m_strHint = pHint;
        pages.setCameraID(camera.id);
        QCOMPARE(pages.platform(), QString(*pHint ? "QH" : "QX"));
        QCOMPARE(pages.text(),
                 QString(*pHint ? "P(LocBarNum:Integer MirrorX:Integer)"
                                : "P(LocBarNum:Integer ReverseX:Integer)"));
    }
    fixture().close(camera);
}

void tst_steppages::rowsFollowTheirFeature()
{
    const ModuleFixture::Camera camera = openReader();
    {
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
    }
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
    fixture().close(camera);
}

void tst_steppages::spinRowFollowsItsInteger()
{
    const ModuleFixture::Camera camera = openReader();
    {
        TestPages pages(pagesOf("P(Custom_FocusSetting)"));
        pages.setCameraID(camera.id);
        VexaPropertyTreeItem *pRow = pages.row("Custom_FocusSetting");
        pRow->setTagName("CustomSpinBox");
        VexaPropertyTreeItem *pPosition = camera.tree->propertyItemByName("FocusPosition");
        pages.setSpinItems(pRow, camera.tree->propertyItemByName("FocusStepMinus"),
                           camera.tree->propertyItemByName("FocusStepPlus"), pPosition);
        pages.setSpinStep(pRow, 25, true);
        const auto *pValue = valueOf<CTreeHorSpinBoxItemValue>(pRow);
        QCOMPARE(pValue->m_pIntegerItem, pPosition);
        QCOMPARE(pValue->m_nStep, 25);
        QCOMPARE(pValue->m_nValue, 1);
        NotifyRecorder recorder;
        pRow->registerView(&recorder);
        pPosition->notifyViewUpdate(camera.id, -1, false, false);
        QCOMPARE(recorder.take(), QString("data:Custom_FocusSetting:-1"));
        pPosition->notifyViewUpdate(camera.id + 1, -1, false, false);
        QCOMPARE(recorder.take(), QString());
        pRow->removeView(&recorder);
    }
    fixture().close(camera);
}

void tst_steppages::changesTheKindOfALiveRow()
{
    const ModuleFixture::Camera camera =
        fixture().openDescription(deviceOf("i:ProductType=16 e:LightEnable=Off,On"));
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    VexaPropertyTreeItem *pLight = camera.tree->propertyItemByName("LightEnable");
    VexaFeatureTreeView &treeView = *camera.tree->treeView();
    QVERIFY(!qobject_cast<QCheckBox *>(treeView.indexWidget(treeView.indexOfItem(pLight, 1))));
    {
        TestPages pages(QStringLiteral("<Category Name=\"P\"><Feature Name=\"LightEnable\" "
                                       "DisplayName_En=\"Light\"/></Category>"));
        camera.tree->OnBtnRefresh(); // a worker is at it
        pages.setCameraID(camera.id);
        QCOMPARE(pages.text(), QString("P(LightEnable:Boolean)"));
        QCOMPARE(pLight->value()->StepPagesDisplayName(), QString("Light"));
        VexaFeatureTreeView &view = *pages.treeView();
        QTRY_VERIFY_WITH_TIMEOUT(
            qobject_cast<QCheckBox *>(view.indexWidget(view.indexOfItem(pLight, 1))), LONG_WAIT);
        // The device goes on calling it an enumeration.
        auto *pBox =
            qobject_cast<QCheckBox *>(treeView.indexWidget(treeView.indexOfItem(pLight, 1)));
        QTRY_VERIFY_WITH_TIMEOUT(pBox && pBox->isEnabled() && !pBox->isChecked(), LONG_WAIT);
        pBox->click();
        _NODE_ENUM_VALUE_ entry{};
        QVERIFY(taskOf(camera)->GetEnumerationValue("LightEnable", &entry, nullptr, true, false));
        QCOMPARE(entry.value, 1U);
    }
    fixture().close(camera);
}

void tst_steppages::oneItemOnTwoViews()
{
    const ModuleFixture::Camera camera = openReader();
    {
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
    fixture().close(camera);
}

void tst_steppages::asksTheDeviceForLightsOnly()
{
    const ModuleFixture::Camera camera = openReader();
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
    fixture().close(camera);
}

void tst_steppages::pagesOfOneIndexDoNotRob()
{
    const ModuleFixture::Camera camera = fixture().openDescription(deviceOf("i:A=1"));
    QVERIFY(ModuleFixture::waitForFirstUpdate(camera));
    {
        TestPages first(pagesOf("P(A)"));
        TestPages second(pagesOf("P(A)"));
        TestPages other(pagesOf("P(A)"), 2);
        for (TestPages *pPages : {&first, &second, &other}) {
            pPages->setCameraID(camera.id);
        }
        QCOMPARE(first.text(), QString("P(A:Integer)"));
        QCOMPARE(second.text(), QString("P()"));
        QCOMPARE(other.text(), QString("P(A:Integer)"));
    }
    QVERIFY(!camera.tree->propertyItemByName("A")->parent(1));
    fixture().close(camera);
}

void tst_steppages::tornDownBesideTheTree()
{
    const ModuleFixture::Camera camera = openReader();
    const QStringList names{
        "TcpFormatString",        "ScreenHomepage",     "FocusStep",
        "TriggerSource",          "Custom_SelfTrigger", "Custom_LightingSelector",
        "RegularExpressionRules", "ReverseX",           "Gain",
        "PollingTarget"};
    const QMap<QString, VexaPropertyTreeItem *> items = camera.tree->AllTreeItemsMap();
    VexaPropertyTreeItem *pGain = items.value("Gain");
    for (int nTurn = 0; nTurn < 200; ++nTurn) {
        TestPages pages(pagesOf("P(" + names.join(' ') + ')'), 1 + nTurn % 3);
        if (nTurn % 2) {
            camera.tree->OnBtnRefresh();
            camera.tree->OnAddValueChangedNodes(names);
        }
        pages.setCameraID(camera.id);
        QCOMPARE(pages.root()->child(0)->childCount(), names.size() + 1);
        QCoreApplication::processEvents();
        QCOMPARE(pGain->parent(0)->value()->m_strNodeName, QString("AnalogControl"));
    }
    QCOMPARE(camera.tree->AllTreeItemsMap(), items);
    for (VexaPropertyTreeItem *pItem : items) {
        QVERIFY(!pItem->parent(1) && !pItem->parent(2) && !pItem->parent(3));
        QVERIFY(pItem->isFeatureTreeItem());
    }
    QVERIFY(camera.tree->setFeatureValue("Float", "Gain", 7.5));
    fixture().close(camera);
}

void tst_steppages::cameraGoesAndComesBack()
{
    TestPages pages(pagesOf("P(TcpFormatString ReverseX Custom_LightingSelector)"));
    pages.setCameraID(99); // before there is one
    QCOMPARE(pages.shownCameraID(), -1L);
    const ModuleFixture::Camera camera = openReader();
    pages.setCameraID(camera.id);
    const QString strRows = pages.text();
    QVERIFY(strRows.contains("ReverseX"));
    camera.tree->OnBtnRefresh();
    camera.tree->OnResartCameraOpen(4); // the items are new ones
    QCOMPARE(pages.text(), strRows);
    QCOMPARE(pages.row("ReverseX"), camera.tree->propertyItemByName("ReverseX"));
    QTRY_COMPARE_WITH_TIMEOUT(
        valueOf<CTreeFormatStringTextItemValue>(pages.row("Custom_TcpFormatString"))->m_strValue,
        QString("<codecontent>"), LONG_WAIT);
    fixture().close(camera);
    QCOMPARE(pages.shownCameraID(), -1L);
    QVERIFY(!pages.isInitialized(camera.id));
    QCOMPARE(pages.treeView()->model()->rowCount(), 0);
    pages.setCameraID(camera.id);
    QCOMPARE(pages.text(), QString("none"));
    // The next one may well have its place in memory.
    const ModuleFixture::Camera next = openReader();
    pages.setCameraID(next.id);
    QCOMPARE(pages.text(), strRows);
    fixture().mainWidget().removeFeatureTree(next.id);
    QCOMPARE(pages.treeView()->model()->rowCount(), 0);
    fixture().host().closeCamera(next.id);
}

void tst_steppages::viewsOutliveItems()
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

QTEST_MAIN(tst_steppages)
#include "tst_steppages.moc"
