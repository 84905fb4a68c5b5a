#!/bin/sh
# The tray application draws its own theme, so on a GTK-based desktop it must not load Qt's GTK
# platform theme, which alone costs tens of megabytes and a slow start. A plain Qt Widgets program
# under the same environment does load it, which shows that the check can fail.
# Usage: loads-no-desktop-theme.sh <tovrin-desktop> <plain widgets program>. Exits 77 (skipped)
# without the tools or without the theme plugin.
set -eu
app=$1 plain=$2
for tool in xvfb-run xauth; do
    command -v "$tool" >/dev/null 2>&1 || { echo "$tool not found: skipped"; exit 77; }
done
ls /usr/lib/*/qt6/plugins/platformthemes/libqgtk3.so >/dev/null 2>&1 || { echo "no GTK theme plugin: skipped"; exit 77; }

exec xvfb-run -a -s "-screen 0 1280x800x24 -nolisten tcp" sh -c '
    app=$1 plain=$2
    work=$(mktemp -d)
    trap "rm -rf \"$work\"" EXIT
    export HOME="$work" XDG_CONFIG_HOME="$work/.config" XDG_RUNTIME_DIR="$work" AGENT_STATUS_DIR="$work/status"
    export XDG_CURRENT_DESKTOP=GNOME QT_QPA_PLATFORMTHEME=gtk3
    # Whether the program has the GTK theme mapped after it has started up.
    maps_gtk_theme() {
        "$@" >/dev/null 2>&1 &
        pid=$!
        sleep 2
        found=1
        grep -q libqgtk3 "/proc/$pid/maps" && found=0
        kill "$pid" 2>/dev/null || true
        wait "$pid" 2>/dev/null || true
        return $found
    }
    maps_gtk_theme "$plain" || { echo "FAIL: a plain Qt program did not load the GTK theme; the check proves nothing"; exit 1; }
    if maps_gtk_theme "$app"; then echo "FAIL: the tray application loaded the GTK platform theme"; exit 1; fi
    echo "ok: the plain program loads the GTK theme, the tray application does not"
' loads-no-desktop-theme "$app" "$plain"
