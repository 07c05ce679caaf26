#!/usr/bin/env python3
"""Cleans and undoes items of every name, kind and file system, as root and as an ordinary user.

    undo_matrix.py TOOL

Each cell must move and come back exactly as it was, or be refused with a sentence and stay as it
is. Between the two, something new stands in the place of each: it must stay, and so must the item in
the Trash. Needs root and a mount namespace of its own; exits with 77 without them.
"""

import json
import os
import shutil
import stat
import subprocess
import sys

from victim import SKIPPED, enter_own_mounts, make_image, sh, tell, told, work_folder

NOBODY = 65534
NAMES = [
    b"plain",
    b"line\nbreak \t",
    b"per%cent%41%",
    b"n" * 251 + b".txt",
    "\u00e9 composed".encode(),
    "e\u0301 composed".encode(),
    b"\xff\xfe no text",
    b"-rf",
]


def folder(path):
    os.mkdir(path)
    with open(path + b"/inside", "wb") as file:
        file.write(b"inside")
    os.symlink(b"inside", path + b"/link")


def sparse(path):
    with open(path, "wb") as file:
        file.seek(8 << 20)
        file.write(b"end")


def file_of(mode):
    def make(path):
        with open(path, "wb") as file:
            file.write(b"content of " + os.path.basename(path))
        os.chmod(path, mode)

    return make


def hard_linked(path):
    file_of(0o640)(path)
    partner = os.path.dirname(path) + b"-partners"
    os.makedirs(partner, exist_ok=True)
    os.link(path, partner + b"/%d" % len(os.listdir(partner)))


def closed(path):
    folder(path)
    os.chmod(path, 0)


KINDS = {
    "file": file_of(0o644),
    "folder": folder,
    "link": lambda path: os.symlink(b"../file/plain", path),
    "dangling": lambda path: os.symlink(b"nowhere", path),
    "sparse": sparse,
    "hard-linked": hard_linked,
    "read-only": file_of(0o444),
    "closed": closed,
    "pipe": os.mkfifo,
}


def on_loop(system):
    def mount(base, point):
        make_image(base / "image", system)
        sh("mount", "-o", "loop", base / "image", point)

    return mount


def subvolume(base, point):
    on_loop("btrfs")(base, point)
    sh("btrfs", "subvolume", "create", point / "work")


def overlay(base, point):
    """The items are made before, in the layer that can't be written to."""
    layers = [base / "over" / name for name in ("lower", "upper", "work")]
    for layer in layers:
        layer.mkdir(parents=True, exist_ok=True)
    options = "lowerdir={},upperdir={},workdir={}".format(*layers)
    sh("mount", "-t", "overlay", "overlay", "-o", options, point)


def bind(base, point):
    (base / "bound").mkdir()
    sh("mount", "--bind", base / "bound", point)


SYSTEMS = {
    "home": lambda base, point: None,
    "ext4": on_loop("ext4"),
    "xfs": on_loop("xfs"),
    "btrfs": on_loop("btrfs"),
    "subvolume": subvolume,
    "tmpfs": lambda base, point: sh("mount", "-t", "tmpfs", "-o", "size=600m", "tmpfs", point),
    "overlay": overlay,
    "overlay's lower": overlay,
    "bind": bind,
}


class Row:
    """One file system and one user: all names and kinds at once."""

    def __init__(self, tool, base, system, user):
        self.tool, self.user = tool, user
        is_lower = system == "overlay's lower"
        # The system copies a file of the lower layer up when it is moved, there or back, and the
        # file loses its number and its other names by that.
        self.parts = ["st_uid"] + ([] if is_lower else ["st_nlink", "st_ino", "st_blocks"])
        self.home = base / "home"
        self.point = self.home if system == "home" else self.home / "volume"
        self.point.mkdir(parents=True)
        if is_lower:
            self.make_items(base / "over" / "lower" / "work")
        SYSTEMS[system](base, self.point)
        self.work = self.point / "work"
        if not is_lower:
            self.make_items(self.work)
        for place in (self.home, self.point):
            os.chown(place, user, user)
        self.cells = {
            (kind, name): os.fsencode(self.work / kind) + b"/" + name
            for kind in KINDS
            for name in NAMES
        }

    def make_items(self, work):
        for kind, make in KINDS.items():
            (work / kind).mkdir(parents=True)
            for name in NAMES:
                make(os.fsencode(work / kind) + b"/" + name)
        sh("chown", "-hR", f"{self.user}:{self.user}", work)

    def run(self, *words):
        drop = ["setpriv", f"--reuid={self.user}", f"--regid={self.user}", "--clear-groups"]
        done = subprocess.run(
            [*drop, self.tool, *words],
            env={**os.environ, "HOME": str(self.home)},
            stdin=subprocess.DEVNULL,
            capture_output=True,
            check=False,
        )
        nothing = {"processed": 0, "failures": [], "refused": []}
        return json.loads(done.stdout) if done.stdout else nothing

    def entries(self):
        journal = self.home / "Library/Application Support/Brimlo/journal.json"
        return json.loads(journal.read_bytes()) if journal.exists() else []

    def problems(self):
        """What went wrong in which cell, and how many cells were refused."""
        before = {cell: tell(path, *self.parts) for cell, path in self.cells.items()}
        report = self.run("clean", "--yes", "--json", *self.cells.values())
        said = report["failures"] + report["refused"]
        moved = {cell: path for cell, path in self.cells.items() if not os.path.lexists(path)}
        found = []
        for cell in self.cells.keys() - moved.keys():
            if tell(self.cells[cell], *self.parts) != before[cell]:
                found.append((cell, "was refused and yet changed"))
        if len(said) != len(self.cells) - len(moved) or report["processed"] != len(moved):
            found.append((None, f"{len(self.cells) - len(moved)} stayed, but: {said[:2]}"))
        found += [(None, "no reason: " + line) for line in said if not line.split(": ")[-1]]
        found += self.undone(moved, before)
        self.reasons = sorted({line.split(": ")[-1] for line in said})
        return found, len(self.cells) - len(moved)

    def undone(self, moved, before):
        found = []
        for path in moved.values():
            with open(path, "wb") as file:
                file.write(b"new")
        if moved:
            self.run("undo", "--last", "--json")
        kept = {entry["originalPath"] for entry in self.entries() if not entry["undone"]}
        trashed = [entry["trashPath"] for entry in self.entries() if not entry["undone"]]
        for cell, path in moved.items():
            if not stat.S_ISREG(os.lstat(path).st_mode) or os.path.getsize(path) != len(b"new"):
                found.append((cell, "what was new there is gone"))
                continue
            os.remove(path)
            if os.fsdecode(path) not in kept:
                found.append((cell, "counts as undone, or was never recorded"))
        found += [(None, path + " left the Trash") for path in trashed if not os.path.lexists(path)]
        for kind in KINDS:
            if not os.listdir(self.work / kind):
                os.rmdir(self.work / kind)
                break  # One folder above is made again by the undo.
        if moved:
            self.run("undo", "--last", "--json")
        for cell, path in moved.items():
            if tell(path, *self.parts) != before[cell]:
                found.append((cell, "did not come back as it was"))
        return found


def main(tool):
    if os.geteuid() != 0 or not shutil.which("setpriv"):
        print("Skipped: mounting and changing the user need root")
        return SKIPPED
    enter_own_mounts()
    cells = broken = 0
    for system in SYSTEMS:
        for user in (0, NOBODY):
            with work_folder() as base:
                base.chmod(0o755)
                try:
                    row = Row(tool, base, system, user)
                    found, refused = row.problems()
                    cells += len(row.cells)
                    broken += len(found)
                    name = "root" if user == 0 else "user"
                    print(f"{system:15} {name}  {len(row.cells)} cells, {refused} refused: {row.reasons}")
                    for cell, text in found:
                        print(f"BROKEN {system} {name} {cell}: {text}")
                except subprocess.CalledProcessError as error:
                    print(f"Skipped: {system}: {error.cmd[0]} failed: {error.stderr[:200]}")
                finally:
                    words = ["umount", str(base / "home/volume")]
                    subprocess.run(words, capture_output=True, check=False)
    told("cells of the undo matrix", cells, broken)
    return 1 if broken else 0


if __name__ == "__main__":
    sys.exit(main(os.path.abspath(sys.argv[1])))
