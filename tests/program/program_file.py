#!/usr/bin/env python3
"""Checks what the program file carries. On both systems: that it is hardened. On Windows also its version, its icon at
every size, its manifest, and that it needs no library but the system's own.

usage: program_file.py <program>, where it has been built
"""

import re
import struct
import subprocess
import sys
import xml.etree.ElementTree
from pathlib import Path

ICON, ICON_GROUP, VERSION, MANIFEST = 3, 14, 16, 24
PICTURES = {"resources/libpellarion_resources.a"}  # no code worth the name
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


def output_of(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def check_code(program, nm):
    """Reads the libraries that the program is linked of, since other people's code in it may be protected or not: each of
    ours calls the stack's guard, and some call a checked function of the C library."""
    build = program.resolve().parents[1]
    inputs = output_of("ninja", "-C", build, "-t", "query", program.resolve().relative_to(build))
    libraries = {library for library in re.findall(r"\S+/libpellarion_\w+\.a", inputs)} - PICTURES
    called = {library: set(re.findall(r" U (__\w+)", output_of(nm, build / library))) for library in libraries}
    unguarded = sorted(library for library, names in called.items() if "__stack_chk_fail" not in names)
    assert called and not unguarded, f"no stack protector in {unguarded or 'any library'}"
    fortified = {name for names in called.values() for name in names if name.endswith("_chk")}
    assert fortified, "no call of the C library checks its size"
    print(f"stack protector in {len(called)} libraries, checked calls: {', '.join(sorted(fortified))}")


def check_posix(program):
    listing = output_of("readelf", "--wide", "--file-header", "--program-headers", "--dynamic", program)
    for what, form in {
        "position-independent": r"Type: +DYN [^\n]*\n(?s:.*)FLAGS_1\).*\bPIE\b",
        "bound at the start": r"FLAGS_1\).*\bNOW\b",
        "tables read-only after the start": r"\n +GNU_RELRO ",
        "stack not executable": r"\n +GNU_STACK +(0x\w+ +){5}RW +",
        "no segment both written and executed": r"\A(?!(?s:.*)\n +LOAD +(0x\w+ +){5}RWE )",
        "code not relocated": r"\A(?!(?s:.*)TEXTREL)",
    }.items():
        assert re.search(form, listing), f"not {what}:\n{listing}"
        print(what)
    check_code(program, "nm")


def check_hardened_windows(program, data):
    header = struct.unpack_from("<I", data, 0x3C)[0]
    characteristics = struct.unpack_from("<H", data, header + 22)[0]
    dll_characteristics = struct.unpack_from("<H", data, header + 24 + 70)[0]
    relocations = struct.unpack_from("<I", data, header + 24 + 112 + 8 * 5 + 4)[0]
    assert dll_characteristics & 0x160 == 0x160, f"addresses or data execution not protected: {dll_characteristics:#x}"
    # Without these the system cannot move the program, whatever it says of itself; large addresses are what it moves to.
    assert characteristics & 0x21 == 0x20 and relocations > 12, f"cannot be moved: {characteristics:#x}, {relocations} bytes"
    print("random addresses of 64 bits, data not executed")
    check_code(program, "x86_64-w64-mingw32-nm")


def check_windows(program):
    data = program.read_bytes()
    check_hardened_windows(program, data)
    found = resources(data)
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

    listing = output_of("x86_64-w64-mingw32-objdump", "-p", program)
    needed = {line.split()[-1].lower() for line in listing.splitlines() if "DLL Name:" in line}
    foreign = {name for name in needed if name.startswith(("lib", "qt", "zlib"))}
    assert needed and not foreign, f"needs {foreign}"
    print(f"icons {sorted(sizes)}, version {high >> 16}.{high & 0xFFFF}.{low >> 16}, manifest, {len(needed)} libraries of the system")


if __name__ == "__main__":
    file = Path(sys.argv[1])
    (check_posix if file.read_bytes()[:4] == b"\x7fELF" else check_windows)(file)
