#pragma once

#include <QByteArray>

/// Works a formula out before the evaluator gets it, for what would end the process there, take it for ever, or come
/// out as another number.
struct FormulaGuard
{
    QByteArray refusal; ///< why the formula has no result, English; empty when it has one
    double result = 0.0;
    /// The evaluator works out both sides of conditions, also the one that traps, and its remainders trap.
    bool isForEvaluator = false;

    static FormulaGuard of(const QByteArray &formula);
};
