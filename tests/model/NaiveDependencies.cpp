#include "tests/model/NaiveDependencies.h"

#include <cmath>

namespace {

QVector<QDomElement> childrenOf(const QDomElement &element)
{
    QVector<QDomElement> children;
    for (QDomElement child = element.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        children.append(child);
    }
    return children;
}

const QStringList limits{QStringLiteral("pMin"),           QStringLiteral("pMax"),
                         QStringLiteral("pInc"),           QStringLiteral("pIsLocked"),
                         QStringLiteral("pIsImplemented"), QStringLiteral("pIsAvailable")};
const QStringList featureTags{QStringLiteral("Enumeration"), QStringLiteral("Integer"),
                              QStringLiteral("Boolean"),     QStringLiteral("Float"),
                              QStringLiteral("Command"),     QStringLiteral("StringReg")};

} // namespace

NaiveDependencies::NaiveDependencies(const QDomElement &documentElement,
                                     const QMap<QString, QDomElement> &elements,
                                     const QStringList &items)
    : m_elements(elements)
    , m_items(items)
{
    walk(documentElement);
    for (const QString &strName : items) {
        const QDomElement pValue =
            elements.value(strName).firstChildElement(QStringLiteral("pValue"));
        if (!pValue.isNull()) {
            m_pValues[strName] = pValue.text();
        }
    }
    for (const QString &strName : items) {
        const QDomElement partner =
            elements.value(m_pValues.value(strName)).firstChildElement(QStringLiteral("pValue"));
        if (m_pValues.contains(strName) && !partner.isNull() && items.contains(partner.text())
            && partner.text() != strName) {
            m_pairs[strName] = partner.text();
            m_pairs[partner.text()] = strName;
        }
    }
}

void NaiveDependencies::walk(const QDomElement &element)
{
    if (featureTags.contains(element.tagName())) {
        QStringList invalidators;
        QStringList variables;
        for (const QDomElement &child : childrenOf(element)) {
            if (child.tagName() == QLatin1String("pValue") || limits.contains(child.tagName())) {
                property(child.text(), invalidators, variables);
            } else if (child.tagName() == QLatin1String("pVariable")) {
                invalidators << child.text();
                variables << child.text();
            }
        }
        if (!invalidators.isEmpty()) {
            m_invalidators[element.attribute(QStringLiteral("Name"))] = invalidators;
            m_variables[element.attribute(QStringLiteral("Name"))] = variables;
        }
    }
    for (const QDomElement &child : childrenOf(element)) {
        walk(child);
    }
}

void NaiveDependencies::property(const QString &strName, QStringList &invalidators,
                                 QStringList &variables) const
{
    const QDomElement element = m_elements.value(strName);
    if (element.tagName() == QLatin1String("StructEntry")) {
        for (QDomElement sibling = element.previousSiblingElement(QStringLiteral("pInvalidator"));
             !sibling.isNull();
             sibling = sibling.previousSiblingElement(QStringLiteral("pInvalidator"))) {
            invalidators << sibling.text();
        }
    }
    for (const QDomElement &child : childrenOf(element)) {
        const QString strTag = child.tagName();
        if (strTag == QLatin1String("pInvalidator")) {
            invalidators << child.text();
        } else if (strTag == QLatin1String("pVariable")) {
            invalidators << child.text();
            variables << child.text();
            property(child.text(), invalidators, variables);
        } else if (strTag == QLatin1String("pValue")) {
            invalidators << child.text();
            property(child.text(), invalidators, variables);
        } else if (limits.contains(strTag)) {
            property(child.text(), invalidators, variables);
        }
    }
}

bool NaiveDependencies::inList(const QString &strName, QStringList list) const
{
    const QStringList entries = list;
    for (const QString &strEntry : entries) {
        list += m_pValues.keys(strEntry);
    }
    return list.contains(strName);
}

QStringList NaiveDependencies::invalidatorList(const QString &strName) const
{
    QStringList result;
    for (const QString &strKey : m_invalidators.keys()) {
        if (inList(strName, m_invalidators[strKey])) {
            result << strKey;
        }
    }
    const QStringList direct = result;
    for (const QString &strText : direct) {
        result << m_pairs.value(strText, strText);
    }
    for (const QChar letter : m_pairs.value(strName)) {
        result << QString(letter);
    }
    QStringList sharers;
    for (const QString &strVariable : m_variables.value(strName)) {
        for (const QString &strKey : m_variables.keys()) {
            if (strKey != strVariable && m_variables[strKey].contains(strVariable)) {
                sharers << strKey;
            }
        }
    }
    sharers.sort(); // any order will do
    result += sharers;
    for (const QDomElement &child : childrenOf(m_elements.value(strName))) {
        if (child.tagName() == QLatin1String("pSelected") && m_items.contains(strName)) {
            result << child.text();
        }
    }
    result << strName;
    result.removeDuplicates();
    return result;
}

bool NaiveDependencies::isNoCache(const QString &strName) const
{
    for (const QDomElement &child : childrenOf(m_elements.value(strName))) {
        const bool bLeadsOn = child.tagName() == QLatin1String("pValue")
            || child.tagName() == QLatin1String("pVariable");
        if (bLeadsOn ? isNoCache(child.text())
                     : child.tagName() == QLatin1String("Cachable")
                    && child.text() == QLatin1String("NoCache")) {
            return true;
        }
    }
    return false;
}

bool NaiveDependencies::isPolling(const QString &strName, qint64 &nPeriod) const
{
    for (const QDomElement &child : childrenOf(m_elements.value(strName))) {
        if (child.tagName() == QLatin1String("pValue")
            || child.tagName() == QLatin1String("pVariable")) {
            if (isPolling(child.text(), nPeriod)) {
                return true;
            }
        } else if (child.tagName() == QLatin1String("PollingTime") && !child.text().isEmpty()) {
            bool bConverts = false;
            nPeriod = child.text().toLongLong(&bConverts);
            return bConverts;
        }
    }
    return false;
}

QMap<qint64, QStringList> NaiveDependencies::pollingMap() const
{
    QMap<qint64, QStringList> map;
    for (const QString &strName : m_items) {
        qint64 nPeriod = 0;
        if (!isPolling(strName, nPeriod)) {
            nPeriod = isNoCache(strName) ? 2000 : 0;
        }
        if (nPeriod > 0) {
            map[std::max<qint64>(50, qint64(std::floor(double(nPeriod) / 50.0 + 0.5)) * 50)]
                << strName;
        }
    }
    return map;
}
