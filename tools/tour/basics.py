"""What every tour needs, on whatever system the program runs: real keyboard and mouse events, waiting for conditions and
never for time to pass, the report, and what files hold."""

import hashlib
import os
import shutil
import subprocess
import sys
import tempfile
import time
import traceback
from pathlib import Path
from urllib.parse import unquote

sys.path.insert(0, str(Path(__file__).resolve().parents[1]))

import demo_stick  # noqa: E402

PATIENCE = 30.0


class Failure(Exception):
    """A check that did not hold, or something that did not come in time."""


def wait_for(what, condition, patience=PATIENCE):
    """Asks `condition` again until its answer is true, and returns that answer."""
    end = time.monotonic() + patience
    while True:
        answer = condition()
        if answer:
            return answer
        if time.monotonic() > end:
            raise Failure(f"waited {patience:.0f} s in vain for {what}")
        time.sleep(0.03)


def xdotool(*arguments):
    subprocess.run(["xdotool", *map(str, arguments)], check=True, stdout=subprocess.DEVNULL)


def press(*keys):
    """Keys by their X names, such as "Escape", "alt+F4"."""
    xdotool("key", "--clearmodifiers", *keys)


def write(text):
    xdotool("type", "--clearmodifiers", "--delay", "5", "--", text)


def drag(start, end, steps=8):
    """Moves the mouse from one point to another with its button held."""
    xdotool("mousemove", *start, "mousedown", 1)
    for i in range(1, steps + 1):
        xdotool("mousemove", *(a + (b - a) * i // steps for a, b in zip(start, end)))
    xdotool("mouseup", 1)


DEFAULT_SETTINGS = (
    "[Setting]\r\nLanguage=0409\r\nCharset=0\r\n\r\n[Size]\r\nHeight=12315\r\nWidth=12315\r\n\r\n[Grid]\r\n"
    "ColWidth0=1800.00\r\nColWidth1=799.93\r\nColWidth2=1440.00\r\nColWidth3=2000.12\r\n\r\n[VSplitter]\r\nLeft=4570\r\n"
    "\r\n[Skin]\r\nSkinFile=Skins\\default.skf\r\n"
).encode()


def digests(folder):
    """SHA-256 of every file below a folder, by relative path."""
    return {
        str(path.relative_to(folder)): hashlib.sha256(path.read_bytes()).hexdigest()
        for path in sorted(folder.rglob("*")) if path.is_file()
    }


def unpacked(cabinet):
    """SHA-256 of every file in a cabinet, as an independent program reads it."""
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run(["cabextract", "-q", "-d", folder, cabinet], check=True, stdout=subprocess.DEVNULL)
        return digests(Path(folder))


class Report:
    """Prints each step with what was checked; remembers whether anything failed."""

    def __init__(self, folder):
        self.folder = Path(folder)
        self.passed = 0
        self.failures = []
        self.pictures = 0

    def step(self, title):
        print(f"\n{title}", flush=True)

    def check(self, holds, what):
        if holds:
            self.passed += 1
            print(f"  ok      {what}", flush=True)
        else:
            self.failures.append(what)
            print(f"  FAILED  {what}", flush=True)
        return bool(holds)

    def equal(self, got, wanted, what):
        if not self.check(got == wanted, what):
            print(f"          wanted {wanted!r:.1000}\n          got    {got!r:.1000}", flush=True)

    def next_picture(self, name):
        self.pictures += 1
        return self.folder / f"{self.pictures:02}-{name}.png"

    def picture(self, program, name, windows=None):
        """Of the windows, or of all that the program has."""
        path = self.next_picture(name)
        screenshot(path, [window.rectangle for window in windows or program.windows()])
        print(f"  picture {path.name}", flush=True)
        return path

    def close(self):
        print(f"\n{self.passed} passed, {len(self.failures)} failed", flush=True)
        return 1 if self.failures or not self.passed else 0


class Process:
    """A started program."""

    process = None

    @property
    def alive(self):
        return self.process.poll() is None

    def ended(self, patience=PATIENCE):
        """Waits for the program's end and returns its exit status."""
        wait_for("the program's end", lambda: not self.alive, patience)
        return self.process.returncode

    def kill(self):
        if self.alive:
            self.process.kill()
            self.process.wait()


class Setting:
    """What the parts share: the folders, the report, and how the program is started. `computer` is its drive C."""

    def __init__(self, program, output, computer, report):
        self.output, self.computer, self.report = output, computer, report
        self.stick = output / "stick"
        self.opened = output / "opened.txt"
        self.explorer = None
        self.opened.unlink(missing_ok=True)
        shutil.rmtree(self.stick, ignore_errors=True)
        for picture in output.glob("*.png"):
            picture.unlink()
        demo_stick.fill(self.stick, program)
        # Documents "open" in a program that writes down their paths.
        opener = output / "bin" / "xdg-open"
        opener.parent.mkdir(exist_ok=True)
        opener.write_text(f'#!/bin/sh\nprintf "%s\\n" "$1" >>"{self.opened}"\n')
        opener.chmod(0o755)
        self.path = f"{opener.parent}:{os.environ['PATH']}"
        self.program_folder = self.stick / "Program" / "Pellarion"
        self.settings = self.program_folder / "setting.ini"

    def stop(self):
        if self.explorer:
            self.explorer.program.kill()
            self.explorer = None

    def tidy(self):
        """What a part has unpacked beside the archives would be in the way of the next."""
        for folder in (self.stick / "Archives").iterdir():
            if folder.is_dir():
                shutil.rmtree(folder)

    def documents_opened(self):
        """What was handed to a document's program."""
        lines = self.opened.read_text().splitlines() if self.opened.exists() else []
        return [unquote(line).removeprefix("file://") for line in lines]

    def text_libraries(self):
        """Copies of the text libraries on the computer's drive."""
        folder = self.computer / "Pellarion" / "temp"
        return sorted(path.name for path in folder.iterdir()) if folder.exists() else []

    def setting_values(self):
        """The settings file's values by their keys."""
        lines = self.settings.read_text(encoding="latin-1").splitlines()
        return dict(line.split("=", 1) for line in lines if "=" in line)


def part_list():
    """The parts of a tour by their names, in order, and the decorator that adds one."""
    parts = {}

    def part(function):
        parts[function.__name__.replace("_", "-")] = function
        return function

    return parts, part


def screenshot(path, rectangles=()):
    """A picture of the part of the screen that these windows and their frames take; of all of it without any."""
    crop = []
    if rectangles:
        left, top = (max(0, min(r[i] for r in rectangles) - (8, 30)[i]) for i in (0, 1))
        right, bottom = (max(r[i] + r[i + 2] for r in rectangles) + 8 for i in (0, 1))
        crop = ["-crop", f"{right - left}x{bottom - top}+{left}+{top}", "+repage"]
    subprocess.run(["import", "-silent", "-window", "root", *crop, path], check=True)


def take_parts(setting, parts, wanted):
    """Takes the parts named in `wanted`, or all without any; keeps a picture of the screen of one that fails."""
    for name, part in parts.items():
        if wanted and name not in wanted:
            continue
        try:
            part(setting)
        except Exception as error:  # the tour goes on with the next part, but has failed
            setting.report.check(False, f"{name}: {error}")
            if not isinstance(error, Failure):
                traceback.print_exc(file=sys.stdout)
            screenshot(setting.output / f"failed-{name}.png")
        finally:
            setting.stop()
            setting.tidy()
    return setting.report.close()
