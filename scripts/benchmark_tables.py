#!/usr/bin/env python3
"""Puts what the benchmarks of each preset printed side by side, and judges it.

  scripts/benchmark_tables.py PAGE|- BUILDS PRESET...

Reads BUILDS/PRESET/benchmarks/table.md and native.txt, prints the tables, and writes them between the
marks of PAGE. Exit code 1: a bound is broken.
"""

import datetime
import os
import platform
import re
import subprocess
import sys

BITS = {"win32": "32 bit", "win64": "64 bit"}
HEADER = "|---|---|---|---|---|---|"
LOADING = "`FriendSet` on 10,000"


def seconds(text):
    number, unit = text.split()
    return float(number) * {"s": 1, "ms": 1e-3, "µs": 1e-6, "ns": 1e-9}[unit]


def native_row(rows, native):
    """What loading costs against the same file read by a native parser; it has no bound."""
    median, deviation, _ = map(float, native.split())
    what, _, _, _, _, detail = next(row for row in rows if row[0].startswith(LOADING))
    ratio = seconds(detail.split(" to ")[0]) / median
    return [what, "pugixml, natively: the physical limit", f"{ratio:.0f} × ± {ratio * deviation / median:.1f}",
            "–", "", f"{detail.split(' to ')[0]} to {median * 1e6:.2f} µs"]


def read(folder):
    with open(os.path.join(folder, "table.md"), encoding="utf-8", newline="") as file:
        table, *parts = file.read().replace("\r", "").split("\n\n")
    lines = table.splitlines()
    if HEADER not in lines:
        sys.exit(f"{folder}: no table")
    rows = [[cell.strip() for cell in line.strip("|").split("|")] for line in lines[2:]]
    with open(os.path.join(folder, "native.txt"), encoding="ascii") as file:
        rows.append(native_row(rows, file.read()))
    return rows, "\n".join(parts)


def key(row):
    return re.sub(r", (32|64) bit", "", row[0]), row[1]


def side_by_side(taken):
    order = list(dict.fromkeys(key(row) for rows, _ in taken.values() for row in rows))
    presets = list(taken)
    text = "| what | against | at most | " + " | ".join(BITS[one] for one in presets) + " |\n"
    text += "|---|---|---|" + "---|" * len(presets) + "\n"
    for what, against in order:
        cells, limit = [], ""
        for preset in presets:
            row = next((row for row in taken[preset][0] if key(row) == (what, against)), None)
            if not row:
                cells.append("–")
                continue
            limit = row[3]
            cells.append(" ".join(part for part in (row[2], row[4]) if part) + f"<br>{row[5]}" * bool(row[5]))
        text += f"| {what} | {against} | {limit} | " + " | ".join(cells) + " |\n"
    return text


def machine():
    with open("/proc/cpuinfo", encoding="utf-8") as file:
        model = re.search(r"model name\s*: (.*)", file.read())
    with open("/proc/meminfo", encoding="utf-8") as file:
        memory = int(re.search(r"MemTotal:\s*(\d+)", file.read()).group(1)) / 2**20
    wine = subprocess.run(["/usr/bin/wine", "--version"], capture_output=True, text=True).stdout.strip()
    return (f"Taken on {datetime.date.today()}: {model.group(1) if model else platform.machine()}, "
            f"{os.cpu_count()} processors, {memory:.0f} GB, Linux {platform.release()}, {wine or 'no Wine'}, "
            f"load {os.getloadavg()[0]:.1f} at the end.")


def write(page, mark, body):
    begin, end = f"<!-- {mark}: begin -->\n", f"<!-- {mark}: end -->\n"
    with open(page, encoding="utf-8") as file:
        text = file.read()
    if text.count(begin) != 1 or text.count(end) != 1 or text.index(begin) > text.index(end):
        sys.exit(f"{page}: the marks of {mark} are missing")
    text = text[: text.index(begin) + len(begin)] + body + text[text.index(end) :]
    with open(page, "w", encoding="utf-8") as file:
        file.write(text)


def main():
    page, builds, *presets = sys.argv[1:]
    taken = {preset: read(os.path.join(builds, preset, "benchmarks")) for preset in presets}
    results = f"{machine()}\n\n{side_by_side(taken)}"
    growth = "\n".join(f"{BITS[preset]}:\n\n{parts}" for preset, (_, parts) in taken.items())
    print(results + "\n" + growth)
    if page != "-":
        write(page, "results", results)
        write(page, "growth", growth)
    over = [(preset, row) for preset, (rows, _) in taken.items() for row in rows if "over" in row[4]]
    for preset, row in over:
        print(f"BROKEN in {BITS[preset]}: {row[0]}: {row[2]}, at most {row[3]}")
    return 1 if over else 0


if __name__ == "__main__":
    sys.exit(main())
