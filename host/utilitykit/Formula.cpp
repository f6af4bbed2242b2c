#include "UtilityKit/VexaInterface.h"
#include "host/utilitykit/FormulaGuard.h"

#include <QByteArray>

#include <arv.h>
#include <cmath>
#include <memory>

namespace {

struct Unref
{
    void operator()(ArvEvaluator *evaluator) const { g_object_unref(evaluator); }
};

QByteArray &lastError()
{
    static thread_local QByteArray s_error;
    return s_error;
}

bool evaluate(const QByteArray &formula, double *result)
{
    const std::unique_ptr<ArvEvaluator, Unref> evaluator(arv_evaluator_new(formula.constData()));
    GError *error = nullptr;
    *result = arv_evaluator_evaluate_as_double(evaluator.get(), &error);
    const bool ok = !error && std::isfinite(*result);
    g_clear_error(&error);
    return ok;
}

/// The evaluator's answer, unless it has none or quite another one: it knows neither `==` nor `!`, reads "010" as 8,
/// and lets large sums of integers wrap around. Then the guard's stands.
double settle(const QByteArray &formula, double guarded)
{
    constexpr double TOLERANCE = 1e-12;
    double result = 0.0;
    return evaluate(formula, &result) && std::abs(result - guarded) <= TOLERANCE * std::abs(guarded)
        ? result
        : guarded;
}

} // namespace

double VexaInterface::Compute(const char *formula, bool &ok)
{
    const QByteArray text(formula);
    const FormulaGuard guard = FormulaGuard::of(text);
    lastError() = guard.refusal;
    ok = guard.refusal.isEmpty();
    if (!ok) {
        return 0.0;
    }
    return guard.isForEvaluator ? settle(text, guard.result) : guard.result;
}

const char *VexaInterface::GetCalculatorErro()
{
    return lastError().constData();
}
