#!/usr/bin/env python3
"""Puts PNG images of an icon, one of each size, into one Windows icon file.

usage: make_ico.py <icon file> <image>...
"""

import struct
import sys
from pathlib import Path


def main() -> None:
    output, *names = sys.argv[1:]
    images = [Path(name).read_bytes() for name in names]
    offset = 6 + 16 * len(images)
    directory = struct.pack("<HHH", 0, 1, len(images))
    for image in images:
        width, height = struct.unpack(">II", image[16:24])
        # A byte each for width and height: 256 is written as 0.
        directory += struct.pack("<BBBBHHII", width % 256, height % 256, 0, 0, 1, 32, len(image), offset)
        offset += len(image)
    Path(output).write_bytes(directory + b"".join(images))


if __name__ == "__main__":
    main()
