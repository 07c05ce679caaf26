#!/usr/bin/env python3
"""Lets eight processes clean at once, and kills some of them anywhere.

    writers.py TOOL [--rounds N]

Each has 40 items of one name and takes some of its neighbour's as well. Afterwards each item is in
one place and unchanged, and the journal parses and names each item in the Trash, and none twice. What
is left is then cleaned undisturbed, and all of it undone.
"""

import argparse
import collections
import json
import os
import random
import shutil
import subprocess
import sys
import time

from victim import told, work_folder

WRITERS = 8
ITEMS = 40
SHARED = 5  # Of the next one's items, so many are taken as well.


class Round:
    def __init__(self, tool, home):
        self.tool, self.home = tool, home
        self.support = home / "Library/Application Support/Brimlo"
        self.items = []
        for writer in range(WRITERS):
            for number in range(ITEMS):
                item = home / "work" / f"{writer}-{number}" / "one name"
                item.parent.mkdir(parents=True)
                item.write_text(str(item))
                self.items.append(item)

    def journal(self):
        """The entries as the next process sees them."""
        json.loads((self.support / "journal.json").read_bytes())
        return json.loads(self.start("history", stdout=subprocess.PIPE).communicate()[0])

    def start(self, *words, stdout=subprocess.DEVNULL):
        return subprocess.Popen(
            [self.tool, *words, "--json"],
            env={**os.environ, "HOME": str(self.home)},
            stdin=subprocess.DEVNULL,
            stdout=stdout,
            stderr=subprocess.DEVNULL,
        )

    def disturb(self, chance):
        """All writers at once; returns how many were killed on their way."""
        own = [self.items[i * ITEMS : (i + 1) * ITEMS + SHARED] for i in range(WRITERS)]
        running = [self.start("clean", "--yes", *map(str, items)) for items in own]
        victims = [process for process in running if chance.random() < 0.5]
        for process in victims:
            time.sleep(chance.random() * 0.03)
            process.kill()
        return sum(process.wait() == -9 for process in running)

    def problems(self, killed):
        journal = self.journal()
        found = []
        if len({entry["id"] for entry in journal}) != len(journal):
            found.append("an entry is there twice")
        for path, count in collections.Counter(e["originalPath"] for e in journal).items():
            if count > 1:
                found.append(f"{path} was recorded {count} times")
        recorded = {entry["trashPath"]: entry["originalPath"] for entry in journal}
        files = self.home / ".local/share/Trash/files"
        trashed = {str(item): item.read_text() for item in files.iterdir()}
        places = collections.Counter(trashed.values())
        places.update(str(item) for item in self.items if item.exists())
        odd = [str(item) for item in self.items if places[str(item)] != 1]
        found += [f"{item} is in {places[item]} places" for item in odd]
        wrong = [path for path, origin in recorded.items() if trashed.get(path) != origin]
        found += [f"the entry of {path} is about something else" for path in wrong]
        missed = len(trashed.keys() - recorded.keys())
        if missed:
            found.append(f"{missed} items have no entry")
        litter = len(list(self.support.glob("*.tmp")))
        return found + ([f"{litter} unfinished journals"] if litter > killed else [])

    def settle(self):
        """Cleans what is left and undoes all of it."""
        left = [str(item) for item in self.items if item.exists()]
        if left:
            self.start("clean", "--yes", *left).wait()
        found = [f"{item} stayed" for item in left if os.path.exists(item)]
        if list(self.support.glob("*.tmp")):
            found.append("an unfinished journal stays")
        self.start("undo", *(entry["id"] for entry in self.journal())).wait()
        back = sum(item.exists() and item.read_text() == str(item) for item in self.items)
        if back != len(self.items):
            found.append(f"{back} items came back")
        return found


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("tool")
    parser.add_argument("--rounds", type=int, default=8)
    arguments = parser.parse_args()
    chance = random.Random(20260301)
    kills = broken = 0
    with work_folder() as base:
        for number in range(arguments.rounds):
            work = Round(os.path.abspath(arguments.tool), base / str(number))
            killed = work.disturb(chance)
            found = work.problems(killed) + work.settle()
            kills, broken = kills + killed, broken + bool(found)
            for text in found[:5]:
                print(f"BROKEN round {number}: {text}")
            shutil.rmtree(work.home)
    print(f"{kills} of {arguments.rounds * WRITERS} writers killed")
    told("rounds of eight writers at once", arguments.rounds, broken)
    return 1 if broken else 0


if __name__ == "__main__":
    sys.exit(main())
