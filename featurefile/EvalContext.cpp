#include "featurefile/EvalContext.h"

#include "DeviceTaskModule/QCameraTask.h"
#include "UtilityKit/VexaInterface.h"
#include "featurefile/EvalVisit.h"
#include "featurefile/RegisterWords.h"
#include "model/ElementWalk.h"

#include <QDebug>
#include <QRegularExpression>

#include <cmath>

namespace {

/// A hostile formula fails for each of its combinations.
constexpr int MAX_LINES_A_NODE = 50;

const QStringList &registerTags()
{
    static const QStringList TAGS = {QStringLiteral("IntReg"), QStringLiteral("MaskedIntReg"),
                                     QStringLiteral("StructReg"), QStringLiteral("StringReg")};
    return TAGS;
}

} // namespace

EvalContext::EvalContext(const ElementMap &nodes, const QVector<SelectedLink> &selectedLinks,
                         QCameraTask *task, bool isGigE, const std::atomic<bool> *stop,
                         const EvalLimits &limits)
    : m_nodes(nodes)
    , m_selectedLinks(selectedLinks)
    , m_pTask(task)
    , m_bGigE(isGigE)
    , m_pStop(stop)
    , m_limits(limits)
{
    for (int index = 0; index < m_selectedLinks.size(); ++index) {
        m_linksOf[m_selectedLinks.at(index).selected].append(index);
    }
    restoreHiddenNodes();
}

/// A variable of a formula has a Name too; in the element map it stands in the place of a node of that name.
void EvalContext::restoreHiddenNodes()
{
    static const QSet<QString> NOT_NODES = {QStringLiteral("pVariable"), QStringLiteral("Constant"),
                                            QStringLiteral("Expression")};
    QDomElement root;
    for (auto it = m_nodes.cbegin(); it != m_nodes.cend(); ++it) {
        if (NOT_NODES.contains(it->tagName())) {
            m_addedNodes.insert(it.key(), QDomElement());
            root = it->ownerDocument().documentElement();
        }
    }
    const auto holdsNodes = [&root](const QDomElement &element) {
        const QString tag = element.tagName();
        return element == root || tag == QLatin1String("Group")
            || tag == QLatin1String("StructReg");
    };
    for (QDomElement element = root; !element.isNull();
         element = ElementWalk::next(element, root, holdsNodes(element))) {
        const auto hidden = m_addedNodes.find(ElementWalk::name(element));
        if (hidden != m_addedNodes.end()) {
            *hidden = element;
        }
    }
}

void EvalContext::beginNode(const QString &feature)
{
    m_strFeature = feature;
    m_nDepth = 0;
    m_nVisits = 0;
    m_nCombinations = 0;
    m_nFailures = 0;
    m_bLimitTold = false;
}

QDomElement EvalContext::node(const QString &name) const
{
    const auto added = m_addedNodes.constFind(name);
    return added == m_addedNodes.constEnd() ? m_nodes.value(name) : *added;
}

bool EvalContext::isStopped() const
{
    return m_pStop && *m_pStop;
}

bool EvalContext::fail(const QString &text)
{
    if (isStopped()) {
        return false;
    }
    if (++m_nFailures <= MAX_LINES_A_NODE) {
        qCritical().noquote() << text;
    } else if (m_nFailures == MAX_LINES_A_NODE + 1) {
        qCritical().noquote() << m_strFeature + QLatin1String(": further failures are not shown");
    }
    return false;
}

void EvalContext::addRemark(const QString &name, FeatureFileReason reason, const QString &detail)
{
    const QString key =
        QStringLiteral("%1\n%2\n%3").arg(name, QString::number(int(reason)), detail);
    if (!m_toldRemarks.contains(key)) {
        m_toldRemarks.insert(key);
        m_remarks.append({name, reason, detail});
        if (reason != FeatureFileReason::PresentSelection) {
            qWarning().noquote() << name + QLatin1String(": ") + detail;
        }
    }
}

bool EvalContext::countVisit()
{
    if (isStopped()) {
        return false;
    }
    if (++m_nVisits <= m_limits.visits) {
        return true;
    }
    if (!m_bLimitTold) {
        m_bLimitTold = true;
        fail(QStringLiteral("%1 takes more than %2 nodes and registers")
                 .arg(m_strFeature)
                 .arg(m_limits.visits));
    }
    return false;
}

bool EvalContext::countCombinations(qint64 count)
{
    m_nCombinations += count;
    if (isStopped()) {
        return false;
    }
    if (m_nCombinations <= m_limits.combinations) {
        return true;
    }
    if (!m_bLimitTold) {
        m_bLimitTold = true;
        fail(QStringLiteral("%1 has more than %2 combinations of values")
                 .arg(m_strFeature)
                 .arg(m_limits.combinations));
    }
    return false;
}

bool EvalContext::isNumber(const QString &text, qint64 *number) const
{
    const QString trimmed = text.trimmed();
    return node(trimmed).isNull() && parseNumber(trimmed, number);
}

bool EvalContext::parseNumber(const QString &text, qint64 *number)
{
    // Hexadecimal digits without a prefix are no number.
    static const QRegularExpression PATTERN(
        QStringLiteral("\\A(0x0*[A-Fa-f0-9]{1,16}|0*[0-9]{1,19})\\z"));
    *number = VexaInterface::string2Int(text);
    return PATTERN.match(text).hasMatch();
}

QStringList EvalContext::selectorsOf(const QString &name) const
{
    QStringList selectors;
    for (const int index : m_linksOf.value(name)) {
        selectors += m_selectedLinks.at(index).selector;
    }
    return selectors;
}

bool EvalContext::collectSelectors(const QString &name)
{
    const QStringList selectors = selectorsOf(name);
    for (const QString &selector : selectors) {
        const QDomElement element = node(selector);
        if (element.tagName() != QLatin1String("Enumeration")
            && element.tagName() != QLatin1String("Integer")) {
            continue;
        }
        const QDomElement value = element.firstChildElement(QStringLiteral("pValue"));
        const QString key = value.isNull() ? selector : ElementWalk::text(value);
        if (!m_selectorMap.contains(key)) {
            m_selectorMap.insert(key, element);
        }
    }
    return !selectors.isEmpty();
}

QDomElement EvalContext::findRegElement(const QDomElement &node, QDomElement *converter)
{
    const Visit visit(this);
    if (!visit.isAllowed() || node.isNull()) {
        return QDomElement();
    }
    const QString tag = node.tagName();
    if (registerTags().contains(tag) || tag == QLatin1String("Register")) {
        return node;
    }
    if (tag == QLatin1String("IntConverter") || tag == QLatin1String("Converter")) {
        *converter = node;
    }
    const QString next = tag == QLatin1String("StructEntry")
        ? ElementWalk::name(node)
        : ElementWalk::text(node.firstChildElement(QStringLiteral("pValue")));
    const QDomElement found = next.isEmpty() ? QDomElement() : this->node(next);
    if (found.isNull() || registerTags().contains(found.tagName())) {
        return found;
    }
    if (found.tagName() == QLatin1String("StructEntry")) {
        const QDomElement structReg = found.parentNode().toElement();
        if (!structReg.isNull()) {
            m_addedNodes.insert(next + QLatin1Char('_'), structReg);
        }
        return structReg;
    }
    return findRegElement(found, converter);
}

EvalContext::Length EvalContext::registerLength(const QDomElement &reg, qint64 *length, bool quiet)
{
    const QString name = ElementWalk::name(reg);
    QDomElement child = reg.firstChildElement(QStringLiteral("Length"));
    const bool isReference = child.isNull();
    if (isReference) {
        child = reg.firstChildElement(QStringLiteral("pLength"));
    }
    const QString text = ElementWalk::text(child);
    if (text.isEmpty()) {
        fail(QStringLiteral("Reg has no value length:%1").arg(name));
        return Length::Unknown;
    }
    bool isKnown = isNumber(text, length);
    if (!isKnown && isReference && !node(text).isNull()) {
        EvalResults results;
        const bool succeeded = getValue(node(text), results);
        isKnown = !results.isEmpty() && (succeeded || results.size() == 1);
        if (isKnown) {
            *length = std::llround(qBound(-1.0F, results.first().value, 1e9F));
        }
    }
    if (isKnown && *length == 0) {
        return Length::Zero;
    }
    if (isKnown && RegisterWords::isLengthAllowed(*length)) {
        return Length::Known;
    }
    if (!quiet || !isReference) {
        fail(QStringLiteral("Reg%1 value length:%2 is erro").arg(name, text));
    }
    return Length::Unknown;
}

QString EvalContext::variableText(const QString &node, const _FORMULA_RESULT_ &result)
{
    constexpr int DIGITS = 6;
    const QString text = QString::number(static_cast<double>(result.value), 'g', DIGITS);
    const bool isWhole = result.meant == std::floor(result.meant);
    const bool isExact = isWhole ? text.toDouble() == result.meant
                                 : text.toFloat() == static_cast<float>(result.meant);
    if (!isExact) {
        addRemark(
            node, FeatureFileReason::Inexact,
            QStringLiteral("%1 was meant, %2 is used")
                .arg(QString::number(result.meant, 'g', QLocale::FloatingPointShortest), text));
    }
    return text;
}

bool EvalContext::substitute(const QString &variable, const QString &text, QString *formula)
{
    // A long text costs as much as several short ones.
    constexpr int LONG_TEXT = 4096;
    if (formula->size() > MAX_FORMULA) {
        return fail(QStringLiteral("getValue  failed:%1 a formula has more than %2 characters")
                        .arg(m_strFeature)
                        .arg(MAX_FORMULA));
    }
    formula->replace(variable, text);
    return countCombinations(formula->size() / LONG_TEXT);
}

bool EvalContext::compute(const QString &owner, const QString &formula, double *value)
{
    bool ok = false;
    *value = VexaInterface::Compute(formula.toLocal8Bit().constData(), ok);
    if (!ok) {
        fail(QStringLiteral("getValue  failed:%1 compute erro,formula:%2.msg:%3")
                 .arg(owner, formula, QString::fromLocal8Bit(VexaInterface::GetCalculatorErro())));
    }
    return ok;
}
