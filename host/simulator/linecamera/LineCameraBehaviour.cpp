#include "host/simulator/linecamera/LineCameraBehaviour.h"

#include "host/simulator/linecamera/LineCamera.h"

#include <cmath>

LineCameraBehaviour::LineCameraBehaviour(const FeatureTable &table)
    : StandardBehaviour(table, kLineCameraUserSets, lineCameraFiles())
{
    onCommand("EncoderResetReg", [this](RegisterMemory &memory) {
        setValue(memory, "EncoderValueAtResetReg", value(memory, "EncoderValueReg"));
        setValue(memory, "EncoderValueReg", 0);
    });
    onMoving("EncoderValueReg", [this](RegisterMemory &memory) { turnEncoder(memory); });
    onMoving("ResultingLineRateReg", [this](RegisterMemory &memory) {
        const double wobble = isGrabbing() ? 0.001 * std::sin(std::floor(seconds())) : 0;
        registers().setNumber(memory, "ResultingLineRateReg", lineRate(memory) * (1 + wobble));
    });
    const auto follow = [this](RegisterMemory &memory) {
        registers().setNumber(memory, "ResultingLineRateReg", lineRate(memory));
        registers().setNumber(memory, "ResultingFrameRateReg", reachableRate(memory));
    };
    for (const char *field : {"AcquisitionLineRateReg", "AcquisitionLineRateEnableReg",
                              "ExposureTimeReg", "TDIStagesReg", "HeightReg"}) {
        onSetting(field, follow);
    }
}

double LineCameraBehaviour::reachableRate(const RegisterMemory &memory) const
{
    return lineRate(memory) / double(qMax<qint64>(1, value(memory, "HeightReg")));
}

void LineCameraBehaviour::stopAcquisition(RegisterMemory &memory)
{
    if (!isQuiet()) {
        turnEncoder(memory);
    }
    m_nTurned = 0;
    StandardBehaviour::stopAcquisition(memory);
}

double LineCameraBehaviour::lineRate(const RegisterMemory &memory) const
{
    const double exposure = registers().number(memory, "ExposureTimeReg");
    const double fastest = 1e6 / (exposure + 2.5); // microseconds
    return value(memory, "AcquisitionLineRateEnableReg")
        ? qMin(fastest, registers().number(memory, "AcquisitionLineRateReg"))
        : fastest;
}

void LineCameraBehaviour::turnEncoder(RegisterMemory &memory)
{
    const qint64 steps = frames(memory) * value(memory, "HeightReg");
    if (isGrabbing() && steps > m_nTurned) {
        const qint64 position = value(memory, "EncoderValueReg") + steps - m_nTurned;
        setValue(memory, "EncoderValueReg", position & 0x7FFFFFFF);
        m_nTurned = steps;
    }
}
