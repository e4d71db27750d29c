#!/usr/bin/env bash
# Runs every fuzz target, two at a time, from its seeds under tests/fuzz/corpus.
#
#   tests/fuzz/run.sh BUILD_DIR [SECONDS]
#
# SECONDS is the time for each target (default 30). A target that has not changed since it passed with as
# many seconds is not run again; with QUILLON_AGAIN set all are run. Prints one line for each with its executions.
# Fails when a target is missing, finds something or executes nothing; inputs that broke an
# invariant stay in BUILD_DIR/fuzz-findings.
set -u
if [ $# -lt 1 ] || [ $# -gt 2 ]; then
    echo "usage: $0 BUILD_DIR [SECONDS]" >&2
    exit 2
fi
build=$(cd "$1" 2>/dev/null && pwd) || { echo "$0: no build folder '$1'" >&2; exit 2; }
seconds=${2:-30}
case $seconds in
    '' | *[!0-9]* | 0*) echo "$0: '$seconds' is no number of seconds" >&2; exit 2 ;;
esac
here=$(cd "$(dirname "$0")" && pwd)
work=$build/fuzz-work
findings=$build/fuzz-findings
rm -rf "$work" "$findings"
passed=$build/fuzz-passed
mkdir -p "$work" "$findings" "$passed"

# The longest input of a target in bytes: what is read whole has to be reached whole.
longest() {
    case $1 in
        label_text) echo 14000 ;;
        parameter_subset) echo 8192 ;;
        xif) echo 4096 ;;
        *) echo 512 ;;
    esac
}

# What a target is: its program, its seeds, their longest, its time.
state_of() {
    { cat "$build/tests/fuzz/fuzz_$1"; cat "$here/corpus/$1"/*; longest "$1"; echo "$seconds"; } | sha256sum
}

run_target() {
    local name=$1 program=$build/tests/fuzz/fuzz_$1 log=$work/$1.log executions
    if [ ! -x "$program" ]; then
        echo "$name: not built"
        return 1
    fi
    local state
    state=$(state_of "$name")
    if [ -z "${QUILLON_AGAIN:-}" ] && [ "$(cat "$passed/$name" 2>/dev/null)" = "$state" ]; then
        echo "$name: unchanged since it passed"
        return 0
    fi
    rm -f "$passed/$name"
    mkdir -p "$work/$name"
    "$program" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=1024 -max_len="$(longest "$name")" \
        -print_final_stats=1 -artifact_prefix="$findings/$name-" \
        "$work/$name" "$here/corpus/$name" </dev/null >"$log" 2>&1
    local code=$?
    executions=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
    if [ $code -ne 0 ]; then
        echo "$name: FAILED (code $code); the end of $log:"
        tail -n 40 "$log"
        return 1
    fi
    if [ "${executions:-0}" -le "$(ls "$here/corpus/$name" | wc -l)" ]; then
        echo "$name: FAILED, executed nothing beyond its seeds"
        return 1
    fi
    echo "$state" >"$passed/$name"
    echo "$name: $executions executions"
}

targets=()
for corpus in "$here"/corpus/*/; do targets+=("$(basename "$corpus")"); done
[ ${#targets[@]} -ge 1 ] || { echo "$0: no targets" >&2; exit 1; }

failed=0
for ((i = 0; i < ${#targets[@]}; i += 2)); do
    pids=()
    for name in "${targets[@]:i:2}"; do
        run_target "$name" &
        pids+=($!)
    done
    for pid in "${pids[@]}"; do wait "$pid" || failed=1; done
done
exit $failed
