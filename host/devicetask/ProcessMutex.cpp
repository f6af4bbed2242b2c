#include "host/devicetask/ProcessMutex.h"

std::recursive_mutex &aravisMutex()
{
    // Never freed: a connection's own thread may close its device while the process ends.
    static auto *const s_pMutex = new std::recursive_mutex;
    return *s_pMutex;
}
