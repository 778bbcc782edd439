"""What the tests share."""

from __future__ import annotations

import gc
from collections.abc import Iterator
from pathlib import Path
from typing import Any

import numpy as np
import pytest

import ztcad

ROOT = Path(__file__).resolve().parents[2]
RIG = ROOT / "examples" / "rig.xml"

#: A tetrahedron, closed and wound outwards.
CORNERS = np.array([(0, 0, 0), (1, 0, 0), (0, 1, 0), (0, 0, 1)], np.float64)
FACES = np.array([(0, 2, 1), (0, 1, 3), (0, 3, 2), (1, 2, 3)], np.uint32)
#: Mass-inertia data.
MASS = np.array([0.8, 0, 0, 0.5, 0.01, 0.02, 0.03, 0, 0, 0])
#: A coordinate system: an origin and the axes.
PLACE = np.array([(1, 2, 3), (1, 0, 0), (0, 1, 0), (0, 0, 1)], np.float64)


def full_document() -> ztcad.Document:
    """A document with an element of each kind, and with nested holders."""
    d = ztcad.Document("everything")
    d.points.add("point", center=(1, 2, 3), comment="c", color=(1, 2, 3), visible=True, lcs=PLACE)
    d.lines.add("line", vertices=CORNERS[:3])
    d.solids.add("solid", vertices=CORNERS, faces=FACES, mass_data=MASS)
    d.spheres.add("sphere", center=(0, 0, 0), radius=1, mass_data=MASS)
    d.mass_elements.add("mass", mass_data=MASS)
    d.template_points.add("point template", center=(4, 5, 6))
    d.template_lines.add("line template", vertices=CORNERS)
    d.template_solids.add("solid template", vertices=CORNERS, faces=FACES)
    d.template_mass_elements.add("mass template", mass_data=MASS)
    d.template_details.add("detail template", mass_data=MASS).points.add("in it", center=(0, 0, 0))
    d.template_structures.add("structure template", lcs=PLACE).points.add("in it", center=(0, 0, 0))
    d.point_references.add("pr", template=d.template_points[0], placement=PLACE)
    d.line_references.add("lr", template="line template", placement=PLACE)
    d.solid_references.add("sr", template=d.template_solids[0], placement=PLACE)
    d.mass_references.add("mr", template=d.template_mass_elements[0], placement=PLACE)
    d.detail_references.add("dr", template=d.template_details[0], placement=PLACE)
    d.structure_references.add("tr", template=d.template_structures[0], placement=PLACE)
    detail = d.details.add("detail", mass_data=MASS)
    detail.points.add("hole", center=(1, 1, 1))
    detail.solids.add("body", vertices=CORNERS, faces=FACES)
    structure = d.structures.add("structure", lcs=PLACE)
    structure.point_references.add("placed", template="point template", placement=PLACE)
    nested = structure.structures.add("nested", lcs=PLACE)
    nested.details.add("deep", mass_data=MASS).spheres.add("ball", center=(0, 0, 1), radius=1)
    return d


def equal(first: Any, second: Any) -> bool:
    """Whether two arrays, neither of them ``None``, are equal."""
    return first is not None and second is not None and bool(np.array_equal(first, second))


def content_of(holder: Any) -> list[Any]:
    """Everything in a holder as plain values, for comparisons.

    Without methods: a save writes those that the format requires.
    """
    return [_values(element) for element in holder]


def _values(element: ztcad.Element) -> dict[str, Any]:
    fields = (
        "kind name comment inform color visible lcs center vertices faces radius mass_data "
        "template file placement"
    ).split()
    values: dict[str, Any] = {}
    for field in fields:
        value = getattr(element, field, None)
        values[field] = value.tolist() if isinstance(value, np.ndarray) else value
    if isinstance(element, (ztcad.Detail, ztcad.TemplateDetail, ztcad.Structure, ztcad.TemplateStructure)):
        values["content"] = content_of(element)
    return values


@pytest.fixture
def document() -> ztcad.Document:
    """An empty document."""
    return ztcad.Document()


@pytest.fixture
def full() -> ztcad.Document:
    """A document with an element of each kind."""
    return full_document()


@pytest.fixture
def no_collector() -> Iterator[None]:
    """Without the garbage collector: what is freed is freed by the last reference."""
    gc.collect()
    gc.disable()
    yield
    gc.enable()
