"""Installs a build into an empty folder, looks at what came there, and starts it from there.

    install_test.py CMAKE BUILD
"""

import os
import pathlib
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tools"))
from alone import leave_machine

FILES = {
    "bin/brimlo": "-> ../lib/brimlo/brimlo",
    "bin/brimlo-app": "program",
    "lib/brimlo/brimlo": "program",
    "lib/brimlo/brimlo-complete": "program",
    "share/applications/app.brimlo.brimlo.desktop": "file",
    "share/bash-completion/completions/brimlo": "file",
    "share/doc/brimlo-app/changelog.gz": "file",
    "share/doc/brimlo-app/copyright": "file",
    "share/dbus-1/services/app.brimlo.brimlo.service": "file",
    "share/doc/brimlo/changelog.gz": "file",
    "share/doc/brimlo/copyright": "file",
    "share/fish/vendor_completions.d/brimlo.fish": "file",
    "share/icons/hicolor/scalable/apps/brimlo.svg": "file",
    "share/man/man1/brimlo-app.1.gz": "file",
    "share/man/man1/brimlo.1.gz": "file",
    "share/metainfo/app.brimlo.brimlo.metainfo.xml": "file",
    "share/zsh/vendor-completions/_brimlo": "file",
}
FIRST_FRAME = "Frame rendered with 'software' renderloop"


def kind(path):
    if path.is_symlink():
        return f"-> {os.readlink(path)}"
    return "program" if os.access(path, os.X_OK) else "file"


def opens_a_window(program, home):
    """Whether the application draws a first frame, and no complaint comes before it."""
    surroundings = {
        **os.environ,
        "HOME": str(home),
        "XDG_RUNTIME_DIR": str(home),
        "QT_QPA_PLATFORM": "offscreen",
        "QT_LOGGING_RULES": "qt.scenegraph.time.renderloop=true",
    }
    with subprocess.Popen([program], env=surroundings, stderr=subprocess.PIPE, text=True) as app:
        said = app.stderr.readline()
        app.terminate()
    if FIRST_FRAME not in said:
        print(f"{program} said: {said or 'nothing'}")
    return FIRST_FRAME in said


def says_that_no_display_answers(program, home):
    """Whether it says so in one line, with a display that is not there and with none at all."""
    surroundings = {
        name: value for name, value in os.environ.items()
        if name not in ("DISPLAY", "WAYLAND_DISPLAY", "WAYLAND_SOCKET", "QT_QPA_PLATFORM")
    }
    surroundings |= {"HOME": str(home), "XDG_RUNTIME_DIR": str(home)}
    for display in ({}, {"DISPLAY": ":54321"}, {"WAYLAND_DISPLAY": "nowhere"}):
        ended = subprocess.run(
            [program], env=surroundings | display, check=False, stderr=subprocess.PIPE, text=True
        )
        if ended.returncode != 1 or not ended.stderr.startswith("brimlo: There is no display") \
                or ended.stderr.count("\n") != 1:
            print(f"{program} with {display or 'no display'} ended with {ended.returncode}: {ended.stderr}")
            return False
    return True


def main():
    leave_machine()
    cmake, build = sys.argv[1:]
    with tempfile.TemporaryDirectory(prefix="brimlo-install-") as folder:
        root = pathlib.Path(folder)
        home = root / "home"
        home.mkdir(mode=0o700)
        subprocess.run(
            [cmake, "--install", build, "--prefix", "/usr"],
            env={**os.environ, "DESTDIR": str(root)}, check=True, stdout=subprocess.DEVNULL,
        )
        usr = root / "usr"
        found = {
            str(path.relative_to(usr)): kind(path)
            for path in usr.rglob("*") if path.is_symlink() or path.is_file()
        }
        if found != FILES:
            print("\n".join(f"unlike expected: {name}, {what}" for name, what in found.items() ^ FILES.items()))
            return 1
        version = subprocess.run(
            [usr / "bin/brimlo", "--version"], check=False, stdout=subprocess.PIPE, text=True
        ).stdout
        if not version.startswith("brimlo "):
            print(f"the tool said: {version}")
            return 1
        app = usr / "bin/brimlo-app"
        return 0 if opens_a_window(app, home) and says_that_no_display_answers(app, home) else 1


if __name__ == "__main__":
    sys.exit(main())
