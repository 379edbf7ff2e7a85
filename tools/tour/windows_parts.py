"""The parts of the tour of the Windows program, in order."""

import shutil
import subprocess

import steps
from basics import digests, drag, part_list, press, wait_for, write, xdotool

PARTS, part = part_list()


@part
def start(setting):
    report = setting.report
    report.step("The first start from the removable drive")
    spy = subprocess.Popen(["stdbuf", "-oL", "xprop", "-spy", "-root", "_NET_CLIENT_LIST"], stdout=subprocess.PIPE, text=True)
    explorer = setting.start()
    spy.kill()
    shown = {window for line in spy.stdout for window in line.partition("#")[2].split()}
    report.check(len(shown) > 1, f"a splash window stands before the main window {shown}")
    report.equal(len(explorer.places("drive-removable")), 1, "the tree shows the removable drive, and no other")
    steps.first_start(setting)
    steps.second_start(setting, ["wine64", setting.program_path])


@part
def browse(setting):
    report = setting.report
    explorer = setting.start()
    report.step("Browsing")
    explorer.go()
    report.equal(sorted(explorer.names()), sorted(p.name for p in setting.stick.iterdir()), "the list shows what the drive holds")
    documents = setting.stick / "Documents"
    explorer.go("Documents")
    folders = sorted(p.name for p in documents.iterdir() if p.is_dir())
    # Wine spells names beyond ASCII wrongly in what it offers to other programs.
    size = {p.name: p.stat().st_size for p in documents.iterdir() if p.is_file() and p.name.isascii()}
    report.equal([name for name in explorer.names() if "%" not in name], folders + sorted(size, key=str.lower), "a folder's list has folders first, then files, by name")
    report.picture(explorer.program, "documents")

    report.step("Sorting by a click on the header")
    header = explorer.window.rectangle[0] + 550, explorer.places("folder")[0][1] - 23

    def by_size(backwards):
        names = [name for name in explorer.names() if name in size]
        return [size[name] for name in names] == sorted(size.values(), reverse=backwards)

    xdotool("mousemove", *header, "click", 1)
    wait_for("ascending sizes", lambda: by_size(False))
    xdotool("mousemove", header[0] - 20, header[1], "click", 1)
    wait_for("descending sizes", lambda: by_size(True))
    report.check(not by_size(False), "by size, upwards and then downwards")

    report.step("Marks")
    marks = setting.program_folder / "tree.dat"
    explorer.click_mark(1)
    wait_for("the mark's file", marks.exists)
    report.equal(marks.read_bytes(), b"\\Archives\r\n", "a folder that is marked stands in tree.dat")
    report.picture(explorer.program, "marked")


@part
def commands(setting):
    report = setting.report
    explorer = setting.start()
    text, program = explorer.text, explorer.program
    folder = setting.stick / "Annex"  # the first of all folders
    (folder / "Shelf").mkdir(parents=True)
    (folder / "note.txt").write_text("Oil the hinge.\r\n")
    (folder / "Übung.txt").write_text("Straße\r\n")
    wanted = digests(folder)

    report.step("Opening")
    explorer.go("Annex")
    explorer.select("note.txt")
    explorer.command(105)
    program.window("note.txt - Notepad")
    report.check(True, "a text opens in its program")
    press("alt+F4")
    program.gone("note.txt - Notepad")

    report.step("A new folder, by the menu")
    explorer.menu(text.main[113], text.main[111], text.main[110])
    explorer.input_box(text(100), "Box")
    wait_for("the new folder", (folder / "Box").is_dir)
    report.check("Box" in explorer.names(), "it is made, and listed")

    report.step("Renaming")
    explorer.select("Box")
    press("F2")
    press("ctrl+a")
    write("Crate")
    press("Return")
    wait_for("the new name", (folder / "Crate").is_dir)
    report.check(not (folder / "Box").exists() and "Crate" in explorer.names(), "F2 renames a folder")
    explorer.select("note.txt")
    press("F2")
    press("ctrl+a")
    write("CRATE")
    press("Return")
    said = explorer.said(301)
    report.check("note.txt" in said, f"a name that is taken is refused: {said}")
    explorer.answer(caption=301)
    report.equal(digests(folder), wanted, "and both are as they were")

    report.step("Copying and pasting")
    names = [name for name in explorer.names() if name != "Crate"]
    explorer.focus_list()
    press("ctrl+a")
    copied = program.paths("ctrl+c")
    report.equal(len(copied), len(names) + 1, "another program gets a copied list as files")
    def paste(place, names, what, wanted):
        explorer.go(place)
        explorer.select(*names)
        explorer.command(108)
        explorer.click_node(1)
        explorer.command(109)
        wait_for(what, lambda: digests(folder) == wanted)

    pictures = {name: digest for name, digest in digests(setting.stick / "Pictures").items() if name in ("Bay.png", "Night.png")}
    paste("Pictures", ["Bay.png", "Night.png"], "the pasted files", wanted | pictures)
    report.equal(sorted(explorer.selected()), ["Bay.png", "Night.png"], "the pasted files are whole, and selected")
    letters = {f"Letters/{name}": digest for name, digest in digests(setting.stick / "Documents/Letters").items()}
    paste("Documents", ["Letters"], "the pasted folder", wanted | pictures | letters)
    report.check(True, "a folder is pasted with all that it holds")
    (folder / "Bay.png").write_bytes(b"older")
    paste("Pictures", ["Bay.png"], "the replaced file", wanted | pictures | letters)
    report.check(True, "a file of the same name is replaced without a question")
    report.picture(program, "pasted")

    report.step("Properties")
    explorer.select("note.txt")
    explorer.command(103)
    title = explorer.other_title()
    report.check("note.txt" in title or "Properties" in title, f"are shown: {title!r}")
    report.picture(program, "properties")
    program.answer(title, "Escape")

    report.step("Deleting")
    explorer.select("Letters", "Bay.png", "Night.png")
    press("Delete")
    report.equal(explorer.said(507), steps.one_line(text(505)), "is asked for")
    report.picture(program, "delete")
    explorer.answer("Escape", 507)
    report.equal(digests(folder), wanted | pictures | letters, "and not done without a Yes")
    explorer.select("Letters", "Bay.png", "Night.png")
    press("Delete")
    program.window(text(507))
    explorer.answer("alt+y", 507)
    wait_for("them to go", lambda: digests(folder) == wanted)
    report.equal(explorer.names()[:3], ["Crate", "Shelf", "note.txt"], "they are gone, and nothing else is")
    subprocess.run(["rm", "-r", folder], check=True)


@part
def compress(setting):
    folder = steps.things_to_pack(setting, "Annex")
    setting.start().go("Annex")
    steps.compress(setting, folder)
    shutil.rmtree(folder)


@part
def archives(setting):
    setting.start().go("Archives")
    for step in (steps.zip_archive, sorted_and_picked, steps.encrypted_archive, steps.cabinet, steps.rar_archive, steps.mixed_kinds):
        step(setting)


def sorted_and_picked(setting):
    report, explorer = setting.report, setting.explorer
    report.step("A ZIP archive sorted by size, the largest alone, to a folder that is picked")
    letters = setting.stick / "Documents/Letters"
    dialog = explorer.extract("Letters.zip")
    dialog.click((0.62, 0.062))
    dialog.click((0.3, 0.11))
    press("End")
    report.picture(explorer.program, "zip-sorted")
    dialog.press(513)
    dialog.pick(report, "Down", "Down")
    dialog.wait_closed()
    unpacked_there = setting.stick / "Pictures/LETTERS"  # as new folders are made
    largest = max(letters.iterdir(), key=lambda path: path.stat().st_size).name
    report.equal(digests(unpacked_there), {largest: digests(letters)[largest]}, "the row selected is the file that comes out")
    shutil.rmtree(unpacked_there)


@part
def help_menu(setting):
    report = setting.report
    explorer = setting.start()
    program, second = explorer.program, explorer.text.extra
    report.step("The Help menu")
    explorer.menu(second[103], second[104])
    wait_for("the help document", setting.documents_opened)
    report.check(setting.documents_opened()[0].endswith("what_0409.pdf"), f"the help document opens {setting.documents_opened()}")
    setting.opened.unlink()
    program.window(explorer.title)
    explorer.menu(second[103], second[105])
    wait_for("the support page", setting.documents_opened)
    report.check(setting.documents_opened()[0].startswith("http"), f"the support page opens {setting.documents_opened()}")
    explorer.menu(second[103], second[107])
    about = explorer.text.second(303, s="Pellarion")
    program.window(about)
    report.picture(program, "about")
    program.answer(about)
    report.check(True, "and so does the About box")


@part
def close(setting):
    report = setting.report
    report.step("Closing")
    explorer = setting.start()
    explorer.go()
    left, top = explorer.window.rectangle[0] + 428, explorer.places("folder")[0][1] - 23
    drag((left, top), (left + 60, top))
    steps.closed(setting)
