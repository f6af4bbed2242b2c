#include "tree/CommandRules.h"

const CommandRule &commandRuleOf(const QString &nodeName)
{
    static const CommandRule COMMAND_RULES[] = {
        {"AcquisitionStart", CommandTrait::WaitsForStartOfGrabbing},
        {"Custom_RegularExpressionFilterRules", CommandTrait::RunsNothing},
        {"FocusMode", CommandTrait::NeedsFocusDone},
        {"RecoverFactory", CommandTrait::TakesDeviceAway, "lang_qfeaturetree_surerecover"},
        {"UserSetRecoverFactory", {}, "lang_qfeaturetree_surerecover"},
        {"UserSetDelete", {}, "lang_qfeaturetree_suredeletecurcfg"},
        {"UserSetLoad", CommandTrait::LoadsSettings},
        {"UserSetRecoverDefault", CommandTrait::ShowsLoading,
         "lang_qfeaturetree_surerecoverdefault"},
        {"UserSetAdd", CommandTrait::FailureAlsoPrompts},
        {"DeviceReset", CommandTrait::TakesDeviceAway},
    };
    static const CommandRule NO_RULE;
    for (const CommandRule &row : COMMAND_RULES) {
        if (nodeName == QLatin1String(row.nodeName)) {
            return row;
        }
    }
    return NO_RULE;
}
