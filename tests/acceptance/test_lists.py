"""Lists: rows, copying, finding, and their menu."""
from eyes import do_until, wait_for

LISTS = {"IDC_LVMONITOR": ("Test", 19), "IDC_LVADVANCEDCPS": ("Setup", 21),
         "IDC_LVCPS": ("Tune", 7), "IDC_LVCOV": ("Tune", 4)}


def copied(window, keys, begin):
    """What the keys put on the clipboard, by lines and cells; it begins with a cell."""
    text = lambda: window.desk.eyes.clipboard() or ""
    do_until(lambda: window.key(*keys), lambda: text().startswith(begin), "rows are copied")
    return [line.split("\t") for line in text().rstrip("\r\n").split("\r\n")]


def test_every_list_has_the_rows_of_the_settings(desk):
    window = desk.device("Room 101")
    for name, (tab, count) in LISTS.items():
        window.show_tab(tab)
        rows = window.cells(name)
        assert len(rows) == count, f"{name}: {len(rows)}"
        assert all(item and value for item, value in rows), rows


def test_rows_are_selected_and_copied(desk):
    window = desk.device("Room 101")
    window.show_tab("Setup")
    window.focus_list("IDC_LVADVANCEDCPS")
    rows = window.cells("IDC_LVADVANCEDCPS")
    do_until(lambda: window.key("Home", "shift+Down", "shift+Down"),
             lambda: len(window.selected("IDC_LVADVANCEDCPS")) == 3, "three rows are selected")
    assert copied(window, ["ctrl+c"], rows[0][0]) == rows[:3]


def test_all_rows_are_selected_and_copied(desk):
    window = desk.device("Room 101")
    window.show_tab("Tune")
    for name in ("IDC_LVCPS", "IDC_LVCOV"):
        rows = window.cells(name)
        window.focus_list(name)
        do_until(lambda: window.key("ctrl+a"), lambda: len(window.selected(name)) == len(rows),
                 "all rows are selected")
        assert copied(window, ["ctrl+c"], rows[0][0]) == rows


def test_a_typed_letter_finds_a_row(desk):
    window = desk.device("Room 101")
    window.show_tab("Setup")
    name = "IDC_LVADVANCEDCPS"
    window.focus_list(name)
    first = next(item for item, _ in window.cells(name) if item.startswith("cp"))
    do_until(lambda: window.key("Home", "c"), lambda: window.selected(name) == [first],
             f"{first} is found")


def test_the_test_list_follows_the_room(desk):
    window = desk.device("Room 101")
    window.show_tab("Test")
    desk.choose_device("Room 101")
    value = lambda: dict(window.cells("IDC_LVMONITOR"))["nvoSpaceTemp"]
    # Far from any room's own temperature, for the room cools down while the list goes round.
    do_until(lambda: desk.bench.key("alt+n", "ctrl+a", "9", "0", "Return"),
             lambda: float(value().split()[0].replace(",", ".")) > 40,
             "the list shows the new temperature", every=30)


def test_the_menu_of_a_list_opens_by_mouse_and_key(desk):
    window = desk.device("Room 101")
    window.show_tab("Test")
    window.focus_list("IDC_LVMONITOR")
    left, top, _, _ = window.control("IDC_LVMONITOR")["rect"]
    row = (left + 60, top + desk.scaled(32))
    for way in (lambda: desk.hands.click(window.handle, row, button=3), lambda: window.key("Menu")):
        do_until(lambda: desk.menu() or way(), desk.menu, "the menu opens")
        do_until(lambda: desk.menu() and desk.hands.keys("Escape"), lambda: not desk.menu(),
                 "the menu closes")
    do_until(lambda: desk.menu() or window.key("Menu"), desk.menu, "the menu opens")
    desk.hands.keys("a")
    wait_for(lambda: len(window.selected("IDC_LVMONITOR")) == 19, "the menu selects all rows")
