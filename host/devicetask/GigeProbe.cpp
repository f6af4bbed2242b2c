#include "host/devicetask/GigeProbe.h"

#include "host/devicetask/GObjectPtr.h"
#include "host/devicetask/nodes/NodeTableReader.h"

#include <QByteArray>
#include <QtEndian>

#include <cstdlib>

namespace {

constexpr quint16 GVCP_PORT = 3956;
constexpr int HEADER_SIZE = 8;
constexpr int LONGEST_PACKET = 576;

enum GvcpCommand : quint16 { DISCOVERY = 0x0002, READ_MEMORY = 0x0084 };

/// GigE Vision: where a device says where its description lies.
constexpr quint32 URL_REGISTERS[] = {0x200, 0x400};
constexpr quint16 URL_LENGTH = 512;

enum class Answer { Given, Nothing, Refused, Unreachable };

/// Takes the failure over.
Answer answerOf(GError *failure)
{
    const bool refused = g_error_matches(failure, G_IO_ERROR, G_IO_ERROR_CONNECTION_REFUSED);
    const bool unreachable = g_error_matches(failure, G_IO_ERROR, G_IO_ERROR_HOST_UNREACHABLE)
        || g_error_matches(failure, G_IO_ERROR, G_IO_ERROR_NETWORK_UNREACHABLE);
    g_clear_error(&failure);
    return refused ? Answer::Refused : unreachable ? Answer::Unreachable : Answer::Nothing;
}

template<class T>
QByteArray bigEndian(T number)
{
    QByteArray bytes(int(sizeof(T)), '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

/// One question and the wait for its acknowledge. The socket is connected, so nobody else's packets come in.
Answer askOnce(GSocket *socket, const QByteArray &request, QByteArray *reply)
{
    GError *failure = nullptr;
    if (g_socket_send(socket, request.constData(), gsize(request.size()), nullptr, &failure) < 0) {
        return answerOf(failure);
    }
    // An acknowledge has the command's number plus one, and the id of its request at the same place.
    const QByteArray expected = bigEndian(quint16(qFromBigEndian<quint16>(&request.data()[2]) + 1));
    const gint64 end = g_get_monotonic_time() + GigeProbe::REPLY_TIMEOUT * G_TIME_SPAN_MILLISECOND;
    for (gint64 left = end - g_get_monotonic_time(); left > 0;
         left = end - g_get_monotonic_time()) {
        if (!g_socket_condition_timed_wait(socket, G_IO_IN, left, nullptr, nullptr)) {
            return Answer::Nothing;
        }
        QByteArray packet(LONGEST_PACKET, '\0');
        const gssize size =
            g_socket_receive(socket, packet.data(), gsize(packet.size()), nullptr, &failure);
        if (size < 0) {
            return answerOf(failure);
        }
        packet.truncate(int(size));
        if (size >= HEADER_SIZE && packet.mid(2, 2) == expected
            && packet.mid(6, 2) == request.mid(6, 2)) {
            *reply = packet.mid(HEADER_SIZE);
            return Answer::Given;
        }
    }
    return Answer::Nothing;
}

Answer ask(GSocket *socket, GvcpCommand command, const QByteArray &payload, QByteArray *reply)
{
    static const QByteArray KEY_AND_FLAGS("\x42\x01", 2); // "acknowledge required"
    Answer answer = Answer::Nothing;
    for (quint16 id = 1; id <= GigeProbe::TRIES && answer == Answer::Nothing; ++id) {
        const QByteArray request = KEY_AND_FLAGS + bigEndian(quint16(command))
            + bigEndian(quint16(payload.size())) + bigEndian(id) + payload;
        answer = askOnce(socket, request, reply);
    }
    return answer;
}

/// The bytes that the device says it has to send: the last field of "Local:NAME;ADDRESS;SIZE", in hexadecimal digits.
/// 0 for another kind of URL, which has no size.
quint64 announcedSize(GSocket *socket, quint32 urlRegister)
{
    QByteArray reply;
    const QByteArray payload =
        bigEndian(urlRegister) + bigEndian(quint16(0)) + bigEndian(URL_LENGTH);
    if (ask(socket, READ_MEMORY, payload, &reply) != Answer::Given) {
        return 0;
    }
    const QByteArray url = reply.mid(int(sizeof(urlRegister))).constData(); // up to its zero byte
    const QList<QByteArray> fields = url.split(';');
    return fields.size() == 3 && url.toLower().startsWith("local:")
        ? std::strtoull(fields.at(2).constData(), nullptr, 16)
        : 0;
}

void setError(GError **error, Answer answer)
{
    switch (answer) {
    case Answer::Refused:
        g_set_error(error, ARV_DEVICE_ERROR, ARV_DEVICE_ERROR_NOT_FOUND,
                    "there is a computer at this address, but no GigE Vision device");
        break;
    case Answer::Unreachable:
        g_set_error(error, ARV_DEVICE_ERROR, ARV_DEVICE_ERROR_TRANSFER_ERROR,
                    "the address is unreachable from this computer");
        break;
    default:
        g_set_error(error, ARV_DEVICE_ERROR, ARV_DEVICE_ERROR_TIMEOUT,
                    "no answer from a GigE Vision device at this address");
    }
}

} // namespace

GInetAddress *GigeProbe::interfaceFor(GInetAddress *device, GError **error)
{
    GError *failure = nullptr;
    const GObjectPtr<GSocket> socket(g_socket_new(G_SOCKET_FAMILY_IPV4, G_SOCKET_TYPE_DATAGRAM,
                                                  G_SOCKET_PROTOCOL_UDP, &failure));
    const GObjectPtr<GSocketAddress> peer(g_inet_socket_address_new(device, GVCP_PORT));
    // Connecting a UDP socket sends nothing: the system picks the interface by its routes.
    if (!socket || !g_socket_connect(socket.get(), peer.get(), nullptr, &failure)) {
        setError(error, answerOf(failure));
        return nullptr;
    }
    QByteArray ignored;
    const Answer answer = ask(socket.get(), DISCOVERY, QByteArray(), &ignored);
    const GObjectPtr<GSocketAddress> local(g_socket_get_local_address(socket.get(), nullptr));
    if (answer != Answer::Given || !local) {
        setError(error, answer);
        return nullptr;
    }
    for (const quint32 urlRegister : URL_REGISTERS) {
        const quint64 size = announcedSize(socket.get(), urlRegister);
        if (size > quint64(NodeTableReader::MAX_SIZE)) {
            g_set_error(error, ARV_GC_ERROR, ARV_GC_ERROR_INVALID_LENGTH,
                        "the device announces a description of %" G_GUINT64_FORMAT
                        " bytes; at most %d are read",
                        guint64(size), NodeTableReader::MAX_SIZE);
            return nullptr;
        }
    }
    GInetAddress *address = g_inet_socket_address_get_address(G_INET_SOCKET_ADDRESS(local.get()));
    return G_INET_ADDRESS(g_object_ref(address));
}
