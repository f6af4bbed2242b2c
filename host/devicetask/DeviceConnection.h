#pragma once

#include "host/devicetask/ConnectionState.h"
#include "host/devicetask/DeviceCall.h"
#include "host/devicetask/DeviceError.h"
#include "host/devicetask/DeviceSession.h"
#include "host/devicetask/nodes/LocalValues.h"
#include "host/devicetask/nodes/NodeTable.h"

#include <QByteArray>
#include <QString>

#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>

struct DeviceSource;

/// One opened device, of whatever transport: an ArvDevice, the nodes of its description, and the thread on which every
/// access runs. Callers wait for their answer, but never longer than they want: a call that hangs in the device stays
/// on that thread, which owns all its buffers, while everybody else goes on. Any thread.
///
/// An access that fails or hangs is followed by harmless reads of the connection's own. Until one is answered, all
/// accesses fail at once, so that a queue of readers does not wait one time-out each.
class DeviceConnection : public std::enable_shared_from_this<DeviceConnection>
{
public:
    struct Opened
    {
        std::shared_ptr<DeviceConnection> connection; ///< null when the device was refused
        unsigned int accessMode = 0; ///< as CameraHost::OpenResult
        QString error;
    };
    using LastWords = std::function<void(const DeviceSession &)>;

    /// Opens a device; may block for as long as the transport takes. `stateChanged` runs on any thread: it must only
    /// post. Whoever gets the connection closes it.
    static Opened open(const DeviceSource &source, std::function<void()> stateChanged);
    ~DeviceConnection();
    DeviceConnection(const DeviceConnection &) = delete;
    DeviceConnection &operator=(const DeviceConnection &) = delete;

    /// Has `work` (DeviceError(const DeviceSession &, Result *)) done and waits for it; `out` is filled only on
    /// success. Fails at once when the camera is closed, on its way out (`releasing`) or does not answer, also in the
    /// middle of the wait. `work` must own all that it touches. Drops whatever is held of registers.
    template<class Result, class Work>
    DeviceError call(const std::atomic<bool> &releasing, Result *out, Work work)
    {
        return finish(std::make_shared<DeviceCallOf<Result, Work>>(std::move(work)), releasing,
                      out);
    }
    /// The same for a read that answers `question`; see HeldValues.
    template<class Result, class Work>
    DeviceError read(const HeldValues::Question &question, const std::atomic<bool> &releasing,
                     Result *out, Work work)
    {
        const auto call = std::make_shared<DeviceCallOf<Result, Work>>(std::move(work));
        call->m_nReader = HeldValues::readerOfThread();
        call->m_question = question;
        return finish(call, releasing, out);
    }

    /// Whatever is held of registers is not used by calls from now on. Waits for nobody; fails as a call would.
    DeviceError forgetHeld(const std::atomic<bool> &releasing);
    /// Asks the device something harmless; any answer will do. May block for as long as the transport takes.
    bool answers();
    /// Every access fails from now on, those under way included; the device is freed on the connection's thread as
    /// soon as nothing hangs in it, after `lastWords` if it still answers. Returns at once.
    void close(LastWords lastWords = {});
    ConnectionState::State state() const { return m_pState->get(); }
    const QByteArray &description() const { return m_xml; }

    /// The access mode of a node that has one and the same in every state, without a word to the device; false when the
    /// device has to be asked or does not answer.
    bool fixedAccessMode(const QByteArray &name, const std::atomic<bool> &releasing,
                         int *mode) const;
    /// The access mode that a node last had, 1 (not available) when it was never asked.
    int lastAccessMode(const QByteArray &name) const;
    void keepAccessMode(const QByteArray &name, int mode);

private:
    using Clock = std::chrono::steady_clock;
    struct Parts;

    explicit DeviceConnection(Parts parts);
    template<class Call, class Result>
    DeviceError finish(const std::shared_ptr<Call> &call, const std::atomic<bool> &releasing,
                       Result *out)
    {
        const DeviceError error = perform(call, releasing);
        if (!error.failed()) {
            *out = std::move(call->m_result);
        }
        return error;
    }
    DeviceError perform(const std::shared_ptr<DeviceCall> &call,
                        const std::atomic<bool> &releasing);
    DeviceError refusal(const std::atomic<bool> &releasing) const;
    Clock::duration waitedForDevice();
    void endLongSilence();
    void giveUp(const std::shared_ptr<DeviceCall> &call);
    void run();
    void serve(std::unique_lock<std::mutex> &guard);
    DeviceError work(DeviceCall &call);
    void setDone(DeviceCall &call, const DeviceError &error);
    void ask(std::unique_lock<std::mutex> &guard);
    void notifyWaiting();
    void lingerForCalls(std::unique_lock<std::mutex> &guard);
    void free();

    const QString m_strSource; ///< DeviceSource::id
    const QByteArray m_xml;
    const std::unique_ptr<const NodeTable> m_pNodes;
    LocalValues m_locals; ///< of the connection's thread
    HeldValues m_held; ///< of the connection's thread
    std::atomic<bool> m_bForgetHeld{false}; ///< before the next call
    quint64 m_nChanges = 0; ///< of the connection's thread; see DeviceSession::changes
    std::atomic<unsigned int> m_nAnswered{0}; ///< register accesses that the device answered
    const DeviceSession m_session;
    const std::shared_ptr<ConnectionState> m_pState;
    const QVector<signed char> m_fixedModes; ///< by NodeId, see AccessMode::fixed
    const std::unique_ptr<std::atomic<signed char>[]> m_pModes; ///< by NodeId: the last answers
    const gulong m_nControlHandler; ///< of m_session.device

    std::mutex m_mutex; ///< guards what follows
    std::condition_variable m_wake; ///< of the connection's thread
    std::deque<std::shared_ptr<DeviceCall>> m_queue;
    const DeviceCall *m_pRunning = nullptr;
    Clock::time_point m_busySince; ///< the device has been asked since then without an answer
    unsigned int m_nAnsweredThen = 0; ///< m_nAnswered at m_busySince
    bool m_bAsking = false; ///< the connection asks a question of its own
    Clock::time_point m_silentSince;
    LastWords m_lastWords;
    std::atomic<int> m_nQueued{0};
    std::atomic<bool> m_bClosed{false};
};
