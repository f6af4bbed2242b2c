#pragma once

#include <arv.h>

/// What has to be known of a GigE Vision device before Aravis opens it, asked with a few GVCP commands to it alone.
class GigeProbe
{
public:
    static constexpr int TRIES = 3;
    static constexpr int REPLY_TIMEOUT = 500; ///< ms, a try

    /// The address of the local interface that leads to the device. Null with a GError when nothing answers, and when
    /// the device announces a description of more than 64 MiB: Aravis takes its word and allocates. Blocks for at most
    /// TRIES time-outs a command; the caller owns the result.
    static GInetAddress *interfaceFor(GInetAddress *device, GError **error);
};
