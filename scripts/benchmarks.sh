#!/usr/bin/env bash
# Builds and runs the benchmarks, and prints all figures side by side with their bounds.
#
#   scripts/benchmarks.sh [win32] [win64]
#
# Without a name both presets are taken, and docs/performance.md is written. QUILLON_BUILD names the folder
# of the builds (default build). Takes up to seven minutes for each preset; a machine that has nothing else to
# do gives the steadiest figures. Exit code 0: every bound is kept. 1: one is broken. 2: something could not
# be run. The Wine prefixes are its own, for the simulated host and the plug-in are registered there.
set -u
cd "$(dirname "$0")/.." || exit 2

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

fail() { echo "benchmarks: $*" >&2; exit 2; }

# Windows as the operator sees them.
export QUILLON_THEME=1

# Other programs disturb less when this one comes first; only root may ask for that.
first=()
nice -n -15 true 2>/dev/null && first=(nice -n -15)

arch() { if [ "$1" = win32 ]; then echo i686; else echo x86_64; fi; }
under_wine() { "${first[@]}" timeout 1800 scripts/wine-run.sh "$@"; }
libraries() { echo "$builds/$1/simulator/Quorvex.dll $builds/$1/src/Quillon.dll"; }

register() { # PRESET
    local library
    under_wine "$(arch "$1")" start
    for library in $(libraries "$1"); do
        under_wine "$(arch "$1")" regsvr32 /s "$library" || fail "$library cannot be registered"
    done
}

# Whatever happens, nothing stays registered and no Wine server behind.
leave() {
    local preset library
    for preset in "${presets[@]}"; do
        for library in $(libraries "$preset"); do
            under_wine "$(arch "$preset")" regsvr32 /s /u "$library"
        done
        under_wine "$(arch "$preset")" stop
    done
}

# All that the program measures, and beside it what a native parser needs for the same file.
take() { # PRESET
    local folder=$builds/$1/benchmarks
    under_wine "$(arch "$1")" "$folder/quillon_benchmarks.exe" >"$folder/figures.md" ||
        fail "the benchmarks of $1 could not be run"
    under_wine "$(arch "$1")" "$folder/quillon_benchmarks.exe" file "Z:$PWD/$folder/points.app" ||
        fail "the file of points cannot be written"
    "${first[@]}" "$builds/pugixml_load" "$folder/points.app" >"$folder/native.txt" ||
        fail "the native parser refuses the file"
}

print_labels() { # PRESET
    "${first[@]}" scripts/label_speed.sh "$(arch "$1")" "$builds/$1/simulator/bench/bench.exe" \
        "$builds/$1/src" >"$builds/$1/benchmarks/label.md"
}

case $builds in /*) fail "QUILLON_BUILD is a folder below the project" ;; esac
for preset in "${presets[@]}"; do
    cmake --preset "$preset" -B "$builds/$preset" >/dev/null || fail "$preset cannot be configured"
    cmake --build "$builds/$preset" --target quillon_benchmarks bench Quillon -- --quiet ||
        fail "$preset: the build failed"
done
clang++ -std=c++20 -O2 -Wall -Wextra -Werror benchmarks/outside/pugixml_load.cpp -lpugixml \
    -o "$builds/pugixml_load" || fail "the native parser cannot be built"

trap leave EXIT
for preset in "${presets[@]}"; do register "$preset"; take "$preset"; done

# A label waits for its printer nearly all the time, so both presets print at once.
printing=()
for preset in "${presets[@]}"; do print_labels "$preset" & printing+=($!); done
for label in "${printing[@]}"; do wait "$label" || fail "the labels could not be printed"; done

scripts/benchmark_tables.py $page "$builds" "${presets[@]}"
