#include "OpenedDevice.h"

#include <QtTest>

using Steps = QVector<QPair<QString, qint64>>; ///< feature and value; -1 runs a command
Q_DECLARE_METATYPE(Steps)

namespace {

void apply(OpenedDevice &device, const Steps &steps)
{
    for (const auto &step : steps) {
        const bool done =
            step.second < 0 ? device.execute(step.first) : device.set(step.first, step.second);
        QVERIFY2(done, qPrintable(step.first + ": " + device.m_strError));
    }
}

/// "Width": its value; "max Width", "locked Width", "available Width".
QVariant answer(OpenedDevice &device, const QString &question)
{
    const QString name = question.section(' ', -1);
    if (question.startsWith("max ")) {
        return qint64(arv_gc_integer_get_max(ARV_GC_INTEGER(device.node(name)), nullptr));
    }
    if (question.startsWith("locked ")) {
        return device.flag(arv_gc_feature_node_is_locked, name);
    }
    return question.startsWith("available ") ? device.flag(arv_gc_feature_node_is_available, name)
                                             : device.value(name);
}

} // namespace

/// What the firmware of the devices does when their registers are written.
class tst_DeviceBehaviour : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void follows_data();
    void follows();
    void refuses_data();
    void refuses();
    void acquisitionRunsAndEnds();
    void aResetLoadsTheDefaultSet_data();
    void aResetLoadsTheDefaultSet();
    void recoverFactoryRestarts();
};

void tst_DeviceBehaviour::follows_data()
{
    QTest::addColumn<QString>("device");
    QTest::addColumn<Steps>("before");
    QTest::addColumn<QString>("question");
    QTest::addColumn<QVariant>("expected");
    const auto row = [](const char *tag, const char *device, const Steps &before,
                        const char *question, const QVariant &expected) {
        QTest::newRow(tag) << device << before << question << expected;
    };
    const char *const area = "area-camera";
    const char *const reader = "code-reader";
    const Steps binned{{"Width", 1024}, {"BinningHorizontal", 4}};
    const Steps added{{"LocBarNum", 77}, {"UserSetAdd", -1}, {"LocBarNum", 5}, {"UserSetLoad", -1}};
    const Steps deleted = added + Steps{{"UserSetDelete", -1}, {"UserSetLoad", -1}};
    row("range of the offset", area, {{"Width", 1024}}, "max OffsetX", 2592LL - 1024);
    row("region larger than what is binned", area, binned, "Width", 648LL);
    row("offset beyond what is binned", area, binned, "OffsetX", 0LL);
    row("lock by two conditions", area, {{"ExposureMode", 0}}, "locked ExposureTime", true);
    row("lock by a selector", area, {{"UserSetSelector", 1}}, "locked UserSetSave", false);
    row("available by a mode", area, {{"AcquisitionMode", 2}}, "available AcquisitionFrameCount",
        true);
    row("unavailable by a bypass", area, {{"SharpnessEnable", 0}}, "available Sharpness", false);
    row("added set without the present values", reader, added, "LocBarNum", 77LL);
    row("added set not selected", reader, added, "UserSetSelector", 2LL);
    row("deleted set still selected", reader, deleted, "UserSetSelector", 1LL);
    row("deleted set loaded", reader, deleted, "LocBarNum", 4LL);
}

void tst_DeviceBehaviour::follows()
{
    QFETCH(QString, device);
    QFETCH(Steps, before);
    QFETCH(QString, question);
    QFETCH(QVariant, expected);
    OpenedDevice d(SimulatedDevices::builtIn(device));
    apply(d, before);
    QCOMPARE(answer(d, question), expected);
}

void tst_DeviceBehaviour::refuses_data()
{
    QTest::addColumn<QString>("device");
    QTest::addColumn<Steps>("before");
    QTest::addColumn<QString>("node");
    QTest::addColumn<qint64>("value");
    QTest::addColumn<int>("error");
    const auto row = [](const char *tag, const char *device, const Steps &before, const char *node,
                        qint64 value, int error) {
        QTest::newRow(tag) << device << before << node << value << error;
    };
    const int denied = ARV_DEVICE_ERROR_PROTOCOL_ERROR_ACCESS_DENIED;
    const int invalid = ARV_DEVICE_ERROR_PROTOCOL_ERROR_INVALID_PARAMETER;
    const int busy = ARV_DEVICE_ERROR_PROTOCOL_ERROR_BUSY;
    const Steps grabbing{{"AcquisitionStart", -1}};
    for (const char *device : {"area-camera", "code-reader"}) {
        row("locked feature while grabbing", device, grabbing, "Width", 640, denied);
        row("user set loaded while grabbing", device, grabbing, "UserSetLoad", -1, denied);
        row("factory's set written", device, {{"UserSetSelector", 0}}, "UserSetSave", -1, denied);
    }
    row("region beyond the sensor", "area-camera", {}, "OffsetX", 1024, invalid);
    row("port of another service", "code-reader", {}, "TCPDestPort", 2002, invalid);
    row("focus while it runs", "code-reader", {{"FocusMode", -1}}, "FocusMode", -1, busy);
    row("fifth user set", "code-reader",
        {{"UserSetAdd", -1}, {"UserSetAdd", -1}, {"UserSetAdd", -1}}, "UserSetAdd", -1, denied);
    row("deletion of the set of the start", "code-reader",
        {{"UserSetAdd", -1}, {"UserSetDefault", 2}}, "UserSetDelete", -1, denied);
}

void tst_DeviceBehaviour::refuses()
{
    QFETCH(QString, device);
    QFETCH(Steps, before);
    QFETCH(QString, node);
    QFETCH(qint64, value);
    QFETCH(int, error);
    OpenedDevice d(SimulatedDevices::builtIn(device));
    apply(d, before);
    const QVariant held = d.value(node);
    QVERIFY(!(value < 0 ? d.execute(node) : d.set(node, value)));
    QCOMPARE(d.m_nErrorCode, error);
    QCOMPARE(d.value(node), held);
}

void tst_DeviceBehaviour::acquisitionRunsAndEnds()
{
    OpenedDevice d(SimulatedDevices::builtIn("area-camera"));
    QVERIFY(d.execute("AcquisitionStart"));
    QVERIFY(d.value("AcquisitionStatus").toBool());
    QTRY_VERIFY(d.value("EventExposureEndFrameID").toLongLong() >= 2);
    QVERIFY(d.value("DeviceLinkCurrentThroughput").toLongLong() > 50000000);
    QVERIFY(d.set("Gain", 1)); // what is not locked stays open
    QVERIFY(d.execute("AcquisitionStop"));
    QVERIFY(!d.value("AcquisitionStatus").toBool());
    QCOMPARE(d.value("DeviceLinkCurrentThroughput").toLongLong(), qint64(0));
    QVERIFY(d.set("AcquisitionMode", 1)); // a single frame ends by itself
    QVERIFY(d.execute("AcquisitionStart"));
    QTRY_VERIFY(!d.value("AcquisitionStatus").toBool());
    QCOMPARE(d.value("EventExposureEndFrameID").toLongLong(), qint64(1));
}

void tst_DeviceBehaviour::aResetLoadsTheDefaultSet_data()
{
    QTest::addColumn<double>("factory");
    QTest::newRow("area-camera") << 5000.0;
    QTest::newRow("line-camera") << 30.0;
    QTest::newRow("grabber-camera") << 30.0;
}

void tst_DeviceBehaviour::aResetLoadsTheDefaultSet()
{
    QFETCH(double, factory);
    const auto simulated = SimulatedDevices::builtIn(QTest::currentDataTag());
    simulated.control->setRestartTime(60);
    OpenedDevice d(simulated);
    QVERIFY(d.set("ExposureTime", 55));
    apply(d,
          {{"UserSetSelector", 1},
           {"UserSetSave", -1},
           {"UserSetDefault", 1},
           {"UserSetSelector", 0},
           {"UserSetLoad", -1}});
    QCOMPARE(d.value("ExposureTime").toDouble(), factory);
    QVERIFY(d.execute("TriggerSoftware"));
    QCOMPARE(d.value("TriggerSoftwareCount").toLongLong(), qint64(1));
    QVERIFY(d.execute("DeviceReset"));
    QTRY_VERIFY(d.value("ExposureTime").toDouble() == 55.0 && d.m_nErrorCode < 0);
    QCOMPARE(d.value("TriggerSoftwareCount").toLongLong(), qint64(0));
}

void tst_DeviceBehaviour::recoverFactoryRestarts()
{
    const auto simulated = SimulatedDevices::builtIn("code-reader");
    simulated.control->setRestartTime(80);
    OpenedDevice d(simulated);
    QVERIFY(d.set("DeviceUserID", "mine"));
    apply(d, {{"LocBarNum", 50}, {"UserSetAdd", -1}, {"RecoverFactory", -1}});
    d.value("LocBarNum").toLongLong();
    QCOMPARE(d.m_nErrorCode, int(ARV_DEVICE_ERROR_NOT_CONNECTED));
    QTRY_VERIFY(d.value("LocBarNum").toLongLong() == 4 && d.m_nErrorCode < 0);
    QCOMPARE(d.value("DeviceUserID").toString(), QStringLiteral("Reader 1"));
    QCOMPARE(d.value("UserSetSelector").toLongLong(), qint64(1));
    apply(d, {{"LocBarNum", 60}, {"UserSetSave", -1}, {"UserSetDefault", 1}, {"DeviceReset", -1}});
    QTRY_VERIFY(d.value("LocBarNum").toLongLong() == 60 && d.m_nErrorCode < 0);
}

QTEST_GUILESS_MAIN(tst_DeviceBehaviour)
#include "tst_DeviceBehaviour.moc"
