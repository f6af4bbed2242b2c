#include "UtilityKit/VexaInterface.h"

#include <QtConcurrent>
#include <QtTest>

class tst_Formula : public QObject
{
    Q_OBJECT
private slots:
    void value_data();
    void value();
    void refused_data();
    void refused();
    void errorTextIsOfTheThread();
};

void tst_Formula::value_data()
{
    QTest::addColumn<QByteArray>("formula");
    QTest::addColumn<double>("result");
    QTest::newRow("precedence") << QByteArray("2+3*4") << 14.0;
    QTest::newRow("converter with a substituted 'g' number")
        << QByteArray("(1e+06-250)/1.5e+03") << (1e6 - 250) / 1.5e3;
    QTest::newRow("negative substituted") << QByteArray("3--5") << 8.0;
    QTest::newRow("shift and mask") << QByteArray("(0xABCD>>8)&0xFF") << double(0xAB);
    QTest::newRow("condition") << QByteArray("(3>2)?10:20") << 10.0;
    QTest::newRow("not equal") << QByteArray("1<>2") << 1.0;
    QTest::newRow("functions") << QByteArray("SQRT(16)+ABS(-2)+TRUNC(2.7)") << 8.0;
    QTest::newRow("remainder by -1 refused needlessly") << QByteArray("7%-1") << 0.0;
    QTest::newRow("huge float by -1 taken for the trap")
        << QByteArray("(1e300-1e300)%(0-1)") << 0.0;
    QTest::newRow("remainder in both branches") << QByteArray("(5%3=2)?(9%5):(9%2)") << 4.0;
    QTest::newRow("division by zero in the side that does not count")
        << QByteArray("(0=0)?5:(7/0)") << 5.0;
    QTest::newRow("remainder that traps in the side that does not count")
        << QByteArray("1?2:((1<<63)%-1)") << 2.0;
    QTest::newRow("remainder that traps after rounding to doubles")
        << QByteArray("((2**62-1)*2+1)%(0-1)") << 0.0;
    QTest::newRow("condition inside a condition") << QByteArray("1?0?6:7:8") << 7.0;
    QTest::newRow("leading zero taken for octal") << QByteArray("010") << 10.0;
    QTest::newRow("C's equality") << QByteArray("(2==2)+(2!=3)") << 2.0;
    QTest::newRow("large integer that is exact")
        << QByteArray("0x4000000000000000") << 4611686018427387904.0;
    QTest::newRow("blanks around") << QByteArray(" 1 + 1 \n") << 2.0;
    QTest::newRow("sixty brackets") << QByteArray(60, '(') + "1" + QByteArray(60, ')') << 1.0;
}

void tst_Formula::value()
{
    QFETCH(QByteArray, formula);
    QFETCH(double, result);
    bool ok = false;
    QCOMPARE(VexaInterface::Compute(formula.constData(), ok), result);
    QVERIFY2(ok, VexaInterface::GetCalculatorErro());
    QCOMPARE(QByteArray(VexaInterface::GetCalculatorErro()), QByteArray());
}

void tst_Formula::refused_data()
{
    QTest::addColumn<QByteArray>("formula");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("blanks") << QByteArray(" \t");
    QTest::newRow("division by zero") << QByteArray("1/(2-2)");
    QTest::newRow("remainder by zero") << QByteArray("1%0");
    QTest::newRow("unknown name") << QByteArray("FROM*2");
    QTest::newRow("unfinished") << QByteArray("1+");
    QTest::newRow("bracket missing") << QByteArray("(1+2");
    QTest::newRow("brackets the wrong way") << QByteArray(")(");
    QTest::newRow("not a number") << QByteArray("SQRT(0-1)");
    QTest::newRow("infinite") << QByteArray("LN(0)");
    QTest::newRow("bytes of another encoding") << QByteArray("\xb2\xe2");
    QTest::newRow("remainder traps") << QByteArray("(1<<63)%(0-1)");
    QTest::newRow("remainder traps, literal") << QByteArray("0x8000000000000000%-1");
    QTest::newRow("remainder traps in a divisor") << QByteArray("5/((1<<63)%~0+1)");
    QTest::newRow("remainder traps in a chain") << QByteArray("1*(1<<63)%-1%3");
    QTest::newRow("remainder traps in a function") << QByteArray("ABS((1<<63)%-1)");
    QTest::newRow("number silently rounded") << QByteArray("0xFFFFFFFFFFFFFFFF&0xFF");
    QTest::newRow("number over 64 bits") << QByteArray("99999999999999999999");
    QTest::newRow("nested for ever") << QByteArray(5000, '(') + "1" + QByteArray(5000, ')');
    QTest::newRow("absurdly long") << QByteArray("1") + QByteArray("+1").repeated(20000);
    QTest::newRow("remainders without end") << QByteArray("7") + QByteArray("%5").repeated(2000);
}

void tst_Formula::refused()
{
    QFETCH(QByteArray, formula);
    bool ok = true;
    QCOMPARE(VexaInterface::Compute(formula.constData(), ok), 0.0);
    QVERIFY(!ok);
    QVERIFY(*VexaInterface::GetCalculatorErro() != '\0');
}

void tst_Formula::errorTextIsOfTheThread()
{
    bool ok = true;
    VexaInterface::Compute("1/0", ok);
    const QByteArray before(VexaInterface::GetCalculatorErro());
    const QByteArray other =
        QtConcurrent::run([] { return QByteArray(VexaInterface::GetCalculatorErro()); }).result();
    QCOMPARE(other, QByteArray());
    QCOMPARE(QByteArray(VexaInterface::GetCalculatorErro()), before);
    QVERIFY(!before.isEmpty());
}

QTEST_GUILESS_MAIN(tst_Formula)
#include "tst_formula.moc"
