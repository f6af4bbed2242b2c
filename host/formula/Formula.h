#pragma once

#include <QByteArray>
#include <QVector>

#include <functional>
#include <memory>

struct FormulaProgram;

/// A value inside a formula: a 64-bit integer that keeps all its bits, or a double.
struct FormulaNumber
{
    static FormulaNumber ofInteger(qint64 value) { return {true, value, 0.0}; }
    static FormulaNumber ofReal(double value) { return {false, 0, value}; }

    double toReal() const { return isInteger ? static_cast<double>(integer) : real; }
    /// A double loses its fraction; false when it is not finite or does not fit into 64 bits.
    bool toInteger(qint64 *value) const;

    bool isInteger = true;
    qint64 integer = 0;
    double real = 0.0;
};

/// One formula of a GenICam description (SwissKnife, IntSwissKnife, Converter, IntConverter): parsed once, evaluated
/// often. What would stop or mislead the processor (division by zero, a shift of 64 bits, ...) is an error of its own;
/// of `?:`, `&&` and `||` only the side that counts is evaluated. Constant after parse(); any thread.
class Formula
{
public:
    /// What a formula counts in. Integer (IntSwissKnife, IntConverter): 64-bit integers, which wrap around; a number
    /// with a fraction keeps it in sums and products, and the result loses it at last. Real (SwissKnife, Converter):
    /// doubles, but what meets only `+ - *` and the operators on bits stays an integer as long as 64 bits hold it.
    /// In both, bits, shifts and `%` work on whole numbers, and so does the `/` of integer arithmetic.
    enum class Arithmetic { Integer, Real };

    /// Gives the value of names()[index]; false ends the evaluation (the asker keeps its own reason).
    using Lookup = std::function<bool(int index, FormulaNumber *value)>;

    /// Null with an English reason ("column 5: ...") for a text that is no formula. Length, depth and number of
    /// operators are limited, so that neither parsing nor evaluating can overflow the stack or take long.
    /// Names in `variables` are names even where they are spelt like the constants E and PI.
    static std::shared_ptr<const Formula> parse(const QByteArray &text, QByteArray *reason,
                                                const QVector<QByteArray> &variables = {});

    /// The names that stand in the formula, each once, in the order of their first use. Dots belong to a name.
    const QVector<QByteArray> &names() const;
    /// True when an integer literal is one that a double cannot hold.
    bool hasInexactInteger() const;

    /// Asks for a name when it is needed, at most once a call. False when `lookup` gave up (`reason` stays empty) or
    /// when the formula has no value ("division by zero"). The result is an integer in integer arithmetic and finite
    /// in any.
    bool evaluate(Arithmetic arithmetic, const Lookup &lookup, FormulaNumber *result,
                  QByteArray *reason) const;

    ~Formula();
    Formula(const Formula &) = delete;
    Formula &operator=(const Formula &) = delete;

private:
    explicit Formula(std::unique_ptr<const FormulaProgram> program);
    std::unique_ptr<const FormulaProgram> m_pProgram;
};
