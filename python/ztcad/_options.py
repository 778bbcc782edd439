"""Settings of everything that interprets a document: scenes, checks, mass properties."""

from __future__ import annotations

import os
from typing import Any

from ztcad._library import NULL, ffi, from_text, lib, to_text

# Python's names for the members of ztCADInspect_Options
_MEMBERS = {
    "system_order": "systemOrder",
    "system_is_transposed": "systemIsTransposed",
    "own_systems": "ownSystems",
    "template_system": "templateSystem",
    "mass_order": "massOrder",
    "products_are_integrals": "productsAreIntegrals",
    "moments_about_origin": "momentsAboutOrigin",
    "mass_in_holder_frame": "massInHolderFrame",
    "density": "density",
    "system_tolerance": "systemTolerance",
    "degenerate_tolerance": "degenerateTolerance",
    "principal_tolerance": "principalTolerance",
    "declared_tolerance": "declaredTolerance",
    "allowed_folder": "allowedFolder",
    "read_files": "readFiles",
    "greatest_file_size": "greatestFileSize",
    "greatest_file_count": "greatestFileCount",
    "greatest_depth": "greatestDepth",
    "greatest_item_count": "greatestItemCount",
    "threads": "threads",
}


class Options:
    """A ``ztCADInspect_Options`` with the texts that it refers to."""

    def __init__(self, given: dict[str, Any]) -> None:
        self.pointer = ffi.new("ztCADInspect_Options*")
        lib.ztCADInspect_initOptions(self.pointer, ffi.sizeof("ztCADInspect_Options"))
        self._texts: list[Any] = []
        for name, value in given.items():
            self._set(name, value)
        problem = lib.ztCADInspect_optionsProblem(self.pointer)
        if problem != NULL:
            raise ValueError(from_text(problem))

    def _set(self, name: str, value: Any) -> None:
        member = _MEMBERS.get(name)
        if member is None:
            raise TypeError(f"there is no option {name!r}; there are {', '.join(sorted(_MEMBERS))}")
        if value is None:
            return
        if name == "allowed_folder":
            value = ffi.new("char[]", to_text(os.fspath(value), "a folder"))
            self._texts.append(value)
        elif isinstance(value, bool):
            value = int(value)
        setattr(self.pointer, member, value)


def options() -> dict[str, Any]:
    """The options of scenes, checks and mass properties with their defaults.

    Each of these functions takes them as keyword arguments. ``docs/python.md`` explains them.

    >>> import ztcad
    >>> ztcad.options()["declared_tolerance"]
    0.01
    """
    pointer = Options({}).pointer
    found: dict[str, Any] = {}
    for name, member in _MEMBERS.items():
        value = getattr(pointer, member)
        if isinstance(value, ffi.CData):
            value = list(value) if ffi.typeof(value).kind == "array" else None
        found[name] = value
    return found
