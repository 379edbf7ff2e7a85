"""Checks that the programs of both systems agree: on settings, folder marks, cabinets and real archives.

usage: cross_check.py LINUX_BUILD WINDOWS_BUILD [CORPUS]

Both builds have the probe and the exchange program; those for Windows are run by Wine (wine64, in the environment
given). Every comparison is one check; the last line is "N passed, N failed".
"""

import collections
import hashlib
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import time

SECONDS = 300
PAGES = ("65001", "1252")
START = int(time.time())
passed = 0
faults = []


class System:
    """One of the two builds, and how to run its programs."""

    def __init__(self, name, build, runner, suffix):
        self.name, self.build, self.runner, self.suffix = name, pathlib.Path(build).resolve(), runner, suffix

    def run(self, program, *arguments, page="65001", told=None):
        environment = dict(os.environ, TZ="Europe/Berlin", LC_ALL="C.UTF-8", PELLARION_ANSI_CODEPAGE=page)
        environment.pop("PELLARION_DRIVES", None)
        done = subprocess.run([*self.runner, str(self.build / (program + self.suffix)), *map(str, arguments)],
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, env=environment, timeout=SECONDS,
                              input=told, check=False)
        if done.returncode != 0:
            raise RuntimeError(f"{self.name}: {program} {arguments}: {done.returncode} {done.stderr[-400:]!r}")
        return done.stdout.replace(b"\r\n", b"\n")

    def probe(self, *arguments):
        return json.loads(self.run("tools/probe", *arguments))

    def probe_all(self, commands):
        """The answers to many commands: of one process where programs start slowly, else of one process each."""
        if not self.runner:
            return [self.probe(*command) for command in commands]
        lines = "".join("\t".join(map(str, command)) + "\n" for command in commands)
        return [json.loads(line) for line in self.run("tools/probe", "batch", told=lines.encode()).splitlines()]


def check(what, good, told=""):
    global passed
    if good:
        passed += 1
    else:
        faults.append(what)
        print(f"differs: {what} {told}", flush=True)


def tree_of(folder):
    """Content, moment and right to write of every file below a folder, and its folders."""
    tree = {}
    for path in sorted(pathlib.Path(folder).rglob("*")):
        name = str(path.relative_to(folder))
        if path.is_dir():
            tree[name] = "folder"
        else:
            digest = hashlib.sha256(path.read_bytes()).hexdigest()
            moment = int(path.stat().st_mtime)
            tree[name] = (digest, moment if moment < START else "now", bool(path.stat().st_mode & 0o200))
    return tree


def check_shared_files(systems):
    """Each system writes settings and marks, which both read."""
    expected = b"0409\n0\n1800.00\n12 315 \xc3\xbc\n0409\nmarked\nmarked\nmarked\nnot marked\nnot marked\n"
    for page in PAGES:
        written = []
        for writer in systems:
            with tempfile.TemporaryDirectory() as folder:
                writer.run("tests/cross/exchange", "write", folder, page=page)
                for reader in systems:
                    told = reader.run("tests/cross/exchange", "read", folder, page=page)
                    check(f"{reader.name} reads what {writer.name} wrote, page {page}", told == expected, told)
                written.append({file.name: file.read_bytes() for file in pathlib.Path(folder).iterdir()})
        check(f"the files are the same bytes, page {page}", written[0] == written[1], written)


def make_tree(folder):
    """Files of several sizes, moments and names."""
    contents = {"a.txt": b"text " * 9000, "empty": b"", "Fotos/K\u00e4se.jpg": bytes(range(256)) * 700,
                "Fotos/\u65e5\u672c/x": b"x" * 70000, "locked": b"mine"}
    for number, (name, content) in enumerate(contents.items()):
        path = pathlib.Path(folder, name)
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)
        os.utime(path, (1120000000 + number * 15552000,) * 2)  # summer and winter
        os.chmod(path, 0o444 if name == "locked" else 0o644)


def check_cabinets(systems):
    """What one packs the other extracts; both make the same cabinet of the same files."""
    with tempfile.TemporaryDirectory() as world:
        source = os.path.join(world, "source")
        make_tree(source)
        cabinets = []
        for packer in systems:
            folder = os.path.join(world, packer.name)
            os.mkdir(folder)
            answer = packer.probe("pack", source, folder)
            cabinet = next(pathlib.Path(folder).glob("*.cab"))
            cabinets.append(cabinet.read_bytes())
            check(f"{packer.name} packs", not answer["status"], answer)
            for reader in systems:
                out = os.path.join(world, "out", packer.name, reader.name)
                reader.probe("extract", cabinet, out)
                told, wanted = tree_of(os.path.join(out, cabinet.stem)), tree_of(source)
                for facts in (told, wanted):  # an extracted file is the user's own to write
                    facts.update({name: fact[:2] for name, fact in facts.items() if fact != "folder"})
                check(f"{reader.name} extracts what {packer.name} packed", told == wanted, told)
        check("both make the same cabinet", cabinets[0] == cabinets[1])


def twins(tree):
    """Names that are one on Windows."""
    folded = collections.Counter(name.casefold() for name in tree)
    return {name for name in tree if folded[name.casefold()] > 1}


def check_corpus(systems, corpus):
    """Every archive is listed and extracted by both."""
    archives = sorted(path for path in pathlib.Path(corpus).resolve().glob("*/*/*") if path.is_file())
    different = 0
    with tempfile.TemporaryDirectory() as world:
        answers = []
        for system in systems:
            commands = []
            for number, path in enumerate(archives):
                form = ("--format", path.parts[-3])
                commands += [("list", path, *form),
                             ("extract", path, os.path.join(world, system.name, str(number), "out"), *form)]
            answers.append(system.probe_all(commands))
        for number, path in enumerate(archives):
            listed, extracted = ([both[2 * number + step] for both in answers] for step in (0, 1))
            trees = [tree_of(os.path.join(world, system.name, str(number))) for system in systems]
            check(f"{path.name}: listed alike", listed[0] == listed[1], listed)
            # What Windows cannot hold is told there, and all else is the same.
            lost = twins(trees[0]) | {name for name in trees[0] if set(name) & set('<>"|?*')}
            if lost:
                different += 1
                trees = [{name: fact for name, fact in tree.items() if name not in lost} for tree in trees]
            else:
                check(f"{path.name}: answered alike", extracted[0] == extracted[1], extracted)
            check(f"{path.name}: extracted alike", trees[0] == trees[1],
                  [sorted(set(tree.items()) - set(other.items()), key=str) for tree, other in (trees, trees[::-1])])
    check("few archives have names of one system alone", len(archives) > 400 and different < 12, different)


def main(arguments):
    systems = (System("linux", arguments[0], [], ""), System("windows", arguments[1], ["wine64"], ".exe"))
    check_shared_files(systems)
    check_cabinets(systems)
    if len(arguments) > 2 and os.path.isdir(arguments[2]):
        check_corpus(systems, arguments[2])
    print(f"{passed} passed, {len(faults)} failed")
    return 1 if faults or not passed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
