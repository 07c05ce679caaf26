"""Makes a registry for npm, yarn and pnpm in the current folder: npm_registry.py FOLDER

Every package below FOLDER, in whatever depth of `node_modules`, becomes a tarball, with a page that lists its
versions. $SERVER is where the current folder will be served.
"""

import base64
import hashlib
import json
import os
import pathlib
import sys
import tarfile


def packages(folder):
    for place, folders, files in os.walk(folder):
        if "package.json" not in files:
            continue
        described = json.loads(pathlib.Path(place, "package.json").read_text(encoding="utf-8"))
        # A package.json without a version only tells how to load the files beside it.
        if isinstance(described.get("name"), str) and "version" in described:
            yield pathlib.Path(place), described


def without_others(entry):
    return None if "/node_modules" in entry.name else entry


def main():
    pages = {}
    for place, described in packages(sys.argv[1]):
        name, version = described["name"], described["version"]
        page = pages.setdefault(name, {"name": name, "versions": {}, "dist-tags": {}})
        if version in page["versions"]:
            continue
        tarball = pathlib.Path("tarballs", f"{name}-{version}.tgz")
        tarball.parent.mkdir(parents=True, exist_ok=True)
        with tarfile.open(tarball, "w:gz", compresslevel=1) as archive:
            archive.add(place, "package", filter=without_others)
        content = tarball.read_bytes()
        described["dist"] = {
            "tarball": f"{os.environ['SERVER']}/{tarball}",
            "shasum": hashlib.sha1(content).hexdigest(),
            "integrity": "sha512-" + base64.b64encode(hashlib.sha512(content).digest()).decode(),
        }
        page["versions"][version] = described
        page["dist-tags"]["latest"] = version
    for name, page in pages.items():
        # A scoped name is asked for with its slash escaped.
        file = pathlib.Path("pages", name.replace("/", "%2f"))
        file.parent.mkdir(exist_ok=True)
        file.write_text(json.dumps(page), encoding="utf-8")


main()
