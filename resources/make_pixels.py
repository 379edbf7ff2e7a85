#!/usr/bin/env python3
"""Turns PNG images with eight bits a channel and transparency into plain pixels beside them: rows of red, green, blue
and alpha, each colour already multiplied with its alpha. A program shows those as they are, with no format to decode.

usage: make_pixels.py <image>...
"""

import struct
import sys
import zlib
from pathlib import Path

PIXEL = 4  # bytes
RGBA = (8, 6, 0, 0, 0)  # depth, colour type, compression, filter method, no interlacing


def chunks(image: bytes):
    place = 8
    while place < len(image):
        (length,) = struct.unpack(">I", image[place : place + 4])
        yield image[place + 4 : place + 8], image[place + 8 : place + 8 + length]
        place += length + 12


def paeth(left: int, up: int, corner: int) -> int:
    return min((left, up, corner), key=lambda value: abs(left + up - corner - value))


def unfilter(kind: int, row: bytearray, above: bytes) -> None:
    """Undoes a row's filter in place (PNG specification, section 9)."""
    for i in range(len(row)):
        left, corner = (row[i - PIXEL], above[i - PIXEL]) if i >= PIXEL else (0, 0)
        row[i] = (row[i] + (0, left, above[i], (left + above[i]) // 2, paeth(left, above[i], corner))[kind]) & 0xFF


def pixels(image: bytes) -> bytearray:
    parts = list(chunks(image))
    width, height, *layout = struct.unpack(">IIBBBBB", parts[0][1])
    if tuple(layout) != RGBA:
        sys.exit(f"not eight bits each of red, green, blue and alpha: {layout}")
    filtered = zlib.decompress(b"".join(data for name, data in parts if name == b"IDAT"))
    stride = width * PIXEL
    result, above = bytearray(), bytes(stride)
    for start in range(0, height * (stride + 1), stride + 1):
        row = bytearray(filtered[start + 1 : start + 1 + stride])
        unfilter(filtered[start], row, above)
        result += row
        above = row
    for i in range(0, len(result), PIXEL):
        alpha = result[i + 3]
        for channel in range(i, i + 3):
            result[channel] = (result[channel] * alpha + 127) // 255
    return result


def main() -> None:
    for name in map(Path, sys.argv[1:]):
        name.with_suffix(".rgba").write_bytes(pixels(name.read_bytes()))


if __name__ == "__main__":
    main()
