#include "DeviceFixture.h"
#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QTaskManager.h"

#include <QDomDocument>
#include <QtTest>

/// What a description has to be like to be opened, and which of its nodes are left out.
class DescriptionTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void refused_data();
    void refused();
    void accepted_data();
    void accepted();
    void leftOut_data();
    void leftOut();
    void leftOutNodeSparesTheRest();
    void deepChains_data();
    void deepChains();
    void documentBelongsToTheCaller();
};

void DescriptionTest::refused_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("reason");
    const QByteArray good = describe({});
    QTest::newRow("empty") << QByteArray() << "empty";
    QTest::newRow("onlyPadding") << QByteArray(16, '\0') << "empty";
    QTest::newRow("tooLarge") << QByteArray(64 * 1024 * 1024 + 1, ' ') << "bytes";
    QTest::newRow("lineOfTextInFront") << "HTTP 200\n" + good << "line 1";
    QTest::newRow("textBehind") << good + "rest"
                                << "line";
    QTest::newRow("cutOff") << good.left(good.size() - 10) << "line";
    QTest::newRow("secondRootElement") << good + good.mid(good.indexOf("<Reg")) << "line";
    QTest::newRow("tagsCrossed") << describe("<Integer Name=\"A\"><Value>1</Integer></Value>")
                                 << "line";
    QTest::newRow("zeroByteInside")
        << describe(QByteArray("<Integer Name=\"A\">\0</Integer>", 29)) << "line";
    QTest::newRow("documentType") << "<!DOCTYPE RegisterDescription [<!ENTITY a \"b\">]>"
            + good.mid(good.indexOf("<Reg"))
                                  << "document type";
    QTest::newRow("otherDocument") << QByteArray("<html><body/></html>") << "RegisterDescription";
    QTest::newRow("plainText") << QByteArray("not found") << "line 1";
    QTest::newRow("nestedWithoutEnd") << describe(QByteArray("<Group>").repeated(100000)) << "nest";
}

void DescriptionTest::refused()
{
    QFETCH(QByteArray, xml);
    QFETCH(QString, reason);
    CameraHost host;
    auto state = std::make_shared<MemoryDeviceState>(xml, 0x100);
    const CameraHost::OpenResult result = host.openCamera(sourceOf(state));
    QCOMPARE(result.cameraId, NO_CAMERA_ID);
    QVERIFY2(result.error.contains(reason), qPrintable(result.error));
    QCOMPARE(state->m_nLiving.load(), 0);
    QCOMPARE(QTaskManager::Instance()->GetTaskCount(), 0U);
}

void DescriptionTest::accepted_data()
{
    QTest::addColumn<QByteArray>("xml");
    const QByteArray good = describe({});
    QTest::newRow("paddedWithZeros") << good + QByteArray(100, '\0');
    QTest::newRow("lineEndBehind") << good + "\r\n";
    QTest::newRow("byteOrderMark") << "\xEF\xBB\xBF" + good;
    QTest::newRow("commentInFront")
        << good.left(good.indexOf("<Reg")) + "<!-- c -->" + good.mid(good.indexOf("<Reg"));
    QTest::newRow("categoriesInACircle")
        << describe("<Category Name=\"A\"><pFeature>B</pFeature></Category>"
                    "<Category Name=\"B\"><pFeature>A</pFeature></Category>");
    QTest::newRow("withoutRoot") << QByteArray(
        "<RegisterDescription><Integer "
        "Name=\"One\"><Value>1</Value></Integer></RegisterDescription>");
}

void DescriptionTest::accepted()
{
    QFETCH(QByteArray, xml);
    CameraHost host;
    const auto state = std::make_shared<MemoryDeviceState>(xml);
    const CameraHost::OpenResult result = host.openCamera(sourceOf(state));
    QVERIFY2(result.error.isEmpty(), qPrintable(result.error));
    QCameraTask *task = QTaskManager::Instance()->GetTaskByID(result.cameraId)->_CameraTak();
    _NODE_INT_VALUE_ value{};
    QVERIFY(task->GetIntegerValue("One", &value, nullptr, true, false));
    QCOMPARE(value.value, qint64(1));
}

void DescriptionTest::leftOut_data()
{
    QTest::addColumn<QByteArray>("nodes");
    const QByteArray bits =
        "<Address>0</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort>";
    QTest::newRow("valueOfItself")
        << QByteArray("<Integer Name=\"N\"><pValue>N</pValue></Integer>");
    QTest::newRow("circleOfTwo") << QByteArray(
        "<Integer Name=\"N\"><pValue>B</pValue></Integer>"
        "<Integer Name=\"B\"><pMax>N</pMax><Value>1</Value></Integer>");
    QTest::newRow("leadsIntoCircle")
        << QByteArray("<Integer Name=\"N\"><pIsLocked>B</pIsLocked><Value>1</Value></Integer>"
                      "<Integer Name=\"B\"><pValue>B</pValue></Integer>");
    QTest::newRow("circleThroughEntry")
        << QByteArray("<Enumeration Name=\"N\"><EnumEntry "
                      "Name=\"E\"><pIsAvailable>N</pIsAvailable><Value>1</Value></EnumEntry>"
                      "<Value>1</Value></Enumeration>");
    QTest::newRow("circleThroughOffset")
        << "<IntReg Name=\"N\"><pIndex pOffset=\"N\">One</pIndex>" + bits + "</IntReg>";
    QTest::newRow("circleThroughInnerFormula")
        << "<IntReg Name=\"N\"><IntSwissKnife Name=\"F\"><pVariable "
           "Name=\"A\">N</pVariable><Formula>A</Formula>"
           "</IntSwissKnife>"
            + bits + "</IntReg>";
    QTest::newRow("circleThroughStruct") << "<StructReg Comment=\"s\">" + bits
            + "<pAddress>N</pAddress><StructEntry "
              "Name=\"N\"><Bit>1</Bit></StructEntry></StructReg>";
    QTest::newRow("missingValue") << QByteArray(
        "<Integer Name=\"N\"><pValue>Nowhere</pValue></Integer>");
    QTest::newRow("missingMaximum")
        << QByteArray("<Integer Name=\"N\"><Value>1</Value><pMax>Nowhere</pMax></Integer>");
    QTest::newRow("missingBelow") << QByteArray(
        "<Integer Name=\"N\"><pValue>B</pValue></Integer>"
        "<Integer Name=\"B\"><pValue>Nowhere</pValue></Integer>");
    QTest::newRow("missingPort") << "<IntReg Name=\"N\">"
            + QByteArray(bits).replace("Device", "Nowhere") + "</IntReg>";
    QTest::newRow("portIsNoPort") << "<IntReg Name=\"N\">"
            + QByteArray(bits).replace("Device", "One") + "</IntReg>";
    QTest::newRow("noPort") << QByteArray(
        "<IntReg Name=\"N\"><Address>0</Address><Length>4</Length></IntReg>");
    QTest::newRow("valueIsCategory")
        << QByteArray("<Integer Name=\"N\"><pValue>Root</pValue></Integer>");
    QTest::newRow("noValue") << QByteArray("<Integer Name=\"N\"><Min>0</Min></Integer>");
    QTest::newRow("lengthZero") << "<IntReg Name=\"N\">" + QByteArray(bits).replace("4", "0")
            + "</IntReg>";
    QTest::newRow("lengthNegative")
        << "<StringReg Name=\"N\">" + QByteArray(bits).replace("4", "-1") + "</StringReg>";
    QTest::newRow("lengthOverAnInteger")
        << "<IntReg Name=\"N\">" + QByteArray(bits).replace("4", "9") + "</IntReg>";
    QTest::newRow("bitOutsideRegister")
        << "<MaskedIntReg Name=\"N\">" + bits + "<LSB>0</LSB><MSB>32</MSB></MaskedIntReg>";
    QTest::newRow("nameTwice") << QByteArray("<Integer Name=\"N\"><Value>1</Value></Integer>"
                                             "<Integer Name=\"N\"><Value>2</Value></Integer>");
}

void DescriptionTest::leftOut()
{
    QFETCH(QByteArray, nodes);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("^Node N is left out: .+"));
    DeviceFixture device(nodes);
    QVERIFY2(device.m_strError.isEmpty(), qPrintable(device.m_strError));
    int error = 0;
    QCOMPARE(device.task().GetAccessMode("N", &error), 0);
    _NODE_INT_VALUE_ value{1, 2, 3, 4};
    QVERIFY(!device.task().GetIntegerValue("N", &value, &error, true, false));
    QVERIFY(error != 0);
    QVERIFY(!device.task().SetIntegerValue("N", 0, nullptr));
    QVERIFY(!device.task().GetStringValue("N", nullptr, nullptr, nullptr, true, false));
    QCOMPARE(device.m_pState->m_nAccesses.load(), 0);
}

void DescriptionTest::leftOutNodeSparesTheRest()
{
    DeviceFixture device("<Integer Name=\"N\"><pValue>N</pValue></Integer>" + intReg("Good", 16));
    QCOMPARE(device.task().GetAccessMode("Good", nullptr), 4);
}

void DescriptionTest::deepChains_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<bool>("wide");
    QTest::addColumn<int>("mode");
    QTest::newRow("asDeepAsAllowed") << 127 << false << 4;
    QTest::newRow("tooDeep") << 129 << false << 0;
    QTest::newRow("deepForTheStack") << 100000 << false << 0;
    QTest::newRow("shallowButDoublingEachStep") << 60 << true << 0;
}

void DescriptionTest::deepChains()
{
    QFETCH(int, length);
    QFETCH(bool, wide);
    QByteArray nodes = "<Integer Name=\"N0\"><Value>1</Value></Integer>";
    for (int i = 1; i < length; ++i) {
        const QByteArray below = "N" + QByteArray::number(i - 1);
        nodes += "<Integer Name=\"N" + QByteArray::number(i) + "\"><pValue>" + below + "</pValue>"
            + (wide ? "<pMin>" + below + "</pMin>" : QByteArray()) + "</Integer>";
    }
    DeviceFixture device(nodes);
    QTEST(device.task().GetAccessMode(QStringLiteral("N%1").arg(length - 1), nullptr), "mode");
    QCOMPARE(device.task().GetAccessMode("N5", nullptr), 4);
}

void DescriptionTest::documentBelongsToTheCaller()
{
    DeviceFixture device({});
    QDomDocument first;
    device.task().GetXMLDomDocument(first);
    QCOMPARE(first.documentElement().tagName(), QString("RegisterDescription"));
    QDomDocument second;
    device.task().GetXMLDomDocument(second);
    first.documentElement().setAttribute("ModelName", "changed");
    QCOMPARE(second.documentElement().attribute("ModelName"), QString("M"));
    QCameraTask &task = device.task();
    device.m_host.closeCamera(device.m_nId);
    task.GetXMLDomDocument(second);
    QVERIFY(second.isNull());
}

QTEST_GUILESS_MAIN(DescriptionTest)
#include "tst_Description.moc"
