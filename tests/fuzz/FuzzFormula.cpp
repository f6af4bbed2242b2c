#include "FuzzTarget.h"
#include "UtilityKit/VexaInterface.h"
#include "host/utilitykit/FormulaGuard.h"

#include <QByteArray>
#include <QHash>

#include <arv.h>
#include <cmath>

namespace {

QByteArray s_refusal;

/// The evaluator behind the guard takes most of the time, so that only some formulas get to it; it must outlive them.
void tryEvaluator(const QByteArray &formula)
{
    constexpr uint ONE_OF = 16;
    if (qHash(formula) % ONE_OF != 0) {
        return;
    }
    ArvEvaluator *evaluator = arv_evaluator_new(formula.constData());
    arv_evaluator_evaluate_as_double(evaluator, nullptr);
    g_object_unref(evaluator);
}

} // namespace

double VexaInterface::Compute(const char *formula, bool &ok)
{
    const QByteArray text(formula);
    const FormulaGuard guard = FormulaGuard::of(text);
    s_refusal = guard.refusal;
    ok = guard.refusal.isEmpty();
    if (!ok) {
        return 0.0;
    }
    require(std::isfinite(guard.result), "a result is a number");
    if (guard.isForEvaluator) {
        tryEvaluator(text);
    }
    return guard.result;
}

const char *VexaInterface::GetCalculatorErro()
{
    return s_refusal.constData();
}
