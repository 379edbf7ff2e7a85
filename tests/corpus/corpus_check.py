"""Checks real archives against what independent tools make of them.

usage: corpus_check.py PROBE CORPUS

Every archive of CORPUS/zip is listed and extracted by the probe under limits on time, memory and output. Those of the
form that the reader is made for (zip_form.py) must list every entry with the right name, size and CRC-32 and extract
the right bytes, for every method that is decoded; the others have to end cleanly. Exits with 77 when there is no
CORPUS, for "skipped".
"""

import collections
import hashlib
import json
import os
import pathlib
import resource
import sys
import tempfile
import zlib

import zip_form
from probe_limits import OUTPUT, check_left, counts, faults, is_blind, note, run

KINDS = {0: "stored", 8: "deflated", 9: "deflated (64)", 2: "reduced", 3: "reduced", 4: "reduced", 5: "reduced"}
REFUSED = {1, 6, 7, 10}
MEGABYTES = 1024  # of memory, shadow memory of a sanitizer included
# What the reader handled when this was written; fewer means that the check has gone blind.
FLOOR = {
    "archives": 250,
    "entries": 640,
    "stored": 200,
    "deflated": 150,
    "deflated (64)": 5,
    "reduced": 3,
    "decrypted": 10,
}

skipped = collections.Counter()


def list_and_compare(probe, path, archive, entries):
    """Compares the listing; the entries in the manifest's order, or None when the listing is wrong."""
    listed = run([probe, "list", path, "--format", "zip"])
    if listed is None:
        return
    got = [(e["name"], e["size"], e["packed"], e["crc"], e["dir"], e["encrypted"]) for e in listed["entries"]]
    want = [(e.text(), e.size, e.packed, f"{e.crc:08x}", e.folder, e.encrypted) for e in entries]
    if got != want or listed["status"] != 0 or listed["messages"]:
        note(archive["id"], f"listing differs: {got} instead of {want}, {listed['messages']}")
    # Where the tools found nothing to list, and where one encryption leaves the CRC out, they say nothing.
    told = [(e["size"], e["crc32"].lower()) for e in archive["entries"] if "crc32_note" not in e]
    if not set(told) <= {(e.size, f"{e.crc:08x}") for e in entries} or told and len(archive["entries"]) != len(entries):
        note(archive["id"], f"the manifest differs from the directory: {told}")
    counts["archives"] += 1
    counts["entries"] += len(entries)


def written(folder):
    """Content of every file below `folder`, by its path with the folders in upper case."""
    found = {}
    for parent, _, names in os.walk(folder):
        relative = os.path.relpath(parent, folder).upper()
        for name in names:
            key = name if relative == "." else f"{relative}/{name}"
            found[key] = pathlib.Path(parent, name).read_bytes()
    return found


def key_of(entry):
    """Where `written` has an entry."""
    parts = [part for part in entry.text().replace("\\", "/").split("/") if part != "."]
    return "/".join([part.upper() for part in parts[:-1]] + parts[-1:])


def extract(probe, path, archive, number=None):
    """Extracts into a folder of its own; status, message ids and what was written."""
    with tempfile.TemporaryDirectory() as world:
        out = os.path.join(world, "deep", "out")
        command = [probe, "extract", path, out, "--format", "zip"]
        if archive.get("password"):
            command += ["--password", archive["password"]]
        if number is not None:
            command += ["--entries", str(number)]
        answer = run(command)
        check_left(archive["id"], world)
        if answer is None:
            return None
        if answer["status"] not in (0, -1, -2, -10):
            note(archive["id"], f"unknown status {answer['status']}")
        files = written(out)
        if sum(map(len, files.values())) > OUTPUT:
            note(archive["id"], "output without end")
        return answer, files


def compare_content(archive, told, entry, answer, files):
    content = files.get(key_of(entry))
    where = f"{archive['id']}: {entry.text()}"
    if archive["doubts"][entry]:
        skipped["entry with " + archive["doubts"][entry]] += 1
        return
    if entry.method not in KINDS or not entry.safe():
        if content is not None:
            note(where, "written although it is not to be")
        return
    if content is None:
        return note(where, f"not written; {answer}")
    if "sha256" in told:
        right = hashlib.sha256(content).hexdigest() == told["sha256"]
    elif told["method"].startswith("reduce"):
        right = len(content) == entry.size and zlib.crc32(content) == entry.crc
    else:
        skipped["content that no tool produced intact"] += 1
        return
    if not right:
        return note(where, f"wrong content ({len(content)} bytes); {answer}")
    counts[KINDS[entry.method]] += 1
    counts["decrypted"] += entry.encrypted


def check_together(probe, path, archive, entries):
    answer, files = extract(probe, path, archive) or (None, None)
    if answer is None:
        return
    status = 0 if entries else -10
    for entry in entries:
        if not entry.folder:
            status = -10 if entry.method in REFUSED else 0 if 2 <= entry.method <= 5 else status
    if answer["status"] != status:
        note(archive["id"], f"status {answer['status']} instead of {status}")
    last = {key_of(entry): entry for entry in entries}
    in_the_way = {key_of(entry).upper() for entry in entries if not entry.folder}
    for told, entry in zip(archive["entries"], entries):
        if entry.folder:
            continue
        parents = key_of(entry).upper().split("/")[:-1]
        if any("/".join(parents[:depth]) in in_the_way for depth in range(1, len(parents) + 1)):
            skipped["a file (an extracted link) where a folder must go"] += 1
        elif last[key_of(entry)] is entry:
            compare_content(archive, told, entry, answer, files)
        else:
            skipped["replaced by a later entry of the same name"] += 1


def check_one_by_one(probe, path, archive, entries):
    """With encrypted entries: each for itself, because a failed password ends an extraction."""
    for number, (told, entry) in enumerate(zip(archive["entries"], entries), 1):
        if entry.folder:
            continue
        answer, files = extract(probe, path, archive, number) or (None, None)
        if answer is None:
            continue
        if not entry.encrypted:
            compare_content(archive, told, entry, answer, files)
        elif entry.method == 99 or entry.flags & 0x40 or not archive.get("password"):
            if (answer["status"], answer["messages"]) != (-1, [555]) and not files:
                note(archive["id"], f"a password that cannot be checked: {answer}")
            skipped["encryption that is not read, or no password"] += 1
        elif entry.flags & 8:
            # Such archives keep the time where the CRC is looked for.
            skipped["encrypted with the time as check byte"] += 1
        else:
            compare_content(archive, told, entry, answer, files)


def check(probe, corpus, archive):
    path = str(corpus / archive["files"][-1]["file"])
    try:
        if len(archive["files"]) > 1:
            raise zip_form.OutOfForm("on more than one disk")
        data = pathlib.Path(path).read_bytes()
        entries = zip_form.read_form(data)
    except zip_form.OutOfForm as reason:
        skipped[f"out of form: {reason}"] += 1
        listed = run([probe, "list", path, "--format", "zip"])
        answer = extract(probe, path, archive)
        if str(reason).startswith("does not start") and listed and (listed["status"], listed["entries"]) != (-2, []):
            note(archive["id"], f"not a ZIP file, but {listed}")
        counts["ended"] += listed is not None and answer is not None
        return
    archive["doubts"] = {entry: entry.doubt(data) for entry in entries}
    list_and_compare(probe, path, archive, entries)
    if any(entry.encrypted for entry in entries):
        check_one_by_one(probe, path, archive, entries)
    else:
        check_together(probe, path, archive, entries)


def main():
    probe, corpus = sys.argv[1], pathlib.Path(sys.argv[2])
    if not (corpus / "manifest.json").exists():
        print("no corpus: skipped")
        return 77
    manifest = json.loads((corpus / "manifest.json").read_text())
    for archive in manifest["archives"]:
        if archive["type"] == "zip":
            check(probe, corpus, archive)
    peak = resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss // 1024
    print("compared:", ", ".join(f"{counts[what]} {what}" for what in FLOOR), f"({counts['ended']} others ended cleanly)")
    print(f"peak memory {peak} MB")
    for reason, count in sorted(skipped.items()):
        print(f"  {count:4} {reason}")
    for fault in faults:
        print("FAULT", fault)
    return 1 if is_blind(FLOOR) or faults or peak > MEGABYTES else 0


if __name__ == "__main__":
    sys.exit(main())
