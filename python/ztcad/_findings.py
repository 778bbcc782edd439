"""Findings: what is wrong with a document, and where."""

from __future__ import annotations

import os
from collections.abc import Iterator, Sequence
from dataclasses import dataclass
from pathlib import Path
from typing import TYPE_CHECKING, Any, overload

from ztcad._document import Document, Outcome
from ztcad._errors import error_of
from ztcad._finding import SEVERITIES, Finding, Place, Severity
from ztcad._library import NULL, Handle, ffi, from_text, lib, lock, optional_text
from ztcad._node import Content
from ztcad._scene import open_handle

if TYPE_CHECKING:
    from collections.abc import Iterable


@dataclass(frozen=True)
class MeshFinding:
    """One fault of a mesh, with the first places where it occurs."""

    severity: Severity
    #: such as ``"open-edge"``
    rule: str
    message: str
    #: how often it occurs
    count: int
    #: what ``places`` are: ``"facet"``, ``"vertex"``, ``"edge"`` or empty
    place_kind: str
    #: indices of the first facets or vertices; two vertices for each of the first edges
    places: tuple[int | tuple[int, int], ...]


class Findings(Sequence[Finding]):
    """The findings about one document, in the order of the text, and how its load ended."""

    def __init__(self, found: Iterable[Finding], outcome: Outcome, omitted: dict[Severity, int]) -> None:
        self._found = list(found)
        #: how the load ended; code 0 and no fault for a document that was not read from a text
        self.outcome = outcome
        #: how many more findings of each severity there are because of ``limit``
        self.omitted = omitted

    @property
    def ok(self) -> bool:
        """Whether there is no error, omitted ones included."""
        return not self.errors and not self.omitted["error"]

    def of(self, severity: Severity) -> list[Finding]:
        """The findings of a severity."""
        return [finding for finding in self if finding.severity == severity]

    @property
    def errors(self) -> list[Finding]:
        """The errors."""
        return self.of("error")

    @property
    def warnings(self) -> list[Finding]:
        """The warnings."""
        return self.of("warning")

    @property
    def notes(self) -> list[Finding]:
        """The notes."""
        return self.of("note")

    def __len__(self) -> int:
        return len(self._found)

    @overload
    def __getitem__(self, index: int) -> Finding: ...

    @overload
    def __getitem__(self, index: slice) -> list[Finding]: ...

    def __getitem__(self, index: int | slice) -> Finding | list[Finding]:
        return self._found[index]

    def __iter__(self) -> Iterator[Finding]:
        return iter(self._found)

    def __str__(self) -> str:
        return "\n".join(str(finding) for finding in self)

    def __repr__(self) -> str:
        counts = [f"{len(self.of(severity))} {severity}s" for severity in reversed(SEVERITIES)]
        return f"<Findings: {', '.join(counts)}>"

    def to_dataframe(self) -> Any:
        """A pandas table with a row for each finding, as ``ztcad.batch.table`` makes it. Needs pandas."""
        from ztcad.batch._table import frame, row_of

        return frame(row_of(finding, self.outcome.code) for finding in self)


# ------------------------------------------------------------------------------------------------------ rules


@dataclass(frozen=True)
class Rule:
    """What the findings of one name have in common."""

    name: str
    #: the highest that its findings have
    severity: Severity
    #: the version of the library that reported it first
    since: str
    #: what it means, in one sentence
    sentence: str


def rules() -> dict[str, Rule]:
    """All rules by name, in alphabetical order.

    >>> import ztcad
    >>> ztcad.rules()["missing-centre"].sentence
    'A point or sphere has no centre.'
    """
    found = []
    for count, at in (
        (lib.ztCAD_ruleCount(), lib.ztCAD_ruleAt),
        (lib.ztCADInspect_ruleCount(), lib.ztCADInspect_ruleAt),
    ):
        for index in range(count):
            rule = at(index)
            name, since, sentence = (from_text(t) for t in (rule.name, rule.since, rule.sentence))
            found.append(Rule(name, SEVERITIES[rule.severity], since, sentence))
    return {rule.name: rule for rule in sorted(found, key=lambda rule: rule.name)}


# ----------------------------------------------------------------------------------------------------- checks

_NOTHING_OMITTED: dict[Severity, int] = {"note": 0, "warning": 0, "error": 0}


def check(
    source: str | os.PathLike[str] | Document,
    *,
    limit: int | None = None,
    inspect: bool = True,
    **options: Any,
) -> Findings:
    """The findings of the reader about a file, and those about its geometry, references and mass data.

    A ``Document`` has no text, so only the latter are reported for it. ``limit`` is the number of findings to
    keep, ``inspect=False`` leaves out all but the reader's, ``options`` are those of ``ztcad.options``.
    Raises ``LoadError`` only for a file that cannot be read; a file that is not a document is a finding.
    """
    if isinstance(source, Document):
        return check_document(source, options, limit=limit)
    path = Path(source)
    c_limit = -1 if limit is None else limit
    outcome = ffi.new("ztCAD_Outcome*")
    with lock:
        review = lib.ztCAD_reviewFile(os.fsencode(path), c_limit, outcome)
        return _reviewed(review, outcome, path, inspect, options)


def check_text(
    text: str | bytes, *, limit: int | None = None, inspect: bool = True, **options: Any
) -> Findings:
    """``check`` of a document that is a text.

    >>> import ztcad
    >>> for finding in ztcad.check_text('<GMD><header/><point name="hinge"/></GMD>').errors:
    ...     print(finding)
    1:15: error: The point "hinge" has no centre. [missing-centre]
    """
    data = text.encode() if isinstance(text, str) else bytes(text)
    c_limit = -1 if limit is None else limit
    outcome = ffi.new("ztCAD_Outcome*")
    with lock:
        review = lib.ztCAD_reviewText(data, len(data), c_limit, outcome)
        return _reviewed(review, outcome, None, inspect, options)


def _reviewed(
    pointer: Any, outcome: Any, path: Path | None, inspect: bool, options: dict[str, Any]
) -> Findings:
    review = Handle(pointer, lib.ztCAD_endReview)
    # a file that could not be opened or read has no text to report findings about
    if outcome.code and outcome.code <= lib.ztCAD_ResultFileMissing:
        raise error_of(outcome, path)
    if inspect:
        _add_inspected(pointer, path, options)
    count = lib.ztCAD_findingCount(pointer)
    file = None if path is None else os.fspath(path)
    found = [_finding(lib.ztCAD_findingAt(pointer, index), file) for index in range(count)]
    omitted: dict[Severity, int] = {
        severity: lib.ztCAD_omittedFindings(pointer, number) for number, severity in enumerate(SEVERITIES)
    }
    del review
    return Findings(
        found, Outcome(outcome.code, bool(outcome.fault), from_text(outcome.message)), omitted
    )


def _add_inspected(review: Any, path: Path | None, options: dict[str, Any]) -> None:
    """Adds the findings about the document that was read, with their places in the text."""
    pointer = lib.ztCAD_takeReviewedDocument(review)
    if pointer == NULL:
        return
    document = Document._of(Content(Handle(pointer, lib.ztCAD_endDocument)))
    document.path = path
    found = _Inspected(document, options)
    texts: list[Any] = []

    def text(value: str | None) -> Any:
        if value is None:
            return NULL
        texts.append(ffi.new("char[]", value.encode()))
        return texts[-1]

    added = ffi.new("ztCAD_AddedFinding[]", len(found))
    for index, finding in enumerate(found):
        entry = added[index]
        entry.severity = finding.severity
        entry.rule = finding.rule
        entry.message = text(_with_places(finding))
        entry.element = finding.element
        entry.attribute = finding.attribute
        entry.count = finding.count
    if len(found) and not lib.ztCAD_addFindings(review, added, len(found)):
        raise MemoryError


class _Inspected:
    """The findings of the second library about a document."""

    def __init__(self, document: Document, options: dict[str, Any]) -> None:
        self._scene = open_handle(document, options)
        pointer = lib.ztCADInspect_check(self._scene.pointer, lib.ztCADInspect_CheckAll)
        self._handle = Handle(pointer, lib.ztCADInspect_endFindings)

    def __len__(self) -> int:
        return int(lib.ztCADInspect_findingCount(self._handle.pointer))

    def __iter__(self) -> Iterator[Any]:
        for index in range(len(self)):
            yield lib.ztCADInspect_findingAt(self._handle.pointer, index)


def _finding(source: Any, file: str | None) -> Finding:
    return Finding(
        severity=SEVERITIES[source.severity],
        rule=from_text(source.rule),
        message=from_text(source.message),
        path=from_text(source.path),
        place=_place(source.place),
        attribute=optional_text(source.attribute),
        kind=from_text(lib.ztCAD_kindWord(source.kind)),
        name=optional_text(source.name),
        count=source.count,
        places=tuple(_place(source.places[i]) for i in range(source.placeCount)) if source.count > 1 else (),
        file=file,
    )


def _place(source: Any) -> Place:
    return Place(source.line, source.column, source.offset)


def check_document(document: Document, options: dict[str, Any], *, limit: int | None = None) -> Findings:
    file = None if document.path is None else os.fspath(document.path)
    with lock:
        found = [
            Finding(
                severity=SEVERITIES[source.severity],
                rule=from_text(source.rule),
                message=_with_places(source),
                path=from_text(source.path),
                place=None,
                attribute=optional_text(source.attribute),
                kind=from_text(lib.ztCAD_kindWord(source.kind)),
                name=optional_text(source.name),
                count=source.count,
                file=file,
            )
            for source in _Inspected(document, options)
        ]
    omitted = dict(_NOTHING_OMITTED)
    for finding in found[limit:] if limit is not None else ():
        omitted[finding.severity] += 1
    return Findings(found[:limit], Outcome(0, False, ""), omitted)


_PLACE_KINDS = ("", "facet", "vertex", "edge")  # by ztCADInspect_PlaceKind
_PLURALS = {"facet": "facets", "vertex": "vertices", "edge": "edges"}


def _mesh_places(source: Any) -> tuple[int | tuple[int, int], ...]:
    places = source.places
    if source.placeKind == lib.ztCADInspect_PlaceEdge:
        return tuple((places[2 * i], places[2 * i + 1]) for i in range(source.placeCount))
    return tuple(places[i] for i in range(source.placeCount))


def _with_places(source: Any) -> str:
    """The message with the first places, as the program ``ztcad`` prints it."""
    text = from_text(source.message)
    places = _mesh_places(source)[:3]
    if not places:
        return text
    kind = _PLACE_KINDS[source.placeKind]
    shown = ", ".join(f"{p[0]}-{p[1]}" if isinstance(p, tuple) else str(p) for p in places)
    return f"{text} The {f'first {_PLURALS[kind]}' if source.count > 1 else kind}: {shown}."


def of_mesh(found: Any) -> list[MeshFinding]:
    sources = (
        lib.ztCADInspect_findingAt(found, i) for i in range(lib.ztCADInspect_findingCount(found))
    )
    return [
        MeshFinding(
            severity=SEVERITIES[source.severity],
            rule=from_text(source.rule),
            message=from_text(source.message),
            count=source.count,
            place_kind=_PLACE_KINDS[source.placeKind],
            places=_mesh_places(source),
        )
        for source in sources
    ]
