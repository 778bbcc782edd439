"""Checks large numbers of documents, on all processors of this machine or on a cluster of dask.distributed.

>>> from ztcad import batch
>>> for report in batch.check("models"):  # doctest: +SKIP
...     if report.errors:
...         print(report)

Needs the program ``ztcad``, and neither NumPy nor the library in this process. ``python -m ztcad.batch`` does
the same from a shell.
"""

from ._check import Progress, check
from ._errors import BatchError, ClusterError, NoWorkersError, ProgramError
from ._finding import Finding, Place
from ._program import find_program
from ._report import DocumentReport, json_line, read_json_lines
from ._table import table

__all__ = [
    "BatchError",
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
