"""Menu commands and buttons."""
from dialogs import give_file, open_dialog
from eyes import do_until, wait_for

FILE, ACTION, QUESTION = 0, 1, 2
HELP_VIEWER = r"HKCR\CLSID\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}"


def test_exit_closes_the_window(desk):
    window = desk.device("Room 102")
    do_until(lambda: window.is_open() and window.choose(FILE, "x"), lambda: not window.is_open(),
             "the window closes")
    assert not desk.device_window("Room 102")


def test_the_application_is_exported_and_downloaded(desk):
    window = desk.device("Room 101")
    file = desk.folder / "room101.app"
    file.unlink(missing_ok=True)
    give_file(open_dialog(desk, window, "Save Application to file...", ACTION, "a", "s"), file)
    wait_for(lambda: file.exists() and file.read_bytes().endswith(b"</Configuration>\n"),
             "the application is exported")
    other = desk.device("Room 102")
    told = lambda: desk.bench_output().count("Told the host: 00000000")
    before = told()
    give_file(open_dialog(desk, other, "Download Application from file...", ACTION, "a", "d"), file)
    wait_for(lambda: told() > before, "the host is told of the download")
    wait_for(lambda: other.panels()[2] == "On Line", "the device is on line again")


def test_a_cancelled_dialog_does_nothing(desk):
    window = desk.device("Room 101")
    exports = desk.calls("Points._NewEnum")
    open_dialog(desk, window, "Save Application to file...", ACTION, "a", "s").close_by("Escape")
    open_dialog(desk, window, "Download Application from file...", ACTION, "a",
                "d").close_by("Escape")
    assert window.is_open()
    assert desk.calls("Points._NewEnum") == exports


def test_wink(desk):
    window = desk.device("Room 101")
    window.show_tab("Hw")
    before = desk.calls("IDevice.Wink")
    window.press("IDC_CMDWINK", lambda: desk.calls("IDevice.Wink") > before, "the device winks")


def test_reset_on_both_pages(desk):
    window = desk.device("Room 101")
    for tab, button in (("Hw", "IDC_HW_RESET"), ("Nimbra", "IDC_MAIN_RESET")):
        window.show_tab(tab)
        before = desk.calls("IDevice.Reset")
        window.press(button, lambda: desk.calls("IDevice.Reset") > before, "the device is reset")


def test_about(desk):
    window = desk.device("Room 101")
    box = open_dialog(desk, window, "About Merrowind New_Nimbra PlugIn", QUESTION, "a")
    assert box.text("IDC_LBLVERSION").startswith("Version 2.")
    assert "KX-4410-0xxx" in box.text("IDC_LABEL1")
    box.close_by("Return")
    box = open_dialog(desk, window, "About Merrowind New_Nimbra PlugIn", QUESTION, "a")
    box.close_by("Escape")


def test_help_without_a_viewer_says_so(desk):
    window = desk.device("Room 101")
    desk.wine("reg", "delete", HELP_VIEWER, "/f")
    try:
        caption = "Help viewer non installed on this machine"
        box = open_dialog(desk, window, caption, QUESTION, "h")
        desk.message("Please insert the Tessaly CD-ROM and install the Help viewer")
        box.close_by("Return")
    finally:
        desk.wine("reg", "add", HELP_VIEWER, "/f")


def test_documentation_that_is_missing_is_reported(desk):
    window = desk.device("Room 101")
    text = "Technical bullettin not available"
    window.choose(QUESTION, "t")
    box = desk.message(text)
    assert box.is_open()
    box.close_by("Return")
