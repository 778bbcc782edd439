"""Findings in the reports of the program."""

from __future__ import annotations

from collections.abc import Mapping
from typing import Any

from ztcad._finding import Finding, Place

# A JSON object as the json module reads it.
Record = Mapping[str, Any]


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
