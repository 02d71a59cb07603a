#!/usr/bin/env bash
# Installs what building, running and testing Tessary needs on Debian 12 /
# Ubuntu. Idempotent: when everything is present it only checks and returns.
set -euo pipefail

packages=(
  # toolchain
  cmake ninja-build g++ pkg-config clang-format
  # Qt 6, ICU, GIO
  qt6-base-dev qt6-base-dev-tools libgl-dev libicu-dev libglib2.0-dev
  # X11 / xcb
  libxcb1-dev libxcb-ewmh-dev libxcb-icccm4-dev libxcb-randr0-dev libxcb-xtest0-dev
  libxcb-xinput-dev libxcb-keysyms1-dev libxcb-xkb-dev libxcb-xfixes0-dev libxcb-res0-dev
  libx11-dev libx11-xcb-dev libxtst-dev libxi-dev libxrandr-dev
  # tests and benchmarks
  libgtest-dev libgmock-dev libbenchmark-dev
  # the Debian package and its checks
  dpkg-dev file lintian desktop-file-utils appstream
  # quality gates: clazy over src/, libFuzzer targets (bench/fuzz.sh)
  clazy clang libclang-rt-14-dev
  # the test X session and its real clients
  xvfb xserver-xorg-core xserver-xorg-video-dummy xauth x11-xkb-utils openbox xfwm4 xfconf mutter libglib2.0-bin dbus-daemon i3-wm xdotool xclip xterm x11-apps x11-utils x11-xserver-utils xfonts-base trayer
  # desktop services: GNOME's file index and its SPARQL client, private session buses, locales for tests
  libtracker-sparql-3.0-dev libstartup-notification0-dev tracker tracker-miner-fs gsettings-desktop-schemas locales
  # KDE's file index (its indexer and search client) for the index test
  baloo-kf5
)

missing=()
for pkg in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null | grep -q 'install ok installed' || missing+=("$pkg")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
sudo=""
[ "$(id -u)" -eq 0 ] || sudo="sudo"
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
