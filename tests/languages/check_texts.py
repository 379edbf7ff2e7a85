#!/usr/bin/env python3
"""Checks the texts of every language against the sources that ask for them and against each other.

usage: check_texts.py <project folder>
"""

import re
import sys
from collections import Counter
from pathlib import Path

import rc
import used_ids

REFERENCE = "0409"
MOST_BYTES = 382  # of one text, in the code page of the system
CODE_PAGES = {"0409": "cp1252", "0407": "cp1252"}
PLACEHOLDER = re.compile(r"%(?:username|entry|s|x|y|n)", re.IGNORECASE)

# What stands on the screen together, so that no two may mark the same letter. The menu bar's last entry, and the whole
# of the groups under "lic", are of the second text library.
GROUPS = {
    "folder menu": [100, 101, 102, 103, 104],
    "file menu": [111, 105, 106, 107, 101, 102, 108, 109, 103, 125, 104],
    "menu bar, folders": [110, ("lic", 103)],
    "menu bar, files": [113, ("lic", 103)],
    "help menu": [("lic", 104), ("lic", 105), ("lic", 106), ("lic", 107)],
    "archive dialog": [513, 514, 105, 104, 515, 521],
    "context menu of cabinets": [107, 105, 515],
    "About box": [("lic", 100), ("lic", 112)],
    "question": [606, 607],
    "progress": [642],
}


def place(entry: int | tuple[str, int]) -> tuple[str, int]:
    return entry if isinstance(entry, tuple) else ("langfile", entry)


def mnemonics(text: str) -> list[str]:
    return [letter.casefold() for letter in re.findall(r"&(.)", text.replace("&&", ""))]


def check_text(where: str, text: str, code_page: str) -> list[str]:
    problems = []
    if text != text.strip() or not text:
        problems.append(f"{where}: empty, or blanks at an end")
    # Linux systems keep text as UTF-8; Windows in the page that goes with the language.
    for encoding in (code_page, "utf-8"):
        try:
            if len(text.encode(encoding)) > MOST_BYTES:
                problems.append(f"{where}: more than {MOST_BYTES} bytes in {encoding}")
        except UnicodeEncodeError as error:
            problems.append(f"{where}: {error}")
    leftover = PLACEHOLDER.sub("", text)
    if "%" in leftover:
        problems.append(f"{where}: a placeholder that the program does not know")
    return problems


def check_language(language: str, files: dict[str, rc.TextFile], reference: dict[str, rc.TextFile]) -> list[str]:
    problems = []
    for library, file in files.items():
        name = f"{language}/{library}"
        if file.language != language:
            problems.append(f"{name}: LANGUAGE says {file.language}")
        problems += [f"{name} {number}: twice" for number in file.repeated]
        wanted = reference[library].texts
        problems += [f"{name} {number}: missing" for number in wanted.keys() - file.texts.keys()]
        problems += [f"{name} {number}: not in {REFERENCE}" for number in file.texts.keys() - wanted.keys()]
        for number, text in file.texts.items():
            where = f"{name} {number}"
            problems += check_text(where, text, CODE_PAGES[language])
            ours, theirs = (Counter(PLACEHOLDER.findall(t.lower())) for t in (text, wanted.get(number, "")))
            if number in wanted and ours != theirs:
                problems.append(f"{where}: other placeholders than {REFERENCE}")
    return problems + check_mnemonics(language, files)


def check_mnemonics(language: str, files: dict[str, rc.TextFile]) -> list[str]:
    problems = []
    captions = {place(entry) for group in GROUPS.values() for entry in group}
    for library, file in files.items():
        for number, text in file.texts.items():
            expected = 1 if (library, number) in captions else 0
            if len(mnemonics(text)) != expected:
                problems.append(f"{language}/{library} {number}: marks {len(mnemonics(text))} letters, not {expected}")
    for group, entries in GROUPS.items():
        letters = Counter()
        for library, number in map(place, entries):
            letters.update(mnemonics(files[library].texts.get(number, "")))
        problems += [f"{language} {group}: '{letter}' marked twice" for letter, n in letters.items() if n > 1]
    return problems


def main() -> int:
    root = Path(sys.argv[1])
    languages = {
        folder.name: {library: rc.read(folder / f"{library}.rc") for library in ("langfile", "lic")}
        for folder in sorted((root / "languages").iterdir())
        if folder.is_dir()
    }
    problems = []
    for language, files in languages.items():
        problems += check_language(language, files, languages[REFERENCE])
    used = used_ids.find(root)
    for library, ids in used.items():
        for number in sorted(ids.keys() - languages[REFERENCE][library].texts.keys()):
            problems.append(f"{library} {number}: asked for, but in no language: {ids[number]}")
    for problem in problems:
        print(problem)
    found = sum(len(ids) for ids in used.values())
    print(f"{len(languages)} languages, {found} ids asked for, {len(problems)} problems")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
