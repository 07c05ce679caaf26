#!/usr/bin/env python3
"""Ends or disturbs the program at each of its system calls, and looks at what is left.

    fault_sweep.py TOOL [--full] [--keep] [ROAD...]

The calls of one undisturbed run are listed first. Then, in a new home folder each time, the n-th
call of a kind is met by a kill before it runs, or by an error that it may return. Whatever happens
to a clean or an undo:

* each item lies in exactly one place, unchanged: where it was, or in the Trash;
* each item in the Trash has a note beside it that names its origin;
* the journal parses, names no entry twice, and misses no item but those that the run told of;
* a run that lives on tells of each item that it did not move;
* a second run, undisturbed, finishes the work.

What must hold on the other roads tells upkeep.py. Without --full the errors, though not the kills,
are thinned out evenly. Needs strace; exits with 77 without it.
"""

import argparse
import collections
import concurrent.futures
import os
import sys

from upkeep import UPKEEP
from victim import ERRORS, ITEMS, ROADS, SKIPPED, Fault, boundaries, prepared, strace_reason, told, work_folder

MOST_FAULTS = 500
WORKERS = 2


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
        if not stayed and any(str(home.support) in line for line in answer["failures"]):
            expected = 0, 1  # A journal that can't be read is one reason for all.
    else:
        done, failures = answer["processed"], len(answer["failures"]) + len(answer["refused"])
        expected = len(ITEMS) - len(stayed), len(stayed)
    problems = []
    if (done, failures) != expected:
        problems.append(f"told of {done} done and {failures} failed, not {expected}")
    unrecorded = len(answer["unrecorded"])
    if (code == 0) != (failures + unrecorded == 0):
        problems.append(f"exit code {code} with {failures} failures, {unrecorded} unrecorded")
    return problems


def finish(fault, home, unrecorded):
    """Runs once more, undisturbed, and returns what is still wrong."""
    if fault.road == "clean":
        names = home.home_items()
        code, _ = home.run("clean", names=names) if names else (0, None)
        problems = [f"the second run ended with {code}"] if code != 0 else []
        problems += [f"{name!r} stayed" for name in home.home_items()]
    else:
        home.run("undo")
        problems = [f"{name!r} stayed" for name in ITEMS if name not in home.home_items()]
    problems += home.problems(unrecorded)[0]
    if fault.road == "undo" and not problems:
        behind = sum(not entry["undone"] for entry in home.journal())
        problems += [f"{behind} entries are not marked as undone"] if behind > unrecorded else []
    return problems


def ready(folder, tool, road):
    home = prepared(folder, tool, road)
    if road in UPKEEP:
        UPKEEP[road].prepare(home)
    return home


def inject(folder, tool, fault):
    """One fault and all that follows from it, as one row of numbers and a list of problems."""
    home = ready(folder, tool, fault.road)
    log = home.path.with_suffix(".log")
    action = "signal=KILL" if fault.kind == "KILL" else "error=" + fault.kind
    what = f"inject={fault.call}:{action}:when={fault.number}"
    code, answer = home.run(
        fault.road,
        ["strace", "-f", "-qq", "-o", str(log), "-e", "trace=" + fault.call, "-e", what],
    )
    text = log.read_text(errors="replace")
    has_hit = "(INJECTED)" in text or "killed by SIGKILL" in text
    row = collections.Counter(
        faults=1, hit=has_hit, missed=0, notes=home.stray_notes(), litter=home.litter()
    )
    if fault.road in UPKEEP:
        problems = UPKEEP[fault.road].problems(home)
        problems += UPKEEP[fault.road].finish(home)
    else:
        unrecorded = len(answer["unrecorded"]) if answer else 0
        problems, row["missed"] = home.problems(unrecorded)
        problems += honesty(fault, home, code, answer)
        problems += finish(fault, home, unrecorded)
    row["broken"] = bool(problems)
    return fault, row, problems


def thinned(faults, most):
    """All kills, and as many errors, spread evenly, as there is time for."""
    kills = [fault for fault in faults if fault.kind == "KILL"]
    errors = [fault for fault in faults if fault.kind != "KILL"]
    step = max(1.0, len(errors) / max(1, most - len(kills)))
    return kills + [errors[int(i * step)] for i in range(int(len(errors) / step))]


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
    parser.add_argument("roads", nargs="*", metavar="ROAD", help=", ".join(ROADS))
    parser.add_argument("--most", type=int, default=MOST_FAULTS, help="so many, without --full")
    parser.add_argument("--keep", action="store_true", help="keep the home folders")
    arguments = parser.parse_args()
    if reason := strace_reason():
        print("Skipped: " + reason)
        return SKIPPED
    tool = os.path.abspath(arguments.tool)
    with work_folder(arguments.keep) as base:
        faults = [
            Fault(road, call, kind, number)
            for road in arguments.roads or ROADS
            for call, number in boundaries(ready(f"{base}/{road}", tool, road), road)
            for kind in ("KILL", *ERRORS[call])
        ]
        chosen = faults if arguments.full else thinned(faults, arguments.most)
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
        told("faults at system calls", int(total["hit"]), int(total["broken"]))
        # Where next to none hit, the list of calls was wrong and nothing has been proved.
        return 1 if problems or total["hit"] < 0.9 * total["faults"] else 0


if __name__ == "__main__":
    sys.exit(main())
