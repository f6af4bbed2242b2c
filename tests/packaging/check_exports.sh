#!/usr/bin/env bash
# Exactly these classes are exported from the module's shared library; nothing else may leak, nothing may be missing.
set -euo pipefail
library=$1
classes='CTreeBooleanItemValue CTreeEnumationItemValue CTreeFloatItemValue CTreeIntergerItemValue CTreeItemValue
CTreeStringItemValue IVexaFeatureWidget VexaFeatureTree VexaMainFeatureWidget VexaPropertyTreeItem'

# Defined dynamic symbols by the class in front of their first "::". What the standard library and Qt instantiate
# (std::, weak symbols of their templates) is not the module's.
symbols=$(nm -D --defined-only -C "$library" | sed -E 's/^[0-9a-f]* *[A-Za-z] //' \
    | sed -E 's/^(vtable|typeinfo name|typeinfo|guard variable|non-virtual thunk|virtual thunk|construction vtable|VTT) (for|to) //')
owners=$(sed -E 's/[(<].*//; s/::.*//; s/.* //' <<<"$symbols" | sort -u | grep -vxE 'std|__gnu_cxx|' || true)

status=0
for owner in $owners; do
    grep -qw "$owner" <<<"$classes" || { echo "leaks from $library: $owner"; grep -wm3 "$owner" <<<"$symbols"; status=1; }
done
for class in $classes; do
    grep -qx "$class" <<<"$owners" || { echo "not exported from $library: $class"; status=1; }
done
exit $status
