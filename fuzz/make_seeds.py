#!/usr/bin/python3
"""Makes first inputs for the decoders' fuzz targets: make_seeds.py FOLDER fills FOLDER/<target>/."""

import random
import sys
import zlib
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "tools"))

import rar5  # noqa: E402

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


def rar4(*blocks):
    out = b"Rar!\x1a\x07\x00"
    for kind, flags, fields, data in blocks:
        header = bytes([kind]) + flags.to_bytes(2, "little") + (len(fields) + 7).to_bytes(2, "little") + fields
        out += (zlib.crc32(header) & 0xFFFF).to_bytes(2, "little") + header + data
    return out


def rar_archives():
    for content in contents():
        crc = zlib.crc32(content).to_bytes(4, "little")
        for method in (0, 3):
            entry = rar5.block(2, 2, len(content), 4, len(content), 0x20, crc, method << 7, 1, 3, b"a/b")
            yield rar5.archive(entry, content)
        for method, name in ((0x30, b"a\\b"), (0x33, b"a?\0\x04\x40a\x42")):
            size = len(content).to_bytes(4, "little")
            entry = size + size + b"\x03" + crc + bytes(4) + bytes([29, method, len(name), 0]) + bytes(4) + name
            flags = 0x8000 | (0x200 if b"\0" in name else 0)
            yield rar4((0x73, 0, bytes(6), b""), (0x74, flags, entry, content), (0x7B, 0x4000, b"", b""))


def main():
    root = Path(sys.argv[1])
    size = lambda content: len(content).to_bytes(2, "little")
    write(root / "InflateFuzz", [bytes([mode]) + size(c) + s for c, s in streams() for mode in (0, 1)])
    long = [b"pieces, " * 400_000, bytes(3_000_000), b"".join(contents()) * 100]
    write(root / "InflatePiecesFuzz", [bytes([0]) + (len(c) // 64).to_bytes(2, "little") + deflate(c, level)
                                       for c in long for level in (1, 9)])
    write(root / "DecryptInflateFuzz", [size(c) + encrypt(b"twelve bytes" + s, b"fuzz") for c, s in streams()])
    no_sets = bytes(192)
    write(root / "ReduceFuzz", [bytes([f]) + size(c) + no_sets + c.replace(b"r", b"\x90\x45\x03")
                                for c in contents() for f in range(4)])
    archives = list(rar_archives())
    write(root / "RarArchiveFuzz", archives)
    write(root / "RarBlockFuzz", [bytes([archive[6] & 1]) + archive[20:300] for archive in archives])


main()
