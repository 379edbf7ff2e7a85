#!/usr/bin/env python3
"""Checks what the Windows program file carries: its version, its icon at every size, its manifest, and that it needs no
library but the system's own.

usage: program_file.py <program>
"""

import struct
import subprocess
import sys
import xml.etree.ElementTree
from pathlib import Path

ICON, ICON_GROUP, VERSION, MANIFEST = 3, 14, 16, 24
SIZES = {16, 20, 24, 32, 40, 48, 64, 256}


def resources(data):
    """(type, id) -> bytes, from the file's resource section."""
    header = struct.unpack_from("<I", data, 0x3C)[0]
    sections, optional = struct.unpack_from("<H", data, header + 6)[0], struct.unpack_from("<H", data, header + 20)[0]
    table = header + 24 + optional
    entries = [struct.unpack_from("<8sIIII", data, table + 40 * i) for i in range(sections)]
    _, _, address, _, start = next(entry for entry in entries if entry[0].rstrip(b"\0") == b".rsrc")

    def walk(offset, path):
        named, numbered = struct.unpack_from("<HH", data, start + offset + 12)
        for i in range(named + numbered):
            identity, where = struct.unpack_from("<II", data, start + offset + 16 + 8 * i)
            if where & 0x80000000:
                yield from walk(where & 0x7FFFFFFF, [*path, identity])
            else:
                place, size = struct.unpack_from("<II", data, start + where)
                yield tuple(path[:2]), data[start + place - address:start + place - address + size]

    return dict(walk(0, []))


def check(program):
    found = resources(program.read_bytes())
    group = next(value for (kind, _), value in found.items() if kind == ICON_GROUP)
    icons = [struct.unpack_from("<BBBBHHIH", group, 6 + 14 * i) for i in range(struct.unpack_from("<H", group, 4)[0])]
    sizes = {}
    for icon in icons:  # the sizes that the images themselves have
        sizes[icon[0] or 256] = struct.unpack_from(">II", found[ICON, icon[7]], 16)
    assert SIZES <= set(sizes), f"icon sizes {sorted(sizes)}"
    assert all(image == (size, size) for size, image in sizes.items()), sizes

    version = found[VERSION, 1]
    text = version.decode("utf-16-le", errors="ignore")
    assert struct.unpack_from("<I", version, 40)[0] == 0xFEEF04BD, "no fixed version record"
    high, low = struct.unpack_from("<II", version, 48)
    assert f"{high >> 16}.{high & 0xFFFF}.{low >> 16}" in text and "Pellarion" in text, "version record and texts differ"

    manifest = xml.etree.ElementTree.fromstring(found[MANIFEST, 1])
    values = {node.tag.rpartition("}")[2]: (node.text or "").strip() for node in manifest.iter()}
    assert (values["dpiAwareness"], values["longPathAware"]) == ("PerMonitorV2", "true"), values
    levels = [node.get("level") for node in manifest.iter() if node.tag.endswith("requestedExecutionLevel")]
    controls = [node.get("version") for node in manifest.iter() if node.get("name") == "Microsoft.Windows.Common-Controls"]
    assert (levels, controls) == (["asInvoker"], ["6.0.0.0"]), (levels, controls)

    listing = subprocess.run(["x86_64-w64-mingw32-objdump", "-p", program], capture_output=True, text=True, check=True).stdout
    needed = {line.split()[-1].lower() for line in listing.splitlines() if "DLL Name:" in line}
    foreign = {name for name in needed if name.startswith(("lib", "qt", "zlib"))}
    assert needed and not foreign, f"needs {foreign}"
    print(f"icons {sorted(sizes)}, version {high >> 16}.{high & 0xFFFF}.{low >> 16}, manifest, {len(needed)} libraries of the system")


if __name__ == "__main__":
    check(Path(sys.argv[1]))
