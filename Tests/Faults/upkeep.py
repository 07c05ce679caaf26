"""The roads besides clean and undo: what must hold on each, whatever met it.

A road has three steps: `prepare` adds to a prepared home what the road needs, `problems` looks at it
after the fault, and `finish` runs once more, undisturbed, and tells what is still wrong.
"""

import json

from victim import ITEMS, tell


class Deleting:
    """The purge and the emptying: nothing goes but what lies in the Trash and was meant."""

    def __init__(self, road):
        self.road = road

    def prepare(self, home):
        (home.path / "bystander").mkdir()
        (home.path / "bystander" / "file").write_bytes(b"stays")
        files, info = home.trash / "files", home.trash / "info"
        (files / "foreign").mkdir()
        (files / "foreign" / "file").write_bytes(b"somebody's")
        (files / "tree" / "out").symlink_to(home.path / "bystander")
        (info / "foreign.trashinfo").write_text(f"[Trash Info]\nPath={home.path}/foreign\n")
        home.others = self.others(home)
        home.entries = {entry["id"] for entry in home.journal()}

    def others(self, home):
        kept = ["bystander"] + (["foreign"] if self.road == "purge" else [])
        places = {"bystander": home.path / "bystander", "foreign": home.trash / "files" / "foreign"}
        return {name: tell(places[name]) for name in kept}

    def problems(self, home):
        try:
            home.trashed()
            journal = home.journal()
        except (OSError, ValueError) as error:
            return [f"unreadable: {error}"]
        found = [] if self.others(home) == home.others else ["something else was touched"]
        if {entry["id"] for entry in journal} != home.entries or len(journal) != len(ITEMS):
            found.append("the journal lost or doubled an entry")
        return found

    def finish(self, home):
        home.run(self.road)
        left = {item.name for _, item in home.trashed()}
        if self.road == "purge":
            left -= {"foreign"}
        found = [f"{name!r} stayed in the Trash" for name in sorted(left)]
        expunged = home.trash / "expunged"
        if expunged.exists() and list(expunged.iterdir()):
            found.append("half an item stays for ever")
        return found + self.problems(home)


class Saving:
    """The settings and the rules: each file is the old one or the new one, whole."""

    def __init__(self, road):
        self.road = road

    def prepare(self, home):
        home.run("config")
        config = home.support / "config.json"
        settings = json.loads(config.read_text()) | {"staleDays": 5, "trashRetentionDays": 77}
        config.write_text(json.dumps(settings))
        for version in ("old", "new"):
            rules = [self.rule(name, version) for name in ("a", "b", "c")]
            pack = json.dumps({"pack": version, "rules": rules})
            (home.path / "new-rules.json").write_text(pack)
            if version == "old":
                home.run("rules")
        home.before = self.saved(home)

    @staticmethod
    def rule(name, version):
        return {
            "id": f"custom.{name}",
            "name": f"{name} {version}",
            "group": "g",
            "personas": [],
            "risk": "safe",
            "paths": [f"~/.cache/{name}"],
            "regenerates": "Comes back by itself at the next start.",
        }

    @staticmethod
    def saved(home):
        """What each file says; raises for one that is not whole."""
        said = {}
        for file in [home.support / "config.json", *(home.support / "Rules").glob("*.json")]:
            document = json.loads(file.read_bytes())
            said[file.name] = document["rules"][0]["name"] if "rules" in document else document
        return said

    def wanted(self, home):
        if self.road == "config":
            return home.before | {"config.json": home.before["config.json"] | {"staleDays": 11}}
        return {
            name: old.replace("old", "new") if isinstance(old, str) else old
            for name, old in home.before.items()
        }

    def problems(self, home):
        try:
            now = self.saved(home)
        except (OSError, ValueError, KeyError) as error:
            return [f"unreadable: {error}"]
        new = self.wanted(home)
        odd = [name for name in new if now.get(name) not in (home.before[name], new[name])]
        odd += [name for name in now if name not in new]
        odd += [file.name for file in home.support.glob("*.corrupt")]
        return [f"{name} is neither old nor new" for name in odd]

    def finish(self, home):
        code, _ = home.run(self.road)
        found = [] if code == 0 else [f"the second run ended with {code}"]
        return found if self.saved(home) == self.wanted(home) else found + ["not saved in the end"]


UPKEEP = {
    "purge": Deleting("purge"),
    "empty": Deleting("empty"),
    "config": Saving("config"),
    "rules": Saving("rules"),
}
