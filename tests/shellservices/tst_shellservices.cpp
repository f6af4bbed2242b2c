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
    void modifiedCameras();
    void busCrossesThreads();
    void valuesOutliveTheRun();
    void damagedFilesGiveDefaults_data();
    void damagedFilesGiveDefaults();
    void anUnusableFileIsSaid();
    void readersMeetAWriter();
    void htmlShowsTheText_data();
    void htmlShowsTheText();
    void fragmentsJoinWithoutLoss();
    void messageLogKeepsTheLastLines();
    void messageBoxes();
    void comboSelectsByData();
    void progress();
    void theUserCannotEndATransfer();
};

void tst_ShellServices::initTestCase()
{
    ShellHost::useTransientSettings();
    installLanguage(*qApp, QStringLiteral("ENG"));
}

void tst_ShellServices::modifiedCameras()
{
    COMMONINTERFACE::AddCurrentCamModified("a");
    COMMONINTERFACE::AddCurrentCamModified("b");
    ShellHost *const pHost = ShellHost::instance();
    QSignalSpy changes(pHost, &ShellHost::modifiedCamerasChanged);
    COMMONINTERFACE::AddCurrentCamModified("a"); // twice
    COMMONINTERFACE::AddCurrentCamModified(QString());
    QCOMPARE(changes.size(), 0);
    COMMONINTERFACE::CamModifedNameChanged("a", "z");
    QCOMPARE(pHost->modifiedCameras(), QStringList({"z", "b"}));
    COMMONINTERFACE::CamModifedNameChanged("z", "b"); // a name that is there already
    QCOMPARE(pHost->modifiedCameras(), QStringList("b"));
    COMMONINTERFACE::RemoveCurrentCamModified("b");
    QCOMPARE(pHost->modifiedCameras(), QStringList());
    QCOMPARE(changes.size(), 3);
}

void tst_ShellServices::busCrossesThreads()
{
    // By text, as a client may connect: the argument types must be known by name.
    QSignalSpy nodes(QVexaEventBus::Instance(),
                     SIGNAL(SigVexaEventUpdateFeatureTree2(long int, QList<QString>)));
    std::thread worker([] {
        emit QVexaEventBus::Instance()->SigVexaEventUpdateFeatureTree2(4, {"Gain", "Width"});
    });
    worker.join();
    QTRY_COMPARE(nodes.size(), 1);
    QCOMPARE(nodes.at(0).at(1).value<QList<QString>>(), QList<QString>({"Gain", "Width"}));
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
    QTest::newRow("level above the table") << QByteArray("[User]\nLevel=3\n") << "";
    QTest::newRow("level below the table") << QByteArray("[User]\nLevel=-1\n") << "";
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
    same("beyond the basic plane", QString::fromUtf8("\xF0\x9F\x93\xB7 ok"));
    same("nothing", "");
    QTest::newRow("carriage returns double the lines") << "a\r\nb\rc"
                                                       << "a\nb\nc";
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
    QStringList received;
    QObject context;
    connect(QFunction::Instance(), &QFunction::messageLogged, &context,
            [&received](int, const QString &, const QString &text) {
                QCOMPARE(QThread::currentThread(), qApp->thread());
                received.append(text);
            });
    const int nLines = ShellHost::kMessageHistoryLength + 10;
    std::thread worker([nLines] {
        for (int i = 0; i < nLines; ++i) {
            QFunction::Instance()->InsertMessageLog(MESSAGE_LOG_ERROR, "Camera",
                                                    QString::number(i));
        }
    });
    worker.join();
    QTRY_COMPARE(received.size(), nLines);
    const QVector<MessageLogEntry> history = ShellHost::instance()->messageHistory();
    QCOMPARE(history.size(), ShellHost::kMessageHistoryLength);
    QCOMPARE(history.first().strText, QString("10"));
    QCOMPARE(history.last().strText, QString::number(nLines - 1));
}

void tst_ShellServices::messageBoxes()
{
    QWidget parent;
    parent.show();
    QFunction::ShowMessage(&parent, "Failed", "Gain", QString(), 3, false);
    QPointer<CustomMessageBox> pBox = parent.findChild<CustomMessageBox *>();
    QVERIFY2(pBox, "the call blocked until the box had gone, or made none");
    QVERIFY(pBox->isVisible());
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

void tst_ShellServices::progress()
{
    const qint64 nMost = std::numeric_limits<qint64>::max();
    const std::tuple<qint64, qint64, double> rows[] = {
        {nMost, nMost, 1.0}, {nMost / 8, nMost / 32, 0.25}, {10, -1, 0.0}};
    QVexaProgressDialog dialog(true);
    const auto *pBar = dialog.findChild<QProgressBar *>();
    for (const auto &[nTotal, nCurrent, dShare] : rows) {
        dialog.setTotalBytes(nTotal);
        dialog.setCurBytes(nCurrent);
        QCOMPARE(double(pBar->value()) / pBar->maximum(), dShare);
    }
    dialog.setTotalBytes(0); // unknown
    dialog.setCurBytes(20);
    QCOMPARE(pBar->maximum(), pBar->minimum());
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
