#pragma once

#include "host/devicetask/DescriptionIndex.h"
#include "host/devicetask/DeviceError.h"
#include "host/devicetask/DeviceLock.h"
#include "host/devicetask/GcSession.h"

#include <QByteArray>
#include <QHash>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <mutex>

struct DeviceSource;

/// One opened device, of whatever transport: an ArvDevice, the ArvGc over its description, and the lock around both.
/// Every access runs inside run(); nothing of Aravis is reachable otherwise. Any thread.
///
/// A device that does not answer is asked once more by a harmless read. When that fails too, the device counts as
/// lost: accesses fail at once until a later probe is answered, so that a queue of readers does not wait one time-out
/// each.
class DeviceConnection
{
public:
    struct Opened
    {
        std::shared_ptr<DeviceConnection> connection; ///< null when the device was refused
        unsigned int accessMode = 4; ///< 4 control, 2 another host controls the device
        QString error;
    };

    /// Opens a device; may block for as long as the transport takes. `onLost` runs once a loss, on any thread and
    /// under the device's lock: it must only post.
    static Opened open(const DeviceSource &source, std::function<void()> onLost);
    /// Frees the connection when its last holder drops it: on the dropping thread when that thread may wait for a
    /// device, else on the library's own.
    class FreeHere
    {
    public:
        FreeHere();
        ~FreeHere();
        FreeHere(const FreeHere &) = delete;
        FreeHere &operator=(const FreeHere &) = delete;
    };

    ~DeviceConnection();
    DeviceConnection(const DeviceConnection &) = delete;
    DeviceConnection &operator=(const DeviceConnection &) = delete;

    /// Runs `work` (DeviceError(const GcSession &)) under the device's lock. Fails at once when the camera is closed,
    /// on its way out or lost.
    template<class Work>
    DeviceError run(const std::atomic<bool> &releasing, Work &&work)
    {
        DeviceError error = begin(releasing);
        if (!error.failed()) {
            error = work(m_session);
            end(error);
        }
        return error;
    }

    /// One last piece of work on a closed connection, by whoever takes it apart. Left out when the device is lost or
    /// a hanging call keeps the lock longer than that.
    template<class Work>
    void runLast(int milliseconds, Work &&work)
    {
        if (beginLast(milliseconds)) {
            work(m_session);
            m_lock.unlock();
        }
    }

    /// Every access fails from now on, those that wait for their turn included. Does not wait for a hanging one.
    void close();
    const QByteArray &description() const { return m_xml; }

    /// The access mode that a node last had, 1 (not available) when it was never asked.
    int lastAccessMode(const QByteArray &name) const;
    void keepAccessMode(const QByteArray &name, int mode);

private:
    DeviceConnection(ArvDevice *device, ArvGc *gc, const QByteArray &xml,
                     std::unique_ptr<DescriptionIndex> index, std::function<void()> onLost);
    DeviceError begin(const std::atomic<bool> &releasing);
    void end(const DeviceError &error);
    bool beginLast(int milliseconds);
    bool probe();
    bool answersLost() const;
    void watchControl();

    /// What the control-lost handler touches; it may still run while the connection is taken apart.
    struct ControlState
    {
        void tell();

        std::atomic<bool> lost{false};
        std::atomic<bool> told{false}; ///< of the present loss
        std::function<void()> onLost;
    };

    QByteArray m_xml; ///< the ArvGc and the DOM are both made of it
    std::unique_ptr<DescriptionIndex> m_pIndex;
    GcSession m_session;
    DeviceLock m_lock;
    std::shared_ptr<ControlState> m_pControl;
    gulong m_nControlHandler = 0;
    std::atomic<bool> m_bClosed{false};
    std::atomic<bool> m_bLost{false};
    std::atomic<std::chrono::steady_clock::rep> m_nNextProbe{0};
    mutable std::mutex m_modesMutex;
    QHash<QByteArray, int> m_modes;
};
