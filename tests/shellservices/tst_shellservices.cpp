#include "ControlKit/CustomMessageBox.h"
#include "ShellServicesModule/COMMONINTERFACE.h"
#include "ShellServicesModule/QFunction.h"
#include "ShellServicesModule/QLocalCfg.h"
#include "ShellServicesModule/QVexaEventBus.h"
#include "ShellServicesModule/QVexaProgressDialog.h"
#include "ShellServicesModule/VexaPropertyComboBox.h"
#include "host/shellservices/ShellHost.h"
#include "host/translations/Translations.h"

#include <QApplication>
#include <QCloseEvent>
#include <QProgressBar>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextEdit>
#include <QtTest>
#include <qtestspontaneevent.h>

#include <atomic>
#include <memory>
#include <thread>

/// What the module takes from its shell: the state and the settings, messages, and the widgets beside the tree.
class tst_ShellServices : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void theMainWindowMayGo();
    void modifiedCameras_data();
    void modifiedCameras();
    void busCrossesThreads();
    void levelsAreKeptInRange();
    void valuesOutliveTheRun();
    void damagedFilesGiveDefaults_data();
    void damagedFilesGiveDefaults();
    void anUnusableFileIsSaid();
    void readersMeetAWriter();
    void htmlShowsTheText_data();
    void htmlShowsTheText();
    void fragmentsJoinWithoutLoss();
    void messageLogKeepsTheLastLines();
    void messagesComeFromAnyThread();
    void messageBoxes();
    void comboSelectsByData();
    void progress_data();
    void progress();
    void theUserCannotEndATransfer();
};

void tst_ShellServices::initTestCase()
{
    ShellHost::useTransientSettings();
    installLanguage(*qApp, QStringLiteral("ENG"));
}

void tst_ShellServices::theMainWindowMayGo()
{
    auto pWindow = std::make_unique<QWidget>();
    ShellHost::instance()->setMainWindow(pWindow.get());
    QCOMPARE(COMMONINTERFACE::mainWindow(), pWindow.get());
    pWindow.reset();
    QVERIFY(!COMMONINTERFACE::mainWindow());
}

void tst_ShellServices::modifiedCameras_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<bool>("isTold");
    QTest::newRow("added") << "add c" << QStringList({"a", "b", "c"}) << true;
    QTest::newRow("added twice") << "add a" << QStringList({"a", "b"}) << false;
    QTest::newRow("nameless camera listed") << "add " << QStringList({"a", "b"}) << false;
    QTest::newRow("removed") << "remove a" << QStringList({"b"}) << true;
    QTest::newRow("rename loses the mark") << "rename a z" << QStringList({"z", "b"}) << true;
    QTest::newRow("rename to a listed name doubles it")
        << "rename a b" << QStringList({"b"}) << true;
}

void tst_ShellServices::modifiedCameras()
{
    QFETCH(QString, action);
    QFETCH(QStringList, names);
    QFETCH(bool, isTold);
    ShellHost *const pHost = ShellHost::instance();
    for (const QString &strName : pHost->modifiedCameras()) {
        COMMONINTERFACE::RemoveCurrentCamModified(strName);
    }
    COMMONINTERFACE::AddCurrentCamModified("a");
    COMMONINTERFACE::AddCurrentCamModified("b");
    QSignalSpy changes(pHost, &ShellHost::modifiedCamerasChanged);
    const QStringList words = action.split(' ');
    if (words.first() == "add") {
        COMMONINTERFACE::AddCurrentCamModified(words.at(1));
    } else if (words.first() == "remove") {
        COMMONINTERFACE::RemoveCurrentCamModified(words.at(1));
    } else {
        COMMONINTERFACE::CamModifedNameChanged(words.at(1), words.at(2));
    }
    QCOMPARE(pHost->modifiedCameras(), names);
    QCOMPARE(changes.size(), isTold ? 1 : 0);
}

void tst_ShellServices::busCrossesThreads()
{
    // By text, as a client may connect: the argument types must be known by name.
    QSignalSpy nodes(QVexaEventBus::Instance(),
                     SIGNAL(SigVexaEventUpdateFeatureTree2(long int, QList<QString>)));
    QObject context;
    QStringList received;
    connect(QVexaEventBus::Instance(), &QVexaEventBus::SigVexaEventUpdateFeatureTree2, &context,
            [&received](long int, const QList<QString> &names) { received = names; });
    std::thread worker([] {
        emit QVexaEventBus::Instance()->SigVexaEventUpdateFeatureTree2(4, {"Gain", "Width"});
    });
    worker.join();
    QTRY_COMPARE(received, QStringList({"Gain", "Width"}));
    QVERIFY(QMetaType::type("QList<QString>") != QMetaType::UnknownType);
    QVERIFY(nodes.isValid());
}

void tst_ShellServices::levelsAreKeptInRange()
{
    ShellHost::useTransientSettings();
    for (const int level : {0, 2, -1, 3}) {
        QLocalCfg::Instance()->SetUserLevel(level);
        QCOMPARE(QLocalCfg::Instance()->GetUserLevel(), level == 0 ? 0 : 2);
    }
}

void tst_ShellServices::valuesOutliveTheRun()
{
    QTemporaryDir folder;
    const QString strPath = folder.filePath("deeper/shell.ini");
    QVERIFY(ShellHost::useSettingsFile(strPath));
    QLocalCfg::Instance()->SetUserLevel(1);
    QLocalCfg::Instance()->m_strPropertyLan = QStringLiteral("CH");
    ShellHost::useTransientSettings();
    QCOMPARE(QLocalCfg::Instance()->GetUserLevel(), 2);
    QCOMPARE(QLocalCfg::Instance()->GetPropertyLan(), QString("ENG"));
    QLocalCfg::Instance()->SetUserLevel(0);
    QVERIFY(ShellHost::useSettingsFile(strPath));
    QCOMPARE(QLocalCfg::Instance()->GetUserLevel(), 1);
    QCOMPARE(QLocalCfg::Instance()->GetPropertyLan(), QString("CH"));
}

void tst_ShellServices::damagedFilesGiveDefaults_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("codeFormat");
    QTest::newRow("words for numbers")
        << QByteArray("[User]\nLevel=guru\n[Property]\nLanguage=klingon\n") << "";
    QTest::newRow("bytes of another file") << QByteArray("\x7f"
                                                         "ELF\x01\x02\xff\xfe\n[[[")
                                           << "";
    QTest::newRow("codec kept") << QByteArray("[Property]\nCodeFormat=GB18030\n") << "GB18030";
}

void tst_ShellServices::damagedFilesGiveDefaults()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, codeFormat);
    QTemporaryDir folder;
    QFile file(folder.filePath("shell.ini"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();
    ShellHost::useSettingsFile(file.fileName());
    QCOMPARE(QLocalCfg::Instance()->GetUserLevel(), 2);
    QCOMPARE(QLocalCfg::Instance()->GetPropertyLan(), QString("ENG"));
    QCOMPARE(QLocalCfg::Instance()->GetCodeFormat(), codeFormat);
}

void tst_ShellServices::anUnusableFileIsSaid()
{
    QTemporaryDir folder;
    QFile blocker(folder.filePath("file"));
    QVERIFY(blocker.open(QIODevice::WriteOnly));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("settings file .* cannot be"));
    ShellHost::useSettingsFile(folder.filePath("file/shell.ini")); // its folder is a file
    QLocalCfg::Instance()->SetUserLevel(0);
    QCOMPARE(QLocalCfg::Instance()->GetUserLevel(), 0);
}

void tst_ShellServices::readersMeetAWriter()
{
    ShellHost::useTransientSettings();
    std::atomic<bool> bStop{false};
    bool bWhole = true;
    std::thread reader([&] {
        while (!bStop) {
            const QString strLanguage = QLocalCfg::Instance()->m_strPropertyLan;
            bWhole = bWhole && (strLanguage == "CH" || strLanguage == "ENG");
        }
    });
    for (int i = 0; i < 20000; ++i) {
        QLocalCfg::Instance()->m_strPropertyLan = QString(i % 2 ? "CH" : "ENG");
    }
    bStop = true;
    reader.join();
    QVERIFY(bWhole);
}

void tst_ShellServices::htmlShowsTheText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");
    const auto same = [](const char *name, const QString &text) {
        QTest::newRow(name) << text << text;
    };
    same("markup is shown as markup", "<b>x</b> & \"y\" &lt; '");
    same("style sheet in a text", "</font><style>*{color:red}</style><script>");
    same("breaks at the edges vanish", "\n\na\n\n");
    same("blanks at the edges vanish", "  a  ");
    same("blanks around a break vanish", "a  \n  b");
    same("ideographs", QString::fromUtf8("曝光时间 <µs>"));
    same("beyond the basic plane", QString::fromUtf8("\xF0\x9F\x93\xB7 ok"));
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

void tst_ShellServices::htmlShowsTheText()
{
    QFETCH(QString, text);
    QFETCH(QString, shown);
    QTextEdit pane;
    pane.insertHtml(QFunction::stringToHtmlFilter(text, QColor(250, 250, 250), false));
    QCOMPARE(pane.toPlainText(), shown);
}

void tst_ShellServices::fragmentsJoinWithoutLoss()
{
    const QColor colour(250, 250, 250);
    const QStringList parts{"Node Name: ", "Gain",   "\n",      "  indented",
                            "\n\n",        "Type: ", " Float ", "\n"};
    QString strHtml;
    for (const QString &strPart : parts) {
        strHtml += QFunction::stringToHtmlFilter(strPart, colour, false);
    }
    QTextEdit pane;
    pane.insertHtml(QFunction::stringToHtmlFilter("Title\n", QColor(255, 1, 128), true) + strHtml);
    QCOMPARE(pane.toPlainText(), "Title\n" + parts.join(QString()));
    QTextCursor cursor(pane.document());
    cursor.setPosition(1);
    QCOMPARE(cursor.charFormat().foreground().color(), QColor(255, 1, 128));
    QVERIFY(cursor.charFormat().fontWeight() >= QFont::Bold);
    cursor.setPosition(8);
    QCOMPARE(cursor.charFormat().foreground().color(), colour);
    QVERIFY(cursor.charFormat().fontWeight() < QFont::DemiBold);
}

void tst_ShellServices::messageLogKeepsTheLastLines()
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
}

void tst_ShellServices::messagesComeFromAnyThread()
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

void tst_ShellServices::messageBoxes()
{
    QWidget parent;
    parent.show();
    QFunction::ShowMessage(&parent, "Failed", "Gain", QString(), 3, false);
    QPointer<CustomMessageBox> pBox = parent.findChild<CustomMessageBox *>();
    QVERIFY2(pBox, "the call blocked until the box had gone, or made none");
    QVERIFY(pBox->isVisible());
    QVERIFY(pBox->isModal());
    QCOMPARE(pBox->cTextTitle(), QString("Failed"));
    QCOMPARE(pBox->cContent(), QString("Gain"));
    pBox->close();
    QTRY_VERIFY(!pBox);
    QFunction::ShowMessage(&parent, "Advice", QString(), QString(), 3, false);
    pBox = parent.findChild<CustomMessageBox *>();
    QVERIFY(pBox && pBox->cTextTitle().isEmpty()); // a text alone is no title
    QCOMPARE(pBox->cContent(), QString("Advice"));
}

void tst_ShellServices::comboSelectsByData()
{
    VexaPropertyComboBox combo;
    combo.addItem("Guru", 0);
    combo.addItem("Expert", 1);
    combo.addItem("None");
    combo.SetCurrentSel(1);
    for (const QVariant &unknown : {QVariant(9), QVariant("Guru")}) {
        combo.SetCurrentSel(unknown);
        QCOMPARE(combo.currentIndex(), 1);
    }
    combo.SetCurrentSel(0LL); // a 64-bit number of the same value
    QCOMPARE(combo.currentIndex(), 0);
    combo.SetCurrentSel(QVariant()); // the row without data
    QCOMPARE(combo.currentIndex(), 2);
}

void tst_ShellServices::progress_data()
{
    QTest::addColumn<qint64>("total");
    QTest::addColumn<qint64>("current");
    QTest::addColumn<bool>("isBusy");
    QTest::addColumn<double>("share");
    const qint64 nHuge = Q_INT64_C(1) << 40;
    QTest::newRow("beyond 32 bits") << nHuge << nHuge / 4 << false << 0.25;
    QTest::newRow("largest number overflows")
        << std::numeric_limits<qint64>::max() << std::numeric_limits<qint64>::max() << false << 1.0;
    QTest::newRow("unknown total divides by zero") << Q_INT64_C(0) << Q_INT64_C(20) << true << 0.0;
    QTest::newRow("current unknown") << Q_INT64_C(10) << Q_INT64_C(-1) << false << 0.0;
}

void tst_ShellServices::progress()
{
    QFETCH(qint64, total);
    QFETCH(qint64, current);
    QFETCH(bool, isBusy);
    QFETCH(double, share);
    QVexaProgressDialog dialog(true);
    dialog.setTotalBytes(total);
    dialog.setCurBytes(current);
    const auto *pBar = dialog.findChild<QProgressBar *>();
    QVERIFY(pBar);
    QCOMPARE(pBar->maximum() == pBar->minimum(), isBusy);
    if (!isBusy) {
        QCOMPARE(double(pBar->value()) / pBar->maximum(), share);
    }
}

void tst_ShellServices::theUserCannotEndATransfer()
{
    QVexaProgressDialog dialog(true);
    dialog.setTotalBytes(100);
    dialog.setCurBytes(50);
    dialog.show();
    const auto closeByUser = [&dialog] {
        QCloseEvent close;
        QSpontaneKeyEvent::setSpontaneous(&close);
        qApp->notify(&dialog, &close); // sendEvent would make it the program's own
        return close.isAccepted();
    };
    QTest::keyClick(&dialog, Qt::Key_Escape);
    QVERIFY(dialog.isVisible());
    QVERIFY(!closeByUser());
    dialog.setCurBytes(100);
    QTest::keyClick(&dialog, Qt::Key_Escape);
    QVERIFY(!dialog.isVisible());

    dialog.initInfo(false);
    dialog.show();
    QVERIFY(!closeByUser());
    dialog.close(); // the program ends it at any time
    QVERIFY(!dialog.isVisible());
}

QTEST_MAIN(tst_ShellServices)
#include "tst_shellservices.moc"
