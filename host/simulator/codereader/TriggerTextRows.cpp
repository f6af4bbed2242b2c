#include "host/simulator/codereader/CodeReader.h"
#include "host/simulator/description/PlainRows.h"

namespace {

constexpr quint32 kTextLength = 64;

/// A way by which another system can start and end a reading with a text.
struct ChannelRow
{
    const char *prefix;
    const char *title;
    const char *titleCn;
};

const ChannelRow kChannels[] = {
    {"Tcp", "TCP server", "TCP服务器"},
    {"TcpClient", "TCP client", "TCP客户端"},
    {"Udp", "UDP", "UDP"},
    {"Serial", "serial port", "串口"},
};

/// Either the start or the end of a reading.
struct EventRow
{
    const char *part;
    const char *format; ///< end of the name of the node that tells text from bytes
    const char *title;
    const char *titleCn;
    const char *text;
    const char *bytes;
};

const EventRow kEvents[] = {
    {"Start", "TriFormat", "starts", "开始", "start", "02 53 03"},
    {"End", "TriggerFormat", "ends", "结束", "stop", "02 45 03"},
};

void addEvent(FeatureTable &t, const ChannelRow &channel, const EventRow &event)
{
    const QByteArray stem = QByteArray(channel.prefix) + event.part;
    const QByteArray format = stem + event.format;
    const QByteArray isText = stem + "IsText";
    const QByteArray isBytes = stem + "IsBytes";
    const QByteArray action = QByteArray(event.title) + " a reading by " + channel.title + '.';
    const QByteArray titleCn = QByteArray(channel.titleCn) + "触发" + event.titleCn;

    const QByteArray formatDescription = "Whether a text or bytes are what " + action;
    const QByteArray formatCn = titleCn + "格式";
    const QByteArray formatDescriptionCn = titleCn + "信号为文本或字节。";
    t.enumeration(
         format.constData(),
         {formatDescription.constData(), formatCn.constData(), formatDescriptionCn.constData()})
        .entry("Text", 0, "文本")
        .entry("Hex", 1, "十六进制")
        .custom()
        .in(Int(4, 0));
    const QByteArray formatReg = format + "Reg";
    t.intSwissKnife(isText.constData(), "FORMAT = 0", {{"FORMAT", formatReg.constData()}});
    t.intSwissKnife(isBytes.constData(), "FORMAT = 1", {{"FORMAT", formatReg.constData()}});

    const struct
    {
        QByteArray name;
        QByteArray description;
        QByteArray nameCn;
        QByteArray descriptionCn;
        const char *initial;
        const QByteArray &available;
    } rows[] = {
        {stem + "TriggerStr", "Text that " + action, titleCn + "文本",
         "表示" + titleCn + "的文本。", event.text, isText},
        {stem + "TriggerHex", "Bytes, in hexadecimal, whose arrival " + action, titleCn + "字节",
         "表示" + titleCn + "的十六进制字节。", event.bytes, isBytes},
    };
    for (const auto &row : rows) {
        t.string(
             row.name.constData(),
             {row.description.constData(), row.nameCn.constData(), row.descriptionCn.constData()},
             Text(kTextLength, row.initial))
            .available(row.available.constData())
            .streamable()
            .custom();
    }
}

} // namespace

void addReaderTriggerTextRows(FeatureTable &table)
{
    table.category("TriggerTextControl",
                   {"Texts by which other systems start and end a reading.", "通信触发",
                    "其他系统用于开始和结束读码的文本。"},
                   0x38000, "TriggerControl");
    for (const ChannelRow &channel : kChannels) {
        for (const EventRow &event : kEvents) {
            addEvent(table, channel, event);
        }
    }
    const QVector<StringRow> strings = {
        {"UsbStartTriggerStr",
         {"Text that starts a reading by USB.", "USB触发开始文本", "通过USB开始读码的文本。"},
         kTextLength,
         "start"},
        {"UsbEndTriggerStr",
         {"Text that ends a reading by USB.", "USB触发结束文本", "通过USB结束读码的文本。"},
         kTextLength,
         "stop"},
        {"TcpHandshakeRequestStr",
         {"Text by which a client of the TCP server signs on.", "TCP服务器握手请求",
          "客户端接入TCP服务器时发送的文本。"},
         kTextLength,
         "hello"},
        {"TcpHandshakeResponseStr",
         {"Text by which the TCP server answers a client that signs on.", "TCP服务器握手应答",
          "TCP服务器对接入客户端的应答文本。"},
         kTextLength,
         "ready"},
        {"UdpHandshakeRequestStr",
         {"Text by which a partner signs on by UDP.", "UDP握手请求",
          "对方通过UDP接入时发送的文本。"},
         kTextLength,
         "hello"},
        {"UdpHandshakeResponseStr",
         {"Text by which the device answers a partner by UDP.", "UDP握手应答",
          "设备通过UDP应答对方的文本。"},
         kTextLength,
         "ready"},
        {"TcpClientHandshakeRequestStr",
         {"Text by which the TCP client signs on.", "TCP客户端握手请求",
          "TCP客户端接入时发送的文本。"},
         kTextLength,
         "hello"},
        {"TcpClientHandshakeResponseStr",
         {"Text that the TCP client expects as answer.", "TCP客户端握手应答",
          "TCP客户端所期望的应答文本。"},
         kTextLength,
         "ready"},
    };
    addRows(table, strings);
}
