#!/usr/bin/env bash
# Prints a label of 13,000 bytes nine times on a printer that takes 960 bytes a second, and says how long that
# took and how long the window did not answer, as rows for benchmark_tables.py, which judges them. Takes two
# minutes.
#
#   scripts/label_speed.sh i686|x86_64 BENCH FOLDER
#
# BENCH is bench.exe, FOLDER that of the registered Quillon.dll.
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
words=(settings DisplayHW 1 -- settings "Label Printer" COMPort @PORT@ --
    settings "Label Printer" COMSettings 9600,n,8,1 -- settings "Label Printer" 0Model longest.zpl --
    settings "Nimbra Codes" 0Model longest)
for _ in 1 2 3 4 5 6 7 8 9; do
    words+=(-- answer ok -- print "Room 101" longest -- expect box "Etichetta stampata")
done
said=$("$here/with-printer.sh" "$arch" --rate 960 "$bench" --network "$network" "${words[@]}") ||
    { echo "$said" >&2; exit 1; }
python3 - "$said" <<'END'
import re
import sys

found = re.findall(r"took (\d+) ms; messages waited for at most (\d+) ms", sys.argv[1])
if len(found) != 9:
    sys.exit(f"label_speed: the bench says {sys.argv[1]!r}")
took, waited = zip(*(map(int, pair) for pair in found))
ratios = " ".join(f"{one / (13000 / 960 * 1000):.6f}" for one in took)
print("| what | against | samples | unit | at most | detail |\n|---|---|---|---|---|---|")
print(f"| label of 13,000 bytes at 960 bytes a second | the printer's own time | {ratios} | × | 1.05 "
      f"| {min(took) / 1000:.2f} to {max(took) / 1000:.2f} s |")
print(f"| longest time in which the window answers no message meanwhile | | {' '.join(map(str, waited))} "
      f"| ms | 50 | {min(waited)} to {max(waited)} ms |")
END
