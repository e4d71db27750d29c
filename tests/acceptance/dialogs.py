"""Dialogs that a menu command opens, and the system's file dialogs."""
from eyes import do_until

# The field for the name in the system's file dialogs.
FILE_NAME = 0x47C


def choose_until(window, condition, what, *path):
    """Chooses a command, again when it had no effect."""
    return do_until(lambda: window.choose(*path), condition, what, every=20)


def open_dialog(desk, window, caption, *path):
    find = lambda: desk.eyes.find(text=caption, **{"class": "#32770"})
    choose_until(window, find, f'"{caption}" comes up', *path)
    return desk.dialog(caption)


def give_file(dialog, file):
    """Types a file into a file dialog and accepts it."""
    path = "Z:" + str(file).replace("/", "\\")
    name = lambda: next((one for one in dialog.controls()
                         if one["id"] == FILE_NAME and one["visible"]), {"text": ""})["text"]

    def write():
        dialog.key("alt+n", "ctrl+a")
        dialog.type(path)

    do_until(write, lambda: name() == path, "the file is typed")
    dialog.close_by("Return")
