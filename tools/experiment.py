"""Carries out experiments on rules: use a program, clean what it left, use the program again, compare.

    experiment.py packages [NAME…]          the Debian packages that they need, one a line
    experiment.py npm [NAME…]               those from npm's registry: experiment, then packages, a line
    experiment.py run OUTPUT BRIMLO NAME…   as root, where those are; writes the outcomes as JSON

`tools/prove-rules` calls it. `run` changes the machine it is on: it makes and removes users, and ends
their processes. The machine is to be a tree of `tools/fresh-tree` without a network. CONTRIBUTING.md
shows how an experiment is written.
"""

import contextlib
import datetime
import fcntl
import functools
import hashlib
import http.server
import json
import os
import pathlib
import re
import signal
import socket
import stat
import struct
import subprocess
import sys
import tempfile
import threading
import time
import tomllib

TOP = pathlib.Path(__file__).resolve().parent.parent
EXPERIMENTS = TOP / "Tests/Experiments"
PACKS = TOP / "Sources/BrimloCore/RulePacks/Packs"
FETCHED = pathlib.Path("/srv/npm")
KEYS = {
    "rules": list, "title": str, "packages": list, "npm": list, "use": str, "again": str, "back": str, "keep": list,
    "serve": str, "running": str, "ready": str, "seconds": int, "age": int, "quick": bool, "planted": dict,
}  # fmt: skip
NEEDED = ("rules", "title", "packages", "use", "again", "keep")
OWN = ("Library/Application Support/Brimlo", ".local/share/Trash")
PATH = "/usr/local/bin:/usr/bin:/bin:/usr/games"
PORT = 8000
MAKES = r"(?:\b(?:mkdir|touch|tee|cp|mv|ln|rsync|install -)\b[^\n;|&]*|>\s*\S*)"


class Broken(Exception):
    """What the experiment shows to be wrong with a rule."""


class Unfit(Exception):
    """The experiment itself did not work, so that it shows nothing."""


# Reading an experiment


def load(name):
    file = EXPERIMENTS / f"{name}.toml"
    if not file.exists():
        sys.exit(f"prove-rules: there is no experiment {name}")
    found = tomllib.loads(file.read_text(encoding="utf-8"))
    wrong = [key for key, value in found.items() if not isinstance(value, KEYS.get(key, ()))]
    if wrong or any(key not in found for key in NEEDED):
        sys.exit(f"prove-rules: {file.name}: keys are missing, unknown or of a wrong type: {', '.join(wrong)}")
    if "npm" in found:
        found["serve"] = f'python3 "$EXPERIMENTS/npm_registry.py" {FETCHED / name}'
    return {"name": name, "seconds": 120, **found}


def names():
    return sorted(file.stem for file in EXPERIMENTS.glob("*.toml"))


def ratings():
    """What the packs say of each row, whatever its evidence."""
    packs = [json.loads(file.read_text(encoding="utf-8")) for file in PACKS.glob("*.json")]
    return {row["id"]: row["risk"] for pack in packs for row in pack["rules"] + pack.get("artifacts", [])}


# The surroundings: a user, a server


def raise_loopback():
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as any_socket:
        name, up = b"lo", 1
        fcntl.ioctl(any_socket, 0x8914, struct.pack("16sh", name, up))  # SIOCSIFFLAGS


@contextlib.contextmanager
def stand_in(experiment):
    """Serves on the loopback what the experiment's `serve` makes; yields a function that ends that."""
    if "serve" not in experiment:
        yield lambda: None
        return
    with tempfile.TemporaryDirectory() as folder:
        os.chmod(folder, 0o755)
        made = subprocess.run(
            ["bash", "-euc", experiment["serve"]], cwd=folder, check=False, capture_output=True, text=True,
            env={**os.environ, "EXPERIMENTS": str(EXPERIMENTS), "SERVER": f"http://127.0.0.1:{PORT}"},
        )  # fmt: skip
        if made.returncode != 0:
            raise Unfit("what is to be served could not be made: " + last_line(made.stderr))

        class Handler(http.server.SimpleHTTPRequestHandler):
            def log_message(self, *_):
                pass

            def end_headers(self):
                self.send_header("Cache-Control", "max-age=600")
                super().end_headers()

            def translate_path(self, path):
                """What a script made as a page `x` stands at /x; its name may hold an escaped slash."""
                page = pathlib.Path(folder, "pages", path.lstrip("/"))
                return str(page) if page.is_file() else super().translate_path(path)

        server = http.server.ThreadingHTTPServer(("127.0.0.1", PORT), functools.partial(Handler, directory=folder))
        threading.Thread(target=server.serve_forever, daemon=True).start()

        def end():
            server.shutdown()
            server.server_close()

        ended = []
        try:
            yield lambda: ended or (end(), ended.append(True))
        finally:
            ended or end()


class Somebody:
    """A new user with a fresh home."""

    def __init__(self, experiment, brimlo):
        self.name, self.seconds, self.brimlo = "somebody", experiment["seconds"], brimlo
        subprocess.run(["userdel", "--force", "--remove", self.name], capture_output=True, check=False)
        subprocess.run(["useradd", "--create-home", "--shell", "/bin/bash", self.name], check=True)
        self.home = pathlib.Path("/home") / self.name

    def words(self, *command):
        return [
            "setpriv", "--reuid", self.name, "--regid", self.name, "--init-groups", "env", "-i",
            f"--chdir={self.home}", f"HOME={self.home}", f"USER={self.name}", f"LOGNAME={self.name}",
            f"PATH={PATH}", "LANG=C.UTF-8", f"SERVER=http://127.0.0.1:{PORT}", f"EXPERIMENTS={EXPERIMENTS}",
            *map(str, command),
        ]  # fmt: skip

    def start(self, script):
        # Its output goes nowhere: a pipe that nobody reads would stop it.
        return subprocess.Popen(
            self.words("bash", "-euo", "pipefail", "-c", script),
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
        )  # fmt: skip

    def run(self, script):
        """The exit code and output of a script; what it leaves running is ended."""
        with tempfile.TemporaryFile("w+") as out, tempfile.TemporaryFile("w+") as errors:
            child = subprocess.Popen(
                self.words("bash", "-euo", "pipefail", "-c", script),
                stdin=subprocess.DEVNULL, stdout=out, stderr=errors,
            )  # fmt: skip
            try:
                code = child.wait(self.seconds)
            except subprocess.TimeoutExpired:
                code = "none in time"
            self.end_all()
            child.wait()
            texts = []
            for file in (out, errors):
                file.seek(0)
                texts.append(file.read())
        return code, *texts

    def must(self, what, script, problem=Unfit):
        code, out, errors = self.run(script)
        if code != 0:
            raise problem(f"{what} ended with {code}: {last_line(errors or out)}")
        return out

    def end_all(self):
        # Among the processes of this namespace only.
        subprocess.run(self.words("bash", "-c", "kill -KILL -1"), capture_output=True, check=False)

    def ask(self, *arguments):
        """The answer of Brimlo as JSON."""
        done = subprocess.run(
            self.words(self.brimlo, *arguments, "--json"), capture_output=True, text=True, timeout=300, check=False
        )
        try:
            answer = json.loads(done.stdout)
        except ValueError:
            raise Unfit(f"brimlo {arguments[0]} said: {last_line(done.stderr)}") from None
        return answer

    def remove(self):
        self.end_all()
        subprocess.run(["userdel", "--force", "--remove", self.name], capture_output=True, check=False)


def last_line(text):
    lines = [line.strip() for line in text.splitlines() if line.strip()]
    return lines[-1][:200] if lines else "nothing"


# What is compared


def is_own(path):
    """Whether it is Brimlo's own or the Trash, or a folder on the way there."""
    return any((path + "/").startswith(own + "/") or (own + "/").startswith(path + "/") for own in OWN)


def snapshot(home):
    """Each entry below the home: its kind, mode, and time and content of a file."""
    found = {}
    for folder, folders, files in os.walk(home):
        for name in folders + files:
            path = pathlib.Path(folder, name)
            relative = str(path.relative_to(home))
            if is_own(relative):
                continue
            status = path.lstat()
            kind = stat.S_IFMT(status.st_mode), stat.S_IMODE(status.st_mode)
            if stat.S_ISLNK(status.st_mode):
                kind += (os.readlink(path),)
            elif stat.S_ISREG(status.st_mode):
                kind += (status.st_mtime_ns, hashlib.sha256(path.read_bytes()).hexdigest())
            found[relative] = kind
    return found


def is_below(path, places):
    return any((path + "/").startswith(place + "/") for place in places)


def without(tree, places):
    return {path: kind for path, kind in tree.items() if not is_below(path, places)}


def compare(before, after, what):
    for path in sorted(before.keys() | after.keys()):
        if before.get(path) != after.get(path):
            change = "is gone" if path not in after else "is new" if path not in before else "is another"
            raise Broken(f"{what}: ~/{path} {change}")


def contents(tree, kept):
    """The files to keep, with their contents; times may change."""
    places = [place.removeprefix("~/") for place in kept]
    for place in places:
        if place not in tree:
            raise Unfit(f"~/{place} is to be kept and is not there")
    return {path: kind[-1] for path, kind in tree.items() if is_below(path, places) and len(kind) > 2}


# The course of an experiment


class Course:
    def __init__(self, experiment, person, end_server):
        self.experiment, self.person, self.end_server = experiment, person, end_server
        self.notes = []

    def offered(self, ids):
        """The items of these rows that Brimlo offers now, as paths below the home, and the apps it names."""
        answer = self.person.ask("suggest")
        found = answer["suggestions"] if isinstance(answer, dict) else answer
        mine = [suggestion for suggestion in found if suggestion["id"] in ids]
        paths = [item["path"] for suggestion in mine for item in suggestion["items"]]
        apps = sorted({app for suggestion in mine for app in suggestion["runningApps"]})
        return sorted(str(pathlib.Path(path).relative_to(self.person.home)) for path in paths), apps

    def fill(self):
        experiment, person = self.experiment, self.person
        if (places := self.offered(experiment["rules"])[0]):
            raise Unfit(f"~/{places[0]} is offered in a fresh home")
        person.must("the use", experiment["use"])
        self.first = person.run(experiment["again"])
        if self.first[0] != 0:
            raise Unfit(f"the use again ended with {self.first[0]}: {last_line(self.first[2])}")
        if "planted" in experiment:
            pack = {"pack": "planted", "version": 1, "rules": [experiment["planted"]]}
            (person.home / "planted.json").write_text(json.dumps(pack))
            person.must("the import", f"{person.brimlo} rules import planted.json; rm -f planted.json")
        self.age()
        self.before = snapshot(person.home)
        self.kept = contents(self.before, experiment["keep"])

    def age(self):
        """For rows that take only what is old."""
        if "age" in self.experiment:
            self.person.must("the ageing", f"find . -exec touch -h -d '{self.experiment['age']} days ago' {{}} +")

    def places_of(self, rule):
        """What the rule offers when no other row of the experiment does."""
        others = [other for other in self.experiment["rules"] if other != rule]
        for other in others:
            self.person.ask("rules", "disable", other)
        places, _ = self.offered([rule])
        if not places:
            raise Broken("nothing is offered")
        for place in places:
            if place not in self.before:
                raise Broken(f"~/{place} is offered and was not there after the use")
            # Made by the program, not by the script.
            if re.search(MAKES + re.escape(place) + r"\b", self.experiment["use"]):
                raise Unfit(f"the use itself makes ~/{place}")
        return places

    def restore_switches(self):
        for rule in self.experiment["rules"]:
            self.person.ask("rules", "enable", rule)

    def clean(self, rules):
        report = self.person.ask("clean", "--yes", *[word for rule in rules for word in ("--rule", rule)])
        report = report.get("report", report)
        for problem in ("failures", "refused", "unrecorded"):
            if report[problem]:
                raise Broken(f"the clean told: {report[problem][0]}")

    def clean_and_undo(self, rule):
        places = self.places_of(rule)
        self.clean([rule])
        after = snapshot(self.person.home)
        compare(without(self.before, places), without(after, places), "besides what was offered")
        if left := [place for place in places if place in after]:
            raise Broken(f"~/{left[0]} is still there after the clean")
        self.person.ask("undo", "--last")
        compare(self.before, snapshot(self.person.home), "after the undo")
        return places

    def use_again(self, is_offline):
        """The use after a clean: it succeeds as before, the kept files are the same, the place is back."""
        experiment, person = self.experiment, self.person
        if is_offline:
            self.end_server()
        if "back" in experiment:
            person.must("the command that brings the place back", experiment["back"], Broken)
        code, out, errors = person.run(experiment["again"])
        if code != self.first[0]:
            raise Broken(f"the use after the clean ended with {code}: {last_line(errors or out)}")
        if out != self.first[1]:
            raise Broken(f"the use after the clean said: {last_line(out)}")
        after = snapshot(person.home)
        missing = [place for place in experiment["keep"] if place.removeprefix("~/") not in after]
        if missing:
            raise Broken(f"{missing[0]} is to be kept and is gone")
        compare(self.kept, contents(after, experiment["keep"]), "what is to be kept")

    def clean_while_running(self):
        """The program runs during a clean; it may neither end nor lose what it keeps."""
        experiment, person = self.experiment, self.person
        program = person.start(experiment["running"])
        for _ in range(60):
            if subprocess.run(person.words("bash", "-c", experiment["ready"]), capture_output=True).returncode == 0:
                break
            time.sleep(0.5)
        else:
            raise Unfit("the running program was not ready in time")
        _, apps = self.offered(experiment["rules"])
        self.clean(experiment["rules"])
        time.sleep(2)
        went_on = program.poll() is None
        person.end_all()
        program.wait()
        named = f"it is named as running ({', '.join(apps)})" if apps else "it is not named as running"
        self.notes.append(f"cleaned while it ran: {named}" + (" and went on" if went_on else ""))
        if not went_on:
            raise Broken("the running program ended when its place was cleaned")


def outcome(experiment, brimlo, risks):
    """What became of each rule of the experiment: (rule, places, verdict, notes)."""
    rules = experiment["rules"]
    told = {rule: {"places": [], "verdict": "not tried", "why": ""} for rule in rules}
    person = Somebody(experiment, brimlo)
    is_offline = any(risks.get(rule) == "safe" for rule in rules)
    notes = []
    try:
        with stand_in(experiment) as end_server:
            course = Course(experiment, person, end_server)
            notes = course.notes
            course.fill()
            for rule in rules:
                try:
                    told[rule].update(places=course.clean_and_undo(rule), verdict="proven")
                except Broken as reason:
                    told[rule].update(verdict="broken", why=str(reason))
                finally:
                    course.restore_switches()
            sound = [rule for rule in rules if told[rule]["verdict"] == "proven"]
            if sound:
                try:
                    if "running" in experiment:
                        course.clean_while_running()
                        course.use_again(is_offline=False)
                    course.clean(sound)
                    course.use_again(is_offline)
                    course.age()
                    if not course.offered(sound)[0]:
                        raise Broken("the place did not come back")
                except Broken as reason:
                    for rule in sound:
                        told[rule].update(verdict="broken", why=str(reason))
    except Unfit as reason:
        for rule in rules:
            told[rule].update(verdict="unfit", why=str(reason))
    finally:
        person.remove()
    return told, notes


def version(experiment):
    """The program and its version: the first package, from npm if any is."""
    if "npm" in experiment:
        module = experiment["npm"][0].rpartition("@")[0]
        described = FETCHED / experiment["name"] / "node_modules" / module / "package.json"
        return module + " " + json.loads(described.read_text(encoding="utf-8"))["version"]
    package = experiment["packages"][0]
    asked = ["dpkg-query", "--show", "--showformat=${Version}", package]
    return package + " " + subprocess.run(asked, capture_output=True, text=True, check=True).stdout


def run(output, brimlo, chosen):
    raise_loopback()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))
    risks, told = ratings(), []
    for experiment in map(load, chosen):
        start = time.monotonic()
        rows, notes = outcome(experiment, brimlo, risks)
        is_lie = "planted" in experiment
        for rule, row in rows.items():
            if is_lie:
                row["verdict"] = "caught" if row["verdict"] == "broken" else "not caught"
            told.append({
                "rule": rule, "rating": risks.get(rule, ""), "experiment": experiment["name"], "title": experiment["title"],
                "program": version(experiment), "keep": experiment["keep"], "back": experiment.get("back"),
                "date": datetime.date.today().isoformat(), "offline": risks.get(rule) == "safe", "notes": notes, **row,
            })  # fmt: skip
            print(f"{rule}: {row['verdict']} {row['why']}", file=sys.stderr, flush=True)
        pathlib.Path(output).write_text(json.dumps(told, indent=1), encoding="utf-8")
        print(f"-- {experiment['name']}: {time.monotonic() - start:.0f} s", file=sys.stderr, flush=True)


def main():
    match sys.argv[1:]:
        case ["packages", *chosen]:
            print(*sorted({package for name in chosen or names() for package in load(name)["packages"]}), sep="\n")
        case ["npm", *chosen]:
            for experiment in map(load, chosen or names()):
                if "npm" in experiment:
                    print(experiment["name"], *experiment["npm"])
        case ["quick"]:
            print(*(name for name in names() if load(name).get("quick")), sep="\n")
        case ["all"]:
            print(*names(), sep="\n")
        case ["run", output, brimlo, *chosen]:
            run(output, brimlo, chosen)
        case _:
            sys.exit(__doc__)


if __name__ == "__main__":
    main()
