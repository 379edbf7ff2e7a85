#!/usr/bin/python3
"""Makes first inputs for the decoders' fuzz targets: make_seeds.py FOLDER fills FOLDER/<target>/."""

import random
import sys
import zlib
from pathlib import Path

MULTIPLIER = 134775813


def deflate(content, level, strategy=zlib.Z_DEFAULT_STRATEGY):
    coder = zlib.compressobj(level, zlib.DEFLATED, -15, 9, strategy)
    return coder.compress(content) + coder.flush()


def crc_step(crc, byte):
    return zlib.crc32(bytes([byte]), crc ^ 0xFFFFFFFF) ^ 0xFFFFFFFF


def encrypt(content, password):
    """The traditional encryption of the ZIP application note, section 6.1."""
    keys = [0x12345678, 0x23456789, 0x34567890]

    def update(byte):
        keys[0] = crc_step(keys[0], byte)
        keys[1] = ((keys[1] + (keys[0] & 0xFF)) * MULTIPLIER + 1) & 0xFFFFFFFF
        keys[2] = crc_step(keys[2], keys[1] >> 24)

    for byte in password:
        update(byte)
    out = bytearray()
    for byte in content:
        t = (keys[2] | 2) & 0xFFFF
        out.append(byte ^ (((t * (t ^ 1)) >> 8) & 0xFF))
        update(byte)
    return bytes(out)


def contents():
    rng = random.Random(1)
    yield b"an archive of archives, " * 40
    yield bytes(rng.choices(b"abcdefgh \n", k=3000))
    yield rng.randbytes(800)
    yield b"".join(bytes([rng.randrange(256)]) * rng.randrange(1, 900) for _ in range(12))


def streams():
    for content in contents():
        for level in (0, 1, 9):
            yield content, deflate(content, level)
        for strategy in (zlib.Z_FIXED, zlib.Z_HUFFMAN_ONLY, zlib.Z_RLE):
            yield content, deflate(content, 9, strategy)


def write(folder, seeds):
    folder.mkdir(parents=True, exist_ok=True)
    for number, seed in enumerate(seeds):
        (folder / f"seed-{number:03}").write_bytes(seed)


def main():
    root = Path(sys.argv[1])
    size = lambda content: len(content).to_bytes(2, "little")
    write(root / "InflateFuzz", [bytes([mode]) + size(c) + s for c, s in streams() for mode in (0, 1)])
    write(root / "DecryptInflateFuzz", [size(c) + encrypt(b"twelve bytes" + s, b"fuzz") for c, s in streams()])
    no_sets = bytes(192)
    write(root / "ReduceFuzz", [bytes([f]) + size(c) + no_sets + c.replace(b"r", b"\x90\x45\x03")
                                for c in contents() for f in range(4)])


main()
