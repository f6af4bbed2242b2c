#include "host/simulator/areacamera/AreaCamera.h"
#include "host/simulator/description/FeatureBuilder.h"

namespace {

void addSensor(FeatureTable &t)
{
    t.integer("SensorWidth",
              {"Effective width of the sensor in pixels.", "传感器宽度",
               "传感器的有效宽度，单位为像素。"})
        .in(Int(2, 2592).littleEndian().readOnly())
        .unit("px")
        .expert();
    t.integer("SensorHeight",
              {"Effective height of the sensor in pixels.", "传感器高度",
               "传感器的有效高度，单位为像素。"})
        .in(Int(2, 1944).littleEndian().readOnly())
        .unit("px")
        .expert();
    t.floating("SensorPixelWidth",
               {"Physical size of a pixel of the sensor in x direction.", "像元宽度",
                "传感器像元在X方向上的物理尺寸。"})
        .in(Real(4, 2.2).readOnly())
        .unit("um")
        .guru();
    t.floating("SensorPixelHeight",
               {"Physical size of a pixel of the sensor in y direction.", "像元高度",
                "传感器像元在Y方向上的物理尺寸。"})
        .in(Real(4, 2.2).littleEndian().readOnly())
        .unit("um")
        .guru();
    t.enumeration("SensorShutterMode",
                  {"Shutter mode of the sensor.", "快门模式", "传感器的快门模式。"})
        .entry("Global", 0, "全局快门")
        .entry("Rolling", 1, "卷帘快门")
        .entry("GlobalReset", 2, "全局复位")
        .expert()
        .locked()
        .in(Bits("SensorModeWord", 0, 3, 0));
    t.enumeration("SensorTaps",
                  {"Number of taps of the sensor.", "传感器通道数", "传感器的输出通道数。"})
        .entry("One", 1, "单通道")
        .entry("Two", 2, "双通道")
        .entry("Four", 4, "四通道")
        .expert()
        .in(Bits("SensorModeWord", 8, 4, 4));
    t.integer("WidthMax",
              {"Maximum width of the image in pixels, after horizontal binning and decimation.",
               "最大宽度", "经水平像素合并与抽样后图像的最大宽度，单位为像素。"})
        .from("WidthMaxFormula")
        .unit("px")
        .expert();
    t.intSwissKnife("WidthMaxFormula", "SENSOR / (BIN * DEC) / 4 * 4",
                    {{"SENSOR", "SensorWidthReg"},
                     {"BIN", "BinningHorizontalReg"},
                     {"DEC", "DecimationHorizontalReg"}});
    t.integer("HeightMax",
              {"Maximum height of the image in pixels, after vertical binning and decimation.",
               "最大高度", "经垂直像素合并与抽样后图像的最大高度，单位为像素。"})
        .from("HeightMaxFormula")
        .unit("px")
        .expert();
    t.intSwissKnife("HeightMaxFormula", "SENSOR / (BIN * DEC) / 2 * 2",
                    {{"SENSOR", "SensorHeightReg"},
                     {"BIN", "BinningVerticalReg"},
                     {"DEC", "DecimationVerticalReg"}});
}

void addRegion(FeatureTable &t)
{
    t.category("RegionOfInterestControl",
               {"Features of the part of the sensor that is read out.", "感兴趣区域控制",
                "控制传感器读出区域的特征。"},
               0x11200, "ImageFormatControl");
    t.enumeration(
         "RegionSelector",
         {"Selects the region of interest to control.", "区域选择", "选择要控制的感兴趣区域。"})
        .entry("Region0", 0, "区域0")
        .entry("Region1", 1, "区域1")
        .expert()
        .in(Int(4, 0));
    t.enumeration("RegionMode",
                  {"Controls whether the selected region of interest is active and streaming.",
                   "区域模式", "控制所选感兴趣区域是否启用并输出。"})
        .entry("Off", 0, "关闭")
        .entry("On", 1, "开启")
        .expert()
        .locked()
        .in(Int(4, 0).values({1, 0}).indexedBy("RegionSelector", 2))
        .selectedBy("RegionSelector");
    t.intSwissKnife("WidthLimit", "MAX - OFFSET",
                    {{"MAX", "WidthMaxFormula"}, {"OFFSET", "OffsetXReg"}});
    t.intSwissKnife("HeightLimit", "MAX - OFFSET",
                    {{"MAX", "HeightMaxFormula"}, {"OFFSET", "OffsetYReg"}});
    t.intSwissKnife("OffsetXLimit", "MAX - WIDTH",
                    {{"MAX", "WidthMaxFormula"}, {"WIDTH", "WidthReg"}});
    t.intSwissKnife("OffsetYLimit", "MAX - HEIGHT",
                    {{"MAX", "HeightMaxFormula"}, {"HEIGHT", "HeightReg"}});
    t.constant("WidthStep", 4);
    t.integer("Width",
              {"Width of the image that the device provides, in pixels. It shares the sensor with "
               "OffsetX.",
               "宽度", "设备输出图像的宽度，单位为像素，与X方向偏移共用传感器宽度。"})
        .in(Int(4, 2448).invalidatedBy("BinningHorizontal").invalidatedBy("DecimationHorizontal"))
        .range("64", "", "")
        .max("WidthLimit")
        .inc("WidthStep")
        .unit("px")
        .shownAs("Linear")
        .locked();
    t.integer("Height",
              {"Height of the image that the device provides, in pixels. It shares the sensor with "
               "OffsetY.",
               "高度", "设备输出图像的高度，单位为像素，与Y方向偏移共用传感器高度。"})
        .in(Int(4, 1920).invalidatedBy("BinningVertical").invalidatedBy("DecimationVertical"))
        .range("32", "", "2")
        .max("HeightLimit")
        .unit("px")
        .shownAs("Linear")
        .locked();
    t.integer("OffsetX",
              {"Horizontal distance from the origin to the region of interest, in pixels.",
               "X方向偏移", "感兴趣区域相对原点的水平偏移，单位为像素。"})
        .in(Int(4, 72))
        .range("0", "", "4")
        .max("OffsetXLimit")
        .unit("px")
        .shownAs("Linear")
        .locked();
    t.integer("OffsetY",
              {"Vertical distance from the origin to the region of interest, in pixels.",
               "Y方向偏移", "感兴趣区域相对原点的垂直偏移，单位为像素。"})
        .in(Int(4, 12))
        .range("0", "", "2")
        .max("OffsetYLimit")
        .unit("px")
        .shownAs("Linear")
        .locked();
    t.intSwissKnife("LinePitchFormula", "WIDTH * BPP / 8",
                    {{"WIDTH", "WidthReg"}, {"BPP", "PixelBitsFormula"}});
    t.integer("LinePitch",
              {"Number of bytes between the starts of two consecutive lines of the image.",
               "行间距", "图像中相邻两行起始位置之间的字节数。"})
        .from("LinePitchFormula")
        .unit("B")
        .expert();
}

void addReduction(FeatureTable &t)
{
    t.resume("ImageFormatControl");
    t.enumeration("BinningSelector",
                  {"Selects which binning engine the binning features control.", "像素合并引擎选择",
                   "选择由像素合并特征控制的合并引擎。"})
        .entry("Sensor", 0, "传感器")
        .entry("Region0", 1, "区域0")
        .expert()
        .in(Int(4, 0));
    t.enumeration("BinningHorizontalMode",
                  {"Mode that combines horizontal photo-sensitive cells.", "水平合并模式",
                   "水平方向感光单元的合并方式。"})
        .entry("Sum", 0, "求和")
        .entry("Average", 1, "平均")
        .expert()
        .in(Bits("BinningModeWord", 0, 2, 0))
        .selectedBy("BinningSelector");
    t.integer("BinningHorizontal",
              {"Number of horizontal photo-sensitive cells that are combined.", "水平像素合并",
               "水平方向上合并在一起的感光单元数量。"})
        .in(Int(1, 1))
        .range("1", "4", "1")
        .shownAs("Linear")
        .locked()
        .selectedBy("BinningSelector");
    t.enumeration("BinningVerticalMode",
                  {"Mode that combines vertical photo-sensitive cells.", "垂直合并模式",
                   "垂直方向感光单元的合并方式。"})
        .entry("Sum", 0, "求和")
        .entry("Average", 1, "平均")
        .expert()
        .in(Bits("BinningModeWord", 4, 2, 0))
        .selectedBy("BinningSelector");
    t.integer("BinningVertical",
              {"Number of vertical photo-sensitive cells that are combined.", "垂直像素合并",
               "垂直方向上合并在一起的感光单元数量。"})
        .in(Int(1, 1))
        .range("1", "4", "1")
        .shownAs("Linear")
        .locked()
        .selectedBy("BinningSelector");
    t.integer("DecimationHorizontal",
              {"Horizontal sub-sampling of the image.", "水平抽样", "图像在水平方向上的抽样倍数。"})
        .in(Int(1, 1))
        .range("1", "4", "1")
        .expert()
        .locked();
    t.integer("DecimationVertical",
              {"Vertical sub-sampling of the image.", "垂直抽样", "图像在垂直方向上的抽样倍数。"})
        .in(Int(1, 1))
        .range("1", "4", "1")
        .expert()
        .locked();
    t.boolean("ReverseX", {"Flips the image horizontally.", "水平镜像", "将图像沿水平方向翻转。"})
        .in(Bits("MirrorWord", 0, 1, 0).littleEndian())
        .locked();
    t.boolean("ReverseY", {"Flips the image vertically.", "垂直镜像", "将图像沿垂直方向翻转。"})
        .in(Bits("MirrorWord", 1, 1, 1).littleEndian())
        .locked();
}

void addPixels(FeatureTable &t)
{
    t.constant("ColorSensorFitted", 0);
    t.intSwissKnife("Depth10Available", "DEPTH >= 10", {{"DEPTH", "ADCBitDepthReg"}});
    t.intSwissKnife("Depth12Available", "DEPTH >= 12", {{"DEPTH", "ADCBitDepthReg"}});
    t.enumeration("PixelFormat",
                  {"Format of the pixels that the device provides. Formats that need more bits "
                   "than the converter gives are not available.",
                   "像素格式", "设备输出的像素格式，位数超出模数转换位深的格式不可用。"})
        .entry("Mono8", 0x01080001, "8位黑白")
        .entry("Mono10", 0x01100003, "10位黑白", {"Depth10Available"})
        .entry("Mono10p", 0x010A0046, "10位紧凑黑白", {"Depth10Available"})
        .entry("Mono12", 0x01100005, "12位黑白", {"Depth12Available"})
        .entry("Mono12p", 0x010C0047, "12位紧凑黑白", {"Depth12Available"})
        .entry("BayerRG8", 0x01080009, "8位Bayer RG", {"", "ColorSensorFitted"})
        .entry("RGB8", 0x02180014, "8位RGB", {"", "ColorSensorFitted"})
        .in(Int(4, 0x01080001))
        .locked();
    t.intSwissKnife("PixelBitsFormula", "(FORMAT >> 16) & 255", {{"FORMAT", "PixelFormatReg"}});
    t.integer("PixelSize",
              {"Number of bits of a pixel in the image.", "像素位数", "图像中每个像素占用的位数。"})
        .from("PixelBitsFormula")
        .unit("bit")
        .expert();
    t.enumeration("PixelColorFilter",
                  {"Type of colour filter that is applied to the image.", "像素色彩滤镜",
                   "图像所用色彩滤镜的类型。"})
        .entry("None", 0, "无")
        .entry("BayerRG", 1, "Bayer RG", {"", "ColorSensorFitted"})
        .entry("BayerGB", 2, "Bayer GB", {"", "ColorSensorFitted"})
        .expert()
        .in(Int(4, 0).readOnly());
    t.integer("PixelDynamicRangeMin",
              {"Minimum value that a pixel can have after digitization.", "像素最小值",
               "数字化后像素可能的最小值。"})
        .value("0")
        .readOnly()
        .expert();
    t.intSwissKnife("PixelDynamicMaxFormula", "(1 << DEPTH) - 1", {{"DEPTH", "PixelDepthFormula"}});
    t.intSwissKnife("PixelDepthFormula", "(FORMAT = 17301505) ? 8 : ADC",
                    {{"FORMAT", "PixelFormatReg"}, {"ADC", "ADCBitDepthReg"}});
    t.integer("PixelDynamicRangeMax",
              {"Maximum value that a pixel can have after digitization.", "像素最大值",
               "数字化后像素可能的最大值。"})
        .from("PixelDynamicMaxFormula")
        .expert();
    t.enumeration("ADCBitDepth",
                  {"Number of bits of the analog to digital converter of the sensor.",
                   "模数转换位深", "传感器模数转换器的位数。"})
        .entry("Bit8", 8, "8位")
        .entry("Bit10", 10, "10位")
        .entry("Bit12", 12, "12位")
        .expert()
        .locked()
        .in(Int(1, 10));
    t.enumeration("TestPatternGeneratorSelector",
                  {"Selects which test pattern generator is controlled.", "测试图发生器选择",
                   "选择要控制的测试图发生器。"})
        .entry("Sensor", 0, "传感器")
        .entry("Region0", 1, "区域0")
        .expert()
        .in(Int(4, 0));
    t.enumeration("TestPattern",
                  {"Selects the type of test pattern that the device generates as image.",
                   "测试图像", "选择设备生成的测试图像类型。"})
        .entry("Off", 0, "关闭")
        .entry("Black", 1, "全黑")
        .entry("White", 2, "全白")
        .entry("GreyHorizontalRamp", 3, "水平灰度渐变")
        .entry("GreyVerticalRamp", 4, "垂直灰度渐变")
        .entry("GreyHorizontalRampMoving", 5, "移动的水平灰度渐变", {"", "", "TLParamsLocked"})
        .entry("FrameCounter", 20, "帧计数")
        .in(Int(4, 0).values({0, 3}).indexedBy("TestPatternGeneratorSelector", 2))
        .selectedBy("TestPatternGeneratorSelector");
    t.enumeration("ImageCompressionMode",
                  {"Enables a specific image compression mode as the base mode for image transfer.",
                   "图像压缩模式", "启用图像传输所用的压缩模式。"})
        .entry("Off", 0, "关闭")
        .entry("JPEG", 1, "JPEG")
        .locked()
        .in(Int(4, 0));
    t.intSwissKnife("CompressionOn", "MODE <> 0", {{"MODE", "ImageCompressionModeReg"}});
    t.integer("ImageCompressionQuality",
              {"Controls the quality of the image that is compressed.", "图像压缩质量",
               "控制压缩图像的质量。"})
        .in(Int(1, 80))
        .range("1", "100", "1")
        .unit("%")
        .shownAs("Linear")
        .available("CompressionOn");
}

} // namespace

void addImageFormatRows(FeatureTable &table)
{
    table.category("ImageFormatControl",
                   {"Features of the size and format of the image.", "图像格式控制",
                    "控制图像尺寸与格式的特征。"},
                   0x11000);
    addSensor(table);
    addRegion(table);
    addReduction(table);
    addPixels(table);
}
