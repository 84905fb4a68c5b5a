#!/bin/sh
# Makes the Debian package and the archive from this build tree, then checks what each installs:
# valid desktop files, a working command that finds its payload from where it lies, and the
# install-kind file only in the archive. Everything runs in a temporary folder with its own home.
# Usage: packages-test.sh <build dir> <cpack> <expected version line>. Exits 77 when a tool is missing.
set -eu

build=$1
cpack=$2
version_line=$3

for tool in "$cpack" dpkg-deb dpkg-shlibdeps file desktop-file-validate appstreamcli man; do
    command -v "$tool" >/dev/null 2>&1 || { echo "$tool not found: skipped"; exit 77; }
done

work=$(mktemp -d "${TMPDIR:-/tmp}/tovrin-packages.XXXXXX")
trap 'rm -rf "$work"' EXIT INT TERM
fail() { echo "FAIL: $*" >&2; exit 1; }

"$cpack" --config "$build/CPackConfig.cmake" -B "$work/out" >"$work/cpack.log" 2>&1 ||
    { cat "$work/cpack.log"; fail "cpack"; }
deb=$(echo "$work"/out/tovrin_*.deb)
archive=$(echo "$work"/out/tovrin-*-linux-"$(uname -m)".tar.gz)
[ -f "$deb" ] || fail "no Debian package in: $(ls "$work/out")"
[ -f "$archive" ] || fail "no archive in: $(ls "$work/out")"

# A private home, and no display or bus: the commands below must not need one.
export HOME="$work/home" XDG_CONFIG_HOME="$work/home/.config" XDG_DATA_HOME="$work/home/.local/share"
export XDG_STATE_HOME="$work/home/.local/state" XDG_CACHE_HOME="$work/home/.cache"
export AGENT_STATUS_DIR="$work/home/.agent-status"
unset DISPLAY WAYLAND_DISPLAY DBUS_SESSION_BUS_ADDRESS TOVRIN_ADAPTERS_DIR
mkdir -p "$HOME"

# Runs one installed command: the version line, and the hook list, which needs the payload.
check_command() {
    [ "$("$1" --version)" = "$version_line" ] || fail "$1 --version: $("$1" --version)"
    "$1" hooks >"$work/hooks.out" 2>"$work/hooks.err" || { cat "$work/hooks.err"; fail "$1 hooks"; }
}

dpkg-deb -x "$deb" "$work/root"
usr="$work/root/usr"
case $(dpkg-deb -f "$deb" Depends) in *jq*libqt6*) ;; *) fail "Depends: $(dpkg-deb -f "$deb" Depends)" ;; esac
[ ! -e "$usr/share/tovrin/install-kind" ] || fail "the Debian package carries install-kind"
desktop-file-validate "$usr/share/applications/app.tovrin.Tovrin.desktop" || fail "desktop entry"
appstreamcli validate-tree --no-net "$work/root" || fail "metainfo"
check_command "$usr/bin/tovrin"

warnings=$(MANWIDTH=80 man --warnings -l -P cat "$usr/share/man/man1/tovrin.1.gz" 2>&1 >/dev/null) ||
    fail "man page"
[ -z "$warnings" ] || fail "man page: $warnings"

# The bash completion offers every command the help lists and every agent the hook list names.
check_offered() {
    offered=" $(bash -c '. "$1"; shift; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _tovrin
        echo "${COMPREPLY[*]}"' - "$usr/share/bash-completion/completions/tovrin" tovrin "$@" "") "
    while read -r word; do
        case $offered in *" $word "*) ;; *) fail "completion after 'tovrin $*' lacks $word" ;; esac
    done
}
"$usr/bin/tovrin" --help | awk '/^  [a-z-]/ { print $1 }' | check_offered
awk '/^  [a-z]/ { print $1 }' "$work/hooks.out" | check_offered hooks install
for file in share/zsh/vendor-completions/_tovrin share/fish/vendor_completions.d/tovrin.fish \
    lib/systemd/user/tovrin-watch.service; do
    [ -s "$usr/$file" ] || fail "$file missing"
done

# The archive unpacked somewhere else and started through a link in a folder of its own.
mkdir -p "$work/opt" "$work/links"
tar -xzf "$archive" -C "$work/opt"
folder=$(echo "$work"/opt/tovrin-*)
[ "$(cat "$folder/share/tovrin/install-kind")" = archive ] || fail "archive install-kind"
ln -s "$folder/bin/tovrin" "$work/links/tovrin"
check_command "$work/links/tovrin"
echo "packages checked: $(basename "$deb") $(basename "$archive")"
