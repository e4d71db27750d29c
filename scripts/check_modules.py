#!/usr/bin/env python3
"""Reads DLLs as files and says what an operator's machine would have to trust.

  scripts/check_modules.py [--export NAME]... [--largest BYTES] DLL...

Each DLL must ask for memory that is either written or run (DEP), for a base address of the system's
choice (ASLR; in 64 bit out of the whole address space), and import from the system's own DLLs alone,
by names that Windows ships on every machine. With --export, its exports must hold each NAME as
written; with --largest, a 32-bit DLL must be smaller. Exit code 0: all hold. 1: one does not, or a file
is no DLL. 2: wrong arguments.
"""

import argparse
import struct
import sys

SYSTEM_DLLS = frozenset(
    name + ".dll"
    for name in (
        "advapi32", "comctl32", "comdlg32", "gdi32", "kernel32", "msvcrt", "ole32", "oleaut32",
        "shell32", "shlwapi", "user32", "uxtheme", "winmm"))

I386, AMD64 = 0x14C, 0x8664
HIGH_ENTROPY_VA, DYNAMIC_BASE, NX_COMPAT = 0x20, 0x40, 0x100
RELOCS_STRIPPED, IS_DLL = 0x1, 0x2000
EXPORT_TABLE, IMPORT_TABLE, DELAY_IMPORT_TABLE = 0, 1, 13


class NoModule(Exception):
    """The file is not what the loader would take for a DLL."""


class Module:
    def __init__(self, path):
        with open(path, "rb") as file:
            self.bytes = file.read()
        start = self.number("<I", 0x3C)
        if self.bytes[:2] != b"MZ" or self.bytes[start : start + 4] != b"PE\0\0":
            raise NoModule("no portable executable")
        self.machine = self.number("<H", start + 4)
        self.sections = self.number("<H", start + 6)
        optional_size = self.number("<H", start + 20)
        self.characteristics = self.number("<H", start + 22)
        self.optional = start + 24
        self.flags = self.number("<H", self.optional + 70)
        self.section_table = self.optional + optional_size
        if self.machine not in (I386, AMD64) or not self.characteristics & IS_DLL:
            raise NoModule("no DLL for a processor of ours")

    def number(self, form, at):
        try:
            return struct.unpack_from(form, self.bytes, at)[0]
        except struct.error:
            raise NoModule("cut short") from None

    def directory(self, index):
        tables = self.optional + (96 if self.machine == I386 else 112)
        return self.number("<I", tables + 8 * index)

    def offset(self, address):
        for index in range(self.sections):
            at = self.section_table + 40 * index
            begin, size, place = (self.number("<I", at + field) for field in (12, 16, 20))
            if begin <= address < begin + size:
                return place + address - begin
        raise NoModule(f"address {address:#x} is in no section")

    def text(self, address):
        at = self.offset(address)
        return self.bytes[at : self.bytes.index(b"\0", at)].decode("ascii")

    def imports(self):
        names = []
        for table, step, field in ((IMPORT_TABLE, 20, 12), (DELAY_IMPORT_TABLE, 32, 4)):
            if not self.directory(table):
                continue
            at = self.offset(self.directory(table))
            while address := self.number("<I", at + field):
                names.append(self.text(address).lower())
                at += step
        return names

    def exports(self):
        if not self.directory(EXPORT_TABLE):
            return []
        at = self.offset(self.directory(EXPORT_TABLE))
        names = self.offset(self.number("<I", at + 32))
        return [self.text(self.number("<I", names + 4 * i))
                for i in range(self.number("<I", at + 24))]


def faults(module, wanted_exports, largest):
    if not module.flags & NX_COMPAT:
        yield "does not ask for DEP"
    if not module.flags & DYNAMIC_BASE or module.characteristics & RELOCS_STRIPPED:
        yield "does not ask for ASLR"
    if module.machine == AMD64 and not module.flags & HIGH_ENTROPY_VA:
        yield "does not ask for 64-bit ASLR"
    imports = module.imports()
    if "ole32.dll" not in imports:
        yield "imports nothing of COM: its imports cannot have been read"
    for name in imports:
        if name not in SYSTEM_DLLS:
            yield f"imports {name}"
    exports = module.exports()
    for name in wanted_exports:
        if name not in exports:
            yield f"does not export {name}"
    if largest and module.machine == I386 and len(module.bytes) >= largest:
        yield f"has {len(module.bytes)} bytes, {largest} or more"


def check(path, wanted_exports=(), largest=None):
    """The faults of one file, and a line that says what it is."""
    try:
        module = Module(path)
        found = list(faults(module, wanted_exports, largest))
        bits = 32 if module.machine == I386 else 64
        line = (f"{path}: {bits} bit, {len(module.bytes)} bytes, "
                f"flags {module.flags:#06x}, imports {len(module.imports())} DLLs")
        return found, line
    except (OSError, NoModule, ValueError) as error:
        return [str(error)], str(path)


def main():
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("--export", action="append", default=[])
    parser.add_argument("--largest", type=int)
    parser.add_argument("dll", nargs="+")
    asked = parser.parse_args()
    failed = False
    for path in asked.dll:
        found, line = check(path, asked.export, asked.largest)
        print(line)
        for fault in found:
            failed = True
            print(f"{path}: {fault}")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
