#include "UtilityKit/VexaInterface.h"

#include <QLocale>
#include <QtTest>

#include <limits>

class tst_NumberTexts : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German)); }
    void string2Int_data();
    void string2Int();
    void texts_data();
    void texts();
};

void tst_NumberTexts::string2Int_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<qint64>("number");
    const qint64 smallest = std::numeric_limits<qint64>::min();
    QTest::newRow("decimal") << "16" << qint64(16);
    QTest::newRow("hexadecimal") << "0x10" << qint64(16);
    QTest::newRow("upper case prefix") << "0XfF" << qint64(255);
    QTest::newRow("leading zero read as octal") << "010" << qint64(10);
    QTest::newRow("blanks and sign") << " -42\n" << qint64(-42);
    QTest::newRow("plus") << "+7" << qint64(7);
    QTest::newRow("negative hexadecimal") << "-0x10" << qint64(-16);
    QTest::newRow("top bit lost") << "0xFFFFFFFFFFFFFFFF" << qint64(-1);
    QTest::newRow("unsigned decimal cut at 63 bits") << "18446744073709551615" << qint64(-1);
    QTest::newRow("smallest") << "-9223372036854775808" << smallest;
    QTest::newRow("below the smallest wraps") << "-9223372036854775809" << qint64(0);
    QTest::newRow("more than 64 bits") << "0x10000000000000000" << qint64(0);
    QTest::newRow("hexadecimal digits without prefix") << "1F" << qint64(0);
    QTest::newRow("prefix alone") << "0x" << qint64(0);
    QTest::newRow("two signs") << "--5" << qint64(0);
    QTest::newRow("sign apart from the number") << "- 5" << qint64(0);
    QTest::newRow("grouped digits of the locale") << "1.000" << qint64(0);
    QTest::newRow("empty") << "" << qint64(0);
}

void tst_NumberTexts::string2Int()
{
    QFETCH(QString, text);
    QFETCH(qint64, number);
    QCOMPARE(VexaInterface::string2Int(text), number);
}

void tst_NumberTexts::texts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("hexadecimal") << VexaInterface::Int2HexNumberQString(0xBEEF) << "0xBEEF";
    QTest::newRow("hexadecimal zero") << VexaInterface::Int2HexNumberQString(0) << "0x0";
    QTest::newRow("negative as 64 bits")
        << VexaInterface::Int2HexNumberQString(-1) << "0xFFFFFFFFFFFFFFFF";
    QTest::newRow("address with the top bit")
        << VexaInterface::numIP2StrIP(int(0xC0A80001U)) << "192.168.0.1";
    QTest::newRow("mask") << VexaInterface::numIP2StrIP(-256) << "255.255.255.0";
    QTest::newRow("MAC keeps leading zeros")
        << VexaInterface::int64_2StringMacAddress(0x000F0A0B0C01ULL) << "00:0F:0A:0B:0C:01";
    QTest::newRow("MAC drops what is above 48 bits")
        << VexaInterface::int64_2StringMacAddress(0xFFFF112233445566ULL) << "11:22:33:44:55:66";
}

void tst_NumberTexts::texts()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QCOMPARE(text, expected);
}

QTEST_GUILESS_MAIN(tst_NumberTexts)
#include "tst_numbertexts.moc"
