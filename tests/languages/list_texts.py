#!/usr/bin/env python3
"""Lists every text as a line of library file, id and text, with a new line in a text as "\\n".

usage: list_texts.py <project folder> <output file>
"""

import sys
from pathlib import Path

import rc


def main() -> None:
    root, output = map(Path, sys.argv[1:])
    lines = []
    for source in sorted(root.glob("languages/*/*.rc")):
        library = f"{source.stem}{source.parent.name}.dll"
        for number, text in rc.read(source).texts.items():
            escaped = text.replace("\\", "\\\\").replace("\n", "\\n").replace("\r", "\\r").replace("\t", "\\t")
            lines.append(f"{library}\t{number}\t{escaped}\n")
    output.write_text("".join(lines), encoding="utf-8", newline="")


if __name__ == "__main__":
    main()
