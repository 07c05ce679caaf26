#!/usr/bin/env python3
"""Looks through the sources for every way to start another program.

    commands.py [FOLDER]

There is one, and it takes a list of words, not a line for a shell. A shell appears in two places: to
start a job whose program's path systemd would refuse, with a script that is a constant, and for the
link that an administrator makes, whose words are quoted; CLIInstallerTest gives that every byte.
"""

import pathlib
import re
import sys

from victim import told

TOP = pathlib.Path(__file__).resolve().parent.parent.parent

# What starts a program or a shell, and the files that may, so many times each.
WAYS = {
    r"(?<![\w.:>])(?:std)?(?:::)?(?:system|popen|v?fork|exec[lv]p?e?|execvpe|wordexp)\s*\((?!\))": {},
    r"\bposix_spawnp?\s*\(": {"BrimloCore/Shell/Shell.cpp": 1},
    r"\bQProcess\b|\bstartDetached\b": {},
    r'"(?:/usr)?/bin/(?:ba|da)?sh"|\b(?:ba|da)?sh -c\b': {
        "BrimloCore/Platform/Linux/PeriodicJob.cpp": 1,
        "BrimloApp/Platform/Linux/Privilege.cpp": 1,
    },
    r"\brunAsAdministrator\s*\(": {
        "BrimloApp/Platform/Linux/Privilege.cpp": 1,
        "BrimloApp/Platform/macOS/Privilege.mm": 1,
        "BrimloApp/Platform/Privilege.h": 1,
        "BrimloApp/Settings/CLIInstaller.cpp": 1,
    },
}


def without_comments(text):
    return re.sub(r"^\s*//.*$|\s//[ /].*$", "", text, flags=re.MULTILINE)


def main(folder):
    files = [f for f in sorted(folder.rglob("*")) if f.suffix in (".h", ".cpp", ".mm", ".qml")]
    broken = 0
    for file in files:
        name = str(file.relative_to(folder))
        text = without_comments(file.read_text(encoding="utf-8", errors="replace"))
        for way, allowed in WAYS.items():
            found = re.findall(way, text)
            if len(found) != allowed.get(name, 0):
                print(f"BROKEN {name}: {found or 'lacks ' + way}")
                broken += 1
    told("sources searched for commands built by string", len(files), broken)
    return 1 if broken or not files else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else TOP / "Sources"))
