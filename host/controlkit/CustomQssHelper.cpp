#include "ControlKit/CustomQssHelper.h"

#include "UtilityKit/VexaInterface.h"

CustomQssHelper::CustomQssHelper(QWidget *owner)
    : CustomObject(owner)
{
}

CustomQssHelper::~CustomQssHelper() = default;

void CustomQssHelper::cSetUserData(const QVariant &data)
{
    m_userData = data;
}

QVariant CustomQssHelper::cUserData() const
{
    return m_userData;
}

void CustomQssHelper::cLanguageChange()
{
    m_strLanguage = VexaInterface::language(false);
}

QString CustomQssHelper::cLanguageString() const
{
    return m_strLanguage.isEmpty() ? VexaInterface::language(false) : m_strLanguage;
}
