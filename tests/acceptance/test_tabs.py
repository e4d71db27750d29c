"""The tabs by keyboard and mouse, and round every page with the keyboard alone."""
import time

from eyes import Failure, do_until, wait_for

# By caption, a control that only its page has.
PAGES = {
    "Hw": "IDC_CMDWINK",
    "Nimbra": "IDC_MAIN_RESET",
    "Test": "IDC_LVMONITOR",
    "Setup": "IDC_LVADVANCEDCPS",
    "General Data": "IDC_LBLPROGRAMID",
    "Calibration": "IDC_TXTVOLTAGE",
    "Tune": "IDC_LVCOV",
    "Label Print": "IDC_NIMBRA_PRINTBUTTON",
}
# No page has more controls than this that the keyboard can be in.
MOST_STOPS = 12
# For one key and for what it does; only a window that is stuck takes as long.
LONGEST = 60


def shown_pages(window):
    by_id = {one["id"]: one["visible"] for one in window.controls()}
    return [caption for caption, name in PAGES.items() if by_id[window.number(name)]]


def test_every_tab_by_keyboard_shows_its_page_alone(desk):
    window = desk.device("Room 101")
    assert window.captions() == list(PAGES)
    for caption in PAGES:
        window.show_tab(caption)
        wait_for(lambda: shown_pages(window) == [caption], f"page {caption} is shown alone")


def test_every_tab_by_mouse(desk):
    window = desk.device("Room 101")
    for caption in reversed(PAGES):
        window.click_tab(caption)
        wait_for(lambda: shown_pages(window) == [caption], f"page {caption} is shown alone")


def step(window, *keys):
    """Presses keys; gives where the keyboard is when the window has handled them, which is in time."""
    window.desk.hands.activate(window.handle)
    begin = time.monotonic()
    window.key(*keys)
    window.settle()
    if time.monotonic() - begin > LONGEST:
        raise Failure(f"{keys} took too long")
    return window.focused()


def go_to_tabs(window):
    tabs = window.number("IDC_SSTAB1")
    for _ in range(MOST_STOPS):
        if window.focused() == tabs or step(window, "Tab") == tabs:
            return
    raise Failure("the Tab key does not lead to the tabs")


def test_the_tab_key_goes_round_every_page(desk):
    window = desk.device("Room 101")
    for caption, control in PAGES.items():
        window.show_tab(caption)
        go_to_tabs(window)
        stops = [step(window, "Tab")]
        while stops[-1] != window.number("IDC_SSTAB1"):
            assert len(stops) <= MOST_STOPS, f"{caption}: {stops}"
            stops.append(step(window, "Tab"))
        assert len(stops) == len(set(stops)), f"{caption}: {stops}"
        usable = {one["id"] for one in window.controls() if one["visible"] and one["enabled"]}
        assert set(stops) <= usable, f"{caption}: {stops} of {usable}"
        if window.number(control) in usable and not control.startswith("IDC_LBL"):
            assert window.number(control) in stops, f"{caption}: {stops}"


def test_arrow_keys_stay_in_every_page(desk):
    window = desk.device("Room 101")
    for caption in PAGES:
        window.show_tab(caption)
        go_to_tabs(window)
        stops = 0
        while step(window, "Tab") != window.number("IDC_SSTAB1"):
            stops += 1
            assert stops <= MOST_STOPS
            before = window.focused()
            step(window, "Down", "Right", "Up", "Left")
            assert not window.has_focus("IDC_SSTAB1"), f"{caption}: from {before}"
            assert window.tab() == caption


def test_escape_and_enter_do_nothing_harmful(desk):
    window = desk.device("Room 101")
    window.show_tab("Nimbra")
    go_to_tabs(window)
    resets = desk.calls("IDevice.Reset")
    for key in ("Tab", "Return", "Escape", "Return"):
        step(window, key)
    assert window.is_open()
    assert not desk.eyes.find(text="About Merrowind New_Nimbra PlugIn")
    # A call that comes later is seen before the count is taken.
    states = desk.calls("IDevice.State.get")
    do_until(lambda: window.key("F5"), lambda: desk.calls("IDevice.State.get") > states, "F5 updates")
    assert desk.calls("IDevice.Reset") == resets
