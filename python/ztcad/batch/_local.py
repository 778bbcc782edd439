"""Checks chunks on this machine: one child process for each job, and a thread that reads its output."""

from __future__ import annotations

import threading
from collections.abc import Generator, Iterator
from concurrent.futures import FIRST_COMPLETED, Future, ThreadPoolExecutor, wait
from itertools import islice

from ._chunks import Document
from ._program import ChunkReport, Options, check_chunk

AHEAD = 2  # chunks that are submitted for each job: the most that are kept for a slow consumer


def check_locally(
    work: Iterator[list[Document]], options: Options, jobs: int
) -> Generator[tuple[list[Document], ChunkReport], None, None]:
    """Yields chunks with their reports as they are done. Closing the generator ends the child processes."""
    stop = threading.Event()
    waiting: dict[Future[ChunkReport], list[Document]] = {}
    pool = ThreadPoolExecutor(jobs, "ztcad-batch")

    def submit_up_to(most: int) -> None:
        for chunk in islice(work, most - len(waiting)):
            paths = [document.path for document in chunk]
            waiting[pool.submit(check_chunk, paths, options, stop.is_set)] = chunk

    try:
        submit_up_to(AHEAD * jobs)
        while waiting:
            done, _ = wait(waiting, return_when=FIRST_COMPLETED)
            finished = [(waiting.pop(future), future.result()) for future in done]
            submit_up_to(AHEAD * jobs)
            yield from finished
    finally:
        stop.set()
        pool.shutdown(cancel_futures=True)
