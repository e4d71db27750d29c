#!/usr/bin/env bash
# Installs what building and testing Quillon needs on Debian 12; safe to run again at any time.
#
#   scripts/setup.sh            everything: cross compilers, Wine of both bitnesses, test tools
#   scripts/setup.sh --native   a compiler, CMake (with Ninja) and GoogleTest, for the logic tests alone
#
# Only what is missing is installed. Exit code 0: all is there. 3: all but 32-bit Wine (the 64-bit half
# still runs). 1: something else is missing. The last line says which.
set -u

say() { printf 'setup: %s\n' "$*"; }

case "${1:-}" in
    --native) mode=native ;;
    "") mode=full ;;
    *) echo "usage: scripts/setup.sh [--native]" >&2; exit 2 ;;
esac

native=(clang libclang-rt-14-dev libstdc++-12-dev cmake ninja-build googletest)
full=("${native[@]}"
    g++-mingw-w64-i686-posix g++-mingw-w64-x86-64-posix mingw-w64-tools
    nlohmann-json3-dev libbenchmark-dev clang-format python3 git
    xvfb openbox xdotool x11-utils imagemagick socat procps
    librsvg2-bin fontconfig fonts-dejavu-core
    cppcheck clang-tidy gcovr llvm libpugixml-dev
    fp-utils nsis)

wine64=(wine wine64 libwine-dev)

installed() { dpkg-query -W -f='${db:Status-Status}\n' "$1" 2>/dev/null | grep -qx installed; }

missing_of() {
    local package
    for package in "$@"; do installed "$package" || printf '%s\n' "$package"; done
}

as_root() {
    if [ "$(id -u)" = 0 ]; then "$@"
    elif command -v sudo >/dev/null 2>&1; then sudo "$@"
    else say "root rights are needed to run: $*"; return 1
    fi
}

export DEBIAN_FRONTEND=noninteractive

# A mirror whose index of one archive is out of step makes `update` fail although all others are
# usable; so its result is told and not obeyed.
updated=no
update_once() {
    [ "$updated" = no ] || return 0
    updated=yes
    say "apt-get update"
    as_root apt-get -qq update >/dev/null 2>&1 || say "one package index could not be fetched; going on with the others"
}

install() {
    say "apt-get install $*"
    as_root apt-get -qq -y --no-install-recommends install "$@" >"$log" 2>&1
}

log=$(mktemp)
trap 'rm -f "$log"' EXIT

if [ $mode = native ]; then wanted=("${native[@]}"); else wanted=("${full[@]}"); fi
mapfile -t missing < <(missing_of "${wanted[@]}")
if [ ${#missing[@]} -gt 0 ]; then
    update_once
    install "${missing[@]}" || { tail -n 20 "$log" >&2; }
fi

# Wine of both bitnesses, in one run: the 32-bit libraries must have exactly the versions of the 64-bit
# ones. When the security index for i386 is out of step and the machine's own libraries are newer, plain
# apt refuses; with the main and updates archives alone it finds versions that agree, and above priority
# 1000 it takes them for the 64-bit libraries as well, though they are older.
wine_by_main_archives() {
    local lists
    lists=$(mktemp -d)
    chmod 755 "$lists"
    mkdir -p "$lists/state/partial"
    printf 'deb http://deb.debian.org/debian %s main\n' bookworm bookworm-updates >"$lists/sources.list"
    printf 'Package: *\nPin: release o=Debian\nPin-Priority: 1001\n' >"$lists/preferences"
    local options=(-o "Dir::Etc::sourcelist=$lists/sources.list" -o "Dir::Etc::sourceparts=-"
        -o "Dir::Etc::preferences=$lists/preferences" -o "Dir::State::lists=$lists/state")
    as_root apt-get -qq "${options[@]}" update >"$log" 2>&1
    as_root apt-get -qq -y --no-install-recommends --allow-downgrades "${options[@]}" install \
        "${wine64[@]}" wine32:i386 >"$log" 2>&1
    local result=$?
    rm -rf "$lists"
    return $result
}

if [ $mode = full ]; then
    mapfile -t missing < <(missing_of "${wine64[@]}" wine32:i386)
    if [ ${#missing[@]} -gt 0 ]; then
        if ! dpkg --print-foreign-architectures | grep -qx i386; then
            say "dpkg --add-architecture i386"
            as_root dpkg --add-architecture i386
            updated=no
        fi
        update_once
        if ! install "${wine64[@]}" wine32:i386; then
            say "plain apt refuses wine32:i386; taking Wine and its libraries from the main and updates archives"
            if ! wine_by_main_archives; then
                tail -n 20 "$log" >&2
                say "32-bit Wine cannot be had; installing the 64-bit half"
                install "${wine64[@]}" || tail -n 20 "$log" >&2
            fi
        fi
    fi
    wanted+=("${wine64[@]}")
fi

mapfile -t missing < <(missing_of "${wanted[@]}")
if [ ${#missing[@]} -gt 0 ]; then
    say "MISSING, could not be installed: ${missing[*]}"
    exit 1
fi
if [ $mode = full ] && ! installed wine32:i386; then
    say "MISSING: 32-bit Wine (wine32:i386) could not be installed; only the 64-bit half can be run here"
    exit 3
fi
say "everything needed is installed"
