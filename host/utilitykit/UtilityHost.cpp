#include "host/utilitykit/UtilityHost.h"

#include "host/utilitykit/HostSettings.h"

void UtilityHost::setLanguage(const QString &language)
{
    HostSettings::instance().setLanguage(language);
}

void UtilityHost::setNeutralVision(bool neutral)
{
    HostSettings::instance().setNeutralVision(neutral);
}

void UtilityHost::useTransientSettings()
{
    HostSettings::instance().useTransient();
}

QString VexaInterface::language(bool reload)
{
    return HostSettings::instance().language(reload);
}

bool VexaInterface::isNeutralVision()
{
    return HostSettings::instance().isNeutralVision();
}
