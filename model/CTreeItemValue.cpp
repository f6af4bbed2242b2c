#include "model/CTreeItemValue.h"

CTreeItemValue::CTreeItemValue() = default;

CTreeItemValue::CTreeItemValue(const CTreeItemValue &other)
    : m_bApplyEditorFont(other.m_bApplyEditorFont)
    , m_strNodeName(other.m_strNodeName)
    , m_strDescription(other.m_strDescription)
    , m_strDisplayName(other.m_strDisplayName)
    , m_strToolTip(other.m_strToolTip)
{
}

CTreeItemValue &CTreeItemValue::operator=(const CTreeItemValue &other) = default;

CTreeItemValue::~CTreeItemValue() = default;

QString CTreeItemValue::displayValue() const
{
    return {};
}

QString CTreeItemValue::nodeName(int) const
{
    return m_strNodeName;
}

QString CTreeItemValue::toolTip(int) const
{
    return m_strToolTip;
}

QVariant CTreeItemValue::value() const
{
    return {};
}

void CTreeItemValue::setValue(const QVariant &)
{
}

QString CTreeItemValue::displayName() const
{
    return m_strDisplayName;
}

QString CTreeItemValue::translateName() const
{
    return m_strTranslateName.isEmpty() ? m_strDisplayName : m_strTranslateName;
}

QString CTreeItemValue::StepPagesDisplayName() const
{
    return m_strStepDisplayNameEn.isEmpty() ? m_strDisplayName : m_strStepDisplayNameEn;
}

QString CTreeItemValue::StepPagesTranslateName() const
{
    const QString strPageName = m_stepPageNames.value(m_nStepIndex);
    if (!strPageName.isEmpty()) {
        return strPageName;
    }
    return m_strStepDisplayNameCn.isEmpty() ? StepPagesDisplayName() : m_strStepDisplayNameCn;
}

QString CTreeItemValue::createCurrentStauts(bool bReadOnly)
{
    return bReadOnly ? QStringLiteral("ReadOnly:true;") : QStringLiteral("ReadOnly:false;");
}

void CTreeItemValue::copy(CTreeItemValue *pSource, bool bCopyBase)
{
    if (!pSource || !bCopyBase) {
        return;
    }
    m_bApplyEditorFont = pSource->m_bApplyEditorFont;
    m_strNodeName = pSource->m_strNodeName;
    m_strDescription = pSource->m_strDescription;
    m_strDescriptionTrans = pSource->m_strDescriptionTrans;
    m_strDisplayName = pSource->m_strDisplayName;
    m_strTranslateName = pSource->m_strTranslateName;
    m_strToolTip = pSource->m_strToolTip;
    m_strToolTipCn = pSource->m_strToolTipCn;
}

void CTreeItemValue::updateEditorInfo(bool bReadOnly)
{
    m_strCurrentStatus = createCurrentStauts(bReadOnly);
}
