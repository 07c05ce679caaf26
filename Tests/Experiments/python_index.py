"""Makes an index of Python packages in the current folder, with one wheel: shapes 1.2."""

import hashlib
import pathlib
import zipfile

FOLDER = pathlib.Path("simple/shapes")
INFO = "shapes-1.2.dist-info/"
FILES = {
    "shapes.py": "SIDES = 4\n" + "# Some size, so that a cache is worth it.\n" * 2000,
    INFO + "METADATA": "Metadata-Version: 2.1\nName: shapes\nVersion: 1.2\n",
    INFO + "WHEEL": "Wheel-Version: 1.0\nGenerator: hand\nRoot-Is-Purelib: true\nTag: py3-none-any\n",
}

FOLDER.mkdir(parents=True)
WHEEL = FOLDER / "shapes-1.2-py3-none-any.whl"
with zipfile.ZipFile(WHEEL, "w") as wheel:
    for name, text in FILES.items():
        wheel.writestr(name, text)
    wheel.writestr(INFO + "RECORD", "".join(f"{name},,\n" for name in [*FILES, INFO + "RECORD"]))
digest = hashlib.sha256(WHEEL.read_bytes()).hexdigest()
(FOLDER / "index.html").write_text(f'<a href="{WHEEL.name}#sha256={digest}">{WHEEL.name}</a>\n')
(FOLDER.parent / "index.html").write_text('<a href="shapes/">shapes</a>\n')
