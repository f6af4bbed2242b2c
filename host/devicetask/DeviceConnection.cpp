#include "host/devicetask/DeviceConnection.h"

#include "host/devicetask/CameraHost.h"
#include "host/devicetask/DescriptionCheck.h"
#include "host/devicetask/GErrorBox.h"
#include "host/devicetask/OperateThread.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds PROBE_INTERVAL(2);

/// Opening, closing and the making of an ArvGc share static state inside Aravis and its XML parser.
std::mutex &processMutex()
{
    static std::mutex s_mutex;
    return s_mutex;
}

thread_local int t_nFreeHere = 0;

void release(DeviceConnection *connection)
{
    const auto thread = t_nFreeHere > 0 ? nullptr : OperateThread::current();
    if (thread) {
        thread->post([connection] { delete connection; });
    } else {
        delete connection;
    }
}

void freeDevice(ArvDevice *device)
{
    const std::lock_guard<std::mutex> guard(processMutex());
    g_object_unref(device);
}

TargetKind kindOf(ArvGc *gc, const QByteArray &name)
{
    ArvGcNode *node = arv_gc_get_node(gc, name.constData());
    if (!node) {
        return TargetKind::Missing;
    }
    if (ARV_IS_GC_INTEGER(node) || ARV_IS_GC_FLOAT(node)) {
        return TargetKind::Number;
    }
    if (ARV_IS_GC_BOOLEAN(node)) {
        return TargetKind::Boolean;
    }
    if (ARV_IS_GC_STRING(node)) {
        return TargetKind::Text;
    }
    return ARV_IS_GC_PORT(node) ? TargetKind::Port : TargetKind::Other;
}

} // namespace

DeviceConnection::FreeHere::FreeHere()
{
    ++t_nFreeHere;
}
DeviceConnection::FreeHere::~FreeHere()
{
    --t_nFreeHere;
}

DeviceConnection::Opened DeviceConnection::open(const DeviceSource &source,
                                                std::function<void()> onLost)
{
    Opened result;
    GErrorBox error;
    ArvDevice *device = nullptr;
    QByteArray xml;
    {
        const std::lock_guard<std::mutex> guard(processMutex());
        device = source.create ? source.create(error.next()) : nullptr;
        if (!device) {
            result.error = error.failed() ? error.error(source.name).remark()
                                          : QStringLiteral("The device could not be opened.");
            return result;
        }
        std::size_t size = 0;
        const char *text = arv_device_get_genicam_xml(device, &size);
        if (text && size <= std::size_t(DescriptionCheck::MAX_SIZE) + 1) {
            xml = DescriptionCheck::withoutPadding(QByteArray(text, static_cast<int>(size)));
        } else if (text) {
            result.error =
                QStringLiteral("The device description has %1 bytes; at most %2 are read.")
                    .arg(size)
                    .arg(DescriptionCheck::MAX_SIZE);
        }
        if (ARV_IS_GV_DEVICE(device) && !arv_gv_device_is_controller(ARV_GV_DEVICE(device))) {
            result.accessMode = 2;
        }
    }
    auto index = std::make_unique<DescriptionIndex>();
    if (!result.error.isEmpty() || !DescriptionCheck::check(xml, index.get(), &result.error)) {
        freeDevice(device);
        return result;
    }
    ArvGc *gc = nullptr;
    {
        const std::lock_guard<std::mutex> guard(processMutex());
        gc = arv_gc_new(device, xml.constData(), static_cast<std::size_t>(xml.size()));
    }
    if (!gc) {
        result.error = QStringLiteral("The device description is not usable.");
        freeDevice(device);
        return result;
    }
    arv_gc_set_register_cache_policy(gc, ARV_REGISTER_CACHE_POLICY_DISABLE);
    // Ranges and access modes are checked before a write, once and not at every node of a chain.
    arv_gc_set_range_check_policy(gc, ARV_RANGE_CHECK_POLICY_DISABLE);
    arv_gc_set_access_check_policy(gc, ARV_ACCESS_CHECK_POLICY_DISABLE);
    index->findProblems([gc](const QByteArray &name) { return kindOf(gc, name); });
    result.connection = std::shared_ptr<DeviceConnection>(
        new DeviceConnection(device, gc, xml, std::move(index), std::move(onLost)), release);
    result.connection->watchControl();
    return result;
}

DeviceConnection::DeviceConnection(ArvDevice *device, ArvGc *gc, const QByteArray &xml,
                                   std::unique_ptr<DescriptionIndex> index,
                                   std::function<void()> onLost)
    : m_xml(xml)
    , m_pIndex(std::move(index))
    , m_session{device, gc, *m_pIndex}
    , m_pControl(std::make_shared<ControlState>())
{
    m_pControl->onLost = std::move(onLost);
}

DeviceConnection::~DeviceConnection()
{
    g_signal_handler_disconnect(m_session.device, m_nControlHandler);
    const std::lock_guard<std::mutex> guard(processMutex());
    // The ArvGc keeps no reference on its device.
    g_object_unref(m_session.gc);
    g_object_unref(m_session.device);
}

void DeviceConnection::ControlState::tell()
{
    if (!told.exchange(true)) {
        onLost();
    }
}

void DeviceConnection::watchControl()
{
    using Holder = std::shared_ptr<ControlState>;
    const auto lost = +[](ArvDevice *, gpointer data) {
        ControlState &control = **static_cast<Holder *>(data);
        control.lost = true;
        control.tell();
    };
    const auto destroy = +[](gpointer data, GClosure *) { delete static_cast<Holder *>(data); };
    m_nControlHandler =
        g_signal_connect_data(m_session.device, "control-lost", G_CALLBACK(lost),
                              new Holder(m_pControl), destroy, static_cast<GConnectFlags>(0));
}

void DeviceConnection::close()
{
    m_bClosed = true;
    m_lock.wake();
}

bool DeviceConnection::answersLost() const
{
    return m_pControl->lost || (m_bLost && Clock::now().time_since_epoch().count() < m_nNextProbe);
}

DeviceError DeviceConnection::begin(const std::atomic<bool> &releasing)
{
    const auto isClosing = [this, &releasing] { return m_bClosed || releasing; };
    if (!isClosing() && answersLost()) {
        return {DEVICE_GONE, QString()};
    }
    if (!m_lock.lock(isClosing)) {
        return {DEVICE_GONE, QStringLiteral("the camera is closed")};
    }
    // Whoever had the lock meanwhile may have found out.
    if (answersLost() || (m_bLost && !probe())) {
        m_lock.unlock();
        return {DEVICE_GONE, QString()};
    }
    return {};
}

void DeviceConnection::end(const DeviceError &error)
{
    if (error.isTransport() && !m_pControl->lost && !m_bClosed) {
        probe();
    }
    m_lock.unlock();
}

bool DeviceConnection::probe()
{
    // Any answer will do, a refusal too. Address 0 holds the version of a GigE Vision or USB3 Vision device.
    quint32 version = 0;
    GErrorBox error;
    arv_device_read_memory(m_session.device, 0, sizeof(version), &version, error.next());
    const bool answers = !error.failed() || !error.error(QString()).isTransport();
    if (answers) {
        m_bLost = false;
        m_pControl->told = m_pControl->lost.load();
    } else {
        m_nNextProbe = (Clock::now() + PROBE_INTERVAL).time_since_epoch().count();
        m_bLost = true;
        m_pControl->tell();
    }
    return answers;
}

bool DeviceConnection::beginLast(int milliseconds)
{
    const auto deadline = Clock::now() + std::chrono::milliseconds(milliseconds);
    return m_lock.lock(
        [this, deadline] { return m_bLost || m_pControl->lost || Clock::now() > deadline; });
}

int DeviceConnection::lastAccessMode(const QByteArray &name) const
{
    const std::lock_guard<std::mutex> guard(m_modesMutex);
    return m_modes.value(name, 1);
}

void DeviceConnection::keepAccessMode(const QByteArray &name, int mode)
{
    const std::lock_guard<std::mutex> guard(m_modesMutex);
    m_modes.insert(name, mode);
}
