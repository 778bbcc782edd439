"""Checks large numbers of documents, on all processors of this machine or on a cluster of dask.distributed.

>>> from ztcad import batch
>>> for report in batch.check("models"):  # doctest: +SKIP
...     if report.errors:
...         print(report)

Needs the program ``ztcad``, which checks each chunk of documents in a process of its own. ``python -m
ztcad.batch`` does the same from a shell.
"""

from ztcad._errors import ProgramError
from ztcad._finding import Finding, Place
from ztcad._program import find_program

from ._check import Progress, check
from ._errors import ClusterError, NoWorkersError
from ._report import DocumentReport, json_line, read_json_lines
from ._table import table

__all__ = [
    "ClusterError",
    "DocumentReport",
    "Finding",
    "NoWorkersError",
    "Place",
    "ProgramError",
    "Progress",
    "check",
    "find_program",
    "json_line",
    "read_json_lines",
    "table",
]
