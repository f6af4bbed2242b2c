#include "host/devicetask/DeviceConnection.h"

#include "host/devicetask/CameraHost.h"
#include "host/devicetask/ClosingDevices.h"
#include "host/devicetask/GErrorBox.h"
#include "host/devicetask/ProcessMutex.h"
#include "host/devicetask/nodes/AccessMode.h"
#include "host/devicetask/nodes/NodeTableCheck.h"
#include "host/devicetask/nodes/NodeTableReader.h"

#include <algorithm>
#include <system_error>
#include <thread>

namespace {

using std::chrono::milliseconds;

/// `releasing` is a plain atomic that anyone may set without telling the waiting callers.
constexpr milliseconds ASK_AGAIN(20);
/// A device that is busy for that long with one call counts as silent. Transports give up after 2.5 s.
constexpr milliseconds PATIENCE(2000);
/// Longest time that a caller waits for its own call.
constexpr milliseconds CALL_LIMIT(10000);
constexpr milliseconds PROBE_INTERVAL(500);
/// A device that is silent for that long has to be opened anew.
constexpr milliseconds SILENCE_LIMIT(10000);
/// How long both sides look out for each other before they sleep: a sleep and a wake cost more than many accesses.
constexpr std::chrono::microseconds LINGER_FOR_CALLS(200);
constexpr std::chrono::microseconds LINGER_FOR_ANSWER(400);

constexpr signed char NEVER_ASKED = 1;

DeviceError closedError()
{
    return {DEVICE_GONE, QStringLiteral("the camera is closed")};
}

/// Leaves the processor's other half alone for a moment.
inline void pauseProcessor()
{
#if defined(__x86_64__) || defined(__i386__)
    __builtin_ia32_pause();
#endif
}

template<class Condition>
void linger(std::chrono::microseconds time, Condition &&condition)
{
    // Most answers are a matter of a microsecond or two; for longer ones others may have the processor.
    constexpr int LOOKS_BETWEEN_YIELDS = 200;
    const auto end = std::chrono::steady_clock::now() + time;
    do {
        for (int look = 0; look < LOOKS_BETWEEN_YIELDS; ++look) {
            if (condition()) {
                return;
            }
            pauseProcessor();
        }
        std::this_thread::yield();
    } while (std::chrono::steady_clock::now() < end);
}

std::unique_ptr<std::atomic<signed char>[]> freshModes(int count) {
    auto modes = std::make_unique<std::atomic<signed char>[]>(static_cast<std::size_t>(count));
    std::for_each(modes.get(), modes.get() + count, [](auto &mode) { mode = NEVER_ASKED; });
    return modes;
}

/// Any answer will do, a refusal too. Address 0 holds the version of a GigE Vision or USB3 Vision device.
DeviceError askHarmlessly(const DeviceSession &session)
{
    quint32 version = 0;
    GErrorBox box;
    arv_device_read_memory(session.device, 0, sizeof(version), &version, box.next());
    return box.error(QString());
}

void freeDevice(ArvDevice *device)
{
    const std::lock_guard<std::recursive_mutex> guard(aravisMutex());
    g_object_unref(device);
}

/// A lost control ends the state for good, on whatever thread it is noticed. Gives the number of the handler, which
/// goes with the device.
gulong watchControl(ArvDevice *device, const std::shared_ptr<ConnectionState> &state)
{
    using Holder = std::shared_ptr<ConnectionState>;
    const auto lost = +[](ArvDevice *, gpointer data) {
        (*static_cast<Holder *>(data))->set(ConnectionState::Gone);
    };
    const auto destroy = +[](gpointer data, GClosure *) { delete static_cast<Holder *>(data); };
    return g_signal_connect_data(device, "control-lost", G_CALLBACK(lost), new Holder(state),
                                 destroy, static_cast<GConnectFlags>(0));
}

/// The description as the device serves it; empty with a reason when it is too long.
QByteArray descriptionOf(ArvDevice *device, QString *error)
{
    std::size_t size = 0;
    const char *text = arv_device_get_genicam_xml(device, &size);
    if (text && size > std::size_t(NodeTableReader::MAX_SIZE)) {
        *error = QStringLiteral("The device description has %1 bytes; at most %2 are read.")
                     .arg(size)
                     .arg(NodeTableReader::MAX_SIZE);
        return {};
    }
    return text ? NodeTableReader::withoutPadding(QByteArray(text, static_cast<int>(size)))
                : QByteArray();
}

} // namespace

struct DeviceConnection::Parts
{
    QString source;
    QByteArray xml;
    std::unique_ptr<const NodeTable> nodes;
    ArvDevice *device;
    std::shared_ptr<ConnectionState> state;
    gulong controlHandler; ///< of the device, for `state`
};

DeviceConnection::Opened DeviceConnection::open(const DeviceSource &source,
                                                std::function<void()> stateChanged)
{
    Opened result;
    GErrorBox error;
    ArvDevice *device = nullptr;
    const auto state = std::make_shared<ConnectionState>(std::move(stateChanged));
    gulong controlHandler = 0;
    QByteArray xml;
    {
        const std::lock_guard<std::recursive_mutex> guard(aravisMutex());
        device = source.create ? source.create(error.next()) : nullptr;
        if (!device) {
            result.error = error.failed() ? error.error(source.name).detail()
                                          : QStringLiteral("The device could not be opened.");
            return result;
        }
        // Ahead of everything else: control may be lost while the description is looked through.
        controlHandler = watchControl(device, state);
        xml = descriptionOf(device, &result.error);
        const bool controls = source.controls
            ? source.controls(device)
            : !ARV_IS_GV_DEVICE(device) || arv_gv_device_is_controller(ARV_GV_DEVICE(device));
        result.accessMode = controls ? DEVICE_ACCESS_CONTROL : DEVICE_ACCESS_READ_ONLY;
    }
    auto nodes = std::make_unique<NodeTable>();
    if (!result.error.isEmpty() || !NodeTableReader::read(xml, nodes.get(), &result.error)) {
        freeDevice(device);
        return result;
    }
    NodeTableCheck::log(NodeTableCheck::findProblems(nodes.get()));
    result.connection.reset(
        new DeviceConnection({source.id, xml, std::move(nodes), device, state, controlHandler}));
    try {
        std::thread([connection = result.connection] { connection->run(); }).detach();
    } catch (const std::system_error &) {
        result.connection->free();
        result.connection.reset();
        result.error = QStringLiteral("There is no thread left for the device.");
    }
    return result;
}

DeviceConnection::DeviceConnection(Parts parts)
    : m_strSource(parts.source)
    , m_xml(parts.xml)
    , m_pNodes(std::move(parts.nodes))
    , m_session{parts.device, *m_pNodes, m_locals, m_nAnswered}
    , m_pState(parts.state)
    , m_fixedModes(AccessMode::fixed(*m_pNodes))
    , m_pModes(freshModes(m_pNodes->count()))
    , m_nControlHandler(parts.controlHandler)
{
}

DeviceConnection::~DeviceConnection() = default;

void DeviceConnection::close(LastWords lastWords)
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    if (m_bClosed.exchange(true)) {
        return;
    }
    ClosingDevices::begin(m_strSource);
    m_lastWords = std::move(lastWords);
    m_wake.notify_one();
    notifyWaiting();
}

DeviceError DeviceConnection::forgetHeld(const std::atomic<bool> &releasing)
{
    m_bForgetHeld = true;
    return refusal(releasing);
}

bool DeviceConnection::answers()
{
    const std::atomic<bool> releasing{false};
    bool answered = false;
    return !call(releasing, &answered, [](const DeviceSession &session, bool *) {
                return askHarmlessly(session);
            }).isTransport();
}

DeviceError DeviceConnection::refusal(const std::atomic<bool> &releasing) const
{
    if (m_bClosed || releasing) {
        return closedError();
    }
    return m_pState->get() == ConnectionState::Live ? DeviceError()
                                                    : DeviceError(DEVICE_GONE, QString());
}

DeviceError DeviceConnection::perform(const std::shared_ptr<DeviceCall> &call,
                                      const std::atomic<bool> &releasing)
{
    DeviceError error = refusal(releasing);
    if (error.failed()) {
        endLongSilence();
        return error;
    }
    {
        const std::lock_guard<std::mutex> guard(m_mutex);
        m_queue.push_back(call);
        m_wake.notify_one();
    }
    // Behind the unlocking: a thread that looks out for it takes the mutex at once.
    ++m_nQueued;
    linger(LINGER_FOR_ANSWER, [&call] { return call->m_bDone.load(); });
    if (call->m_bDone) {
        return call->m_error;
    }
    std::unique_lock<std::mutex> guard(m_mutex);
    while (!call->m_bDone) {
        const bool isRunning = m_pRunning == call.get();
        const bool isOut = m_bClosed || releasing;
        const Clock::duration busy =
            isRunning || m_bAsking ? waitedForDevice() : Clock::duration::zero();
        error = refusal(releasing);
        if (error.failed() && (isOut || !isRunning)) {
            giveUp(call);
            return error;
        }
        if (isRunning && busy > CALL_LIMIT) {
            m_pState->set(ConnectionState::Gone);
            return {DEVICE_TIMEOUT, QString()};
        }
        if (busy > PATIENCE && m_pState->get() == ConnectionState::Live) {
            m_silentSince = Clock::now();
            m_pState->set(ConnectionState::Silent);
            notifyWaiting();
            continue;
        }
        call->m_changed.wait_for(guard, ASK_AGAIN);
    }
    return call->m_error;
}

/// How long the running call has been waiting for one answer; a long piece of work with many of them is no silence.
DeviceConnection::Clock::duration DeviceConnection::waitedForDevice()
{
    if (m_nAnsweredThen != m_nAnswered) {
        m_nAnsweredThen = m_nAnswered;
        m_busySince = Clock::now();
    }
    return Clock::now() - m_busySince;
}

/// A question that hangs never comes to the end of the silence by itself.
void DeviceConnection::endLongSilence()
{
    const std::lock_guard<std::mutex> guard(m_mutex);
    if (m_bAsking && m_pState->get() == ConnectionState::Silent
        && Clock::now() - m_silentSince > SILENCE_LIMIT) {
        m_pState->set(ConnectionState::Gone);
    }
}

void DeviceConnection::giveUp(const std::shared_ptr<DeviceCall> &call)
{
    const auto it = std::find(m_queue.begin(), m_queue.end(), call);
    if (it != m_queue.end()) {
        m_queue.erase(it);
        --m_nQueued;
    }
}

void DeviceConnection::notifyWaiting()
{
    for (const auto &call : m_queue) {
        call->m_changed.notify_all();
    }
}

void DeviceConnection::run()
{
    std::unique_lock<std::mutex> guard(m_mutex);
    while (!m_bClosed) {
        const ConnectionState::State state = m_pState->get();
        if (state == ConnectionState::Silent) {
            m_wake.wait_for(guard, PROBE_INTERVAL, [this] { return m_bClosed.load(); });
            if (!m_bClosed) {
                ask(guard);
            }
        } else if (state == ConnectionState::Live && !m_queue.empty()) {
            serve(guard);
        } else {
            lingerForCalls(guard);
        }
    }
    // Whoever waits sees the closing itself.
    m_queue.clear();
    const LastWords lastWords = std::move(m_lastWords);
    guard.unlock();
    if (lastWords && m_pState->get() == ConnectionState::Live) {
        lastWords(m_session);
    }
    free();
    ClosingDevices::end(m_strSource);
}

void DeviceConnection::lingerForCalls(std::unique_lock<std::mutex> &guard)
{
    guard.unlock();
    linger(LINGER_FOR_CALLS, [this] { return m_nQueued > 0 || m_bClosed; });
    guard.lock();
    // A lost control comes without a call; nobody waits for it here.
    m_wake.wait(guard, [this] { return m_bClosed || !m_queue.empty(); });
    if (m_pState->get() == ConnectionState::Gone) {
        notifyWaiting();
        m_wake.wait(guard, [this] { return m_bClosed.load(); });
    }
}

void DeviceConnection::serve(std::unique_lock<std::mutex> &guard)
{
    const std::shared_ptr<DeviceCall> call = m_queue.front();
    m_queue.pop_front();
    --m_nQueued;
    m_pRunning = call.get();
    m_busySince = Clock::now();
    m_nAnsweredThen = m_nAnswered;
    guard.unlock();
    const DeviceError error = work(*call);
    guard.lock();
    m_pRunning = nullptr;
    setDone(*call, error);
    if (error.isTransport()) {
        ask(guard);
    } else {
        m_pState->set(ConnectionState::Live);
    }
}

DeviceError DeviceConnection::work(DeviceCall &call)
{
    const bool isRead = call.m_nReader != 0;
    DeviceSession session = m_session;
    if (m_bForgetHeld && m_bForgetHeld.exchange(false)) {
        m_held.drop();
    }
    if (isRead) {
        session.look = m_held.look(call.m_nReader, *m_pNodes, call.m_question);
    } else {
        m_held.drop();
        session.changes = ++m_nChanges;
    }
    const DeviceError error = call.work(session);
    if (!isRead || error.isTransport()) {
        m_held.drop();
    }
    return error;
}

void DeviceConnection::setDone(DeviceCall &call, const DeviceError &error)
{
    call.m_error = error;
    call.m_bDone = true;
    call.m_changed.notify_all();
}

void DeviceConnection::ask(std::unique_lock<std::mutex> &guard)
{
    m_bAsking = true;
    m_busySince = Clock::now();
    m_nAnsweredThen = m_nAnswered;
    guard.unlock();
    const DeviceError error = askHarmlessly(m_session);
    guard.lock();
    m_bAsking = false;
    const bool wasLive = m_pState->get() == ConnectionState::Live;
    if (!error.isTransport()) {
        m_pState->set(ConnectionState::Live);
    } else if (wasLive && error.code() != DEVICE_GONE) {
        m_silentSince = Clock::now();
        m_pState->set(ConnectionState::Silent);
    } else if (error.code() == DEVICE_GONE || Clock::now() - m_silentSince > SILENCE_LIMIT) {
        m_pState->set(ConnectionState::Gone);
    }
    notifyWaiting();
}

void DeviceConnection::free()
{
    g_signal_handler_disconnect(m_session.device, m_nControlHandler);
    freeDevice(m_session.device);
}

bool DeviceConnection::fixedAccessMode(const QByteArray &name, const std::atomic<bool> &releasing,
                                       int *mode) const
{
    const NodeId id = m_pNodes->find(name);
    // Whoever asks for a condition's own mode reads that node anew, and the connection's thread has to know.
    if (id == NO_NODE || m_fixedModes[id] < 0 || m_pNodes->at(id).isCondition
        || refusal(releasing).failed()) {
        return false;
    }
    *mode = m_fixedModes[id];
    return true;
}

int DeviceConnection::lastAccessMode(const QByteArray &name) const
{
    const NodeId id = m_pNodes->find(name);
    if (id != NO_NODE && m_fixedModes[id] >= 0) {
        return m_fixedModes[id];
    }
    return id == NO_NODE ? int(NEVER_ASKED) : int(m_pModes[static_cast<std::size_t>(id)]);
}

void DeviceConnection::keepAccessMode(const QByteArray &name, int mode)
{
    const NodeId id = m_pNodes->find(name);
    if (id != NO_NODE) {
        m_pModes[static_cast<std::size_t>(id)] = static_cast<signed char>(mode);
    }
}
