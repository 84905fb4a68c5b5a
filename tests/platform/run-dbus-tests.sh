#!/bin/sh
# Runs the D-Bus tests of the given test binary on a private session bus that has no activatable
# services, so that no notification server of the machine can answer in place of the test's own.
# Exits 77 (skipped) when dbus-run-session is missing.
set -eu

binary=$1
shift
command -v dbus-run-session >/dev/null 2>&1 || { echo "dbus-run-session not found: skipped"; exit 77; }

config=$(mktemp "${TMPDIR:-/tmp}/tovrin-bus.XXXXXX")
trap 'rm -f "$config"' EXIT INT TERM
cat >"$config" <<CONFIG
<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>session</type>
  <listen>unix:tmpdir=${TMPDIR:-/tmp}</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
CONFIG

TOVRIN_PRIVATE_SESSION_BUS=1 dbus-run-session --config-file="$config" -- \
    "$binary" --gtest_filter='DBusDesktopNotifier*' "$@"
