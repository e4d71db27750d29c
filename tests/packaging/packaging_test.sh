#!/usr/bin/env bash
# Installs, uses, upgrades and removes Quillon under Wine, silently, in prefixes of its own.
#
#   tests/packaging/packaging_test.sh           both bitnesses, after both presets have been built
#   tests/packaging/packaging_test.sh i686      32 bit alone; or x86_64
#
# All of it happens in a folder of its own below build/, which is removed at the end. Wine finds no class
# that is registered for the user alone; of that registration the keys are checked.
set -u
cd "$(dirname "$0")/../.." || exit 1
root=$PWD

mkdir -p build
work=$(mktemp -d "$root/build/packaging.XXXXXX")
export HOME=$work/home QUILLON_WINE_BASE=$work/wine
unset DISPLAY QUILLON_DISPLAY
mkdir -p "$HOME"

failed=0
note() { printf '%s  %s\n' "$1" "$2"; }
check() { # WHAT COMMAND...
    if "${@:2}"; then note ok "$1"; else note FAILED "$1"; failed=$((failed + 1)); fi
}
check_not() { # WHAT COMMAND...
    if "${@:2}"; then note FAILED "$1"; failed=$((failed + 1)); else note ok "$1"; fi
}

# Each Wine program writes to a file, for Wine's services would keep a pipe open.
run() { timeout 300 "$root/scripts/wine-run.sh" "$arch" "$@" </dev/null >"$out" 2>&1; }
ends_with() { # CODE PROGRAM ARGS...
    local result=0
    run "${@:2}" || result=$?
    [ $result = "$1" ] || { echo "exit code $result of ${*:2}"; head -20 "$out"; return 1; }
}
# All programs of the prefix have ended and its registry is in its files.
settled() { WINEPREFIX=$prefix timeout 300 wineserver -w </dev/null >/dev/null 2>&1; }
flushed() {
    "$root/scripts/wine-run.sh" "$arch" stop
    settled
}
jobs=()
leave() {
    for job in "${jobs[@]}"; do kill "$job" 2>/dev/null; done
    for arch in i686 x86_64; do
        prefix=$("$root/scripts/wine-run.sh" $arch prefix)
        [ ! -d "$prefix" ] || flushed
    done
    rm -rf "$work"
}
trap leave EXIT
trap 'exit 1' INT TERM HUP

# The classes whose server is the Quillon.dll in a folder of that name: registered_in FILE FOLDER. In the
# files of the registry a backslash is two.
registered_in() {
    DLL="\\\\$2\\\\Quillon.dll\"" awk '
        /^\[/ { key = /CLSID/ ? toupper($0) : ""; sub(/.*CLSID\\\\/, "", key); sub(/\\\\.*/, "", key) }
        /^@=/ && key != "" && index($0, ENVIRON["DLL"]) { print key }' "$1" | sort
}
in_manifest() { grep -o 'clsid="[^"]*"' "$1" | cut -d'"' -f2 | sort; }
same_classes() { # REGISTRY FOLDER MANIFEST
    [ -s "$3" ] && [ "$(registered_in "$1" "$2")" = "$(in_manifest "$3")" ]
}
# Wine's registry names folders of this machine, whose names may be the product's: those do not count.
ours=$(printf '%s' "$root" | sed -E 's|[^/[:alnum:]]|.|g; s|/|[/\\\\]+|g')
names_us() { cat "$@" | sed -E "s|$ours||gI" | grep -iE 'quillon|A930D55D-9545|142C8364-7806' >"$out.names" && head -5 "$out.names"; }
keys() { cat "$prefix"/*.reg | grep '^\[' | sed 's/\] .*/]/' | LC_ALL=C sort; }
same_keys() { keys | diff "$1" -; }
# Short, for _?= takes no blank: quoted, it is no switch, and the uninstaller goes on in a copy of its own.
windows_path() { run winepath "$@" && tr -d '\r\n' <"$out"; }
short_path() { windows_path -s "$(windows_path -w "$1")"; }
has() { [ -f "$place/$1" ]; }
in_start_menu() { # PATTERN...
    local text pattern
    text=$(find "$prefix/drive_c" -path '*/Start Menu/*/Quillon/*.lnk' -exec cat {} + | tr -d '\0')
    for pattern in "$@"; do grep -aq -e "$pattern" <<<"$text" || return 1; done
}
holds() { grep -q "$1" "$2" 2>/dev/null; }
left_over() { (cd "$place" && find . -type f | LC_ALL=C sort | tr '\n' ' ') 2>/dev/null; }

# An example that is edited here, and one that nobody edits. The bench writes settings of every program
# ID of its network.
edited=9FFFFF0512040410.ini
also_edited=9FFFFF0512040522.ini
untouched=

newer_installer() {
    cp -r build/package/stage "$work/newer"
    for file in "$edited" "$untouched"; do echo "; as of 2.1.15" >>"$work/newer/examples/$file"; done
    scripts/compile_installer.sh 2.1.15 "$work/newer" "$work/Quillon-2.1.15-setup.exe" -DQUICK
}
broken_installer() {
    cp -r build/package/stage "$work/broken"
    echo "no DLL" >"$work/broken/32/Quillon.dll"
    scripts/compile_installer.sh 2.1.14 "$work/broken" "$work/Quillon-broken-setup.exe" -DQUICK
}

installed() {
    check "installs silently" ends_with 0 "$setup" /S
    for folder in $folders; do
        check "$folder: plug-in" has "$folder/Quillon.dll"
        check "$folder: settings" has "$folder/$edited"
        check "$folder: examples as delivered" has "$folder/examples/$untouched"
        [ ! -f build/package/stage/Quillon.chm ] || check "$folder: help" has "$folder/Quillon.chm"
    done
    check "start menu: the bench by its manifest" in_start_menu 'demo\\bench\.exe' '--manifest demo\.manifest'
    [ ! -f build/package/stage/Quillon.chm ] || check "start menu: the plug-in's help" in_start_menu "$own"'\\Quillon\.chm'
    check_not "no 64-bit plug-in on a 32-bit system" eval '[ $arch = i686 ] && has 64/Quillon.dll'
    flushed
    for folder in $folders; do
        check "$folder: every class of the manifest is registered" \
            same_classes "$prefix/system.reg" "$folder" "$place/$folder/Quillon.PlugIn.manifest"
    done
    check_not "nothing is registered for the user" names_us "$prefix/user.reg"
}

# A registered host program loads the registered plug-in of its bitness.
used_by() { # FOLDER HOST REGSVR32
    check "$1: the simulated host is registered" ends_with 0 "$3" /s "$2\\Quorvex.dll"
    check "$1: export through the registered plug-in" ends_with 0 "$2\\bench.exe" export "Room 101" "C:\\room-$1.app"
    check "$1: the exported file is there" holds '<Configuration>' "$prefix/drive_c/room-$1.app"
    [ ! -f "$place/$1/Quillon.chm" ] || check "$1: its help opens" ends_with 0 "$2\\bench.exe" help "Room 101"
    # What is changed beside the plug-in is the operator's.
    [ "$1" != "$own" ] || check "settings are edited beside the installed plug-in" \
        ends_with 0 "$2\\bench.exe" settings ForceCustomerID operator
    check "$1: the simulated host is unregistered" ends_with 0 "$3" /s /u "$2\\Quorvex.dll"
}
used() {
    used_by "$own" "$bench" regsvr32
    [ "$own" = 32 ] || used_by 32 'C:\Program Files (x86)\Quillon\demo' 'C:\windows\syswow64\regsvr32.exe'
    check "edited settings are those of the registered DLL" holds ForceCustomerID=operator "$place/$own/$edited"
}

registration_free() {
    check_not "without registration and manifest there is no host" ends_with 0 "$bench\\bench.exe" list
    check "the demo runs by its manifest" ends_with 0 "$bench\\bench.exe" --manifest demo.manifest export "Room 102" 'C:\room102.app'
    check "and exports" holds '<Configuration>' "$prefix/drive_c/room102.app"
    check "the demo imports an interface without it" ends_with 0 "$bench\\bench.exe" import "$bench\\samples\\thermostat.xif" 'C:\thermostat.json'
    check "and opens what it made" ends_with 0 "$bench\\bench.exe" --manifest demo.manifest --network 'C:\thermostat.json' list
    check_not "a manifest that is missing is told" ends_with 0 "$bench\\bench.exe" --manifest none.manifest list
}

# Like a file that a program has open, a folder cannot be opened for writing.
stopped_by() { # FILE
    mv "$place/$1" "$work/$arch.file"
    mkdir "$place/$1"
    check "$1 that cannot be replaced stops the installer" ends_with 3 "$work/Quillon-2.1.15-setup.exe" /S
    check "$1 that cannot be removed stops the uninstaller" ends_with 3 "$place/uninstall.exe" /S "_?=$(short_path "$place")"
    rmdir "$place/$1"
    mv "$work/$arch.file" "$place/$1"
}
upgraded() {
    touch "$place/$own/0123456789AB.tca" "$place/$own/room.app" "$place/$own/examples/mine.ini"
    for file in "$own/Quillon.dll" "$own/Quillon.chm" demo/Quillon.dll demo/Quillon.chm demo/Quorvex.dll demo/bench.exe; do
        ! has "$file" || stopped_by "$file"
    done
    check_not "before anything is changed" holds 2.1.15 "$place/$own/$untouched"
    check "upgrades silently" ends_with 0 "$work/Quillon-2.1.15-setup.exe" /S
    check "edited settings are kept" holds ForceCustomerID=operator "$place/$own/$edited"
    check_not "and not touched" holds 2.1.15 "$place/$own/$edited"
    check "the new ones lie in examples" holds 2.1.15 "$place/$own/examples/$edited"
    check "an example that nobody edited is renewed" holds 2.1.15 "$place/$own/$untouched"
}

removed() {
    flushed
    check "the version is the new one" holds '"DisplayVersion"="2.1.15"' "$prefix/system.reg"
    check "uninstalls silently" ends_with 0 "$place/uninstall.exe" /S
    settled
    check "only the operator's files are left: $(left_over)" \
        [ "$(left_over)" = "$(printf "./$own/%s " 0123456789AB.tca "$edited" "$also_edited" examples/mine.ini room.app)" ]
    check_not "no key is left" names_us "$prefix/system.reg" "$prefix/user.reg" "$prefix/userdef.reg"
    check "nothing in the start menu" [ -z "$(find "$prefix/drive_c" -ipath '*Quillon*.lnk')" ]
    rm -rf "$place"
}

for_the_user() {
    check "installs for the user" ends_with 0 "$setup" /CurrentUser /S
    flushed
    place=$(dirname "$(find "$prefix/drive_c" -path '*/Quillon/uninstall.exe')")
    # Wine has one place for a user's classes of both bitnesses: what was registered last is there.
    check "$own: every class is registered for the user" \
        same_classes "$prefix/user.reg" "$own" "$place/$own/Quillon.PlugIn.manifest"
    # Wine keeps a user's type library for the machine.
    check "no class is registered for the machine" [ -z "$(registered_in "$prefix/system.reg" 32)" ]
    # Waits for its end, and so cannot remove its own file.
    check "uninstalls for the user" ends_with 0 "$place/uninstall.exe" /CurrentUser /S "_?=$(short_path "$place")"
    flushed
    check "no file is left: $(left_over)" eval '[ -z "$(left_over)" ] || [ "$(left_over)" = "./uninstall.exe " ]'
    check_not "no key is left" names_us "$prefix/system.reg" "$prefix/user.reg"
    rm -rf "$place"
}

in_another_folder() {
    place="$prefix/drive_c/Tools/Quillon"
    keys >"$out.keys"
    check "installs in a folder of the operator's choice" ends_with 0 "$setup" /S '/D=C:\Tools\Quillon'
    check "it is there" has "$own/Quillon.dll"
    check "an upgrade finds it" ends_with 0 "$work/Quillon-2.1.15-setup.exe" /S
    check "and renews it" holds 2.1.15 "$place/$own/$untouched"
    check "uninstalls from there" ends_with 0 "$place/uninstall.exe" /S
    settled
    check_not "the folder is gone" [ -e "$place" ]
    check "the registry has the keys that it had before" same_keys "$out.keys"
}

broken_installed() {
    check "a DLL that cannot be registered is told" ends_with 2 "$work/Quillon-broken-setup.exe" /S
}

one_bitness() { # ARCH
    arch=$1
    out=$work/$arch.out
    echo "== $arch"
    if [ "$arch" = i686 ]; then
        prefix=$QUILLON_WINE_BASE-32 place="$prefix/drive_c/Program Files/Quillon" folders=32 own=32
    else
        prefix=$QUILLON_WINE_BASE-64 place="$prefix/drive_c/Program Files (x86)/Quillon" folders="32 64" own=64
    fi
    "$root/scripts/wine-run.sh" "$arch" start
    # Wine would otherwise keep books of start menu entries, in its registry and outside the prefix.
    check "no start menu of the machine" ends_with 0 reg add 'HKCU\Software\Wine\DllOverrides' /v winemenubuilder.exe /d "" /f
    # The installed demo is a 32-bit program; the 64-bit plug-in is used by a 64-bit one.
    bench='C:\Program Files\Quillon\demo'
    if [ "$arch" = x86_64 ]; then
        cp -r build/package/64 "$prefix/drive_c/bench64"
        bench='C:\bench64'
    fi
    broken_installed
    installed
    used
    registration_free
    upgraded
    removed
    for_the_user
    in_another_folder
    flushed
    echo "packaging, $arch: $failed failed"
    [ $failed = 0 ]
}

scripts/package.sh --no-build || exit 1
setup=$(ls "$root"/build/package/Quillon-*-setup.exe)
untouched=$(cd build/package/stage/examples && find . -type f ! -name '*.ini' -printf '%P\n' | sort | tail -1)
[ -n "$untouched" ] || { echo "packaging: there is no example but settings"; exit 1; }
newer_installer || exit 1
broken_installer || exit 1

# Both at once: they share nothing but the installers, and mostly wait.
for arch in ${1:-i686 x86_64}; do
    one_bitness "$arch" >"$work/$arch.log" 2>&1 &
    jobs+=($!)
done
result=0
for job in "${jobs[@]}"; do wait "$job" || result=1; done
cat "$work"/*.log
exit $result
