#!/usr/bin/env python3
"""Photographs the windows of the plug-in and of the bench; scripts/pictures.sh says how."""
import argparse
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
sys.path.insert(0, str(ROOT / "tests/acceptance"))

from desk import Desk  # noqa: E402
from eyes import do_until, wait_for  # noqa: E402
from hands import picture  # noqa: E402

TABS = {"Hw": "hw", "Nimbra": "main", "Test": "test", "Setup": "setup",
        "General Data": "general-data", "Calibration": "calibration", "Tune": "tune",
        "Label Print": "label-print"}


def splash(desk, folder):
    desk.choose_device("Room 101")
    found = desk.bench.press("IDC_OPEN", desk.splash, "the splash is shown")
    picture(str(folder / "splash.png"), found["screen"])


def pages(desk, window, folder):
    for tab, name in TABS.items():
        window.show_tab(tab)
        if tab == "Nimbra":
            for label in range(5):
                wait_for(lambda: window.text(f"IDC_LBLNV_FIRST+{label}"), "values are shown")
        if tab == "Hw":
            wait_for(lambda: window.text("IDC_LEDTEXT_FIRST"), "inputs are shown")
        if tab == "Calibration":
            wait_for(lambda: window.text("IDC_LBLCOUNTS"), "the count is shown")
        window.picture(str(folder / f"{name}.png"))


def list_menu(desk, window, folder):
    window.show_tab("Test")
    window.focus_list("IDC_LVMONITOR")
    left, top, _, _ = window.control("IDC_LVMONITOR")["rect"]
    row = (left + desk.scaled(60), top + desk.scaled(32))
    do_until(lambda: desk.hands.click(window.handle, row, button=3), desk.menu, "the menu opens")
    window.picture(str(folder / "list-menu.png"))
    do_until(lambda: desk.hands.keys("Escape"), lambda: not desk.menu(), "the menu closes")


def menus(desk, window, folder):
    window.open_menu(1)
    window.picture(str(folder / "action-menu.png"))
    window.leave_menu()


def about(desk, window, folder):
    window.choose(2, "a")
    box = desk.dialog("About Merrowind New_Nimbra PlugIn")
    box.picture(str(folder / "about.png"))
    box.close_by("Return")


def frozen(desk, window, folder):
    window.show_tab("Nimbra")
    desk.plug("Room 101", False)
    wait_for(lambda: not window.enabled(), "the window freezes")
    wait_for(lambda: window.text("IDC_LBLDEVSTATE") == "Absent", "the state is told")
    desk.hands.activate(window.handle)
    window.picture(str(folder / "frozen.png"))
    desk.plug("Room 101", True)
    wait_for(window.enabled, "the window thaws")


def bench(desk, folder):
    desk.choose_device("Room 101")
    desk.hands.activate(desk.bench.handle)
    desk.bench.picture(str(folder / "bench.png"))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", type=Path, required=True)
    parser.add_argument("--arch", required=True)
    parser.add_argument("--dpi", type=int, default=96)
    parser.add_argument("--to", type=Path, required=True)
    options = parser.parse_args()
    dpi = None if options.dpi == 96 else options.dpi
    with Desk(options.build, options.arch, dpi=dpi) as desk:
        splash(desk, options.to)
        window = desk.device("Room 101")
        pages(desk, window, options.to)
        for take in (list_menu, menus, about, frozen):
            take(desk, window, options.to)
        bench(desk, options.to)
    return 0


if __name__ == "__main__":
    sys.exit(main())
