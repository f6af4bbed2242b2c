#include "ControlKit/CustomLoadingDialog.h"
#include "DeviceTaskModule/VexaFeatureObserverable.h"
#include "model/VexaPropertyTreeItem.h"
#include "shell/PollingRoles.h"
#include "tests/tree/WriteFixture.h"

#include <QPointer>
#include <QRegularExpression>
#include <QStandardItem>
#include <QtTest>

#include <thread>

using Values = QVector<QPair<QString, QVariant>>; ///< feature and value; a command takes any value
Q_DECLARE_METATYPE(Values)

namespace {

const char *const TITLE = "The feature could not be set.";

QString failureOf(const char *kind, const char *name, const char *value, const char *codeLine)
{
    return QStringLiteral("%1 %2|Node '%3': value '%4' was not saved. @/%5")
        .arg(kind, TITLE, name, value, codeLine);
}

const char *const NOT_NOW = "0x90006104: The node is not accessible in its present state.";
const char *const OUT_OF_RANGE = "0x90006202: The value is out of range.";
const char *const REFUSED = "0x90006206: The device refused the access.";

class NameRecorder : public VexaFeatureObserverable
{
public:
    void notifyFeatureChanged(const QString &name, bool) override { m_names.append(name); }
    void notifyFeatureTreeReleased(long int) override { }
    QStringList m_names;
};

} // namespace

/// Every rule that goes by type and node name, seen from the device, the boxes, the bus, the listeners and the log.
class tst_valuewrite : public QObject
{
    Q_OBJECT
private slots:
    void init() { m_shared.leaveOtherFunctions(); }
    void cleanupTestCase() { m_shared.reset(); }
    void writes_data();
    void writes();
    void suppressedPrompts_data();
    void suppressedPrompts();
    void swallowedWritesShowTheDeviceAgain_data();
    void swallowedWritesShowTheDeviceAgain();
    void pollingRowsFollow_data();
    void pollingRowsFollow();
    void editorOfTheLimitIsRenewed();
    void burstGivesOneRefresh();
    void valuesThatAreNone_data();
    void valuesThatAreNone();
    void loadingDialog_data();
    void loadingDialog();
    void lossBeforeTheRefreshHidesTheDialog();
    void whileABoxIsUp_data();
    void whileABoxIsUp();
    void writeOfAnotherThread();
    void goingTreeWritesNothing();
    void byItem_data();
    void byItem();
    void rereadsOneItem_data();
    void rereadsOneItem();

private:
    SharedWriteFixture m_shared;
};

void tst_valuewrite::writes_data()
{
    QTest::addColumn<Values>("before"); // on the device, past the tree
    QTest::addColumn<QString>("name");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("taken");
    QTest::addColumn<Values>("rows"); // right after the write, before any refresh
    QTest::addColumn<QStringList>("heard"); // without the log's line of a taken value
    const auto row = [](const char *tag, const char *name, const QVariant &value,
                        const QStringList &heard = {}, const Values &rows = {},
                        const Values &before = {}) {
        QTest::newRow(tag) << before << QString(name) << value << true << rows << heard;
    };
    const auto refused = [](const char *tag, const char *name, const QVariant &value,
                            const QStringList &heard, const Values &before = {},
                            const Values &rows = {}) {
        QTest::newRow(tag) << before << QString(name) << value << false << rows << heard;
    };
    const QString refresh = "info UpdateFeatures type 0 oStatuss 14";
    const QString region = "bus SigVexaEventUpdateROI #";
    const QString mainSub = "bus SigVexaEventUpdateMainSub # true";
    const QString role = "bus SigVexaEventStateRoleChanged #";

    row("switch", "LaserEnable", 1);
    row("direction of codes refreshes all", "LDirectionEnable", 1, {refresh});
    row("Pharmacode rereads its neighbours", "PHARMACODE", 1, {}, {{"Code128", 0}, {"Code39", 0}});
    row("second Pharmacode too", "PHARMACODE2d", 1, {}, {{"Code128", 0}});
    row("test pictures by FTP", "UploadTestRawPictureEnable", 1,
        {"listen 19 ftp_open", "info strFtpEnable ftp_open"}, {}, {{"FtpProtocalEnable", 1}});
    row("no test pictures", "UploadTestRawPictureEnable", 0,
        {"listen 19 ftp_close", "info strFtpEnable ftp_close"});
    refused("test pictures without FTP show the device's state", "UploadTestRawPictureEnable", 1,
            {failureOf("box", "UploadTestRawPictureEnable", "1", NOT_NOW),
             "info errCodeStr: 0x90006104 [CameraID:#"},
            {{"FtpProtocalEnable", 1}, {"UploadTestRawPictureEnable", 1}, {"FtpProtocalEnable", 0}},
            {{"UploadTestRawPictureEnable", 1}});
    row("region switch", "AlgoRegionEnable", 1, {region});
    row("PROFINET tells of the restart", "ProfinetEnable", 1,
        {"box |PROFINET takes effect after the parameters have been saved and the device has been "
         "restarted."});
    row("PROFINET off tells nothing", "ProfinetEnable", 0);

    for (const char *name :
         {"AlgoRegionWidth", "AlgoRegionHeight", "AlgoRegionLeftX", "AlgoRegionLeftY"}) {
        row(name, name, 64, {region});
    }
    row("number of the region", "AlgoRegionIndex", 4, {region});
    row("main station", "MainStationID", 3, {mainSub}, {},
        {{"MultiCameraMode", 1}, {"StationRole", 1}});
    const QPair<const char *, const char *> ports[] = {
        {"TCPDestPort", "2002"},    {"FtpHostPort", "502"},       {"TcpServerPort", "2001"},
        {"MelsecServerPort", "21"}, {"ModBusServerPort", "7500"}, {"UdpDestPort", "5007"},
        {"TcpUpgPort", "2003"},
    };
    for (const auto &port : ports) {
        refused(port.first, port.first, QString(port.second).toInt(),
                {QStringLiteral("prompt 3 %1|Port %2 was not set; another service may use it. @/%3")
                     .arg(TITLE, port.second, REFUSED)});
    }
    refused("port out of range says the same", "TCPDestPort", 70000,
            {QStringLiteral("prompt 3 %1|Port 70000 was not set; another service may use it. @/%2")
                 .arg(TITLE, OUT_OF_RANGE)});
    refused("integer out of range", "FocusStep", -5,
            {failureOf("prompt 3", "FocusStep", "-5", OUT_OF_RANGE)});
    refused("integer of 64 bits is not cut", "FocusStep", 4294967300LL,
            {failureOf("prompt 3", "FocusStep", "4294967300", OUT_OF_RANGE)});

    const QString advice = "box |The recommended packet size for this connection is 1500.";
    for (const char *name : {"GevSCPSPacketSize", "DeviceStreamChannelPacketSize"}) {
        row(qPrintable(QString(name) + " at the upper end"), name, 2000, {});
        row(qPrintable(QString(name) + " above it"), name, 2004, {advice});
        row(qPrintable(QString(name) + " at the lower end"), name, 1000, {});
        row(qPrintable(QString(name) + " below it"), name, 996, {advice});
    }

    row("polling", "PollingEnable", 1, {"listen 18 #", refresh});
    row("protocol", "CommunicationProtocols", 7, {"listen 18 #"});
    row("polling target", "PollingTarget", 1, {"listen 18 #"});
    row("set of polling parameters", "PollingParam", 2);
    row("trigger mode rereads the frames", "TriggerMode", 1, {}, {{"MultiframeHandleMode", 1}});
    row("trigger off", "TriggerMode", 0, {}, {{"MultiframeHandleMode", 0}}, {{"TriggerMode", 1}});
    row("reading mode replaces the source", "CodeReadMode", 3, {refresh}, {{"TriggerSource", 13}},
        {{"TriggerSource", 13}});
    row("reading mode leaves another source", "CodeReadMode", 3, {refresh}, {{"TriggerSource", 7}},
        {{"TriggerSource", 7}});
    row("other reading mode", "CodeReadMode", 1, {refresh}, {}, {{"TriggerSource", 13}});
    row("camera of regions", "AlgoCameraSelector", 1, {region});
    row("several cameras", "MultiCameraMode", 1, {role, mainSub});
    row("role of the station", "StationRole", 1, {role, mainSub});
    row("running mode", "RunningMode", 2);
    row("test pattern", "TestPattern", 20, {"listen 19 test_open"});
    row("no test pattern", "TestPattern", 0, {"listen 19 test_close"});
    refused("test pattern fails silently", "TestPattern", 20, {}, {{"AcquisitionStart", 0}});
    refused("flash mode fails silently", "FlashMode", 1, {}, {{"PollingEnable", 1}});
    row("Bluetooth tells of the restart", "BleOutput", 1,
        {"prompt 2 |Save the parameters and restart the device for this setting to take effect."});
    refused("wiring by a switch", "LineConfig0", 1,
            {QStringLiteral("box %1|The line cannot be configured in the present state. Check the "
                            "mode of the line and stop what uses it first./%2")
                 .arg(TITLE, NOT_NOW)});
    refused("wiring while grabbing", "LineConfig1", 0,
            {QStringLiteral("box %1|The line cannot be configured in the present state. Check the "
                            "mode of the line and stop what uses it first./%2")
                 .arg(TITLE, NOT_NOW)},
            {{"AcquisitionStart", 0}});
    refused("wiring that does not exist", "LineConfig1", 77,
            {failureOf("box", "LineConfig1", "77", OUT_OF_RANGE)});
    row("light while polling is off", "LightEnable", 0);
    refused("entry without a name", "PollingTarget", 99,
            {failureOf("box", "PollingTarget", "99", OUT_OF_RANGE)});

    row("float", "Gain", 2.5);
    refused("float out of range", "Gain", 1e30, {failureOf("box", "Gain", "1e+30", OUT_OF_RANGE)});
    row("text", "DeviceUserID", "line 3");
    refused("text as markup, too long", "DeviceUserID", "<b>" + QString(200, 'x'),
            {failureOf("box", "DeviceUserID", qPrintable("&lt;b&gt;" + QString(200, 'x')),
                       OUT_OF_RANGE)});
    refused(
        "text with a placeholder", "DeviceUserID", "%2%3" + QString(200, 'x'),
        {failureOf("box", "DeviceUserID", qPrintable("%2%3" + QString(200, 'x')), OUT_OF_RANGE)});
}

void tst_valuewrite::writes()
{
    QFETCH(Values, before);
    QFETCH(QString, name);
    QFETCH(QVariant, value);
    QFETCH(bool, taken);
    QFETCH(Values, rows);
    QFETCH(QStringList, heard);
    // Those that leave others alone share a device.
    static const QStringList pullsOthers{"PollingEnable", "PHARMACODE",   "PHARMACODE2d",
                                         "TriggerMode",   "CodeReadMode", "RunningMode"};
    const bool alone = !before.isEmpty() || pullsOthers.contains(name);
    if (alone) {
        m_shared.reset();
    }
    WriteFixture &fixture = m_shared.get();
    for (const auto &step : qAsConst(before)) {
        QVERIFY2(fixture.setOnDevice(step.first, step.second), qPrintable(step.first));
    }
    fixture.takeHeard();
    const QVariant held = fixture.onDevice(name);
    fixture.control().clearAccessLog();

    QCOMPARE(fixture.write(name, value), taken);
    QStringList lines = fixture.takeHeard().filter(
        QRegularExpression("^(?!.*(UpdateFeatures type 1|UpdateThreadInfo))"));
    const bool isText = value.type() == QVariant::String;
    if (taken) {
        const QString line =
            QStringLiteral("NodeName:%1, NodeValue:%2, [CameraID:#]").arg(name, value.toString());
        const bool isInfo = isText || fixture.item(name)->tagName() == QLatin1String("Boolean");
        QVERIFY2(lines.removeOne((isInfo ? "info " : "critical ") + line), qPrintable(line));
    }
    QCOMPARE(lines, heard);
    for (const auto &row : qAsConst(rows)) {
        QCOMPARE(fixture.inRow(row.first).toLongLong(), row.second.toLongLong());
    }
    const QVariant now = fixture.onDevice(name);
    QCOMPARE(isText ? now : QVariant(now.toDouble()),
             !taken ? (isText ? held : QVariant(held.toDouble()))
                    : (isText ? value : QVariant(value.toDouble())));
    const bool replaces =
        name == QLatin1String("CodeReadMode") && value == 3 && before.first().second == 13;
    const int writes = fixture.accessesOfWrites();
    QVERIFY2(writes <= (replaces ? 2 : 1), qPrintable(QString::number(writes)));
    if (replaces) {
        QCOMPARE(fixture.onDevice("TriggerSource").toInt(), 1);
        QTRY_COMPARE(fixture.inRow("TriggerSource").toInt(), 1);
    }
    // The refresh, and with it whatever depends on the node, follows without anybody asking.
    QTRY_COMPARE(fixture.inRow(name).toString(), fixture.onDevice(name).toString());
    QTRY_VERIFY(!CustomLoadingDialog::isLoading(1));
    if (alone) {
        m_shared.reset();
    }
}

void tst_valuewrite::suppressedPrompts_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("told"); // lines of boxes and prompts
    QTest::newRow("advice") << "GevSCPSPacketSize" << QVariant(8000) << 0;
    QTest::newRow("integer") << "TCPDestPort" << QVariant(2002) << 0;
    QTest::newRow("float") << "Gain" << QVariant(1e30) << 0;
    QTest::newRow("an enumeration tells all the same") << "LineConfig0" << QVariant(1) << 1;
    QTest::newRow("a text too") << "DeviceUserID" << QVariant(QString(200, 'x')) << 1;
}

void tst_valuewrite::suppressedPrompts()
{
    QFETCH(QString, name);
    QFETCH(QVariant, value);
    QFETCH(int, told);
    WriteFixture &fixture = m_shared.get();
    fixture.module().host().setPromptSuppressed(fixture.camera().id, true);
    fixture.write(name, value);
    QCOMPARE(fixture.takeHeard().filter(QRegularExpression("^(box|prompt) ")).size(), told);
}

void tst_valuewrite::swallowedWritesShowTheDeviceAgain_data()
{
    QTest::addColumn<bool>("polling");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("told");
    const QString held = "message '%1' was not written: while polling is on it belongs to the "
                         "polling parameters.";
    QTest::newRow("light") << true << "LightEnable" << QVariant(0) << held.arg("LightEnable");
    QTest::newRow("segment") << true << "LightingSelector" << QVariant(3)
                             << held.arg("LightingSelector");
    QTest::newRow("name of FTP pictures") << false << "ResSet_Ftp_Picture_Name" << QVariant("")
                                          << "box |The name of FTP pictures cannot be empty.";
}

void tst_valuewrite::swallowedWritesShowTheDeviceAgain()
{
    QFETCH(bool, polling);
    QFETCH(QString, name);
    QFETCH(QVariant, value);
    QFETCH(QString, told);
    WriteFixture fixture;
    QVERIFY(fixture.setOnDevice("PollingEnable", polling));
    QVERIFY(name != "ResSet_Ftp_Picture_Name" || fixture.setOnDevice(name, "kept"));
    fixture.tree().updateFeature(fixture.item(name), 1);
    fixture.takeHeard();
    fixture.control().clearAccessLog();
    QVERIFY(fixture.edit(name, value));
    QCOMPARE(fixture.accessesOfWrites(), 0);
    QCOMPARE(fixture.inRow(name).toString(), value.toString());
    QVERIFY(fixture.takeHeard().contains(told));
    QTRY_COMPARE(fixture.inRow(name).toString(), fixture.onDevice(name).toString());
    QVERIFY(fixture.onDevice(name).toString() != value.toString());
}

void tst_valuewrite::pollingRowsFollow_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("shown"); // in the host's table; empty: the row stays
    const auto row = [](const char *name, const QVariant &value, const char *shown) {
        QTest::newRow(name) << value << QString(shown);
    };
    row("PollingParamEnable", 0, "0");
    row("PollingFocusEnable", 1, "1");
    row("PollingLightEnable", 0, "0");
    row("PollingSingleParamTimeout", 70, "70");
    row("PollingSingleParamCodeNum", 7, "7");
    row("PollingSingleParamPeriod", 7, "7");
    row("PollingAlgoROIRegion", 7, "7");
    row("PollingFocusPos", 7, "7");
    row("PollingAlgoROIRegionIndex", 7, "7");
    row("PollingIOAction", 1, "1");
    row("PollingLightSelector", 2, "2");
    row("PollingLensType", 0, "0");
    row("PollingExposureTime", 900.126, "900.13");
    row("PollingGain", 7, "7.00");
    row("PollingGamma", 1.5, "1.50");
    row("PollingParamName", "one", "one");
    row("PollingVertline", 7, "");
    // A refused value.
    row("PollingLensType refused", 99, "99");
    row("PollingIOAction refused", 99, "");
}

void tst_valuewrite::pollingRowsFollow()
{
    QFETCH(QVariant, value);
    QFETCH(QString, shown);
    const QStringList tag = QString(QTest::currentDataTag()).split(' ');
    WriteFixture &fixture = m_shared.get();
    QVERIFY(fixture.setOnDevice("PollingParam", 1));
    fixture.tree().getFeatureValueFromCamera(fixture.item("PollingParam"));
    QStandardItem name(tag.first());
    QStandardItem cell;
    fixture.module().mainWidget().SetPollingMap(fixture.camera().id, {{0, {&name, &cell}}});
    QCOMPARE(fixture.write(tag.first(), value), tag.size() == 1);
    QCOMPARE(cell.data(POLLING_ROLE_VALUE).toString(), shown);
    fixture.module().mainWidget().DeletePollingMap(fixture.camera().id);
}

void tst_valuewrite::editorOfTheLimitIsRenewed()
{
    NameRecorder observer;
    WriteFixture fixture;
    fixture.tree().AddFeatureObserverable(&observer);
    const char *const limited[] = {"", "LocBarNum", "IdxLocCodeNum", "StackBarNum"};
    for (const int type : {1, 2, 3}) {
        observer.m_names.clear();
        QVERIFY(fixture.write("ArithmeticType", type));
        QCOMPARE(observer.m_names, QStringList(limited[type]));
    }
    fixture.tree().RemoveFeatureObserverable(&observer);
}

void tst_valuewrite::burstGivesOneRefresh()
{
    WriteFixture fixture;
    QVERIFY(!fixture.write("FocusStep", -5)); // its row is refreshed with the next success
    QVERIFY(fixture.write("LaserEnable", 1));
    QVERIFY(fixture.write("FocusStep", 20));
    QStringList lines;
    QTRY_VERIFY(!(lines += fixture.takeHeard()).filter("UpdateThreadInfo").isEmpty());
    QCOMPARE(lines.filter("UpdateFeatures type 1 oStatuss 13").size(), 1);
    const QString names = lines.filter("UpdateThreadInfo").first();
    QVERIFY2(names.count("FocusStep") == 1 && names.contains("LaserEnable"), qPrintable(names));
}

void tst_valuewrite::valuesThatAreNone_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("boxes");
    QTest::newRow("text for a number") << "Integer"
                                       << "FocusStep" << QVariant("many") << 1;
    QTest::newRow("nothing for a number") << "Float"
                                          << "Gain" << QVariant() << 1;
    QTest::newRow("word for a switch") << "Boolean"
                                       << "LaserEnable" << QVariant("on") << 1;
    QTest::newRow("markup, of a node that is told of after a failure too")
        << "Enumeration"
        << "PollingLensType" << QVariant("<i>1</i>") << 1;
    QTest::newRow("type without values") << "Category"
                                         << "ReadSetting" << QVariant(1) << 0;
    QTest::newRow("no name") << "Integer"
                             << "" << QVariant(1) << 0;
}

void tst_valuewrite::valuesThatAreNone()
{
    QFETCH(QString, type);
    QFETCH(QString, name);
    QFETCH(QVariant, value);
    QFETCH(int, boxes);
    WriteFixture &fixture = m_shared.get();
    QVERIFY(!fixture.tree().setFeatureValue(type, name, value));
    QCOMPARE(fixture.accessesOfWrites(), 0);
    const QStringList told = fixture.takeHeard().filter(QRegularExpression("^box "));
    QCOMPARE(told.size(), boxes);
    QVERIFY(told.filter("<i>").isEmpty());
}

void tst_valuewrite::loadingDialog_data()
{
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("up"); // right after the write
    QTest::newRow("polling") << "code-reader"
                             << "PollingEnable" << QVariant(1) << true;
    QTest::newRow("refused polling") << "code-reader"
                                     << "PollingEnable" << QVariant(77) << false;
    QTest::newRow("plain node") << "code-reader"
                                << "LaserEnable" << QVariant(1) << false;
    QTest::newRow("frame grabber") << "grabber-camera"
                                   << "Gain" << QVariant(2.0) << true;
    QTest::newRow("refused on a frame grabber") << "grabber-camera"
                                                << "Gain" << QVariant(1e30) << false;
}

void tst_valuewrite::loadingDialog()
{
    QFETCH(QString, device);
    QFETCH(QString, name);
    QFETCH(QVariant, value);
    QFETCH(bool, up);
    WriteFixture fixture(device);
    const int key = device == "grabber-camera" ? int(fixture.camera().id) + 3 : 1;
    QTRY_VERIFY(!CustomLoadingDialog::isLoading(key));
    fixture.write(name, value);
    QCOMPARE(CustomLoadingDialog::isLoading(key), up);
    QTRY_VERIFY(!CustomLoadingDialog::isLoading(key));
}

void tst_valuewrite::lossBeforeTheRefreshHidesTheDialog()
{
    WriteFixture fixture;
    QVERIFY(fixture.write("PollingEnable", 1));
    QVERIFY(CustomLoadingDialog::isLoading(1));
    fixture.module().host().closeCamera(fixture.camera().id);
    QTRY_VERIFY(!CustomLoadingDialog::isLoading(1));
    QVERIFY(!fixture.write("LaserEnable", 1));
    QVERIFY(fixture.takeHeard().filter("box ").isEmpty());
}

void tst_valuewrite::whileABoxIsUp_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("meanwhile");
    QTest::newRow("tree removed under a warning") << "UserSetRecover"
                                                  << "close";
    QTest::newRow("tree removed under a notice") << "ResSet_Ftp_Picture_Name"
                                                 << "close";
    QTest::newRow("same write again") << "UserSetRecover"
                                      << "again";
    QTest::newRow("another write") << "UserSetRecoverPartly"
                                   << "other";
    QTest::newRow("device gone") << "UserSetRecover"
                                 << "vanish";
    QTest::newRow("declined") << "UserSetRecoverPartly"
                              << "no";
}

void tst_valuewrite::whileABoxIsUp()
{
    QFETCH(QString, name);
    QFETCH(QString, meanwhile);
    WriteFixture fixture;
    const QPointer<VexaFeatureTree> tree = &fixture.tree();
    QVariant inside;
    fixture.m_bAnswersYes = meanwhile != "no";
    fixture.m_whileBoxIsUp = [&] {
        if (meanwhile == "close") {
            fixture.module().close(fixture.camera());
        } else if (meanwhile == "again") {
            inside = fixture.write(name, QVariant());
        } else if (meanwhile == "other") {
            inside = fixture.write("FocusStep", 33);
        } else if (meanwhile == "vanish") {
            fixture.control().vanish();
        }
    };
    const bool written = fixture.write(name, QString());
    QCOMPARE(written, meanwhile == "again" || meanwhile == "other");
    QCOMPARE(inside.toBool(), meanwhile == "other");
    const int commands = name.startsWith("UserSet") && written ? 1 : 0;
    if (meanwhile != "close") {
        QCOMPARE(fixture.accessesOfWrites(),
                 commands + (meanwhile == "other" ? 1 : 0) + (meanwhile == "vanish" ? 1 : 0));
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(tree.isNull(), meanwhile == "close");
}

void tst_valuewrite::writeOfAnotherThread()
{
    WriteFixture fixture;
    std::thread worker(
        [&fixture] { fixture.tree().SendSetFeatureValueSignal("Integer", "FocusStep", 44); });
    worker.join();
    QCOMPARE(fixture.accessesOfWrites(), 0); // not on the caller's thread
    QTRY_COMPARE(fixture.onDevice("FocusStep").toInt(), 44);
    QTRY_COMPARE(fixture.inRow("FocusStep").toInt(), 44);
    fixture.tree().SendSetFeatureValueSignal("Integer", "FocusStep", 45);
    QCOMPARE(fixture.onDevice("FocusStep").toInt(), 45);
}

void tst_valuewrite::goingTreeWritesNothing()
{
    WriteFixture fixture;
    const QString tag = fixture.item("LaserEnable")->tagName();
    fixture.tree().readyForDelete();
    QVERIFY(!fixture.tree().setFeatureValue(tag, "LaserEnable", 1));
    QVERIFY(!fixture.tree().OnEnumerationNodeValueChanged("LineConfig0", 1));
    QCOMPARE(fixture.onDevice("LaserEnable").toInt(), 0);
    QCOMPARE(fixture.takeHeard(), QStringList("info ready for delete"));
}

void tst_valuewrite::byItem_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("update");
    QTest::addColumn<bool>("rowFollows"); // at once
    QTest::newRow("row follows") << "FocusStep" << QVariant(7) << true << true;
    QTest::newRow("row stays") << "FocusStep" << QVariant(8) << false << false;
    QTest::newRow("refused") << "FocusStep" << QVariant(-7) << true << false;
    QTest::newRow("text") << "DeviceUserID" << QVariant("left") << true << true;
}

void tst_valuewrite::byItem()
{
    QFETCH(QString, name);
    QFETCH(QVariant, value);
    QFETCH(bool, update);
    QFETCH(bool, rowFollows);
    NameRecorder observer;
    WriteFixture fixture;
    fixture.tree().AddFeatureObserverable(&observer);
    QCOMPARE(fixture.tree().setFeatureValue(fixture.item(name), value, update, true), value != -7);
    QCOMPARE(fixture.inRow(name) == value, rowFollows);
    QCOMPARE(observer.m_names, rowFollows ? QStringList(name) : QStringList());
    QCOMPARE(fixture.takeHeard().filter("afterSetFeatureValue").size(), 0);
    fixture.tree().RemoveFeatureObserverable(&observer);
    QVERIFY(!fixture.tree().setFeatureValue(nullptr, value, update, false));
}

void tst_valuewrite::rereadsOneItem_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("boolean") << "LaserEnable" << QVariant(1);
    QTest::newRow("integer") << "FocusStep" << QVariant(19);
    QTest::newRow("enumeration") << "PollingTarget" << QVariant(2);
    QTest::newRow("float") << "Gain" << QVariant(3.5);
    QTest::newRow("text") << "DeviceUserID" << QVariant("other");
    QTest::newRow("command has none") << "UserSetSave" << QVariant();
}

void tst_valuewrite::rereadsOneItem()
{
    QFETCH(QString, name);
    QFETCH(QVariant, value);
    NameRecorder observer;
    WriteFixture fixture;
    fixture.tree().AddFeatureObserverable(&observer);
    VexaPropertyTreeItem *item = fixture.item(name);
    const bool hasValue = value.isValid();
    QVERIFY(!hasValue || fixture.setOnDevice(name, value));
    QCOMPARE(fixture.tree().rereadFeatureValue(item, false), hasValue);
    QVERIFY(observer.m_names.isEmpty());
    if (hasValue) {
        QCOMPARE(fixture.inRow(name).toString(), value.toString());
    }
    fixture.control().vanish();
    QVERIFY(!fixture.tree().rereadFeatureValue(item, true));
    QCOMPARE(observer.m_names, QStringList(name)); // told although nothing was read
    fixture.tree().RemoveFeatureObserverable(&observer);
    QVERIFY(!fixture.tree().rereadFeatureValue(nullptr, true));
}

QTEST_MAIN(tst_valuewrite)
#include "tst_valuewrite.moc"
