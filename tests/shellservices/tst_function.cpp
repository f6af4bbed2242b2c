#include "ControlKit/CustomMessageBox.h"
#include "ShellServicesModule/QFunction.h"
#include "host/shellservices/ShellHost.h"

#include <QApplication>
#include <QSignalSpy>
#include <QTextBlock>
#include <QTextEdit>
#include <QtTest>

#include <thread>

class tst_Function : public QObject
{
    Q_OBJECT
private slots:
    void htmlShowsTheText_data();
    void htmlShowsTheText();
    void htmlHasColourAndWeight();
    void fragmentsJoinWithoutLoss();
    void messageLogKeepsTheLastLines();
    void messagesComeFromAnyThread();
    void promptsReachTheHost();
    void messageBoxes_data();
    void messageBoxes();
};

void tst_Function::htmlShowsTheText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");
    const auto same = [](const char *name, const QString &text) {
        QTest::newRow(name) << text << text;
    };
    same("markup is shown as markup", "<b>x</b> & \"y\" &lt; '");
    same("style sheet in a text", "</font><style>*{color:red}</style><script>");
    same("line ends vanish", "a\nb\n\nc");
    same("breaks at the edges vanish", "\n\na\n\n");
    same("runs of blanks shrink", "a  b   c    d");
    same("blanks at the edges vanish", "  a  ");
    same("blanks around a break vanish", "a  \n  b");
    same("ideographs", QString::fromUtf8("曝光时间 <µs>"));
    same("beyond the basic plane", QString::fromUtf8("\xF0\x9F\x93\xB7 ok"));
    same("entity typed out", "&nbsp;&#65;&amp;");
    same("placeholder", "100%1 %2");
    same("only a blank", " ");
    same("nothing", "");
    QTest::newRow("carriage returns double the lines") << "a\r\nb\rc"
                                                       << "a\nb\nc";
    QTest::newRow("Unicode line ends") << QString("a\u2028b\u2029c") << "a\nb\nc";
    QTest::newRow("tab shrinks to a blank") << "a\tb"
                                            << "a    b";
    QTest::newRow("frame marks of the document break it")
        << QString("a\uFDD0b\uFDD1c\uFFFCd") << QString("a\uFFFDb\uFFFDc\uFFFDd");
    QTest::newRow("control characters") << QString("a\x01\x1F"
                                                   "b")
                                        << QString("a\uFFFD\uFFFDb");
    QTest::newRow("zero ends the text") << QString(QLatin1String("a\0b", 3)) << QString("a\uFFFDb");
}

void tst_Function::htmlShowsTheText()
{
    QFETCH(QString, text);
    QFETCH(QString, shown);
    QTextEdit pane;
    pane.insertHtml(QFunction::stringToHtmlFilter(text, QColor(250, 250, 250), false));
    QCOMPARE(pane.toPlainText(), shown);
}

void tst_Function::htmlHasColourAndWeight()
{
    QTextEdit pane;
    pane.insertHtml(QFunction::stringToHtmlFilter("Title\n\n", QColor(255, 1, 128), true)
                    + QFunction::stringToHtmlFilter("body", QColor(250, 250, 250), false));
    QTextCursor cursor(pane.document());
    cursor.setPosition(1);
    QCOMPARE(cursor.charFormat().foreground().color(), QColor(255, 1, 128));
    QVERIFY(cursor.charFormat().fontWeight() >= QFont::Bold);
    cursor.movePosition(QTextCursor::End);
    QCOMPARE(cursor.charFormat().foreground().color(), QColor(250, 250, 250));
    QVERIFY(cursor.charFormat().fontWeight() < QFont::DemiBold);
}

void tst_Function::fragmentsJoinWithoutLoss()
{
    const QColor colour(250, 250, 250);
    const QStringList parts{"Node Name: ", "Gain",   "\n",      "  indented",
                            "\n\n",        "Type: ", " Float ", "\n"};
    QString strHtml;
    for (const QString &strPart : parts) {
        strHtml += QFunction::stringToHtmlFilter(strPart, colour, false);
    }
    QTextEdit pane;
    pane.insertHtml(strHtml);
    QCOMPARE(pane.toPlainText(), parts.join(QString()));
}

void tst_Function::messageLogKeepsTheLastLines()
{
    QSignalSpy logged(QFunction::Instance(), &QFunction::messageLogged);
    const int nLines = ShellHost::kMessageHistoryLength + 10;
    for (int i = 0; i < nLines; ++i) {
        QFunction::Instance()->InsertMessageLog(MESSAGE_LOG_ERROR, "Camera", QString::number(i));
    }
    QCOMPARE(logged.size(), nLines);
    QCOMPARE(logged.last().at(0).toInt(), int(MESSAGE_LOG_ERROR));
    QCOMPARE(logged.last().at(1).toString(), QString("Camera"));
    const QVector<MessageLogEntry> history = ShellHost::instance()->messageHistory();
    QCOMPARE(history.size(), ShellHost::kMessageHistoryLength);
    QCOMPARE(history.first().strText, QString("10"));
    QCOMPARE(history.last().strText, QString::number(nLines - 1));
    QVERIFY(history.first().time <= history.last().time);
}

void tst_Function::messagesComeFromAnyThread()
{
    QStringList received;
    QObject context;
    connect(QFunction::Instance(), &QFunction::messageLogged, &context,
            [&received](int, const QString &, const QString &text) {
                QCOMPARE(QThread::currentThread(), qApp->thread());
                received.append(text);
            });
    std::thread worker([] {
        QFunction::Instance()->InsertMessageLog(MESSAGE_LOG_INFO, QString(), "from a worker");
    });
    worker.join();
    QTRY_COMPARE(received, QStringList("from a worker"));
}

void tst_Function::promptsReachTheHost()
{
    QSignalSpy prompts(QFunction::Instance(), &QFunction::promptRequested);
    QFunction::Instance()->SendShowPromptSignal(5, 3, "<b>text</b>", "title", true);
    QCOMPARE(prompts.size(), 1);
    QCOMPARE(prompts.at(0),
             QVariantList({QVariant::fromValue(5L), 3, "<b>text</b>", "title", true}));
}

void tst_Function::messageBoxes_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("content");
    QTest::newRow("title and text") << "Failed"
                                    << "Gain"
                                    << "Failed"
                                    << "Gain";
    QTest::newRow("text alone lands in the title") << "Advice"
                                                   << ""
                                                   << ""
                                                   << "Advice";
}

void tst_Function::messageBoxes()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    QFETCH(QString, title);
    QFETCH(QString, content);
    QWidget parent;
    parent.show();
    QFunction::ShowMessage(&parent, first, second, QString(), 3, false);
    QPointer<CustomMessageBox> pBox = parent.findChild<CustomMessageBox *>();
    QVERIFY2(pBox, "the call blocked until the box had gone, or made none");
    QVERIFY(pBox->isVisible());
    QVERIFY(pBox->isModal());
    QCOMPARE(pBox->cTextTitle(), title);
    QCOMPARE(pBox->cContent(), content);
    pBox->close();
    QTRY_VERIFY(!pBox);
}

QTEST_MAIN(tst_Function)
#include "tst_function.moc"
