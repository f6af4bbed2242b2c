#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "DeviceTaskModule/VexaFeatureObserverable.h"
#include "ShellServicesModule/COMMONINTERFACE.h"
#include "UtilityKit/VexaInterface.h"
#include "host/shellservices/ShellHost.h"
#include "model/CTreeEnumationItemValue.h"
#include "model/VexaPropertyTreeItem.h"
#include "tests/tree/WriteFixture.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <QtTest>

using Values = QVector<QPair<QString, QVariant>>; ///< feature and value; a command takes any value
Q_DECLARE_METATYPE(Values)

namespace {

/// Hears of features, and may take itself and another one out in the middle.
class Observer : public VexaFeatureObserverable
{
public:
    void notifyFeatureChanged(const QString &name, bool fromUiJson) override
    {
        m_heard.append(name + (fromUiJson ? " from page" : ""));
        if (m_pTree) {
            m_pTree->RemoveFeatureObserverable(this);
            m_pTree->RemoveFeatureObserverable(m_pOther);
        }
    }
    void notifyFeatureTreeReleased(long int) override { }
    QStringList m_heard;
    VexaFeatureTree *m_pTree = nullptr;
    Observer *m_pOther = nullptr;
};

} // namespace

/// What the client hears after an edit in the view, and what any change of a row draws after it.
class tst_afterwrite : public QObject
{
    Q_OBJECT
private slots:
    void init() { m_shared.leaveOtherFunctions(); }
    void cleanupTestCase() { m_shared.reset(); }
    void tellsTheClient_data();
    void tellsTheClient();
    void renamesTheCamera_data();
    void renamesTheCamera();
    void commands_data();
    void commands();
    void defaultsAreLoaded();
    void sourceDataFollows_data();
    void sourceDataFollows();
    void whiteBalanceIsFreed_data();
    void whiteBalanceIsFreed();
    void observersHear_data();
    void observersHear();
    void observerLeavesInTheMiddle();

private:
    SharedWriteFixture m_shared;
};

void tst_afterwrite::tellsTheClient_data()
{
    QTest::addColumn<Values>("before");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QStringList>("heard"); // but for the lines of the dispatcher
    const auto row = [](const char *tag, const char *name, const QVariant &value,
                        const QStringList &heard, const Values &before = {}) {
        QTest::newRow(tag) << before << QString(name) << value << heard;
    };
    const QString list = "bus SigVexaEventUpdateDevListCtrl";
    const auto image = [](const char *state) {
        return QStringList{QStringLiteral("bus SigVexaEventTestImgNodeChanged %1").arg(state),
                           QStringLiteral("info strTestImageInfo %1").arg(state)};
    };
    row("plain node", "FocusStep", 30, {});
    row("region is the dispatcher's", "AlgoRegionWidth", 128, {});
    row("working mode", "AutoWorkReal", 0, {list});
    row("locked address", "LockIPEnable", 1, {list});
    row("forced address", "ForceIPEnable", 0, {list});
    row("occupation", "PreventingIllegalOccupation", 1, {list});
    row("test pictures on", "UploadTestRawPictureEnable", 1, image("ftp_open"),
        {{"FtpProtocalEnable", 1}});
    row("test pattern on", "TestPattern", 20, image("test_open"));
    row("other test pattern", "TestPattern", 0, image("test_close"), {{"TestPattern", 20}});
    row("name of the user set", "UserSetName", "mine", {"bus SigVexaEventUpdateCameraStatus #"});
    const Values polling = {
        {"PollingParamName", "one"},
        {"PollingExposureTime", 900.0},
        {"PollingGain", 7.0},
        {"PollingGamma", 1.5},
        {"PollingLensType", 0},
        {"PollingFocusEnable", 1},
        {"PollingFocusPos", 7},
        {"PollingLightSelector", 2},
        {"PollingLightEnable", 0},
        {"PollingIOSelector", 2},
        {"PollingIOAction", 1},
        {"PollingParamEnable", 0},
        {"PollingSingleParamTimeout", 70},
        {"PollingSingleParamCodeNum", 7},
        {"PollingSingleParamPeriod", 7},
        {"PollingAlgoROIRegionIndex", 7},
    };
    for (const auto &node : polling) {
        row(qPrintable(node.first), qPrintable(node.first), node.second,
            {"bus SigVexaEventCameraPollingParamChanged",
             "info PollingParam changed " + node.first});
    }
    row("polling node without a row of its own", "PollingAlgoROIRegion", 7, {});
}

void tst_afterwrite::tellsTheClient()
{
    QFETCH(Values, before);
    QFETCH(QString, name);
    QFETCH(QVariant, value);
    QFETCH(QStringList, heard);
    WriteFixture &fixture = m_shared.get();
    for (const auto &step : qAsConst(before)) {
        QVERIFY2(fixture.setOnDevice(step.first, step.second), qPrintable(step.first));
        fixture.tree().getFeatureValueFromCamera(fixture.item(step.first));
    }
    fixture.takeHeard();
    QVERIFY(fixture.edit(name, value));
    static const QRegularExpression dispatched(
        "NodeName:|strFtpEnable|UpdateFeatures|^listen |UpdateROI");
    QStringList lines = fixture.takeHeard();
    for (const QString &line : lines.filter(dispatched)) {
        lines.removeOne(line);
    }
    QCOMPARE(lines, heard);
    // The write alone tells nothing of this.
    fixture.write(name, value);
    QVERIFY(heard.isEmpty() || fixture.takeHeard().filter(heard.last()).isEmpty());
}

void tst_afterwrite::renamesTheCamera_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<bool>("readable");
    QTest::addColumn<QString>("name"); // "$" is the model, empty for the old name
    QTest::newRow("id") << "line 3" << true << "line 3 (%1)";
    QTest::newRow("no id") << "" << true << "$ (%1)";
    QTest::newRow("id with a placeholder") << "%1 %2" << true << "%1 %2 (%1)";
    QTest::newRow("device that does not answer any more") << "line 3" << false << "";
}

void tst_afterwrite::renamesTheCamera()
{
    QFETCH(QString, id);
    QFETCH(bool, readable);
    QFETCH(QString, name);
    WriteFixture fixture;
    QCameraBasicTask *basicTask = QTaskManager::Instance()->GetTaskByIDEx(fixture.camera().id);
    const QString oldName = fixture.tree().GetCurCameraName();
    const QString address = VexaInterface::numIP2StrIP(int(basicTask->_GetIP()));
    name.replace('$', basicTask->_GetCameraModelName());
    name.replace("(%1)", '(' + address + ')');
    COMMONINTERFACE::AddCurrentCamModified(oldName);
    QVERIFY(fixture.setOnDevice("DeviceUserID", id));
    if (!readable) {
        fixture.control().vanish();
    }
    fixture.takeHeard();
    QVERIFY(fixture.tree().afterSetFeatureValue("DeviceUserID"));
    const QString newName = readable ? name : oldName;
    QCOMPARE(fixture.tree().GetCurCameraName(), newName);
    QCOMPARE(basicTask->_GetCameraName(), newName);
    QCOMPARE(ShellHost::instance()->modifiedCameras(), QStringList(newName));
    const QStringList told{
        "bus SigVexaEventUpdateCameraStatus #",
        QStringLiteral("info afterSetFeatureValue DeviceUserID strLastName = %1 strCameraName = %2")
            .arg(oldName, newName)};
    QCOMPARE(fixture.takeHeard(), readable ? told : QStringList());
    COMMONINTERFACE::RemoveCurrentCamModified(newName);
}

void tst_afterwrite::commands_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("heard"); // "$" is the camera's name
    const QString removed = "info afterSetFeatureValue SigCameraNameRemoved strName = $";
    for (const char *name : {"UserSetSave", "UserSetLoad", "UserSetRecoverFactory"}) {
        QTest::newRow(name) << name << QStringList(removed);
    }
    QTest::newRow("tuning") << "SmartTune"
                            << QStringList{"bus SigVexaEventStartSmartTune true",
                                           "info SetSmtTuneNode SmartTune"};
    QTest::newRow("adapting") << "SelfAdaptParamAdjustStart"
                              << QStringList{"bus SigVexaEventStartSmartTune false",
                                             "info SetSmtTuneNode SelfAdaptParamAdjustStart"};
    QTest::newRow("another command") << "FocusStepPlus" << QStringList();
}

void tst_afterwrite::commands()
{
    QFETCH(QString, name);
    QFETCH(QStringList, heard);
    WriteFixture &fixture = m_shared.get();
    const QString cameraName = fixture.tree().GetCurCameraName();
    heard.replaceInStrings("$", cameraName);
    COMMONINTERFACE::AddCurrentCamModified(cameraName);
    QVERIFY(fixture.tree().afterSetFeatureValue(name));
    QCOMPARE(fixture.takeHeard(), heard);
    const bool cleared = name.startsWith("UserSet");
    QCOMPARE(ShellHost::instance()->modifiedCameras().isEmpty(), cleared);
    QCOMPARE(fixture.accessesOfWrites(), 0);
    COMMONINTERFACE::RemoveCurrentCamModified(cameraName);
}

/// The defaults are in the selected set; only a load brings them into the device.
void tst_afterwrite::defaultsAreLoaded()
{
    WriteFixture fixture;
    QVERIFY(fixture.setOnDevice("LocBarNum", 50));
    QVERIFY(fixture.setOnDevice("UserSetSave", 0));
    QVERIFY(fixture.setOnDevice("UserSetRecoverDefault", 0));
    QCOMPARE(fixture.onDevice("LocBarNum").toInt(), 50);
    fixture.takeHeard();
    QVERIFY(fixture.tree().afterSetFeatureValue("UserSetRecoverDefault"));
    QCOMPARE(fixture.onDevice("LocBarNum").toInt(), 4);
    QCOMPARE(fixture.takeHeard().filter("SigCameraNameRemoved").size(), 1);
    QTRY_COMPARE(fixture.inRow("LocBarNum").toInt(), 4);
}

void tst_afterwrite::sourceDataFollows_data()
{
    QTest::addColumn<int>("protocol");
    QTest::addColumn<QString>("source"); // empty: none
    const char *const sources[] = {
        nullptr,
        "",
        "TcpFormat",
        "SerialFormat",
        "ResSet_Ftp_FileName_",
        "TcpFormat",
        "TcpServerFormat",
        "ProfinetFormat",
        "MelsecFormat",
        "EthernetIpFormat",
        "ModBusFormat",
        "UdpFormat",
        "FinsFormat",
        "UsbFormat",
    };
    for (int protocol = 1; protocol < 14; ++protocol) {
        const QString source = sources[protocol];
        QTest::addRow("protocol %d", protocol)
            << protocol << (source.isEmpty() ? source : source + "SourceData");
    }
}

void tst_afterwrite::sourceDataFollows()
{
    QFETCH(int, protocol);
    QFETCH(QString, source);
    WriteFixture &fixture = m_shared.get();
    if (!fixture.setOnDevice("CommunicationProtocols", protocol)) {
        QVERIFY(source.isEmpty());
        return;
    }
    fixture.setOnDevice("DMCode", 1);
    fixture.setOnDevice("LDirectionEnable", 0);
    for (const char *node : {"CommunicationProtocols", "DMCode", "LDirectionEnable"}) {
        fixture.tree().getFeatureValueFromCamera(fixture.item(node));
    }
    fixture.takeHeard();
    // A change that a refresh found costs the GUI thread no access.
    fixture.control().setLatency(50000);
    QElapsedTimer timer;
    timer.start();
    fixture.tree().itemValueChanged(fixture.item("DMCode"), false);
    QVERIFY(timer.elapsed() < 40);
    fixture.control().setLatency(0);
    QStringList lines;
    if (source.isEmpty()) {
        QTest::qWait(50);
        lines = fixture.takeHeard();
    } else {
        QTRY_VERIFY(!(lines += fixture.takeHeard()).filter("UpdateThreadInfo").isEmpty());
    }
    QCOMPARE(lines.filter("UpdateThreadInfo").filter(source).isEmpty(), source.isEmpty());
    if (source.isEmpty()) {
        return;
    }
    // After the user's own write it is read at once: the entries follow the reading of codes.
    const auto entries = [&] {
        return static_cast<const CTreeEnumationItemValue *>(fixture.item(source)->value())
            ->getDisplayList()
            .size();
    };
    QTRY_VERIFY(entries() > 0);
    fixture.edit("LDirectionEnable", 1);
    const int with = entries();
    fixture.edit("DMCode", 0);
    QCOMPARE(entries(), source == "ResSet_Ftp_FileName_SourceData" ? with : with - 1);
}

void tst_afterwrite::whiteBalanceIsFreed_data()
{
    QTest::addColumn<int>("automatic");
    QTest::addColumn<bool>("free");
    QTest::newRow("off frees") << 0 << true;
    QTest::newRow("continuous leaves the device's word") << 2 << false;
}

void tst_afterwrite::whiteBalanceIsFreed()
{
    QFETCH(int, automatic);
    QFETCH(bool, free);
    WriteFixture fixture;
    const char *const nodes[] = {"BalanceRatioSelector", "BalanceRatio"};
    for (const char *node : nodes) {
        fixture.item(node)->setReadOnly(fixture.camera().id, true);
    }
    QVERIFY(fixture.setOnDevice("BalanceWhiteAuto", automatic));
    fixture.tree().getFeatureValueFromCamera(fixture.item("BalanceWhiteAuto"));
    fixture.tree().itemValueChanged(fixture.item("BalanceWhiteAuto"), false);
    for (const char *node : nodes) {
        QCOMPARE(fixture.item(node)->readOnly(), !free);
    }
}

void tst_afterwrite::observersHear_data()
{
    QTest::addColumn<QString>("device");
    QTest::addColumn<QStringList>("heard");
    QTest::newRow("network camera")
        << "code-reader" << QStringList{"Gain from page", "Gain", "Gain", "Gain"};
    QTest::newRow("frame grabber tells of no values")
        << "grabber-camera" << QStringList{"Gain", "Gain"};
}

void tst_afterwrite::observersHear()
{
    QFETCH(QString, device);
    QFETCH(QStringList, heard);
    Observer observer;
    WriteFixture fixture(device);
    VexaFeatureTree &tree = fixture.tree();
    tree.AddFeatureObserverable(&observer);
    tree.itemValueChanged(fixture.item("Gain"), true);
    tree.itemValueChanged(fixture.item("Gain"), false);
    tree.itemVisibleStateChanged(fixture.item("Gain"));
    tree.itemReadOnlyChanged(fixture.item("Gain"), true);
    tree.itemValueChanged(nullptr, false);
    tree.itemVisibleStateChanged(nullptr);
    tree.itemReadOnlyChanged(nullptr, false);
    QCOMPARE(observer.m_heard, heard);
    tree.RemoveFeatureObserverable(&observer);
}

void tst_afterwrite::observerLeavesInTheMiddle()
{
    Observer first;
    Observer second;
    Observer last;
    WriteFixture fixture;
    first.m_pTree = &fixture.tree();
    first.m_pOther = &second;
    for (Observer *observer : {&first, &second, &last}) {
        fixture.tree().AddFeatureObserverable(observer);
    }
    fixture.tree().itemValueChanged(fixture.item("Gain"), false);
    fixture.tree().itemValueChanged(fixture.item("Gain"), false);
    QCOMPARE(first.m_heard.size(), 1);
    QVERIFY(second.m_heard.isEmpty());
    QCOMPARE(last.m_heard.size(), 2);
    fixture.tree().RemoveFeatureObserverable(&last);
}

QTEST_MAIN(tst_afterwrite)
#include "tst_afterwrite.moc"
