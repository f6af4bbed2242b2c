#pragma once

#include "host/simulator/DeviceBehaviour.h"
#include "host/simulator/description/NamedRegisters.h"
#include "host/simulator/sfnc/DeviceFiles.h"
#include "host/simulator/sfnc/RegisterGuard.h"
#include "host/simulator/sfnc/UserSets.h"

#include <QElapsedTimer>

#include <functional>

/// The firmware that every camera needs, by the register names that its features have: write protection, locks
/// while an acquisition runs, start and stop, software triggers, user sets, reset. A device adds its own handlers in
/// its constructor.
class StandardBehaviour : public DeviceBehaviour
{
public:
    /// `userSets` counts the factory's set too.
    StandardBehaviour(const FeatureTable &table, int userSets, const QVector<DeviceFile> &files);

    int refusal(const RegisterMemory &memory, quint64 address,
                const QByteArray &bytes) const override;
    void beforeRead(RegisterMemory &memory, quint64 address, quint32 length) override;
    Effect afterWrite(RegisterMemory &memory, quint64 address, quint32 length) override;
    void restart(RegisterMemory &memory) override;
    void setQuiet(bool on) override { m_bQuiet = on; }
    DeviceFiles *files() override { return &m_files; }

protected:
    using Handler = std::function<void(RegisterMemory &)>;
    /// Gives an ArvDeviceError or -1 for what is about to be written.
    using Refusal = std::function<int(const RegisterMemory &, qint64 value)>;

    /// Each takes the name of a register node, which has to live as long as this; one that the table lacks has no
    /// handler.
    /// The command's register goes back to 0 when the handler has run.
    void onCommand(const char *field, const Handler &run);
    void onSetting(const char *field, const Handler &run) { add(m_settings, field, run); }
    /// Ahead of a read of the register, unless the device is quiet.
    void onMoving(const char *field, const Handler &update) { add(m_moving, field, update); }
    /// Asked ahead of a write of the whole register.
    void onWrite(const char *field, const Refusal &refuse);
    /// The command makes the device go and come back.
    void onRestart(const char *field, const Handler &prepare) { add(m_restarts, field, prepare); }

    /// Frames or lines in a second, as the present settings allow them.
    virtual double reachableRate(const RegisterMemory &memory) const;
    virtual void startAcquisition(RegisterMemory &memory);
    virtual void stopAcquisition(RegisterMemory &memory);
    virtual void triggerSoftware(RegisterMemory &memory);
    virtual void loadUserSet(RegisterMemory &memory);
    virtual void saveUserSet(RegisterMemory &memory);

    bool has(const char *field) const { return m_registers.table().findField(field) != nullptr; }
    qint64 value(const RegisterMemory &memory, const char *field, int element = 0) const;
    void setValue(RegisterMemory &memory, const char *field, qint64 value, int element = 0) const;
    /// Since the device was switched on.
    qint64 nanoseconds() const { return m_clock.nsecsElapsed(); }
    double seconds() const { return double(nanoseconds()) / 1e9; }
    /// Frames of the running acquisition, 0 without one.
    qint64 frames(const RegisterMemory &memory) const;
    bool isGrabbing() const { return m_bGrabbing; }
    bool isQuiet() const { return m_bQuiet; }
    const NamedRegisters &registers() const { return m_registers; }
    UserSets &userSets() { return m_userSets; }

private:
    struct HandlerRow
    {
        const char *m_strField;
        quint64 m_nFirst;
        quint64 m_nEnd;
        Handler m_run;
    };
    struct RefusalRow
    {
        quint64 m_nFirst;
        quint64 m_nEnd;
        bool m_bLittleEndian;
        Refusal m_refuse;
    };

    void add(QVector<HandlerRow> &rows, const char *field, const Handler &run) const;
    void addStandardHandlers();

    NamedRegisters m_registers;
    RegisterGuard m_guard;
    UserSets m_userSets;
    DeviceFiles m_files;
    QVector<HandlerRow> m_commands;
    QVector<HandlerRow> m_settings;
    QVector<HandlerRow> m_moving;
    QVector<HandlerRow> m_restarts;
    QVector<RefusalRow> m_refusals;
    QElapsedTimer m_clock;
    qint64 m_nGrabStart = 0; ///< nanoseconds of the clock
    bool m_bGrabbing = false;
    bool m_bQuiet = false;
};
