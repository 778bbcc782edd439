"""Copies of elements, within a document and between documents, and between elements and templates."""

from __future__ import annotations

from ztcad import _elements as e
from ztcad._holders import DetailContainers, _AnyDetail, _AnyStructure
from ztcad._library import lib
from ztcad._node import Element, Node

# Kinds that can be copied to one another: an element and its template.
_SORTS = (e._AnyPoint, e._AnyLine, e._AnySolid, e._AnyMassElement, _AnyDetail, _AnyStructure)


def copy(source: Element, target: Element) -> None:
    """Copies all fields and contents to a new element. The caller holds the lock."""
    if type(source) is not type(target) and not any(
        isinstance(source, sort) and isinstance(target, sort) for sort in _SORTS
    ):
        raise TypeError(f"a {type(target).__name__} cannot be made from {source!r}")
    _copy_fields(source, target)
    if isinstance(source, DetailContainers) and isinstance(target, DetailContainers):
        for old, new in zip(source._containers(), target._containers()):
            for element in old:
                new.append(element)
    if isinstance(source, _AnyDetail) and source.read_ok is not None:
        lib.ztCAD_setReadOk(target._base, source.read_ok)


def is_inside(node: Node, element: Element) -> bool:
    """Whether a holder is an element or in it."""
    while isinstance(node, Element):
        if node is element:
            return True
        node = node._holder
    return False


def _copy_fields(source: Element, target: Element) -> None:
    target.name, target.comment, target.inform = source.name, source.comment, source.inform
    target.color, target.visible = source.color, source.visible
    if source.lcs is not None:
        target.lcs = source.lcs
    if isinstance(source, e._WithMethod) and isinstance(target, e._WithMethod):
        target.method = source.method
    if isinstance(source, e._WithCenter) and isinstance(target, e._WithCenter):
        target.center = source.center
    if isinstance(source, e._WithVertices) and isinstance(target, e._WithVertices):
        target.vertices = source.vertices
    if isinstance(source, e._AnySolid) and isinstance(target, e._AnySolid):
        target.faces = source.faces
    if isinstance(source, e._WithMassData) and isinstance(target, e._WithMassData):
        target.mass_data = source.mass_data
    if isinstance(source, e.Sphere) and isinstance(target, e.Sphere):
        target.radius = source.radius
    if isinstance(source, e.Reference) and isinstance(target, e.Reference):
        target.template, target.file = source.template, source.file
        if source.placement is not None:
            target.placement = source.placement
