"""The texts of the language libraries, read from their sources, as the bus tells of them."""

import re
import sys
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(PROJECT / "tests" / "languages"))

import rc  # noqa: E402


def read(language, kind="langfile"):
    """All texts of a library by their ids."""
    return rc.read(PROJECT / "languages" / language / f"{kind}.rc").texts


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
