#include "host/simulator/description/FeatureBuilder.h"
#include "host/simulator/sfnc/StandardRows.h"

void addUserSetRows(FeatureTable &t)
{
    t.category("UserSetControl",
               {"Features that save and load the settings of the device.", "用户参数组控制",
                "保存和加载设备参数的特征。"},
               0x19000);
    t.enumeration("UserSetSelector",
                  {"Selects the user set to load, save or configure.", "用户参数组选择",
                   "选择要加载、保存或配置的用户参数组。"})
        .entry("Default", 0, "出厂参数")
        .entry("UserSet1", 1, "用户参数组1")
        .entry("UserSet2", 2, "用户参数组2")
        .entry("UserSet3", 3, "用户参数组3")
        .in(Int(4, 0).transient());
    t.intSwissKnife("UserSetFixed", "(SEL = 0) || (LOCKED = 1)",
                    {{"SEL", "UserSetSelectorReg"}, {"LOCKED", "TLParamsLocked"}});
    t.command("UserSetLoad",
              {"Loads the selected user set and makes it active.", "加载用户参数组",
               "加载所选用户参数组并使其生效。"})
        .locked()
        .runs(Int(4, 0).transient().moving(100))
        .selectedBy("UserSetSelector");
    t.command("UserSetSave",
              {"Saves the present settings to the selected user set. The default set cannot be "
               "overwritten.",
               "保存用户参数组", "将当前设置保存到所选用户参数组，出厂参数不可覆盖。"})
        .locked("UserSetFixed")
        .runs(Int(4, 0).transient().moving(100))
        .selectedBy("UserSetSelector");
    t.enumeration("UserSetDefault",
                  {"Selects the user set that is loaded when the device is switched on or reset.",
                   "默认参数组", "选择设备上电或复位时加载的用户参数组。"})
        .entry("Default", 0, "出厂参数")
        .entry("UserSet1", 1, "用户参数组1")
        .entry("UserSet2", 2, "用户参数组2")
        .entry("UserSet3", 3, "用户参数组3")
        .in(Int(4, 0).transient());
    t.string("UserSetDescription",
             {"Note of the user on the settings of the device.", "参数组说明",
              "用户对设备参数的说明。"},
             Text(64, "Factory settings"))
        .streamable()
        .custom()
        .expert();
    t.enumeration("UserSetFeatureSelector",
                  {"Selects which feature UserSetFeatureEnable refers to.", "参数组特征选择",
                   "选择参数组特征使能所指的特征。"})
        .entry("ExposureTime", 0, "曝光时间")
        .entry("Gain", 1, "增益")
        .entry("PixelFormat", 2, "像素格式")
        .expert()
        .in(Int(4, 0).transient());
    t.boolean("UserSetFeatureEnable",
              {"Tells whether the selected feature is part of the user sets.", "参数组特征使能",
               "指示所选特征是否包含在用户参数组中。"})
        .in(Int(4, 1).readOnly().indexedBy("UserSetFeatureSelector", 3))
        .expert()
        .selectedBy("UserSetFeatureSelector");
}

void addSequencerRows(FeatureTable &t)
{
    t.category("SequencerControl",
               {"Features of the sequencer that changes settings from frame to frame.",
                "序列器控制", "控制逐帧切换参数的序列器的特征。"},
               0x19400, "Root", "Expert");
    t.enumeration(
         "SequencerMode",
         {"Controls whether the sequencer is active.", "序列器模式", "控制序列器是否启用。"})
        .entry("Off", 0, "关闭")
        .entry("On", 1, "开启")
        .expert()
        .locked()
        .in(Bits("SequencerWord", 0, 1, 0));
    t.enumeration("SequencerConfigurationMode",
                  {"Controls whether the sequencer is in configuration mode.", "序列器配置模式",
                   "控制序列器是否处于配置模式。"})
        .entry("Off", 0, "关闭")
        .entry("On", 1, "开启")
        .expert()
        .locked()
        .in(Bits("SequencerWord", 1, 1, 0));
    t.intSwissKnife("SequencerConfiguring", "MODE = 1",
                    {{"MODE", "SequencerConfigurationModeReg"}});
    t.integer("SequencerSetSelector",
              {"Selects the sequencer set to which further settings apply.", "序列参数组选择",
               "选择后续设置所作用的序列参数组。"})
        .in(Int(4, 0))
        .range("0", "3", "1")
        .expert();
    t.command("SequencerSetSave",
              {"Saves the present settings of the device to the selected sequencer set.",
               "保存序列参数组", "将设备当前设置保存到所选序列参数组。"})
        .available("SequencerConfiguring")
        .expert()
        .runs(Trigger())
        .selectedBy("SequencerSetSelector");
    t.command("SequencerSetLoad",
              {"Loads the selected sequencer set into the device.", "加载序列参数组",
               "将所选序列参数组加载到设备。"})
        .available("SequencerConfiguring")
        .expert()
        .runs(Trigger())
        .selectedBy("SequencerSetSelector");
    t.integer("SequencerSetStart",
              {"Sets the initial set of the sequence.", "序列起始组", "设置序列的起始参数组。"})
        .in(Int(4, 0))
        .range("0", "3", "1")
        .expert();
    t.integer("SequencerSetNext",
              {"Set that follows the selected one.", "序列下一组", "所选参数组之后的参数组。"})
        .in(Int(4, 1).values({1, 2, 3, 0}).indexedBy("SequencerSetSelector", 4))
        .range("0", "3", "1")
        .expert()
        .selectedBy("SequencerSetSelector");
    t.integer("SequencerSetActive",
              {"Set that is active at present.", "序列当前组", "当前生效的序列参数组。"})
        .in(Int(4, 0).readOnly().moving())
        .expert();
}
