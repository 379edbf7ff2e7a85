#!/usr/bin/env python3
"""Whole programs with windows beside ours, on the display that DISPLAY names: a file manager that shows the same
folder of 100,000 files, and a bare window that starts.

Both sides are measured alike, from outside: from the key or the start on, until the program has gone quiet. What
passes until then is the time, what its threads ran for is the processor time.

    explorer_peers.py PROGRAM_FOLDER BARE_WINDOW PICTURES
"""

import os
import shutil
import signal
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

FILES = 100_000
RUNS = 7
QUIET = 0.7  # seconds without work
SPECK = 0.003  # seconds of work that are none: a blinking caret


def worked(pid):
    """Seconds that all threads of a process have run."""
    total = 0
    for task in Path(f"/proc/{pid}/task").iterdir():
        try:
            total += int((task / "schedstat").read_text().split()[0])
        except OSError:
            pass  # a thread that just ended
    return total / 1e9


def until_quiet(process, began, before=0.0, patience=120):
    """Waits until a program rests; answers the seconds from `began` to its last work, and the seconds it worked."""
    last, last_at = worked(process.pid), time.monotonic()
    while time.monotonic() - last_at < QUIET:
        if process.poll() is not None:
            sys.exit(f"{process.args[0]} ended by itself, status {process.returncode}")
        if time.monotonic() - began > patience:
            sys.exit(f"{process.args[0]} does not come to rest")
        time.sleep(0.005)
        now = worked(process.pid)
        if now - last > SPECK:
            last, last_at = now, time.monotonic()
    return last_at - began, last - before


def xdotool(*words):
    return subprocess.run(["xdotool", *map(str, words)], check=True, capture_output=True, text=True).stdout


def picture(path):
    subprocess.run(["import", "-silent", "-window", "root", path], check=True)
    return path.read_bytes()


class Side:
    """One program: how it is started, and the keys that lead it to the full folder."""

    def __init__(self, name, command, environment, keys=()):
        self.name, self.command, self.environment, self.keys = name, command, environment, keys

    def start(self):
        began = time.monotonic()
        self.process = subprocess.Popen(
            [str(word) for word in self.command], env={**os.environ, **self.environment}, stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL, start_new_session=True,
        )
        times = until_quiet(self.process, began)
        xdotool("search", "--onlyvisible", "--pid", self.process.pid)  # fails without a window
        return times

    def stop(self):
        os.killpg(self.process.pid, signal.SIGKILL)
        self.process.wait()

    def startup(self, shown):
        times = self.start()
        picture(shown)
        self.stop()
        return times

    def show_folder(self, shown):
        self.start()
        *way, last = self.keys
        for kind, text in way:
            xdotool(kind, text)
            until_quiet(self.process, time.monotonic())
        before_picture, before = picture(shown), worked(self.process.pid)
        began = time.monotonic()
        xdotool(*last)
        times = until_quiet(self.process, began, before)
        if picture(shown) == before_picture:
            sys.exit(f"{self.name} shows nothing new")
        memory = next(line for line in open(f"/proc/{self.process.pid}/status") if line.startswith("VmRSS"))
        self.stop()
        return *times, int(memory.split()[1]) / 1024


def compare(what, limit, ours, peer, measure):
    """Runs both sides in turn and prints the medians."""
    measure(ours), measure(peer)
    rounds = [(measure(ours), measure(peer)) for _ in range(RUNS)]
    our, their = ([statistics.median(values) for values in zip(*side)] for side in zip(*rounds))
    for side, values in ((ours, our), (peer, their)):
        memory = f", holding {values[2]:.0f} MiB" if len(values) > 2 else ""
        print(f"{what:24} {values[0] * 1e3:9.0f} ms, {values[1] * 1e3:.0f} ms of the processor{memory}: {side.name}")
    for clock, number in (("", 0), (" (processor)", 1)):
        print(f"RATIO {what}{clock} vs {peer.name} {their[number] / our[number]:.2f}   limit {limit}", flush=True)


def make_files(folder):
    folder.mkdir()
    kinds = "txt pdf jpg png doc odt xls csv zip cab rar html cpp h mp3 avi xml log enc bak".split()
    for number in range(FILES):
        path = folder / f"Holiday notes {number * 7919 % FILES}.{kinds[number % len(kinds)]}"
        os.close(os.open(path, os.O_CREAT | os.O_WRONLY, 0o644))
        os.truncate(path, number * 37)
        os.utime(path, (1_000_000_000 + number * 5003, 1_000_000_000 + number * 5003))


def main():
    program, bare, pictures = (Path(word).resolve() for word in sys.argv[1:])
    pictures.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory(dir="/dev/shm" if os.path.isdir("/dev/shm") else None) as place:
        place = Path(place)
        make_files(place / "many")
        for name in ("home", "computer", "stick", "empty"):
            (place / name).mkdir()
        shutil.copytree(program, place / "stick" / "Pellarion")
        settings = place / "home" / ".config" / "pcmanfm" / "default"
        settings.mkdir(parents=True)
        (settings / "pcmanfm.conf").write_text("[ui]\nview_mode=list\nwin_width=821\nwin_height=821\n")
        home = {"HOME": str(place / "home"), "XDG_CONFIG_HOME": str(place / "home/.config")}
        command = [place / "stick/Pellarion/pellarion"]

        def drives(stick):
            table = f"C=fixed:{place}/computer;E=removable:{stick};P=fixed:{place}/stick"
            return {**home, "PELLARION_DRIVES": table}

        explorer = Side("explorer", command, drives(place / "stick"))
        for peer in (Side("bare window", [bare], home), Side("window with a text", [bare, "Please", "wait"], home)):
            compare("start to a filled window", "0.67", explorer, peer, lambda side: side.startup(pictures / f"start-{side.name}.png"))
        compare(
            "show 100,000 files", "1.00",
            Side("explorer", command, drives(place / "many"), [("key", "Down")]),
            Side(
                "pcmanfm", ["pcmanfm", place / "empty"], home,
                [("key", "ctrl+l"), ("type", f"{place}/many"), ("key", "Return")],
            ),
            lambda side: side.show_folder(pictures / f"folder-{side.name}.png"),
        )


main()
