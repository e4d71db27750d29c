#!/usr/bin/env bash
# Checks sources without running them: layout, banned calls, cppcheck, clang-tidy.
#
#   scripts/static_checks.sh [changed [BASE]]   what differs from BASE: committed, uncommitted and new
#   scripts/static_checks.sh all                everything
#
# BASE is where this branch left origin/main or main, else the commit before this one; where there is none
# either, all is new. With `changed`, clang-tidy starts no file later than QUILLON_TIDY_SECONDS (default 45)
# after its first, the product's own before all others, and the files left to the full run are told. A header
# is looked at by one source that includes it. cppcheck does not look at tests. The compile commands of the presets are used;
# a missing one is configured, and the headers that the interface compiler makes are made. Exit code 0:
# nothing found.
set -u
cd "$(dirname "$0")/.." || exit 1

usage() { echo "usage: scripts/static_checks.sh [changed [BASE] | all]" >&2; exit 2; }
scope=${1:-changed}
case $scope in
    changed) [ $# -le 2 ] || usage ;;
    all) [ $# = 1 ] || usage ;;
    *) usage ;;
esac

default_base() {
    local landed fork
    for landed in origin/main main; do
        fork=$(git merge-base HEAD "$landed" 2>/dev/null) || continue
        [ "$fork" = "$(git rev-parse HEAD)" ] || { echo "$fork"; return; }
    done
    git rev-parse --verify --quiet HEAD~1
}

# Outside a work tree of git all that is there counts.
all_sources() {
    git ls-files --cached --others --exclude-standard -- '*.cpp' '*.h' 2>/dev/null ||
        find src simulator tests benchmarks -name '*.cpp' -o -name '*.h'
}
sources() {
    local base=${2:-$(default_base)}
    if [ "$1" = all ] || [ -z "$base" ]; then
        all_sources
    else
        git diff --name-only --diff-filter=d "$base" -- '*.cpp' '*.h'
        git ls-files --others --exclude-standard -- '*.cpp' '*.h'
    fi
}

mapfile -t files < <(sources "$scope" "${2:-}" | sort -u | while read -r file; do
    [ ! -f "$file" ] || printf '%s\n' "$file"
done)
if [ ${#files[@]} = 0 ]; then echo "static checks: nothing changed"; exit 0; fi

failed=0
step() { # NAME COMMAND...
    local name=$1 start=$SECONDS
    shift
    if "$@"; then echo "ok      $name, $((SECONDS - start)) s"
    else echo "FAILED  $name, $((SECONDS - start)) s"; failed=1
    fi
}

layout() { printf '%s\n' "${files[@]}" | xargs clang-format --dry-run --Werror; }

# Calls that a reviewer would refuse every time: a buffer written without its bound, a text taken for a
# format, numbers by the host's locale, a DLL looked for wherever the process looks.
banned_calls() {
    local words='(v?s?w?n?printf|v?sn?w?printf|sprintf_s|wsprintf[AW]?|wvsprintf[AW]?|s?w?scanf'
    words+='|strn?cpy|strn?cat|wcsn?cpy|wcsn?cat|lstrcpyn?[AW]?|lstrcat[AW]?|gets'
    words+='|ato[fil]|strto[dflu]+|wcsto[dflu]+|setlocale)'
    refuse "$words" '^src/' && refuse '(Co)?LoadLibrary[AW]?' '^(src|simulator)/'
}

refuse() { # FUNCTIONS FILES
    local some
    mapfile -t some < <(printf '%s\n' "${files[@]}" | grep -E "$2")
    [ ${#some[@]} = 0 ] || ! grep -nE "(^|[^A-Za-z0-9_.>])(std::|::)?$1\(" "${some[@]}"
}

# COM's macros hide a function's type, which cppcheck must see.
cpp_check() {
    mkdir -p build/cppcheck
    local units
    mapfile -t units < <(printf '%s\n' "${files[@]}" | grep -E '\.cpp$' | grep -v '^tests/')
    [ ${#units[@]} -gt 0 ] || return 0
    cppcheck --quiet --error-exitcode=1 --std=c++20 --platform=win32W --library=windows \
        --enable=warning,performance,portability --inline-suppr -j "$(nproc)" \
        --suppressions-list=scripts/cppcheck_suppressions.txt --cppcheck-build-dir=build/cppcheck \
        -D_WIN32 -DUNICODE '-DSTDMETHODIMP=HRESULT' '-DSTDMETHODIMP_(type)=type' '-DSTDAPI=HRESULT' \
        '-DSTDAPI_(type)=type' -D__stdcall= -DSTDAPICALLTYPE= -DCALLBACK= \
        -Iinclude -Isrc -Isimulator -Ibenchmarks "${units[@]}"
}

# The compile commands of a preset, with what the compiled files include.
prepare() { # PRESET
    [ -f "build/$1/build.ninja" ] || cmake --preset "$1" >"build/$1.configure.log" 2>&1 ||
        { tail -n 20 "build/$1.configure.log"; return 1; }
    local made
    mapfile -t made < <(ninja -C "build/$1" -t targets all 2>/dev/null | sed -n 's/^\(idl_[a-z]*\): phony$/\1/p')
    [ ${#made[@]} = 0 ] || ninja -C "build/$1" --quiet "${made[@]}"
}

# Which files include a header, those of its own top folder first. The product's are included by their path
# below src, all others by their name.
includers_of() { # HEADER
    local path="([^\"]*/)?${1##*/}"
    [[ $1 != src/* ]] || path=${1#src/}
    all_sources | xargs grep -lE "^#include \"${path//./\\.}\"" | sort |
        awk -v own="${1%%/*}/" 'index($0, own) == 1 { print; next } { rest = rest $0 "\n" } END { printf "%s", rest }'
}

# The source that stands for a header: the one of its name, else one that includes it, or that includes it by
# other headers. Fails when there is none.
source_of() { # HEADER
    [ ! -f "${1%.h}.cpp" ] || { printf '%s\n' "${1%.h}.cpp"; return; }
    local includers file
    mapfile -t includers < <(includers_of "$1")
    for file in "${includers[@]}"; do
        [[ $file != *.cpp ]] || { printf '%s\n' "$file"; return; }
    done
    for file in "${includers[@]}"; do
        ! source_of "$file" || return 0
    done
    return 1
}

# The file that stands for each changed one.
units_to_tidy() {
    local file
    for file in "${files[@]}"; do
        case $file in
            *.h) source_of "$file" ;;
            *) printf '%s\n' "$file" ;;
        esac
    done | sort -u
}

tidy() {
    mkdir -p build
    prepare native && prepare win32 || return 1
    local limits=(--together)
    [ $scope = all ] || limits=(--seconds "${QUILLON_TIDY_SECONDS:-45}")
    units_to_tidy | scripts/tidy.py "${limits[@]}" build/native build/win32
}

mkdir -p build
echo "static checks: ${#files[@]} files"
step "layout" layout
step "banned calls" banned_calls
step "cppcheck" cpp_check
step "clang-tidy" tidy
exit $failed
