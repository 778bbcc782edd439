"""Replaces ztcad in tests. The names of documents select what is reported, and how the program misbehaves.

Tests make it a script with an interpreter line. It notes each document that it looks at in ``looked_at.txt``
in the folder of the document, with the process that started the program.
"""

from __future__ import annotations

import json
import os
import signal
import subprocess
import sys
import time
from typing import Any


PARENT = os.getppid()  # at the start: it may be lost later


def note(path: str, text: str) -> None:
    with open(os.path.join(os.path.dirname(path), "looked_at.txt"), "a") as log:
        log.write(f"{os.path.basename(path)} {PARENT} {text}\n")


def say(text: str) -> None:
    os.write(1, text.encode())


def misbehave(path: str, what: str) -> None:
    if what == "crash":
        os.kill(os.getpid(), signal.SIGSEGV)
    elif what == "hang":
        child = subprocess.Popen(["sleep", "600"])  # which keeps the output open
        note(path, f"child={child.pid}")
        time.sleep(600)
    elif what == "rubbish":
        say("\n    This is no report, but has the {beginnings} of one.")
    elif what == "endless":
        while True:
            say('\n    {"file":' + "x" * 60000)
    elif what == "half":
        say('\n    {"file":"' + path + '","code":0,"fault":false,"omit')
        sys.exit(1)
    elif what == "other":
        say('\n    {"file":"/other.xml","code":0,"fault":false,"omitted":0,"findings":[]}')
    elif what == "exit":
        sys.exit("half of the program is missing")
    elif what == "killer":
        os.kill(PARENT, signal.SIGKILL)


def finding(severity: str, rule: str) -> dict[str, Any]:
    return {"severity": severity, "rule": rule, "message": "A message.", "line": 2, "column": 3, "offset": 40,
            "path": "/GMD/point[1]", "element": {"kind": "point", "name": "hinge"}, "count": 2,
            "places": [{"line": 2, "column": 3, "offset": 40}]}  # fmt: skip


def main(words: list[str]) -> int:
    if words == ["--version"]:
        print("ztcad 9.9.9")
        return 0
    paths = [word for word in words if os.path.isabs(word)]
    say('{\n  "schema": 1,\n  "tool": {"name":"ztcad","version":"9.9.9"},\n  "documents": [')
    separator = ""
    for path in paths:
        what = os.path.basename(path).partition("-")[0]
        note(path, "")
        say(separator)
        misbehave(path, what)
        if what == "slow":
            time.sleep(0.05)
        findings = [finding("error", "missing-centre")] * (what == "bad")
        findings += [finding("warning", "empty-name")] * (what in ("bad", "poor"))
        document = {"file": path, "code": 0, "fault": False, "omitted": 0, "findings": findings}
        say("\n    " + json.dumps(document, ensure_ascii=False))
        separator = ","
    say('\n  ],\n  "summary": {"documents":%d}\n}\n' % len(paths))
    return 0


sys.exit(main(sys.argv[1:]))
