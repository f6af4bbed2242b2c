#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "ShellServicesModule/COMMONINTERFACE.h"
#include "UtilityKit/VexaInterface.h"
#include "host/shellservices/ShellHost.h"
#include "model/CTreeEnumationItemValue.h"
#include "model/VexaPropertyTreeItem.h"
#include "tests/support/DataTable.h"
#include "tests/tree/FeatureRecorder.h"
#include "tests/tree/WriteFixture.h"

#include <QRegularExpression>
#include <QtTest>

/// What the client hears after an edit in the view, and what any change of a row draws after it.
class tst_afterwrite : public QObject
{
    Q_OBJECT
private slots:
    void cleanupTestCase() { m_shared.reset(); }
    void tellsTheClient_data();
    void tellsTheClient();
    void renamesTheCamera();
    void defaultsAreLoaded();
    void sourceDataFollows();
    void observerLeavesInTheMiddle();

private:
    SharedFixture<WriteFixture> m_shared;
};

void tst_afterwrite::tellsTheClient_data()
{
    // "value" is that of an edit, none for the rule alone; "heard" without the lines of the dispatcher, "$" is the
    // camera's name; "before" is on the device.
    const DataTable<QString, QVariant, QStringList, Values> row("name", "value", "heard", "before");
    const auto image = [](const char *state) {
        return QStringList{QStringLiteral("bus SigVexaEventTestImgNodeChanged %1").arg(state),
                           QStringLiteral("info strTestImageInfo %1").arg(state)};
    };
    row("plain node", "FocusStep", 30, {}, {});
    row("working mode", "AutoWorkReal", 0, {"bus SigVexaEventUpdateDevListCtrl"}, {});
    row("test pictures on", "UploadTestRawPictureEnable", 1, image("ftp_open"),
        {{"FtpProtocalEnable", 1}});
    row("test pattern on", "TestPattern", 20, image("test_open"), {});
    row("other test pattern", "TestPattern", 0, image("test_close"), {{"TestPattern", 20}});
    row("name of the user set", "UserSetName", "mine", {"bus SigVexaEventUpdateCameraStatus #"},
        {});
    for (const char *name : {"PollingLensType", "PollingParamEnable"}) {
        row(name, name, 0,
            {"bus SigVexaEventCameraPollingParamChanged",
             QStringLiteral("info PollingParam changed ") + name},
            {});
    }
    row("polling node without a row of its own", "PollingAlgoROIRegion", 7, {}, {});
    for (const char *name : {"UserSetSave", "UserSetLoad", "UserSetRecoverFactory"}) {
        row(name, name, {}, {"info afterSetFeatureValue SigCameraNameRemoved strName = $"}, {});
    }
    row("tuning", "SmartTune", {},
        {"bus SigVexaEventStartSmartTune true", "info SetSmtTuneNode SmartTune"}, {});
    row("adapting", "SelfAdaptParamAdjustStart", {},
        {"bus SigVexaEventStartSmartTune false", "info SetSmtTuneNode SelfAdaptParamAdjustStart"},
        {});
    row("another command", "FocusStepPlus", {}, {}, {});
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
    const QString cameraName = fixture.tree().GetCurCameraName();
    heard.replaceInStrings("$", cameraName);
    COMMONINTERFACE::AddCurrentCamModified(cameraName);
    fixture.takeHeard();
    fixture.control().clearAccessLog();
    const bool isEdit = value.isValid();
    QVERIFY(isEdit ? fixture.edit(name, value) : fixture.tree().afterSetFeatureValue(name));
    QVERIFY(isEdit || fixture.accessesOfWrites() == 0);
    static const QRegularExpression dispatched(
        "NodeName:|strFtpEnable|UpdateFeatures|^listen |UpdateROI");
    QStringList lines = fixture.takeHeard();
    for (const QString &line : lines.filter(dispatched)) {
        lines.removeOne(line);
    }
    QCOMPARE(lines, heard);
    QCOMPARE(ShellHost::instance()->modifiedCameras().isEmpty(),
             !heard.filter("SigCameraNameRemoved").isEmpty());
    COMMONINTERFACE::RemoveCurrentCamModified(cameraName);
    if (isEdit) {
        // The write alone tells nothing of this.
        fixture.write(name, value);
        QVERIFY(heard.isEmpty() || fixture.takeHeard().filter(heard.last()).isEmpty());
    }
}

void tst_afterwrite::renamesTheCamera()
{
    WriteFixture &fixture = m_shared.fresh();
    QCameraBasicTask *basicTask = QTaskManager::Instance()->GetTaskByIDEx(fixture.camera().id);
    const QString address =
        QStringLiteral(" (%1)").arg(VexaInterface::numIP2StrIP(int(basicTask->_GetIP())));
    QString oldName = fixture.tree().GetCurCameraName();
    const auto verifyName = [&](const QString &name, const QStringList &told) {
        COMMONINTERFACE::AddCurrentCamModified(oldName);
        fixture.takeHeard();
        QVERIFY(fixture.tree().afterSetFeatureValue("DeviceUserID"));
        QCOMPARE(fixture.tree().GetCurCameraName(), name);
        QCOMPARE(basicTask->_GetCameraName(), name);
        QCOMPARE(ShellHost::instance()->modifiedCameras(), QStringList(name));
        QCOMPARE(fixture.takeHeard(), told);
        oldName = name;
    };
    for (const char *id : {"line 3", "", "%1 %2"}) {
        QVERIFY(fixture.setOnDevice("DeviceUserID", id));
        const QString name = (*id ? QString(id) : basicTask->_GetCameraModelName()) + address;
        verifyName(name,
                   {"bus SigVexaEventUpdateCameraStatus #",
                    "info afterSetFeatureValue DeviceUserID strLastName = " + oldName
                        + " strCameraName = " + name});
    }
    // A device that does not answer any more keeps its name.
    QVERIFY(fixture.setOnDevice("DeviceUserID", "other"));
    fixture.control().vanish();
    verifyName(oldName, {});
    COMMONINTERFACE::RemoveCurrentCamModified(oldName);
    m_shared.reset();
}

/// The defaults are in the selected set; only a load brings them into the device.
void tst_afterwrite::defaultsAreLoaded()
{
    WriteFixture &fixture = m_shared.get();
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

void tst_afterwrite::sourceDataFollows()
{
    WriteFixture &fixture = m_shared.fresh();
    const auto refreshed = [&fixture](int protocol) {
        fixture.setOnDevice("CommunicationProtocols", protocol);
        fixture.setOnDevice("DMCode", 1);
        fixture.setOnDevice("LDirectionEnable", 0);
        for (const char *node : {"CommunicationProtocols", "DMCode", "LDirectionEnable"}) {
            fixture.tree().getFeatureValueFromCamera(fixture.item(node));
        }
        fixture.takeHeard();
        fixture.tree().itemValueChanged(fixture.item("DMCode"), false);
        QStringList lines;
        const auto isHeard = [&] {
            lines += fixture.takeHeard().filter("UpdateThreadInfo");
            return !lines.isEmpty();
        };
        return QTest::qWaitFor(isHeard, protocol == 1 ? 300 : 5000) ? lines.join('/') : QString();
    };
    QVERIFY(!refreshed(1).contains("SourceData")); // has none
    const QString source = "UdpFormatSourceData";
    QVERIFY(refreshed(11).contains(source));
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
    QCOMPARE(entries(), with - 1);
}

void tst_afterwrite::observerLeavesInTheMiddle()
{
    WriteFixture &fixture = m_shared.get();
    FeatureRecorder first(fixture.tree());
    FeatureRecorder second(fixture.tree());
    const FeatureRecorder last(fixture.tree());
    first.m_whenTold = [&] {
        fixture.tree().RemoveFeatureObserverable(&first);
        fixture.tree().RemoveFeatureObserverable(&second);
    };
    for (int turn = 0; turn < 2; ++turn) {
        fixture.tree().itemValueChanged(fixture.item("Gain"), false);
    }
    QVERIFY(first.m_names.size() == 1 && second.m_names.isEmpty() && last.m_names.size() == 2);
}

QTEST_MAIN(tst_afterwrite)
#include "tst_afterwrite.moc"
