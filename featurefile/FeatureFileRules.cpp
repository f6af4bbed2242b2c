#include "featurefile/FeatureFileRules.h"

#include "DeviceTaskModule/QCameraTask.h"
#include "model/ElementWalk.h"

#include <QDebug>

#include <algorithm>

namespace {

bool containsAny(const QString &text, const QStringList &words)
{
    return std::any_of(words.cbegin(), words.cend(),
                       [&text](const QString &word) { return text.contains(word); });
}

bool isBetween(int code, quint32 first, quint32 last)
{
    const auto number = static_cast<quint32>(code);
    return number >= first && number <= last;
}

constexpr quint32 DEVICE_GONE_FIRST = 0x90006000;
constexpr quint32 DEVICE_GONE_LAST = 0x90006002;
constexpr quint32 NODE_NOT_ACCESSIBLE = 0x90006104;
constexpr quint32 NODE_ERROR_FIRST = 0x90006200;
constexpr quint32 NODE_ERROR_LAST = 0x90006206;

} // namespace

bool FeatureFileRules::isIdentity(const QString &name)
{
    static const QStringList NAMES = {
        QStringLiteral("UserSetDefault"),     QStringLiteral("UserSetSelector"),
        QStringLiteral("DeviceSerialNumber"), QStringLiteral("DeviceUserID"),
        QStringLiteral("BoardDeviceType"),    QStringLiteral("DeviceFirmwareVersion")};
    return NAMES.contains(name);
}

bool FeatureFileRules::isPollingParameter(const QString &name)
{
    static const QStringList NAMES = {
        QStringLiteral("PollingExposureTime"), QStringLiteral("PollingGamma"),
        QStringLiteral("PollingVertline"),     QStringLiteral("PollingParamEnable"),
        QStringLiteral("PollingLightEnable"),  QStringLiteral("PollingFocusPos"),
        QStringLiteral("PollingFocusEnable"),  QStringLiteral("PollingGain"),
        QStringLiteral("PollingParam")};
    return NAMES.contains(name);
}

std::optional<FeatureFileReason> FeatureFileRules::exclusionOf(const QString &name,
                                                               const QDomElement &element,
                                                               const QStringList &exclusions)
{
    if (exclusions.contains(name)) {
        return FeatureFileReason::Excluded;
    }
    const QString representation =
        ElementWalk::text(element.firstChildElement(QStringLiteral("Representation")));
    if (representation == QLatin1String("IPV4Address")
        || representation == QLatin1String("MACAddress")
        || (representation == QLatin1String("HexNumber")
            && name == QLatin1String("GevMACAddress"))) {
        return FeatureFileReason::Address;
    }
    return std::nullopt;
}

bool FeatureFileRules::isLeftOutByWords(const QString &name, const QString &isImplemented,
                                        const QString &isAvailable)
{
    static const QStringList NAME_WORDS = {QStringLiteral("MirrorMode"), QStringLiteral("Http"),
                                           QStringLiteral("Magnification")};
    return containsAny(name, NAME_WORDS) || isImplemented.contains(QLatin1String("OnlyType2_Ava"))
        || isAvailable.contains(QLatin1String("QualityEnable_Ava"));
}

bool FeatureFileRules::needsQuality(const QString &isAvailable)
{
    static const QStringList WORDS = {QStringLiteral("Quality1D"), QStringLiteral("Quality2D"),
                                      QStringLiteral("QualityTDCR"), QStringLiteral("TDCR")};
    return containsAny(isAvailable, WORDS);
}

bool FeatureFileRules::readFirmware(QCameraTask *task, QString *tag, QString *version, int *error)
{
    for (const char *name :
         {"ZRHDeviceFirmwareVersion", "ZRADeviceFirmwareVersion", "DeviceFirmwareVersion"}) {
        *tag = QLatin1String(name);
        if (task->GetStringValue(*tag, version, nullptr, error, true, false)) {
            return true;
        }
    }
    qCritical("Get XML_NODE_FIRMWARE failed.");
    return false;
}

bool FeatureFileRules::isHarmless(int error)
{
    return error == 0 || isBetween(error, NODE_NOT_ACCESSIBLE, NODE_NOT_ACCESSIBLE)
        || isBetween(error, NODE_ERROR_FIRST, NODE_ERROR_LAST);
}

bool FeatureFileRules::isGone(int error)
{
    return isBetween(error, DEVICE_GONE_FIRST, DEVICE_GONE_LAST);
}
