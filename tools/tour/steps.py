"""Steps that the tours of both systems take, each through its own `Explorer`, which offers the same ways to act."""

import os
import shutil
import subprocess

from basics import DEFAULT_SETTINGS, demo_stick, digests, press, unpacked, wait_for

CABINET, RAR = 303, 307  # captions of their windows


def one_line(text):
    return " ".join(text.split())


def first_start(setting):
    report, explorer = setting.report, setting.explorer
    report.equal(setting.settings.read_bytes(), DEFAULT_SETTINGS, "the settings file is written byte for byte as the default")
    report.equal(
        setting.text_libraries(), ["ox_langfile0409.dll", "oxlic_0409.dll"],
        "the text libraries are loaded from copies on the computer's drive",
    )
    report.picture(explorer.program, "explorer")


def second_start(setting, command):
    report, program = setting.report, setting.explorer.program
    report.step("A second start")
    second = subprocess.run(command, env={**os.environ, **setting.environment}, timeout=60)
    report.equal(second.returncode, 0, "ends by itself, silently")
    report.check(program.alive and len(program.windows()) == 1, "the first goes on, with its one window")
    report.equal(len(setting.text_libraries()), 2, "its temporary copies are still there")


def things_to_pack(setting, name):
    """A folder of things to pack and of things that are not packed."""
    folder = setting.stick / name
    shutil.rmtree(folder, ignore_errors=True)
    shutil.copytree(setting.stick / "Pictures", folder / "Summer/Pictures")
    shutil.copytree(setting.stick / "Documents/Letters", folder / "Summer/Letters")
    shutil.copy(setting.stick / "Documents/Garden plan.txt", folder)
    (folder / "Empty.txt").touch()
    (folder / "Diary.enc").write_bytes(b"sealed")
    return folder


def refuse_to_pack(setting, name, number, told):
    """With the message of that number."""
    report, explorer = setting.report, setting.explorer
    explorer.select(name)
    explorer.command(106)
    report.check(one_line(explorer.text(number)) in explorer.said(), f"{told} is refused, with the reason")
    report.picture(explorer.program, f"not-packed-{number}")
    explorer.answer()


def compress(setting, folder):
    """Packs what `things_to_pack` has put into the folder that is listed."""
    report, explorer = setting.report, setting.explorer
    report.step("Compress: what is not packed")
    originals = digests(folder)
    refuse_to_pack(setting, "Empty.txt", 582, "an empty file")
    refuse_to_pack(setting, "Diary.enc", 583, "an encrypted file")
    report.equal(digests(folder), originals, "every file is still what it was")

    report.step("Compress: a file and a folder")
    explorer.select("Garden plan.txt", "Summer")
    explorer.command(106)
    wait_for("the cabinets", lambda: {"Garden plan.txt.cab", "Summer.cab"} <= set(explorer.names()))
    report.check(not (folder / "Summer").exists() and not (folder / "Garden plan.txt").exists(), "what was packed is gone")
    report.equal(unpacked(folder / "Garden plan.txt.cab"), {"Garden plan.txt": originals["Garden plan.txt"]}, "the file's cabinet holds it")
    summer = {name.split("/", 1)[1]: digest for name, digest in originals.items() if name.startswith("Summer/")}
    report.equal(unpacked(folder / "Summer.cab"), summer, "the folder's cabinet holds every file of it")
    report.picture(explorer.program, "compressed")


def zip_archive(setting):
    """The explorer lists the folder of archives, here and below."""
    report, explorer = setting.report, setting.explorer
    report.step("A ZIP archive: all of it beside the archive")
    unpacked_here, originals = setting.stick / "Archives/Letters", setting.stick / "Documents/Letters"
    dialog = explorer.extract("Letters.zip")
    report.picture(explorer.program, "zip-window")
    dialog.press(514)
    report.check(one_line(explorer.text(524)) in explorer.said(), "with nothing selected it says so")
    report.picture(explorer.program, "nothing-selected")
    explorer.answer()
    dialog.extract_here()
    dialog.wait_closed()
    report.equal(digests(unpacked_here), digests(originals), "every file has the original's checksum")
    late = [abs(path.stat().st_mtime - (originals / path.name).stat().st_mtime) for path in unpacked_here.iterdir()]
    report.check(max(late) <= 2, "and its time")
    wait_for("the new folder's row to be selected", lambda: explorer.selected() == ["Letters"])
    report.picture(explorer.program, "extracted")
    shutil.rmtree(unpacked_here)


def encrypted_archive(setting):
    report, explorer = setting.report, setting.explorer
    folder, originals = setting.stick / "Archives", digests(setting.stick / "Documents")
    for password in ("moondial", demo_stick.PASSWORD):
        report.step(f"An encrypted archive, the password {password}")
        dialog = explorer.extract("Private.zip")
        dialog.extract_here()
        explorer.enter_password(password, lambda: report.picture(explorer.program, "password"))
        if password != demo_stick.PASSWORD:
            report.check(one_line(explorer.text(555)) in explorer.said(), "a wrong one is said to be wrong")
            report.picture(explorer.program, "wrong-password")
            explorer.answer()
            report.equal(list(folder.glob("*.txt")), [], "and nothing is written")
        dialog.wait_closed()
    got = {name: digest for name, digest in digests(folder).items() if name.endswith(".txt") and "/" not in name}
    wanted = {name: originals[name] for name in ("Garden plan.txt", "Packing list.txt")}
    report.equal(got, wanted, "the right one brings both files, asked once")
    for name in got:
        (folder / name).unlink()


def cabinet(setting):
    report, explorer = setting.report, setting.explorer
    report.step("A cabinet")
    folder, originals = setting.stick / "Archives/Pictures", setting.stick / "Pictures"
    explorer.select("Pictures.cab")
    press("Return")
    dialog = explorer.archive_window(CABINET)
    report.picture(explorer.program, "cabinet")
    dialog.extract_here()
    dialog.wait_closed()
    report.equal(digests(folder), digests(originals), "Enter lists it; every picture comes out below a folder of its name")
    shutil.rmtree(folder)


def rar_archive(setting):
    report, explorer = setting.report, setting.explorer
    report.step("A RAR archive, deleted afterwards")
    folder = setting.stick / "Archives"
    shutil.copy(folder / "Sundial.rar", folder / "Copy.rar")
    press("F5")
    wait_for("the copy", lambda: "Copy.rar" in explorer.names())
    dialog = explorer.extract("Copy.rar", caption=RAR)
    report.picture(explorer.program, "rar")
    dialog.check(521)
    dialog.extract_here()
    dialog.wait_closed()
    report.equal(digests(folder / "Sundial"), digests(setting.stick / "Projects/Sundial"), "every file has the original's checksum")
    report.check(not (folder / "Copy.rar").exists(), "and the archive is gone")
    shutil.rmtree(folder / "Sundial")


def mixed_kinds(setting):
    report, explorer = setting.report, setting.explorer
    report.step("Archives of two kinds")
    explorer.go("Archives")
    explorer.select("Letters.zip", "Pictures.cab")
    explorer.command(107)
    report.check(one_line(explorer.text(523)) in explorer.said(), "are refused with a message")
    report.picture(explorer.program, "mixed-kinds")
    explorer.answer()


def closed(setting):
    """After a column was dragged wider by 60 pixels."""
    report, explorer = setting.report, setting.explorer
    explorer.command(104)
    report.equal(explorer.program.ended(), 0, "the button Close ends the program")
    values = setting.setting_values()
    report.check(float(values["ColWidth0"]) > 1800 + 40 * 15, f"the column's new width is saved ({values['ColWidth0']})")
    report.equal(
        (values["Width"], values["Height"], values["Left"]), ("12315", "12315", "4570"),
        "the window's size and the splitter's place are kept",
    )
    report.equal(setting.text_libraries(), [], "the temporary copies are gone")

    report.step("The next start")
    before = setting.settings.read_bytes()
    explorer = setting.start()
    explorer.go()
    report.picture(explorer.program, "next-start")
    press("alt+F4")
    report.equal(explorer.program.ended(), 0, "Alt+F4 ends the program")
    report.equal(setting.settings.read_bytes(), before, "what it found in the settings it leaves there")
