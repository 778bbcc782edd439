"""A finding, as the program prints it and as the library reports it."""

from __future__ import annotations

from collections.abc import Mapping
from dataclasses import asdict, dataclass
from typing import Any, Literal, NamedTuple

Severity = Literal["note", "warning", "error"]
SEVERITIES: tuple[Severity, ...] = ("note", "warning", "error")  # in ascending order

# A JSON object as the json module reads it.
Record = Mapping[str, Any]


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
    #: a stable word, such as ``"missing-centre"``; ``ztcad rules`` lists them
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


def finding_from_json(record: Record, file: str | None = None) -> Finding:
    """The finding that an object of a report of ``ztcad check --format json`` describes."""
    element = record.get("element", {})
    return Finding(
        record["severity"],
        record["rule"],
        record["message"],
        record["path"],
        Place(record["line"], record["column"], record["offset"]),
        record.get("attribute"),
        element.get("kind", ""),
        element.get("name"),
        record.get("count", 1),
        tuple(Place(p["line"], p["column"], p["offset"]) for p in record.get("places", ())),
        file,
    )


def finding_to_json(finding: Finding) -> dict[str, Any]:
    """The object of a report, without the fields that are absent there."""
    record: dict[str, Any] = {
        "severity": finding.severity,
        "rule": finding.rule,
        "message": finding.message,
        "line": finding.line,
        "column": finding.column,
        "offset": finding.offset,
        "path": finding.path,
    }
    if finding.attribute is not None:
        record["attribute"] = finding.attribute
    if finding.kind:
        record["element"] = {"kind": finding.kind}
        if finding.name is not None:
            record["element"]["name"] = finding.name
    if finding.count > 1:
        record["count"] = finding.count
    if finding.places:
        record["places"] = [place._asdict() for place in finding.places]
    return record
