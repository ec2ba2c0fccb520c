#!/usr/bin/env bash
# Installs what is missing, builds into build/ and starts the editor.
set -euo pipefail
cd "$(dirname "$0")"
scripts/setup.sh
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ] && [ -z "${QT_QPA_PLATFORM:-}" ]; then
  echo "No display found: start the editor with 'xvfb-run ./run.sh' (package xvfb) or from a desktop session." >&2
  exit 1
fi
exec build/bin/tarnwick "$@"
