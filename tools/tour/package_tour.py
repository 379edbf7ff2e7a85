#!/usr/bin/env python3
"""Both programs from one folder on one drive: what the one sets and marks, the other finds.

Started by scripts/package, which brings the display, the session bus and Wine's folder.
"""

import argparse
import os
import sys
from pathlib import Path

import driver
import explorer as linux
import windows_explorer as windows
from basics import Failure, drag, press, screenshot, wait_for

FOLDERS = ("Letters", "Pictures")


def marks(folder):
    return sorted((folder / "tree.dat").read_text().split())


def windows_sets(report, folder, icons):
    report.step("The Windows program: a wider column and a mark")
    program = windows.Explorer("E:\\Program\\Pellarion\\pellarion.exe", dict(os.environ), icons, "User")
    program.go()
    program.click_mark(1)
    wait_for("the mark's file", (folder / "tree.dat").exists)
    header = program.window.rectangle[0] + 428, program.places("folder")[0][1] - 23
    drag(header, (header[0] + 60, header[1]))
    screenshot(report.next_picture("windows"))
    program.command(104)
    report.equal(program.program.ended(), 0, "it ends")
    report.equal(marks(folder), ["\\Letters"], "the mark is written")


def linux_finds(report, folder, stick, computer):
    report.step("The Linux program, from the same folder")
    environment = {"PELLARION_DRIVES": f"C=fixed:{computer};E=removable:{stick}"}
    program = linux.Explorer([folder / "pellarion"], "0409", "User", 1.0, environment)
    program.go()
    report.check(program.files.header(program.text(115)).rectangle[2] > 120 + 40, "finds the wider column")
    report.check(program.node("E:\\Letters").has("checked"), "and the mark")
    report.check(not program.node("E:\\Pictures").has("checked"), "which no other folder bears")
    program.node("E:\\Pictures").click()
    press("space")
    wait_for("its own mark", lambda: "\\Pictures" in marks(folder))
    report.picture(program.program, "linux")
    program.ready()
    press("alt+F4")
    report.equal(program.program.ended(), 0, "it ends")


def windows_finds(report, folder, icons):
    report.step("The Windows program again")
    before = (folder / "setting.ini").read_bytes()
    program = windows.Explorer("E:\\Program\\Pellarion\\pellarion.exe", dict(os.environ), icons, "User")
    program.go()
    screenshot(report.next_picture("windows-again"))
    program.click_mark(1)
    wait_for("the first mark to go", lambda: marks(folder) == ["\\Pictures"])
    report.check(True, "finds both marks: a click takes away the first, and the other one stays")
    program.command(104)
    report.equal(program.program.ended(), 0, "it ends")
    report.equal((folder / "setting.ini").read_bytes(), before, "and leaves the settings as the other one wrote them")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    for name in ("--icons", "--stick", "--output"):
        parser.add_argument(name, type=Path, required=True)
    options = parser.parse_args()

    driver.start_bus()
    stick, computer = options.stick.resolve(), options.output.resolve() / "computer"
    computer.mkdir(parents=True)
    for name in FOLDERS:
        (stick / name).mkdir()
        (stick / name / "note.txt").write_text(name)
    (Path(os.environ["WINEPREFIX"]) / "dosdevices" / "e:").symlink_to(stick)
    folder = stick / "Program" / "Pellarion"
    report = driver.Report(options.output)
    try:
        windows_sets(report, folder, options.icons)
        linux_finds(report, folder, stick, computer)
        windows_finds(report, folder, options.icons)
    except Failure as error:
        report.check(False, str(error))
        screenshot(options.output / "failed.png")
    return report.close()


if __name__ == "__main__":
    sys.exit(main())
