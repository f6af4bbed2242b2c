#include "ControlKit/CustomLoadingDialog.h"
#include "ControlKit/CustomMessageBox.h"
#include "host/controlkit/CustomStyle.h"
#include "host/utilitykit/UtilityHost.h"
#include "tests/support/WhenOpen.h"

#include <QApplication>
#include <QTextBrowser>
#include <QTranslator>
#include <QtTest>

namespace {

/// Gives every text with its language in front.
class PrefixTranslator : public QTranslator
{
public:
    QString translate(const char *context, const char *source, const char *, int) const override
    {
        return qstrcmp(context, "ControlKit") == 0
            ? QStringLiteral("CH ") + QString::fromLatin1(source)
            : QString();
    }
    bool isEmpty() const override { return false; }
};

QStringList buttonTexts(const QWidget *window)
{
    QStringList texts;
    for (const CustomPushButton *button : window->findChildren<CustomPushButton *>()) {
        texts += button->text();
    }
    texts.sort();
    return texts;
}

QWidget *loadingPanel(const QString &text)
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (widget->windowType() == Qt::Tool && widget->windowTitle() == text
            && widget->isVisible()) {
            return widget;
        }
    }
    return nullptr;
}

} // namespace

class tst_KitDialogs : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void answer_data();
    void answer();
    void parentDestroyedMeanwhile();
    void content_data();
    void content();
    void languageChange();
    void loadingByKey();
    void loadingOutlivesItsWindow();
};

void tst_KitDialogs::initTestCase()
{
    UtilityHost::useTransientSettings();
    CustomStyle::install(*qApp);
}

void tst_KitDialogs::answer_data()
{
    QTest::addColumn<int>("buttons");
    QTest::addColumn<QString>("act"); // a key, "close", or the text of a button
    QTest::addColumn<int>("answer");
    QTest::newRow("no") << 3 << "lang_controlkit_no" << 0;
    QTest::newRow("Enter is not yes") << 3 << "Return" << 1;
    QTest::newRow("closing counts as yes") << 3 << "close" << 0;
    QTest::newRow("Enter on cancel alone") << 2 << "Return" << 0;
}

void tst_KitDialogs::answer()
{
    QFETCH(int, buttons);
    QFETCH(QString, act);
    whenOpen<CustomMessageBox>([act](CustomMessageBox *box) {
        if (act == QLatin1String("close")) {
            box->close();
            return;
        }
        for (CustomPushButton *button : box->findChildren<CustomPushButton *>()) {
            if (button->text() == act) {
                QTest::mouseClick(button, Qt::LeftButton);
                return;
            }
        }
        QTest::keyClick(box, act == QLatin1String("Return") ? Qt::Key_Return : Qt::Key_Escape);
    });
    QTEST(CustomMessageBox::ask(nullptr, QStringLiteral("Sure?"), QStringLiteral("Title"), buttons),
          "answer");
    QVERIFY(!QApplication::activeModalWidget());
}

void tst_KitDialogs::parentDestroyedMeanwhile()
{
    auto *const parent = new QWidget;
    whenOpen<CustomMessageBox>([parent](CustomMessageBox *) { delete parent; });
    QCOMPARE(CustomMessageBox::warning(parent, QStringLiteral("Sure?"), QString(), 3), 0);
}

void tst_KitDialogs::content_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");
    QTest::newRow("markup") << "<b>bold</b> text"
                            << "bold text";
    QTest::newRow("word wider than the box") << QString(3000, 'x') << QString(3000, 'x');
}

void tst_KitDialogs::content()
{
    QFETCH(QString, text);
    CustomMessageBox box;
    box.cSetContent(text);
    box.cEndSetParameter();
    box.show();
    auto *const view = box.findChild<QTextBrowser *>();
    QTEST(view->toPlainText(), "shown");
    QCOMPARE(box.cContent(), text);
    QVERIFY2(view->document()->idealWidth() <= view->viewport()->width() + 1,
             "text is cut on the right");
    QVERIFY(box.width() <= 640 && box.height() <= 600);
    const bool fits = view->document()->size().height() <= view->viewport()->height();
    QVERIFY2(fits || view->verticalScrollBarPolicy() == Qt::ScrollBarAsNeeded, "text is cut below");
}

void tst_KitDialogs::languageChange()
{
    CustomMessageBox box;
    box.cSetButtons(3);
    CustomMainWindow window;
    window.cSetButtons(3);
    PrefixTranslator translator;
    QCoreApplication::installTranslator(&translator);
    QCoreApplication::sendPostedEvents(); // the language change
    const QStringList boxTexts = buttonTexts(&box);
    const QStringList windowTexts = buttonTexts(&window);
    QCoreApplication::removeTranslator(&translator);
    QCOMPARE(boxTexts, QStringList({"CH lang_controlkit_no", "CH lang_controlkit_yes"}));
    QCOMPARE(windowTexts, QStringList({"CH lang_controlkit_cancel", "CH lang_controlkit_ok"}));
}

void tst_KitDialogs::loadingByKey()
{
    CustomLoadingDialog::hideLoading(7);
    CustomLoadingDialog::showLoading(QStringLiteral("first"), 1);
    CustomLoadingDialog::showLoading(QStringLiteral("other camera"), 4);
    CustomLoadingDialog::showLoading(QStringLiteral("second"), 1);
    QVERIFY(!loadingPanel(QStringLiteral("first")));
    QWidget *const panel = loadingPanel(QStringLiteral("second"));
    QVERIFY(panel && panel->windowModality() == Qt::NonModal);
    CustomLoadingDialog::hideLoading(1);
    CustomLoadingDialog::hideLoading(1);
    QVERIFY(!loadingPanel(QStringLiteral("second")));
    QVERIFY(!CustomLoadingDialog::isLoading(1));
    QVERIFY(CustomLoadingDialog::isLoading(4));
    CustomLoadingDialog::showLoading(QStringLiteral("again"), 1);
    QVERIFY(loadingPanel(QStringLiteral("again")));
    CustomLoadingDialog::hideLoading(1);
    CustomLoadingDialog::hideLoading(4);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!loadingPanel(QStringLiteral("other camera")));
}

void tst_KitDialogs::loadingOutlivesItsWindow()
{
    auto *const window = new QWidget;
    window->setGeometry(200, 200, 600, 400);
    window->show();
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window));
    CustomLoadingDialog::showLoading(QStringLiteral("busy"), 2);
    const QWidget *const panel = loadingPanel(QStringLiteral("busy"));
    QVERIFY((panel->geometry().center() - window->geometry().center()).manhattanLength() <= 2);
    delete window;
    QVERIFY(!CustomLoadingDialog::isLoading(2));
    CustomLoadingDialog::hideLoading(2);
    CustomLoadingDialog::showLoading(QStringLiteral("without a window"), 2);
    QVERIFY(loadingPanel(QStringLiteral("without a window")));
    CustomLoadingDialog::hideLoading(2);
}

QTEST_MAIN(tst_KitDialogs)
#include "tst_kitdialogs.moc"
