"""Starts processes of a cluster: for each line {"what", "arguments", "settings", "log"}, prints its number.

They are forks of this process: that takes milliseconds, and loading dask.distributed takes a second. All are
killed when the input ends.
"""

from __future__ import annotations

import json
import os
import signal
import sys
from typing import Any, NoReturn

import dask
from distributed.cli import dask_scheduler, dask_worker
from distributed.versions import get_versions

get_versions()  # loads NumPy and pandas if they are there, which each process would do when it joins
COMMANDS = {"scheduler": dask_scheduler.main, "worker": dask_worker.main}


def run(request: dict[str, Any]) -> NoReturn:
    log = os.open(request["log"], os.O_WRONLY | os.O_CREAT | os.O_APPEND, 0o600)
    os.dup2(os.open(os.devnull, os.O_RDONLY), 0)
    os.dup2(log, 1)
    os.dup2(log, 2)
    dask.config.set(request["settings"])
    try:
        COMMANDS[request["what"]](request["arguments"])
    finally:
        os._exit(1)


def main() -> None:
    children: list[int] = []
    for line in sys.stdin:
        child = os.fork()
        if child == 0:
            run(json.loads(line))
        children.append(child)
        print(child, flush=True)
    for child in children:
        os.kill(child, signal.SIGKILL)  # none was waited for: each number is still its own
    for child in children:
        os.waitpid(child, 0)


main()
