"""Runs ``ztcad check`` over a chunk of documents, on whatever machine the chunk is sent to."""

from __future__ import annotations

import functools
import json
import math
import os
import queue
import re
import signal
import socket
import subprocess
import tempfile
import threading
import time
from collections.abc import Sequence
from contextlib import suppress
from dataclasses import dataclass
from typing import IO, Any, Callable

from ztcad._errors import ProgramError
from ztcad._finding import Record, Severity
from ztcad._program import find_program

from ._report import counts_of


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
        """Seconds for a document after which the program is killed; its own time limit ends earlier."""
        return 1.25 * self.timeout + 1


@dataclass(frozen=True)
class ChunkReport:
    """What the program reported about a chunk: a JSON object for each document, in the order of the chunk.

    Each has an additional member "counts": errors, warnings and notes, omitted ones included.
    """

    records: list[Record]
    version: str = ""
    host: str = ""

    @classmethod
    def of_problem(cls, path: str, problem: str) -> ChunkReport:
        """The report on a document that was not checked."""
        return cls([_problem(path, problem)])


def program_here(named: str | None) -> str:
    """The path of the program on this machine; an error names the machine."""
    try:
        return find_program(named)
    except ProgramError as error:
        raise ProgramError(f"{socket.gethostname()}: {error}") from None


@functools.lru_cache(maxsize=None)
def version_of(program: str) -> str:
    """The version of the program, queried once in each process: detects a broken program before any check."""
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
    """Checks documents, given by different absolute paths, in child processes with a time limit.

    After a process that fails, the document that it was checking gets a process of its own, and the rest
    another one. A document is blamed only for a failure of its own process. ``stopped`` is called several
    times a second; when it returns true, the process is killed and the report is incomplete.
    """
    program = program_here(options.program)
    version = version_of(program)
    command = [program, *options.arguments()]
    records: list[Record] = []
    alone = False  # whether the next process gets one document
    while len(records) < len(paths) and not stopped():
        batch = paths[len(records) : len(records) + 1 if alone else None]
        found, problem = _run(command, batch, options.patience, stopped)
        records += (_finished(record, options.max_findings) for record in found)
        if problem and len(batch) == 1:
            version_of.__wrapped__(program)  # raises if the program was replaced by one that does not run
            records.append(_problem(batch[0], problem))
        alone = bool(problem) and not alone
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
        self._rest = bytearray()  # not decoded yet
        self._in_list = False
        self._ended = False
        self.empty = True
        self.records: list[dict[str, Any]] = []

    @property
    def complete(self) -> bool:
        """Whether there is a record of each document."""
        return len(self.records) == len(self._paths)

    def feed(self, data: bytes) -> None:
        """Decodes the documents that are complete. Raises ``_Rubbish`` once the output cannot be a report."""
        self.empty = False
        self._rest += data
        if not self._in_list:
            self._read_head()
        # decoding is tried where a document may have ended: at a flush of the program, or before the next one
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
        del self._rest[: len(text[:start].encode())]

    def _add(self, record: dict[str, Any]) -> None:
        if self.complete or not _describes(record, self._paths[len(self.records)]):
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


def _run(
    command: Sequence[str], paths: Sequence[str], patience: float, stopped: Callable[[], bool]
) -> tuple[list[dict[str, Any]], str]:
    """Runs the program once.

    Returns its records of the first documents, in their order, and the reason why the next document has none;
    "" if all documents have a record.
    """
    reader = _ReportReader(paths)
    with tempfile.TemporaryFile() as errors:
        process = _start([*command, *paths], errors)
        try:
            problem = _read(process, reader, patience, stopped)
        finally:
            _kill(process)
        if reader.complete:
            return reader.records, ""  # whatever came after it
        if not problem and process.returncode == 2 and reader.empty:
            raise ProgramError(_last_line(_tail(errors)))  # arguments that the program does not accept
        return reader.records, problem or "the check ended its process: " + _end_of(process, _tail(errors))


def _start(command: Sequence[str], errors: IO[bytes]) -> subprocess.Popen[bytes]:
    try:
        return subprocess.Popen(
            command,
            stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE,
            stderr=errors,
            start_new_session=True,  # a process group, which is killed with what the program started
        )
    except OSError as error:
        raise ProgramError(f"{socket.gethostname()}: {command[0]}: {error}") from None


def _read(
    process: subprocess.Popen[bytes], reader: _ReportReader, patience: float, stopped: Callable[[], bool]
) -> str:
    """Reads the output to its end. Returns "" if the process has ended then, otherwise what is wrong."""
    arrived: queue.SimpleQueue[bytes] = queue.SimpleQueue()
    # in a thread: a descendant that escapes the kill keeps the pipe open, and a read would never return
    threading.Thread(target=_pump, args=(process.stdout, arrived), daemon=True).start()
    late = f"the check took more than {patience:g} s"
    deadline = time.monotonic() + patience  # for the next document
    while not stopped():
        left = deadline - time.monotonic()
        if left <= 0:
            return late
        try:
            data = arrived.get(timeout=min(left, 0.2))
        except queue.Empty:
            continue
        known = len(reader.records)
        try:
            if data:
                reader.feed(data)
            else:
                reader.finish()
        except _Rubbish:
            return "the check printed something else than its report"
        if not data:
            return "" if reader.complete or _has_ended(process) else late
        if len(reader.records) > known:
            deadline = time.monotonic() + patience
    return "the check was stopped"


def _pump(stream: IO[bytes], arrived: queue.SimpleQueue[bytes]) -> None:
    """Puts the output into a queue, and b"" at its end."""
    with suppress(OSError, ValueError), stream:
        while data := stream.read1(1 << 16):  # type: ignore[attr-defined]
            arrived.put(data)
            if len(data) < 4096:
                # otherwise each document wakes two threads, which takes as long as checking it
                time.sleep(0.005)
    arrived.put(b"")


def _has_ended(process: subprocess.Popen[bytes]) -> bool:
    """Whether the process ends within seconds after it closed its output."""
    try:
        process.wait(5)
    except subprocess.TimeoutExpired:
        return False
    return True


def _kill(process: subprocess.Popen[bytes]) -> None:
    """Kills the process group: the process and all that it started.

    If the process has ended and was waited for, its number is free. Systems count upwards, so no other group
    has that number yet.
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


def _end_of(process: subprocess.Popen[bytes], errors: bytes) -> str:
    code = process.returncode
    if code < 0:
        return f"signal {-code} ({signal.strsignal(-code)})"
    return f"exit code {code}" + (f" ({_last_line(errors)})" if errors.strip() else "")
