"""Geometry documents of engineering models: build, read, write and check them.

>>> import ztcad
>>> document = ztcad.Document("a hinge")
>>> document.points.add("hinge", center=(0, 0, 12.5))
<Point 'hinge' at (0.0, 0.0, 12.5)>

``load`` and ``loads`` read documents, ``Document`` creates new ones, ``check`` reports what is
wrong with one. Coordinates, lengths and masses are in the document's units; the format does not name them.
"""

from ztcad._containers import (
    Elements,
    Lines,
    MassElements,
    Points,
    References,
    Solids,
    Spheres,
)
from ztcad._document import Document, Header, Outcome, load, loads
from ztcad._elements import (
    DetailReference,
    Line,
    LineReference,
    MassElement,
    MassReference,
    Point,
    PointReference,
    Reference,
    Solid,
    SolidReference,
    Sphere,
    StructureReference,
    TemplateLine,
    TemplateMassElement,
    TemplatePoint,
    TemplateSolid,
)
from ztcad._errors import (
    ClosedError,
    Error,
    LoadError,
    MissingFileError,
    ProgramError,
    RemovedError,
    SaveError,
)
from ztcad._finding import Finding, Place
from ztcad._findings import (
    Findings,
    MeshFinding,
    Rule,
    check,
    check_text,
    rules,
)
from ztcad._holders import Detail, Details, Structure, Structures, TemplateDetail, TemplateStructure
from ztcad._library import VERSION as __version__
from ztcad._mass import MassProperties, MassRow, MassTable, Mesh, analyse
from ztcad._node import Element
from ztcad._options import options
from ztcad._program import convert, view
from ztcad._scene import Item, Scene, Shape

__all__ = [
    "ClosedError",
    "Detail",
    "DetailReference",
    "Details",
    "Document",
    "Element",
    "Elements",
    "Error",
    "Finding",
    "Findings",
    "Header",
    "Item",
    "Line",
    "LineReference",
    "Lines",
    "LoadError",
    "MassElement",
    "MassElements",
    "MassProperties",
    "MassReference",
    "MassRow",
    "MassTable",
    "Mesh",
    "MeshFinding",
    "MissingFileError",
    "Outcome",
    "Place",
    "Point",
    "PointReference",
    "Points",
    "ProgramError",
    "Reference",
    "References",
    "RemovedError",
    "Rule",
    "SaveError",
    "Scene",
    "Shape",
    "Solid",
    "SolidReference",
    "Solids",
    "Sphere",
    "Spheres",
    "Structure",
    "StructureReference",
    "Structures",
    "TemplateDetail",
    "TemplateLine",
    "TemplateMassElement",
    "TemplatePoint",
    "TemplateSolid",
    "TemplateStructure",
    "__version__",
    "analyse",
    "check",
    "check_text",
    "convert",
    "load",
    "loads",
    "options",
    "rules",
    "view",
]
