"""Finds tests that wait for time to pass instead of for what they test.

A short sleep between two looks at a condition in another process is marked "// polling"."""

import pathlib
import re
import sys

BARE_WAIT = re.compile(r"\b(qWait|qSleep|sleep_for|sleep_until|u?sleep|nanosleep|msleep)\s*\(")

found = 0
files = [path for path in pathlib.Path(sys.argv[1]).rglob("*") if path.suffix in (".cpp", ".h")]
for path in files:
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        if BARE_WAIT.search(line) and not line.rstrip().endswith("// polling"):
            print(f"{path}:{number}: a bare wait: {line.strip()}")
            found += 1
print(f"{len(files)} files, {found} bare waits")
sys.exit(1 if found or not files else 0)
