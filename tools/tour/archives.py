"""The parts of the tour that extract cabinets and RAR archives."""

import steps
from basics import press, wait_for
from parts import open_drive, part


@part
def cabinets(setting):
    report = setting.report
    explorer = open_drive(setting)
    explorer.go("Archives")
    steps.cabinet(setting)

    report.step("Two cabinets in one window")
    dialog = explorer.extract("Letters.cab", "Pictures.cab", caption=steps.CABINET)
    report.equal((dialog.list.rows, set(dialog.rows(3))), (8, {"Letters\\", ""}), "both are listed, with folders in the column Path")
    windows = len(explorer.program.visible())
    dialog.list.cell(1).click(button=3)
    wait_for("the menu", lambda: len(explorer.program.visible()) > windows)
    press("t")
    box = dialog.window.get("check box", explorer.text(515))
    wait_for("the check mark", lambda: box.has("checked"))
    report.check(all(dialog.list.cell(row).has("selected") for row in range(8)), "the menu's Select all does what the box does")
    report.picture(explorer.program, "cab-window")
    press("Escape")
    dialog.wait_closed()

    report.step("Opening a file of a cabinet")
    dialog = explorer.extract("Letters.cab", caption=steps.CABINET)
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
    explorer.go("Archives")
    report.step("Two RAR archives in one window")
    dialog = explorer.extract("Pictures.rar", "Sundial.rar", caption=steps.RAR)
    report.equal((dialog.list.rows, dialog.rows(2)[0]), (5 + 6, "Directory Entry"), "all entries are listed, a folder as one")
    report.picture(explorer.program, "rar-window")
    press("Escape")
    dialog.wait_closed()
    steps.rar_archive(setting)

    report.step("A listing that fails ends the program")
    broken = setting.stick / "Archives/Broken.rar"
    broken.write_bytes(b"This is no archive.\r\n")
    press("F5")
    wait_for("the file", lambda: broken.name in explorer.names())
    explorer.select(broken.name)
    explorer.command(107)
    report.check("is not RAR archive" in explorer.said(), "it says why")
    report.picture(explorer.program, "rar-broken")
    explorer.answer()
    explorer.program.ended()
    report.check(True, "and the program has ended")
    broken.unlink()
