"""The parts of the tour, in order. Each starts the program where it needs a fresh one."""

import hashlib
import os
import shutil
import signal
import subprocess
import time
import zipfile

import demo_stick
from basics import DEFAULT_SETTINGS, digests, drag, press, wait_for, write, xdotool
from texts import read as read_texts

PARTS = {}


def part(function):
    PARTS[function.__name__.replace("_", "-")] = function
    return function


def zip_names(archive):
    with zipfile.ZipFile(archive) as opened:
        return [(("+" if entry.flag_bits & 1 else " ") + entry.filename) for entry in opened.infolist()]


def outer_size(explorer):
    """Size of the main window with its frame."""
    width, height = explorer.window.rectangle[2:]
    identity = visible_windows(explorer.program.process.pid)[-1]
    answer = subprocess.run(["xprop", "-id", identity, "_NET_FRAME_EXTENTS"], capture_output=True, text=True, check=True)
    left, right, top, bottom = (int(value) for value in answer.stdout.split("=")[1].split(","))
    return width + left + right, height + top + bottom


def settings_value(setting, key):
    lines = setting.settings.read_text(encoding="latin-1").splitlines()
    return next((line.split("=", 1)[1] for line in lines if line.startswith(key + "=")), None)


def write_settings(setting, language, height=12315):
    """A settings file for another language and size, as a person would edit it."""
    text = DEFAULT_SETTINGS.replace(b"Language=0409", f"Language={language}".encode())
    setting.settings.write_bytes(text.replace(b"Height=12315", f"Height={height}".encode()))


def catch_splash(setting):
    """Starts the program, stops it as its first window appears, and lets it go on slice by slice until that is drawn.
    Answers the picture and its size, or nothing when the window went undrawn."""
    # The display tells of new windows line by line.
    events = subprocess.Popen(["stdbuf", "-oL", "xev", "-root", "-event", "substructure"], stdout=subprocess.PIPE, text=True)
    path = setting.output / "splash-search.png"
    try:
        process = setting.start().program.process
        next(line for line in events.stdout if line.startswith("CreateNotify"))
        for _ in range(300):
            os.kill(process.pid, signal.SIGSTOP)
            windows = visible_windows(process.pid)
            if windows:
                subprocess.run(["import", "-silent", "-window", windows[0], path], check=True)
                answer = subprocess.run(["identify", "-format", "%k %w %h", path], capture_output=True, text=True, check=True)
                colours, *size = map(int, answer.stdout.split())
                if colours > 8:
                    return path, size
            os.kill(process.pid, signal.SIGCONT)
            time.sleep(0.002)  # the slice in which the program runs on
        return None
    finally:
        os.kill(process.pid, signal.SIGCONT)
        events.kill()


def visible_windows(pid):
    return subprocess.run(
        ["xdotool", "search", "--onlyvisible", "--pid", str(pid)], capture_output=True, text=True
    ).stdout.split()


@part
def start(setting):
    report = setting.report
    report.step("The first start from the stick")
    for _ in range(8):  # it stands for a few milliseconds, and a busy machine may miss it
        setting.settings.unlink(missing_ok=True)
        splash = catch_splash(setting)
        if splash and splash[1][0] < 700:
            break
    if report.check(splash and splash[1][0] < 700 and splash[1][1] < 500, "a small splash window stands first, drawn"):
        splash[0].rename(report.next_picture("splash"))
    explorer = setting.explorer
    explorer.ready()
    window = explorer.window
    report.equal(setting.settings.read_bytes(), DEFAULT_SETTINGS, "the settings file is written byte for byte as the default")
    copies = setting.computer / "Pellarion" / "temp"
    report.equal(
        sorted(path.name for path in copies.iterdir()), ["ox_langfile0409.dll", "oxlic_0409.dll"],
        "the text libraries are loaded from copies on the computer's drive",
    )
    report.equal(outer_size(explorer), (821, 821), "the window has the size of the settings (12315 twips are 821 pixels)")
    report.equal(explorer.tree.column(), [explorer.text(123), "E:\\"], "the tree shows the computer and the removable drive, no other")
    report.check(f"{explorer.text(562)}: " in window.texts(), "the free space is shown, with its caption")
    report.picture(explorer.program, "explorer")

    report.step("A second start")
    second = subprocess.run(explorer.program.process.args, env={**os.environ, **setting.environment}, timeout=30)
    report.equal(second.returncode, 0, "ends by itself, silently")
    report.check(explorer.program.alive and len(explorer.program.windows()) == 1, "the first goes on, with its one window")
    report.check(len(list(copies.iterdir())) == 2, "its temporary copies are still there")


def open_drive(setting):
    explorer = setting.start()
    explorer.go("E:\\")
    return explorer


@part
def browse(setting):
    report = setting.report
    report.step("Browsing by mouse")
    setting.settings.unlink(missing_ok=True)
    explorer = setting.start()
    explorer.go("E:\\")
    report.equal(sorted(explorer.names()), sorted(entry.name for entry in setting.stick.iterdir()), "the list shows what the drive holds")
    report.equal(
        explorer.tree.column()[2:], sorted(entry.name for entry in setting.stick.iterdir() if entry.is_dir()),
        "the tree shows its folders, in order",
    )
    explorer.go("E:\\", "Documents")
    documents = setting.stick / "Documents"
    report.equal(set(explorer.names()), {entry.name for entry in documents.iterdir()}, "a click on Documents lists it")
    report.picture(explorer.program, "documents")

    report.step("Sorting by clicks on the headers")
    files = explorer.files
    sizes = {entry.name: 0 if entry.is_dir() else entry.stat().st_size for entry in documents.iterdir()}
    times = {entry.name: int(entry.stat().st_mtime) for entry in documents.iterdir()}

    def sorted_by(key, reverse=False):
        values = [key[name] for name in explorer.names()]
        return values == sorted(values, reverse=reverse)

    files.header(explorer.text(117)).click()
    wait_for("ascending sizes", lambda: sorted_by(sizes))
    report.check(sorted_by(sizes) and not sorted_by(sizes, True), "one click on Size: ascending")
    # Elsewhere on the header: a second click on the same spot would be a double-click.
    files.header(explorer.text(117)).click(at=(0.2, 0.5))
    wait_for("descending sizes", lambda: sorted_by(sizes, True))
    report.check(sorted_by(sizes, True), "a second click: descending")
    files.header(explorer.text(118)).click()
    wait_for("ascending dates", lambda: sorted_by(times))
    report.check(sorted_by(times), "a click on Modified: by date")
    files.header(explorer.text(115)).click()
    wait_for("names in order", lambda: explorer.names()[:2] == ["Diary", "Letters"])
    report.equal(
        explorer.names(), sorted((n for n in sizes if (documents / n).is_dir()), key=str.lower)
        + sorted((n for n in sizes if not (documents / n).is_dir()), key=str.lower), "a click on Name: folders first, then files",
    )
    report.picture(explorer.program, "sorted")

    report.step("Opening by keyboard")
    explorer.select("Letters")
    press("Return")
    explorer.wait_location("E:\\Documents\\Letters")
    report.check(set(explorer.names()) == {p.name for p in (documents / "Letters").iterdir()}, "Enter on a folder goes into it")
    explorer.select("Arrival.txt")
    press("Return")
    wait_for("the document to open", setting.documents_opened)
    report.check(setting.documents_opened()[0].endswith("/Documents/Letters/Arrival.txt"), "Enter on a text hands it to its program")
    explorer.command(120)
    explorer.wait_location("E:\\Documents")
    report.check(True, "the button Up goes back to Documents")


@part
def files(setting):
    report = setting.report
    explorer = open_drive(setting)
    projects = setting.stick / "Projects"
    report.step("Making, renaming and deleting a folder")
    explorer.go("E:\\", "Projects")
    explorer.command(100)
    box = explorer.program.window(explorer.text(100))
    report.check(explorer.text(512) in box.texts(), "New folder asks for a name, by the owner's name")
    report.picture(explorer.program, "new-folder")
    write("Harbour log")
    press("Return")
    explorer.files.get_row("Harbour log")
    report.check((projects / "Harbour log").is_dir(), "the folder is made and listed")
    explorer.select("Harbour log")
    press("F2")
    wait_for("the name's field to take the keyboard", lambda: not explorer.files.has("focused"))
    press("ctrl+a")
    write("Logbook")
    press("Return")
    explorer.files.get_row("Logbook")
    report.check((projects / "Logbook").is_dir() and not (projects / "Harbour log").exists(), "F2 renames it")
    explorer.select("Logbook")
    press("Delete")
    report.check(any(explorer.text(505) in text for text in explorer.message().texts()), "Delete asks first")
    report.picture(explorer.program, "delete-question")
    explorer.answer("Escape")
    report.check((projects / "Logbook").is_dir(), "Escape keeps the folder")
    explorer.select("Logbook")
    press("Delete")
    explorer.answer("alt+y")
    wait_for("the folder to go", lambda: "Logbook" not in explorer.names())
    report.check(not (projects / "Logbook").exists(), "Yes deletes it")

    report.step("Copying and pasting")
    explorer.go("E:\\", "Pictures")
    explorer.select("Bay.png", "Dunes.png")
    press("ctrl+c")
    explorer.go("E:\\", "Projects")
    explorer.select("Sundial")
    press("ctrl+v")
    wait_for("the copies", lambda: {"Bay.png", "Dunes.png"} <= set(explorer.names()))
    originals = digests(setting.stick / "Pictures")
    for name in ("Bay.png", "Dunes.png"):
        report.equal(digests(projects).get(name), originals[name], f"Ctrl+C and Ctrl+V copy {name} whole")
        (projects / name).unlink()

    report.step("About")
    press("alt+h")
    explorer.window.get("menu item", explorer.text.second(107)).click()
    about = explorer.program.window(explorer.text.second(303, s="Pellarion"))
    report.check("Version 1.0.0" in about.texts(), "the About box tells the version")
    report.picture(explorer.program, "about")
    press("Escape")


@part
def marks(setting):
    report = setting.report
    report.step("Marking a folder")
    marks = setting.program_folder / "tree.dat"
    explorer = open_drive(setting)
    click_box(explorer.node("E:\\Pictures"))
    wait_for("the mark to be kept", lambda: marks.exists() and marks.read_bytes() == b"\\Pictures\r\n")
    report.check(explorer.node("E:\\Pictures").has("checked"), "a click on its box marks the folder, and tree.dat holds the mark")
    report.picture(explorer.program, "marked")
    explorer = setting.start()
    explorer.go("E:\\")
    report.check(explorer.node("E:\\Pictures").has("checked"), "the mark is there again at the next start")
    click_box(explorer.node("E:\\Pictures"))
    wait_for("the mark to go", lambda: not explorer.node("E:\\Pictures").has("checked"))
    report.equal(marks.read_bytes(), b"", "a second click takes it away")


def click_box(node):
    """Clicks the check box of a tree row, which stands at its beginning."""
    left, top, _, height = node.settled()
    xdotool("mousemove", left + 12, top + height // 2, "click", 1)


def open_archives(explorer, *names):
    explorer.go("E:\\", "Archives")
    explorer.select(*names)
    explorer.command(107)


@part
def extract(setting):
    report = setting.report
    explorer = open_drive(setting)
    archives, documents = setting.stick / "Archives", setting.stick / "Documents"

    report.step("A ZIP archive: the toolbar's Extract")
    open_archives(explorer, "Letters.zip")
    dialog = explorer.zip_dialog()
    report.equal(dialog.rows(), zip_names(archives / "Letters.zip"), "the window lists the archive's entries")
    report.equal(dialog.rows(2)[0], "Directory Entry", "a folder is called one")
    report.picture(explorer.program, "zip-window")
    dialog.press(513)
    report.check(any(explorer.text(524) in text for text in explorer.message().texts()), "with nothing selected it says so")
    report.picture(explorer.program, "nothing-selected")
    explorer.answer()

    report.step("Extracting beside the archive")
    dialog.extract_here()
    dialog.wait_closed()
    report.equal(digests(archives / "Letters"), digests(documents / "Letters"), "every file has the original's checksum")
    report.equal(
        {p.name: int(p.stat().st_mtime) for p in (archives / "Letters").iterdir()},
        {p.name: int(p.stat().st_mtime) for p in (documents / "Letters").iterdir()}, "and its time",
    )
    wait_for("the new folder's row to be selected", lambda: explorer.selected() == ["Letters"])
    report.check(True, "the new folder is selected in the list")
    report.picture(explorer.program, "extracted")

    report.step("Extracting to another folder")
    target = setting.computer / "Unpacked"
    target.mkdir(exist_ok=True)
    open_archives(explorer, "Pictures stored.zip")
    dialog = explorer.zip_dialog()
    dialog.list.get_row(" Pictures/Bay.png").click(at=(0.5, 0.5))
    dialog.list.get_row(" Pictures/Night.png").click(at=(0.5, 0.5), holding="ctrl")
    dialog.press(513)
    dialog.pick("C:\\Unpacked", lambda: report.picture(explorer.program, "folder-picker"))
    dialog.wait_closed()
    # A folder that no entry of its own asks for is made in capitals.
    wanted = {f"PICTURES/{name}": digests(setting.stick / "Pictures")[name] for name in ("Bay.png", "Night.png")}
    report.equal(digests(target), wanted, "the two chosen pictures are there, and only they")

    report.step("Deflate64")
    open_archives(explorer, "Sundial Deflate64.zip")
    explorer.zip_dialog().extract_here()
    explorer_closed(explorer)
    originals = {f: d for f, d in digests(setting.stick / "Projects/Sundial").items()}
    report.equal(digests(archives / "Sundial"), originals, "every file has the original's checksum")

    report.step("An archive with a comment")
    open_archives(explorer, "Letters with comment.zip")
    dialog = explorer.zip_dialog()
    report.equal(dialog.rows(), zip_names(archives / "Letters with comment.zip"), "its entries are listed")
    shutil.rmtree(archives / "Letters")
    dialog.extract_here()
    dialog.wait_closed()
    report.equal(digests(archives / "Letters"), digests(documents / "Letters"), "and extracted whole")

    report.step("Opening an entry")
    open_archives(explorer, "One note.zip")
    dialog = explorer.zip_dialog()
    dialog.list.get_row(" Garden plan.txt").double_click(at=(0.3, 0.5))
    opened = wait_for("the entry to open", setting.documents_opened)
    report.check(opened[-1].endswith("/Garden plan.txt"), "a double-click hands it to its program")
    copy = next((p for p in (setting.computer / "Pellarion").rglob("Garden plan.txt")), None)
    report.check(copy and copy.read_bytes() == (documents / "Garden plan.txt").read_bytes(), "from a whole copy in the temporary folder")
    report.check(dialog.is_open, "the window stays open")
    press("Escape")
    dialog.wait_closed()

    report.step("An archive of several thousand entries")
    open_archives(explorer, "Diary.zip")
    dialog = explorer.zip_dialog()
    report.equal(dialog.list.rows, len(zip_names(archives / "Diary.zip")), "every entry has its row")
    dialog.list.header(explorer.text(117)).click()
    report.check(wait_for("sorted sizes", lambda: dialog.rows(2)[:40].count("Directory Entry") > 1), "a click on Size sorts them")
    report.picture(explorer.program, "many-entries")
    dialog.extract_here()
    dialog.wait_closed(120)
    report.equal(digests(archives / "Diary"), digests(documents / "Diary"), f"{demo_stick.MANY} files extracted, each with the original's checksum")


def explorer_closed(explorer, patience=60):
    wait_for("the archive window to close", lambda: len(explorer.program.windows()) == 1, patience)


def ask_password(explorer, password, look=None):
    """Answers the question for a password, in a field that hides it."""
    field = explorer.program.window("Password requered").get("password text")
    wait_for("the field to have the focus", lambda: field.has("focused"))
    write(password)
    if look:
        look()
    press("Return")


@part
def encrypted(setting):
    report = setting.report
    explorer = open_drive(setting)
    archives = setting.stick / "Archives"
    report.step("An encrypted archive, with a wrong password")
    open_archives(explorer, "Private.zip")
    dialog = explorer.zip_dialog()
    report.check(all(name.startswith("+") for name in dialog.rows()), "its entries bear a plus sign")
    dialog.extract_here()
    ask_password(explorer, "moondial", lambda: report.picture(explorer.program, "password"))
    report.check(True, "the password is asked for, and does not show")
    report.check(explorer.text(555) in " ".join(explorer.message().texts()), "a wrong one is said to be wrong")
    report.picture(explorer.program, "wrong-password")
    explorer.answer()
    explorer_closed(explorer)
    report.equal([p.name for p in archives.glob("*.txt")], [], "and nothing is written")

    report.step("With the right one")
    open_archives(explorer, "Private.zip")
    explorer.zip_dialog().extract_here()
    ask_password(explorer, demo_stick.PASSWORD)
    explorer_closed(explorer)
    originals = digests(setting.stick / "Documents")
    report.equal(
        {p.name: hashlib.sha256(p.read_bytes()).hexdigest() for p in archives.glob("*.txt")},
        {name: originals[name] for name in ("Garden plan.txt", "Packing list.txt")}, "both files have the originals' checksums, asked once",
    )
    for path in archives.glob("*.txt"):
        path.unlink()


@part
def several(setting):
    report = setting.report
    explorer = open_drive(setting)
    report.step("Several archives in turn")
    open_archives(explorer, "Letters.zip", "Pictures stored.zip")
    first = explorer.zip_dialog(1, 2)
    first.press(104)
    second = explorer.zip_dialog(2, 2)
    report.check(" Pictures/Bay.png" in second.rows(), "the second follows when the first is closed, each with its number")
    report.picture(explorer.program, "second-of-two")
    press("Escape")
    second.wait_closed()

    report.step("Archives of two kinds")
    open_archives(explorer, "Letters.zip", "Pictures.cab")
    report.check(explorer.text(523) in explorer.message().texts(), "are refused with a message")
    report.picture(explorer.program, "mixed-kinds")
    explorer.answer()
    report.equal(len(explorer.program.windows()), 1, "and no archive window opens")


def answer_all(explorer, done, look=None):
    """Closes message boxes until `done`; answers what they said. `look` is called for the first."""
    said = []

    def one():
        nonlocal look
        box = next((window for window in explorer.program.windows() if window.role == "alert"), None)
        if box:
            said.extend(label.name for label in box.find_all("label") if label.name)
            if look:
                look()
                look = None
            explorer.answer()
        return done()

    wait_for("the messages to end", one)
    return said


@part
def damaged(setting):
    report = setting.report
    archives = setting.stick / "Archives"
    whole = bytearray((archives / "Letters.zip").read_bytes())
    with zipfile.ZipFile(archives / "Letters.zip") as opened:
        entry = next(e for e in opened.infolist() if e.filename.endswith("Arrival.txt"))
    data = entry.header_offset + 30 + len(entry.filename)
    flipped = bytearray(whole)
    flipped[data + entry.compress_size // 2] ^= 0x55
    (archives / "Damaged data.zip").write_bytes(flipped)
    (archives / "Cut off.zip").write_bytes(whole[: len(whole) // 2])
    (archives / "No archive.zip").write_bytes(b"This is no archive.\r\n")
    explorer = open_drive(setting)
    explorer.go("E:\\", "Archives")
    shutil.rmtree(archives / "Letters", ignore_errors=True)

    report.step("A damaged archive")
    open_archives(explorer, "Damaged data.zip")
    dialog = explorer.zip_dialog()
    dialog.extract_here()
    said = answer_all(explorer, lambda: not dialog.is_open, lambda: report.picture(explorer.program, "damaged"))
    named = [explorer.text(n).replace("%entry", "Letters/Arrival.txt") for n in (541, 557, 559)]
    report.check(any(text in " ".join(said) for text in named), "the damage is told, and of which file")
    originals = digests(setting.stick / "Documents/Letters")
    got = digests(archives / "Letters")
    report.check(all(got.get(n) == d for n, d in originals.items() if n not in ("Arrival.txt",)), "the other files are extracted whole")
    report.check(got.get("Arrival.txt") != originals["Arrival.txt"], "(the damage is real)")

    for name, messages in (("Cut off.zip", [554]), ("No archive.zip", [])):
        report.step(f"{name[:-4]}: a file that is no whole archive")
        open_archives(explorer, name)
        said = answer_all(explorer, lambda: explorer.program.is_shown(explorer.text(308, x=1, y=1)))
        report.equal(set(said), {explorer.text(number) for number in messages}, "says " + ("so" if messages else "nothing"))
        dialog = explorer.zip_dialog()
        report.equal(dialog.rows(), [], "its window opens with an empty list")
        press("Escape")
        dialog.wait_closed()
    for name in ("Damaged data.zip", "Cut off.zip", "No archive.zip"):
        (archives / name).unlink()


@part
def stop(setting):
    report = setting.report
    archives = setting.stick / "Archives"
    report.step("Escape while a large archive is extracted")
    block = b"".join(f"line {number} of a long log\r\n".encode() for number in range(200_000))
    count = 300
    with zipfile.ZipFile(archives / "Large.zip", "w", zipfile.ZIP_DEFLATED, compresslevel=1) as large:
        large.writestr(zipfile.ZipInfo("Large/"), b"")
        for number in range(count):
            large.writestr(f"Large/part {number:03}.log", block)
    explorer = open_drive(setting)
    explorer.go("E:\\", "Archives")
    press("F5")
    open_archives(explorer, "Large.zip")
    dialog = explorer.zip_dialog()
    dialog.extract_here()
    target = archives / "Large"
    wait_for("the first files", lambda: target.is_dir() and len(list(target.iterdir())) >= 3)
    press("Escape")
    wait_for("extracting to stop", lambda: dialog.window.find("label", explorer.text(613)))
    report.picture(explorer.program, "stopped")
    found = sorted(target.iterdir())
    report.check(3 <= len(found) < count, f"extracting stops ({len(found)} of {count} files)")
    report.check(all(path.read_bytes() == block for path in found), "every file that is there is whole")
    press("Escape")
    dialog.wait_closed()
    report.check(explorer.window.has("active"), "a second Escape closes the window, and the program goes on")
    shutil.rmtree(target)
    (archives / "Large.zip").unlink()


@part
def close(setting):
    report = setting.report
    report.step("Closing")
    setting.settings.unlink(missing_ok=True)
    explorer = setting.start()
    explorer.go("E:\\")
    splitter_before = settings_value(setting, "Left")
    header = explorer.files.header(explorer.text(115))
    left, top, width, height = header.rectangle
    widen = (left + width - 2, top + height // 2)
    drag(widen, (widen[0] + 60, widen[1]))
    wait_for("the wider column", lambda: explorer.files.header(explorer.text(115)).rectangle[2] > width + 40)
    report.check(True, "a column is dragged wider")
    explorer.tree.click(at=(0.5, 0.9))
    explorer.command(104)
    report.equal(explorer.program.ended(), 0, "the button Close ends the program")
    report.check(float(settings_value(setting, "ColWidth0")) > 1800 + 40 * 15, "the column's new width is saved")
    report.equal(settings_value(setting, "Left"), splitter_before, "the splitter's place is kept")
    report.equal(settings_value(setting, "Width"), "12315", "the window's size is saved")
    report.equal(list((setting.computer / "Pellarion/temp").glob("*.dll")), [], "the temporary copies are gone")

    report.step("The next start")
    explorer = setting.start()
    explorer.go("E:\\")
    report.check(explorer.files.header(explorer.text(115)).rectangle[2] > width + 40, "the column is as wide as it was left")
    press("alt+F4")
    report.equal(explorer.program.ended(), 0, "Alt+F4 ends the program")


def look_around(setting, name, *arguments, **options):
    """The explorer and the ZIP window under another look, each with a picture. The ZIP window stays open."""
    report = setting.report
    report.step(f"{name}: the explorer and a ZIP archive")
    write_settings(setting, options.get("language", "0409"))
    explorer = setting.start(*arguments, **options)
    explorer.go("E:\\", "Archives")
    explorer.select("Letters.zip")
    report.picture(explorer.program, f"{name}-explorer")
    explorer.command(107)
    dialog = explorer.zip_dialog()
    report.equal(dialog.rows(), zip_names(setting.stick / "Archives/Letters.zip"), "the ZIP window lists the entries")
    return explorer, report.picture(explorer.program, f"{name}-zip-window")


@part
def scaled(setting):
    explorer, _ = look_around(setting, "scale-200", scale=2.0)
    size = outer_size(explorer)
    setting.report.check(all(abs(side - 1642) <= 2 for side in size), f"at 200 % the window takes twice the pixels {size}")


@part
def dark(setting):
    _, picture = look_around(setting, "dark", PELLARION_PALETTE="dark")
    answer = subprocess.run(["identify", "-format", "%[fx:mean]", picture], capture_output=True, text=True, check=True)
    setting.report.check(float(answer.stdout) < 0.4, f"the windows are dark (mean brightness {float(answer.stdout):.2f})")


@part
def german(setting):
    explorer, _ = look_around(setting, "german", language="0407")
    texts = explorer.window.texts()
    english = read_texts("0409")
    setting.report.check(explorer.text(501) in texts and english[501] not in texts, "captions are German, none is English")


@part
def right_to_left(setting):
    explorer, _ = look_around(setting, "right-to-left", "-reverse")
    setting.report.check(explorer.tree.rectangle[0] > explorer.files.rectangle[0], "the tree stands on the right")
