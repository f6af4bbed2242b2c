#include "ShellServicesModule/QLocalCfg.h"

#include "host/shellservices/SettingsStore.h"

QLocalCfg::LanguageField::LanguageField() = default;

QLocalCfg::LanguageField::~LanguageField() = default;

QLocalCfg::LanguageField &QLocalCfg::LanguageField::operator=(const QString &language)
{
    SettingsStore::instance().setPropertyLanguage(language);
    return *this;
}

QLocalCfg::LanguageField::operator QString() const
{
    return SettingsStore::instance().propertyLanguage();
}

QLocalCfg::QLocalCfg() = default;

QLocalCfg::~QLocalCfg() = default;

QLocalCfg *QLocalCfg::Instance()
{
    static auto *const s_pInstance = new QLocalCfg;
    return s_pInstance;
}

int QLocalCfg::GetUserLevel()
{
    return SettingsStore::instance().userLevel();
}

void QLocalCfg::SetUserLevel(int level)
{
    SettingsStore::instance().setUserLevel(level);
}

QString QLocalCfg::GetPropertyLan()
{
    return SettingsStore::instance().propertyLanguage();
}

QString QLocalCfg::GetCodeFormat()
{
    return SettingsStore::instance().codeFormat();
}
