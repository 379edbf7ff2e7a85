"""The parts of the tour that extract cabinets and RAR archives."""

import shutil

from basics import digests, press, wait_for
from explorer import ArchiveDialog
from parts import open_archives, open_drive, part, visible_windows

CABINET, RAR = 303, 307


def dialog_of(explorer, caption):
    """The window of cabinets or of RAR archives, listed and with its first row selected."""
    dialog = ArchiveDialog(explorer, explorer.text(caption))
    wait_for("the first row to be selected", lambda: dialog.list.rows and dialog.list.cell(0).has("selected"))
    return dialog


@part
def cabinets(setting):
    report = setting.report
    explorer = open_drive(setting)
    folder = setting.stick / "Archives"

    report.step("Two cabinets in one window: a double-click brings one, Extract several")
    explorer.go("E:\\", "Archives")
    explorer.files.get_row("Pictures.cab").double_click(at=(0.3, 0.5))
    dialog = dialog_of(explorer, CABINET)
    report.equal(sorted(dialog.rows()), sorted(p.name for p in (setting.stick / "Pictures").iterdir()), "a double-click lists it")
    press("Escape")
    dialog.wait_closed()
    open_archives(explorer, "Letters.cab", "Pictures.cab")
    dialog = dialog_of(explorer, CABINET)
    report.equal(set(dialog.rows(3)), {"Letters\\", ""}, "folders inside a cabinet stand in the column Path")
    report.equal(dialog.list.rows, 8, "both cabinets are listed")
    process = explorer.program.process.pid
    windows = len(visible_windows(process))
    dialog.list.cell(1).click(button=3)
    wait_for("the menu", lambda: len(visible_windows(process)) > windows)
    press("t")
    box = dialog.window.get("check box", explorer.text(515))
    wait_for("the check mark", lambda: box.has("checked"))
    report.check(all(dialog.list.cell(row).has("selected") for row in range(8)), "the menu's Select all does what the box does")
    report.picture(explorer.program, "cab-window")

    report.step("Extracting beside them")
    dialog.press(514)
    dialog.wait_closed()
    letters = {f"Letters/{name}": digest for name, digest in digests(setting.stick / "Documents/Letters").items()}
    report.equal(digests(folder / "Letters"), letters, "every letter lies below a folder of the cabinet's name")
    report.equal(digests(folder / "Pictures"), digests(setting.stick / "Pictures"), "and so does every picture")
    wait_for("the folders to be selected", lambda: explorer.selected() == ["Letters", "Pictures"])
    report.check(True, "the new folders are selected in the list")
    for name in ("Letters", "Pictures"):
        shutil.rmtree(folder / name)

    report.step("A cabinet that is deleted after extracting stays when only a part is extracted")
    shutil.copy(folder / "Pictures.cab", folder / "Copy.cab")
    press("F5")
    wait_for("the copy", lambda: "Copy.cab" in explorer.names())
    open_archives(explorer, "Copy.cab")
    dialog = dialog_of(explorer, CABINET)
    dialog.check(521)
    dialog.press(514)
    report.check(any(explorer.text(561) in text for text in explorer.message().texts()), "it says that the cabinet stays")
    explorer.answer()
    dialog.wait_closed()
    report.check((folder / "Copy.cab").exists(), "and it stays")
    open_archives(explorer, "Copy.cab")
    dialog = dialog_of(explorer, CABINET)
    dialog.check(521)
    dialog.extract_here()
    dialog.wait_closed()
    report.check(not (folder / "Copy.cab").exists(), "extracted whole, it goes")
    shutil.rmtree(folder / "Copy")

    report.step("Opening a file of a cabinet")
    open_archives(explorer, "Letters.cab")
    dialog = dialog_of(explorer, CABINET)
    press("Return")
    opened = wait_for("the letter to open", setting.documents_opened)
    report.check("/Letters/Letters/" in opened[-1], "Enter hands it to its program")
    press("Escape")
    dialog.wait_closed()
    press("alt+F4")
    explorer.program.ended()
    report.check(not any((setting.computer / "Pellarion").rglob("*.txt")), "its copy is gone with the program")


@part
def rar_archives(setting):
    report = setting.report
    explorer = open_drive(setting)
    folder = setting.stick / "Archives"

    report.step("Two RAR archives in one window")
    open_archives(explorer, "Pictures.rar", "Sundial.rar")
    dialog = dialog_of(explorer, RAR)
    report.equal(dialog.list.rows, 5 + 6, "all entries are listed")
    report.equal(dialog.rows(2)[0], "Directory Entry", "a folder is called one")
    dialog.list.get_row("Pictures\\Bay.png").click(at=(0.5, 0.5))
    dialog.list.get_row("Sundial\\sundial.c").click(at=(0.5, 0.5), holding="ctrl")
    report.picture(explorer.program, "rar-window")

    report.step("Only what is selected reaches the target")
    (folder / "Pictures").mkdir()
    (folder / "Pictures/Night.png").write_bytes(b"mine")
    dialog.press(514)
    dialog.wait_closed()
    report.equal({p.name for p in (folder / "Pictures").iterdir()}, {"Bay.png", "Night.png"}, "one picture came")
    report.check((folder / "Pictures/Night.png").read_bytes() == b"mine", "and a file that was there is as it was")
    report.equal([p.name for p in (folder / "Sundial").rglob("*")], ["sundial.c"], "and one file of the other archive")
    shutil.rmtree(folder / "Pictures")
    shutil.rmtree(folder / "Sundial")

    report.step("All of an archive, to another folder, and the archive deleted")
    shutil.copy(folder / "Sundial.rar", folder / "Copy.rar")
    press("F5")
    wait_for("the copy", lambda: "Copy.rar" in explorer.names())
    target = setting.computer / "Unpacked"
    target.mkdir(exist_ok=True)
    open_archives(explorer, "Copy.rar")
    dialog = dialog_of(explorer, RAR)
    dialog.check(515)
    dialog.check(521)
    dialog.press(513)
    dialog.pick("C:\\Unpacked")
    dialog.wait_closed()
    report.equal(digests(target / "Sundial"), digests(setting.stick / "Projects/Sundial"), "every file has the original's checksum")
    report.check(not (folder / "Copy.rar").exists(), "and the archive is gone")
    shutil.rmtree(target)

    report.step("A listing that fails ends the program")
    (folder / "Broken.rar").write_bytes(b"This is no archive.\r\n")
    press("F5")
    wait_for("the file", lambda: "Broken.rar" in explorer.names())
    open_archives(explorer, "Broken.rar")
    report.check(any("is not RAR archive" in text for text in explorer.message().texts()), "it says why")
    report.picture(explorer.program, "rar-broken")
    explorer.answer()
    explorer.program.ended()
    report.check(True, "and the program has ended")
    (folder / "Broken.rar").unlink()


@part
def archive_windows(setting):
    report = setting.report
    for name, arguments, options in (
        ("scale-200", [], {"scale": 2.0}),
        ("dark", [], {"PELLARION_PALETTE": "dark"}),
        ("right-to-left", ["-reverse"], {}),
    ):
        report.step(f"{name}: cabinets and RAR archives")
        explorer = setting.start(*arguments, **options)
        for archive, caption in (("Letters.cab", CABINET), ("Sundial.rar", RAR)):
            open_archives(explorer, archive)
            dialog = dialog_of(explorer, caption)
            report.check(dialog.list.rows, f"{archive} is listed")
            report.picture(explorer.program, f"{name}-{archive.replace('.', '-').lower()}")
            press("Escape")
            dialog.wait_closed()
