#include "host/simulator/codereader/CodeReader.h"
#include "host/simulator/description/PlainRows.h"
#include "host/simulator/sfnc/CameraBasics.h"

namespace {

void addAcquisition(FeatureTable &t)
{
    t.enumeration("AcquisitionMode",
                  {"Sets the acquisition mode of the device.", "采集模式", "设置设备的采集模式。"})
        .entry("Continuous", 0, "连续采集")
        .entry("SingleFrame", 1, "单帧采集")
        .locked()
        .in(Int(4, 0));
    addStartStopRows(t);
    t.boolean("AcquisitionFrameRateEnable",
              {"Controls whether the AcquisitionFrameRate feature is used to control the rate.",
               "帧率控制使能", "控制是否用采集帧率限制帧率。"})
        .in(Int(4, 1));
    t.intSwissKnife("FrameRateFixed", "ENABLE = 0", {{"ENABLE", "AcquisitionFrameRateEnableReg"}});
    t.floating("AcquisitionFrameRate",
               {"Rate at which the frames are captured, in frames per second.", "采集帧率",
                "设备采集图像的帧率，单位为帧每秒。"})
        .in(Real(4, 25.0))
        .range("0.1", "60")
        .unit("Hz")
        .shownAs("Linear")
        .locked("FrameRateFixed");
    t.floating("ResultingFrameRate",
               {"Rate that the device reaches with its present settings, in frames per second.",
                "实际帧率", "设备在当前设置下实际达到的帧率，单位为帧每秒。"})
        .in(Real(4, 25.0).readOnly().moving(2000))
        .unit("Hz")
        .custom();
}

void addExposure(FeatureTable &t)
{
    t.category("AnalogControl",
               {"Features of the exposure and of the processing of the sensor's signal.",
                "模拟控制", "控制曝光与传感器信号处理的特征。"},
               0x13000);
    // Each of the two drives the other: microseconds here, the register's tenths there.
    t.converter("ExposureTimeConverter", "FROM * 10", "TO / 10.0", "ExposureTimeRaw");
    t.intSwissKnife("ExposureTimeLocked", "AUTO = 2", {{"AUTO", "ExposureAutoReg"}});
    t.floating("ExposureTime", {"Exposure time of the sensor.", "曝光时间", "传感器的曝光时间。"})
        .from("ExposureTimeConverter")
        .range("16", "100000")
        .unit("us")
        .shownAs("Logarithmic")
        .streamable()
        .locked("ExposureTimeLocked");
    t.integer("ExposureTimeRaw",
              {"Exposure time of the sensor in tenths of a microsecond.", "曝光时间原始值",
               "传感器的曝光时间，单位为0.1微秒。"})
        .in(Int(4, 8000))
        .range("160", "1000000", "1")
        .shownAs("PureNumber")
        .locked("ExposureTimeLocked")
        .custom()
        .guru();
    const auto autoEntries =
        QVector<EntryRow>{{"Off", 0, "关闭"}, {"Once", 1, "一次"}, {"Continuous", 2, "连续"}};
    const QVector<ChoiceRow> choices = {
        {"ExposureAuto",
         {"Sets the automatic exposure mode.", "自动曝光", "设置自动曝光的方式。"},
         autoEntries,
         0,
         RowOptions().standard()},
        {"GainAuto",
         {"Sets the automatic gain control mode.", "自动增益", "设置自动增益控制方式。"},
         autoEntries,
         0,
         RowOptions().standard()},
        {"BalanceWhiteAuto",
         {"Controls the mode of the automatic white balance.", "自动白平衡",
          "控制自动白平衡的方式。"},
         autoEntries,
         2,
         RowOptions().standard()},
        {"BalanceRatioSelector",
         {"Selects which balance ratio is controlled.", "白平衡通道选择",
          "选择要控制的白平衡通道。"},
         {{"Red", 0, "红"}, {"Green", 1, "绿"}, {"Blue", 2, "蓝"}},
         0,
         RowOptions().standard().locked("BalanceAutomatic")},
    };
    addRows(t, choices);
    t.intSwissKnife("BalanceAutomatic", "AUTO <> 0", {{"AUTO", "BalanceWhiteAutoReg"}});
    t.intSwissKnife("BalanceOffset", "SEL * 4", {{"SEL", "BalanceRatioSelectorReg"}});
    t.intSwissKnife("GainAutomatic", "AUTO = 2", {{"AUTO", "GainAutoReg"}});
    const QVector<RealRow> reals = {
        {"BalanceRatio",
         {"Ratio of the selected colour component to a reference component.", "白平衡系数",
          "所选颜色分量相对于参考分量的比例。"},
         1.0,
         "0.25",
         "4",
         "",
         RowOptions()
             .standard()
             .offsetBy("BalanceOffset", 3)
             .locked("BalanceAutomatic")
             .selectedBy("BalanceRatioSelector")},
        {"Gain",
         {"Gain as an absolute physical value.", "增益", "增益的绝对物理值。"},
         6.0,
         "0",
         "16",
         "dB",
         RowOptions().standard().locked("GainAutomatic")},
        {"Gamma",
         {"Controls the gamma correction of pixel intensity.", "伽马", "控制像素亮度的伽马校正。"},
         0.7,
         "0.1",
         "4",
         "",
         RowOptions().standard().littleEndian()},
    };
    addRows(t, reals);
    const QVector<NumberRow> numbers = {
        {"Brightness",
         {"Mean grey value that automatic exposure and automatic gain aim at.", "目标亮度",
          "自动曝光与自动增益所追求的平均灰度值。"},
         110,
         "0",
         "255",
         "",
         RowOptions()},
    };
    addRows(t, numbers);
}

} // namespace

void addReaderAcquisitionRows(FeatureTable &table)
{
    table.category("AcquisitionControl",
                   {"Features of the acquisition of images.", "采集控制", "控制图像采集的特征。"},
                   0x12000);
    addAcquisition(table);
    addExposure(table);
}
