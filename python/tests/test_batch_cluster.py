"""Batches on a cluster: a scheduler and workers of dask.distributed, as processes on the loopback."""

from __future__ import annotations

import itertools
import json
import os
import signal
import subprocess
import sys
import time
from collections.abc import Iterator
from pathlib import Path
from types import SimpleNamespace
from typing import Any, Optional

import pytest
from batches import is_running, looked_at, make_documents, make_fake_program, real_program, wait_until

from ztcad import batch
from ztcad.batch.__main__ import main

distributed = pytest.importorskip("distributed")
# of dask itself
pytestmark = pytest.mark.filterwarnings("ignore::DeprecationWarning", "ignore::ResourceWarning")

GOLDEN = Path(__file__).parents[2] / "tests" / "golden"


class Cluster:
    """A scheduler, and workers that are added as they are needed."""

    def __init__(self, folder: Path, **settings: str) -> None:
        self._folder = folder
        self._file = folder / "scheduler.json"
        self._environment = {**os.environ, **settings}
        self._processes: list[subprocess.Popen[bytes]] = []
        self.scheduler = self._start("dask_scheduler", "--host", "127.0.0.1", "--port", "0")
        self._client: Optional[Any] = None

    def _start(self, module: str, *arguments: str) -> subprocess.Popen[bytes]:
        log = (self._folder / f"{module}-{len(self._processes)}.log").open("wb")
        command = [sys.executable, "-m", f"distributed.cli.{module}", *arguments, "--no-dashboard"]
        command += ["--scheduler-file", str(self._file)]
        with log:
            process = subprocess.Popen(
                command, cwd=self._folder, env=self._environment, stdout=log, stderr=subprocess.STDOUT
            )
        self._processes.append(process)
        return process

    def start_workers(self, count: int, *arguments: str) -> list[subprocess.Popen[bytes]]:
        """Starts workers of one thread; they join later."""
        options = ["--host", "127.0.0.1", "--nthreads", "1", "--local-directory", str(self._folder), *arguments]
        wait_until(self._file.exists)
        return [self._start("dask_worker", *options) for _ in range(count)]

    @property
    def address(self) -> str:
        wait_until(self._file.exists)
        wait_until(lambda: self._file.read_text().endswith("}"))
        address: str = json.loads(self._file.read_text())["address"]
        return address

    @property
    def client(self) -> Any:
        if self._client is None:
            self._client = distributed.Client(self.address, set_as_default=False)
        return self._client

    def wait_for(self, workers: int) -> None:
        """Until there are so many workers."""
        wait_until(lambda: len(self.client.nthreads()) == workers, 20)

    def stop(self) -> None:
        if self._client is not None:
            self._client.close()
        for process in self._processes:
            process.terminate()
        for process in self._processes:
            try:
                process.wait(5)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()


@pytest.fixture(scope="module")
def clusters(tmp_path_factory: pytest.TempPathFactory) -> Iterator[SimpleNamespace]:
    """Three, started at the same time: "whole" keeps its workers, "shrinking" and "strict" lose them."""
    folder = tmp_path_factory.mktemp
    strict = {"DASK_DISTRIBUTED__SCHEDULER__ALLOWED_FAILURES": "0"}  # the first lost worker is blamed on its tasks
    named = SimpleNamespace(
        whole=Cluster(folder("whole")), shrinking=Cluster(folder("shrinking")), strict=Cluster(folder("strict"), **strict)
    )
    try:
        named.lost = named.shrinking.start_workers(2, "--no-nanny")
        named.whole.start_workers(2, "--no-nanny")
        named.strict.start_workers(2, "--nanny")  # which starts a lost worker again
        yield named
    finally:
        for cluster in (named.whole, named.shrinking, named.strict):
            cluster.stop()


@pytest.fixture(scope="module")
def fake(tmp_path_factory: pytest.TempPathFactory) -> str:
    return make_fake_program(tmp_path_factory.mktemp("program"))


def names_of(reports: list[batch.DocumentReport]) -> list[str]:
    return sorted(Path(report.file).stem for report in reports)


def test_a_cluster_without_workers_ends_the_run(clusters: SimpleNamespace, fake: str, tmp_path: Path) -> None:
    cluster = Cluster(tmp_path)
    try:
        began = time.monotonic()
        reports = batch.check(make_documents(tmp_path / "in", "good-1"), cluster.client, worker_timeout=1)
        with pytest.raises(batch.NoWorkersError, match="has had no worker for 1 s"):
            next(reports)
        assert 1 <= time.monotonic() - began < 15
    finally:
        cluster.stop()


def test_a_cluster_reports_as_one_machine_does(clusters: SimpleNamespace) -> None:
    clusters.whole.wait_for(2)
    seen: list[batch.Progress] = []
    options: dict[str, Any] = {"program": real_program(), "level": "note", "chunk_megabytes": 0.02}
    spread = list(batch.check(GOLDEN, clusters.whole.client, progress=seen.append, **options))
    local = list(batch.check(GOLDEN, **options))
    assert sorted(spread, key=lambda r: r.file) == sorted(local, key=lambda r: r.file)
    assert seen[-1].documents == len(spread) > 100
    assert seen[-1].workers == 2


def test_a_document_that_misbehaves_has_a_problem(clusters: SimpleNamespace, fake: str, tmp_path: Path) -> None:
    clusters.whole.wait_for(2)
    names = ["bad-1", "crash-1", "exit-1", "good-1", "hang-1", "rubbish-1"]
    paths = make_documents(tmp_path, *names)
    found = list(batch.check(paths, clusters.whole.client, program=fake, timeout=0.1))
    assert names_of(found) == names
    assert [Path(report.file).stem for report in found if report.problem is None] == ["bad-1", "good-1"]
    clusters.whole.wait_for(2)  # no worker died of it


def test_relative_paths_are_those_of_the_client(
    clusters: SimpleNamespace, fake: str, tmp_path: Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    clusters.whole.wait_for(2)
    make_documents(tmp_path / "in", "bad-1")
    monkeypatch.chdir(tmp_path)
    (report,) = batch.check("in", clusters.whole.client, program=fake)
    assert (report.file, report.errors) == (os.path.join("in", "bad-1.xml"), 1)


def test_few_chunks_are_submitted_at_once(clusters: SimpleNamespace, fake: str, tmp_path: Path) -> None:
    clusters.whole.wait_for(2)
    taken = 0

    def endless() -> Iterator[str]:
        nonlocal taken
        for taken in itertools.count(1):
            yield make_documents(tmp_path, f"good-{taken}", size=10)[0]

    reports = batch.check(endless(), clusters.whole.client, program=fake, chunk_megabytes=5e-5)
    first = list(itertools.islice(reports, 50))
    reports.close()
    assert len(first) == 50
    assert taken <= 50 + 5 * (2 * 2 + 2)  # five in a chunk; two chunks for each thread, one yielded, one begun
    client = clusters.whole.client
    wait_until(lambda: not client.run_on_scheduler(lambda dask_scheduler: len(dask_scheduler.tasks)))


def test_a_file_is_checked_again_by_the_next_run(clusters: SimpleNamespace, tmp_path: Path) -> None:
    clusters.whole.wait_for(2)
    document = tmp_path / "changing.xml"
    codes = []
    for name in ("N_110_not_xml.xml", "P_cyrillic_windows1251.xml"):
        document.write_bytes((GOLDEN / name).read_bytes())
        (report,) = batch.check(document, clusters.whole.client, program=real_program())
        codes.append(report.code)
    assert codes == [110, 0]


def test_an_error_of_the_program_ends_the_run(clusters: SimpleNamespace, tmp_path: Path) -> None:
    clusters.whole.wait_for(2)
    paths = make_documents(tmp_path, "good-1")
    with pytest.raises(batch.ProgramError, match="/no/program' is no program"):
        list(batch.check(paths, clusters.whole.client, program="/no/program"))


def test_an_asynchronous_client_is_refused() -> None:
    with pytest.raises(TypeError, match="asynchronous"):
        batch.check([], SimpleNamespace(asynchronous=True))


def test_the_command_uses_a_cluster(
    clusters: SimpleNamespace, fake: str, tmp_path: Path, capfd: pytest.CaptureFixture[str]
) -> None:
    paths = make_documents(tmp_path, "bad-1", "good-1")
    arguments = [*paths, "--program", fake, "--scheduler", clusters.whole.address]
    assert main(arguments) == 1
    assert sorted(json.loads(line)["file"] for line in capfd.readouterr().out.splitlines()) == paths
    assert main([*paths, "--scheduler", "nonsense://x"]) == 2
    assert "no scheduler at nonsense://x" in capfd.readouterr().err


def test_losing_a_worker_loses_no_document_and_losing_all_ends_the_run(
    clusters: SimpleNamespace, fake: str, tmp_path: Path
) -> None:
    cluster = clusters.shrinking
    cluster.wait_for(2)
    names = [f"slow-{i:02}" for i in range(40)]
    paths = make_documents(tmp_path, *names, size=10)
    doomed, other = clusters.lost
    options: dict[str, Any] = {"program": fake, "chunk_megabytes": 3e-5, "worker_timeout": 1}

    reports = batch.check(paths, cluster.client, **options)
    found = list(itertools.islice(reports, 7))
    wait_until(lambda: looked_at(tmp_path)[-1][1] == doomed.pid)  # it is in the middle of a chunk
    doomed.kill()
    found += reports
    assert names_of(found) == names
    assert {report.problem for report in found} == {None}
    assert {parent for _, parent, _ in looked_at(tmp_path)} == {doomed.pid, other.pid}

    reports = batch.check(paths, cluster.client, **options)
    found = [next(reports)]
    other.kill()
    with pytest.raises(batch.NoWorkersError):
        found += reports
    assert {report.problem for report in found} == {None}
    assert len(found) < len(names)


def test_a_document_that_ends_workers_is_found_among_its_neighbours(
    clusters: SimpleNamespace, fake: str, tmp_path: Path
) -> None:
    clusters.strict.wait_for(2)
    names = ["bad-1", "good-1", "good-2", "good-3", "killer-1", "poor-1"]
    paths = make_documents(tmp_path, *names, size=10)
    found = list(batch.check(paths, clusters.strict.client, program=fake, chunk_megabytes=2e-5))
    assert names_of(found) == names
    problems = {Path(report.file).stem: report.problem for report in found if report.problem}
    assert problems == {"killer-1": "each worker that checked this document was lost"}
    assert [name for name, *_ in looked_at(tmp_path)].count("killer-1.xml") == 2  # with its chunk, and alone


def test_a_lost_scheduler_ends_the_run(clusters: SimpleNamespace, fake: str, tmp_path: Path) -> None:
    cluster = clusters.strict
    cluster.wait_for(2)
    paths = make_documents(tmp_path, *(f"slow-{i}" for i in range(20)), size=10)
    reports = batch.check(paths, cluster.client, program=fake, chunk_megabytes=1e-5, worker_timeout=5)
    assert next(reports).problem is None
    began = time.monotonic()
    cluster.scheduler.kill()
    with pytest.raises(batch.ClusterError):
        list(reports)
    assert time.monotonic() - began < 20
