#include "featurefile/FeatureFileFilters.h"

#include "DeviceTaskModule/DeviceTaskModuleGlobal.h"
#include "UtilityKit/VexaInterface.h"

#include <QFile>
#include <QTextStream>

const QStringList &FeatureFileFilters::builtIn()
{
    static const QStringList NAMES = {QStringLiteral("GevCurrentIPAddress"),
                                      QStringLiteral("GevCurrentSubnetMask"),
                                      QStringLiteral("GevCurrentDefaultGateway"),
                                      QStringLiteral("LUTValueAll"),
                                      QStringLiteral("GevPersistentIPAddress"),
                                      QStringLiteral("GevPersistentSubnetMask"),
                                      QStringLiteral("GevPersistentDefaultGateway"),
                                      QStringLiteral("GevSCDA"),
                                      QStringLiteral("GevCurrentIPConfigurationDHCP"),
                                      QStringLiteral("GevCurrentIPConfigurationPersistentIP"),
                                      QStringLiteral("GevPAUSEFrameReception")};
    return NAMES;
}

FeatureFileFilters::Filters FeatureFileFilters::load()
{
    Filters filters;
    const QString folder = VexaInterface::programDataPath() + QLatin1String("/Streamable");
    for (const char *name : {"U3V", "GigE", "CXP", "CL"}) {
        const QString interface = QLatin1String(name);
        QFile file(QStringLiteral("%1/%2.filter").arg(folder, interface));
        if (file.open(QIODevice::ReadOnly)) {
            filters.insert(interface, QTextStream(&file).readAll().split(QLatin1Char(',')));
        }
    }
    return filters;
}

QString FeatureFileFilters::interfaceName(unsigned int deviceType)
{
    switch (deviceType) {
    case DEVICE_TYPE_GIGE:
    case DEVICE_TYPE_GIGE_VIRTUAL:
        return QStringLiteral("GigE");
    case DEVICE_TYPE_U3V:
        return QStringLiteral("U3V");
    case DEVICE_TYPE_CL:
        return QStringLiteral("CL");
    default:
        return QString();
    }
}
