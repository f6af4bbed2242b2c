#include "host/devicetask/nodes/RegisterMemory.h"

#include "host/devicetask/GErrorBox.h"
#include "host/devicetask/nodes/HeldValues.h"

namespace {

/// Moves `size` bytes from or to the device in blocks.
template<class Access>
DeviceError inBlocks(Access access, const DeviceSession &session, quint64 address, char *bytes,
                     int size, const QString &subject)
{
    for (int done = 0; done < size; done += RegisterMemory::BLOCK) {
        const int block = qMin(size - done, RegisterMemory::BLOCK);
        GErrorBox error;
        const bool ok = access(session.device, address + static_cast<quint64>(done),
                               static_cast<guint32>(block), bytes + done, error.next());
        DeviceError failure = error.error(subject);
        if (!ok && !failure.failed()) {
            failure = {NODE_GENERIC, subject};
        }
        // A refusal is an answer too.
        if (!failure.isTransport()) {
            ++session.answered;
        }
        if (failure.failed()) {
            return failure;
        }
    }
    return {};
}

} // namespace

DeviceError RegisterMemory::read(quint64 address, int length, bool mayHold, const QString &subject,
                                 QByteArray *bytes)
{
    const QPair<quint64, int> key(address, length);
    const auto known = m_known.constFind(key);
    if (known != m_known.cend()) {
        *bytes = *known;
        return {};
    }
    HeldValues::Look *const look = m_session.look;
    if (const QByteArray *held = look && mayHold ? look->find(address, length) : nullptr) {
        *bytes = *held;
        return {};
    }
    QByteArray buffer(length, '\0');
    const DeviceError error =
        inBlocks(arv_device_read_memory, m_session, address, buffer.data(), length, subject);
    if (!error.failed()) {
        m_known.insert(key, buffer);
        *bytes = buffer;
    }
    if (look && mayHold && !error.failed()) {
        look->insert(address, length, buffer);
    } else if (look) {
        look->remove(address, length);
    }
    return error;
}

DeviceError RegisterMemory::write(quint64 address, QByteArray bytes, const QString &subject)
{
    m_known.clear();
    return inBlocks(arv_device_write_memory, m_session, address, bytes.data(), bytes.size(),
                    subject);
}
