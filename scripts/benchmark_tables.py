#!/usr/bin/env python3
"""Judges what the benchmarks of each preset measured, and puts it side by side.

  scripts/benchmark_tables.py PAGE|- BUILDS PRESET...

Reads BUILDS/PRESET/benchmarks/figures.md, label.md and native.txt, prints the tables, and writes them
between the marks of PAGE. What is timed has nine samples and breaks its bound when their median lies
over it by more than three of their median absolute deviations; what is counted has one, and breaks it
when it lies over it. Exit code 1: a bound is broken. 2: the figures are not what they should be.
"""

import datetime
import os
import platform
import re
import statistics
import subprocess
import sys
import typing

BITS = {"win32": "32 bit", "win64": "64 bit"}
HEADER = ["| what | against | samples | unit | at most | detail |", "|---|---|---|---|---|---|"]
SAMPLES = 9
TIMED = ("×", "ms", "µs")
LOADING = "`FriendSet` on 10,000"


class Bad(Exception):
    """Figures that cannot be judged."""


class Row(typing.NamedTuple):
    what: str
    against: str
    samples: list
    unit: str
    limit: typing.Optional[float]
    detail: str

    def key(self):
        return self.what, self.against

    def median(self):
        return statistics.median(self.samples)

    def deviation(self):
        return statistics.median(abs(sample - self.median()) for sample in self.samples)

    def is_broken(self):
        return self.limit is not None and self.median() > self.limit + 3 * self.deviation()

    def in_unit(self, number):
        """A figure with as many digits as its unit deserves."""
        if self.unit == "×" or self.unit.startswith("%"):
            text = f"{number:.2f}"
        elif self.unit == "ms":
            text = f"{number:.1f}"
        else:
            text = f"{number:.0f}"
        return re.sub(r"^-(?=[0.]+$)", "", text) + f" {self.unit}" * bool(self.unit)

    def verdict(self):
        if self.limit is None:
            return ""
        if self.is_broken():
            return "**over**"
        return "ok" if self.median() <= self.limit else "ok within its ±"

    def measured(self):
        text = self.in_unit(self.median())
        if len(self.samples) > 1:
            digits = self.in_unit(self.deviation())
            text += f" ± {digits.removesuffix(self.unit).strip()}"
        return f"{text} {self.verdict()}".strip()


def parse_row(line):
    cells = [cell.strip() for cell in line.strip().strip("|").split("|")]
    if len(cells) != 6:
        raise Bad(f"not a row: {line!r}")
    what, against, samples, unit, limit, detail = cells
    try:
        row = Row(what, against, [float(one) for one in samples.split()], unit, float(limit) if limit else None, detail)
    except ValueError:
        raise Bad(f"not a number: {line!r}") from None
    if len(row.samples) != (SAMPLES if unit in TIMED else 1):
        raise Bad(f"{len(row.samples)} samples: {what}")
    return row


def parse(text):
    """The rows of a first table, and the texts of the others behind it."""
    table, *parts = text.replace("\r", "").strip().split("\n\n")
    lines = table.splitlines()
    if lines[:2] != HEADER:
        raise Bad(f"no table: {lines[:1]}")
    return [parse_row(line) for line in lines[2:]], [part + "\n" for part in parts]


def seconds(text):
    number, unit = text.split()
    return float(number) * {"s": 1, "ms": 1e-3, "µs": 1e-6, "ns": 1e-9}[unit]


def native_row(rows, text):
    """What loading costs against the same file read by a native parser, which no bound is set for."""
    loading = next((row for row in rows if row.what.startswith(LOADING)), None)
    if not loading:
        raise Bad("loading was not measured")
    own = loading.detail.split(" to ")[0]
    natively = [float(one) for one in text.split()]
    if len(natively) != SAMPLES:
        raise Bad("the native parser's samples are missing")
    ratios = [seconds(own) / one for one in natively]
    return Row(loading.what, "pugixml, natively: the physical limit", ratios, "×", None,
               f"{own} to {statistics.median(natively) * 1e6:.2f} µs")


def read_text(folder, name):
    with open(os.path.join(folder, name), encoding="utf-8", newline="") as file:
        return file.read()


def read(folder):
    """All rows of a preset, and its other tables."""
    rows, parts = parse(read_text(folder, "figures.md"))
    rows.append(native_row(rows, read_text(folder, "native.txt")))
    labels, _ = parse(read_text(folder, "label.md"))
    return rows + labels, parts


def side_by_side(taken):
    order = list(dict.fromkeys(row.key() for rows in taken.values() for row in rows))
    text = "| what | against | at most | " + " | ".join(BITS[preset] for preset in taken) + " |\n"
    text += "|---|---|---|" + "---|" * len(taken) + "\n"
    for key in order:
        cells, limits = [], []
        for rows in taken.values():
            row = next((row for row in rows if row.key() == key), None)
            if not row:
                cells.append("not taken")
                continue
            limits += [limit_text(row)] if row.limit is not None else []
            cells.append(row.measured() + f"<br>{row.detail}" * bool(row.detail))
        limit = limits[0] if limits else "no bound"
        text += f"| {key[0]} | {key[1]} | {limit} | " + " | ".join(cells) + " |\n"
    return text


def limit_text(row):
    return f"{row.limit:g} {row.unit}".strip()


def broken(taken):
    """A line for each bound that is broken."""
    return [f"BROKEN in {BITS[preset]}: {row.what} ({row.against}): {row.measured()}, at most {limit_text(row)}"
            for preset, rows in taken.items() for row in rows if row.is_broken()]


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
        raise Bad(f"{page}: the marks of {mark} are missing")
    text = text[: text.index(begin) + len(begin)] + body + text[text.index(end) :]
    with open(page, "w", encoding="utf-8") as file:
        file.write(text)


def run(page, builds, presets):
    taken, parts = {}, []
    for preset in presets:
        taken[preset], others = read(os.path.join(builds, preset, "benchmarks"))
        parts.append("\n".join([f"{BITS[preset]}:\n"] + others))
    results = f"{machine()}\n\n{side_by_side(taken)}"
    growth = "\n".join(parts)
    print(results + "\n" + growth)
    if page != "-":
        write(page, "results", results)
        write(page, "growth", growth)
    over = broken(taken)
    print("\n".join(over) if over else "Every bound is kept.")
    return 1 if over else 0


def main():
    if len(sys.argv) < 4 or any(preset not in BITS for preset in sys.argv[3:]):
        print(__doc__, file=sys.stderr)
        return 2
    try:
        return run(sys.argv[1], sys.argv[2], sys.argv[3:])
    except (Bad, OSError) as error:
        print(f"benchmark_tables: {error}", file=sys.stderr)
        return 2


if __name__ == "__main__":
    sys.exit(main())
