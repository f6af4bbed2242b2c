#include "ControlKit/CustomCheckBox.h"
#include "ControlKit/CustomComboBox.h"
#include "ControlKit/CustomPushButton.h"
#include "ShellServicesModule/QPropertyLineEdit.h"
#include "model/CTreeEnumationItemValue.h"
#include "model/CTreeIntergerItemValue.h"
#include "tests/support/DataTable.h"
#include "tests/view/EditorTexts.h"
#include "tests/view/ViewFixture.h"
#include "view/VexaPropertySpinBox.h"
#include "view/VexaPropertyTreeDelegate.h"

#include <QApplication>
#include <QTest>
#include <QValidator>

#include <limits>

class TestVexaPropertyTreeDelegate : public QObject
{
    Q_OBJECT
private slots:
    void editorClass_data();
    void editorClass();
    void stringRules_data();
    void stringRules();
    void blankAndDisabledUntilRead();
    void spinBoxShowsWhatItCannotHold();
    void comboRowsCarryNumbers();
    void representationChangeMakesTheEditorAnew();
    void spinBoxSnaps_data();
    void spinBoxSnaps();
};

void TestVexaPropertyTreeDelegate::editorClass_data()
{
    // The other editors are typed and clicked into by the tests of edits.
    const DataTable<QString, QString, QString, QByteArray, QByteArray> row(
        "tag", "name", "representation", "valueEditor", "nameEditor");
    row("mirror has a hint", "Boolean", "ReverseY", "", "CustomCheckBox",
        "QCustomReverseHintWidget");
    row("command", "Command", "X", "", "CustomPushButton", "");
    row("number", "Integer", "X", "Linear", "VexaPropertySpinBox", "");
    row("hardware address", "Integer", "X", "MACAddress", "QPropertyLineEdit", "");
    row("format text has no stock editor", "CustomFormatEdit", "X", "", "", "");
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
    const DataTable<QString, QString, bool, bool, int> row("name", "text", "acceptable",
                                                           "inputMethod", "echo");
    const QString ideograph = "a中";
    const char *const directory = "FtpFormatDirectoryString";
    row("ideograph in a trigger", "TcpStartTriggerStr", ideograph, false, false, QLineEdit::Normal);
    row("password", "FtpUserPasswd", "secret", true, false, QLineEdit::PasswordEchoOnEdit);
    row("double slash", directory, "a//b", false, false, QLineEdit::Normal);
    row("257 characters", directory, QString(257, 'a'), false, false, QLineEdit::Normal);
    row("placeholder of the user id", "DeviceUserID", "a%1b", false, true, QLineEdit::Normal);
    row("user id", "DeviceUserID", ideograph, true, true, QLineEdit::Normal);
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

void TestVexaPropertyTreeDelegate::blankAndDisabledUntilRead()
{
    const char *const names[] = {"Bool", "Int", "Enum", "Float"};
    ViewFixture fixture(ViewFixture::ONE_OF_EACH);
    for (const char *name : names) {
        fixture.setReadOnly(name, false);
    }
    fixture.show();
    const auto isBlank = [&fixture](const char *name) {
        const QWidget *const pEditor = fixture.editor(name);
        return qobject_cast<const QCheckBox *>(pEditor) ? !pEditor->isVisible()
                                                        : shownText(pEditor).isEmpty();
    };
    for (const char *name : names) {
        QVERIFY2(isBlank(name) && !fixture.editor(name)->isEnabled(), name);
    }
    fixture.fillOneOfEach();
    for (const char *name : names) {
        QVERIFY2(!isBlank(name) && fixture.editor(name)->isEnabled(), name);
    }
}

void TestVexaPropertyTreeDelegate::spinBoxShowsWhatItCannotHold()
{
    ViewFixture fixture(ViewFixture::ONE_OF_EACH);
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
    ViewFixture fixture(ViewFixture::ONE_OF_EACH);
    fixture.show();
    fixture.fillOneOfEach();
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
    // A refill connects once.
    fixture.view().notifyEditorUpdate();
    fixture.view().notifyEditorUpdate();
    pCombo->setCurrentIndex(1);
    QCOMPARE(fixture.owner().m_writes, QStringList{"Enumeration Enum 10"});
}

void TestVexaPropertyTreeDelegate::representationChangeMakesTheEditorAnew()
{
    ViewFixture fixture(ViewFixture::ONE_OF_EACH);
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

void TestVexaPropertyTreeDelegate::spinBoxSnaps_data()
{
    const DataTable<int, int, qint64, int, int> row("minimum", "maximum", "step", "given", "shown");
    const int lowest = std::numeric_limits<int>::min();
    const int highest = std::numeric_limits<int>::max();
    row("grid starts at the minimum", 10, 100, 4, 17, 14);
    row("maximum off the grid", 0, 10, 4, 11, 8);
    row("step 0 divides by zero", 0, 100, 0, 7, 7);
    row("huge step stays at the minimum", 5, 100, qint64(1) << 40, 40, 5);
    row("distance overflows 32 bits", lowest, highest, 2, highest, highest - 1);
}

void TestVexaPropertyTreeDelegate::spinBoxSnaps()
{
    QFETCH(int, minimum);
    QFETCH(int, maximum);
    QFETCH(qint64, step);
    QFETCH(int, given);
    VexaPropertySpinBox box;
    box.setLimits(minimum, maximum, step);
    box.snapValue(given);
    QTEST(box.value(), "shown");
    QCOMPARE(box.lastAcceptedValue(), box.value());
    QVERIFY(box.toolTip().contains(QString::number(minimum)));
}

QTEST_MAIN(TestVexaPropertyTreeDelegate)
#include "tst_VexaPropertyTreeDelegate.moc"
