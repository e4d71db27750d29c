#!/usr/bin/env bash
# Photographs the real windows into docs/pictures, for the README and the user's guide.
#
#   scripts/pictures.sh [--dpi 96|144|192] [--to FOLDER]
#
# With another scaling than 96 (100 %) the pictures are for looking at, so they need a folder.
# QUILLON_BUILD names the build folder (default build/win32). Exit code 0: all pictures are taken.
set -u
cd "$(dirname "$0")/.." || exit 1

dpi=96
folder=docs/pictures
while [ $# -gt 0 ]; do
    case "$1" in
        --dpi) dpi=${2:?--dpi takes 96, 144 or 192} ;;
        --to) folder=${2:?--to takes a folder} ;;
        *) echo "usage: scripts/pictures.sh [--dpi 96|144|192] [--to FOLDER]" >&2; exit 2 ;;
    esac
    shift 2
done
if [ "$dpi" != 96 ] && [ "$folder" = docs/pictures ]; then
    echo "pictures: the documents' pictures are at 96 dpi; name another folder with --to" >&2
    exit 2
fi

build=${QUILLON_BUILD:-build/win32}
targets=(Quillon quorvex bench eyes)
if [ -z "${QUILLON_BUILD:-}" ]; then
    mkdir -p build
    cmake --preset win32 >build/win32.configure.log 2>&1 || { tail -n 30 build/win32.configure.log >&2; exit 1; }
    cmake --build --preset win32 --target "${targets[@]}" -- --quiet || exit 1
fi

mkdir -p "$folder"
# As large as the windows need: a large screen takes long to photograph.
scripts/with-screen.sh --size "$((dpi * 1400 / 96))x$((dpi * 960 / 96))" python3 -B scripts/pictures.py \
    --build "$build" --arch i686 --dpi "$dpi" --to "$folder"
