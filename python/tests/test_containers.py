"""Containers: sequences of elements, and whole arrays."""

from __future__ import annotations

from collections.abc import Sequence
from typing import Any

import numpy as np
import pytest
from conftest import CORNERS, MASS, PLACE, equal

import ztcad


@pytest.fixture
def points(document: ztcad.Document) -> ztcad.Points[ztcad.Point]:
    """A hundred points, p0 to p99."""
    centers = np.arange(300, dtype=np.float64).reshape(100, 3)
    document.points.add_many(centers, names=[f"p{i}" for i in range(100)])
    return document.points


def test_a_container_is_a_sequence(points: ztcad.Points[ztcad.Point]) -> None:
    assert isinstance(points, Sequence)
    assert len(points) == 100
    for index in (0, 15, 50, 99, -1, -100):
        assert points[index].name == f"p{index % 100}"
    assert [p.name for p in points[10:30:10]] == ["p10", "p20"]
    assert [p.name for p in points] == points.names
    assert [p.name for p in reversed(points)] == points.names[::-1]
    for index in (100, -101):
        with pytest.raises(IndexError, match="out of range"):
            points[index]
    with pytest.raises((TypeError, AttributeError)):
        points[1.5]  # type: ignore[call-overload]
    assert points.index(points[7]) == 7
    assert points.index("p7") == 7
    assert points.count(points[7]) == points.count("p7") == 1
    assert repr(points) == "<100 Points: 'p0', 'p1', 'p2', ...>"


def test_elements_are_found_by_name(points: ztcad.Points[ztcad.Point]) -> None:
    assert points["p42"] is points[42]
    anything: Any = points
    assert "p42" in anything
    assert "p100" not in anything
    assert points.get("p100") is None
    assert points.get("p5") is points[5]
    with pytest.raises(KeyError):
        points["p100"]
    with pytest.raises(ValueError):  # noqa: PT011: the list's own
        points.index("p100")


def test_elements_of_other_places_are_not_in_it(full: ztcad.Document) -> None:
    hole = full.details[0].points[0]
    assert hole not in full.points
    points: Any = full.points
    assert full.lines[0] not in points
    assert 5 not in points
    for other in (hole, 5):
        with pytest.raises(ValueError, match="is not here"):
            full.points.index(other)
    with pytest.raises(ValueError, match="is not here"):
        full.points.remove(hole)
    gone = full.points[0]
    gone.remove()
    assert gone not in full.points


def test_removal(points: ztcad.Points[ztcad.Point]) -> None:
    kept = points[1]
    del points[0]
    assert points[0] is kept
    del points[-1]
    del points["p50"]
    points.remove(points["p51"])
    del points[1:3]
    assert points.names == ["p1", *(f"p{i}" for i in range(4, 99) if i not in {50, 51})]
    points.clear()
    assert len(points) == 0
    assert repr(points) == "<0 Points>"
    with pytest.raises(ztcad.RemovedError):
        _ = kept.name


def test_an_iteration_notices_changes(points: ztcad.Points[ztcad.Point]) -> None:
    with pytest.raises(RuntimeError, match="during the iteration"):
        for point in points:
            point.remove()
    with pytest.raises(RuntimeError, match="during the iteration"):
        for _ in points:
            points.add("another")


def test_lists_of_addresses_follow_every_change(document: ztcad.Document) -> None:
    points = document.points
    for i in range(50):
        points.add(f"p{i}", center=(i, 0, 0))
    assert points[25].name == "p25"
    points.add("last", center=(0, 0, 0))
    assert points[50].name == "last"
    assert points.centers.shape == (51, 3)
    points[25].remove()
    assert points[25].name == "p26"
    points.append(points[0], name="copy")
    assert points.names[-1] == "copy"


def test_centers_both_ways(points: ztcad.Points[ztcad.Point]) -> None:
    assert equal(points.centers, np.arange(300).reshape(100, 3))
    points.centers = points.centers + 1
    assert points[1].center is not None
    assert points[1].center.tolist() == [4, 5, 6]
    changed = points.centers.copy()
    changed[1] = np.nan
    points.centers = changed
    assert repr(points[1]) == "<Point 'p1' without a centre>"
    assert np.isnan(points.centers[1]).all()
    with pytest.raises(ValueError, match="99 centres were given for 100 elements"):
        points.centers = changed[:99]
    with pytest.raises(ValueError, match="must have the shape"):
        points.centers = changed[:, :2]


def test_names_and_texts_both_ways(points: ztcad.Points[ztcad.Point]) -> None:
    names = [f"точка {i}" if i % 2 else f"point {i}" for i in range(100)]
    points.names = names
    assert points.names == names
    assert points[1].name == "точка 1"
    points.names = [name[:3] for name in names]
    points.comments = (f"c{i}" for i in range(100))
    points.informs = [""] * 100
    assert points.comments[99] == "c99"
    assert points.informs == [""] * 100
    points.names = ["long " * 100] * 100  # longer than the first guess
    assert points.names == ["long " * 100] * 100
    with pytest.raises(ValueError, match="3 names were given"):
        points.names = "abc"
    with pytest.raises(TypeError):
        points.names = [7] * 100  # type: ignore[list-item]


def test_colors_both_ways(points: ztcad.Points[ztcad.Point]) -> None:
    assert (points.colors == -1).all()
    colors = np.full((100, 3), -1)
    colors[5] = 1, 2, 2**32 - 1
    points.colors = colors
    assert equal(points.colors, colors)
    assert points[5].color == (1, 2, 2**32 - 1)
    assert points[6].color is None
    with pytest.raises(ValueError, match="colours"):
        points.colors = [(1, 2)] * 100
    with pytest.raises(ValueError, match="colours"):
        points.colors = [(1, 2, -1)] * 100
    with pytest.raises(ValueError, match="given for 100"):
        points.colors = [(1, 2, 3)]


def test_visibilities_both_ways(points: ztcad.Points[ztcad.Point]) -> None:
    assert (points.visibilities == -1).all()
    points.visibilities = np.arange(100) % 3 - 1
    assert points[0].visible is None
    assert points[1].visible is False
    assert points[2].visible is True
    assert points.visibilities.tolist()[:3] == [-1, 0, 1]
    with pytest.raises(ValueError, match="shape"):
        points.visibilities = [[1]]
    with pytest.raises(ValueError, match="given for 100"):
        points.visibilities = [1]


def test_systems_both_ways(full: ztcad.Document) -> None:
    points = full.points
    points.add("without", center=(0, 0, 0))
    assert equal(points.systems[0], PLACE)
    assert np.isnan(points.systems[1]).all()
    points.systems = points.systems[::-1]
    assert points[0].lcs is None
    assert equal(points[1].lcs, PLACE)
    structures = full.structures
    structures.systems = np.full((1, 4, 3), np.nan)  # a structure always has one, if only an empty one
    assert structures[0].lcs is None
    structures.systems = PLACE.reshape(1, 12)
    assert equal(structures.systems, [PLACE])
    with pytest.raises(ValueError, match="given for 1"):
        structures.systems = [PLACE, PLACE]
    full.mass_elements.clear()
    full.mass_elements.systems = np.empty((0, 4, 3))
    assert full.mass_elements.systems.shape == (0, 4, 3)


def test_references_as_arrays(full: ztcad.Document) -> None:
    references = full.point_references
    references.add("second", template="t", file="f.xml")
    assert references.templates == ["point template", "t"]
    assert references.files == ["", "f.xml"]
    assert np.isnan(references.placements[1]).all()
    references.placements = references.placements[::-1]
    assert references[0].placement is None
    references.templates = ["a", "b"]
    references.files = ["c", ""]
    assert (references[0].template, references[0].file) == ("a", "c")


def test_spheres_and_masses_as_arrays(document: ztcad.Document) -> None:
    spheres = document.spheres
    spheres.add_many(CORNERS, 2.0, names="abcd", colors=np.zeros((4, 3), int))
    assert spheres.radii.tolist() == [2.0] * 4
    spheres.radii = [1, 2, np.nan, 4]
    assert spheres[2].radius is None
    assert np.isnan(spheres.radii[2])
    assert np.isnan(spheres.mass_data).all()
    spheres.mass_data = [MASS] * 4
    assert equal(spheres[3].mass_data, MASS)
    assert (spheres.colors == 0).all()


def test_adding_many_adds_all_or_none(document: ztcad.Document) -> None:
    with pytest.raises(ValueError, match="names were given"):
        document.points.add_many(CORNERS, names=["one"])
    with pytest.raises(ValueError, match="colours"):
        document.points.add_many(CORNERS, colors=[(1, 2)])
    with pytest.raises(ValueError, match="2 colours were given for 4"):
        document.points.add_many(CORNERS, colors=[(1, 2, 3), (4, 5, 6)])
    with pytest.raises(TypeError, match="a name must be a str"):
        document.points.add_many(CORNERS, names=["a", "b", "c", 4])  # type: ignore[list-item]
    with pytest.raises(ValueError, match="shape"):
        document.spheres.add_many(CORNERS, [1, 2])
    assert len(document.spheres) == 0
    with pytest.raises(ValueError, match="shape"):
        document.points.add_many([(1, 2)])
    assert len(document.points) == 0
    document.points.add_many([])
    assert len(document.points) == 0
    detail = document.details.add("d", mass_data=MASS)
    detail.points.add_many(CORNERS)
    structure = document.structures.add("s")
    structure.points.add_many(CORNERS)
    assert len(detail.points) == len(structure.points) == 4


def test_an_element_that_fails_to_be_made_is_not_there(document: ztcad.Document) -> None:
    with pytest.raises(ValueError, match="colour"):
        document.points.add("p", color=(1, 2, -1))
    assert len(document.points) == 0
