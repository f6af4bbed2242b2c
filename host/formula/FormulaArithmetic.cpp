#include "host/formula/FormulaArithmetic.h"

#include <cmath>
#include <limits>

namespace {

constexpr qint64 SMALLEST = std::numeric_limits<qint64>::min();
const char *const TOO_LARGE = "a number does not fit into 64 bits";

using Arithmetic = Formula::Arithmetic;

FormulaNumber ofBool(bool value)
{
    return FormulaNumber::ofInteger(value ? 1 : 0);
}

/// The result of an integer operation: as it wrapped around, or as a double that did not.
FormulaNumber wrapped(Arithmetic arithmetic, bool overflows, qint64 integer, double real)
{
    return overflows && arithmetic == Arithmetic::Real ? FormulaNumber::ofReal(real)
                                                       : FormulaNumber::ofInteger(integer);
}

FormulaNumber sum(Arithmetic arithmetic, const FormulaNumber &left, const FormulaNumber &right)
{
    if (!left.isInteger || !right.isInteger) {
        return FormulaNumber::ofReal(left.toReal() + right.toReal());
    }
    qint64 result = 0;
    const bool overflows = __builtin_add_overflow(left.integer, right.integer, &result);
    return wrapped(arithmetic, overflows, result, left.toReal() + right.toReal());
}

FormulaNumber difference(Arithmetic arithmetic, const FormulaNumber &left,
                         const FormulaNumber &right)
{
    if (!left.isInteger || !right.isInteger) {
        return FormulaNumber::ofReal(left.toReal() - right.toReal());
    }
    qint64 result = 0;
    const bool overflows = __builtin_sub_overflow(left.integer, right.integer, &result);
    return wrapped(arithmetic, overflows, result, left.toReal() - right.toReal());
}

FormulaNumber product(Arithmetic arithmetic, const FormulaNumber &left, const FormulaNumber &right)
{
    if (!left.isInteger || !right.isInteger) {
        return FormulaNumber::ofReal(left.toReal() * right.toReal());
    }
    qint64 result = 0;
    const bool overflows = __builtin_mul_overflow(left.integer, right.integer, &result);
    return wrapped(arithmetic, overflows, result, left.toReal() * right.toReal());
}

/// Whole exponents from 0 on; by squaring.
FormulaNumber wholePower(Arithmetic arithmetic, qint64 base, qint64 exponent)
{
    quint64 result = 1;
    qint64 factor = base;
    bool overflows = false;
    bool factorOverflows = false;
    for (quint64 left = static_cast<quint64>(exponent); left != 0; left >>= 1) {
        if (left & 1U) {
            qint64 next = 0;
            overflows = __builtin_mul_overflow(static_cast<qint64>(result), factor, &next)
                || overflows || factorOverflows;
            result = static_cast<quint64>(next);
        }
        factorOverflows = __builtin_mul_overflow(factor, factor, &factor) || factorOverflows;
    }
    return wrapped(arithmetic, overflows, static_cast<qint64>(result),
                   std::pow(static_cast<double>(base), static_cast<double>(exponent)));
}

const char *power(Arithmetic arithmetic, FormulaNumber *left, const FormulaNumber &right)
{
    const bool integers = left->isInteger && right.isInteger;
    if (integers && right.integer >= 0) {
        *left = wholePower(arithmetic, left->integer, right.integer);
        return nullptr;
    }
    if (right.toReal() < 0 && left->toReal() == 0.0) {
        return "division by zero";
    }
    if (integers && arithmetic == Arithmetic::Integer) {
        const bool isOdd = (right.integer & 1) != 0;
        const qint64 unit = left->integer == 1 ? 1 : left->integer == -1 ? (isOdd ? -1 : 1) : 0;
        *left = FormulaNumber::ofInteger(unit);
        return nullptr;
    }
    *left = FormulaNumber::ofReal(std::pow(left->toReal(), right.toReal()));
    return nullptr;
}

const char *divide(Arithmetic arithmetic, FormulaNumber *left, const FormulaNumber &right)
{
    if (arithmetic == Arithmetic::Real) {
        if (right.toReal() == 0.0) {
            return "division by zero";
        }
        *left = FormulaNumber::ofReal(left->toReal() / right.toReal());
        return nullptr;
    }
    qint64 dividend = 0;
    qint64 divisor = 0;
    if (!left->toInteger(&dividend) || !right.toInteger(&divisor)) {
        return TOO_LARGE;
    }
    if (divisor == 0) {
        return "division by zero";
    }
    if (dividend == SMALLEST && divisor == -1) {
        return "the division overflows";
    }
    *left = FormulaNumber::ofInteger(dividend / divisor);
    return nullptr;
}

/// Operators that work on whole numbers only.
const char *onBits(FormulaStep step, FormulaNumber *left, const FormulaNumber &right)
{
    qint64 a = 0;
    qint64 b = 0;
    if (!left->toInteger(&a) || !right.toInteger(&b)) {
        return TOO_LARGE;
    }
    const bool isShift = step == FormulaStep::ShiftLeft || step == FormulaStep::ShiftRight;
    if (isShift && (b < 0 || b > 63)) {
        return "a shift is not from 0 to 63 bits";
    }
    switch (step) {
    case FormulaStep::Remainder:
        if (b == 0) {
            return "remainder of a division by zero";
        }
        if (a == SMALLEST && b == -1) {
            return "the remainder is out of range";
        }
        a %= b;
        break;
    case FormulaStep::ShiftLeft:
        a = static_cast<qint64>(static_cast<quint64>(a) << b);
        break;
    case FormulaStep::ShiftRight:
        a >>= b;
        break;
    case FormulaStep::BitAnd:
        a &= b;
        break;
    case FormulaStep::BitXor:
        a ^= b;
        break;
    default:
        a |= b;
    }
    *left = FormulaNumber::ofInteger(a);
    return nullptr;
}

bool compares(FormulaStep step, const FormulaNumber &left, const FormulaNumber &right)
{
    const auto holds = [step](auto a, auto b) {
        switch (step) {
        case FormulaStep::Less:
            return a < b;
        case FormulaStep::LessOrEqual:
            return a <= b;
        case FormulaStep::Greater:
            return a > b;
        case FormulaStep::GreaterOrEqual:
            return a >= b;
        case FormulaStep::Equal:
            return a == b;
        default:
            return a != b;
        }
    };
    return left.isInteger && right.isInteger ? holds(left.integer, right.integer)
                                             : holds(left.toReal(), right.toReal());
}

double function(FormulaStep step, double x)
{
    switch (step) {
    case FormulaStep::Atan:
        return std::atan(x);
    case FormulaStep::Cos:
        return std::cos(x);
    case FormulaStep::Sin:
        return std::sin(x);
    case FormulaStep::Tan:
        return std::tan(x);
    case FormulaStep::Abs:
        return std::fabs(x);
    case FormulaStep::Exp:
        return std::exp(x);
    case FormulaStep::Ln:
        return std::log(x);
    case FormulaStep::Lg:
        return std::log10(x);
    case FormulaStep::Sqrt:
        return std::sqrt(x);
    case FormulaStep::Trunc:
        return std::trunc(x);
    case FormulaStep::Floor:
        return std::floor(x);
    case FormulaStep::Ceil:
        return std::ceil(x);
    case FormulaStep::Round:
        return std::round(x);
    case FormulaStep::Asin:
        return std::asin(x);
    case FormulaStep::Acos:
        return std::acos(x);
    default:
        return x;
    }
}

bool keepsIntegers(FormulaStep step)
{
    return step == FormulaStep::Trunc || step == FormulaStep::Floor || step == FormulaStep::Ceil
        || step == FormulaStep::Round;
}

const char *roundTo(FormulaNumber *number, const FormulaNumber &digits)
{
    qint64 count = 0;
    if (!digits.toInteger(&count) || count < -300 || count > 300) {
        return "a rounding is not to -300 to 300 digits";
    }
    if (count >= 0 && (number->isInteger || number->real == std::floor(number->real))) {
        return nullptr;
    }
    const double unit = std::pow(10.0, static_cast<double>(std::llabs(count)));
    const double scaled = count < 0 ? number->toReal() / unit : number->toReal() * unit;
    // What is too large to be scaled has no digits to lose.
    if (std::isfinite(scaled)) {
        const double whole = std::round(scaled);
        *number = FormulaNumber::ofReal(count < 0 ? whole * unit : whole / unit);
    }
    return nullptr;
}

} // namespace

const char *FormulaArithmetic::unary(FormulaStep step, Arithmetic arithmetic, FormulaNumber *number)
{
    static const FormulaNumber ZERO;
    switch (step) {
    case FormulaStep::Truth:
        *number = ofBool(isTrue(*number));
        return nullptr;
    case FormulaStep::Not:
        *number = ofBool(!isTrue(*number));
        return nullptr;
    case FormulaStep::Negate:
        *number = number->isInteger ? difference(arithmetic, ZERO, *number)
                                    : FormulaNumber::ofReal(-number->real);
        return nullptr;
    case FormulaStep::Sgn:
        *number = FormulaNumber::ofInteger(int(compares(FormulaStep::Greater, *number, ZERO))
                                           - int(compares(FormulaStep::Less, *number, ZERO)));
        return nullptr;
    case FormulaStep::Complement: {
        qint64 bits = 0;
        if (!number->toInteger(&bits)) {
            return TOO_LARGE;
        }
        *number = FormulaNumber::ofInteger(~bits);
        return nullptr;
    }
    default:
        break;
    }
    if (number->isInteger && step == FormulaStep::Abs) {
        *number = number->integer < 0 ? difference(arithmetic, ZERO, *number) : *number;
    } else if (!number->isInteger || !keepsIntegers(step)) {
        *number = FormulaNumber::ofReal(function(step, number->toReal()));
    }
    return nullptr;
}

const char *FormulaArithmetic::binary(FormulaStep step, Arithmetic arithmetic, FormulaNumber *left,
                                      const FormulaNumber &right)
{
    switch (step) {
    case FormulaStep::Add:
        *left = sum(arithmetic, *left, right);
        return nullptr;
    case FormulaStep::Subtract:
        *left = difference(arithmetic, *left, right);
        return nullptr;
    case FormulaStep::Multiply:
        *left = product(arithmetic, *left, right);
        return nullptr;
    case FormulaStep::Power:
        return power(arithmetic, left, right);
    case FormulaStep::Divide:
        return divide(arithmetic, left, right);
    case FormulaStep::RoundTo:
        return roundTo(left, right);
    case FormulaStep::Less:
    case FormulaStep::LessOrEqual:
    case FormulaStep::Greater:
    case FormulaStep::GreaterOrEqual:
    case FormulaStep::Equal:
    case FormulaStep::NotEqual:
        *left = ofBool(compares(step, *left, right));
        return nullptr;
    default:
        return onBits(step, left, right);
    }
}

bool FormulaArithmetic::isTrue(const FormulaNumber &number)
{
    return number.isInteger ? number.integer != 0 : number.real != 0.0;
}
