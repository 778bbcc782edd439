"""The function ``check``."""

from __future__ import annotations

import os
import time
from collections.abc import Generator, Iterable
from contextlib import closing
from dataclasses import dataclass
from typing import TYPE_CHECKING, Callable, Union

from ztcad._errors import ProgramError
from ztcad._finding import SEVERITIES, Severity

from ._chunks import Document, chunks, find_documents
from ._cluster import Workers, check_on_cluster
from ._local import check_locally
from ._program import ChunkReport, Options
from ._report import DocumentReport

if TYPE_CHECKING:
    from distributed import Client

Path = Union[str, "os.PathLike[str]"]


@dataclass(frozen=True)
class Progress:
    """How far a batch is. How many documents there will be is not known before the last is found."""

    documents: int
    with_errors: int
    with_problems: int
    workers: int  # of the cluster, or jobs on this machine
    seconds: float


def check(
    paths: Path | Iterable[Path],
    client: Client | None = None,
    *,
    only: Iterable[str] = (),
    ignore: Iterable[str] = (),
    level: Severity = "warning",
    inspect: bool = True,
    max_findings: int | None = 1000,
    timeout: float = 300,
    jobs: int | None = None,
    worker_timeout: float = 300,
    chunk_megabytes: float = 50,
    program: Path | None = None,
    skip: Callable[[str], bool] | None = None,
    progress: Callable[[Progress], None] | None = None,
) -> Generator[DocumentReport, None, None]:
    """Checks documents as ``ztcad check`` does. Yields a report on each as soon as it is known, in any order.

    ``paths`` are documents and folders; a folder means all ``*.xml`` in it, at any depth. They are
    consumed while the work goes on: a generator may be endless, and may repeat a path. Without a ``client``
    this machine does the work. With a ``distributed.Client`` the workers of its cluster do; they read the
    documents under the same absolute paths. Documents are read by child processes with a time limit: one that
    crashes or hangs its process gets a report with a ``problem``.

    ``only``, ``ignore``      rules that are reported, or not reported
    ``level``                 the lowest severity that is reported: "error", "warning" or "note"
    ``inspect``               whether geometry, references and mass data are checked too
    ``max_findings``          findings reported for a document; more are counted. None: all
    ``timeout``               seconds for a document
    ``jobs``                  processes on this machine; None: one for each processor
    ``worker_timeout``        seconds after which a cluster that has no worker ends the run
    ``chunk_megabytes``       size of the documents that are sent to a worker at once
    ``program``               the program ztcad, on the workers if there is a client; see ``find_program``
    ``skip``                  called with the name of each document; true: it is not checked
    ``progress``              called after each chunk

    Raises ValueError for wrong arguments, and ProgramError, NoWorkersError or another ClusterError when the
    batch cannot go on. Closing the generator ends the work.
    """
    if level not in SEVERITIES:
        raise ValueError(f"level is {level!r}, not one of {', '.join(SEVERITIES)}")
    if max_findings is not None and max_findings < 0:
        raise ValueError("max_findings is negative")
    for name, value in ("timeout", timeout), ("worker_timeout", worker_timeout), ("jobs", jobs):
        if value is not None and value <= 0:
            raise ValueError(f"{name} is {value}, which is not positive")
    if client is not None and client.asynchronous:
        raise TypeError("the client is asynchronous; check() needs one that waits")
    options = Options(
        only=_words(only),
        ignore=_words(ignore),
        level=level,
        inspect=inspect,
        max_findings=max_findings,
        timeout=timeout,
        program=None if program is None else os.fspath(program),
    )
    given = [paths] if isinstance(paths, (str, os.PathLike)) else paths
    documents = (d for d in find_documents(given) if skip is None or not skip(d.name))
    work = chunks(documents, chunk_megabytes * 1e6)
    if client is None:
        processes = jobs or _processors()
        return _reports(check_locally(work, options, processes), lambda: processes, progress)
    workers = Workers(client, worker_timeout)
    return _reports(check_on_cluster(client, work, options, workers), lambda: workers.count, progress)


def _words(rules: Iterable[str]) -> tuple[str, ...]:
    return (rules,) if isinstance(rules, str) else tuple(rules)


def _processors() -> int:
    """Those that this process may use."""
    return len(os.sched_getaffinity(0)) if hasattr(os, "sched_getaffinity") else os.cpu_count() or 1


def _reports(
    done: Generator[tuple[list[Document], ChunkReport], None, None],
    workers: Callable[[], int],
    progress: Callable[[Progress], None] | None,
) -> Generator[DocumentReport, None, None]:
    began = time.monotonic()
    documents = with_errors = with_problems = 0
    versions: dict[str, str] = {}
    with closing(done):
        for chunk, result in done:
            _require_one_version(versions, result)
            for document, record in zip(chunk, result.records):
                report = DocumentReport.from_json({**record, "file": document.name})
                documents += 1
                with_errors += report.errors > 0
                with_problems += report.problem is not None
                yield report
            if progress:
                seconds = time.monotonic() - began
                progress(Progress(documents, with_errors, with_problems, workers(), seconds))


def _require_one_version(versions: dict[str, str], result: ChunkReport) -> None:
    """Raises ProgramError for a second version: findings differ, and no report names its version."""
    if result.version:
        versions.setdefault(result.version, result.host)
    if len(versions) > 1:
        found = ", ".join(f"{version!r} on {host}" for version, host in versions.items())
        raise ProgramError(f"The machines have different versions of the program: {found}.")
