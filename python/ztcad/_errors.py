"""Exceptions of the package."""

from __future__ import annotations

import os
from typing import Any

from ztcad._library import from_text, lib


class Error(Exception):
    """Base of the exceptions about documents.

    ``code`` is the result code of the library; ``line`` and ``column`` count from 1 and are 0 if the problem
    has no position; ``path`` names the file, if there is one.
    """

    def __init__(
        self, message: str, *, code: int = 0, line: int = 0, column: int = 0, path: str | None = None
    ) -> None:
        super().__init__(message)
        self.message = message
        self.code = code
        self.line = line
        self.column = column
        self.path = path

    def __str__(self) -> str:
        place = f"{self.path}:" if self.path else ""
        if self.line > 0:
            place += f"{self.line}:{self.column}:"
        text = f"{place} {self.message}" if place else self.message
        return f"{text} (code {self.code})" if self.code else text


class LoadError(Error):
    """A document that was not read, or does not pass the check that loading makes."""


class MissingFileError(LoadError, FileNotFoundError):
    """A document that does not exist."""


class SaveError(Error):
    """A document that was not written."""


class ProgramError(Error):
    """The program ``ztcad`` is missing or failed; ``code`` is its exit code."""


class ClosedError(Error, ValueError):
    """Use of a document that was closed."""


class RemovedError(Error, ReferenceError):
    """Use of an element that was removed from its document."""


def error_of(outcome: Any, path: str | os.PathLike[str] | None, kind: type[Error] = LoadError) -> Error:
    """The exception for a ``ztCAD_Outcome``."""
    if kind is LoadError and outcome.code == lib.ztCAD_ResultFileMissing:
        kind = MissingFileError
    return kind(
        from_text(outcome.message) or "memory ran out",
        code=outcome.code,
        line=outcome.line,
        column=outcome.column,
        path=None if path is None else os.fspath(path),
    )
