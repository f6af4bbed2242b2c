#include "host/simulator/codereader/CodeReaderBehaviour.h"

#include "host/simulator/codereader/CodeReader.h"

#include <algorithm>
#include <arv.h>
#include <cmath>

namespace {

constexpr int kDenied = ARV_DEVICE_ERROR_PROTOCOL_ERROR_ACCESS_DENIED;
constexpr int kInvalid = ARV_DEVICE_ERROR_PROTOCOL_ERROR_INVALID_PARAMETER;
constexpr int kBusy = ARV_DEVICE_ERROR_PROTOCOL_ERROR_BUSY;
constexpr int kTaken = -1;

constexpr double kFocusSeconds = 1.0;
constexpr double kTuneSeconds = 2.5;
constexpr qint64 kBestFocus = 517;
constexpr qint64 kSelfTrigger = 13; ///< entry of TriggerSource
constexpr qint64 kHostProtocol = 1; ///< entry of CommunicationProtocols
constexpr qint64 kSetupMode = 2; ///< entry of RunningMode
constexpr qint64 kFactorySets = 3; ///< the factory's set and the first of the user
constexpr int kNoReadEvery = 8; ///< images

/// The registers of communication and formats, which a partial recovery spares.
constexpr quint64 kCommunicationBegin = 0x30000;
constexpr quint64 kCommunicationEnd = 0x60000;

const char *const kPorts[] = {
    "TCPDestPortReg",      "FtpHostPortReg", "TcpServerPortReg", "MelsecServerPortReg",
    "ModBusServerPortReg", "UdpDestPortReg", "TcpUpgPortReg",
};
const char *const kBarCodes[] = {"Code128Reg", "Code39Reg", "EAN13Reg"};
const char *const kPharmacodes[] = {"PHARMACODEReg", "PHARMACODE2dReg"};

} // namespace

CodeReaderBehaviour::CodeReaderBehaviour(const FeatureTable &table, const ReaderLight &light)
    : StandardBehaviour(table, kReaderUserSets, codeReaderFiles())
    , m_light(light)
    , m_qualityRegisters(readerQualityRegisters())
{
    addRefusals();
    addSettings();
    addCommands();
    addUserSetCommands();
    addMoving();
}

void CodeReaderBehaviour::restart(RegisterMemory &memory)
{
    if (m_bRecoverFactory) {
        m_bRecoverFactory = false;
        for (int set = 1; set < kReaderUserSets; ++set) {
            userSets().copy(0, set);
        }
        for (const RegisterRow &row : registers().table().registers()) {
            memory.write(row.m_nAddress, row.m_initial);
        }
    }
    StandardBehaviour::restart(memory);
    setValue(memory, "AutoFocusStatReg", 1);
    setValue(memory, "SmartTuneProgressReg", 0);
    m_focusEnd.reset();
    m_tuneStart.reset();
    for (const char *counter : {"FrameCountReg", "ReadCountReg", "NoReadCountReg"}) {
        setValue(memory, counter, 0);
    }
    followLighting(memory);
}

double CodeReaderBehaviour::reachableRate(const RegisterMemory &memory) const
{
    const double exposure = double(value(memory, "ExposureTimeRawReg")) / 10; // microseconds
    double rate = qMin(60.0, 1e6 / (exposure + 3000));
    if (value(memory, "AcquisitionFrameRateEnableReg")) {
        rate = qMin(rate, registers().number(memory, "AcquisitionFrameRateReg"));
    }
    const bool isSelfTriggered =
        value(memory, "TriggerModeReg") == 1 && value(memory, "TriggerSourceReg") == kSelfTrigger;
    if (isSelfTriggered) {
        rate = qMin(rate,
                    1000.0 / double(qMax<qint64>(1, value(memory, "TriggerSelfTriggerPeriodReg"))));
    }
    return value(memory, "HdrEnableReg") ? rate / 2 : rate;
}

void CodeReaderBehaviour::startAcquisition(RegisterMemory &memory)
{
    if (!isGrabbing()) {
        m_nCounted = 0;
    }
    StandardBehaviour::startAcquisition(memory);
}

void CodeReaderBehaviour::stopAcquisition(RegisterMemory &memory)
{
    if (!isQuiet()) {
        takeFrames(memory);
    }
    StandardBehaviour::stopAcquisition(memory);
}

void CodeReaderBehaviour::triggerSoftware(RegisterMemory &memory)
{
    StandardBehaviour::triggerSoftware(memory);
    if (isGrabbing() && value(memory, "TriggerModeReg") == 1) {
        countImages(memory, 1);
    }
}

void CodeReaderBehaviour::addRefusals()
{
    for (const char *port : kPorts) {
        onWrite(port, [this, port](const RegisterMemory &memory, qint64 wanted) {
            const bool isTaken =
                std::any_of(std::begin(kPorts), std::end(kPorts),
                            [this, port, &memory, wanted](const char *other) {
                                return other != port && value(memory, other) == wanted;
                            });
            return isTaken ? kInvalid : kTaken;
        });
    }
    // The switch on the housing decides.
    onWrite("LineConfig0Reg", [](const RegisterMemory &, qint64) { return kDenied; });
    const auto whileGrabbing = [this](const RegisterMemory &, qint64) {
        return isGrabbing() ? kDenied : kTaken;
    };
    onWrite("LineConfig1Reg", whileGrabbing);
    onWrite("TestPatternReg", whileGrabbing);
    onWrite("FlashModeReg", [this](const RegisterMemory &memory, qint64) {
        return value(memory, "PollingEnableReg") ? kDenied : kTaken;
    });
    onWrite("UploadTestRawPictureEnableReg", [this](const RegisterMemory &memory, qint64 on) {
        return on && !value(memory, "FtpProtocalEnableReg") ? kDenied : kTaken;
    });
    onWrite("FocusModeReg",
            [this](const RegisterMemory &, qint64) { return !m_focusEnd ? kTaken : kBusy; });
    onWrite("UserSetAddReg", [this](const RegisterMemory &memory, qint64) {
        return freeUserSet(memory) < 0 ? kDenied : kTaken;
    });
    onWrite("UserSetDeleteReg", [this](const RegisterMemory &memory, qint64) {
        const qint64 set = value(memory, "UserSetSelectorReg");
        return set < 2 || set == value(memory, "UserSetDefaultReg") ? kDenied : kTaken;
    });
    const auto whenMissing = [this](const RegisterMemory &memory, qint64) {
        return isPresent(memory, value(memory, "UserSetSelectorReg")) ? kTaken : kDenied;
    };
    onWrite("UserSetLoadReg", whenMissing);
    onWrite("UserSetSaveReg", whenMissing);
    onWrite("UserSetRecoverDefaultReg", whenMissing);
}

void CodeReaderBehaviour::addSettings()
{
    for (const char *code : kPharmacodes) {
        onSetting(code, [this, code](RegisterMemory &memory) { dropBarCodes(memory, code); });
    }
    for (const char *code : kBarCodes) {
        onSetting(code, [this, code](RegisterMemory &memory) { dropPharmacode(memory, code); });
    }
    onSetting("LightingEnableReg", [this](RegisterMemory &memory) {
        if (value(memory, "LightingSelectorReg") == m_light.m_nSegments) {
            lightAll(memory, value(memory, "LightingEnableReg", m_light.m_nSegments) != 0);
        }
        followLighting(memory);
    });
    onSetting("TriggerModeReg", [this](RegisterMemory &memory) {
        setValue(memory, "MultiframeHandleModeReg", value(memory, "TriggerModeReg") ? 1 : 0);
    });
    onSetting("RunningModeReg", [this](RegisterMemory &memory) {
        if (value(memory, "RunningModeReg") == kSetupMode) {
            setValue(memory, "CommunicationProtocolsReg", kHostProtocol);
        }
    });
    onSetting("LanguageReg", [this](RegisterMemory &memory) {
        setValue(memory, "ScreenLanguageReg", value(memory, "LanguageReg") ? 0 : 1);
    });
    onSetting("ExposureAutoReg", [this](RegisterMemory &memory) {
        if (value(memory, "ExposureAutoReg") == 1) {
            setValue(memory, "ExposureTimeRawReg", value(memory, "BrightnessReg") * 90);
            setValue(memory, "ExposureAutoReg", 0);
        }
    });
    onSetting("GainAutoReg", [this](RegisterMemory &memory) {
        if (value(memory, "GainAutoReg") == 1) {
            registers().setNumber(memory, "GainReg",
                                  2.0 + double(value(memory, "BrightnessReg")) / 32);
            setValue(memory, "GainAutoReg", 0);
        }
    });
    onSetting("BalanceWhiteAutoReg", [this](RegisterMemory &memory) {
        static const double kRatios[] = {1.75, 1.0, 2.125};
        if (value(memory, "BalanceWhiteAutoReg") == 1) {
            for (int colour = 0; colour < 3; ++colour) {
                registers().setNumber(memory, "BalanceRatioReg", kRatios[colour], colour);
            }
            setValue(memory, "BalanceWhiteAutoReg", 0);
        }
    });
}

void CodeReaderBehaviour::addCommands()
{
    onRestart("RecoverFactoryReg", [this](RegisterMemory &) { m_bRecoverFactory = true; });
    onCommand("SingleTriggerReg", [this](RegisterMemory &memory) { countImages(memory, 1); });
    onCommand("LineTriggerSoftwareReg", [](RegisterMemory &) {});
    onCommand("StatisticsResetReg", [this](RegisterMemory &memory) {
        setValue(memory, "FrameCountReg", 0);
        countImages(memory, 0);
    });
    if (m_light.m_bCommands) {
        onCommand("LightingAllOnReg", [this](RegisterMemory &memory) { lightAll(memory, true); });
        onCommand("LightingAllOffReg", [this](RegisterMemory &memory) { lightAll(memory, false); });
    }
    onCommand("FocusModeReg", [this](RegisterMemory &memory) { startFocus(memory); });
    onCommand("FocusStepPlusReg", [this](RegisterMemory &memory) { stepFocus(memory, 1); });
    onCommand("FocusStepMinusReg", [this](RegisterMemory &memory) { stepFocus(memory, -1); });
    onCommand("SmartTuneReg", [this](RegisterMemory &memory) { startTuning(memory); });
    onCommand("SelfAdaptParamAdjustStartReg",
              [this](RegisterMemory &memory) { startTuning(memory); });
    onCommand("SmartTuneStopReg", [this](RegisterMemory &memory) {
        m_tuneStart.reset();
        setValue(memory, "SmartTuneProgressReg", 0);
    });
    onCommand("GevTimestampControlLatchReg", [this](RegisterMemory &memory) {
        setValue(memory, "GevTimestampValueReg", nanoseconds());
    });
}

void CodeReaderBehaviour::addUserSetCommands()
{
    onCommand("UserSetAddReg", [this](RegisterMemory &memory) {
        const int set = freeUserSet(memory);
        userSets().save(memory, set);
        setPresent(memory, set, true);
        setValue(memory, "UserSetSelectorReg", set);
    });
    onCommand("UserSetDeleteReg", [this](RegisterMemory &memory) {
        const qint64 set = value(memory, "UserSetSelectorReg");
        userSets().copy(0, int(set));
        setPresent(memory, set, false);
        setValue(memory, "UserSetSelectorReg", 1);
    });
    onCommand("UserSetRecoverReg", [this](RegisterMemory &memory) { userSets().load(memory, 0); });
    onCommand("UserSetRecoverPartlyReg", [this](RegisterMemory &memory) { recoverPartly(memory); });
    onCommand("UserSetRecoverDefaultReg", [this](RegisterMemory &memory) {
        userSets().copy(0, int(value(memory, "UserSetSelectorReg")));
    });
    onCommand("UserSetRecoverFactoryReg", [this](RegisterMemory &memory) {
        for (int set = 1; set < kReaderUserSets; ++set) {
            userSets().copy(0, set);
        }
        userSets().load(memory, 0);
        setValue(memory, "UserSetPresentWord", kFactorySets);
        setValue(memory, "UserSetSelectorReg", 1);
        setValue(memory, "UserSetDefaultReg", 0);
    });
}

void CodeReaderBehaviour::addMoving()
{
    onMoving("DeviceRunTimeReg", [this](RegisterMemory &memory) {
        setValue(memory, "DeviceRunTimeReg", qint64(seconds()));
    });
    onMoving("ProcessorLoadReg", [this](RegisterMemory &memory) {
        const int wobble = qRound(4 * std::sin(std::floor(seconds())));
        setValue(memory, "ProcessorLoadReg", (isGrabbing() ? 55 : 12) + wobble);
    });
    for (const char *counter :
         {"FrameCountReg", "ReadCountReg", "NoReadCountReg", "DecodeTimeReg", "StorageUsedReg"}) {
        onMoving(counter, [this](RegisterMemory &memory) { takeFrames(memory); });
    }
    for (const QByteArray &name : m_qualityRegisters) {
        onMoving(name.constData(), [this](RegisterMemory &memory) { measureQuality(memory); });
    }
    onMoving("LineStatusAllReg", [this](RegisterMemory &memory) {
        setValue(memory, "LineStatusAllReg", isGrabbing() && int(seconds()) % 2 ? 3 : 1);
    });
    onMoving("AutoFocusStatReg", [this](RegisterMemory &memory) { followFocus(memory); });
    onMoving("FocusPositionReg", [this](RegisterMemory &memory) { followFocus(memory); });
    onMoving("SmartTuneProgressReg", [this](RegisterMemory &memory) { followTuning(memory); });
}

void CodeReaderBehaviour::takeFrames(RegisterMemory &memory)
{
    const bool waits =
        value(memory, "TriggerModeReg") == 1 && value(memory, "TriggerSourceReg") != kSelfTrigger;
    const qint64 images = frames(memory);
    if (isGrabbing() && images > m_nCounted) {
        countImages(memory, waits ? 0 : images - m_nCounted);
        m_nCounted = images;
    }
}

void CodeReaderBehaviour::countImages(RegisterMemory &memory, qint64 images) const
{
    const qint64 all = value(memory, "FrameCountReg") + images;
    setValue(memory, "FrameCountReg", all);
    setValue(memory, "NoReadCountReg", all / kNoReadEvery);
    setValue(memory, "ReadCountReg", all - all / kNoReadEvery);
    setValue(memory, "DecodeTimeReg", all ? 18 + all % 7 : 0);
    setValue(memory, "StorageUsedReg", qMin<qint64>(100, 17 + all / 500));
}

void CodeReaderBehaviour::measureQuality(RegisterMemory &memory) const
{
    const qint64 wobble = isGrabbing() ? frames(memory) % 5 - 2 : 0;
    for (const QByteArray &name : m_qualityRegisters) {
        const FieldRow *row = registers().table().findField(name);
        setValue(memory, name.constData(), qMax<qint64>(0, row->m_spec.m_values.first() + wobble));
    }
}

void CodeReaderBehaviour::stepFocus(RegisterMemory &memory, int direction) const
{
    const qint64 wanted =
        value(memory, "FocusPositionReg") + direction * value(memory, "FocusStepReg");
    setValue(memory, "FocusPositionReg", qBound<qint64>(0, wanted, 1000));
}

void CodeReaderBehaviour::startFocus(RegisterMemory &memory)
{
    setValue(memory, "AutoFocusStatReg", 0);
    m_focusEnd = seconds() + kFocusSeconds;
    if (isQuiet()) {
        m_focusEnd = 0; // nothing moves by itself later, so the work is done at once
        followFocus(memory);
    }
}

void CodeReaderBehaviour::followFocus(RegisterMemory &memory)
{
    if (m_focusEnd && seconds() >= *m_focusEnd) {
        m_focusEnd.reset();
        setValue(memory, "FocusPositionReg", kBestFocus);
        setValue(memory, "AutoFocusStatReg", 1);
    }
}

void CodeReaderBehaviour::startTuning(RegisterMemory &memory)
{
    setValue(memory, "SmartTuneProgressReg", 0);
    m_tuneStart = seconds();
    if (isQuiet()) {
        *m_tuneStart -= kTuneSeconds; // as with the focus
        followTuning(memory);
    }
}

void CodeReaderBehaviour::followTuning(RegisterMemory &memory)
{
    if (!m_tuneStart) {
        return;
    }
    const double part = (seconds() - *m_tuneStart) / kTuneSeconds;
    setValue(memory, "SmartTuneProgressReg", qBound(0, int(part * 100), 100));
    if (part >= 1) {
        m_tuneStart.reset();
        setValue(memory, "ExposureTimeRawReg", 6400);
        registers().setNumber(memory, "GainReg", 4.5);
    }
}

void CodeReaderBehaviour::followLighting(RegisterMemory &memory) const
{
    qint64 bitmap = 0;
    for (int segment = 0; segment < m_light.m_nSegments; ++segment) {
        bitmap |= qint64(value(memory, "LightingEnableReg", segment) != 0) << segment;
    }
    const bool all = bitmap == (1 << m_light.m_nSegments) - 1;
    setValue(memory, "LightingEnableReg", all, m_light.m_nSegments);
    if (m_light.m_bBitmap) {
        setValue(memory, "LightingBitmapReg",
                 bitmap | qint64(all && m_light.m_bAll) << m_light.m_nSegments);
    }
}

void CodeReaderBehaviour::lightAll(RegisterMemory &memory, bool on) const
{
    for (int segment = 0; segment < m_light.m_nSegments; ++segment) {
        setValue(memory, "LightingEnableReg", on, segment);
    }
    followLighting(memory);
}

void CodeReaderBehaviour::dropBarCodes(RegisterMemory &memory, const char *pharmacode) const
{
    if (value(memory, pharmacode)) {
        for (const char *code : kBarCodes) {
            setValue(memory, code, 0);
        }
    }
}

void CodeReaderBehaviour::dropPharmacode(RegisterMemory &memory, const char *barCode) const
{
    if (value(memory, barCode)) {
        for (const char *code : kPharmacodes) {
            setValue(memory, code, 0);
        }
    }
}

bool CodeReaderBehaviour::isPresent(const RegisterMemory &memory, qint64 set) const
{
    return set >= 0 && set < kReaderUserSets
        && (value(memory, "UserSetPresentWord") >> set & 1) != 0;
}

void CodeReaderBehaviour::setPresent(RegisterMemory &memory, qint64 set, bool on) const
{
    const qint64 bit = qint64(1) << set;
    const qint64 others = value(memory, "UserSetPresentWord") & ~bit;
    setValue(memory, "UserSetPresentWord", on ? others | bit : others);
}

int CodeReaderBehaviour::freeUserSet(const RegisterMemory &memory) const
{
    for (int set = 1; set < kReaderUserSets; ++set) {
        if (!isPresent(memory, set)) {
            return set;
        }
    }
    return -1;
}

void CodeReaderBehaviour::recoverPartly(RegisterMemory &memory)
{
    QVector<RegisterRow> kept;
    for (RegisterRow row : registers().table().registers()) {
        if (row.m_nAddress >= kCommunicationBegin && row.m_nAddress < kCommunicationEnd) {
            row.m_initial = memory.read(row.m_nAddress, quint32(row.m_initial.size()));
            kept.append(row);
        }
    }
    userSets().load(memory, 0);
    for (const RegisterRow &row : qAsConst(kept)) {
        memory.write(row.m_nAddress, row.m_initial);
    }
}
