"""Scenes: documents flattened into placed items."""

from __future__ import annotations

import os
from collections.abc import Iterator, Sequence
from typing import TYPE_CHECKING, Any, overload

import numpy as np
import numpy.typing as npt

from ztcad import _arrays
from ztcad._arrays import Indices, Reals
from ztcad._library import Handle, ffi, from_text, lib, lock, read_text
from ztcad._options import Options

if TYPE_CHECKING:
    from ztcad._document import Document


class _SceneHandle:
    """A scene of the library, with what must outlive it: the document and the options."""

    __slots__ = ("_document", "_handle", "_settings", "pointer")

    def __init__(self, document: Document, options: dict[str, Any]) -> None:
        self._settings = Options(options)
        self._document = document._content.handle
        folder = os.fsencode(document.path.parent) if document.path else b""
        pointer = lib.ztCADInspect_openScene(document._content.pointer, folder, self._settings.pointer)
        self._handle = Handle(pointer, lib.ztCADInspect_endScene)
        self.pointer = pointer


def open_handle(document: Document, options: dict[str, Any]) -> _SceneHandle:
    return _SceneHandle(document, options)


class Shape:
    """Geometry of an element in its own frame, shared by all items that place it. Arrays are copies."""

    __slots__ = ("center", "faces", "kind", "radius", "vertices")

    def __init__(self, source: Any) -> None:
        kinds = {1: "point", 2: "polyline", 3: "mesh", 4: "sphere"}
        #: ``"point"``, ``"polyline"``, ``"mesh"`` or ``"sphere"``
        self.kind: str = kinds[source.kind]
        #: vertices of a polyline or mesh, shape (n, 3)
        self.vertices: Reals = _copy(source.vertices, source.vertexCount, np.float64)
        #: triangles of a mesh, shape (m, 3)
        self.faces: Indices = _copy(source.facets, source.facetCount, np.uint32)
        #: of a point or sphere, shape (3,)
        self.center: Reals | None = np.array(list(source.center)) if source.hasCenter else None
        #: of a sphere
        self.radius: float | None = source.radius if source.hasRadius else None

    def __repr__(self) -> str:
        return f"<Shape {self.kind}>"


def _copy(pointer: Any, rows: int, dtype: type[Any]) -> npt.NDArray[Any]:
    if rows == 0:
        return np.empty((0, 3), dtype)
    size = rows * 3 * np.dtype(dtype).itemsize
    return _arrays.read_only(np.frombuffer(ffi.buffer(pointer, size), dtype).reshape(-1, 3).copy())


class Item:
    """A placed element."""

    __slots__ = ("color", "index", "kind", "name", "parent", "path", "shape", "transform", "visible")

    def __init__(self, scene: Scene, index: int, source: Any, path: str) -> None:
        #: position in the scene
        self.index = index
        #: path of the element in its file, such as ``"/GMD/structure[1]/point[2]"``
        self.path = path
        #: kind of the element, such as ``"point-reference"``
        self.kind: str = from_text(lib.ztCAD_kindWord(source.kind))
        #: name of the element
        self.name: str = from_text(source.name)
        red, green, blue = source.color
        #: colour, its own or inherited; ``None`` if nothing gives one
        self.color: tuple[int, int, int] | None = (red, green, blue) if source.hasColor else None
        #: whether neither it nor a holder is hidden
        self.visible = bool(source.isVisible)
        #: from the frame of its shape or content to that of the document, shape (3, 4)
        self.transform: Reals = scene.transforms[index]
        #: index of its holder; -1 at the top level
        self.parent: int = source.parent
        #: what it places; ``None`` for a holder
        self.shape: Shape | None = scene.shapes[source.shape] if source.shape >= 0 else None

    @property
    def vertices(self) -> Reals:
        """The vertices of its shape in the frame of the document, shape (n, 3); a centre is one vertex."""
        if self.shape is None:
            return np.empty((0, 3))
        rows = self.shape.vertices if self.shape.center is None else self.shape.center[np.newaxis]
        placed: Reals = rows @ self.transform[:, :3].T + self.transform[:, 3]
        return placed

    def __repr__(self) -> str:
        return f"<Item {self.path} {self.name!r}>"


# The memory of a ztCADInspect_Item, as far as it is read as an array.
_ITEM = np.dtype(
    {
        "names": ["transform"],
        "formats": ["(12,)f8"],
        "offsets": [ffi.offsetof("ztCADInspect_Item", "transform")],
        "itemsize": ffi.sizeof("ztCADInspect_Item"),
    }
)


class Scene(Sequence[Item]):
    """A document flattened into placed items, holders before what is in them.

    References are resolved, in the document or in the files that they name. What could not be placed is among
    the findings of ``ztcad.check``. A scene is a copy: later changes of the document do not change it.
    """

    def __init__(self, document: Document, options: dict[str, Any]) -> None:
        with lock:
            handle = open_handle(document, options)
            pointer = handle.pointer
            shapes = lib.ztCADInspect_shapes(pointer)
            #: what the items place, each shape once
            self.shapes: list[Shape] = [Shape(shapes[i]) for i in range(lib.ztCADInspect_shapeCount(pointer))]
            items = lib.ztCADInspect_items(pointer)
            count = lib.ztCADInspect_itemCount(pointer)
            size = count * ffi.sizeof("ztCADInspect_Item")
            rows = np.frombuffer(ffi.buffer(items, size), _ITEM) if count else np.empty(0, _ITEM)
            #: the transforms of all items, shape (n, 3, 4)
            self.transforms: Reals = _arrays.read_only(rows["transform"].reshape(-1, 3, 4).copy())
            self._items = [
                Item(self, i, items[i], read_text(lib.ztCADInspect_itemPath, pointer, i) or "")
                for i in range(count)
            ]
            count = lib.ztCADInspect_fileCount(pointer)
            #: the files that references name, relative to the document
            self.files = [from_text(lib.ztCADInspect_fileName(pointer, i)) for i in range(1, count)]

    def __len__(self) -> int:
        return len(self._items)

    @overload
    def __getitem__(self, index: int) -> Item: ...

    @overload
    def __getitem__(self, index: slice) -> list[Item]: ...

    def __getitem__(self, index: int | slice) -> Item | list[Item]:
        return self._items[index]

    def __iter__(self) -> Iterator[Item]:
        return iter(self._items)

    @property
    def bounds(self) -> Reals | None:
        """Least and greatest coordinates of everything placed, shape (2, 3); ``None`` for nothing."""
        low, high = [], []
        for item in self:
            if item.shape is not None and len(item.shape.vertices):
                rows = item.vertices
                low.append(rows.min(axis=0))
                high.append(rows.max(axis=0))
        # points and spheres in one go: there may be a million of them
        placed = [(i.index, i.shape) for i in self if i.shape is not None and i.shape.center is not None]
        if placed:
            transforms = self.transforms[[index for index, _ in placed]]
            centers = np.array([shape.center for _, shape in placed])
            rows = np.einsum("nij,nj->ni", transforms[:, :, :3], centers) + transforms[:, :, 3]
            # how far each ball extends along the axes, whatever the transform does to it
            radii = np.array([[shape.radius or 0.0] for _, shape in placed])
            extents = radii * np.linalg.norm(transforms[:, :, :3], axis=2)
            low.append((rows - extents).min(axis=0))
            high.append((rows + extents).max(axis=0))
        return np.array([np.min(low, axis=0), np.max(high, axis=0)]) if low else None

    def to_trimesh(self) -> Any:
        """The meshes as a ``trimesh.Scene``, one node each. Needs trimesh."""
        import trimesh

        scene = trimesh.Scene()
        for item in self:
            if item.shape is not None and item.shape.kind == "mesh":
                mesh = trimesh.Trimesh(
                    vertices=item.shape.vertices.copy(),
                    faces=item.shape.faces.astype(np.int64),
                    process=False,
                )
                matrix = np.vstack([item.transform, (0.0, 0.0, 0.0, 1.0)])
                scene.add_geometry(mesh, node_name=item.path, geom_name=item.name, transform=matrix)
        return scene

    def __repr__(self) -> str:
        return f"<Scene of {len(self)} items and {len(self.shapes)} shapes>"


def open_scene(document: Document, options: dict[str, Any]) -> Scene:
    return Scene(document, options)
