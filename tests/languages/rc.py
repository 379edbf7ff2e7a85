"""Reads the .rc files of the text libraries, apart from the tools that build them."""

import re
from dataclasses import dataclass, field
from pathlib import Path

_TOKEN = re.compile(r'"(?:[^"]|"")*"|/\*.*?\*/|//[^\n]*', re.DOTALL)
_ENTRY = re.compile(r'^[ \t]*(\d+)[ \t,]+("(?:[^"\n]|"")*")[ \t]*$', re.MULTILINE)
_LANGUAGE = re.compile(r"^LANGUAGE\s+(\w+)\s*,\s*(\w+)", re.MULTILINE)
_ESCAPES = {"n": "\n", "r": "\r", "t": "\t", "\\": "\\"}


@dataclass
class TextFile:
    path: Path
    language: str  # four hexadecimal digits, from the LANGUAGE statement
    texts: dict[int, str] = field(default_factory=dict)
    repeated: list[int] = field(default_factory=list)


def _without_comments(source: str) -> str:
    return _TOKEN.sub(lambda match: match[0] if match[0].startswith('"') else " ", source)


def _text(literal: str) -> str:
    body = literal[1:-1].replace('""', '"')
    return re.sub(r"\\(.)", lambda match: _ESCAPES[match[1]], body)


def read(path: Path) -> TextFile:
    source = _without_comments(path.read_text(encoding="utf-8"))
    language = _LANGUAGE.search(source)
    if not language:
        raise ValueError(f"{path}: no LANGUAGE statement")
    primary, sub = (int(number, 0) for number in language.groups())
    result = TextFile(path, f"{sub << 10 | primary:04x}")
    for number, literal in _ENTRY.findall(source):
        if int(number) in result.texts:
            result.repeated.append(int(number))
        result.texts[int(number)] = _text(literal)
    # An entry that the pattern does not know must not pass unseen.
    if len(_ENTRY.findall(source)) != source.count('"') // 2 - source.count('""'):
        raise ValueError(f"{path}: a text that this reader does not understand")
    return result
