#!/usr/bin/env bash
# Prints the example labels of a simulated room unit into a pseudo-terminal that plays the printer, from the
# real window, and compares what arrives byte by byte with what must.
#
#   scripts/print_labels.sh i686|x86_64 BENCH FOLDER [LABELS]
#
# BENCH is bench.exe, FOLDER that of the registered Quillon.dll. The example settings and templates lie there
# meanwhile. With LABELS the bytes of the labels are left in that folder.
set -u
here=$(cd "$(dirname "$0")" && pwd)
. "$here/plugin-folder.sh"
arch=$1
bench=$(realpath "$2")
take_plugin_folder "$3"
labels=${4:-$kept/labels}
mkdir -p "$labels"
labels=$(realpath "$labels")

cd "$plugin_folder" || exit 1
cp "$examples"/*.zpl "$examples"/*.epl "$examples"/9FFFFF0512040410.ini . || exit 1
QUILLON_PRINTER_FOLDER=$labels "$here/with-printer.sh" "$arch" "$bench" --network "$network" \
    settings "Label Printer" COMPort @PORT@ -- \
    answer ok -- print "Room 101" "KX-4410-0100" -- expect box "Etichetta stampata" -- \
    answer ok -- print "Room 101" "KX-4410-0100, logo" -- expect box "Etichetta stampata" || exit 1
"$here/label_expectation.py" "$labels/received" 0123456789AB \
    "$examples/room-unit.zpl" "$examples/room-unit-logo.epl"
