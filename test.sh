#!/usr/bin/env bash
# Installs what is missing, builds into build/ and runs the whole test suite.
set -euo pipefail
cd "$(dirname "$0")"
scripts/setup.sh
export QT_QPA_PLATFORM=offscreen
ctest --test-dir build --output-on-failure -j "$(nproc)"
