#!/usr/bin/env python3
"""Makes the demo stick: a folder laid out like the drive that the program lives on, with files and real archives.

    demo_stick.py STICK [--program FOLDER]

The same files with the same bytes and times every time; so are the archives, but for the random start of
an encrypted entry. They are made by zip, 7zz and gcab, as other people's archives would be. With --program, the
folder's content (the program with its text libraries) becomes the program folder; a settings file that the program has
written there stays.
"""

import argparse
import calendar
import io
import os
import random
import shutil
import struct
import subprocess
import zlib
from pathlib import Path

import rar5
from PIL import Image

OWNER = "Marina"
PASSWORD = "sundial"
COMMENT = "Holiday letters, packed on the last evening.\r\nKeep until the summer."
MANY = 4000

WORDS = (
    "harbour morning letter window garden the a of and with quiet river stone bread market evening lamp "
    "sundial shadow north summer train ticket notebook blue road small bridge rain under over after before"
).split()


def stamp(day, hour=10, minute=30):
    """A time in June 2024, with the even seconds that archives keep."""
    return calendar.timegm((2024, 6, day, hour, minute, 0))


def prose(seed, paragraphs=6):
    source = random.Random(seed)
    blocks = []
    for _ in range(paragraphs):
        sentences = []
        for _ in range(source.randint(3, 7)):
            words = [source.choice(WORDS) for _ in range(source.randint(6, 14))]
            sentences.append(" ".join(words).capitalize() + ".")
        blocks.append(" ".join(sentences))
    return ("\r\n\r\n".join(blocks) + "\r\n").encode()


def png(width, height, colour):
    """A small picture: a sky of that colour over a darker hill."""
    picture = Image.new("RGB", (width, height))
    for y in range(height):
        for x in range(width):
            hill = height * 2 // 3 + (x - width // 2) ** 2 * height // (2 * width * width)
            shade = 0.45 if y > hill else 1.0 - 0.4 * y / height
            picture.putpixel((x, y), tuple(int(part * shade) for part in colour))
    file = io.BytesIO()
    picture.save(file, "PNG")
    return file.getvalue()


def write(path, content, time=stamp(1)):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(content)
    os.utime(path, (time, time))


def plain_files(stick):
    write(stick / "startdeck.exe", b"A real drive has its launcher here; this demo has none.\r\n")
    write(stick / "Program/Bin/OwnerInfo.ini", f"[OwnerInfo]\r\nName={OWNER}\r\n".encode())

    documents = stick / "Documents"
    for day, name in enumerate(("Arrival", "The harbour", "Market day", "Leaving"), start=3):
        write(documents / "Letters" / f"{name}.txt", prose(name), stamp(day))
    write(documents / "Garden plan.txt", prose("garden", 12), stamp(9))
    write(documents / "Packing list.txt", b"".join(f"[ ] {word}\r\n".encode() for word in sorted(set(WORDS))), stamp(8))
    write(documents / "Übersicht.txt", "Straße, Brücke, Fähre\r\n".encode(), stamp(11))
    write(documents / "Empty note.txt", b"", stamp(12))

    for day, (name, colour) in enumerate(
        (("Bay", (120, 180, 240)), ("Dunes", (240, 210, 150)), ("Evening", (240, 150, 120)), ("Night", (90, 90, 150))), start=14
    ):
        write(stick / "Pictures" / f"{name}.png", png(320, 200, colour), stamp(day))

    project = stick / "Projects" / "Sundial"
    write(project / "sundial.c", b'#include <stdio.h>\n\nint main(void) {\n    puts("noon");\n    return 0;\n}\n', stamp(20))
    write(project / "Makefile", b"sundial: sundial.c\n\tcc -O2 -o $@ $<\n", stamp(20, 11))
    write(project / "notes" / "angles.csv", "".join(f"{hour},{hour * 15 - 180}\n" for hour in range(6, 19)).encode(), stamp(21))
    source = random.Random("readings")
    readings = "".join(f"{minute:05};{500 + 400 * (minute % 1440) // 1440 + source.randint(-9, 9)}\n" for minute in range(40_000))
    write(project / "notes" / "readings.dat", readings.encode(), stamp(22))

    for number in range(MANY):
        folder = documents / "Diary" / f"{1990 + number // 200}"
        write(folder / f"day {number % 200 + 1:03}.txt", prose(f"day {number}", 1), stamp(1 + number % 28))

    for folder in [stick, *(path for path in stick.rglob("*") if path.is_dir())]:
        os.utime(folder, (stamp(2), stamp(2)))


def tree(folder, top):
    """The names in folder/top for zip's list, parents first, always in the same order."""
    return "".join(f"{path.relative_to(folder)}\n" for path in sorted([folder / top, *(folder / top).rglob("*")]))


def run(*command, cwd, text=None):
    subprocess.run(
        [str(part) for part in command], cwd=cwd, input=text, text=True, check=True, stdout=subprocess.DEVNULL,
        env={**os.environ, "TZ": "UTC", "LC_ALL": "C.UTF-8"},
    )


def archives(stick):
    folder = stick / "Archives"
    folder.mkdir(exist_ok=True)
    documents, pictures, projects = stick / "Documents", stick / "Pictures", stick / "Projects"

    def make(name, command, cwd, *names, text=None):
        run(*command, folder / name, *names, cwd=cwd, text=text)
        os.utime(folder / name, (stamp(25), stamp(25)))

    zip_deflate = ("zip", "-q", "-X", "-9", "-@")
    make("Letters.zip", zip_deflate, documents, text=tree(documents, "Letters"))
    make("Pictures stored.zip", ("zip", "-q", "-X", "-0", "-@"), stick, text=tree(stick, "Pictures"))
    seven_zip = ("7zz", "a", "-bd", "-tzip", "-mx=9", "-mtc=off")
    make("Sundial Deflate64.zip", (*seven_zip, "-mm=Deflate64"), projects, "Sundial")
    make("Private.zip", (*seven_zip, "-mem=ZipCrypto", f"-p{PASSWORD}"), documents, "Garden plan.txt", "Packing list.txt")
    make("Letters with comment.zip", ("zip", "-q", "-X", "-9", "-z"), documents, *tree(documents, "Letters").split("\n")[:-1], text=COMMENT)
    make("One note.zip", ("zip", "-q", "-X", "-9"), documents, "Garden plan.txt")
    make("Diary.zip", zip_deflate, documents, text=tree(documents, "Diary"))
    make("Pictures.cab", ("gcab", "-c", "-z", "-n"), pictures, *sorted(entry.name for entry in pictures.iterdir()))
    make("Letters.cab", ("gcab", "-c", "-z"), documents, *sorted(f"Letters/{entry.name}" for entry in (documents / "Letters").iterdir()))
    write(folder / "Sundial.rar", rar(rar_tree(projects, "Sundial")), stamp(25))
    write(folder / "Pictures.rar", rar(rar_tree(stick, "Pictures")), stamp(26))


def rar(items):
    """A RAR 5 archive of (name, content, time); stored, as no free program packs them. A folder's content is None."""
    blocks = []
    for name, content, time in items:
        is_folder = content is None
        content = content or b""
        blocks += [
            rar5.block(
                2, 2, len(content), (1 if is_folder else 4) | 2, len(content), 0o40755 if is_folder else 0o100644,
                struct.pack("<I", time), b"" if is_folder else struct.pack("<I", zlib.crc32(content)),
                0, 1, len(name.encode()), name.encode(),
            ),
            content,
        ]
    return rar5.archive(*blocks)


def rar_tree(folder, top):
    """The items of folder/top, parents first."""
    paths = sorted([folder / top, *(folder / top).rglob("*")])
    return [(str(path.relative_to(folder)), None if path.is_dir() else path.read_bytes(), int(path.stat().st_mtime)) for path in paths]


def program(stick, source):
    """The program folder: everything of `source`, and nothing left of an earlier build but what the program wrote."""
    folder = stick / "Program" / "Pellarion"
    folder.mkdir(parents=True, exist_ok=True)
    for entry in folder.iterdir():
        if entry.name not in ("setting.ini", "tree.dat"):
            shutil.rmtree(entry) if entry.is_dir() else entry.unlink()
    shutil.copytree(source, folder, dirs_exist_ok=True)


def fill(stick, source=None):
    """The whole stick; `source` holds the program."""
    stick.mkdir(parents=True, exist_ok=True)
    for folder in ("Documents", "Archives"):
        shutil.rmtree(stick / folder, ignore_errors=True)
    plain_files(stick)
    archives(stick)
    if source:
        program(stick, source)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("stick", type=Path)
    parser.add_argument("--program", type=Path)
    options = parser.parse_args()
    fill(options.stick.resolve(), options.program)


if __name__ == "__main__":
    main()
