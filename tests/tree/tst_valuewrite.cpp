#include "ControlKit/CustomLoadingDialog.h"
#include "model/VexaPropertyTreeItem.h"
#include "tests/support/DataTable.h"
#include "tests/tree/FeatureRecorder.h"
#include "tests/tree/WriteFixture.h"

#include <QPointer>
#include <QRegularExpression>
#include <QtTest>

#include <thread>

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

} // namespace

/// Every rule that goes by type and node name, seen from the device, the boxes, the bus, the listeners and the log.
class tst_valuewrite : public QObject
{
    Q_OBJECT
private slots:
    void cleanupTestCase() { m_shared.reset(); }
    void writes_data();
    void writes();
    void suppressedPrompts();
    void swallowedWritesShowTheDeviceAgain();
    void editorOfTheLimitIsRenewed();
    void burstGivesOneRefresh();
    void valuesThatAreNone();
    void writeOfAnotherThread();
    void byItem();
    void whileABoxIsUp();
    void rereadsOneItem();
    void loadingDialog();
    void goingTreeWritesNothing();

private:
    void verifyRefreshed();

    SharedFixture<WriteFixture> m_shared;
    QStringList m_written; ///< to m_shared since the last verifyRefreshed()
};

void tst_valuewrite::writes_data()
{
    // "before" is on the device, past the tree; "rows" right after the write, ahead of any refresh; "heard" without the
    // log's line of a taken value.
    const DataTable<Values, QString, QVariant, bool, Values, QStringList> table(
        "before", "name", "value", "taken", "rows", "heard");
    const auto row = [&](const char *tag, const char *name, const QVariant &value,
                         const QStringList &heard = {}, const Values &rows = {},
                         const Values &before = {}) {
        table(tag, before, name, value, true, rows, heard);
    };
    const auto refused = [&](const char *tag, const char *name, const QVariant &value,
                             const QStringList &heard, const Values &before = {},
                             const Values &rows = {}) {
        table(tag, before, name, value, false, rows, heard);
    };
    const QString refresh = "info UpdateFeatures type 0 oStatuss 14";
    const QString region = "bus SigVexaEventUpdateROI #";
    const QString mainSub = "bus SigVexaEventUpdateMainSub # true";
    const QString role = "bus SigVexaEventStateRoleChanged #";

    row("switch", "LaserEnable", 1);
    row("direction of codes refreshes all", "LDirectionEnable", 1, {refresh});
    row("Pharmacode rereads its neighbours", "PHARMACODE", 1, {}, {{"Code128", 0}, {"Code39", 0}});
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

    row("size of the region", "AlgoRegionWidth", 64, {region});
    row("number of the region", "AlgoRegionIndex", 4, {region});
    row("main station", "MainStationID", 3, {mainSub}, {},
        {{"MultiCameraMode", 1}, {"StationRole", 1}});
    refused("port in use", "TCPDestPort", 2002,
            {QStringLiteral("prompt 3 %1|Port 2002 was not set; another service may use it. @/%2")
                 .arg(TITLE, REFUSED)});
    refused("port out of range says the same", "TCPDestPort", 70000,
            {QStringLiteral("prompt 3 %1|Port 70000 was not set; another service may use it. @/%2")
                 .arg(TITLE, OUT_OF_RANGE)});
    refused("integer out of range", "FocusStep", -5,
            {failureOf("prompt 3", "FocusStep", "-5", OUT_OF_RANGE)});
    refused("integer of 64 bits is not cut", "FocusStep", 4294967300LL,
            {failureOf("prompt 3", "FocusStep", "4294967300", OUT_OF_RANGE)});

    const QString advice = "box |The recommended packet size for this connection is 1500.";
    row("packet size at the upper end", "GevSCPSPacketSize", 2000);
    row("packet size above it", "GevSCPSPacketSize", 2004, {advice});
    row("packet size at the lower end", "DeviceStreamChannelPacketSize", 1000);
    row("packet size below it", "DeviceStreamChannelPacketSize", 996, {advice});
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
    static const QStringList pullsOthers{"PollingEnable", "PHARMACODE", "TriggerMode",
                                         "CodeReadMode", "RunningMode"};
    const bool alone = !before.isEmpty() || pullsOthers.contains(name);
    if (alone) {
        verifyRefreshed();
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
    const auto comparable = [isText](const QVariant &any) {
        return isText ? any : QVariant(any.toDouble());
    };
    QCOMPARE(comparable(fixture.onDevice(name)), comparable(taken ? value : held));
    const bool replaces =
        name == QLatin1String("CodeReadMode") && value == 3 && before.first().second == 13;
    const int writes = fixture.accessesOfWrites();
    QVERIFY2(writes <= (replaces ? 2 : 1), qPrintable(QString::number(writes)));
    if (replaces) {
        QCOMPARE(fixture.onDevice("TriggerSource").toInt(), 1);
        QTRY_COMPARE(fixture.inRow("TriggerSource").toInt(), 1);
    }
    m_written.append(name);
    QTRY_VERIFY(!CustomLoadingDialog::isLoading(1));
    if (alone) {
        verifyRefreshed();
        m_shared.reset();
    }
}

/// The refresh, and with it whatever depends on the node, follows without anybody asking.
void tst_valuewrite::verifyRefreshed()
{
    for (const QString &name : qAsConst(m_written)) {
        WriteFixture &fixture = m_shared.get();
        QTRY_COMPARE(fixture.inRow(name).toString(), fixture.onDevice(name).toString());
    }
    m_written.clear();
}

void tst_valuewrite::suppressedPrompts()
{
    verifyRefreshed(); // after the last of the writes
    WriteFixture &fixture = m_shared.get();
    const auto told = [&fixture](const char *name, const QVariant &value) {
        fixture.write(name, value);
        return fixture.takeHeard().filter(QRegularExpression("^(box|prompt) ")).size();
    };
    fixture.module().host().setPromptSuppressed(fixture.camera().id, true);
    QCOMPARE(told("GevSCPSPacketSize", 8000), 0);
    QCOMPARE(told("TCPDestPort", 2002), 0);
    QCOMPARE(told("Gain", 1e30), 0);
    // Enumerations and texts tell all the same.
    QCOMPARE(told("LineConfig0", 1), 1);
    QCOMPARE(told("DeviceUserID", QString(200, 'x')), 1);
    fixture.module().host().setPromptSuppressed(fixture.camera().id, false);
}

void tst_valuewrite::swallowedWritesShowTheDeviceAgain()
{
    const QString held = "message '%1' was not written: while polling is on it belongs to the "
                         "polling parameters.";
    const struct
    {
        const char *name;
        QVariant value;
        Values before;
        QString told;
    } rows[] = {{"LightEnable", 0, {{"PollingEnable", 1}}, held.arg("LightEnable")},
                {"LightingSelector", 3, {{"PollingEnable", 1}}, held.arg("LightingSelector")},
                {"ResSet_Ftp_Picture_Name",
                 "",
                 {{"ResSet_Ftp_Picture_Name", "kept"}},
                 "box |The name of FTP pictures cannot be empty."}};
    for (const auto &row : rows) {
        WriteFixture &fixture = m_shared.fresh();
        QVERIFY(fixture.setOnDevice(row.before.first().first, row.before.first().second));
        fixture.tree().updateFeature(fixture.item(row.name), 1);
        fixture.takeHeard();
        fixture.control().clearAccessLog();
        QVERIFY2(fixture.edit(row.name, row.value), row.name);
        QCOMPARE(fixture.accessesOfWrites(), 0);
        QCOMPARE(fixture.inRow(row.name).toString(), row.value.toString());
        QVERIFY2(fixture.takeHeard().contains(row.told), row.name);
        QTRY_COMPARE(fixture.inRow(row.name).toString(), fixture.onDevice(row.name).toString());
        QVERIFY2(fixture.onDevice(row.name).toString() != row.value.toString(), row.name);
    }
}

void tst_valuewrite::editorOfTheLimitIsRenewed()
{
    WriteFixture &fixture = m_shared.fresh();
    FeatureRecorder observer(fixture.tree());
    const char *const limited[] = {"", "LocBarNum", "IdxLocCodeNum", "StackBarNum"};
    for (const int type : {1, 2, 3}) {
        observer.m_names.clear();
        QVERIFY(fixture.write("ArithmeticType", type));
        QCOMPARE(observer.m_names, QStringList(limited[type]));
    }
}

void tst_valuewrite::burstGivesOneRefresh()
{
    WriteFixture &fixture = m_shared.fresh();
    QVERIFY(!fixture.write("FocusStep", -5)); // its row is refreshed with the next success
    QVERIFY(fixture.write("LaserEnable", 1));
    QVERIFY(fixture.write("FocusStep", 20));
    QStringList lines;
    QTRY_VERIFY(!(lines += fixture.takeHeard()).filter("UpdateThreadInfo").isEmpty());
    QCOMPARE(lines.filter("UpdateFeatures type 1 oStatuss 13").size(), 1);
    const QString names = lines.filter("UpdateThreadInfo").first();
    QVERIFY2(names.count("FocusStep") == 1 && names.contains("LaserEnable"), qPrintable(names));
}

void tst_valuewrite::valuesThatAreNone()
{
    const struct
    {
        const char *fault;
        const char *type;
        const char *name;
        QVariant value;
        int boxes;
    } rows[] = {
        {"text for a number", "Integer", "FocusStep", "many", 1},
        {"nothing for a number", "Float", "Gain", QVariant(), 1},
        {"word for a switch", "Boolean", "LaserEnable", "on", 1},
        {"markup, told of after a failure too", "Enumeration", "PollingLensType", "<i>1</i>", 1},
        {"type without values", "Category", "ReadSetting", 1, 0},
        {"no name", "Integer", "", 1, 0}};
    WriteFixture &fixture = m_shared.get();
    for (const auto &row : rows) {
        QVERIFY2(!fixture.tree().setFeatureValue(row.type, row.name, row.value), row.fault);
        QVERIFY2(fixture.accessesOfWrites() == 0, row.fault);
        const QStringList told = fixture.takeHeard().filter(QRegularExpression("^box "));
        QVERIFY2(told.size() == row.boxes && told.filter("<i>").isEmpty(), row.fault);
    }
}

void tst_valuewrite::whileABoxIsUp()
{
    static const struct
    {
        const char *meanwhile;
        const char *name;
    } rows[] = {{"the same again", "UserSetRecover"},       {"declined", "UserSetRecoverPartly"},
                {"another write", "UserSetRecoverPartly"},  {"device gone", "UserSetRecover"},
                {"tree removed", "UserSetRecover"}, // under a warning
                {"tree removed", "ResSet_Ftp_Picture_Name"}}; // under a notice
    for (const auto &row : rows) {
        WriteFixture &fixture = m_shared.get();
        const QPointer<VexaFeatureTree> tree = &fixture.tree();
        const QString meanwhile = row.meanwhile;
        const bool removed = meanwhile == "tree removed";
        const bool other = meanwhile == "another write";
        const bool gone = meanwhile == "device gone";
        QVariant inside;
        fixture.m_bAnswersYes = meanwhile != "declined";
        fixture.m_whileBoxIsUp = [&] {
            if (removed) {
                fixture.module().close(fixture.camera());
            } else if (gone) {
                fixture.control().vanish();
            } else if (meanwhile != "declined") {
                inside =
                    other ? fixture.write("FocusStep", 33) : fixture.write(row.name, QVariant());
            }
        };
        const bool written = fixture.write(row.name, QString());
        QVERIFY2(written == (other || meanwhile == "the same again"), row.meanwhile);
        QVERIFY2(inside.toBool() == other, row.meanwhile);
        QVERIFY2(removed || fixture.accessesOfWrites() == int(written) + int(other) + int(gone),
                 row.meanwhile);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY2(tree.isNull() == removed, row.meanwhile);
        fixture.m_bAnswersYes = true;
        if (removed || gone) {
            m_shared.reset();
        }
    }
}

void tst_valuewrite::writeOfAnotherThread()
{
    WriteFixture &fixture = m_shared.get();
    std::thread worker(
        [&fixture] { fixture.tree().SendSetFeatureValueSignal("Integer", "FocusStep", 44); });
    worker.join();
    QCOMPARE(fixture.accessesOfWrites(), 0); // not on the caller's thread
    QTRY_COMPARE(fixture.onDevice("FocusStep").toInt(), 44);
    QTRY_COMPARE(fixture.inRow("FocusStep").toInt(), 44);
    fixture.tree().SendSetFeatureValueSignal("Integer", "FocusStep", 45);
    QCOMPARE(fixture.onDevice("FocusStep").toInt(), 45);
}

void tst_valuewrite::byItem()
{
    static const struct
    {
        const char *name;
        QVariant value;
        bool update;
        bool rowFollows; // at once
    } rows[] = {{"FocusStep", 7, true, true},
                {"FocusStep", 8, false, false},
                {"FocusStep", -7, true, false}, // refused
                {"DeviceUserID", "left", true, true}};
    WriteFixture &fixture = m_shared.fresh();
    FeatureRecorder observer(fixture.tree());
    for (const auto &row : rows) {
        observer.m_names.clear();
        QCOMPARE(
            fixture.tree().setFeatureValue(fixture.item(row.name), row.value, row.update, true),
            row.value != -7);
        QCOMPARE(fixture.inRow(row.name) == row.value, row.rowFollows);
        QCOMPARE(observer.m_names, row.rowFollows ? QStringList(row.name) : QStringList());
        QCOMPARE(fixture.takeHeard().filter("afterSetFeatureValue").size(), 0);
    }
    QVERIFY(!fixture.tree().setFeatureValue(nullptr, 1, true, false));
}

void tst_valuewrite::rereadsOneItem()
{
    const QMap<QString, QVariant> values{{"LaserEnable", 1},
                                         {"FocusStep", 19},
                                         {"PollingTarget", 2},
                                         {"Gain", 3.5},
                                         {"DeviceUserID", "other"}};
    WriteFixture &fixture = m_shared.fresh();
    VexaFeatureTree &tree = fixture.tree();
    FeatureRecorder observer(tree);
    for (auto value = values.cbegin(); value != values.cend(); ++value) {
        QVERIFY(fixture.setOnDevice(value.key(), value.value()));
        QVERIFY(tree.rereadFeatureValue(fixture.item(value.key()), false));
        QCOMPARE(fixture.inRow(value.key()).toString(), value->toString());
    }
    QVERIFY(!tree.rereadFeatureValue(fixture.item("UserSetSave"), false)); // has no value
    QVERIFY(!tree.rereadFeatureValue(nullptr, true));
    QVERIFY(observer.m_names.isEmpty());
    fixture.control().vanish();
    QVERIFY(!tree.rereadFeatureValue(fixture.item("FocusStep"), true));
    QCOMPARE(observer.m_names, QStringList("FocusStep")); // told although nothing was read
}

void tst_valuewrite::loadingDialog()
{
    WriteFixture &fixture = m_shared.fresh();
    QTRY_VERIFY(!CustomLoadingDialog::isLoading(1));
    QVERIFY(!fixture.write("PollingEnable", 77) && fixture.write("LaserEnable", 1));
    QVERIFY(!CustomLoadingDialog::isLoading(1));
    QVERIFY(fixture.write("PollingEnable", 1));
    QVERIFY(CustomLoadingDialog::isLoading(1));
    // A loss ahead of the refresh hides it.
    fixture.module().host().closeCamera(fixture.camera().id);
    QTRY_VERIFY(!CustomLoadingDialog::isLoading(1));
    fixture.takeHeard();
    QVERIFY(!fixture.write("LaserEnable", 1));
    QVERIFY(fixture.takeHeard().filter("box ").isEmpty());
    m_shared.reset();
}

void tst_valuewrite::goingTreeWritesNothing()
{
    WriteFixture &fixture = m_shared.get();
    const QString tag = fixture.item("LaserEnable")->tagName();
    fixture.tree().readyForDelete();
    QVERIFY(!fixture.tree().setFeatureValue(tag, "LaserEnable", 1));
    QVERIFY(!fixture.tree().OnEnumerationNodeValueChanged("LineConfig0", 1));
    QCOMPARE(fixture.onDevice("LaserEnable").toInt(), 0);
    QCOMPARE(fixture.takeHeard(), QStringList("info ready for delete"));
}

QTEST_MAIN(tst_valuewrite)
#include "tst_valuewrite.moc"
