"""Reads the manual pages and completes command lines, as a terminal would.

    manual_test.py FOLDER-OF-THE-MADE-PAGES SOURCES TOOL
"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tools"))
from alone import leave_machine

MADE, SOURCES, TOOL = (pathlib.Path(argument) for argument in sys.argv[1:4])
# What was typed, and what must be put forth.
CASES = [
    ("brimlo su", ["suggest"]),
    ("brimlo trash ", ["size", "purge", "empty"]),
    ("brimlo trash p", ["purge"]),
    ("brimlo scan --sort ", ["size", "name", "modified", "items"]),
    ("brimlo scan --sort=na", ["name"]),
    ("brimlo clean --pre", ["--preselected"]),
    ("brimlo trash purge --o", ["--older-than"]),
    ("brimlo suggest --persona gam", ["gamedev", "gaming"]),
    ("brimlo clean --rule npm.c", ["npm.cache"]),
    ("brimlo rules show artifact.node_m", ["artifact.node_modules"]),
    ("brimlo config stale", ["stale-days"]),
    ("brimlo config auto-clean-e", ["auto-clean-enabled"]),
    ("brimlo --ver", ["--version"]),
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
compopt() { :; }
_brimlo
printf '%s\n' "${COMPREPLY[@]}"
"""


def here(program):
    return unittest.skipUnless(shutil.which(program), f"{program} is missing")


def run(*command, **options):
    return subprocess.run(command, check=False, capture_output=True, text=True, **options)


class ManualTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory(prefix="brimlo-manual-")
        self.addCleanup(self.folder.cleanup)
        self.surroundings = {
            **os.environ, "HOME": self.folder.name, "LC_ALL": "C.UTF-8", "MANWIDTH": "200", "TERM": "dumb",
            "PATH": f"{TOOL.parent}:{os.environ['PATH']}",
        }

    @here("man")
    def test_pages_are_well_formed(self):
        for page in (MADE / "brimlo.1", SOURCES / "packaging/linux/brimlo-app.1"):
            done = run("man", "--warnings", "-E", "UTF-8", "-l", page, env=self.surroundings)
            self.assertEqual((done.returncode, done.stderr), (0, ""), page)

    @here("man")
    def test_page_tells_of_what_the_tool_takes(self):
        text = run("man", "-l", MADE / "brimlo.1", env=self.surroundings).stdout
        text = " ".join(text.split())
        for words in (
            "trash purge [--older-than DAYS] [--dry-run]", "scan [--depth INT]", "size PATH ...",
            "rules delete ID", "brimlo large ~/Downloads --min-size 1000000000",
            "One of size, name, modified, items.",
        ):
            self.assertIn(words, text)

    def test_shells_take_the_completions(self):
        for shell in filter(shutil.which, ("bash", "zsh", "fish")):
            done = run(shell, "-n", MADE / f"brimlo.{shell}", env=self.surroundings)
            self.assertEqual((done.returncode, done.stderr), (0, ""), shell)

    def test_bash_completes(self):
        script = MADE / "brimlo.bash"
        for typed, expected in CASES:
            done = run("bash", "-c", BASH, "bash", script, typed, env=self.surroundings)
            self.assertEqual((done.stdout.split(), done.stderr), (expected, ""), typed)

    @here("fish")
    def test_fish_completes(self):
        for typed, expected in CASES:
            if "=" in typed:
                continue  # It answers with the whole word.
            done = run(
                "fish", "--no-config", "-c", 'source $argv[1]; complete -C "$argv[2]"',
                MADE / "brimlo.fish", typed, env=self.surroundings)
            found = [line.split("\t")[0] for line in done.stdout.splitlines()]
            self.assertEqual((sorted(found), done.stderr), (sorted(expected), ""), typed)

    @here("zsh")
    def test_zsh_completes(self):
        functions = pathlib.Path(self.folder.name) / "functions"
        functions.mkdir()
        (functions / "_brimlo").write_text((MADE / "brimlo.zsh").read_text())
        program = pathlib.Path(__file__).with_name("complete.zsh")
        for typed, expected in CASES:
            done = run("zsh", "-f", program, functions, typed, env=self.surroundings, timeout=60)
            found = {line.strip() for line in done.stdout.splitlines()}
            self.assertEqual(found - {""}, set(expected), (typed, done.stderr))


if __name__ == "__main__":
    leave_machine()
    unittest.main(argv=sys.argv[:1])
