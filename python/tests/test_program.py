"""The program ztcad: conversion, the viewer's page; the format of meshio."""

from __future__ import annotations

import html
import os
import stat
from pathlib import Path

import meshio
import numpy as np
import pytest
from conftest import CORNERS, FACES, RIG

import ztcad
import ztcad.meshio
from ztcad import _program


def test_a_solid_goes_to_a_mesh_and_back(document: ztcad.Document, tmp_path: Path) -> None:
    document.solids.add("tetrahedron", vertices=CORNERS, faces=FACES)
    mesh = tmp_path / "a.stl"
    ztcad.convert(document, mesh)
    ztcad.convert(mesh, tmp_path / "b.xml", scale=10, name="big", density=2)
    solid = ztcad.load(tmp_path / "b.xml").solids[0]
    assert solid.name == "big"
    assert solid.vertices.max() == 10
    assert solid.mass_data is not None
    assert solid.mass_data[0] == pytest.approx(2000 / 6, rel=1e-5)


def test_references_of_a_converted_document_are_found(tmp_path: Path) -> None:
    with ztcad.Document() as library:
        library.template_solids.add("t", vertices=CORNERS, faces=FACES)
        library.save(tmp_path / "library.xml")
    with ztcad.Document() as document:
        document.solid_references.add("r", template="t", file="library.xml", placement=np.eye(4, 3, -1))
        document.save(tmp_path / "a.xml")
        ztcad.convert(document, tmp_path / "a.obj", to_format="obj")
    assert (tmp_path / "a.obj").read_text().count("\nv ") == 4


def test_what_a_conversion_leaves_out(document: ztcad.Document, tmp_path: Path) -> None:
    document.solids.add("s", vertices=CORNERS, faces=FACES)
    assert ztcad.convert(document, tmp_path / "a.obj") == []
    document.solids[0].extend_faces([(0, 1, 9)])
    (message,) = ztcad.convert(document, tmp_path / "b.obj")
    assert "left out" in message
    assert (tmp_path / "b.obj").read_text().count("\nf ") == 4


def test_failures_of_the_program_are_exceptions(tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> None:
    with pytest.raises(ztcad.ProgramError) as caught:
        ztcad.convert(tmp_path / "no.stl", tmp_path / "a.xml", from_format="stl")
    assert caught.value.code == 2
    assert "no.stl" in str(caught.value)
    monkeypatch.setenv("ZTCAD_PROGRAM", str(tmp_path / "no program"))
    with pytest.raises(ztcad.ProgramError, match="no program' is no program"):
        ztcad.convert(RIG, tmp_path / "a.stl")
    _script(tmp_path / "no program", "", shell="/no/interpreter")
    with pytest.raises(ztcad.ProgramError, match="could not be started"):
        ztcad.convert(RIG, tmp_path / "a.stl")
    monkeypatch.delenv("ZTCAD_PROGRAM")
    monkeypatch.setenv("PATH", str(tmp_path))
    with pytest.raises(ztcad.ProgramError, match="neither in the package nor in PATH"):
        _program.find_program()
    _script(tmp_path / "ztcad", "sleep 60")
    assert _program.find_program() == str(tmp_path / "ztcad")


def _script(path: Path, line: str, shell: str = "/bin/sh") -> None:
    path.write_text(f"#!{shell}\n{line}\n")
    path.chmod(path.stat().st_mode | stat.S_IXUSR)


def test_a_program_that_hangs_or_is_killed(tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setenv("ZTCAD_PROGRAM", str(tmp_path / "ztcad"))
    _script(tmp_path / "ztcad", "exec sleep 60")
    with pytest.raises(ztcad.ProgramError, match="longer than"):
        _program.run(["check"], timeout=0.2)
    _script(tmp_path / "ztcad", "kill -9 $$")
    with pytest.raises(ztcad.ProgramError, match="signal 9"):
        _program.run(["check"])
    _script(tmp_path / "ztcad", "exit 3")
    with pytest.raises(ztcad.ProgramError, match="failed") as caught:
        _program.run(["check"])
    assert caught.value.code == 3


def test_a_notebook_shows_the_page(
    full: ztcad.Document, tmp_path: Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    monkeypatch.setenv("ZTCAD_PROGRAM", str(tmp_path / "ztcad"))
    _script(tmp_path / "ztcad", """[ "$1 $2 $4 $5" = "view -o -- -" ] && echo '<p title="&">' > "$3" """)
    page = full._repr_html_()
    assert page.startswith("<iframe ")
    assert 'sandbox="allow-scripts' in page
    assert "allow-same-origin" not in page
    assert "&lt;p title=&quot;&amp;&quot;&gt;" in page
    _script(tmp_path / "ztcad", "exit 2")
    assert full._repr_html_().startswith("<pre>&lt;Document: 1 Point")
    full.close()
    assert full._repr_html_() == "<pre>&lt;Document, closed&gt;</pre>"


needs_page = pytest.mark.skipif(
    "ZTCAD_TEST_HAS_VIEWER_PAGE" not in os.environ, reason="the program was built without its page"
)


@needs_page
def test_the_page_of_a_file_with_errors_shows_them(tmp_path: Path) -> None:
    ztcad.view(RIG, tmp_path / "page.html")
    page = (tmp_path / "page.html").read_text(encoding="utf-8")
    assert page.startswith("<!doctype html>")
    assert "rig.xml" in page
    assert "missing-centre" in page


@needs_page
def test_a_notebook_shows_the_page_of_the_program(document: ztcad.Document, tmp_path: Path) -> None:
    document.solids.add("тетраэдр & co", vertices=CORNERS, faces=FACES)
    ztcad.view(document, tmp_path / "page.html")
    page = (tmp_path / "page.html").read_text(encoding="utf-8")
    assert "тетраэдр" in page
    frame = document._repr_html_()
    assert frame.startswith("<iframe ")
    assert html.unescape(frame.partition('srcdoc="')[2].removesuffix('"></iframe>')) == page


# --------------------------------------------------------------------------------------------------- meshio


def test_meshio_reads_documents(full: ztcad.Document, tmp_path: Path) -> None:
    full.save(tmp_path / "a.xml")
    mesh = meshio.read(tmp_path / "a.xml", file_format="ztcad")
    assert {block.type for block in mesh.cells} == {"triangle", "line", "vertex"}
    solid = mesh.cell_sets["solid"]
    triangles = next(i for i, block in enumerate(mesh.cells) if block.type == "triangle")
    rows = mesh.cells[triangles].data[solid[triangles]]
    assert np.array_equal(mesh.points[rows], CORNERS[FACES])


def test_meshio_writes_documents(tmp_path: Path) -> None:
    cells = [("triangle", FACES), ("line", [(0, 1), (2, 3)]), ("vertex", [(3,)])]
    path = tmp_path / "a.xml"
    meshio.write(path, meshio.Mesh(CORNERS, cells), file_format="ztcad")
    document = ztcad.load(path)
    assert document.solids[0].mass_properties().volume == pytest.approx(1 / 6)
    assert document.lines[1].vertices.tolist() == CORNERS[2:].tolist()
    assert document.points.centers.tolist() == [CORNERS[3].tolist()]
    again = meshio.read(path, file_format="ztcad")
    assert [len(block.data) for block in again.cells] == [4, 2, 1]


def test_flat_meshes_and_meshes_without_cells(tmp_path: Path) -> None:
    path = tmp_path / "a.xml"
    ztcad.meshio.write(path, meshio.Mesh(CORNERS[:3, :2], [("triangle", [(0, 1, 2)])]))
    assert ztcad.load(path).solids[0].vertices.tolist() == [[0, 0, 0], [1, 0, 0], [0, 1, 0]]
    ztcad.Document().save(path)
    assert len(ztcad.meshio.read(path).points) == 0


def test_problems_do_not_end_the_process(tmp_path: Path) -> None:
    (tmp_path / "a.xml").write_text("<")
    with pytest.raises(ztcad.LoadError):
        meshio.read(tmp_path / "a.xml", file_format="ztcad")
    with pytest.raises(ValueError, match="tetra"):
        meshio.write(
            tmp_path / "b.xml", meshio.Mesh(CORNERS, [("tetra", [(0, 1, 2, 3)])]), file_format="ztcad"
        )
