#!/usr/bin/env bash
# Turns the drawings in res/ into the pictures that the DLL's resources use, in res/generated/.
#
#   scripts/make_pictures.sh            writes what differs from the stored pictures
#   scripts/make_pictures.sh --check    writes nothing; fails when a stored picture is out of date
#
# Run it when an SVG changes; a build takes the stored pictures and needs no converter. The same
# drawings give the same bytes with the same renderer; another librsvg may round edge pixels
# otherwise. Needs rsvg-convert (librsvg2-bin), convert (imagemagick), python3 and DejaVu Sans.
# Exit code 0: pictures are up to date. 1: --check found a difference, or something went wrong.
set -euo pipefail
cd "$(dirname "$0")/.."

check=no
case "${1:-}" in
    --check) check=yes ;;
    "") ;;
    *) echo "usage: scripts/make_pictures.sh [--check]" >&2; exit 2 ;;
esac

# The image keys of the lists.
keys=(nvi vantor error nvofield nvifield cpfield nvo cp cross ledoff switchon switchoff ledon
    Down_off Down_on Up_off Up_on Hand_off Hand_on Page_off Page_on Mode_off Mode_on)

fail() { echo "make_pictures: $*" >&2; exit 1; }

for tool in rsvg-convert convert python3 fc-match; do
    command -v "$tool" >/dev/null ||
        fail "$tool is missing (librsvg2-bin, imagemagick, python3, fontconfig)"
done
# Without the font the renderer would quietly take another one.
for style in Book Bold; do
    [ "$(fc-match -f '%{family}/%{style}' "DejaVu Sans:style=$style")" = "DejaVu Sans/$style" ] \
        || fail "font DejaVu Sans $style is not installed (fonts-dejavu-core)"
done

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/out"

# A drawing is shown only at whole multiples of its own grid, so that edges stay on pixel borders.
grid_of() { if [ $(($1 % 24)) = 0 ]; then echo 24; else echo 16; fi; }

# make_icon OUT SVG: one icon of four sizes; GRID in the SVG's path stands for 16 or 24
make_icon() {
    local out=$1 pattern=$2 pictures=() size svg
    for size in 16 24 32 48; do
        svg=${pattern//GRID/$(grid_of "$size")}
        [ -f "$svg" ] || fail "$svg is missing"
        rsvg-convert -w "$size" -h "$size" -f png -o "$work/$size.png" "$svg" ||
            fail "cannot draw $svg"
        pictures+=("$size" "$work/$size.png")
    done
    python3 res/pack_pictures.py "$work/out/$out.ico" "${pictures[@]}"
}

# make_splash WIDTH OUT.gif; flat colours, so dithering would only add noise
make_splash() {
    rsvg-convert -w "$1" -f png -o "$work/splash.png" res/splash.svg ||
        fail "cannot draw res/splash.svg"
    convert "$work/splash.png" -alpha off -strip +dither -colors 256 "gif:$work/out/$2"
}

for key in "${keys[@]}"; do make_icon "list_$key" "res/iconsGRID/$key.svg"; done
make_icon Vantor res/window/Vantor-GRID.svg
make_icon VantorERROR res/window/VantorERROR-GRID.svg
make_splash 420 splash.gif
make_splash 840 splash2.gif

mkdir -p res/generated
different=()
for picture in "$work"/out/*; do
    name=${picture##*/}
    cmp -s "$picture" "res/generated/$name" && continue
    different+=("$name")
    [ "$check" = yes ] || install -m 644 "$picture" "res/generated/$name"
done

if [ ${#different[@]} = 0 ]; then echo "make_pictures: all pictures are up to date"
elif [ "$check" = yes ]; then fail "out of date: ${different[*]}"
else echo "make_pictures: wrote ${different[*]}"
fi
