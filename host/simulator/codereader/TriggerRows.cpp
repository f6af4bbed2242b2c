#include "host/simulator/codereader/CodeReader.h"
#include "host/simulator/description/PlainRows.h"

void addReaderTriggerRows(FeatureTable &table)
{
    table.category("TriggerControl",
                   {"Features of the triggers that start a reading.", "触发控制",
                    "控制启动读码的触发的特征。"},
                   0x14000);
    table.intSwissKnife("TriggerActive", "MODE = 1", {{"MODE", "TriggerModeReg"}});
    table.intSwissKnife("TriggerFromLine", "(SOURCE >= 1) && (SOURCE <= 2)",
                        {{"SOURCE", "TriggerSourceReg"}});
    table.intSwissKnife("SelfTriggered", "SOURCE = 13", {{"SOURCE", "TriggerSourceReg"}});
    table.intSwissKnife("SelfTriggerAllowed", "MODE <> 3", {{"MODE", "CodeReadModeReg"}});
    table.intSwissKnife("CountingTriggered", "SOURCE = 7", {{"SOURCE", "TriggerSourceReg"}});
    const QVector<ChoiceRow> choices = {
        {"TriggerMode",
         {"Controls whether readings wait for a trigger.", "触发模式", "控制读码是否等待触发。"},
         {{"Off", 0, "关闭"}, {"On", 1, "开启"}},
         0,
         RowOptions().standard()},
        {"TriggerSource",
         {"Specifies the signal that is the source of the trigger. A self trigger cannot be had "
          "in burst reading.",
          "触发源", "指定触发信号的来源，连读模式下不能使用自触发。"},
         {{"Line0", 1, "输入线0"},
          {"Line1", 2, "输入线1"},
          {"Software", 4, "软触发"},
          {"Counter0", 7, "计数器0"},
          {"TcpServer", 8, "TCP服务器"},
          {"UdpServer", 9, "UDP服务器"},
          {"SerialPort", 10, "串口"},
          {"SelfTrigger", 13, "自触发", {"SelfTriggerAllowed"}}},
         4,
         RowOptions().standard().invalidatedBy("CodeReadMode")},
        {"HardTriggerSource",
         {"Input line that a hardware trigger comes from.", "硬触发源", "硬件触发所用的输入线。"},
         {{"Line0", 0, "输入线0"}, {"Line1", 1, "输入线1"}},
         0,
         RowOptions().available("TriggerFromLine")},
        {"HardwareTriggerActivation",
         {"Edge or level of the input that triggers.", "硬触发沿", "激活触发的输入边沿或电平。"},
         {{"RisingEdge", 0, "上升沿"},
          {"FallingEdge", 1, "下降沿"},
          {"LevelHigh", 2, "高电平"},
          {"LevelLow", 3, "低电平"}},
         0,
         RowOptions().available("TriggerFromLine")},
        {"CountSource",
         {"Input whose pulses are counted for the counting trigger.", "计数源",
          "计数触发所计数的输入信号。"},
         {{"Line0", 0, "输入线0"}, {"Line1", 1, "输入线1"}},
         0,
         RowOptions().available("CountingTriggered")},
        {"MultiframeHandleMode",
         {"How the frames of one trigger are handled. Without a trigger each frame stands alone.",
          "多帧处理模式", "同一次触发多帧图像的处理方式，无触发时逐帧处理。"},
         {{"EachFrame", 0, "逐帧处理"},
          {"WholeTrigger", 1, "整组处理"},
          {"BestFrame", 2, "取最佳帧"}},
         0,
         RowOptions().invalidatedBy("TriggerMode")},
    };
    addRows(table, choices);
    const QVector<CommandRow> commands = {
        {"TriggerSoftware",
         {"Generates an internal trigger.", "软触发", "产生一次内部触发。"},
         RowOptions().standard()},
        {"LineTriggerSoftware",
         {"Generates a trigger of the output line.", "输出线软触发", "产生一次输出线触发。"},
         RowOptions().expert()},
        {"SingleTrigger",
         {"Takes and reads one image.", "单次触发", "采集并读取一幅图像。"},
         RowOptions().expert()},
    };
    addRows(table, commands);
    const QVector<NumberRow> numbers = {
        {"TriggerSoftwareCount",
         {"Number of software triggers since the device was switched on.", "软触发计数",
          "设备上电以来的软触发次数。"},
         0,
         "",
         "",
         "",
         RowOptions().readOnly().moving().expert()},
        {"TriggerDelay",
         {"Delay between the reception of the trigger and its effect.", "触发延迟",
          "从接收到触发到触发生效之间的延迟。"},
         0,
         "0",
         "1000000",
         "us",
         RowOptions().standard().shownAs("Linear")},
        {"TriggerEndTimeout",
         {"Time after which a trigger without an end is taken to be over.", "触发结束超时",
          "未收到结束信号的触发被视为结束的时间。"},
         5000,
         "10",
         "60000",
         "ms"},
        {"TriggerSelfTriggerPeriod",
         {"Period of the self trigger.", "自触发周期", "自触发的周期。"},
         200,
         "20",
         "10000",
         "ms",
         RowOptions().available("SelfTriggered")},
        {"CounterValue",
         {"Number of pulses that make one trigger.", "计数值", "构成一次触发的脉冲数。"},
         1,
         "1",
         "65535",
         "",
         RowOptions().standard().available("CountingTriggered")},
    };
    addRows(table, numbers);
    const QVector<SwitchRow> switches = {
        {"CodeTrigEnable",
         {"Ends the trigger as soon as a code was read.", "读到码结束触发",
          "读到条码后立即结束触发。"},
         0},
    };
    addRows(table, switches);
}
