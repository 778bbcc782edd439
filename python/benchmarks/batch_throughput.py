"""Measures how many documents a batch checks in a second: locally, and on clusters of one and two workers.

    python3 batch_throughput.py [--small N] [--large N] [--rounds N]

All is measured in one run, in turns. The program itself, over the same folder with as many processes, shows
what the batch costs. Workers are processes of one thread on this machine.
"""

from __future__ import annotations

import argparse
import math
import os
import resource
import subprocess
import tempfile
import time
from collections.abc import Callable
from functools import partial
from pathlib import Path
from statistics import median

from distributed import Client, LocalCluster

from ztcad import batch

HEAD = """<?xml version="1.0" encoding="windows-1251"?>
<GMD>
   <header majorVersion="2" minorVersion="1" inform=""/>
"""


def grid(rows: int) -> str:
    """A wave of rows * rows * 2 facets, which is what makes a document large."""
    at = [(i, j) for i in range(rows + 1) for j in range(rows + 1)]
    vertices = "; ".join(f"{i / 8:g}, {j / 8:g}, {math.sin(i / 9) * math.cos(j / 7):.6g}" for i, j in at)
    corners = [(i * (rows + 1) + j, rows + 1) for i in range(rows) for j in range(rows)]
    faces = "; ".join(f"{a}, {a + n}, {a + 1}; {a + 1}, {a + n}, {a + n + 1}" for a, n in corners)
    return (
        f'   <solid name="wave" method="triangulation">\n      <vertices>{vertices};</vertices>\n'
        f"      <faces>{faces};</faces>\n   </solid>\n"
    )


def document(number: int, rows: int) -> str:
    """Every tenth has an error."""
    points = "".join(f'   <point name="p{i}" center="{i}, {number % 97}, 0.5;"/>\n' for i in range(10))
    broken = '   <point name="hinge"/>\n' if number % 10 == 0 else ""
    return f"{HEAD}{points}{broken}{grid(rows)}</GMD>\n"


def cpu_seconds() -> float:
    """Of this process and of those that it waited for."""
    used = [resource.getrusage(who) for who in (resource.RUSAGE_SELF, resource.RUSAGE_CHILDREN)]
    return sum(usage.ru_utime + usage.ru_stime for usage in used)


def run_program(folder: Path, jobs: int) -> None:
    command = [batch.find_program(), "check", "--format", "json", "--jobs", str(jobs), str(folder)]
    subprocess.run(command, stdout=subprocess.DEVNULL, check=False)


def run_batch(folder: Path, count: int, client: Client | None, jobs: int) -> None:
    reports = list(batch.check(folder, client, jobs=jobs))
    assert len(reports) == count and not any(report.problem for report in reports)


def measure(title: str, folder: Path, count: int, clusters: list[tuple[int, Client]], rounds: int) -> None:
    """In turns, so that what else the machine does hits all alike."""
    size = sum(entry.stat().st_size for entry in os.scandir(folder)) / 1e6
    work: dict[str, Callable[[], None]] = {}
    for jobs in (1, 2):
        work[f"ztcad --jobs {jobs}"] = partial(run_program, folder, jobs)
        work[f"batch, jobs={jobs}"] = partial(run_batch, folder, count, None, jobs)
    for workers, client in clusters:
        work[f"cluster of {workers}"] = partial(run_batch, folder, count, client, 1)
    seconds: dict[str, list[float]] = {name: [] for name in work}
    cpu: dict[str, list[float]] = {name: [] for name in work}
    for _ in range(rounds):
        for name, run in work.items():
            began, before = time.perf_counter(), cpu_seconds()
            run()
            seconds[name].append(time.perf_counter() - began)
            cpu[name].append(cpu_seconds() - before)
    print(f"{title}: {count} documents, {size:.1f} MB, best of {rounds} rounds; CPU: without workers")
    for name in work:
        rate = count / min(seconds[name])
        print(
            f"  {name:16} {rate:7.0f} documents/s {size / count * rate:6.1f} MB/s "
            f"{min(cpu[name]) / count * 1e6:7.0f} us CPU"
            f"; median {count / median(seconds[name]):7.0f} documents/s",
            flush=True,
        )


def main() -> None:
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    parser.add_argument("--small", type=int, default=20000, help="number of documents of 2 kB")
    parser.add_argument("--large", type=int, default=200, help="number of documents of 1 MB")
    parser.add_argument("--rounds", type=int, default=5)
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory(dir="/dev/shm" if os.path.isdir("/dev/shm") else None) as name:
        folders = []
        for kind, count, rows in (("small", arguments.small, 4), ("large", arguments.large, 150)):
            folder = Path(name, kind)
            folder.mkdir()
            for number in range(count):
                (folder / f"{number:06}.xml").write_text(document(number, rows))
            folders.append((kind, folder, count))
        settings = {"threads_per_worker": 1, "dashboard_address": None}
        with LocalCluster(1, **settings) as one, LocalCluster(2, **settings) as two:
            with Client(one) as first, Client(two) as second:
                for kind, folder, count in folders:
                    measure(kind, folder, count, [(1, first), (2, second)], arguments.rounds)
        print(f"load average during the run: {os.getloadavg()[0]:.1f} on {os.cpu_count()} processors")


if __name__ == "__main__":
    main()
