"""A finding, as the library reports it and as the program prints it."""

from __future__ import annotations

from collections.abc import Mapping
from dataclasses import dataclass
from typing import Any, Literal, NamedTuple

Severity = Literal["note", "warning", "error"]
SEVERITIES: tuple[Severity, ...] = ("note", "warning", "error")  # in ascending order, as ztCAD_Severity


class Place(NamedTuple):
    """A position in a document: line and column in characters from 1, offset in bytes from 0."""

    line: int
    column: int
    offset: int


# A JSON object as the json module reads it.
Record = Mapping[str, Any]


def _place(record: Record) -> Place:
    return Place(record["line"], record["column"], record["offset"])


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
        """The object that ``ztcad check --format json`` prints: plain values, without absent fields."""
        record: dict[str, Any] = {"severity": self.severity, "rule": self.rule, "message": self.message}
        if self.place is not None:
            record.update(self.place._asdict())
        record["path"] = self.path
        if self.attribute is not None:
            record["attribute"] = self.attribute
        if self.kind:
            record["element"] = {"kind": self.kind}
            if self.name is not None:
                record["element"]["name"] = self.name
        if self.count > 1:
            record["count"] = self.count
        if self.places:
            record["places"] = [place._asdict() for place in self.places]
        return record

    @classmethod
    def from_dict(cls, record: Record, file: str | None = None) -> Finding:
        """The finding that such an object describes."""
        element = record.get("element", {})
        return cls(
            severity=record["severity"],
            rule=record["rule"],
            message=record["message"],
            path=record["path"],
            place=_place(record) if "line" in record else None,
            attribute=record.get("attribute"),
            kind=element.get("kind", ""),
            name=element.get("name"),
            count=record.get("count", 1),
            places=tuple(map(_place, record.get("places", ()))),
            file=file,
        )

    def __str__(self) -> str:
        where = [self.file] if self.file else []
        where += [str(self.line), str(self.column)] if self.place else [self.path] if self.path else []
        place = ":".join([*where, ""]) + (" " if where else "")
        return f"{place}{self.severity}: {self.message} [{self.rule}]"
