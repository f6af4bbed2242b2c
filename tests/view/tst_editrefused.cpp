#include "ControlKit/CustomMessageBox.h"
#include "ShellServicesModule/QFunction.h"
#include "host/shellservices/ShellHost.h"
#include "tests/view/EditFixture.h"

#include <QApplication>
#include <QSignalSpy>
#include <QToolTip>
#include <QtTest>

constexpr int ARV_STATUS_OF_A_REFUSAL = 10; // a code of the device itself

/// What bad input and bad devices do to an edit: the user reads why, the editor shows what the device holds, and nothing
/// is written twice.
class tst_EditRefused : public QObject
{
    Q_OBJECT
private slots:
    void cleanupTestCase() { m_fixture.close(); }
    void badTextIsTakenBack_data();
    void badTextIsTakenBack();
    void badKeysAreTold_data();
    void badKeysAreTold();
    void clientForbidsEdits();
    void deviceRefuses_data();
    void deviceRefuses();
    void cameraVanishesBeforeTheWrite();
    void readOnlyTreeHasNoLiveEditor();

private:
    SharedEditFixture m_fixture;
};

/// At once, where QToolTip::hideText waits.
static void hideToolTip()
{
    for (QWidget *pWidget : QApplication::topLevelWidgets()) {
        if (pWidget->inherits("QTipLabel")) {
            pWidget->hide();
        }
    }
}

void tst_EditRefused::badTextIsTakenBack_data()
{
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("typed");
    const auto row = [](const char *pFault, const char *pDevice, const char *pName,
                        const QString &strTyped) {
        QTest::newRow(pFault) << pDevice << pName << strTyped;
    };
    row("above the range of a box", "", "Grid", "51");
    row("below the range of a box", "", "Grid", "9");
    row("box emptied", "", "Grid", "");
    row("too large for a box: another number", "area-camera", "CounterDuration", "4294967295");
    row("far too large for a box", "area-camera", "CounterDuration", "99999999999999999999999");
    row("over 64 bits", "", "Big", "9223372036854775808");
    row("number emptied", "", "Big", "");
    row("hex of 17 digits", "", "BigHex", "0x10000000000000000");
    row("float above its range", "area-camera", "Gamma", "4.01");
    row("float of two points", "area-camera", "Gamma", "1.2.3");
    row("text too long", "area-camera", "DeviceUserID", QString(200, 'x'));
    row("directory emptied", "code-reader", "FtpFormatDirectoryString", "");
    row("address of five parts", "code-reader", "TcpDstAddr", "1.2.3.4.5");
}

void tst_EditRefused::badTextIsTakenBack()
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

void tst_EditRefused::badKeysAreTold_data()
{
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("kept");
    const QString ideograph = QStringLiteral(u"\u4e2d");
    QTest::newRow("letter in a box") << "area-camera"
                                     << "Brightness"
                                     << "12x"
                                     << "12";
    QTest::newRow("letter in a float") << "area-camera"
                                       << "Gamma"
                                       << "12x"
                                       << "12";
    QTest::newRow("ideograph in a trigger text") << "code-reader"
                                                 << "TcpStartTriggerStr"
                                                 << "a" + ideograph << "a";
    QTest::newRow("second slash in a directory") << "code-reader"
                                                 << "FtpFormatDirectoryString"
                                                 << "a//"
                                                 << "a/";
}

void tst_EditRefused::badKeysAreTold()
{
    QFETCH(QString, device);
    QFETCH(QString, name);
    QFETCH(QString, typed);
    EditFixture &fixture = m_fixture.of(device);
    QWidget *const pEditor = fixture.focusOn(name);
    QVERIFY(pEditor);
    hideToolTip();
    QTest::keyClick(pEditor, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(pEditor, Qt::Key_Delete);
    for (const QChar &character : typed) {
        QTest::sendKeyEvent(QTest::Click, pEditor, Qt::Key_unknown, QString(character),
                            Qt::NoModifier);
    }
    QTEST(fixture.shown(name), "kept");
    QTRY_VERIFY(QToolTip::isVisible());
    QTest::keyClick(pEditor, Qt::Key_Escape);
    QCOMPARE(fixture.shown(name), fixture.deviceValue(name));
    QCOMPARE(fixture.writes(), 0);
}

void tst_EditRefused::clientForbidsEdits()
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

void tst_EditRefused::deviceRefuses_data()
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

void tst_EditRefused::deviceRefuses()
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

void tst_EditRefused::cameraVanishesBeforeTheWrite()
{
    for (const char *pName : {"Brightness", "DeviceUserID", "GammaEnable"}) {
        m_fixture.close();
        EditFixture &fixture = m_fixture.of("area-camera");
        BoxAnswers boxes(Qt::Key_Return);
        QWidget *const pEditor = fixture.focusOn(pName);
        typeText(pEditor, "3");
        fixture.control().vanish();
        QTest::keyClick(pEditor,
                        pName == QByteArray("GammaEnable") ? Qt::Key_Space : Qt::Key_Return);
        QTest::keyClick(pEditor, Qt::Key_Tab);
        const auto log = fixture.control().accessLog();
        QVERIFY(std::all_of(log.cbegin(), log.cend(), [](const SimulatorAccess &access) {
            return access.kind != SimulatorAccess::Write || access.failed;
        }));
        QVERIFY(fixture.writes() <= 1);
    }
    m_fixture.close();
}

void tst_EditRefused::readOnlyTreeHasNoLiveEditor()
{
    EditFixture fixture(EditFixture::builtIn("area-camera"), 2);
    for (const char *pName : {"Brightness", "DeviceUserID", "GammaEnable", "ExposureMode"}) {
        QVERIFY2(!fixture.focusOn(pName), pName);
        QVERIFY2(!fixture.shown(pName).isEmpty(), pName);
    }
}

QTEST_MAIN(tst_EditRefused)
#include "tst_editrefused.moc"
