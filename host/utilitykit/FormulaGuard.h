#pragma once

#include <QByteArray>

/// Looks at a formula before the evaluator does, for what would end the process there or take it for ever.
namespace FormulaGuard {

/// Evaluates a part of the formula; false when it cannot be evaluated.
using EvaluatePart = bool (*)(const QByteArray &part, double &result);

/// Why the formula must not be evaluated; empty when it may. ASCII.
QByteArray refusal(const QByteArray &formula, EvaluatePart evaluate);

} // namespace FormulaGuard
