#!/usr/bin/env python3
"""Turns PNG images with transparency into plain pixels beside them: rows of red, green, blue and alpha, eight bits
each, each colour already multiplied with its alpha. A program shows those as they are, with no format to decode.

usage: make_pixels.py <image>...
"""

import sys
from pathlib import Path

from PIL import Image


def main() -> None:
    for name in map(Path, sys.argv[1:]):
        with Image.open(name) as image:
            if image.mode != "RGBA":
                sys.exit(f"{name}: not red, green, blue and alpha, but {image.mode}")
            name.with_suffix(".rgba").write_bytes(image.convert("RGBa").tobytes())


if __name__ == "__main__":
    main()
