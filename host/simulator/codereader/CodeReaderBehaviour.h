#pragma once

#include "host/simulator/codereader/CodeReader.h"
#include "host/simulator/sfnc/StandardBehaviour.h"

#include <optional>

/// The firmware of the code reader: it counts readings while it grabs, keeps the segments of the light, the types of
/// code and the user sets in step, focuses and tunes for a while, and refuses what its rules forbid.
class CodeReaderBehaviour : public StandardBehaviour
{
public:
    explicit CodeReaderBehaviour(const FeatureTable &table, const ReaderLight &light = {});

    void restart(RegisterMemory &memory) override;

protected:
    double reachableRate(const RegisterMemory &memory) const override;
    void startAcquisition(RegisterMemory &memory) override;
    void stopAcquisition(RegisterMemory &memory) override;
    void triggerSoftware(RegisterMemory &memory) override;

private:
    void addRefusals();
    void addSettings();
    void addCommands();
    void addMoving();
    void addUserSetCommands();

    void takeFrames(RegisterMemory &memory);
    void countImages(RegisterMemory &memory, qint64 images) const;
    void measureQuality(RegisterMemory &memory) const;

    void stepFocus(RegisterMemory &memory, int direction) const;
    void startFocus(RegisterMemory &memory);
    void followFocus(RegisterMemory &memory);
    void startTuning(RegisterMemory &memory);
    void followTuning(RegisterMemory &memory);

    void followLighting(RegisterMemory &memory) const;
    void lightAll(RegisterMemory &memory, bool on) const;
    void dropBarCodes(RegisterMemory &memory, const char *pharmacode) const;
    void dropPharmacode(RegisterMemory &memory, const char *barCode) const;

    bool isPresent(const RegisterMemory &memory, qint64 set) const;
    void setPresent(RegisterMemory &memory, qint64 set, bool on) const;
    int freeUserSet(const RegisterMemory &memory) const;
    void recoverPartly(RegisterMemory &memory);

    const ReaderLight m_light;
    const QVector<QByteArray> m_qualityRegisters;
    std::optional<double> m_focusEnd; ///< seconds of the clock, empty while the focus rests
    std::optional<double> m_tuneStart; ///< likewise
    qint64 m_nCounted = 0; ///< frames of this acquisition that are in the counters
    bool m_bRecoverFactory = false;
};
