#!/usr/bin/env python3
"""Says what of a label template must arrive at the printer.

    label_expectation.py RECEIVED NEURON TEMPLATE...

RECEIVED holds what came of the templates, one after the other, printed within the last hours. Exit code 0:
byte for byte what had to come.
"""
import datetime
import math
import sys


def code(day):
    week = min(math.ceil((day - datetime.date(day.year, 1, 1)).days / 7), 52)
    return f"{day.year % 100:02}{week:02}".encode()


def label(template, neuron, day):
    return template.replace(b"n" * 12, neuron, 5).replace(b"YYWW", code(day), 3)


def main():
    received, neuron, *names = sys.argv[1:]
    with open(received, "rb") as file:
        came = file.read()
    templates = [open(name, "rb").read() for name in names]
    today = datetime.date.today()
    # Midnight may have passed meanwhile.
    for day in (today, today - datetime.timedelta(days=1)):
        if came == b"".join(label(template, neuron.encode(), day) for template in templates):
            print(f"{len(came)} bytes of {len(names)} labels arrived as they had to")
            return 0
    print(f"{len(came)} bytes arrived, and they are not what had to come", file=sys.stderr)
    return 1


if __name__ == "__main__":
    sys.exit(main())
