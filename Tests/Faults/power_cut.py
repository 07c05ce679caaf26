#!/usr/bin/env python3
"""Cuts the power at the system calls of a clean and an undo, on ext4, xfs and btrfs.

    power_cut.py TOOL [--cuts N] [--keep] [FILE SYSTEM...]

Each time a home folder on a fresh image is worked on until the program is killed before one of its
calls; then the image is copied as it is. What the file system had not yet been made to write is
absent from the copy, as after a power cut. The copy is mounted, and what fault_sweep.py asks of a
clean and an undo must hold there. Needs root, loop devices and strace; exits with 77 without them.
"""

import argparse
import collections
import contextlib
import os
import shutil
import sys

from victim import (
    MAKE, SKIPPED, boundaries, enter_own_mounts, make_image, prepared, sh, strace_reason, told,
    work_folder,
)  # fmt: skip


@contextlib.contextmanager
def mounted(system, image, point):
    """An image, mounted for a while."""
    point.mkdir(exist_ok=True)
    # A copy has its original's name, which may be mounted for a moment more.
    sh("mount", "-o", "loop,nouuid" if system == "xfs" else "loop", image, point)
    try:
        yield
    finally:
        sh("umount", point)


def copy(image, target):
    sh("cp", "--sparse=always", image, target)


def made(base, system, tool, road):
    """An image with a home on it, all written; and that home."""
    image, point = base / f"{system}-{road}", base / "mounted"
    make_image(image, system)
    with mounted(system, image, point):
        home = prepared(point / "home", tool, road)
        sh("sync", "-f", point)
    return image, home


def cut(base, system, pristine, home, road, call, number):
    """One cut; returns what is wrong on the disk after it."""
    image, after, point = base / "work", base / "after", base / "mounted"
    copy(pristine, image)
    with mounted(system, image, point):
        what = f"inject={call}:signal=KILL:when={number}"
        prefix = ["strace", "-f", "-qq", "-o", os.devnull, "-e", "trace=" + call, "-e", what]
        home.run(road, prefix)
        copy(image, after)
    with mounted(system, after, point):
        found, missed = home.problems()
        notes = home.stray_notes()
        home.run(road, names=home.home_items()) if road == "undo" or home.home_items() else 0
        if road == "clean" and home.home_items():
            found.append("the second run did not finish")
        found += home.problems()[0]
    return found, missed, notes


def spread(calls, count):
    """So many of the calls, evenly; some twice where there are too few."""
    return [calls[i * len(calls) // count] for i in range(count)] if calls else []


def reason_not_to():
    if os.geteuid() != 0:
        return "mounting needs root"
    if reason := strace_reason():
        return reason
    return None if os.path.exists("/dev/loop-control") else "there are no loop devices"


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("tool")
    parser.add_argument("systems", nargs="*", metavar="FILE SYSTEM", default=list(MAKE))
    parser.add_argument("--cuts", type=int, default=12, help="on each file system")
    parser.add_argument("--keep", action="store_true", help="keep the images")
    arguments = parser.parse_args()
    if reason := reason_not_to():
        print("Skipped: " + reason)
        return SKIPPED
    enter_own_mounts()
    tool = os.path.abspath(arguments.tool)
    total = 0
    with work_folder(arguments.keep) as base:
        for system in arguments.systems or MAKE:
            if shutil.which(MAKE[system][0]) is None:
                print(f"Skipped: power cuts on {system}: {MAKE[system][0]} is not installed")
                continue
            sums = collections.Counter()
            for road in ("clean", "undo"):
                image, home = made(base, system, tool, road)
                trial = base / "trial"
                copy(image, trial)
                with mounted(system, trial, base / "mounted"):
                    calls = boundaries(home, road)
                for call, number in spread(calls, (arguments.cuts + 1) // 2):
                    found, missed, notes = cut(base, system, image, home, road, call, number)
                    sums.update(cuts=1, missed=missed, notes=notes, broken=bool(found))
                    for text in found:
                        print(f"BROKEN {system} {road} {call} {number}: {text}")
                image.unlink()
            print(f"{system:6}" + "".join(f" {name} {int(n)}" for name, n in sums.items()))
            told(f"power cuts on {system}", sums["cuts"], int(sums["broken"]))
            total += sums["broken"]
    return 1 if total else 0


if __name__ == "__main__":
    sys.exit(main())
