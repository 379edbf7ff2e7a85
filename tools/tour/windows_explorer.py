"""The windows of the Windows program, as its tour uses them."""

from basics import press, wait_for, write, xdotool
from texts import Texts
from windows_driver import Picture, Program


# The toolbar's icons by the ids of their texts.
BUTTONS = {103: "properties", 104: "close", 105: "open", 106: "compress", 107: "extract", 108: "copy", 109: "paste"}


class Explorer:
    def __init__(self, path, environment, icons, owner):
        self.text = Texts("0409", owner)
        self.title = self.text(302)
        self.icons = icons
        self.spot = 0.7
        self.program = Program(path, environment)
        self.program.window(self.title, 60)
        self.places("drive-removable")  # it is drawn, and takes keys

    @property
    def window(self):
        return self.program.window(self.title)

    def icon(self, name, size):
        return Picture(self.icons / f"{name}-{size}.png")

    def places(self, name, size=16):
        """The icons of that name in the main window, from the top down."""
        return wait_for(f"the icon {name}", lambda: self.window.find(self.icon(name, size)))

    def command(self, number):
        """Presses a button of the toolbar, by the id of its text, once it can be."""
        xdotool("mousemove", *self.places(BUTTONS[number], 24)[0], "click", 1)

    def menu(self, text, *path):
        """A command by the access keys of a menu and of its entries."""
        press(f"alt+{self.key_of(text)}", *(self.key_of(entry) for entry in path))

    def key_of(self, text):
        return text[text.index("&") + 1].lower()

    # The file list.

    def focus_list(self):
        """A click below the rows: nothing is selected afterwards. Never twice on one spot, which is a double-click."""
        self.spot = 1.5 - self.spot
        self.window.click((self.spot, 0.93))

    def listed(self):
        """The paths of all rows, from the top; there must be one."""
        self.focus_list()
        return self.program.paths("ctrl+a", "ctrl+c")

    def names(self):
        return [path.rpartition("\\")[2] for path in self.listed()]

    def selected(self):
        return [path.rpartition("\\")[2] for path in self.program.paths("ctrl+c")]

    def select(self, *names):
        rows = [self.names().index(name) for name in names]

        # A copy lists the folder again and restores the selection, which may come after what is pressed here.
        def is_done():
            self.focus_list()
            press("Home", *["Down"] * rows[0], "space")
            for before, row in zip(rows, rows[1:]):
                press(*["ctrl+Down" if row > before else "ctrl+Up"] * abs(row - before), "ctrl+space")
            return sorted(self.selected()) == sorted(names)

        wait_for(f"{names} to be selected", is_done)

    def go(self, *names):
        """To the drive by a click on its node, then down by Enter in the list."""
        xdotool("mousemove", *self.places("drive-removable")[0], "click", 1)
        self.wait_listed("e:\\")
        path = "e:"
        for name in names:
            path += "\\" + name
            self.select(name)
            press("Return")
            self.wait_listed(path + "\\")

    def click_tree(self, number, right):
        """In the tree's row `number` below the drive, so far to the right of the computer's icon."""
        (left, computer), (_, drive) = self.places("computer")[0], self.places("drive-removable")[0]
        xdotool("mousemove", left + right, drive + number * (drive - computer), "click", 1)

    def click_node(self, number):
        """Lists a folder of the drive; nothing is copied to look at what it lists."""
        self.click_tree(number, 40)
        self.focus_list()

    def click_mark(self, number):
        self.click_tree(number, 17)

    def wait_listed(self, path):
        wait_for(f"the list of {path}", lambda: all(p.lower().startswith(path.lower()) and "\\" not in p[len(path):] for p in self.listed()))

    # Other windows.

    def input_box(self, title, text):
        self.program.window(title)
        write(text)
        press("Return")
        self.program.gone(title)

    def said(self, caption=300):
        """What the message box of that caption says."""
        return self.program.message(self.text(caption))

    def answer(self, key="Return", caption=300):
        self.program.answer(self.text(caption), key)

    def other_title(self, *known):
        """The title of a window that has come up before the known ones."""
        wait_for("another window", lambda: self.program.active_title() not in (*known, self.title, ""))
        return self.program.active_title()

    def enter_password(self, password, look):
        box = self.other_title(self.text(308, x=1, y=1))
        write(password)
        look()
        self.program.answer(box)

    def archive_window(self, caption=308):
        """Waits for an archive window, by the id of its caption."""
        return ArchiveDialog(self, self.text(caption, x=1, y=1))

    def extract(self, *names, caption=308):
        """Opens archives of the listed folder by the button Extract."""
        self.select(*names)
        self.command(107)
        return self.archive_window(caption)


class ArchiveDialog:
    def __init__(self, explorer, title):
        self.explorer, self.title = explorer, title
        self.window = explorer.program.window(title)

    def press(self, number):
        """A button or box by its access key."""
        self.explorer.program.window(self.title)
        press(f"alt+{self.explorer.key_of(self.explorer.text.main[number])}")

    check = press

    def extract_here(self):
        self.press(515)
        self.press(514)

    def wait_closed(self):
        self.explorer.program.gone(self.title)
        self.explorer.program.window(self.explorer.title)

    def click(self, at):
        self.window.click(at)

    def pick(self, report, *keys):
        """Answers the shell's folder picker by keyboard; it starts at the archive's folder."""
        program = self.explorer.program
        title = self.explorer.other_title(self.title)
        press(*keys)
        report.picture(program, "picker")
        program.answer(title)
