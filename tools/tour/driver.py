"""Drives a program on a display of its own, the way a person does: it looks through the accessibility bus, acts by
real mouse and keyboard events, and waits for conditions, never for time to pass.

Needs DISPLAY and a session bus of its own (see scripts/tour).
"""

import os
import subprocess
import sys

import basics
import gi

gi.require_version("Atspi", "2.0")
from basics import Failure, wait_for, xdotool  # noqa: E402
from gi.repository import Atspi, GLib  # noqa: E402

# What only holds or parts other controls, or shows what another one is; the bus knows no kind for the grip in the
# corner of a window; a label's name is its text, and without one there is nothing to read.
NAMELESS = {
    "filler", "panel", "separator", "scroll bar", "scroll pane", "layered pane", "viewport", "splitter", "menu bar", "frame",
    "unknown", "label",
}


class Node:
    """One control, as the accessibility bus tells of it."""

    def __init__(self, program, accessible):
        self.program = program
        self.accessible = accessible

    def _ask(self, question, otherwise):
        try:
            return question()
        except GLib.Error:  # gone meanwhile
            return otherwise

    @property
    def role(self):
        return self._ask(self.accessible.get_role_name, "")

    @property
    def name(self):
        return self._ask(self.accessible.get_name, "") or ""

    def has(self, state):
        """Whether it has a state such as "showing", "selected", "checked", "enabled"."""
        wanted = getattr(Atspi.StateType, state.upper())
        return self._ask(lambda: self.accessible.get_state_set().contains(wanted), False)

    @property
    def children(self):
        count = self._ask(self.accessible.get_child_count, 0)
        found = [self._ask(lambda i=i: self.accessible.get_child_at_index(i), None) for i in range(count)]
        return [Node(self.program, child) for child in found if child]

    @property
    def rectangle(self):
        """Left, top, width and height in pixels of the screen; empty when it is not on it."""
        if "Component" not in self.accessible.get_interfaces():
            return 0, 0, 0, 0
        area = self._ask(lambda: self.accessible.get_extents(Atspi.CoordType.SCREEN), None)
        if area is None:
            return 0, 0, 0, 0
        return tuple(round(value * self.program.scale) for value in (area.x, area.y, area.width, area.height))

    @property
    def text(self):
        """The text of an edit field or label; the name where there is no more than that."""
        if "Text" not in self.accessible.get_interfaces():
            return self.name
        return self._ask(lambda: Atspi.Text.get_text(self.accessible, 0, -1), "")

    def find(self, role=None, name=None):
        """The first visible control below with that role and that name; None when there is none."""
        return next(self.find_all(role, name), None)

    def find_all(self, role=None, name=None, depth=12):
        for child in self.children:
            if (role is None or child.role == role) and (name is None or child.name == name) and child.has("showing"):
                yield child
            if depth and child.role not in ("table", "tree", "tree table"):
                yield from child.find_all(role, name, depth - 1)

    def get(self, role=None, name=None):
        """As find, but waits for it."""
        return wait_for(f"{role or 'a control'} {name or ''!r}", lambda: self.find(role, name))

    def unnamed(self):
        """What a screen reader could only call by its kind: controls below, itself included, that bear no name."""
        found = [] if self.name or self.role in NAMELESS or not self.has("showing") else [self.role]
        if self.role in ("table", "tree", "tree table"):  # the rows are their own texts
            return found
        for child in self.children:
            found += child.unnamed()
        return found

    def texts(self):
        """All that can be read below: names of labels and buttons."""
        return [child.name for child in self.find_all() if child.name]

    def settled(self):
        """Its rectangle, once it is on the screen and has stopped moving."""
        last = None

        def still():
            nonlocal last
            before, last = last, self.rectangle
            return last[2] > 0 and last[3] > 0 and last == before

        wait_for(f"{self.role} {self.name!r} to stand still on the screen", still)
        return last

    # The mouse.

    def _move(self, at=(0.5, 0.5)):
        left, top, width, height = self.settled()
        xdotool("mousemove", left + int(width * at[0]), top + int(height * at[1]))

    def click(self, button=1, at=(0.5, 0.5), holding=None):
        self._move(at)
        if holding:
            xdotool("keydown", holding, "click", button, "keyup", holding)
        else:
            xdotool("click", button)

    def double_click(self, at=(0.5, 0.5)):
        self._move(at)
        xdotool("click", "--repeat", "2", "--delay", "60", "1")

    # Tables and trees.

    @property
    def rows(self):
        return self._ask(lambda: Atspi.Table.get_n_rows(self.accessible), 0)

    def cell(self, row, column=0):
        cell = self._ask(lambda: Atspi.Table.get_accessible_at(self.accessible, row, column), None)
        return Node(self.program, cell) if cell else None

    def column(self, number=0, limit=100_000):
        """The texts of a column, from the top."""
        cells = (self.cell(row, number) for row in range(min(self.rows, limit)))
        return [cell.name if cell else "" for cell in cells]

    def row_of(self, text, column=0):
        """The cell with that text in a column; None when no row has it."""
        for row in range(self.rows):
            cell = self.cell(row, column)
            if cell and cell.name == text:
                return cell
        return None

    def get_row(self, text, column=0):
        return wait_for(f"the row {text!r}", lambda: self.row_of(text, column))

    def header(self, name):
        return next((child for child in self.children if "header" in child.role and child.name == name), None)


class Program(basics.Process):
    """A running program and what can be seen of it."""

    def __init__(self, command, environment=None, scale=1.0):
        Atspi.get_desktop(0).get_child_count()  # the bus answers before the program looks for it
        self.scale = scale
        extra = {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", "QT_QPA_PLATFORM": "xcb"}
        if scale != 1.0:
            extra["QT_SCALE_FACTOR"] = str(scale)
        self.process = subprocess.Popen(
            [str(part) for part in command], env={**os.environ, **extra, **(environment or {})}, stdin=subprocess.DEVNULL
        )
        self._root = None

    @property
    def root(self):
        """The program on the bus; None before it has come there."""
        if self._root is None:
            desktop = Atspi.get_desktop(0)
            for i in range(desktop.get_child_count()):
                application = desktop.get_child_at_index(i)
                try:
                    if application and application.get_process_id() == self.process.pid:
                        Atspi.Accessible.set_cache_mask(application, Atspi.Cache.NONE)
                        self._root = Node(self, application)
                except GLib.Error:  # another one that just ended
                    pass
        return self._root

    def windows(self):
        """The windows that are on the screen."""
        if not self.alive or not self.root:
            return []
        return [window for window in self.root.children if window.has("showing") and window.rectangle[2] > 0]

    def window(self, name=None, role=None):
        """Waits for a window with that title or role."""

        def look():
            if not self.alive:
                raise Failure(f"the program ended (status {self.process.returncode}) where the window {name!r} was due")
            for window in self.windows():
                if (name is None or window.name == name) and (role is None or window.role == role):
                    return window
            return None

        return wait_for(f"the window {name or role!r}", look)

    def visible(self):
        """All that it has on the display, menus too, by their numbers there, the lowest first."""
        command = ["xdotool", "search", "--onlyvisible", "--pid", str(self.process.pid)]
        return subprocess.run(command, capture_output=True, text=True).stdout.split()

    def front(self):
        return self.visible()[-1]

    def is_shown(self, name):
        return any(window.name == name for window in self.windows())


class Report(basics.Report):
    """Looks through every window that it takes a picture of."""

    def picture(self, program, name, windows=None):
        """A picture of the windows that stand there, which are also looked through for controls without a name."""
        windows = windows or program.windows()
        path = super().picture(program, name, windows)
        nameless = [window.role for window in windows if not window.name]
        nameless += [role for window in windows for child in window.children for role in child.unnamed()]
        self.equal(nameless, [], "every control in it has a name")
        return path


def start_bus():
    if not os.environ.get("DISPLAY") or not os.environ.get("DBUS_SESSION_BUS_ADDRESS"):
        sys.exit("the tour needs a display and a session bus of its own: run scripts/tour")
    Atspi.init()
    Atspi.set_timeout(15000, 30000)
