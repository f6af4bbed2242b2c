#!/usr/bin/env bash
# Builds the workbench and starts it; arguments are passed on to it. Without a display it draws off screen and saves
# a picture of its window.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
source tools/packages.sh

install_missing "${BUILD_PACKAGES[@]}" "${DISPLAY_PACKAGES[@]}"

cmake --preset release -DFTM_BUILD_TESTS=OFF -DFTM_BUILD_BENCHMARKS=OFF "${COMPILER_CACHE[@]}" >&2
cmake --build build-release -j "$(nproc)" >&2

workbench=build-release/bin/vexa-workbench
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    exec "$workbench" "$@"
fi
for argument in "$@"; do
    case $argument in
        --device* | --description* | --memory-pattern* | --gige* | --usb* | --language* | --user-level*) ;;
        --*) exec "$workbench" "$@" ;; # prints, or writes a file: needs no window
    esac
done
# As the window would start: both devices.
[ $# -gt 0 ] || set -- $("$workbench" --list | awk -F'\t' '
    $1 == "area-camera" { area = 1 } $1 == "code-reader" { reader = 1 }
    END { if (area) print "--device area-camera --device", reader ? "code-reader" : "area-camera" }')
picture=$PWD/build-release/workbench.png
"$workbench" --screenshot "$picture" "$@"
echo "No display: the window was drawn to $picture"
