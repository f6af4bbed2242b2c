#include "host/workbench/DeviceCatalog.h"

#include "host/devicetask/CameraHost.h"
#include "host/devicetask/RealDevices.h"

#include <QFile>
#include <QFileInfo>

namespace {

/// One byte more than the device layer takes: a longer file is refused there without being read whole here.
constexpr qint64 DESCRIPTION_READ_LIMIT = 64LL * 1024 * 1024 + 1;

QString numberedId(const QString &id, int number)
{
    return number == 1 ? id : QStringLiteral("%1#%2").arg(id).arg(number);
}

/// Empty for a device without a network.
QString dotted(quint32 ipv4)
{
    return ipv4 == 0 ? QString()
                     : QStringLiteral("%1.%2.%3.%4")
                           .arg(ipv4 >> 24)
                           .arg(ipv4 >> 16 & 0xFF)
                           .arg(ipv4 >> 8 & 0xFF)
                           .arg(ipv4 & 0xFF);
}

QString takenTwice(const QString &id)
{
    return QStringLiteral("The device '%1' was asked for twice.").arg(id);
}

} // namespace

QString DeviceCatalog::addBuiltIn(const QString &id, QString *error)
{
    const QString model = id.section(QLatin1Char('#'), 0, 0);
    int number = 1;
    bool ok = true;
    if (id.contains(QLatin1Char('#'))) {
        number = id.section(QLatin1Char('#'), 1).toInt(&ok);
    } else {
        while (find(numberedId(model, number))) {
            ++number;
        }
    }
    const SimulatedDevices::Simulated device =
        SimulatedDevices::builtIn(model, qMax(number, 1) - 1);
    if (!ok || number < 1 || !device.source) {
        *error = QStringLiteral("There is no device '%1'. Devices: %2.")
                     .arg(id, SimulatedDevices::builtInIds().join(QStringLiteral(", ")));
        return QString();
    }
    const QString freeId = numberedId(model, number);
    if (find(freeId)) {
        *error = takenTwice(id);
        return QString();
    }
    return enter(freeId, device);
}

QString DeviceCatalog::addDescription(const QString &path, SimulatorControl::MemoryPattern pattern,
                                      QString *error)
{
    const QFileInfo info(path);
    QFile file(path);
    if (info.isDir() || !file.open(QIODevice::ReadOnly)) {
        *error =
            QStringLiteral("The description '%1' cannot be read: %2.")
                .arg(path, info.isDir() ? QStringLiteral("it is a folder") : file.errorString());
        return QString();
    }
    const QByteArray xml = file.read(DESCRIPTION_READ_LIMIT);
    if (file.error() != QFileDevice::NoError) {
        *error = QStringLiteral("The description '%1' cannot be read: %2.")
                     .arg(path, file.errorString());
        return QString();
    }
    int number = 1;
    while (find(numberedId(info.fileName(), number))) {
        ++number;
    }
    const SimulatedDevices::Simulated device =
        SimulatedDevices::fromDescription(xml, info.completeBaseName(), pattern);
    QFile texts(info.path() + QLatin1Char('/') + info.completeBaseName()
                + QStringLiteral(".zh.json"));
    if (texts.open(QIODevice::ReadOnly)) {
        device.source->translations = texts.read(DESCRIPTION_READ_LIMIT);
    }
    return enter(numberedId(info.fileName(), number), device);
}

QString DeviceCatalog::enter(const QString &id, const SimulatedDevices::Simulated &device)
{
    device.source->id = id;
    m_devices.append({id, device.source, device.control});
    return id;
}

QString DeviceCatalog::addGige(const QString &address, QString *error)
{
    return enterReal(RealDevices::gige(address, error), error);
}

QString DeviceCatalog::addUsb(const QString &id, QString *error)
{
    return enterReal(RealDevices::usb(id), error);
}

QString DeviceCatalog::enterReal(const std::shared_ptr<DeviceSource> &source, QString *error)
{
    if (!source) {
        return QString();
    }
    const QString id = addFound(source);
    if (id.isEmpty()) {
        *error = takenTwice(source->id);
    }
    return id;
}

QString DeviceCatalog::addFound(const std::shared_ptr<DeviceSource> &source)
{
    for (const Device &device : qAsConst(m_devices)) {
        // A USB device may have been named by its serial number.
        const bool sameUsb = !device.control && source->deviceType == DEVICE_TYPE_U3V
            && device.source->deviceType == DEVICE_TYPE_U3V && device.id == source->serial;
        if (device.id == source->id || sameUsb) {
            return QString();
        }
    }
    m_devices.append({source->id, source, nullptr});
    return source->id;
}

const DeviceCatalog::Device *DeviceCatalog::find(const QString &id) const
{
    for (const Device &device : m_devices) {
        if (device.id == id) {
            return &device;
        }
    }
    return nullptr;
}

QString DeviceCatalog::listOf(const QVector<std::shared_ptr<DeviceSource>> &sources)
{
    QString text;
    for (const std::shared_ptr<DeviceSource> &source : sources) {
        text += QStringList{source->id, transportName(source->deviceType), source->model,
                            source->serial, dotted(source->ipv4)}
                    .join(QLatin1Char('\t'))
            + QLatin1Char('\n');
    }
    return text;
}

QVector<std::shared_ptr<DeviceSource>> DeviceCatalog::builtInSources()
{
    QVector<std::shared_ptr<DeviceSource>> sources;
    for (const QString &id : SimulatedDevices::builtInIds()) {
        sources.append(SimulatedDevices::builtIn(id).source);
    }
    return sources;
}

QString DeviceCatalog::transportName(unsigned int deviceType)
{
    static const struct
    {
        unsigned int type;
        const char *name;
    } TABLE[] = {{DEVICE_TYPE_GIGE, "GigE"},
                 {DEVICE_TYPE_GIGE_VIRTUAL, "GigE"},
                 {DEVICE_TYPE_U3V, "U3V"},
                 {DEVICE_TYPE_CL, "CL"}};
    for (const auto &row : TABLE) {
        if (row.type == deviceType) {
            return QString::fromLatin1(row.name);
        }
    }
    return QString::number(deviceType);
}
