#include "MemoryDevice.h"

#include <chrono>
#include <cstring>

namespace {

struct MemoryDevice
{
    ArvDevice parent;
    std::shared_ptr<MemoryDeviceState> *state;
};

struct MemoryDeviceClass
{
    ArvDeviceClass parent;
};

MemoryDeviceState &stateOf(void *device)
{
    return **static_cast<MemoryDevice *>(device)->state;
}

const char *getGenicamXml(ArvDevice *device, size_t *size)
{
    const QByteArray &xml = stateOf(device).m_xml;
    *size = static_cast<size_t>(xml.size());
    return xml.constData();
}

gboolean readMemory(ArvDevice *device, guint64 address, guint32 size, void *buffer, GError **error)
{
    return stateOf(device).access(address, size, buffer, nullptr, error);
}

gboolean writeMemory(ArvDevice *device, guint64 address, guint32 size, void *buffer, GError **error)
{
    return stateOf(device).access(address, size, nullptr, buffer, error);
}

void finalize(GObject *object)
{
    auto *self = reinterpret_cast<MemoryDevice *>(object);
    --(*self->state)->m_nLiving;
    delete self->state;
    G_OBJECT_CLASS(g_type_class_peek(ARV_TYPE_DEVICE))->finalize(object);
}

void classInit(gpointer klass, gpointer)
{
    auto *device = static_cast<ArvDeviceClass *>(klass);
    device->get_genicam_xml = getGenicamXml;
    device->read_memory = readMemory;
    device->write_memory = writeMemory;
    G_OBJECT_CLASS(klass)->finalize = finalize;
}

GType memoryDeviceType()
{
    static const GType type = g_type_register_static_simple(
        ARV_TYPE_DEVICE, "TestMemoryDevice", sizeof(MemoryDeviceClass), classInit,
        sizeof(MemoryDevice), nullptr, static_cast<GTypeFlags>(0));
    return type;
}

} // namespace

QByteArray MemoryDeviceState::peek(int address, int length) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_memory.mid(address, length);
}

void MemoryDeviceState::poke(int address, const QByteArray &bytes)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_memory.replace(address, bytes.size(), bytes);
}

void MemoryDeviceState::setFailing(int address, int deviceError)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_failing[address] = deviceError;
}

void MemoryDeviceState::setGone(int deviceError)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_nGone = deviceError;
}

void MemoryDeviceState::block()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_bBlocked = true;
}

void MemoryDeviceState::unblock()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_bBlocked = false;
    m_condition.notify_all();
}

bool MemoryDeviceState::waitForBlocked()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_condition.wait_for(lock, std::chrono::seconds(5), [this] { return m_nWaiting > 0; });
}

bool MemoryDeviceState::access(quint64 address, quint32 size, void *read, const void *write,
                               GError **error)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    ++m_nAccesses;
    ++m_nWaiting;
    m_condition.notify_all();
    m_condition.wait(lock, [this] { return !m_bBlocked; });
    --m_nWaiting;
    int failure = m_nGone;
    for (auto it = m_failing.cbegin(); failure < 0 && it != m_failing.cend(); ++it) {
        if (quint64(it.key()) >= address && quint64(it.key()) < address + size) {
            failure = it.value();
        }
    }
    if (failure < 0
        && (address > quint64(m_memory.size()) || size > quint64(m_memory.size()) - address)) {
        failure = ARV_DEVICE_ERROR_PROTOCOL_ERROR_INVALID_ADDRESS;
    }
    if (failure >= 0) {
        g_set_error(error, ARV_DEVICE_ERROR, failure, "test device fails with %d", failure);
        return false;
    }
    if (read) {
        std::memcpy(read, m_memory.constData() + address, size);
    } else {
        std::memcpy(m_memory.data() + address, write, size);
    }
    return true;
}

ArvDevice *newMemoryDevice(const std::shared_ptr<MemoryDeviceState> &state)
{
    auto *device = static_cast<MemoryDevice *>(g_object_new(memoryDeviceType(), nullptr));
    device->state = new std::shared_ptr<MemoryDeviceState>(state);
    ++state->m_nLiving;
    return ARV_DEVICE(device);
}
