#include "ControlKit/CustomCalendar.h"
#include "ControlKit/CustomPushButton.h"
#include "ControlKit/CustomSpinBox.h"
#include "host/controlkit/CustomStyle.h"
#include "host/utilitykit/UtilityHost.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QTimeEdit>
#include <QVBoxLayout>
#include <QtTest>

namespace {

using Acts = QVector<int>; ///< keys, and what no key does
enum Act { CLICK = -1, DOUBLE_CLICK = -2, WAIT = -3, MENU = -4, REFILL = -5 };
constexpr int PAUSE = 320; ///< ms, longer than clicks are kept apart
constexpr int SEVEN = Qt::Key_7, ENTER = Qt::Key_Return, UP = Qt::Key_Up, SPACE = Qt::Key_Space;

} // namespace

class tst_KitWidgets : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void spinText_data();
    void spinText();
    void clicks_data();
    void clicks();
    void clickMayDestroyTheButton();
    void calendarChooses();
};

void tst_KitWidgets::initTestCase()
{
    UtilityHost::useTransientSettings();
    CustomStyle::install(*qApp);
}

void tst_KitWidgets::spinText_data()
{
    QTest::addColumn<Acts>("acts");
    QTest::addColumn<bool>("userText");
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("saves");
    const auto row = [](const char *name, const Acts &afterTyping, bool userText, int value,
                        const char *text, int saves) {
        QTest::newRow(name) << Acts{SEVEN, SEVEN} + afterTyping << userText << value << text
                            << saves;
    };
    row("refill overwrites the typed text", {REFILL}, true, 10, "77", 0);
    row("own menu commits half a number", {MENU}, true, 10, "77", 0);
    row("committed text still counts as typed", {ENTER}, false, 77, "77", 0);
    row("Escape keeps the text", {Qt::Key_Escape}, false, 10, "10", 0);
    row("step forgets the typed text", {UP}, false, 78, "78", 1);
    row("step at the end saves", {UP, UP, UP}, false, 79, "79", 2);
}

void tst_KitWidgets::spinText()
{
    QFETCH(Acts, acts);
    QWidget window;
    auto *const layout = new QVBoxLayout(&window);
    auto *const box = new CustomSpinBox(2, &window);
    layout->addWidget(box);
    box->setRange(0, 79);
    box->setValue(10);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    box->setFocus();
    box->selectAll();
    QSignalSpy saved(box, &CustomSpinBox::SigSaveParam);
    bool typedAtCommit = false;
    connect(box, &QSpinBox::editingFinished, box, [&] { typedAtCommit |= box->cHasUserText(); });

    for (const int act : acts) {
        if (act == MENU) {
            QFocusEvent leaves(QEvent::FocusOut, Qt::PopupFocusReason);
            QApplication::sendEvent(box, &leaves);
        } else if (act == REFILL && !box->cHasUserText()) { // as the module refills
            box->setValue(33);
        } else if (act > 0) {
            QTest::keyClick(box, Qt::Key(act));
        }
    }
    QVERIFY(!typedAtCommit);
    QTEST(box->cHasUserText(), "userText");
    QTEST(box->value(), "value");
    QTEST(box->cInterLineEdit()->text(), "text");
    QTEST(saved.count(), "saves");
}

void tst_KitWidgets::clicks_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<Acts>("acts");
    QTest::addColumn<int>("clicked");
    QTest::newRow("plain: all") << 0 << Acts{CLICK, CLICK, SPACE} << 3;
    QTest::newRow("double click runs twice") << 1 << Acts{CLICK, DOUBLE_CLICK} << 1;
    QTest::newRow("keyboard passes by") << 1 << Acts{SPACE, SPACE, ENTER} << 1;
    QTest::newRow("blocked for ever") << 1 << Acts{CLICK, WAIT, CLICK, WAIT, SPACE} << 3;
}

void tst_KitWidgets::clicks()
{
    QFETCH(int, mode);
    QFETCH(Acts, acts);
    int clicked = 0;
    QElapsedTimer time;
    do {
        time.start();
        CustomPushButton button(2, QStringLiteral("Execute"));
        button.setAutoDefault(true);
        button.cSetControlClickEvent(mode);
        button.show();
        QSignalSpy spy(&button, &QPushButton::clicked);
        for (const int act : acts) {
            if (act == CLICK) {
                QTest::mouseClick(&button, Qt::LeftButton);
            } else if (act == DOUBLE_CLICK) {
                QTest::mouseDClick(&button, Qt::LeftButton);
            } else if (act == WAIT) {
                QTest::qWait(PAUSE); // the pause itself is what is tested
            } else {
                QTest::keyClick(&button, Qt::Key(act));
            }
        }
        clicked = spy.count();
        // A machine that is busy elsewhere may make a pause where there is none.
    } while (time.elapsed() > PAUSE && !acts.contains(WAIT));
    QTEST(clicked, "clicked");
}

void tst_KitWidgets::clickMayDestroyTheButton()
{
    for (const Qt::Key key : {Qt::Key_unknown, Qt::Key_Space, Qt::Key_Return}) {
        const QPointer<CustomPushButton> button = new CustomPushButton(2);
        button->setAutoDefault(true);
        button->show();
        connect(button.data(), &QPushButton::clicked, button.data(), [button] { delete button; });
        if (key == Qt::Key_unknown) {
            QTest::mousePress(button, Qt::LeftButton);
            QMouseEvent release(QEvent::MouseButtonRelease, QPointF(5, 5), Qt::LeftButton,
                                Qt::NoButton, Qt::NoModifier);
            QCoreApplication::sendEvent(button, &release);
        } else {
            QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
            QCoreApplication::sendEvent(button, &press);
            QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier);
            if (button) {
                QCoreApplication::sendEvent(button, &release);
            }
        }
        QVERIFY(!button);
    }
}

void tst_KitWidgets::calendarChooses()
{
    CustomCalendar calendar(2);
    calendar.cSetDateFormat(QStringLiteral("yyyy:MM:dd:HH:mm:ss"));
    const QDateTime start(QDate(2024, 2, 28), QTime(23, 59, 58));
    calendar.cSetDateTime(start);
    QCOMPARE(calendar.cGetLargeButton()->text(), QStringLiteral("2024:02:28:23:59:58"));
    calendar.show();
    QSignalSpy changed(&calendar, &CustomCalendar::SigRangedChanged);
    calendar.cGetLargeButton()->click();
    auto *const month = calendar.findChild<QCalendarWidget *>();
    auto *const time = calendar.findChild<QTimeEdit *>();
    QVERIFY(month && month->window()->isVisible());
    QCOMPARE(month->selectedDate(), start.date());
    QTest::keyClick(month->window(), Qt::Key_Escape);
    QVERIFY(!month->window()->isVisible());
    QCOMPARE(changed.count(), 0);

    calendar.cGetLargeButton()->click();
    month->setSelectedDate(QDate(2024, 2, 29));
    time->setTime(QTime(1, 2, 3));
    QTest::keyClick(month->window(), Qt::Key_Return);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(calendar.cGetDateTime(), QDateTime(QDate(2024, 2, 29), QTime(1, 2, 3)));
    QCOMPARE(calendar.cGetLargeButton()->text(), QStringLiteral("2024:02:29:01:02:03"));
}

QTEST_MAIN(tst_KitWidgets)
#include "tst_kitwidgets.moc"
