#!/usr/bin/env python3
"""The tour: the real program on a stick of its own, used by mouse and keyboard, with every step checked.

Started by scripts/tour, which brings the display and the session bus.
"""

import argparse
import os
import shutil
import sys
from pathlib import Path
from urllib.parse import unquote

sys.path.insert(0, str(Path(__file__).resolve().parents[1]))

import archives  # noqa: E402, F401 (brings parts of its own)
import commands  # noqa: E402, F401  its parts join the others
import demo_stick  # noqa: E402
import driver  # noqa: E402
import packing  # noqa: E402, F401 (brings parts of its own)
from basics import take_parts  # noqa: E402
from explorer import Explorer  # noqa: E402
from parts import PARTS  # noqa: E402


class Setting:
    """What the parts share: the folders, the report, and how the program is started."""

    def __init__(self, program, output):
        self.output = output
        self.stick = output / "stick"
        self.computer = output / "computer"
        self.report = driver.Report(output)
        self.opened = output / "opened.txt"
        self.explorer = None
        for folder in (self.stick, self.computer):
            shutil.rmtree(folder, ignore_errors=True)
            folder.mkdir(parents=True)
        for picture in output.glob("*.png"):
            picture.unlink()
        demo_stick.fill(self.stick, program)
        # Documents "open" in a program that writes down their paths.
        opener = output / "bin" / "xdg-open"
        opener.parent.mkdir(exist_ok=True)
        opener.write_text(f'#!/bin/sh\nprintf "%s\\n" "$1" >>"{self.opened}"\n')
        opener.chmod(0o755)

    @property
    def environment(self):
        return {
            "PELLARION_DRIVES": f"C=fixed:{self.computer};E=removable:{self.stick}",
            "PATH": f"{self.output / 'bin'}:{os.environ['PATH']}",
        }

    @property
    def program_folder(self):
        return self.stick / "Program" / "Pellarion"

    @property
    def settings(self):
        return self.program_folder / "setting.ini"

    def start(self, *arguments, language="0409", scale=1.0, **environment):
        """Starts the program from the stick; ends what a part before left running."""
        self.stop()
        self.opened.unlink(missing_ok=True)
        self.explorer = Explorer(
            [self.program_folder / "pellarion", *arguments], language, demo_stick.OWNER, scale,
            {**self.environment, **environment},
        )
        return self.explorer

    def stop(self):
        if self.explorer:
            self.explorer.program.kill()
            self.explorer = None

    def tidy(self):
        """What a part has unpacked beside the archives, or set, would be in the way of the next."""
        self.settings.unlink(missing_ok=True)
        for folder in (self.stick / "Archives").iterdir():
            if folder.is_dir():
                shutil.rmtree(folder)

    def documents_opened(self):
        """Paths that were handed to a document's program."""
        lines = self.opened.read_text().splitlines() if self.opened.exists() else []
        return [unquote(line).removeprefix("file://") for line in lines]


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--program", type=Path, required=True)
    parser.add_argument("--output", type=Path, required=True)
    parser.add_argument("part", nargs="*", choices=[[], *PARTS], help="only these; all of them without any")
    options = parser.parse_args()

    driver.start_bus()
    setting = Setting(options.program.resolve(), options.output.resolve())
    return take_parts(setting, PARTS, options.part, lambda file: driver.screenshot(file, []))


if __name__ == "__main__":
    sys.exit(main())
