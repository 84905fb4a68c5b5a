#!/bin/sh
# Streams one status folder of this machine to the Tovrin that watches it over ssh. Sent as the
# input of `sh -s -- [folder]`, so nothing is installed here; the folder defaults to
# ${AGENT_STATUS_DIR:-$HOME/.agent-status}.
#
# Prints a line "tovrin-status-stream 1", then a complete snapshot each time the folder or the
# liveness of its sessions changes:
#   F <byte count> <name>\n<exactly that many bytes>\n   one per status file
#   P <pid> <pid> ...\n                                   the pids named in them that run here
#   E\n
# The stream ends when its input ends (the connection is gone) or its output is closed; the
# input must therefore stay open for as long as snapshots are wanted.

tovrin_stream() {
    dir=${1:-${AGENT_STATUS_DIR:-$HOME/.agent-status}}
    # shellcheck disable=SC2088 # a literal "~": the caller quotes the folder for the login shell
    case $dir in
    "~") dir=$HOME ;;
    "~/"*) dir=$HOME/${dir#"~/"} ;;
    esac

    max_size=1048576
    max_files=2000
    newline='
'
    umask 077
    work=$(mktemp -d "${TMPDIR:-/tmp}/tovrin-stream.XXXXXX" 2>/dev/null) || {
        work=${TMPDIR:-/tmp}/tovrin-stream.$$
        mkdir "$work" || exit 1
    }
    copy=$work/copy
    stamp=$work/stamp
    waiter=
    watcher=
    trap 'rm -rf "$work"; kill $waiter $watcher 2>/dev/null; exit 0' EXIT HUP INT TERM PIPE

    # The end of the input is the only sign of a dropped connection while nothing is printed.
    # An asynchronous list reads /dev/null unless given another descriptor.
    exec 3<&0
    main=$$
    (cat <&3; kill "$main") >/dev/null 2>&1 &
    watcher=$!
    exec 3<&-

    use_inotify=no
    command -v inotifywait >/dev/null 2>&1 && use_inotify=yes

    printf 'tovrin-status-stream 1\n' || exit 0
    pids=
    last=
    first=yes
    # shellcheck disable=SC2086 # $pids is split on purpose: numbers only
    while :; do
        signature="$(ls -ln "$dir" 2>/dev/null)
$(alive_of $pids)"
        if [ "$first" = yes ] || [ "$signature" != "$last" ] || changed_since_stamp; then
            # Stamp and listing come before the files are read: what changes meanwhile is sent again.
            : >"$stamp"
            listing=$(ls -ln "$dir" 2>/dev/null)
            send_snapshot || exit 0
            last="$listing
$sent_alive"
            first=no
        fi
        wait_for_change
    done
}

changed_since_stamp() {
    [ -d "$dir" ] || return 1
    [ -n "$(find "$dir" -newer "$stamp" -name '*.json' 2>/dev/null | head -n 1)" ]
}

# Prints the snapshot, leaving the pids its files name in $pids and those sent as alive in
# $sent_alive; fails when the output is gone.
send_snapshot() {
    pids=
    count=0
    if [ -d "$dir" ]; then
        for path in "$dir"/*.json; do
            [ "$count" -lt "$max_files" ] || break
            if [ ! -f "$path" ] || [ -L "$path" ]; then continue; fi
            name=${path##*/}
            case $name in
            .* | *"$newline"*) continue ;;
            esac
            size=$(wc -c <"$path" 2>/dev/null) || continue
            [ "$size" -le "$max_size" ] || continue
            # Counted and printed from a private copy: a file replaced meanwhile can't break the frame.
            cp "$path" "$copy" 2>/dev/null || continue
            size=$(wc -c <"$copy")
            size=$((size + 0))
            [ "$size" -le "$max_size" ] || continue
            printf 'F %s %s\n' "$size" "$name" || return 1
            cat "$copy" || return 1
            printf '\n' || return 1
            count=$((count + 1))
            pids="$pids $(sed -n 's/.*"pid"[[:space:]]*:[[:space:]]*\([0-9][0-9]*\).*/\1/p' "$copy" | head -n 4)"
        done
    fi
    # shellcheck disable=SC2086 # split on purpose: numbers only
    sent_alive=$(alive_of $pids)
    line=
    for pid in $sent_alive; do line="$line $pid"; done
    printf 'P%s\nE\n' "$line"
}

# The given pids that run here, one per line, sorted.
alive_of() {
    for pid in "$@"; do
        if [ "${#pid}" -gt 10 ] || ! [ "$pid" -gt 0 ] 2>/dev/null; then continue; fi
        if [ -d "/proc/$pid" ] || kill -0 "$pid" 2>/dev/null ||
            kill -0 "$pid" 2>&1 | grep -qi 'not permitted'; then
            echo "$pid"
        fi
    done | sort -un
}

wait_for_change() {
    if [ "$use_inotify" = yes ] && [ -d "$dir" ]; then
        # The timeout lets a session's process end be noticed though no file changed.
        inotifywait -qq -t 3 -e create -e close_write -e moved_to -e moved_from -e delete -e attrib \
            "$dir" >/dev/null 2>&1 &
        waiter=$!
        wait "$waiter"
        status=$?
        waiter=
        # 0: an event, 2: the timeout; anything else (no watches left) polls this round.
        [ "$status" -eq 0 ] || [ "$status" -eq 2 ] || sleep 1
    else
        sleep 1
    fi
}

tovrin_stream "$@"
