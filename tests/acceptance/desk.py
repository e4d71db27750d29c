"""The operator's desk: Wine on the screen that DISPLAY names, the bench, and the windows of devices.

    with Desk(build="build/win32", arch="i686") as desk:
        room = desk.device("Room 101")
        room.show_tab("Test")
"""
import os
import re
import shutil
import subprocess
import tempfile
from pathlib import Path

from eyes import Eyes, Failure, do_until, wait_for
from hands import Hands, middle, picture

ROOT = Path(__file__).resolve().parents[2]
BENCH_CAPTION = "Quorvex bench"
DECIMALS = {"point": ".", "comma": ","}


def identifiers(header):
    """The numbers that a resource header gives its names."""
    text = (ROOT / header).read_text(encoding="utf-8")
    return {name: int(number) for name, number in re.findall(r"#define (\w+) (\d+)", text)}


IDS = identifiers("src/window/resource.h")
BENCH_IDS = identifiers("simulator/bench/window_resource.h")


class Window:
    """A window on the desk, with its controls by the names that their resource header gives them."""

    def __init__(self, desk, handle, ids):
        self.desk, self.handle, self._ids = desk, handle, ids

    def seen(self):
        return self.desk.eyes.look(self.handle)

    def is_open(self):
        seen = self.seen()
        return bool(seen and seen["visible"])

    def caption(self):
        seen = self.seen()
        if not seen:
            raise Failure("the window is gone")
        return seen["text"]

    def controls(self):
        return self.desk.eyes.ask("children", self.handle)

    def number(self, name):
        """The identifier of a control; "IDC_LBLNV_FIRST+2" is the third of a row of them."""
        name, _, further = name.partition("+")
        return self._ids[name] + int(further or 0)

    def control(self, name):
        """A control, the one on the shown page when several have the name."""
        wanted = self.number(name)
        found = [one for one in self.controls() if one["id"] == wanted]
        if not found:
            raise Failure(f"there is no control {name}")
        return max(found, key=lambda one: one["visible"])

    def text(self, name):
        return self.control(name)["text"]

    def rows(self, name):
        return self.desk.eyes.ask("rows", self.control(name)["window"])

    def cells(self, name):
        return [row["cells"] for row in self.rows(name)]

    def selected(self, name):
        return [row["cells"][0] for row in self.rows(name) if row["selected"]]

    def focused(self):
        """The identifier of the control that has the keyboard; None when it is in no control."""
        focus = self.desk.eyes.ask("focus", self.handle)["focus"]
        seen = self.desk.eyes.look(focus) if focus else None
        return seen["id"] if seen and focus != self.handle else None

    def has_focus(self, name):
        return self.focused() == self.number(name)

    def key(self, *keys):
        self.desk.hands.key(self.handle, *keys)

    def type(self, text):
        self.desk.hands.type(self.handle, text)

    def click(self, name, **how):
        """Clicks the middle of a control."""
        self.desk.hands.click(self.handle, middle(self.control(name)["rect"]), **how)

    def press(self, name, until, what):
        """Clicks a control until that has its effect."""
        return do_until(lambda: self.click(name), until, what)

    def focus_list(self, name):
        """Clicks into a list's first row, so that it has the keyboard."""

        def click():
            left, top, _, _ = self.control(name)["rect"]
            self.desk.hands.click(self.handle, (left + 60, top + self.desk.scaled(32)))

        do_until(click, lambda: self.has_focus(name) and self.selected(name),
                 f"{name} has the keyboard and a selected row")

    def close_by(self, *keys):
        """Presses keys until the window is closed by them."""
        do_until(lambda: self.is_open() and self.key(*keys), lambda: not self.is_open(),
                 "the window closes")

    def picture(self, file):
        picture(file, self.seen()["screen"])


class DeviceWindow(Window):
    def __init__(self, desk, handle):
        super().__init__(desk, handle, IDS)
        self._captions = self._tabs = None

    def panels(self):
        return self.desk.eyes.ask("panels", self.control("IDC_STATUSBAR1")["window"])

    def tabs(self):
        """Captions, places and the selected one."""
        return self.desk.eyes.ask("tabs", self._tab_control())

    def captions(self):
        """The captions of the tabs, which never change while the window is open."""
        if not self._captions:
            self._captions = self.tabs()["captions"]
        return self._captions

    def tab(self):
        return self.captions()[self.desk.eyes.ask("tab", self._tab_control())]

    def _tab_control(self):
        if not self._tabs:
            self._tabs = self.control("IDC_SSTAB1")["window"]
        return self._tabs

    def enabled(self):
        """Whether the pages can be used; a frozen window's cannot."""
        return self.control("IDC_SSTAB1")["enabled"]

    def show_tab(self, caption):
        """Goes to a tab by Ctrl+Tab, the shorter way round."""
        place = lambda name: self.captions().index(name)
        while (before := self.tab()) != caption:
            forward = (place(caption) - place(before)) % len(self.captions())
            key = "ctrl+Tab" if forward <= len(self.captions()) // 2 else "ctrl+shift+Tab"
            do_until(lambda: self.key(key), lambda: self.tab() != before, "another tab")

    def click_tab(self, caption):
        tabs = self.tabs()
        place = middle(tabs["rects"][tabs["captions"].index(caption)])
        do_until(lambda: self.desk.hands.click(self.handle, place),
                 lambda: self.tab() == caption, f"tab {caption} is shown")

    def in_menu(self):
        """Whether the menu bar or an open menu has the keyboard."""
        return self.desk.eyes.ask("focus", self.handle)["menu"]

    def leave_menu(self):
        """Closes open menus and leaves the menu bar, which takes an Escape each."""
        do_until(lambda: self.desk.hands.keys("Escape"), lambda: not self.in_menu(),
                 "the menu bar is left", every=2)

    def settle(self):
        """Returns when every key that was pressed before has been handled."""
        do_until(lambda: self.key("F10"), self.in_menu, "the menu bar is reached")
        self.leave_menu()

    def open_menu(self, place):
        """Opens a menu of the menu bar by its place, 0 being the first."""
        pull = lambda: self.key("Escape", "Escape", "F10", *["Right"] * place, "Down")
        do_until(pull, self.desk.menu, "the menu is shown")

    def choose(self, place, *letters):
        """Chooses a command by its menu's place in the menu bar and the access keys in there."""
        self.open_menu(place)
        for letter in letters:
            self.desk.hands.keys(letter)


class Desk:
    def __init__(self, build, arch, decimal=None, dpi=None, wine=None):
        self._build, self._arch = Path(build).resolve(), arch
        self._environment = dict(os.environ, QUILLON_DISPLAY=os.environ["DISPLAY"])
        self._environment.setdefault("QUILLON_WINE_BASE", str(wine or self._build / "wine-desk"))
        if decimal:
            self._environment["QUILLON_DECIMAL"] = DECIMALS[decimal]
        if dpi:
            self._environment["QUILLON_DPI"] = str(dpi)
        self._dpi = dpi or 96
        self._bench = self._eyes = None
        self.folder = Path(tempfile.mkdtemp(prefix="quillon-desk-"))

    def __enter__(self):
        try:
            self._lay_out()
            self.open_bench()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        for process in (self._bench, self._eyes):
            if process and process.poll() is None:
                process.kill()
                process.wait()
        self.wine("stop")
        shutil.rmtree(self.folder, ignore_errors=True)

    def scaled(self, pixels):
        """A distance at 100 % as this desk's scaling has it."""
        return pixels * self._dpi // 96

    def wine(self, *arguments):
        command = [str(ROOT / "scripts/wine-run.sh"), self._arch, *arguments]
        return subprocess.run(command, env=self._environment, cwd=self.folder, timeout=300,
                              stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL).returncode

    def _start(self, *arguments, **streams):
        command = [str(ROOT / "scripts/wine-run.sh"), self._arch, *arguments]
        return subprocess.Popen(command, env=self._environment, cwd=self.folder, **streams)

    def _lay_out(self):
        files = ["src/Quillon.dll", "simulator/Quorvex.dll", "simulator/bench/bench.exe",
                 "tests/acceptance/eyes.exe"]
        for file in files:
            shutil.copy(self._build / file, self.folder)
        for settings in ROOT.glob("examples/*.ini"):
            shutil.copy(settings, self.folder)
        (self.folder / "networks").mkdir()
        shutil.copy(ROOT / "simulator/networks/room.json", self.folder / "networks")
        # A server that is left from another screen would show its windows there.
        self.wine("stop")
        self.wine("start")
        for dll in ("Quorvex.dll", "Quillon.dll"):
            if self.wine("regsvr32", "/s", dll) != 0:
                raise Failure(f"{dll} cannot be registered")
        self._eyes = self._start("eyes.exe", stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                 stderr=subprocess.DEVNULL)
        self.eyes = Eyes(self._eyes)
        self.hands = Hands(self.eyes)

    # ---- the bench

    def open_bench(self):
        with open(self.folder / "bench.log", "ab") as log:
            self._bench = self._start("bench.exe", stdin=subprocess.DEVNULL, stdout=log, stderr=log)
        found = wait_for(self._bench_window, "the bench's window comes up")
        self.bench = Window(self, found["window"], BENCH_IDS)

    def _bench_window(self):
        if self._bench.poll() is not None:
            raise Failure("the bench ended: " + self.bench_output())
        for window in self.eyes.windows():
            if window["text"].startswith(BENCH_CAPTION):
                return window
        return None

    def bench_output(self):
        """What the bench has printed: events, reports, message boxes."""
        return (self.folder / "bench.log").read_text(encoding="utf-8", errors="replace")

    def close_bench(self):
        """Closes the bench and with it all windows; gives its exit code."""
        do_until(lambda: self.bench.is_open() and self.bench.key("alt+F4"),
                 lambda: self._bench.poll() is not None, "the bench ends")
        return self._bench.returncode

    def wait_for_bench(self):
        """Waits for somebody to close the bench; gives its exit code."""
        return self._bench.wait()

    def restart_bench(self):
        """A bench that knows nothing of what was before."""
        if self._bench.poll() is None:
            self._bench.kill()
            self._bench.wait()
        # Wine's own processes of the bench end with its server.
        self._eyes.kill()
        self._eyes.wait()
        shutil.rmtree(self.folder / "networks")
        for file in self.folder.iterdir():
            file.unlink()
        self._lay_out()
        self.open_bench()

    def choose_device(self, name):
        """Selects a device in the bench's list."""
        names = [cells[0] for cells in self.bench.cells("IDC_DEVICES")]
        steps = names.index(name)

        def select():
            if not self.bench.has_focus("IDC_DEVICES"):
                self.bench.key("alt+d")
            self.bench.key("Home", *["Down"] * steps)

        if self.bench.selected("IDC_DEVICES") != [name]:
            do_until(select, lambda: self.bench.selected("IDC_DEVICES") == [name],
                     f"{name} is chosen")
        wait_for(lambda: self.bench.text("IDC_PANEL_GROUP") == name, f"the panel shows {name}")

    def calls(self, member):
        """How often the host's member was called, as the bench shows it."""
        counts = {name: number for number, name in self.bench.cells("IDC_CALLS")}
        return int(counts.get(member, 0))

    def plug(self, name, plugged):
        self.choose_device(name)
        checked = lambda: self.eyes.ask("checked", self.bench.control("IDC_PLUGGED")["window"])
        if checked() != plugged:
            self.bench.press("IDC_PLUGGED", lambda: checked() == plugged, "the plug is moved")

    def application_status(self, name, number):
        self.choose_device(name)
        fill = lambda: self.bench.key("alt+s", "ctrl+a", *str(number), "Tab")
        do_until(fill, lambda: self.bench.text("IDC_STATUS") == str(number), "the status is set")

    # ---- windows of devices

    def device_window(self, name):
        """The open window of a device, or None."""
        for window in self.eyes.windows():
            if window["class"] != "#32770" or window["text"].startswith(BENCH_CAPTION):
                continue
            device = DeviceWindow(self, window["window"])
            try:
                if device.panels()[1] == name:
                    return device
            except Failure:
                pass  # another dialog, or one that just went
        return None

    def device(self, name):
        """The window of a device, opened when it is not there, with the splash gone."""
        found = self.device_window(name)
        if not found:
            self.choose_device(name)
            find = lambda: self.device_window(name)
            found = self.bench.press("IDC_OPEN", find, f"the window of {name} comes up")
        wait_for(lambda: not self.splash(), "the splash goes")
        return found

    def splash(self):
        """The splash: a borderless window of ours with a picture and nothing else."""
        for window in self.eyes.windows():
            if window["class"] == "#32770" and window["text"] == "":
                children = self.eyes.ask("children", window["window"])
                if [one["id"] for one in children] == [IDS["IDC_IMAGE1"]]:
                    return window
        return None

    def menu(self):
        """The menu that is open, or None."""
        return self.eyes.find(**{"class": "#32768"})

    def message(self, text):
        """A message box with this text, once it is there."""

        def find():
            for window in self.eyes.windows():
                if window["class"] == "#32770":
                    children = self.eyes.ask("children", window["window"])
                    if any(text in one["text"] for one in children):
                        return Window(self, window["window"], IDS)
            return None

        return wait_for(find, f'a message "{text}" comes up')

    def dialog(self, caption):
        """A dialog or message box with this caption, once it is there."""
        find = lambda: self.eyes.find(text=caption, **{"class": "#32770"})
        return Window(self, wait_for(find, f'"{caption}" comes up')["window"], IDS)
