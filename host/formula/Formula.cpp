#include "host/formula/Formula.h"

#include "host/formula/FormulaArithmetic.h"
#include "host/formula/FormulaParser.h"

#include <QVarLengthArray>

#include <cmath>

bool FormulaNumber::toInteger(qint64 *value) const
{
    if (isInteger) {
        *value = integer;
        return true;
    }
    // 2^63: the first double above all 64-bit integers; false for not-a-number too.
    constexpr double LIMIT = 9223372036854775808.0;
    const bool fits = real >= -LIMIT && real < LIMIT;
    if (fits) {
        *value = static_cast<qint64>(real);
    }
    return fits;
}

Formula::Formula(std::unique_ptr<const FormulaProgram> program)
    : m_pProgram(std::move(program))
{
}

Formula::~Formula() = default;

std::shared_ptr<const Formula> Formula::parse(const QByteArray &text, QByteArray *reason,
                                              const QVector<QByteArray> &variables)
{
    auto program = std::make_unique<FormulaProgram>();
    if (!FormulaParser(text, variables).parse(program.get(), reason)) {
        return nullptr;
    }
    return std::shared_ptr<const Formula>(new Formula(std::move(program)));
}

const QVector<QByteArray> &Formula::names() const
{
    return m_pProgram->names;
}

bool Formula::hasInexactInteger() const
{
    return m_pProgram->hasInexactInteger;
}

bool Formula::evaluate(Arithmetic arithmetic, const Lookup &lookup, FormulaNumber *result,
                       QByteArray *reason) const
{
    struct Named
    {
        bool isKnown = false;
        FormulaNumber value;
    };
    QVarLengthArray<FormulaNumber, 32> stack(m_pProgram->stackSize);
    QVarLengthArray<Named, 16> named(m_pProgram->names.size());
    const bool isInteger = arithmetic == Arithmetic::Integer;
    int top = -1;
    const int count = m_pProgram->steps.size();
    const FormulaProgram::Step *const steps = m_pProgram->steps.constData();
    reason->clear();
    for (int i = 0; i < count; ++i) {
        const int argument = steps[i].argument;
        const char *failure = nullptr;
        switch (steps[i].step) {
        case FormulaStep::Literal:
            stack[++top] = isInteger ? m_pProgram->literals.at(argument).integral
                                     : m_pProgram->literals.at(argument).real;
            break;
        case FormulaStep::Name:
            if (!named[argument].isKnown) {
                if (!lookup(argument, &named[argument].value)) {
                    return false;
                }
                named[argument].isKnown = true;
            }
            stack[++top] = named[argument].value;
            break;
        case FormulaStep::Jump:
            i = argument - 1;
            break;
        case FormulaStep::JumpIfFalse:
            if (!FormulaArithmetic::isTrue(stack[top--])) {
                i = argument - 1;
            }
            break;
        default:
            if (steps[i].step < FormulaStep::RoundTo) {
                failure = FormulaArithmetic::unary(steps[i].step, arithmetic, &stack[top]);
            } else {
                --top;
                failure = FormulaArithmetic::binary(steps[i].step, arithmetic, &stack[top],
                                                    stack[top + 1]);
            }
        }
        if (!failure && !stack[qMax(top, 0)].isInteger
            && !std::isfinite(stack[qMax(top, 0)].real)) {
            failure = "the result is not a finite number";
        }
        if (failure) {
            *reason = QByteArray(failure);
            return false;
        }
    }
    *result = stack[0];
    if (isInteger && !result->isInteger) {
        qint64 integer = 0;
        if (!result->toInteger(&integer)) {
            *reason = QByteArrayLiteral("the result does not fit into 64 bits");
            return false;
        }
        *result = FormulaNumber::ofInteger(integer);
    }
    return true;
}
