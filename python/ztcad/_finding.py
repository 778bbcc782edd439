"""A finding, as the library reports it and as the program prints it."""

from __future__ import annotations

from dataclasses import asdict, dataclass
from typing import Any, Literal, NamedTuple

Severity = Literal["note", "warning", "error"]
SEVERITIES: tuple[Severity, ...] = ("note", "warning", "error")  # in ascending order, as ztCAD_Severity


class Place(NamedTuple):
    """A position in a document: line and column in characters from 1, offset in bytes from 0."""

    line: int
    column: int
    offset: int


@dataclass(frozen=True)
class Finding:
    """Something about a document. ``str`` gives the form that editors and build logs understand."""

    #: ``"error"``: a reason for a result code or a fault; ``"warning"``: something is dropped or replaced;
    #: ``"note"``: read as meant, but likely not what the writer wanted
    severity: Severity
    #: a stable word, such as ``"missing-centre"``; ``ztcad.rules()`` has them all
    rule: str
    #: one sentence, with the values found and wanted
    message: str
    #: such as ``"/GMD/structure[1]/point[2]/@center"``
    path: str
    #: where it is in the text; ``None`` for a document that was not read from one
    place: Place | None
    #: the attribute that it is about, if it is about one
    attribute: str | None
    #: kind of the nearest element, such as ``"point"``; empty if there is none
    kind: str
    #: name of that element
    name: str | None
    #: how often it occurs in its list
    count: int = 1
    #: the first places of a finding that occurs several times
    places: tuple[Place, ...] = ()
    #: the file, if there is one
    file: str | None = None

    @property
    def line(self) -> int:
        """The line, from 1; 0 without a place."""
        return self.place.line if self.place else 0

    @property
    def column(self) -> int:
        """The column in characters, from 1; 0 without a place."""
        return self.place.column if self.place else 0

    @property
    def offset(self) -> int:
        """The offset in bytes; 0 without a place."""
        return self.place.offset if self.place else 0

    def to_dict(self) -> dict[str, Any]:
        """The fields as plain values, for JSON."""
        return asdict(self)

    def __str__(self) -> str:
        where = [self.file] if self.file else []
        where += [str(self.line), str(self.column)] if self.place else [self.path] if self.path else []
        place = ":".join([*where, ""]) + (" " if where else "")
        return f"{place}{self.severity}: {self.message} [{self.rule}]"
