"""Whether a ZIP file has the form that the reader is made for, worked out from its bytes alone."""

import struct
import zlib

LOCAL, CENTRAL, END = b"PK\x03\x04", b"PK\x01\x02", b"PK\x05\x06"


class OutOfForm(Exception):
    """Why an archive is not of the form; the reader still has to end cleanly on it."""


class Entry:
    """One central header, as stored."""

    def __init__(self, data, at):
        (self.flags, self.method) = struct.unpack_from("<HH", data, at + 8)
        (self.crc, self.packed, self.size) = struct.unpack_from("<III", data, at + 16)
        (names, extras, comments) = struct.unpack_from("<HHH", data, at + 28)
        (self.offset,) = struct.unpack_from("<I", data, at + 42)
        self.name = data[at + 46 : at + 46 + names]
        self.end = at + 46 + names + extras + comments
        self.encrypted = bool(self.flags & 1)
        self.folder = self.packed == 0 and self.name.endswith(b"/")

    def doubt(self, data):
        """Why no two readers need agree on the entry's bytes; None when they should."""
        if data[self.offset : self.offset + 4] != LOCAL:
            return "no local header at the recorded offset"
        (flags, method) = struct.unpack_from("<HH", data, self.offset + 6)
        (packed, _, names, extras) = struct.unpack_from("<IIHH", data, self.offset + 18)
        start = self.offset + 30 + names + extras
        if method != self.method or not flags & 8 and packed != self.packed:
            return "local and central header differ"
        if start + self.packed > len(data) or self.method == 0 and not self.encrypted and self.packed != self.size:
            return "recorded sizes that cannot be"
        if self.method == 8 and not self.encrypted:
            try:
                zlib.decompressobj(-15).decompress(data[start : start + self.packed])
            except zlib.error:
                return "a damaged stream"
        return None

    def text(self):
        """The name as the reader shows it under a UTF-8 locale."""
        try:
            return self.name.decode()
        except UnicodeDecodeError:
            return "".join(chr(b) if b < 0x80 else decode_1252(b) for b in self.name)

    def safe(self):
        """Whether the name may be written below a target folder."""
        parts = self.name.replace(b"\\", b"/").split(b"/")
        if len(parts) > 1 and not parts[-1]:
            parts.pop()
        if any(b < 32 or b in b":\x7f" for b in self.name) or not self.folder and self.name[-1:] in (b"/", b"\\"):
            return False
        devices = {b"CON", b"PRN", b"AUX", b"NUL", b"CONIN$", b"CONOUT$"}
        devices |= {d + b"%d" % n for d in (b"COM", b"LPT") for n in range(1, 10)}
        return all(
            part == b"." or part and part[-1:] not in (b".", b" ") and part.split(b".")[0].rstrip().upper() not in devices
            for part in parts
        )


def decode_1252(byte):
    try:
        return bytes([byte]).decode("cp1252")
    except UnicodeDecodeError:
        return "?"


def central_headers(data, at, count, stop):
    entries = []
    for _ in range(count):
        if data[at : at + 4] != CENTRAL or at + 46 > stop:
            raise OutOfForm("the recorded place or count of the directory is wrong")
        entries.append(Entry(data, at))
        at = entries[-1].end
    if at != stop:
        raise OutOfForm("something stands between the directory and the end record, or entries are not counted")
    return entries


def check_scannable(data, entries, start):
    """With a comment the directory is found by walking from local header to local header."""
    at = 0
    for _ in entries:
        if data[at : at + 4] != LOCAL:
            raise OutOfForm("with a comment: local headers do not follow each other")
        (packed, _, names, extras) = struct.unpack_from("<IIHH", data, at + 18)
        at += 30 + names + extras + packed
        if data[at : at + 4] == b"PK\x07\x08":
            at += 16
    if at != start:
        raise OutOfForm("with a comment: local headers do not lead to the directory")


def read_form(data):
    """The entries of an archive of the form; raises OutOfForm for any other."""
    if data[:2] != b"PK":
        raise OutOfForm('does not start with "PK"')
    end = data.rfind(END)
    while end >= 0 and end + 22 + int.from_bytes(data[end + 20 : end + 22], "little") != len(data):
        end = data.rfind(END, 0, end)
    if end < 0 or end + 22 > len(data):
        raise OutOfForm("no end record with its comment at the end of the file")
    (disk, start_disk, count, total, _, start, _) = struct.unpack_from("<HHHHIIH", data, end + 4)
    if (disk, start_disk) != (0, 0) or count != total:
        raise OutOfForm("on more than one disk")
    if count == 0xFFFF or start == 0xFFFFFFFF:
        raise OutOfForm("64-bit sizes")
    entries = central_headers(data, start, count, end)
    if end + 22 != len(data) and not entries:
        raise OutOfForm("an empty archive with a comment, which no scan can find")
    if end + 22 != len(data) or count > 32767:
        check_scannable(data, entries, start)
    if any(0xFFFFFFFF in (entry.packed, entry.size, entry.offset) for entry in entries):
        raise OutOfForm("64-bit sizes")
    return entries
