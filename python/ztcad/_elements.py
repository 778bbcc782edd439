"""Elements that hold no others: points, lines, solids, spheres, mass-inertia elements, references."""

from __future__ import annotations

from collections.abc import Iterator
from typing import TYPE_CHECKING, Any

import numpy as np
import numpy.typing as npt

from ztcad import _arrays
from ztcad._arrays import Indices, Reals
from ztcad._fields import Field
from ztcad._library import NULL, ffi, lib, lock
from ztcad._node import Content, Element, HolderNode

if TYPE_CHECKING:
    from ztcad._mass import MassProperties, Mesh


# ----------------------------------------------------------------------------------- fields that several have


class _WithMethod(Element):
    __slots__ = ()

    @property
    def method(self) -> str:
        """A word that says how the element is made or shown.

        Lines, solids and spheres are always saved with the word of their kind. A mass-inertia element of
        another method than ``"MIP"`` is not read back.
        """
        return self._text(lib.ztCAD_getMethod)

    @method.setter
    def method(self, value: str) -> None:
        self._set_text(lib.ztCAD_setMethod, value, "the method")


class _WithCenter(Element):
    __slots__ = ()

    def _get_center(self) -> Reals | None:
        """The position, shape (3,), in the document's length unit, a copy; ``None`` if there is none."""
        xyz = np.empty(3)
        has = self._get(lib.ztCAD_getCenter, _arrays.address(xyz, "double*"))
        return _arrays.read_only(xyz) if has else None

    def _set_center(self, value: npt.ArrayLike | None) -> None:
        if value is None:
            self._get(lib.ztCAD_setCenter, NULL)
        else:
            xyz = _arrays.triple(value, "a centre")
            self._get(lib.ztCAD_setCenter, _arrays.address(xyz, "double*"))

    center = Field(_get_center, _set_center)

    def _details(self) -> Iterator[str]:
        center = self.center
        yield "without a centre" if center is None else f"at {tuple(center.tolist())}"


class _WithMassData(Element):
    __slots__ = ()

    def _get_mass_data(self) -> Reals | None:
        """The declared mass-inertia data, shape (10,), a copy; ``None`` if there is none.

        By convention the mass; the centre of mass in the element's frame, three numbers; Ixx, Iyy, Izz, Ixy,
        Ixz, Iyz about the centre of mass, products as entries of the matrix.
        """
        values = np.empty(10)
        count = self._get(lib.ztCAD_getMIP, _arrays.address(values, "double*"), 10)
        return _arrays.read_only(values) if count >= 10 else None

    def _set_mass_data(self, value: npt.ArrayLike | None) -> None:
        values = np.zeros(10) if value is None else np.ascontiguousarray(value, np.float64)
        if values.shape != (10,):
            raise ValueError(f"mass-inertia data must have the shape (10,), not {values.shape}")
        with lock:
            elements = ffi.new("ztCAD_Base*[1]", [self._base])
            present = ffi.new("uint8_t*", value is not None)
            if lib.ztCAD_setMIPs(elements, 1, _arrays.address(values, "double*"), present) != 1:
                raise MemoryError

    mass_data = Field(_get_mass_data, _set_mass_data)

    @property
    def declared_mass(self) -> MassProperties | None:
        """The declared data as mass properties in the element's frame; ``None`` if there is none."""
        from ztcad import _mass

        return _mass.declared(self)


class _WithVertices(Element):
    __slots__ = ("_vertex_views",)

    def __init__(self, top: Content, holder: HolderNode, pointer: Any) -> None:
        super().__init__(top, holder, pointer)
        self._vertex_views: set[int] = set()

    def _get_vertices(self) -> Reals:
        """The vertices, shape (n, 3), in the document's length unit.

        A read-only view of the library's memory, made in microseconds, which keeps that memory alive, even if
        the document is closed. Assign an array to replace the vertices; ``BufferError`` is raised while a
        view of them is alive.
        """
        with lock:
            vertices = lib.ztCAD_getVertices(self._base)
            count = lib.ztCAD_getVertexCount(vertices)
            data = lib.ztCAD_getVertexData(vertices)
            return self._view(self._vertex_views, data, count, "<f8", np.float64)

    def _set_vertices(self, value: npt.ArrayLike) -> None:
        self._change_vertices(lib.ztCAD_setVertexXYZ, value)

    vertices = Field(_get_vertices, _set_vertices)

    def extend_vertices(self, rows: npt.ArrayLike) -> None:
        """Appends vertices, shape (n, 3). Raises ``BufferError`` while a view of the vertices is alive."""
        self._change_vertices(lib.ztCAD_addVertexXYZ, rows)

    def _change_vertices(self, function: Any, value: npt.ArrayLike) -> None:
        rows = _arrays.reals(value, 3, "vertices")
        with lock:
            base = self._base
            _arrays.require_no_views(self._vertex_views, "these vertices")
            if not function(base, _arrays.address(rows, "double*"), len(rows)):
                raise MemoryError

    @property
    def _vertex_count(self) -> int:
        with lock:
            count: int = lib.ztCAD_getVertexCount(lib.ztCAD_getVertices(self._base))
            return count

    def _details(self) -> Iterator[str]:
        yield f"of {self._vertex_count} vertices"


# ----------------------------------------------------------------------------------------------------- points


class _AnyPoint(_WithMethod, _WithCenter):
    """What points and template points have in common."""

    __slots__ = ()


class Point(_AnyPoint, kind=lib.ztCAD_ElementPoint):
    """A point."""

    __slots__ = ()


class TemplatePoint(_AnyPoint, kind=lib.ztCAD_ElementTmplPoint):
    """A point kept as a template, which ``PointReference`` places."""

    __slots__ = ()


# ------------------------------------------------------------------------------------------------------ lines


class _AnyLine(_WithMethod, _WithVertices):
    """What lines and template lines have in common."""

    __slots__ = ()


class Line(_AnyLine, kind=lib.ztCAD_ElementLine):
    """A polyline."""

    __slots__ = ()


class TemplateLine(_AnyLine, kind=lib.ztCAD_ElementTmplLine):
    """A polyline kept as a template, which ``LineReference`` places."""

    __slots__ = ()


# ----------------------------------------------------------------------------------------------------- solids


class _AnySolid(_WithMethod, _WithVertices, _WithMassData):
    """What solids and template solids have in common."""

    __slots__ = ("_face_views",)

    def __init__(self, top: Content, holder: HolderNode, pointer: Any) -> None:
        super().__init__(top, holder, pointer)
        self._face_views: set[int] = set()

    def _get_faces(self) -> Indices:
        """The triangles, shape (m, 3): indices of vertices from 0.

        A read-only view with the rules of ``vertices``. Indices are not compared with the vertices; ``mesh``
        does that.
        """
        with lock:
            faces = lib.ztCAD_getFaces(self._base)
            count = lib.ztCAD_getFacetCount(faces)
            return self._view(self._face_views, lib.ztCAD_getFacetData(faces), count, "<u4", np.uint32)

    def _set_faces(self, value: npt.ArrayLike) -> None:
        self._change_faces(lib.ztCAD_setFacetIJK, value)

    faces = Field(_get_faces, _set_faces)

    def extend_faces(self, rows: npt.ArrayLike) -> None:
        """Appends triangles, shape (m, 3). Raises ``BufferError`` while a view of the faces is alive."""
        self._change_faces(lib.ztCAD_addFacetIJK, rows)

    def _change_faces(self, function: Any, value: npt.ArrayLike) -> None:
        rows = _arrays.indices(value, "faces")
        with lock:
            base = self._base
            _arrays.require_no_views(self._face_views, "these faces")
            if not function(base, _arrays.address(rows, "uint32_t*"), len(rows)):
                raise MemoryError

    def mesh(self, **options: Any) -> Mesh:
        """The analysed mesh: what is wrong with it, and its mass properties. See ``ztcad.options``."""
        from ztcad import _mass

        return _mass.of_solid(self, options)

    def mass_properties(self, density: float | None = None, **options: Any) -> MassProperties:
        """Mass properties of the closed mesh, by exact integration, in the frame of the vertices.

        Without a density ``mass`` is ``None``, and the inertia is that of density 1. Raises ``ValueError``
        with the reason for a mesh that has none, such as an open one.
        """
        return self.mesh(**options).mass_properties(density)

    def to_trimesh(self, **arguments: Any) -> Any:
        """The solid as a ``trimesh.Trimesh``; ``arguments`` are passed on. Needs trimesh."""
        import trimesh

        arguments.setdefault("process", False)  # which would merge vertices
        return trimesh.Trimesh(
            vertices=self.vertices.copy(), faces=self.faces.astype(np.int64), **arguments
        )

    def _details(self) -> Iterator[str]:
        with lock:
            faces = lib.ztCAD_getFacetCount(lib.ztCAD_getFaces(self._base))
        yield f"of {self._vertex_count} vertices and {faces} faces"


class Solid(_AnySolid, kind=lib.ztCAD_ElementTriangle):
    """A triangulated solid."""

    __slots__ = ()


class TemplateSolid(_AnySolid, kind=lib.ztCAD_ElementTmplTriangle):
    """A triangulated solid kept as a template, which ``SolidReference`` places."""

    __slots__ = ()


# ---------------------------------------------------------------------------------------------------- spheres


class Sphere(_WithMethod, _WithCenter, _WithMassData, kind=lib.ztCAD_ElementSphere):
    """A sphere."""

    __slots__ = ()

    @property
    def radius(self) -> float | None:
        """The radius in the document's length unit; ``None`` if there is none.

        A saved document has only whether there is a radius: 1 is written in its place.
        """
        radius = ffi.new("double*")
        return float(radius[0]) if self._get(lib.ztCAD_getRadius, radius) else None

    @radius.setter
    def radius(self, value: float | None) -> None:
        self._get(lib.ztCAD_setRadius, NULL if value is None else ffi.new("double*", float(value)))

    def mass_properties(self, density: float | None = None, **options: Any) -> MassProperties:
        """Mass properties of the ball in the element's frame; raises ``ValueError`` without a radius."""
        from ztcad import _mass

        return _mass.of_sphere(self, density, options)

    def _details(self) -> Iterator[str]:
        yield from super()._details()
        yield f"radius {self.radius}"


# -------------------------------------------------------------------------------------- mass-inertia elements


class _AnyMassElement(_WithMethod, _WithMassData):
    """What mass-inertia elements and their templates have in common."""

    __slots__ = ()

    def _details(self) -> Iterator[str]:
        data = self.mass_data
        yield "without data" if data is None else f"of mass {data[0]:g}"


class MassElement(_AnyMassElement, kind=lib.ztCAD_ElementElementMIP):
    """A mass-inertia element: data without geometry."""

    __slots__ = ()


class TemplateMassElement(_AnyMassElement, kind=lib.ztCAD_ElementTmplElementMIP):
    """A mass-inertia element kept as a template, which ``MassReference`` places."""

    __slots__ = ()


# ------------------------------------------------------------------------------------------------- references


class Reference(Element):
    """Places a template, in the document or in another file, by the name of the template."""

    __slots__ = ()

    _template_kind = 0

    def __init_subclass__(cls, kind: int = 0, template: int = 0) -> None:
        super().__init_subclass__(kind=kind)
        cls._template_kind = template

    def _get_template(self) -> str:
        """The name of the template. Set it to a name or to a template of the matching kind.

        Nothing checks that there is such a template; ``ztcad.check`` does.
        """
        return self._text(lib.ztCAD_getTemplateName)

    def _set_template(self, value: str | Element) -> None:
        self._set_text(lib.ztCAD_setTemplateName, self._name_of(value), "the name of the template")

    template = Field(_get_template, _set_template)

    @classmethod
    def _name_of(cls, template: str | Element) -> str:
        if isinstance(template, str):
            return template
        if getattr(template, "_kind", 0) != cls._template_kind:
            raise TypeError(f"a {cls.__name__} cannot place {template!r}")
        return template.name

    @property
    def file(self) -> str:
        """The file that contains the template, relative to the document; empty: the document itself."""
        return self._text(lib.ztCAD_getTemplateFile)

    @file.setter
    def file(self, value: str) -> None:
        self._set_text(lib.ztCAD_setTemplateFile, value, "the file")

    def _get_placement(self) -> Reals | None:
        """Where the template is in the holder's frame: origin, x, y, z axis, shape (4, 3), a copy."""
        return self._system(lib.ztCAD_getPlacement)

    def _set_placement(self, value: npt.ArrayLike | None) -> None:
        self._set_system(lib.ztCAD_setPlacements, value, "a placement")

    placement = Field(_get_placement, _set_placement)

    def _details(self) -> Iterator[str]:
        yield f"to {self.template!r}" + (f" in {self.file!r}" if self.file else "")


class PointReference(Reference, kind=lib.ztCAD_ElementPointRef, template=lib.ztCAD_ElementTmplPoint):
    """Places a template point."""

    __slots__ = ()


class LineReference(Reference, kind=lib.ztCAD_ElementLineRef, template=lib.ztCAD_ElementTmplLine):
    """Places a template line."""

    __slots__ = ()


class SolidReference(
    Reference, kind=lib.ztCAD_ElementTriangleRef, template=lib.ztCAD_ElementTmplTriangle
):
    """Places a template solid."""

    __slots__ = ()


class MassReference(
    Reference, kind=lib.ztCAD_ElementElementMipRef, template=lib.ztCAD_ElementTmplElementMIP
):
    """Places a template mass-inertia element."""

    __slots__ = ()


class DetailReference(Reference, kind=lib.ztCAD_ElementDetailRef, template=lib.ztCAD_ElementTmplDetail):
    """Places a template detail."""

    __slots__ = ()


class StructureReference(
    Reference, kind=lib.ztCAD_ElementStructureRef, template=lib.ztCAD_ElementTmplStructure
):
    """Places a template structure."""

    __slots__ = ()
