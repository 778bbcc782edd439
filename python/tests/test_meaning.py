"""Findings, scenes, mass properties."""

from __future__ import annotations

import json
import sys
import types
from pathlib import Path
from typing import Any

import numpy as np
import pytest
from conftest import CORNERS, FACES, MASS, PLACE, RIG, full_document

import ztcad


def test_findings_of_a_file() -> None:
    findings = ztcad.check(RIG)
    assert not findings.ok
    assert findings.outcome.code == 0
    assert findings.outcome.fault
    first = findings[0]
    assert first in findings.errors
    assert (first.severity, first.rule) == ("error", "missing-centre")
    assert (first.kind, first.name) == ("point", "hinge")
    assert first.place is not None
    assert (first.line, first.column, first.offset) == first.place
    assert str(first).startswith(f"{RIG}:{first.line}:{first.column}: error: ")
    assert first.to_dict()["rule"] == "missing-centre"
    assert [f.rule for f in findings.warnings][:1] == ["unknown-method"]
    assert [f.rule for f in findings.notes] == ["unused-vertex"]
    assert len(findings[1:]) == len(findings) - 1
    assert repr(findings) == "<Findings: 3 errors, 3 warnings, 1 notes>"
    assert str(findings).count("\n") == len(findings) - 1
    lines = RIG.read_text().splitlines()
    assert all(f.place and lines[f.line - 1][f.column - 1 :] for f in findings)


def test_a_limit_counts_what_it_leaves_out() -> None:
    findings = ztcad.check(RIG, limit=1)
    assert len(findings) == 1
    assert sum(findings.omitted.values()) == 6
    assert not findings.ok
    none = ztcad.check(RIG, limit=0)
    assert len(none) == 0
    assert not none.ok


def test_the_readers_findings_alone() -> None:
    rules = {finding.rule for finding in ztcad.check(RIG, inspect=False)}
    assert "missing-centre" in rules
    assert "index-out-of-range" not in rules


def test_what_is_no_document_is_a_finding(tmp_path: Path) -> None:
    (tmp_path / "a.xml").write_text("<GMD>")
    findings = ztcad.check(tmp_path / "a.xml")
    assert findings.outcome.code == 110
    assert len(findings.errors) == 1
    with pytest.raises(FileNotFoundError):
        ztcad.check(tmp_path / "b.xml")


def test_findings_of_a_document() -> None:
    document = ztcad.Document()
    assert document.check().ok
    document.solids.add("open", vertices=CORNERS, faces=FACES[:3])
    document.point_references.add("lost", template="nowhere")
    findings = ztcad.check(document)
    assert {f.rule for f in findings} >= {"template-missing", "open-edge"}
    open_edge = next(f for f in findings if f.rule == "open-edge")
    assert open_edge.place is None
    assert (open_edge.line, open_edge.column, open_edge.offset) == (0, 0, 0)
    assert "The first edges: " in open_edge.message
    assert str(open_edge).startswith("/GMD/solid[1]: ")
    assert len(ztcad.check(document, limit=1)) == 1
    assert sum(ztcad.check(document, limit=1).omitted.values()) == len(findings) - 1


def test_repeats_in_a_list_are_one_finding() -> None:
    text = (
        '<GMD><header majorVersion="1" minorVersion="0"/><line name="l" method="polyline">'
        "<vertices>1, 2, 3;\nx, 2, 3;\n1, y, 3;</vertices></line></GMD>"
    )
    finding = next(f for f in ztcad.check_text(text) if f.count > 1)
    assert finding.count == 2
    assert [place.line for place in finding.places] == [2, 3]
    with pytest.raises(TypeError, match="no option 'nonsense'"):
        ztcad.check_text(text, nonsense=1)


def test_a_table_of_findings() -> None:
    pytest.importorskip("pandas")
    findings = ztcad.check(RIG)
    table = findings.to_dataframe()
    assert table["rule"].tolist() == [finding.rule for finding in findings]
    assert table["line"].tolist() == [finding.line for finding in findings]
    assert set(table["file"]) == {str(RIG)}
    without_text = ztcad.load(RIG, strict=False).check().to_dataframe()
    assert len(without_text) > 0
    assert without_text["line"].isna().all()


def test_a_finding_as_json() -> None:
    for finding in [*ztcad.check(RIG), *ztcad.load(RIG, strict=False).check()]:
        record = json.loads(json.dumps(finding.to_dict()))
        assert ztcad.Finding.from_dict(record, finding.file) == finding


def test_rules() -> None:
    rules = ztcad.rules()
    assert list(rules) == sorted(rules)
    assert rules["open-edge"].severity in {"error", "warning", "note"}
    assert rules["missing-centre"].since == "0.2"
    assert {finding.rule for finding in ztcad.check(RIG)} <= set(rules)


# -------------------------------------------------------------------------------------------------- scenes


def test_a_scene_places_everything(full: ztcad.Document) -> None:
    scene = full.scene()
    assert len(scene) == len(list(scene)) > 15
    placed = next(item for item in scene if item.kind == "point-reference" and item.name == "placed")
    assert placed.shape is not None
    assert placed.shape.kind == "point"
    # the template is at 4, 5, 6; the reference and its structure move it by 1, 2, 3 each
    assert placed.vertices.tolist() == [[6, 9, 12]]
    assert scene[placed.parent].kind == "structure"
    element = full.find(placed.path)
    assert element is not None
    assert element.name == "placed"
    assert np.array_equal(scene.transforms, [item.transform for item in scene])
    assert scene[0].path.startswith("/GMD/")
    assert scene[0:2] == list(scene)[:2]
    assert placed.transform.shape == (3, 4)
    shared = [item for item in scene if item.shape is not None]
    assert len({id(item.shape) for item in shared}) < len(shared)  # templates are shared
    point = next(item for item in scene if item.name == "point")
    assert point.color == (1, 2, 3)
    assert point.visible
    holder = next(item for item in scene if item.kind == "structure")
    assert holder.shape is None
    assert holder.vertices.shape == (0, 3)
    assert holder.color is None
    assert repr(scene).startswith(f"<Scene of {len(scene)} items")
    assert repr(scene[0]).startswith("<Item /GMD/")
    assert repr(placed.shape) == "<Shape point>"


def test_a_scene_outlives_its_document() -> None:
    document = full_document()
    scene = document.scene()
    document.close()
    mesh = next(item for item in scene if item.shape is not None and item.shape.kind == "mesh")
    assert mesh.shape is not None
    assert np.array_equal(mesh.shape.faces, FACES)


def test_bounds_contain_balls() -> None:
    document = ztcad.Document()
    assert document.scene().bounds is None
    document.spheres.add("ball", center=(1, 0, 0), radius=2, lcs=PLACE)
    bounds = document.scene().bounds
    assert bounds is not None
    assert bounds.tolist() == [[0, 0, 1], [4, 4, 5]]
    document.points.add_many([(-5, 1, 1), (0, 9, 0)])
    document.lines.add("line", vertices=[(0, 0, -7), (0, 0, 0)])
    bounds = document.scene().bounds
    assert bounds is not None
    assert bounds.tolist() == [[-5, 0, -7], [4, 9, 5]]


def test_references_to_files(tmp_path: Path) -> None:
    with ztcad.Document() as library:
        library.template_points.add("bolt", center=(1, 1, 1))
        library.save(tmp_path / "library.xml")
    with ztcad.Document() as document:
        document.point_references.add("r", template="bolt", file="library.xml", placement=PLACE)
        document.save(tmp_path / "a.xml")
    document = ztcad.load(tmp_path / "a.xml")
    scene = document.scene()
    assert scene.files == ["library.xml"]
    assert scene[0].vertices.tolist() == [[2, 3, 4]]
    assert document.scene(read_files=False).files == []
    assert ztcad.check(document, read_files=False).warnings + ztcad.check(document, read_files=False).errors
    assert document.scene(allowed_folder=tmp_path).files == ["library.xml"]


def test_options() -> None:
    options = ztcad.options()
    assert options["system_order"] == [0, 1, 2, 3]
    assert options["allowed_folder"] is None
    with pytest.raises(ValueError, match=r"\."):
        full_document().scene(system_order=[0, 0, 0, 0])
    with pytest.raises(TypeError, match="no option"):
        full_document().scene(nothing=1)
    assert len(full_document().scene(greatest_item_count=3)) == 3


# -------------------------------------------------------------------------------------------------- mass


def test_mass_properties_of_a_solid(document: ztcad.Document) -> None:
    solid = document.solids.add("s", vertices=CORNERS, faces=FACES, mass_data=MASS)
    unit = solid.mass_properties()
    assert unit.mass is None
    assert unit.volume == pytest.approx(1 / 6)
    assert unit.area == pytest.approx(1.5 + np.sqrt(3) / 2)
    assert unit.center.tolist() == pytest.approx([0.25] * 3)
    with pytest.raises(ValueError, match="give a density"):
        unit.to_mass_data()
    steel = solid.mass_properties(density=7.8)
    assert steel.mass == pytest.approx(7.8 / 6)
    assert np.allclose(steel.inertia, 7.8 * unit.inertia)
    assert steel.error < 1e-12
    solid.mass_data = steel.to_mass_data()
    declared = solid.declared_mass
    assert declared is not None
    assert declared.mass == pytest.approx(steel.mass)
    assert np.allclose(declared.inertia, steel.inertia)
    assert declared.volume is None
    assert document.check().ok
    solid.mass_data = None
    assert solid.declared_mass is None
    with pytest.raises(ValueError, match="density must be positive"):
        solid.mass_properties(density=-1)


def test_reasons_why_there_are_none(document: ztcad.Document) -> None:
    solid = document.solids.add("s", vertices=CORNERS, faces=FACES[:3])
    with pytest.raises(ValueError, match="not closed"):
        solid.mass_properties(density=1)
    with pytest.raises(ValueError, match="radius"):
        document.spheres.add("b", center=(0, 0, 0)).mass_properties()


def test_a_ball() -> None:
    sphere = ztcad.Document().spheres.add("b", center=(1, 2, 3), radius=2)
    ball = sphere.mass_properties(density=3)
    assert ball.mass == pytest.approx(3 * 4 / 3 * np.pi * 8)
    assert ball.center.tolist() == [1, 2, 3]


def test_meshes() -> None:
    mesh = ztcad.analyse(CORNERS, FACES[:3])
    assert (mesh.vertex_count, mesh.facet_count, mesh.edge_count, mesh.shell_count) == (4, 3, 6, 1)
    assert not mesh.is_closed
    assert not mesh.is_inside_out
    assert mesh.faults == {"open edges": 3}
    assert mesh.bounds.tolist() == [[0, 0, 0], [1, 1, 1]]
    assert repr(mesh) == "<Mesh of 4 vertices and 3 facets, open, 3 open edges>"
    (finding,) = mesh.findings
    assert (finding.rule, finding.count, finding.place_kind) == ("open-edge", 3, "edge")
    assert finding.places == ((1, 2), (1, 3), (2, 3))
    assert ztcad.analyse(CORNERS, FACES[:, ::-1]).is_inside_out
    degenerate = ztcad.analyse(CORNERS, [(0, 0, 1)]).findings
    assert any(f.place_kind == "facet" and f.places == (0,) for f in degenerate)
    with pytest.raises(ValueError, match="shape"):
        ztcad.analyse(CORNERS[:, :2], FACES)


def test_mass_table(full: ztcad.Document) -> None:
    table = full.mass_table(density=2)
    assert len(table) == len(list(table))
    solid = next(row for row in table if row.name == "solid")
    assert solid.declared is not None
    assert solid.declared.mass == pytest.approx(0.8)
    assert solid.computed is not None
    assert solid.computed.mass == pytest.approx(2 / 6)
    assert table[0:1] == [table[0]]
    assert any(row.is_template for row in table)
    assert repr(table).startswith(f"<MassTable of {len(table)} rows, total mass ")
    assert "unknown" in repr(ztcad.Document().mass_table())


# -------------------------------------------------------------------------------------------------- trimesh


@pytest.fixture
def trimesh(monkeypatch: pytest.MonkeyPatch) -> Any:
    """A stand-in that records what it is given: Debian has no trimesh."""
    module = types.ModuleType("trimesh")

    class Trimesh:
        def __init__(self, **arguments: Any) -> None:
            self.arguments = arguments

    class Scene:
        def __init__(self) -> None:
            self.added: list[tuple[Trimesh, dict[str, Any]]] = []

        def add_geometry(self, mesh: Trimesh, **arguments: Any) -> None:
            self.added.append((mesh, arguments))

    module.Trimesh, module.Scene = Trimesh, Scene  # type: ignore[attr-defined]
    monkeypatch.setitem(sys.modules, "trimesh", module)
    return module


def test_solids_and_scenes_for_trimesh(trimesh: Any, full: ztcad.Document) -> None:
    solid = full.solids[0]
    mesh = solid.to_trimesh(metadata={"a": 1})
    assert np.array_equal(mesh.arguments["vertices"], CORNERS)
    assert mesh.arguments["vertices"].flags.writeable
    assert mesh.arguments["faces"].dtype == np.int64
    assert mesh.arguments["process"] is False
    assert mesh.arguments["metadata"] == {"a": 1}
    solid.vertices = CORNERS  # the mesh uses no memory of the document
    added = full.scene().to_trimesh().added
    assert len(added) == 3
    assert {arguments["transform"].shape for _, arguments in added} == {(4, 4)}
