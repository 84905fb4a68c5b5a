#!/bin/sh
# Wall time of one status writer run per payload shape, the median of a few runs, against a
# typical small payload measured in the same run. Agents kill a hook after about 10 s, and a
# hook they wait for holds up the agent, so every shape must stay well under a second.
# Each shape runs once untimed first, so that its session's record exists, as in steady use.
# Usage: bench/writer-payloads.sh [writer script] [runs]
set -eu
here=$(dirname "$0")
writer=${1:-$here/../resources/Adapters/agent-status.sh}
runs=${2:-5}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/home"

MIB=1048576
# The shipped writer's cap, also when timing another version of it.
cap=$(sed -n 's/^PAYLOAD_CAP=\([0-9]*\)$/\1/p' "$here/../resources/Adapters/agent-status.sh")

# $2 copies of the text $1 (which holds no newline), without a newline.
repeat() { yes "$1" | tr -d '\n' | head -c $((${#1} * $2)); }

# Payload files: the event on the first line, the payload after it.
shape() {
    printf '%s\n' "$2" >"$work/$1.payload"
    cat >>"$work/$1.payload"
}
id='"session_id":"0b9d4c1e-6a53-4f5e-9d0a-3f6a8e2b7c11","cwd":"/home/dev/shop"'
printf '{%s,"prompt":"Fix the failing checkout test"}' "$id" | shape typical UserPromptSubmit
{ printf '{%s,"prompt":"' "$id"; repeat '\n' $((4 * MIB)); printf '"}'; } | shape blank-lines-prompt UserPromptSubmit
{ printf '{%s,"prompt":"' "$id"; repeat x $((4 * MIB)); printf '"}'; } | shape one-line-prompt UserPromptSubmit
{
    printf '{%s,"tool_name":"Bash","tool_input":{"command":"' "$id"
    repeat 'printf %s\n ' $((4 * MIB / 11))
    printf '"}}'
} | shape tool-input PermissionRequest
{ printf '{"session_id":"'; repeat a $((4 * MIB)); printf '","cwd":"/w"}'; } | shape huge-id Stop
# The worst that is still read: blank lines up to the cap, and the id at the end, out of sight
# of the writer's guess, so that jq reads the payload twice.
{
    printf '{"tool_name":"Bash","tool_input":{"command":"'
    repeat '\n' $(((cap - 200) / 2))
    printf '"},%s}' "$id"
} | shape at-read-cap PermissionRequest
{ printf '{%s,"prompt":"' "$id"; repeat x $((cap + 4 * MIB)); printf '"}'; } | shape over-read-cap UserPromptSubmit

median() { sort -n | awk '{ v[NR] = $1 } END { print (NR % 2) ? v[(NR + 1) / 2] : (v[NR / 2] + v[NR / 2 + 1]) / 2 }'; }

write() {
    HOME="$work/home" AGENT_STATUS_DIR="$work/status" CLAUDECODE=1 \
        sh "$writer" claude-code "$event" <"$work/input"
}

# Milliseconds of one run, median of $runs.
time_shape() {
    event=$(head -n 1 "$work/$1.payload")
    tail -n +2 "$work/$1.payload" >"$work/input"
    rm -rf "$work/status"
    write
    i=0
    while [ "$i" -lt "$runs" ]; do
        start=$(date +%s%N)
        write
        end=$(date +%s%N)
        echo $(((end - start) / 1000))
        i=$((i + 1))
    done | median | awk '{ printf "%.1f\n", $1 / 1000 }'
}

printf 'status writer, median of %s runs (read cap %s MiB):\n' "$runs" "$(awk -v c="$cap" 'BEGIN { print c / 1048576 }')"
floor=
for s in typical blank-lines-prompt one-line-prompt tool-input huge-id at-read-cap over-read-cap; do
    ms=$(time_shape "$s")
    floor=${floor:-$ms}
    size=$(($(wc -c <"$work/$s.payload") - $(head -n 1 "$work/$s.payload" | wc -c)))
    awk -v s="$s" -v b="$size" -v t="$ms" -v f="$floor" 'BEGIN {
        printf "  %-20s %6.1f MiB %8.1f ms %7.1f x typical\n", s, b / 1048576, t, t / f }'
done
