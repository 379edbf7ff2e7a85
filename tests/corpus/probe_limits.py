"""Runs the probe on archives that nobody vouches for, and keeps count of what came of it."""

import collections
import json
import os
import resource
import subprocess

SECONDS = 60
OUTPUT = 512 << 20

counts = collections.Counter()
faults = []


def note(where, what):
    faults.append(f"{where}: {what}")


def run(arguments):
    """The probe's answer, under limits on time and output; None after noting a fault."""
    def limit():
        resource.setrlimit(resource.RLIMIT_FSIZE, (OUTPUT, OUTPUT))
        resource.setrlimit(resource.RLIMIT_CPU, (SECONDS, SECONDS))

    environment = dict(os.environ, LC_ALL="C.UTF-8")
    environment.pop("PELLARION_ANSI_CODEPAGE", None)
    environment.pop("PELLARION_DRIVES", None)
    try:
        done = subprocess.run(arguments, stdout=subprocess.PIPE, stderr=subprocess.PIPE, env=environment,
                              preexec_fn=limit, timeout=SECONDS * 3, check=False)
    except subprocess.TimeoutExpired:
        return note(arguments, "does not end")
    if done.returncode != 0:
        return note(arguments, f"exit {done.returncode}: {done.stderr[-400:]!r}")
    return json.loads(done.stdout)


def check_left(where, world):
    """Notes what an extraction to `world`/deep/out has left elsewhere."""
    deep = os.path.join(world, "deep")
    if set(os.listdir(world)) - {"deep"} or os.path.isdir(deep) and set(os.listdir(deep)) - {"out"}:
        note(where, "something left the target folder")


def is_blind(floor):
    """Whether less was compared than when `floor` was written."""
    blind = {what: counts[what] for what, least in floor.items() if counts[what] < least}
    if blind:
        print("too few compared:", blind)
    return bool(blind)
