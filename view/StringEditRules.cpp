#include "view/StringEditRules.h"

#include <QLineEdit>
#include <QRegExpValidator>
#include <QSet>
#include <QString>

#include <algorithm>
#include <iterator>

namespace {

// No unified ideograph anywhere.
const QChar ASCII_PATTERN[] = {u'^', u'[', u'^', u'\u4e00', u'-', u'\u9fa5',
                               u']', u'{', u'0', u',',      u'}', u'$'};

QString withoutIdeographs()
{
    return QString(ASCII_PATTERN, int(std::size(ASCII_PATTERN)));
}

/// Texts that start or end a trigger or frame a result: the device compares them byte by byte.
bool isTriggerOrFrameText(const QString &strNodeName)
{
    static const QSet<QString> names = {
        QStringLiteral("TcpStartTriggerStr"),
        QStringLiteral("UdpStartTriggerStr"),
        QStringLiteral("SerialStartTriggerStr"),
        QStringLiteral("TcpEndTriggerStr"),
        QStringLiteral("UdpEndTriggerStr"),
        QStringLiteral("SerialEndTriggerStr"),
        QStringLiteral("SerialFormatString"),
        QStringLiteral("UsbFormatString"),
        QStringLiteral("HidNoReadText"),
        QStringLiteral("HidStartText"),
        QStringLiteral("HidStopText"),
        QStringLiteral("UsbStartText"),
        QStringLiteral("UsbStopText"),
        QStringLiteral("UsbNoReadText"),
        QStringLiteral("TcpStartText"),
        QStringLiteral("TcpStopText"),
        QStringLiteral("SerialStartText"),
        QStringLiteral("SerialStopText"),
        QStringLiteral("TcpServerStartText"),
        QStringLiteral("TcpServerStopText"),
        QStringLiteral("ProfinetStartText"),
        QStringLiteral("ProfinetStopText"),
        QStringLiteral("MelsecStartText"),
        QStringLiteral("MelsecStopText"),
        QStringLiteral("ModBusStartText"),
        QStringLiteral("ModBusStopText"),
        QStringLiteral("EthernetIpStartText"),
        QStringLiteral("EthernetIpStopText"),
        QStringLiteral("HeartbeatText"),
        QStringLiteral("TcpServerHeartbeatText"),
        QStringLiteral("TcpClientStartTriggerStr"),
        QStringLiteral("TcpHandshakeRequestStr"),
        QStringLiteral("TcpHandshakeResponseStr"),
        QStringLiteral("UdpHandshakeRequestStr"),
        QStringLiteral("UdpHandshakeResponseStr"),
        QStringLiteral("TcpClientHandshakeRequestStr"),
        QStringLiteral("TcpClientHandshakeResponseStr"),
        QStringLiteral("TcpClientEndTriggerStr"),
        QStringLiteral("TcpStartTriggerHex"),
        QStringLiteral("UdpStartTriggerHex"),
        QStringLiteral("SerialStartTriggerHex"),
        QStringLiteral("TcpClientStartTriggerHex"),
        QStringLiteral("TcpEndTriggerHex"),
        QStringLiteral("TcpClientEndTriggerHex"),
        QStringLiteral("SerialEndTriggerHex"),
        QStringLiteral("UdpEndTriggerHex"),
        QStringLiteral("UsbStartTriggerStr"),
        QStringLiteral("UsbEndTriggerStr"),
    };
    return names.contains(strNodeName);
}

struct StringRule
{
    bool (*applies)(const QString &strNodeName);
    QString pattern; ///< empty: no validator
    bool bInputMethod;
    QLineEdit::EchoMode echoMode;
};

const StringRule *findRule(const QString &strNodeName)
{
    // The first match counts. The placeholders of DeviceUserID are not filled in: devices take any text for it.
    static const StringRule rules[] = {
        {[](const QString &name) { return name == QLatin1String("FtpUserPasswd"); },
         withoutIdeographs(), false, QLineEdit::PasswordEchoOnEdit},
        {isTriggerOrFrameText, withoutIdeographs(), false, QLineEdit::Normal},
        {[](const QString &name) { return name == QLatin1String("FtpFormatDirectoryString"); },
         QStringLiteral("^(^(?!.*//)(.{1,256}))$"), false, QLineEdit::Normal},
        {[](const QString &name) { return name == QLatin1String("DeviceUserID"); },
         QStringLiteral("^(^(?!.*%1)^(?!.*%2)(.{0,}))$"), true, QLineEdit::Normal},
        {[](const QString &name) { return name == QLatin1String("FtpUserName"); }, QString(), false,
         QLineEdit::Normal},
    };
    const auto it = std::find_if(std::begin(rules), std::end(rules),
                                 [&](const StringRule &rule) { return rule.applies(strNodeName); });
    return it == std::end(rules) ? nullptr : &*it;
}

} // namespace

void applyStringEditRules(QLineEdit *pEdit, const QString &strNodeName)
{
    const StringRule *const pRule = findRule(strNodeName);
    if (!pRule) {
        return;
    }
    if (!pRule->pattern.isEmpty()) {
        const QRegExp expression(pRule->pattern, Qt::CaseSensitive, QRegExp::RegExp);
        pEdit->setValidator(new QRegExpValidator(expression, pEdit));
    }
    pEdit->setEchoMode(pRule->echoMode); // turns the input method on or off by itself
    if (!pRule->bInputMethod) {
        pEdit->setAttribute(Qt::WA_InputMethodEnabled, false);
    }
}
