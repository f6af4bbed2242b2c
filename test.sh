#!/usr/bin/env bash
# Everything that has to hold before a change lands: the checks, the build with warnings as errors, all tests, and all
# tests again under AddressSanitizer and UndefinedBehaviorSanitizer. The last line is ctest's closing line of that run.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
source tools/packages.sh

install_missing "${BUILD_PACKAGES[@]}" "${DISPLAY_PACKAGES[@]}" "${CHECK_PACKAGES[@]}"

tools/check_includes.sh
find . -path './.*' -prune -o -path './build*' -prune -o \( -name '*.h' -o -name '*.cpp' \) -print0 \
    | xargs -0 clang-format-14 --dry-run -Werror
echo "format: every source file is as .clang-format says"

for preset in dev asan; do
    cmake --preset "$preset" "${COMPILER_CACHE[@]}"
    cmake --build --preset "$preset" -j "$(nproc)"
    ctest --preset "$preset" -j "$(nproc)"
done
