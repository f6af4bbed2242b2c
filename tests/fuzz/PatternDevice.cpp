#include "PatternDevice.h"

namespace {

struct PatternDevice
{
    ArvDevice parent;
    QByteArray *memory;
};

struct PatternDeviceClass
{
    ArvDeviceClass parent;
};

gboolean access(ArvDevice *device, guint64 address, guint32 size, char *read, const char *written,
                GError **error)
{
    if (address >= PATTERN_MEMORY_END || size > PATTERN_MEMORY_END - address) {
        g_set_error(error, ARV_DEVICE_ERROR, ARV_DEVICE_ERROR_PROTOCOL_ERROR_INVALID_ADDRESS,
                    "no such address");
        return FALSE;
    }
    QByteArray &memory = *reinterpret_cast<PatternDevice *>(device)->memory;
    for (guint32 i = 0; i < size; ++i) {
        const int place = static_cast<int>((address + i) % PATTERN_MEMORY_SIZE);
        if (read) {
            read[i] = memory.at(place);
        } else {
            memory[place] = written[i];
        }
    }
    return TRUE;
}

gboolean readMemory(ArvDevice *device, guint64 address, guint32 size, void *buffer, GError **error)
{
    return access(device, address, size, static_cast<char *>(buffer), nullptr, error);
}

gboolean writeMemory(ArvDevice *device, guint64 address, guint32 size, void *buffer, GError **error)
{
    return access(device, address, size, nullptr, static_cast<char *>(buffer), error);
}

void finalize(GObject *object)
{
    delete reinterpret_cast<PatternDevice *>(object)->memory;
    G_OBJECT_CLASS(g_type_class_peek(ARV_TYPE_DEVICE))->finalize(object);
}

void classInit(gpointer klass, gpointer)
{
    auto *device = static_cast<ArvDeviceClass *>(klass);
    device->read_memory = readMemory;
    device->write_memory = writeMemory;
    G_OBJECT_CLASS(klass)->finalize = finalize;
}

} // namespace

ArvDevice *newPatternDevice(const QByteArray &memory)
{
    static const GType TYPE = g_type_register_static_simple(
        ARV_TYPE_DEVICE, "FuzzPatternDevice", sizeof(PatternDeviceClass), classInit,
        sizeof(PatternDevice), nullptr, static_cast<GTypeFlags>(0));
    auto *device = static_cast<PatternDevice *>(g_object_new(TYPE, nullptr));
    device->memory = new QByteArray(memory.leftJustified(PATTERN_MEMORY_SIZE, '\0', true));
    return ARV_DEVICE(device);
}
