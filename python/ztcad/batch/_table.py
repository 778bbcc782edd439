"""Reports as a table, where pandas is installed."""

from __future__ import annotations

from collections.abc import Iterable
from typing import TYPE_CHECKING, Any

from ._report import DocumentReport

if TYPE_CHECKING:
    import pandas

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
    import pandas

    columns: dict[str, list[Any]] = {name: [] for name in COLUMNS}
    add = [columns[name].append for name in COLUMNS]
    for report in reports:
        for row in _rows(report):
            for append, value in zip(add, row):
                append(value)
    frame = pandas.DataFrame(columns, columns=COLUMNS)
    types = {name: "Int64" for name in _INTEGERS}
    types.update((name, "category") for name in _WORDS)
    types.update((name, "string") for name in COLUMNS if name not in types)
    return frame.astype(types)


def _rows(report: DocumentReport) -> Iterable[tuple[Any, ...]]:
    if report.problem is not None:
        none = (None,) * 7
        yield (report.file, None, "error", None, report.problem, *none, 1)
    for f in report.findings:
        place = (f.line, f.column, f.offset, f.path)
        element = (f.attribute, f.kind or None, f.name)
        yield (report.file, report.code, f.severity, f.rule, f.message, *place, *element, f.count)
