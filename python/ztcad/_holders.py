"""What holds elements: documents, structures, details."""

from __future__ import annotations

from collections.abc import Iterator
from typing import TYPE_CHECKING, Any, TypeVar

from ztcad import _elements as e
from ztcad._containers import Elements, Lines, MassElements, Points, References, Solids, Spheres
from ztcad._library import NULL, ffi, lib, lock
from ztcad._node import CLASSES, Content, Element, HolderNode, Node

if TYPE_CHECKING:
    import numpy.typing as npt

E = TypeVar("E", bound=Element)


# ------------------------------------------------------------------------------------------- their containers


class DetailContainers:
    """Containers of whatever can hold geometry."""

    __slots__ = ()

    def _holder_node(self) -> HolderNode:
        raise NotImplementedError

    @property
    def points(self) -> Points[e.Point]:
        """The points."""
        return Points(self._holder_node(), e.Point)

    @property
    def lines(self) -> Lines[e.Line]:
        """The polylines."""
        return Lines(self._holder_node(), e.Line)

    @property
    def solids(self) -> Solids[e.Solid]:
        """The triangulated solids."""
        return Solids(self._holder_node(), e.Solid)

    @property
    def spheres(self) -> Spheres:
        """The spheres."""
        return Spheres(self._holder_node(), e.Sphere)

    def _containers(self) -> Iterator[Elements[Any]]:
        """All containers, in the order of the kinds."""
        yield self.points
        yield self.lines
        yield self.solids
        yield self.spheres

    def __iter__(self) -> Iterator[Element]:
        """The elements directly in this, kind by kind."""
        for container in self._containers():
            yield from container

    def walk(self) -> Iterator[Element]:
        """All elements in this at any depth, holders before what is in them."""
        for element in self:
            yield element
            if isinstance(element, DetailContainers):
                yield from element.walk()


class StructureContainers(DetailContainers):
    """Containers of whatever can hold parts: documents and structures."""

    __slots__ = ()

    @property
    def mass_elements(self) -> MassElements[e.MassElement]:
        """The mass-inertia elements."""
        return MassElements(self._holder_node(), e.MassElement)

    @property
    def details(self) -> Details[Detail]:
        """The details: rigid parts."""
        return Details(self._holder_node(), Detail)

    @property
    def structures(self) -> Structures[Structure]:
        """The structures: placed groups."""
        return Structures(self._holder_node(), Structure)

    @property
    def point_references(self) -> References[e.PointReference]:
        """The placed template points."""
        return References(self._holder_node(), e.PointReference)

    @property
    def line_references(self) -> References[e.LineReference]:
        """The placed template lines."""
        return References(self._holder_node(), e.LineReference)

    @property
    def solid_references(self) -> References[e.SolidReference]:
        """The placed template solids."""
        return References(self._holder_node(), e.SolidReference)

    @property
    def mass_references(self) -> References[e.MassReference]:
        """The placed template mass-inertia elements."""
        return References(self._holder_node(), e.MassReference)

    @property
    def detail_references(self) -> References[e.DetailReference]:
        """The placed template details."""
        return References(self._holder_node(), e.DetailReference)

    @property
    def structure_references(self) -> References[e.StructureReference]:
        """The placed template structures."""
        return References(self._holder_node(), e.StructureReference)

    def _containers(self) -> Iterator[Elements[Any]]:
        yield from super()._containers()
        yield self.mass_elements
        yield self.point_references
        yield self.line_references
        yield self.solid_references
        yield self.mass_references
        yield self.details
        yield self.detail_references
        yield self.structure_references
        yield self.structures


#: A document, structure or detail, as ``Element.holder`` returns it.
Holder = DetailContainers


# ------------------------------------------------------------------------------------------- holding elements


class _Group(DetailContainers, Element, HolderNode):
    """An element that holds elements."""

    __slots__ = ()

    _c_type = ""

    @property
    def _content(self) -> Content:
        return self._top

    @property
    def _target(self) -> Any:
        return ffi.cast(self._c_type, self._base)

    def _holder_node(self) -> HolderNode:
        return self

    def _details(self) -> Iterator[str]:
        count = sum(len(container) for container in self._containers())
        yield f"of {count} element{'' if count == 1 else 's'}"


class _AnyDetail(e._WithMassData, _Group):
    """What details and template details have in common."""

    __slots__ = ()

    _name = "Detail"
    _c_type = "ztCAD_cmnDetail*"


class Detail(_AnyDetail, kind=lib.ztCAD_ElementDetail):
    """A detail: a rigid part of points, lines, solids and spheres, with mass-inertia data."""

    __slots__ = ()


class TemplateDetail(_AnyDetail, kind=lib.ztCAD_ElementTmplDetail):
    """A detail kept as a template, which ``DetailReference`` places."""

    __slots__ = ()


class _AnyStructure(StructureContainers, _Group):
    """What structures and template structures have in common."""

    __slots__ = ()

    _name = "Structure"
    _c_type = "ztCAD_commonStructure*"

    def _owner(self) -> Node:
        # A nested structure belongs to the document, not to what holds it.
        return self._holder if isinstance(self._holder, Content) else self._top

    def _wrap(self, pointer: Any, element_type: type[E]) -> E:
        if not issubclass(element_type, _AnyStructure):
            return super()._wrap(pointer, element_type)
        # several structures may hold the same one, which is one object, and may be a template
        known = self._top.nested.get(pointer)
        if known is None:
            known = CLASSES[lib.ztCAD_getKind(pointer)](self._top, self, pointer)
            self._top.nested[pointer] = known
        return known  # type: ignore[return-value]

    def _known(self, pointer: Any) -> Element | None:
        return super()._known(pointer) or self._top.nested.get(pointer)

    def _remove_pointer(self, pointer: Any, kind: int) -> None:
        nested = self._top.nested.get(pointer)
        if nested is None:
            super()._remove_pointer(pointer, kind)
            return
        lib.ztCAD_removeFromStructure(pointer, self._target, lib.ztCAD_ElementStructure)
        self._lists.pop(lib.ztCAD_ElementStructure, None)
        nested._pointer = NULL
        del self._top.nested[pointer]

    def unify_names(self) -> None:
        """Makes the names in the structure unique, at each level, as saving does."""
        with lock:
            lib.ztCAD_unifyNames(self._target)


class Structure(_AnyStructure, kind=lib.ztCAD_ElementStructure):
    """A structure: a placed group of elements, which may contain structures."""

    __slots__ = ()


class TemplateStructure(_AnyStructure, kind=lib.ztCAD_ElementTmplStructure):
    """A structure kept as a template, which ``StructureReference`` places."""

    __slots__ = ()


D = TypeVar("D", Detail, TemplateDetail)
T = TypeVar("T", Structure, TemplateStructure)


class Details(Elements[D]):
    """Details or template details."""

    __slots__ = ()

    def add(
        self,
        name: str = "",
        *,
        mass_data: npt.ArrayLike | None = None,
        comment: str = "",
        color: npt.ArrayLike | None = None,
        visible: bool | None = None,
        lcs: npt.ArrayLike | None = None,
    ) -> D:
        """Appends a detail. Without ``mass_data``, shape (10,), it is not read back from a file."""
        with self._new(name, comment, color, visible, lcs) as detail:
            if mass_data is not None:
                detail.mass_data = mass_data
                detail.read_ok = True  # complete, as if it had been read
        return detail


class Structures(Elements[T]):
    """Structures or template structures."""

    __slots__ = ()

    def add(
        self,
        name: str = "",
        *,
        comment: str = "",
        color: npt.ArrayLike | None = None,
        visible: bool | None = None,
        lcs: npt.ArrayLike | None = None,
    ) -> T:
        """Appends an empty structure.

        Nested structures need a name to be read back from a file. They stay in memory until the process ends,
        even if their document is closed.
        """
        with self._new(name, comment, color, visible, lcs) as structure:
            pass
        return structure
