"""The parts of the tour that pack files and folders into cabinets."""

import os
import shutil

from basics import digests, press, unpacked, wait_for
from parts import open_drive, part, write_settings


def prepare(setting):
    """A folder of things to pack and of things that are not packed."""
    folder = setting.stick / "Packing"
    shutil.rmtree(folder, ignore_errors=True)
    shutil.copytree(setting.stick / "Pictures", folder / "Summer/Pictures")
    shutil.copytree(setting.stick / "Documents/Letters", folder / "Summer/Letters")
    shutil.copy(setting.stick / "Documents/Garden plan.txt", folder)
    (folder / "Empty.txt").touch()
    (folder / "Diary.enc").write_bytes(b"sealed")
    (folder / "Nothing/inside").mkdir(parents=True)
    (folder / "Linked").mkdir()
    (folder / "Linked/note.txt").write_text("a note")
    (folder / "Linked/Elsewhere").symlink_to("/tmp")
    (folder / "Foreign").mkdir()
    for name in (b"caf\xe9.txt", b"na\xefve.txt"):  # not UTF-8
        (folder / "Foreign" / os.fsdecode(name)).write_bytes(b"foreign")
    return folder


def make_large(folder):
    """Some gigabytes of nothing, so that packing can be watched."""
    (folder / "Log").mkdir()
    for number in range(4):
        with open(folder / f"Log/part {number}.log", "wb") as file:
            file.truncate(1 << 30)


def sizes(folder):
    return {path.name: path.stat().st_size for path in folder.rglob("*")}


def watch(explorer, report, name):
    """Starts packing the large folder, takes a picture of the notice, and stops it."""
    explorer.select("Log")
    explorer.command(106)
    notice = explorer.program.window(explorer.text(106))
    report.check(notice.find("label", explorer.text(564)), "the notice asks for patience, by the owner's name")
    wait_for("the progress", lambda: any(label.name.endswith(" %") for label in notice.find_all("label")))
    report.picture(explorer.program, f"{name}packing", [notice])
    press("Escape")
    wait_for("the notice to go", lambda: not explorer.program.is_shown(explorer.text(106)))


@part
def compress(setting):
    report = setting.report
    folder = prepare(setting)
    explorer = open_drive(setting)
    explorer.go("E:\\", "Packing")
    report.step("Compress: a file and a folder")
    originals = digests(folder)
    explorer.select("Garden plan.txt", "Summer")
    explorer.command(106)
    wait_for("the cabinets", lambda: explorer.selected() == ["Garden plan.txt.cab", "Summer.cab"])
    report.check("Summer" not in explorer.names(), "the cabinets are selected, and what was packed is gone from the list")
    report.check(not (folder / "Summer").exists() and not (folder / "Garden plan.txt").exists(), "and from the drive")
    report.equal(unpacked(folder / "Garden plan.txt.cab"), {"Garden plan.txt": originals["Garden plan.txt"]}, "the file's cabinet holds it")
    summer = {name.split("/", 1)[1]: digest for name, digest in originals.items() if name.startswith("Summer/")}
    report.equal(unpacked(folder / "Summer.cab"), summer, "the folder's cabinet holds every file of it")
    report.picture(explorer.program, "compressed")

    report.step("Compress: what is not packed")
    before = digests(folder)
    for names, number, told in (
        (["Empty.txt"], 582, "an empty file"), (["Diary.enc"], 583, "an encrypted file"), (["Nothing"], 576, "a folder without a file"),
    ):
        explorer.select(*names)
        explorer.command(106)
        report.check(explorer.text(number) in explorer.message().texts(), f"{told} is refused, with the reason")
        report.picture(explorer.program, f"not-packed-{number}")
        explorer.answer()
    explorer.select("Summer.cab")
    explorer.command(106)
    wait_for("the list", lambda: explorer.selected() == [])
    report.check(not (folder / "Summer.cab.cab").exists(), "a cabinet is passed over")
    explorer.select("Linked")
    explorer.command(106)
    said = " ".join(explorer.message().texts())
    report.check(explorer.text(503) + " 'E:\\Packing\\Linked'." in said and explorer.text(631) in said, "a folder with a link is told, with the reason")
    report.picture(explorer.program, "not-packed-link")
    explorer.answer()
    explorer.select("Foreign")
    explorer.command(106)
    names = explorer.program.window("Compress Operation Abort")
    report.equal(names.get("tree").column(), ["1", "2"], "names that cannot be stored are listed")
    report.picture(explorer.program, "names")
    press("Return")
    explorer.go("E:\\")
    explorer.select("startdeck.exe")
    explorer.command(106)
    report.check(explorer.text(563) in explorer.message().texts(), "the drive's launcher is refused")
    explorer.answer()
    report.equal(digests(folder), before, "every file is still what it was")

    report.step("Compress: watched and stopped")
    make_large(folder)
    large = sizes(folder)
    explorer.go("E:\\", "Packing")
    watch(explorer, report, "")
    report.equal(sizes(folder), large, "Escape stops it: every file is there, and no cabinet")
    for name, language, options in (
        ("dark-", "0409", {"PELLARION_PALETTE": "dark"}), ("scale-200-", "0409", {"scale": 2.0}), ("german-", "0407", {}),
    ):
        report.step(f"Compress: {name[:-1]}")
        write_settings(setting, language)
        explorer = setting.start(language=language, **options)
        explorer.go("E:\\", "Packing")
        watch(explorer, report, name)
        explorer.select("Linked")
        explorer.command(106)
        report.picture(explorer.program, f"{name}not-packed-link", [explorer.message()])
        explorer.answer()
        explorer.select("Foreign")
        explorer.command(106)
        report.picture(explorer.program, f"{name}names", [explorer.program.window("Compress Operation Abort")])
    setting.stop()
    setting.settings.unlink()
    shutil.rmtree(folder)
