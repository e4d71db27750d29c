#!/usr/bin/env python3
"""check_modules_test.py DLL: the check of modules finds what is wrong with a damaged copy of a DLL."""

import os
import sys
import tempfile
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(__file__), "..", "..", "scripts"))
import check_modules

with open(sys.argv.pop(), "rb") as dll:
    GOOD = dll.read()
OPTIONAL = int.from_bytes(GOOD[0x3C:0x40], "little") + 24
FLAGS = OPTIONAL + 70


class DamagedModule(unittest.TestCase):
    def faults(self, content, **asked):
        with tempfile.TemporaryDirectory() as folder:
            path = os.path.join(folder, "copy.dll")
            with open(path, "wb") as file:
                file.write(content)
            return check_modules.check(path, **asked)[0]

    def without_flag(self, flag):
        content = bytearray(GOOD)
        flags = int.from_bytes(content[FLAGS : FLAGS + 2], "little") & ~flag
        content[FLAGS : FLAGS + 2] = flags.to_bytes(2, "little")
        return bytes(content)

    def test_untouched_copy_has_no_fault(self):
        self.assertEqual(self.faults(GOOD, wanted_exports=["DllGetClassObject"]), [])

    def test_missing_dep_is_found(self):
        self.assertEqual(self.faults(self.without_flag(0x100)), ["does not ask for DEP"])

    def test_missing_aslr_is_found(self):
        self.assertEqual(self.faults(self.without_flag(0x40)), ["does not ask for ASLR"])

    def test_missing_high_entropy_matters_in_64_bit_alone(self):
        is_64 = GOOD[OPTIONAL:OPTIONAL + 2] == b"\x0b\x02"
        expected = ["does not ask for 64-bit ASLR"] if is_64 else []
        self.assertEqual(self.faults(self.without_flag(0x20)), expected)

    def test_foreign_import_is_found(self):
        self.assertIn(b"ole32.dll\0", GOOD)
        # The other name of the same length comes with a compiler, not with the system.
        found = self.faults(GOOD.replace(b"KERNEL32.dll\0", b"libgcc_s.dll\0"))
        self.assertEqual(found, ["imports libgcc_s.dll"])

    def test_missing_export_is_found(self):
        found = self.faults(GOOD, wanted_exports=["DllGetClassObject@12"])
        self.assertEqual(found, ["does not export DllGetClassObject@12"])

    def test_size_is_judged(self):
        is_32 = GOOD[OPTIONAL:OPTIONAL + 2] == b"\x0b\x01"
        self.assertEqual(len(self.faults(GOOD, largest=len(GOOD))), 1 if is_32 else 0)
        self.assertEqual(self.faults(GOOD, largest=len(GOOD) + 1), [])

    def test_file_that_is_no_module_is_a_fault(self):
        for content in (b"", b"MZ", GOOD[:300], b"\0" * 4096):
            self.assertEqual(len(self.faults(content)), 1)


unittest.main()
