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
    void userSetsAreAddedAndDeleted();
    void recoverFactoryRestarts();

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
    QTest::newRow("port of another service") << Steps() << "TCPDestPort" << qint64(2002) << invalid;
    QTest::newRow("locked feature while grabbing")
        << Steps{{"AcquisitionStart", -1}} << "Width" << qint64(640) << denied;
    QTest::newRow("focus while it runs")
        << Steps{{"FocusMode", -1}} << "FocusMode" << qint64(-1) << busy;
    QTest::newRow("fifth user set")
        << Steps{{"UserSetAdd", -1}, {"UserSetAdd", -1}, {"UserSetAdd", -1}} << "UserSetAdd"
        << qint64(-1) << denied;
    QTest::newRow("deletion of the set of the start")
        << Steps{{"UserSetAdd", -1}, {"UserSetDefault", 2}} << "UserSetDelete" << qint64(-1)
        << denied;
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

QTEST_GUILESS_MAIN(tst_CodeReaderBehaviour)
#include "tst_CodeReaderBehaviour.moc"
