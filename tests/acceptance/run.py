#!/usr/bin/env python3
"""Acceptance tests: real windows on the screen that DISPLAY names, under keyboard and mouse.

    scripts/with-screen.sh tests/acceptance/run.py [--decimal point|comma] [--arch i686|x86_64]
        [--build FOLDER] [--pictures FOLDER] [NAME...]

A test is a function test_...(desk) in a file test_*.py of this folder; NAMEs pick those whose names
hold one of them. They share one bench, in the order of files and functions. A test leaves the
windows of devices open or closed as it likes, but no dialog, no silent device and no failure status;
after one that failed the bench is started anew. A loaded machine can let a key or a click get lost:
what failed is tried once more at the end, and what fails twice has failed. Exit code 0: all passed.
"""
import argparse
import importlib
import inspect
import os
import sys
import time
import traceback
from pathlib import Path

from desk import Desk
from hands import picture

HERE = Path(__file__).resolve().parent


def all_tests():
    for file in sorted(HERE.glob("test_*.py")):
        functions = inspect.getmembers(importlib.import_module(file.stem), inspect.isfunction)
        tests = [(name, one) for name, one in functions if name.startswith("test_")]
        yield from sorted(tests, key=lambda test: test[1].__code__.co_firstlineno)


def run(desk, name, test, pictures):
    """True when the test passed."""
    begin = time.monotonic()
    try:
        test(desk)
        print(f"passed  {name}  ({time.monotonic() - begin:.1f} s)", flush=True)
        return True
    except Exception:  # whatever it is, the other tests can still say something
        traceback.print_exc()
        print(f"FAILED  {name}  ({time.monotonic() - begin:.1f} s)", flush=True)
    try:
        pictures.mkdir(parents=True, exist_ok=True)
        picture(str(pictures / f"{name}.png"))
        print(f"The screen: {pictures / name}.png\nThe bench:\n{desk.bench_output()}", flush=True)
    except Exception:
        traceback.print_exc()
    desk.restart_bench()
    return False


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--decimal", choices=["point", "comma"], default="point")
    parser.add_argument("--arch", default="i686")
    parser.add_argument("--build", type=Path, default=HERE.parents[1] / "build/win32")
    parser.add_argument("--pictures", type=Path)
    parser.add_argument("names", nargs="*")
    options = parser.parse_args()
    if not os.environ.get("DISPLAY"):
        sys.exit("acceptance: there is no screen (scripts/with-screen.sh makes one)")
    pictures = options.pictures or options.build / "acceptance-failures" / options.decimal
    tests = [(name, test) for name, test in all_tests()
             if not options.names or any(part in name for part in options.names)]
    if not tests:
        sys.exit("acceptance: there is no such test")
    with Desk(options.build, options.arch, decimal=options.decimal) as desk:
        failed = [one for one in tests if not run(desk, *one, pictures)]
        failed = [name for name, test in failed if not run(desk, name, test, pictures)]
    print(f"{len(tests) - len(failed)} passed, {len(failed)} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
