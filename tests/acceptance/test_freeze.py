"""A device that stops answering, and one that fails."""
from eyes import do_until, wait_for

HEALTHY = "Merrowind New_Nimbra PlugIn"


def test_a_pulled_plug_freezes_and_thaws_its_window(desk):
    other = desk.device("Room 102")
    window = desk.device("Room 101")
    for tab in ("Nimbra", "Test"):
        window.show_tab(tab)
        desk.plug("Room 101", False)
        wait_for(lambda: not window.enabled(), "the window freezes")
        wait_for(lambda: window.text("IDC_LBLDEVSTATE") == "Absent", "the state is told")
        desk.plug("Room 101", True)
        wait_for(window.enabled, "the window thaws")
        wait_for(lambda: window.text("IDC_LBLDEVSTATE") == "On Line", "the state is told")
        assert window.tab() == tab
    wait_for(other.enabled, "the other window can be used")


def test_a_frozen_window_opens_no_action_menu(desk):
    window = desk.device("Room 101")
    window.show_tab("Nimbra")
    desk.plug("Room 101", False)
    wait_for(lambda: not window.enabled(), "the window freezes")
    do_until(lambda: window.key("F10"), window.in_menu, "the menu bar is reached")
    # One Escape leaves the bar; were the menu open, it would only close that.
    desk.hands.keys("Right", "Down", "Escape")
    wait_for(lambda: not window.in_menu(), "the menu bar is left")
    desk.plug("Room 101", True)
    wait_for(window.enabled, "the window thaws")
    window.open_menu(1)
    window.leave_menu()


def test_a_failing_application_blinks_in_the_caption(desk):
    window = desk.device("Room 101")
    desk.application_status("Room 101", 42)
    for caption in ("Nimbra Failure", "", "Nimbra Failure"):
        wait_for(lambda: window.caption() == caption, f'the caption is "{caption}"')
    desk.application_status("Room 101", 0)
    wait_for(lambda: window.caption() == HEALTHY, "the caption is the healthy one")
