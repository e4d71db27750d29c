#!/usr/bin/env python3
"""Opens the bench with the device windows of two rooms beside it, on the screen that DISPLAY names.

    scripts/demo_windows.py --build build/win32 --arch i686 [--pictures FOLDER]

With --pictures each tab of both windows is photographed into the folder, together with the plug of
a device pulled and put back, and all is closed. Without, the windows are the operator's until the
bench's is closed.
"""
import argparse
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
sys.path.insert(0, str(ROOT / "tests/acceptance"))

from desk import Desk  # noqa: E402
from eyes import wait_for  # noqa: E402
from hands import picture  # noqa: E402

ROOMS = ("Room 101", "Room 102")
TITLE = 28  # the height of the title bar that the window manager sets above a window


def beside_the_bench(desk, windows):
    """One under the other to the right of the bench, as far as the screen has room."""
    right = desk.bench.seen()["rect"][2]
    for place, window in enumerate(windows):
        left, top, _, bottom = window.seen()["rect"]
        desk.hands.move(window.handle, right + 16, TITLE + place * (bottom - top + TITLE))


def values_shown(window):
    return window.text("IDC_LBLNV_FIRST") != ""


def show(desk, folder):
    """The tabs of both windows, and a plug pulled."""
    folder.mkdir(parents=True, exist_ok=True)
    windows = [desk.device(name) for name in ROOMS]
    beside_the_bench(desk, windows)
    for window in windows:
        wait_for(lambda: values_shown(window), "values are shown")
    for place, tab in enumerate(windows[0].captions()):
        for window in windows:
            window.show_tab(tab)
        file = folder / f"{place + 1}-{tab.lower().replace(' ', '-')}.png"
        picture(str(file))
        print(f"{file.name}: {tab}")
    room = windows[0]
    desk.plug(ROOMS[0], False)
    wait_for(lambda: not room.enabled(), "the window freezes")
    picture(str(folder / "9-plug-pulled.png"))
    print(f"9-plug-pulled.png: the plug of {ROOMS[0]} is pulled, its window freezes")
    desk.plug(ROOMS[0], True)
    wait_for(room.enabled, "the window thaws")
    print("The plug is put back, the window thaws")
    return desk.close_bench()


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", type=Path, required=True)
    parser.add_argument("--arch", required=True)
    parser.add_argument("--pictures", type=Path)
    options = parser.parse_args()
    with Desk(options.build, options.arch) as desk:
        if options.pictures:
            return show(desk, options.pictures)
        beside_the_bench(desk, [desk.device(name) for name in ROOMS])
        print("Close the bench's window to end the demo.", flush=True)
        return desk.wait_for_bench()


if __name__ == "__main__":
    sys.exit(main())
