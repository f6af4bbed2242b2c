#include "ControlKit/CustomCalendar.h"
#include "ControlKit/CustomPushButton.h"
#include "ControlKit/CustomSpinBox.h"
#include "host/controlkit/CustomStyle.h"
#include "host/utilitykit/UtilityHost.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QFontDatabase>
#include <QLineEdit>
#include <QRawFont>
#include <QTimeEdit>
#include <QVBoxLayout>
#include <QtTest>

namespace {

enum ButtonAct { CLICK, DOUBLE_CLICK, SPACE, ENTER, WAIT };
enum SpinAct { TYPE, COMMIT, ESCAPE, STEP_UP, MENU, REFILL };

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
    void fontShowsChinese();
};

void tst_KitWidgets::initTestCase()
{
    UtilityHost::useTransientSettings();
    CustomStyle::install(*qApp);
}

void tst_KitWidgets::spinText_data()
{
    QTest::addColumn<QVector<int>>("acts");
    QTest::addColumn<bool>("userText");
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("saves");
    QTest::newRow("refill overwrites the typed text")
        << QVector<int>{TYPE, REFILL} << true << 10 << "77" << 0;
    QTest::newRow("own menu commits half a number")
        << QVector<int>{TYPE, MENU} << true << 10 << "77" << 0;
    QTest::newRow("committed text still counts as typed")
        << QVector<int>{TYPE, COMMIT} << false << 77 << "77" << 0;
    QTest::newRow("Escape keeps the text")
        << QVector<int>{TYPE, ESCAPE} << false << 10 << "10" << 0;
    QTest::newRow("step forgets the typed text")
        << QVector<int>{TYPE, STEP_UP} << false << 78 << "78" << 1;
    QTest::newRow("step at the end saves")
        << QVector<int>{TYPE, STEP_UP, STEP_UP, STEP_UP} << false << 79 << "79" << 2;
}

void tst_KitWidgets::spinText()
{
    QFETCH(QVector<int>, acts);
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
    QSignalSpy saved(box, &CustomSpinBox::SigSaveParam);
    bool typedAtCommit = false;
    connect(box, &QSpinBox::editingFinished, box, [&] { typedAtCommit |= box->cHasUserText(); });

    for (const int act : acts) {
        switch (act) {
        case TYPE:
            box->selectAll();
            QTest::keyClicks(box, QStringLiteral("77"));
            break;
        case COMMIT:
            QTest::keyClick(box, Qt::Key_Return);
            break;
        case ESCAPE:
            QTest::keyClick(box, Qt::Key_Escape);
            break;
        case STEP_UP:
            QTest::keyClick(box, Qt::Key_Up);
            break;
        case MENU: {
            QFocusEvent leaves(QEvent::FocusOut, Qt::PopupFocusReason);
            QApplication::sendEvent(box, &leaves);
            break;
        }
        default: // as the module refills
            if (!box->cHasUserText()) {
                box->setValue(33);
            }
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
    QTest::addColumn<QVector<int>>("acts");
    QTest::addColumn<int>("clicked");
    QTest::newRow("plain: all") << 0 << QVector<int>{CLICK, CLICK, SPACE} << 3;
    QTest::newRow("double click runs twice") << 1 << QVector<int>{CLICK, DOUBLE_CLICK} << 1;
    QTest::newRow("keyboard passes by") << 1 << QVector<int>{SPACE, SPACE, ENTER} << 1;
    QTest::newRow("blocked for ever") << 1 << QVector<int>{CLICK, WAIT, CLICK, WAIT, SPACE} << 3;
}

void tst_KitWidgets::clicks()
{
    QFETCH(int, mode);
    QFETCH(QVector<int>, acts);
    CustomPushButton button(2, QStringLiteral("Execute"));
    button.setAutoDefault(true);
    button.cSetControlClickEvent(mode);
    button.show();
    QSignalSpy spy(&button, &QPushButton::clicked);
    for (const int act : acts) {
        switch (act) {
        case CLICK:
            QTest::mouseClick(&button, Qt::LeftButton);
            break;
        case DOUBLE_CLICK:
            QTest::mouseDClick(&button, Qt::LeftButton);
            break;
        case SPACE:
            QTest::keyClick(&button, Qt::Key_Space);
            break;
        case ENTER:
            QTest::keyClick(&button, Qt::Key_Return);
            break;
        default: // the pause itself is what is tested
            QTest::qWait(320);
        }
    }
    QTEST(spy.count(), "clicked");
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

void tst_KitWidgets::fontShowsChinese()
{
    const QStringList families = QFontDatabase().families();
    for (const Custom::Language language :
         {Custom::LANGUAGE_CHINESE, Custom::LANGUAGE_ENGLISH, Custom::LANGUAGE_CURRENT}) {
        QVERIFY(families.contains(Custom::globalFontFamily(language)));
    }
    QFont font(Custom::globalFontFamily(Custom::LANGUAGE_CHINESE));
    QVERIFY(QRawFont::fromFont(font, QFontDatabase::SimplifiedChinese)
                .supportsCharacter(QChar(0x66DD)));
}

QTEST_MAIN(tst_KitWidgets)
#include "tst_kitwidgets.moc"
