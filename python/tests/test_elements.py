"""Elements: their fields, holders and ends."""

from __future__ import annotations

from typing import Any

import numpy as np
import pytest
from conftest import CORNERS, FACES, MASS, PLACE, content_of, equal

import ztcad


def test_fields_of_every_element(document: ztcad.Document) -> None:
    point = document.points.add()
    assert (point.name, point.comment, point.inform) == ("", "", "")
    assert point.color is None
    assert point.visible is None
    assert point.lcs is None
    assert point.center is None
    assert point.method == "pointXYZ"
    assert repr(point) == "<Point '' without a centre>"
    point.name, point.comment, point.inform, point.method = "имя", "c", "i", "m"
    point.color = (255, 2**32 - 1, 0)
    point.visible = False
    point.lcs = PLACE
    point.center = [1, 2, 3]
    assert (point.name, point.comment, point.inform, point.method) == ("имя", "c", "i", "m")
    assert point.color == (255, 2**32 - 1, 0)
    assert point.visible is False
    assert equal(point.lcs, PLACE)
    assert equal(point.center, [1, 2, 3])
    point.color = point.visible = point.lcs = point.center = None
    assert point.color is None
    assert point.visible is None
    assert point.lcs is None
    assert point.center is None
    point.lcs = PLACE.reshape(12)
    assert equal(point.lcs, PLACE)


def test_long_texts_come_back_whole(document: ztcad.Document) -> None:
    point = document.points.add("x" * 127, comment="ж" * 1000)
    assert point.name == "x" * 127
    assert point.comment == "ж" * 1000
    point.name = "y" * 128
    assert point.name == "y" * 128


@pytest.mark.parametrize(
    ("field", "value"),
    [
        ("center", (1, 2)),
        ("center", [[1, 2, 3]]),
        ("center", "abc"),
        ("lcs", (1, 2, 3)),
        ("lcs", np.zeros((3, 4))),
        ("color", (1, 2, -3)),
        ("color", (1, 2, 2**32)),
        ("vertices", (1, 2, 3)),
        ("vertices", np.zeros((2, 2))),
        ("faces", [(0, 1, -1)]),
        ("faces", [(0, 1, 2**32)]),
        ("faces", [(0, 1)]),
        ("mass_data", (1, 2)),
    ],
)
def test_values_of_the_wrong_shape_or_range(document: ztcad.Document, field: str, value: Any) -> None:
    holder: Any = document.solids if field in {"vertices", "faces", "mass_data"} else document.points
    element = holder.add("e")
    with pytest.raises(ValueError):  # noqa: PT011: the texts differ
        setattr(element, field, value)


def test_indices_and_colours_are_integers(document: ztcad.Document) -> None:
    solid = document.solids.add("s")
    with pytest.raises(TypeError, match="must be integers"):
        solid.faces = [(0.5, 1.0, 2.0)]
    with pytest.raises(TypeError, match="must be integers"):
        solid.color = (0.5, 0.5, 0.5)


def test_copies_refuse_writing(full: ztcad.Document) -> None:
    center = full.points[0].center
    assert center is not None
    with pytest.raises(ValueError, match="read-only"):
        center[0] = 5
    with pytest.raises(ValueError, match="read-only"):
        full.points.centers[0, 0] = 5


def test_spheres(document: ztcad.Document) -> None:
    sphere = document.spheres.add("s", center=(1, 2, 3))
    assert repr(sphere).endswith("radius None>")
    before = sphere.is_sound
    sphere.radius = 2.5
    assert sphere.radius == 2.5
    assert (before, sphere.is_sound) == (False, True)
    assert repr(sphere) == "<Sphere 's' at (1.0, 2.0, 3.0) radius 2.5>"
    sphere.radius = None
    assert repr(sphere).endswith("radius None>")


def test_mass_data(document: ztcad.Document) -> None:
    element = document.mass_elements.add("m", mass_data=MASS)
    assert equal(element.mass_data, MASS)
    assert repr(element) == "<MassElement 'm' of mass 0.8>"
    element.mass_data = None
    assert element.mass_data is None
    assert repr(element) == "<MassElement 'm' without data>"
    assert document.solids.add("s").mass_data is None


def test_references(full: ztcad.Document) -> None:
    reference = full.point_references[0]
    assert reference.template == "point template"
    assert reference.file == ""
    assert equal(reference.placement, PLACE)
    assert repr(reference) == "<PointReference 'pr' to 'point template'>"
    reference.file = "other.xml"
    reference.template = "other"
    reference.placement = None
    assert (reference.template, reference.file, reference.placement) == ("other", "other.xml", None)
    assert repr(reference) == "<PointReference 'pr' to 'other' in 'other.xml'>"
    with pytest.raises(TypeError, match="PointReference cannot place"):
        reference.template = full.template_lines[0]
    count = len(full.point_references)
    with pytest.raises(TypeError):
        full.point_references.add("x", template=full.template_lines[0])
    assert len(full.point_references) == count  # the new one was removed again


def test_details_and_structures(document: ztcad.Document) -> None:
    detail = document.details.add("d")
    assert not detail.is_sound
    assert detail.read_ok is None
    complete = document.details.add("e", mass_data=MASS)
    assert complete.is_sound
    assert complete.read_ok
    assert repr(complete) == "<Detail 'e' of 0 elements>"
    detail.mass_data = MASS
    detail.read_ok = True
    assert document.details[0].read_ok
    structure = document.structures.add("s")
    assert structure.lcs is None
    structure.lcs = PLACE
    assert equal(structure.lcs, PLACE)
    structure.lcs = None
    assert structure.lcs is None
    inner = structure.structures.add("i")
    inner.points.add("p", center=(0, 0, 0))
    inner.points.add("p", center=(0, 0, 0))
    structure.unify_names()
    assert len(set(inner.points.names)) == 2
    assert inner.holder is structure
    assert inner.points[0].holder is inner
    assert inner.points[0].document is document


def test_kinds_have_words(full: ztcad.Document) -> None:
    assert {element.kind for element in full} >= {"point", "template-structure", "mass-inertia-reference"}


def test_there_is_one_object_for_an_element(full: ztcad.Document) -> None:
    assert full.points[0] is full.points[-1]
    assert full.structures[0].structures[0] is full.structures[0].structures["nested"]
    assert full.points[0] in full.points
    assert {full.points[0]: 1}[full.points[0]] == 1


def test_a_removed_element_is_gone(full: ztcad.Document) -> None:
    structure = full.structures[0]
    nested = structure.structures[0]
    detail = full.details[0]
    hole = detail.points[0]
    hole.remove()
    with pytest.raises(ztcad.RemovedError):
        _ = hole.center
    with pytest.raises(ReferenceError):
        hole.remove()
    body = detail.solids[0]
    detail.remove()
    for gone in (detail, body):
        with pytest.raises(ztcad.RemovedError):
            _ = gone.name
    nested.remove()
    with pytest.raises(ztcad.RemovedError):
        _ = nested.details
        len(nested.details)
    assert len(structure.structures) == 0
    structure.remove()
    assert len(full.structures) == 0


def test_a_removed_elements_address_may_be_used_again(document: ztcad.Document) -> None:
    old = document.points.add("old", center=(0, 0, 0))
    old.remove()
    new = document.points.add("new", center=(0, 0, 0))
    assert new is not old
    assert new.name == "new"
    assert repr(old) == "<Point, gone>"


def test_copies_of_all_kinds(full: ztcad.Document) -> None:
    other = ztcad.Document("everything")
    for source, target in zip(full._containers(), other._containers()):
        for element in source:
            copied = target.append(element)
            assert copied is not element
    assert content_of(other) == content_of(full)
    copied = other.structures.append(full.structures[0], name="again")
    assert copied.name == "again"
    full.close()
    assert copied.structures[0].details[0].spheres[0].name == "ball"


def test_templates_are_made_of_instances_and_the_other_way_round(full: ztcad.Document) -> None:
    template = full.template_points.append(full.points[0], name="t")
    assert equal(template.center, full.points[0].center)
    assert template.color == (1, 2, 3)
    assert full.template_structures.append(full.structures[0]).structures[0].name == "nested"
    assert full.details.append(full.template_details[0]).points[0].name == "in it"
    count = len(full.points)
    with pytest.raises(TypeError, match="cannot be made from"):
        full.points.append(full.lines[0])
    assert len(full.points) == count


def test_a_structure_cannot_be_copied_into_itself(full: ztcad.Document) -> None:
    structure = full.structures[0]
    for holder in (structure, structure.structures[0]):
        with pytest.raises(ValueError, match="into itself"):
            holder.structures.append(structure)


def test_structures_nest_only_so_deep(document: ztcad.Document) -> None:
    structures = document.structures
    with pytest.raises(ValueError, match="nested deeper"):
        for level in range(300):
            structures = structures.add(f"level {level}").structures
    assert sum(1 for _ in document.walk()) in range(250, 257)


def test_vertices_and_faces(document: ztcad.Document) -> None:
    solid = document.solids.add("s", vertices=CORNERS.tolist(), faces=FACES.astype(np.int64))
    assert equal(solid.vertices, CORNERS)
    assert equal(solid.faces, FACES)
    assert solid.vertices.dtype == np.float64
    assert solid.faces.dtype == np.uint32
    solid.extend_vertices([(9, 9, 9)])
    solid.extend_faces([(0, 1, 4)])
    assert solid.vertices.shape == (5, 3)
    assert solid.faces.tolist()[-1] == [0, 1, 4]
    assert repr(solid) == "<Solid 's' of 5 vertices and 5 faces>"
    solid.vertices = CORNERS[::2]  # not contiguous
    assert equal(solid.vertices, CORNERS[::2])
    solid.vertices = []
    solid.faces = np.empty((0, 3))
    assert solid.vertices.shape == solid.faces.shape == (0, 3)
    line = document.lines.add("l", vertices=CORNERS.astype(np.float32))
    assert repr(line) == "<Line 'l' of 4 vertices>"
