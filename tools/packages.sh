# Sourced by run.sh and test.sh: the Debian packages that the project needs, and how to get those that are missing.

BUILD_PACKAGES=(g++ cmake ninja-build pkg-config ccache
    qtbase5-dev libqt5svg5-dev qttools5-dev qttools5-dev-tools
    libaravis-dev libusb-1.0-0-dev libxml2-dev libglib2.0-dev zlib1g-dev)
# What the program needs to be read: Latin and Chinese fonts, Qt's own texts in Chinese, icons from SVG.
DISPLAY_PACKAGES=(fonts-dejavu-core fonts-noto-cjk qttranslations5-l10n libqt5svg5)
# The last three: a GigE Vision camera in a network namespace, and a second opinion on its values.
CHECK_PACKAGES=(clang-format-14 binutils util-linux iproute2 aravis-tools-cli)
FUZZ_PACKAGES=(clang-14 libclang-rt-14-dev)

# Installs the packages that are not there; asks the network only then.
install_missing() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
    done
    if [ ${#missing[@]} -gt 0 ]; then
        local as_root=()
        [ "$(id -u)" = 0 ] || as_root=(sudo)
        echo "installing: ${missing[*]}" >&2
        "${as_root[@]}" apt-get update -q >&2
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends \
            "${missing[@]}" >&2
    fi
    COMPILER_CACHE=()
    if command -v ccache >/dev/null; then COMPILER_CACHE=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache); fi
}
