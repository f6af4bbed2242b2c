#include "ControlKit/CustomCheckBox.h"
#include "ControlKit/CustomComboBox.h"
#include "ControlKit/CustomLabel.h"
#include "ControlKit/CustomLineEdit.h"
#include "ControlKit/CustomPushButton.h"
#include "ControlKit/CustomSpinBox.h"
#include "ControlKit/CustomWidget.h"
#include "host/controlkit/CustomStyle.h"
#include "host/utilitykit/UtilityHost.h"

#include <QApplication>
#include <QBoxLayout>
#include <QFontDatabase>
#include <QRawFont>
#include <QScopedPointer>
#include <QToolTip>
#include <QtTest>

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

} // namespace
Q_DECLARE_METATYPE(Maker)

class tst_KitLook : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void statesDiffer_data();
    void statesDiffer();
    void attributeOfState();
    void labelElides_data();
    void labelElides();
    void fontShowsChinese();
};

void tst_KitLook::initTestCase()
{
    UtilityHost::useTransientSettings();
    CustomStyle::install(*qApp);
}

void tst_KitLook::statesDiffer_data()
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

void tst_KitLook::statesDiffer()
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

void tst_KitLook::attributeOfState()
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

void tst_KitLook::labelElides_data()
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

void tst_KitLook::labelElides()
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

void tst_KitLook::fontShowsChinese()
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

QTEST_MAIN(tst_KitLook)
#include "tst_kitlook.moc"
