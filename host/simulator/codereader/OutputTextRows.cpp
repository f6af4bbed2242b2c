#include "host/simulator/codereader/CodeReader.h"
#include "host/simulator/codereader/Protocols.h"
#include "host/simulator/description/PlainRows.h"

namespace {

constexpr quint32 kTextLength = 64;

/// A text or switch that several protocols have, by the end of its name.
struct PartRow
{
    const char *ending;
    const char *description; ///< %1 is the protocol
    const char *nameCn;
    const char *descriptionCn;
    const char *initial; ///< of a text; null for a switch
};

const PartRow kFraming[] = {
    {"StartText", "Text ahead of each result by %1.", "起始文本",
     "通过%1发送的每个结果之前的文本。", ""},
    {"StopText", "Text behind each result by %1.", "结束文本", "通过%1发送的每个结果之后的文本。",
     ""},
};

const PartRow kNoRead[] = {
    {"NoReadText", "Text that stands for a missing result by %1.", "未读到文本",
     "通过%1发送的、代替缺失结果的文本。", "NoRead"},
};

const PartRow kDetails[] = {
    {"strNoReadText", "Text that stands for a missing result by %1.", "未读到文本",
     "通过%1发送的、代替缺失结果的文本。", "NoRead"},
    {"Delimiter", "Text between two codes of a result by %1.", "分隔符",
     "通过%1发送的结果中两个条码之间的文本。", ";"},
    {"BarcodeNameEnable", "Sends the type of each code by %1.", "输出码制",
     "通过%1输出每个条码的码制。", nullptr},
    {"BarcodePositionEnable", "Sends the position of each code by %1.", "输出位置",
     "通过%1输出每个条码的位置。", nullptr},
    {"BarcodeAngleEnable", "Sends the angle of each code by %1.", "输出角度",
     "通过%1输出每个条码的角度。", nullptr},
    {"BarcodeMainPackageIDEnable", "Sends the number of the package by %1.", "输出包号",
     "通过%1输出包的编号。", nullptr},
    {"OutputNoRead", "Sends a text when no code was read, by %1.", "输出未读到",
     "未读到条码时通过%1输出文本。", nullptr},
    {"StopCR", "Ends each result by %1 with a carriage return.", "结束回车",
     "通过%1发送的每个结果以回车结束。", nullptr},
    {"StopLF", "Ends each result by %1 with a line feed.", "结束换行",
     "通过%1发送的每个结果以换行结束。", nullptr},
    {"StopCRLF", "Ends each result by %1 with a carriage return and a line feed.", "结束回车换行",
     "通过%1发送的每个结果以回车换行结束。", nullptr},
};

QByteArray filled(const char *text, const char *protocol)
{
    return QByteArray(text).replace("%1", protocol);
}

void addPart(FeatureTable &t, const ProtocolRow &protocol, const PartRow &part)
{
    // The TCP client's switch has another name than those of the rest.
    static const QByteArray kUsual = "TcpBarcodeNameEnable";
    QByteArray name = QByteArray(protocol.m_strPrefix) + part.ending;
    name = name == kUsual ? QByteArray("BcrNameEnable") : name;
    const QByteArray description = filled(part.description, protocol.m_strTitle);
    const QByteArray nameCn = QByteArray(protocol.m_strTitleCn) + part.nameCn;
    const QByteArray descriptionCn = filled(part.descriptionCn, protocol.m_strTitleCn);
    const Texts texts{description.constData(), nameCn.constData(), descriptionCn.constData()};
    if (part.initial) {
        t.string(name.constData(), texts, Text(kTextLength, part.initial))
            .available(protocol.m_strAvailable)
            .streamable()
            .custom();
    } else {
        t.boolean(name.constData(), texts)
            .in(Int(4, 0))
            .available(protocol.m_strAvailable)
            .custom();
    }
}

} // namespace

void addReaderOutputTextRows(FeatureTable &table)
{
    table.category("OutputTextControl",
                   {"Texts and parts of the results, for each protocol.", "输出文本",
                    "各协议结果的文本与组成部分。"},
                   0x32000, "CommunicationControl");
    const struct
    {
        const char *prefix;
        bool hasDetails;
        bool hasNoRead;
    } rows[] = {
        {"Tcp", true, false},         {"TcpServer", true, false}, {"Serial", true, false},
        {"Profinet", false, false},   {"Melsec", false, false},   {"ModBus", false, false},
        {"EthernetIp", false, false}, {"Hid", false, true},       {"Usb", false, true},
    };
    for (const auto &row : rows) {
        const ProtocolRow &protocol = readerProtocol(row.prefix);
        for (const PartRow &part : kFraming) {
            addPart(table, protocol, part);
        }
        if (row.hasNoRead) {
            addPart(table, protocol, kNoRead[0]);
        }
        if (row.hasDetails) {
            for (const PartRow &part : kDetails) {
                addPart(table, protocol, part);
            }
        }
    }
    const QVector<StringRow> strings = {
        {"HeartbeatText",
         {"Text by which the TCP client shows that it lives.", "心跳文本",
          "TCP客户端表明在线所用的文本。"},
         kTextLength,
         "alive",
         RowOptions().available("TcpSelected")},
        {"TcpServerHeartbeatText",
         {"Text by which the TCP server shows that it lives.", "TCP服务器心跳文本",
          "TCP服务器表明在线所用的文本。"},
         kTextLength,
         "alive",
         RowOptions().available("TcpServerSelected")},
    };
    addRows(table, strings);
}
