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


def type_name(pane, name):
    wait_for("the name's field to take the keyboard", lambda: not pane.has("focused"))
    press("ctrl+a")
    write(name)
    press("Return")


def answer_new_folder(explorer, name):
    explorer.program.window(explorer.text(100))
    write(name)
    press("Return")


def look_at_properties(explorer, name, look=None):
    title = wait_for(
        f"the properties of {name}",
        lambda: next((w for w in explorer.program.windows() if name in w.name and w.name != explorer.title), None),
    ).name
    if look:
        look()
    press("Escape")
    wait_for("the properties to close", lambda: not explorer.program.is_shown(title))


def file_commands(setting, explorer, way, folder):
    report = setting.report
    hands = Hands(explorer, way, 113)
    report.step(f"The file list's commands: {way}")
    place = ["E:\\", folder.name]
    explorer.go(*place)

    def select(name):
        explorer.select(name)
        return name

    name = "Box"
    if hands.knows(100):
        select("note.txt")
        hands(100)
        answer_new_folder(explorer, name)
        wait_for("the new folder", lambda: (folder / name).is_dir())
    else:
        (folder / name).mkdir()
        press("F5")
    explorer.files.get_row(name)
    select(name)
    hands(102)
    type_name(explorer.files, "Crate")
    explorer.files.get_row("Crate")
    report.check((folder / "Crate").is_dir() and not (folder / name).exists(), "a folder is made and renamed")

    select("note.txt")
    hands(108)
    explorer.go(*place, "Crate")
    explorer.files.click(at=(0.5, 0.8))
    hands(109)
    wait_for("the pasted file", lambda: "note.txt" in explorer.names())
    report.equal(digests(folder / "Crate"), {"note.txt": digests(folder)["note.txt"]}, "a file is copied and pasted")
    explorer.go(*place)
    if hands.knows(103):
        select("note.txt")
        hands(103)
        look_at_properties(
            explorer, "note.txt", (lambda: report.picture(explorer.program, "properties")) if way == "toolbar" else None
        )
        report.check(True, "properties are shown")
    if hands.knows(125):
        (folder / "late.txt").write_text("made meanwhile")
        select("note.txt")
        hands(125)
        explorer.files.get_row("late.txt")
        report.check(True, "refreshed, the list shows what was made meanwhile")
        (folder / "late.txt").unlink()
    setting.opened.unlink(missing_ok=True)
    select("note.txt")
    hands(105)
    wait_for("the document to open", setting.documents_opened)
    report.check(setting.documents_opened()[0].endswith("/note.txt"), "a document opens")
    select("Crate")
    hands(101)
    explorer.answer("alt+y")
    wait_for("the folder to go", lambda: "Crate" not in explorer.names())
    report.check(not (folder / "Crate").exists() and (folder / "note.txt").exists(), "a folder is deleted")
    if hands.knows(120):
        select("note.txt")
        hands(120)
        explorer.wait_location("E:\\")
        report.check(True, "up, to the folder above")


def folder_commands(setting, explorer, way, folder):
    report = setting.report
    hands = Hands(explorer, way, 110)
    report.step(f"The folder tree's commands: {way}")
    path = f"E:\\{folder.name}"
    explorer.go("E:\\", folder.name)
    if hands.knows(100):
        hands(100)
        answer_new_folder(explorer, "Shelf")
        wait_for("the new folder", lambda: (folder / "Shelf").is_dir())
    else:
        (folder / "Shelf").mkdir()
        press("F5")
    explorer.go("E:\\", folder.name, "Shelf")
    hands(102)
    type_name(explorer.tree, "Rack")
    explorer.node(f"{path}\\Rack")
    report.check((folder / "Rack").is_dir() and not (folder / "Shelf").exists(), "a folder is made and renamed")
    explorer.go("E:\\", folder.name, "Rack")
    if hands.knows(103):
        hands(103)
        look_at_properties(explorer, "Rack")
        report.check(True, "properties are shown")
    hands(101)
    explorer.answer("alt+y")
    wait_for("the folder to go", lambda: not (folder / "Rack").exists())
    wait_for("its node to go", lambda: "Rack" not in explorer.tree.column())
    report.check(True, "a folder is deleted")
    explorer.go("E:\\", folder.name)
    if hands.knows(120):
        hands(120)
        explorer.wait_location("E:\\")
        report.check(True, "up, to the folder above")


@part
def commands(setting):
    folder = setting.stick / "Workshop"
    folder.mkdir()
    (folder / "note.txt").write_text("Oil the hinge.\r\n")
    explorer = open_drive(setting)
    explorer.go("E:\\")
    press("F5")
    for way in WAYS:
        file_commands(setting, explorer, way, folder)
    for way in WAYS:
        if way != "pop-up menu":
            folder_commands(setting, explorer, way, folder)

    report = setting.report
    report.step("All rows")
    explorer.go("E:\\", "Pictures")
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
        about.get("push button", second(100)).click() if way == "mouse" else press("Return")
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
        explorer.go("E:\\", "Documents")
        explorer.select("Packing list.txt")
        take_client(explorer_window(explorer), folder / f"window_{language}.png")
        explorer.go("E:\\", "Archives")
        explorer.select("Letters.zip")
        explorer.command(107)
        explorer.zip_dialog().list.get_row(" Letters/Arrival.txt").click(at=(0.3, 0.5))
        take_client(explorer_window(explorer), folder / f"archive_{language}.png")
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
        xdotool("windowactivate", "--sync", explorer_window(explorer))
        originals = digests(pictures)
        explorer.go("E:\\", "Pictures")
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
        xdotool("windowactivate", "--sync", explorer_window(explorer))
        explorer.go("E:\\", "Projects", "Sundial")
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
        explorer.go("E:\\", "Pictures")
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


def explorer_window(explorer):
    found = subprocess.run(
        ["xdotool", "search", "--onlyvisible", "--pid", str(explorer.program.process.pid)], capture_output=True, text=True
    )
    return found.stdout.split()[-1]


def bus_has(name):
    answer = subprocess.run(
        ["dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus", "/org/freedesktop/DBus",
         "org.freedesktop.DBus.NameHasOwner", f"string:{name}"], capture_output=True, text=True, env=os.environ,
    )
    return "true" in answer.stdout
