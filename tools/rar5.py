"""RAR 5 archives, block by block, since no free program packs them."""

import struct
import zlib


def number(value):
    """Seven bits in a byte, the lowest first."""
    out = bytearray()
    while value > 0x7F:
        out.append(value & 0x7F | 0x80)
        value >>= 7
    return bytes(out) + bytes([value])


def block(*parts):
    """A block's header of numbers and bytes: its checksum and length before what it says."""
    body = b"".join(part if isinstance(part, bytes) else number(part) for part in parts)
    body = number(len(body)) + body
    return struct.pack("<I", zlib.crc32(body)) + body


def archive(*blocks):
    """Of the blocks and the contents behind them, between the archive's header and its end."""
    return b"".join([b"Rar!\x1a\x07\x01\0", block(1, 0, 0), *blocks, block(5, 0, 0)])
