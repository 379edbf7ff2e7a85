#!/usr/bin/env python3
"""The tour: the real program on a stick of its own, used by mouse and keyboard, with every step checked.

Started by scripts/tour, which brings the display and the session bus.
"""

import argparse
import shutil
import sys
from pathlib import Path

import archives  # noqa: F401 (brings parts of its own)
import basics
import commands  # noqa: F401 (brings parts of its own)
import driver
import packing  # noqa: F401 (brings parts of its own)
from explorer import Explorer
from parts import PARTS


class Setting(basics.Setting):
    def __init__(self, program, output):
        computer = output / "computer"
        shutil.rmtree(computer, ignore_errors=True)
        computer.mkdir(parents=True)
        super().__init__(program, output, computer, driver.Report(output))
        self.environment = {"PELLARION_DRIVES": f"C=fixed:{computer};E=removable:{self.stick}", "PATH": self.path}

    def start(self, *arguments, language="0409", scale=1.0, **environment):
        """Starts the program from the stick; ends what a part before left running."""
        self.stop()
        self.opened.unlink(missing_ok=True)
        self.explorer = Explorer(
            [self.program_folder / "pellarion", *arguments], language, basics.demo_stick.OWNER, scale,
            {**self.environment, **environment},
        )
        return self.explorer

    def tidy(self):
        """Also what a part has set."""
        self.settings.unlink(missing_ok=True)
        super().tidy()


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--program", type=Path, required=True)
    parser.add_argument("--output", type=Path, required=True)
    parser.add_argument("part", nargs="*", choices=[[], *PARTS], help="only these; all of them without any")
    options = parser.parse_args()

    driver.start_bus()
    setting = Setting(options.program.resolve(), options.output.resolve())
    return basics.take_parts(setting, PARTS, options.part)


if __name__ == "__main__":
    sys.exit(main())
