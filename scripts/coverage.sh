#!/usr/bin/env bash
# Measures how much of the product's code the tests run, and fails below the promised part.
#
#   scripts/coverage.sh [logic|shell]
#
# logic (at least 98 % of its lines): its own tests, natively. shell, all other code of the DLL (at least
# 85 %): component, host, window and editor tests of a 32-bit build under Wine, each program as a whole.
# Builds stand in build/coverage. Exit code 0: enough. 1: too little, or a build or test failed.
set -u
cd "$(dirname "$0")/.." || exit 1

case "${1:-both}" in
    logic | shell | both) part=${1:-both} ;;
    *) echo "usage: scripts/coverage.sh [logic|shell]" >&2; exit 2 ;;
esac
root=build/coverage
mkdir -p "$root"

build() { # FOLDER TARGETS... -- CMAKE_ARGUMENTS...
    local folder=$root/$1 targets=()
    shift
    while [ "$1" != -- ]; do targets+=("$1"); shift; done
    shift
    cmake -S . -B "$folder" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_EXE_LINKER_FLAGS=--coverage \
        -DCMAKE_SHARED_LINKER_FLAGS=--coverage "$@" \
        >"$folder.configure.log" 2>&1 || { tail -n 20 "$folder.configure.log"; return 1; }
    [ ${#targets[@]} = 0 ] || cmake --build "$folder" --target "${targets[@]}" -- --quiet || return 1
    find "$folder" -name '*.gcda' -delete
}

# Prints each folder's lines, each file that is not wholly run, and the sum.
report() { # FOLDER PERCENT GCOV FILTERS...
    local folder=$root/$1 percent=$2 gcov=$3 result
    shift 3
    gcovr --root . --object-directory "$folder" --gcov-executable "$gcov" --filter 'src/' "$@" \
        --fail-under-line "$percent" --csv "$folder.csv" --txt "$folder.txt" "$folder"
    result=$?
    grep -E '^src/|^TOTAL' "$folder.txt" | grep -v ' 100% *$' | cut -c1-110
    echo "-- lines by folder"
    awk -F, 'function line(name, run, all) { return sprintf("%-20s %6d of %6d  %5.1f %%", name, run, all, 100 * run / all) }
        NR > 1 && $2 > 0 { folder = $1; sub("/[^/]*$", "", folder); all[folder] += $2; run[folder] += $3; a += $2; r += $3 }
        END { for (folder in all) print line(folder, run[folder], all[folder]) | "sort"; close("sort"); if (a) print line("all", r, a) }' \
        "$folder.csv"
    return $result
}

# The sources of logic, headers too: those of the build that compiles logic alone.
logic_names() {
    grep -o '"file": *"[^"]*/src/[^"]*\.cpp"' "$root/native/compile_commands.json" |
        sed 's|.*/\(src/.*\)\.cpp"|\1|' | sort -u
}

native_build() { # TARGETS...
    build native "$@" -- -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_CXX_FLAGS=--coverage
}

logic() {
    echo "== logic: at least 98 %"
    native_build logic_tests || return 1
    "$root/native/tests/logic/logic_tests" --gtest_brief=1 || return 1
    report native 98 "llvm-cov gcov"
}

# A program writes what it and the DLLs in it have run when they end. The names of these files are absolute,
# and are taken from the drive that has all of them.
shell() {
    echo "== shell: at least 85 %"
    local tests=$root/win32/tests excluded=() program name
    local programs=(component/component_tests host/host_tests window/window_tests editors/editor_tests
        editors_option/option_editor_tests)
    native_build || return 1
    build win32 Quillon quorvex "${programs[@]##*/}" -- --toolchain cmake/mingw-i686.cmake \
        -DCMAKE_UNITY_BUILD=ON "-DCMAKE_CXX_FLAGS=--coverage -fprofile-filter-files=$PWD/src/.*" || return 1
    while read -r name; do excluded+=(--exclude "$name\\.(cpp|h)"); done < <(logic_names)
    scripts/wine-run.sh i686 start
    for program in "${programs[@]}"; do
        GCOV_PREFIX=Z: QUILLON_TEST_SECONDS=1000 timeout 3600 \
            scripts/wine-run.sh i686 "$tests/$program.exe" --gtest_brief=1 || return 1
    done
    report win32 85 i686-w64-mingw32-gcov-posix "${excluded[@]}"
}

result=0
if [ "$part" != shell ]; then logic || result=1; fi
if [ "$part" != logic ]; then shell || result=1; fi
exit $result
