#include "ShellServicesModule/QFunction.h"
#include "ShellServicesModule/QLocalCfg.h"
#include "ShellServicesModule/QVexaEventBus.h"
#include "ShellServicesModule/QVexaProgressDialog.h"
#include "host/shellservices/ShellHost.h"
#include "host/translations/Translations.h"

#include <QApplication>
#include <QCloseEvent>
#include <QSignalSpy>
#include <QTemporaryDir>
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
    void busCrossesThreads();
    void valuesOutliveTheRun();
    void damagedFilesGiveDefaults_data();
    void damagedFilesGiveDefaults();
    void readersMeetAWriter();
    void htmlShowsTheText_data();
    void htmlShowsTheText();
    void messageLogKeepsTheLastLines();
    void theUserCannotEndATransfer();
};

void tst_ShellServices::initTestCase()
{
    ShellHost::useTransientSettings();
    installLanguage(*qApp, QStringLiteral("ENG"));
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
    QTest::newRow("words for numbers")
        << QByteArray("[User]\nLevel=guru\n[Property]\nLanguage=klingon\n");
    QTest::newRow("level below the table") << QByteArray("[User]\nLevel=-1\n");
    QTest::newRow("bytes of another file") << QByteArray("\x7f"
                                                         "ELF\x01\x02\xff\xfe\n[[[");
}

void tst_ShellServices::damagedFilesGiveDefaults()
{
    QFETCH(QByteArray, content);
    QTemporaryDir folder;
    QFile file(folder.filePath("shell.ini"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();
    ShellHost::useSettingsFile(file.fileName());
    QCOMPARE(QLocalCfg::Instance()->GetUserLevel(), 2);
    QCOMPARE(QLocalCfg::Instance()->GetPropertyLan(), QString("ENG"));
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
    same("breaks at the edges vanish", "\n\na\n\n");
    QTest::newRow("carriage returns double the lines") << "a\r\nb\rc"
                                                       << "a\nb\nc";
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
