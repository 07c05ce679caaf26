"""Keeps a script, and the programs it tries, from the machine it runs on."""

import atexit
import os
import pathlib
import shutil
import sys
import tempfile

STAND_INS = ("systemctl", "docker", "pkexec", "xdg-open")


def leave_machine():
    """Changes the environment of this process as Tests/Support/main.cpp does for a test program.

    The home folder is empty, nobody answers where the message buses and Docker's daemon are looked
    for, and the programs that would reach the user's session are stand-ins: whoever called one ends
    with 1. A program that gets an environment of its own is to get it by {**os.environ, …}.
    """
    folder = pathlib.Path(tempfile.mkdtemp(prefix="brimlo-alone-"))
    calls = folder / "calls"
    for name in ("home", "bin", "run"):
        (folder / name).mkdir(mode=0o700)
    for program in STAND_INS:
        path = folder / "bin" / program
        path.write_text(f'#!/bin/sh\necho "{program} $*" >>{calls}\nexit 1\n')
        path.chmod(0o700)
    for name in list(os.environ):
        if name.startswith("XDG_") or name.lower().endswith("_proxy"):
            del os.environ[name]
    for name in ("AT_SPI_BUS_ADDRESS", "DOCKER_CONTEXT", "BRIMLO_TIMING"):
        os.environ.pop(name, None)
    os.environ.update(
        HOME=str(folder / "home"),
        XDG_RUNTIME_DIR=str(folder / "run"),
        DBUS_SESSION_BUS_ADDRESS="unix:path=/nowhere/bus",
        DBUS_SYSTEM_BUS_ADDRESS="unix:path=/nowhere/bus",
        DOCKER_HOST="unix:///nowhere/docker.sock",
        PATH=f"{folder / 'bin'}:{os.environ.get('PATH', '/usr/bin:/bin')}",
    )
    atexit.register(end, os.getpid(), folder, calls)


def end(process, folder, calls):
    if os.getpid() != process:
        return  # A copy of the script.
    called = calls.read_text() if calls.exists() else ""
    shutil.rmtree(folder, ignore_errors=True)
    if called:
        print("The machine's own was called:\n" + called, file=sys.stderr, flush=True)
        sys.stdout.flush()
        os._exit(1)
