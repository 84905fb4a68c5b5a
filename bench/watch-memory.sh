#!/bin/sh
# Peak memory (VmHWM) of `tovrin watch` over 100 status files, against a bare Qt Core event
# loop measured in the same run. Usage: bench/watch-memory.sh <build folder>
set -eu
build=${1:-build/release}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/status" "$work/home"

now=$(date -u +%Y-%m-%dT%H:%M:%SZ)
i=0
while [ $i -lt 100 ]; do
    state=working
    [ $((i % 10)) -eq 0 ] && state=waiting
    printf '{"schemaVersion":1,"tool":"claude-code","surface":"cli","sessionId":"s%d","pid":%d,"state":"%s","reason":"Needs permission to use Bash","cwd":"/home/dev/project-%d","root":"/home/dev/project-%d","title":"Refactor module %d","locator":{"tmuxPane":"%%%d","tty":"/dev/pts/3"},"startedAt":"%s","updatedAt":"%s"}\n' \
        $i $$ $state $i $i $i $i "$now" "$now" >"$work/status/s$i.json"
    i=$((i + 1))
done

# Runs a program for a few seconds and prints its peak resident size in KiB.
peak_kib() {
    "$@" >/dev/null 2>&1 &
    pid=$!
    sleep 3
    peak=$(awk '/^VmHWM:/ {print $2}' "/proc/$pid/status")
    kill -TERM "$pid" 2>/dev/null
    wait "$pid" 2>/dev/null || true
    echo "$peak"
}

export HOME="$work/home" XDG_CONFIG_HOME="$work/home/.config" AGENT_STATUS_DIR="$work/status"
watch_kib=$(peak_kib "$build/bin/tovrin" watch)
bare_kib=$(peak_kib "$build/bench/tovrin_bare_qt_core_loop")
awk -v w="$watch_kib" -v b="$bare_kib" 'BEGIN {
    printf "peak memory, 100 sessions: tovrin watch %.1f MiB, bare Qt Core loop %.1f MiB, ratio %.2f\n", w/1024, b/1024, w/b }'
