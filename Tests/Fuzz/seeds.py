#!/usr/bin/env python3
"""Writes the first inputs of each fuzz target: seeds.py FOLDER, one folder below it a target.

Valid documents, each field of them missing, doubled and of every other type, nesting of 100,000,
lone surrogates, numbers out of range and NUL bytes; for texts, those that once were hard.
"""

import json
import pathlib
import sys

RULE = {
    "id": "custom.a", "name": "A", "group": "G", "personas": ["developer"], "risk": "safe",
    "paths": ["~/.cache/a/*"], "regenerates": "Comes back.", "officialCommand": "a clean",
    "quitApps": ["a"], "contentsOnly": True, "excludes": ["*.keep"], "minAgeDays": 3,
    "catchAll": False, "domain": "D", "confidence": "documented", "sources": ["https://a"],
    "provenOn": [{"system": "linux", "program": "a 1", "date": "2026-03-01"}],
}  # fmt: skip
ARTIFACT = {
    "id": "artifact.a", "name": "A", "group": "G", "personas": [], "risk": 1, "regenerates": "x",
    "names": ["target"], "suffixes": [".o"], "markers": ["Cargo.toml"], "excludes": [],
}  # fmt: skip
PACK = {"pack": "p", "version": 1, "rules": [RULE], "artifacts": [ARTIFACT]}
ENTRY = {
    "id": "0B7C9A52-5D6E-4F70-8192-A3B4C5D6E7F8", "date": "2026-03-01T09:30:00Z",
    "originalPath": "/home/u/a", "trashPath": "/home/u/.local/share/Trash/files/a", "size": 4096,
    "ruleID": "npm.cache", "undone": False, "purgedFromTrash": False, "trashID": "8:12",
    "batchID": "1B7C9A52-5D6E-4F70-8192-A3B4C5D6E7F8",
}  # fmt: skip
CONFIG = {
    "autoCleanEnabled": True, "freeSpaceThresholdGB": 30, "staleDays": 90,
    "trashRetentionDays": 7, "autoCleanIncludesCustomRules": False, "cliInstallOffered": True,
    "rememberScans": False,
}  # fmt: skip
DOCKER = {
    "Images": [{"Containers": "0", "ID": "sha256:1", "Repository": "<none>", "Tag": "<none>", "Size": "1.5GB"}],
    "Containers": [{"ID": "c", "Image": "i", "State": "exited", "Size": "1MB (virtual 2MB)",
                    "Labels": "com.docker.compose.project.working_dir=/gone", "Names": "n"}],
    "Volumes": [{"Name": "v", "Links": "0", "Size": "7B", "Labels": ""}],
    "BuildCache": [{"ID": "b", "InUse": "false", "Size": "1e+03MB"}],
}  # fmt: skip
SUMMARY = {"Active": "3", "Reclaimable": "1GB (50%)", "Size": "5GB", "TotalCount": "9", "Type": "Images"}
ODD = [None, True, 0, -1, 3.0, 2**63, 2**64, "", "x", "\ud800", "a\0b", [], [[]], {}, {"a": {}}]

JSON_TEXTS = ["", "null", "[]", "{}", "1e400", "-1e400", "[1e400]", '"\\ud800"', '"\\u0000"', "[1,]",
              "[" * 100_000, '{"a":' * 100_000, '{"a":1,"a":2}', "\ufeff[]", "[] []", "[1 2]"]  # fmt: skip

TEXTS = {
    "docker-sizes": ["1.5GB", "4.1MB (12%)", "1e+03MB", " \t 7B", "9223372TB", "1e999B", "nanB",
                     json.dumps(SUMMARY) + "\nWARNING\n" + json.dumps(SUMMARY)],
    "job": ["[Service]\nExecStart=\":/opt/a b/brimlo\" \"autoclean\"\n", "ExecStart=/a \\x41",
            "ExecStart=\"/bin/sh\" \"-c\" \"exec \\\"$0\\\" \\\"$@\\\"\" \"/a\"\n", "a b\"c'd\\e%%f$g"],
    "trash-note": ["[Trash Info]\nPath=/a%20b\nDeletionDate=2026-03-01T09:30:00\nX-Brimlo-Entry=I\n",
                   "Path=%", "Path=%zz%00", "a" * 300 + ".tar.gz", "\u00e9" * 130, "\xff\xfe%\n"],
    "desktop-entry": ["[Desktop Entry]\nType=Application\nName=A\nExec=/bin/sh -c \"a b\" %U\n",
                      "[Desktop Entry]\nName=B\nExec=env A=1 sh\nTryExec=sh\n", "Exec=\"", "Exec=%"],
    "scan-record": [b"\x02/a\x01\x09\x07\x03\x00\x00\x32\x04\x05\x01\x01b\x14\x02\x06\x01\x01c\x0a\x01\x07",
                    b"Brimlo scan 1\n", b"Brimlo scan 2\n", b"\x01/" + b"\xff" * 30],
    "date": ["2026-03-01T09:30:00Z", "2026-03-01T09:30:00+02:00", "9999-12-31T23:59:60Z",
             "0000-00-00T00:00:00Z", "-001-01-01T00:00:00Z"],
    "wildcard": ["name\nn*e", "a/b\n*", ".x\n?x", "a\n\\a", "a]\n[]]]", "aaaaaaaaaaaaaaaaaaaa\n" + "*a" * 12 + "b",
                 "x\n[!a-c][[:alpha:]]", "\n", "*\n\\*"],
    "path": [".ssh/config", "x/../.SSH//k", "l/x", "x/u/.ssh", "x/k/cache/../config", "x/d/y", "a.p12",
             ".claude/settings.json", "../..//etc", ".kube/cache/token.json", "x\0y", "\u00e9/K"],
}  # fmt: skip


def variants(document):
    """The document, and ones in which a field is missing or of another type."""
    yield document
    fields = document.items() if isinstance(document, dict) else enumerate(document)
    for key, value in list(fields):
        rest = {k: v for k, v in document.items() if k != key} if isinstance(document, dict) else []
        if isinstance(document, dict):
            yield rest
        for other in ODD:
            yield {**rest, key: other} if isinstance(document, dict) else [other]
        if isinstance(value, (dict, list)) and value:
            for inner in variants(value):
                yield {**rest, key: inner} if isinstance(document, dict) else [inner]


def encoded(text):
    return text if isinstance(text, bytes) else text.encode("utf-8", "surrogatepass")


def main(folder):
    documents = {
        "rule-pack": PACK, "user-rule": PACK, "imported-rules": PACK, "journal": [ENTRY],
        "journal-entry": ENTRY, "journal-log": {"added": ENTRY}, "configuration": CONFIG,
        "disabled-rules": ["npm.cache"],
        "left-alone": {"paths": ["/home/a"], "rules": ["npm.cache"]},
        "docker-objects": DOCKER, "json-list": [1, "a", {"b": [None]}],
    }  # fmt: skip
    inputs = {name: [encoded(text) for text in texts] for name, texts in TEXTS.items()}
    for name, document in documents.items():
        texts = [json.dumps(variant) for variant in variants(document)] + JSON_TEXTS
        inputs[name] = [encoded(text) for text in texts]
        inputs[name].append(encoded(texts[0]).replace(b'"', b'"\xff', 1))
    for name, texts in inputs.items():
        place = pathlib.Path(folder) / name
        place.mkdir(parents=True, exist_ok=True)
        for number, text in enumerate(texts):
            (place / f"seed-{number}").write_bytes(text)


main(sys.argv[1])
