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

bool evaluate(const QByteArray &formula, double &result)
{
    const std::unique_ptr<ArvEvaluator, Unref> evaluator(arv_evaluator_new(formula.constData()));
    GError *error = nullptr;
    result = arv_evaluator_evaluate_as_double(evaluator.get(), &error);
    if (error) {
        lastError() = error->message;
        g_error_free(error);
        return false;
    }
    if (!std::isfinite(result)) {
        lastError() = QByteArrayLiteral("the result is not a finite number");
        return false;
    }
    return true;
}

} // namespace

double VexaInterface::Compute(const char *formula, bool &ok)
{
    const QByteArray text(formula);
    const QByteArray refusal = FormulaGuard::refusal(text, evaluate);
    double result = 0.0;
    ok = refusal.isEmpty() && evaluate(text, result);
    if (ok) {
        lastError().clear();
        return result;
    }
    if (!refusal.isEmpty()) {
        lastError() = refusal;
    }
    return 0.0;
}

const char *VexaInterface::GetCalculatorErro()
{
    return lastError().constData();
}
