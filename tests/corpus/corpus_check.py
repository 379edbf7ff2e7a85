"""Checks real archives against what independent tools make of them.

usage: corpus_check.py PROBE CORPUS zip|cab|rar

Every archive of one kind is listed and extracted by the probe, under limits on time, memory and output. Its entries
must be listed and come out as CORPUS/manifest.json tells it, and nothing may be written outside the target folder.
expected.json beside this file says what is expected of archives and entries that the program treats differently, and
why; a line of it that fits nothing is a fault. Exits with 77 when there is no CORPUS, for "skipped".
"""

import collections
import dataclasses
import hashlib
import json
import pathlib
import re
import resource
import shutil
import subprocess
import sys
import tempfile
import zipfile
import zlib

from probe_limits import OUTPUT, Broken, run

METHODS = {0: "stored", 2: "reduce1", 3: "reduce2", 4: "reduce3", 5: "reduce4", 8: "deflate", 9: "deflate64"}
STATUSES = {"zip": {0, -1, -2, -10}, "cab": {0, 2, 3, 4, 5, 8, 13, 23, 30}, "rar": {0, 1}}
AES = 99  # stands for the method of an entry with another encryption than the traditional one
TIME_AS_CHECK, STRONG = 8, 0x40  # flags of an encrypted entry

counts = collections.Counter()
faults = []


@dataclasses.dataclass
class Entry:
    """What the program should say of an entry; None where nobody knows."""

    name: str
    size: int
    told: dict  # the manifest's entry, which can be empty
    rule: str = "written"
    packed: int = None
    crc: str = None
    method: str = "stored"
    dir: bool = None
    encrypted: bool = None
    is_sealed: bool = False  # with an encryption that is not read
    has_time_as_check: bool = False  # and not the CRC, as the program expects it

    def lists_as(self, row):
        shown = dict(row, name=row.get("folder", "") + row["name"])
        facts = {fact: getattr(self, fact) for fact in ("name", "size", "packed", "crc", "dir", "encrypted")}
        return all(value is None or shown[fact] == value for fact, value in facts.items())

    def is_read(self, content):
        """Whether `content` is right; None when no tool can tell."""
        if "sha256" in self.told:
            return hashlib.sha256(content).hexdigest() == self.told["sha256"]
        if self.method.startswith("reduce"):
            return len(content) == self.size and f"{zlib.crc32(content):08x}" == self.crc
        return None


class Expected:
    """The table of what the program treats in a way of its own."""

    def __init__(self, kind):
        table = json.loads(pathlib.Path(__file__).with_name("expected.json").read_text())[kind]
        self.least, self.megabytes, self.outcomes = table["least"], table["megabytes"], table["outcomes"]
        self.archives = {name: group for group in table["archives"] for name in group["which"]}
        self.entries = {
            (name, number): group for group in table["entries"] for name, numbers in group["which"].items() for number in numbers
        }
        self.unused = set(self.archives) | set(self.entries)

    def archive(self, archive):
        self.unused.discard(archive["id"])
        default = {"expect": self.outcomes.get(archive["outcome"], self.outcomes["other"])}
        return self.archives.get(archive["id"], default)

    def entry(self, name, number):
        self.unused.discard((name, number))
        return self.entries.get((name, number), {"expect": "written"})["expect"]


def shown_name(stored):
    """A stored name as the program shows it where the locale is UTF-8."""
    try:
        return stored.decode()
    except UnicodeDecodeError:
        return "".join(bytes([b]).decode("ascii" if b < 0x80 else "cp1252", "replace") for b in stored).replace("\ufffd", "?")


def zip_entries(archive, path):
    """From the central directory as Python reads it; from the manifest where it does not."""
    told = archive["entries"]
    try:
        directory = zipfile.ZipFile(path).infolist()
    except zipfile.BadZipFile:
        return [Entry(t["name"], t["size"], t, crc=t["crc32"].lower(), method=t["method"], dir=t.get("dir", False),
                      encrypted=t.get("encrypted", False)) for t in told]
    if told and len(told) != len(directory):
        raise Broken(f"{len(told)} entries in the manifest, {len(directory)} in the directory")
    entries = []
    for info, known in zip(directory, told or [{}] * len(directory)):
        name = info.orig_filename.encode("utf-8" if info.flag_bits & 0x800 else "cp437")
        entries.append(Entry(
            shown_name(name), info.file_size, known,
            packed=info.compress_size,
            crc=f"{info.CRC:08x}",
            method=METHODS.get(info.compress_type, "other"),
            dir=name.endswith(b"/") and not info.compress_size,
            encrypted=bool(info.flag_bits & 1),
            is_sealed=info.compress_type == AES or bool(info.flag_bits & STRONG),
            has_time_as_check=bool(info.flag_bits & TIME_AS_CHECK),
        ))
    return entries


def cab_entries(archive, _):
    known = "non-ascii-names-unflagged" not in archive["kinds"]
    return [Entry(t.get("stored_name", t["name"]) if known else None, t["size"], t) for t in archive["entries"]]


def rar_entries(archive, _):
    return [Entry(t["name"].replace("/", "\\"), t["size"], t) for t in archive["entries"]]


def key_of(name):
    """Where `extract` has the entry of a name: folders match without regard to case."""
    *folders, last = [part for part in re.split(r"[\\/]", name) if part != "."]
    return "/".join([folder.upper() for folder in folders] + [last])


def extract(probe, archive, path, number=None):
    """Extracts into a folder of its own; the answer, and the content of every file by its key."""
    with tempfile.TemporaryDirectory() as world:
        out = pathlib.Path(world, "deep", "out")
        out.mkdir(parents=True)
        options = ["--password", archive["password"]] if archive["type"] == "zip" and archive.get("password") else []
        options += ["--entries", str(number)] if number else []
        answer = run(probe, "extract", path, str(out), "--format", archive["type"], *options)
        everything = list(pathlib.Path(world).rglob("*"))
        if any(found != out.parent and out != found and out not in found.parents for found in everything):
            raise Broken("something left the target folder")
        if any(found.is_symlink() for found in everything):
            raise Broken("a link was made")
        # A cabinet goes into a folder of its name.
        base = out / pathlib.Path(path).stem if archive["type"] == "cab" else out
        files = {key_of(str(found.relative_to(base))): found.read_bytes() for found in everything if found.is_file()}
    if sum(map(len, files.values())) > OUTPUT:
        raise Broken("output without end")
    return answer, files


def check_content(entry, files, is_whole):
    """One entry against the files written; `is_whole` when it may not be missing."""
    content = files.get(key_of(entry.name))
    if entry.rule == "anything":
        counts["left open"] += 1
    elif entry.rule == "not written" or entry.method not in METHODS.values():
        if content is not None:
            raise Broken(f"{entry.name!r} is written although it is not to be")
        counts["passed over"] += 1
    elif content is None:
        if is_whole:
            raise Broken(f"{entry.name!r} is not written")
    elif entry.is_read(content) is False:
        raise Broken(f"{entry.name!r} has the wrong content ({len(content)} bytes)")
    elif entry.is_read(content):
        counts["contents"] += 1
        counts[entry.method] += 1
        counts["decrypted"] += bool(entry.encrypted)


def is_folder(entry):
    """Whether an entry is a folder, or nothing that any tool makes a file of."""
    return "sha256" not in entry.told if entry.dir is None else entry.dir


def check_together(entries, files, is_whole):
    """Of entries with one name, the last one stays, and nothing is written that has no entry."""
    for entry in {key_of(entry.name): entry for entry in entries if not is_folder(entry)}.values():
        check_content(entry, files, is_whole)
    more = set(files) - {key_of(entry.name) for entry in entries}
    if is_whole and more:
        raise Broken(f"{more} are written, which no entry is called")


def check_one_by_one(probe, archive, path, entries):
    """With encrypted entries: each for itself, because a failed password ends an extraction."""
    for number, entry in enumerate(entries, 1):
        if is_folder(entry):
            continue
        answer, files = extract(probe, archive, path, number)
        if not entry.encrypted:
            check_content(entry, files, True)
        elif entry.is_sealed or not archive.get("password"):
            if (answer["status"], answer["messages"], files) != (-1, [555], {}):
                raise Broken(f"{entry.name!r} has a password that cannot be checked, yet {answer}")
            counts["sealed"] += 1
        elif not entry.has_time_as_check:
            check_content(entry, files, True)


def check_listing(listed, entries, is_set):
    rows = listed["entries"]
    if is_set:
        good = all(any(entry.lists_as(row) for entry in entries) for row in rows)
    else:
        good = len(rows) == len(entries) and all(entry.lists_as(row) for entry, row in zip(entries, rows))
    if not good or listed["status"] or listed["messages"]:
        raise Broken(f"lists {listed}, not {entries}")
    counts["listed"] += len(rows)


def check_tested(probe, path, entries):
    """RAR: the checksum of every entry that the reader decodes."""
    told = {entry.name: entry.told["crc32"].lower() for entry in entries if {"crc32", "sha256"} <= set(entry.told)}
    for row in run(probe, "test", path, "--format", "rar")["entries"]:
        if row["result"] == 0 and row["name"] in told:
            counts["decoded"] += 1
            if row["crc"] != told[row["name"]]:
                raise Broken(f"{row['name']!r} has the checksum {row['crc']}, not {told[row['name']]}")


def check_unar(path, files):
    """Where unar is installed it unpacks beside the probe and has to agree."""
    with tempfile.TemporaryDirectory() as other:
        done = subprocess.run(["unar", "-q", "-D", "-nr", "-f", "-o", other, path], stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=120, check=False)
        found = [file for file in pathlib.Path(other).rglob("*") if file.is_file() and not file.is_symlink()]
        theirs = {key_of(str(file.relative_to(other))): file.read_bytes() for file in found}
    if done.returncode == 0 and set(theirs) == set(files) and theirs != files:
        raise Broken("unar unpacks other content")
    counts["same as unar"] += theirs == files


def check(probe, archive, path, expected):
    kind, group = archive["type"], expected.archive(archive)
    listed = run(probe, "list", path, "--format", kind)
    answer, files = extract(probe, archive, path)
    for result in (listed, answer):
        if result["status"] not in STATUSES[kind] or "error" in result and bool(result["status"]) != bool(result["error"]):
            raise Broken(f"answers {result}")
    if "listed" in group and (listed["status"], listed["entries"]) != (group["listed"], []):
        raise Broken(f"is not to be listed ({group['why']}), yet {listed}")
    counts[group["expect"]] += 1
    if group["expect"] == "ends":
        return
    entries = {"zip": zip_entries, "cab": cab_entries, "rar": rar_entries}[kind](archive, path)
    for number, entry in enumerate(entries, 1):
        entry.rule = expected.entry(archive["id"], number)
        entry.name = None if entry.rule == "name open" else entry.name
    if group["expect"] != "refused":
        check_listing(listed, entries, group["expect"] == "set")
        for entry, row in zip(entries, listed["entries"]):
            entry.name = row.get("folder", "") + row["name"] if entry.name is None else entry.name
    if kind == "rar":
        check_tested(probe, path, entries)
    if any(entry.encrypted for entry in entries):
        return check_one_by_one(probe, archive, path, entries)
    check_together([e for e in entries if e.name is not None], files, group["expect"] == "whole")
    if group["expect"] == "whole" and answer["status"] != group.get("status", 0):
        raise Broken(f"answers {answer}")
    if group["expect"] == "refused" and not answer["status"]:
        raise Broken(f"is {archive['outcome']} and looks complete")
    if kind == "rar" and answer["status"] and not answer["messages"]:
        raise Broken("is not complete, and nobody is told")
    if kind == "rar" and not answer["status"] and shutil.which("unar"):
        check_unar(path, files)


def main(probe, corpus, kind):
    manifest = pathlib.Path(corpus, "manifest.json")
    if not manifest.exists():
        print("no corpus: skipped")
        return 77
    expected = Expected(kind)
    for archive in json.loads(manifest.read_text())["archives"]:
        if archive["type"] != kind:
            continue
        # A ZIP file's directory is in its last part; each cabinet of a set is an archive; RAR sets begin with the first.
        for file in {"zip": archive["files"][-1:], "cab": archive["files"], "rar": archive["files"][:1]}[kind]:
            try:
                check(probe, archive, str(pathlib.Path(corpus, file["file"])), expected)
            except Broken as fault:
                faults.append(f"{file['file']}: {fault}")
    faults.extend(f"expected.json has {unused}, which is not in the corpus" for unused in expected.unused)
    peak = resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss >> 10
    if peak > expected.megabytes:
        faults.append(f"peak memory {peak} MB")
    # Fewer than were compared when the table was written: the check has gone blind.
    faults.extend(f"only {counts[what]} {what}" for what, least in expected.least.items() if counts[what] < least)
    for fault in faults:
        print("FAULT", fault)
    print(f"{dict(counts)}, {len(faults)} faults, peak memory {peak} MB")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
