"""Plants faults in copies of the rule packs and sees whether tools/lint-rules finds each.

    lint_rules_test.py BRIMLO
"""

import json
import pathlib
import shutil
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tools"))
from alone import leave_machine

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
PACKS = "Sources/BrimloCore/RulePacks/Packs"
WEB = "web-and-languages"


def put(**changes):
    """Changes keys of a row in their place, or adds them at the end."""
    return lambda pack, row: row.update(changes)


def drop(key):
    return lambda pack, row: row.pop(key)


def swap(pack, row):
    pack["rules"][0], pack["rules"][1] = pack["rules"][1], pack["rules"][0]


def reorder(pack, row):
    row["id"] = row.pop("id")


# Sentences that do not go with the rating of their row, and what is said of each.
SENTENCES = {
    "lang.npm.npx": ("Patches made in it are lost.", 'rebuild, and its sentence says "lost"'),
    "lang.bun.cache": ("It can't be fetched again.", 'its sentence says "can\'t be fetched"'),
    "lang.go.gopls": ("Editors forget their settings.", 'does not say that "settings" stay'),
    "lang.npm.logs": ("A new log is written.", "does not say that the tool removes old logs itself"),
    "artifact.lang.next": ("Its report is gone.", 'rebuild, and its sentence says "gone"'),
}


def belie(pack, row):
    for row in pack["rules"] + pack["artifacts"]:
        row["regenerates"] = SENTENCES.get(row["id"], [row["regenerates"]])[0]


# Where the fault is planted, the fault, and all that is said of it.
CASES = [
    ("lang.npm.npx", belie, [f"{id_}: is" for id_ in SENTENCES] + [words for _, words in SENTENCES.values()]),
    ("lang.ocaml.opam-switches", drop("contentsOnly"), '"excludes" have no effect'),
    ("lang.npm.npx", put(paths=["~/.npm/../x"]), "a . or a .. component"),
    ("lang.npm.npx", put(paths=["~/.npm/"]), "begins or ends wrongly"),
    ("lang.npm.npx", put(paths=[".npm"]), "begins or ends wrongly"),
    ("lang.npm.npx", put(paths=["~/.ssh/x"]), "holds credentials, settings or agent memory"),
    ("lang.npm.npx", put(paths=["/etc/x"]), "outside user-owned locations"),
    ("lang.npm.npx", put(paths=["~/Downloads/*.dmg"]), "reaches into ~/Downloads without review"),
    ("lang.npm.npx", put(paths=["~/.npm/_cacache"]), "stands in 2 rows"),
    ("lang.npm.npx", put(risk="review", paths=["~/.npm/_cacache/x"]), "offers it as rebuild"),
    ("lang.npm.npx", put(risk="review", paths=["~/Library/Caches/a/b"]), "offers it as rebuild"),
    ("lang.npm.npx", put(risk="safe", paths=["~/Documents/x"]), "nothing in a folder of documents"),
    ("lang.npm.npx", put(risk="Safe"), 'there is no risk "Safe"'),
    ("lang.npm.npx", put(personas=["everybody"]), 'there is no audience "everybody"'),
    ("lang.npm.npx", put(regenerates="Downloaded again"), "does not end with a full stop"),
    ("lang.npm.npx", put(regenerates="x" * 240 + "."), "240 are allowed"),
    ("lang.npm.npx", put(confidence="verified-local"), "looked at on a real Mac"),
    ("lang.npm.npx", put(domain="Elsewhere"), 'here in "Elsewhere"'),
    ("lang.npm.npx", put(id="lang.npm.nix"), "missing ['lang.npm.npx']"),
    ("lang.npm.npx", drop("domain"), 'has no "domain"'),
    ("lang.npm.npx", reorder, "out of order"),
    ("lang.npm.npx", swap, "out of order"),
    ("lang.npm.cacache", put(quitApps=["/Applications/X.app"]), "not an app's display name"),
    ("lang.npm.cacache", put(officialCommand="npm cache clean; ls"), "an effect of its own"),
    ("lang.npm.cacache", put(sources=["http://x.org"]), "is no https address"),
    ("lang.npm.cacache", put(confidence="documented", sources=[]), "without a source"),
    ("lang.npm.cacache", put(catchAll=True), "not in one row"),
    ("lang.npm.cacache", put(contentsOnly=False), "stands at its default"),
    ("artifact.lang.next", put(names=["build"], markers=[]), "proves nothing without markers"),
    ("artifact.lang.next", put(risk="safe", names=["node_modules"]), "rebuild here, safe in"),
]  # fmt: skip


def planted(tree, id_, fault):
    """Plants a fault in the tree's pack."""
    file = tree / PACKS / f"{WEB}.json"
    shutil.copy(ROOT / PACKS / f"{WEB}.json", file)
    pack = json.loads(file.read_text())
    rows = pack["rules"] + pack["artifacts"]
    fault(pack, next(row for row in rows if row["id"] == id_))
    file.write_text(json.dumps(pack))


def main():
    leave_machine()
    missed = 0
    with tempfile.TemporaryDirectory() as folder:
        tree = pathlib.Path(folder)
        for part in ("tools/lint-rules", "tools/rule-ids.txt"):
            (tree / part).parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(ROOT / part, tree / part)
        for part in (PACKS, "Sources/BrimloCore/Catalog", "docs"):
            shutil.copytree(ROOT / part, tree / part)
        for id_, fault, words in CASES:
            planted(tree, id_, fault)
            lint = subprocess.run(
                [tree / "tools/lint-rules", "--brimlo", sys.argv[1], "--pack", WEB, "--pack", "all packs"],
                capture_output=True, text=True, check=False,
            )  # fmt: skip
            wanted = [words] if isinstance(words, str) else words
            if lint.returncode != 1 or not all(each in lint.stdout for each in wanted):
                missed += 1
                print(f'missed "{words}", said:\n{lint.stdout}{lint.stderr}')
    print(f"{len(CASES) - missed} of {len(CASES)} planted faults were found.")
    return 1 if missed else 0


sys.exit(main())
