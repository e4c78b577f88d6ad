#!/usr/bin/env bash
# Installs the Debian 12 packages that building, testing and benchmarking need.
# Safe to run again: apt skips what is already there.
set -euo pipefail
packages=(
  build-essential cmake ninja-build pkg-config
  qt6-base-dev qt6-base-dev-tools libgl-dev qt6-charts-dev qt6-svg-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  clang clang-format libclang-rt-14-dev
  libgdal-dev odbc-mdbtools mdbtools
  # renders the user's guide to HTML at build time
  pandoc
  # a real X server for the end-to-end test of the desktop screens
  xvfb xauth
)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  sudo_cmd=""
  [ "$(id -u)" -ne 0 ] && sudo_cmd="sudo"
  $sudo_cmd apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo_cmd apt-get install -y -qq "${missing[@]}"
fi
