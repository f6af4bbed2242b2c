#pragma once

#include "host/simulator/sfnc/StandardBehaviour.h"

/// The firmware of the area-scan camera: regions stay on the sensor, counters, sequencer sets, timestamps and chunks
/// follow the acquisition.
class AreaCameraBehaviour : public StandardBehaviour
{
public:
    explicit AreaCameraBehaviour(const FeatureTable &table);

    void restart(RegisterMemory &memory) override;

protected:
    double reachableRate(const RegisterMemory &memory) const override;
    void startAcquisition(RegisterMemory &memory) override;
    void stopAcquisition(RegisterMemory &memory) override;
    void triggerSoftware(RegisterMemory &memory) override;
    void loadUserSet(RegisterMemory &memory) override;

private:
    using Handler = void (AreaCameraBehaviour::*)(RegisterMemory &);
    struct HandlerRow
    {
        const char *field;
        Handler run;
    };
    struct RegionRow
    {
        const char *field;
        const char *partner; ///< the size of an offset, the offset of a size
        qint64 (AreaCameraBehaviour::*limit)(const RegisterMemory &memory) const; ///< of both
        qint64 smallest;
    };
    static const HandlerRow kCommands[];
    static const HandlerRow kSettings[];
    static const RegionRow kRegion[];

    void takeFrames(RegisterMemory &memory);
    void count(RegisterMemory &memory, qint64 source, qint64 events) const;

    void loadSequencerSet(RegisterMemory &memory);
    void saveSequencerSet(RegisterMemory &memory);
    void latchTimestamp(RegisterMemory &memory);
    void resetTimestamp(RegisterMemory &memory);
    void controlTimestamp(RegisterMemory &memory);
    void resetCounter(RegisterMemory &memory);
    void resetTimer(RegisterMemory &memory);
    void resetEncoder(RegisterMemory &memory);
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

    UserSets m_sequencerSets;
    qint64 m_nTimestampZero = 0; ///< of nanoseconds()
    qint64 m_nFrames = 0; ///< of the running acquisition
    qint64 m_nTriggeredFrames = 0;
};
