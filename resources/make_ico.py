#!/usr/bin/env python3
"""Puts PNG images of an icon, one of each size, into one Windows icon file.

usage: make_ico.py <icon file> <image>...
"""

import sys

from PIL import Image


def main() -> None:
    output, *names = sys.argv[1:]
    images = sorted(map(Image.open, names), key=lambda image: image.width)
    # Sizes that are larger than the image that is saved are left out.
    images[-1].save(output, format="ICO", append_images=images, sizes=[image.size for image in images])


if __name__ == "__main__":
    main()
