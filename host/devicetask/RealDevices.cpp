#include "host/devicetask/RealDevices.h"

#include "host/devicetask/CameraHost.h"
#include "host/devicetask/GObjectPtr.h"
#include "host/devicetask/GigeProbe.h"
#include "host/devicetask/Ipv4Address.h"
#include "host/devicetask/ProcessMutex.h"

#include <algorithm>
#include <arv.h>
#include <memory>

namespace {

/// What the discovery answers of one device, copied: Aravis' texts live until the next look only.
struct Found
{
    QByteArray aravisId;
    QByteArray guid; ///< of a USB3 Vision device
    QString address; ///< of a GigE Vision device
    QString model;
    QString serial;
    unsigned int deviceType = 0;
};

/// A text from the network, fit for one line and one column.
QString printable(const char *text)
{
    QString result = QString::fromUtf8(text);
    for (QChar &character : result) {
        if (!character.isPrint()) {
            character = QLatin1Char(' ');
        }
    }
    return result.simplified();
}

/// Asks the devices of one transport; GigE Vision takes about a second. Under the process-wide mutex.
QVector<Found> look(ArvInterface *transport, unsigned int deviceType)
{
    arv_interface_update_device_list(transport);
    QVector<Found> devices;
    for (unsigned int index = 0; index < arv_interface_get_n_devices(transport); ++index) {
        Found device;
        device.deviceType = deviceType;
        device.aravisId = arv_interface_get_device_id(transport, index);
        device.model = printable(arv_interface_get_device_model(transport, index));
        device.serial = printable(arv_interface_get_device_serial_nbr(transport, index));
        if (deviceType == DEVICE_TYPE_GIGE) {
            device.address = printable(arv_interface_get_device_address(transport, index));
        } else {
            device.guid = arv_interface_get_device_physical_id(transport, index);
        }
        devices.append(device);
    }
    return devices;
}

QVector<Found> lookForUsb()
{
    return look(arv_uv_interface_get_instance(), DEVICE_TYPE_U3V);
}

ArvDevice *openGige(const QByteArray &address, GError **error)
{
    const GObjectPtr<GInetAddress> device(g_inet_address_new_from_string(address.constData()));
    const GObjectPtr<GInetAddress> local(GigeProbe::interfaceFor(device.get(), error));
    return local ? arv_gv_device_new(local.get(), device.get(), error) : nullptr;
}

/// The id may be any of those that a person can read off a device or a list.
ArvDevice *openUsb(const QString &id, GError **error)
{
    const std::lock_guard<std::recursive_mutex> guard(aravisMutex());
    const QVector<Found> devices = lookForUsb();
    const auto found = std::find_if(devices.cbegin(), devices.cend(), [&id](const Found &device) {
        return id == printable(device.guid) || id == device.serial
            || id == printable(device.aravisId);
    });
    if (found == devices.cend()) {
        g_set_error(error, ARV_DEVICE_ERROR, ARV_DEVICE_ERROR_NOT_FOUND,
                    "no USB3 Vision device with this id is plugged in");
        return nullptr;
    }
    return arv_interface_open_device(arv_uv_interface_get_instance(), found->aravisId.constData(),
                                     error);
}

std::shared_ptr<DeviceSource> newSource(const QString &id, unsigned int deviceType)
{
    auto source = std::make_shared<DeviceSource>();
    source->id = id;
    source->name = id;
    source->deviceType = deviceType;
    source->asksDevice = true;
    return source;
}

} // namespace

QVector<std::shared_ptr<DeviceSource>> RealDevices::discover()
{
    QVector<Found> devices;
    {
        const std::lock_guard<std::recursive_mutex> guard(aravisMutex());
        devices = look(arv_gv_interface_get_instance(), DEVICE_TYPE_GIGE) + lookForUsb();
    }
    QVector<std::shared_ptr<DeviceSource>> sources;
    for (const Found &device : qAsConst(devices)) {
        QString ignored;
        const std::shared_ptr<DeviceSource> source = device.deviceType == DEVICE_TYPE_GIGE
            ? gige(device.address, &ignored)
            : usb(printable(device.guid.isEmpty() ? device.aravisId : device.guid));
        if (!source) {
            continue;
        }
        source->model = device.model;
        source->serial = device.serial;
        source->name = QStringLiteral("%1 %2").arg(device.model, device.serial).trimmed();
        sources.append(source);
    }
    const auto byId = [](const auto &a, const auto &b) { return a->id < b->id; };
    std::sort(sources.begin(), sources.end(), byId);
    // A device that two interfaces reach answers on both.
    const auto sameId = [](const auto &a, const auto &b) { return a->id == b->id; };
    sources.erase(std::unique(sources.begin(), sources.end(), sameId), sources.end());
    return sources;
}

std::shared_ptr<DeviceSource> RealDevices::gige(const QString &address, QString *error)
{
    const GObjectPtr<GInetAddress> parsed(
        g_inet_address_new_from_string(address.trimmed().toUtf8().constData()));
    const quint32 number = ipv4Of(parsed.get());
    // Net 0 and everything from 224 on are no addresses of one device.
    if (number >> 24 == 0 || number >> 24 >= 224) {
        *error = QStringLiteral("'%1' is not the IPv4 address of a device.").arg(address);
        return nullptr;
    }
    const std::unique_ptr<char, decltype(&g_free)> text(g_inet_address_to_string(parsed.get()),
                                                        g_free);
    const QByteArray canonical = text.get();
    auto source = newSource(QString::fromLatin1(canonical), DEVICE_TYPE_GIGE);
    source->ipv4 = number;
    source->create = [canonical](GError **failure) { return openGige(canonical, failure); };
    return source;
}

std::shared_ptr<DeviceSource> RealDevices::usb(const QString &id)
{
    const auto source = newSource(id, DEVICE_TYPE_U3V);
    source->create = [id](GError **failure) { return openUsb(id, failure); };
    return source;
}
