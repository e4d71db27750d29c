#!/usr/bin/env bash
# Prints the example labels of a simulated room unit into a pseudo-terminal that plays the printer, from the
# real window, and compares what arrives byte by byte with what must.
#
#   scripts/print_labels.sh i686|x86_64 FOLDER
#
# FOLDER holds bench.exe and the Quillon.dll and Quorvex.dll that are registered. The example settings and
# templates are put beside them; the bytes of the labels are left in FOLDER/labels.
set -u
here=$(cd "$(dirname "$0")" && pwd)
arch=$1
folder=$(cd "$2" && pwd) || exit 1
examples=$here/../examples
network=$here/../simulator/networks/room.json

cp "$examples"/*.zpl "$examples"/*.epl "$examples"/9FFFFF0512040410.ini "$folder/" || exit 1
labels=$folder/labels
rm -rf "$labels"
cd "$folder" || exit 1
QUILLON_PRINTER_FOLDER=$labels "$here/with-printer.sh" "$arch" bench.exe --network "Z:$network" \
    settings "Label Printer" COMPort @PORT@ -- \
    answer ok -- print "Room 101" "KX-4410-0100" -- expect box "Etichetta stampata" -- \
    answer ok -- print "Room 101" "KX-4410-0100, logo" -- expect box "Etichetta stampata" || exit 1
exec "$here/label_expectation.py" "$labels/received" 0123456789AB \
    "$examples/room-unit.zpl" "$examples/room-unit-logo.epl"
