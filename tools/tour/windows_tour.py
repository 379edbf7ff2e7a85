#!/usr/bin/env python3
"""The tour of the Windows program under Wine: on a removable drive of its own, used by mouse and keyboard, every step
checked.

Started by scripts/windows, which brings the display and Wine's folder.
"""

import argparse
import os
import shutil
import subprocess
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1]))

import demo_stick  # noqa: E402
import windows_parts  # noqa: E402
from basics import Report, take_parts  # noqa: E402
from windows_driver import output_of  # noqa: E402
from windows_explorer import Explorer  # noqa: E402


class WindowsReport(Report):
    def picture(self, program, name):
        """Of the part of the display that the program's windows take."""
        path = self.next_picture(name)
        rectangles = [window.rectangle for window in program.windows()]
        left, top = (max(0, min(r[i] for r in rectangles) - (6, 30)[i]) for i in (0, 1))
        right, bottom = (max(r[i] + r[i + 2] for r in rectangles) + 6 for i in (0, 1))
        crop = f"{right - left}x{bottom - top}+{left}+{top}"
        subprocess.run(["import", "-silent", "-window", "root", "-crop", crop, "+repage", path], check=True)
        print(f"  picture {path.name}", flush=True)
        return path


class Setting:
    def __init__(self, program, icons, output):
        self.output, self.icons = output, icons
        self.stick = output / "stick"
        self.computer = Path(os.environ["WINEPREFIX"]) / "drive_c"
        self.report = WindowsReport(output)
        self.opened = output / "opened.txt"
        self.explorer = None
        self.opened.unlink(missing_ok=True)
        shutil.rmtree(self.stick, ignore_errors=True)
        for picture in output.glob("*.png"):
            picture.unlink()
        demo_stick.fill(self.stick, program)
        drive = Path(os.environ["WINEPREFIX"]) / "dosdevices" / "e:"
        drive.unlink(missing_ok=True)
        drive.symlink_to(self.stick)
        # What Wine hands to the desktop comes to a program that writes down its argument.
        opener = output / "bin" / "xdg-open"
        opener.parent.mkdir(exist_ok=True)
        opener.write_text(f'#!/bin/sh\nprintf "%s\\n" "$1" >>"{self.opened}"\n')
        opener.chmod(0o755)

    @property
    def environment(self):
        return {**os.environ, "PATH": f"{self.output / 'bin'}:{os.environ['PATH']}"}

    @property
    def program_folder(self):
        return self.stick / "Program" / "Pellarion"

    @property
    def settings(self):
        return self.program_folder / "setting.ini"

    program_path = "E:\\Program\\Pellarion\\pellarion.exe"

    def start(self):
        self.stop()
        self.explorer = Explorer(self.program_path, self.environment, self.icons, demo_stick.OWNER)
        return self.explorer

    def stop(self):
        # Wine's server ends what runs in it; the process that started it would only stop waiting.
        subprocess.run(["wine64", "taskkill", "/f", "/im", "pellarion.exe"], env=self.environment, stdout=subprocess.DEVNULL)
        if self.explorer:
            self.explorer.program.kill()
            self.explorer = None

    def tidy(self):
        for folder in (self.stick / "Archives").iterdir():
            if folder.is_dir():
                shutil.rmtree(folder)

    def documents_opened(self):
        return self.opened.read_text().splitlines() if self.opened.exists() else []


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--program", type=Path, required=True)
    parser.add_argument("--icons", type=Path, required=True)
    parser.add_argument("--output", type=Path, required=True)
    parser.add_argument("part", nargs="*", help="only these; all of them without any")
    options = parser.parse_args()

    options.output.mkdir(parents=True, exist_ok=True)
    setting = Setting(options.program.resolve(), options.icons.resolve(), options.output.resolve())
    return take_parts(
        setting, windows_parts.PARTS, options.part, lambda file: output_of("import", "-silent", "-window", "root", file)
    )


if __name__ == "__main__":
    sys.exit(main())
