#!/usr/bin/env bash
# Builds and runs the benchmarks and writes their table into docs/performance.md.
#
#   scripts/benchmarks.sh [win32|win64]
#
# QUILLON_BUILD names the build folder (default build/PRESET). Takes about three minutes; a machine that
# has nothing else to do gives the steadiest figures. Exit code 0: taken and written, whatever they say.
set -u
cd "$(dirname "$0")/.." || exit 1

preset=${1:-win32}
case $preset in
    win32) arch=i686 ;;
    win64) arch=x86_64 ;;
    *) echo "usage: scripts/benchmarks.sh [win32|win64]" >&2; exit 2 ;;
esac
build=${QUILLON_BUILD:-build/$preset}
page=docs/performance.md

fail() { echo "benchmarks: $*" >&2; exit 1; }

cmake --preset "$preset" -B "$build" >/dev/null || fail "$build cannot be configured"
cmake --build "$build" --target quillon_benchmarks -- --quiet || fail "the build failed"

# Other programs disturb less when this one comes first; only root may ask for that.
first=()
nice -n -15 true 2>/dev/null && first=(nice -n -15)

scripts/wine-run.sh "$arch" start
table=$(mktemp)
trap 'rm -f "$table"' EXIT
"${first[@]}" timeout 1200 scripts/wine-run.sh "$arch" "$build/benchmarks/quillon_benchmarks.exe" >"$table" ||
    fail "the benchmarks could not be run"
cat "$table"

# Each preset has its own place in the page.
python3 - "$page" "$preset" "$table" <<'END' || fail "$page could not be written"
import platform, re, sys, datetime

page, preset, table = sys.argv[1:]
begin, end = f"<!-- {preset}: begin -->\n", f"<!-- {preset}: end -->\n"
text = open(page, encoding="utf-8").read()
if text.count(begin) != 1 or text.count(end) != 1 or text.index(begin) > text.index(end):
    sys.exit(f"the marks of {preset} are missing")
model = re.search(r"model name\s*: (.*)", open("/proc/cpuinfo").read())
processor = model.group(1) if model else platform.machine()
with open("/proc/loadavg") as file:
    load = file.read().split()[0]
taken = f"Taken on {datetime.date.today()} on {processor}, load {load} at the end.\n\n"
body = taken + open(table, encoding="utf-8").read().replace("\r", "")
front, rest = text.split(begin)
open(page, "w", encoding="utf-8").write(front + begin + body + end + rest.split(end)[1])
END
