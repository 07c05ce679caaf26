"""Plants faults in a copy of a rule pack, each in a row of its own, and sees whether tools/lint-rules
finds each.

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
    return lambda row: row.update(changes)


def say(sentence):
    return put(regenerates=sentence)


def go(*paths, **changes):
    return put(paths=list(paths), **changes)


def drop(key):
    return lambda row: row.pop(key)


def reorder(row):
    row["id"] = row.pop("id")


# The row of each fault, the fault, and the words that tell of it in a line with the row's id.
CASES = [
    ("lang.npm.npx", say("Patches made in it are lost."), 'rebuild, and its sentence says "lost"'),
    ("lang.bun.cache", say("It can't be fetched again."), 'its sentence says "can\'t be fetched"'),
    ("lang.go.gopls", say("Editors forget their settings."), 'does not say that "settings" stay'),
    ("lang.npm.logs", say("A new log is written."), "does not say that the tool removes old logs itself"),
    ("lang.pnpm.store", say("Downloaded again"), "does not end with a full stop"),
    ("lang.pnpm.metadata", say("x" * 240 + "."), "240 are allowed"),
    ("lang.ocaml.opam-switches", drop("contentsOnly"), '"excludes" have no effect'),
    ("lang.deno.cache", go("~/.deno/../x"), "a . or a .. component"),
    ("lang.node.gyp", go("~/.gyp/"), "begins or ends wrongly"),
    ("lang.cypress.binary", go("~/.ssh/x"), "holds credentials, settings or agent memory"),
    ("lang.electron.cache", go("/etc/x"), "outside user-owned locations"),
    ("lang.prisma.engines", go("~/Downloads/*.dmg"), "reaches into ~/Downloads without review"),
    ("lang.asdf.installs", go("~/.npm/_cacache/x"), "lang.npm.cacache (web-and-languages) offers it as rebuild"),
    ("lang.python.pip", go("~/Documents/x", risk="safe"), "nothing in a folder of documents"),
    ("lang.python.uv-cache", put(risk="Safe"), 'there is no risk "Safe"'),
    ("lang.python.uv-tools", put(personas=["everybody"]), 'there is no audience "everybody"'),
    ("lang.python.pdm-cache", put(confidence="verified-local"), "looked at on a real Mac"),
    ("lang.python.pipx-cache", put(domain="Elsewhere"), 'here in "Elsewhere"'),
    ("lang.python.hatch-cache", drop("domain"), 'has no "domain"'),
    ("lang.jvm.ivy", reorder, "out of order"),
    ("lang.go.modcache", put(quitApps=["/Applications/X.app"]), "not an app's display name"),
    ("lang.rust.git", put(officialCommand="cargo clean; ls"), "an effect of its own"),
    ("lang.rust.sccache", put(sources=["http://x.org"]), "is no https address"),
    ("lang.rust.rustup-downloads", put(confidence="documented", sources=[]), "without a source"),
    ("lang.jvm.maven", put(catchAll=True), "not in one row"),
    ("lang.jvm.coursier", put(contentsOnly=False), "stands at its default"),
    ("lang.jvm.kotlin-native", put(beside=["a/b"]), "something else than names"),
    ("lang.php.composer-cache", put(owners=["/var/*"]), "a folder of owners has a wildcard"),
    ("artifact.lang.astro", put(names=["build"], markers=[]), "proves nothing without markers"),
    ("artifact.lang.coverage", put(proofs=["x"]), "a repository that holds one"),
    ("artifact.lang.turbo", put(disproofs=["x"]), '"disproofs" have no effect'),
    ("lang.elixir.rebar3", put(provenOn=[{"system": "linux", "program": "x 1", "date": "2026-03-01"}]), "no experiment"),
    ("lang.cpp.ccache", put(provenOn=[{"system": "Linux", "program": "x 1", "date": "2026-03-01"}]), "no system or day"),
    ("artifact.lang.mypy", put(provenOn=["linux"]), "something else than a system"),
    ("artifact.lang.next", put(risk="safe", names=["node_modules"]), "rebuild here, safe in artifact.lang.next"),
    # The path is the subject of this line.
    ("lang.yarn.berry.cache", go("~/.npm/_cacache"), "the pack: ~/.npm/_cacache stands in 2 rows"),
]  # fmt: skip


def main():
    leave_machine()
    with tempfile.TemporaryDirectory() as folder:
        tree = pathlib.Path(folder)
        (tree / "tools").mkdir()
        for file in ("lint-rules", "packs.py"):
            shutil.copy(ROOT / "tools" / file, tree / "tools")
        for part in (PACKS, "docs", "Tests/Experiments"):
            shutil.copytree(ROOT / part, tree / part)
        file = tree / PACKS / f"{WEB}.json"
        pack = json.loads(file.read_text())
        rows = {row["id"]: row for row in pack["rules"] + pack["artifacts"]}
        for id_, fault, _ in CASES:
            fault(rows.pop(id_))  # So no row has two.
        file.write_text(json.dumps(pack))
        lint = subprocess.run(
            [tree / "tools/lint-rules", "--brimlo", sys.argv[1], "--pack", WEB, "--pack", "all packs"],
            capture_output=True, text=True, check=False,
        )  # fmt: skip
    lines = lint.stdout.splitlines()
    missed = [
        f"{id_}: {words}"
        for id_, _, words in CASES
        if not any(words in line and (id_ in line or words.startswith("the pack")) for line in lines)
    ]
    if missed or lint.returncode != 1:
        print("Missed:", *missed, "Said:", lint.stdout, lint.stderr, sep="\n")
    print(f"{len(CASES) - len(missed)} of {len(CASES)} planted faults were found.")
    return 1 if missed or lint.returncode != 1 else 0


sys.exit(main())
