#include "host/simulator/description/FeatureBuilder.h"
#include "host/simulator/sfnc/StandardRows.h"

namespace {

void addCounters(FeatureTable &t)
{
    t.enumeration("CounterSelector",
                  {"Selects which counter to configure.", "计数器选择", "选择要配置的计数器。"})
        .entry("Counter0", 0, "计数器0")
        .entry("Counter1", 1, "计数器1")
        .expert()
        .in(Int(4, 0));
    // Every counter register is an array of 4-byte elements behind this offset.
    t.intSwissKnife("CounterOffset", "SEL * 4", {{"SEL", "CounterSelectorReg"}});
    t.enumeration("CounterEventSource",
                  {"Selects the events that increment the selected counter.", "计数事件源",
                   "选择使所选计数器递增的事件。"})
        .entry("Off", 0, "关闭")
        .entry("FrameTrigger", 1, "帧触发")
        .entry("FrameStart", 2, "帧开始")
        .entry("Line0", 3, "线路0")
        .expert()
        .in(Int(4, 0).values({1, 0}).offsetBy("CounterOffset", 2))
        .selectedBy("CounterSelector");
    t.enumeration("CounterEventActivation",
                  {"Edge of the event source signal that is counted.", "计数事件沿",
                   "被计数的事件信号边沿。"})
        .entry("RisingEdge", 0, "上升沿")
        .entry("FallingEdge", 1, "下降沿")
        .expert()
        .in(Int(4, 0).offsetBy("CounterOffset", 2))
        .selectedBy("CounterSelector");
    t.enumeration("CounterResetSource",
                  {"Selects the signal that resets the selected counter.", "计数复位源",
                   "选择使所选计数器复位的信号。"})
        .entry("Off", 0, "关闭")
        .entry("AcquisitionStart", 1, "采集开始")
        .entry("Line1", 2, "线路1")
        .expert()
        .in(Int(4, 0).values({1, 0}).offsetBy("CounterOffset", 2))
        .selectedBy("CounterSelector");
    t.command("CounterReset",
              {"Resets the selected counter. Its value is kept in CounterValueAtReset.",
               "计数器复位", "将所选计数器复位，复位前的值保存到复位时计数值。"})
        .expert()
        .runs(Trigger())
        .selectedBy("CounterSelector");
    t.integer("CounterValue",
              {"Current value of the selected counter.", "计数值", "所选计数器的当前值。"})
        .in(Int(4, 0).transient().moving().offsetBy("CounterOffset", 2))
        .range("0", "4294967295", "1")
        .shownAs("PureNumber")
        .expert()
        .selectedBy("CounterSelector");
    t.integer("CounterValueAtReset",
              {"Value of the selected counter when it was reset.", "复位时计数值",
               "所选计数器复位时刻的值。"})
        .in(Int(4, 0).readOnly().invalidatedBy("CounterReset").offsetBy("CounterOffset", 2))
        .shownAs("PureNumber")
        .expert()
        .selectedBy("CounterSelector");
    t.integer("CounterDuration",
              {"Number of counted events before the counter ends.", "计数长度",
               "计数器结束之前计数的事件数。"})
        .in(Int(4, 100).values({100, 1000}).offsetBy("CounterOffset", 2))
        .range("1", "4294967295", "1")
        .shownAs("Logarithmic")
        .expert()
        .selectedBy("CounterSelector");
    t.intSwissKnife("CounterStatusFormula", "(SOURCE = 0) ? 0 : ((VALUE >= DURATION) ? 2 : 1)",
                    {{"SOURCE", "CounterEventSourceReg"},
                     {"VALUE", "CounterValueReg"},
                     {"DURATION", "CounterDurationReg"}});
    t.enumeration("CounterStatus",
                  {"Returns the current status of the selected counter.", "计数器状态",
                   "返回所选计数器的当前状态。"})
        .entry("CounterIdle", 0, "空闲")
        .entry("CounterActive", 1, "计数中")
        .entry("CounterCompleted", 2, "已完成")
        .from("CounterStatusFormula")
        .readOnly()
        .expert()
        .selectedBy("CounterSelector");
}

void addTimers(FeatureTable &t)
{
    t.enumeration("TimerSelector",
                  {"Selects which timer to configure.", "定时器选择", "选择要配置的定时器。"})
        .entry("Timer0", 0, "定时器0")
        .entry("Timer1", 1, "定时器1")
        .expert()
        .in(Int(4, 0));
    t.floating(
         "TimerDuration",
         {"Duration of the pulse of the selected timer.", "定时时长", "所选定时器脉冲的持续时间。"})
        .in(Real(8, 100.0).numbers({100.0, 2500.5}).indexedBy("TimerSelector", 2))
        .range("0", "16777215")
        .unit("us")
        .shownAs("Linear")
        .expert()
        .selectedBy("TimerSelector");
    t.floating("TimerDelay",
               {"Delay between the trigger and the start of the selected timer.", "定时延迟",
                "从触发到所选定时器开始之间的延迟。"})
        .in(Real(8, 0.0).indexedBy("TimerSelector", 2))
        .range("0", "16777215")
        .unit("us")
        .expert()
        .selectedBy("TimerSelector");
    t.command("TimerReset", {"Resets the selected timer.", "定时器复位", "将所选定时器复位。"})
        .expert()
        .runs(Trigger())
        .selectedBy("TimerSelector");
    t.floating("TimerValue",
               {"Current value of the selected timer.", "定时值", "所选定时器的当前值。"})
        .in(Real(8, 0.0).transient().moving().indexedBy("TimerSelector", 2))
        .range("0", "16777215")
        .unit("us")
        .expert()
        .selectedBy("TimerSelector");
    t.enumeration("TimerStatus",
                  {"Returns the current status of the selected timer.", "定时器状态",
                   "返回所选定时器的当前状态。"})
        .entry("TimerIdle", 0, "空闲")
        .entry("TimerTriggerWait", 1, "等待触发")
        .entry("TimerActive", 2, "定时中")
        .expert()
        .in(Int(4, 0).readOnly().moving().indexedBy("TimerSelector", 2))
        .selectedBy("TimerSelector");
    t.enumeration("TimerTriggerSource",
                  {"Selects the source of the trigger that starts the selected timer.",
                   "定时器触发源", "选择启动所选定时器的触发源。"})
        .entry("Off", 0, "关闭")
        .entry("ExposureStart", 1, "曝光开始")
        .entry("Line0", 2, "线路0")
        .expert()
        .in(Int(4, 0).indexedBy("TimerSelector", 2))
        .selectedBy("TimerSelector");
}

} // namespace

void addEncoderRows(FeatureTable &t)
{
    t.category("EncoderControl",
               {"Features of the quadrature encoder.", "编码器控制", "控制正交编码器的特征。"},
               0x16800, "Root", "Guru");
    t.enumeration("EncoderSourceA",
                  {"Selects the signal that is the source of the A input of the encoder.",
                   "编码器A相信号源", "选择编码器A相输入的信号源。"})
        .entry("Off", 0, "关闭")
        .entry("Line0", 1, "线路0")
        .entry("Line1", 2, "线路1")
        .guru()
        .in(Bits("EncoderWord", 0, 4, 1).littleEndian());
    t.enumeration("EncoderSourceB",
                  {"Selects the signal that is the source of the B input of the encoder.",
                   "编码器B相信号源", "选择编码器B相输入的信号源。"})
        .entry("Off", 0, "关闭")
        .entry("Line0", 1, "线路0")
        .entry("Line1", 2, "线路1")
        .guru()
        .in(Bits("EncoderWord", 4, 4, 2).littleEndian());
    t.enumeration(
         "EncoderMode",
         {"Selects whether the encoder filters jitter.", "编码器模式", "选择编码器是否过滤抖动。"})
        .entry("FourPhase", 0, "四相")
        .entry("HighResolution", 1, "高分辨率")
        .guru()
        .in(Bits("EncoderWord", 8, 2, 0).littleEndian());
    t.integer("EncoderDivider",
              {"Number of encoder increments for one output pulse.", "编码器分频",
               "产生一个输出脉冲所需的编码器增量数。"})
        .in(Int(4, 4).littleEndian())
        .range("0", "65535", "1")
        .guru();
    t.floating("EncoderResolution",
               {"Resolution of one step of the encoder.", "编码器分辨率", "编码器每一步的分辨率。"})
        .in(Real(4, 0.0125))
        .range("0.0001", "100")
        .unit("mm")
        .guru();
    t.command("EncoderReset",
              {"Resets the encoder. Its value is kept in EncoderValueAtReset.", "编码器复位",
               "将编码器复位，复位前的值保存到复位时编码器值。"})
        .guru()
        .runs(Trigger());
    t.integer("EncoderValue",
              {"Current position of the encoder.", "编码器值", "编码器的当前位置。"})
        .in(Int(4, -1250).signedValue().littleEndian().transient().moving())
        .range("-2147483648", "2147483647", "1")
        .shownAs("PureNumber")
        .guru();
    t.integer(
         "EncoderValueAtReset",
         {"Position of the encoder when it was reset.", "复位时编码器值", "编码器复位时刻的位置。"})
        .in(Int(4, 0).signedValue().littleEndian().readOnly())
        .shownAs("PureNumber")
        .guru();
    t.integer("EncoderDrift",
              {"Drift between both inputs of the encoder, as a signed field.", "编码器漂移",
               "编码器两相输入之间的漂移，为有符号字段。"})
        .in(Bits("EncoderWord", 16, 12, -37).littleEndian().signedValue())
        .range("-2048", "2047", "1")
        .custom()
        .guru();
}

void addCounterTimerRows(FeatureTable &table)
{
    table.category("CounterAndTimerControl",
                   {"Features of the counters and timers.", "计数器和定时器控制",
                    "控制计数器和定时器的特征。"},
                   0x16000, "Root", "Expert");
    addCounters(table);
    addTimers(table);
}
