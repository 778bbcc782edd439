"""Documents built at random come back equal."""

from __future__ import annotations

from typing import Any

import numpy as np
from conftest import content_of
from hypothesis import HealthCheck, given, settings
from hypothesis import strategies as st
from hypothesis.extra import numpy as arrays

import ztcad

# what XML can hold, without whitespace at the ends, which attributes normalise
TEXTS = st.text(
    st.characters(blacklist_categories=("Cs", "Cc", "Cn", "Co", "Zs", "Zl", "Zp")), max_size=12
)
# reals that six digits hold
REALS = st.builds(lambda m, e: float(f"{m}e{e}"), st.integers(-999_999, 999_999), st.integers(-9, 9))
TRIPLES = st.tuples(REALS, REALS, REALS)
SYSTEMS = st.none() | arrays.arrays(np.float64, (4, 3), elements=REALS)
MASSES = arrays.arrays(np.float64, 10, elements=REALS)
LISTS = st.lists(TRIPLES, max_size=5)
FACETS = st.lists(st.tuples(*[st.integers(0, 2**32 - 1)] * 3), max_size=5)

COMMON: dict[str, st.SearchStrategy[Any]] = {
    "comment": TEXTS,
    "color": st.none() | st.tuples(*[st.integers(0, 2**32 - 1)] * 3),
    "visible": st.none() | st.booleans(),
    "lcs": SYSTEMS,
}
FIELDS: dict[str, dict[str, st.SearchStrategy[Any]]] = {
    "points": {**COMMON, "center": TRIPLES},
    "lines": {**COMMON, "vertices": LISTS},
    "solids": {**COMMON, "vertices": LISTS, "faces": FACETS, "mass_data": st.none() | MASSES},
    "spheres": {**COMMON, "center": TRIPLES, "radius": st.just(1.0), "mass_data": st.none() | MASSES},
}
PARTS = {
    **FIELDS,
    "mass_elements": {"comment": TEXTS, "lcs": SYSTEMS, "mass_data": MASSES},
    "point_references": {
        **COMMON,
        "template": TEXTS,
        "placement": SYSTEMS.filter(lambda s: s is not None),
        "file": TEXTS,
    },
    "details": {**COMMON, "mass_data": MASSES},
    "structures": {**COMMON, "lcs": SYSTEMS.filter(lambda s: s is not None)},
}


def fill(data: st.DataObject, holder: Any, parts: dict[str, Any], depth: int, counter: list[int]) -> None:
    """Adds random elements with names that need not be made unique."""
    for container in data.draw(st.lists(st.sampled_from(sorted(parts)), max_size=4)):
        counter[0] += 1
        fields = data.draw(st.fixed_dictionaries(parts[container]))
        added = getattr(holder, container).add(f"name_{counter[0]}", **fields)
        if container == "details" and depth > 0:
            fill(data, added, FIELDS, depth - 1, counter)
        elif container == "structures" and depth > 0:
            fill(data, added, PARTS, depth - 1, counter)


@settings(max_examples=25, deadline=None, database=None, suppress_health_check=list(HealthCheck))
@given(st.data())
def test_a_random_document_comes_back_equal(data: st.DataObject) -> None:
    document = ztcad.Document(data.draw(TEXTS))
    fill(data, document, PARTS, 2, [0])
    saved = document.to_bytes()
    again = ztcad.loads(saved)
    assert content_of(again) == content_of(document)
    assert again.to_bytes() == ztcad.loads(again.to_bytes()).to_bytes()


@settings(max_examples=25, deadline=None, database=None)
@given(
    arrays.arrays(np.float64, st.tuples(st.integers(0, 40), st.just(3))),
    st.lists(TEXTS, max_size=40),
)
def test_whole_arrays_agree_with_elements(centers: Any, names: list[str]) -> None:
    rows = min(len(centers), len(names))
    document = ztcad.Document()
    document.points.add_many(centers[:rows], names=names[:rows])
    assert document.points.names == [point.name for point in document.points] == names[:rows]
    for row, point in zip(document.points.centers, document.points):
        assert np.isnan(row).all() if point.center is None else np.array_equal(row, point.center, True)
    assert np.array_equal(document.points.centers, centers[:rows], equal_nan=True)
