#include "host/simulator/areacamera/AreaCamera.h"
#include "host/simulator/description/FeatureBuilder.h"
#include "host/simulator/sfnc/StandardRows.h"

void addTransportLayerRows(FeatureTable &table, const AreaCameraIdentity &identity)
{
    table.category("TransportLayerControl",
                   {"Features of the transport layer.", "传输层控制", "控制传输层的特征。"},
                   0x1A000);
    table.intSwissKnife("PayloadFormula", "WIDTH * HEIGHT * BPP / 8 + CHUNK * 64",
                        {{"WIDTH", "WidthReg"},
                         {"HEIGHT", "HeightReg"},
                         {"BPP", "PixelBitsFormula"},
                         {"CHUNK", "ChunkModeActiveReg"}});
    table
        .integer("PayloadSize",
                 {"Number of bytes that are transferred for each image, with chunk data.",
                  "有效载荷大小", "每幅图像传输的字节数，包含数据块。"})
        .from("PayloadFormula")
        .unit("B")
        .expert();
    table
        .integer(
            "TLParamsLocked",
            {"Locks features of the transport layer while an acquisition runs. The host sets it.",
             "传输层参数锁定", "采集期间锁定传输层相关特征，由主机设置。"})
        .value("0")
        .range("0", "1", "1")
        .invisible();
    addGigEVisionRows(table, identity.m_network);
}
