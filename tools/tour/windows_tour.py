#!/usr/bin/env python3
"""The tour of the Windows program under Wine: on a removable drive of its own, used by mouse and keyboard, every step
checked.

Started by scripts/windows, which brings the display and Wine's folder.
"""

import argparse
import os
import subprocess
import sys
from pathlib import Path

import basics
import windows_parts
from windows_explorer import Explorer


class Setting(basics.Setting):
    program_path = "E:\\Program\\Pellarion\\pellarion.exe"

    def __init__(self, program, icons, output):
        wine = Path(os.environ["WINEPREFIX"])
        super().__init__(program, output, wine / "drive_c", basics.Report(output))
        self.icons = icons
        self.environment = {**os.environ, "PATH": self.path}
        drive = wine / "dosdevices" / "e:"
        drive.unlink(missing_ok=True)
        drive.symlink_to(self.stick)

    def start(self):
        self.stop()
        self.explorer = Explorer(self.program_path, self.environment, self.icons, basics.demo_stick.OWNER)
        return self.explorer

    def stop(self):
        # Wine's server ends what runs in it; the process that started it would only stop waiting.
        subprocess.run(["wine64", "taskkill", "/f", "/im", "pellarion.exe"], env=self.environment, stdout=subprocess.DEVNULL)
        super().stop()


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--program", type=Path, required=True)
    parser.add_argument("--icons", type=Path, required=True)
    parser.add_argument("--output", type=Path, required=True)
    parser.add_argument("part", nargs="*", help="only these; all of them without any")
    options = parser.parse_args()

    options.output.mkdir(parents=True, exist_ok=True)
    setting = Setting(options.program.resolve(), options.icons.resolve(), options.output.resolve())
    return basics.take_parts(setting, windows_parts.PARTS, options.part)


if __name__ == "__main__":
    sys.exit(main())
