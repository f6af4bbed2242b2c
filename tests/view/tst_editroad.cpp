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
    void editReachesTheDevice_data();
    void editReachesTheDevice();
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
    row("spin box writes nothing", "area-camera", "Brightness", TYPE, "77", "77");
    row("value off the grid is written", "area-camera", "Width", TYPE, "1023", "1020");
    row("float edit writes nothing", "area-camera", "Gain", TYPE, "3.25", "3.25");
    row("decimal comma", "area-camera", "Gain", TYPE, "3,5", "3.50");
    row("text edit writes nothing", "area-camera", "DeviceUserID", TYPE, "Left", "Left");
    row("text edit is not emptied", "area-camera", "DeviceUserID", TYPE, "", "");
    row("hex edit writes decimal", "area-camera", "UserOutputValueAll", TYPE, "c", "0xC");
    row("address edit", "code-reader", "TcpDstAddr", TYPE, "192.168.10.250", "192.168.10.250");
    row("enumeration writes its row", "area-camera", "TestPattern", DOWN, "", "");
    row("switch", "code-reader", "ContrastEnable", SPACE, "", "on");
}

void tst_EditRoad::editReachesTheDevice()
{
    QFETCH(QString, device);
    QFETCH(QString, name);
    QFETCH(int, act);
    QFETCH(QString, text);
    QFETCH(QString, value);
    EditFixture fixture(EditFixture::builtIn(device));
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

QTEST_MAIN(tst_EditRoad)
#include "tst_editroad.moc"
