#include "ControlKit/CustomCheckBox.h"
#include "ControlKit/CustomComboBox.h"
#include "ControlKit/CustomPushButton.h"
#include "ShellServicesModule/QLocalCfg.h"
#include "ShellServicesModule/QPropertyLineEdit.h"
#include "model/CTreeEnumationItemValue.h"
#include "model/CTreeIntergerItemValue.h"
#include "tests/view/ViewFixture.h"
#include "view/VexaPropertySpinBox.h"
#include "view/VexaPropertyTreeDelegate.h"
#include "view/VexaPropertyTreeModel.h"

#include <QApplication>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>
#include <QValidator>

class TestVexaPropertyTreeDelegate : public QObject
{
    Q_OBJECT
private slots:
    void editorClass_data();
    void editorClass();
    void stringRules_data();
    void stringRules();
    void blankAndDisabledUntilRead_data();
    void blankAndDisabledUntilRead();
    void refillIsNoEdit_data();
    void refillIsNoEdit();
    void spinBoxShowsWhatItCannotHold();
    void comboRowsCarryNumbers();
    void comboKeepsOneConnection();
    void representationChangeMakesTheEditorAnew();
    void quietDeviceNotifiesNobody();
    void forcedOffEditorsStayDisabledAndQuiet();
    void commandCaption_data();
    void commandCaption();
    void commitOnlyWhileFlagged();
    void heights();
};

static const char *const TREE = "All\n"
                                "  Bool Boolean\n"
                                "  Int Integer\n"
                                "  Hex Integer\n"
                                "  Enum Enumeration\n"
                                "  Float Float\n"
                                "  String StringReg\n"
                                "  Cmd Command\n";

static void fillAll(ViewFixture &fixture)
{
    for (const char *name : {"Bool", "Int", "Hex", "Enum", "Float", "String", "Cmd"}) {
        fixture.setReadOnly(name, false);
    }
    fixture.setBoolean("Bool", true);
    fixture.setInteger("Int", 42, 0, 100, 2);
    fixture.setEnumeration("Enum", {"Mono8", "Mono12", "RGB8"}, 10);
    fixture.setFloat("Float", 1.25F, 0, 10);
    fixture.setString("String", "text");
    static_cast<CTreeIntergerItemValue *>(fixture.item("Hex")->value())->m_strRepresentation =
        "HexNumber";
    fixture.setInteger("Hex", 255, 0, 4096, 1, "HexNumber");
}

void TestVexaPropertyTreeDelegate::editorClass_data()
{
    QTest::addColumn<QString>("tag");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("representation");
    QTest::addColumn<QByteArray>("valueEditor");
    QTest::addColumn<QByteArray>("nameEditor");
    const QByteArray none;
    QTest::newRow("Boolean") << "Boolean"
                             << "X"
                             << "" << QByteArray("CustomCheckBox") << none;
    QTest::newRow("mirror has a hint")
        << "Boolean"
        << "ReverseY"
        << "" << QByteArray("CustomCheckBox") << QByteArray("QCustomReverseHintWidget");
    QTest::newRow("Command") << "Command"
                             << "X"
                             << "" << QByteArray("CustomPushButton") << none;
    QTest::newRow("Integer") << "Integer"
                             << "X"
                             << "Linear" << QByteArray("VexaPropertySpinBox") << none;
    QTest::newRow("period has a hint")
        << "Integer"
        << "TriggerSelfTriggerPeriod"
        << "" << QByteArray("VexaPropertySpinBox") << QByteArray("QCustomReverseHintWidget");
    for (const char *text : {"HexNumber", "IPV4Address", "MACAddress", "PureNumber"}) {
        QTest::newRow(text) << "Integer"
                            << "X" << text << QByteArray("QPropertyLineEdit") << none;
    }
    QTest::newRow("Enumeration") << "Enumeration"
                                 << "X"
                                 << "" << QByteArray("CustomComboBox") << none;
    QTest::newRow("Float") << "Float"
                           << "X"
                           << "" << QByteArray("QPropertyLineEdit") << none;
    QTest::newRow("StringReg") << "StringReg"
                               << "X"
                               << "" << QByteArray("QPropertyLineEdit") << none;
    QTest::newRow("time as text") << "StringReg"
                                  << "ManualSetTime"
                                  << "" << QByteArray("CustomCalendar") << none;
    QTest::newRow("time") << "CustomTime"
                          << "X"
                          << "" << QByteArray("CustomCalendar") << none;
    QTest::newRow("register alone") << "IntReg"
                                    << "X"
                                    << "" << none << none;
    QTest::newRow("format text has no stock editor") << "CustomFormatEdit"
                                                     << "X"
                                                     << "" << none << none;
}

void TestVexaPropertyTreeDelegate::editorClass()
{
    QFETCH(QString, tag);
    QFETCH(QString, name);
    QFETCH(QString, representation);
    ViewFixture fixture("All\n  " + name + ' ' + tag + '\n');
    if (auto *const pValue = dynamic_cast<CTreeIntergerItemValue *>(fixture.item(name)->value())) {
        pValue->m_strRepresentation = representation;
    }
    fixture.view().openEditors(fixture.root());
    const auto className = [](const QWidget *pEditor) {
        return pEditor ? QByteArray(pEditor->metaObject()->className()) : QByteArray();
    };
    const QWidget *const pEditor = fixture.editor(name);
    QTEST(className(pEditor), "valueEditor");
    QTEST(className(fixture.editor(name, 0)), "nameEditor");
    if (pEditor) {
        QCOMPARE(pEditor->objectName(), name);
        QVERIFY(!pEditor->isEnabled());
    }
}

void TestVexaPropertyTreeDelegate::stringRules_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("acceptable");
    QTest::addColumn<bool>("inputMethod");
    QTest::addColumn<int>("echo");
    const QString ideograph = QStringLiteral(u"a\u4e2d");
    const int normal = QLineEdit::Normal;
    QTest::newRow("ideograph in a trigger")
        << "TcpStartTriggerStr" << ideograph << false << false << normal;
    QTest::newRow("last of the triggers")
        << "UsbEndTriggerStr" << ideograph << false << false << normal;
    QTest::newRow("Latin text in a trigger") << "HeartbeatText"
                                             << "<p>\\r" << true << false << normal;
    QTest::newRow("password") << "FtpUserPasswd"
                              << "secret" << true << false << int(QLineEdit::PasswordEchoOnEdit);
    QTest::newRow("double slash") << "FtpFormatDirectoryString"
                                  << "a//b" << false << false << normal;
    QTest::newRow("256 characters")
        << "FtpFormatDirectoryString" << QString(256, 'a') << true << false << normal;
    QTest::newRow("257 characters")
        << "FtpFormatDirectoryString" << QString(257, 'a') << false << false << normal;
    QTest::newRow("placeholder of the user id") << "DeviceUserID"
                                                << "a%1b" << false << true << normal;
    QTest::newRow("user id") << "DeviceUserID" << ideograph << true << true << normal;
    QTest::newRow("no rule") << "DeviceVendorName" << ideograph << true << true << normal;
    QTest::newRow("ftp user") << "FtpUserName" << ideograph << true << false << normal;
}

void TestVexaPropertyTreeDelegate::stringRules()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    ViewFixture fixture("All\n  " + name + " StringReg\n");
    fixture.view().openEditors(fixture.root());
    auto *const pEdit = qobject_cast<QLineEdit *>(fixture.editor(name));
    int nPosition = 0;
    const bool bAcceptable = !pEdit->validator()
        || pEdit->validator()->validate(text, nPosition) == QValidator::Acceptable;
    QTEST(bAcceptable, "acceptable");
    QTEST(pEdit->testAttribute(Qt::WA_InputMethodEnabled), "inputMethod");
    QTEST(int(pEdit->echoMode()), "echo");
}

void TestVexaPropertyTreeDelegate::blankAndDisabledUntilRead_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"Bool", "Int", "Enum", "Float", "String"}) {
        QTest::newRow(name) << name;
    }
}

static QString shownText(const QWidget *pEditor)
{
    if (const auto *const pBox = qobject_cast<const QCheckBox *>(pEditor)) {
        return pBox->isVisible() ? QString(pBox->isChecked() ? "on" : "off") : QString();
    }
    if (const auto *const pCombo = qobject_cast<const QComboBox *>(pEditor)) {
        return pCombo->currentText();
    }
    if (const auto *const pSpin = qobject_cast<const QSpinBox *>(pEditor)) {
        return pSpin->text();
    }
    const auto *const pEdit = qobject_cast<const QLineEdit *>(pEditor);
    return pEdit ? pEdit->text() : QString();
}

void TestVexaPropertyTreeDelegate::blankAndDisabledUntilRead()
{
    QFETCH(QString, name);
    ViewFixture fixture(TREE);
    fixture.setReadOnly(name, false);
    fixture.show();
    QCOMPARE(shownText(fixture.editor(name)), QString());
    QVERIFY(!fixture.editor(name)->isEnabled());
    if (name == "String") {
        return; // its fill asks for a task
    }
    fillAll(fixture);
    QVERIFY(!shownText(fixture.editor(name)).isEmpty());
    QVERIFY(fixture.editor(name)->isEnabled());
}

void TestVexaPropertyTreeDelegate::refillIsNoEdit_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"Bool", "Int", "Hex", "Enum", "Float", "String", "Cmd"}) {
        QTest::newRow(name) << name;
    }
}

void TestVexaPropertyTreeDelegate::refillIsNoEdit()
{
    QFETCH(QString, name);
    ViewFixture fixture(TREE);
    fixture.show();
    fillAll(fixture);
    fixture.setBoolean("Bool", false);
    fixture.setInteger("Int", 7, 0, 9, 3);
    fixture.setInteger("Hex", 1, 0, 2, 1, "HexNumber");
    fixture.setEnumeration("Enum", {"Other", "RGB8"}, 0);
    fixture.setFloat("Float", 3, 2, 4);
    fixture.setReadOnly(name, true);
    fixture.view().notifyEditorUpdate();
    fixture.view().propertyDelegate()->commitData(
        fixture.editor(name)); // as a view does when an editor closes
    QCOMPARE(fixture.owner().m_writes, QStringList());
}

void TestVexaPropertyTreeDelegate::spinBoxShowsWhatItCannotHold()
{
    ViewFixture fixture(TREE);
    fixture.show();
    const qint64 nBeyond = qint64(1) << 40;
    fixture.setInteger("Int", nBeyond, 0, nBeyond * 2);
    auto *const pSpin = qobject_cast<VexaPropertySpinBox *>(fixture.editor("Int"));
    QCOMPARE(pSpin->maximum(), 0x7fffffff);
    QCOMPARE(pSpin->text(), QString::number(nBeyond));
    fixture.setInteger("Int", 12, 0, nBeyond * 2);
    QCOMPARE(pSpin->text(), QString("12"));
}

void TestVexaPropertyTreeDelegate::comboRowsCarryNumbers()
{
    ViewFixture fixture(TREE);
    fixture.show();
    fillAll(fixture);
    auto *const pCombo = qobject_cast<QComboBox *>(fixture.editor("Enum"));
    QCOMPARE(pCombo->count(), 3);
    QCOMPARE(pCombo->currentText(), QString("Mono12"));
    QCOMPARE(pCombo->itemData(2).toLongLong(), qint64(20));
    fixture.setEnumeration("Enum", {"Mono8", "Mono12", "RGB8"}, 77);
    QCOMPARE(pCombo->currentIndex(), -1);
    auto *const pValue = static_cast<CTreeEnumationItemValue *>(fixture.item("Enum")->value());
    pValue->updateDisplayName("RGB8", "AlsoRGB8", 25, ViewFixture::CAMERA);
    pValue->m_nValue = 25;
    fixture.item("Enum")->endUpdateItem(ViewFixture::CAMERA);
    QCOMPARE(pCombo->count(), 3);
    QCOMPARE(pCombo->currentText(), QString("RGB8"));
    QCOMPARE(pCombo->currentData().toLongLong(), qint64(25));
}

void TestVexaPropertyTreeDelegate::comboKeepsOneConnection()
{
    ViewFixture fixture(TREE);
    fixture.show();
    fillAll(fixture);
    fixture.view().notifyEditorUpdate();
    fixture.view().notifyEditorUpdate();
    qobject_cast<QComboBox *>(fixture.editor("Enum"))->setCurrentIndex(2);
    QCOMPARE(fixture.owner().m_writes, QStringList{"Enumeration Enum 20"});
}

void TestVexaPropertyTreeDelegate::representationChangeMakesTheEditorAnew()
{
    ViewFixture fixture(TREE);
    fixture.show();
    fixture.setReadOnly("Int", false);
    fixture.setInteger("Int", 255, 0, 4096);
    const QPointer<QWidget> pBefore = fixture.editor("Int");
    pBefore->setFocus();
    QTest::keyClicks(pBefore, "5");
    fixture.setInteger("Int", 255, 0, 4096, 1, "HexNumber");
    auto *const pEdit = qobject_cast<QPropertyLineEdit *>(fixture.editor("Int"));
    QVERIFY(pEdit);
    QVERIFY(pEdit->isVisible());
    QCOMPARE(pEdit->text(), QString("0xFF"));
    QTRY_VERIFY(!pBefore);
    QCOMPARE(fixture.owner().m_writes, QStringList()); // half a number
}

void TestVexaPropertyTreeDelegate::quietDeviceNotifiesNobody()
{
    ViewFixture fixture(QString(TREE)
                        + "  Plain\n  Reg IntReg\n  EMMCCloseTime Integer\n  ReverseX Boolean\n");
    fixture.show();
    fillAll(fixture);
    fixture.setBoolean("ReverseX", true);
    QSignalSpy told(&fixture.view(), &VexaFeatureTreeView::sigUpdateEditorData);
    for (const char *name : {"Bool", "Int", "Hex", "Enum", "Float", "Cmd", "All", "Plain", "Reg",
                             "EMMCCloseTime", "ReverseX"}) {
        fixture.item(name)->endUpdateItem(ViewFixture::CAMERA);
        QVERIFY2(told.isEmpty(), name);
    }
}

void TestVexaPropertyTreeDelegate::forcedOffEditorsStayDisabledAndQuiet()
{
    ViewFixture fixture(TREE);
    fixture.view().setDelegateEnable(false);
    fixture.show();
    fillAll(fixture);
    QSignalSpy told(&fixture.view(), &VexaFeatureTreeView::sigUpdateEditorData);
    for (const char *name : {"Bool", "Int", "Hex", "Enum", "Float", "Cmd"}) {
        QVERIFY2(!fixture.editor(name)->isEnabled(), name);
        fixture.item(name)->endUpdateItem(ViewFixture::CAMERA);
    }
    QCOMPARE(told.count(), 0);
    QCOMPARE(shownText(fixture.editor("Int")), QString("42"));
}

void TestVexaPropertyTreeDelegate::commandCaption_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("caption");
    QTest::newRow("English") << "X"
                             << "ENG"
                             << "Execute";
    QTest::newRow("Chinese bytes") << "X"
                                   << "CH" << QStringLiteral(u"\u6267\u884c");
    QTest::newRow("opens a dialog") << "Custom_RegularExpressionFilterRules"
                                    << "CH"
                                    << "Set";
}

void TestVexaPropertyTreeDelegate::commandCaption()
{
    QFETCH(QString, name);
    QFETCH(QString, language);
    QLocalCfg::Instance()->m_strPropertyLan = language;
    ViewFixture fixture("All\n  " + name + " Command\n");
    fixture.view().openEditors(fixture.root());
    QTEST(qobject_cast<QPushButton *>(fixture.editor(name))->text(), "caption");
    QLocalCfg::Instance()->m_strPropertyLan = QString("ENG");
}

void TestVexaPropertyTreeDelegate::commitOnlyWhileFlagged()
{
    ViewFixture fixture(TREE);
    fixture.show();
    fillAll(fixture);
    auto *const pSpin = qobject_cast<QSpinBox *>(fixture.editor("Int"));
    const QModelIndex index = fixture.view().indexOfItem(fixture.item("Int"), 1);
    fixture.view().propertyDelegate()->setModelData(pSpin, fixture.view().propertyModel(), index);
    emit pSpin->editingFinished(); // walked through, nothing changed
    QCOMPARE(fixture.owner().m_writes, QStringList());
    pSpin->setValue(51);
    emit pSpin->editingFinished();
    QCOMPARE(fixture.owner().m_writes, QStringList{"Integer Int 50"});
    qobject_cast<QPushButton *>(fixture.editor("Cmd"))->click();
    qobject_cast<QCheckBox *>(fixture.editor("Bool"))->setChecked(false);
    QCOMPARE(fixture.owner().m_writes.mid(1), QStringList({"Command Cmd 0", "Boolean Bool false"}));
}

void TestVexaPropertyTreeDelegate::heights()
{
    ViewFixture fixture(
        "All\n  Int Integer\n  Light CustomLightingSelector\n  Screen CustomScreen\n");
    const auto height = [&](const char *name) {
        return fixture.view()
            .propertyDelegate()
            ->sizeHint(QStyleOptionViewItem(), fixture.view().indexOfItem(fixture.item(name), 1))
            .height();
    };
    QCOMPARE(height("All"), 56);
    QCOMPARE(height("Int"), 38);
    QCOMPARE(height("Light"), 155);
    QCOMPARE(height("Screen"), 110);
}

int main(int argc, char *argv[])
{
    QStandardPaths::setTestModeEnabled(true);
    QApplication application(argc, argv);
    TestVexaPropertyTreeDelegate test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_VexaPropertyTreeDelegate.moc"
