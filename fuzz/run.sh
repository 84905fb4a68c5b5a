#!/bin/sh
# Runs libFuzzer targets one after another, each for a fixed time on its seeds.
#   fuzz/run.sh <build dir> <seconds per target> <target>...   (targets: session_file ...)
# What a run adds to the corpus stays in <build dir>/corpus/<target>; crashing inputs land in
# <build dir>/crashes/<target>/. Exits non-zero when any target found one.
set -eu
build=$(cd "$1" && pwd)
seconds=$2
shift 2
here=$(cd "$(dirname "$0")" && pwd)
root=$(dirname "$here")

failed=""
for target in "$@"; do
    case $target in
    session_file) seeds="$here/corpus/session_file $root/tests/data/status-samples" dict=json ;;
    foreign_json | hook_merger)
        seeds="$root/tests/data/hooks $root/tests/data/agent-payloads $root/resources/Adapters/configs" dict=json ;;
    update_choice) seeds="" dict="" ;;
    appcast) seeds="$here/corpus/appcast" dict=xml ;;
    *) echo "fuzz/run.sh: no target $target" >&2; exit 2 ;;
    esac
    corpus=$build/corpus/$target
    crashes=$build/crashes/$target
    mkdir -p "$corpus" "$crashes"
    echo "== fuzz_$target for ${seconds}s"
    # shellcheck disable=SC2086
    if ! nice "$build/fuzz/bin/fuzz_$target" -max_total_time="$seconds" -timeout=10 -print_final_stats=1 \
        -artifact_prefix="$crashes/" ${dict:+-dict="$here/$dict.dict"} "$corpus" $seeds; then
        failed="$failed $target"
    fi
done

if [ -n "$failed" ]; then
    echo "Crashes in:$failed (inputs in $build/crashes/)" >&2
    exit 1
fi
