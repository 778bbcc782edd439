"""The boundary to the two C libraries: lock, threads, forks, reports."""

from __future__ import annotations

import logging
import os
import threading
import time
from concurrent.futures import ThreadPoolExecutor

import numpy as np
import pytest
from conftest import CORNERS, MASS, RIG, ROOT, content_of, full_document

import ztcad
from ztcad import _library
from ztcad._native import lib


def test_version_is_that_of_the_library() -> None:
    project = (ROOT / "CMakeLists.txt").read_text(encoding="utf-8")
    assert f"project(ztCAD VERSION {ztcad.__version__} " in project


def test_every_function_of_both_interfaces_is_there() -> None:
    # the declarations come from the headers: one function from each of them
    for name in ("ztCAD_loadDocument", "crtPoint_nostl", "ztCAD_getCenters", "ztCADInspect_openScene"):
        assert callable(getattr(lib, name))


def test_threads_take_turns() -> None:
    expected = content_of(full_document())

    def work(number: int) -> bool:
        document = full_document()
        again = ztcad.loads(document.to_bytes())
        ztcad.check(RIG)
        return content_of(again) == expected

    with ThreadPoolExecutor(8) as pool:
        assert all(pool.map(work, range(24)))


def test_one_document_may_be_shared_by_threads() -> None:
    document = ztcad.Document()

    def add(number: int) -> None:
        for i in range(50):
            document.points.add(f"{number} {i}", center=(number, i, 0))

    with ThreadPoolExecutor(4) as pool:
        list(pool.map(add, range(4)))
    assert len(document.points) == 200
    assert sorted(map(tuple, document.points.centers.tolist())) == [
        (float(n), float(i), 0.0) for n in range(4) for i in range(50)
    ]


def test_other_threads_run_while_the_library_works() -> None:
    document = ztcad.Document()
    document.points.add_many(np.zeros((100_000, 3)))
    data = document.to_bytes()
    ticks = 0
    done = threading.Event()

    def tick() -> None:
        nonlocal ticks
        while not done.is_set():
            ticks += 1
            time.sleep(0.0005)

    thread = threading.Thread(target=tick)
    thread.start()
    before = ticks
    ztcad.loads(data)
    during = ticks - before
    done.set()
    thread.join()
    assert during > 3


@pytest.mark.skipif(not hasattr(os, "fork"), reason="the system has no fork")
def test_a_child_process_can_go_on() -> None:
    document = full_document()
    stop = threading.Event()

    def busy() -> None:
        while not stop.is_set():
            ztcad.loads(b"<GMD/>", strict=False)

    thread = threading.Thread(target=busy)  # likely in the library when the fork comes
    thread.start()
    try:
        for _ in range(10):
            child = os.fork()
            if child == 0:
                try:
                    document.points.add("in the child", center=(0, 0, 0))
                    os._exit(0 if len(ztcad.loads(document.to_bytes()).points) == 2 else 1)
                except BaseException:
                    os._exit(2)
            deadline = time.monotonic() + 60
            while True:
                pid, status = os.waitpid(child, os.WNOHANG)
                if pid:
                    break
                if time.monotonic() > deadline:
                    os.kill(child, 9)
                    pytest.fail("the child process hangs")
                time.sleep(0.005)
            assert os.waitstatus_to_exitcode(status) == 0
    finally:
        stop.set()
        thread.join()
    assert len(document.points) == 1


def test_reports_of_the_library_are_logged(caplog: pytest.LogCaptureFixture) -> None:
    with caplog.at_level(logging.ERROR, logger="ztcad"):
        _library.lib.ztCAD_report(b"1 == 2", b"file.cpp", 7)
    assert "1 == 2" in caplog.text
    assert "file.cpp" in caplog.text


def test_names_in_any_script_come_back() -> None:
    document = ztcad.Document()
    names = ["", "деталь", "部品", "🔩", "a b", "é" * 64, "ж" * 63 + "x"]
    for name in names:
        assert document.points.add(name).name == name
    assert document.points.names == names
    detail = document.details.add("d", mass_data=MASS)
    detail.lines.add("🔩", vertices=CORNERS)
    assert detail.lines["🔩"].name == "🔩"
