#include "tree/WriteNodeRules.h"

namespace {

constexpr qint64 TEST_PATTERN_OPEN = 20;

struct NodeRules
{
    const char *nodeName;
    WriteRules rules;
};

const NodeRules NODE_RULES[] = {
    {"ProfinetEnable", WriteRule::TellsProfinetRestart},
    {"GevSCPSPacketSize", WriteRule::AdvisesPacketSize},
    {"DeviceStreamChannelPacketSize", WriteRule::AdvisesPacketSize},
    {"TCPDestPort", WriteRule::IsPort},
    {"FtpHostPort", WriteRule::IsPort},
    {"TcpServerPort", WriteRule::IsPort},
    {"MelsecServerPort", WriteRule::IsPort},
    {"ModBusServerPort", WriteRule::IsPort},
    {"UdpDestPort", WriteRule::IsPort},
    {"TcpUpgPort", WriteRule::IsPort},
    {"LightingSelector", WriteRule::BelongsToPolling},
    {"LightEnable", WriteRule::BelongsToPolling},
    {"PollingParam", WriteRule::ShowsLoading},
    {"PollingEnable", WriteRule::ShowsLoading | WriteRule::ChangesTarget},
    {"CommunicationProtocols", WriteRule::ShowsLoading | WriteRule::ChangesTarget},
    {"PollingTarget", WriteRule::ChangesTarget},
    {"FlashMode", WriteRule::FailsSilently},
    {"TestPattern", WriteRule::FailsSilently},
    {"LineConfig0", WriteRule::IsLineConfig},
    {"LineConfig1", WriteRule::IsLineConfig},
    {"BleOutput", WriteRule::TakesEffectAfterRestart},
    {"ResSet_Ftp_Picture_Name", WriteRule::NeverEmpty},
    {"UserSetRecover", WriteRule::AsksWithWarning},
    {"UserSetRecoverPartly", WriteRule::AsksWithWarning},
};

} // namespace

WriteRules writeRulesOf(const QString &nodeName)
{
    for (const NodeRules &row : NODE_RULES) {
        if (nodeName == QLatin1String(row.nodeName)) {
            return row.rules;
        }
    }
    return {};
}

QString testPatternState(qint64 value)
{
    return value == TEST_PATTERN_OPEN ? QStringLiteral("test_open") : QStringLiteral("test_close");
}
