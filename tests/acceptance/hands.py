"""Keyboard, mouse and camera of the screen that DISPLAY names."""
import re
import subprocess
import time
from pathlib import Path

from eyes import Failure, do_until


def _run(*command):
    done = subprocess.run(command, capture_output=True, text=True, timeout=120)
    if done.returncode != 0:
        raise Failure(f"{' '.join(command)}: {done.stderr.strip()}")
    return done.stdout


class Hands:
    def __init__(self, eyes):
        self._eyes = eyes

    def activate(self, window):
        """Brings a window to the front, with the keyboard."""

        def active():
            return self._eyes.ask("focus", window)["foreground"] == window

        def ask():
            seen = self._eyes.look(window)
            if not seen:
                raise Failure("the window to be activated is gone")
            try:
                _run("xdotool", "windowactivate", str(seen["screen"]))
            except Failure:
                pass  # it may just be on its way to the screen

        if not active():
            do_until(ask, active, "the window is active", every=5)

    def key(self, window, *keys):
        """Presses keys, as xdotool names them, in an activated window."""
        self.activate(window)
        self.keys(*keys)

    def keys(self, *keys):
        """Presses keys where the keyboard is, for menus have no activation."""
        _run("xdotool", "key", "--clearmodifiers", "--delay", "30", *keys)

    def type(self, window, text):
        self.activate(window)
        _run("xdotool", "type", "--clearmodifiers", "--delay", "20", text)

    def click(self, window, place, button=1, times=1):
        """Clicks a place of the screen that belongs to a window."""
        self.activate(window)
        x, y = place
        _run("xdotool", "mousemove", str(x), str(y))
        _run("xdotool", "click", "--repeat", str(times), "--delay", "60", str(button))

    def move(self, window, x, y, size=None):
        seen = self._eyes.look(window)
        if size:
            _run("xdotool", "windowsize", str(seen["screen"]), str(size[0]), str(size[1]))
        _run("xdotool", "windowmove", str(seen["screen"]), str(x), str(y))


def middle(rect):
    left, top, right, bottom = rect
    return (left + right) // 2, (top + bottom) // 2


def _frame(window):
    """Where a window of the screen stands with its frame, as the camera wants it."""
    while True:
        text = _run("xwininfo", "-children", "-stats", "-id", str(window))
        root = re.search(r"Root window id: (0x\w+)", text).group(1)
        parent = re.search(r"Parent window id: (0x\w+)", text).group(1)
        if parent == root:
            break
        window = parent
    number = lambda name: int(re.search(name + r":\s+(-?\d+)", text).group(1))
    left, top = number("Absolute upper-left X"), number("Absolute upper-left Y")
    return f"{number('Width')}x{number('Height')}{left:+}{top:+}"


def picture(file, screen_window=None):
    """The whole screen, or the part of it where one of its windows stands, as a PNG.

    Waits for what is still being painted: two pictures in a row are the same, unless all moves.
    """
    part = ["-crop", _frame(screen_window), "+repage"] if screen_window else []
    command = ["import", "-window", "root", *part, "-strip", "-define",
               "png:exclude-chunk=date,time", "png:-"]
    taken = None
    for _ in range(5):
        before = taken
        taken = subprocess.run(command, capture_output=True, timeout=120, check=True).stdout
        if taken == before:
            break
        time.sleep(0.2)
    Path(file).write_bytes(taken)
