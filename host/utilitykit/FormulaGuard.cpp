#include "host/utilitykit/FormulaGuard.h"

#include "host/formula/Formula.h"

#include <algorithm>

namespace {

const char *const NOT_FOR_EVALUATOR[] = {"?", "&&", "||", "%"};

QByteArray unknownName(const Formula &formula)
{
    return formula.names().isEmpty()
        ? QByteArray()
        : QByteArray("the name " + formula.names().first() + " is unknown");
}

} // namespace

FormulaGuard FormulaGuard::of(const QByteArray &formula)
{
    FormulaGuard guard;
    const auto parsed = Formula::parse(formula, &guard.refusal);
    if (!parsed) {
        return guard;
    }
    guard.refusal = unknownName(*parsed);
    // The result is a double, and so are the numbers that went into the formula's text.
    if (guard.refusal.isEmpty() && parsed->hasInexactInteger()) {
        guard.refusal = QByteArrayLiteral("a number of the formula is too large");
    }
    FormulaNumber number;
    if (guard.refusal.isEmpty()
        && parsed->evaluate(
            Formula::Arithmetic::Real, [](int, FormulaNumber *) { return false; }, &number,
            &guard.refusal)) {
        guard.result = number.toReal();
        guard.isForEvaluator =
            std::none_of(std::begin(NOT_FOR_EVALUATOR), std::end(NOT_FOR_EVALUATOR),
                         [&formula](const char *text) { return formula.contains(text); });
    }
    return guard;
}
