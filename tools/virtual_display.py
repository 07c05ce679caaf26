"""A display that nobody sees, for windows that are to be measured or used by a program."""

import contextlib
import subprocess


@contextlib.contextmanager
def virtual_display():
    """Starts an X server and gives the name of its display once it takes windows."""
    # It chooses the number itself and tells it when it is ready, so that no two can collide.
    command = ["Xvfb", "-displayfd", "1", "-screen", "0", "1400x900x24", "-nolisten", "tcp",
               "-noreset"]  # Else it starts anew, and refuses clients, whenever the last one goes.
    with subprocess.Popen(
        command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True
    ) as server:
        try:
            yield f":{server.stdout.readline().strip()}"
        finally:
            server.terminate()
