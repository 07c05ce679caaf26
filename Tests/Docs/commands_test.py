"""Holds the documents against the program: runs what they show, looks up what they mention.

    commands_test.py SOURCES TOOL

A line of a block that begins with "$ " is run, on a home folder that holds an example of everything
the rules know and is one for all documents; a block of JSON with a "pack" is a file of that name
there. Any other mention of a command, in a block or between backquotes, must be one that the tool's
help tells of, with its options. Scripts, presets and linked files must exist.
"""

import json
import os
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tools"))
from alone import leave_machine

SOURCES, TOOL = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
DOCUMENTS = sorted({*SOURCES.glob("*.md"), *SOURCES.glob("docs/*.md")})
BLOCK = re.compile(r"^```(\w*)\n(.*?)^```$", re.MULTILINE | re.DOTALL)
SPAN = re.compile(r"`([^`\n]+)`")
LINK = re.compile(r"\]\(([^)#\s]+)")


class Help:
    """What the tool says it takes."""

    def __init__(self):
        self.known = {}

    def text(self, *path):
        if path not in self.known:
            done = subprocess.run([TOOL, *path, "--help"], check=False, capture_output=True, text=True)
            self.known[path] = done.stdout if done.returncode == 0 else None
        return self.known[path]

    def fault(self, words):
        """Why "brimlo WORDS" is not understood, or None."""
        path = []
        for word in words[:2]:
            if not re.fullmatch(r"[a-z]+", word) or not re.search(rf"^  {word} ", self.text(*path), re.M):
                break
            path.append(word)
        if words and not path and not words[0].startswith("-"):
            return f'no command "{words[0]}"'
        for word in words:
            option = re.match(r"--?[a-z-]+", word)
            if option and not re.search(rf"(?<![\w-]){option[0]}(?![\w-])", self.text(*path)):
                return f'"{" ".join(["brimlo", *path])}" has no {option[0]}'
        return None


def words_of(line):
    """The words before a remark, a pipe or what stands for something else."""
    line = re.split(r"\s+#|[|<>…(\[\]]|&&", line)[0]
    try:
        return shlex.split(line)
    except ValueError:
        return line.split()


def presets():
    found = json.loads((SOURCES / "CMakePresets.json").read_text())
    return {preset["name"] for kind, group in found.items() if kind.endswith("Presets") for preset in group}


def fault_of_mention(line, helps):
    """Why what a document mentions is not there, or None; also for what is none of our business."""
    words = words_of(line.removeprefix("bash ").removeprefix("sudo "))
    if not words:
        return None
    name = words[0]
    if name == "brimlo" or (name == "./run" and len(words) > 1):
        return helps.fault(words[1:])
    if re.match(r"(\./|tools/|packaging/|\.ci/)[\w./-]+$", name) and not (SOURCES / name).exists():
        return f"there is no {name}"
    if name in ("cmake", "ctest"):
        given = re.findall(r"--preset[= ](\w+)", line)
        return next((f"no preset {preset}" for preset in given if preset not in presets()), None)
    return None


def mentions(text):
    """The commands that a document names without running them."""
    for kind, block in BLOCK.findall(text):
        if not kind:
            yield from (line.strip() for line in block.splitlines() if not line.startswith("$ "))
    yield from SPAN.findall(BLOCK.sub("", text))


def run_shown(text, home):
    """Runs the commands of a document, one after the other; yields those that were not understood."""
    surroundings = {
        **os.environ, "HOME": str(home), "PATH": f"{home / 'bin'}:{os.environ['PATH']}",
        "LC_ALL": "C.UTF-8",
    }
    for kind, block in BLOCK.findall(text):
        if kind == "json" and '"pack"' in block:
            pack = json.loads(block)
            (home / f"{pack['pack']}.json").write_text(block)
        for line in block.splitlines():
            if line.startswith("$ "):
                done = subprocess.run(
                    line[2:], shell=True, check=False, cwd=home, env=surroundings,
                    capture_output=True, text=True, timeout=60)
                if done.returncode not in (0, 1) or "Traceback" in done.stderr:
                    yield f"`{line}` ended with {done.returncode}: {done.stderr.strip()}"
                elif done.returncode == 1 and "safety" not in line:
                    yield f"`{line}` had problems: {done.stderr.strip() or done.stdout.strip()[-300:]}"


def main(home):
    leave_machine()
    helps, faults, ran = Help(), [], 0
    subprocess.run([SOURCES / "tools/make-home", home], check=True, stdout=subprocess.DEVNULL)
    (home / "bin").mkdir(exist_ok=True)
    (home / "bin/brimlo").symlink_to(TOOL)
    for document in DOCUMENTS:
        text = document.read_text()
        told = [fault for line in mentions(text) if (fault := fault_of_mention(line, helps))]
        told += [
            f"no file {target}" for target in LINK.findall(BLOCK.sub("", text))
            if "://" not in target and not (document.parent / target).exists()
        ]
        ran += len(re.findall(r"^\$ ", text, re.MULTILINE))
        told += run_shown(text, home)
        faults += [f"{document.relative_to(SOURCES)}: {fault}" for fault in told]
    version = subprocess.run([TOOL, "--version"], check=True, capture_output=True, text=True).stdout.split()[1]
    for path, start in (("CHANGELOG.md", f"## {version},"), ("packaging/linux/changelog", f"brimlo ({version})")):
        if not any(line.startswith(start) for line in (SOURCES / path).read_text().splitlines()):
            faults.append(f"{path}: nothing about {version}")
    print("\n".join([*faults, f"{len(DOCUMENTS)} documents, {ran} commands run"]))
    return 1 if faults or not ran else 0


if __name__ == "__main__":
    # In memory where there is such a place: a clean of all that is safe waits for the disk some
    # thousand times, and no document tells of that.
    place = "/dev/shm" if os.access("/dev/shm", os.W_OK) else None
    with tempfile.TemporaryDirectory(prefix="brimlo-docs-", dir=place) as folder:
        sys.exit(main(pathlib.Path(folder) / "home"))
