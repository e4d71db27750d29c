#!/usr/bin/env python3
"""Runs clang-tidy on the sources named on standard input, one a line.

  scripts/tidy.py [--seconds N] [--together] BUILD_DIR...

Each is compiled as the first build folder that knows it does; one that none knows is told and left out, for
nothing builds it here. As many run at a time as there are processors. No run begins later than N seconds
after the first; files that are left are told. The product's own sources begin.

The product's own sources are looked at one by one, with the analyzer that follows paths. Simulator, tests
and benchmarks have all checks but that one, which spends minutes on the macros of a single test, and
those of speed, which matters in the product alone. With --together up to eight of these are looked at as one, for most of the time goes into the headers that they
share; eight that do not compile as one are then looked at one by one.

Exit code 1: something was found, or nothing could be run.
"""

import argparse
import collections
import concurrent.futures
import json
import os
import re
import shlex
import subprocess
import sys
import tempfile
import time

TOGETHER = 8
OUTSIDE_PRODUCT = "--checks=-clang-analyzer-*,-performance-*,-bugprone-suspicious-include"

Job = collections.namedtuple("Job", "sources file options")


def library_of(compiler):
    """What clang must be told of the cross compiler's library; nothing for a native build."""
    name = os.path.basename(compiler)
    if "mingw32" not in name:
        return []
    asked = subprocess.run([compiler, "-print-libgcc-file-name"], capture_output=True, text=True, check=True)
    folder = os.path.join(os.path.dirname(asked.stdout.strip()), "include", "c++")
    return ["-nostdinc++", f"-isystem{folder}",
            f"-isystem{folder}/{name[: name.index('mingw32') + 7]}"]


def own_header(path, place):
    """A copy of a header that is compiled before its use: clang would take the compiler's result for its own."""
    copy = os.path.join(place, re.sub(r"\W+", "_", os.path.relpath(path)) + ".h")
    with open(path, encoding="utf-8") as source, open(copy, "w", encoding="utf-8") as target:
        target.write(source.read())
    return os.path.abspath(copy)


class Build:
    """How the files of one build folder are compiled, in terms that clang understands."""

    def __init__(self, folder, place):
        self.of = {}
        with open(os.path.join(folder, "compile_commands.json"), encoding="utf-8") as file:
            entries = [entry for entry in json.load(file)
                       if entry["file"].endswith((".cpp", ".cxx")) and "cmake_pch" not in entry["file"]]
        known = {}
        for entry in entries:
            words = shlex.split(entry["command"])
            compiler = next(word for word in words if re.search(r"(\+\+|g\+\+-posix)$", word))
            if compiler not in known:
                known[compiler] = library_of(compiler)
            # Warnings are the compiler's own affair; here they would count as errors.
            words = words[words.index(compiler):] + known[compiler] + ["-w"]
            for i, word in enumerate(words):
                if word.endswith("cmake_pch.hxx"):
                    words[i] = own_header(word, place)
            file = os.path.realpath(os.path.join(entry["directory"], entry["file"]))
            for source in self.members(file):
                command = tuple(source if os.path.realpath(word) == file else word for word in words)
                self.of.setdefault(source, (entry["directory"], command))

    @staticmethod
    def members(file):
        """The sources of a file that cmake made to compile several as one."""
        if "/Unity/" not in file:
            return [file]
        with open(file, encoding="utf-8") as text:
            return [os.path.realpath(path) for path in re.findall(r'#include "(.*\.cpp)"', text.read())]


class Jobs:
    """What is to run, and the compile commands that clang-tidy reads for it."""

    def __init__(self, place):
        self.place, self.list, self.commands = place, [], {}

    def single(self, source, command):
        path = os.path.realpath(source)
        self.commands[path] = command
        options = [] if source.startswith("src/") else [OUTSIDE_PRODUCT]
        self.list.append(Job((source,), path, options))

    def together(self, sources, command):
        """Sources that are compiled alike but for their names."""
        path = os.path.abspath(os.path.join(self.place, f"together_{len(self.list)}.cpp"))
        with open(path, "w", encoding="utf-8") as file:
            file.writelines(f'#include "{os.path.realpath(source)}"\n' for source in sources)
        first = os.path.realpath(sources[0])
        self.commands[path] = (command[0], tuple(path if word == first else word for word in command[1]))
        self.list.append(Job(tuple(sources), path, [OUTSIDE_PRODUCT]))

    def write(self):
        with open(os.path.join(self.place, "compile_commands.json"), "w", encoding="utf-8") as file:
            json.dump([{"directory": directory, "file": path, "arguments": list(words)}
                       for path, (directory, words) in self.commands.items()], file)


def flags(command, source):
    """What two compile commands must have in common to be run as one."""
    words = iter(command[1])
    kept = []
    for word in words:
        if word in ("-o", "-MF", "-MT"):
            next(words, None)
        elif word != os.path.realpath(source):
            kept.append(word)
    return command[0], tuple(kept)


def plan(sources, builds, together, place):
    jobs, unknown, alike = Jobs(place), [], collections.defaultdict(list)
    for source in sorted(sources, key=lambda source: not source.startswith("src/")):
        path = os.path.realpath(source)
        command = next((build.of[path] for build in builds if path in build.of), None)
        if not command:
            unknown.append(source)
        elif together and not source.startswith("src/"):
            alike[flags(command, source)].append((source, command))
        else:
            jobs.single(source, command)
    for group in alike.values():
        for first in range(0, len(group), TOGETHER):
            some = group[first:first + TOGETHER]
            for source, command in some:
                jobs.commands[os.path.realpath(source)] = command
            jobs.together([source for source, _ in some], some[0][1])
    jobs.write()
    return jobs.list, unknown


def run(job, place, deadline):
    """The sources that were left, and what was found."""
    if time.monotonic() > deadline:
        return list(job.sources), ""
    done = subprocess.run(["clang-tidy", "-p", place, "--quiet", *job.options, job.file],
                          capture_output=True, text=True)
    if done.returncode == 0:
        return [], ""
    if len(job.sources) > 1 and "clang-diagnostic-" in done.stdout:
        apart = [run(Job((source,), os.path.realpath(source), job.options), place, deadline)
                 for source in job.sources]
        return [source for left, _ in apart for source in left], "".join(text for _, text in apart)
    return [], f"{' '.join(job.sources)}: clang-tidy ended with {done.returncode}\n{done.stdout}"


def look(sources, asked, place):
    jobs, unknown = plan(sources, [Build(folder, place) for folder in asked.folder], asked.together, place)
    deadline = time.monotonic() + asked.seconds
    found, left = False, []
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for unrun, text in pool.map(lambda job: run(job, place, deadline), jobs):
            left += unrun
            if text:
                found = True
                print(text, flush=True)
    count = sum(len(job.sources) for job in jobs)
    for source in unknown:
        print(f"not compiled here: {source}")
    if left:
        print(f"left to the full run: {' '.join(left)}")
    print(f"clang-tidy looked at {count - len(left)} of {count} files")
    return 1 if found or (count and len(left) == count) else 0


def main():
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("--seconds", type=float, default=86400)
    parser.add_argument("--together", action="store_true")
    parser.add_argument("folder", nargs="+")
    asked = parser.parse_args()
    # In the tree, where clang-tidy finds its settings; of this run alone, for another may run beside it.
    with tempfile.TemporaryDirectory(prefix="tidy-", dir="build") as place:
        return look(sys.stdin.read().split(), asked, place)


if __name__ == "__main__":
    sys.exit(main())
