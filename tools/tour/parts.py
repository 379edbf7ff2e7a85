"""The parts of the tour, in order. Each starts the program where it needs a fresh one."""

import os
import shutil
import signal
import subprocess
import time
import zipfile

import steps
from basics import DEFAULT_SETTINGS, demo_stick, digests, drag, part_list, press, wait_for, xdotool
from texts import read as read_texts

PARTS, part = part_list()


def zip_names(archive):
    with zipfile.ZipFile(archive) as opened:
        return [(("+" if entry.flag_bits & 1 else " ") + entry.filename) for entry in opened.infolist()]


def outer_size(explorer):
    """Size of the main window with its frame."""
    width, height = explorer.window.rectangle[2:]
    identity = explorer.program.front()
    answer = subprocess.run(["xprop", "-id", identity, "_NET_FRAME_EXTENTS"], capture_output=True, text=True, check=True)
    left, right, top, bottom = (int(value) for value in answer.stdout.split("=")[1].split(","))
    return width + left + right, height + top + bottom


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
        program = setting.start().program
        process = program.process
        next(line for line in events.stdout if line.startswith("CreateNotify"))
        for _ in range(300):
            os.kill(process.pid, signal.SIGSTOP)
            windows = program.visible()
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
    report.equal(outer_size(explorer), (821, 821), "the window has the size of the settings (12315 twips are 821 pixels)")
    report.equal(explorer.tree.column(), [explorer.text(123), "E:\\"], "the tree shows the computer and the removable drive, no other")
    report.check(f"{explorer.text(562)}: " in window.texts(), "the free space is shown, with its caption")
    steps.first_start(setting)
    steps.second_start(setting, explorer.program.process.args)


def open_drive(setting):
    explorer = setting.start()
    explorer.go()
    return explorer


@part
def browse(setting):
    report = setting.report
    report.step("Browsing by mouse")
    explorer = open_drive(setting)
    report.equal(sorted(explorer.names()), sorted(entry.name for entry in setting.stick.iterdir()), "the list shows what the drive holds")
    report.equal(
        explorer.tree.column()[2:], sorted(entry.name for entry in setting.stick.iterdir() if entry.is_dir()),
        "the tree shows its folders, in order",
    )
    explorer.go("Documents")
    documents = setting.stick / "Documents"
    report.equal(set(explorer.names()), {entry.name for entry in documents.iterdir()}, "a click on Documents lists it")
    report.picture(explorer.program, "documents")

    report.step("Sorting by clicks on a header")
    sizes = {entry.name: 0 if entry.is_dir() else entry.stat().st_size for entry in documents.iterdir()}

    def sorted_by_size(backwards):
        return [sizes[name] for name in explorer.names()] == sorted(sizes.values(), reverse=backwards)

    explorer.files.header(explorer.text(117)).click()
    wait_for("ascending sizes", lambda: sorted_by_size(False))
    # Elsewhere on the header: a second click on the same spot would be a double-click.
    explorer.files.header(explorer.text(117)).click(at=(0.2, 0.5))
    wait_for("descending sizes", lambda: sorted_by_size(True))
    report.check(not sorted_by_size(False), "by size, upwards and then downwards")
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
    explorer.go()
    report.check(explorer.node("E:\\Pictures").has("checked"), "the mark is there again at the next start")
    click_box(explorer.node("E:\\Pictures"))
    wait_for("the mark to go", lambda: not explorer.node("E:\\Pictures").has("checked"))
    report.equal(marks.read_bytes(), b"", "a second click takes it away")


def click_box(node):
    """Clicks the check box of a tree row, which stands at its beginning."""
    left, top, _, height = node.settled()
    xdotool("mousemove", left + 12, top + height // 2, "click", 1)


@part
def extract(setting):
    report = setting.report
    explorer = open_drive(setting)
    explorer.go("Archives")
    archives, documents = setting.stick / "Archives", setting.stick / "Documents"
    steps.zip_archive(setting)

    report.step("Extracting to another folder")
    target = setting.computer / "Unpacked"
    target.mkdir(exist_ok=True)
    dialog = explorer.extract("Pictures stored.zip")
    report.equal(dialog.rows(), zip_names(archives / "Pictures stored.zip"), "the window lists the archive's entries")
    dialog.list.get_row(" Pictures/Bay.png").click(at=(0.5, 0.5))
    dialog.list.get_row(" Pictures/Night.png").click(at=(0.5, 0.5), holding="ctrl")
    dialog.press(513)
    dialog.pick("C:\\Unpacked", lambda: report.picture(explorer.program, "folder-picker"))
    dialog.wait_closed()
    # A folder that no entry of its own asks for is made in capitals.
    wanted = {f"PICTURES/{name}": digests(setting.stick / "Pictures")[name] for name in ("Bay.png", "Night.png")}
    report.equal(digests(target), wanted, "the two chosen pictures are there, and only they")
    shutil.rmtree(target)

    report.step("An archive of several thousand entries")
    dialog = explorer.extract("Diary.zip")
    report.equal(dialog.list.rows, len(zip_names(archives / "Diary.zip")), "every entry has its row")
    dialog.list.header(explorer.text(117)).click()
    report.check(wait_for("sorted sizes", lambda: dialog.rows(2)[:40].count("Directory Entry") > 1), "a click on Size sorts them")
    report.picture(explorer.program, "many-entries")
    dialog.extract_here()
    dialog.wait_closed(120)
    report.equal(digests(archives / "Diary"), digests(documents / "Diary"), f"{demo_stick.MANY} files extracted, each with the original's checksum")

    steps.encrypted_archive(setting)

    report.step("Several archives in turn")
    first = explorer.extract("Letters.zip", "Pictures stored.zip", of=2)
    first.press(104)
    second = explorer.archive_window(number=2, of=2)
    report.check(" Pictures/Bay.png" in second.rows(), "the second follows when the first is closed, each with its number")
    report.picture(explorer.program, "second-of-two")
    press("Escape")
    second.wait_closed()
    steps.mixed_kinds(setting)


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
    with zipfile.ZipFile(archives / "Letters.zip") as opened:
        entry = next(e for e in opened.infolist() if e.filename.endswith("Arrival.txt"))
    data = entry.header_offset + 30 + len(entry.filename)
    flipped = bytearray((archives / "Letters.zip").read_bytes())
    flipped[data + entry.compress_size // 2] ^= 0x55
    (archives / "Damaged data.zip").write_bytes(flipped)
    explorer = open_drive(setting)
    explorer.go("Archives")
    report.step("A damaged archive")
    dialog = explorer.extract("Damaged data.zip")
    dialog.extract_here()
    said = answer_all(explorer, lambda: not dialog.is_open, lambda: report.picture(explorer.program, "damaged"))
    named = [explorer.text(n).replace("%entry", "Letters/Arrival.txt") for n in (541, 557, 559)]
    report.check(any(text in " ".join(said) for text in named), "the damage is told, and of which file")
    originals = digests(setting.stick / "Documents/Letters")
    got = digests(archives / "Letters")
    report.check(all(got.get(n) == d for n, d in originals.items() if n not in ("Arrival.txt",)), "the other files are extracted whole")
    report.check(got.get("Arrival.txt") != originals["Arrival.txt"], "(the damage is real)")

    (archives / "Damaged data.zip").unlink()


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
    explorer.go("Archives")
    press("F5")
    dialog = explorer.extract("Large.zip")
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
    explorer = open_drive(setting)
    header = explorer.files.header(explorer.text(115))
    left, top, width, height = header.rectangle
    widen = (left + width - 2, top + height // 2)
    drag(widen, (widen[0] + 60, widen[1]))
    wait_for("the wider column", lambda: explorer.files.header(explorer.text(115)).rectangle[2] > width + 40)
    report.check(True, "a column is dragged wider")
    explorer.tree.click(at=(0.5, 0.9))
    steps.closed(setting)


def look_around(setting, name, *arguments, **options):
    """The explorer and an archive window of each kind under another look, each with a picture. Answers the last one."""
    report = setting.report
    report.step(f"{name}: the explorer and archives")
    write_settings(setting, options.get("language", "0409"))
    explorer = setting.start(*arguments, **options)
    explorer.go("Archives")
    explorer.select("Letters.zip")
    report.picture(explorer.program, f"{name}-explorer")
    for archive, caption in (("Letters.cab", steps.CABINET), ("Sundial.rar", steps.RAR), ("Letters.zip", 308)):
        dialog = explorer.extract(archive, caption=caption)
        report.check(dialog.list.rows, f"{archive} is listed")
        picture = report.picture(explorer.program, f"{name}-{archive.replace('.', '-').lower()}")
        press("Escape")
        dialog.wait_closed()
    return explorer, picture


@part
def looks(setting):
    report = setting.report
    explorer, _ = look_around(setting, "scale-200", scale=2.0)
    size = outer_size(explorer)
    report.check(all(abs(side - 1642) <= 2 for side in size), f"at 200 % the window takes twice the pixels {size}")

    _, picture = look_around(setting, "dark", PELLARION_PALETTE="dark")
    answer = subprocess.run(["identify", "-format", "%[fx:mean]", picture], capture_output=True, text=True, check=True)
    report.check(float(answer.stdout) < 0.4, f"the windows are dark (mean brightness {float(answer.stdout):.2f})")

    explorer, _ = look_around(setting, "german", language="0407")
    texts = explorer.window.texts()
    report.check(explorer.text(501) in texts and read_texts("0409")[501] not in texts, "captions are German, none is English")

    explorer, _ = look_around(setting, "right-to-left", "-reverse")
    report.check(explorer.tree.rectangle[0] > explorer.files.rectangle[0], "the tree stands on the right")
