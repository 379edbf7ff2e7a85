"""Finds the text ids that the program's sources ask for.

Seen are numbers given to the look-up functions, and named constants, whose names end in the role of a text or which
are given to a look-up function. Ids that are reached by arithmetic are listed here.
"""

import re
from pathlib import Path

LAYERS = ("app", "archive", "dialogs", "explorer", "platform")

# Result codes of the RAR library plus 518, and the texts for its codes while listing.
COMPUTED = {"langfile": set(range(529, 539)) | set(range(546, 554)), "lic": set()}

# Any function whose name says that it takes a text's id, with what stands in its parentheses.
_LOOKUP = re.compile(r"\b(\w*(?:LoadText|LoadExtraText|ShowText|WindowText|CaptionText|ErrorText))\(([^;{}]*)")
_CONSTANT = re.compile(r"\b(?:std::)?uint32_t\s+(k\w+)\s*=\s*(\d+)\s*[;,]")
_ROLE = re.compile(r"Text|Title|Caption|Prompt|Question|Label|Button")
_COMMENT = re.compile(r"//[^\n]*|/\*.*?\*/", re.DOTALL)
_STRING = re.compile(r'"(?:[^"\\\n]|\\.)*"')


def _library(function: str) -> str:
    return "lic" if "Extra" in function else "langfile"


def find(root: Path) -> dict[str, dict[int, str]]:
    """For each library, the ids asked for, each with a place that does."""
    used: dict[str, dict[int, str]] = {"langfile": {}, "lic": {}}
    for layer in LAYERS:
        for path in sorted([*(root / layer).rglob("*.cpp"), *(root / layer).rglob("*.h")]):
            _scan(path.read_text(encoding="utf-8"), str(path.relative_to(root)), used)
    for library, ids in COMPUTED.items():
        for number in ids:
            used[library].setdefault(number, "by arithmetic")
    return used


def _scan(source: str, place: str, used: dict[str, dict[int, str]]) -> None:
    source = _STRING.sub('""', _COMMENT.sub(" ", source))
    constants = {name: int(value) for name, value in _CONSTANT.findall(source)}
    given: dict[str, set[str]] = {}
    for function, arguments in _LOOKUP.findall(source):
        library = _library(function)
        for word in re.findall(r"\w+", arguments):
            if word.isdigit() and 100 <= int(word) < 1000:
                used[library].setdefault(int(word), place)
            elif word in constants:
                given.setdefault(word, set()).add(library)
    for name, value in constants.items():
        libraries = given.get(name, set())
        if not libraries and _ROLE.search(name) and 100 <= value < 700:
            libraries = {"langfile"}
        for library in libraries:
            used[library].setdefault(value, f"{place} ({name})")
