#!/usr/bin/env bash
# Starts the program from the build directory. Without a display it runs on
# the offscreen platform.
set -euo pipefail
build=${1:-build}
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
  export QT_QPA_PLATFORM=offscreen
  echo "No display: running offscreen."
fi
exec "$build/bin/kolvane"
