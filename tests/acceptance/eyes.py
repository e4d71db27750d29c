"""What the windows show, seen by eyes.exe; and waiting until they show something."""
import json
import os
import select
import time

# Long, for a busy machine: what holds is seen at once, and only a failure takes the whole time.
PATIENCE = 90


class Failure(Exception):
    """Something that the operator would call wrong."""


def wait_for(condition, what, seconds=PATIENCE):
    """Gives the condition's first true value."""
    end = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise Failure(f"not within {seconds} s: {what}")
        time.sleep(0.05)


def do_until(action, condition, what, every=10):
    """Repeats an input that had no effect. The action is not repeated once the condition holds."""
    end = time.monotonic() + PATIENCE
    while True:
        action()
        try:
            return wait_for(condition, what, every)
        except Failure:
            if time.monotonic() > end:
                raise


class Eyes:
    """Asks eyes.exe, whose standard streams are pipes."""

    def __init__(self, process):
        self._process = process
        self._rest = b""

    def ask(self, what, window=0):
        request = json.dumps({"do": what, "window": window}) + "\n"
        self._process.stdin.write(request.encode())
        self._process.stdin.flush()
        answer = json.loads(self._line())
        if "error" in answer:
            raise Failure(f"eyes: {what}: {answer['error']}")
        return answer["answer"]

    def _line(self):
        stream = self._process.stdout.fileno()
        while b"\n" not in self._rest:
            ready, _, _ = select.select([stream], [], [], PATIENCE)
            block = os.read(stream, 65536) if ready else b""
            if not block:
                raise Failure("eyes.exe tells nothing")
            self._rest += block
        line, self._rest = self._rest.split(b"\n", 1)
        return line

    def windows(self):
        """The visible windows, topmost first."""
        return self.ask("windows")

    def find(self, **wanted):
        """The topmost visible window with these properties, or None."""
        for window in self.windows():
            if all(window[key] == value for key, value in wanted.items()):
                return window
        return None

    def look(self, window):
        """A window as it is now; None when it is gone."""
        return self.ask("look", window)

    def clipboard(self):
        def text():
            try:
                return [self.ask("clipboard")]
            except Failure:
                return None  # somebody else has it open

        return wait_for(text, "the clipboard can be read")[0]
