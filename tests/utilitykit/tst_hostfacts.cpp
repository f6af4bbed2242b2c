#include "UtilityKit/VexaInterface.h"
#include "host/utilitykit/UtilityHost.h"

#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include <limits>

namespace {

QString settingsFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QStringLiteral("/vexa-workbench/utility.ini");
}

QString storedLanguage()
{
    return QSettings(settingsFile(), QSettings::IniFormat)
        .value(QStringLiteral("Client/Language"))
        .toString();
}

} // namespace

class tst_HostFacts : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanupTestCase() { QFile::remove(settingsFile()); }
    void languageIsKept();
    void neutral();
    void transientLeavesTheFileAlone();
    void diskFull_data();
    void diskFull();
    void dataPath_data();
    void dataPath();
    void version()
    {
        QVERIFY(QRegExp(QStringLiteral("\\d+\\.\\d+\\.\\d+"))
                    .exactMatch(VexaInterface::softwareVersion()));
    }

private:
    QTemporaryDir m_folder;
};

void tst_HostFacts::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QFile::remove(settingsFile());
}

void tst_HostFacts::languageIsKept()
{
    QCOMPARE(VexaInterface::language(false), QStringLiteral("ENG"));
    UtilityHost::setLanguage(QStringLiteral("CH"));
    QCOMPARE(VexaInterface::language(false), QStringLiteral("CH"));
    QCOMPARE(storedLanguage(), QStringLiteral("CH"));

    // Another program of the client changes it: seen with `reload` only.
    QSettings(settingsFile(), QSettings::IniFormat)
        .setValue(QStringLiteral("Client/Language"), QStringLiteral("ENG"));
    QCOMPARE(VexaInterface::language(false), QStringLiteral("CH"));
    QCOMPARE(VexaInterface::language(true), QStringLiteral("ENG"));

    UtilityHost::setLanguage(QStringLiteral("klingon"));
    QCOMPARE(VexaInterface::language(true), QStringLiteral("ENG"));
}

void tst_HostFacts::neutral()
{
    QVERIFY(!VexaInterface::isNeutralVision());
    UtilityHost::setNeutralVision(true);
    QVERIFY(VexaInterface::isNeutralVision());
    UtilityHost::setNeutralVision(false);
}

void tst_HostFacts::transientLeavesTheFileAlone()
{
    UtilityHost::setLanguage(QStringLiteral("CH"));
    UtilityHost::useTransientSettings();
    QCOMPARE(VexaInterface::language(true), QStringLiteral("ENG"));
    UtilityHost::setLanguage(QStringLiteral("CH"));
    UtilityHost::setLanguage(QStringLiteral("ENG"));
    QCOMPARE(storedLanguage(), QStringLiteral("CH"));
}

void tst_HostFacts::diskFull_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<bool>("full");
    QTest::addColumn<bool>("known");
    const qint64 endless = std::numeric_limits<qint64>::max();
    const QString folder = m_folder.path();
    QTest::newRow("room") << folder << qint64(1) << false << true;
    QTest::newRow("never room enough") << folder << endless << true << true;
    QTest::newRow("file that is yet to be written")
        << folder + "/a/b/new.vxf" << endless << true << true;
    QTest::newRow("no path") << QString() << endless << false << false;
}

void tst_HostFacts::diskFull()
{
    QFETCH(QString, path);
    QFETCH(qint64, bytes);
    QFETCH(bool, full);
    QFETCH(bool, known);
    bool ok = !known;
    QCOMPARE(VexaInterface::IsDiskFull(path, bytes, &ok), full);
    QCOMPARE(ok, known);
    QCOMPARE(VexaInterface::IsDiskFull(path, bytes, nullptr), full);
}

void tst_HostFacts::dataPath_data()
{
    QTest::addColumn<QByteArray>("given");
    QTest::addColumn<QString>("expected");
    const QString folder = m_folder.path();
    QTest::newRow("slash at the end") << QByteArray(folder.toUtf8() + "/data/") << folder + "/data";
    QTest::newRow("folders are made")
        << QByteArray(folder.toUtf8() + "/x/y/z") << folder + "/x/y/z";
    QTest::newRow("from the standard place")
        << QByteArray() << QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}

void tst_HostFacts::dataPath()
{
    QFETCH(QByteArray, given);
    QFETCH(QString, expected);
    qputenv("VEXA_DATA_PATH", given);
    QCOMPARE(VexaInterface::programDataPath(), expected);
    QVERIFY(QFileInfo(expected).isDir());
    qunsetenv("VEXA_DATA_PATH");
}

QTEST_GUILESS_MAIN(tst_HostFacts)
#include "tst_hostfacts.moc"
