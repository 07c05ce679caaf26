#!/usr/bin/env python3
"""Ends or disturbs a clean and an undo at each of their system calls, and looks at what is left.

    kill_sweep.py TOOL [--full] [--keep]

The calls of one undisturbed run are listed first. Then, in a new home folder each time, the n-th
call of a kind is met by a kill before it runs, or by an error that it may return. Whatever happens:

* each item lies in exactly one place, unchanged: where it was, or in the Trash;
* each item in the Trash has a note beside it that names its origin;
* the journal parses, names no entry twice, and misses at most the item that just moved;
* a run that lives on tells of each item that it did not move;
* a second run, undisturbed, finishes the work.

Without --full the errors, though not the kills, are thinned out evenly. Needs strace; exits with
77 without it.
"""

import argparse
import collections
import concurrent.futures
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import urllib.parse

SKIPPED = 77
MOST_FAULTS = 500
WORKERS = 2

# The calls that change or reach what is on the disk, with the errors that each may return. Closing
# is left out: after an error of `close` nobody knows what is open.
ERRORS = {
    "openat": ("EIO", "ENOSPC", "EACCES"),
    "openat2": ("EIO", "EACCES"),
    "mkdir": ("EIO", "ENOSPC", "EACCES"),
    "mkdirat": ("EIO", "ENOSPC", "EACCES"),
    "rename": ("EIO", "ENOSPC", "EACCES"),
    "renameat": ("EIO", "ENOSPC", "EACCES"),
    "renameat2": ("EIO", "ENOSPC", "EACCES"),
    "unlink": ("EIO", "EACCES"),
    "unlinkat": ("EIO", "EACCES"),
    "fsync": ("EIO", "ENOSPC"),
    "write": ("EIO", "ENOSPC"),
    "ftruncate": ("EIO",),
    "flock": ("ENOLCK",),
}

ITEMS = ("file", "tree", "link", "odd %41\n \u00e9;")

Fault = collections.namedtuple("Fault", "road call kind number")


def tell(path):
    """All that makes up an item, or None where there is none."""
    try:
        status = path.lstat()
    except FileNotFoundError:
        return None
    if path.is_symlink():
        content = os.readlink(path)
    elif path.is_dir():
        content = {child.name: tell(child) for child in path.iterdir()}
    else:
        content = path.read_bytes()
    return status.st_mode, status.st_mtime_ns, content


class Home:
    """A home folder with four items, and the ways to look at it."""

    def __init__(self, folder, tool):
        self.path = pathlib.Path(folder)
        self.tool = tool
        self.path.mkdir()
        (self.path / "file").write_bytes(b"content of the file")
        (self.path / "tree" / "inner").mkdir(parents=True)
        (self.path / "tree" / "a").write_bytes(b"a" * 5000)
        (self.path / "tree" / "inner" / "b").write_bytes(b"\x00\xff")
        (self.path / "tree" / "inner").chmod(0o750)
        (self.path / "link").symlink_to("tree/a")
        (self.path / ITEMS[3]).write_bytes(b"odd")
        self.had_support = True
        self.before = {name: tell(self.path / name) for name in ITEMS}

    def run(self, road, prefix=(), names=ITEMS):
        """Runs the tool, and returns its exit code and its answer, or None for a cut one."""
        environment = {
            "HOME": str(self.path),
            "PATH": os.environ.get("PATH", ""),
            "ASAN_OPTIONS": "detect_leaks=0",
        }
        arguments = ["undo", "--last"]
        if road == "clean":
            arguments = ["clean", "--yes", *(str(self.path / name) for name in names)]
        done = subprocess.run(
            [*prefix, self.tool, *arguments, "--json"],
            env=environment,
            stdin=subprocess.DEVNULL,
            capture_output=True,
            timeout=60,
            check=False,
        )
        try:
            return done.returncode, json.loads(done.stdout)
        except ValueError:
            return done.returncode, None

    @property
    def support(self):
        return self.path / "Library" / "Application Support" / "Brimlo"

    @property
    def trash(self):
        return self.path / ".local" / "share" / "Trash"

    def journal(self):
        """The entries; raises ValueError for a journal that does not parse."""
        file = self.support / "journal.json"
        return json.loads(file.read_bytes()) if file.exists() else []

    def litter(self):
        return len(list(self.support.glob("*.tmp")))

    def origin(self, item):
        """Where the note beside an item in the Trash says that it came from."""
        note = self.trash / "info" / (item.name + ".trashinfo")
        found = re.search(r"^\[Trash Info\]\nPath=(.*)\nDeletionDate=\S+\n", note.read_text())
        return urllib.parse.unquote(found.group(1)) if found else None

    def trashed(self):
        """The items in the Trash by the path they came from; raises OSError without a note."""
        files = self.trash / "files"
        return [(self.origin(item), item) for item in files.iterdir()] if files.exists() else []

    def stray_notes(self):
        info = self.trash / "info"
        notes = list(info.iterdir()) if info.exists() else []
        return sum(not os.path.lexists(self.trash / "files" / note.stem) for note in notes)

    def problems(self, fault):
        """What is wrong on the disk, and how many items in the Trash the journal misses."""
        try:
            trashed = self.trashed()
            journal = self.journal()
        except (OSError, ValueError) as error:
            return [f"unreadable: {error}"], 0
        found = []
        for name in ITEMS:
            path = self.path / name
            places = [item for origin, item in trashed if origin == str(path)]
            places += [path] if os.path.lexists(path) else []
            if len(places) != 1:
                found.append(f"{name!r} is in {len(places)} places")
            elif tell(places[0]) != self.before[name]:
                found.append(f"{name!r} was changed")
        if len({entry["id"] for entry in journal}) != len(journal):
            found.append("the journal names an entry twice")
        recorded = {entry["trashPath"] for entry in journal if not entry["undone"]}
        missed = sum(str(item) not in recorded for _, item in trashed)
        if missed > self.most_missed(fault):
            found.append(f"the journal misses {missed} items")
        return found, missed

    def most_missed(self, fault):
        """How many items may lack their entry in the journal.

        A kill between the move and the new journal's rename leaves one, and so does an error of
        that rename. A disk too full for the journal is noticed before the move. Other trouble with
        the journal never stops a clean, not even a support folder that could not be made.
        """
        if not self.had_support:
            return len(ITEMS)
        return 0 if fault.kind == "ENOSPC" and fault.call != "rename" else 1

    def home_items(self):
        return [name for name in ITEMS if os.path.lexists(self.path / name)]


def honesty(fault, home, code, answer):
    """What a run that lived on told wrongly."""
    if fault.kind == "KILL":
        return []
    stayed = home.home_items()
    if answer is None:
        # The answer itself could not be written, or the journal not be read and nothing was done.
        may_lack = fault.call == "write" or (fault.road == "undo" and not stayed)
        return [] if may_lack and code == 1 else [f"exit code {code}, no answer"]
    if fault.road == "undo":
        done, failures = len(answer["restored"]), len(answer["failures"])
        expected = len(stayed), len(ITEMS) - len(stayed)
    else:
        done, failures = answer["processed"], len(answer["failures"]) + len(answer["refused"])
        expected = len(ITEMS) - len(stayed), len(stayed)
    problems = []
    if (done, failures) != expected:
        problems.append(f"told of {done} done and {failures} failed, not {expected}")
    if (code == 0) != (failures == 0):
        problems.append(f"exit code {code} with {failures} failures")
    return problems


def finish(fault, home):
    """Runs once more, undisturbed, and returns what is still wrong."""
    if fault.road == "clean":
        names = home.home_items()
        code, _ = home.run("clean", names=names) if names else (0, None)
        problems = [f"the second run ended with {code}"] if code != 0 else []
        problems += [f"{name!r} stayed" for name in home.home_items()]
    else:
        # The entry of an item that is back already says so only when the journal was written.
        home.run("undo")
        problems = [f"{name!r} stayed" for name in ITEMS if name not in home.home_items()]
    problems += home.problems(fault)[0]
    if fault.road == "undo" and not problems:
        behind = sum(not entry["undone"] for entry in home.journal())
        problems += [f"{behind} entries are not marked as undone"] if behind > 1 else []
    return problems


def prepared(folder, tool, road):
    home = Home(folder, tool)
    if road == "undo":
        code, _ = home.run("clean")
        assert code == 0, "the clean before the undo failed"
    return home


def boundaries(folder, tool, road):
    """(call, n) of the main thread's calls from the first one that reaches into the home folder."""
    home = prepared(folder, tool, road)
    log = home.path.with_suffix(".log")
    calls = ",".join("?" + call for call in ERRORS)
    code, _ = home.run(road, ["strace", "-f", "-qq", "-o", str(log), "-e", "trace=" + calls])
    assert code == 0, f"the undisturbed {road} ended with {code}"
    counts = collections.Counter()
    found = []
    main = None
    started = False
    for line in log.read_text(errors="replace").splitlines():
        match = re.match(r"(\d+) +(\w+)\(", line)
        if not match or match.group(1) != (main or match.group(1)):
            continue
        main = match.group(1)
        counts[match.group(2)] += 1
        started = started or str(home.path) in line
        if started:
            found.append((match.group(2), counts[match.group(2)]))
    return found


def inject(folder, tool, fault):
    """One fault and all that follows from it, as one row of numbers and a list of problems."""
    home = prepared(folder, tool, fault.road)
    log = home.path.with_suffix(".log")
    action = "signal=KILL" if fault.kind == "KILL" else "error=" + fault.kind
    what = f"inject={fault.call}:{action}:when={fault.number}"
    code, answer = home.run(
        fault.road,
        ["strace", "-f", "-qq", "-o", str(log), "-e", "trace=" + fault.call, "-e", what],
    )
    text = log.read_text(errors="replace")
    has_hit = "(INJECTED)" in text or "killed by SIGKILL" in text
    # Without its folder there was no journal; the run to come makes it.
    home.had_support = home.support.is_dir()
    problems, missed = home.problems(fault)
    row = collections.Counter(
        faults=1, hit=has_hit, missed=missed, notes=home.stray_notes(), litter=home.litter()
    )
    problems += honesty(fault, home, code, answer)
    problems += finish(fault, home)
    row["broken"] = bool(problems)
    return fault, row, problems


def thinned(faults):
    """All kills, and as many errors, spread evenly, as there is time for."""
    kills = [fault for fault in faults if fault.kind == "KILL"]
    errors = [fault for fault in faults if fault.kind != "KILL"]
    step = max(1.0, len(errors) / max(1, MOST_FAULTS - len(kills)))
    return kills + [errors[int(i * step)] for i in range(int(len(errors) / step))]


def strace_reason():
    """Why faults can't be injected here, or None."""
    if shutil.which("strace") is None:
        return "strace is not installed"
    probe = ["strace", "-f", "-qq", "-o", os.devnull, "-e", "inject=fsync:error=EIO:when=9", "true"]
    done = subprocess.run(probe, capture_output=True, check=False)
    return None if done.returncode == 0 else "this system allows no tracing: " + str(done.stderr)


def show(table, problems):
    columns = ("faults", "hit", "missed", "notes", "litter", "broken")
    print(f"{'road':6} {'call':10} {'fault':7}" + "".join(f"{name:>8}" for name in columns))
    for key in sorted(table):
        row = "".join(f"{int(table[key][name]):8}" for name in columns)
        print(f"{key[0]:6} {key[1]:10} {key[2]:7}" + row)
    total = sum(table.values(), collections.Counter())
    print(f"{'all':25}" + "".join(f"{int(total[name]):8}" for name in columns))
    print("missed: items without entry; notes: notes without item; litter: unfinished journals")
    for fault, text in problems:
        print(f"BROKEN {fault.road} {fault.call} {fault.kind} {fault.number}: {text}")
    return total


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("tool")
    parser.add_argument("--full", action="store_true", help="leave no boundary out")
    parser.add_argument("--keep", action="store_true", help="keep the home folders")
    arguments = parser.parse_args()
    if reason := strace_reason():
        print("Skipped: " + reason)
        return SKIPPED
    tool = os.path.abspath(arguments.tool)
    base = os.path.realpath(tempfile.mkdtemp(prefix="brimlo-faults-"))
    try:
        faults = [
            Fault(road, call, kind, number)
            for road in ("clean", "undo")
            for call, number in boundaries(f"{base}/{road}", tool, road)
            for kind in ("KILL", *ERRORS[call])
        ]
        chosen = faults if arguments.full else thinned(faults)
        table = collections.defaultdict(collections.Counter)
        problems = []
        with concurrent.futures.ThreadPoolExecutor(WORKERS) as pool:
            jobs = [
                pool.submit(inject, f"{base}/{number}", tool, fault)
                for number, fault in enumerate(chosen)
            ]
            for job in jobs:
                fault, row, found = job.result()
                table[fault[:3]].update(row)
                problems += [(fault, text) for text in found]
        print(f"{len(chosen)} of {len(faults)} faults")
        total = show(table, problems)
        # Where next to none hit, the list of calls was wrong and nothing has been proved.
        return 1 if problems or total["hit"] < 0.9 * total["faults"] else 0
    finally:
        if not arguments.keep:
            shutil.rmtree(base, ignore_errors=True)


if __name__ == "__main__":
    sys.exit(main())
