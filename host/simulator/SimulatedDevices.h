#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>

struct DeviceSource;

#ifdef SIMULATOR_BUILD
#define SIMULATOR_API Q_DECL_EXPORT
#else
#define SIMULATOR_API Q_DECL_IMPORT
#endif

/// One register access of a simulated device, in the order in which they arrived.
struct SimulatorAccess
{
    enum Kind { Read, Write };
    Kind kind = Read;
    quint64 address = 0;
    quint32 length = 0;
    bool failed = false;
    quintptr thread = 0; ///< QThread::currentThreadId of the caller
};

/// What a simulated device does wrong with its files, and how long it takes for an operation on one.
struct SimulatedFileFault
{
    enum Kind {
        None,
        RefusedOpen,
        RefusedBlock, ///< a status other than success
        HalfBlock, ///< one block moves half of what was asked for, as a device may
        TooManyBytes, ///< a block whose result is more than was asked for
        NothingForEver, ///< from that block on
        SizeTooLarge,
        SizeTooSmall,
        SizeNegative,
        NoSize,
        RefusedClose
    };
    Kind kind = None;
    int block = 0; ///< the Read or Write since the opening, from 0
    int milliseconds = 0; ///< FileOperationExecute reads as pending that long
};

/// The strings that hold one simulated device: its memory, its faults and its log. It outlives the ArvDevice
/// that stands on it, so that a device can vanish and come back. Any thread.
class SIMULATOR_API SimulatorControl
{
public:
    enum class MemoryPattern { Zero, Ugly };

    virtual ~SimulatorControl() = default;

    /// Memory behind the device's back: no latency, no failure, no log line.
    virtual QByteArray peek(quint64 address, quint32 length) const = 0;
    virtual void poke(quint64 address, const QByteArray &bytes) = 0;
    /// The description that the device serves.
    virtual QByteArray description() const = 0;

    virtual void setLatency(int microseconds) = 0;
    /// Every access that touches this address fails with the Aravis device status; 0 takes the fault away.
    virtual void setFailing(quint64 address, int arvDeviceError) = 0;
    /// While on, accesses at addresses that are not a multiple of 4 are refused, as GigE Vision has it.
    virtual void setAlignedOnly(bool on) = 0;
    /// The next access blocks until unblock().
    virtual void blockNextAccess() = 0;
    virtual void unblock() = 0;
    /// From vanish() on every access fails as a device that is gone does, until comeBack().
    virtual void vanish() = 0;
    virtual void comeBack() = 0;
    /// The control-lost signal of the ArvDevice, as another host that takes the device away causes it.
    virtual void loseControl() = 0;
    /// While on, another host controls the device: whoever has it open loses control, and an opening gets it read-only.
    virtual void setControlledElsewhere(bool on) = 0;

    /// From the given number of further accesses on the device is gone, in the middle of whatever it does.
    virtual void vanishAfter(int accesses) = 0;

    /// The contents of a file of the device, by its entry of FileSelector; null for an unknown one.
    virtual QByteArray file(const QString &entry) const = 0;
    virtual void setFile(const QString &entry, const QByteArray &content) = 0;
    virtual void setFileFault(const SimulatedFileFault &fault) = 0;

    virtual void setLogging(bool on) = 0;
    virtual QVector<SimulatorAccess> accessLog() const = 0;
    virtual void clearAccessLog() = 0;

    /// Values that move by themselves (temperature, measured rates) stand still while this is on.
    virtual void setQuiet(bool on) = 0;
    /// How long the device is gone after its DeviceReset command; 2000 at first. Control is lost after a quarter.
    virtual void setRestartTime(int milliseconds) = 0;
};

/// The simulated devices by id.
namespace SimulatedDevices {

struct Simulated
{
    std::shared_ptr<SimulatorControl> control;
    std::shared_ptr<DeviceSource>
        source; ///< for CameraHost::openCamera; may be opened again after a close
};

/// Ids of the built-in devices, without the variants: "code-reader-older" has the node names of the generation before,
/// "code-reader-16" and "code-reader-17" are of other product families, "code-reader-without-tuning" lacks SmartTune,
/// "code-reader-light6-all-bitmap" has another light: 3, 4 or 6 segments and any of "-all", "-bitmap", "-commands" and
/// "-stray", an entry that is no segment.
SIMULATOR_API QStringList builtInIds();
/// One built-in device with memory of its own; null members for an unknown id. `instance` tells several devices
/// of one id apart by serial number and name (0 is the first).
SIMULATOR_API Simulated builtIn(const QString &id, int instance = 0);
/// Any GenICam XML as a device of type GigE; its registers hold the pattern. The text is taken as it stands.
SIMULATOR_API Simulated fromDescription(const QByteArray &xml, const QString &name,
                                        SimulatorControl::MemoryPattern pattern);

} // namespace SimulatedDevices
