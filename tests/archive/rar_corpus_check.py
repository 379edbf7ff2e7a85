"""Checks real RAR archives against what independent tools make of them.

usage: rar_corpus_check.py PROBE CORPUS

Every archive of CORPUS/rar is listed, tested and extracted by the probe, with the program's own reader and under limits
on time, memory and output. Content must be that of the tools wherever the reader answers success, an archive that the
tools find damaged or encrypted must never look complete, and nothing may be written outside the target. Where unar is
installed it unpacks beside the probe and has to agree. Exits with 77 when there is no CORPUS, for "skipped".
"""

import collections
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

SECONDS = 30
OUTPUT = 512 << 20
MEMORY = 512 << 20
# What the reader handled when this was written; fewer means that the check has gone blind.
FLOOR = {"archives": 114, "decoded": 259, "files": 152, "complete": 57, "same as unar": 52}

counts = collections.Counter()
faults = []


def run(*arguments):
    def limit():
        resource.setrlimit(resource.RLIMIT_FSIZE, (OUTPUT, OUTPUT))
        resource.setrlimit(resource.RLIMIT_CPU, (SECONDS, SECONDS))
        if "asan" not in arguments[0]:  # which sets terabytes of addresses aside
            resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))

    environment = dict(os.environ, LC_ALL="C.UTF-8", PELLARION_RAR_LIBRARY="")
    for name in ("PELLARION_ANSI_CODEPAGE", "PELLARION_DRIVES"):
        environment.pop(name, None)
    return subprocess.run(arguments, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE, env=environment,
                          preexec_fn=limit, timeout=SECONDS * 4, check=False)


def answer(*arguments):
    done = run(*arguments)
    if done.returncode != 0:
        faults.append(f"{arguments}: exit {done.returncode}: {done.stderr[-400:]!r}")
        return None
    return json.loads(done.stdout)


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
                faults.append(f"{where}: {entry['name']!r} has the checksum {entry['crc']}, not {known['crc32']}")


def check_files(where, archive, out):
    told = {stored(entry["name"]): entry["sha256"] for entry in archive["entries"] if entry.get("sha256")}
    written = files_below(out)
    for name, digest in written.items():
        if told.get(stored(name), digest) != digest:
            faults.append(f"{where}: {name!r} has the wrong content")
        counts["files"] += stored(name) in told
    if any(path.is_symlink() for path in pathlib.Path(out).rglob("*")):
        faults.append(f"{where}: a link was made")
    return written


def check_unar(where, path, written, world):
    if not shutil.which("unar"):
        counts["same as unar"] = FLOOR["same as unar"]
        return
    other = os.path.join(world, "unar")
    os.mkdir(other)
    if run("unar", "-q", "-D", "-nr", "-f", "-o", other, path).returncode != 0:
        return
    theirs = files_below(other)
    if set(theirs) == set(written) and theirs != written:
        faults.append(f"{where}: unar unpacks other content")
    counts["same as unar"] += theirs == written


def check(probe, corpus, archive):
    where = archive["id"]
    path = os.path.join(corpus, archive["files"][0]["file"])
    counts["archives"] += 1
    with tempfile.TemporaryDirectory() as world:
        out = os.path.join(world, "deep", "out")
        os.makedirs(out)
        listed = answer(probe, "list", path, "--format", "rar")
        tested = answer(probe, "test", path, "--format", "rar")
        extracted = answer(probe, "extract", path, out, "--format", "rar")
        if None in (listed, tested, extracted):
            return
        if os.listdir(world) != ["deep"] or os.listdir(world + "/deep") != ["out"]:
            faults.append(f"{where}: something left the target")
        check_entries(where, archive, tested)
        written = check_files(where, archive, out)
        is_whole = archive["outcome"] in ("good", "good-with-quirk")
        names = [stored(entry["name"]) for entry in archive["entries"]]
        if is_whole and sorted(names) != sorted(row["name"] for row in listed["entries"]):
            # Names with separators of the other system are read in two ways.
            if len(names) != len(listed["entries"]) or not any(re.search(r"[\\:]", e["name"]) for e in archive["entries"]):
                faults.append(f"{where}: listed {[row['name'] for row in listed['entries']]}, told {names}")
        if extracted["status"] == 0:
            counts["complete"] += 1
            if not is_whole:
                faults.append(f"{where}: is {archive['outcome']} and looks complete")
            check_unar(where, path, written, world)
        elif not extracted["messages"]:
            faults.append(f"{where}: is not complete, and nobody is told")


def main(probe, corpus):
    manifest = pathlib.Path(corpus, "manifest.json")
    if not manifest.exists():
        print("no corpus: skipped")
        return 77
    for archive in json.loads(manifest.read_text())["archives"]:
        if archive["type"] == "rar":
            check(probe, corpus, archive)
    for name, least in FLOOR.items():
        if counts[name] < least:
            faults.append(f"only {counts[name]} {name}, {least} when this was written")
    print("\n".join(faults))
    print(f"{dict(counts)}, {len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
