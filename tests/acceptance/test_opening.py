"""Opening the device window, its splash, and closing everything."""
from eyes import do_until, wait_for


def test_the_window_opens_behind_a_splash_that_goes(desk):
    if found := desk.device_window("Room 101"):
        found.close_by("alt+F4")
    desk.choose_device("Room 101")
    desk.bench.press("IDC_OPEN", desk.splash, "the splash is shown")
    window = wait_for(lambda: desk.device_window("Room 101"), "the window comes up")
    wait_for(lambda: not desk.splash(), "the splash goes")
    assert window.tab() == "Nimbra"
    assert window.panels() == ["Device:", "Room 101", "On Line"]
    assert window.text("IDC_LBLDEVSTATE") == "On Line"
    wait_for(lambda: window.caption() == "Merrowind New_Nimbra PlugIn", "the healthy caption")


def test_the_main_view_comes_to_life(desk):
    window = desk.device("Room 101")
    window.show_tab("Nimbra")
    for label in range(5):
        wait_for(lambda: window.text(f"IDC_LBLNV_FIRST+{label}") != "", f"label {label} has a value")
    assert "degrees Celsius" in window.text("IDC_LBLNV_FIRST")


def test_an_invalid_value_is_called_so(desk):
    window = desk.device("Room 102")
    window.show_tab("Nimbra")
    wait_for(lambda: window.text("IDC_LBLNV_FIRST+2") == "Invalid", "the remote set point is invalid")


def test_opening_again_makes_no_second_window(desk):
    window = desk.device("Room 101")
    desk.choose_device("Room 101")
    before = len(desk.eyes.windows())
    foreground = lambda: desk.eyes.ask("focus", window.handle)["foreground"]
    do_until(lambda: desk.bench.click("IDC_OPEN"), lambda: foreground() == window.handle,
             "the window that is there comes to the front")
    assert len(desk.eyes.windows()) == before


def test_closing_the_bench_closes_all_and_leaves_nothing_held(desk):
    desk.device("Room 101")
    desk.device("Room 102")
    assert desk.close_bench() == 0, desk.bench_output()
    desk.open_bench()
