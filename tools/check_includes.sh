#!/usr/bin/env bash
# Holds the direction of the dependencies: which folder may include whose headers. Prints every include that goes
# the wrong way and fails when there is one.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# folder | the folders whose headers its own headers and sources may include (its own is always allowed)
RULES='
platform|platform
model|platform
tree|platform model
view|platform model
editors|platform model
featurefile|platform model
fileaccess|platform model
shell|platform model tree view editors featurefile fileaccess
host/formula|
host/utilitykit|platform host/formula
host/controlkit|platform host/utilitykit
host/shellservices|platform host/utilitykit host/controlkit
host/devicetask|platform host/utilitykit host/formula
host/simulator|platform host/devicetask
host/translations|platform
host/workbench|platform model shell tree host/utilitykit host/controlkit host/shellservices host/devicetask host/simulator host/translations
'

# Where a class has to reach upwards or aside, its source file does, never its header: sources | header, as patterns
EXCEPTIONS='
model/IVexaFeatureWidget*.cpp|view/VexaFeatureTreeView.h
model/IVexaFeatureWidgetPages.cpp|tree/VexaFeatureTree.h
model/StepPage*.cpp|tree/*.h
model/IVexaFeatureWidgetPages.cpp|editors/VexaStringFormatRules.h
tree/*.cpp|view/VexaFeatureTreeView.h
tree/*.cpp|featurefile/*.h
tree/*.cpp|shell/VexaFeatureToolBar.h
tree/*.cpp|shell/VexaMainFeatureWidget.h
view/*.cpp|shell/VexaMainFeatureWidget.h
editors/*.cpp|shell/VexaMainFeatureWidget.h
editors/*.cpp|tree/*.h
fileaccess/*.cpp|shell/VexaMainFeatureWidget.h
fileaccess/*.cpp|tree/VexaFeatureTree.h
view/*.cpp|editors/*.h
'

# Headers of the client libraries that a folder must not touch although platform/ is open to it: folder | header prefix
FORBIDDEN='
host/devicetask|ControlKit/
host/devicetask|ShellServicesModule/
host/devicetask|QtWidgets
'

# Headers of the module that the workbench may include: the exported ones.
EXPORTED='model/CTreeItemValue.h model/CTreeIntergerItemValue.h model/CTreeFloatItemValue.h
model/CTreeBooleanItemValue.h model/CTreeStringItemValue.h model/CTreeEnumationItemValue.h
model/FeatureFileValues.h model/VexaPropertyTreeItem.h model/IVexaFeatureWidget.h shell/PollingRoles.h shell/VexaMainFeatureWidget.h tree/VexaFeatureTree.h'

bad=0
complain() { echo "$1: must not include $2"; bad=1; }

# The folder of the tree that an included path belongs to, empty for Qt, the system and the same folder.
folder_of() {
    local path=$1
    case $path in
        host/*/*) echo "host/$(cut -d/ -f2 <<<"$path")" ;;
        DeviceTaskModule/* | ShellServicesModule/* | UtilityKit/* | ControlKit/*) echo platform ;;
        */*) local top=${path%%/*}; if [ -d "$top" ]; then echo "$top"; fi ;;
    esac
}

is_exception() {
    local source header
    while IFS='|' read -r source header; do
        # shellcheck disable=SC2053 # both are patterns
        if [ -n "$source" ] && [[ $1 == $source && $2 == $header ]]; then return 0; fi
    done <<<"$EXCEPTIONS"
    return 1
}

check_folder() {
    local folder=$1 allowed=" $2 $1 " file line path target
    [ -d "$folder" ] || return 0
    while IFS= read -r file; do
        while IFS= read -r path; do
            target=$(folder_of "$path")
            while IFS='|' read -r rule_folder prefix; do
                if [ "$rule_folder" = "$folder" ] && [[ $path == "$prefix"* ]]; then complain "$file" "$path"; fi
            done <<<"$FORBIDDEN"
            [ -n "$target" ] || continue
            if [[ $allowed != *" $target "* ]] && ! is_exception "$file" "$path"; then
                complain "$file" "$path"
            elif [ "$folder" = host/workbench ] && [[ $target == model || $target == shell || $target == tree ]] \
                && ! grep -qwF "$path" <<<"$EXPORTED"; then
                complain "$file" "$path (not exported)"
            fi
        done < <(sed -nE 's/^[[:space:]]*#[[:space:]]*include[[:space:]]*["<]([^">]+)[">].*/\1/p' "$file")
    done < <(find "$folder" -maxdepth 3 \( -name '*.h' -o -name '*.cpp' \) | sort)
}

while IFS='|' read -r folder allowed; do
    [ -n "$folder" ] && check_folder "$folder" "$allowed"
done <<<"$RULES"

# A widget's header in the device layer, whatever its path looks like.
if grep -rnE '#[[:space:]]*include[[:space:]]*<Q(Widget|Application|Dialog|MessageBox|Label)>' host/devicetask; then
    echo "host/devicetask: must not know a widget"; bad=1
fi
# platform/ holds contracts only.
if find platform -name '*.cpp' | grep .; then echo "platform: must not hold sources"; bad=1; fi

[ "$bad" = 0 ] && echo "includes: every dependency goes the right way"
exit "$bad"
