"""The texts of the language libraries, read from their sources, as the bus tells of them."""

import re
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]
ESCAPES = {"n": "\n", "r": "\r", "t": "\t", "\\": "\\"}


def read(language, kind="langfile"):
    """All texts of a library by their ids."""
    header = (PROJECT / "app" / "TextIds.h").read_text(encoding="utf-8")
    ids = {name: int(number) for name, number in re.findall(r"^#define (IDS_\w+) (\d+)$", header, re.MULTILINE)}
    source = (PROJECT / "languages" / language / f"{kind}.rc").read_text(encoding="utf-8")
    entries = re.findall(r'^    (IDS_\w+) "((?:[^"\n]|"")*)"$', source, re.MULTILINE)
    return {ids[name]: _text(literal) for name, literal in entries}


def _text(literal):
    return re.sub(r"\\(.)", lambda match: ESCAPES[match[1]], literal.replace('""', '"'))


class Texts:
    """Texts by id, with the owner's name put in and without the marks of access keys."""

    def __init__(self, language, owner):
        self.owner = owner
        self.main = read(language)
        self.extra = read(language, "lic")

    def __call__(self, number, **put):
        return self._clean(self.main[number], put)

    def second(self, number, **put):
        return self._clean(self.extra[number], put)

    def _clean(self, text, put):
        text = text.replace("%username", self.owner)
        for mark, value in put.items():
            text = text.replace("%" + mark, str(value))
        return re.sub(r"&(.)", r"\1", text)
