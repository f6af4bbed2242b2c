#include "UtilityKit/VexaInterface.h"
#include "host/utilitykit/FileDialogs.h"
#include "host/utilitykit/UtilityHost.h"
#include "tests/support/WhenOpen.h"

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include <limits>
#include <thread>

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

QString chooseToSave(const QString &name, const QString &filter)
{
    return VexaInterface::getSaveFileName(nullptr, QString(), name, filter);
}

} // namespace

class tst_UtilityKit : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void languageIsKept();
    void diskFull();
    void dataPath();
    void numberOfAText_data();
    void numberOfAText();
    void textOfANumber();
    void formula_data();
    void formula();
    void formulaErrorIsOfTheThread();
    void saveDialog_data();
    void saveDialog();
    void chosenFolderIsRemembered();
    void parentOfADialogDestroyedMeanwhile();

private:
    QTemporaryDir m_folder;
};

void tst_UtilityKit::initTestCase()
{
    // Of this process alone: another one may run the same test.
    for (const char *place : {"XDG_CONFIG_HOME", "XDG_DATA_HOME"}) {
        qputenv(place, m_folder.path().toUtf8());
    }
    QLocale::setDefault(QLocale(QLocale::German));
}

void tst_UtilityKit::languageIsKept()
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

    UtilityHost::setLanguage(QStringLiteral("CH"));
    UtilityHost::useTransientSettings();
    QCOMPARE(VexaInterface::language(true), QStringLiteral("ENG"));
    UtilityHost::setLanguage(QStringLiteral("ENG"));
    QCOMPARE(storedLanguage(), QStringLiteral("CH"));
}

void tst_UtilityKit::diskFull()
{
    const qint64 endless = std::numeric_limits<qint64>::max();
    bool known = false;
    QVERIFY(!VexaInterface::IsDiskFull(m_folder.path(), 1, &known));
    QVERIFY(known);
    known = false;
    QVERIFY(VexaInterface::IsDiskFull(m_folder.path() + "/yet/to/be/written", endless, &known));
    QVERIFY(known);
    QVERIFY(!VexaInterface::IsDiskFull(QString(), endless, &known));
    QVERIFY(!known);
    QVERIFY(!VexaInterface::IsDiskFull(QString(), endless, nullptr));
}

void tst_UtilityKit::dataPath()
{
    const QString folder = m_folder.path() + "/x/y";
    qputenv("VEXA_DATA_PATH", folder.toUtf8() + '/');
    QCOMPARE(VexaInterface::programDataPath(), folder);
    QVERIFY(QFileInfo(folder).isDir());
    qputenv("VEXA_DATA_PATH", {});
    QCOMPARE(VexaInterface::programDataPath(),
             QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    qunsetenv("VEXA_DATA_PATH");
}

void tst_UtilityKit::numberOfAText_data()
{
    QTest::addColumn<qint64>("number");
    const auto row = [](const char *text, qint64 number) { QTest::newRow(text) << number; };
    row("0XfF", 255);
    row("010", 10); // not octal
    row(" -42\n", -42);
    row("-0x10", -16);
    row("0xFFFFFFFFFFFFFFFF", -1);
    row("18446744073709551615", -1);
    row("-9223372036854775808", std::numeric_limits<qint64>::min());
    row("-9223372036854775809", 0);
    row("0x10000000000000000", 0);
    row("1F", 0);
    row("0x", 0);
    row("--5", 0);
    row("1.000", 0); // grouped as the locale has it
}

void tst_UtilityKit::numberOfAText()
{
    QTEST(VexaInterface::string2Int(QTest::currentDataTag()), "number");
}

void tst_UtilityKit::textOfANumber()
{
    QCOMPARE(VexaInterface::Int2HexNumberQString(-1), QString("0xFFFFFFFFFFFFFFFF"));
    QCOMPARE(VexaInterface::numIP2StrIP(int(0xC0A80001U)), QString("192.168.0.1"));
    const auto mac = [](quint64 number) { return VexaInterface::int64_2StringMacAddress(number); };
    QCOMPARE(mac(0x000F0A0B0C01ULL), QString("00:0F:0A:0B:0C:01")); // leading zeros stay
    QCOMPARE(mac(0xFFFF112233445566ULL),
             QString("11:22:33:44:55:66")); // what is above 48 bits goes
}

/// What the evaluator behind it would trap at, work out wrongly or take for ever; the rest is the formula's own test.
void tst_UtilityKit::formula_data()
{
    QTest::addColumn<QByteArray>("formula");
    QTest::addColumn<QVariant>("result"); // none when it is refused
    const auto row = [](const char *tag, const QByteArray &formula, const QVariant &result = {}) {
        QTest::newRow(tag) << formula << result;
    };
    row("converter with a substituted 'g' number", "(1e+06-250)/1.5e+03", (1e6 - 250) / 1.5e3);
    row("remainder by -1 refused needlessly", "7%-1", 0.0);
    row("huge float by -1 taken for the trap", "(1e300-1e300)%(0-1)", 0.0);
    row("division by zero in the side that does not count", "(0=0)?5:(7/0)", 5.0);
    row("remainder that traps in the side that does not count", "1?2:((1<<63)%-1)", 2.0);
    row("remainder that traps after rounding to doubles", "((2**62-1)*2+1)%(0-1)", 0.0);
    row("leading zero taken for octal", "010", 10.0);
    row("C's equality", "(2==2)+(2!=3)", 2.0);
    row("large integer that is exact", "0x4000000000000000", 4611686018427387904.0);
    row("division by zero", "1/(2-2)");
    row("unknown name", "FROM*2");
    row("remainder traps", "(1<<63)%(0-1)");
    row("remainder traps in a function", "ABS((1<<63)%-1)");
    row("number silently rounded", "0xFFFFFFFFFFFFFFFF&0xFF");
    row("remainders without end", "7" + QByteArray("%5").repeated(2000));
}

void tst_UtilityKit::formula()
{
    QFETCH(QByteArray, formula);
    QFETCH(QVariant, result);
    bool ok = !result.isValid();
    QCOMPARE(VexaInterface::Compute(formula.constData(), ok), result.toDouble());
    QVERIFY2(ok == result.isValid(), VexaInterface::GetCalculatorErro());
    QCOMPARE(*VexaInterface::GetCalculatorErro() == '\0', ok);
}

void tst_UtilityKit::formulaErrorIsOfTheThread()
{
    bool ok = true;
    VexaInterface::Compute("1/0", ok);
    QByteArray other("?");
    std::thread([&other] { other = VexaInterface::GetCalculatorErro(); }).join();
    QCOMPARE(other, QByteArray());
    QVERIFY(*VexaInterface::GetCalculatorErro() != '\0');
}

void tst_UtilityKit::saveDialog_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("accepts");
    QTest::addColumn<QString>("name");
    QTest::newRow("suffix added") << "features" << true << "features.vxf";
    QTest::newRow("suffix doubled") << "features.vxf" << true << "features.vxf";
    QTest::newRow("other suffix kept") << "features.txt" << true << "features.txt";
    QTest::newRow("given up") << "features" << false << "";
}

void tst_UtilityKit::saveDialog()
{
    QFETCH(QString, typed);
    QFETCH(bool, accepts);
    QFETCH(QString, name);
    whenOpen<QFileDialog>([typed, accepts](QFileDialog *dialog) {
        dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(typed);
        QTest::keyClick(dialog, accepts ? Qt::Key_Return : Qt::Key_Escape);
    });
    const QString answer = FileDialogs::saveFile(
        nullptr, QStringLiteral("Save"), m_folder.path() + QStringLiteral("/x.vxf"),
        QStringLiteral("Features (*.vxf)"), QStringLiteral("vxf"));
    QCOMPARE(answer, name.isEmpty() ? QString() : m_folder.filePath(name));
}

void tst_UtilityKit::chosenFolderIsRemembered()
{
    const QString there = m_folder.filePath(QStringLiteral("there.vxf"));
    QFile file(there);
    QVERIFY(file.open(QIODevice::WriteOnly));
    whenOpen<QFileDialog>([](QFileDialog *dialog) {
        dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))
            ->setText(QStringLiteral("there.vxf"));
        QTest::keyClick(dialog, Qt::Key_Return);
    });
    QCOMPARE(VexaInterface::getOpenFileName(nullptr, QString(), m_folder.path(), "*.vxf"), there);

    // The suffix of a filter for one kind of file is added, no other.
    const auto accept = [](QFileDialog *dialog) { QTest::keyClick(dialog, Qt::Key_Return); };
    whenOpen<QFileDialog>(accept);
    QCOMPARE(chooseToSave("note", "Text Files(*.txt)"), m_folder.filePath("note.txt"));
    whenOpen<QFileDialog>(accept);
    QCOMPARE(chooseToSave("note", "Pictures (*.png *.jpg)"), m_folder.filePath("note"));
}

void tst_UtilityKit::parentOfADialogDestroyedMeanwhile()
{
    auto *const parent = new QWidget;
    whenOpen<QFileDialog>([parent](QFileDialog *) { delete parent; });
    QCOMPARE(VexaInterface::getOpenFileName(parent, QString(), m_folder.path(), QString()),
             QString());
}

QTEST_MAIN(tst_UtilityKit)
#include "tst_utilitykit.moc"
