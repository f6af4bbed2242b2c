// Values of nodes, one for each combination of their selectors' values.

#include "DeviceTaskModule/QCameraTask.h"
#include "featurefile/EvalContext.h"
#include "featurefile/EvalVisit.h"
#include "model/ElementWalk.h"
#include "model/EnumRecord.h"

/// A formula on its way through the values of its variables.
struct EvalContext::Expansion
{
    QString owner;
    QString formula;
    QMap<QString, EvalResults> values; ///< by variable name
    QMap<QString, QString> nodes; ///< variable name to node name
    QStringList keys; ///< variable names, sorted
    EvalResults *out;
};

bool EvalContext::getValue(const QDomElement &node, EvalResults &out)
{
    const Visit visit(this);
    if (!visit.isAllowed() || node.isNull()) {
        return false;
    }
    const QString tag = node.tagName();
    const QString name = ElementWalk::name(node);
    if (tag == QLatin1String("IntSwissKnife")) {
        return getSwissKnifeValue(node, out);
    }
    if (tag == QLatin1String("Integer")) {
        return getIntValue(node, out)
            || fail(QStringLiteral("getValue  getIntValue failed:%1").arg(name));
    }
    if (tag == QLatin1String("Enumeration")) {
        return !name.isEmpty()
            && (getEnumerationEntries(name, out)
                || fail(QStringLiteral("getValue  GetEnumerationNodePropertyValue failed:%1")
                            .arg(name)));
    }
    return fail(QStringLiteral("getValue  failed:%1 unsupport tagname%2").arg(name, tag));
}

bool EvalContext::getSwissKnifeValue(const QDomElement &node, EvalResults &out)
{
    Expansion expansion;
    expansion.owner = ElementWalk::name(node);
    expansion.out = &out;
    for (QDomElement child = node.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        if (child.tagName() == QLatin1String("Formula")) {
            expansion.formula = child.text();
            continue;
        }
        if (child.tagName() != QLatin1String("pVariable")) {
            continue;
        }
        const QString nodeName = ElementWalk::text(child);
        const QString variable = ElementWalk::name(child);
        if (nodeName.isEmpty() || variable.isEmpty()) {
            return fail(QStringLiteral("getValue failed:%1 pVariable noname").arg(expansion.owner));
        }
        const QDomElement target = this->node(nodeName);
        if (target.isNull()) {
            return fail(
                QStringLiteral("getValue failed:pVariable%1 %2 no mapdom").arg(variable, nodeName));
        }
        EvalResults values;
        if (!getIntValue(target, values)) {
            return fail(QStringLiteral("getValue getIntValue failed:%1").arg(nodeName));
        }
        if (values.isEmpty()) {
            return fail(
                QStringLiteral("getValue getIntValue failed:%1 value is empty").arg(nodeName));
        }
        expansion.values.insert(variable, values);
        expansion.nodes.insert(variable, nodeName);
    }
    if (expansion.formula.isEmpty() || expansion.values.isEmpty()) {
        return fail(
            QStringLiteral("getValue  failed:%1 no formula or variables").arg(expansion.owner));
    }
    if (expansion.formula.contains(QLatin1Char('/'))) {
        addRemark(
            expansion.owner, FeatureFileReason::Inexact,
            QStringLiteral("\"/\" in %1 is a division with a fraction").arg(expansion.formula));
    }
    expansion.keys = expansion.values.keys();
    if (expansion.keys.size() > m_limits.depth) {
        return fail(QStringLiteral("getValue  failed:%1 has more than %2 variables")
                        .arg(expansion.owner)
                        .arg(m_limits.depth));
    }
    expandFormula(expansion, expansion.formula, QString(), 0);
    return !isStopped() && !m_bLimitTold;
}

void EvalContext::expandFormula(Expansion &expansion, const QString &formula,
                                const QString &variables, int depth)
{
    if (depth < expansion.keys.size()) {
        const QString key = expansion.keys.at(depth);
        const QString nodeName = expansion.nodes.value(key);
        const EvalResults values = expansion.values.value(key);
        for (const _FORMULA_RESULT_ &result : values) {
            QString replaced = formula;
            if ((values.size() > 1 && !countVisit())
                || !substitute(key, variableText(nodeName, result), &replaced)) {
                return;
            }
            expandFormula(expansion, replaced,
                          variables
                              + QStringLiteral("[%1:%2]").arg(
                                  nodeName, QString::number(static_cast<double>(result.value))),
                          depth + 1);
        }
        return;
    }
    double value = 0.0;
    if (countCombinations(1) && compute(expansion.owner, formula, &value)) {
        expansion.out->append(_FORMULA_RESULT_::of(value, expansion.formula, variables));
    }
}

bool EvalContext::getEnumerationEntries(const QString &name, EvalResults &out)
{
    const EnumRecord record;
    if (!record || !m_pTask
        || !m_pTask->GetEnumerationValue(name, record.get(), nullptr, true, false)) {
        return false;
    }
    for (const quint32 entry : record.entries()) {
        out.append(_FORMULA_RESULT_::of(entry));
    }
    return true;
}

bool EvalContext::appendRange(const QString &name, EvalResults &out)
{
    _NODE_INT_VALUE_ range = {};
    if (!m_pTask || !m_pTask->GetIntegerValue(name, &range, nullptr, true, false)) {
        return fail(
            QStringLiteral("getIntValue failed:%1 GetIntegerNodePropertyValue failed").arg(name));
    }
    if (range.inc <= 0 && range.min < range.max) {
        return fail(
            QStringLiteral("getIntValue failed:%1 the increment is %2").arg(name).arg(range.inc));
    }
    if (range.min > range.max) {
        return true;
    }
    // The span may need 64 bits without a sign.
    const quint64 span = static_cast<quint64>(range.max) - static_cast<quint64>(range.min);
    const quint64 steps = range.inc > 0 ? span / static_cast<quint64>(range.inc) : 0;
    if (steps >= static_cast<quint64>(m_limits.combinations)) {
        return fail(QStringLiteral("getIntValue failed:%1 has more than %2 values")
                        .arg(name)
                        .arg(m_limits.combinations));
    }
    for (quint64 step = 0; step <= steps; ++step) {
        if (!countVisit()) {
            return false;
        }
        const quint64 value =
            static_cast<quint64>(range.min) + step * static_cast<quint64>(range.inc);
        out.append(_FORMULA_RESULT_::of(static_cast<double>(static_cast<qint64>(value))));
    }
    return true;
}

bool EvalContext::getIntValue(const QDomElement &node, EvalResults &out)
{
    const Visit visit(this);
    if (!visit.isAllowed() || node.isNull()) {
        return false;
    }
    const QString tag = node.tagName();
    if (tag == QLatin1String("StructEntry") || tag == QLatin1String("MaskedIntReg")) {
        return getBitField(node, out);
    }
    const QDomElement value = node.firstChildElement(QStringLiteral("Value"));
    if (!value.isNull()) {
        return getConstant(node, value, out);
    }
    QDomElement converter;
    const QDomElement reg = findRegElement(node, &converter);
    if (reg.isNull()) {
        return getReferredValue(node, out);
    }
    if (!converter.isNull()) {
        addRemark(
            ElementWalk::name(node), FeatureFileReason::Inexact,
            QStringLiteral("stands for its register %1, not for the value that %2 makes of it")
                .arg(ElementWalk::name(reg), ElementWalk::name(converter)));
    }
    return getRegisterWords(reg, out);
}

bool EvalContext::getReferredValue(const QDomElement &node, EvalResults &out)
{
    if (node.tagName() == QLatin1String("IntSwissKnife")) {
        return getValue(node, out);
    }
    const QString text = ElementWalk::text(node.firstChildElement(QStringLiteral("pValue")));
    if (text.isEmpty()) {
        return fail(QStringLiteral("getIntReg failed:%1").arg(ElementWalk::name(node)));
    }
    qint64 number = 0;
    if (isNumber(text, &number)) {
        out.append(_FORMULA_RESULT_::of(static_cast<double>(number)));
        return true;
    }
    return getValue(this->node(text), out);
}

bool EvalContext::getConstant(const QDomElement &node, const QDomElement &value, EvalResults &out)
{
    const QString name = ElementWalk::name(node);
    if (name.isEmpty()) {
        return fail(QStringLiteral("getIntValue failed: name isNull"));
    }
    const auto selector = m_selectorMap.constFind(name);
    if (selector != m_selectorMap.constEnd()) {
        return getSelectorValues(*selector, name, out);
    }
    if (!value.firstChildElement(QStringLiteral("pSelected")).isNull()) {
        return appendRange(name, out);
    }
    qint64 number = 0;
    if (!isNumber(value.text(), &number)) {
        return fail(
            QStringLiteral("getIntValue failed:%1 valuenode content is unsupport").arg(name));
    }
    out.append(_FORMULA_RESULT_::of(static_cast<double>(number)));
    return true;
}

bool EvalContext::getSelectorValues(const QDomElement &selector, const QString &name,
                                    EvalResults &out)
{
    const QString selectorName = ElementWalk::name(selector);
    const QString tag = selector.tagName();
    if (selectorName.isEmpty()) {
        return fail(QStringLiteral("getIntValue failed: domName isNull"));
    }
    if (tag == QLatin1String("Integer")) {
        return appendRange(selectorName, out);
    }
    if (tag == QLatin1String("Enumeration")) {
        return getEnumerationEntries(selectorName, out)
            || fail(QStringLiteral("getIntValue failed:%1 GetEnumerationNodePropertyValue failed")
                        .arg(selectorName));
    }
    return fail(QStringLiteral("getIntValue failed:%1 tagName%2 unsupport").arg(name, tag));
}
