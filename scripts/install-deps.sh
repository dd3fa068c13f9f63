#!/usr/bin/env bash
# Installs the Debian 12 packages that building, testing and running the project need.
set -euo pipefail
packages=(
    build-essential cmake ninja-build pkg-config clang clang-format libclang-rt-14-dev
    libicu-dev nlohmann-json3-dev
    libcairo2-dev libpango1.0-dev libgdk-pixbuf-2.0-dev libglib2.0-dev
    libxcb1-dev libxcb-xkb-dev libxcb-randr0-dev libxcb-cursor-dev libxcb-shm0-dev libxcb-xinput-dev libxcb-xfixes0-dev
    libxkbcommon-dev libxkbcommon-x11-dev xkb-data
    xvfb xdotool x11-xkb-utils x11-utils x11-xserver-utils xclip openbox python3
    shared-mime-info adwaita-icon-theme hicolor-icon-theme fonts-dejavu-core
    libgtest-dev libgmock-dev googletest libbenchmark-dev
)
missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi
sudo=""
[ "$(id -u)" -eq 0 ] || sudo="sudo"
$sudo apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
