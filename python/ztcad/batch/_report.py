"""What a check says about one document, in the words and the shape of ``ztcad check --format json``."""

from __future__ import annotations

import json
import os
from collections.abc import Iterable, Iterator, Mapping
from dataclasses import dataclass
from typing import Any, Optional

SEVERITIES = ("note", "warning", "error")  # in ascending order

# A JSON object as the json module reads it.
Record = Mapping[str, Any]


@dataclass(frozen=True)
class Place:
    """A position in a document: line and column in characters from 1, offset in bytes from 0."""

    line: int
    column: int
    offset: int


@dataclass(frozen=True)
class Element:
    """The nearest element of the format: its kind, and its name as it is in the text, None without one."""

    kind: str
    name: Optional[str] = None


@dataclass(frozen=True)
class Finding:
    """One finding. ``count`` and ``places`` say how often and where first it occurs in one list or element."""

    severity: str
    rule: str
    message: str
    line: int
    column: int
    offset: int
    path: str
    attribute: Optional[str] = None
    element: Optional[Element] = None
    count: int = 1
    places: tuple[Place, ...] = ()

    @classmethod
    def from_json(cls, record: Record) -> Finding:
        """The finding that an object of a report describes."""
        fields = dict(record)
        if "element" in fields:
            fields["element"] = Element(**fields["element"])
        if "places" in fields:
            fields["places"] = tuple(Place(**place) for place in fields["places"])
        return cls(**fields)

    def to_json(self) -> dict[str, Any]:
        """The object of a report, without the fields that are absent there."""
        record: dict[str, Any] = {
            "severity": self.severity,
            "rule": self.rule,
            "message": self.message,
            "line": self.line,
            "column": self.column,
            "offset": self.offset,
            "path": self.path,
        }
        if self.attribute is not None:
            record["attribute"] = self.attribute
        if self.element is not None:
            record["element"] = {"kind": self.element.kind}
            if self.element.name is not None:
                record["element"]["name"] = self.element.name
        if self.count > 1:
            record["count"] = self.count
        if self.places:
            record["places"] = [vars(place) for place in self.places]
        return record


@dataclass(frozen=True)
class DocumentReport:
    """What was found in one document.

    ``problem`` says why a document was not checked: it could not be read, or the check of it crashed or took
    too long. Then ``code`` is None and there are no findings. ``errors``, ``warnings`` and ``notes`` are the
    numbers of findings, with those that ``omitted`` counts.
    """

    file: str
    code: Optional[int]
    fault: bool = False
    omitted: int = 0
    findings: tuple[Finding, ...] = ()
    problem: Optional[str] = None
    errors: int = 0
    warnings: int = 0
    notes: int = 0

    @classmethod
    def from_json(cls, record: Record) -> DocumentReport:
        """The report that a line of JSON describes. Findings that the line omits are not in the numbers."""
        findings = tuple(Finding.from_json(finding) for finding in record["findings"])
        counts = record.get("counts") or counts_of(record["findings"])
        return cls(
            record["file"],
            record["code"],
            record["fault"],
            record["omitted"],
            findings,
            record.get("problem"),
            *counts,
        )

    @classmethod
    def of_problem(cls, file: str, problem: str) -> DocumentReport:
        """The report on a document that was not checked."""
        return cls(file, None, problem=problem)

    def to_json(self) -> dict[str, Any]:
        """An object as in the list "documents" of a report of the program."""
        record: dict[str, Any] = {
            "file": self.file,
            "code": self.code,
            "fault": self.fault,
            "omitted": self.omitted,
        }
        if self.problem is not None:
            record["problem"] = self.problem
        record["findings"] = [finding.to_json() for finding in self.findings]
        return record

    def count_from(self, severity: str) -> int:
        """The number of findings of this severity and of higher ones."""
        return sum((self.notes, self.warnings, self.errors)[SEVERITIES.index(severity) :])

    def __str__(self) -> str:
        """Lines that editors and build logs understand: file, line, column, severity, message, rule."""
        if self.problem is not None:
            return f"{self.file}: {self.problem}"
        return "\n".join(
            f"{self.file}:{f.line}:{f.column}: {f.severity}: {f.message} [{f.rule}]" for f in self.findings
        )


def counts_of(findings: Iterable[Record]) -> tuple[int, int, int]:
    """How many errors, warnings and notes there are. KeyError for another severity."""
    counts = {"error": 0, "warning": 0, "note": 0}
    for finding in findings:
        counts[finding["severity"]] += 1
    return counts["error"], counts["warning"], counts["note"]


def printable(name: str) -> str:
    """The name of a file as the program prints it: UTF-8 in any locale, U+FFFD for bytes that are not."""
    return os.fsencode(name).decode("utf-8", "replace")


def json_line(report: DocumentReport) -> str:
    """The report as one line of JSON, with a name that can be printed."""
    record = {**report.to_json(), "file": printable(report.file)}
    return json.dumps(record, ensure_ascii=False, separators=(",", ":")) + "\n"


def read_json_lines(lines: Iterable[str]) -> Iterator[DocumentReport]:
    """The reports that ``json_line`` wrote: ``read_json_lines(open("report.jsonl", encoding="utf-8"))``."""
    return (DocumentReport.from_json(json.loads(line)) for line in lines)
