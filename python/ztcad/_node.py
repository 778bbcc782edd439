"""What documents and elements have in common: who owns what, and what an element of any kind can do.

A document's memory is owned by a ``Content``, which elements and views refer to, so that it lasts as long as
any of them. References go from an element to its holder; holders know their elements weakly. No cycles arise:
memory is freed when the last reference goes, without the garbage collector.
"""

from __future__ import annotations

import weakref
from collections.abc import Iterator
from typing import TYPE_CHECKING, Any, TypeVar, cast

import numpy as np
import numpy.typing as npt

from ztcad import _arrays
from ztcad._arrays import Reals
from ztcad._errors import ClosedError, RemovedError
from ztcad._fields import Field
from ztcad._library import NULL, Handle, ffi, from_text, lib, lock, read_text, to_text

if TYPE_CHECKING:
    from ztcad._document import Document
    from ztcad._holders import Holder

E = TypeVar("E", bound="Element")

#: The Python class of each kind of element.
CLASSES: dict[int, type[Element]] = {}

Children = weakref.WeakValueDictionary[Any, "Element"]


class Node:
    """A document's content or an element: what views and elements keep alive."""

    __slots__ = ("__weakref__", "_children", "_lists", "_views")

    def __init__(self) -> None:
        self._views: set[int] = set()  # live arrays of this node and of what it holds, by identity
        self._children: Children | None = None  # elements that Python refers to, by address
        self._lists: dict[int, Any] = {}  # addresses of all elements of a kind, until they change

    def __reduce_ex__(self, protocol: Any) -> Any:
        """Refuses copies and pickles: a second object would not know when the first one is removed."""
        raise TypeError(f"a {type(self).__name__} cannot be copied or pickled: append it to a container")

    def _check(self) -> None:
        """Raises if the library has destroyed this."""
        raise NotImplementedError

    def _chain(self) -> Iterator[Node]:
        """This, and whatever destroys this when it is destroyed."""
        raise NotImplementedError

    def _require_no_views(self) -> None:
        _arrays.require_no_views(self._views, "this memory")


class HolderNode(Node):
    """A node that holds elements, for the containers: a document's content, a structure or a detail."""

    __slots__ = ()

    _name = ""  # as it is in the names of the library's functions

    @property
    def _content(self) -> Content:
        raise NotImplementedError

    @property
    def _target(self) -> Any:
        """The holder's address as the library's functions take it; raises if it is gone."""
        raise NotImplementedError

    def _holder_call(self, function: str, *arguments: Any) -> Any:
        """Calls a function of the library for this sort of holder: ``"countIn{}"`` for ``countInDoc``."""
        return library_function(function, self._name)(self._target, *arguments)

    def _known(self, pointer: Any) -> Element | None:
        """The object of an element, if Python refers to it."""
        return None if self._children is None else self._children.get(pointer)

    def _wrap(self, pointer: Any, element_type: type[E]) -> E:
        """The one object of an element of this holder. The caller holds the lock."""
        if self._children is None:
            self._children = weakref.WeakValueDictionary()
        known = self._children.get(pointer)
        if known is None:
            known = element_type(self._content, self, pointer)
            self._children[pointer] = known
        assert isinstance(known, element_type)
        return known

    def _remove(self, element: Element) -> None:
        with lock:
            element._check()
            element._require_no_views()
            self._remove_pointer(element._pointer, element._kind)

    def _remove_pointer(self, pointer: Any, kind: int) -> None:
        """Removes an element that no array uses."""
        known = self._known(pointer)
        library_function("removeFrom{}", self._name)(pointer, self._target, kind)
        self._lists.pop(kind, None)
        if known is not None and self._children is not None:
            known._pointer = NULL
            del self._children[pointer]


def library_function(pattern: str, holder: str) -> Any:
    """``ztCAD_countInDoc`` for ``"countIn{}"`` and ``"Doc"``."""
    return getattr(lib, "ztCAD_" + pattern.format(holder))


class Content(HolderNode):
    """What a document holds, between two loads of it."""

    __slots__ = ("closed", "document", "handle", "nested")

    _name = "Doc"

    def __init__(self, handle: Handle) -> None:
        super().__init__()
        self.handle: Handle | None = handle
        self.closed = False
        self.document: weakref.ref[Document] | None = None
        # Several structures may hold a nested one. It belongs to the document, not to any of them.
        self.nested: Children = weakref.WeakValueDictionary()

    def _check(self) -> None:
        if self.handle is None:
            if self.closed:
                raise ClosedError("the document is closed")
            raise RemovedError("the element is gone: its document was loaded again")

    def _chain(self) -> Iterator[Node]:
        yield self

    @property
    def pointer(self) -> Any:
        """The document in the library."""
        if self.handle is None:
            self._check()
        assert self.handle is not None
        return self.handle.pointer

    @property
    def _content(self) -> Content:
        return self

    @property
    def _target(self) -> Any:
        return self.pointer

    def end(self, *, closed: bool) -> None:
        """Invalidates every element. Arrays that are alive keep the memory."""
        self.handle = None
        self.closed = closed


class _Pin:
    """Base object of one array: keeps the memory alive and counts as a view until it goes.

    It keeps the element too: another object for the same element would not know of the view.
    """

    __slots__ = ("__array_interface__", "_element", "_handle", "_sets")

    def __init__(
        self, element: Element, handle: Handle, sets: list[set[int]], interface: dict[str, Any]
    ) -> None:
        self.__array_interface__ = interface
        self._element = element
        self._handle = handle
        self._sets = sets
        for views in sets:
            views.add(id(self))  # one operation of the interpreter: no thread can come between

    def __del__(self) -> None:
        for views in self._sets:
            views.discard(id(self))


class Element(Node):
    """An element of a document.

    Elements are made by the containers of documents, structures and details. There is one object for each
    element: ``points[0] is points[0]``. One that was removed raises ``RemovedError`` when it is used.
    """

    __slots__ = ("_holder", "_pointer", "_top")

    _kind = 0

    def __init__(self, top: Content, holder: HolderNode, pointer: Any) -> None:
        super().__init__()
        self._top = top
        self._holder = holder
        self._pointer = pointer  # null once it was removed

    def __init_subclass__(cls, kind: int = 0) -> None:
        super().__init_subclass__()
        if kind:
            cls._kind = kind
            CLASSES[kind] = cls

    # -------------------------------------------------------------------------------------------- ownership

    def _owner(self) -> Node:
        return self._holder

    def _check(self) -> None:
        self._owner()._check()
        if self._pointer == NULL:
            raise RemovedError("the element was removed from its document")

    def _chain(self) -> Iterator[Node]:
        yield self
        yield from self._owner()._chain()

    @property
    def _base(self) -> Any:
        """The element's address, a ``ztCAD_Base*``; raises if it is gone. The caller holds the lock."""
        self._check()
        return self._pointer

    def _get(self, function: Any, *arguments: Any) -> Any:
        with lock:
            return function(self._base, *arguments)

    def _text(self, function: Any) -> str:
        with lock:
            return read_text(function, self._base) or ""

    def _set_text(self, function: Any, value: str, what: str) -> None:
        self._get(function, to_text(value, what))

    def _view(
        self, pins: set[int], pointer: Any, rows: int, typestr: str, dtype: type[np.generic]
    ) -> npt.NDArray[Any]:
        """A read-only view of ``rows`` triples; ``pins`` are the views of this list."""
        if rows == 0:
            return _arrays.read_only(np.empty((0, 3), dtype))  # NumPy refuses a null address
        assert self._top.handle is not None
        interface = {
            "version": 3,
            "typestr": typestr,
            "shape": (rows, 3),
            "data": (int(ffi.cast("uintptr_t", pointer)), True),
        }
        sets = [pins, *(node._views for node in self._chain())]
        return np.asarray(_Pin(self, self._top.handle, sets, interface))

    # ----------------------------------------------------------------------------------------- every element

    @property
    def kind(self) -> str:
        """The kind, such as ``"point"`` or ``"template-structure"``."""
        return from_text(lib.ztCAD_kindWord(self._kind))

    @property
    def holder(self) -> Holder:
        """The document, structure or detail that contains the element."""
        self._check()
        holder = self._holder
        return holder_object(holder)

    @property
    def document(self) -> Document:
        """The document that the element belongs to."""
        self._check()
        return document_of(self._top)

    @property
    def name(self) -> str:
        """The name. It is kept as given until the document is saved, which makes names unique."""
        return self._text(lib.ztCAD_getName)

    @name.setter
    def name(self, value: str) -> None:
        self._set_text(lib.ztCAD_setName, value, "the name")

    @property
    def comment(self) -> str:
        """Free text about the element."""
        return self._text(lib.ztCAD_getComment)

    @comment.setter
    def comment(self, value: str) -> None:
        self._set_text(lib.ztCAD_setComment, value, "the comment")

    @property
    def inform(self) -> str:
        """A second free text about the element."""
        return self._text(lib.ztCAD_getInform)

    @inform.setter
    def inform(self, value: str) -> None:
        self._set_text(lib.ztCAD_setInform, value, "the inform")

    def _get_color(self) -> tuple[int, int, int] | None:
        """Red, green, blue, usually from 0 to 255; ``None`` if there is no colour."""
        rgb = ffi.new("uint32_t[3]")
        return (rgb[0], rgb[1], rgb[2]) if self._get(lib.ztCAD_getColor, rgb) else None

    def _set_color(self, value: npt.ArrayLike | None) -> None:
        rgb = NULL
        if value is not None:
            rgb = ffi.new("uint32_t[3]", [int(part) for part in _arrays.unsigned(value, "a colour")])
        self._get(lib.ztCAD_setColor, rgb)

    color = Field(_get_color, _set_color)

    @property
    def visible(self) -> bool | None:
        """Whether the element is shown; ``None`` if that is unset."""
        visible = self._get(lib.ztCAD_getVisible)
        return None if visible < 0 else bool(visible)

    @visible.setter
    def visible(self, value: bool | None) -> None:
        self._get(lib.ztCAD_setVisible, -1 if value is None else int(bool(value)))

    def _get_lcs(self) -> Reals | None:
        """The coordinate system in the frame of the holder: origin, x, y and z axis, shape (4, 3), a copy.

        The element's own coordinates are in this system. ``None`` without a system, and for a system without
        values, as a new structure has one. Set it to 12 numbers, or to ``None`` to clear it.
        """
        return self._system(lib.ztCAD_getLCS)

    def _set_lcs(self, value: npt.ArrayLike | None) -> None:
        self._set_system(lib.ztCAD_setSystems, value, "a coordinate system")

    lcs = Field(_get_lcs, _set_lcs)

    def _system(self, function: Any) -> Reals | None:
        values = np.empty(12)
        size = self._get(function, _arrays.address(values, "double*"), 12)
        return _arrays.read_only(values.reshape(4, 3)) if size == 12 else None

    def _set_system(self, function: Any, value: npt.ArrayLike | None, what: str) -> None:
        values = np.zeros(12) if value is None else _arrays.system(value, what)
        with lock:
            for size in (12,) if value is not None else (-1, 0):  # a system that must be there is emptied
                if function(
                    ffi.new("ztCAD_Base*[1]", [self._base]),
                    1,
                    _arrays.address(values, "double*"),
                    ffi.new("int32_t*", size),
                ):
                    return
        raise MemoryError

    @property
    def is_sound(self) -> bool:
        """Whether the element is complete and was read without errors, as loading checks it."""
        return bool(self._get(lib.ztCAD_isSound))

    def _get_read_ok(self) -> bool | None:
        """Whether the element's last read succeeded; ``None`` if it was never read.

        A detail that was built is not sound until this is true, as ``details.add`` with mass data makes it.
        References do not have it.
        """
        result = self._get(lib.ztCAD_getReadOk)
        return None if result < 0 else bool(result)

    def _set_read_ok(self, value: bool) -> None:
        self._get(lib.ztCAD_setReadOk, value)

    read_ok = Field(_get_read_ok, _set_read_ok)

    def to_text(self, *, debug: bool = False) -> str:
        """The element as text of one or more lines, with numbers of six digits."""
        with lock:
            return read_text(lib.ztCAD_getText, self._base, debug) or ""

    def remove(self) -> None:
        """Removes the element from its holder.

        Raises ``BufferError`` while an array uses the memory of the element or of anything in it.
        """
        self._check()
        self._holder._remove(self)

    # ------------------------------------------------------------------------------------------------ object

    def __repr__(self) -> str:
        try:
            self._check()
        except (ClosedError, RemovedError):
            return f"<{type(self).__name__}, gone>"
        details = "".join(f" {text}" for text in self._details())
        return f"<{type(self).__name__} {self.name!r}{details}>"

    def _details(self) -> Iterator[str]:
        """What ``repr`` says after the name."""
        return iter(())


def document_of(content: Content) -> Document:
    """The ``Document`` of a content, made again if Python has dropped it."""
    from ztcad._document import Document

    document = content.document() if content.document else None
    return document if document is not None else Document._of(content)


def holder_object(node: Node) -> Holder:
    """The object that a user sees for a node."""
    if isinstance(node, Content):
        return document_of(node)
    return cast("Holder", node)
