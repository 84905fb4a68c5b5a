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
    frames=$work/frames
    mkdir "$frames" || exit 1
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
# $sent_alive; fails when the output is gone. A file is framed again only when its inode, size or
# time changed (the status writer renames a new file into place on every update, so each update has
# a new inode); the others are sent from their frames, all with one cat.
send_snapshot() {
    pids=
    count=0
    set --
    if [ -d "$dir" ]; then
        for path in "$dir"/*.json; do
            [ "$count" -lt "$max_files" ] || break
            if [ ! -f "$path" ] || [ -L "$path" ]; then continue; fi
            name=${path##*/}
            case $name in
            .* | *"$newline"*) continue ;;
            esac
            key=$(ls -lnid -- "$path" 2>/dev/null) || continue
            # shellcheck disable=SC2086 # split on purpose: the listing's fields
            size_listed $key
            [ "$listed" -le "$max_size" ] 2>/dev/null || continue
            cached=
            [ -f "$frames/$name.key" ] && read -r cached <"$frames/$name.key"
            if [ "$key" != "$cached" ]; then
                frame_file "$path" "$frames/$name" || continue
                printf '%s\n' "$key" >"$frames/$name.key"
            fi
            [ -f "$frames/$name.frame" ] || continue
            set -- "$@" "$frames/$name.frame"
            count=$((count + 1))
            file_pids=
            [ -s "$frames/$name.pids" ] && read -r file_pids <"$frames/$name.pids"
            pids="$pids $file_pids"
        done
    fi
    if [ "$#" -gt 0 ]; then cat -- "$@" || return 1; fi
    forget_gone_files
    # shellcheck disable=SC2086 # split on purpose: numbers only
    sent_alive=$(alive_of $pids)
    line=
    for pid in $sent_alive; do line="$line $pid"; done
    printf 'P%s\nE\n' "$line"
}

# The size field of an `ls -lnid` line given as words: inode, mode, links, owner, group, size.
size_listed() {
    listed=${6:-}
}

# Frames of files long gone are dropped all at once when they outnumber the cap twice over.
forget_gone_files() {
    kept=0
    for known in "$frames"/*.key; do
        [ -e "$known" ] && kept=$((kept + 1))
    done
    [ "$kept" -le $((max_files * 2)) ] || rm -f "$frames"/*
}

# Frames one file into <base>.frame from a private copy (a file replaced meanwhile can't break the
# frame), with the pids it names in <base>.pids; leaves no frame for a file over the size cap.
frame_file() {
    rm -f "$2.frame" "$2.pids"
    cp "$1" "$copy" 2>/dev/null || return 1
    size=$(wc -c <"$copy")
    size=$((size + 0))
    [ "$size" -le "$max_size" ] || return 0
    { printf 'F %s %s\n' "$size" "${2##*/}" && cat "$copy" && printf '\n'; } >"$2.frame" || return 1
    sed -n '/"pid"[[:space:]]*:[[:space:]]*[0-9]/{s/.*"pid"[[:space:]]*:[[:space:]]*\([0-9][0-9]*\).*/\1/p;q;}' \
        "$copy" >"$2.pids"
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
