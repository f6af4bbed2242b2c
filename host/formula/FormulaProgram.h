#pragma once

#include "host/formula/Formula.h"

#include <QByteArray>
#include <QVector>

/// What one step of a compiled formula does with the stack of numbers.
enum class FormulaStep : quint8 {
    // pushes
    Literal, ///< argument: index into FormulaProgram::literals
    Name, ///< argument: index into FormulaProgram::names
    // jumps; argument: the step to go on with
    Jump,
    JumpIfFalse, ///< takes the condition off the stack
    // the top of the stack becomes ...
    Truth, ///< 1 or 0
    Negate,
    Complement,
    Not,
    Sgn,
    Atan,
    Cos,
    Sin,
    Tan,
    Abs,
    Exp,
    Ln,
    Lg,
    Sqrt,
    Trunc,
    Floor,
    Ceil,
    Round,
    Asin,
    Acos,
    // the two numbers on top become one
    RoundTo,
    Power,
    Multiply,
    Divide,
    Remainder,
    Add,
    Subtract,
    ShiftLeft,
    ShiftRight,
    Less,
    LessOrEqual,
    Greater,
    GreaterOrEqual,
    Equal,
    NotEqual,
    BitAnd,
    BitXor,
    BitOr
};

/// A formula as a flat list of steps for a stack machine.
struct FormulaProgram
{
    struct Step
    {
        FormulaStep step;
        int argument;
    };
    /// Decimal literals above the largest signed number are bits to integers and a size to doubles.
    struct Literal
    {
        FormulaNumber integral;
        FormulaNumber real;
    };

    QVector<Step> steps;
    QVector<Literal> literals;
    QVector<QByteArray> names;
    int stackSize = 0; ///< most numbers that are on the stack at once
    bool hasInexactInteger = false; ///< a double cannot hold one of the integer literals
};
