#pragma once

#include <arv.h>

class DescriptionIndex;

/// What node operations work on while they hold the device's lock. Never kept beyond it.
struct GcSession
{
    ArvDevice *device;
    ArvGc *gc;
    const DescriptionIndex &index;
};
