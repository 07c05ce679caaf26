"""Tells the outcomes of experiments, and with --write brings docs/rules-proven.md and the packs up to date.

    proven.py [--write] OUTCOMES      OUTCOMES is what experiment.py wrote

Rows of experiments that did not run this time stay as they are. Fails when a rule is broken, a planted lie
was not caught, or an experiment did not work.
"""

import json
import pathlib
import re
import sys

from packs import formatted

TOP = pathlib.Path(__file__).resolve().parent.parent
PACKS = TOP / "Sources/BrimloCore/RulePacks/Packs"
TABLE = TOP / "docs/rules-proven.md"
HEAD = """# Rules proven by experiment

Written by `tools/prove-rules --write`; the experiments are in `Tests/Experiments`. In each, a program was used in
a fresh home of an ordinary user on Debian 12, without a network. Then Brimlo offered what the program had left,
and cleaned it: all else in the home stayed byte for byte. After the undo every file was as before. After a second
clean the program was used again, with the same output and exit code, the files named here were unchanged, and
Brimlo offered the place again. "Stand-in" is a server on the loopback, from which a download came back; what is
Safe was used again without it. A row that failed says at what. The lie is a rule that is to fail.

"""
COLUMNS = ("row", "rating", "program", "what was done", "what was compared", "outcome", "date", "experiment")


def compared(row):
    parts = ["output and exit code"]
    if row["keep"]:
        parts.append("unchanged: " + ", ".join(f"`{place}`" for place in row["keep"]))
    if row["back"]:
        parts.append(f"brought back by `{row['back'].strip()}`")
    return "; ".join([*parts, *row["notes"]])


def cells(row):
    taken = ", ".join(f"`~/{place}`" for place in row["places"][:3])
    taken += f" and {len(row['places']) - 3} more" if len(row["places"]) > 3 else ""
    done = row["title"] + (f" Cleaned: {taken}." if taken else "")
    verdict = row["verdict"] + (f": {row['why']}" if row["why"] else "")
    return [
        f"`{row['rule']}`", row["rating"], row["program"], done, compared(row), verdict, row["date"],
        f"[{row['experiment']}](../Tests/Experiments/{row['experiment']}.toml)",
    ]  # fmt: skip


def line(texts):
    return "| " + " | ".join(text.replace("|", "\\|").replace("\n", " ") for text in texts) + " |"


def split(text):
    return re.split(r" (?<!\\)\| ", text.removeprefix("| ").removesuffix(" |"))


def experiment_of(texts):
    return re.match(r"\[(.*?)\]", texts[-1])[1]


def rows_of_table():
    text = TABLE.read_text(encoding="utf-8") if TABLE.exists() else ""
    return [each for each in text.splitlines() if each.startswith("| `")]


def write_table(told):
    """The lines of the experiments that ran replace their earlier ones; those without an experiment go."""
    ran = {row["experiment"] for row in told}
    there = {file.stem for file in (TOP / "Tests/Experiments").glob("*.toml")}
    lines = [text for text in rows_of_table() if experiment_of(split(text)) in there - ran]
    lines = sorted(lines + [line(cells(row)) for row in told])
    proven = {split(text)[0] for text in lines if split(text)[5] == "proven"}
    others = [text for text in lines if split(text)[5] != "proven"]
    lies = sum(split(text)[5].startswith("caught") for text in others)
    count = f"Rows proven: {len(proven)}. Failures: {len(others) - lies}. Planted lies caught: {lies}.\n\n"
    rule = "|" + "---|" * len(COLUMNS)
    TABLE.write_text(HEAD + count + "\n".join([line(COLUMNS), rule, *lines]) + "\n", encoding="utf-8")


def write_packs():
    """Each row gets the evidence of the table; one that failed in any experiment has none."""
    outcomes = {}
    for texts in map(split, rows_of_table()):
        outcomes.setdefault(texts[0].strip("`"), []).append(texts)
    for file in PACKS.glob("*.json"):
        text = file.read_text(encoding="utf-8")
        pack = json.loads(text)
        for row in pack["rules"] + pack.get("artifacts", []):
            mine = outcomes.get(row["id"], [])
            row.pop("provenOn", None)
            if mine and all(texts[5] == "proven" for texts in mine):
                row["provenOn"] = [{"system": "linux", "program": texts[2], "date": texts[6]} for texts in mine]
        if formatted(pack) != text:
            file.write_text(formatted(pack), encoding="utf-8")


def main():
    told = json.loads(pathlib.Path(sys.argv[-1]).read_text(encoding="utf-8"))
    if "--write" in sys.argv:
        write_table(told)
        write_packs()
    bad = [row for row in told if row["verdict"] not in ("proven", "caught")]
    for row in bad:
        print(f"{row['rule']} ({row['experiment']}): {row['verdict']}: {row['why']}")
    # For tools/prove.
    print("PROVED " + json.dumps({"what": "rules by experiment", "tried": len(told), "broken": len(bad)}))
    return 1 if bad else 0


sys.exit(main())
