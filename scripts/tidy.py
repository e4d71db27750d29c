#!/usr/bin/env python3
"""Runs clang-tidy on the sources named on standard input, one a line.

  scripts/tidy.py [--seconds N] BUILD_DIR...

Each is compiled as the first build folder that knows it does; one that none knows is told and left out, for
nothing builds it here. As many run at a time as there are processors. No run begins later than N seconds
after the first; files that are left are told. Exit code 1: something was found, or nothing could be run.
"""

import argparse
import concurrent.futures
import json
import os
import subprocess
import sys
import time


def compiled(folder):
    with open(os.path.join(folder, "compile_commands.json"), encoding="utf-8") as file:
        return {os.path.realpath(os.path.join(entry["directory"], entry["file"])): entry
                for entry in json.load(file)}


def library_of(entry):
    """What clang must be told of the cross compiler's library; nothing for a native build."""
    compiler = entry["command"].split()[0]
    name = os.path.basename(compiler)
    if "mingw32" not in name:
        return []
    asked = subprocess.run([compiler, "-print-libgcc-file-name"], capture_output=True, text=True, check=True)
    folder = os.path.join(os.path.dirname(asked.stdout.strip()), "include", "c++")
    return [f"--extra-arg={argument}" for argument in (
        "-nostdinc++", f"-isystem{folder}", f"-isystem{folder}/{name[: name.index('mingw32') + 7]}")]


def run(source, folder, library, deadline):
    if time.monotonic() > deadline:
        return source, None, ""
    done = subprocess.run(["clang-tidy", "-p", folder, "--quiet", *library, source],
                          capture_output=True, text=True)
    return source, done.returncode, done.stdout


def main():
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("--seconds", type=float, default=86400)
    parser.add_argument("folder", nargs="+")
    asked = parser.parse_args()
    builds = []
    for folder in asked.folder:
        entries = compiled(folder)
        builds.append((folder, entries, library_of(next(iter(entries.values())))))

    jobs, unknown = [], []
    for source in sys.stdin.read().split():
        path = os.path.realpath(source)
        build = next((one for one in builds if path in one[1]), None)
        if build:
            jobs.append((source, build[0], build[2]))
        else:
            unknown.append(source)

    deadline = time.monotonic() + asked.seconds
    found, left = False, []
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for source, code, text in pool.map(lambda job: run(*job, deadline), jobs):
            if code is None:
                left.append(source)
            elif code != 0:
                found = True
                print(f"{source}: clang-tidy ended with {code}\n{text}")
    for source in unknown:
        print(f"not compiled here: {source}")
    if left:
        print(f"left to the full run: {' '.join(left)}")
    print(f"clang-tidy looked at {len(jobs) - len(left)} of {len(jobs)} files")
    return 1 if found or (jobs and len(left) == len(jobs)) else 0


if __name__ == "__main__":
    sys.exit(main())
