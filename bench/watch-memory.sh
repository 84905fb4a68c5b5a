#!/bin/sh
# Peak memory (VmHWM) of `tovrin watch` over 100 status files, against a bare Qt Core event
# loop measured in the same run. Ten of the sessions are waiting, so the run includes alerting
# (the first alert sound loads the sound libraries).
# Usage: bench/watch-memory.sh <build folder> [--libraries]
#   --libraries  also lists the resident memory of `tovrin watch` per mapped file, largest first
set -eu
build=${1:-build/release}
libraries=${2-}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/home"

"$(dirname "$0")/make-sessions.sh" "$work/status" 100 $$

# Runs a program for a few seconds and prints its peak resident size in KiB.
peak_kib() {
    "$@" >/dev/null 2>&1 &
    pid=$!
    sleep 3
    peak=$(awk '/^VmHWM:/ {print $2}' "/proc/$pid/status")
    if [ "$libraries" = "--libraries" ]; then
        awk '/^[0-9a-f]+-[0-9a-f]+ / { name = ($6 == "" ? "[anonymous]" : $6) }
             /^Rss:/ { rss[name] += $2 }
             END { for (n in rss) if (rss[n] > 0) printf "%7d KiB  %s\n", rss[n], n }' \
            "/proc/$pid/smaps" | sort -rn >"$work/libraries.txt"
    fi
    kill -TERM "$pid" 2>/dev/null
    wait "$pid" 2>/dev/null || true
    echo "$peak"
}

export HOME="$work/home" XDG_CONFIG_HOME="$work/home/.config" AGENT_STATUS_DIR="$work/status"
watch_kib=$(peak_kib "$build/bin/tovrin" watch)
[ -f "$work/libraries.txt" ] && mv "$work/libraries.txt" "$work/watch-libraries.txt"
bare_kib=$(peak_kib "$build/bench/tovrin_bare_qt_core_loop")
awk -v w="$watch_kib" -v b="$bare_kib" 'BEGIN {
    printf "peak memory, 100 sessions: tovrin watch %.1f MiB, bare Qt Core loop %.1f MiB, ratio %.2f\n", w/1024, b/1024, w/b }'
if [ -f "$work/watch-libraries.txt" ]; then
    echo "resident memory of tovrin watch per mapping:"
    cat "$work/watch-libraries.txt"
fi
