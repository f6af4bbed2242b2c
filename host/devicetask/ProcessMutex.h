#pragma once

#include <mutex>

/// Guards the static state that Aravis and its XML parser share between devices: held around opening, closing,
/// discovery and the making of an ArvGc, some seconds at the longest. Never taken on the GUI thread.
std::recursive_mutex &aravisMutex();
