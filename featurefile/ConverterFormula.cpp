#include "featurefile/ConverterFormula.h"

#include "model/ElementWalk.h"

#include <QDebug>

ConverterFormula::ConverterFormula(EvalContext &context, const QDomElement &converter,
                                   const QDomElement &reg)
    : m_context(context)
    , m_converter(converter)
    , m_strName(ElementWalk::name(converter))
    , m_strReg(ElementWalk::name(reg))
{
}

bool ConverterFormula::prepare()
{
    for (QDomElement child = m_converter.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        const QString tag = child.tagName();
        if (tag == QLatin1String("pVariable")) {
            if (!takeVariable(child)) {
                return false;
            }
        } else if (tag == QLatin1String("FormulaFrom")) {
            m_strFrom = child.text();
        } else if (tag == QLatin1String("FormulaTo")) {
            m_strTo = child.text();
        } else if (tag == QLatin1String("pIsImplemented")) {
            qInfo().noquote()
                << QStringLiteral("%1 pIsImplemented %2").arg(m_strName, child.text());
        }
    }
    if (m_converter.tagName() == QLatin1String("IntConverter")
        && m_strFrom.contains(QLatin1Char('/'))) {
        m_context.addRemark(
            m_strName, FeatureFileReason::Inexact,
            QStringLiteral("\"/\" in %1 is a division with a fraction").arg(m_strFrom));
    }
    return true;
}

bool ConverterFormula::takeVariable(const QDomElement &child)
{
    const QString nodeName = ElementWalk::text(child);
    const QString variable = ElementWalk::name(child);
    if (nodeName.isEmpty() || variable.isEmpty()) {
        return m_context.fail(QStringLiteral("getValue failed:%1 pVariable noname").arg(m_strName));
    }
    if (m_variables.size() >= m_context.limits().depth) {
        return m_context.fail(QStringLiteral("getValue  failed:%1 has more than %2 variables")
                                  .arg(m_strName)
                                  .arg(m_context.limits().depth));
    }
    EvalResults values;
    if (nodeName != m_strReg) {
        const QDomElement node = m_context.node(nodeName);
        if (node.isNull()) {
            return m_context.fail(
                QStringLiteral("getValue failed:pVariable%1 %2 no mapdom").arg(variable, nodeName));
        }
        if (!m_context.getIntValue(node, values)) {
            return m_context.fail(QStringLiteral("getValue getIntValue failed:%1").arg(nodeName));
        }
        if (values.isEmpty()) {
            return m_context.fail(
                QStringLiteral("getValue getIntValue failed:%1 value is empty").arg(nodeName));
        }
    }
    m_variables.append({variable, nodeName, values});
    return true;
}

bool ConverterFormula::isComplete() const
{
    return (!m_strFrom.isEmpty() && !m_strTo.isEmpty() && !m_variables.isEmpty())
        || m_context.fail(
            QStringLiteral("getValue  failed:%1 no formula or variables").arg(m_strName));
}

bool ConverterFormula::formulaAt(int index, QString *from) const
{
    *from = m_strFrom;
    for (const Variable &variable : m_variables) {
        const bool isOwnWord = variable.node == m_strReg;
        const int entry = m_variables.size() == 1 ? 0 : index;
        if (!isOwnWord && entry >= variable.values.size()) {
            return m_context.fail(QStringLiteral("getValue  failed:%1 out of size variables:%2")
                                      .arg(m_strName, variable.name));
        }
        const QString text = isOwnWord
            ? QStringLiteral("TO")
            : m_context.variableText(variable.node, variable.values.at(entry));
        if (!m_context.substitute(variable.name, text, from)) {
            return false;
        }
    }
    return true;
}

bool ConverterFormula::valueOf(const QString &from, quint32 word, double *value) const
{
    QString formula = from;
    formula.replace(QLatin1String("TO"), QString::number(word));
    return m_context.compute(m_strName, formula, value);
}
