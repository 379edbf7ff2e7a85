"""Checks the probe's own promises: its JSON, its exit status, its wrong-usage answers.

usage: probe_check.py PROBE
"""

import json
import os
import resource
import subprocess
import sys
import tempfile
import unittest
import zipfile

import probe_limits

PROBE = sys.argv.pop(1)


def run(*arguments):
    return subprocess.run([PROBE, *arguments], capture_output=True, timeout=60)


def answer(*arguments):
    return probe_limits.run(PROBE, *arguments)


class ProbeCheck(unittest.TestCase):
    def setUp(self):
        world = tempfile.TemporaryDirectory()
        self.addCleanup(world.cleanup)
        self.folder = world.name
        self.archive = os.path.join(world.name, "a.zip")

    def make(self, *names, when=(2005, 3, 4, 10, 20, 30)):
        with zipfile.ZipFile(self.archive, "w", zipfile.ZIP_DEFLATED) as archive:
            for name in names:
                archive.writestr(zipfile.ZipInfo(name, when), "abc" if not name.endswith("/") else "")

    def test_list_says_everything_about_an_entry(self):
        self.make("a/b.txt", "d/")
        listed = answer("list", self.archive)
        self.assertEqual(list(listed), ["status", "comment", "entries", "messages"])
        self.assertEqual((listed["status"], listed["comment"], listed["messages"]), (0, "", []))
        self.assertEqual(
            listed["entries"][0],
            {
                "index": 1,
                "name": "a/b.txt",
                "folder": "",
                "dir": False,
                "size": 3,
                "packed": 3,
                "crc": "352441c2",
                "method": "No Compression",
                "encrypted": False,
                "modified": "2005-03-04 10:20:30",
            },
        )
        self.assertEqual([(e["index"], e["dir"]) for e in listed["entries"]], [(1, False), (2, True)])

    def test_extract_makes_the_folder_and_takes_the_entries_named(self):
        self.make("one", "two", "three")
        target = os.path.join(self.folder, "New", "place")
        self.assertEqual(answer("extract", self.archive, target, "--entries", "1,3"), {"status": 0, "messages": []})
        self.assertEqual(sorted(os.listdir(target)), ["one", "three"])
        self.assertEqual(answer("extract", self.archive, target, "--entries", "9"), {"status": 0, "messages": []})

    def test_the_prompt_takes_the_password_or_is_cancelled(self):
        subprocess.run(["7zz", "a", "-psecret", self.archive, __file__], check=True, stdout=subprocess.DEVNULL)
        target = os.path.join(self.folder, "out")
        self.assertEqual(answer("extract", self.archive, target), {"status": -1, "messages": [555]})
        self.assertEqual(answer("extract", self.archive, target, "--password", "other")["status"], -1)
        self.assertEqual(answer("extract", self.archive, target, "--password", "secret")["status"], 0)
        with open(__file__, "rb") as mine, open(os.path.join(target, os.path.basename(__file__)), "rb") as out:
            self.assertEqual(mine.read(), out.read())

    @unittest.skipIf("asan" in PROBE, "its shadow memory is larger than any limit")
    def test_memory_that_is_not_there_costs_only_the_entry(self):
        # Two gigabytes are recorded, and six megabytes of reduced bytes could be as many.
        self.make("huge", "after")
        with open(self.archive, "rb") as file:
            data = bytearray(file.read())
        packed, recorded = bytes(6 << 20), (2**31 - 1).to_bytes(4, "little")
        name = data.index(b"huge")
        stored = int.from_bytes(data[18:22], "little")
        end = name + 4 + stored
        central = data.index(b"PK\x01\x02")
        for at in (0, central + 2):
            data[at + 8:at + 10] = b"\x03\x00"
            data[at + 18:at + 26] = len(packed).to_bytes(4, "little") + recorded
        grown = len(packed) - stored
        second = data.index(b"PK\x01\x02", central + 4)
        for at in (second + 42, data.index(b"PK\x05\x06") + 16):
            data[at:at + 4] = (int.from_bytes(data[at:at + 4], "little") + grown).to_bytes(4, "little")
        with open(self.archive, "wb") as file:
            file.write(data[:name + 4] + packed + data[end:])
        target = os.path.join(self.folder, "out")
        done = subprocess.run([PROBE, "extract", self.archive, target], capture_output=True, timeout=60,
                              preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (1 << 30, 1 << 30)))
        self.assertEqual((done.returncode, json.loads(done.stdout)), (0, {"status": 0, "messages": [560]}))
        self.assertEqual(os.listdir(target), ["after"])

    def test_a_file_that_is_no_archive_answers_minus_two(self):
        self.assertEqual(answer("list", self.archive)["status"], -2)
        self.assertEqual(answer("extract", self.archive, self.folder + "/out")["status"], -2)

    def test_any_name_is_valid_json(self):
        self.make("a\"b\\c\n\x01\x7f\u00e9\U0001F600")
        with open(self.archive, "rb") as file:
            data = file.read()
        for odd in (b"\xff\xfe", b"\xc3(", b"\x00\x00", b"\xed\xa0"):
            changed = data.replace(b"\xc3\xa9", odd)
            with open(self.archive, "wb") as file:
                file.write(changed)
            self.assertEqual(len(answer("list", self.archive)["entries"]), 1)
        with open(self.archive, "wb") as file:
            file.write(data)
        self.assertEqual(answer("list", self.archive)["entries"][0]["name"], "a\"b\\c\n\x01\x7f\u00e9\U0001F600")

    def test_reports_without_end_are_taken_at_once(self):
        with open(self.archive, "wb") as file:
            file.write(b"PK" + b"?" * 400000)
        listed = answer("list", self.archive)
        self.assertEqual(set(listed["messages"]), {554})
        self.assertLess(len(listed["messages"]), 1100)

    def test_wrong_usage_is_told_on_standard_error_alone(self):
        for arguments in (
            [],
            ["list"],
            ["show", "x"],
            ["list", "x", "y"],
            ["extract", "x"],
            ["list", "x", "--password", "p"],
            ["extract", "x", "y", "--entries", "1,x"],
            ["extract", "x", "y", "--entries", "0"],
            ["extract", "x", "y", "--entries"],
            ["list", "x", "--format", "tar"],
        ):
            done = run(*arguments)
            self.assertEqual((done.returncode, done.stdout), (2, b""), arguments)
            self.assertIn(b"usage:", done.stderr)


if __name__ == "__main__":
    unittest.main()
