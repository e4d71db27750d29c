#!/usr/bin/env bash
# The main job on the simulated host: builds the plug-in, registers it under Wine, exports the application of
# one room unit, downloads it into another, and shows three refusals. Then opens the device windows of two
# rooms beside the bench's own: on your display, or without one on a virtual display, with pictures of them.
set -u
cd "$(dirname "$0")" || exit 1

say() { printf '\n-- %s\n' "$*"; }
fail() { echo "demo: $*" >&2; exit 1; }

say "What is needed"
scripts/setup.sh
setup=$?
case $setup in
    0) preset=win32 arch=i686 other=win64 ;;
    3) preset=win64 arch=x86_64 other= ;; # no 32-bit Wine here: the same with the 64-bit plug-in
    *) exit 1 ;;
esac

build() {
    mkdir -p build
    cmake --preset "$1" >"build/$1.configure.log" 2>&1 || { tail -n 30 "build/$1.configure.log" >&2; return 1; }
    cmake --build --preset "$1" --target "${@:2}" -- --quiet
}

say "Building Quillon.dll, the simulated host and the bench"
build $preset Quillon quorvex bench eyes helpfile || fail "the $preset build failed"
[ -z "$other" ] || build $other Quillon || fail "the $other build failed"

folder=build/demo
rm -rf "$folder"
mkdir -p "$folder/networks" "$folder/64"
cp "build/$preset/src/Quillon.dll" "build/$preset/simulator/Quorvex.dll" \
    "build/$preset/simulator/bench/bench.exe" "$folder/"
cp build/win64/src/Quillon.dll "$folder/64/"
cp simulator/networks/room.json "$folder/networks/"
cp examples/demo.bench examples/commissioning.bench "build/$preset/help/Quillon.chm" "$folder/"
for dll in "$folder/Quillon.dll" "$folder/64/Quillon.dll"; do
    x86_64-w64-mingw32-strip "$dll"
    printf '%s  %s bytes\n' "$dll" "$(stat -c %s "$dll")"
done

run() { (cd "$folder" && ../../scripts/wine-run.sh "$arch" "$@"); }
leave() {
    run regsvr32 /s /u Quillon.dll
    run regsvr32 /s /u Quorvex.dll
}

say "Registering with regsvr32 under Wine"
scripts/wine-run.sh "$arch" start
trap leave EXIT
run regsvr32 Quorvex.dll || fail "the simulated host could not be registered"
run regsvr32 Quillon.dll || fail "the plug-in could not be registered"
[ -z "$other" ] || {
    scripts/wine-run.sh x86_64 start
    (cd "$folder/64" && ../../../scripts/wine-run.sh x86_64 regsvr32 Quillon.dll &&
        ../../../scripts/wine-run.sh x86_64 regsvr32 /s /u Quillon.dll) ||
        fail "the 64-bit plug-in could not be registered"
}

say "The bench plays the host (script: examples/demo.bench)"
run bench.exe let APP room101.app -- run demo.bench || fail "the bench's script did not go as expected"

say "The application file: $folder/room101.app, $(stat -c %s "$folder/room101.app") bytes"

say "A room unit is commissioned (script: examples/commissioning.bench)"
run bench.exe let CPS room101.cps -- let TCA room101.tca -- run commissioning.bench ||
    fail "the commissioning did not go as expected"
cat "$folder/room101.tca"

say "Two labels, byte for byte, into a pseudo-terminal that plays the printer"
scripts/print_labels.sh "$arch" "$folder/bench.exe" "$folder" "$folder/labels" ||
    fail "the labels did not go as expected"

say "The help file opens"
run bench.exe settings clear -- settings HtmlHelp Quillon.chm -- help "Room 101" -- settings clear ||
    fail "the help did not open"

# A display that is named and not there counts as none.
has_display() { [ -n "${DISPLAY:-}" ] && timeout 10 xdotool getmouselocation >/dev/null 2>&1; }

pictures=$folder/pictures
windows=(python3 -B scripts/demo_windows.py --build "build/$preset" --arch "$arch")
if has_display; then
    say "The device windows of two rooms, beside the bench's own"
    "${windows[@]}" || fail "the windows did not go as expected"
else
    say "The device windows of two rooms, on a virtual display"
    scripts/with-screen.sh --size 1600x1024 "${windows[@]}" --pictures "$pictures" ||
        fail "the windows did not go as expected"
    say "Pictures of them: $pictures"
fi
