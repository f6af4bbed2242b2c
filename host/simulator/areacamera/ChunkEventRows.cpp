#include "host/simulator/areacamera/AreaCamera.h"
#include "host/simulator/description/FeatureBuilder.h"

namespace {

void addEvents(FeatureTable &t)
{
    t.category("EventControl",
               {"Features of the events that the device sends to the host.", "事件控制",
                "控制设备向主机发送事件的特征。"},
               0x17000, "Root", "Expert");
    t.enumeration("EventSelector",
                  {"Selects which event to signal to the host application.", "事件选择",
                   "选择要通知主机的事件。"})
        .entry("ExposureEnd", 0, "曝光结束")
        .entry("FrameStart", 1, "帧开始")
        .entry("FrameTriggerMissed", 2, "帧触发丢失")
        .expert()
        .in(Int(4, 0));
    t.enumeration("EventNotification",
                  {"Activates or deactivates the notification of the selected event.", "事件通知",
                   "启用或停用所选事件的通知。"})
        .entry("Off", 0, "关闭")
        .entry("On", 1, "开启")
        .expert()
        .in(Int(4, 0).values({1, 0, 0}).indexedBy("EventSelector", 3))
        .selectedBy("EventSelector");
    t.category("EventExposureEndData",
               {"Data that belong to the event ExposureEnd.", "曝光结束事件数据",
                "曝光结束事件所携带的数据。"},
               0x17080, "EventControl", "Expert");
    t.intSwissKnife("ExposureEndNotified", "NOTIFY = 1",
                    {{"NOTIFY", "ExposureEndNotificationReg"}});
    // The first element of the notification array, whatever the selector says.
    t.registerNode("ExposureEndNotificationReg", Int(4, 1).within("EventNotificationReg"));
    t.integer("EventExposureEnd",
              {"Unique identifier of the event ExposureEnd.", "曝光结束事件",
               "曝光结束事件的唯一标识。"})
        .value("40001")
        .readOnly()
        .shownAs("HexNumber")
        .expert();
    t.integer("EventExposureEndTimestamp",
              {"Timestamp of the last event ExposureEnd.", "曝光结束时间戳",
               "最近一次曝光结束事件的时间戳。"})
        .in(Int(8, 0).readOnly().moving())
        .unit("ns")
        .available("ExposureEndNotified")
        .expert();
    t.integer("EventExposureEndFrameID",
              {"Identifier of the frame that the last event ExposureEnd belongs to.",
               "曝光结束帧号", "最近一次曝光结束事件对应的帧号。"})
        .in(Int(8, 0).readOnly().moving())
        .available("ExposureEndNotified")
        .expert();
}

void addChunks(FeatureTable &t)
{
    t.category("ChunkDataControl",
               {"Features of the data that are appended to the images.", "数据块控制",
                "控制附加在图像后数据块的特征。"},
               0x17400, "Root", "Expert");
    t.boolean("ChunkModeActive",
              {"Activates the inclusion of chunk data in the payload of the image.", "数据块模式",
               "控制是否在图像数据中附加数据块。"})
        .in(Bits("ChunkWord", 31, 1, 0))
        .locked()
        .expert();
    t.enumeration(
         "ChunkSelector",
         {"Selects which chunk to enable or control.", "数据块选择", "选择要启用或控制的数据块。"})
        .entry("FrameID", 0, "帧号")
        .entry("Timestamp", 1, "时间戳")
        .entry("ExposureTime", 2, "曝光时间")
        .entry("Gain", 3, "增益")
        .entry("LineStatusAll", 4, "全部线路状态")
        .expert()
        .in(Int(4, 0));
    t.boolean("ChunkEnable",
              {"Enables the inclusion of the selected chunk data.", "数据块使能",
               "控制是否附加所选数据块。"})
        .in(Int(4, 1).values({1, 1, 0, 0, 0}).indexedBy("ChunkSelector", 5))
        .locked()
        .expert()
        .selectedBy("ChunkSelector");
    t.intSwissKnife("ChunkActive", "ACTIVE = 1", {{"ACTIVE", "ChunkModeActiveReg"}});
    t.integer("ChunkFrameID",
              {"Identifier of the last frame that carried chunk data.", "数据块帧号",
               "最近一个带数据块的帧的帧号。"})
        .in(Int(8, 0).readOnly().moving())
        .available("ChunkActive")
        .expert();
    t.integer("ChunkTimestamp",
              {"Timestamp of the last frame that carried chunk data.", "数据块时间戳",
               "最近一个带数据块的帧的时间戳。"})
        .in(Int(8, 0).readOnly().moving())
        .unit("ns")
        .available("ChunkActive")
        .expert();
    t.floating("ChunkExposureTime",
               {"Exposure time with which the last frame with chunk data was taken.",
                "数据块曝光时间", "最近一个带数据块的帧的曝光时间。"})
        .in(Real(8, 0.0).readOnly().moving())
        .unit("us")
        .available("ChunkActive")
        .expert();
    t.floating("ChunkGain",
               {"Gain with which the last frame with chunk data was taken.", "数据块增益",
                "最近一个带数据块的帧的增益。"})
        .in(Real(4, 0.0).readOnly().moving())
        .unit("dB")
        .available("ChunkActive")
        .expert();
    t.integer("ChunkLineStatusAll",
              {"Status of all lines when the last frame with chunk data was taken.",
               "数据块线路状态", "最近一个带数据块的帧采集时全部线路的状态。"})
        .in(Int(4, 0).readOnly().moving())
        .shownAs("HexNumber")
        .available("ChunkActive")
        .expert();
}

} // namespace

void addChunkEventRows(FeatureTable &table)
{
    addEvents(table);
    addChunks(table);
}
