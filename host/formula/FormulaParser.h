#pragma once

#include "host/formula/FormulaProgram.h"

#include <QByteArray>
#include <QString>
#include <QVector>

/// Compiles the text of one formula, by recursive descent with a limited depth. Operators bind as in C, `**` tighter
/// than `*` and to the right, signs tighter than `**`.
class FormulaParser
{
public:
    /// Longest text in bytes.
    static constexpr int MAX_LENGTH = 64 * 1024;
    /// Deepest nesting of brackets, function arguments, middle parts of `?:` and repeated signs or powers.
    static constexpr int MAX_DEPTH = 128;
    /// Most operators and functions in one formula.
    static constexpr int MAX_OPERATORS = 1500;

    FormulaParser(const QByteArray &text, const QVector<QByteArray> &variables);
    /// False with an English reason when the text is no formula.
    bool parse(FormulaProgram *program, QByteArray *reason);

private:
    bool fail(const QByteArray &reason);
    void skipBlanks();
    /// Skips this text and the blanks behind it; false when something else stands here.
    bool take(const char *text);
    bool enter();
    bool countOperator();

    bool conditional();
    bool binary(int level);
    bool lazy(int level);
    bool power();
    bool unary();
    bool primary();
    bool literal();
    bool hexadecimal();
    bool decimal();
    bool word();
    bool call(const QByteArray &name, int begin);

    void emitStep(FormulaStep step, int argument = 0);
    void emitLiteral(const FormulaNumber &integral, const FormulaNumber &real);
    void emitInteger(quint64 bits, const FormulaNumber &real);
    int emitJump(FormulaStep step);
    void land(int jump);

    const QByteArray m_text;
    const QVector<QByteArray> m_variables;
    FormulaProgram *m_pProgram = nullptr;
    QByteArray m_reason;
    int m_nAt = 0;
    int m_nDepth = 0;
    int m_nOperators = 0;
    int m_nStack = 0;
};
