#include "ShellServicesModule/QLocalCfg.h"
#include "host/shellservices/ShellHost.h"

#include <QSettings>
#include <QTemporaryDir>
#include <QtConcurrent>
#include <QtTest>

class tst_LocalCfg : public QObject
{
    Q_OBJECT
private slots:
    void levelsAreKeptInRange_data();
    void levelsAreKeptInRange();
    void valuesOutliveTheRun();
    void damagedFilesGiveDefaults_data();
    void damagedFilesGiveDefaults();
    void transientSettingsTouchNoFile();
    void anUnusableFileIsSaid();
    void readersMeetAWriter();
};

void tst_LocalCfg::levelsAreKeptInRange_data()
{
    QTest::addColumn<int>("set");
    QTest::addColumn<int>("kept");
    QTest::newRow("guru") << 0 << 0;
    QTest::newRow("expert") << 1 << 1;
    QTest::newRow("beginner") << 2 << 2;
    QTest::newRow("negative shows all features") << -1 << 2;
    QTest::newRow("unknown level shows no feature") << 3 << 2;
}

void tst_LocalCfg::levelsAreKeptInRange()
{
    QFETCH(int, set);
    QFETCH(int, kept);
    ShellHost::useTransientSettings();
    QLocalCfg::Instance()->SetUserLevel(set);
    QCOMPARE(QLocalCfg::Instance()->GetUserLevel(), kept);
}

void tst_LocalCfg::valuesOutliveTheRun()
{
    QTemporaryDir folder;
    const QString strPath = folder.filePath("deeper/shell.ini");
    QVERIFY(ShellHost::useSettingsFile(strPath));
    QLocalCfg::Instance()->SetUserLevel(1);
    QLocalCfg::Instance()->m_strPropertyLan = QStringLiteral("CH");
    ShellHost::useTransientSettings();
    QCOMPARE(QLocalCfg::Instance()->GetUserLevel(), 2);
    QCOMPARE(QLocalCfg::Instance()->GetPropertyLan(), QString("ENG"));
    QVERIFY(ShellHost::useSettingsFile(strPath));
    QCOMPARE(QLocalCfg::Instance()->GetUserLevel(), 1);
    QCOMPARE(QLocalCfg::Instance()->GetPropertyLan(), QString("CH"));
    QCOMPARE(QString(QLocalCfg::Instance()->m_strPropertyLan), QString("CH"));
}

void tst_LocalCfg::damagedFilesGiveDefaults_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("codeFormat");
    QTest::newRow("words for numbers")
        << QByteArray("[User]\nLevel=guru\n[Property]\nLanguage=klingon\n") << "";
    QTest::newRow("number out of range") << QByteArray("[User]\nLevel=99\n") << "";
    QTest::newRow("bytes of another file") << QByteArray("\x7f"
                                                         "ELF\x01\x02\xff\xfe\n[[[")
                                           << "";
    QTest::newRow("codec kept") << QByteArray("[Property]\nCodeFormat=GB18030\n") << "GB18030";
}

void tst_LocalCfg::damagedFilesGiveDefaults()
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

void tst_LocalCfg::transientSettingsTouchNoFile()
{
    QTemporaryDir folder;
    const QString strPath = folder.filePath("shell.ini");
    ShellHost::useSettingsFile(strPath);
    QLocalCfg::Instance()->SetUserLevel(1);
    ShellHost::useTransientSettings();
    QLocalCfg::Instance()->SetUserLevel(0);
    QLocalCfg::Instance()->m_strPropertyLan = QStringLiteral("CH");
    const QSettings kept(strPath, QSettings::IniFormat);
    QCOMPARE(kept.value("User/Level").toInt(), 1);
    QVERIFY(!kept.contains("Property/Language"));
}

void tst_LocalCfg::anUnusableFileIsSaid()
{
    QTemporaryDir folder;
    QFile blocker(folder.filePath("file"));
    QVERIFY(blocker.open(QIODevice::WriteOnly));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("settings file .* cannot be"));
    ShellHost::useSettingsFile(folder.filePath("file/shell.ini")); // its folder is a file
    QLocalCfg::Instance()->SetUserLevel(0);
    QCOMPARE(QLocalCfg::Instance()->GetUserLevel(), 0);
}

void tst_LocalCfg::readersMeetAWriter()
{
    ShellHost::useTransientSettings();
    std::atomic<bool> bStop{false};
    QFuture<bool> reader = QtConcurrent::run([&bStop] {
        bool bWhole = true;
        while (!bStop) {
            const QString strLanguage = QLocalCfg::Instance()->m_strPropertyLan;
            bWhole = bWhole && (strLanguage == "CH" || strLanguage == "ENG");
        }
        return bWhole;
    });
    for (int i = 0; i < 20000; ++i) {
        QLocalCfg::Instance()->m_strPropertyLan = QString(i % 2 ? "CH" : "ENG");
    }
    bStop = true;
    QVERIFY(reader.result());
}

QTEST_GUILESS_MAIN(tst_LocalCfg)
#include "tst_localcfg.moc"
