"""Finds the text ids that the program's sources ask for.

Seen are numbers given to functions whose names speak of texts, and every constant of the type of an id with a value
in their range: text ids and nothing else are kept that way. Ids that are reached by arithmetic are listed here.
"""

import re
from pathlib import Path

LAYERS = ("app", "archive", "ui")
IDS = range(100, 700)

# Result codes of the RAR library plus 518, and the texts for its codes while listing.
COMPUTED = {"langfile": set(range(529, 539)) | set(range(546, 554)), "lic": set()}

# Any function whose name says that it takes a text's id.
_LOOKUP = re.compile(r"\b(\w*(?:Text|Caption|Title|Message|Prompt|ToolTip)\w*)\(")
_CONSTANT = re.compile(r"\b(?:std::)?uint32_t\s+(k\w+)\s*=\s*(\d+)\s*[;,]")
_COMMENT = re.compile(r"//[^\n]*|/\*.*?\*/", re.DOTALL)
_STRING = re.compile(r'"(?:[^"\\\n]|\\.)*"')


def _library(function: str) -> str:
    return "lic" if "Extra" in function else "langfile"


def _arguments(source: str, start: int) -> str:
    """What stands from `start` to the closing parenthesis, without what further parentheses hold."""
    depth, own = 1, []
    for character in source[start:]:
        depth += {"(": 1, ")": -1}.get(character, 0)
        if depth == 0:
            break
        if depth == 1:
            own.append(character)
    return "".join(own)


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
    for call in _LOOKUP.finditer(source):
        library = _library(call[1])
        for word in re.findall(r"\w+", _arguments(source, call.end())):
            if word.isdigit() and int(word) in IDS:
                used[library].setdefault(int(word), place)
            elif word in constants:
                given.setdefault(word, set()).add(library)
    for name, value in constants.items():
        for library in given.get(name, {"langfile"}) if value in IDS else ():
            used[library].setdefault(value, f"{place} ({name})")
