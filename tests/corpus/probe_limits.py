"""Runs the probe on archives that nobody vouches for, under limits on time and output."""

import json
import os
import resource
import subprocess

SECONDS = 60
OUTPUT = 512 << 20


class Broken(Exception):
    """The probe has crashed, hangs, or leaves its limits."""


def run(*arguments):
    """The probe's answer; raises Broken where there is none."""
    def limit():
        resource.setrlimit(resource.RLIMIT_FSIZE, (OUTPUT, OUTPUT))
        resource.setrlimit(resource.RLIMIT_CPU, (SECONDS, SECONDS))

    environment = dict(os.environ, LC_ALL="C.UTF-8", PELLARION_RAR_LIBRARY="")
    environment.pop("PELLARION_ANSI_CODEPAGE", None)
    environment.pop("PELLARION_DRIVES", None)
    try:
        done = subprocess.run(arguments, stdout=subprocess.PIPE, stderr=subprocess.PIPE, env=environment,
                              preexec_fn=limit, timeout=SECONDS * 3, check=False)
    except subprocess.TimeoutExpired:
        raise Broken(f"{arguments[1]} does not end") from None
    if done.returncode != 0:
        raise Broken(f"{arguments[1]}: exit {done.returncode}: {done.stderr[-400:]!r}")
    return json.loads(done.stdout)
