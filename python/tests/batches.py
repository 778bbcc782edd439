"""What the tests of batches share: folders of documents, and a program that misbehaves for some of them."""

from __future__ import annotations

import os
import stat
import sys
import time
from pathlib import Path
from typing import Callable

FAKE = Path(__file__).with_name("fake_ztcad.py")


def make_fake_program(folder: Path) -> str:
    """The program of fake_ztcad.py: reports depend on the names of documents."""
    program = folder / "ztcad"
    program.write_text(f"#!{sys.executable} -SE\n{FAKE.read_text()}")  # -S: no site packages, starts faster
    program.chmod(program.stat().st_mode | stat.S_IXUSR)
    return str(program)


def make_documents(folder: Path, *names: str, size: int = 0) -> list[str]:
    """Files of so many bytes; their paths."""
    folder.mkdir(exist_ok=True)
    paths = [folder / f"{name}.xml" for name in names]
    for path in paths:
        path.write_bytes(b" " * size)
    return [str(path) for path in paths]


def looked_at(folder: Path) -> list[tuple[str, int, str]]:
    """What the fake program noted: name of the document, process that started the program, further text."""
    lines = (folder / "looked_at.txt").read_text().splitlines()
    return [(name, int(parent), text) for name, parent, text in (line.split(" ", 2) for line in lines)]


def is_running(process: int) -> bool:
    """Whether there is such a process; one that has ended and was not waited for does not count."""
    try:
        return Path(f"/proc/{process}/stat").read_text().rpartition(")")[2].split()[0] != "Z"
    except OSError:
        return False


def wait_until(condition: Callable[[], bool], seconds: float = 10) -> None:
    """Fails if the condition does not become true."""
    deadline = time.monotonic() + seconds
    while not condition():
        assert time.monotonic() < deadline, "it took too long"
        time.sleep(0.02)


def real_program() -> str:
    """The program that was built with the package."""
    return os.environ["ZTCAD_PROGRAM"]
