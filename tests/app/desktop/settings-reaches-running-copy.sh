#!/bin/sh
# `tovrin settings` brings the window forward in the tray application that runs, starting one
# only when none does, and never a second; `tovrin feedback` reaches the same copy. On a private
# session bus and X server.
# Usage: settings-reaches-running-copy.sh <tovrin>. Exits 77 (skipped) without the tools.
set -eu
for tool in xvfb-run xauth dbus-run-session pgrep xdotool openbox; do
    command -v "$tool" >/dev/null 2>&1 || { echo "$tool not found: skipped"; exit 77; }
done

exec xvfb-run -a -s "-screen 0 1280x800x24 -nolisten tcp" dbus-run-session -- sh -c '
    tovrin=$1
    work=$(mktemp -d)
    export HOME="$work" XDG_CONFIG_HOME="$work/.config" XDG_RUNTIME_DIR="$work/run" AGENT_STATUS_DIR="$work/status"
    mkdir -m 700 "$XDG_RUNTIME_DIR"
    # Tray applications of this test only: those that run with its home.
    ours() {
        for pid in $(pgrep -f libexec/tovrin/tovrin-desktop); do
            tr "\0" "\n" <"/proc/$pid/environ" 2>/dev/null | grep -qx "HOME=$work" && echo "$pid"
        done
        return 0
    }
    copies() { ours | wc -l; }
    # The copies end before their X server and bus do, as at a logout, not killed by a lost display.
    cleanup() {
        kill $(ours) 2>/dev/null || true
        for _ in $(seq 50); do [ -z "$(ours)" ] && break; sleep 0.1; done
        kill "$wm" 2>/dev/null || true
        rm -rf "$work"
    }
    trap cleanup EXIT
    openbox >/dev/null 2>&1 &
    wm=$!
    fail() { echo "FAIL: $*"; exit 1; }

    # None runs: the command starts the tray application, which opens the window.
    "$tovrin" settings >"$work/first.log" 2>&1 &
    sleep 3
    [ "$(copies)" = 1 ] || fail "expected one tray application after the first request, found $(copies)"

    # xdotool gives up on an X error, which a window closing under it causes: each check is retried.
    visible() { xdotool search --onlyvisible --name "^${1:-Tovrin Settings}\$" >/dev/null 2>&1; }
    shown() {
        for _ in $(seq 100); do visible "$@" && return 0; sleep 0.1; done
        return 1
    }
    # Closed the way a user does: Alt+F4, which the window manager takes once the window is active. A
    # second Alt+F4 goes only after a long wait, or it could close the window that the next request opens.
    close() {
        for _ in 1 2 3; do
            xdotool search --onlyvisible --name "^Tovrin Settings\$" windowactivate --sync key alt+F4 >/dev/null 2>&1
            for _ in $(seq 30); do visible || return 0; sleep 0.1; done
        done
        return 1
    }
    shown || fail "the first request showed no settings window"

    # One runs: the command only asks it, however often and however quickly; a closed window comes back.
    for i in 1 2 3; do
        close || fail "Alt+F4 left the window open"
        timeout 20 "$tovrin" settings || fail "request $i was not answered"
        shown || fail "request $i showed no settings window"
    done
    timeout 20 "$tovrin" feedback || fail "the feedback request was not answered"
    shown "Tovrin Feedback" || fail "the feedback request showed no feedback window"
    sleep 1
    [ "$(copies)" = 1 ] || fail "expected still one tray application, found $(copies)"
    echo "ok: one tray application answered every request"
' settings-reaches-running-copy "$1"
