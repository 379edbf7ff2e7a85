"""Drives the Windows program under Wine by mouse and keyboard, on a display of its own.

No bus tells of its controls there. What the windows hold is read as another program gets it: the list through the
clipboard, a message box by the copy that it offers, windows by their titles, buttons by the icons on them.
"""

import os
import subprocess
from urllib.parse import unquote

from basics import Failure, Process, press, wait_for, xdotool

CLOSE_ENOUGH = 6  # of 255: smooth edges are drawn a little differently over another ground


def output_of(*command):
    return subprocess.run([str(part) for part in command], capture_output=True, text=True).stdout


def pixels(kind, *arguments):
    """Width, height and bytes of a picture that ImageMagick makes, 3 or 4 bytes for a pixel."""
    form = {"rgb": "rgb:-", "rgba": "rgba:-"}[kind]
    size = subprocess.run(["convert", *arguments, "-format", "%w %h", "info:"], capture_output=True, text=True, check=True)
    width, height = map(int, size.stdout.split())
    return width, height, subprocess.run(["convert", *arguments, "-depth", "8", form], capture_output=True, check=True).stdout


class Picture:
    """An icon, to be found on the screen: by its opaque pixels, most telling first."""

    def __init__(self, path):
        width, height, data = pixels("rgba", str(path))
        self.width, self.height = width, height
        points = [(x, y, data[i:i + 3]) for y in range(height) for x in range(width) if data[(i := 4 * (y * width + x)) + 3] == 255]
        ends, self.points = points[:: max(1, len(points) // 8)], points
        self.points = ends + points

    def places(self, screen):
        """Where it stands, left upper corners from the top down."""
        width, height, data = screen
        rows = range(height - self.height + 1)

        def is_at(left, top):
            for x, y, colour in self.points:
                at = 3 * ((top + y) * width + left + x)
                if any(abs(a - b) > CLOSE_ENOUGH for a, b in zip(data[at:at + 3], colour)):
                    return False
            return True

        return [(x, y) for y in rows for x in range(width - self.width + 1) if is_at(x, y)]


class Window:
    def __init__(self, identity):
        self.identity = identity

    @property
    def title(self):
        return output_of("xdotool", "getwindowname", self.identity).rstrip("\n")

    @property
    def rectangle(self):
        lines = output_of("xwininfo", "-id", self.identity).splitlines()
        values = {name.strip(): value for name, _, value in (line.partition(":") for line in lines)}
        try:
            return tuple(int(values[name]) for name in ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height"))
        except KeyError:  # gone meanwhile
            return 0, 0, 0, 0

    def click(self, at, button=1):
        """At a point given in parts of its width and height."""
        left, top, width, height = self.rectangle
        xdotool("mousemove", left + int(width * at[0]), top + int(height * at[1]), "click", button)

    def find(self, icon):
        """The icons of that picture, as middles on the screen."""
        left, top, width, height = self.rectangle
        shot = pixels("rgb", "x:" + self.identity)
        return [(left + x + icon.width // 2, top + y + icon.height // 2) for x, y in icon.places(shot)]


class Clipboard:
    """What the program puts on it, as other programs of the display get it."""

    def copy(self, *keys):
        """Presses the keys that copy, and answers what is copied: paths of files, or a text."""
        mark = f"nothing copied {os.urandom(4).hex()}"
        subprocess.run(["xclip", "-selection", "clipboard"], input=mark, text=True, check=True)
        wait_for("the clipboard", lambda: self._get("UTF8_STRING") == mark)
        for _ in range(8):  # a program that is still busy drops the keys
            press(*keys)
            try:
                return wait_for(f"{keys} to copy", lambda: self._other_than(mark), 4)
            except Failure as error:
                failure = error
        raise failure

    def _other_than(self, mark):
        if "text/uri-list" in self._get("TARGETS"):
            return self._get("text/uri-list")
        text = self._get("UTF8_STRING")
        return text if text and text != mark else None

    def _get(self, form):
        command = ["timeout", "5", "xclip", "-selection", "clipboard", "-o", "-t", form]
        return subprocess.run(command, capture_output=True).stdout.decode(errors="replace")


class Program(Process):
    """The program in its drive of Wine, with the windows that belong to it and to the shell that it calls."""

    def __init__(self, path, environment):
        self.process = subprocess.Popen(["wine64", path], env=environment, stdin=subprocess.DEVNULL)
        self.clipboard = Clipboard()

    def windows(self):
        """From the lowest to the uppermost."""
        answer = output_of("xprop", "-root", "_NET_CLIENT_LIST_STACKING").partition("#")[2]
        return [Window(identity.strip()) for identity in answer.split(",") if identity.strip()]

    def titles(self):
        return [window.title for window in self.windows()]

    def active_title(self):
        return output_of("xdotool", "getactivewindow", "getwindowname").rstrip("\n")

    def window(self, title, patience=30):
        """Waits for a window of that title to have the keyboard."""

        def look():
            if not self.alive:
                raise Failure(f"the program ended where the window {title!r} was due")
            window = next((window for window in self.windows() if window.title == title), None)
            if window and not self.active_title():
                # Wine may leave the display without an active window when two close at once.
                output_of("xdotool", "windowactivate", window.identity)
            return self.active_title() == title and window

        return wait_for(f"the window {title!r}, not {self.titles()}", look, patience)

    def gone(self, title, patience=60):
        wait_for(f"{title!r} to close", lambda: title not in self.titles(), patience)

    def message(self, title):
        """The text of a message box: waits for it."""
        self.window(title)
        parts = self.clipboard.copy("ctrl+c").replace("\r", "").split("---------------------------\n")
        return " ".join(parts[2].split())

    def answer(self, title, key="Return"):
        press(key)
        self.gone(title)

    def paths(self, *keys):
        """Paths of files, by what the keys copy: below the folder of drives."""
        lines = self.clipboard.copy(*keys).split()
        return [unquote(line).partition("/dosdevices/")[2].replace("/", "\\") for line in lines]
