"""Documents: load, save, reload, close, header, errors."""

from __future__ import annotations

import os
from collections.abc import Callable
from pathlib import Path
from typing import Any

import numpy as np
import pytest
from conftest import CORNERS, RIG, content_of

import ztcad

NOT_SOUND = '<GMD><header majorVersion="1" minorVersion="0"/><structure name="s"><point/></structure></GMD>'


def test_a_saved_document_comes_back_equal(full: ztcad.Document, tmp_path: Path) -> None:
    path = tmp_path / "документ.xml"
    full.save(path)
    assert full.path == path
    again = ztcad.load(path)
    assert again.path == path
    assert again.outcome == ztcad.Outcome(0, False, "")
    assert content_of(again) == content_of(full)
    assert again.inform == "everything"
    assert again.is_sound


def test_bytes_are_those_of_a_save(full: ztcad.Document, tmp_path: Path) -> None:
    full.save(tmp_path / "a.xml")
    data = full.to_bytes()
    assert data == (tmp_path / "a.xml").read_bytes()
    assert content_of(ztcad.loads(data)) == content_of(full)
    assert content_of(ztcad.loads(data.decode("cp1251"))) == content_of(full)


def test_save_without_a_path_writes_where_the_document_comes_from(
    document: ztcad.Document, tmp_path: Path
) -> None:
    with pytest.raises(ValueError, match="no file yet"):
        document.save()
    path = tmp_path / "a.xml"
    document.save(os.fspath(path))
    document.points.add("p", center=(0, 0, 0))
    document.save()
    assert len(ztcad.load(path).points) == 1


def test_a_save_that_fails_says_why(document: ztcad.Document, tmp_path: Path) -> None:
    with pytest.raises(ztcad.SaveError) as caught:
        document.save(tmp_path / "missing" / "a.xml")
    assert caught.value.code != 0
    assert caught.value.path == os.fspath(tmp_path / "missing" / "a.xml")
    assert str(caught.value).endswith(f"(code {caught.value.code})")
    assert document.path is None


def test_a_missing_file_is_also_a_file_not_found_error(tmp_path: Path) -> None:
    with pytest.raises(FileNotFoundError) as caught:
        ztcad.load(tmp_path / "no.xml")
    assert isinstance(caught.value, ztcad.MissingFileError)
    assert caught.value.code == 100


def test_a_malformed_text_has_line_and_column() -> None:
    with pytest.raises(ztcad.LoadError) as caught:
        ztcad.loads("<GMD>\n  <point")
    error = caught.value
    assert (error.code, error.line) == (110, 2)
    assert error.column > 0
    assert f"{error.line}:{error.column}:" in str(error)


def test_a_document_that_fails_the_check_is_returned_on_request() -> None:
    with pytest.raises(ztcad.LoadError) as caught:
        ztcad.loads(NOT_SOUND)
    assert caught.value.code == 120
    document = ztcad.loads(NOT_SOUND, strict=False)
    assert document.outcome.code == 120
    assert document.outcome.message
    assert not document.is_sound
    assert len(document.structures) == 1


def test_another_root_is_no_document() -> None:
    with pytest.raises(ztcad.LoadError) as caught:
        ztcad.loads("<other/>", strict=False)
    assert caught.value.code == 120


def test_faults_are_no_exceptions() -> None:
    assert ztcad.load(RIG).outcome.fault


def test_reload_replaces_the_content(tmp_path: Path) -> None:
    path = tmp_path / "a.xml"
    with ztcad.Document() as other:
        other.points.add("new", center=(1, 2, 3))
        other.save(path)
    document = ztcad.Document()
    old = document.points.add("old", center=(0, 0, 0))
    points = document.points
    with pytest.raises(ValueError, match="no file yet"):
        document.reload()
    document.reload(path)
    assert document.points.names == ["new"]
    with pytest.raises(ztcad.RemovedError, match="loaded again"):
        _ = old.name
    with pytest.raises(ztcad.RemovedError):
        len(points)
    assert repr(old) == "<Point, gone>"
    assert document.points[0].document is document


def test_a_reload_that_fails_changes_nothing(tmp_path: Path) -> None:
    document = ztcad.Document()
    point = document.points.add("kept", center=(0, 0, 0))
    (tmp_path / "bad.xml").write_text("<")
    with pytest.raises(ztcad.LoadError):
        document.reload(tmp_path / "bad.xml")
    assert point.name == "kept"


def test_a_reload_is_refused_while_arrays_are_alive(document: ztcad.Document) -> None:
    document.lines.add("l", vertices=CORNERS)
    view = document.lines[0].vertices
    with pytest.raises(BufferError, match="an array uses this memory"):
        document.reload(RIG)
    del view
    document.reload(RIG)


def test_a_closed_document_refuses_everything(tmp_path: Path) -> None:
    with ztcad.Document() as document:
        point = document.points.add("p", center=(0, 0, 0))
    assert document.closed
    assert repr(document) == "<Document, closed>"
    uses: list[Callable[[], Any]] = [
        lambda: document.points[0],
        lambda: len(document.points),
        lambda: point.name,
        lambda: point.remove(),
        lambda: document.save(tmp_path / "a.xml"),
        lambda: document.to_bytes(),
        lambda: document.header.inform,
        lambda: document.find("/GMD"),
        lambda: document.__enter__(),
        lambda: point.document,
    ]
    for use in uses:
        with pytest.raises(ztcad.ClosedError):
            use()
    with pytest.raises(ValueError, match="closed"):  # as a closed file
        _ = point.name
    document.close()  # a second time


def test_header_fields_are_optional() -> None:
    document = ztcad.Document("text")
    header = document.header
    assert header.inform == document.inform == "text"
    header.major_version, header.minor_version = 3, 4
    header.producer_name, header.producer_version, header.producer_platform = "test", "1", None
    document.inform = "деталь"
    again = ztcad.loads(document.to_bytes()).header
    assert (again.major_version, again.minor_version, again.inform) == (3, 4, "деталь")
    assert again.state is None  # nothing was wrong
    assert again.producer_name is None  # not read
    assert (header.producer_name, header.producer_version) == ("test", "1")
    assert header.producer_platform is None
    header.minor_version = None
    header.inform = None
    assert header.minor_version is None
    assert document.inform == ""
    assert "version 3.None" in repr(header)


def test_texts_must_be_texts(document: ztcad.Document) -> None:
    with pytest.raises(ValueError, match="null character"):
        ztcad.Document("a\0b")
    with pytest.raises(TypeError, match="must be a str"):
        document.points.add(7)  # type: ignore[arg-type]
    assert len(document.points) == 0
    with pytest.raises(TypeError, match="must be a str"):
        document.header.inform = b"bytes"  # type: ignore[assignment]


def test_paths_lead_to_elements_and_back(full: ztcad.Document) -> None:
    found = full.find("/GMD/structure[1]/structure[1]/detail[1]/solid[1]")
    assert isinstance(found, ztcad.Sphere)
    assert found is full.structures[0].structures[0].details[0].spheres[0]
    assert full.path_of(found) == "/GMD/structure[1]/structure[1]/detail[1]/solid[1]"
    assert full.find("/GMD/point[9]") is None
    assert full.find_all("in it") == [
        full.template_details[0].points[0],
        full.template_structures[0].points[0],
    ] or len(full.find_all("in it")) == 2
    assert full.find_all("no such name") == []
    with pytest.raises(ValueError, match="not in this document"):
        full.path_of(ztcad.Document().points.add("elsewhere"))


def test_walk_visits_everything(full: ztcad.Document) -> None:
    names = [element.name for element in full.walk()]
    assert "ball" in names
    assert "hole" in names
    assert names.index("nested") < names.index("deep") < names.index("ball")
    assert len(names) == 27


def test_text_forms(full: ztcad.Document) -> None:
    assert "point" in full.to_text()
    assert full.points[0].to_text() == "1, 2, 3;"
    assert "coord" in full.points[0].to_text(debug=True)
    assert repr(full).startswith("<Document: 1 Point, 1 Line, 1 Solid, 1 Sphere, 1 MassElement")
    assert repr(ztcad.Document()) == "<Document: empty>"
    assert repr(ztcad.load(RIG)).startswith(f"<Document {str(RIG)!r}: 2 Points")


def test_the_document_object_may_go_before_its_elements(no_collector: None) -> None:
    point = ztcad.Document().points.add("p", center=(0, 0, 0))
    again = point.document
    assert again.points[0] is point
    assert point.holder is again
    assert np.array_equal(again.points.centers, [(0, 0, 0)])
