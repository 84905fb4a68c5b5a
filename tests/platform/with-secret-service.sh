#!/bin/sh
# Runs a test binary, filtered to its Secret Service tests, against a keyring daemon of its own on a
# session bus of its own, in a throw-away home, so that no real keyring is ever touched.
# Usage: with-secret-service.sh <test binary> <gtest filter>
# Exits 77 (skipped) when the bus or the keyring daemon isn't installed.
set -eu

binary=$1
filter=$2

for tool in dbus-run-session gnome-keyring-daemon; do
    if ! command -v "$tool" >/dev/null 2>&1; then
        echo "$tool is not installed; skipping" >&2
        exit 77
    fi
done

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT INT TERM
mkdir -p "$scratch/home" "$scratch/run"
chmod 700 "$scratch/run"

export HOME="$scratch/home"
export XDG_DATA_HOME="$scratch/home/.local/share"
export XDG_CONFIG_HOME="$scratch/home/.config"
export XDG_CACHE_HOME="$scratch/home/.cache"
export XDG_RUNTIME_DIR="$scratch/run"
unset DISPLAY WAYLAND_DISPLAY GNOME_KEYRING_CONTROL SSH_AUTH_SOCK

# --unlock creates the login keyring with this password and makes it the default collection.
# The daemon leaves with the bus when dbus-run-session ends.
dbus-run-session -- sh -c '
    printf "tovrin-test" | gnome-keyring-daemon --unlock --components=secrets >/dev/null
    TOVRIN_SECRET_SERVICE_TESTS=1 "$0" --gtest_filter="$1"
' "$binary" "$filter"
