#!/bin/sh
# The tray application's figures, measured in one run on a private X server with a window manager:
# start-up to the first refresh pass with 100 sessions, peak memory with the panel open against a
# bare Qt Widgets window, and CPU and wake-ups over 60 s idle with the chip hidden and with the chip
# shown and burning. A tray (trayer) holds the icon, as on a desktop; without one the chip would stand
# in for it and always show. Usage: bench/desktop.sh <build folder> [idle seconds]
set -eu
build=${1:-build/release}
idle=${2:-60}

if [ -z "${TOVRIN_BENCH_ON_PRIVATE_X-}" ]; then
    export TOVRIN_BENCH_ON_PRIVATE_X=1
    exec xvfb-run -a -s "-screen 0 1920x1080x24 -nolisten tcp" sh -c '
        openbox --sm-disable >/dev/null 2>&1 &
        trayer --edge top --align right --widthtype request --height 24 >/dev/null 2>&1 &
        sleep 1
        "$@"' desktop-bench "$0" "$@"
fi

here=$(dirname "$0")
work=$(mktemp -d)
sleep 100000 &
owner=$!
trap 'kill $owner 2>/dev/null; rm -rf "$work"' EXIT
"$here/make-sessions.sh" "$work/status" 100 "$owner"
export HOME="$work/home" XDG_CONFIG_HOME="$work/home/.config" XDG_RUNTIME_DIR="$work/run" AGENT_STATUS_DIR="$work/status"
mkdir -p "$XDG_CONFIG_HOME/tovrin" "$XDG_RUNTIME_DIR"
chmod 700 "$XDG_RUNTIME_DIR"

median() { sort -n | awk '{ v[NR] = $1 } END { print (NR % 2) ? v[(NR + 1) / 2] : (v[NR / 2] + v[NR / 2 + 1]) / 2 }'; }

: >"$work/first-pass" && : >"$work/peak"
for _ in 1 2 3 4 5; do
    TOVRIN_BENCH_LAUNCH_NS=$(date +%s%N) "$build/bench/tovrin_desktop_startup_probe" >"$work/probe.out" 2>/dev/null
    awk '/^first-pass-ms/ { print $2 }' "$work/probe.out" >>"$work/first-pass"
    awk '/^peak-kib/ { print $2 }' "$work/probe.out" >>"$work/peak"
done
: >"$work/bare"
for _ in 1 2 3; do
    "$build/bench/tovrin_bare_qt_widgets_window" 2>/dev/null | awk '/^peak-kib/ { print $2 }' >>"$work/bare"
done
first=$(median <"$work/first-pass")
peak=$(median <"$work/peak")
bare=$(median <"$work/bare")
printf 'start-up to the first refresh pass, 100 sessions: median %s ms of 5 (%s)\n' "$first" "$(tr '\n' ' ' <"$work/first-pass")"
awk -v t="$peak" -v b="$bare" 'BEGIN { printf "peak memory, 100 sessions and the panel open: %.1f MiB; bare Qt Widgets window %.1f MiB; ratio %.2f\n", t/1024, b/1024, t/b }'

# Clock ticks of CPU time and context switches (each one a wake-up or a preemption) of all threads.
cpu_ticks() { awk '{ print $14 + $15 }' "/proc/$1/stat"; }
switches() { cat /proc/"$1"/task/*/status | awk '/ctxt_switches/ { s += $2 } END { print s }'; }
hz=$(getconf CLK_TCK)

idle_run() { # <label> <defaults json>
    printf '%s\n' "$2" >"$XDG_CONFIG_HOME/tovrin/defaults.json"
    "$build/libexec/tovrin/tovrin-desktop" >/dev/null 2>&1 &
    app=$!
    sleep 5
    t0=$(cpu_ticks $app) s0=$(switches $app)
    sleep "$idle"
    t1=$(cpu_ticks $app) s1=$(switches $app)
    kill $app && wait $app 2>/dev/null || true
    awk -v l="$1" -v t=$((t1 - t0)) -v s=$((s1 - s0)) -v hz="$hz" -v d="$idle" 'BEGIN {
        printf "idle %ss, %s: CPU %.2f%% of one core, %.1f context switches/s\n", d, l, 100 * t / hz / d, s / d }'
}
idle_run "chip hidden" '{"showFloatingChip": false}'
idle_run "chip shown and burning" '{"showFloatingChip": true}'
