#!/usr/bin/env bash
# Prints a label of 13,000 bytes on a printer that takes 960 bytes a second, and says how long that took and
# how long the window did not answer.
#
#   scripts/label_speed.sh i686|x86_64 BENCH FOLDER
#
# BENCH is bench.exe, FOLDER that of the registered Quillon.dll. Exit code 0: at most 1.05 times the printer's
# own time, and messages never waited for 50 ms.
set -u
here=$(cd "$(dirname "$0")" && pwd)
. "$here/plugin-folder.sh"
arch=$1
bench=$(realpath "$2")
take_plugin_folder "$3"

cd "$plugin_folder" || exit 1
python3 - <<'END'
field = b"nnnnnnnnnnnn YYWW "
with open("longest.zpl", "wb") as file:
    file.write((field * 3 + bytes(range(256)) * 60)[:13000])
END
said=$("$here/with-printer.sh" "$arch" --rate 960 "$bench" --network "$network" \
    settings DisplayHW 1 -- settings "Label Printer" COMPort @PORT@ -- \
    settings "Label Printer" COMSettings 9600,n,8,1 -- settings "Label Printer" 0Model longest.zpl -- \
    settings "Nimbra Codes" 0Model longest -- \
    answer ok -- print "Room 101" longest -- expect box "Etichetta stampata") || { echo "$said"; exit 1; }
python3 - "$said" <<'END'
import re
import sys

found = re.search(r"took (\d+) ms; messages waited for at most (\d+) ms", sys.argv[1])
if not found:
    sys.exit(f"label_speed: the bench says {sys.argv[1]!r}")
took, waited = map(int, found.groups())
ratio = took / (13000 / 960 * 1000)
print("| what | measured | limit |\n|---|---|---|")
print(f"| label of 13,000 bytes against the printer's own time at 960 bytes a second | {ratio:.3f} | 1.05 |")
print(f"| longest time in which the window answered no message meanwhile | {waited} ms | 50 ms |")
sys.exit(ratio > 1.05 or waited >= 50)
END
