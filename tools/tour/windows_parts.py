"""The parts of the tour of the Windows program, in order."""

import shutil
import subprocess

import demo_stick
from basics import DEFAULT_SETTINGS, digests, drag, press, unpacked, wait_for, write, xdotool
from windows_explorer import ArchiveDialog

PARTS = {}


def part(function):
    PARTS[function.__name__.replace("_", "-")] = function
    return function


def text_libraries(setting):
    folder = setting.computer / "Pellarion/temp"
    return sorted(path.name for path in folder.iterdir()) if folder.exists() else []


@part
def start(setting):
    report = setting.report
    report.step("The first start from the removable drive")
    spy = subprocess.Popen(["stdbuf", "-oL", "xprop", "-spy", "-root", "_NET_CLIENT_LIST"], stdout=subprocess.PIPE, text=True)
    explorer = setting.start()
    spy.kill()
    shown = {window for line in spy.stdout for window in line.partition("#")[2].split()}
    report.check(len(shown) > 1, f"a splash window stands before the main window {shown}")
    report.equal(setting.settings.read_bytes(), DEFAULT_SETTINGS, "the settings file is written byte for byte as the default")
    report.equal(text_libraries(setting), ["ox_langfile0409.dll", "oxlic_0409.dll"], "the text libraries are loaded from copies on drive C")
    report.equal(len(explorer.places("drive-removable")), 1, "the tree shows the removable drive, and no other")
    report.picture(explorer.program, "explorer")

    report.step("A second start")
    second = subprocess.run(["wine64", setting.program_path], env=setting.environment, timeout=60)
    report.equal(second.returncode, 0, "ends by itself, silently")
    report.equal((explorer.program.alive, explorer.program.titles()), (True, [explorer.title]), "the first goes on, with its one window")
    report.equal(len(text_libraries(setting)), 2, "its temporary copies are still there")


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
    explorer.command("open")
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
    said = program.message(text(301))
    report.check("note.txt" in said, f"a name that is taken is refused: {said}")
    program.answer(text(301))
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
        explorer.command("copy")
        explorer.click_node(1)
        explorer.command("paste")
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
    explorer.command("properties")
    wait_for("the properties", lambda: program.active_title() != explorer.title)
    title = program.active_title()
    report.check("note.txt" in title or "Properties" in title, f"are shown: {title!r}")
    report.picture(program, "properties")
    press("Escape")
    program.gone(title)

    report.step("Deleting")
    explorer.select("Letters", "Bay.png", "Night.png")
    press("Delete")
    report.equal(program.message(text(507)), " ".join(text(505).split()), "is asked for")
    report.picture(program, "delete")
    program.answer(text(507), "Escape")
    report.equal(digests(folder), wanted | pictures | letters, "and not done without a Yes")
    explorer.select("Letters", "Bay.png", "Night.png")
    press("Delete")
    program.window(text(507))
    program.answer(text(507), "alt+y")
    wait_for("them to go", lambda: digests(folder) == wanted)
    report.equal(explorer.names()[:3], ["Crate", "Shelf", "note.txt"], "they are gone, and nothing else is")
    subprocess.run(["rm", "-r", folder], check=True)


@part
def compress(setting):
    report = setting.report
    explorer = setting.start()
    text, program = explorer.text, explorer.program
    folder = setting.stick / "Annex"
    shutil.copytree(setting.stick / "Pictures", folder / "Summer/Pictures")
    shutil.copytree(setting.stick / "Documents/Letters", folder / "Summer/Letters")
    shutil.copy(setting.stick / "Documents/Garden plan.txt", folder)
    (folder / "Empty.txt").touch()
    (folder / "Diary.enc").write_bytes(b"sealed")
    originals = digests(folder)

    report.step("Compress")
    explorer.go("Annex")
    for name, number, told in (("Empty.txt", 582, "an empty file"), ("Diary.enc", 583, "an encrypted file")):
        explorer.select(name)
        explorer.command("compress")
        report.equal(program.message(text(300)), " ".join(text(number).split()), f"{told} is refused, with the reason")
        program.answer(text(300))
    report.equal(digests(folder), originals, "every file is still what it was")
    explorer.select("Garden plan.txt", "Summer")
    explorer.command("compress")
    wait_for("the cabinets", lambda: {"Garden plan.txt.cab", "Summer.cab"} <= set(explorer.names()))
    report.check(not (folder / "Summer").exists() and not (folder / "Garden plan.txt").exists(), "what was packed is gone")
    report.equal(unpacked(folder / "Garden plan.txt.cab"), {"Garden plan.txt": originals["Garden plan.txt"]}, "the file's cabinet holds it")
    summer = {name.split("/", 1)[1]: digest for name, digest in originals.items() if name.startswith("Summer/")}
    report.equal(unpacked(folder / "Summer.cab"), summer, "the folder's cabinet holds every file of it")
    report.picture(program, "compressed")
    shutil.rmtree(folder)


@part
def zip_archives(setting):
    report = setting.report
    explorer = setting.start()
    text, program = explorer.text, explorer.program
    folder = setting.stick / "Archives"
    first = text(308, x=1, y=1)
    originals = digests(setting.stick / "Documents")
    letters = {name: digest for name, digest in originals.items() if name.startswith("Letters/")}

    report.step("A ZIP archive: all of it beside the archive")
    explorer.go("Archives")
    dialog = explorer.extract("Letters.zip", title=first)
    report.picture(program, "zip")
    dialog.press(514)
    report.equal(program.message(text(300)), " ".join(text(524).split()), "nothing selected is told")
    program.answer(text(300))
    dialog.extract_here()
    dialog.closed()
    report.equal({name: digest for name, digest in digests(folder).items() if name.startswith("Letters/")}, letters, "every file has the original's checksum")
    times = {(folder / name).stat().st_mtime - (setting.stick / "Documents" / name).stat().st_mtime for name in letters}
    report.check(max(map(abs, times)) <= 2, "and its time")
    shutil.rmtree(folder / "Letters")

    report.step("Sorted by size, the largest alone, to a folder that is picked")
    dialog = explorer.extract("Letters.zip", title=first)
    dialog.click((0.62, 0.062))
    dialog.click((0.3, 0.11))
    press("End")
    report.picture(program, "zip-sorted")
    dialog.press(513)
    dialog.pick(report, "Down", "Down")
    dialog.closed()
    unpacked_there = setting.stick / "Pictures/LETTERS"  # as new folders are made
    largest = max((setting.stick / "Documents/Letters").iterdir(), key=lambda path: path.stat().st_size).name
    report.equal(digests(unpacked_there), {largest: letters[f"Letters/{largest}"]}, "the row selected is the file that comes out")
    shutil.rmtree(unpacked_there)

    report.step("A password")
    for password in ("moondial", demo_stick.PASSWORD):
        dialog = explorer.extract("Private.zip", title=first)
        dialog.extract_here()
        wait_for("the password's box", lambda: program.active_title() not in (dialog.title, explorer.title, ""))
        box = program.active_title()
        write(password)
        report.picture(program, "password")
        press("Return")
        program.gone(box)
        if password != demo_stick.PASSWORD:
            report.equal(program.message(text(300)), " ".join(text(555).split()), "a wrong one is said to be wrong")
            program.answer(text(300))
            report.equal(list(folder.glob("*.txt")), [], "and nothing is written")
        dialog.closed()
    got = {path.name: digests(folder)[path.name] for path in folder.glob("*.txt")}
    report.equal(got, {name: originals[name] for name in ("Garden plan.txt", "Packing list.txt")}, "the right one brings both files, asked once")
    for path in folder.glob("*.txt"):
        path.unlink()


@part
def other_archives(setting):
    report = setting.report
    explorer = setting.start()
    text, program = explorer.text, explorer.program
    folder = setting.stick / "Archives"

    report.step("A cabinet")
    explorer.go("Archives")
    explorer.select("Pictures.cab")
    press("Return")
    dialog = ArchiveDialog(explorer, text(303))
    report.picture(program, "cabinet")
    dialog.extract_here()
    dialog.closed()
    report.equal(digests(folder / "Pictures"), digests(setting.stick / "Pictures"), "Enter lists it; every picture comes out below a folder of its name")
    shutil.rmtree(folder / "Pictures")

    report.step("A RAR archive, deleted afterwards")
    shutil.copy(folder / "Sundial.rar", folder / "Copy.rar")
    press("F5")
    wait_for("the copy", lambda: "Copy.rar" in explorer.names())
    dialog = explorer.extract("Copy.rar", title=text(307))
    report.picture(program, "rar")
    dialog.press(521)
    dialog.extract_here()
    dialog.closed()
    report.equal(digests(folder / "Sundial"), digests(setting.stick / "Projects/Sundial"), "every file has the original's checksum")
    report.check(not (folder / "Copy.rar").exists(), "and the archive is gone")

    report.step("Archives of two kinds")
    explorer.select("Letters.zip", "Pictures.cab")
    explorer.command("extract")
    report.equal(program.message(text(300)), " ".join(text(523).split()), "are refused")
    program.answer(text(300))


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
    explorer.command("close")
    report.equal(explorer.program.ended(), 0, "the button Close ends the program")
    values = dict(line.split("=", 1) for line in setting.settings.read_text().splitlines() if "=" in line)
    report.check(float(values["ColWidth0"]) > 1800 + 40 * 15, f"the width that a column was dragged to is saved ({values['ColWidth0']})")
    report.equal((values["Width"], values["Height"], values["Left"]), ("12315", "12315", "4570"), "the window's size and the splitter's place are kept")
    report.equal(text_libraries(setting), [], "the temporary copies are gone")

    report.step("The next start")
    before = setting.settings.read_bytes()
    explorer = setting.start()
    explorer.go()
    report.picture(explorer.program, "next-start")
    press("alt+F4")
    report.equal(explorer.program.ended(), 0, "Alt+F4 ends the program")
    report.equal(setting.settings.read_bytes(), before, "what it found in the settings it leaves there")
