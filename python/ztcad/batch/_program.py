"""Runs ``ztcad check`` over a chunk of documents, on whatever machine the chunk is sent to.

Nothing here needs more than the standard library and the program.
"""

from __future__ import annotations

import functools
import json
import math
import os
import queue
import re
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import threading
import time
from collections.abc import Sequence
from contextlib import suppress
from dataclasses import dataclass
from pathlib import Path
from typing import IO, Any, Callable

from ._errors import ProgramError
from ._finding import Record, Severity
from ._report import counts_of

ENVIRONMENT_VARIABLE = "ZTCAD_PROGRAM"


@dataclass(frozen=True)
class Options:
    """What is checked and reported, and how; the same for every chunk."""

    only: tuple[str, ...] = ()
    ignore: tuple[str, ...] = ()
    level: Severity = "warning"
    inspect: bool = True
    max_findings: int | None = None
    timeout: float = 300
    program: str | None = None

    def arguments(self) -> list[str]:
        """The arguments of the program, without the documents. One job: a chunk uses one processor."""
        words = ["check", "--format", "json", "--jobs", "1", "--level", self.level]
        words += ["--timeout", str(math.ceil(self.timeout))]
        words += [word for rule in self.only for word in ("--only", rule)]
        words += [word for rule in self.ignore for word in ("--ignore", rule)]
        return words if self.inspect else [*words, "--no-inspect"]

    @property
    def patience(self) -> float:
        """Seconds without a document after which the program is killed; it should have given up before."""
        return 1.25 * self.timeout + 1


@dataclass(frozen=True)
class ChunkReport:
    """What the program said about a chunk: a JSON object for each document, in the order of the chunk.

    Each has a list "counts" more than the program prints: errors, warnings and notes, omitted ones included.
    """

    records: list[Record]
    version: str = ""
    host: str = ""

    @classmethod
    def of_problem(cls, path: str, problem: str) -> ChunkReport:
        """The report on a document that was not checked."""
        return cls([_problem(path, problem)])


def find_program(program: str | None = None) -> str:
    """The path of the program ztcad on this machine.

    The first of: ``program``, a path or a name to look for in PATH; the environment variable ZTCAD_PROGRAM,
    likewise; the program in the package; the program beside the Python interpreter; the one in PATH.
    """
    name = "ztcad.exe" if os.name == "nt" else "ztcad"
    wanted = program or os.environ.get(ENVIRONMENT_VARIABLE)
    candidates = [str(Path(__file__).parents[1] / "bin" / name), str(Path(sys.executable).parent / name), name]
    for candidate in [wanted] if wanted else candidates:
        found = shutil.which(candidate)
        if found:
            return os.path.abspath(found)
    where = f"{wanted!r} is no program" if wanted else "it is neither in the package nor in PATH"
    raise ProgramError(
        f"{socket.gethostname()}: the program ztcad is missing: {where}. "
        f"Install it, or set {ENVIRONMENT_VARIABLE} to its path."
    )


@functools.lru_cache(maxsize=None)
def version_of(program: str) -> str:
    """The version of the program. Asked once in each process, so that a broken program blames no document."""
    try:
        run = subprocess.run(
            [program, "--version"], stdin=subprocess.DEVNULL, capture_output=True, timeout=60, check=True
        )
    except subprocess.CalledProcessError as error:
        raise ProgramError(f"{socket.gethostname()}: {program}: {_last_line(error.stderr)}") from None
    except (OSError, subprocess.TimeoutExpired) as error:
        raise ProgramError(f"{socket.gethostname()}: {program}: {error}") from None
    return run.stdout.decode(errors="replace").strip()


def check_chunk(
    paths: Sequence[str], options: Options, stopped: Callable[[], bool] = lambda: False
) -> ChunkReport:
    """Checks documents, given by different absolute paths, by child processes with a time limit.

    A process that fails is followed by one for the document it was at and one for the rest, so that what fails
    in a process of its own is the document's. ``stopped`` is asked several times a second; when it returns
    true, the process is killed and the report is of no use.
    """
    program = find_program(options.program)
    version = version_of(program)
    command = [program, *options.arguments()]
    records: list[Record] = []
    alone = False  # whether the next process gets one document
    while len(records) < len(paths) and not stopped():
        batch = paths[len(records) : len(records) + 1 if alone else None]
        run = _Run(command, batch, options.patience, stopped)
        records += (_finished(record, options.max_findings) for record in run.records)
        if run.problem and len(batch) == 1 and not run.records:
            records.append(_problem(batch[0], run.problem))
        alone = bool(run.problem) and not alone
    return ChunkReport(records, version, socket.gethostname())


def _problem(path: str, problem: str) -> Record:
    return {
        "file": path, "code": None, "fault": False, "omitted": 0, "problem": problem, "findings": [],
        "counts": (0, 0, 0),
    }  # fmt: skip


def _finished(record: dict[str, Any], most: int | None) -> Record:
    """Counts the findings, then omits those beyond the number that is wanted."""
    findings = record["findings"]
    record["counts"] = counts_of(findings)
    if most is not None and len(findings) > most:
        record["omitted"] = len(findings) - most
        record["findings"] = findings[:most]
    return record


class _Rubbish(Exception):
    """The output is not a report."""


class _ReportReader:
    """Decodes a report while it is written: a document is known as soon as its last byte has arrived."""

    HEAD = b'{\n  "schema": '
    LIST = b'"documents": ['
    LONGEST_HEAD = 4096
    _decoder = json.JSONDecoder()
    _separators = re.compile(r"[\s,]*")

    def __init__(self, paths: Sequence[str]) -> None:
        self._paths = paths
        self._rest = b""  # not decoded yet
        self._in_list = False
        self._ended = False
        self.records: list[dict[str, Any]] = []

    def feed(self, data: bytes) -> None:
        """Decodes the documents that are complete. Raises ``_Rubbish`` once the output cannot be a report."""
        self._rest += data
        if not self._in_list:
            self._read_head()
        # the program writes a document in one piece, which ends like this or with the start of the next one
        if self._in_list and not self._ended and (self._rest.endswith(b"]}") or b"\n    {" in data):
            self._read_documents()

    def finish(self) -> None:
        """Decodes what is left at the end of the output."""
        if self._in_list and not self._ended:
            self._read_documents()

    def _read_head(self) -> None:
        size = min(len(self.HEAD), len(self._rest))
        head, mark, rest = self._rest.partition(self.LIST)
        if self._rest[:size] != self.HEAD[:size] or len(head) > self.LONGEST_HEAD:
            raise _Rubbish
        if not mark:
            return
        try:
            schema = json.loads(head + mark + b"]}")["schema"]
        except (ValueError, KeyError):
            raise _Rubbish from None
        if schema != 1:
            raise ProgramError(f"The program writes reports of schema {schema}; this package reads schema 1.")
        self._in_list = True
        self._rest = rest

    def _read_documents(self) -> None:
        complete, brace, _ = self._rest.rpartition(b"}")  # cuts no character
        try:
            text = (complete + brace).decode()
        except UnicodeDecodeError:
            raise _Rubbish from None
        position = start = 0
        while True:
            position = self._separators.match(text, start).end()  # type: ignore[union-attr]
            if position == len(text) or text[position] != "{":
                break
            try:
                record, start = self._decoder.raw_decode(text, position)
            except json.JSONDecodeError:
                break  # not all of it has arrived
            self._add(record)
        if text[position : position + 1] not in ("{", "]", ""):
            raise _Rubbish
        self._ended = text.startswith("]", position)
        self._rest = self._rest[len(text[:start].encode()) :]

    def _add(self, record: dict[str, Any]) -> None:
        number = len(self.records)
        if number == len(self._paths) or not _describes(record, self._paths[number]):
            raise _Rubbish
        self.records.append(record)


def _describes(record: dict[str, Any], path: str) -> bool:
    """Whether the record is about this document and has the fields that are used."""
    try:
        counts_of(record["findings"])
        name, code = record["file"], record["code"]
        known = isinstance(code, int) and "problem" not in record or code is None and bool(record["problem"])
    except (KeyError, TypeError):
        return False
    try:
        path.encode()
    except UnicodeEncodeError:
        return known  # the program prints such a name with replacement characters
    return known and bool(name == path)


class _Run:
    """One process of the program. ``problem`` says why not all documents have a record; "" if all have."""

    def __init__(
        self, command: Sequence[str], paths: Sequence[str], patience: float, stopped: Callable[[], bool]
    ) -> None:
        self._reader = _ReportReader(paths)
        self._wanted = len(paths)
        self._empty = True
        self.problem = ""
        with tempfile.TemporaryFile() as errors:
            try:
                process = subprocess.Popen(
                    [*command, *paths],
                    stdin=subprocess.DEVNULL,
                    stdout=subprocess.PIPE,
                    stderr=errors,
                    start_new_session=True,  # a process group, which is killed with what the program started
                )
            except OSError as error:
                raise ProgramError(f"{socket.gethostname()}: {command[0]}: {error}") from None
            try:
                in_time = self._read(process, patience, stopped)
                if in_time and not stopped() and len(self.records) < self._wanted:
                    in_time = _wait(process, min(patience, 5))  # its output has ended: how did it end?
            except _Rubbish:
                self.problem = "the check printed something else than its report"
                in_time = True
            finally:
                _kill(process)
            self._judge(process.returncode, in_time, patience, errors)

    @property
    def records(self) -> list[dict[str, Any]]:
        """What the program said about the first documents, in their order."""
        return self._reader.records

    def _read(self, process: subprocess.Popen[bytes], patience: float, stopped: Callable[[], bool]) -> bool:
        """Reads all output; false if no document was completed for so many seconds."""
        arrived: queue.SimpleQueue[bytes] = queue.SimpleQueue()
        # a thread, since a pipe that a lost descendant keeps open would block the caller for ever
        threading.Thread(target=_pump, args=(process.stdout, arrived), daemon=True).start()
        deadline = time.monotonic() + patience
        while not stopped():
            left = deadline - time.monotonic()
            if left <= 0:
                return False
            try:
                data = arrived.get(timeout=min(left, 0.2))
            except queue.Empty:
                continue
            if not data:
                self._reader.finish()
                return True
            self._empty = False
            known = len(self.records)
            self._reader.feed(data)
            if len(self.records) > known:
                deadline = time.monotonic() + patience
        return True

    def _judge(self, code: int, in_time: bool, patience: float, errors: IO[bytes]) -> None:
        if len(self.records) == self._wanted:
            self.problem = ""  # whatever came after it
        elif self.problem:
            pass
        elif not in_time:
            self.problem = f"the check took more than {patience:g} s"
        elif code == 2 and self._empty:
            raise ProgramError(_last_line(_tail(errors)))  # arguments that the program does not accept
        else:
            self.problem = "the check ended its process: " + _end_of(code, _tail(errors))


def _pump(stream: IO[bytes], arrived: queue.SimpleQueue[bytes]) -> None:
    with suppress(OSError, ValueError), stream:
        while data := stream.read1(1 << 16):  # type: ignore[attr-defined]
            arrived.put(data)
            if len(data) < 4096:
                time.sleep(0.005)  # or each document would wake two threads, which takes as long as checking it
    arrived.put(b"")


def _wait(process: subprocess.Popen[bytes], seconds: float) -> bool:
    try:
        process.wait(seconds)
    except subprocess.TimeoutExpired:
        return False
    return True


def _kill(process: subprocess.Popen[bytes]) -> None:
    """Kills the process and what it started, also if it has ended by itself and left something behind.

    Then its number may be free. It is not given to another process so soon: systems count upwards.
    """
    if os.name == "posix":
        with suppress(ProcessLookupError, PermissionError):
            os.killpg(process.pid, signal.SIGKILL)
    else:
        process.kill()
    process.wait()


def _tail(errors: IO[bytes]) -> bytes:
    errors.seek(max(0, errors.seek(0, os.SEEK_END) - 4096))
    return errors.read()


def _last_line(text: bytes) -> str:
    lines = text.decode(errors="replace").strip().splitlines()
    return lines[-1][-500:] if lines else "it says nothing"


def _end_of(code: int, errors: bytes) -> str:
    if code < 0:
        return f"signal {-code} ({signal.strsignal(-code)})"
    return f"exit code {code}" + (f" ({_last_line(errors)})" if errors.strip() else "")
