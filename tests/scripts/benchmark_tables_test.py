#!/usr/bin/env python3
"""benchmark_tables.py breaks a bound when the median lies over it by more than three deviations."""

import os
import subprocess
import sys
import tempfile
import unittest

SCRIPTS = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "scripts")
sys.path.insert(0, SCRIPTS)
import benchmark_tables as tables

PAGE = ("# Title\n\n<!-- results: begin -->\nold\n<!-- results: end -->\n\nbetween\n\n"
        "<!-- growth: begin -->\nold\n<!-- growth: end -->\n")
STEADY = [1.25] * 9


def line(samples, limit, unit="×", what="a thing", detail=""):
    return f"| {what} | another | {' '.join(map(str, samples))} | {unit} | {limit} | {detail} |"


def table(*lines):
    return "\n".join([*tables.HEADER, *lines]) + "\n"


def row(samples, limit, unit="×"):
    return tables.parse_row(line(samples, limit, unit))


class Verdict(unittest.TestCase):
    def test_median_and_deviation_are_of_the_middle(self):
        one = row([5, 1, 4, 2, 3, 9, 8, 7, 100], "")
        self.assertEqual((one.median(), one.deviation()), (5, 3))

    def test_steady_ratio_may_reach_its_bound_and_no_more(self):
        self.assertFalse(row(STEADY, 1.25).is_broken())
        self.assertFalse(row(STEADY, 1.3).is_broken())
        self.assertTrue(row(STEADY, 1.24).is_broken())

    def test_restless_ratio_may_lie_three_deviations_over(self):
        restless = [90, 92, 94, 96, 100, 104, 106, 108, 110]  # 100 ± 6
        self.assertEqual(row(restless, "").deviation(), 6)
        self.assertFalse(row(restless, 82).is_broken(), "exactly three")
        self.assertTrue(row(restless, 81.9).is_broken(), "more than three")

    def test_outliers_neither_break_nor_excuse(self):
        self.assertFalse(row([1.25] * 5 + [9.0] * 4, 1.3).is_broken())
        self.assertTrue(row([1.35] * 5 + [0.1] * 4, 1.3).is_broken())

    def test_count_has_no_deviation(self):
        self.assertFalse(row([0], 0, "").is_broken())
        self.assertTrue(row([1], 0, "").is_broken())
        self.assertTrue(row([1.01], 1, "% more").is_broken())

    def test_without_a_bound_nothing_is_broken(self):
        self.assertFalse(row([1e9] * 9, "").is_broken())

    def test_words(self):
        self.assertEqual(row(STEADY, 1.3).measured(), "1.25 × ± 0.00 ok")
        self.assertEqual(row(STEADY, 1.2).measured(), "1.25 × ± 0.00 **over**")
        self.assertEqual(row([90, 92, 94, 96, 100, 104, 106, 108, 110], 95, "ms").measured(),
                         "100.0 ms ± 6.0 ok within its ±")
        self.assertEqual(row([-0.001], 1, "% more").measured(), "0.00 % more ok")
        self.assertEqual(row([23], "", "").measured(), "23")


class Figures(unittest.TestCase):
    def test_timed_figure_needs_nine_samples(self):
        for samples, unit in ((STEADY[1:], "×"), (STEADY + [1], "ms"), ([], "µs"), (STEADY, "")):
            with self.assertRaises(tables.Bad):
                row(samples, 2, unit)

    def test_what_is_no_figure_is_refused(self):
        for text in (line(STEADY, "x"), line(["a"] * 9, 1), "| a | b |", "", "nothing"):
            with self.assertRaises(tables.Bad):
                tables.parse_row(text)
        with self.assertRaises(tables.Bad):
            tables.parse("")

    def test_tables_behind_the_first_are_kept(self):
        rows, parts = tables.parse(table(line(STEADY, 2)) + "\n| points |\r\n|---|\n\n| more |\n")
        self.assertEqual(len(rows), 1)
        self.assertEqual(parts, ["| points |\n|---|\n", "| more |\n"])

    def test_native_parser_is_compared_by_its_own_samples(self):
        loading = tables.parse_row(line(STEADY, 1.3, what="`FriendSet` on 10,000", detail="80.0 µs to 1.00 ms"))
        native = tables.native_row([loading], "\n".join(["0.000000400000"] * 9))
        self.assertAlmostEqual(native.median(), 200)
        self.assertIsNone(native.limit)
        for rows, text in (([], "0.1\n" * 9), ([loading], "0.1\n" * 8)):
            with self.assertRaises(tables.Bad):
                tables.native_row(rows, text)


class Command(unittest.TestCase):
    def setUp(self):
        self.place = tempfile.TemporaryDirectory()
        self.addCleanup(self.place.cleanup)
        self.page = os.path.join(self.place.name, "page.md")
        self.put("page.md", PAGE)
        for preset in tables.BITS:
            self.figures(preset, line(STEADY, 1.3))

    def put(self, name, text):
        path = os.path.join(self.place.name, name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "w", encoding="utf-8") as file:
            file.write(text)

    def figures(self, preset, *lines, label=line([1.0] * 9, 1.05, what="a label")):
        loading = line(STEADY, 1.3, what="`FriendSet` on 10,000", detail="40 µs to 30 µs")
        self.put(f"{preset}/benchmarks/figures.md", table(loading, *lines) + "\n| points |\n|---|\n| 10 |\n")
        self.put(f"{preset}/benchmarks/native.txt", "0.0000004\n" * 9)
        self.put(f"{preset}/benchmarks/label.md", table(label))

    def run_on(self, *presets, page="-"):
        command = [sys.executable, os.path.join(SCRIPTS, "benchmark_tables.py"), page, self.place.name, *presets]
        return subprocess.run(command, capture_output=True, text=True, encoding="utf-8", check=False)

    def test_kept_bounds_are_a_success(self):
        done = self.run_on("win32", "win64")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn("| a thing | another | 1.3 × | 1.25 × ± 0.00 ok | 1.25 × ± 0.00 ok |", done.stdout)
        self.assertIn("Every bound is kept.", done.stdout)

    def test_one_broken_bound_in_one_preset_fails(self):
        self.figures("win64", line([1.31] * 9, 1.3), line([3], 4, "", what="a count"))
        self.assertEqual(self.run_on("win32").returncode, 0)
        done = self.run_on("win32", "win64")
        self.assertEqual(done.returncode, 1)
        self.assertIn("BROKEN in 64 bit: a thing (another): 1.31 × ± 0.00 **over**, at most 1.3 ×", done.stdout)
        self.assertEqual(done.stdout.count("BROKEN"), 1)

    def test_label_is_judged_too(self):
        self.figures("win32", label=line([1.06] * 9, 1.05, what="a label"))
        self.assertEqual(self.run_on("win32").returncode, 1)

    def test_missing_figures_are_no_success(self):
        os.remove(os.path.join(self.place.name, "win32", "benchmarks", "label.md"))
        self.assertEqual(self.run_on("win32").returncode, 2)
        self.assertEqual(self.run_on().returncode, 2)
        self.assertEqual(self.run_on("native").returncode, 2)

    def test_page_is_written_between_its_marks_alone(self):
        self.figures("win32", line([9] * 9, 1.3))
        self.assertEqual(self.run_on("win32", page=self.page).returncode, 1, "broken, but written")
        with open(self.page, encoding="utf-8") as file:
            text = file.read()
        self.assertNotIn("old", text)
        self.assertIn("32 bit:\n\n| points |\n|---|\n| 10 |\n<!-- growth: end -->\n", text)
        self.assertTrue(text.startswith("# Title\n\n<!-- results: begin -->\nTaken on "))
        self.assertIn("<!-- results: end -->\n\nbetween\n\n<!-- growth: begin -->\n", text)

    def test_page_without_marks_stays(self):
        self.put("page.md", PAGE.replace("<!-- growth: end -->", ""))
        self.assertEqual(self.run_on("win32", page=self.page).returncode, 2)

    def test_missing_row_of_one_preset_is_told(self):
        taken = {"win32": [row(STEADY, 1.3)], "win64": []}
        self.assertIn("| not taken |", tables.side_by_side(taken))


unittest.main()
