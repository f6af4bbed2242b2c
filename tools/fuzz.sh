#!/usr/bin/env bash
# tools/fuzz.sh TARGET [OPTION...]: builds a fuzz target (description, featurefile, interpreter) with clang and runs it over
# its corpus; the options are libFuzzer's. tests/fuzz/README.md tells more.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source tools/packages.sh

target=${1:?TARGET is description, featurefile or interpreter}
shift
install_missing "${BUILD_PACKAGES[@]}" "${FUZZ_PACKAGES[@]}"
cmake --preset fuzz "${COMPILER_CACHE[@]}"
cmake --build build-fuzz --target "fuzz_$target"

found=$PWD/build-fuzz/found/$target
mkdir -p "$found"
dictionary=tests/fuzz/$target.dict
[ -f "$dictionary" ] || dictionary=tests/fuzz/description.dict
# Call stacks of allocations in libraries without frame pointers are all different, and cost more than the rest.
export ASAN_OPTIONS=malloc_context_size=1:quarantine_size_mb=4
exec build-fuzz/bin/fuzz_"$target" -max_len=1200 -timeout=20 -dict="$dictionary" -artifact_prefix="$found-" \
    "$@" "$found" "tests/fuzz/corpus/$target"
