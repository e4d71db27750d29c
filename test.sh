#!/usr/bin/env bash
# Builds everything and passes the tests: logic natively under sanitizers and fuzzing, all of it in both
# bitnesses under Wine.
#
#   ./test.sh                the whole
#   ./test.sh --native       logic alone (installs a compiler, CMake and GoogleTest, nothing else)
#   ./test.sh --fuzz SECONDS how long each fuzz target runs (default 30; 0 leaves fuzzing out)
set -u
cd "$(dirname "$0")" || exit 1

native_only=no
seconds=30
while [ $# -gt 0 ]; do
    case "$1" in
        --native) native_only=yes ;;
        --fuzz) seconds=${2:?--fuzz takes a number of seconds}; shift ;;
        *) echo "usage: ./test.sh [--native] [--fuzz SECONDS]" >&2; exit 2 ;;
    esac
    shift
done

passed=0
failed=0
summary=()
record() { # NAME RESULT
    if [ "$2" = 0 ]; then passed=$((passed + 1)); summary+=("passed  $1"); else failed=$((failed + 1)); summary+=("FAILED  $1"); fi
}

# Runs one named step with its output shown; tells when it fails.
step() {
    local name=$1
    shift
    echo "== $name"
    "$@"
    local result=$?
    record "$name" $result
    return $result
}

build() { cmake --preset "$1" >"build/$1.configure.log" 2>&1 || { tail -n 30 "build/$1.configure.log"; return 1; }
    cmake --build --preset "$1" -- --quiet; }

run_tests() { # PRESET
    local log=build/$1.ctest.log result=0
    # A loaded machine can let a real window wait too long once; what fails twice has failed.
    local options=(--test-dir "build/$1" --output-on-failure --no-tests=error --repeat until-pass:2)
    ctest "${options[@]}" -j2 -E '^bench\.' >"$log" 2>&1 || result=1
    # The bench's tests register the DLLs for all; they run alone.
    [ "$1" = native ] || ctest "${options[@]}" -j1 -R '^bench\.' >>"$log" 2>&1 || result=1
    if [ $result = 0 ]; then grep 'tests passed' "$log"; else grep -v ' Passed ' "$log" | tail -n 200; fi
    return $result
}

finish() {
    printf '\n'
    printf '%s\n' "${summary[@]}"
    printf '\n%d passed, %d failed\n' "$passed" "$failed"
    [ "$failed" = 0 ]
    exit
}

mkdir -p build
if [ $native_only = yes ]; then scripts/setup.sh --native; else scripts/setup.sh; fi
setup=$?
# 3: no 32-bit Wine. The 64-bit half still says much, but the whole has not passed.
if [ $setup != 0 ] && [ $setup != 3 ]; then exit 1; fi

if step "native build" build native; then
    step "native tests" run_tests native
    [ "$seconds" = 0 ] || step "fuzzing, $seconds s a target" tests/fuzz/run.sh build/native "$seconds"
fi
[ $native_only = no ] || finish

step "formatting" scripts/check_format.sh

bitnesses=(win32:i686 win64:x86_64)
if [ $setup = 3 ]; then
    record "32-bit Wine" 1
    bitnesses=(win64:x86_64)
fi
for pair in "${bitnesses[@]}"; do
    preset=${pair%:*}
    scripts/wine-run.sh "${pair#*:}" start
    step "$preset build" build "$preset" && step "$preset tests" run_tests "$preset"
    scripts/wine-run.sh "${pair#*:}" stop
done
finish
