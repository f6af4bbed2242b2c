#include "view/PropertyLanguage.h"

#include "ShellServicesModule/QLocalCfg.h"
#include "UtilityKit/VexaInterface.h"

QString propertyLanguage(ParentType eType)
{
    if (eType != PARENT_FEATURE_TREE) {
        return VexaInterface::language(false);
    }
    QLocalCfg *const pConfiguration = QLocalCfg::Instance();
    return pConfiguration ? pConfiguration->GetPropertyLan() : QString();
}

bool isPropertyLanguageChinese(ParentType eType)
{
    return propertyLanguage(eType) == QLatin1String("CH");
}
