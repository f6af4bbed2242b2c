#pragma once

#include <QtGlobal>

#include <arv.h>

/// The number of an IPv4 address in host byte order; 0 for null and for an address of another family.
inline quint32 ipv4Of(GInetAddress *address)
{
    if (!address || g_inet_address_get_family(address) != G_SOCKET_FAMILY_IPV4) {
        return 0;
    }
    const guint8 *bytes = g_inet_address_to_bytes(address);
    return quint32(bytes[0]) << 24 | quint32(bytes[1]) << 16 | quint32(bytes[2]) << 8
        | quint32(bytes[3]);
}
