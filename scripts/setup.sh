#!/usr/bin/env bash
# Shared by run.sh and test.sh: installs what is missing, configures and builds into build/.
set -euo pipefail

root_dir="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build_dir="${TARNWICK_BUILD_DIR:-$root_dir/build}"

packages=(cmake ninja-build g++ qt6-base-dev qt6-base-dev-tools qt6-svg-dev qt6-translations-l10n libgl-dev libbenchmark-dev libsimpleini-dev)
packages+=("$@")

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -gt 0 ]; then
  if [ "$(id -u)" -ne 0 ]; then
    echo "Missing Debian packages: ${missing[*]}" >&2
    echo "Install them with: sudo apt-get install ${missing[*]}" >&2
    exit 1
  fi
  echo "Installing: ${missing[*]}"
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq
  apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

# The sanitizer and format checks only need the packages; they configure their own builds.
if [ "${TARNWICK_PACKAGES_ONLY:-0}" = 1 ]; then
  exit 0
fi

cmake -S "$root_dir" -B "$build_dir" -G Ninja ${TARNWICK_CMAKE_ARGS:-}
cmake --build "$build_dir" -j "$(nproc)"
