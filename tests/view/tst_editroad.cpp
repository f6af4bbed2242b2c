#include "ShellServicesModule/QFunction.h"
#include "tests/support/DataTable.h"
#include "tests/support/WriteTraces.h"
#include "tests/view/EditFixture.h"

#include <QApplication>
#include <QToolTip>

constexpr int ARV_STATUS_OF_A_REFUSAL = 10; // a code of the device itself

/// From the key press to the device and back, one row an edit. What bad input and bad devices do to one: the user reads
/// why, the editor shows what the device holds, and nothing is written twice.
class tst_EditRoad : public QObject
{
    Q_OBJECT
private slots:
    void cleanupTestCase() { m_fixture.close(); }
    void editReachesTheDevice_data();
    void editReachesTheDevice();
    void writeOnlyNodesTakeValues_data();
    void writeOnlyNodesTakeValues();
    void deviceHasTheLastWord();
    void badTextIsTakenBack_data();
    void badTextIsTakenBack();
    void clientForbidsEdits();
    void deviceRefuses_data();
    void deviceRefuses();
    void cameraVanishesBeforeTheWrite();
    void readOnlyTreeHasNoLiveEditor();

private:
    SharedEditFixture m_fixture;
};

/// Does in the focused editor what the text says: "down", "up" or "space" is a key, any other is typed and committed.
static void edit(QWidget *pEditor, const QString &strText)
{
    static const QMap<QString, Qt::Key> keys{
        {"down", Qt::Key_Down}, {"up", Qt::Key_Up}, {"space", Qt::Key_Space}};
    if (!keys.contains(strText)) {
        typeText(pEditor, strText);
    }
    QTest::keyClick(pEditor, keys.value(strText, Qt::Key_Return));
}

void tst_EditRoad::editReachesTheDevice_data()
{
    const DataTable<QString, QString, QString, QString> row("device", "name", "text", "value");
    row("largest number through a double", "", "Big", "9223372036854775807", "9223372036854775807");
    row("64 bits of hex", "", "BigHex", "0xFEDCBA9876543210", "0xFEDCBA9876543210");
    row("below the grid's last step", "", "Grid", "17", "14");
    row("address edit", "code-reader", "TcpDstAddr", "192.168.10.250", "192.168.10.250");
    row("switch", "code-reader", "ContrastEnable", "space", "on");
    row("spin box writes nothing", "area-camera", "Brightness", "77", "77");
    row("value off the grid is written", "area-camera", "Width", "1023", "1020");
    row("decimal comma", "area-camera", "Gain", "3,5", "3.50");
    row("minimum refused for its rounding", "area-camera", "Gamma", "0.1", "0.10");
    row("text edit is not emptied", "area-camera", "DeviceUserID", "", "");
    row("hex edit writes decimal", "area-camera", "UserOutputValueAll", "c", "0xC");
    row("enumeration writes its row", "area-camera", "TestPattern", "down", "none");
}

void tst_EditRoad::editReachesTheDevice()
{
    QFETCH(QString, device);
    QFETCH(QString, name);
    QFETCH(QString, text);
    QFETCH(QString, value);
    EditFixture &fixture = m_fixture.of(device);
    const QString before = fixture.deviceValue(name);
    QWidget *const pEditor = fixture.focusOn(name);
    QVERIFY(pEditor);
    fixture.forgetAccesses();
    edit(pEditor, text);
    QCOMPARE(fixture.writes(), 1);
    QVERIFY(value == "none" || fixture.deviceValue(name) == value);
    QVERIFY(fixture.deviceValue(name) != before);
    QCOMPARE(fixture.shown(name), fixture.deviceValue(name));
    QCOMPARE(ShellHost::instance()->modifiedCameras().size(), 1);
    // Nothing of what follows writes again: leaving the row, and the refresh.
    QTest::keyClick(pEditor, Qt::Key_Tab);
    QVERIFY(fixture.settle());
    QCOMPARE(fixture.writes(), 1);
    QCOMPARE(fixture.shown(name), fixture.deviceValue(name));
}

void tst_EditRoad::writeOnlyNodesTakeValues_data()
{
    // Of the register the first byte.
    const DataTable<QString, int, QString, int> row("name", "address", "keys", "held");
    row("number", "SecretNumber", 0x1050, "7", 7);
    row("text", "SecretText", 0x1070, "A", 65);
    row("enumeration without a value", "SecretMode", 0x1080, "down", 1);
    row("switch without a state", "SecretSwitch", 0x1090, "space", 1);
}

void tst_EditRoad::writeOnlyNodesTakeValues()
{
    QFETCH(QString, name);
    QFETCH(int, address);
    QFETCH(QString, keys);
    QFETCH(int, held);
    EditFixture &fixture = m_fixture.of(QString());
    fixture.control().poke(address, QByteArray(1, '\x55'));
    QWidget *const pEditor = fixture.focusOn(name);
    QVERIFY(pEditor);
    const bool bSwitch = name == "SecretSwitch";
    QCOMPARE(fixture.shown(name), bSwitch ? QString("off") : QString());
    for (int i = 1; i <= 2; ++i) {
        // The second time the same again: nothing tells that the device holds it.
        fixture.forgetAccesses();
        edit(pEditor, keys);
        QCOMPARE(fixture.writes(), 1);
        const bool bTurnedBack = bSwitch && i == 2;
        QCOMPARE(int(fixture.control().peek(address, 1).at(0)), bTurnedBack ? 0 : held);
        QVERIFY(fixture.settle());
        if (!bSwitch) {
            QCOMPARE(fixture.shown(name), QString());
        }
        QVERIFY(pEditor->isEnabled());
    }
    QTest::keyClick(pEditor, Qt::Key_Tab);
    QCOMPARE(fixture.writes(), 1);
}

void tst_EditRoad::deviceHasTheLastWord()
{
    EditFixture &fixture = m_fixture.of(QString());
    edit(fixture.focusOn("Coarse"), "119");
    QTRY_COMPARE(fixture.shown("Coarse"), QString("112"));
    QCOMPARE(fixture.writes(), 1);
}

/// At once, where QToolTip::hideText waits.
static void hideToolTip()
{
    for (QWidget *pWidget : QApplication::topLevelWidgets()) {
        if (pWidget->inherits("QTipLabel")) {
            pWidget->hide();
        }
    }
}

void tst_EditRoad::badTextIsTakenBack_data()
{
    const DataTable<QString, QString, QString> row("device", "name", "typed");
    row("above the range of a box", "", "Grid", "51");
    row("box emptied", "", "Grid", "");
    row("too large for a box: another number", "area-camera", "CounterDuration", "4294967295");
    row("over 64 bits", "", "Big", "9223372036854775808");
    row("hex of 17 digits", "", "BigHex", "0x10000000000000000");
    row("float above its range", "area-camera", "Gamma", "4.01");
    row("text too long", "area-camera", "DeviceUserID", QString(200, 'x'));
    row("directory emptied", "code-reader", "FtpFormatDirectoryString", "");
    row("address of five parts", "code-reader", "TcpDstAddr", "1.2.3.4.5");
}

void tst_EditRoad::badTextIsTakenBack()
{
    QFETCH(QString, device);
    QFETCH(QString, name);
    QFETCH(QString, typed);
    EditFixture &fixture = m_fixture.of(device);
    const QString before = fixture.shown(name);
    QVERIFY(!before.isEmpty());
    for (const int nKey : {Qt::Key_Return, Qt::Key_Tab}) {
        QWidget *const pEditor = fixture.focusOn(name);
        QVERIFY(pEditor);
        hideToolTip();
        typeText(pEditor, typed);
        QTest::keyClick(pEditor, Qt::Key(nKey));
        QCOMPARE(fixture.shown(name), before);
        QTRY_VERIFY2(QToolTip::isVisible(), "no reason shows");
        QVERIFY(!QToolTip::text().isEmpty());
    }
    QCOMPARE(fixture.writes(), 0);
    QCOMPARE(fixture.deviceValue(name), before);
}

void tst_EditRoad::clientForbidsEdits()
{
    EditFixture &fixture = m_fixture.of("area-camera");
    ShellHost::instance()->setCanSetProperty(false);
    for (const char *pName : {"Brightness", "Gamma", "DeviceUserID"}) {
        const QString before = fixture.shown(pName);
        edit(fixture.focusOn(pName), "2");
        QCOMPARE(fixture.shown(pName), before);
    }
    ShellHost::instance()->setCanSetProperty(true);
    QCOMPARE(fixture.writes(), 0);
}

void tst_EditRoad::deviceRefuses_data()
{
    const DataTable<QString, QString, QString> row("name", "taken", "refused");
    row("spin box keeps the refused number", "Brightness", "55", "56");
    row("float keeps the refused number", "Gamma", "1.75", "2.25");
    row("text keeps the refused text", "DeviceUserID", "taken", "refused");
    row("list keeps the refused row", "CounterEventActivation", "down", "up");
    row("switch keeps the refused state", "GammaEnable", "space", "space");
}

void tst_EditRoad::deviceRefuses()
{
    QFETCH(QString, name);
    QFETCH(QString, taken);
    QFETCH(QString, refused);
    EditFixture &fixture = m_fixture.of("area-camera");
    BoxAnswers boxes(Qt::Key_Return);
    QSignalSpy prompts(QFunction::Instance(), &QFunction::promptRequested);
    edit(fixture.focusOn(name), taken);
    QVERIFY(fixture.writes() > 0);
    const quint64 nAddress = writesOf(fixture.camera()).last().address;
    QVERIFY(fixture.settle());
    const QString held = fixture.deviceValue(name);
    QCOMPARE(fixture.shown(name), held);

    fixture.forgetAccesses();
    fixture.control().setFailing(nAddress, ARV_STATUS_OF_A_REFUSAL);
    edit(fixture.focusOn(name), refused);
    fixture.control().setFailing(nAddress, 0);
    QCOMPARE(fixture.shown(name), held);
    QTRY_COMPARE(prompts.count() + boxes.count(), 1);
    QVERIFY(fixture.settle());
    QTRY_VERIFY(fixture.focusOn(name));
    QTest::keyClick(fixture.editor(name), Qt::Key_Tab);
    QVERIFY(fixture.writes() <= 1); // none where a bit of a shared register is read first
    QCOMPARE(fixture.shown(name), held);
    QCOMPARE(fixture.deviceValue(name), held);
    QCOMPARE(prompts.count() + boxes.count(), 1);
}

void tst_EditRoad::cameraVanishesBeforeTheWrite()
{
    for (const char *pName : {"Brightness", "GammaEnable"}) {
        m_fixture.close();
        EditFixture &fixture = m_fixture.of("area-camera");
        BoxAnswers boxes(Qt::Key_Return);
        QWidget *const pEditor = fixture.focusOn(pName);
        typeText(pEditor, "3");
        fixture.control().vanish();
        QTest::keyClick(pEditor,
                        pName == QByteArray("GammaEnable") ? Qt::Key_Space : Qt::Key_Return);
        QTest::keyClick(pEditor, Qt::Key_Tab);
        for (const SimulatorAccess &access : writesOf(fixture.camera())) {
            QVERIFY(access.failed);
        }
        QVERIFY(fixture.writes() <= 1);
    }
    m_fixture.close();
}

void tst_EditRoad::readOnlyTreeHasNoLiveEditor()
{
    EditFixture fixture(SimulatedDevices::builtIn("area-camera"), 2);
    for (const char *pName : {"Brightness", "DeviceUserID", "GammaEnable", "ExposureMode"}) {
        QVERIFY2(!fixture.focusOn(pName), pName);
        QVERIFY2(!fixture.shown(pName).isEmpty(), pName);
    }
}

QTEST_MAIN(tst_EditRoad)
#include "tst_editroad.moc"
