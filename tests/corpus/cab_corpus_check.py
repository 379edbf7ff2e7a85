"""Checks real cabinets against what independent tools make of them.

usage: cab_corpus_check.py PROBE CORPUS

Every cabinet of CORPUS/cab is listed and extracted by the probe under limits on time, memory and output. A file that
the tools decode must be listed with its name and size and come out with its content, unless it is one of those that
this reader passes over: files whose names leave the target, parts of sets whose other cabinets are not supplied, and
cabinets that do not begin where their file does. Everything else must end with an error of the reader's table, and
nothing may be written outside the target. Exits with 77 when there is no CORPUS, for "skipped".
"""

import hashlib
import json
import os
import pathlib
import re
import sys
import tempfile

from probe_limits import check_left, counts, faults, is_blind, run

ERRORS = {0, 2, 3, 4, 5, 8, 13, 23, 30}
# What the reader handled when this was written; fewer means that the check has gone blind.
FLOOR = {"cabinets": 45, "files": 75, "contents": 55, "refused": 20, "unsafe": 15}


def stays(name):
    """Whether a stored name stays in the target folder, by the rule of the program's own."""
    parts = re.split(r"[\\/]", name)
    good = all(p and p != ".." and not p.endswith((".", " ")) or p == "." for p in parts)
    return good and ":" not in name and not any(ord(c) < 32 for c in name)


def told_entries(archive):
    """Name as stored (None when its code page is unknown), size and SHA-256 of what the tools decode."""
    for entry in archive["entries"]:
        known = "non-ascii-names-unflagged" not in archive["kinds"]
        yield entry.get("stored_name", entry["name"]) if known else None, entry["size"], entry.get("sha256")


def check(probe, corpus, archive, file):
    path = os.path.join(corpus, file["file"])
    where = file["file"]
    counts["cabinets"] += 1
    listed = run([probe, "list", path, "--format", "cab"])
    with tempfile.TemporaryDirectory() as world:
        out = os.path.join(world, "deep", "out")
        answer = run([probe, "extract", path, out, "--format", "cab"])
        if listed is None or answer is None:
            return
        for result in (listed, answer):
            if result["status"] not in ERRORS or bool(result["status"]) != bool(result["error"]):
                faults.append(f"{where}: {result['status']} {result['error']!r}")
        check_left(where, world)
        base = os.path.join(out, pathlib.Path(path).stem)
        compare(archive, where, listed, answer, base)


def compare(archive, where, listed, answer, base):
    rows = [(row["folder"] + row["name"], row["size"]) for row in listed["entries"]]
    if answer["status"]:
        counts["refused"] += 1
    outside = {"embedded", "continued-from-previous", "continues-in-next"} & set(archive["kinds"])
    if "continues-in-next" in outside and len(archive["files"]) > 1:
        return compare_set(archive, where, rows, base)
    if outside or archive["outcome"] not in ("good", "good-with-quirk"):
        if outside and "embedded" in outside and answer["status"] != 13:
            faults.append(f"{where}: no cabinet stands at its start, yet {answer['status']}")
        return None
    told = list(told_entries(archive))
    if listed["status"] or len(rows) != len(told):
        return faults.append(f"{where}: listed {rows} ({listed['error']}), told {told}")
    for (name, size), (told_name, told_size, digest) in zip(rows, told):
        if size != told_size or told_name is not None and name != told_name:
            faults.append(f"{where}: listed {name!r} {size}, told {told_name!r} {told_size}")
        counts["files"] += 1
        compare_content(where, name, digest, base)
    if answer["status"]:
        faults.append(f"{where}: {answer['error']}")
    return None


def compare_content(where, name, digest, base):
    target = pathlib.Path(base, *re.split(r"[\\/]", name))
    if not stays(name):
        counts["unsafe"] += 1
        return
    if len("C:" + str(target)) >= 260:
        counts["too long"] += 1
        return
    if not target.is_file():
        faults.append(f"{where}: {name!r} is not written")
    elif digest and hashlib.sha256(target.read_bytes()).hexdigest() != digest:
        faults.append(f"{where}: {name!r} has the wrong content")
    else:
        counts["contents"] += 1


def compare_set(archive, where, rows, base):
    """Of a set, each cabinet gives the files that lie in it alone."""
    told = {name: (size, digest) for name, size, digest in told_entries(archive)}
    for name, size in rows:
        if told.get(name, (None,))[0] != size:
            faults.append(f"{where}: {name!r} {size} is not in the set")
        elif os.path.exists(os.path.join(base, name)):
            counts["files of sets"] += 1
            compare_content(where, name, told[name][1], base)


def main(probe, corpus):
    manifest = os.path.join(corpus, "manifest.json")
    if not os.path.exists(manifest):
        print("no corpus: skipped")
        return 77
    with open(manifest, encoding="utf-8") as text:
        archives = [a for a in json.load(text)["archives"] if a["type"] == "cab"]
    for archive in archives:
        for file in archive["files"]:
            check(probe, corpus, archive, file)
    print("\n".join(faults))
    print(f"{dict(counts)}, {len(faults)} faults")
    return 1 if is_blind(FLOOR) or faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
