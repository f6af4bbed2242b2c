#include "host/simulator/codereader/CodeReader.h"
#include "host/simulator/description/FeatureBuilder.h"
#include "host/simulator/sfnc/CameraBasics.h"

void addReaderTransportRows(FeatureTable &table, const CodeReaderIdentity &identity)
{
    addCameraTransportRows(table);
    table
        .integer("DeviceStreamChannelPacketSize",
                 {"Size of the packets that are sent on the stream channel.", "流通道包大小",
                  "流通道上发送的数据包大小。"})
        .from("GevSCPSPacketSizeReg")
        .range("576", "9000", "4")
        .unit("B")
        .locked()
        .expert();
    addGigEVisionRows(table, identity.m_network);
    table
        .boolean("GevPAUSEFrameReception",
                 {"Controls whether incoming PAUSE frames are handled on the link.", "PAUSE帧接收",
                  "控制链路是否处理收到的PAUSE帧。"})
        .in(Bits("GevIPConfigurationWord", 31, 1, 1).at(0x14).transient())
        .expert();
}
