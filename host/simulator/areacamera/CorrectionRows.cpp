#include "host/simulator/areacamera/AreaCamera.h"
#include "host/simulator/description/FeatureBuilder.h"

namespace {

constexpr int kDefects = 16;

QVector<qint64> defectPositions(int stride, int limit)
{
    QVector<qint64> values;
    for (int i = 0; i < kDefects; ++i) {
        values.append((137 + i * stride) % limit);
    }
    return values;
}

void addCorrection(FeatureTable &t)
{
    t.category("CorrectionControl",
               {"Features of the correction of defect pixels and of the flat field.", "校正控制",
                "坏点校正与平场校正的特征。"},
               0x14000, "Root", "Expert");
    t.boolean("DefectCorrectionEnable",
              {"Controls whether defect pixels are replaced by their neighbours.", "坏点校正使能",
               "控制是否用相邻像素替换坏点。"})
        .in(Bits("CorrectionWord", 0, 1, 1))
        .custom()
        .expert();
    t.integer("DefectPixelCount",
              {"Number of defect pixels in the table of the device.", "坏点数量",
               "设备坏点表中的坏点数量。"})
        .in(Int(2, kDefects).readOnly())
        .custom()
        .expert();
    t.integer(
         "DefectPixelIndex",
         {"Selects an entry of the table of defect pixels.", "坏点索引", "选择坏点表中的条目。"})
        .in(Int(2, 0).transient())
        .range("0", "15", "1")
        .custom()
        .expert();
    t.integer("DefectPixelX",
              {"Column of the selected defect pixel.", "坏点X坐标", "所选坏点所在的列。"})
        .in(Int(2, 0).values(defectPositions(409, 2592)).indexedBy("DefectPixelIndex", kDefects))
        .range("0", "2591", "1")
        .unit("px")
        .custom()
        .expert()
        .selectedBy("DefectPixelIndex");
    t.integer("DefectPixelY",
              {"Row of the selected defect pixel.", "坏点Y坐标", "所选坏点所在的行。"})
        .in(Int(2, 0)
                .littleEndian()
                .values(defectPositions(283, 1944))
                .indexedBy("DefectPixelIndex", kDefects))
        .range("0", "1943", "1")
        .unit("px")
        .custom()
        .expert()
        .selectedBy("DefectPixelIndex");
    t.boolean("FlatFieldCorrectionEnable",
              {"Controls whether the flat field correction is applied.", "平场校正使能",
               "控制是否启用平场校正。"})
        .in(Bits("CorrectionWord", 1, 1, 0))
        .custom()
        .expert();
    t.integer("FlatFieldTarget",
              {"Grey value that the flat field correction aims at.", "平场目标灰度",
               "平场校正的目标灰度值。"})
        .in(Int(2, 200).littleEndian())
        .range("1", "4095", "1")
        .shownAs("Linear")
        .custom()
        .expert();
    t.command("FlatFieldCalibrate",
              {"Measures the flat field from the next frames and stores it.", "平场标定",
               "利用后续图像测量平场并保存。"})
        .runs(Int(4, 0).transient().moving(500))
        .locked()
        .custom()
        .expert();
    t.floating("ShadingCoefficient",
               {"Slope of the brightness between the centre and the corner of the image.",
                "阴影系数", "图像中心到边角亮度变化的斜率。"})
        .in(Real(8, -0.125).littleEndian())
        .range("-1", "1")
        .custom()
        .guru();
    t.integer("SensorRegisterKey",
              {"Key that opens the registers of the sensor for service. It is not meant for users.",
               "传感器寄存器密钥", "用于维护时开放传感器寄存器的密钥，不供用户使用。"})
        .in(Int(4, 0xC0DE1234).transient())
        .shownAs("HexNumber")
        .custom()
        .invisible();
    t.directRegister("SensorStatusRegister",
                     {"Status register of the sensor, as a raw number.", "传感器状态寄存器",
                      "传感器的状态寄存器，以原始数值表示。"},
                     Int(4, 0x80000041).littleEndian().readOnly())
        .shownAs("HexNumber")
        .custom()
        .guru();
}

} // namespace

void addCorrectionRows(FeatureTable &table)
{
    addLutRows(table);
    addCorrection(table);
    addReadoutRows(table);
}
