#include "ShellServicesModule/COMMONINTERFACE.h"
#include "host/shellservices/ShellHost.h"
#include "tests/view/EditFixture.h"

#include <QSignalSpy>
#include <QtTest>

/// From the key press to the device and back, one row an edit.
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
    row("float edit writes nothing", "area-camera", "Gain", TYPE, "3.25", "3.25");
    row("decimal comma", "area-camera", "Gain", TYPE, "3,5", "3.50");
    row("minimum refused for its rounding", "area-camera", "Gamma", TYPE, "0.1", "0.10");
    row("text edit writes nothing", "area-camera", "DeviceUserID", TYPE, "Left", "Left");
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
    QTest::newRow("number that looks like the former") << "SecretNumber" << 0x1050 << "0"
                                                       << "0";
    QTest::newRow("number") << "SecretNumber" << 0x1050 << "7"
                            << "7";
    QTest::newRow("hex") << "SecretHex" << 0x1060 << "1f"
                         << "31";
    QTest::newRow("text") << "SecretText" << 0x1070 << "A"
                          << "65";
    QTest::newRow("enumeration without a value") << "SecretMode" << 0x1080 << "down"
                                                 << "1";
    QTest::newRow("switch without a state") << "SecretSwitch" << 0x1090 << "space"
                                            << "1";
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

QTEST_MAIN(tst_EditRoad)
#include "tst_editroad.moc"
