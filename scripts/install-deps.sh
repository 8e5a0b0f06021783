#!/usr/bin/env bash
# Installs the Debian packages Plotwell builds and tests with, only those missing.
# "install-deps.sh fuzz" adds clang and its libFuzzer for scripts/fuzz.sh;
# "install-deps.sh package" adds what scripts/package.sh builds and checks the
# Debian package with.
set -euo pipefail
packages=(g++ cmake ninja-build qt6-base-dev libgl-dev libgtest-dev fonts-dejavu-core fonts-liberation2)
if [ "${1:-}" = fuzz ]; then
  packages+=(clang libclang-rt-14-dev)
fi
if [ "${1:-}" = package ]; then
  packages+=(dpkg-dev file appstream desktop-file-utils)
fi
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0
echo "Installing: ${missing[*]}"
sudo=""
[ "$(id -u)" -eq 0 ] || sudo="sudo"
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
