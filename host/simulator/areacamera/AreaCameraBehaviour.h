#pragma once

#include "host/simulator/DeviceBehaviour.h"
#include "host/simulator/description/NamedRegisters.h"
#include "host/simulator/sfnc/DeviceFiles.h"
#include "host/simulator/sfnc/RegisterGuard.h"
#include "host/simulator/sfnc/UserSets.h"

#include <QElapsedTimer>

/// The firmware of the area-scan camera: commands act, values that move by themselves move.
class AreaCameraBehaviour : public DeviceBehaviour
{
public:
    explicit AreaCameraBehaviour(const FeatureTable &table);

    int refusal(const RegisterMemory &memory, quint64 address,
                const QByteArray &bytes) const override;
    void beforeRead(RegisterMemory &memory, quint64 address, quint32 length) override;
    Effect afterWrite(RegisterMemory &memory, quint64 address, quint32 length) override;
    void restart(RegisterMemory &memory) override;
    void setQuiet(bool on) override { m_bQuiet = on; }
    DeviceFiles *files() override { return &m_files; }

private:
    using Handler = void (AreaCameraBehaviour::*)(RegisterMemory &);
    struct HandlerRow
    {
        const char *field;
        Handler run;
    };
    static const HandlerRow kCommands[];
    static const HandlerRow kSettings[];

    bool isOutsideSensor(const RegisterMemory &memory, quint64 address,
                         const QByteArray &bytes) const;
    bool isMoving(quint64 address, quint32 length) const;

    double reachableFrameRate(const RegisterMemory &memory) const;
    void measureTemperature(RegisterMemory &memory) const;
    void takeFrames(RegisterMemory &memory);
    void count(RegisterMemory &memory, qint64 source, qint64 events) const;

    void startAcquisition(RegisterMemory &memory);
    void stopAcquisition(RegisterMemory &memory);
    void triggerSoftware(RegisterMemory &memory);
    void loadUserSet(RegisterMemory &memory);
    void saveUserSet(RegisterMemory &memory);
    void loadSequencerSet(RegisterMemory &memory);
    void saveSequencerSet(RegisterMemory &memory);
    void latchTimestamp(RegisterMemory &memory);
    void resetTimestamp(RegisterMemory &memory);
    void controlTimestamp(RegisterMemory &memory);
    void resetCounter(RegisterMemory &memory);
    void resetTimer(RegisterMemory &memory);
    void resetEncoder(RegisterMemory &memory);
    void executeFileOperation(RegisterMemory &memory);
    void acknowledge(RegisterMemory &) { }

    void fitWidth(RegisterMemory &memory);
    void fitHeight(RegisterMemory &memory);
    void fit(RegisterMemory &memory, const char *size, const char *offset, qint64 limit,
             qint64 step) const;
    qint64 widthMax(const RegisterMemory &memory) const;
    qint64 heightMax(const RegisterMemory &memory) const;
    void fitPixelFormat(RegisterMemory &memory);
    void finishGainAuto(RegisterMemory &memory);
    void finishExposureAuto(RegisterMemory &memory);
    void fireTestPacket(RegisterMemory &memory);
    void followFrameRate(RegisterMemory &memory);

    NamedRegisters m_registers;
    RegisterGuard m_guard;
    UserSets m_userSets;
    UserSets m_sequencerSets;
    DeviceFiles m_files;
    QElapsedTimer m_clock;
    qint64 m_nTimestampZero = 0; ///< nanoseconds of the clock
    qint64 m_nGrabStart = 0; ///< nanoseconds of the clock
    qint64 m_nFrames = 0; ///< frames of the running acquisition
    qint64 m_nTriggeredFrames = 0;
    bool m_bGrabbing = false;
    bool m_bQuiet = false;
};
