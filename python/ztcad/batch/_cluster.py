"""Checks chunks on a cluster of dask.distributed."""

from __future__ import annotations

import asyncio
import concurrent.futures
import queue
import time
from collections import deque
from collections.abc import Generator, Iterator
from typing import TYPE_CHECKING

from ._chunks import Document
from ._errors import ClusterError, NoWorkersError
from ._program import ChunkReport, Options, check_chunk

if TYPE_CHECKING:
    from distributed import Client, Future

AHEAD = 2  # chunks that are submitted for each thread of the cluster; more would fill the scheduler
LOST = "each worker that checked this document was lost"


class Workers:
    """Number of workers and threads, queried from the scheduler at most once a second."""

    def __init__(self, client: Client, patience: float) -> None:
        self._client = client
        self._patience = patience
        self._asked = -1.0
        self._absent_since: float | None = None
        self.count = 0
        self.threads = 0

    def update(self) -> None:
        """Raises ``NoWorkersError`` if there has been no worker for too long."""
        now = time.monotonic()
        if now < self._asked + 1:
            return
        self._asked = now
        try:
            # client.nthreads() has no time limit: it would wait for a scheduler that does not answer
            threads = self._client.sync(self._client.scheduler.ncores, callback_timeout=10)
        except (OSError, TimeoutError, asyncio.TimeoutError):
            threads = {}
        self.count, self.threads = len(threads), sum(threads.values())
        if self.count:
            self._absent_since = None
        elif self._absent_since is None:
            self._absent_since = now
        elif now - self._absent_since >= self._patience:
            raise NoWorkersError(
                f"The cluster at {self._client.scheduler.address} has had no worker for "
                f"{self._patience:g} s; documents that have no report yet were not checked."
            )


class Cluster:
    """The chunks that are submitted and not yet done."""

    def __init__(self, client: Client, options: Options, workers: Workers) -> None:
        self._client = client
        self._options = options
        self._workers = workers
        self._waiting: dict[str, tuple[Future, list[Document]]] = {}  # by the key of the future
        self._arrived: queue.SimpleQueue[Future] = queue.SimpleQueue()

    def __len__(self) -> int:
        return len(self._waiting)

    def submit(self, chunk: list[Document]) -> None:
        """Sends a chunk to the scheduler."""
        paths = [document.path for document in chunk]
        # not pure: dask returns an earlier result for a pure call, but the file may have changed
        future = self._client.submit(check_chunk, paths, self._options, pure=False)
        self._waiting[future.key] = future, chunk
        future.add_done_callback(self._arrived.put)

    def next(self) -> tuple[list[Document], ChunkReport | None]:
        """Waits for a chunk that is done. Its report is None if the workers that had it were lost."""
        while True:
            self._workers.update()
            try:
                future = self._arrived.get(timeout=1)
            except queue.Empty:
                continue
            chunk = self._waiting[future.key][1]
            report = self._result_of(future)
            del self._waiting[future.key]
            future.release()  # or the cluster keeps the result
            return chunk, report

    def _result_of(self, future: Future) -> ChunkReport | None:
        from distributed.scheduler import KilledWorker

        while True:
            try:
                # if the worker is lost before its result is fetched, the chunk is checked again meanwhile
                report: ChunkReport = future.result(timeout=30)
            except KilledWorker:
                return None
            except (TimeoutError, asyncio.TimeoutError):
                self._workers.update()
            except (OSError, asyncio.CancelledError, concurrent.futures.CancelledError):
                if future.status == "error":
                    raise  # of the function, not of the cluster
                raise ClusterError("The scheduler was lost, or it was told to cancel the work.") from None
            else:
                return report

    def give_up(self) -> None:
        """Drops the chunks that are not done, without waiting: those that have not begun never will."""
        for future, _ in self._waiting.values():
            future.release()
        self._waiting.clear()


def check_on_cluster(
    client: Client, work: Iterator[list[Document]], options: Options, workers: Workers
) -> Generator[tuple[list[Document], ChunkReport], None, None]:
    """Yields chunks with their reports as they are done.

    The scheduler gives the chunks of a lost worker to others. It gives up a chunk when several workers were
    lost that had it, whether or not they were lost because of it. The documents of such a chunk are checked
    again at the end, one at a time with nothing else under way: a document that loses its worker then is the
    reason.
    """
    cluster = Cluster(client, options, workers)
    suspects: deque[Document] = deque()
    try:
        while True:
            workers.update()
            while len(cluster) < AHEAD * max(1, workers.threads):
                chunk = next(work, None)
                if chunk is None:
                    break
                cluster.submit(chunk)
            alone = not len(cluster)
            if alone:
                if not suspects:
                    return
                cluster.submit([suspects.popleft()])
            chunk, report = cluster.next()
            if report is not None:
                yield chunk, report
            elif alone:
                yield chunk, ChunkReport.of_problem(chunk[0].path, LOST)
            else:
                suspects.extend(chunk)
    finally:
        cluster.give_up()
