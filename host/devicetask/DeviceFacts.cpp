#include "host/devicetask/DeviceFacts.h"

#include "host/devicetask/CameraHost.h"
#include "host/devicetask/Ipv4Address.h"
#include "host/devicetask/nodes/NodeReader.h"
#include "host/devicetask/nodes/NodeTable.h"

namespace {

/// SFNC DeviceScanType where the entry does not say by its name what it is: Areascan 0, Linescan 1.
constexpr qint64 SFNC_LINESCAN = 1;

constexpr unsigned int AREA_SCAN = 1;
constexpr unsigned int LINE_SCAN = 4;

/// The first of these String features that answers with something.
QString textOf(const DeviceSession &session, std::initializer_list<const char *> names)
{
    for (const char *name : names) {
        QString text;
        qint64 maxLength = 0;
        if (!NodeReader::string(session, name, &text, &maxLength).failed()
            && !text.trimmed().isEmpty()) {
            return text.trimmed();
        }
    }
    return QString();
}

unsigned int scanTypeOf(const DeviceSession &session, unsigned int unknown)
{
    static const char *const NAME = "DeviceScanType";
    _NODE_INT_VALUE_ number{};
    if (NodeReader::integer(session, NAME, &number).failed()) {
        return unknown;
    }
    const NodeId id = session.nodes.find(NAME);
    const QVector<NodeEntry> entries =
        id == NO_NODE ? QVector<NodeEntry>() : session.nodes.at(id).entries;
    for (const NodeEntry &entry : entries) {
        if (entry.hasValue && entry.value == number.value) {
            const QByteArray name = entry.name.toLower();
            if (name.startsWith("linescan")) {
                return LINE_SCAN;
            }
            if (name.startsWith("areascan")) {
                return AREA_SCAN;
            }
        }
    }
    return number.value == SFNC_LINESCAN ? LINE_SCAN : AREA_SCAN;
}

/// 0 for a device without a network.
quint32 addressOf(ArvDevice *device)
{
    // The device keeps the address; no reference comes with it.
    GSocketAddress *peer = ARV_IS_GV_DEVICE(device)
        ? arv_gv_device_get_device_address(ARV_GV_DEVICE(device))
        : nullptr;
    return G_IS_INET_SOCKET_ADDRESS(peer)
        ? ipv4Of(g_inet_socket_address_get_address(G_INET_SOCKET_ADDRESS(peer)))
        : 0;
}

} // namespace

DeviceFacts DeviceFacts::of(const DeviceSource &source)
{
    DeviceFacts facts;
    facts.name = source.name;
    facts.model = source.model;
    facts.serial = source.serial;
    facts.ipv4 = source.ipv4;
    facts.deviceType = source.deviceType;
    facts.scanType = source.scanType;
    return facts;
}

DeviceFacts DeviceFacts::of(const DeviceSource &source, const DeviceSession &session)
{
    DeviceFacts facts = of(source);
    if (!source.asksDevice) {
        return facts;
    }
    const QString model = textOf(session, {"DeviceModelName"});
    const QString serial = textOf(session, {"DeviceSerialNumber", "DeviceID"});
    facts.model = model.isEmpty() ? source.model : model;
    facts.serial = serial.isEmpty() ? source.serial : serial;
    facts.name = textOf(session, {"DeviceUserID"});
    if (facts.name.isEmpty()) {
        facts.name = (facts.model + QLatin1Char(' ') + facts.serial).trimmed();
    }
    if (facts.name.isEmpty()) {
        facts.name = source.name;
    }
    facts.scanType = scanTypeOf(session, source.scanType);
    if (const quint32 address = addressOf(session.device)) {
        facts.ipv4 = address;
    }
    return facts;
}
