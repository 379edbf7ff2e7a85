"""What every tour needs, on whatever system the program runs: real keyboard and mouse events, waiting for conditions and
never for time to pass, the report, and what files hold."""

import hashlib
import subprocess
import sys
import tempfile
import time
import traceback
from pathlib import Path

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
            print(f"          wanted {wanted!r}\n          got    {got!r}", flush=True)

    def next_picture(self, name):
        self.pictures += 1
        return self.folder / f"{self.pictures:02}-{name}.png"

    def close(self):
        print(f"\n{self.passed} passed, {len(self.failures)} failed", flush=True)
        return 1 if self.failures or not self.passed else 0


def take_parts(setting, parts, wanted, picture):
    """Takes the parts named in `wanted`, or all without any; `picture` keeps the screen of a failed one, in a file."""
    for name, part in parts.items():
        if wanted and name not in wanted:
            continue
        try:
            part(setting)
        except Exception as error:  # the tour goes on with the next part, but has failed
            setting.report.check(False, f"{name}: {error}")
            if not isinstance(error, Failure):
                traceback.print_exc(file=sys.stdout)
            picture(setting.output / f"failed-{name}.png")
        finally:
            setting.stop()
            setting.tidy()
    return setting.report.close()
