#include "host/simulator/SimulatorDevice.h"

#include "host/simulator/DeviceCore.h"

#include <mutex>

namespace {

/// What C++ holds behind the GObject, which knows no constructors.
struct HandleState
{
    std::shared_ptr<DeviceCore> m_pCore;
    QByteArray m_description;
    std::mutex m_genicamMutex;
    ArvGc *m_pGenicam = nullptr;
    int m_nHandle = 0;
};

struct SimulatorDevice
{
    ArvDevice parent;
    HandleState *state;
};

struct SimulatorDeviceClass
{
    ArvDeviceClass parent;
};

HandleState &stateOf(ArvDevice *device)
{
    return *reinterpret_cast<SimulatorDevice *>(device)->state;
}

const char *errorText(int error)
{
    static const struct
    {
        int error;
        const char *text;
    } kTexts[] = {
        {ARV_DEVICE_ERROR_NOT_CONNECTED, "the device is not connected"},
        {ARV_DEVICE_ERROR_TIMEOUT, "the device did not answer in time"},
        {ARV_DEVICE_ERROR_TRANSFER_ERROR, "the transfer was disturbed"},
        {ARV_DEVICE_ERROR_NOT_CONTROLLER, "another host controls the device"},
        {ARV_DEVICE_ERROR_PROTOCOL_ERROR_INVALID_ADDRESS, "there is no register at this address"},
        {ARV_DEVICE_ERROR_PROTOCOL_ERROR_INVALID_PARAMETER, "the value is refused"},
        {ARV_DEVICE_ERROR_PROTOCOL_ERROR_WRITE_PROTECT, "the register is read-only"},
        {ARV_DEVICE_ERROR_PROTOCOL_ERROR_ACCESS_DENIED, "the register is locked at present"},
        {ARV_DEVICE_ERROR_PROTOCOL_ERROR_BUSY, "the device is busy"},
    };
    for (const auto &row : kTexts) {
        if (row.error == error) {
            return row.text;
        }
    }
    return "the device refuses the access";
}

/// Turns a result of the core into that of Aravis.
gboolean finished(int result, const char *what, guint64 address, guint32 size, GError **error)
{
    if (result < 0) {
        return TRUE;
    }
    g_set_error(error, ARV_DEVICE_ERROR, result,
                "%s of %u bytes at 0x%" G_GINT64_MODIFIER "x failed: %s", what, size, address,
                errorText(result));
    return FALSE;
}

gboolean readMemory(ArvDevice *device, guint64 address, guint32 size, void *buffer, GError **error)
{
    return finished(stateOf(device).m_pCore->read(address, size, buffer), "Read", address, size,
                    error);
}

gboolean writeMemory(ArvDevice *device, guint64 address, guint32 size, void *buffer, GError **error)
{
    return finished(stateOf(device).m_pCore->write(address, size, buffer), "Write", address, size,
                    error);
}

gboolean readRegister(ArvDevice *device, guint64 address, guint32 *value, GError **error)
{
    guint32 raw = 0;
    if (!readMemory(device, address, sizeof raw, &raw, error)) {
        return FALSE;
    }
    *value = GUINT32_FROM_BE(raw); // registers are big-endian on the wire
    return TRUE;
}

gboolean writeRegister(ArvDevice *device, guint64 address, guint32 value, GError **error)
{
    guint32 raw = GUINT32_TO_BE(value);
    return writeMemory(device, address, sizeof raw, &raw, error);
}

const char *getGenicamXml(ArvDevice *device, size_t *size)
{
    const QByteArray &description = stateOf(device).m_description;
    if (size) {
        *size = size_t(description.size());
    }
    return description.constData();
}

ArvGc *getGenicam(ArvDevice *device)
{
    HandleState &state = stateOf(device);
    const std::lock_guard<std::mutex> lock(state.m_genicamMutex);
    if (!state.m_pGenicam) {
        state.m_pGenicam =
            arv_gc_new(device, state.m_description.constData(), size_t(state.m_description.size()));
    }
    return state.m_pGenicam;
}

ArvStream *createStream(ArvDevice *, ArvStreamCallback, void *, GDestroyNotify, GError **error)
{
    g_set_error(error, ARV_DEVICE_ERROR, ARV_DEVICE_ERROR_NO_STREAM_CHANNEL,
                "a simulated device sends no images");
    return nullptr;
}

void finalize(GObject *object)
{
    HandleState *state = reinterpret_cast<SimulatorDevice *>(object)->state;
    if (state) {
        state->m_pCore->removeHandle(state->m_nHandle);
        g_clear_object(&state->m_pGenicam); // keeps no reference on its device, so it goes first
        delete state;
    }
    G_OBJECT_CLASS(g_type_class_peek(ARV_TYPE_DEVICE))->finalize(object);
}

void initClass(gpointer klass, gpointer)
{
    auto *device = static_cast<ArvDeviceClass *>(klass);
    device->create_stream = createStream;
    device->get_genicam_xml = getGenicamXml;
    device->get_genicam = getGenicam;
    device->read_memory = readMemory;
    device->write_memory = writeMemory;
    device->read_register = readRegister;
    device->write_register = writeRegister;
    G_OBJECT_CLASS(klass)->finalize = finalize;
}

GType simulatorDeviceType()
{
    static const GType kType = g_type_register_static_simple(
        ARV_TYPE_DEVICE, "VexaSimulatorDevice", sizeof(SimulatorDeviceClass), initClass,
        sizeof(SimulatorDevice), nullptr, static_cast<GTypeFlags>(0));
    return kType;
}

/// A weak reference that a copied callback can share.
std::shared_ptr<GWeakRef> weakReference(ArvDevice *device)
{
    const std::shared_ptr<GWeakRef> reference(new GWeakRef, [](GWeakRef *weak) {
        g_weak_ref_clear(weak);
        delete weak;
    });
    g_weak_ref_init(reference.get(), device);
    return reference;
}

} // namespace

ArvDevice *newSimulatorDevice(const std::shared_ptr<DeviceCore> &core, GError **error)
{
    if (core->isGone()) {
        g_set_error(error, ARV_DEVICE_ERROR, ARV_DEVICE_ERROR_NOT_FOUND,
                    "the simulated device is gone");
        return nullptr;
    }
    auto *device = static_cast<ArvDevice *>(g_object_new(simulatorDeviceType(), nullptr));
    auto *state = new HandleState;
    state->m_pCore = core;
    state->m_description = core->description();
    reinterpret_cast<SimulatorDevice *>(device)->state = state;
    state->m_nHandle = core->addHandle([weak = weakReference(device)] {
        if (gpointer living = g_weak_ref_get(weak.get())) {
            g_signal_emit_by_name(living, "control-lost");
            g_object_unref(living);
        }
    });
    return device;
}
