"""The program's windows, as the tour uses them."""

from basics import press, wait_for, write
from driver import Program
from texts import Texts


class Explorer:
    """The running program: its main window with the folder tree and the file list, and the windows it opens."""

    def __init__(self, command, language, owner, scale, environment):
        self.text = Texts(language, owner)
        self.program = Program(command, environment, scale)

    # The main window.

    @property
    def title(self):
        return self.text(302)

    @property
    def window(self):
        return self.program.window(self.title, "frame")

    def ready(self):
        """Waits until the main window has the keyboard; takes note of the warning to those who are no administrators."""

        def is_active():
            windows = self.program.windows()
            if any(self.text.second(528) in window.texts() for window in windows if window.role == "alert"):
                self.answer()
            return any(window.name == self.title and window.role == "frame" and window.has("active") for window in windows)

        wait_for("the main window to become active", is_active)

    def pane(self, columns):
        """The folder tree has one column, the file list several."""

        def look():
            for tree in self.window.find_all("tree"):
                if (len([child for child in tree.children if "header" in child.role]) > 1) == (columns > 1):
                    return tree
            return None

        return wait_for("the folder tree" if columns == 1 else "the file list", look)

    @property
    def tree(self):
        return self.pane(1)

    @property
    def files(self):
        return self.pane(4)

    def location(self):
        """What stands beside the caption "Location:"."""
        labels = self.window.find_all("label")
        return [label.name for label in labels]

    def go(self, *names):
        """Clicks down the tree: the drive, then folder by folder. The list shows the last one's content afterwards."""
        self.ready()
        for depth in range(len(names) + 1):
            path = "E:\\" + "\\".join(names[:depth])
            self.node(path).click()
            self.wait_location(path)

    def node(self, path):
        """The tree's row of a folder: among rows of the same name the one that stands below its parent."""
        parts = path.rstrip("\\").split("\\")
        parts[0] += "\\"

        def look():
            names = self.tree.column()
            row = 0
            for part in parts:
                if part not in names[row:]:
                    return None
                row = names.index(part, row)
            return self.tree.cell(row)

        return wait_for(f"the node {path}", look)

    def wait_location(self, path):
        wait_for(f"the location {path}", lambda: path in self.location())

    def names(self):
        return self.files.column()

    def selected(self):
        files = self.files
        cells = [files.cell(row) for row in range(files.rows)]
        return [cell.name for cell in cells if cell.has("selected")]

    def select(self, *names):
        """Clicks the first row and the others with Ctrl held."""
        for i, name in enumerate(names):
            self.files.get_row(name).click(at=(0.3, 0.5), holding="ctrl" if i else None)
        wait_for(f"{names} to be selected", lambda: set(self.selected()) == set(names))

    def command(self, number):
        """Presses a toolbar button, by the id of its text."""
        self.window.get("push button", self.text(number)).click()

    # Other windows.

    def message(self):
        """The message box that stands there: waits for it."""
        return self.program.window(role="alert")

    def said(self):
        """What the message box says."""
        return " ".join(" ".join(self.message().texts()).split())

    def answer(self, key="Return"):
        """Closes a message box by keyboard."""
        before = self.message().accessible
        press(key)
        wait_for("the message to go", lambda: all(w.accessible != before for w in self.program.windows()))

    def enter_password(self, password, look):
        """Answers the question for a password, in a field that hides it."""
        field = self.program.window("Password requered").get("password text")
        wait_for("the field to have the focus", lambda: field.has("focused"))
        write(password)
        look()
        press("Return")

    def archive_window(self, caption=308, number=1, of=1):
        """Waits for an archive window, by the id of its caption; those of cabinets and RAR archives select their first row."""
        dialog = ArchiveDialog(self, self.text(caption, x=number, y=of))
        if caption != 308:
            wait_for("the first row to be selected", lambda: dialog.list.rows and dialog.list.cell(0).has("selected"))
        return dialog

    def extract(self, *names, caption=308, of=1):
        """Opens archives by the button Extract; their folder is listed anew, which scrolls to its top."""
        self.go("Archives")
        self.select(*names)
        self.command(107)
        return self.archive_window(caption, of=of)


class ArchiveDialog:
    """An archive window."""

    def __init__(self, explorer, title):
        self.explorer = explorer
        self.text = explorer.text
        self.title = title
        self.window = explorer.program.window(title)

    @property
    def list(self):
        return self.window.get("tree")

    def rows(self, column=0):
        return self.list.column(column)

    def press(self, number):
        self.window.get("push button", self.text(number)).click()

    def check(self, number):
        box = self.window.get("check box", self.text(number))
        box.click(at=(0.1, 0.5))
        wait_for(f"the check mark of {box.name!r}", lambda: box.has("checked"))

    def extract_here(self):
        """All entries, beside the archive."""
        self.check(515)
        self.press(514)

    def pick(self, folder, look=None):
        """Answers the folder picker that "Extract to another folder" opens."""
        field = self.explorer.program.window(self.text(520)).get("text")
        field.click()
        press("ctrl+a")
        write(folder)
        wait_for("the typed folder", lambda: field.text == folder)
        if look:
            look()
        press("Return")

    @property
    def is_open(self):
        return self.explorer.program.is_shown(self.title)

    def wait_closed(self, patience=60):
        wait_for(f"{self.title!r} to close", lambda: not self.is_open, patience)
