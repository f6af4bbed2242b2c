#!/usr/bin/env bash
# Exactly these classes are exported from the module's shared library; nothing else may leak, nothing may be missing.
set -euo pipefail
library=$1
classes='CTreeBooleanItemValue CTreeEnumationItemValue CTreeFloatItemValue CTreeIntergerItemValue CTreeItemValue
CTreeStringItemValue IVexaFeatureWidget VexaFeatureTree VexaMainFeatureWidget VexaPropertyTreeItem'

# Defined dynamic symbols by the class in front of their first "::". Left out: the linker's own, the standard library's
# instantiations, and weak inline members of Qt's classes, which every user of Qt emits (a class of the module that
# leaks has strong symbols too).
symbols=$(nm -D --defined-only -C "$library" | sed -E 's/^[0-9a-f]* *//' | grep -vE '^[WV] .*\bQ[A-Z][A-Za-z]*(<|::)' \
    | sed -E 's/^[A-Za-z] //; s/^(vtable|typeinfo name|typeinfo|guard variable|non-virtual thunk|virtual thunk|VTT) (for|to) //')
owners=$(sed -E 's/[(<].*//; s/::.*//; s/.* //' <<<"$symbols" | sort -u | grep -vxE 'std|__gnu_cxx|__bss_start|_edata|_end|' || true)

status=0
for owner in $owners; do
    grep -qw "$owner" <<<"$classes" || { echo "leaks from $library: $owner"; grep -wm3 "$owner" <<<"$symbols"; status=1; }
done
for class in $classes; do
    grep -qx "$class" <<<"$owners" || { echo "not exported from $library: $class"; status=1; }
done
exit $status
