"""Measures the package against the same work in C, in one run: rounds of both take turns.

    compare.py <program of loops.c> [--points N] [--rounds N] [--check]

Prints the least time of all rounds. With --check it fails if a ratio is above its limit.
"""

from __future__ import annotations

import argparse
import subprocess
import sys
import tempfile
from collections.abc import Callable
from pathlib import Path
from time import perf_counter

import numpy as np

import ztcad

# work: greatest ratio to C
LIMITS = {"load": 1.05, "build": 1.5, "read": 3.0, "write": 3.0}


def timed(work: Callable[[], object]) -> float:
    began = perf_counter()
    result = work()
    time = perf_counter() - began
    del result
    return time


def measure(file: Path, centers: np.ndarray) -> dict[str, float]:
    times = {"load": timed(lambda: ztcad.load(file))}
    document = ztcad.Document()
    times["build"] = timed(lambda: document.points.add_many(centers))
    points = document.points
    points.centers  # lists the addresses, as the loops do before they begin
    times["read"] = timed(lambda: points.centers)
    times["write"] = timed(lambda: setattr(points, "centers", centers))
    solid = document.solids.add("s", vertices=centers)
    times["view"] = timed(lambda: solid.vertices)
    return times


def in_c(program: str, file: Path, points: int) -> dict[str, float]:
    output = subprocess.run(
        [program, str(file), str(points), "1"], check=True, stdout=subprocess.PIPE, text=True
    ).stdout
    return {name: float(time) for name, time in (line.split() for line in output.splitlines())}


def main() -> None:
    parser = argparse.ArgumentParser()
    parser.add_argument("program")
    parser.add_argument("--points", type=int, default=1_000_000)
    parser.add_argument("--rounds", type=int, default=7)
    parser.add_argument("--check", action="store_true")
    arguments = parser.parse_args()

    centers = np.random.default_rng(1).random((arguments.points, 3))
    least: list[dict[str, float]] = [{}, {}]
    with tempfile.TemporaryDirectory() as folder:
        file = Path(folder, "points.xml")
        with ztcad.Document() as document:
            document.solids.add("s", vertices=centers, faces=np.zeros((arguments.points, 3), np.uint32))
            document.points.add_many(centers[: arguments.points // 10])
            document.save(file)
        for _ in range(arguments.rounds):
            rounds = in_c(arguments.program, file, arguments.points), measure(file, centers)
            for best, times in zip(least, rounds):
                for name, time in times.items():
                    best[name] = min(time, best.get(name, time))

    c, python = least
    print(f"{arguments.points} points, least of {arguments.rounds} rounds, milliseconds")
    print(f"{'':8}{'C':>10}{'Python':>10}{'ratio':>8}{'limit':>8}")
    exceeded = []
    for name, limit in LIMITS.items():
        ratio = python[name] / c[name]
        print(f"{name:8}{1e3 * c[name]:10.1f}{1e3 * python[name]:10.1f}{ratio:8.2f}{limit:8.2f}")
        if ratio > limit:
            exceeded.append(name)
    print(f"vertices of a solid as an array: {1e6 * python['view']:.1f} microseconds")
    if arguments.check and (exceeded or python["view"] > 100e-6):
        sys.exit(f"above the limit: {', '.join(exceeded) or 'view'}")


if __name__ == "__main__":
    main()
