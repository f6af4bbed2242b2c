#include "OpenedDevice.h"

#include <QtTest>

/// What the firmware of code-reader does when its registers are written.
class tst_CodeReaderBehaviour : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void refuses_data();
    void refuses();
    void pullsOthersAlong_data();
    void pullsOthersAlong();
    void userSetsAreAddedAndDeleted();
    void recoveries_data();
    void recoveries();
    void recoverFactoryRestarts();
    void focusTakesItsTime();
    void countersMoveWhileGrabbing();
    void softwareTriggerCountsWhenAskedTo();

private:
    SimulatedDevices::Simulated m_simulated;
    std::unique_ptr<OpenedDevice> m_pDevice;
};

using Steps = QVector<QPair<QString, qint64>>; ///< feature and value; -1 runs a command
Q_DECLARE_METATYPE(Steps)

namespace {

void apply(OpenedDevice &device, const Steps &steps)
{
    for (const auto &step : steps) {
        const bool done = step.second < 0 ? device.execute(step.first)
                                          : device.setInteger(step.first, step.second);
        QVERIFY2(done, qPrintable(step.first + ": " + device.m_strError));
    }
}

} // namespace

void tst_CodeReaderBehaviour::init()
{
    m_simulated = SimulatedDevices::builtIn(QStringLiteral("code-reader"));
    m_pDevice = std::make_unique<OpenedDevice>(m_simulated);
}

void tst_CodeReaderBehaviour::refuses_data()
{
    QTest::addColumn<Steps>("before");
    QTest::addColumn<QString>("node");
    QTest::addColumn<qint64>("value");
    QTest::addColumn<int>("error");
    const int denied = ARV_DEVICE_ERROR_PROTOCOL_ERROR_ACCESS_DENIED;
    const int invalid = ARV_DEVICE_ERROR_PROTOCOL_ERROR_INVALID_PARAMETER;
    const int busy = ARV_DEVICE_ERROR_PROTOCOL_ERROR_BUSY;
    const QPair<const char *, qint64> ports[] = {
        {"TCPDestPort", 2002},    {"FtpHostPort", 502},       {"TcpServerPort", 2001},
        {"MelsecServerPort", 21}, {"ModBusServerPort", 7500}, {"UdpDestPort", 5007},
        {"TcpUpgPort", 2003},
    };
    for (const auto &port : ports) {
        QTest::addRow("port of another service: %s", port.first)
            << Steps() << port.first << port.second << invalid;
    }
    QTest::newRow("wiring that a switch sets") << Steps() << "LineConfig0" << qint64(1) << denied;
    QTest::newRow("wiring while grabbing")
        << Steps{{"AcquisitionStart", -1}} << "LineConfig1" << qint64(0) << denied;
    QTest::newRow("locked feature while grabbing")
        << Steps{{"AcquisitionStart", -1}} << "Width" << qint64(640) << denied;
    QTest::newRow("flash while polling")
        << Steps{{"PollingEnable", 1}} << "FlashMode" << qint64(1) << denied;
    QTest::newRow("upload without FTP")
        << Steps() << "UploadTestRawPictureEnable" << qint64(1) << denied;
    QTest::newRow("focus while it runs")
        << Steps{{"FocusMode", -1}} << "FocusMode" << qint64(-1) << busy;
    QTest::newRow("fifth user set")
        << Steps{{"UserSetAdd", -1}, {"UserSetAdd", -1}, {"UserSetAdd", -1}} << "UserSetAdd"
        << qint64(-1) << denied;
    QTest::newRow("deletion of the first user set")
        << Steps() << "UserSetDelete" << qint64(-1) << denied;
    QTest::newRow("deletion of the set of the start")
        << Steps{{"UserSetAdd", -1}, {"UserSetDefault", 2}} << "UserSetDelete" << qint64(-1)
        << denied;
    QTest::newRow("save to the factory's set")
        << Steps{{"UserSetSelector", 0}} << "UserSetSave" << qint64(-1) << denied;
}

void tst_CodeReaderBehaviour::refuses()
{
    QFETCH(Steps, before);
    QFETCH(QString, node);
    QFETCH(qint64, value);
    QFETCH(int, error);
    OpenedDevice &d = *m_pDevice;
    apply(d, before);
    const QVariant held = d.value(node);
    QVERIFY(!(value < 0 ? d.execute(node) : d.setInteger(node, value)));
    QCOMPARE(d.m_nErrorCode, error);
    QCOMPARE(d.value(node), held);
}

void tst_CodeReaderBehaviour::pullsOthersAlong_data()
{
    QTest::addColumn<Steps>("steps");
    QTest::addColumn<Steps>("expected");
    QTest::newRow("Pharmacode puts bar codes out")
        << Steps{{"PHARMACODE", 1}}
        << Steps{{"Code128", 0}, {"Code39", 0}, {"DMCode", 1}, {"PHARMACODE2d", 0}};
    QTest::newRow("bar code puts Pharmacode out")
        << Steps{{"PHARMACODE", 1}, {"PHARMACODE2d", 1}, {"EAN13", 1}}
        << Steps{{"PHARMACODE", 0}, {"PHARMACODE2d", 0}, {"EAN13", 1}, {"Code39", 0}};
    QTest::newRow("own port again") << Steps{{"TCPDestPort", 2001}} << Steps();
    QTest::newRow("port that became free")
        << Steps{{"TcpServerPort", 3000}, {"TCPDestPort", 2002}} << Steps();
    QTest::newRow("flash once polling is off")
        << Steps{{"PollingEnable", 1}, {"PollingEnable", 0}, {"FlashMode", 1}} << Steps();
    QTest::newRow("user set after a deletion") << Steps{{"UserSetAdd", -1},
                                                        {"UserSetAdd", -1},
                                                        {"UserSetAdd", -1},
                                                        {"UserSetDelete", -1},
                                                        {"UserSetAdd", -1}}
                                               << Steps();
    QTest::newRow("no trigger, frames alone")
        << Steps{{"TriggerMode", 1}, {"MultiframeHandleMode", 2}, {"TriggerMode", 0}}
        << Steps{{"MultiframeHandleMode", 0}};
    QTest::newRow("setup sends to the host")
        << Steps{{"CommunicationProtocols", 7}, {"RunningMode", 2}}
        << Steps{{"CommunicationProtocols", 1}};
    QTest::newRow("focus steps stop at the end") << Steps{{"FocusStep", 200},
                                                          {"FocusStepPlus", -1},
                                                          {"FocusStepPlus", -1},
                                                          {"FocusStepPlus", -1},
                                                          {"FocusStepPlus", -1}}
                                                 << Steps{{"FocusPosition", 1000}};
    QTest::newRow("mirror by both names") << Steps{{"MirrorX", 1}} << Steps{{"ReverseX", 1}};
}

void tst_CodeReaderBehaviour::pullsOthersAlong()
{
    QFETCH(Steps, steps);
    QFETCH(Steps, expected);
    apply(*m_pDevice, steps);
    for (const auto &row : qAsConst(expected)) {
        QCOMPARE(m_pDevice->value(row.first).toLongLong(), row.second);
    }
}

void tst_CodeReaderBehaviour::userSetsAreAddedAndDeleted()
{
    OpenedDevice &d = *m_pDevice;
    apply(d, {{"LocBarNum", 77}, {"UserSetAdd", -1}});
    QCOMPARE(d.value("UserSetSelector").toLongLong(), qint64(2));
    QVERIFY(d.setText("UserSetName", "mine"));
    apply(d, {{"LocBarNum", 5}, {"UserSetLoad", -1}});
    QCOMPARE(d.integer("LocBarNum"), qint64(77));
    QCOMPARE(d.text("UserSetName"), QStringLiteral("mine"));
    apply(d, {{"UserSetDelete", -1}});
    QCOMPARE(d.value("UserSetSelector").toLongLong(), qint64(1));
    apply(d, {{"UserSetLoad", -1}});
    QCOMPARE(d.integer("LocBarNum"), qint64(4));
}

void tst_CodeReaderBehaviour::recoveries_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<qint64>("codes"); ///< LocBarNum at once
    QTest::addColumn<qint64>("port"); ///< likewise
    QTest::addColumn<qint64>("loaded"); ///< LocBarNum after the user set was loaded
    QTest::newRow("at once") << "UserSetRecover" << qint64(4) << qint64(2001) << qint64(50);
    QTest::newRow("but for communication")
        << "UserSetRecoverPartly" << qint64(4) << qint64(4000) << qint64(50);
    QTest::newRow("the set alone")
        << "UserSetRecoverDefault" << qint64(50) << qint64(4000) << qint64(4);
    QTest::newRow("all sets") << "UserSetRecoverFactory" << qint64(4) << qint64(2001) << qint64(4);
}

void tst_CodeReaderBehaviour::recoveries()
{
    QFETCH(QString, command);
    QFETCH(qint64, codes);
    QFETCH(qint64, port);
    QFETCH(qint64, loaded);
    OpenedDevice &d = *m_pDevice;
    apply(d, {{"LocBarNum", 50}, {"TCPDestPort", 4000}, {"UserSetSave", -1}, {command, -1}});
    QCOMPARE(d.integer("LocBarNum"), codes);
    QCOMPARE(d.integer("TCPDestPort"), port);
    apply(d, {{"UserSetLoad", -1}});
    QCOMPARE(d.integer("LocBarNum"), loaded);
}

void tst_CodeReaderBehaviour::recoverFactoryRestarts()
{
    OpenedDevice &d = *m_pDevice;
    m_simulated.control->setRestartTime(80);
    QVERIFY(d.setText("DeviceUserID", "mine"));
    apply(d, {{"LocBarNum", 50}, {"UserSetAdd", -1}, {"RecoverFactory", -1}});
    d.integer("LocBarNum");
    QCOMPARE(d.m_nErrorCode, int(ARV_DEVICE_ERROR_NOT_CONNECTED));
    QTRY_VERIFY(d.integer("LocBarNum") == 4 && d.m_nErrorCode < 0);
    QCOMPARE(d.text("DeviceUserID"), QStringLiteral("Reader 1"));
    QCOMPARE(d.value("UserSetSelector").toLongLong(), qint64(1));
    apply(d, {{"LocBarNum", 60}, {"UserSetSave", -1}, {"UserSetDefault", 1}, {"DeviceReset", -1}});
    QTRY_VERIFY(d.integer("LocBarNum") == 60 && d.m_nErrorCode < 0);
}

void tst_CodeReaderBehaviour::focusTakesItsTime()
{
    OpenedDevice &d = *m_pDevice;
    QCOMPARE(d.integer("AutoFocusStat"), qint64(1));
    apply(d, {{"FocusMode", -1}});
    QCOMPARE(d.integer("AutoFocusStat"), qint64(0));
    QTRY_COMPARE(d.integer("AutoFocusStat"), qint64(1));
    QCOMPARE(d.integer("FocusPosition"), qint64(517));
    m_simulated.control->setQuiet(true); // done at once
    apply(d, {{"FocusMode", -1}, {"FocusMode", -1}, {"SmartTune", -1}});
    QCOMPARE(d.integer("AutoFocusStat"), qint64(1));
    QCOMPARE(d.integer("SmartTuneProgress"), qint64(100));
}

void tst_CodeReaderBehaviour::countersMoveWhileGrabbing()
{
    OpenedDevice &d = *m_pDevice;
    QCOMPARE(d.integer("FrameCount"), qint64(0));
    apply(d, {{"AcquisitionStart", -1}});
    QTRY_VERIFY(d.integer("FrameCount") >= 16);
    QTRY_VERIFY(d.number("ReadRate") > 80 && d.number("ReadRate") < 100);
    QVERIFY(qAbs(d.number("ResultingFrameRate") - 25) < 0.1);
    apply(d, {{"AcquisitionStop", -1}});
    const qint64 last = d.integer("FrameCount");
    QCOMPARE(d.integer("ReadCount") + d.integer("NoReadCount"), last);
    apply(d, {{"StatisticsReset", -1}});
    QCOMPARE(d.integer("FrameCount") + d.integer("ReadCount"), qint64(0));
    QTRY_VERIFY(d.integer("DeviceRunTime") >= 1);
}

void tst_CodeReaderBehaviour::softwareTriggerCountsWhenAskedTo()
{
    OpenedDevice &d = *m_pDevice;
    apply(d, {{"TriggerSoftware", -1}});
    QCOMPARE(d.integer("FrameCount"), qint64(0));
    apply(d,
          {{"TriggerMode", 1},
           {"AcquisitionStart", -1},
           {"TriggerSoftware", -1},
           {"TriggerSoftware", -1}});
    QCOMPARE(d.integer("FrameCount"), qint64(2));
    QCOMPARE(d.integer("TriggerSoftwareCount"), qint64(3));
    apply(d, {{"SingleTrigger", -1}});
    QCOMPARE(d.integer("FrameCount"), qint64(3));
}

QTEST_GUILESS_MAIN(tst_CodeReaderBehaviour)
#include "tst_CodeReaderBehaviour.moc"
