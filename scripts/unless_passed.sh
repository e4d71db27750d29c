#!/usr/bin/env bash
# Runs a test, unless it has passed with the very same files before.
#
#   scripts/unless_passed.sh FOLDER NAME FILES... -- COMMAND ARGS...
#
# FOLDER keeps a mark for each test that passed. FILES are what its outcome depends on; a folder stands for
# all in it. With QUILLON_AGAIN set it is run in any case. The exit code is the command's; 0 when not run.
set -u
folder=$1
name=$2
shift 2
files=("$(dirname "$0")/wine-run.sh")
while [ "$1" != -- ]; do files+=("$1"); shift; done
shift

state=$({ find "${files[@]}" -type f -print0 | sort -z | xargs -0 cat; printf '%s\n' "$@" \
    "${GTEST_TOTAL_SHARDS:-}" "${GTEST_SHARD_INDEX:-}"; } | sha256sum)
if [ -z "${QUILLON_AGAIN:-}" ] && [ "$(cat "$folder/$name" 2>/dev/null)" = "$state" ]; then
    echo "$name: unchanged since it passed"
    exit 0
fi
"$@"
result=$?
mkdir -p "$folder"
if [ $result = 0 ]; then printf '%s\n' "$state" >"$folder/$name"; else rm -f "$folder/$name"; fi
exit $result
