#include "host/simulator/codereader/CodeReader.h"
#include "host/simulator/description/PlainRows.h"

namespace {

/// A command that the client asks after until its work is done.
void addSetCommand(FeatureTable &t, const char *name, const Texts &texts, bool isLocked)
{
    FeatureBuilder feature = t.command(name, texts);
    feature.runs(Int(4, 0).transient().moving(100)).custom();
    if (isLocked) {
        feature.locked();
    }
}

} // namespace

void addReaderUserSetRows(FeatureTable &t)
{
    t.category("UserSetControl",
               {"Features that save and load the settings of the device.", "用户参数组控制",
                "保存和加载设备参数的特征。"},
               0x19000);
    // Bit n of the word tells whether set n is there.
    t.registerNode("UserSetPresentWord", Int(4, 3).readOnly().moving());
    t.intSwissKnife("UserSet2Present", "(ALL >> 2) & 1", {{"ALL", "UserSetPresentWord"}});
    t.intSwissKnife("UserSet3Present", "(ALL >> 3) & 1", {{"ALL", "UserSetPresentWord"}});
    t.intSwissKnife("UserSet4Present", "(ALL >> 4) & 1", {{"ALL", "UserSetPresentWord"}});
    const QVector<EntryRow> sets = {
        {"Default", 0, "出厂参数"},
        {"UserSet1", 1, "用户参数组1"},
        {"UserSet2", 2, "用户参数组2", {"UserSet2Present"}},
        {"UserSet3", 3, "用户参数组3", {"UserSet3Present"}},
        {"UserSet4", 4, "用户参数组4", {"UserSet4Present"}},
    };
    const QVector<ChoiceRow> choices = {
        {"UserSetSelector",
         {"Selects the user set to load, save or configure.", "用户参数组选择",
          "选择要加载、保存或配置的用户参数组。"},
         sets,
         1,
         RowOptions().standard().transient()},
        {"UserSetDefault",
         {"Selects the user set that is loaded when the device is switched on or reset.",
          "默认参数组", "选择设备上电或复位时加载的用户参数组。"},
         sets,
         0,
         RowOptions().standard().transient()},
    };
    addRows(t, choices);
    t.intSwissKnife("UserSetNameOffset", "SEL * 32", {{"SEL", "UserSetSelectorReg"}});
    t.string("UserSetName",
             {"Name that the user gives to the selected user set.", "参数组名称",
              "用户为所选参数组设定的名称。"},
             Text(32, "Settings").transient().offsetBy("UserSetNameOffset", kReaderUserSets))
        .custom()
        .selectedBy("UserSetSelector");
    addSetCommand(t, "UserSetLoad",
                  {"Loads the selected user set and makes it active.", "加载用户参数组",
                   "加载所选用户参数组并使其生效。"},
                  true);
    addSetCommand(t, "UserSetSave",
                  {"Saves the present settings to the selected user set.", "保存用户参数组",
                   "将当前设置保存到所选用户参数组。"},
                  false);
    addSetCommand(t, "UserSetAdd",
                  {"Adds a user set with the present settings and selects it. The device holds "
                   "four of them.",
                   "新增用户参数组", "以当前设置新增一个用户参数组并选中，设备最多保存四组。"},
                  false);
    addSetCommand(t, "UserSetDelete",
                  {"Deletes the selected user set. The first two cannot be deleted, nor the one "
                   "that is loaded at the start.",
                   "删除用户参数组", "删除所选用户参数组，前两组及上电加载的参数组不能删除。"},
                  false);
    addSetCommand(t, "UserSetRecover",
                  {"Brings all settings back to those of the factory at once. User sets stay.",
                   "恢复参数", "立即将全部参数恢复为出厂值，用户参数组保持不变。"},
                  true);
    addSetCommand(t, "UserSetRecoverPartly",
                  {"Brings the settings back to those of the factory but for the communication.",
                   "部分恢复参数", "将除通信以外的参数恢复为出厂值。"},
                  true);
    addSetCommand(t, "UserSetRecoverDefault",
                  {"Brings the selected user set back to the settings of the factory. They take "
                   "effect when it is loaded.",
                   "恢复默认参数组", "将所选用户参数组恢复为出厂值，加载后生效。"},
                  false);
    addSetCommand(t, "UserSetRecoverFactory",
                  {"Brings the settings and all user sets back to those of the factory.",
                   "恢复全部参数组", "将当前参数与全部用户参数组恢复为出厂值。"},
                  true);
}
