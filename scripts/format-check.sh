#!/usr/bin/env bash
# Fails when a tracked C++ source differs from what clang-format makes of it.
set -euo pipefail
cd "$(dirname "$0")/.."
TARNWICK_PACKAGES_ONLY=1 scripts/setup.sh clang-format
git ls-files -z '*.cpp' '*.h' | xargs -0 clang-format --dry-run --Werror
echo "Format check: all sources as clang-format writes them."
