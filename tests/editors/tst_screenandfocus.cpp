#include "ControlKit/CustomLineEdit.h"
#include "editors/VexaPropFocusStepWidget.h"
#include "editors/VexaScreenSelectWidget.h"
#include "host/translations/Translations.h"
#include "tests/editors/RowFixture.h"
#include "tests/support/DataTable.h"

#include <QPushButton>

namespace {

constexpr int ARV_REFUSAL = 7;

class ScreenFixture : public RowFixture
{
public:
    ScreenFixture()
        : RowFixture("code-reader", {"ScreenHomepage"})
    {
        show();
    }
    VexaScreenSelectWidget *screen()
    {
        return editor<VexaScreenSelectWidget>("Custom_ScreenHomepage");
    }
};

class FocusFixture : public RowFixture
{
public:
    FocusFixture()
        : RowFixture("code-reader-without-tuning", {"FocusStep"})
    {
        pages.m_prepare = [this](VexaPropertyTreeItem *pRoot) {
            VexaPropertyTreeItem *const pRow = pages.rowBelow(pRoot, "Custom_FocusSetting");
            QVERIFY(pRow);
            pRow->setTagName("CustomSpinBox");
            pages.setRowCamera(pRow, camera.id);
            pages.setSpinItems(pRow, feature("FocusStepMinus"), feature("FocusStepPlus"),
                               feature("FocusPosition"));
            pages.setSpinStep(pRow, 10, false);
        };
        show();
        QVERIFY(focus());
    }
    VexaPropFocusStepWidget *focus()
    {
        return editor<VexaPropFocusStepWidget>("Custom_FocusSetting");
    }
    QPushButton *button(const QString &strText)
    {
        const QList<QPushButton *> buttons = focus()->findChildren<QPushButton *>();
        const auto it = std::find_if(buttons.begin(), buttons.end(), [&](const QPushButton *pOne) {
            return pOne->text() == strText;
        });
        return it == buttons.end() ? nullptr : *it;
    }
    CustomLineEdit *edit() { return focus()->findChild<CustomLineEdit *>(); }
    void type(const QString &strText, Qt::Key eEnd = Qt::Key_Return)
    {
        edit()->setFocus();
        QTest::keyClick(edit(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(edit(), strText);
        QTest::keyClick(edit(), eEnd);
    }
    /// Where the lens stands and what the edit shows.
    QString both() { return QString::number(inDevice("FocusPosition")) + ' ' + edit()->text(); }
};

} // namespace

/// The home page of a screen and the steps of a lens, by clicks and keys.
class tst_ScreenAndFocus : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { installLanguage(*qApp, QStringLiteral("ENG")); }
    void spinBoxLimits_data();
    void spinBoxLimits();
    void screenPages_data();
    void screenPages();
    void screenFollowsTheDevice();
    void focusSteps();
    void focusTyped();
};

void tst_ScreenAndFocus::spinBoxLimits_data()
{
    // Minimum, maximum, value and step; number and buttons that are open: as set, after minus, after plus.
    const DataTable<QList<qlonglong>, QString, QString, QString> row("numbers", "plain", "minus",
                                                                     "plus");
    row("in the middle", {0, 100, 50, 10}, "50-+", "40-+", "50-+");
    row("at the maximum", {0, 100, 100, 10}, "100-", "90-+", "100-");
    row("at the minimum", {0, 100, 0, 10}, "0+", "0+", "10-+");
    row("overshoots both ends", {0, 5, 3, 10}, "3-+", "0+", "5-");
    row("range without the value", {200, 300, 50, 10}, "200+", "200+", "210-+");
    row("maximum below the minimum", {9, 3, 1, 1}, "1-", "0+",
        "1-"); // the range of the start stays
    row("ends of the type",
        {std::numeric_limits<qint64>::min(), std::numeric_limits<qint64>::max(),
         std::numeric_limits<qint64>::max() - 1, 5},
        "9223372036854775806-+", "9223372036854775801-+", "9223372036854775806-+");
}

void tst_ScreenAndFocus::spinBoxLimits()
{
    QFETCH(QList<qlonglong>, numbers);
    VexaHorSpinBox box;
    const QList<QPushButton *> buttons = box.findChildren<QPushButton *>();
    const auto state = [&] {
        return box.findChild<CustomLineEdit *>()->text() + (buttons.at(0)->isEnabled() ? "-" : "")
            + (buttons.at(1)->isEnabled() ? "+" : "");
    };
    QCOMPARE(buttons.at(0)->text(), QString("-"));
    box.setValue(numbers.at(2));
    box.setRange(numbers.at(0), numbers.at(1));
    box.setStep(numbers.at(3));
    QTEST(state(), "plain");
    buttons.at(0)->click();
    QTEST(state(), "minus");
    buttons.at(1)->click();
    QTEST(state(), "plus");
}

void tst_ScreenAndFocus::screenPages_data()
{
    const DataTable<int, int, int, int> row("page", "x", "key",
                                            "after"); // x of the click, or a key
    row("forward round the end", 3, 250, 0, 1);
    row("back round the start", 1, 10, 0, 3);
    row("forward", 1, 235, 0, 2);
    row("back", 3, 33, 0, 2);
    row("picture", 2, 120, 0, 2);
    row("left end of the picture", 2, 34, 0, 2);
    row("right end of the picture", 2, 234, 0, 2);
    row("behind the arrow", 2, 268, 0, 2);
    row("key forward", 3, 0, Qt::Key_Right, 1);
    row("key back", 2, 0, Qt::Key_Left, 1);
    row("key of none", 2, 0, Qt::Key_Space, 2);
}

void tst_ScreenAndFocus::screenPages()
{
    QFETCH(int, page);
    QFETCH(int, x);
    QFETCH(int, key);
    QFETCH(int, after);
    ScreenFixture f;
    const int nSteps = int(page != after);
    QVERIFY(f.tree().setFeatureValue("Enumeration", "ScreenHomepage", page));
    QVERIFY(f.settle());
    QTRY_COMPARE(f.screen()->page(), page);
    f.forget();
    QVERIFY(f.screen()->height() >= 100 && f.screen()->width() >= 268); // the whole picture
    const QPoint place(x, f.screen()->height() / 2);
    QTest::mouseClick(f.screen(), Qt::RightButton, Qt::NoModifier, place);
    QCOMPARE(f.writeCount(), 0);
    if (key) {
        f.screen()->setFocus(Qt::TabFocusReason);
        QTest::keyClick(f.screen(), Qt::Key(key));
    } else {
        QTest::mouseClick(f.screen(), Qt::LeftButton, Qt::NoModifier, place);
    }
    QCOMPARE(f.inDevice("ScreenHomepage"), after);
    QCOMPARE(f.screen()->page(), after);
    QCOMPARE(f.writeCount(), nSteps);
    QCOMPARE(ShellHost::instance()->modifiedCameras().size(), nSteps);
    QVERIFY(f.settle());
    QCOMPARE(f.screen()->page(), after);
    QCOMPARE(f.writeCount(), nSteps);
}

void tst_ScreenAndFocus::screenFollowsTheDevice()
{
    ScreenFixture f;
    const QPoint forward(250, 20);
    f.control().setFailing(f.address("ScreenHomepage"), ARV_REFUSAL);
    const int nBefore = f.screen()->page();
    QTest::mouseClick(f.screen(), Qt::LeftButton, Qt::NoModifier, forward);
    QCOMPARE(f.screen()->page(), nBefore);
    f.control().setFailing(f.address("ScreenHomepage"), 0);
    QVERIFY(f.settle());
    // Two words of the device, two sets of pictures.
    const QImage english = f.screen()->grab().toImage();
    f.poke("ScreenLanguage", 0, 0);
    f.pages.removeCameraID(f.camera.id);
    f.show();
    QVERIFY(f.screen()->grab().toImage() != english);
    f.poke("ScreenHomepage", 0, 3);
    f.tree().OnAddValueChangedNodes({"ScreenHomepage"});
    QVERIFY(f.settle());
    QTRY_COMPARE(f.screen()->page(), 3);
    const QImage third = f.screen()->grab().toImage();
    f.screen()->setPage(1);
    const QImage first = f.screen()->grab().toImage();
    f.screen()->setPage(0); // not read yet: none of the pictures
    QVERIFY(f.screen()->grab().toImage() != first && f.screen()->accessibleName().isEmpty());
    f.screen()->setPage(3);
    QCOMPARE(f.screen()->grab().toImage(), third);
    f.feature("ScreenHomepage")->setReadOnly(f.camera.id, true);
    QTRY_VERIFY(!f.screen()->isEnabled());
    f.forget();
    QTest::mouseClick(f.screen(), Qt::LeftButton, Qt::NoModifier, forward);
    QCOMPARE(f.writeCount(), 0);
}

void tst_ScreenAndFocus::focusSteps()
{
    FocusFixture f;
    QVERIFY(f.settle());
    QTRY_COMPARE(f.both(), QString("420 420"));
    f.forget();
    QTest::mouseClick(f.button("+"), Qt::LeftButton);
    QCOMPARE(f.both(), QString("430 430"));
    QTest::mouseClick(f.button("-"), Qt::RightButton);
    f.button("-")->setFocus(Qt::TabFocusReason);
    QTest::keyClick(f.button("-"), Qt::Key_Space);
    QCOMPARE(f.both(), QString("420 420"));
    QCOMPARE(f.writes({{"+", "FocusStepPlus"}, {"-", "FocusStepMinus"}}), QString("+ -"));
    QVERIFY(f.settle());
    // A step of the device's own size: the number moves at once, and the device has the last word.
    f.poke("FocusStep", 0, 25);
    QTest::mouseClick(f.button("+"), Qt::LeftButton);
    QCOMPARE(f.both(), QString("445 430"));
    QVERIFY(f.settle());
    QTRY_COMPARE(f.both(), QString("445 445"));
    // Refused: back to what the tree knows.
    f.control().setFailing(f.address("FocusStepMinus"), ARV_REFUSAL);
    QTest::mouseClick(f.button("-"), Qt::LeftButton);
    QCOMPARE(f.both(), QString("445 445"));
    f.control().setFailing(f.address("FocusStepMinus"), 0);
    // Locked while the lens moves by itself, whatever the range opens.
    f.forget();
    f.pages.setSpinStep(f.pages.row("Custom_FocusSetting"), 10, true);
    QTRY_VERIFY(!f.button("+")->isEnabled() && !f.button("-")->isEnabled());
    f.feature("FocusPosition")->notifyViewUpdate(f.camera.id, -1, false, false);
    QVERIFY(f.settle());
    QVERIFY(!f.button("+")->isEnabled() && !f.button("-")->isEnabled());
    QCOMPARE(f.writeCount(), 0);
    f.type("440"); // the buttons stay shut
    QCOMPARE(f.both(), QString("440 440"));
    QVERIFY(!f.button("+")->isEnabled() && !f.button("-")->isEnabled());
    // Beyond its own limits: shown as the device says.
    f.pages.setSpinStep(f.pages.row("Custom_FocusSetting"), 10, false);
    f.poke("FocusPosition", 0, 5000);
    f.tree().OnAddValueChangedNodes({"FocusPosition"});
    QVERIFY(f.settle());
    QTRY_COMPARE(f.both(), QString("5000 5000"));
    QVERIFY(!f.button("+")->isEnabled() && f.button("-")->isEnabled());
}

void tst_ScreenAndFocus::focusTyped()
{
    FocusFixture f;
    QVERIFY(f.settle());
    QTRY_COMPARE(f.both(), QString("420 420"));
    f.forget();
    f.type("500");
    QCOMPARE(f.both(), QString("500 500"));
    f.type("5000");
    QCOMPARE(f.both(), QString("1000 1000")); // held to the range
    QCOMPARE(f.writeCount(), 2);
    f.type("many");
    f.type("300", Qt::Key_Escape);
    QCOMPARE(f.both(), QString("1000 1000"));
    QVERIFY(f.settle());
    // A refill leaves alone what is being typed; going away commits it once.
    f.edit()->setFocus();
    QTest::keyClick(f.edit(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(f.edit(), "12");
    f.poke("FocusPosition", 0, 700);
    f.tree().OnAddValueChangedNodes({"FocusPosition"});
    QVERIFY(f.settle());
    QCOMPARE(f.both(), QString("700 12"));
    QCOMPARE(f.writeCount(), 2);
    f.button("+")->setFocus();
    QCOMPARE(f.both(), QString("12 12"));
    QVERIFY(f.settle());
    // Refused, and taken away from under the user: no write and the truth.
    f.control().setFailing(f.address("FocusPosition"), ARV_REFUSAL);
    f.type("600");
    QCOMPARE(f.edit()->text(), QString("12"));
    f.control().setFailing(f.address("FocusPosition"), 0);
    f.edit()->setFocus();
    QTest::keyClicks(f.edit(), "3");
    f.forget();
    f.feature("FocusStep")->setReadOnly(f.camera.id, true);
    QTRY_VERIFY(!f.focus()->isEnabled());
    QCOMPARE(f.writeCount(), 0);
    QCOMPARE(f.both(), QString("12 12"));
    f.feature("FocusStep")->setReadOnly(f.camera.id, false);
    QTRY_VERIFY(f.focus()->isEnabled());
    f.edit()->setFocus();
    QTest::keyClicks(f.edit(), "3");
    f.pages.removeCameraID(f.camera.id);
    QCOMPARE(f.writeCount(), 0);
}

QTEST_MAIN(tst_ScreenAndFocus)
#include "tst_screenandfocus.moc"
