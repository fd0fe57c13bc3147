#!/usr/bin/env bash
# make run: the sandbox CAD and the program connected to it, on the demo
# library (made once in the build directory). The program's settings for this
# run live in the build directory too, so the user's own stay untouched.
# Without a display both run offscreen, each writes a screenshot, and the
# paths are printed.
set -euo pipefail
build=${1:-build}
build=$(cd "$build" && pwd)
here=$(cd "$(dirname "$0")" && pwd)
demo="$build/demo-library"
config="$build/run-config"
export XDG_CONFIG_HOME="$config"
export KOLVANE_SANDBOX_SOCKET="kolvane-sandbox-run-${USER:-user}"

if [ ! -f "$demo/dbKolvane.mdb" ]; then
  rm -rf "$demo"
  "$build/bin/kolvane-tool" demo-library "$demo"
fi
if [ ! -f "$config/Kolvane/Kolvane9.0.ini" ]; then
  mkdir -p "$config/Kolvane"
  printf '[AllgemeineDaten]\r\nHost=sandbox\r\nDbVerzeichnis0=%s\r\n' "$demo/dbKolvane.mdb" \
    > "$config/Kolvane/Kolvane9.0.ini"
fi

offscreen=0
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
  export QT_QPA_PLATFORM=offscreen
  offscreen=1
  echo "No display: the sandbox CAD and the program run offscreen."
fi

sandbox_shot="$build/sandbox-cad.png"
"$build/bin/sandbox-cad" --socket "$KOLVANE_SANDBOX_SOCKET" --script "$here/sandbox-cad/demo.scr" \
  --screenshot "$sandbox_shot" > "$build/sandbox-cad.log" 2>&1 &
sandbox=$!
trap 'kill $sandbox 2>/dev/null || true' EXIT
for _ in $(seq 1 100); do
  grep -q listening "$build/sandbox-cad.log" && break
  kill -0 $sandbox 2>/dev/null || { cat "$build/sandbox-cad.log" >&2; exit 1; }
  sleep 0.1
done

if [ $offscreen = 1 ]; then
  "$build/bin/kolvane" --host sandbox --screenshot "$build/kolvane.png"
  sleep 1
  echo "Screenshot of the program: $build/kolvane.png"
  echo "Screenshot of the sandbox CAD: $sandbox_shot"
else
  "$build/bin/kolvane" --host sandbox
fi
