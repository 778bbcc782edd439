"""Elements by path and by name."""

from __future__ import annotations

from typing import Any

from ztcad._library import NULL, Handle, ffi, lib, lock, read_text, to_text
from ztcad._node import CLASSES, Content, Element, HolderNode


class Index:
    """An index of a document, valid until the document changes. The caller holds the lock meanwhile."""

    def __init__(self, content: Content) -> None:
        self._content = content
        self._handle = Handle(lib.ztCADInspect_openIndex(content.pointer), lib.ztCADInspect_endIndex)
        self.pointer = self._handle.pointer

    def element(self, pointer: Any) -> Element | None:
        """The object of an element of the document; ``None`` for null."""
        if pointer == NULL:
            return None
        address = ffi.cast("ztCAD_Base*", pointer)
        holder = self.element(lib.ztCADInspect_holderOf(self.pointer, pointer))
        node: HolderNode = self._content if holder is None else holder  # type: ignore[assignment]
        return node._wrap(address, CLASSES[lib.ztCAD_getKind(address)])


def find_path(content: Content, path: str) -> Element | None:
    with lock:
        index = Index(content)
        return index.element(lib.ztCADInspect_findPath(index.pointer, to_text(path, "a path")))


def find_name(content: Content, name: str) -> list[Element]:
    text = to_text(name, "a name")
    with lock:
        index = Index(content)
        count = lib.ztCADInspect_listName(index.pointer, text, NULL, 0)
        found = ffi.new("const ztCAD_Base*[]", count)
        lib.ztCADInspect_listName(index.pointer, text, found, count)
        elements = [index.element(pointer) for pointer in found]
    return [element for element in elements if element is not None]


def path_of(content: Content, element: Element) -> str:
    with lock:
        index = Index(content)
        path = read_text(lib.ztCADInspect_pathOf, index.pointer, element._base)
    if path is None:
        raise ValueError(f"{element!r} is not in this document")
    return path


