#!/bin/sh
# Runs the X11 tests of the given test binary on a private Xvfb server with openbox as the EWMH
# window manager, so that no desktop of the machine gets test windows or loses its focus. The
# tests wait for the window manager themselves. Exits 77 (skipped) when a tool is missing.
set -eu

binary=$1
shift
for tool in xvfb-run xauth openbox; do
    command -v "$tool" >/dev/null 2>&1 || { echo "$tool not found: skipped"; exit 77; }
done

exec xvfb-run -a -s "-screen 0 1280x800x24 -nolisten tcp" sh -c '
    openbox --sm-disable >/dev/null 2>&1 &
    wm=$!
    status=0
    TOVRIN_PRIVATE_X_DISPLAY=1 "$@" || status=$?
    kill "$wm" 2>/dev/null || true
    wait "$wm" 2>/dev/null || true
    exit "$status"
' run-x11-tests "$binary" --gtest_filter='XcbWindowSystem*' "$@"
