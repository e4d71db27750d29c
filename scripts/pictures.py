#!/usr/bin/env python3
"""Photographs the windows of the plug-in and of the bench; scripts/pictures.sh says how."""
import argparse
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
sys.path.insert(0, str(ROOT / "tests/acceptance"))

from desk import IDS, Desk, Window, identifiers  # noqa: E402
from dialogs import give_file, open_dialog  # noqa: E402
from eyes import do_until, wait_for  # noqa: E402
from hands import picture  # noqa: E402

TABS = {"Hw": "hw", "Nimbra": "main", "Test": "test", "Setup": "setup",
        "General Data": "general-data", "Calibration": "calibration", "Tune": "tune",
        "Label Print": "label-print"}

EDITOR_IDS = {**IDS, **identifiers("src/editors/editors_resource.h")}
# The picture of each kind of value: the tab, its list, and a row of that kind.
ROWS = {"number": ("Setup", "IDC_LVADVANCEDCPS", "cpSetptMax"),
        "text": ("Setup", "IDC_LVADVANCEDCPS", "cpUnitName"),
        "enumeration": ("Test", "IDC_LVMONITOR", "nviApplicMode"),
        "structure": ("Test", "IDC_LVMONITOR", "nviFanSpeedCmd")}
# The picture of each option set: a variable that it edits, and the option to be chosen.
OPTIONS = {"application-mode": (9, 1), "occupancy": (7, 2), "fan": (18, 2),
           "lighting": (56, 1), "energy": (15, 1)}
ACTION = 1


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


def editor(desk, window):
    """The value editor that is open above a device's window, or None."""
    for found in desk.eyes.windows():
        if found["class"] == "#32770" and found["window"] not in (window.handle, desk.bench.handle):
            return Window(desk, found["window"], EDITOR_IDS)
    return None


def value_editors(desk, window, folder):
    for kind, (tab, name, wanted) in ROWS.items():
        window.show_tab(tab)
        place = [item for item, _ in window.cells(name)].index(wanted)
        window.focus_list(name)
        do_until(lambda: window.key("Home", *["Down"] * place),
                 lambda: window.selected(name) == [wanted], f"{wanted} is selected")
        box = do_until(lambda: window.key("F2"), lambda: editor(desk, window), "the editor opens")
        box.picture(str(folder / f"edit-{kind}.png"))
        box.close_by("alt+c")


def show_options(desk, window):
    """Puts the option sets' variables into the main view of a device's window."""
    window.close_by("alt+F4")
    for file in desk.folder.glob("*.ini"):
        text = file.read_text(encoding="utf-8")
        rows = "".join(f"{row}={number}\n" for row, (number, _) in enumerate(OPTIONS.values()))
        head, rest = text.split("[MainView]\n")
        file.write_text(f"{head}[MainView]\n{rows}\n{rest[rest.index('['):]}", encoding="utf-8")
    window = desk.device("Room 101")
    window.show_tab("Nimbra")
    return window


def option_editors(desk, window, folder):
    window = show_options(desk, window)
    for row, (kind, (_, option)) in enumerate(OPTIONS.items()):
        label = f"IDC_LBLNV_FIRST+{row}"
        wait_for(lambda: window.text(label), "the value is shown")
        box = do_until(lambda: window.click(label, times=2), lambda: editor(desk, window),
                       "the editor opens")
        button = f"IDC_OPTBUTTON_FIRST+{option}"
        chosen = lambda: desk.eyes.ask("checked", box.control(button)["window"])
        box.press(button, chosen, "the option is chosen")
        box.picture(str(folder / f"edit-{kind}.png"))
        box.close_by("alt+c")


def parameters(desk, window, folder):
    caption = "Download parameters from file..."
    give_file(open_dialog(desk, window, caption, ACTION, "p", "d"), ROOT / "examples/room-unit.cps")
    box = desk.dialog("Parameter download")
    box.picture(str(folder / "parameters.png"))
    box.close_by("Escape")


def bench(desk, _, folder):
    desk.choose_device("Room 101")
    desk.hands.activate(desk.bench.handle)
    desk.bench.picture(str(folder / "bench.png"))


# In this order: the last one closes the window.
TAKES = (pages, list_menu, menus, about, frozen, bench, value_editors, parameters, option_editors)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", type=Path, required=True)
    parser.add_argument("--arch", required=True)
    parser.add_argument("--dpi", type=int, default=96)
    parser.add_argument("--to", type=Path, required=True)
    parser.add_argument("--only", choices=[take.__name__ for take in TAKES], nargs="+")
    options = parser.parse_args()
    dpi = None if options.dpi == 96 else options.dpi
    with Desk(options.build, options.arch, dpi=dpi) as desk:
        if not options.only:
            splash(desk, options.to)
        window = desk.device("Room 101")
        for take in TAKES:
            if not options.only or take.__name__ in options.only:
                take(desk, window, options.to)
    return 0


if __name__ == "__main__":
    sys.exit(main())
