#!/usr/bin/env bash
# Builds and runs the benchmarks, and prints all figures side by side with their bounds.
#
#   scripts/benchmarks.sh [win32] [win64]
#
# Without a name both presets are taken, and docs/performance.md is written. QUILLON_BUILD names the folder
# of the builds (default build). Takes up to six minutes for each preset; a machine that has nothing else to
# do gives the steadiest figures. Exit code 0: every bound is kept. 1: one is broken, or something could not
# be run. The Wine prefix is one of its own, for the simulated host is registered there.
set -u
cd "$(dirname "$0")/.." || exit 1

page=-
presets=("$@")
if [ $# = 0 ]; then presets=(win32 win64); page=docs/performance.md; fi
for preset in "${presets[@]}"; do
    case $preset in
        win32 | win64) ;;
        *) echo "usage: scripts/benchmarks.sh [win32] [win64]" >&2; exit 2 ;;
    esac
done
builds=${QUILLON_BUILD:-build}
export QUILLON_WINE_BASE=${QUILLON_WINE_BASE:-${XDG_CACHE_HOME:-$HOME/.cache}/quillon/wine}-benchmarks

fail() { echo "benchmarks: $*" >&2; exit 1; }

# Other programs disturb less when this one comes first; only root may ask for that.
first=()
nice -n -15 true 2>/dev/null && first=(nice -n -15)

under_wine() { scripts/wine-run.sh "$@"; }

# The whole program's table, and beside it what a native parser needs for the same file.
take() { # PRESET
    local arch=i686 folder=$builds/$1/benchmarks host=$builds/$1/simulator/Quorvex.dll result
    [ "$1" = win32 ] || arch=x86_64
    under_wine $arch start
    under_wine $arch regsvr32 /s "$host" || fail "the simulated host cannot be registered"
    "${first[@]}" timeout 1800 scripts/wine-run.sh $arch "$folder/quillon_benchmarks.exe" >"$folder/table.md"
    result=$?
    under_wine $arch "$folder/quillon_benchmarks.exe" file "Z:$PWD/$folder/points.app" ||
        fail "the file of points cannot be written"
    under_wine $arch regsvr32 /s /u "$host"
    under_wine $arch stop
    [ $result = 0 ] || [ $result = 3 ] || fail "the benchmarks of $1 could not be run"
    "${first[@]}" "$builds/pugixml_load" "$folder/points.app" >"$folder/native.txt" ||
        fail "the native parser refuses the file"
}

case $builds in /*) fail "QUILLON_BUILD is a folder below the project" ;; esac
for preset in "${presets[@]}"; do
    cmake --preset "$preset" -B "$builds/$preset" >/dev/null || fail "$preset cannot be configured"
    cmake --build "$builds/$preset" --target quillon_benchmarks -- --quiet || fail "$preset: the build failed"
done
clang++ -std=c++20 -O2 -Wall -Wextra -Werror benchmarks/outside/pugixml_load.cpp -lpugixml \
    -o "$builds/pugixml_load" || fail "the native parser cannot be built"

for preset in "${presets[@]}"; do take "$preset"; done
scripts/benchmark_tables.py $page "$builds" "${presets[@]}"
