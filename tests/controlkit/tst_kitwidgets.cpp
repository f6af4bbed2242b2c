#include "ControlKit/CustomCalendar.h"
#include "ControlKit/CustomCheckBox.h"
#include "ControlKit/CustomComboBox.h"
#include "ControlKit/CustomLabel.h"
#include "ControlKit/CustomLineEdit.h"
#include "ControlKit/CustomPushButton.h"
#include "ControlKit/CustomSpinBox.h"
#include "host/controlkit/CustomStyle.h"
#include "host/utilitykit/UtilityHost.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QFontDatabase>
#include <QLineEdit>
#include <QRawFont>
#include <QScopedPointer>
#include <QTimeEdit>
#include <QToolTip>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <QtTest>
#include <qtestspontaneevent.h>

#include <functional>

namespace {

using Maker = std::function<QWidget *()>;

const QRgb ACCENT = qRgb(0xF7, 0x69, 0x00);

QImage imageOf(QWidget *widget)
{
    widget->resize(100, 30);
    widget->show();
    return widget->grab().toImage();
}

bool contains(const QImage &image, QRgb colour)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) == colour) {
                return true;
            }
        }
    }
    return false;
}

/// A turn as the window system sends it; whether somebody took it.
bool turnWheel(QWidget *widget, int delta)
{
    const QPointF middle(widget->rect().center());
    QWheelEvent event(middle, widget->mapToGlobal(middle.toPoint()), QPoint(), QPoint(0, delta),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    event.ignore();
    QSpontaneKeyEvent::setSpontaneous(&event);
    return qApp->notify(widget, &event) && event.isAccepted();
}

enum ButtonAct { CLICK, DOUBLE_CLICK, SPACE, ENTER, WAIT };
enum SpinAct { TYPE, COMMIT, LEAVE, ESCAPE, STEP_UP, MENU, REFILL };

} // namespace
Q_DECLARE_METATYPE(Maker)

class tst_KitWidgets : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void wheelNeedsTheFocus();
    void spinText_data();
    void spinText();
    void clicks_data();
    void clicks();
    void clickMayDestroyTheButton();
    void checkBoxStandsAlone();
    void calendarChooses();
    void statesDiffer_data();
    void statesDiffer();
    void attributeOfState();
    void labelElides_data();
    void labelElides();
    void fontShowsChinese();
};

void tst_KitWidgets::initTestCase()
{
    UtilityHost::useTransientSettings();
    CustomStyle::install(*qApp);
}

void tst_KitWidgets::wheelNeedsTheFocus()
{
    QWidget window;
    auto *const layout = new QVBoxLayout(&window);
    auto *const combo = new CustomComboBox(1, 0, &window);
    auto *const box = new CustomSpinBox(2, &window);
    layout->addWidget(combo);
    layout->addWidget(box);
    combo->addItems({QStringLiteral("a"), QStringLiteral("b")});
    box->setValue(50);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QSignalSpy saved(box, &CustomSpinBox::SigSaveParam);
    combo->setFocus();
    QVERIFY(turnWheel(combo, -120));
    QVERIFY(!turnWheel(box, -120));
    QVERIFY(!turnWheel(box->cInterLineEdit(), -120));
    box->setFocus();
    QVERIFY(!turnWheel(combo, -120));
    QCOMPARE(saved.count(), 0);
    QVERIFY(turnWheel(box, -120));
    QCOMPARE(combo->currentIndex(), 1);
    QCOMPARE(box->value(), 49);
    QCOMPARE(saved.count(), 1);
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
    QTest::newRow("text of an editor that was left")
        << QVector<int>{TYPE, LEAVE} << false << 77 << "77" << 0;
    QTest::newRow("Escape keeps the text")
        << QVector<int>{TYPE, ESCAPE} << false << 10 << "10" << 0;
    QTest::newRow("step does not save") << QVector<int>{STEP_UP} << false << 11 << "11" << 1;
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
    auto *const other = new QLineEdit(&window);
    auto *const box = new CustomSpinBox(2, &window);
    layout->addWidget(other);
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
        case LEAVE:
            other->setFocus();
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

void tst_KitWidgets::checkBoxStandsAlone()
{
    QWidget parent;
    CustomCheckBox first(2, QStringLiteral("first"), &parent);
    CustomCheckBox second(4, &parent);
    QSignalSpy changed(&first, &CustomCheckBox::sigStateChanged);
    first.setChecked(true);
    second.setChecked(true);
    QVERIFY(first.isChecked() && second.isChecked());
    first.setChecked(false); // a group that is exclusive refuses
    QCOMPARE(changed, QList<QVariantList>({{QVariant(2)}, {QVariant(0)}}));

    second.setFixedSize(200, 32);
    second.setChecked(false);
    QTest::mouseClick(&second, Qt::LeftButton, Qt::NoModifier, QPoint(150, 16));
    QVERIFY2(!second.isChecked(), "the empty room beside the switch takes clicks");
    QTest::mouseClick(&second, Qt::LeftButton, Qt::NoModifier, QPoint(10, 16));
    QVERIFY(second.isChecked());
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

void tst_KitWidgets::statesDiffer_data()
{
    QTest::addColumn<Maker>("make");
    QTest::newRow("plain button") << Maker(
        [] { return new CustomPushButton(2, QStringLiteral("Text")); });
    QTest::newRow("check box") << Maker(
        [] { return new CustomCheckBox(2, QStringLiteral("Text")); });
    QTest::newRow("switch") << Maker([] { return new CustomCheckBox(4); });
    QTest::newRow("combo box") << Maker([] {
        auto *const combo = new CustomComboBox(1);
        combo->addItem(QStringLiteral("Text"));
        return combo;
    });
    QTest::newRow("spin box") << Maker([] { return new CustomSpinBox(2); });
    QTest::newRow("line edit") << Maker([] { return new CustomLineEdit(1); });
}

void tst_KitWidgets::statesDiffer()
{
    QFETCH(Maker, make);
    QWidget window;
    auto *const layout = new QVBoxLayout(&window);
    auto *const other = new QPushButton(&window);
    const QScopedPointer<QWidget> widget(make());
    layout->addWidget(other);
    layout->addWidget(widget.data());
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    other->setFocus();
    const QImage normal = widget->grab().toImage();
    QTest::keyClick(&window, Qt::Key_Tab);
    QVERIFY(widget->hasFocus());
    const QImage focused = widget->grab().toImage();
    QVERIFY2(focused != normal, "the keyboard's place cannot be seen");
    other->setFocus();
    widget->setAttribute(Qt::WA_UnderMouse);
    const QImage hover = widget->grab().toImage();
    QVERIFY2(hover != normal, "hovering cannot be seen");
    widget->setAttribute(Qt::WA_UnderMouse, false);
    widget->setEnabled(false);
    const QImage disabled = widget->grab().toImage();
    QVERIFY2(disabled != normal, "a disabled widget looks enabled");
    QVERIFY2(!contains(disabled, ACCENT), "a disabled widget shines in the accent colour");
    QVERIFY(widget->styleSheet().isEmpty());
}

void tst_KitWidgets::attributeOfState()
{
    const QColor own(10, 200, 30);
    const QColor grey(1, 120, 121);
    CustomPushButton button(2);
    const auto shows = [&button](const QColor &colour) {
        return imageOf(&button).pixel(50, 15) == colour.rgb();
    };
    button.cSetBackgroundColor(own);
    QVERIFY(shows(own));
    button.setAttribute(Qt::WA_UnderMouse);
    QVERIFY2(shows(own), "hovering falls back to the style's colour");
    button.setAttribute(Qt::WA_UnderMouse, false);
    button.setEnabled(false);
    QVERIFY2(!shows(own), "a disabled button looks enabled");
    button.cSetBackgroundColor(grey, Custom::STATUS_DISABLED);
    QVERIFY(shows(grey));
    button.setEnabled(true);
    QVERIFY(shows(own));
}

void tst_KitWidgets::labelElides_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("wrap");
    QTest::addColumn<bool>("elides");
    QTest::newRow("short text cut") << "ab" << false << false;
    QTest::newRow("long text cut") << QString("abc ").repeated(30) << false << true;
    QTest::newRow("markup shown as text")
        << "<b>bold</b> " + QString("abc ").repeated(30) << false << false;
    QTest::newRow("wrapped text") << QString("abc ").repeated(30) << true << false;
}

void tst_KitWidgets::labelElides()
{
    QFETCH(QString, text);
    QFETCH(bool, wrap);
    QFETCH(bool, elides);
    CustomLabel label(text);
    label.setWordWrap(wrap);
    label.resize(100, 30);
    const int least = label.minimumSizeHint().width();
    QVERIFY2(!elides || least < 120, "a long label keeps its window wide");
    label.show();
    QToolTip::hideText();
    QHelpEvent help(QEvent::ToolTip, QPoint(5, 5), label.mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(&label, &help);
    QCOMPARE(QToolTip::text() == text.toHtmlEscaped(), elides);
    QToolTip::hideText();
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
