#include "model/CTreeIntergerItemValue.h"

#include "UtilityKit/VexaInterface.h"

#include <QSet>

#include <algorithm>
#include <charconv>

namespace {

void appendNumber(QString &text, QLatin1String label, qint64 number)
{
    char digits[24];
    const char *const end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
    text += label;
    text += QLatin1String(digits, static_cast<int>(end - digits));
}

} // namespace

CTreeIntergerItemValue::CTreeIntergerItemValue() = default;
CTreeIntergerItemValue::CTreeIntergerItemValue(const CTreeIntergerItemValue &other) = default;
CTreeIntergerItemValue &CTreeIntergerItemValue::operator=(const CTreeIntergerItemValue &other) =
    default;
CTreeIntergerItemValue::~CTreeIntergerItemValue() = default;

QString CTreeIntergerItemValue::displayValue() const
{
    // The minimum goes first: with a maximum below it, values from the minimum on show the maximum.
    const qint64 nShown = m_nValue < m_nMinValue ? m_nMinValue : std::min(m_nValue, m_nMaxValue);
    switch (type()) {
    case KIND_IPV4:
    case KIND_MASK:
        return VexaInterface::numIP2StrIP(static_cast<int>(nShown));
    case KIND_HEX:
        return VexaInterface::Int2HexNumberQString(nShown);
    case KIND_MAC:
        return VexaInterface::int64_2StringMacAddress(static_cast<quint64>(nShown));
    default:
        return QString::number(nShown);
    }
}

QVariant CTreeIntergerItemValue::value() const
{
    return m_nValue;
}

void CTreeIntergerItemValue::setValue(const QVariant &value)
{
    m_nValue = value.toLongLong();
}

QString CTreeIntergerItemValue::createCurrentStauts(bool bReadOnly)
{
    // Put together without arg() and number(): this runs for every integer of every pass.
    QString status = CTreeItemValue::createCurrentStauts(bReadOnly);
    status.reserve(160);
    appendNumber(status, QLatin1String("m_nValue:"), m_nValue);
    appendNumber(status, QLatin1String("; m_nMinValue:"), m_nMinValue);
    appendNumber(status, QLatin1String("; m_nMaxValue:"), m_nMaxValue);
    status += QLatin1String("; NeedRecreateEditor:");
    status += m_strRepresentation;
    return status;
}

void CTreeIntergerItemValue::copy(CTreeItemValue *pSource, bool bCopyBase)
{
    CTreeItemValue::copy(pSource, bCopyBase);
    if (const auto *pOther = dynamic_cast<const CTreeIntergerItemValue *>(pSource)) {
        m_strRepresentation = pOther->m_strRepresentation;
        m_nValue = pOther->m_nValue;
        m_nMinValue = pOther->m_nMinValue;
        m_nMaxValue = pOther->m_nMaxValue;
        m_nIncValue = pOther->m_nIncValue;
    }
}

int CTreeIntergerItemValue::type() const
{
    const bool bAddress = m_strRepresentation == QLatin1String("IPV4Address");
    const bool bMac = m_strRepresentation == QLatin1String("MACAddress");
    if (!bAddress && !bMac && m_strRepresentation != QLatin1String("HexNumber")) {
        return KIND_DECIMAL;
    }
    // Descriptions often give these a plain HexNumber.
    static const QSet<QString> addressNodes{
        QStringLiteral("GevCurrentIPAddress"),
        QStringLiteral("GevCurrentSubnetMask"),
        QStringLiteral("GevCurrentDefaultGateway"),
        QStringLiteral("GevPersistentIPAddress"),
        QStringLiteral("GevPersistentSubnetMask"),
        QStringLiteral("GevPersistentDefaultGateway"),
        QStringLiteral("GevSCDA"),
    };
    if (bAddress || addressNodes.contains(m_strNodeName)) {
        const bool bMask = m_strNodeName == QLatin1String("GevCurrentSubnetMask")
            || m_strNodeName == QLatin1String("GevPersistentSubnetMask");
        return bMask ? KIND_MASK : KIND_IPV4;
    }
    return bMac || m_strNodeName == QLatin1String("GevMACAddress") ? KIND_MAC : KIND_HEX;
}
