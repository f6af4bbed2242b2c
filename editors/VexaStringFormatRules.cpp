#include "editors/VexaStringFormatRules.h"

#include <QCoreApplication>
#include <QHash>
#include <QRegExp>
#include <QRegularExpression>

#include <algorithm>
#include <iterator>

namespace {

/// The first row whose word the name holds; null when there is none.
template<typename Row, std::size_t nRows>
const Row *rowOf(const Row (&rows)[nRows], const QString &strName)
{
    const auto it = std::find_if(std::begin(rows), std::end(rows), [&](const Row &row) {
        return strName.contains(QLatin1String(row.word));
    });
    return it == std::end(rows) ? nullptr : it;
}

constexpr char DIRECTORY[] = "Directory";
constexpr char RESULT[] = "Result";

} // namespace

VexaStringFormatRules::Form VexaStringFormatRules::formOf(const QString &strCustomNode)
{
    static const struct
    {
        const char *word;
        Form form;
    } forms[] = {
        {"Emmc", FORM_TAG_MENU},
        {DIRECTORY, FORM_TAG_MENU},
        {RESULT, FORM_TAG_MENU},
        {"TriggerHex", FORM_TRIGGER_BYTES},
    };
    const auto *const pRow = rowOf(forms, strCustomNode);
    return pRow ? pRow->form : FORM_OUTPUT;
}

const char *VexaStringFormatRules::titleOf(const QString &strCustomNode)
{
#define TITLE(node, text)                                                                          \
    {                                                                                              \
        QStringLiteral(node), QT_TRANSLATE_NOOP("VexaStringFormatWidget", text)                    \
    }
    static const QHash<QString, const char *> titles = {
        TITLE("Custom_TcpFormatString", "TCP Output Format"),
        TITLE("Custom_SerialFormatString", "Serial Output Format"),
        TITLE("Custom_TcpServerFormatString", "TCP Server Output Format"),
        TITLE("Custom_MelsecFormatString", "MELSEC Output Format"),
        TITLE("Custom_ProfinetFormatString", "Profinet Output Format"),
        TITLE("Custom_EthernetIpFormatString", "EthernetIp Output Format"),
        TITLE("Custom_ModBusFormatString", "ModBus Output Format"),
        TITLE("Custom_FinsFormatString", "Fins Output Format"),
        TITLE("Custom_ResSet_Emmc_Picture_Name", "Local Picture Name Format"),
        TITLE("Custom_ResSet_Ftp_Picture_Name", "FTP Picture Name Format"),
        TITLE("Custom_UdpFormatString", "UDP Output Format"),
        TITLE("Custom_UsbFormatString", "USB Output Format"),
        TITLE("Custom_SlmpFormatString", "SLMP Output Format"),
        TITLE("Custom_HidFormatString", "HID Output Format"),
        TITLE("Custom_BaseOrReceiverFormatString", "BaseOrReceiver Output Format"),
        TITLE("Custom_UdpStartTriggerHex", "Udp Trigger Start String"),
        TITLE("Custom_UdpEndTriggerHex", "Udp Trigger End String"),
        TITLE("Custom_TcpStartTriggerHex", "Tcp Trigger Start String"),
        TITLE("Custom_TcpEndTriggerHex", "Tcp Trigger End String"),
        TITLE("Custom_SerialStartTriggerHex", "Serial Trigger Start String"),
        TITLE("Custom_SerialEndTriggerHex", "Serial Trigger End String"),
        TITLE("Custom_TcpClientStartTriggerHex", "Tcp Client Start Trigger Hex"),
        TITLE("Custom_TcpClientEndTriggerHex", "Tcp Client End Trigger Hex"),
        TITLE("Custom_RF24FormatString", "2.4G Output Format"),
        TITLE("Custom_FtpFormatDirectoryString", "FTP Upload Directory String"),
        TITLE("Custom_FtpFormatResultString", "FTP Result Content"),
    };
#undef TITLE
    return titles.value(strCustomNode, nullptr);
}

QString VexaStringFormatRules::tagText(const QString &strCustomNode, const QString &strEntry)
{
    static const struct
    {
        const char *word;
        const char *text;
    } separators[] = {{DIRECTORY, "<%1>/"}, {RESULT, "<%1>,"}};
    const auto *const pRow = rowOf(separators, strCustomNode);
    return QString::fromLatin1(pRow ? pRow->text : "<%1>").arg(strEntry);
}

QString VexaStringFormatRules::triggerFormatNode(const QString &strCustomNode)
{
    static const struct
    {
        const char *word;
        const char *node;
    } nodes[] = {
        {"TcpStart", "TcpStartTriFormat"},
        {"TcpEnd", "TcpEndTriggerFormat"},
        {"UdpStart", "UdpStartTriFormat"},
        {"UdpEnd", "UdpEndTriggerFormat"},
        {"SerialStart", "SerialStartTriFormat"},
        {"SerialEnd", "SerialEndTriggerFormat"},
        {"TcpClientStart", "TcpClientStartTriFormat"},
        {"TcpClientEnd", "TcpClientEndTriggerFormat"},
    };
    const auto *const pRow = rowOf(nodes, strCustomNode);
    return pRow ? QString::fromLatin1(pRow->node) : QString();
}

bool VexaStringFormatRules::hasEmptyLevel(const QString &strCustomNode, const QString &strText)
{
    return strCustomNode.contains(QLatin1String(DIRECTORY))
        && strText.contains(QLatin1String("//"));
}

bool VexaStringFormatRules::hasIdeographs(const QString &strText)
{
    static const QRegularExpression ideographs(QStringLiteral("[\\x{4e00}-\\x{9fa5}]+"));
    return ideographs.match(strText).hasMatch();
}

bool VexaStringFormatRules::isFtpPictureName(const QString &strFormatNode)
{
    return strFormatNode == QLatin1String("ResSet_Ftp_Picture_Name");
}

VexaStringFormatRules::Refusal VexaStringFormatRules::refusal(const QString &strFormatNode,
                                                              const QString &strText)
{
    // What a file name must not hold; a directory may hold ":" and "/".
    static const QRegExp inNames(QStringLiteral(
        uR"([`~!@#$%^&-+=\?:"|,/;'\[\]·~！@#￥%……&*（）+=\{\}\|《》？：“”【】、；‘'，。\、\-])"));
    static const QRegExp inDirectories(QStringLiteral(
        uR"([`~!@#$%^&-+=\?"|,;'\[\]·~！@#￥%……&*（）+=\{\}\|《》？：“”【】、；‘'，。\、\-])"));
    if (isFtpPictureName(strFormatNode)) {
        if (strText.isEmpty()) {
            return REFUSED_EMPTY;
        }
        return inNames.indexIn(strText) >= 0 ? REFUSED_CHARACTERS : REFUSED_NOT;
    }
    const bool bDirectory = strFormatNode == QLatin1String("FtpFormatDirectoryString");
    return bDirectory && inDirectories.indexIn(strText) >= 0 ? REFUSED_CHARACTERS : REFUSED_NOT;
}

QString VexaStringFormatRules::warning(Refusal eRefusal)
{
    const char *pText = nullptr;
    switch (eRefusal) {
    case REFUSED_NOT:
        return QString();
    case REFUSED_EMPTY:
        pText = QT_TRANSLATE_NOOP("VexaStringFormatWidget",
                                  "The FTP image name cannot be empty. Please reset it!");
        break;
    case REFUSED_CHARACTERS:
        pText = QT_TRANSLATE_NOOP("VexaStringFormatWidget",
                                  "Special characters exist in the setting content, please modify "
                                  "and try again!");
        break;
    }
    return QCoreApplication::translate("VexaStringFormatWidget", pText);
}
