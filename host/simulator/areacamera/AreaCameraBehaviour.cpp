#include "host/simulator/areacamera/AreaCameraBehaviour.h"

#include "host/simulator/areacamera/AreaCamera.h"

#include <arv.h>
#include <cmath>

namespace {

constexpr int kUserSets = 4;
constexpr int kSequencerSets = 4;
constexpr int kFrameStart = 1; // entry of TriggerSelector
constexpr qint64 kNanosecondsPerSecond = 1000000000;
const qint64 kBaseTemperatures[] = {412, 458, 371}; // tenths of a degree

/// Registers that the firmware brings up to date when they are read.
const char *const kMoving[] = {
    "DeviceTemperatureRaw",
    "ResultingFrameRateReg",
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

// The commands; their registers go back to 0 when the work is done.
const AreaCameraBehaviour::HandlerRow AreaCameraBehaviour::kCommands[] = {
    {"AcquisitionStartReg", &AreaCameraBehaviour::startAcquisition},
    {"AcquisitionStopReg", &AreaCameraBehaviour::stopAcquisition},
    {"AcquisitionAbortReg", &AreaCameraBehaviour::stopAcquisition},
    {"AcquisitionArmReg", &AreaCameraBehaviour::acknowledge},
    {"TriggerSoftwareReg", &AreaCameraBehaviour::triggerSoftware},
    {"UserSetLoadReg", &AreaCameraBehaviour::loadUserSet},
    {"UserSetSaveReg", &AreaCameraBehaviour::saveUserSet},
    {"SequencerSetLoadReg", &AreaCameraBehaviour::loadSequencerSet},
    {"SequencerSetSaveReg", &AreaCameraBehaviour::saveSequencerSet},
    {"TimestampLatchReg", &AreaCameraBehaviour::latchTimestamp},
    {"TimestampResetReg", &AreaCameraBehaviour::resetTimestamp},
    {"GevTimestampControlLatchReg", &AreaCameraBehaviour::controlTimestamp},
    {"CounterResetReg", &AreaCameraBehaviour::resetCounter},
    {"TimerResetReg", &AreaCameraBehaviour::resetTimer},
    {"EncoderResetReg", &AreaCameraBehaviour::resetEncoder},
    {"FileOperationExecuteReg", &AreaCameraBehaviour::executeFileOperation},
    {"FlatFieldCalibrateReg", &AreaCameraBehaviour::acknowledge},
    {"DeviceRegistersStreamingStartReg", &AreaCameraBehaviour::acknowledge},
    {"DeviceRegistersStreamingEndReg", &AreaCameraBehaviour::acknowledge},
    {"DeviceRegistersCheckReg", &AreaCameraBehaviour::acknowledge},
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
    : m_registers(table)
    , m_guard(table)
    , m_userSets(table, kUserSets)
    , m_sequencerSets(table, kSequencerSets)
    , m_files(areaCameraFiles())
{
    m_clock.start();
}

int AreaCameraBehaviour::refusal(const RegisterMemory &memory, quint64 address,
                                 const QByteArray &bytes) const
{
    const RegisterRow *row = m_guard.registerAt(address);
    if (!row || !row->m_bWritable) {
        return ARV_DEVICE_ERROR_PROTOCOL_ERROR_WRITE_PROTECT;
    }
    const auto length = quint32(bytes.size());
    if (m_bGrabbing
        && (m_guard.isLockedWhileGrabbing(*row)
            || m_registers.isTouched("UserSetLoadReg", address, length))) {
        return ARV_DEVICE_ERROR_PROTOCOL_ERROR_ACCESS_DENIED;
    }
    if (m_registers.isTouched("UserSetSaveReg", address, length)
        && m_registers.value(memory, "UserSetSelectorReg") == 0) {
        return ARV_DEVICE_ERROR_PROTOCOL_ERROR_ACCESS_DENIED;
    }
    return isOutsideSensor(memory, address, bytes)
        ? int(ARV_DEVICE_ERROR_PROTOCOL_ERROR_INVALID_PARAMETER)
        : -1;
}

void AreaCameraBehaviour::beforeRead(RegisterMemory &memory, quint64 address, quint32 length)
{
    m_files.beforeRead(m_registers, memory, address, length);
    if (m_bQuiet || !isMoving(address, length)) {
        return;
    }
    measureTemperature(memory);
    takeFrames(memory);
}

DeviceBehaviour::Effect AreaCameraBehaviour::afterWrite(RegisterMemory &memory, quint64 address,
                                                        quint32 length)
{
    if (m_registers.isTouched("DeviceResetReg", address, length)
        && m_registers.value(memory, "DeviceResetReg") != 0) {
        m_registers.setValue(memory, "DeviceResetReg", 0);
        return Effect::Restart;
    }
    for (const HandlerRow &row : kCommands) {
        if (m_registers.isTouched(row.field, address, length)
            && m_registers.value(memory, row.field) != 0) {
            (this->*row.run)(memory);
            m_registers.setValue(memory, row.field, 0);
        }
    }
    for (const HandlerRow &row : kSettings) {
        if (m_registers.isTouched(row.field, address, length)) {
            (this->*row.run)(memory);
        }
    }
    return Effect::None;
}

void AreaCameraBehaviour::restart(RegisterMemory &memory)
{
    stopAcquisition(memory);
    m_files.closeAll(m_registers, memory);
    m_userSets.load(
        memory,
        int(qBound<qint64>(0, m_registers.value(memory, "UserSetDefaultReg"), kUserSets - 1)));
    m_registers.setValue(memory, "TriggerSoftwareCountReg", 0);
    if (m_registers.value(memory, "GevCurrentIPConfigurationPersistentIPReg")) {
        m_registers.setValue(memory, "GevCurrentIPAddressReg",
                             m_registers.value(memory, "GevPersistentIPAddressReg"));
    }
    m_clock.restart();
    m_nTimestampZero = 0;
    followFrameRate(memory);
}

bool AreaCameraBehaviour::isOutsideSensor(const RegisterMemory &memory, quint64 address,
                                          const QByteArray &bytes) const
{
    const struct
    {
        const char *field;
        const char *partner;
        qint64 limit;
        qint64 smallest;
    } rows[] = {
        {"WidthReg", "OffsetXReg", widthMax(memory), 64},
        {"OffsetXReg", "WidthReg", widthMax(memory), 0},
        {"HeightReg", "OffsetYReg", heightMax(memory), 32},
        {"OffsetYReg", "HeightReg", heightMax(memory), 0},
    };
    for (const auto &row : rows) {
        if (m_registers.isTouched(row.field, address, quint32(bytes.size())) && bytes.size() == 4) {
            const auto value = qint64(decodedInteger(bytes, false));
            return value < row.smallest
                || value + m_registers.value(memory, row.partner) > row.limit;
        }
    }
    return false;
}

bool AreaCameraBehaviour::isMoving(quint64 address, quint32 length) const
{
    for (const char *field : kMoving) {
        if (m_registers.isTouched(field, address, length)) {
            return true;
        }
    }
    return false;
}

double AreaCameraBehaviour::reachableFrameRate(const RegisterMemory &memory) const
{
    const double lines = double(m_registers.value(memory, "HeightReg")) + 28;
    const double taps = double(qMax<qint64>(1, m_registers.value(memory, "SensorTapsReg")));
    const double readout = lines * 12.5 / taps * 4 + 40; // microseconds
    const double exposure = double(m_registers.value(memory, "ExposureTimeRaw")) / 10 + 60;
    double rate = 1e6 / qMax(readout, exposure);
    if (m_registers.value(memory, "AcquisitionFrameRateEnableReg")) {
        rate = qMin(rate, m_registers.number(memory, "AcquisitionFrameRateReg"));
    }
    return rate;
}

void AreaCameraBehaviour::measureTemperature(RegisterMemory &memory) const
{
    const auto seconds = double(m_clock.elapsed() / 1000);
    for (int i = 0; i < 3; ++i) {
        m_registers.setValue(memory, "DeviceTemperatureRaw",
                             kBaseTemperatures[i] + qRound(6 * std::sin(seconds * 0.7)), i);
    }
}

void AreaCameraBehaviour::takeFrames(RegisterMemory &memory)
{
    if (!m_bGrabbing) {
        return;
    }
    const double rate = reachableFrameRate(memory);
    const qint64 elapsed = m_clock.nsecsElapsed() - m_nGrabStart;
    const bool isTriggered = m_registers.value(memory, "TriggerModeReg", kFrameStart) == 1;
    qint64 frames = isTriggered ? m_nTriggeredFrames
                                : qint64(double(elapsed) / double(kNanosecondsPerSecond) * rate);
    const qint64 mode = m_registers.value(memory, "AcquisitionModeReg");
    const qint64 wanted =
        mode == 1 ? 1 : (mode == 2 ? m_registers.value(memory, "AcquisitionFrameCountReg") : 0);
    const bool isLast = wanted > 0 && frames >= wanted;
    frames = isLast ? wanted : frames;
    count(memory, 2, frames - m_nFrames);
    m_nFrames = frames;

    const double measured = rate * (1 + 0.0005 * std::sin(double(elapsed / kNanosecondsPerSecond)));
    const double payload =
        double(m_registers.value(memory, "WidthReg") * m_registers.value(memory, "HeightReg"))
        * double(m_registers.value(memory, "PixelFormatReg") >> 16 & 255) / 8;
    m_registers.setNumber(memory, "ResultingFrameRateReg", measured);
    m_registers.setValue(memory, "DeviceLinkCurrentThroughputReg", qint64(measured * payload));
    m_registers.setValue(memory, "AcquisitionStatusWord", isTriggered ? 2 | 4 : 2 | 8);
    const qint64 timestamp = m_clock.nsecsElapsed() - m_nTimestampZero;
    m_registers.setValue(memory, "EventExposureEndFrameIDReg", frames);
    m_registers.setValue(memory, "EventExposureEndTimestampReg", timestamp);
    if (m_registers.value(memory, "ChunkModeActiveReg")) {
        m_registers.setValue(memory, "ChunkFrameIDReg", frames);
        m_registers.setValue(memory, "ChunkTimestampReg", timestamp);
        m_registers.setNumber(memory, "ChunkExposureTimeReg",
                              double(m_registers.value(memory, "ExposureTimeRaw")) / 10);
        m_registers.setNumber(memory, "ChunkGainReg", m_registers.number(memory, "GainReg"));
        m_registers.setValue(memory, "ChunkLineStatusAllReg",
                             m_registers.value(memory, "LineStatusWord"));
    }
    if (isLast) {
        stopAcquisition(memory);
    }
}

void AreaCameraBehaviour::count(RegisterMemory &memory, qint64 source, qint64 events) const
{
    for (int counter = 0; counter < 2; ++counter) {
        if (m_registers.value(memory, "CounterEventSourceReg", counter) == source) {
            m_registers.setValue(memory, "CounterValueReg",
                                 m_registers.value(memory, "CounterValueReg", counter) + events,
                                 counter);
        }
    }
}

void AreaCameraBehaviour::startAcquisition(RegisterMemory &memory)
{
    if (m_bGrabbing) {
        return;
    }
    m_bGrabbing = true;
    m_nGrabStart = m_clock.nsecsElapsed();
    m_nFrames = 0;
    m_nTriggeredFrames = 0;
    for (int counter = 0; counter < 2; ++counter) {
        if (m_registers.value(memory, "CounterResetSourceReg", counter) == 1) {
            m_registers.setValue(memory, "CounterValueReg", 0, counter);
        }
    }
    m_registers.setValue(memory, "AcquisitionStatusWord", 2);
}

void AreaCameraBehaviour::stopAcquisition(RegisterMemory &memory)
{
    m_bGrabbing = false;
    m_registers.setValue(memory, "AcquisitionStatusWord", 0);
    m_registers.setValue(memory, "DeviceLinkCurrentThroughputReg", 0);
    followFrameRate(memory);
}

void AreaCameraBehaviour::triggerSoftware(RegisterMemory &memory)
{
    m_registers.setValue(memory, "TriggerSoftwareCountReg",
                         m_registers.value(memory, "TriggerSoftwareCountReg") + 1);
    const bool isFrameTrigger = m_registers.value(memory, "TriggerModeReg", kFrameStart) == 1
        && m_registers.value(memory, "TriggerSourceReg", kFrameStart) == 0;
    if (m_bGrabbing && isFrameTrigger) {
        ++m_nTriggeredFrames;
    }
    count(memory, 1, 1);
}

void AreaCameraBehaviour::loadUserSet(RegisterMemory &memory)
{
    const qint64 set = m_registers.value(memory, "UserSetSelectorReg");
    if (set >= 0 && set < m_userSets.count()) {
        m_userSets.load(memory, int(set));
        followFrameRate(memory);
    }
}

void AreaCameraBehaviour::saveUserSet(RegisterMemory &memory)
{
    const qint64 set = m_registers.value(memory, "UserSetSelectorReg");
    if (set > 0 && set < m_userSets.count()) {
        m_userSets.save(memory, int(set));
    }
}

void AreaCameraBehaviour::loadSequencerSet(RegisterMemory &memory)
{
    const qint64 set = m_registers.value(memory, "SequencerSetSelectorReg");
    if (set >= 0 && set < m_sequencerSets.count()) {
        m_sequencerSets.load(memory, int(set));
        m_registers.setValue(memory, "SequencerSetSelectorReg", set);
        m_registers.setValue(memory, "SequencerSetActiveReg", set);
        followFrameRate(memory);
    }
}

void AreaCameraBehaviour::saveSequencerSet(RegisterMemory &memory)
{
    const qint64 set = m_registers.value(memory, "SequencerSetSelectorReg");
    if (set >= 0 && set < m_sequencerSets.count()) {
        m_sequencerSets.save(memory, int(set));
    }
}

void AreaCameraBehaviour::latchTimestamp(RegisterMemory &memory)
{
    m_registers.setValue(memory, "TimestampLatchValueReg",
                         m_clock.nsecsElapsed() - m_nTimestampZero);
}

void AreaCameraBehaviour::resetTimestamp(RegisterMemory &)
{
    m_nTimestampZero = m_clock.nsecsElapsed();
}

void AreaCameraBehaviour::controlTimestamp(RegisterMemory &memory)
{
    const qint64 bits = m_registers.value(memory, "GevTimestampControlLatchReg");
    if (bits & 2) {
        m_registers.setValue(memory, "GevTimestampValueReg",
                             m_clock.nsecsElapsed() - m_nTimestampZero);
    }
    if (bits & 1) {
        resetTimestamp(memory);
    }
}

void AreaCameraBehaviour::resetCounter(RegisterMemory &memory)
{
    const int counter = int(m_registers.value(memory, "CounterSelectorReg") & 1);
    m_registers.setValue(memory, "CounterValueAtResetReg",
                         m_registers.value(memory, "CounterValueReg", counter), counter);
    m_registers.setValue(memory, "CounterValueReg", 0, counter);
}

void AreaCameraBehaviour::resetTimer(RegisterMemory &memory)
{
    m_registers.setNumber(memory, "TimerValueReg", 0,
                          int(m_registers.value(memory, "TimerSelectorReg") & 1));
}

void AreaCameraBehaviour::resetEncoder(RegisterMemory &memory)
{
    m_registers.setValue(memory, "EncoderValueAtResetReg",
                         m_registers.value(memory, "EncoderValueReg"));
    m_registers.setValue(memory, "EncoderValueReg", 0);
}

void AreaCameraBehaviour::executeFileOperation(RegisterMemory &memory)
{
    m_files.execute(m_registers, memory);
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
    const qint64 newSize = qMin(m_registers.value(memory, size), limit) / step * step;
    m_registers.setValue(memory, size, newSize);
    m_registers.setValue(memory, offset,
                         qMin(m_registers.value(memory, offset), limit - newSize) / step * step);
}

qint64 AreaCameraBehaviour::widthMax(const RegisterMemory &memory) const
{
    const qint64 factor = m_registers.value(memory, "BinningHorizontalReg")
        * m_registers.value(memory, "DecimationHorizontalReg");
    return m_registers.value(memory, "SensorWidthReg") / qMax<qint64>(1, factor) / 4 * 4;
}

qint64 AreaCameraBehaviour::heightMax(const RegisterMemory &memory) const
{
    const qint64 factor = m_registers.value(memory, "BinningVerticalReg")
        * m_registers.value(memory, "DecimationVerticalReg");
    return m_registers.value(memory, "SensorHeightReg") / qMax<qint64>(1, factor) / 2 * 2;
}

void AreaCameraBehaviour::fitPixelFormat(RegisterMemory &memory)
{
    static const struct
    {
        qint64 format;
        qint64 bits;
    } kFormats[] = {{0x01100003, 10}, {0x010A0046, 10}, {0x01100005, 12}, {0x010C0047, 12}};
    const qint64 depth = m_registers.value(memory, "ADCBitDepthReg");
    for (const auto &row : kFormats) {
        if (m_registers.value(memory, "PixelFormatReg") == row.format && row.bits > depth) {
            m_registers.setValue(memory, "PixelFormatReg", 0x01080001);
        }
    }
}

void AreaCameraBehaviour::finishGainAuto(RegisterMemory &memory)
{
    if (m_registers.value(memory, "GainAutoReg") == 1) {
        const double wanted = 6.0 + double(m_registers.value(memory, "BrightnessReg")) / 64;
        m_registers.setNumber(memory, "GainReg",
                              qBound(m_registers.number(memory, "GainAutoLowerLimitReg"), wanted,
                                     m_registers.number(memory, "GainAutoUpperLimitReg")));
        m_registers.setValue(memory, "GainAutoReg", 0);
    }
}

void AreaCameraBehaviour::finishExposureAuto(RegisterMemory &memory)
{
    if (m_registers.value(memory, "ExposureAutoReg") == 1) {
        const double wanted =
            double(m_registers.value(memory, "BrightnessReg")) * 60; // microseconds
        const double time = qBound(m_registers.number(memory, "ExposureAutoLowerLimitReg"), wanted,
                                   m_registers.number(memory, "ExposureAutoUpperLimitReg"));
        m_registers.setValue(memory, "ExposureTimeRaw", qint64(time * 10));
        m_registers.setValue(memory, "ExposureAutoReg", 0);
        followFrameRate(memory);
    }
}

void AreaCameraBehaviour::fireTestPacket(RegisterMemory &memory)
{
    m_registers.setValue(memory, "GevSCPSFireTestPacketReg", 0);
}

void AreaCameraBehaviour::followFrameRate(RegisterMemory &memory)
{
    m_registers.setNumber(memory, "ResultingFrameRateReg", reachableFrameRate(memory));
}
