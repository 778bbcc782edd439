"""Batches on a cluster: a scheduler and workers of dask.distributed, as processes on the loopback."""

from __future__ import annotations

import contextlib
import itertools
import json
import os
import re
import shutil
import signal
import subprocess
import sys
import time
from collections.abc import Iterator
from pathlib import Path
from types import SimpleNamespace
from typing import Any, Optional

import pytest
from batches import looked_at, make_documents, make_fake_program, real_program, wait_until

from ztcad import batch
from ztcad.batch import _chunks
from ztcad.batch.__main__ import main

distributed = pytest.importorskip("distributed")
# of dask itself
pytestmark = pytest.mark.filterwarnings("ignore::DeprecationWarning", "ignore::ResourceWarning")

GOLDEN = Path(__file__).parents[2] / "tests" / "golden"


@pytest.fixture(autouse=True)
def no_ramp(monkeypatch: pytest.MonkeyPatch) -> None:
    """All chunks have the full size."""
    monkeypatch.setattr(_chunks, "RAMP", 1)


class Processes:
    """Starts schedulers and workers, see cluster_processes.py; all end with it."""

    def __init__(self) -> None:
        self._starter = subprocess.Popen(
            [sys.executable, str(Path(__file__).with_name("cluster_processes.py"))],
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            text=True,
        )

    def start(self, what: str, log: Path, arguments: list[str], settings: dict[str, Any]) -> int:
        """The number of the process."""
        assert self._starter.stdin and self._starter.stdout
        request = {"what": what, "log": str(log), "arguments": arguments, "settings": settings}
        self._starter.stdin.write(json.dumps(request) + "\n")
        self._starter.stdin.flush()
        return int(self._starter.stdout.readline())

    def stop(self) -> None:
        self._starter.communicate(timeout=20)


class Cluster:
    """A scheduler and its workers, each of one thread."""

    def __init__(self, processes: Processes, folder: Path, workers: int, **settings: Any) -> None:
        self._file = folder / "scheduler.json"
        self._client: Optional[Any] = None
        common = ["--scheduler-file", str(self._file), "--host", "127.0.0.1", "--no-dashboard"]
        self.scheduler = processes.start("scheduler", folder / "log", [*common, "--port", "0"], settings)
        wait_until(lambda: self._file.exists() and self._file.read_text().endswith("}"), 30)
        self.address = json.loads(self._file.read_text())["address"]
        common += ["--no-nanny", "--nthreads", "1", "--local-directory", str(folder)]
        self.workers = [processes.start("worker", folder / "log", common, settings) for _ in range(workers)]

    @property
    def client(self) -> Any:
        """Connects when all workers are there."""
        if self._client is None:
            self._client = distributed.Client(self.address, set_as_default=False)
            wait_until(lambda: self._threads() == len(self.workers), 30)
        return self._client

    def _threads(self) -> int:
        assert self._client
        return len(self._client.nthreads())

    def stop(self) -> None:
        if self._client is not None:
            with contextlib.suppress(TimeoutError, distributed.TimeoutError):  # its scheduler may be lost
                self._client.close(timeout=1)


@pytest.fixture(scope="module")
def processes() -> Iterator[Processes]:
    processes = Processes()
    yield processes
    processes.stop()


@pytest.fixture(scope="module")
def clusters(processes: Processes, tmp_path_factory: pytest.TempPathFactory) -> Iterator[SimpleNamespace]:
    """One without workers, one that keeps its workers, and two that lose them.

    In "strict" the first worker that is lost is blamed on what it was doing.
    """
    folder = tmp_path_factory.mktemp
    strict = {"distributed.scheduler.allowed-failures": 0}
    named = SimpleNamespace(
        empty=Cluster(processes, folder("empty"), 0),
        whole=Cluster(processes, folder("whole"), 2),
        shrinking=Cluster(processes, folder("shrinking"), 2),
        strict=Cluster(processes, folder("strict"), 3, **strict),
    )
    yield named
    for cluster in vars(named).values():
        cluster.stop()


@pytest.fixture(scope="module")
def fake(tmp_path_factory: pytest.TempPathFactory) -> str:
    return make_fake_program(tmp_path_factory.mktemp("program"))


def names_of(reports: list[batch.DocumentReport]) -> list[str]:
    return sorted(Path(report.file).stem for report in reports)


def test_a_cluster_without_workers_ends_the_run(clusters: SimpleNamespace, fake: str, tmp_path: Path) -> None:
    client = clusters.empty.client
    began = time.monotonic()
    reports = batch.check(make_documents(tmp_path, "good-1"), client, program=fake, worker_timeout=1)
    with pytest.raises(batch.NoWorkersError, match="has had no worker for 1 s"):
        next(reports)
    assert 1 <= time.monotonic() - began < 30


def test_a_cluster_reports_as_one_machine_does(clusters: SimpleNamespace) -> None:
    seen: list[batch.Progress] = []
    options: dict[str, Any] = {"program": real_program(), "level": "note", "chunk_megabytes": 0.02}
    spread = list(batch.check(GOLDEN, clusters.whole.client, progress=seen.append, **options))
    local = list(batch.check(GOLDEN, **options))
    assert sorted(spread, key=lambda r: r.file) == sorted(local, key=lambda r: r.file)
    assert seen[-1].documents == len(spread) > 100
    assert seen[-1].workers == 2


def test_a_document_that_misbehaves_has_a_problem(
    clusters: SimpleNamespace, fake: str, tmp_path: Path
) -> None:
    names = ["bad-1", "crash-1", "exit-1", "good-1", "hang-1", "rubbish-1"]
    paths = make_documents(tmp_path, *names)
    found = list(batch.check(paths, clusters.whole.client, program=fake, timeout=5))
    assert names_of(found) == names
    problems = {Path(report.file).stem: report.problem for report in found if report.problem}
    assert sorted(problems) == ["crash-1", "exit-1", "hang-1", "rubbish-1"], problems
    assert len(clusters.whole.client.nthreads()) == 2  # no worker died of it


def test_relative_paths_are_those_of_the_client(
    clusters: SimpleNamespace, fake: str, tmp_path: Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    make_documents(tmp_path / "in", "bad-1")
    monkeypatch.chdir(tmp_path)
    (report,) = batch.check("in", clusters.whole.client, program=fake)
    assert (report.file, report.errors) == (os.path.join("in", "bad-1.xml"), 1)


def test_few_chunks_are_submitted_at_once(clusters: SimpleNamespace, fake: str, tmp_path: Path) -> None:
    taken = 0

    def endless() -> Iterator[str]:
        nonlocal taken
        for taken in itertools.count(1):
            yield make_documents(tmp_path, f"good-{taken}", size=10)[0]

    reports = batch.check(endless(), clusters.whole.client, program=fake, chunk_megabytes=5e-5)
    first = list(itertools.islice(reports, 50))
    reports.close()
    assert len(first) == 50
    # five in a chunk; two chunks for each of the two threads, one that is yielded, one that is begun
    assert taken <= 50 + 5 * (2 * 2 + 2)
    client = clusters.whole.client
    # nothing is left on the cluster
    wait_until(lambda: not any(client.run_on_scheduler(lambda dask_scheduler: list(dask_scheduler.tasks))))


def test_a_file_is_checked_again_by_the_next_run(clusters: SimpleNamespace, tmp_path: Path) -> None:
    document = tmp_path / "changing.xml"
    codes = []
    for name in ("N_110_not_xml.xml", "P_cyrillic_windows1251.xml"):
        document.write_bytes((GOLDEN / name).read_bytes())
        (report,) = batch.check(document, clusters.whole.client, program=real_program())
        codes.append(report.code)
    assert codes == [110, 0]


def test_an_error_of_the_program_ends_the_run(clusters: SimpleNamespace, tmp_path: Path) -> None:
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


def test_the_examples_of_the_page_run(
    clusters: SimpleNamespace,
    tmp_path: Path,
    monkeypatch: pytest.MonkeyPatch,
    capsys: pytest.CaptureFixture[str],
) -> None:
    pytest.importorskip("pandas")
    shutil.copytree(GOLDEN, tmp_path / "models")
    monkeypatch.chdir(tmp_path)
    page = (GOLDEN.parents[1] / "docs" / "batch.md").read_text(encoding="utf-8")
    blocks = re.findall(r"(?m)(^<!-- not run -->\n)?^```python\n(.*?)^```$", page, re.DOTALL)
    names: dict[str, Any] = {}
    printed = []
    for _, block in (found for found in blocks if not found[0]):
        exec(block.replace("tcp://10.0.0.1:8786", clusters.whole.address), names)
        printed.append(capsys.readouterr().out)
    documents = [path for path in (tmp_path / "models").glob("*.xml")]
    assert "error: " in printed[0]
    assert names["first"].errors
    assert "missing-centre" in printed[2]
    assert len((tmp_path / "report.jsonl").read_text().splitlines()) == len(documents)
    assert 0 < len(names["failed"]) < len(documents)
    assert len(printed[-1].splitlines()) == len(documents)


def test_losing_a_worker_loses_no_document_and_losing_all_ends_the_run(
    clusters: SimpleNamespace, fake: str, tmp_path: Path
) -> None:
    cluster = clusters.shrinking
    names = [f"slow-{i:02}" for i in range(24)]
    paths = make_documents(tmp_path, *names, size=10)
    doomed, other = cluster.workers
    options: dict[str, Any] = {"program": fake, "chunk_megabytes": 3e-5, "worker_timeout": 1}

    reports = batch.check(paths, cluster.client, **options)
    found = list(itertools.islice(reports, 4))
    while looked_at(tmp_path)[-1][1] != doomed:  # until it is in the middle of a chunk
        found.append(next(reports))  # the run does not go on by itself
    os.kill(doomed, signal.SIGKILL)
    found += reports
    assert names_of(found) == names
    assert {report.problem for report in found} == {None}
    assert {parent for _, parent, _ in looked_at(tmp_path)} == {doomed, other}

    reports = batch.check(paths, cluster.client, **options)
    found = [next(reports)]
    os.kill(other, signal.SIGKILL)
    with pytest.raises(batch.NoWorkersError):
        found += reports
    assert {report.problem for report in found} == {None}
    assert len(found) < len(names)


def test_a_document_that_ends_workers_is_found_among_its_neighbours(
    clusters: SimpleNamespace, fake: str, tmp_path: Path
) -> None:
    names = ["bad-1", "good-1", "good-2", "good-3", "killer-1", "poor-1"]
    paths = make_documents(tmp_path, *names, size=10)
    found = list(batch.check(paths, clusters.strict.client, program=fake, chunk_megabytes=2e-5))
    assert names_of(found) == names
    problems = {Path(report.file).stem: report.problem for report in found if report.problem}
    assert problems == {"killer-1": "each worker that checked this document was lost"}
    assert [name for name, *_ in looked_at(tmp_path)].count("killer-1.xml") == 2  # with its chunk, and alone


def test_a_lost_scheduler_ends_the_run(clusters: SimpleNamespace, fake: str, tmp_path: Path) -> None:
    cluster = clusters.strict
    paths = make_documents(tmp_path, *(f"slow-{i}" for i in range(20)), size=10)
    reports = batch.check(paths, cluster.client, program=fake, chunk_megabytes=1e-5, worker_timeout=5)
    assert next(reports).problem is None
    began = time.monotonic()
    os.kill(cluster.scheduler, signal.SIGKILL)
    with pytest.raises(batch.ClusterError):
        list(reports)
    assert time.monotonic() - began < 60
