#include "ShellServicesModule/QFunction.h"
#include "host/shellservices/ShellHost.h"
#include "tests/view/EditFixture.h"

#include <QApplication>
#include <QSignalSpy>
#include <QToolTip>
#include <QtTest>

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

enum Act { TYPE, DOWN, SPACE };

void tst_EditRoad::editReachesTheDevice_data()
{
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("act");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("value");
    const auto row = [](const char *pFault, const char *pDevice, const char *pName, Act act,
                        const QString &strText, const QString &strValue) {
        QTest::newRow(pFault) << pDevice << pName << int(act) << strText << strValue;
    };
    row("largest number through a double", "", "Big", TYPE, "9223372036854775807",
        "9223372036854775807");
    row("64 bits of hex", "", "BigHex", TYPE, "0xFEDCBA9876543210", "0xFEDCBA9876543210");
    row("below the grid's last step", "", "Grid", TYPE, "17", "14");
    row("address edit", "code-reader", "TcpDstAddr", TYPE, "192.168.10.250", "192.168.10.250");
    row("switch", "code-reader", "ContrastEnable", SPACE, "", "on");
    row("spin box writes nothing", "area-camera", "Brightness", TYPE, "77", "77");
    row("value off the grid is written", "area-camera", "Width", TYPE, "1023", "1020");
    row("decimal comma", "area-camera", "Gain", TYPE, "3,5", "3.50");
    row("minimum refused for its rounding", "area-camera", "Gamma", TYPE, "0.1", "0.10");
    row("text edit is not emptied", "area-camera", "DeviceUserID", TYPE, "", "");
    row("hex edit writes decimal", "area-camera", "UserOutputValueAll", TYPE, "c", "0xC");
    row("enumeration writes its row", "area-camera", "TestPattern", DOWN, "", "");
}

void tst_EditRoad::editReachesTheDevice()
{
    QFETCH(QString, device);
    QFETCH(QString, name);
    QFETCH(int, act);
    QFETCH(QString, text);
    QFETCH(QString, value);
    EditFixture &fixture = m_fixture.of(device);
    const QString before = fixture.deviceValue(name);
    QWidget *const pEditor = fixture.focusOn(name);
    QVERIFY(pEditor);
    fixture.forgetAccesses();
    if (act == TYPE) {
        typeText(pEditor, text);
        QCOMPARE(fixture.writes(), 0);
        QTest::keyClick(pEditor, Qt::Key_Return);
    } else {
        QTest::keyClick(pEditor, act == DOWN ? Qt::Key_Down : Qt::Key_Space);
    }
    QCOMPARE(fixture.writes(), 1);
    if (act != DOWN) {
        QCOMPARE(fixture.deviceValue(name), value);
    }
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
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("address");
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("held"); // the first byte of the register
    const auto row = [](const char *pFault, const char *pName, int nAddress, const char *pKeys,
                        const char *pHeld) {
        QTest::newRow(pFault) << pName << nAddress << pKeys << pHeld;
    };
    row("number", "SecretNumber", 0x1050, "7", "7");
    row("text", "SecretText", 0x1070, "A", "65");
    row("enumeration without a value", "SecretMode", 0x1080, "down", "1");
    row("switch without a state", "SecretSwitch", 0x1090, "space", "1");
}

void tst_EditRoad::writeOnlyNodesTakeValues()
{
    QFETCH(QString, name);
    QFETCH(int, address);
    QFETCH(QString, keys);
    QFETCH(QString, held);
    EditFixture &fixture = m_fixture.of(QString());
    fixture.control().poke(address, QByteArray(1, '\x55'));
    QWidget *const pEditor = fixture.focusOn(name);
    QVERIFY(pEditor);
    const bool bSwitch = name == "SecretSwitch";
    QCOMPARE(fixture.shown(name), bSwitch ? QString("off") : QString());
    for (int i = 1; i <= 2; ++i) {
        // The second time the same again: nothing tells that the device holds it.
        fixture.forgetAccesses();
        if (keys == "down" || keys == "space") {
            QTest::keyClick(pEditor, keys == "down" ? Qt::Key_Down : Qt::Key_Space);
        } else {
            QTest::keyClicks(pEditor, keys);
            QTest::keyClick(pEditor, Qt::Key_Return);
        }
        QCOMPARE(fixture.writes(), 1);
        const bool bTurnedBack = bSwitch && i == 2;
        const int nHeld = quint8(fixture.control().peek(address, 1).at(0));
        QCOMPARE(QString::number(nHeld), bTurnedBack ? QString("0") : held);
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
    QWidget *const pEditor = fixture.focusOn("Coarse");
    typeText(pEditor, "119");
    QTest::keyClick(pEditor, Qt::Key_Return);
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
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("typed");
    const auto row = [](const char *pFault, const char *pDevice, const char *pName,
                        const QString &strTyped) {
        QTest::newRow(pFault) << pDevice << pName << strTyped;
    };
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
        QWidget *const pEditor = fixture.focusOn(pName);
        typeText(pEditor, "2");
        QTest::keyClick(pEditor, Qt::Key_Return);
        QCOMPARE(fixture.shown(pName), before);
    }
    ShellHost::instance()->setCanSetProperty(true);
    QCOMPARE(fixture.writes(), 0);
}

void tst_EditRoad::deviceRefuses_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("taken"); // text, or a key
    QTest::addColumn<QString>("refused");
    const auto row = [](const char *pFault, const char *pName, const char *pTaken,
                        const char *pRefused) {
        QTest::newRow(pFault) << pName << pTaken << pRefused;
    };
    row("spin box keeps the refused number", "Brightness", "55", "56");
    row("float keeps the refused number", "Gamma", "1.75", "2.25");
    row("text keeps the refused text", "DeviceUserID", "taken", "refused");
    row("list keeps the refused row", "CounterEventActivation", "Down", "Up");
    row("switch keeps the refused state", "GammaEnable", "Space", "Space");
}

void tst_EditRoad::deviceRefuses()
{
    QFETCH(QString, name);
    QFETCH(QString, taken);
    QFETCH(QString, refused);
    EditFixture &fixture = m_fixture.of("area-camera");
    BoxAnswers boxes(Qt::Key_Return);
    QSignalSpy prompts(QFunction::Instance(), &QFunction::promptRequested);
    const auto edit = [&](const QString &text) {
        static const QMap<QString, Qt::Key> keys{
            {"Down", Qt::Key_Down}, {"Up", Qt::Key_Up}, {"Space", Qt::Key_Space}};
        QWidget *const pEditor = fixture.focusOn(name);
        if (keys.contains(text)) {
            QTest::keyClick(pEditor, keys.value(text));
        } else {
            typeText(pEditor, text);
            QTest::keyClick(pEditor, Qt::Key_Return);
        }
    };
    QVERIFY(fixture.focusOn(name));
    edit(taken);
    quint64 nAddress = 0;
    for (const SimulatorAccess &access : fixture.control().accessLog()) {
        nAddress = access.kind == SimulatorAccess::Write ? access.address : nAddress;
    }
    QVERIFY(nAddress != 0);
    QVERIFY(fixture.settle());
    const QString held = fixture.deviceValue(name);
    QCOMPARE(fixture.shown(name), held);

    fixture.forgetAccesses();
    fixture.control().setFailing(nAddress, ARV_STATUS_OF_A_REFUSAL);
    edit(refused);
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
        for (const SimulatorAccess &access : fixture.control().accessLog()) {
            QVERIFY(access.kind != SimulatorAccess::Write || access.failed);
        }
        QVERIFY(fixture.writes() <= 1);
    }
    m_fixture.close();
}

void tst_EditRoad::readOnlyTreeHasNoLiveEditor()
{
    EditFixture fixture(EditFixture::builtIn("area-camera"), 2);
    for (const char *pName : {"Brightness", "DeviceUserID", "GammaEnable", "ExposureMode"}) {
        QVERIFY2(!fixture.focusOn(pName), pName);
        QVERIFY2(!fixture.shown(pName).isEmpty(), pName);
    }
}

QTEST_MAIN(tst_EditRoad)
#include "tst_editroad.moc"
