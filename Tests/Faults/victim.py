"""A home folder to do harm to, and the ways to look at it afterwards."""

import collections
import contextlib
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import urllib.parse

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tools"))
from alone import leave_machine

leave_machine()  # Before anything of a script that imports this runs.

SKIPPED = 77

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
    "fdatasync": ("EIO", "ENOSPC"),
    "sync_file_range": ("EIO",),
    "write": ("EIO", "ENOSPC"),
    "pwrite64": ("EIO", "ENOSPC"),
    "ftruncate": ("EIO",),
    "flock": ("ENOLCK",),
}

MAKE = {
    "ext4": ["mkfs.ext4", "-q", "-F"],
    "xfs": ["mkfs.xfs", "-q", "-f"],
    "btrfs": ["mkfs.btrfs", "-q", "-f"],
}

ITEMS = ("file", "tree", "link", "odd %41\n \u00e9;")

# What the program is told to do; "@" stands for the home folder.
ROADS = {
    "clean": ["clean", "--yes"],
    "undo": ["undo", "--last"],
    "purge": ["trash", "purge", "--older-than", "0"],
    "empty": ["trash", "empty", "--yes"],
    "config": ["config", "stale-days", "11"],
    "rules": ["rules", "import", "@/new-rules.json"],
}

Fault = collections.namedtuple("Fault", "road call kind number")


def tell(path, *parts):
    """All that makes up an item, these parts of its status as well; None where there is none."""
    path = pathlib.Path(os.fsdecode(path))
    try:
        status = path.lstat()
    except FileNotFoundError:
        return None
    content = None
    if path.is_symlink():
        content = os.readlink(path)
    elif path.is_dir():
        content = {child.name: tell(child, *parts) for child in path.iterdir()}
    elif path.is_file():
        content = path.read_bytes()
    return status.st_mode, status.st_mtime_ns, [getattr(status, part) for part in parts], content


class Home:
    """A home folder with four items, and the ways to look at it."""

    def __init__(self, folder, tool):
        self.path = pathlib.Path(folder)
        self.tool = tool
        self.path.mkdir(parents=True)
        (self.path / "file").write_bytes(b"content of the file")
        (self.path / "tree" / "inner").mkdir(parents=True)
        (self.path / "tree" / "a").write_bytes(b"a" * 5000)
        (self.path / "tree" / "inner" / "b").write_bytes(b"\x00\xff")
        (self.path / "tree" / "inner").chmod(0o750)
        (self.path / "link").symlink_to("tree/a")
        (self.path / ITEMS[3]).write_bytes(b"odd")
        self.before = {name: tell(self.path / name) for name in ITEMS}

    def run(self, road, prefix=(), names=ITEMS):
        """Runs the tool, and returns its exit code and its answer, or None for a cut one."""
        environment = {**os.environ, "HOME": str(self.path), "ASAN_OPTIONS": "detect_leaks=0"}
        arguments = ROADS.get(road, [road])
        if road == "clean":
            arguments = arguments + [str(self.path / name) for name in names]
        arguments = [word.replace("@", str(self.path)) for word in arguments]
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
        """The entries as the next process sees them; ValueError for a file that is not whole."""
        file = self.support / "journal.json"
        if file.exists():
            json.loads(file.read_bytes())
        code, entries = self.run("history")
        if code != 0:
            raise ValueError(f"the history ended with {code}")
        return entries

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

    def problems(self, unrecorded=0):
        """What is wrong on the disk, and how many items in the Trash the journal misses.

        It may miss those of which the program said so, and no other, wherever it was killed.
        """
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
        if missed > unrecorded:
            found.append(f"the journal misses {missed} items, {unrecorded} of them told")
        return found, missed

    def home_items(self):
        return [name for name in ITEMS if os.path.lexists(self.path / name)]


def prepared(folder, tool, road):
    home = Home(folder, tool)
    if road in ("undo", "purge", "empty"):
        code, _ = home.run("clean")
        assert code == 0, f"the clean before the {road} failed"
    return home


def boundaries(home, road):
    """(call, n) of the main thread's calls from the first one that reaches into the home folder."""
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


def strace_reason():
    """Why faults can't be injected here, or None."""
    if shutil.which("strace") is None:
        return "strace is not installed"
    probe = ["strace", "-f", "-qq", "-o", os.devnull, "-e", "inject=fsync:error=EIO:when=9", "true"]
    done = subprocess.run(probe, capture_output=True, check=False)
    return None if done.returncode == 0 else "this system allows no tracing: " + str(done.stderr)


def sh(*words):
    subprocess.run([str(word) for word in words], check=True, capture_output=True)


def make_image(file, system):
    """An empty file system, of the least size that mkfs.xfs takes."""
    with open(file, "wb") as handle:
        handle.truncate(320 << 20)
    sh(*MAKE[system], file)


@contextlib.contextmanager
def work_folder(is_kept=False):
    path = pathlib.Path(os.path.realpath(tempfile.mkdtemp(prefix="brimlo-faults-")))
    try:
        yield path
    finally:
        if not is_kept:
            shutil.rmtree(path, ignore_errors=True)


def enter_own_mounts():
    """Starts the script anew where nobody else sees its mounts, so that none outlives it."""
    if os.environ.get("BRIMLO_OWN_MOUNTS") != "1":
        os.environ["BRIMLO_OWN_MOUNTS"] = "1"
        sys.exit(subprocess.run(["unshare", "-m", sys.executable, *sys.argv], check=False).returncode)


def told(what, tried, broken):
    """Tells tools/prove how often a promise was tried, and how often it was broken."""
    print("PROVED " + json.dumps({"what": what, "tried": tried, "broken": broken}), flush=True)
