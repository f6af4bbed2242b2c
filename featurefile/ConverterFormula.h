#pragma once

#include "featurefile/EvalContext.h"

/// The FormulaFrom of a Converter or IntConverter in front of a register: makes the feature's value of its word.
class ConverterFormula
{
public:
    /// All arguments outlive this object.
    ConverterFormula(EvalContext &context, const QDomElement &converter, const QDomElement &reg);

    /// Takes formulas and variables; false when a variable cannot be read.
    bool prepare();
    /// Whether it has both formulas and a variable; if not, that is logged.
    bool isComplete() const;
    /// The formula for the register's address number `index`: every variable replaced by its number, that of the
    /// register by "TO".
    bool formulaAt(int index, QString *from) const;
    /// The value of a word under such a formula.
    bool valueOf(const QString &from, quint32 word, double *value) const;

private:
    struct Variable
    {
        QString name;
        QString node;
        EvalResults values; ///< empty for the register's own word
    };
    bool takeVariable(const QDomElement &child);

    EvalContext &m_context;
    const QDomElement m_converter;
    const QString m_strName;
    const QString m_strReg;
    QVector<Variable> m_variables;
    QString m_strFrom;
    QString m_strTo;
};
