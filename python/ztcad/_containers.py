"""The elements of one kind in a document, structure or detail."""

from __future__ import annotations

from collections.abc import Iterable, Iterator, Sequence
from contextlib import contextmanager
from typing import TYPE_CHECKING, Any, Generic, TypeVar, overload

import numpy as np
import numpy.typing as npt

from ztcad import _arrays
from ztcad._arrays import Indices, Reals
from ztcad._elements import (
    Line,
    MassElement,
    Point,
    Reference,
    Solid,
    Sphere,
    TemplateLine,
    TemplateMassElement,
    TemplatePoint,
    TemplateSolid,
)
from ztcad._fields import Field
from ztcad._library import NULL, ffi, lib, lock, to_text
from ztcad._node import Element

if TYPE_CHECKING:
    from ztcad._node import HolderNode

E = TypeVar("E", bound=Element)
R = TypeVar("R", bound=Reference)
P = TypeVar("P", Point, TemplatePoint)
L = TypeVar("L", Line, TemplateLine)
S = TypeVar("S", Solid, TemplateSolid)
M = TypeVar("M", MassElement, TemplateMassElement)

_NEAR = 16  # an element so near to an end of the list is found without listing all


class Elements(Sequence[E], Generic[E]):
    """The elements of one kind, in the order in which they were added: a sequence.

    ``elements[3]`` is the fourth one, ``elements["bolt"]`` the first one of that name, ``elements[2:5]`` a
    list; ``del`` removes. Properties in the plural, such as ``names``, are arrays with one row for each
    element, made by one call of the library. They are copies, and read-only, because writing to them would
    not change the document; assign a whole array to change it: ``elements.colors = array``.
    """

    __slots__ = ("_kind", "_node", "_type")

    def __init__(self, node: HolderNode, element_type: type[E]) -> None:
        self._node = node
        self._type = element_type
        self._kind = element_type._kind

    # --------------------------------------------------------------------------------------------- sequence

    def __len__(self) -> int:
        with lock:
            return int(self._node._holder_call("countIn{}", self._kind))

    def _addresses(self) -> Any:
        """The addresses of all elements, a C array, kept until elements are added or removed."""
        with lock:
            self._node._check()
            addresses = self._node._lists.get(self._kind)
            if addresses is None:
                count = len(self)
                addresses = ffi.new("ztCAD_Base*[]", count)
                self._node._holder_call("list{}", self._kind, addresses, count)
                self._node._lists[self._kind] = addresses
            return addresses

    def _changed(self) -> None:
        self._node._lists.pop(self._kind, None)

    def _wrap(self, pointer: Any) -> E:
        return self._node._wrap(pointer, self._type)

    @overload
    def __getitem__(self, index: int | str) -> E: ...

    @overload
    def __getitem__(self, index: slice) -> list[E]: ...

    def __getitem__(self, index: int | str | slice) -> E | list[E]:
        with lock:
            if isinstance(index, str):
                return self[self._find(index)]
            if isinstance(index, slice):
                addresses = self._addresses()
                return [self._wrap(addresses[i]) for i in range(*index.indices(len(addresses)))]
            return self._wrap(self._pointer_at(index))

    def _pointer_at(self, index: int) -> Any:
        addresses = self._node._lists.get(self._kind)
        count = len(self) if addresses is None else len(addresses)
        place = index.__index__()
        place += count if place < 0 else 0
        if not 0 <= place < count:
            raise IndexError(f"index {index} is out of range: there are {count} elements")
        if addresses is None and min(place, count - 1 - place) < _NEAR:
            return self._node._holder_call("getFrom{}", self._kind, place)
        return self._addresses()[place]

    def _find(self, name: str) -> int:
        try:
            return self.names.index(name)
        except ValueError:
            raise KeyError(name) from None

    def get(self, name: str) -> E | None:
        """The first element of that name; ``None`` if there is none."""
        try:
            return self[name]
        except KeyError:
            return None

    def __iter__(self) -> Iterator[E]:
        addresses = self._addresses()
        for index in range(len(addresses)):
            with lock:
                if self._addresses() is not addresses:
                    raise RuntimeError("elements were added or removed during the iteration")
                element = self._wrap(addresses[index])
            yield element

    def __contains__(self, value: object) -> bool:
        if isinstance(value, str):
            return value in self.names
        return isinstance(value, Element) and self._index_of(value) is not None

    def _index_of(self, element: Element) -> int | None:
        with lock:
            if element._kind != self._kind and not isinstance(element, self._type):
                return None
            if element._holder is not self._node or element._pointer == NULL:
                return None
            addresses = self._addresses()
            pointer = element._pointer
            return next((i for i in range(len(addresses)) if addresses[i] == pointer), None)

    def index(self, value: Any, start: int = 0, stop: int | None = None) -> int:
        """The position of an element, or of the first element of a name."""
        if isinstance(value, str):
            return self.names.index(value, start, len(self) if stop is None else stop)
        found = self._index_of(value) if isinstance(value, Element) else None
        if found is None or found not in range(len(self))[start:stop]:
            raise ValueError(f"{value!r} is not here")
        return found

    def count(self, value: Any) -> int:
        """How many elements have a name, or are this element."""
        return self.names.count(value) if isinstance(value, str) else int(value in self)

    def __delitem__(self, index: int | str | slice) -> None:
        with lock:
            for element in self[index] if isinstance(index, slice) else [self[index]]:
                self._node._remove(element)

    def remove(self, element: E) -> None:
        """Removes an element of this container; ``ValueError`` for any other."""
        with lock:
            self.index(element)
            self._node._remove(element)

    def clear(self) -> None:
        """Removes all elements; ``BufferError``, with nothing removed, while arrays use their memory."""
        with lock:
            elements = [e for e in (self._node._known(a) for a in self._addresses()) if e is not None]
            for element in elements:
                element._require_no_views()
            for pointer in self._addresses():  # from the front, where the library looks first
                self._node._remove_pointer(pointer, self._kind)

    def __repr__(self) -> str:
        count = len(self)
        shown = ", ".join(repr(name) for name in (e.name for e in self[:3]))
        more = ", ..." if count > 3 else ""
        return f"<{count} {self._type.__name__}{'' if count == 1 else 's'}: {shown}{more}>" if count else (
            f"<0 {self._type.__name__}s>"
        )

    # ----------------------------------------------------------------------------------------------- adding

    def append(self, element: Element, *, name: str | None = None) -> E:
        """Appends a copy of an element, of this or another document, and returns the copy.

        A template can be copied from an element of its sort and the other way round. Nested structures are
        copied too.
        """
        from ztcad._copying import copy, is_inside

        with lock:
            if is_inside(self._node, element):
                raise ValueError("an element cannot be copied into itself")
            with self._new() as made:
                copy(element, made)
                if name is not None:
                    made.name = name
        return made

    @contextmanager
    def _new(
        self,
        name: str = "",
        comment: str = "",
        color: npt.ArrayLike | None = None,
        visible: bool | None = None,
        lcs: npt.ArrayLike | None = None,
    ) -> Iterator[E]:
        """A new element, which is removed again if the block fails."""
        with lock:
            pointer = self._node._holder_call("appendTo{}", self._kind)
            if pointer == NULL:
                raise ValueError("the element would be nested deeper than a file may nest it")
            self._changed()
            element = self._wrap(pointer)
            try:
                if name:
                    element.name = name
                if comment:
                    element.comment = comment
                if color is not None:
                    element.color = color
                if visible is not None:
                    element.visible = visible
                if lcs is not None:
                    element.lcs = lcs
                yield element
            except BaseException:
                self._node._remove(element)
                raise

    def _add_many(self, count: int) -> Any:
        """Appends elements and returns their addresses, a C array."""
        if count > _arrays.MOST:
            raise ValueError(f"at most {_arrays.MOST} elements can be added")
        addresses = ffi.new("ztCAD_Base*[]", count)
        if not self._node._holder_call("appendManyTo{}", self._kind, count, addresses):
            raise MemoryError
        self._changed()
        return addresses

    # --------------------------------------------------------------------------------------- whole arrays

    def _texts(self, field: int) -> list[str]:
        with lock:
            addresses = self._addresses()
            count = len(addresses)
            ends = np.empty(count, np.int64)
            c_ends = _arrays.address(ends, "int64_t*")
            size = 24 * count + 1
            while True:
                buffer = bytearray(size)
                length = lib.ztCAD_getTexts(
                    addresses, count, field, ffi.from_buffer("char[]", buffer), size, c_ends
                )
                if length < size:
                    break
                size = length + 1
        if length < 0:
            raise MemoryError
        data = bytes(buffer[:length])
        stops = ends.tolist()
        starts = [0, *stops[:-1]]
        if data.isascii():
            text = data.decode()
            return [text[a:b] for a, b in zip(starts, stops)]
        return [data[a:b].decode(errors="replace") for a, b in zip(starts, stops)]

    def _set_texts(self, field: int, values: Iterable[str], what: str) -> None:
        texts = [to_text(value, what) for value in values]
        with lock:
            addresses = self._addresses()
            self._require_rows(len(texts), len(addresses), f"{what}s")
            self._write_texts(field, texts, addresses)

    @staticmethod
    def _write_texts(field: int, texts: list[bytes], addresses: Any) -> None:
        ends = np.cumsum([len(text) for text in texts], dtype=np.int64)
        c_ends = _arrays.address(ends, "int64_t*")
        if lib.ztCAD_setTexts(addresses, len(texts), field, b"".join(texts), c_ends) != len(texts):
            raise MemoryError

    @staticmethod
    def _require_rows(given: int, wanted: int, what: str) -> None:
        if given != wanted:
            raise ValueError(f"{given} {what} were given for {wanted} elements")

    def _numbers(self, function: Any, width: int, dtype: type[Any], kind: str) -> npt.NDArray[Any]:
        with lock:
            addresses = self._addresses()
            values = np.empty((len(addresses), width), dtype)
            function(addresses, len(addresses), _arrays.address(values, kind), NULL)
        return values

    def _reals(self, function: Any, width: int) -> Reals:
        return self._numbers(function, width, np.float64, "double*")

    def _set_reals(self, function: Any, value: npt.ArrayLike, width: int, what: str) -> None:
        rows = _arrays.reals(value, width, what)
        with lock:
            addresses = self._addresses()
            self._require_rows(len(rows), len(addresses), what)
            self._write_reals(function, rows, addresses)

    @staticmethod
    def _write_reals(function: Any, rows: Reals, addresses: Any) -> None:
        # a row of nan means "no value", as in the arrays that are read
        present = np.ascontiguousarray(~np.isnan(rows).all(axis=1), np.uint8)
        c_rows, c_present = _arrays.address(rows, "double*"), _arrays.address(present, "uint8_t*")
        if function(addresses, len(rows), c_rows, c_present) != len(rows):
            raise MemoryError

    def _get_names(self) -> list[str]:
        """The names of all elements."""
        return self._texts(lib.ztCAD_TextName)

    def _set_names(self, values: Iterable[str]) -> None:
        self._set_texts(lib.ztCAD_TextName, values, "name")

    names = Field(_get_names, _set_names)

    def _get_comments(self) -> list[str]:
        """The comments of all elements."""
        return self._texts(lib.ztCAD_TextComment)

    def _set_comments(self, values: Iterable[str]) -> None:
        self._set_texts(lib.ztCAD_TextComment, values, "comment")

    comments = Field(_get_comments, _set_comments)

    def _get_informs(self) -> list[str]:
        """The second texts of all elements."""
        return self._texts(lib.ztCAD_TextInform)

    def _set_informs(self, values: Iterable[str]) -> None:
        self._set_texts(lib.ztCAD_TextInform, values, "inform")

    informs = Field(_get_informs, _set_informs)

    def _get_colors(self) -> npt.NDArray[np.int64]:
        """The colours, shape (n, 3): red, green, blue; -1, -1, -1 where there is none."""
        with lock:
            addresses = self._addresses()
            count = len(addresses)
            rgb = np.empty((count, 3), np.uint32)
            present = np.empty(count, np.uint8)
            c_rgb, c_present = _arrays.address(rgb, "uint32_t*"), _arrays.address(present, "uint8_t*")
            lib.ztCAD_getColors(addresses, count, c_rgb, c_present)
        colors = rgb.astype(np.int64)
        colors[present == 0] = -1
        return _arrays.read_only(colors)

    def _set_colors(self, value: npt.ArrayLike) -> None:
        rgb, present = _arrays.colors(value)
        with lock:
            addresses = self._addresses()
            self._require_rows(len(rgb), len(addresses), "colours")
            self._write_colors(rgb, present, addresses)

    colors = Field(_get_colors, _set_colors)

    @staticmethod
    def _write_colors(rgb: Indices, present: npt.NDArray[np.uint8], addresses: Any) -> None:
        c_rgb, c_present = _arrays.address(rgb, "uint32_t*"), _arrays.address(present, "uint8_t*")
        lib.ztCAD_setColors(addresses, len(rgb), c_rgb, c_present)

    def _get_visibilities(self) -> npt.NDArray[np.int8]:
        """Whether each element is shown, shape (n,): 1 shown, 0 hidden, -1 unset."""
        with lock:
            addresses = self._addresses()
            values = np.empty(len(addresses), np.int8)
            lib.ztCAD_getVisibilities(addresses, len(addresses), _arrays.address(values, "int8_t*"))
        return _arrays.read_only(values)

    def _set_visibilities(self, value: npt.ArrayLike) -> None:
        values = np.ascontiguousarray(np.clip(np.asarray(value), -1, 1), np.int8)
        if values.ndim != 1:
            raise ValueError(f"visibilities must have the shape (n,), not {values.shape}")
        with lock:
            addresses = self._addresses()
            self._require_rows(len(values), len(addresses), "visibilities")
            lib.ztCAD_setVisibilities(addresses, len(values), _arrays.address(values, "int8_t*"))

    visibilities = Field(_get_visibilities, _set_visibilities)

    def _get_systems(self) -> Reals:
        """The coordinate systems, shape (n, 4, 3): origin, x, y, z axis; nan where there is none."""
        return _arrays.read_only(self._reals(lib.ztCAD_getSystems, 12).reshape(-1, 4, 3))

    def _set_systems(self, value: npt.ArrayLike) -> None:
        self._write_systems(lib.ztCAD_setSystems, value, "systems")

    systems = Field(_get_systems, _set_systems)

    def _write_systems(self, function: Any, value: npt.ArrayLike, what: str) -> None:
        array = np.asarray(value, np.float64)
        rows = _arrays.reals(array.reshape(len(array), -1) if array.size else array, 12, what)
        absent = np.isnan(rows).all(axis=1)
        with lock:
            addresses = self._addresses()
            self._require_rows(len(rows), len(addresses), what)
            # a system that must be there is emptied: that of a structure, a placement
            for size in (-1, 0):
                sizes = np.where(absent, size, 12).astype(np.int32)
                changed = function(
                    addresses,
                    len(rows),
                    _arrays.address(rows, "double*"),
                    _arrays.address(sizes, "int32_t*"),
                )
                if changed == len(rows):
                    return
        raise MemoryError


class _WithCenters(Elements[E]):
    __slots__ = ()

    def _get_centers(self) -> Reals:
        """The positions, shape (n, 3), in the document's length unit; nan where there is none."""
        return _arrays.read_only(self._reals(lib.ztCAD_getCenters, 3))

    def _set_centers(self, value: npt.ArrayLike) -> None:
        self._set_reals(lib.ztCAD_setCenters, value, 3, "centres")

    centers = Field(_get_centers, _set_centers)

    def _add_with_centers(
        self, centers: Reals, names: Iterable[str] | None, colors: npt.ArrayLike | None
    ) -> Any:
        """Appends elements and returns their addresses.

        All arguments are checked before. If memory runs out after the elements were appended, they stay.
        """
        texts = None if names is None else [to_text(name, "a name") for name in names]
        rgb = None if colors is None else _arrays.colors(colors)
        if texts is not None:
            self._require_rows(len(texts), len(centers), "names")
        if rgb is not None:
            self._require_rows(len(rgb[0]), len(centers), "colours")
        with lock:
            addresses = self._add_many(len(centers))
            self._write_reals(lib.ztCAD_setCenters, centers, addresses)
            if texts is not None:
                self._write_texts(lib.ztCAD_TextName, texts, addresses)
            if rgb is not None:
                self._write_colors(*rgb, addresses)
        return addresses


class _WithMassData(Elements[E]):
    __slots__ = ()

    def _get_mass_data(self) -> Reals:
        """The declared mass-inertia data, shape (n, 10); nan where there is none."""
        return _arrays.read_only(self._reals(lib.ztCAD_getMIPs, 10))

    def _set_mass_data(self, value: npt.ArrayLike) -> None:
        self._set_reals(lib.ztCAD_setMIPs, value, 10, "rows of mass-inertia data")

    mass_data = Field(_get_mass_data, _set_mass_data)


class Points(_WithCenters[P]):
    """Points or template points."""

    __slots__ = ()

    def add(
        self,
        name: str = "",
        *,
        center: npt.ArrayLike | None = None,
        comment: str = "",
        color: npt.ArrayLike | None = None,
        visible: bool | None = None,
        lcs: npt.ArrayLike | None = None,
    ) -> P:
        """Appends a point. Without a centre it is not read back from a file."""
        with self._new(name, comment, color, visible, lcs) as point:
            if center is not None:
                point.center = center
        return point

    def add_many(
        self,
        centers: npt.ArrayLike,
        *,
        names: Iterable[str] | None = None,
        colors: npt.ArrayLike | None = None,
    ) -> None:
        """Appends a point for each row of ``centers``, shape (n, 3): a million of them in one call."""
        self._add_with_centers(_arrays.reals(centers, 3, "centres"), names, colors)


class Lines(Elements[L]):
    """Polylines or template polylines."""

    __slots__ = ()

    def add(
        self,
        name: str = "",
        *,
        vertices: npt.ArrayLike = (),
        comment: str = "",
        color: npt.ArrayLike | None = None,
        visible: bool | None = None,
        lcs: npt.ArrayLike | None = None,
    ) -> L:
        """Appends a polyline through ``vertices``, shape (n, 3)."""
        with self._new(name, comment, color, visible, lcs) as line:
            line.vertices = vertices
        return line


class Solids(_WithMassData[S]):
    """Triangulated solids or template solids."""

    __slots__ = ()

    def add(
        self,
        name: str = "",
        *,
        vertices: npt.ArrayLike = (),
        faces: npt.ArrayLike = (),
        mass_data: npt.ArrayLike | None = None,
        comment: str = "",
        color: npt.ArrayLike | None = None,
        visible: bool | None = None,
        lcs: npt.ArrayLike | None = None,
    ) -> S:
        """Appends a solid of ``vertices``, shape (n, 3), and triangles ``faces``, shape (m, 3)."""
        with self._new(name, comment, color, visible, lcs) as solid:
            solid.vertices = vertices
            solid.faces = faces
            if mass_data is not None:
                solid.mass_data = mass_data
        return solid


class Spheres(_WithCenters[Sphere], _WithMassData[Sphere]):
    """Spheres."""

    __slots__ = ()

    def add(
        self,
        name: str = "",
        *,
        center: npt.ArrayLike | None = None,
        radius: float | None = None,
        mass_data: npt.ArrayLike | None = None,
        comment: str = "",
        color: npt.ArrayLike | None = None,
        visible: bool | None = None,
        lcs: npt.ArrayLike | None = None,
    ) -> Sphere:
        """Appends a sphere. Without centre and radius it is not read back from a file."""
        with self._new(name, comment, color, visible, lcs) as sphere:
            if center is not None:
                sphere.center = center
            sphere.radius = radius
            if mass_data is not None:
                sphere.mass_data = mass_data
        return sphere

    def add_many(
        self,
        centers: npt.ArrayLike,
        radii: npt.ArrayLike,
        *,
        names: Iterable[str] | None = None,
        colors: npt.ArrayLike | None = None,
    ) -> None:
        """Appends a sphere for each row of ``centers``, shape (n, 3), and ``radii``, shape (n,) or one."""
        rows = _arrays.reals(centers, 3, "centres")
        values = np.ascontiguousarray(np.broadcast_to(np.asarray(radii, np.float64), len(rows)))
        with lock:
            addresses = self._add_with_centers(rows, names, colors)
            self._write_reals(lib.ztCAD_setRadii, values.reshape(-1, 1), addresses)

    def _get_radii(self) -> Reals:
        """The radii, shape (n,), in the document's length unit; nan where there is none."""
        return _arrays.read_only(self._reals(lib.ztCAD_getRadii, 1).reshape(-1))

    def _set_radii(self, value: npt.ArrayLike) -> None:
        self._set_reals(lib.ztCAD_setRadii, np.asarray(value, np.float64).reshape(-1, 1), 1, "radii")

    radii = Field(_get_radii, _set_radii)



class MassElements(_WithMassData[M]):
    """Mass-inertia elements or their templates."""

    __slots__ = ()

    def add(
        self,
        name: str = "",
        *,
        mass_data: npt.ArrayLike,
        comment: str = "",
        lcs: npt.ArrayLike | None = None,
    ) -> M:
        """Appends a mass-inertia element with ``mass_data``, shape (10,)."""
        with self._new(name, comment, None, None, lcs) as element:
            element.mass_data = mass_data
        return element


class References(Elements[R]):
    """References to templates of one kind."""

    __slots__ = ()

    def add(
        self,
        name: str = "",
        *,
        template: str | Element,
        placement: npt.ArrayLike | None = None,
        file: str = "",
        comment: str = "",
        color: npt.ArrayLike | None = None,
        visible: bool | None = None,
        lcs: npt.ArrayLike | None = None,
    ) -> R:
        """Appends a reference that places ``template``, a template or its name, by ``placement``.

        ``placement`` is origin, x, y and z axis in the frame of the holder, shape (4, 3) or (12,).
        """
        with self._new(name, comment, color, visible, lcs) as reference:
            reference.template = template
            if placement is not None:
                reference.placement = placement
            if file:
                reference.file = file
        return reference

    def _get_templates(self) -> list[str]:
        """The names of the templates of all references."""
        return self._texts(lib.ztCAD_TextTemplateName)

    def _set_templates(self, values: Iterable[str]) -> None:
        self._set_texts(lib.ztCAD_TextTemplateName, values, "name of a template")

    templates = Field(_get_templates, _set_templates)

    def _get_files(self) -> list[str]:
        """The files of the templates of all references; empty texts: the document itself."""
        return self._texts(lib.ztCAD_TextTemplateFile)

    def _set_files(self, values: Iterable[str]) -> None:
        self._set_texts(lib.ztCAD_TextTemplateFile, values, "file")

    files = Field(_get_files, _set_files)

    def _get_placements(self) -> Reals:
        """The placements, shape (n, 4, 3): origin, x, y, z axis; nan where there is none."""
        return _arrays.read_only(self._reals(lib.ztCAD_getPlacements, 12).reshape(-1, 4, 3))

    def _set_placements(self, value: npt.ArrayLike) -> None:
        self._write_systems(lib.ztCAD_setPlacements, value, "placements")

    placements = Field(_get_placements, _set_placements)


