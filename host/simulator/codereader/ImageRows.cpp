#include "host/simulator/codereader/CodeReader.h"
#include "host/simulator/description/PlainRows.h"

namespace {

void addFrame(FeatureTable &t)
{
    const QVector<NumberRow> sizes = {
        {"SensorWidth",
         {"Effective width of the sensor in pixels.", "传感器宽度",
          "传感器的有效宽度，单位为像素。"},
         1408,
         "",
         "",
         "px",
         RowOptions().standard().readOnly().expert()},
        {"SensorHeight",
         {"Effective height of the sensor in pixels.", "传感器高度",
          "传感器的有效高度，单位为像素。"},
         1024,
         "",
         "",
         "px",
         RowOptions().standard().readOnly().expert()},
    };
    addRows(t, sizes);
    t.intSwissKnife("WidthLimit", "SENSOR - OFFSET",
                    {{"SENSOR", "SensorWidthReg"}, {"OFFSET", "OffsetXReg"}});
    t.intSwissKnife("HeightLimit", "SENSOR - OFFSET",
                    {{"SENSOR", "SensorHeightReg"}, {"OFFSET", "OffsetYReg"}});
    t.intSwissKnife("OffsetXLimit", "SENSOR - WIDTH",
                    {{"SENSOR", "SensorWidthReg"}, {"WIDTH", "WidthReg"}});
    t.intSwissKnife("OffsetYLimit", "SENSOR - HEIGHT",
                    {{"SENSOR", "SensorHeightReg"}, {"HEIGHT", "HeightReg"}});
    const struct
    {
        const char *name;
        Texts texts;
        qint64 initial;
        const char *min;
        const char *limit;
        const char *step;
    } rows[] = {
        {"Width",
         {"Width of the image that the device provides, in pixels.", "宽度",
          "设备输出图像的宽度，单位为像素。"},
         1280,
         "128",
         "WidthLimit",
         "16"},
        {"Height",
         {"Height of the image that the device provides, in pixels.", "高度",
          "设备输出图像的高度，单位为像素。"},
         1000,
         "64",
         "HeightLimit",
         "4"},
        {"OffsetX",
         {"Horizontal distance from the origin to the image, in pixels.", "X方向偏移",
          "图像相对原点的水平偏移，单位为像素。"},
         64,
         "0",
         "OffsetXLimit",
         "16"},
        {"OffsetY",
         {"Vertical distance from the origin to the image, in pixels.", "Y方向偏移",
          "图像相对原点的垂直偏移，单位为像素。"},
         12,
         "0",
         "OffsetYLimit",
         "4"},
    };
    for (const auto &row : rows) {
        t.integer(row.name, row.texts)
            .in(Int(4, row.initial))
            .range(row.min, "", row.step)
            .max(row.limit)
            .unit("px")
            .shownAs("Linear")
            .locked();
    }
    t.enumeration(
         "PixelFormat",
         {"Format of the pixels that the device provides.", "像素格式", "设备输出的像素格式。"})
        .entry("Mono8", 0x01080001, "8位黑白")
        .entry("RGB8", 0x02180014, "8位彩色", {"", "ColorSensorFitted"})
        .locked()
        .in(Int(4, 0x01080001));
    t.constant("ColorSensorFitted", 1);
    t.intSwissKnife("PixelBitsFormula", "(FORMAT >> 16) & 255", {{"FORMAT", "PixelFormatReg"}});
}

void addMirror(FeatureTable &t)
{
    const QVector<SwitchRow> switches = {
        {"ReverseX",
         {"Flips the image horizontally.", "水平镜像", "将图像沿水平方向翻转。"},
         0,
         RowOptions().standard().locked()},
        {"ReverseY",
         {"Flips the image vertically.", "垂直镜像", "将图像沿垂直方向翻转。"},
         0,
         RowOptions().standard().locked()},
        {"HdrEnable",
         {"Combines images of several exposure times. The frame rate falls.", "HDR使能",
          "合成多种曝光时间的图像，帧率会降低。"},
         0},
        {"ContrastEnable",
         {"Raises the contrast of the image before reading.", "对比度使能",
          "在读码前提高图像的对比度。"},
         0},
        {"RawModeEnable",
         {"Gives images as the sensor delivers them.", "原始图像使能",
          "按传感器输出的原样提供图像。"},
         0,
         RowOptions().expert()},
        {"JpgEnable",
         {"Compresses images before they are sent or stored.", "JPG压缩使能",
          "在发送或保存图像前进行压缩。"},
         1},
        {"UploadTestRawPictureEnable",
         {"Uploads each test image unchanged. FTP has to be enabled before.", "上传测试原图使能",
          "原样上传每幅测试图像，须先使能FTP。"},
         0,
         RowOptions().expert()},
    };
    addRows(t, switches);
    t.boolean("MirrorX",
              {"Flips the image horizontally, by the name that the reader family has for it.",
               "X镜像", "将图像沿水平方向翻转，为读码器系列所用的名称。"})
        .from("ReverseXReg")
        .streamable()
        .locked()
        .custom();
    const QVector<ChoiceRow> choices = {
        {"MirrorMode",
         {"Whether codes are looked for in the mirrored image too.", "镜像读码模式",
          "是否同时在镜像图像中读码。"},
         {{"Normal", 0, "正常"}, {"Mirrored", 1, "镜像"}, {"Both", 2, "两者"}},
         0,
         RowOptions().expert()},
        {"TestPattern",
         {"Image that the device generates instead of that of the sensor. It is fixed while "
          "images are taken.",
          "测试图像", "设备生成的用于代替传感器图像的测试图，采集期间不可更改。"},
         {{"Off", 0, "关闭"},
          {"GreyHorizontalRamp", 1, "水平灰度渐变"},
          {"GreyVerticalRamp", 2, "垂直灰度渐变"},
          {"UserPicture", 20, "用户图像"}},
         0,
         RowOptions().standard()},
        {"ImageOutputType",
         {"Format in which images are given to the host.", "图像输出类型",
          "向主机提供图像所用的格式。"},
         {{"Raw", 0, "原始"}, {"Jpeg", 1, "压缩"}, {"Bitmap", 2, "位图"}},
         1},
        {"SamOptSelect",
         {"Selects the sampling of the sensor that the other settings refer to.", "采样方案选择",
          "选择其他参数所针对的传感器采样方案。"},
         {{"Full", 0, "全采样"}, {"Half", 1, "半采样"}, {"Quarter", 2, "四分之一采样"}},
         0},
    };
    addRows(t, choices);
    const QVector<RealRow> reals = {
        {"Magnification",
         {"Scale of the picture of the object on the sensor.", "放大倍率",
          "物体在传感器上成像的比例。"},
         0.25,
         "0.01",
         "4",
         "",
         RowOptions().expert()},
    };
    addRows(t, reals);
}

void addAutoRegion(FeatureTable &t)
{
    t.category("AutoFunctionRegion",
               {"The part of the image that the automatic functions look at.", "自动功能区域",
                "自动功能所参考的图像区域。"},
               0x11800, "ImageFormatControl", "Expert");
    const QVector<NumberRow> rows = {
        {"AutoFunctionAOIWidth",
         {"Width of the region of the automatic functions.", "自动功能区域宽度",
          "自动功能区域的宽度。"},
         640,
         "16",
         "1408",
         "px",
         RowOptions().expert()},
        {"AutoFunctionAOIHeight",
         {"Height of the region of the automatic functions.", "自动功能区域高度",
          "自动功能区域的高度。"},
         480,
         "16",
         "1024",
         "px",
         RowOptions().expert()},
        {"AutoFunctionAOIOffsetX",
         {"Horizontal distance of the region of the automatic functions from the origin.",
          "自动功能区域X偏移", "自动功能区域相对原点的水平偏移。"},
         384,
         "0",
         "1392",
         "px",
         RowOptions().expert()},
        {"AutoFunctionAOIOffsetY",
         {"Vertical distance of the region of the automatic functions from the origin.",
          "自动功能区域Y偏移", "自动功能区域相对原点的垂直偏移。"},
         272,
         "0",
         "1008",
         "px",
         RowOptions().expert()},
    };
    addRows(t, rows);
}

} // namespace

void addReaderImageRows(FeatureTable &table)
{
    table.category("ImageFormatControl",
                   {"Features of the size and format of the image.", "图像格式控制",
                    "控制图像尺寸与格式的特征。"},
                   0x11000);
    addFrame(table);
    addMirror(table);
    addAutoRegion(table);
}
