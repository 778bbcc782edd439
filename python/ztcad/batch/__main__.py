"""``python -m ztcad.batch``: the batch from a shell, with JSON lines as output."""

from __future__ import annotations

import argparse
import os
import sys
import time
from collections.abc import Iterator, Sequence
from contextlib import ExitStack, closing
from typing import IO, TYPE_CHECKING

from ztcad._errors import Error
from ztcad._finding import SEVERITIES, Severity

from ._check import Progress, check
from ._report import DocumentReport, json_line, printable, read_json_lines

if TYPE_CHECKING:
    from distributed import Client

EXIT_CODES = """exit code, as that of ztcad:
  0  all is well
  1  a document has findings of --fail-on or higher
  2  not all could be checked: a document that cannot be read, or that crashes or hangs the check; no worker;
     wrong arguments
"""


def _parser() -> argparse.ArgumentParser:
    parser = argparse.ArgumentParser(
        prog="python -m ztcad.batch",
        description="Checks documents, on this machine or on a cluster of dask.distributed, and writes a "
        "line of JSON for each as soon as it is known.",
        epilog=EXIT_CODES,
        formatter_class=argparse.RawDescriptionHelpFormatter,
    )
    parser.add_argument("paths", metavar="PATH", nargs="*", help="a document, or a folder: all *.xml in it")
    parser.add_argument("--files-from", metavar="FILE", help='more paths, one a line; "-": standard input')
    parser.add_argument("-o", "--output", metavar="FILE", help="write the lines to a file")
    parser.add_argument("--resume", action="store_true", help="continue --output: skip what it has already")
    cluster = parser.add_argument_group("cluster")
    cluster.add_argument("--scheduler", metavar="ADDRESS", help="of the cluster, such as tcp://10.0.0.1:8786")
    cluster.add_argument("--scheduler-file", metavar="FILE", help="that the scheduler wrote its address to")
    cluster.add_argument(
        "--worker-timeout", metavar="SECONDS", type=_positive, default=300.0,
        help="give up when there has been no worker for so long (300)",
    )  # fmt: skip
    cluster.add_argument(
        "--chunk-size", metavar="MB", type=_positive, default=50.0,
        help="documents that a worker gets at once (50)",
    )  # fmt: skip
    work = parser.add_argument_group("check")
    work.add_argument(
        "--only", metavar="RULE", action="append", default=[], help="only this rule; repeatable"
    )
    work.add_argument(
        "--ignore", metavar="RULE", action="append", default=[], help="not this rule; repeatable"
    )
    work.add_argument("--level", choices=SEVERITIES[::-1], help="lowest severity that is reported (warning)")
    work.add_argument("--fail-on", choices=SEVERITIES[::-1], default="error", help="for exit code 1 (error)")
    work.add_argument("--max", metavar="N", type=_count, default=1000, help="findings for a document (1000)")
    work.add_argument(
        "--no-inspect", action="store_true", help="do not check geometry, references, mass data"
    )
    work.add_argument(
        "--timeout", metavar="SECONDS", type=_positive, default=300.0, help="for a document (300)"
    )
    work.add_argument(
        "--jobs", metavar="N", type=_jobs, help="processes on this machine (one each processor)"
    )
    work.add_argument(
        "--program", metavar="FILE", help="the program ztcad, on the workers if there is a cluster"
    )
    return parser


def _positive(text: str) -> float:
    value = float(text)
    if not value > 0:
        raise argparse.ArgumentTypeError(f"{text} is not positive")
    return value


def _count(text: str) -> int:
    value = int(text)
    if value < 0:
        raise argparse.ArgumentTypeError(f"{text} is negative")
    return value


def _jobs(text: str) -> int:
    value = int(text)
    if value < 1:
        raise argparse.ArgumentTypeError(f"{text} is less than 1")
    return value


class Terminal:
    """A line of progress on standard error, if that is a terminal."""

    def __init__(self) -> None:
        self._active = sys.stderr.isatty()
        self._shown = 0.0
        self._visible = False

    def show(self, progress: Progress) -> None:
        """Replaces the line, a few times a second."""
        now = time.monotonic()
        if not self._active or now < self._shown + 0.2:
            return
        self._shown = now
        self._visible = True
        rate = progress.documents / max(progress.seconds, 1e-3)
        print(
            f"\r{progress.documents:,} documents, {progress.with_errors:,} with errors, "
            f"{progress.with_problems:,} not checked; {rate:,.0f}/s, workers: {progress.workers}\033[K",
            end="", file=sys.stderr, flush=True,
        )  # fmt: skip

    def say(self, text: str) -> None:
        """Prints a line, in place of the progress if that is shown."""
        if self._visible:
            print("\r\033[K", end="", file=sys.stderr)
            self._visible = False
        print(f"ztcad.batch: {text}", file=sys.stderr)


def _lines_of(name: str) -> Iterator[str]:
    """Lines as names of files, decoded as Python decodes such names: any bytes are kept."""
    with ExitStack() as stack:
        file: IO[bytes] = sys.stdin.buffer if name == "-" else stack.enter_context(open(name, "rb"))
        for line in file:
            path = os.fsdecode(line.rstrip(b"\r\n"))
            if path:
                yield path


def _paths(arguments: argparse.Namespace) -> Iterator[str]:
    yield from arguments.paths
    if arguments.files_from:
        yield from _lines_of(arguments.files_from)


class Output:
    """Writes reports as lines, and determines the exit code."""

    def __init__(self, file: IO[str], fail_on: Severity) -> None:
        self._file = file
        self._fail_on = fail_on
        self.exit_code = 0

    def add(self, report: DocumentReport) -> None:
        """Writes a report."""
        self._file.write(json_line(report))
        self.count(report)

    def count(self, report: DocumentReport) -> None:
        """Includes a report in the exit code."""
        code = 2 if report.problem is not None else 1 if report.count_from(self._fail_on) else 0
        self.exit_code = max(self.exit_code, code)

    def flush(self) -> None:
        """Called after each chunk: an interrupted run keeps the chunks before."""
        self._file.flush()


def _open(arguments: argparse.Namespace, stack: ExitStack) -> IO[str]:
    target = arguments.output or sys.stdout.fileno()
    mode = "a+" if arguments.resume else "w"
    file = open(
        target, mode, encoding="utf-8", errors="replace", newline="\n", closefd=bool(arguments.output)
    )
    return stack.enter_context(file)


def _known(file: IO[str], output: Output) -> set[int]:
    """Hashes of the names in a file of lines, which are smaller than names. Cuts an incomplete last line."""
    known = set()
    position = 0
    file.seek(0)
    while (line := file.readline()).endswith("\n"):
        report = next(read_json_lines([line]))
        known.add(hash(report.file))
        output.count(report)
        position = file.tell()
    file.seek(position)
    file.truncate()
    return known


def _client(arguments: argparse.Namespace) -> Client | None:
    """A client of the cluster, to be closed by the caller; None without a cluster."""
    if not (arguments.scheduler or arguments.scheduler_file):
        return None
    try:
        from distributed import Client
    except ImportError:
        raise Error("--scheduler needs dask.distributed (Debian: python3-distributed)") from None
    try:
        return Client(arguments.scheduler, scheduler_file=arguments.scheduler_file)
    except (OSError, ValueError) as error:
        address = arguments.scheduler or arguments.scheduler_file
        raise Error(f"no scheduler at {address}: {error}") from None


def run(arguments: argparse.Namespace, terminal: Terminal) -> int:
    """Does the work; returns the exit code."""
    levels = (arguments.level,) if arguments.level else ("warning", arguments.fail_on)
    with ExitStack() as stack:
        client = _client(arguments)
        if client is not None:
            stack.callback(client.close, timeout=5)  # not longer for a scheduler that is lost
        file = _open(arguments, stack)
        output = Output(file, arguments.fail_on)
        known = _known(file, output) if arguments.resume else set()

        def show(progress: Progress) -> None:
            output.flush()
            terminal.show(progress)

        reports = check(
            _paths(arguments),
            client,
            only=arguments.only,
            ignore=arguments.ignore,
            level=min(levels, key=SEVERITIES.index),
            inspect=not arguments.no_inspect,
            max_findings=arguments.max,
            timeout=arguments.timeout,
            jobs=arguments.jobs,
            worker_timeout=arguments.worker_timeout,
            chunk_megabytes=arguments.chunk_size,
            program=arguments.program,
            skip=lambda name: hash(printable(name)) in known,
            progress=show,
        )
        for report in stack.enter_context(closing(reports)):
            output.add(report)
            if report.problem is not None:
                terminal.say(f"{report.file}: {report.problem}")
        output.flush()
    return output.exit_code


def main(words: Sequence[str] | None = None) -> int:
    """The program; returns the exit code."""
    parser = _parser()
    arguments = parser.parse_args(words)
    if not arguments.paths and not arguments.files_from:
        parser.error("a PATH or --files-from is required")
    if arguments.resume and not arguments.output:
        parser.error("--resume needs --output")
    terminal = Terminal()
    try:
        return run(arguments, terminal)
    except BrokenPipeError:
        os.dup2(os.open(os.devnull, os.O_WRONLY), sys.stdout.fileno())  # or its flush at exit fails again
        return 2
    except (Error, OSError, ValueError) as error:
        terminal.say(str(error))
    except KeyboardInterrupt:
        terminal.say("interrupted" + ("; --resume goes on" if arguments.output else ""))
        return 130
    return 2


if __name__ == "__main__":
    sys.exit(main())
