"""Reports as a table, where pandas is installed."""

from __future__ import annotations

from collections.abc import Iterable
from typing import TYPE_CHECKING, Any, Tuple

from ztcad._finding import Finding

from ._report import DocumentReport

if TYPE_CHECKING:
    import pandas

Row = Tuple[Any, ...]

_INTEGERS = ("code", "line", "column", "offset", "count")
_WORDS = ("severity", "rule", "kind")
COLUMNS = (
    "file", "code", "severity", "rule", "message", "line", "column", "offset", "path", "attribute", "kind",
    "name", "count",
)  # fmt: skip


def table(reports: Iterable[DocumentReport]) -> pandas.DataFrame:
    """The findings as a pandas.DataFrame, one row each; documents without findings have none.

    A document that was not checked has a row with severity "error", without a rule, and its problem as the
    message. All rows are in memory, about 1 kB each.
    """
    return frame(row for report in reports for row in _rows(report))


def frame(rows: Iterable[Row]) -> pandas.DataFrame:
    """A table of rows with the values of ``COLUMNS``."""
    import pandas

    columns: dict[str, list[Any]] = {name: [] for name in COLUMNS}
    add = [columns[name].append for name in COLUMNS]
    for row in rows:
        for append, value in zip(add, row):
            append(value)
    made = pandas.DataFrame(columns, columns=COLUMNS)
    types = {name: "Int64" for name in _INTEGERS}
    types.update((name, "category") for name in _WORDS)
    types.update((name, "string") for name in COLUMNS if name not in types)
    return made.astype(types)


def row_of(finding: Finding, code: int | None) -> Row:
    """The row of a finding about a document that was loaded with a code."""
    f = finding
    place = (f.place.line, f.place.column, f.place.offset) if f.place else (None, None, None)
    element = (f.attribute, f.kind or None, f.name)
    return (f.file, code, f.severity, f.rule, f.message, *place, f.path, *element, f.count)


def _rows(report: DocumentReport) -> Iterable[Row]:
    if report.problem is not None:
        none = (None,) * 7
        yield (report.file, None, "error", None, report.problem, *none, 1)
    for finding in report.findings:
        yield row_of(finding, report.code)
