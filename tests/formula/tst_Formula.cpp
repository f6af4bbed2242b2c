#include "host/formula/Formula.h"

#include <QtTest>

#include <cmath>
#include <limits>

Q_DECLARE_METATYPE(FormulaNumber)

namespace {

constexpr qint64 SMALLEST = std::numeric_limits<qint64>::min();
constexpr qint64 LARGEST = std::numeric_limits<qint64>::max();

struct Outcome
{
    bool ok = false;
    FormulaNumber value;
    QByteArray reason;
    QVector<QByteArray> asked;
};

/// A is 10, Z is 0, BIG is 2^53 + 1, MIN and MAX the ends of 64 bits, H is 0.5, NAN not a number; others fail.
Outcome evaluate(const QByteArray &text, Formula::Arithmetic arithmetic)
{
    Outcome outcome;
    const auto formula = Formula::parse(text, &outcome.reason);
    if (!formula) {
        return outcome;
    }
    static const QHash<QByteArray, FormulaNumber> VALUES = {
        {"A", FormulaNumber::ofInteger(10)},
        {"Z", FormulaNumber::ofInteger(0)},
        {"BIG", FormulaNumber::ofInteger(9007199254740993)},
        {"MIN", FormulaNumber::ofInteger(SMALLEST)},
        {"MAX", FormulaNumber::ofInteger(LARGEST)},
        {"H", FormulaNumber::ofReal(0.5)},
        {"NAN", FormulaNumber::ofReal(std::nan(""))},
        {"A.Max", FormulaNumber::ofInteger(99)}};
    const auto lookup = [&](int index, FormulaNumber *value) {
        const QByteArray name = formula->names().at(index);
        outcome.asked.append(name);
        *value = VALUES.value(name);
        return VALUES.contains(name);
    };
    outcome.ok = formula->evaluate(arithmetic, lookup, &outcome.value, &outcome.reason);
    return outcome;
}

} // namespace

class FormulaTest : public QObject
{
    Q_OBJECT
private slots:
    void values_data();
    void values();
    void noValue_data();
    void noValue();
    void noFormula_data();
    void noFormula();
    void asksOnlyForWhatCounts_data();
    void asksOnlyForWhatCounts();
    void variableNamedLikeConstant();
};

void FormulaTest::values_data()
{
    QTest::addColumn<QVariant>("value"); // an integer in integer arithmetic, else a double
    const auto row = [](const char *text, const QVariant &value) { QTest::newRow(text) << value; };
    row("2+3*4", 14LL);
    row("-7/2", -3LL);
    row("2**3**2", 512LL);
    row("-2**2", 4LL); // a sign binds tighter
    row("2**-1", 0LL);
    row("1<<2+1", 8LL);
    row("5>3=1", 1LL); // C: relations before equality
    row("1|2^3&1", 3LL);
    row("1||0&&0", 1LL);
    row("!A+1", 1LL);
    row("- - -3", -3LL);
    row("A<>10", 0LL);
    row("1?0?6:7:8", 7LL);
    row("0x10+0X0f", 31LL);
    row("010", 10LL); // not octal
    row("0xFFFFFFFFFFFFFFFF", -1LL);
    row("BIG*3-BIG*2", 9007199254740993LL);
    row("MAX+1", SMALLEST); // wraps
    row("ABS(MIN)", SMALLEST);
    row("NEG(3)+SGN(-9)+sgn(4)", -3LL);
    row("MIN>>63", -1LL);
    row("ROUND(2.5)", 3LL);
    row("ROUND(12345,-2)", 12300LL);
    row("A.Max*2", 198LL);
    row("(Z=0)?5:(A/Z)", 5LL);
    row("(Z=0)||(A%Z>1)", 1LL);
    row("A>100?1/Z:A>5?A:1%Z", 10LL);
    row("\t( A + 1 ) ", 11LL);
    row("1/2", 0.5);
    row("2**0.5", std::sqrt(2.0));
    row("MAX + 1", 9223372036854775808.0); // no wrap
    row("MIN/-1", 9223372036854775808.0);
    row("0x123456789ABCDEF1&0xFF", 241.0);
    row("7.5%2", 1.0);
    row("1e-3+.5+5.", 5.501);
    row("0x1E+5", 35.0);
    row("SIN(PI/2)+COS(0)+TAN(0)", 2.0);
    row("ASIN(1)+ACOS(1)+ATAN(0)", std::asin(1.0));
    row("LN(E())+LG(100)+PI()-PI", 3.0);
    row("TRUNC(-2.7)+FLOOR(-2.5)+CEIL(2.1)", -2.0);
    row("ROUND(2.567,1)", 2.6);
    row("ROUND(1250.0,-2)", 1300.0);
    row("ROUND(0.1,300)", 0.1);
}

void FormulaTest::values()
{
    QFETCH(QVariant, value);
    const bool inReals = value.userType() == QMetaType::Double;
    const Outcome outcome =
        evaluate(QTest::currentDataTag(),
                 inReals ? Formula::Arithmetic::Real : Formula::Arithmetic::Integer);
    QVERIFY2(outcome.ok, outcome.reason);
    if (inReals) {
        QCOMPARE(outcome.value.toReal(), value.toDouble());
    } else {
        QVERIFY(outcome.value.isInteger);
        QCOMPARE(outcome.value.integer, value.toLongLong());
    }
}

void FormulaTest::noValue_data()
{
    QTest::addColumn<bool>("inIntegers");
    QTest::addColumn<bool>("inReals");
    QTest::addColumn<QByteArray>("reason");
    const auto row = [](const char *text, bool inIntegers, bool inReals, const char *reason) {
        QTest::newRow(text) << inIntegers << inReals << QByteArray(reason);
    };
    row("A/Z", false, false, "division by zero");
    row("A%Z", false, false, "remainder of a division by zero");
    row("A/H", false, true, "division by zero"); // whole numbers only
    row("MIN/-1", false, true, "the division overflows");
    row("MIN%-1", false, false, "the remainder is out of range");
    row("1<<64", false, false, "a shift is not from 0 to 63 bits");
    row("1e300", false, true, "the result does not fit into 64 bits");
    row("1e300%7", false, false, "a number does not fit into 64 bits");
    row("1e300*1e300", false, false, "the result is not a finite number");
    row("NAN", false, false, "the result is not a finite number");
    row("ROUND(1,301)", false, false, "a rounding is not to -300 to 300 digits");
    row("UNKNOWN+1", false, false, "");
}

void FormulaTest::noValue()
{
    QFETCH(bool, inIntegers);
    QFETCH(bool, inReals);
    const Outcome integer = evaluate(QTest::currentDataTag(), Formula::Arithmetic::Integer);
    const Outcome real = evaluate(QTest::currentDataTag(), Formula::Arithmetic::Real);
    QCOMPARE(integer.ok, inIntegers);
    QCOMPARE(real.ok, inReals);
    QTEST(inIntegers ? real.reason : integer.reason, "reason");
}

void FormulaTest::noFormula_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("reason");
    const auto row = [](const char *tag, const QByteArray &text, const char *reason) {
        QTest::newRow(tag) << text << QByteArray(reason);
    };
    row("blanks", " \t\n", "the formula is empty");
    row("unfinished", "1+", "column 3: a number or a name is missing at the end");
    row("two numbers", "1 2", "column 3: an operator is missing");
    row("no else", "1?2", "column 4: \":\" is missing");
    row("unknown function", "1+MAX(1,2)", "column 3: there is no function MAX");
    row("65 bits", "0x10000000000000000", "column 1: a number does not fit into 64 bits");
    row("infinite literal", "1e400", "column 1: a number is too large");
    row("bytes of another encoding", "\xb2\xe2", "column 1: a number or a name is missing");
    row("zero byte", QByteArray("1\0+1", 4), "column 2: an operator is missing");
    row("nested too deep", QByteArray(50000, '(') + "1",
        "column 129: the formula is nested deeper than 128");
    row("powers without end", QByteArray("2**").repeated(500) + "1",
        "column 385: the formula is nested deeper than 128");
    row("operators without end", "1" + QByteArray("+1").repeated(1501),
        "column 3003: the formula has more than 1500 operators");
    row("too long", QByteArray(65537, ' ') + "1", "the formula is longer than 65536 bytes");
}

void FormulaTest::noFormula()
{
    QFETCH(QByteArray, text);
    QByteArray reason;
    QVERIFY(!Formula::parse(text, &reason));
    QTEST(reason, "reason");
}

void FormulaTest::asksOnlyForWhatCounts_data()
{
    QTest::addColumn<QString>("asked");
    const auto row = [](const char *text, const char *asked) {
        QTest::newRow(text) << QString(asked);
    };
    row("A?BIG:UNKNOWN", "A BIG");
    row("Z&&UNKNOWN", "Z");
    row("A||UNKNOWN", "A");
    row("A+UNKNOWN+BIG", "A UNKNOWN");
    // A chain of 700 cases and 120 brackets are well within reason.
    QTest::newRow((QByteArray("A=1?1:").repeated(700) + "BIG").constData()) << QString("A BIG");
    QTest::newRow((QByteArray(120, '(') + "A" + QByteArray(120, ')')).constData()) << QString("A");
}

void FormulaTest::asksOnlyForWhatCounts()
{
    const Outcome outcome = evaluate(QTest::currentDataTag(), Formula::Arithmetic::Integer);
    QTEST(QString(outcome.asked.toList().join(' ')), "asked");
    QCOMPARE(outcome.ok, !outcome.asked.contains("UNKNOWN"));
}

void FormulaTest::variableNamedLikeConstant()
{
    QByteArray reason;
    const auto formula = Formula::parse("E*PI()+PI", &reason, {"E"});
    QVERIFY(formula);
    QCOMPARE(formula->names(), QVector<QByteArray>{"E"});
}

QTEST_GUILESS_MAIN(FormulaTest)
#include "tst_Formula.moc"
