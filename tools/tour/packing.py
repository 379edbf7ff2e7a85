"""The parts of the tour that pack files and folders into cabinets."""

import os
import shutil

import steps
from basics import digests, press, wait_for
from parts import open_drive, part, write_settings


def prepare(setting):
    """What both systems' tours pack, and what this system's alone cannot."""
    folder = steps.things_to_pack(setting, "Packing")
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
    explorer.go("Packing")
    steps.compress(setting, folder)
    report.equal(explorer.selected(), ["Garden plan.txt.cab", "Summer.cab"], "the cabinets are selected")

    report.step("Compress: what else is not packed")
    before = digests(folder)
    steps.refuse_to_pack(setting, "Nothing", 576, "a folder without a file")
    explorer.select("Summer.cab")
    explorer.command(106)
    wait_for("the list", lambda: explorer.selected() == [])
    report.check(not (folder / "Summer.cab.cab").exists(), "a cabinet is passed over")
    explorer.select("Linked")
    explorer.command(106)
    said = explorer.said()
    report.check(explorer.text(503) + " 'E:\\Packing\\Linked'." in said and explorer.text(631) in said, "a folder with a link is told, with the reason")
    report.picture(explorer.program, "not-packed-link")
    explorer.answer()
    explorer.select("Foreign")
    explorer.command(106)
    names = explorer.program.window("Compress Operation Abort")
    report.equal(names.get("tree").column(), ["1", "2"], "names that cannot be stored are listed")
    report.picture(explorer.program, "names")
    press("Return")
    explorer.go()
    explorer.select("startdeck.exe")
    explorer.command(106)
    report.check(explorer.text(563) in explorer.said(), "the drive's launcher is refused")
    explorer.answer()
    report.equal(digests(folder), before, "every file is still what it was")

    report.step("Compress: watched and stopped")
    make_large(folder)
    large = sizes(folder)
    explorer.go("Packing")
    watch(explorer, report, "")
    report.equal(sizes(folder), large, "Escape stops it: every file is there, and no cabinet")
    for name, language, options in (
        ("dark-", "0409", {"PELLARION_PALETTE": "dark"}), ("scale-200-", "0409", {"scale": 2.0}), ("german-", "0407", {}),
    ):
        report.step(f"Compress: {name[:-1]}")
        write_settings(setting, language)
        explorer = setting.start(language=language, **options)
        explorer.go("Packing")
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
