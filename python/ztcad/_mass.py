"""Mass properties and the analysis of meshes."""

from __future__ import annotations

from collections.abc import Iterator, Sequence
from dataclasses import dataclass
from typing import TYPE_CHECKING, Any, overload

import numpy as np
import numpy.typing as npt

from ztcad import _arrays
from ztcad._arrays import Reals
from ztcad._library import NULL, Handle, ffi, from_text, lib, lock
from ztcad._options import Options

if TYPE_CHECKING:
    from ztcad._document import Document
    from ztcad._elements import Sphere
    from ztcad._findings import MeshFinding
    from ztcad._node import Element


@dataclass(frozen=True, eq=False)
class MassProperties:
    """Mass, centre and inertia of a body, in the frame of the element, mesh or document they describe."""

    #: in the document's unit of mass; ``None`` if no density is known: the inertia is that of density 1
    mass: float | None
    #: centre of mass, shape (3,)
    center: Reals
    #: inertia matrix about the centre, shape (3, 3); products are entries of the matrix
    inertia: Reals
    #: ``None`` for declared data
    volume: float | None
    #: of the surface; ``None`` for declared data, and where a system stretches it unevenly
    area: float | None
    #: estimated relative error by rounding
    error: float

    def to_mass_data(self) -> Reals:
        """The ten numbers of ``mass_data``; raises ``ValueError`` without a mass."""
        if self.mass is None:
            raise ValueError("there is no mass: give a density")
        i = self.inertia
        products = [i[0, 0], i[1, 1], i[2, 2], i[0, 1], i[0, 2], i[1, 2]]
        return np.array([self.mass, *self.center, *products])


def _properties(source: Any) -> MassProperties:
    return MassProperties(
        mass=source.mass if source.hasMass else None,
        center=_arrays.read_only(np.array(list(source.center))),
        inertia=_arrays.read_only(np.array(list(source.inertia)).reshape(3, 3)),
        volume=source.volume if source.hasVolume else None,
        area=source.area if source.hasVolume and source.area >= 0 else None,
        error=source.error,
    )


def _require(problem: int) -> None:
    if problem == lib.ztCADInspect_MassNoMemory:
        raise MemoryError
    if problem != lib.ztCADInspect_MassKnown:
        raise ValueError(from_text(lib.ztCADInspect_massProblemText(problem)))


def declared(element: Element) -> MassProperties | None:
    mass = ffi.new("ztCADInspect_MassProperties*")
    with lock:
        problem = lib.ztCADInspect_declaredMass(element._base, NULL, mass)
    if problem == lib.ztCADInspect_MassNotDeclared:
        return None
    _require(problem)
    return _properties(mass)


def of_sphere(sphere: Sphere, density: float | None, options: dict[str, Any]) -> MassProperties:
    settings = Options({**options, "density": density})
    mass = ffi.new("ztCADInspect_MassProperties*")
    center, radius = sphere.center, sphere.radius
    if center is None or radius is None:
        _require(lib.ztCADInspect_MassNoRadius)
    assert center is not None
    _require(
        lib.ztCADInspect_sphereMass(_arrays.address(center, "double*"), radius, settings.pointer, mass)
    )
    return _properties(mass)


class Mesh:
    """The analysis of a mesh: counts, faults, mass properties.

    It does not refer to the document. ``ztcad.analyse`` analyses arrays, ``solid.mesh()`` a solid.
    """

    def __init__(self, analyse: Any, options: dict[str, Any]) -> None:
        self._settings = Options({**options, "density": 1.0})
        pointer = analyse(self._settings.pointer)
        self._handle = Handle(pointer, lib.ztCADInspect_endMesh)
        self._state = lib.ztCADInspect_meshState(pointer)

    @property
    def vertex_count(self) -> int:
        """Number of vertices."""
        return int(self._state.vertexCount)

    @property
    def facet_count(self) -> int:
        """Number of facets."""
        return int(self._state.facetCount)

    @property
    def edge_count(self) -> int:
        """Number of edges, each counted once."""
        return int(self._state.edges)

    @property
    def shell_count(self) -> int:
        """Number of parts that share no vertex."""
        return int(self._state.shells)

    @property
    def is_closed(self) -> bool:
        """Whether there are facets, and each edge has two, in opposite directions."""
        return bool(self._state.isClosed)

    @property
    def is_inside_out(self) -> bool:
        """Whether the mesh is closed and its volume negative."""
        return bool(self._state.isInsideOut)

    @property
    def bounds(self) -> Reals:
        """Least and greatest coordinates, shape (2, 3)."""
        return np.array([list(self._state.boxLow), list(self._state.boxHigh)])

    @property
    def faults(self) -> dict[str, int]:
        """How many facets, vertices and edges have each fault: those that occur."""
        names = {
            "valuelessVertices": "vertices without a value",
            "outOfRangeFacets": "facets with an index beyond the vertices",
            "degenerateFacets": "degenerate facets",
            "duplicateFacets": "duplicate facets",
            "unusedVertices": "unused vertices",
            "coincidentVertices": "coincident vertices",
            "openEdges": "open edges",
            "nonManifoldEdges": "edges of more than two facets",
            "inconsistentEdges": "edges passed twice in one direction",
        }
        return {text: n for name, text in names.items() if (n := int(getattr(self._state, name)))}

    @property
    def findings(self) -> list[MeshFinding]:
        """What is wrong, with the first places of each fault."""
        from ztcad import _findings

        found = lib.ztCADInspect_meshFindings(self._handle.pointer)
        return _findings.of_mesh(found)

    def mass_properties(self, density: float | None = None) -> MassProperties:
        """Mass properties by exact integration; ``ValueError`` with the reason if there are none."""
        mass = ffi.new("ztCADInspect_MassProperties*")
        _require(lib.ztCADInspect_meshMass(self._handle.pointer, mass))
        unit = _properties(mass)
        if density is None:
            return _scaled(unit, 1.0, None)
        if not density > 0:
            raise ValueError(f"the density must be positive, not {density}")
        assert unit.mass is not None
        return _scaled(unit, density, unit.mass * density)

    def __repr__(self) -> str:
        state = "closed" if self.is_closed else "open"
        faults = "".join(f", {count} {text}" for text, count in self.faults.items())
        return f"<Mesh of {self.vertex_count} vertices and {self.facet_count} facets, {state}{faults}>"


def _scaled(unit: MassProperties, density: float, mass: float | None) -> MassProperties:
    """Mass properties of density 1 for another one."""
    inertia = _arrays.read_only(unit.inertia * density)
    return MassProperties(mass, unit.center, inertia, unit.volume, unit.area, unit.error)


def analyse(vertices: npt.ArrayLike, faces: npt.ArrayLike, **options: Any) -> Mesh:
    """Analyses a mesh of ``vertices``, shape (n, 3), and triangles ``faces``, shape (m, 3).

    >>> import ztcad
    >>> corners = [(0, 0, 0), (1, 0, 0), (0, 1, 0), (0, 0, 1)]
    >>> mesh = ztcad.analyse(corners, [(0, 2, 1), (0, 1, 3), (0, 3, 2), (1, 2, 3)])
    >>> mesh
    <Mesh of 4 vertices and 4 facets, closed>
    >>> round(mesh.mass_properties(density=6).mass, 12)
    1.0
    """
    xyz = _arrays.reals(vertices, 3, "vertices")
    ijk = _arrays.indices(faces, "faces")
    c_xyz, c_ijk = _arrays.address(xyz, "double*"), _arrays.address(ijk, "uint32_t*")
    return Mesh(
        lambda settings: lib.ztCADInspect_analyseMesh(c_xyz, len(xyz), c_ijk, len(ijk), settings), options
    )


def of_solid(solid: Element, options: dict[str, Any]) -> Mesh:
    with lock:
        return Mesh(lambda settings: lib.ztCADInspect_analyseElement(solid._base, settings), options)


@dataclass(frozen=True)
class MassRow:
    """Mass properties of one element, in the element's frame; those of the total are in the document's."""

    path: str
    name: str
    #: such as ``"solid"``; empty for the total
    kind: str
    #: whether it is a template or in one: it counts where it is placed
    is_template: bool
    #: what is declared; ``None`` if nothing is
    declared: MassProperties | None
    #: computed from the geometry; ``None`` if that is impossible: ``reason`` says why
    computed: MassProperties | None
    #: declared where something is declared, computed elsewhere
    combined: MassProperties | None
    #: why nothing was computed, one sentence; empty if it was
    reason: str


class MassTable(Sequence[MassRow]):
    """Mass properties of everything in a document that can have any, and of the whole: ``total``."""

    def __init__(self, rows: list[MassRow], total: MassRow) -> None:
        self._rows = rows
        self.total = total

    def __len__(self) -> int:
        return len(self._rows)

    @overload
    def __getitem__(self, index: int) -> MassRow: ...

    @overload
    def __getitem__(self, index: slice) -> list[MassRow]: ...

    def __getitem__(self, index: int | slice) -> MassRow | list[MassRow]:
        return self._rows[index]

    def __iter__(self) -> Iterator[MassRow]:
        return iter(self._rows)

    def __repr__(self) -> str:
        mass = self.total.combined.mass if self.total.combined else None
        return f"<MassTable of {len(self)} rows, total mass {'unknown' if mass is None else f'{mass:g}'}>"


def _row(source: Any) -> MassRow:
    def known(problem: int, mass: Any) -> MassProperties | None:
        return _properties(mass) if problem == lib.ztCADInspect_MassKnown else None

    return MassRow(
        path=from_text(source.path),
        name=from_text(source.name),
        kind=from_text(lib.ztCAD_kindWord(source.kind)),
        is_template=bool(source.isTemplate),
        declared=known(source.declaredProblem, source.declared),
        computed=known(source.computedProblem, source.computed),
        combined=known(source.combinedProblem, source.combined),
        reason=from_text(source.reason),
    )


def table(document: Document, density: float | None, options: dict[str, Any]) -> MassTable:
    from ztcad import _scene

    with lock:
        scene = _scene.open_handle(document, {**options, "density": density})
        handle = Handle(lib.ztCADInspect_openMassTable(scene.pointer), lib.ztCADInspect_endMassTable)
        rows = lib.ztCADInspect_massRows(handle.pointer)
        count = lib.ztCADInspect_massRowCount(handle.pointer)
        made = MassTable(
            [_row(rows[i]) for i in range(count)], _row(lib.ztCADInspect_massTotal(handle.pointer))
        )
        del handle  # before the scene that it refers to
        return made
