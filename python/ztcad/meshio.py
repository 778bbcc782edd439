"""Documents as a format of meshio: ``import ztcad.meshio`` registers the format.

Reading gives one mesh of everything that a document places, in the document's frame: solids as triangles,
polylines as lines, points as vertices, with the name of each cell's element in ``cell_sets``. Writing makes a
document with a solid for each block of triangles, a polyline for each line and a point for each vertex.
"""

from __future__ import annotations

import os
from typing import Any

import meshio
import numpy as np

from ztcad._document import Document, load

FORMAT = "ztcad"


def read(path: str | os.PathLike[str]) -> Any:
    """Reads a document as a ``meshio.Mesh``; raises as ``ztcad.load`` does.

    Not ``meshio.ReadError``, for which meshio would end the process.
    """
    points: list[Any] = []
    cells: dict[str, list[Any]] = {"triangle": [], "line": [], "vertex": []}
    names: dict[str, dict[str, list[int]]] = {}
    used = 0
    with load(path, strict=False) as document:
        for item in document.scene():
            if item.shape is None or item.shape.kind == "sphere":
                continue
            rows = item.vertices
            if item.shape.kind == "mesh":
                sort, made = "triangle", item.shape.faces.astype(np.int64)
            elif item.shape.kind == "polyline":
                steps = np.arange(max(len(rows) - 1, 0))
                sort, made = "line", np.stack([steps, steps + 1], axis=1)
            else:
                sort, made = "vertex", np.arange(len(rows)).reshape(-1, 1)
            first = sum(len(block) for block in cells[sort])
            names.setdefault(item.name, {}).setdefault(sort, []).extend(range(first, first + len(made)))
            cells[sort].append(made + used)
            points.append(rows)
            used += len(rows)
    blocks = [(sort, np.concatenate(made)) for sort, made in cells.items() if made]
    sets = {
        name: [np.array(of.get(sort, []), np.int64) for sort, _ in blocks] for name, of in names.items()
    }
    return meshio.Mesh(np.concatenate(points) if points else np.empty((0, 3)), blocks, cell_sets=sets)


def write(path: str | os.PathLike[str], mesh: Any, **_options: Any) -> None:
    """Writes a ``meshio.Mesh`` as a document. Raises ``ValueError`` for cells that documents do not have."""
    rows = np.asarray(mesh.points, np.float64)
    if rows.shape[1] == 2:  # a mesh in the plane
        rows = np.column_stack([rows, np.zeros(len(rows))])
    with Document() as document:
        for number, block in enumerate(mesh.cells):
            if block.type == "triangle":
                used, faces = np.unique(block.data, return_inverse=True)
                document.solids.add(
                    f"solid_{number}", vertices=rows[used], faces=faces.reshape(-1, 3).astype(np.uint32)
                )
            elif block.type == "line":
                for index, line in enumerate(block.data):
                    document.lines.add(f"line_{number}_{index}", vertices=rows[line])
            elif block.type == "vertex":
                centers = rows[block.data.reshape(-1)]
                count = len(centers)
                document.points.add_many(centers, names=[f"point_{number}_{i}" for i in range(count)])
            else:
                raise ValueError(f"documents have no cells of the type {block.type!r}")
        document.save(path)


def register() -> None:
    """Makes the format known to meshio, which importing this module does."""
    meshio.register_format(FORMAT, [".xml"], read, {FORMAT: write})


register()
