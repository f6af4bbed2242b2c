#pragma once

#include "host/formula/FormulaProgram.h"

/// The operators and functions of formulas on single numbers, without any that traps or is undefined. Sums, products
/// and powers of integers wrap around in integer arithmetic and become doubles in real arithmetic.
namespace FormulaArithmetic {

/// Null, or why the operation has no value (static, English).
const char *unary(FormulaStep step, Formula::Arithmetic arithmetic, FormulaNumber *number);
const char *binary(FormulaStep step, Formula::Arithmetic arithmetic, FormulaNumber *left,
                   const FormulaNumber &right);
bool isTrue(const FormulaNumber &number);

} // namespace FormulaArithmetic
