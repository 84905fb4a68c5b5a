#!/bin/sh
# Writes <count> status files into <folder>, every tenth session waiting and the rest working, all
# owned by the live process <pid>. Usage: bench/make-sessions.sh <folder> <count> <pid>
set -eu
folder=$1 count=$2 pid=$3
mkdir -p "$folder"
now=$(date -u +%Y-%m-%dT%H:%M:%SZ)
i=0
while [ "$i" -lt "$count" ]; do
    state=working
    [ $((i % 10)) -eq 0 ] && state=waiting
    printf '{"schemaVersion":1,"tool":"claude-code","surface":"cli","sessionId":"s%d","pid":%d,"state":"%s","reason":"Needs permission to use Bash","cwd":"/home/dev/project-%d","root":"/home/dev/project-%d","title":"Refactor module %d","locator":{"tmuxPane":"%%%d","tty":"/dev/pts/3"},"startedAt":"%s","updatedAt":"%s"}\n' \
        "$i" "$pid" "$state" "$i" "$i" "$i" "$i" "$now" "$now" >"$folder/s$i.json"
    i=$((i + 1))
done
