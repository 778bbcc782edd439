"""The report on one document, with the fields of ``ztcad check --format json``."""

from __future__ import annotations

import json
import os
from collections.abc import Iterable, Iterator
from dataclasses import dataclass
from typing import Any

from ztcad._finding import SEVERITIES, Finding, Record, Severity


@dataclass(frozen=True)
class DocumentReport:
    """What was found in one document.

    ``problem`` says why a document was not checked: it could not be read, or the check of it crashed or took
    too long. Then ``code`` is None and there are no findings. ``errors``, ``warnings`` and ``notes`` are the
    numbers of findings, with those that ``omitted`` counts.
    """

    file: str
    code: int | None
    fault: bool = False
    omitted: int = 0
    findings: tuple[Finding, ...] = ()
    problem: str | None = None
    errors: int = 0
    warnings: int = 0
    notes: int = 0

    @classmethod
    def from_json(cls, record: Record) -> DocumentReport:
        """The report that a line of JSON describes. Findings that the line omits are not in the numbers."""
        file = record["file"]
        findings = tuple(Finding.from_dict(finding, file) for finding in record["findings"])
        counts = record.get("counts") or counts_of(record["findings"])
        return cls(
            file,
            record["code"],
            record["fault"],
            record["omitted"],
            findings,
            record.get("problem"),
            *counts,
        )

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
        record["findings"] = [finding.to_dict() for finding in self.findings]
        return record

    def count_from(self, severity: Severity) -> int:
        """The number of findings of this severity and of higher ones."""
        return sum((self.notes, self.warnings, self.errors)[SEVERITIES.index(severity) :])

    def __str__(self) -> str:
        """Lines that editors and build logs understand: file, line, column, severity, message, rule."""
        if self.problem is not None:
            return f"{self.file}: {self.problem}"
        return "\n".join(map(str, self.findings))


def counts_of(findings: Iterable[Record]) -> tuple[int, int, int]:
    """The numbers of errors, warnings and notes. KeyError for another severity."""
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
