#!/usr/bin/env python3
"""Asks `brimlo account` about volumes whose content is known, on ext4, xfs and btrfs.

    volume_account.py TOOL

Each volume gets files of all sizes, sparse and preallocated ones, files with several names, a Trash,
another volume mounted in it and a deleted file that stays open; on btrfs also a subvolume and a
snapshot. As root and as the user who owns the home, the lines must add up to what statvfs tells,
what was planted must be told, and what nothing explains must stay below 1 % as root and 3 % as the
user. Needs root and loop devices; exits with 77 without them.
"""

import json
import os
import pathlib
import random
import shutil
import subprocess
import sys

from victim import MAKE, SKIPPED, enter_own_mounts, sh, told, work_folder

MIB = 1 << 20
USER = 65534
VARIANTS = {
    "ext4": [[], ["-m", "0"], ["-O", "bigalloc"]],
    "xfs": [[], ["-m", "rmapbt=1"], ["-m", "reflink=0,finobt=0,rmapbt=0"]],
    "btrfs": [[], ["-m", "single"], ["-M"]],
}


def write(path, size, chance):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(chance.randbytes(size))


def plant(top, system, chance):
    """A process with a deleted file, and what must be told: {(kind, name): least bytes}."""
    home = top / "home" / "u"
    for number in range(1500):
        write(home / f"code/{number % 40}/{number}", chance.randrange(1, 40_000), chance)
    write(home / ".cache/large", 30 * MIB, chance)
    write(home / ".local/share/Trash/files/old", 5 * MIB, chance)
    write(top / "opt/program", 7 * MIB, chance)
    os.link(top / "opt/program", top / "opt/again")
    write(top / "srv/shared", 6 * MIB, chance)
    os.link(top / "srv/shared", home / "shared")
    with open(top / "srv/sparse", "wb") as file:
        file.truncate(50_000 * MIB)
        file.seek(9_000 * MIB)
        file.write(b"x" * MIB)
    with open(top / "srv/preallocated", "wb") as file:
        os.posix_fallocate(file.fileno(), 0, 60 * MIB)
    expected = {
        ("area", str(home / ".cache")): 30 * MIB,
        ("area", str(top / "opt")): 7 * MIB,
        ("area", str(top / "srv")): 61 * MIB,
        ("severalAreas", None): 6 * MIB,
        ("trash", None): 5 * MIB,
    }
    if system == "btrfs":
        sh("btrfs", "subvolume", "create", top / "inner")
        write(top / "inner/file", 11 * MIB, chance)
        sh("btrfs", "subvolume", "snapshot", "-r", top / "inner", top / "kept")
        expected["area", str(top / "inner")] = 11 * MIB
    (top / "other").mkdir()
    sh("mount", "-t", "tmpfs", "none", top / "other")
    write(top / "other/none", 20 * MIB, chance)
    with open(top / "deleted", "wb") as deleted:
        os.posix_fallocate(deleted.fileno(), 0, 9 * MIB)
        expected["deletedOpen", None] = os.fstat(deleted.fileno()).st_blocks * 512
        # pylint: disable-next=consider-using-with
        holder = subprocess.Popen(["sleep", "300"], stdout=deleted, user=USER, group=USER)
    (top / "deleted").unlink()
    return holder, expected


def problems(tool, top, system, user, expected):
    """What is wrong with the answer, and the share that nothing explains."""
    home = top / "home" / "u"
    sh("chown", "-R", f"{user}:{user}", home)
    sh("sync", "-f", top)
    done = subprocess.run(
        [tool, "account", home, "--json"], env={**os.environ, "HOME": str(home)}, check=False,
        capture_output=True, text=True, user=user, group=user, extra_groups=[],
    )  # fmt: skip
    if done.returncode != 0:
        return [f"ended with {done.returncode}: {done.stderr}"], 0
    answer = json.loads(done.stdout)
    use = os.statvfs(top)
    taken = (use.f_blocks - use.f_bavail) * use.f_frsize
    lines, rest = answer["lines"], answer["lines"][-1]
    share = rest["size"] / taken
    found = []
    if sum(line["size"] for line in lines) != answer["taken"] or rest["kind"] != "rest":
        found.append("the lines don't add up")
    if abs(answer["taken"] - taken) > MIB:
        found.append(f"taken is {taken}, not {answer['taken']}")
    if abs(share) > (0.03 if user else 0.01):
        found.append(f"{share:.2%} is not explained")
    for (kind, name), least in expected.items():
        size = sum(x["size"] for x in lines if x["kind"] == kind and name in (None, x["name"]))
        if not least <= size <= least + least // 10:
            found.append(f"{kind} {name or ''} has {size}, not {least}")
    if answer["mountPoints"] != [str(top / "other")]:
        found.append(f"other volumes: {answer['mountPoints']}")
    if answer["snapshots"] != ([str(top / "kept")] if system == "btrfs" else []):
        found.append(f"snapshots: {answer['snapshots']}")
    return found, share


def tried(tool, base, system, options):
    """Both users on one volume; returns how many were wrong."""
    image, top = base / "image", base / "top"
    with open(image, "wb") as file:
        file.truncate(1024 * MIB)
    sh(*MAKE[system], *options, image)
    top.mkdir(exist_ok=True)
    sh("mount", "-o", "loop", image, top)
    broken = 0
    try:
        os.chmod(top, 0o755)
        holder, expected = plant(top, system, random.Random(0))
        for user in (0, USER):
            found, share = problems(tool, top, system, user, expected)
            who = "the user" if user else "root"
            print(f"{system:6}{' '.join(options):34} {who:8} {share:8.3%} not explained")
            for text in found:
                print(f"BROKEN {system} {' '.join(options)} {who}: {text}")
            broken += bool(found)
        holder.kill()
        holder.wait()
    finally:
        sh("umount", "-R", top)
    return broken


def main():
    if os.geteuid() != 0 or not os.path.exists("/dev/loop-control"):
        print("Skipped: mounting needs root and loop devices")
        return SKIPPED
    enter_own_mounts()
    tool = pathlib.Path(sys.argv[1]).resolve()
    total = 0
    with work_folder() as base:
        os.chmod(base, 0o755)
        for system, variants in VARIANTS.items():
            if shutil.which(MAKE[system][0]) is None:
                print(f"Skipped: accounts on {system}: {MAKE[system][0]} is not installed")
                continue
            broken = sum(tried(tool, base, system, options) for options in variants)
            told(f"accounts of {system}", 2 * len(variants), broken)
            total += broken
    return 1 if total else 0


if __name__ == "__main__":
    sys.exit(main())
