"""Every command of the explorer, by each way that leads to it: toolbar, menus by mouse and by keyboard, the pop-up menu,
keys. What it does is looked for on the disk."""

import os
import shutil
import subprocess

from basics import digests, press, wait_for, write, xdotool
from parts import open_drive, part, write_settings

KEYS = {101: "Delete", 102: "F2", 105: "Return", 108: "ctrl+c", 109: "ctrl+v", 125: "F5"}
WAYS = ("toolbar", "menu by mouse", "menu by keyboard", "pop-up menu", "key")


class Hands:
    """Gives commands, known by the ids of their texts, in one of the ways."""

    def __init__(self, explorer, way, menu):
        self.explorer, self.way, self.menu = explorer, way, menu

    def knows(self, number):
        return {"toolbar": number != 125, "key": number in KEYS}.get(self.way, number != 120)

    def access_key(self, number):
        text = self.explorer.text.main[number]
        return text[text.index("&") + 1].lower()

    def item(self, number):
        name = self.explorer.text(number)
        window = self.explorer.window

        def look():
            return next((item for item in window.find_all("menu item") if item.name.split("\t")[0] == name), None)

        return wait_for(f"the menu entry {name!r}", look)

    def __call__(self, number):
        # In the File menu the new folder stands under "New", as "Folder".
        path = (111, 110) if number == 100 and self.menu == 113 else (number,)
        if self.way == "toolbar":
            self.explorer.command(number)
        elif self.way == "key":
            press(KEYS[number])
        elif self.way == "menu by keyboard":
            press(f"alt+{self.access_key(self.menu)}")
            self.item(path[0])
            for step in path:
                press(self.access_key(step))
        else:
            if self.way == "menu by mouse":
                self.item(self.menu).click()
            else:
                self.explorer.files.click(button=3, at=(0.5, 0.95))
            for step in path:
                self.item(step).click()


def properties_of(explorer, name):
    """The title of the properties window, which is waited for."""
    return wait_for(
        f"the properties of {name}",
        lambda: next((w.name for w in explorer.program.windows() if name in w.name and w.name != explorer.title), None),
    )


class Commands:
    """The commands of the file list (menu 113) or of the folder tree (menu 110) on a folder that lies on the drive."""

    def __init__(self, setting, way, menu, folder):
        self.setting, self.report, self.explorer = setting, setting.report, setting.explorer
        self.folder, self.is_list = folder, menu == 113
        self.hands = Hands(self.explorer, way, menu)
        self.has_pictures = way == WAYS[0] and self.is_list

    def picture(self, name):
        if self.has_pictures:
            self.report.picture(self.explorer.program, name)

    def show(self, name):
        """Makes a command mean this entry of the folder: selects its row, or lists it by its node."""
        if self.is_list:
            self.explorer.select(name)
        else:
            self.explorer.go(self.folder.name, name)

    def listed(self, name):
        if self.is_list:
            return name in self.explorer.names()
        return name in self.explorer.tree.column()

    def make_and_rename(self):
        explorer, folder = self.explorer, self.folder
        if self.hands.knows(100):
            if self.is_list:
                explorer.select("note.txt")
            self.hands(100)
            box = explorer.program.window(explorer.text(100))
            self.report.check(explorer.text(512) in box.texts(), "New folder asks for a name, by the owner's name")
            self.picture("new-folder")
            write("Box")
            press("Return")
            wait_for("the new folder", lambda: (folder / "Box").is_dir())
        else:
            (folder / "Box").mkdir()
            press("F5")
        wait_for("its row", lambda: self.listed("Box"))
        self.show("Box")
        self.hands(102)
        pane = explorer.files if self.is_list else explorer.tree
        wait_for("the name's field to take the keyboard", lambda: not pane.has("focused"))
        press("ctrl+a")
        write("Crate")
        press("Return")
        wait_for("the new name", lambda: self.listed("Crate"))
        self.report.check((folder / "Crate").is_dir() and not (folder / "Box").exists(), "a folder is made and renamed")

    def properties(self):
        if not self.hands.knows(103):
            return
        name = "note.txt" if self.is_list else "Crate"
        self.show(name)
        self.hands(103)
        title = properties_of(self.explorer, name)
        self.picture("properties")
        press("Escape")
        wait_for("the properties to close", lambda: not self.explorer.program.is_shown(title))
        self.report.check(True, "properties are shown")

    def delete(self):
        self.show("Crate")
        self.hands(101)
        if self.has_pictures:
            self.report.check(self.explorer.text(505) in self.explorer.said(), "Delete asks first")
            self.picture("delete-question")
            self.explorer.answer("Escape")
            self.report.check((self.folder / "Crate").is_dir(), "Escape keeps the folder")
            self.show("Crate")
            self.hands(101)
        self.explorer.answer("alt+y")
        wait_for("the folder to go", lambda: not self.listed("Crate"))
        self.report.check(not (self.folder / "Crate").exists() and (self.folder / "note.txt").exists(), "Yes deletes it")

    def up(self):
        if self.hands.knows(120):
            self.explorer.go(self.folder.name)
            if self.is_list:
                self.explorer.select("note.txt")
            self.hands(120)
            self.explorer.wait_location("E:\\")
            self.report.check(True, "up, to the folder above")

    def copy_and_paste(self):
        explorer = self.explorer
        explorer.select("note.txt")
        self.hands(108)
        explorer.go(self.folder.name, "Crate")
        explorer.files.click(at=(0.5, 0.8))
        self.hands(109)
        wait_for("the pasted file", lambda: "note.txt" in explorer.names())
        self.report.equal(digests(self.folder / "Crate"), {"note.txt": digests(self.folder)["note.txt"]}, "a file is copied and pasted")
        explorer.go(self.folder.name)

    def refresh(self):
        if self.hands.knows(125):
            late = self.folder / "late.txt"
            late.write_text("made meanwhile")
            self.show("note.txt")
            self.hands(125)
            self.explorer.files.get_row(late.name)
            self.report.check(True, "refreshed, the list shows what was made meanwhile")
            late.unlink()

    def open(self):
        self.setting.opened.unlink(missing_ok=True)
        self.show("note.txt")
        self.hands(105)
        wait_for("the document to open", self.setting.documents_opened)
        self.report.check(self.setting.documents_opened()[0].endswith("/note.txt"), "a document opens")


@part
def commands(setting):
    report = setting.report
    folder = setting.stick / "Workshop"
    folder.mkdir()
    (folder / "note.txt").write_text("Oil the hinge.\r\n")
    explorer = open_drive(setting)
    for menu, pane in ((113, "file list"), (110, "folder tree")):
        for way in WAYS:
            if menu == 110 and way == "pop-up menu":
                continue
            report.step(f"The {pane}'s commands: {way}")
            explorer.go(folder.name)
            commands = Commands(setting, way, menu, folder)
            commands.make_and_rename()
            if commands.is_list:
                commands.copy_and_paste()
                commands.refresh()
                commands.open()
            commands.properties()
            commands.delete()
            commands.up()

    report.step("All rows")
    explorer.go("Pictures")
    explorer.files.click(at=(0.5, 0.95))
    press("ctrl+a")
    wait_for("every row to be selected", lambda: explorer.selected() == explorer.names())
    report.picture(explorer.program, "all-selected")
    report.check(len(explorer.names()) > 2, "Ctrl+A selects every row")
    shutil.rmtree(folder)


@part
def help_menu(setting):
    report = setting.report
    explorer = open_drive(setting)
    report.step("The Help menu")
    second = explorer.text.second
    for entry, wanted in (second(104, s="Pellarion"), "what_0409.pdf"), (second(105), "http"):
        for way in ("mouse", "keyboard"):
            setting.opened.unlink(missing_ok=True)
            press("alt+h")
            item = explorer.window.get("menu item", entry)
            if way == "mouse":
                item.click()
            else:
                raw = explorer.text.extra[104 if "what" in wanted else 105]
                press(raw[raw.index("&") + 1].lower())
            opened = wait_for(f"{entry} to open something", setting.documents_opened)
            report.check(wanted in opened[0], f"{entry!r} by {way} opens {opened[0].rsplit('/', 1)[-1] or opened[0]}")
    names = [item.name for item in explorer.window.find_all("menu item")]
    report.check(second(106) not in names, f"{second(106)!r} is not there")
    for way in ("mouse", "keyboard"):
        press("alt+h")
        item = explorer.window.get("menu item", second(107))
        item.click() if way == "mouse" else press("a")
        title = second(303, s="Pellarion")
        about = explorer.program.window(title)
        if way == "mouse":
            report.check("Version 1.0.0" in about.texts(), "the About box tells the version")
            report.picture(explorer.program, "about")
            about.get("push button", second(100)).click()
        else:
            press("Return")
        wait_for("the About box to close", lambda: not explorer.program.is_shown(title))
        report.check(True, f"About opens and closes by {way}")

    for menu, number in ((110, "tree"), (113, "list")):
        explorer = open_drive(setting)
        if number == "list":
            explorer.files.click(at=(0.5, 0.95))
        hands = Hands(explorer, "menu by keyboard", menu)
        hands(104)
        report.equal(explorer.program.ended(), 0, f"Close in the menu of the {number} ends the program")


@part
def help_pictures(setting):
    """The pictures of the help documents, for docs/help/images: they are copied there when the windows have changed."""
    report = setting.report
    report.step("The pictures of the help documents")
    folder = setting.output / "help"
    folder.mkdir(exist_ok=True)
    for language in ("0409", "0407"):
        write_settings(setting, language, height=7875)
        explorer = setting.start(language=language)
        explorer.go("Documents")
        explorer.select("Packing list.txt")
        take_client(explorer.program.front(), folder / f"window_{language}.png")
        explorer.go("Archives")
        explorer.extract("Letters.zip").list.get_row(" Letters/Arrival.txt").click(at=(0.3, 0.5))
        take_client(explorer.program.front(), folder / f"archive_{language}.png")
    report.check(len(list(folder.iterdir())) == 4, f"they are in {folder.relative_to(setting.output.parent)}")


def take_client(window, path):
    """A window without its frame, in few colours."""
    subprocess.run(["import", "-silent", "-window", window, "-colors", "256", f"png8:{path}"], check=True)


def started(report, *command):
    """A program beside ours; a missing one is a failure, not a reason to pass."""
    if not report.check(shutil.which(command[0]), f"{command[0]} is installed"):
        return None
    return subprocess.Popen([str(word) for word in command], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def foreign_window(name):
    """The window of another program, by a part of its title; it gets the keyboard."""

    def look():
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", name], capture_output=True, text=True)
        return found.stdout.split()

    window = wait_for(f"a window {name!r}", look)[-1]
    xdotool("windowactivate", "--sync", window)
    return window


@part
def neighbours(setting):
    report = setting.report
    pictures, projects = setting.stick / "Pictures", setting.stick / "Projects"
    explorer = open_drive(setting)
    report.step("Copied here, pasted in a file manager")
    there = setting.computer / "neighbour"
    there.mkdir()
    manager = started(report, "pcmanfm", there)
    if not manager:
        return
    try:
        window = foreign_window("neighbour")
        xdotool("windowactivate", "--sync", explorer.program.front())
        originals = digests(pictures)
        explorer.go("Pictures")
        explorer.select("Bay.png", "Dunes.png")
        press("ctrl+c")
        xdotool("windowactivate", "--sync", window)
        press("ctrl+v")
        wanted = {name: originals[name] for name in ("Bay.png", "Dunes.png")}
        wait_for("the pasted files", lambda: digests(there) == wanted)
        report.equal(digests(there), wanted, "pcmanfm pastes what was copied here, whole")
        report.equal(digests(pictures), originals, "and copies: the originals stay")

        report.step("Copied there, pasted here")
        (there / "Note with spaces & more.txt").write_text("from there")
        press("ctrl+a", "ctrl+c")
        xdotool("windowactivate", "--sync", explorer.program.front())
        explorer.go("Projects", "Sundial")
        explorer.files.click(at=(0.5, 0.95))
        press("ctrl+v")
        wait_for("the pasted rows", lambda: {path.name for path in there.iterdir()} <= set(explorer.names()))
        got = {name: digest for name, digest in digests(projects / "Sundial").items() if (there / name).exists()}
        report.equal(got, digests(there), "what pcmanfm copied is pasted here, whole, its names with blanks too")
        for name in got:
            (projects / "Sundial" / name).unlink()
    finally:
        manager.kill()
        manager.wait()

    report.step("Properties, from a file manager that offers them")
    manager = started(report, "thunar", "--daemon")
    if not manager:
        return
    try:
        wait_for("the file manager on the bus", lambda: bus_has("org.freedesktop.FileManager1"))
        explorer.go("Pictures")
        explorer.select("Bay.png")
        explorer.command(103)
        window = foreign_window("Bay.png - Properties")
        owner = subprocess.run(["xdotool", "getwindowpid", window], capture_output=True, text=True).stdout.strip()
        report.equal(owner, str(manager.pid), "its own properties window opens")
        subprocess.run(["import", "-silent", "-window", "root", report.next_picture("foreign-properties")], check=True)
        press("Escape")
    finally:
        manager.kill()
        manager.wait()


def bus_has(name):
    answer = subprocess.run(
        ["dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus", "/org/freedesktop/DBus",
         "org.freedesktop.DBus.NameHasOwner", f"string:{name}"], capture_output=True, text=True, env=os.environ,
    )
    return "true" in answer.stdout
