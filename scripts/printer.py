#!/usr/bin/env python3
"""Plays a label printer on a pseudo-terminal.

    printer.py FOLDER [--rate BYTES_A_SECOND]

FOLDER/port is a link to the terminal, FOLDER/received holds what came, FOLDER/ready is there once the
printer is. A command is a word in FOLDER/do; the file is removed when it has been obeyed:

    fresh   a new terminal with nothing received, that takes everything
    stop    take nothing from now on
    go      take everything again
    leave   pull the plug: whoever has the port open loses it
    refuse  the port cannot be opened, as if another program had it; until "fresh"
    ask     write into FOLDER/holders how many processes have the port open

With a rate the printer lets in no more than it has printed. When its standard input ends it prints what is still
on its way, and ends.
"""
import argparse
import contextlib
import os
import select
import sys
import termios
import time
import tty

NAP = 0.005
MOST_WAITING = 64


class Printer:
    def __init__(self, folder, rate):
        self.folder = folder
        self.rate = rate
        self.master = self.slave = None
        self.waiting = b""
        self.printed_at = time.monotonic()
        self.fresh()

    def path(self, name):
        return os.path.join(self.folder, name)

    def fresh(self):
        self.leave()
        self.master, self.slave = os.openpty()
        tty.setraw(self.slave)
        os.set_blocking(self.master, False)
        self.received = open(self.path("received"), "wb", buffering=0)
        self.waiting = b""
        self.flowing = self.wanted = True
        self.terminal = os.ttyname(self.slave)
        self.lead_to(self.terminal)

    def lead_to(self, target):
        link = self.path("port.new")
        os.symlink(target, link)
        os.rename(link, self.path("port"))

    def holders(self):
        processes = set()
        for process in os.listdir("/proc"):
            if not process.isdigit() or int(process) == os.getpid():
                continue
            folder = f"/proc/{process}/fd"
            try:
                if any(os.readlink(f"{folder}/{number}") == self.terminal for number in os.listdir(folder)):
                    processes.add(process)
            except OSError:  # another user's, or gone meanwhile
                pass
        return len(processes)

    def leave(self):
        if self.master is None:
            return
        os.close(self.slave)
        os.close(self.master)
        self.received.close()
        self.master = None

    def flow(self, on):
        if on != self.flowing:
            termios.tcflow(self.slave, termios.TCOON if on else termios.TCOOFF)
            self.flowing = on

    def obey(self):
        try:
            with open(self.path("do")) as file:
                word = file.read().strip()
        except OSError:
            return
        if not word:  # not written yet
            return
        if word == "fresh":
            self.fresh()
        elif word == "leave":
            self.leave()
        elif word in ("stop", "go"):
            self.wanted = word == "go"
            self.flow(self.wanted)
        elif word == "refuse":
            self.lead_to(self.folder)
        elif word == "ask":
            with open(self.path("holders"), "w") as file:
                file.write(str(self.holders()))
        else:
            sys.exit(f"printer: no command {word!r}")
        os.remove(self.path("do"))

    def work(self):
        if self.master is None:
            time.sleep(NAP)
            return
        if select.select([self.master], [], [], NAP)[0]:
            if self.rate:
                self.flow(False)
            try:
                self.waiting += os.read(self.master, 65536)
            except BlockingIOError:
                pass
        self.put_on_paper()
        self.flow(self.wanted and not (self.rate and len(self.waiting) >= MOST_WAITING))

    def finish(self):
        self.rate = None
        while self.master is not None and select.select([self.master], [], [], 0.2)[0]:
            self.work()
        if self.master is not None:
            self.put_on_paper()

    def put_on_paper(self):
        now = time.monotonic()
        count = len(self.waiting)
        if self.rate:
            count = min(count, int((now - self.printed_at) * self.rate))
            # An idle printer does not print faster afterwards.
            self.printed_at = self.printed_at + count / self.rate if self.waiting else now
        self.received.write(self.waiting[:count])
        self.waiting = self.waiting[count:]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("folder")
    parser.add_argument("--rate", type=float)
    arguments = parser.parse_args()
    # Hardware is never late: a printer that stops the line late has let in more than it can print.
    with contextlib.suppress(OSError):
        os.sched_setscheduler(0, os.SCHED_FIFO, os.sched_param(1))
    printer = Printer(arguments.folder, arguments.rate)
    with open(printer.path("ready"), "w"):
        pass
    while True:
        if select.select([sys.stdin], [], [], 0)[0] and not os.read(0, 1):
            printer.finish()
            return
        printer.obey()
        printer.work()


if __name__ == "__main__":
    main()
