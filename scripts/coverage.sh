#!/usr/bin/env bash
# Measures how much of the product's code the tests run, and fails below the promised part.
#
#   scripts/coverage.sh [logic|shell]
#
# logic (at least 98 % of its lines): its own tests, natively. shell, all other code of the DLL (at least
# 85 %): component, host and window tests of a 32-bit build under Wine, each program as a whole. Builds
# stand in build/coverage. Exit code 0: enough. 1: too little, or a build or test failed.
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
    cmake -S . -B "$folder" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS=--coverage \
        -DCMAKE_EXE_LINKER_FLAGS=--coverage -DCMAKE_SHARED_LINKER_FLAGS=--coverage "$@" \
        >"$folder.configure.log" 2>&1 || { tail -n 20 "$folder.configure.log"; return 1; }
    cmake --build "$folder" --target "${targets[@]}" -- --quiet || return 1
    find "$folder" -name '*.gcda' -delete
}

# Prints the files that are not wholly run, and the sum.
report() { # FOLDER PERCENT GCOV FILTERS...
    local folder=$root/$1 percent=$2 gcov=$3
    shift 3
    gcovr --root . --object-directory "$folder" --gcov-executable "$gcov" \
        --filter 'src/' "$@" --fail-under-line "$percent" --txt "$folder.txt" "$folder"
    local result=$?
    grep -v ' 100% *$' "$folder.txt" | cut -c1-110
    return $result
}

# Sources of logic as one pattern for each pair of files, from the build that compiles logic alone.
logic_files() {
    grep -o '"file": *"[^"]*/src/[^"]*\.cpp"' "$root/native/compile_commands.json" |
        sed 's|.*/\(src/.*\)\.cpp"|\1|' | sort -u
}

logic() {
    echo "== logic: at least 98 %"
    build native logic_tests -- -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ || return 1
    "$root/native/tests/logic/logic_tests" --gtest_brief=1 || return 1
    report native 98 "llvm-cov gcov"
}

shell() {
    echo "== shell: at least 85 %"
    local programs=(component/component_tests host/host_tests window/window_tests) program excluded=()
    build win32 Quillon quorvex "${programs[@]##*/}" -- --toolchain cmake/mingw-i686.cmake || return 1
    [ -f "$root/native/compile_commands.json" ] ||
        cmake -S . -B "$root/native" -G Ninja -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ \
            >/dev/null || return 1
    while read -r name; do excluded+=(--exclude "$name\\.(cpp|h)"); done < <(logic_files)
    scripts/wine-run.sh i686 start
    for program in "${programs[@]}"; do
        timeout 900 scripts/wine-run.sh i686 "$root/win32/tests/$program.exe" --gtest_brief=1 || return 1
    done
    report win32 85 i686-w64-mingw32-gcov-posix "${excluded[@]}"
}

result=0
if [ "$part" != shell ]; then logic || result=1; fi
if [ "$part" != logic ]; then shell || result=1; fi
exit $result
