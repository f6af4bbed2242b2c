#include "model/CTreeItemValue.h"

#include "model/CTreeBooleanItemValue.h"
#include "model/CTreeCommandItemValue.h"
#include "model/CTreeCustomDrawItemValue.h"
#include "model/CTreeCustomWaterMarkItemValue.h"
#include "model/CTreeEnumationItemValue.h"
#include "model/CTreeFloatItemValue.h"
#include "model/CTreeFormatStringItemValue.h"
#include "model/CTreeIntergerItemValue.h"
#include "model/CTreeStringItemValue.h"
#include "model/CustomItemValues.h"

#include <new>

namespace {

template <typename Value>
std::unique_ptr<CTreeItemValue> make()
{
    return std::make_unique<Value>();
}

struct TagClass
{
    const char *tagName;
    std::unique_ptr<CTreeItemValue> (*make)();
};

const TagClass tagClasses[] = {
    {"Boolean", make<CTreeBooleanItemValue>},
    {"Command", make<CTreeCommandItemValue>},
    {"Integer", make<CTreeIntergerItemValue>},
    {"Enumeration", make<CTreeEnumationItemValue>},
    {"Float", make<CTreeFloatItemValue>},
    {"StringReg", make<CTreeStringItemValue>},
    {"CustomDrawFeatureTag", make<CTreeCustomDrawItemValue>},
    {"CustomWatermarkFeatureTag", make<CTreeCustomWaterMarkItemValue>},
    {"CustomAlgorithmCodeTag", make<CTreeCustomAlgorithmCodeItemValue>},
    {"CustomLightingSelector", make<CTreeCustomLightingSelectorItemValue>},
    {"CustomSpinBox", make<CTreeHorSpinBoxItemValue>},
    {"CustomFormatEdit", make<CTreeFormatStringItemValue>},
    {"CustomFormatTextEdit", make<CTreeFormatStringTextItemValue>},
    {"CustomScreen", make<CTreeScreenSelectItemValue>},
};

} // namespace

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

void CTreeItemValue::setValue(const QVariant &) { }

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

std::unique_ptr<CTreeItemValue> CTreeItemValue::create(const QString &strTagName)
{
    try {
        for (const TagClass &row : tagClasses) {
            if (strTagName == QLatin1String(row.tagName)) {
                return row.make();
            }
        }
        return std::make_unique<CTreeItemValue>();
    } catch (const std::bad_alloc &) {
        return nullptr;
    }
}
