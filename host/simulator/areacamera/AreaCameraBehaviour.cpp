#include "host/simulator/areacamera/AreaCameraBehaviour.h"

#include "host/simulator/areacamera/AreaCamera.h"

#include <arv.h>

namespace {

constexpr int kUserSets = 4;
constexpr int kSequencerSets = 4;
constexpr int kFrameStart = 1; // entry of TriggerSelector

/// Registers of the running acquisition, brought up to date when they are read.
const char *const kMoving[] = {
    "DeviceLinkCurrentThroughputReg",
    "AcquisitionStatusWord",
    "ChunkFrameIDReg",
    "ChunkTimestampReg",
    "ChunkExposureTimeReg",
    "ChunkGainReg",
    "ChunkLineStatusAllReg",
    "EventExposureEndFrameIDReg",
    "EventExposureEndTimestampReg",
    "CounterValueReg",
};

} // namespace

// The commands that not every camera has.
const AreaCameraBehaviour::HandlerRow AreaCameraBehaviour::kCommands[] = {
    {"AcquisitionAbortReg", &AreaCameraBehaviour::stopAcquisition},
    {"AcquisitionArmReg", &AreaCameraBehaviour::acknowledge},
    {"SequencerSetLoadReg", &AreaCameraBehaviour::loadSequencerSet},
    {"SequencerSetSaveReg", &AreaCameraBehaviour::saveSequencerSet},
    {"TimestampLatchReg", &AreaCameraBehaviour::latchTimestamp},
    {"TimestampResetReg", &AreaCameraBehaviour::resetTimestamp},
    {"GevTimestampControlLatchReg", &AreaCameraBehaviour::controlTimestamp},
    {"CounterResetReg", &AreaCameraBehaviour::resetCounter},
    {"TimerResetReg", &AreaCameraBehaviour::resetTimer},
    {"EncoderResetReg", &AreaCameraBehaviour::resetEncoder},
    {"FlatFieldCalibrateReg", &AreaCameraBehaviour::acknowledge},
    {"DeviceRegistersStreamingStartReg", &AreaCameraBehaviour::acknowledge},
    {"DeviceRegistersStreamingEndReg", &AreaCameraBehaviour::acknowledge},
    {"DeviceRegistersCheckReg", &AreaCameraBehaviour::acknowledge},
};

// A region that does not fit on the sensor is refused.
const AreaCameraBehaviour::RegionRow AreaCameraBehaviour::kRegion[] = {
    {"WidthReg", "OffsetXReg", &AreaCameraBehaviour::widthMax, 64},
    {"OffsetXReg", "WidthReg", &AreaCameraBehaviour::widthMax, 0},
    {"HeightReg", "OffsetYReg", &AreaCameraBehaviour::heightMax, 32},
    {"OffsetYReg", "HeightReg", &AreaCameraBehaviour::heightMax, 0},
};

// Settings that draw others after them.
const AreaCameraBehaviour::HandlerRow AreaCameraBehaviour::kSettings[] = {
    {"BinningHorizontalReg", &AreaCameraBehaviour::fitWidth},
    {"DecimationHorizontalReg", &AreaCameraBehaviour::fitWidth},
    {"BinningVerticalReg", &AreaCameraBehaviour::fitHeight},
    {"DecimationVerticalReg", &AreaCameraBehaviour::fitHeight},
    {"ADCBitDepthReg", &AreaCameraBehaviour::fitPixelFormat},
    {"GainAutoReg", &AreaCameraBehaviour::finishGainAuto},
    {"ExposureAutoReg", &AreaCameraBehaviour::finishExposureAuto},
    {"GevSCPSFireTestPacketReg", &AreaCameraBehaviour::fireTestPacket},
    {"ExposureTimeRaw", &AreaCameraBehaviour::followFrameRate},
    {"AcquisitionFrameRateReg", &AreaCameraBehaviour::followFrameRate},
    {"AcquisitionFrameRateEnableReg", &AreaCameraBehaviour::followFrameRate},
    {"HeightReg", &AreaCameraBehaviour::followFrameRate},
    {"SensorTapsReg", &AreaCameraBehaviour::followFrameRate},
};

AreaCameraBehaviour::AreaCameraBehaviour(const FeatureTable &table)
    : StandardBehaviour(table, kUserSets, areaCameraFiles())
    , m_sequencerSets(table, kSequencerSets)
{
    const auto calling = [this](Handler run) {
        return [this, run](RegisterMemory &memory) { (this->*run)(memory); };
    };
    for (const HandlerRow &row : kCommands) {
        onCommand(row.field, calling(row.run));
    }
    for (const HandlerRow &row : kSettings) {
        onSetting(row.field, calling(row.run));
    }
    for (const char *field : kMoving) {
        onMoving(field, calling(&AreaCameraBehaviour::takeFrames));
    }
    for (const RegionRow &row : kRegion) {
        onWrite(row.field, [this, row](const RegisterMemory &memory, qint64 wanted) {
            const bool fits = wanted >= row.smallest
                && wanted + value(memory, row.partner) <= (this->*row.limit)(memory);
            return fits ? -1 : int(ARV_DEVICE_ERROR_PROTOCOL_ERROR_INVALID_PARAMETER);
        });
    }
}

void AreaCameraBehaviour::restart(RegisterMemory &memory)
{
    StandardBehaviour::restart(memory);
    if (value(memory, "GevCurrentIPConfigurationPersistentIPReg")) {
        setValue(memory, "GevCurrentIPAddressReg", value(memory, "GevPersistentIPAddressReg"));
    }
    m_nTimestampZero = 0;
    followFrameRate(memory);
}

double AreaCameraBehaviour::reachableRate(const RegisterMemory &memory) const
{
    const double lines = double(value(memory, "HeightReg")) + 28;
    const double taps = double(qMax<qint64>(1, value(memory, "SensorTapsReg")));
    const double readout = lines * 12.5 / taps * 4 + 40; // microseconds
    const double exposure = double(value(memory, "ExposureTimeRaw")) / 10 + 60;
    double rate = 1e6 / qMax(readout, exposure);
    if (value(memory, "AcquisitionFrameRateEnableReg")) {
        rate = qMin(rate, registers().number(memory, "AcquisitionFrameRateReg"));
    }
    return rate;
}

void AreaCameraBehaviour::takeFrames(RegisterMemory &memory)
{
    if (!isGrabbing()) {
        return;
    }
    const bool isTriggered = value(memory, "TriggerModeReg", kFrameStart) == 1;
    qint64 taken = isTriggered ? m_nTriggeredFrames : frames(memory);
    const qint64 mode = value(memory, "AcquisitionModeReg");
    const qint64 wanted =
        mode == 1 ? 1 : (mode == 2 ? value(memory, "AcquisitionFrameCountReg") : 0);
    const bool isLast = wanted > 0 && taken >= wanted;
    taken = isLast ? wanted : taken;
    count(memory, 2, taken - m_nFrames);
    m_nFrames = taken;

    const double payload = double(value(memory, "WidthReg") * value(memory, "HeightReg"))
        * double(value(memory, "PixelFormatReg") >> 16 & 255) / 8;
    setValue(memory, "DeviceLinkCurrentThroughputReg", qint64(reachableRate(memory) * payload));
    setValue(memory, "AcquisitionStatusWord", isTriggered ? 2 | 4 : 2 | 8);
    const qint64 timestamp = nanoseconds() - m_nTimestampZero;
    setValue(memory, "EventExposureEndFrameIDReg", taken);
    setValue(memory, "EventExposureEndTimestampReg", timestamp);
    if (value(memory, "ChunkModeActiveReg")) {
        setValue(memory, "ChunkFrameIDReg", taken);
        setValue(memory, "ChunkTimestampReg", timestamp);
        registers().setNumber(memory, "ChunkExposureTimeReg",
                              double(value(memory, "ExposureTimeRaw")) / 10);
        registers().setNumber(memory, "ChunkGainReg", registers().number(memory, "GainReg"));
        setValue(memory, "ChunkLineStatusAllReg", value(memory, "LineStatusWord"));
    }
    if (isLast) {
        stopAcquisition(memory);
    }
}

void AreaCameraBehaviour::count(RegisterMemory &memory, qint64 source, qint64 events) const
{
    for (int counter = 0; counter < 2; ++counter) {
        if (value(memory, "CounterEventSourceReg", counter) == source) {
            setValue(memory, "CounterValueReg", value(memory, "CounterValueReg", counter) + events,
                     counter);
        }
    }
}

void AreaCameraBehaviour::startAcquisition(RegisterMemory &memory)
{
    if (isGrabbing()) {
        return;
    }
    StandardBehaviour::startAcquisition(memory);
    m_nFrames = 0;
    m_nTriggeredFrames = 0;
    for (int counter = 0; counter < 2; ++counter) {
        if (value(memory, "CounterResetSourceReg", counter) == 1) {
            setValue(memory, "CounterValueReg", 0, counter);
        }
    }
    setValue(memory, "AcquisitionStatusWord", 2);
}

void AreaCameraBehaviour::stopAcquisition(RegisterMemory &memory)
{
    StandardBehaviour::stopAcquisition(memory);
    setValue(memory, "AcquisitionStatusWord", 0);
    setValue(memory, "DeviceLinkCurrentThroughputReg", 0);
}

void AreaCameraBehaviour::triggerSoftware(RegisterMemory &memory)
{
    StandardBehaviour::triggerSoftware(memory);
    const bool isFrameTrigger = value(memory, "TriggerModeReg", kFrameStart) == 1
        && value(memory, "TriggerSourceReg", kFrameStart) == 0;
    if (isGrabbing() && isFrameTrigger) {
        ++m_nTriggeredFrames;
    }
    count(memory, 1, 1);
}

void AreaCameraBehaviour::loadUserSet(RegisterMemory &memory)
{
    StandardBehaviour::loadUserSet(memory);
    followFrameRate(memory);
}

void AreaCameraBehaviour::loadSequencerSet(RegisterMemory &memory)
{
    const qint64 set = value(memory, "SequencerSetSelectorReg");
    if (set >= 0 && set < m_sequencerSets.count()) {
        m_sequencerSets.load(memory, int(set));
        setValue(memory, "SequencerSetSelectorReg", set);
        setValue(memory, "SequencerSetActiveReg", set);
        followFrameRate(memory);
    }
}

void AreaCameraBehaviour::saveSequencerSet(RegisterMemory &memory)
{
    const qint64 set = value(memory, "SequencerSetSelectorReg");
    if (set >= 0 && set < m_sequencerSets.count()) {
        m_sequencerSets.save(memory, int(set));
    }
}

void AreaCameraBehaviour::latchTimestamp(RegisterMemory &memory)
{
    setValue(memory, "TimestampLatchValueReg", nanoseconds() - m_nTimestampZero);
}

void AreaCameraBehaviour::resetTimestamp(RegisterMemory &)
{
    m_nTimestampZero = nanoseconds();
}

void AreaCameraBehaviour::controlTimestamp(RegisterMemory &memory)
{
    const qint64 bits = value(memory, "GevTimestampControlLatchReg");
    if (bits & 2) {
        setValue(memory, "GevTimestampValueReg", nanoseconds() - m_nTimestampZero);
    }
    if (bits & 1) {
        resetTimestamp(memory);
    }
}

void AreaCameraBehaviour::resetCounter(RegisterMemory &memory)
{
    const int counter = int(value(memory, "CounterSelectorReg") & 1);
    setValue(memory, "CounterValueAtResetReg", value(memory, "CounterValueReg", counter), counter);
    setValue(memory, "CounterValueReg", 0, counter);
}

void AreaCameraBehaviour::resetTimer(RegisterMemory &memory)
{
    registers().setNumber(memory, "TimerValueReg", 0, int(value(memory, "TimerSelectorReg") & 1));
}

void AreaCameraBehaviour::resetEncoder(RegisterMemory &memory)
{
    setValue(memory, "EncoderValueAtResetReg", value(memory, "EncoderValueReg"));
    setValue(memory, "EncoderValueReg", 0);
}

void AreaCameraBehaviour::fitWidth(RegisterMemory &memory)
{
    fit(memory, "WidthReg", "OffsetXReg", widthMax(memory), 4);
}

void AreaCameraBehaviour::fitHeight(RegisterMemory &memory)
{
    fit(memory, "HeightReg", "OffsetYReg", heightMax(memory), 2);
    followFrameRate(memory);
}

void AreaCameraBehaviour::fit(RegisterMemory &memory, const char *size, const char *offset,
                              qint64 limit, qint64 step) const
{
    const qint64 newSize = qMin(value(memory, size), limit) / step * step;
    setValue(memory, size, newSize);
    setValue(memory, offset, qMin(value(memory, offset), limit - newSize) / step * step);
}

qint64 AreaCameraBehaviour::widthMax(const RegisterMemory &memory) const
{
    const qint64 factor =
        value(memory, "BinningHorizontalReg") * value(memory, "DecimationHorizontalReg");
    return value(memory, "SensorWidthReg") / qMax<qint64>(1, factor) / 4 * 4;
}

qint64 AreaCameraBehaviour::heightMax(const RegisterMemory &memory) const
{
    const qint64 factor =
        value(memory, "BinningVerticalReg") * value(memory, "DecimationVerticalReg");
    return value(memory, "SensorHeightReg") / qMax<qint64>(1, factor) / 2 * 2;
}

void AreaCameraBehaviour::fitPixelFormat(RegisterMemory &memory)
{
    static const struct
    {
        qint64 format;
        qint64 bits;
    } kFormats[] = {{0x01100003, 10}, {0x010A0046, 10}, {0x01100005, 12}, {0x010C0047, 12}};
    const qint64 depth = value(memory, "ADCBitDepthReg");
    for (const auto &row : kFormats) {
        if (value(memory, "PixelFormatReg") == row.format && row.bits > depth) {
            setValue(memory, "PixelFormatReg", 0x01080001);
        }
    }
}

void AreaCameraBehaviour::finishGainAuto(RegisterMemory &memory)
{
    if (value(memory, "GainAutoReg") == 1) {
        const double wanted = 6.0 + double(value(memory, "BrightnessReg")) / 64;
        registers().setNumber(memory, "GainReg",
                              qBound(registers().number(memory, "GainAutoLowerLimitReg"), wanted,
                                     registers().number(memory, "GainAutoUpperLimitReg")));
        setValue(memory, "GainAutoReg", 0);
    }
}

void AreaCameraBehaviour::finishExposureAuto(RegisterMemory &memory)
{
    if (value(memory, "ExposureAutoReg") == 1) {
        const double wanted = double(value(memory, "BrightnessReg")) * 60; // microseconds
        const double time = qBound(registers().number(memory, "ExposureAutoLowerLimitReg"), wanted,
                                   registers().number(memory, "ExposureAutoUpperLimitReg"));
        setValue(memory, "ExposureTimeRaw", qint64(time * 10));
        setValue(memory, "ExposureAutoReg", 0);
        followFrameRate(memory);
    }
}

void AreaCameraBehaviour::fireTestPacket(RegisterMemory &memory)
{
    setValue(memory, "GevSCPSFireTestPacketReg", 0);
}

void AreaCameraBehaviour::followFrameRate(RegisterMemory &memory)
{
    registers().setNumber(memory, "ResultingFrameRateReg", reachableRate(memory));
}
