#!/usr/bin/env python3
"""Removes random selections on ext4, xfs and btrfs, and compares what is free with what was promised.

    freed_space.py TOOL [--selections 10] [--seed 0] [--only SYSTEM]

Each selection is of some folders of a tree with hard links inside, between and outside them, sparse and
preallocated files, a store and the folders made from it as package managers do, and on xfs and btrfs
clones, also partly overwritten ones; on btrfs some trees are in a snapshot, and a second volume is compressed.
What `statvfs` tells as available, after the clean and the emptying of the Trash, must have grown by
no less than the plan's `freedBytes` and no more than its `freedAtMostBytes`, save for 1 % or 64 KiB, since
folders' own blocks are not counted. Needs root and loop devices; exits with 77 without them.
"""

import argparse
import json
import os
import pathlib
import random
import shutil
import subprocess
import sys
import time

from victim import MAKE, SKIPPED, enter_own_mounts, sh, told, work_folder

KIB = 1 << 10
VOLUMES = [("ext4", ""), ("xfs", ""), ("btrfs", ""), ("btrfs", "compress-force=zstd")]
PLACES = 6


class Tree:
    """Folders in a fresh folder, filled by chance."""

    def __init__(self, top, chance, clones):
        self.top, self.chance, self.clones = top, chance, clones
        self.places = [top / f"place{number}" for number in range(PLACES)]
        for folder in [*self.places, top / "outside"]:
            (folder / "inner").mkdir(parents=True)
        self.count = 0

    def name(self, folders):
        self.count += 1
        inner = self.chance.choice(["", "inner/"])
        return self.chance.choice(folders) / f"{inner}{self.count}"

    def write(self, path):
        size = int(2 ** self.chance.uniform(5, 21))
        if self.chance.random() < 0.5:
            path.write_bytes(self.chance.randbytes(size))
        else:
            path.write_bytes((b"%d words " % self.count) * (size // 9))
        return path

    def clone(self, origin, path):
        sh("cp", "--reflink=always", origin, path)
        size = path.stat().st_size
        if self.chance.random() < 0.3 and size > 64 * KIB:
            with open(path, "r+b") as file:
                file.seek(self.chance.randrange(size // 2))
                file.write(self.chance.randbytes(size // 4))

    def add_files(self):
        everywhere = [*self.places, self.top / "outside"]
        with_clones = self.clones and self.chance.random() < 0.5
        known = []
        for _ in range(60):
            path = self.name(self.places)
            kind = self.chance.random()
            if kind < 0.15 and known:
                os.link(self.chance.choice(known), self.name(everywhere))
            elif kind < 0.3 and known and with_clones:
                os.sync()  # What is not on the disk yet is copied instead of shared.
                self.clone(self.chance.choice(known), path)
                known.append(path)
            elif kind < 0.36:
                with open(path, "wb") as file:
                    file.truncate(300 << 20)
                    file.seek(self.chance.randrange(200 << 20))
                    file.write(self.chance.randbytes(200 * KIB))
            elif kind < 0.42:
                with open(path, "wb") as file:
                    os.posix_fallocate(file.fileno(), 0, self.chance.randrange(1, 900 * KIB))
            else:
                known.append(self.write(path))

    def add_store(self):
        """A store in one place and what was made of its files in two others, one name or clone each."""
        os.sync()
        store, *users = self.chance.sample(self.places, 3)
        packages = [self.write(store / f"package{number}") for number in range(40)]
        os.sync()
        for user in users:
            for package in self.chance.sample(packages, 30):
                if self.clones:
                    self.clone(package, user / package.name)
                else:
                    os.link(package, user / package.name)


def available(top):
    """The bytes that are available, once the file system has finished its work."""
    before = None
    while True:
        sh("sync", "-f", top)
        use = os.statvfs(top)
        now = use.f_bavail * use.f_frsize
        if now == before:
            return now
        before = now
        time.sleep(0.05)


def run(tool, home, *words):
    done = subprocess.run(
        [tool, *words, "--json"], env={**os.environ, "HOME": str(home)}, check=False,
        capture_output=True, text=True, stdin=subprocess.DEVNULL,
    )  # fmt: skip
    if done.returncode != 0:
        raise RuntimeError(f"{words[0]} ended with {done.returncode}: {done.stderr}{done.stdout}")
    return json.loads(done.stdout)


def selection(tool, top, chance, system):
    """Removes one; returns the promised bounds, what was freed, and what the items took."""
    home = top / "home"
    tree = Tree(home / "tree", chance, system != "ext4")
    tree.add_files()
    if chance.random() < 0.3:
        tree.add_store()
    has_snapshot = system == "btrfs" and chance.random() < 0.1
    if has_snapshot:
        sh("btrfs", "subvolume", "snapshot", top, top / "kept")
    chosen = [place for place in tree.places if chance.random() < 0.5] or tree.places[:1]
    before = available(top)
    plan = run(tool, home, "clean", "--yes", "--dry-run", *chosen)["plan"]
    run(tool, home, "clean", "--yes", *chosen)
    run(tool, home, "trash", "empty", "--yes")
    freed = available(top) - before
    if has_snapshot:
        sh("btrfs", "subvolume", "delete", "--commit-after", top / "kept")
        sh("btrfs", "subvolume", "sync", top)
    shutil.rmtree(home / "tree")
    least = plan["freedBytes"]
    return least, plan.get("freedAtMostBytes", least), freed, plan["totalBytes"]


def tried(tool, base, system, options, arguments):
    """All selections on one volume; returns how many broke the promise."""
    image, top = base / "image", base / "top"
    with open(image, "wb") as file:
        file.truncate(1536 << 20)
    sh(*MAKE[system], image)
    top.mkdir(exist_ok=True)
    sh("mount", "-o", "loop" + ("," + options if options else ""), image, top)
    broken = exact = 0
    farthest = 0.0
    try:
        # The journal is elsewhere, and the Trash is there already.
        (top / "home/Library").mkdir(parents=True)
        sh("mount", "-t", "tmpfs", "none", top / "home/Library")
        for part in ("files", "info"):
            (top / "home/.local/share/Trash" / part).mkdir(parents=True)
        sh("chmod", "-R", "go=", top / "home")
        for number in range(arguments.selections):
            chance = random.Random(f"{arguments.seed} {number}")
            least, most, freed, taken = selection(tool, top, chance, system)
            exact += most - least <= taken // 100
            off = max(least - freed, freed - most, 0)
            farthest = max(farthest, off / max(taken, 1))
            if off > max(64 * KIB, most // 100):
                broken += 1
                print(f"BROKEN {system} {options} {number}: {least} to {most}, freed {freed}")
    finally:
        sh("umount", "-R", top)
    count = arguments.selections
    print(f"{system:6}{options:22} {exact} of {count} are exact, at most {farthest:.2%} beyond")
    return broken


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("tool")
    parser.add_argument("--selections", type=int, default=10)
    parser.add_argument("--seed", default="0")
    parser.add_argument("--only", default="")
    arguments = parser.parse_args()
    if os.geteuid() != 0 or not os.path.exists("/dev/loop-control"):
        print("Skipped: mounting needs root and loop devices")
        return SKIPPED
    enter_own_mounts()
    total = 0
    with work_folder() as base:
        for system, options in VOLUMES:
            if arguments.only not in system:
                continue
            if shutil.which(MAKE[system][0]) is None:
                print(f"Skipped: selections on {system}: {MAKE[system][0]} is not installed")
                continue
            tool = pathlib.Path(arguments.tool).resolve()
            broken = tried(tool, base, system, options, arguments)
            told(f"selections on {system} {options}".strip(), arguments.selections, broken)
            total += broken
    return 1 if total else 0


if __name__ == "__main__":
    sys.exit(main())
