"""Starts processes of a cluster on request: {"what", "arguments", "settings", "log"} on a line, answer: its number.

They are forks, which costs milliseconds where loading dask.distributed costs each of them a second. All are
killed when the input ends.
"""

import json
import os
import signal
import sys

import dask
from distributed.cli import dask_scheduler, dask_worker
from distributed.versions import get_versions

get_versions()  # loads NumPy and pandas if they are there, which each process would do when it joins
COMMANDS = {"scheduler": dask_scheduler.main, "worker": dask_worker.main}


def run(request):
    log = os.open(request["log"], os.O_WRONLY | os.O_CREAT | os.O_APPEND, 0o600)
    os.dup2(os.open(os.devnull, os.O_RDONLY), 0)
    os.dup2(log, 1)
    os.dup2(log, 2)
    dask.config.set(request["settings"])
    try:
        COMMANDS[request["what"]](request["arguments"])
    finally:
        os._exit(1)


def main():
    children = []
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
