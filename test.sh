#!/usr/bin/env bash
# Builds everything and passes the tests: logic natively under sanitizers and fuzzing, all of it in both
# bitnesses under Wine.
#
#   ./test.sh                the whole; what has passed and not changed since is not run again
#   ./test.sh --again        the whole, whether changed or not
#   ./test.sh --full         all that takes long as well: a minute of fuzzing a target, every run of the
#                            fault sweep, the damaged files, the day of ticks, all static checks, coverage
#   ./test.sh --native       logic alone (installs a compiler, CMake and GoogleTest, nothing else)
#   ./test.sh --fuzz SECONDS how long each fuzz target runs (default 3; 0 leaves fuzzing out)
set -u
cd "$(dirname "$0")" || exit 1

native_only=no
full=no
seconds=3
while [ $# -gt 0 ]; do
    case "$1" in
        --native) native_only=yes ;;
        --again) export QUILLON_AGAIN=1 ;;
        --full) full=yes seconds=60; export QUILLON_FULL=1 QUILLON_AGAIN=1 ;;
        --fuzz) seconds=${2:?--fuzz takes a number of seconds}; shift ;;
        *) echo "usage: ./test.sh [--again | --full] [--native] [--fuzz SECONDS]" >&2; exit 2 ;;
    esac
    shift
done

passed=0
failed=0
summary=()
record() { # NAME RESULT SECONDS
    local word=passed
    if [ "$2" = 0 ]; then passed=$((passed + 1)); else failed=$((failed + 1)); word=FAILED; fi
    summary+=("$(printf '%-7s %-28s %4s s' "$word" "$1" "${3:-0}")")
}

# Runs one named step with its output shown; tells when it fails.
step() {
    local name=$1 begin=$SECONDS
    shift
    echo "== $name"
    "$@"
    local result=$?
    record "$name" $result $((SECONDS - begin))
    return $result
}

# Begins a step beside the others; its output is shown when all of them have ended.
begun=()
begin() {
    local name=$1 begin=$SECONDS
    shift
    {
        "$@" >"build/$name.txt" 2>&1
        local result=$?
        echo $((SECONDS - begin)) >"build/$name.seconds"
        exit $result
    } &
    begun+=("$name:$!")
}

wait_for_all() {
    local one name result
    for one in "${begun[@]}"; do
        name=${one%:*}
        wait "${one##*:}"
        result=$?
        echo "== $name"
        cat "build/$name.txt"
        record "$name" $result "$(cat "build/$name.seconds")"
    done
}

build() {
    cmake --preset "$1" >"build/$1.configure.log" 2>&1 || { tail -n 30 "build/$1.configure.log"; return 1; }
    cmake --build --preset "$1" -- --quiet
}

run_tests() { # PRESET
    local log=build/$1.ctest.log result=0
    # A loaded machine can let a real window wait too long now and then; what fails twice has failed. In
    # the full run once is enough, for there a second time is an hour.
    local tries=2
    [ $full = no ] || tries=1
    local options=(--test-dir "build/$1" --output-on-failure --no-tests=error --repeat "until-pass:$tries")
    # What runs under Wine waits for its turn; what has a screen of its own mostly waits for its windows.
    ctest "${options[@]}" -j3 -E '^bench\.' >"$log" 2>&1 || result=1
    [ $full = no ] || grep '^|' "build/$1/Testing/Temporary/LastTest.log"
    # These register the DLLs for all programs of the prefix, and run alone.
    [ "$1" = native ] || ctest "${options[@]}" -j1 -R '^bench\.' >>"$log" 2>&1 || result=1
    if [ $result = 0 ]; then grep 'tests passed' "$log"; else grep -vE ' Passed |^\[ +(OK|RUN) ' "$log" | tail -n 400; fi
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
# Wine prefixes of this folder alone: what else was registered on this machine does not matter.
export QUILLON_WINE_BASE=${QUILLON_WINE_BASE:-$PWD/build/wine/test}
mkdir -p "$(dirname "$QUILLON_WINE_BASE")"
if [ $native_only = yes ]; then scripts/setup.sh --native; else scripts/setup.sh; fi
setup=$?
# 3: no 32-bit Wine. The 64-bit half still says much, but the whole has not passed.
if [ $setup != 0 ] && [ $setup != 3 ]; then exit 1; fi

# Layout, whole and at once; the other static checks come last.
[ $native_only = yes ] || step "formatting" scripts/check_format.sh

if step "native build" build native; then
    step "native tests" run_tests native
    [ "$seconds" = 0 ] || step "fuzzing, $seconds s a target" tests/fuzz/run.sh build/native "$seconds"
fi
[ $native_only = no ] || finish

step "links" scripts/check_links.py
step "guide" scripts/check_guide.py

bitnesses=(win32:i686 win64:x86_64)
if [ $setup = 3 ]; then
    record "32-bit Wine" 1
    bitnesses=(win64:x86_64)
fi

# Both bitnesses are tested side by side, each in a Wine prefix of its own.
tests_of() { # PRESET ARCH
    scripts/wine-run.sh "$2" start && run_tests "$1"
    local result=$?
    scripts/wine-run.sh "$2" stop
    return $result
}
built=()
for pair in "${bitnesses[@]}"; do step "${pair%:*} build" build "${pair%:*}" && built+=("$pair"); done
for pair in "${built[@]}"; do begin "${pair%:*} tests" tests_of "${pair%:*}" "${pair#*:}"; done
wait_for_all

# The installer carries both bitnesses, and is itself a 32-bit program.
install_and_remove() {
    scripts/unless_passed.sh build/passed packaging packaging examples help/*.* CMakeLists.txt simulator/networks \
        scripts/package.sh scripts/compile_installer.sh tests/packaging/packaging_test.sh \
        build/win{32,64}/src/Quillon.dll build/win{32,64}/simulator/Quorvex.dll \
        build/win{32,64}/simulator/bench/bench.exe -- tests/packaging/packaging_test.sh
}
[ $setup = 3 ] || step "installer" install_and_remove

step "static checks" scripts/static_checks.sh "$([ $full = yes ] && echo all || echo changed)"
if [ $full = yes ]; then
    step "coverage of logic" scripts/coverage.sh logic
    step "coverage of shell" scripts/coverage.sh shell
fi
finish
