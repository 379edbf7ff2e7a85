"""Checks real RAR archives against what independent tools make of them.

usage: rar_corpus_check.py PROBE CORPUS

Every archive of CORPUS/rar is listed, tested and extracted by the probe, with the program's own reader and under limits
on time, memory and output. Content must be that of the tools wherever the reader answers success, an archive that the
tools find damaged or encrypted must never look complete, and nothing may be written outside the target. Where unar is
installed it unpacks beside the probe and has to agree. Exits with 77 when there is no CORPUS, for "skipped".
"""

import hashlib
import json
import os
import pathlib
import re
import resource
import shutil
import subprocess
import sys
import tempfile

from probe_limits import check_left, counts, faults, is_blind, note, run

MEGABYTES = 1500  # one hostile archive makes libarchive take a gigabyte for its filter, shadow memory comes on top
# What the reader handled when this was written; fewer means that the check has gone blind.
FLOOR = {"archives": 114, "decoded": 260, "files": 153, "complete": 58}
SAME_AS_UNAR = {"same as unar": 52}
complete = []


def stored(name):
    return name.replace("/", "\\")


def files_below(folder):
    return {
        str(path.relative_to(folder)): hashlib.sha256(path.read_bytes()).hexdigest()
        for path in pathlib.Path(folder).rglob("*")
        if path.is_file() and not path.is_symlink()
    }


def check_entries(where, archive, tested):
    told = {stored(entry["name"]): entry for entry in archive["entries"] if entry.get("sha256")}
    for entry in tested["entries"]:
        known = told.get(entry["name"])
        if known and entry["result"] == 0:
            counts["decoded"] += 1
            if known.get("crc32", entry["crc"]).lower() != entry["crc"]:
                note(where, f"{entry['name']!r} has the checksum {entry['crc']}, not {known['crc32']}")


def check_files(where, archive, out):
    told = {stored(entry["name"]): entry["sha256"] for entry in archive["entries"] if entry.get("sha256")}
    written = files_below(out)
    for name, digest in written.items():
        if told.get(stored(name), digest) != digest:
            note(where, f"{name!r} has the wrong content")
        counts["files"] += stored(name) in told
    if any(path.is_symlink() for path in pathlib.Path(out).rglob("*")):
        note(where, "a link was made")
    return written


def check_unar(where, path, written):
    with tempfile.TemporaryDirectory() as other:
        done = subprocess.run(["unar", "-q", "-D", "-nr", "-f", "-o", other, path], stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=120, check=False)
        if done.returncode != 0:
            return
        theirs = files_below(other)
    if set(theirs) == set(written) and theirs != written:
        note(where, "unar unpacks other content")
    counts["same as unar"] += theirs == written


def check(probe, corpus, archive):
    where = archive["id"]
    path = os.path.join(corpus, archive["files"][0]["file"])
    counts["archives"] += 1
    with tempfile.TemporaryDirectory() as world:
        out = os.path.join(world, "deep", "out")
        os.makedirs(out)
        listed = run([probe, "list", path, "--format", "rar"])
        tested = run([probe, "test", path, "--format", "rar"])
        extracted = run([probe, "extract", path, out, "--format", "rar"])
        if None in (listed, tested, extracted):
            return
        check_left(where, world)
        check_entries(where, archive, tested)
        written = check_files(where, archive, out)
        is_whole = archive["outcome"] in ("good", "good-with-quirk")
        names = sorted(stored(entry["name"]) for entry in archive["entries"])
        rows = sorted(row["name"] for row in listed["entries"])
        # Names with separators of the other system are read in two ways.
        is_clear = not any(re.search(r"[\\:]", entry["name"]) for entry in archive["entries"])
        if is_whole and (rows != names if is_clear else len(rows) != len(names)):
            note(where, f"listed {rows}, told {names}")
        if extracted["status"] == 0:
            counts["complete"] += 1
            if not is_whole:
                note(where, f"is {archive['outcome']} and looks complete")
            complete.append((where, path, written))
        elif not extracted["messages"]:
            note(where, "is not complete, and nobody is told")


def main(probe, corpus):
    manifest = pathlib.Path(corpus, "manifest.json")
    if not manifest.exists():
        print("no corpus: skipped")
        return 77
    os.environ["PELLARION_RAR_LIBRARY"] = ""
    for archive in json.loads(manifest.read_text())["archives"]:
        if archive["type"] == "rar":
            check(probe, corpus, archive)
    peak = resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss >> 10
    blind = is_blind(FLOOR)
    if shutil.which("unar"):
        for archive in complete:
            check_unar(*archive)
        blind = is_blind(SAME_AS_UNAR) or blind
    print("\n".join(faults))
    print(f"{dict(counts)}, {len(faults)} faults, peak memory {peak} MB")
    return 1 if faults or blind or peak > MEGABYTES else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
