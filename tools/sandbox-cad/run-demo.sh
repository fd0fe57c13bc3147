#!/usr/bin/env bash
# Starts the sandbox CAD for a demo: a small drawing on screen, the automation
# server listening for the program. Without a display it runs offscreen and
# keeps a screenshot of its window up to date.
#
#   tools/sandbox-cad/run-demo.sh [BUILD_DIR]      (default: build)
#
# It prints the socket, the process id and how to start the program against
# it, and returns; stop the sandbox with `kill PID` or its QUIT command.
set -euo pipefail
build=${1:-build}
here=$(cd "$(dirname "$0")" && pwd)
exe="$build/bin/sandbox-cad"
if [ ! -x "$exe" ]; then
  echo "run-demo: $exe is missing; build it first (cmake --build $build --target sandbox-cad)" >&2
  exit 1
fi
socket=${KOLVANE_SANDBOX_SOCKET:-kolvane-sandbox-${USER:-${USERNAME:-user}}}
shot=${SANDBOX_SCREENSHOT:-$(cd "$build" && pwd)/sandbox-cad.png}
log=$(mktemp "${TMPDIR:-/tmp}/sandbox-cad.XXXXXX.log")
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
  export QT_QPA_PLATFORM=offscreen
  echo "No display: the sandbox runs offscreen."
fi
"$exe" --socket "$socket" --script "$here/demo.scr" --screenshot "$shot" >"$log" 2>&1 &
pid=$!
for _ in $(seq 1 100); do
  grep -q "listening" "$log" && break
  kill -0 "$pid" 2>/dev/null || { cat "$log" >&2; exit 1; }
  sleep 0.1
done
grep -q "listening" "$log" || { echo "run-demo: the sandbox did not start" >&2; cat "$log" >&2; kill "$pid"; exit 1; }
sleep 1  # the demo drawing and the first screenshot
echo "Sandbox CAD: pid $pid, socket $socket, log $log"
echo "Screenshot of its window: $shot"
echo "Start the program against it:"
echo "  KOLVANE_SANDBOX_SOCKET=$socket $build/bin/kolvane --host sandbox"
