#!/usr/bin/env bash
# Makes the installer build/package/Quillon-VERSION-setup.exe.
#
#   scripts/package.sh              builds what goes into it, then the installer
#   scripts/package.sh --no-build   takes what the presets win32 and win64 have built
#
# What is installed is gathered in build/package/stage first, the DLLs stripped. Beside it stands what
# the packaging test needs of 64 bit, for the installed demo is a 32-bit program.
set -eu
cd "$(dirname "$0")/.."

fail() { echo "package: $*" >&2; exit 1; }

build=yes
case "${1:-}" in
    --no-build) build=no ;;
    "") ;;
    *) echo "usage: scripts/package.sh [--no-build]" >&2; exit 2 ;;
esac
command -v makensis >/dev/null || fail "makensis is missing; scripts/setup.sh installs it"

version=$(sed -n 's/^project(quillon VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
[ -n "$version" ] || fail "CMakeLists.txt tells no version"
folder=build/package
stage=$folder/stage

if [ $build = yes ]; then
    mkdir -p build
    for preset in win32 win64; do
        targets=(Quillon quorvex bench)
        cmake --preset $preset >build/$preset.configure.log || fail "configuring $preset failed"
        # The help file is the same for both.
        if [ $preset = win32 ] && command -v chmcmd >/dev/null; then targets+=(helpfile); fi
        cmake --build --preset $preset --target "${targets[@]}" -- --quiet
    done
fi

manifest() { # NAME ARCHITECTURE FOLDER
    sed -e "s/@VERSION@/$version/" -e "s/@ARCHITECTURE@/$2/" "packaging/$1.manifest.in" >"$3/$1.manifest"
}

program() { # FILE FOLDER
    [ -f "$1" ] || fail "$1 is not built"
    x86_64-w64-mingw32-strip -o "$2/$(basename "$1")" "$1"
}

plug_in() { # PRESET ARCHITECTURE FOLDER
    mkdir -p "$3"
    program "build/$1/src/Quillon.dll" "$3"
    manifest Quillon.PlugIn "$2" "$3"
}

demo() { # PRESET ARCHITECTURE FOLDER
    mkdir -p "$3/networks" "$3/samples"
    program "build/$1/simulator/Quorvex.dll" "$3"
    program "build/$1/simulator/bench/bench.exe" "$3"
    manifest Quorvex.Simulator "$2" "$3"
    manifest demo "$2" "$3"
    cp simulator/networks/room.json "$3/networks/"
    find examples -maxdepth 1 -type f -regextype egrep -regex "$samples" -exec cp {} "$3/samples/" \;
}

# Files for the demo's commands, in a folder of their own: what the plug-in makes beside its DLL is the
# operator's. Everything else in examples goes beside the DLLs, for the plug-in reads it there.
samples='.*\.(bench|app|cps|tca|xif|json|md)'

rm -rf "$folder"
plug_in win32 x86 $stage/32
plug_in win64 amd64 $stage/64
demo win32 x86 $stage/demo
demo win64 amd64 $folder/64
plug_in win64 amd64 $folder/64
mkdir -p $stage/examples
(cd examples && find . -type f -regextype egrep ! -regex "$samples" -print0 |
    xargs -0 cp --parents -t "../$stage/examples")

help=$(find build/win32 -name Quillon.chm -print -quit)
if [ -n "$help" ]; then cp "$help" $stage/; else echo "package: no help file is built; the installer goes without"; fi

# The lists of files as macros of the installer's language.
list() { (cd "$1" && find . "${@:2}" -printf '%P\n' | LC_ALL=C sort); }
{
    [ -z "$help" ] || echo '!define HAVE_HELP'
    echo '!macro EachExample DO FOLDER'
    list $stage/examples -type f | while read -r file; do
        sub=$(dirname "$file")/
        [ "$sub" != ./ ] || sub=
        printf '  !insertmacro ${DO} "${FOLDER}" "%s" "%s"\n' "${sub//\//\\}" "$(basename "$file")"
    done
    echo '!macroend'
    echo '!macro EachExampleFolder FOLDER'
    list $stage/examples -mindepth 1 -type d | LC_ALL=C sort -r | while read -r sub; do
        printf '  RMDir "$INSTDIR\\${FOLDER}\\%s"\n' "${sub//\//\\}"
    done
    echo '!macroend'
    echo '!macro EachDemoFile'
    list $stage/demo -type f | while read -r file; do printf '  Delete "$INSTDIR\\demo\\%s"\n' "${file//\//\\}"; done
    list $stage/demo -mindepth 1 -type d | LC_ALL=C sort -r | while read -r sub; do
        printf '  RMDir "$INSTDIR\\demo\\%s"\n' "${sub//\//\\}"
    done
    echo '!macroend'
} >$stage/files.nsh

# Paths of an installer script are seen from its own folder.
scripts/compile_installer.sh "$version" "$stage" "$folder/Quillon-$version-setup.exe"
