#pragma once

#include <QList>
#include <QString>

/// One result of an evaluation of a device description: an address, a length, a value of a variable.
struct _FORMULA_RESULT_
{
    QString formula; ///< that gave the value; empty without one
    QString variables; ///< "[%1:%2]" pairs of the node values that led here; empty for a constant
    float value = 0.0F;
    double meant = 0.0; ///< the number before single precision took bits from it

    static _FORMULA_RESULT_ of(double number, const QString &formula = QString(),
                               const QString &variables = QString())
    {
        return {formula, variables, static_cast<float>(number), number};
    }
};

using EvalResults = QList<_FORMULA_RESULT_>;
