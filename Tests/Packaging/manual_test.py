"""Holds the manual page against the tool's help, and completes command lines as a terminal would.

    manual_test.py SOURCES TOOL
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tools"))
from alone import leave_machine

SOURCES, TOOL = (pathlib.Path(argument) for argument in sys.argv[1:3])
MANUAL = SOURCES / "packaging/manual"
# What was typed, and what must be put forth.
CASES = [
    ("brimlo su", ["suggest"]),
    ("brimlo trash ", ["size", "list", "restore", "purge", "empty"]),
    ("brimlo size manu", ["manual.txt"]),
    ("brimlo scan --sort=na", ["name"]),
    ("brimlo large --kind vi", ["video"]),
    ("brimlo trash purge --o", ["--older-than"]),
    ("brimlo suggest --persona gam", ["gamedev", "gaming"]),
    ("brimlo clean --rule npm.c", ["npm.cache"]),
    ("brimlo rules show artifact.node_m", ["artifact.node_modules"]),
    ("brimlo config auto-clean-e", ["auto-clean-enabled"]),
    ("brimlo --ver", ["--version"]),
]
# The shells share what finds the candidates; these differ in how they take them.
FEW = [
    ("brimlo trash ", ["size", "list", "restore", "purge", "empty"]),
    ("brimlo scan --sort=na", ["--sort=name"]),
    ("brimlo size manu", ["manual.txt"]),
]
# Completes a line as readline would have it done: words broken at spaces and "=".
BASH = r"""
source "$1"
line=$2
while [[ $line =~ ^\ *([^\ =]+|=)(.*)$ ]]; do
    COMP_WORDS+=("${BASH_REMATCH[1]}")
    line=${BASH_REMATCH[2]}
done
[[ $2 != *[\ =] ]] || COMP_WORDS+=('')
COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
compopt() { mapfile -t COMPREPLY < <(compgen -f -- "$word"); }
_brimlo
printf '%s\n' "${COMPREPLY[@]}"
"""


def here(program):
    return unittest.skipUnless(shutil.which(program), f"{program} is missing")


def run(*command, **options):
    return subprocess.run(command, check=False, capture_output=True, text=True, **options)


def taken(help_text):
    """The options and commands that a help text lists."""
    options = re.findall(r"^ +(?:-h,)?--([a-z-]+)", help_text, re.M)
    return sorted({*options} - {"help", "json", "version"}), re.findall(r"^  ([a-z]+)  ", help_text, re.M)


def told_by_help(*path):
    options, commands = taken(run(TOOL, *path, "--help").stdout)
    found = {} if commands else {" ".join(path): options}
    for command in commands:
        found.update(told_by_help(*path, command))
    return found


def told_by_page():
    heads = re.findall(r"^\.It Cm ([a-z ]+)(.*)$", (MANUAL / "brimlo.1").read_text(), re.M)
    return {
        command.strip(): sorted(option.replace("\\", "") for option in re.findall(r"Fl \\-(\S+)", rest))
        for command, rest in heads
    }


class ManualTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="brimlo-manual-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        tool = self.folder / "brimlo"
        tool.write_text(f'#!/bin/sh\nexec "{TOOL}" "$@"\n')
        tool.chmod(0o755)
        (self.folder / "brimlo-complete").symlink_to(MANUAL / "brimlo-complete")
        (self.folder / "_brimlo").symlink_to(MANUAL / "brimlo.zsh")
        (self.folder / "manual.txt").touch()
        self.surroundings = {
            **os.environ, "HOME": folder.name, "LC_ALL": "C.UTF-8", "MANWIDTH": "200", "TERM": "dumb",
            "PATH": f"{folder.name}:{os.environ['PATH']}",
        }

    def expect(self, cases, *command):
        for typed, expected in cases:
            done = run(*command, typed, env=self.surroundings, cwd=self.folder, timeout=60)
            found = {line.split("\t")[0].strip() for line in done.stdout.splitlines()}
            self.assertEqual((found - {""}, done.stderr), (set(expected), ""), typed)

    @here("man")
    def test_pages_are_well_formed(self):
        for page in (MANUAL / "brimlo.1", SOURCES / "packaging/linux/brimlo-app.1"):
            done = run("man", "--warnings", "-E", "UTF-8", "-l", page, env=self.surroundings)
            self.assertEqual((done.returncode, done.stderr), (0, ""), page)

    def test_page_tells_what_the_help_tells(self):
        self.assertEqual(told_by_page(), told_by_help())

    def test_bash_completes(self):
        self.expect(CASES, "bash", "-c", BASH, "bash", MANUAL / "brimlo.bash")

    @here("fish")
    def test_fish_completes(self):
        script = 'source $argv[1]; complete -C "$argv[2]"'
        self.expect(FEW, "fish", "--no-config", "-c", script, MANUAL / "brimlo.fish")

    @here("zsh")
    def test_zsh_completes(self):
        self.expect(FEW, "zsh", "-f", pathlib.Path(__file__).with_name("complete.zsh"), self.folder)


if __name__ == "__main__":
    leave_machine()
    unittest.main(argv=sys.argv[:1])
